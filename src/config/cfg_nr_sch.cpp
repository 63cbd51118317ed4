#include "config/cfg_nr_sch.h"

namespace vek::nr_mod_lib
{

bool cfg_nr_sch_t::set_enable(bool enable) { return _target().set_enable(enable, _get_bwp().numerology); }

bool cfg_nr_sch_t::set_one_frame_period(bool one_frame_period)
{
    return _target().set_one_frame_period(one_frame_period, m_waveform.get_frame_number(), _get_bwp().numerology);
}

bool cfg_nr_sch_t::set_slot_allocation(const std::string& text)
{
    return _target().set_slot_allocation(text, _get_bwp().numerology);
}

bool cfg_nr_sch_t::set_rbg_size(lib_nr_sch_rbg_size_t size)
{
    const bwp_t bwp = _get_bwp();
    return _target().set_rbg_size(size, bwp.rb_size, bwp.rb_start);
}

bool cfg_nr_sch_t::set_rbg_bitmap(const std::string& text)
{
    const bwp_t bwp = _get_bwp();
    return _target().set_rbg_bitmap(text, bwp.rb_size, bwp.rb_start);
}

unsigned int cfg_nr_sch_t::get_rbg_bitmap_number() const
{
    const bwp_t bwp = _get_bwp();
    return _target().get_rbg_bitmap_number(bwp.rb_size, bwp.rb_start);
}

bool cfg_nr_sch_t::set_rb_offset(unsigned int rb_offset)
{
    return _target().set_rb_offset(rb_offset, _get_bwp().rb_size);
}

bool cfg_nr_sch_t::set_rb_num(unsigned int rb_num) { return _target().set_rb_num(rb_num, _get_bwp().rb_size); }

std::vector<lib_nr_sch_dmrs_additional_position_t> cfg_nr_sch_t::get_dmrs_additional_position_list()
{
    return _target().get_dmrs_additional_position_list();
}

} // namespace vek::nr_mod_lib

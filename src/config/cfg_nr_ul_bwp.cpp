#include "config/cfg_nr_ul_bwp.h"

namespace vek::nr_mod_lib
{

bool cfg_nr_ul_bwp_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    if (numerology == get_numerology())
        return false;
    const bool changed = _carrier().set_ul_bwp_numerology(_index(), numerology);
    m_waveform.refit_cfr_filter_mask();
    return changed;
}

bool cfg_nr_ul_bwp_t::set_cp_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    if (cp_type == get_cp_type())
        return false;
    _carrier().set_all_ul_bwps_cp_type(cp_type);
    return get_cp_type() == cp_type;
}

bool cfg_nr_ul_bwp_t::set_rb_offset(unsigned int rb_offset)
{
    if (rb_offset == get_rb_offset())
        return false;
    const auto& limits = _carrier().get_numerology_manager(get_numerology());
    return _carrier().set_ul_bwp_rb_offset(_index(), rb_offset, limits.get_rb_start(), limits.get_rb_size());
}

bool cfg_nr_ul_bwp_t::set_rb_number(unsigned int rb_number)
{
    if (rb_number == get_rb_number())
        return false;
    const auto& limits = _carrier().get_numerology_manager(get_numerology());
    return _carrier().set_ul_bwp_rb_number(_index(), rb_number, limits.get_rb_start(), limits.get_rb_size());
}

} // namespace vek::nr_mod_lib

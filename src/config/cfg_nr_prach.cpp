#include "config/cfg_nr_prach.h"

#include <algorithm>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_first_ul_bwp = 0;

} // namespace

bool cfg_nr_prach_t::set_rb_num(unsigned int rb_num)
{
    if (rb_num == get_rb_num())
        return false;
    const auto& numerology = _carrier().get_numerology_manager(_numerology());
    return _carrier().set_ul_bwp_rb_number(k_first_ul_bwp, rb_num, numerology.get_rb_start(), numerology.get_rb_size());
}

bool cfg_nr_prach_t::set_rb_offset(unsigned int rb_offset)
{
    if (rb_offset == get_rb_offset())
        return false;
    const auto& numerology = _carrier().get_numerology_manager(_numerology());
    return _carrier().set_ul_bwp_rb_offset(k_first_ul_bwp, rb_offset, numerology.get_rb_start(),
                                           numerology.get_rb_size());
}

unsigned int cfg_nr_prach_t::get_logical_root_sequence_index() const
{
    const unsigned int index = _target().get_logical_root_sequence_index();
    std::cout << index << std::endl;
    return index;
}

unsigned int cfg_nr_prach_t::get_sequence_number()
{
    return _target().get_sequence_number(get_lra(),
                                         std::max(get_sequence_index(), _target().get_logical_root_sequence_index()));
}

/// Of the BWP that the burst follows.
lib_nr_numerology_type_t cfg_nr_prach_t::_numerology() const
{
    return _carrier().get_ul_bwp(_target().get_bwp_id()).get_numerology();
}

} // namespace vek::nr_mod_lib

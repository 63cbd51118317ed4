#include "config/cfg_nr_ul_pucch.h"

#include "common/lib_common_list_parse.h"

#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

std::string text_of(const std::vector<std::vector<unsigned char>>& bits_per_slot)
{
    std::vector<std::string> slots;
    for (const std::vector<unsigned char>& bits : bits_per_slot)
        slots.push_back(common_lib::lib_common_list_parse_t::bit_list_to_string(bits));
    return common_lib::lib_common_list_parse_t::combine_str(slots, ",");
}

} // namespace

bool cfg_nr_ul_pucch_t::set_enable(bool enable)
{
    return _get_pucch_manager().set_enable(enable, _get_bwp_manager().get_numerology());
}

bool cfg_nr_ul_pucch_t::set_pucch_format(lib_nr_ul_pucch_format_t format)
{
    const lib_nr_ul_bwp_configure_manager_t& bwp = _get_bwp_manager();
    return _get_pucch_manager().set_pucch_format(format, bwp.get_rb_number(), bwp.get_cp_type());
}

bool cfg_nr_ul_pucch_t::set_allocated_slots(const std::string& text)
{
    return _get_pucch_manager().set_allocated_slots(text, _get_bwp_manager().get_numerology());
}

bool cfg_nr_ul_pucch_t::set_first_symbol(unsigned int first_symbol)
{
    return _get_pucch_manager().set_first_symbol(first_symbol, _get_bwp_manager().get_cp_type());
}

bool cfg_nr_ul_pucch_t::set_symbol_num(unsigned int symbol_num)
{
    return _get_pucch_manager().set_symbol_num(symbol_num, _get_bwp_manager().get_cp_type());
}

bool cfg_nr_ul_pucch_t::set_bwp_id(unsigned int bwp_id)
{
    if (bwp_id == get_bwp_id())
        return false;
    _carrier().set_ul_pucch_bwp_id(_index(), bwp_id);
    return true;
}

bool cfg_nr_ul_pucch_t::set_use_interlace_pucch(bool use_interlace)
{
    return _get_pucch_manager().set_use_interlace_pucch(use_interlace, _get_bwp_manager().get_numerology());
}

bool cfg_nr_ul_pucch_t::set_rb_offset(unsigned int rb_offset)
{
    return _get_pucch_manager().set_rb_offset(rb_offset, _get_bwp_manager().get_rb_number());
}

bool cfg_nr_ul_pucch_t::set_rb_num(unsigned int rb_num)
{
    return _get_pucch_manager().set_rb_num(rb_num, _get_bwp_manager().get_rb_number());
}

bool cfg_nr_ul_pucch_t::set_rb_set_index(unsigned int index)
{
    const auto& numerology = _carrier().get_numerology_manager(_get_bwp_manager().get_numerology());
    const auto rb_sets = numerology.get_ul_guard_band().get_rb_set_info();
    return _get_pucch_manager().set_rb_set_index(index, static_cast<unsigned int>(rb_sets.size()));
}

bool cfg_nr_ul_pucch_t::set_interlace0(unsigned int interlace)
{
    return _get_pucch_manager().set_interlace0(interlace, _get_bwp_manager().get_numerology());
}

bool cfg_nr_ul_pucch_t::set_pucch_interlace0(lib_nr_ul_pucch_interlace_rb_num_t rb_num)
{
    return _get_pucch_manager().set_pucch_interlace0(rb_num);
}

bool cfg_nr_ul_pucch_t::set_interlace1(int interlace)
{
    return _get_pucch_manager().set_interlace1(interlace, _get_bwp_manager().get_numerology());
}

bool cfg_nr_ul_pucch_t::set_pucch_interlace1(lib_nr_ul_pucch_interlace_rb_num_t rb_num)
{
    return _get_pucch_manager().set_pucch_interlace1(rb_num);
}

bool cfg_nr_ul_pucch_t::set_pucch_group_hopping(lib_nr_ul_group_hopping_t hopping)
{
    return _get_pucch_manager().set_pucch_group_hopping(hopping);
}

bool cfg_nr_ul_pucch_t::set_intra_slot_frequency_hopping(bool hopping)
{
    return _get_pucch_manager().set_intra_slot_frequency_hopping(hopping);
}

bool cfg_nr_ul_pucch_t::set_inter_slot_frequency_hopping(bool hopping)
{
    return _get_pucch_manager().set_inter_slot_frequency_hopping(hopping);
}

bool cfg_nr_ul_pucch_t::set_number_of_slots_for_pucch_repetition(unsigned int number)
{
    return _get_pucch_manager().set_number_of_slots_for_pucch_repetition(number);
}

bool cfg_nr_ul_pucch_t::set_second_hop_prb(unsigned int prb)
{
    return _get_pucch_manager().set_second_hop_prb(prb, _get_bwp_manager().get_rb_number());
}

bool cfg_nr_ul_pucch_t::set_dmrs_uplink_transform_precoding_pucch(bool precoding)
{
    return _get_pucch_manager().set_dmrs_uplink_transform_precoding_pucch(precoding);
}

bool cfg_nr_ul_pucch_t::set_sr_configuration(lib_nr_ul_sr_configuration_t sr)
{
    return _get_pucch_manager().set_sr_configuration(sr);
}

bool cfg_nr_ul_pucch_t::set_max_code_rate(lib_nr_ul_pucch_max_code_rate_x100_t rate)
{
    return _get_pucch_manager().set_max_code_rate(rate);
}

bool cfg_nr_ul_pucch_t::set_harq_ack_payload_data(lib_nr_pn_seq_t data)
{
    return _get_pucch_manager().set_harq_ack_payload_data(data);
}

std::string cfg_nr_ul_pucch_t::get_uci_bits_per_slot() const
{
    return get_pucch_format() <= LIB_NR_UL_PUCCH_FORMAT_1 ? text_of(_get_pucch_manager().get_uci_bits_per_slot()) : "";
}

void cfg_nr_ul_pucch_t::get_uci_bits_per_slot(std::string& out) const
{
    out += text_of(_get_pucch_manager().get_uci_bits_per_slot());
    std::cout << "bits_str = " << out << std::endl;
}

} // namespace vek::nr_mod_lib

#include "config/cfg_nr_preset_deal.h"
#include "phy_common/tables/lib_nr_ul_frc_table.h"

#include <iostream>

// The uplink fixed reference channels of annex A of TS 38.104.

namespace vek::nr_mod_lib
{

void cfg_nr_carrier_t::deal_ul_fixed_reference_channels()
{
    const lib_nr_ul_frc_configure_manager_t choice = _target().get_ul_frc();
    const lib_nr_numerology_type_t numerology = choice.get_numerolgy();
    _lay_preset_carrier(choice, {LIB_NR_UPLINK, numerology, 1, choice.get_layers(), k_preset_ul_cell});
    lay_preset_ul_bwp(*this, numerology, choice.get_rb_number_of(numerology));

    cfg_nr_ul_sch_t& sch = *get_ul_pusch(0);
    preset_pusch_t preset{};
    preset.sch.additional_position =
        static_cast<lib_nr_sch_dmrs_additional_position_t>(choice.get_dmrs_additional_position());
    preset.sch.nid = k_preset_ul_cell;
    preset.sch.mapping_type = choice.get_mapping_type();
    preset.sch.type_a_position =
        choice.get_dmrs_type_a_position() == 2 ? LIB_NR_SCH_DMRS_TYPEA_POSITION_2 : LIB_NR_SCH_DMRS_TYPEA_POSITION_3;
    preset.transform_precoding = choice.get_enable_transfer_precoding();
    preset.layers = choice.get_layers();
    begin_preset_pusch(sch, preset);
    sch.set_slot_allocation(choice.get_sent_slots());
    sch.set_first_symbol(0);
    sch.set_symbol_num(choice.get_symbol_number());
    sch.set_bwp_id(0);
    if (choice.is_type_2()) {
        sch.set_ra_type(LIB_NR_SCH_RA_TYPE2);
        sch.set_rb_set_start(0);
        sch.set_rb_set_number(1);
        sch.set_interlace_index(std::to_string(choice.get_interlace_index()));
        sch.set_unused_rb(choice.get_unused_rb());
    }
    else {
        sch.set_ra_type(LIB_NR_SCH_RA_TYPE1);
        sch.set_rb_offset(choice.get_rb_offset());
        sch.set_rb_num(choice.get_rb_num());
    }
    sch.set_enable_coding(true);
    _frc_pusch_set_modulation(sch);
    end_preset_pusch(sch, preset);
}

void cfg_nr_carrier_t::_frc_pusch_set_modulation(cfg_nr_ul_sch_t& channel)
{
    channel.set_mcs_table(TABLE_5_1_3_1_1);
    const lib_nr_ul_frc_family_t* family = find_ul_frc_family(_target().get_ul_frc().get_fixed_reference_channels());
    if (!family) {
        std::cout << "cfg_nr_carrier_t::_frc_pusch_set_modulation : Error fixed reference channels" << std::endl;
        return;
    }
    channel.set_mcs_table(family->mcs_table);
    channel.set_mcs(family->mcs);
}

} // namespace vek::nr_mod_lib

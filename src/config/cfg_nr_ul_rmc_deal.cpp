#include "config/cfg_nr_preset_deal.h"
#include "phy_common/lib_nr_phy_common.h"

#include <iostream>

// The uplink reference measurement channels of annex A of TS 38.521-1 and TS 38.521-2.

namespace vek::nr_mod_lib
{

namespace
{

std::string unknown_spacing(const char* slots)
{
    std::cout << "cfg_nr_carrier_t::deal_ul_reference_measurement_channels : Error SCS" << std::endl;
    return slots;
}

/// The uplink slots of the TDD patterns; none for a frequency range without one.
std::string tdd_slots(lib_nr_freq_range_type_t range, lib_nr_numerology_type_t numerology)
{
    constexpr const char* k_fr1_15_khz = "4,9";
    constexpr const char* k_fr2_60_khz = "4:7,12:15,20:23,28:31";
    if (range == NR_FR1)
        switch (numerology) {
        case LIB_NR_SCS_15K:
            return k_fr1_15_khz;
        case LIB_NR_SCS_30K:
            return "8,9,18,19";
        case LIB_NR_SCS_60K:
            return "16,17,18,19,36,37,38,39";
        default:
            return unknown_spacing(k_fr1_15_khz);
        }
    if (range == NR_FR2_1)
        switch (numerology) {
        case LIB_NR_SCS_60K:
            return k_fr2_60_khz;
        case LIB_NR_SCS_120K:
            return "8:15,24:32,40:48,56:64";
        default:
            return unknown_spacing(k_fr2_60_khz);
        }
    return {};
}

std::string sent_slots(const lib_nr_ul_rmc_configure_manager_t& choice)
{
    const lib_nr_numerology_type_t numerology = choice.get_numerology();
    if (choice.get_duplex_type() == LIB_NR_DUPLEX_TYPE_FDD)
        return "0:" + std::to_string(lib_nr_phy_common_t::get_slot_in_frame(numerology) - 1);
    return tdd_slots(choice.get_frequency_range(), numerology);
}

} // namespace

void cfg_nr_carrier_t::deal_ul_reference_measurement_channels()
{
    const lib_nr_ul_rmc_configure_manager_t choice = _target().get_ul_rmc();
    const lib_nr_numerology_type_t numerology = choice.get_numerology();
    const unsigned int layers = _target().get_ul_frc().get_layers();
    _lay_preset_carrier(choice, {LIB_NR_UPLINK, numerology, 1, layers, k_preset_ul_cell});
    lay_preset_ul_bwp(*this, numerology, choice.get_rb_number_of(numerology));

    cfg_nr_ul_sch_t& sch = *get_ul_pusch(0);
    preset_pusch_t preset{};
    preset.sch.additional_position = LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_2;
    preset.sch.nid = -1;
    preset.transform_precoding = choice.get_enable_transfer_precoding();
    preset.layers = layers;
    begin_preset_pusch(sch, preset);
    sch.set_slot_allocation(sent_slots(choice));
    sch.set_first_symbol(0);
    sch.set_symbol_num(14);
    sch.set_bwp_id(0);
    sch.set_ra_type(LIB_NR_SCH_RA_TYPE1);
    sch.set_rb_offset(choice.get_rb_offset());
    sch.set_rb_num(choice.get_rb_number());
    sch.set_enable_coding(true);
    _rmc_pusch_set_modulation(sch);
    end_preset_pusch(sch, preset);
}

void cfg_nr_carrier_t::_rmc_pusch_set_modulation(cfg_nr_ul_sch_t& channel)
{
    const auto set = [&channel](mcs_table_t table, unsigned int mcs) {
        channel.set_mcs_table(table);
        channel.set_mcs(mcs);
    };
    const bool precoded = channel.get_enable_transfer_precoding();
    switch (_target().get_ul_rmc().get_modulation()) {
    case LIB_NR_MODULATION_HALF_PI_BPSK:
        set(TABLE_6_1_4_1_1, 0);
        channel.set_modulation(LIB_NR_MODULATION_HALF_PI_BPSK);
        return;
    case LIB_NR_MODULATION_QPSK:
        return set(TABLE_6_1_4_1_1, 2);
    case LIB_NR_MODULATION_16QAM:
        return set(precoded ? TABLE_6_1_4_1_1 : TABLE_5_1_3_1_1, 10);
    case LIB_NR_MODULATION_64QAM:
        return precoded ? set(TABLE_6_1_4_1_1, 18) : set(TABLE_5_1_3_1_1, 19);
    case LIB_NR_MODULATION_256QAM:
        return set(TABLE_5_1_3_1_2, 20);
    default:
        std::cout << "cfg_nr_carrier_t::_rmc_pusch_set_modulation : Error fixed reference channels" << std::endl;
        return set(TABLE_6_1_4_1_1, 2);
    }
}

} // namespace vek::nr_mod_lib

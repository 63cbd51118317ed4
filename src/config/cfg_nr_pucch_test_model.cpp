#include "config/cfg_nr_pucch_test_model.h"

#include "config/cfg_nr_pucch_test_model_texts.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <iostream>
#include <iterator>

namespace vek::nr_mod_lib
{

namespace
{

/// The spacing of a carrier; 15 kHz for a value that is no spacing.
lib_nr_numerology_type_t numerology_of(lib_nr_pucch_test_model_subcarrier_spacing_t spacing)
{
    return spacing <= LIB_NR_TEST_MODEL_SCS_120K ? static_cast<lib_nr_numerology_type_t>(spacing) : LIB_NR_SCS_15K;
}

/// The bandwidths that the tests have at a spacing, TS 38.141-1 clause 8.3 and TS 38.141-2 clause 8.3.
std::vector<lib_nr_pucch_test_model_bandwidth_t> bandwidths_of(lib_nr_pucch_test_model_subcarrier_spacing_t spacing)
{
    switch (spacing) {
    case LIB_NR_TEST_MODEL_SCS_30K:
        return {LIB_NR_TEST_MODEL_BANDWIDTH_FR1_10MHZ, LIB_NR_TEST_MODEL_BANDWIDTH_FR1_20MHZ,
                LIB_NR_TEST_MODEL_BANDWIDTH_FR1_40MHZ, LIB_NR_TEST_MODEL_BANDWIDTH_FR1_100MHZ};
    case LIB_NR_TEST_MODEL_SCS_60K:
        return {LIB_NR_TEST_MODEL_BANDWIDTH_FR2_50MHZ, LIB_NR_TEST_MODEL_BANDWIDTH_FR2_100MHZ};
    case LIB_NR_TEST_MODEL_SCS_120K:
        return {LIB_NR_TEST_MODEL_BANDWIDTH_FR2_100MHZ, LIB_NR_TEST_MODEL_BANDWIDTH_FR2_200MHZ};
    case LIB_NR_TEST_MODEL_SCS_15K:
        break;
    }
    return {LIB_NR_TEST_MODEL_BANDWIDTH_FR1_5MHZ, LIB_NR_TEST_MODEL_BANDWIDTH_FR1_10MHZ,
            LIB_NR_TEST_MODEL_BANDWIDTH_FR1_20MHZ};
}

/// By the tests' bandwidth.
constexpr lib_nr_channel_bw_type_t k_channel_bandwidths[] = {
    LIB_NR_CHANNEL_FR1_5M,   LIB_NR_CHANNEL_FR1_10M,   LIB_NR_CHANNEL_FR1_20M,    LIB_NR_CHANNEL_FR1_40M,
    LIB_NR_CHANNEL_FR1_100M, LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_100M, LIB_NR_CHANNEL_FR2_1_200M,
};

bool is_interlaced(lib_nr_pucch_test_model_t type)
{
    return type >= TS_38_141_837_ACK_MISSED_DETECTION_FOR_INTERLACED_PUCCH_FORMAT_0 &&
           type <= TS_38_141_8310_ACK_MISSED_DETECTION_FOR_INTERLACED_PUCCH_FORMAT_3;
}

} // namespace

cfg_nr_pucch_test_model_t::cfg_nr_pucch_test_model_t(lib_nr_waveform_configure_manager_t& waveform)
    : cfg_nr_ul_pucch_t(waveform)
{
    _updata_param_range();
}

void cfg_nr_pucch_test_model_t::init()
{
    cfg_nr_ul_pucch_t::init();
    m_test_model_type = TS_38_141_831_ACK_MISSED_DETECTION_FOR_PUCCH_FORMAT_0;
    m_subcarrier_spacing = LIB_NR_TEST_MODEL_SCS_30K;
    m_bandwidth = LIB_NR_TEST_MODEL_BANDWIDTH_FR1_100MHZ;
    m_duplex_type = LIB_NR_DUPLEX_TYPE_FDD;
    m_pattern.init();
    m_number_of_symbols = 1;
    m_format3_test_type = LIB_NR_PUCCH_FORMAT3_TEST_1;
    m_additional_dmes_state = false;
    _updata_param_range();
}

bool cfg_nr_pucch_test_model_t::set_test_model_type(lib_nr_pucch_test_model_t type)
{
    if (!assign(m_test_model_type, type))
        return false;
    _updata_param_range();
    return true;
}

bool cfg_nr_pucch_test_model_t::set_subcarrier_spacing(lib_nr_pucch_test_model_subcarrier_spacing_t spacing)
{
    const lib_nr_pucch_test_model_subcarrier_spacing_t before = m_subcarrier_spacing;
    if (assign(m_subcarrier_spacing, spacing))
        _updata_param_range();
    return m_subcarrier_spacing != before;
}

bool cfg_nr_pucch_test_model_t::set_bandwidth(lib_nr_pucch_test_model_bandwidth_t bandwidth)
{
    const lib_nr_pucch_test_model_bandwidth_t before = m_bandwidth;
    if (assign(m_bandwidth, bandwidth))
        _updata_param_range();
    return m_bandwidth != before;
}

bool cfg_nr_pucch_test_model_t::set_duplex_type(lib_nr_duplex_type_t duplex_type)
{
    const bool changed = assign(m_duplex_type, duplex_type);
    _follow_spacing();
    return changed;
}

/// What the test offers, and the choices within it.
void cfg_nr_pucch_test_model_t::_updata_param_range()
{
    if (is_interlaced(m_test_model_type)) {
        m_subcarrier_spacing = std::min(m_subcarrier_spacing, LIB_NR_TEST_MODEL_SCS_30K);
        m_scs_range = {LIB_NR_TEST_MODEL_SCS_15K, LIB_NR_TEST_MODEL_SCS_30K};
        m_bandwidth_range = {LIB_NR_TEST_MODEL_BANDWIDTH_FR1_20MHZ};
    }
    else {
        m_scs_range = {LIB_NR_TEST_MODEL_SCS_15K, LIB_NR_TEST_MODEL_SCS_30K, LIB_NR_TEST_MODEL_SCS_60K,
                       LIB_NR_TEST_MODEL_SCS_120K};
        m_bandwidth_range = bandwidths_of(m_subcarrier_spacing);
    }
    m_bandwidth = std::clamp(m_bandwidth, m_bandwidth_range.front(), m_bandwidth_range.back());
    _follow_spacing();
}

void cfg_nr_pucch_test_model_t::_follow_spacing()
{
    if (m_duplex_type == LIB_NR_DUPLEX_TYPE_TDD)
        m_pattern.set_numerology_type(numerology_of(m_subcarrier_spacing));
}

bool cfg_nr_pucch_test_model_t::set_transmission_periodicity(lib_nr_tdd_transmission_periodicity_t periodicity)
{
    const lib_nr_tdd_transmission_periodicity_t before = get_transmission_periodicity();
    m_pattern.set_transmission_periodicity(periodicity);
    return get_transmission_periodicity() != before;
}

lib_nr_tdd_transmission_periodicity_t cfg_nr_pucch_test_model_t::get_transmission_periodicity() const
{
    return m_pattern.get_transmission_periodicity();
}

const std::vector<lib_nr_tdd_transmission_periodicity_t>&
cfg_nr_pucch_test_model_t::get_transmission_periodicity_range() const
{
    return m_pattern.get_transmission_periodicity_range();
}

bool cfg_nr_pucch_test_model_t::set_number_of_downlink_slots(unsigned int number)
{
    const unsigned int before = get_number_of_downlink_slots();
    m_pattern.set_number_of_downlink_slots(number);
    return get_number_of_downlink_slots() != before;
}

bool cfg_nr_pucch_test_model_t::set_number_of_uplink_slots(unsigned int number)
{
    const unsigned int before = get_number_of_uplink_slots();
    m_pattern.set_number_of_uplink_slots(std::max(number, 1U));
    return get_number_of_uplink_slots() != before;
}

bool cfg_nr_pucch_test_model_t::set_tdd_slot_allocation(const std::vector<lib_nr_tdd_slot_t>& slots)
{
    const std::vector<lib_nr_tdd_slot_t> before = get_tdd_slot_allocation();
    m_pattern.set_tdd_slot_allocation(slots);
    return get_tdd_slot_allocation() != before;
}

bool cfg_nr_pucch_test_model_t::set_number_of_symbols(unsigned int number)
{
    return assign(m_number_of_symbols, std::clamp(number, 1U, 2U));
}

bool cfg_nr_pucch_test_model_t::set_format3_test_type(lib_nr_pucch_format3_test_model_type_t type)
{
    return assign(m_format3_test_type, type);
}

bool cfg_nr_pucch_test_model_t::set_additional_dmes_state(bool state) { return assign(m_additional_dmes_state, state); }

const char* cfg_nr_pucch_test_model_t::get_display_infomation() const
{
    const char* text = find_pucch_test_model_text(m_test_model_type);
    if (!text)
        std::cerr << " Error: Undefined test model type" << std::endl;
    return text;
}

// Laying it on the carrier

bool cfg_nr_pucch_test_model_t::apply_test_model()
{
    using apply_t = void (cfg_nr_pucch_test_model_t::*)();
    static constexpr apply_t k_apply[] = {
        &cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_format_0,
        &cfg_nr_pucch_test_model_t::_apply_nack_to_ack_detection_for_format_1,
        &cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_format_1,
        &cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_format_2,
        &cfg_nr_pucch_test_model_t::_apply_uci_bler_performance_for_format_2,
        &cfg_nr_pucch_test_model_t::_apply_uci_bler_performance_for_format_3,
        &cfg_nr_pucch_test_model_t::_apply_uci_bler_performance_for_format_4,
        &cfg_nr_pucch_test_model_t::_apply_nack_to_ack_detection_for_mutli_slot_format_1,
        &cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_mutli_slot_format_1,
        &cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_interlaced_format_0,
        &cfg_nr_pucch_test_model_t::_apply_nack_to_ack_detection_for_interlaced_format_1,
        &cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_interlaced_format_1,
        &cfg_nr_pucch_test_model_t::_apply_uci_bler_performance_for_interlaced_format_2,
        &cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_interlaced_format_3,
    };
    _lay_carrier();
    set_enable(true);
    set_allocated_slots(_sent_slots());
    if (m_test_model_type >= std::size(k_apply)) {
        std::cerr << " Error: Undefined test model type" << std::endl;
        return false;
    }
    const apply_t apply = k_apply[m_test_model_type];
    (this->*apply)();
    return true;
}

/// A fresh uplink carrier, with the BWP of the PUCCH over all of it. A reset takes the choices of presets with it, so
/// they are given back.
void cfg_nr_pucch_test_model_t::_lay_carrier()
{
    lib_nr_carrier_configure_manager_t& carrier = _carrier();
    const lib_nr_preset_choices_t choices = carrier.get_presets();
    carrier.init();
    carrier.set_enable(true);
    carrier.set_carrier_type(LIB_NR_UPLINK);
    carrier.set_presets(choices);
    carrier.set_bandwidth(k_channel_bandwidths[m_bandwidth]);
    carrier.set_numerology(numerology_of(m_subcarrier_spacing));
    m_waveform.refit_cfr_filter_mask();

    const lib_nr_phy_numerology_configure_manager_t& numerology = carrier.get_numerology_manager(0U);
    const unsigned int rb_number =
        lib_nr_phy_common_t::get_max_transmit_rb_num(numerology.get_numerolgy(), carrier.get_bandwidth());
    carrier.set_ul_bwp_rb_number(get_bwp_id(), rb_number, numerology.get_rb_start(), numerology.get_rb_size());
}

std::string cfg_nr_pucch_test_model_t::_sent_slots() const
{
    const unsigned int slots_in_frame = lib_nr_phy_common_t::get_slot_in_frame(_carrier().get_numerology());
    if (m_duplex_type != LIB_NR_DUPLEX_TYPE_TDD)
        return "0:" + std::to_string(slots_in_frame - 1);
    const std::vector<lib_nr_tdd_slot_t>& pattern = get_tdd_slot_allocation();
    const auto period = static_cast<unsigned int>(pattern.size());
    std::string text;
    for (unsigned int start = 0; period > 0 && start + period <= slots_in_frame; start += period)
        for (unsigned int i = 0; i < period; ++i)
            if (pattern[i] == LIB_NR_TDD_UPLINK_SLOT)
                append_index(text, start + i);
    return text;
}

// The tests. The settings of a PUCCH look at each other, so their order counts: the format comes first, the payload
// last.

void cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_format_0()
{
    const bool has_two_symbols = m_number_of_symbols == 2;
    set_pucch_format(LIB_NR_UL_PUCCH_FORMAT_0);
    set_payload_size(1);
    set_rb_offset(0);
    set_rb_num(1);
    set_intra_slot_frequency_hopping(has_two_symbols);
    _put_second_hop_at_top();
    _end_sequence_hopping();
    set_initial_cyclic_shift(0);
    set_first_symbol(has_two_symbols ? 12 : 13);
    set_symbol_num(m_number_of_symbols);
    set_intra_slot_frequency_hopping(has_two_symbols); // ended on the way to two symbols
    set_uci_format(LIB_NR_UL_UCI_HARQ_ACK_ONLY);
    _send_ones();
}

void cfg_nr_pucch_test_model_t::_lay_format_1(bool is_repeated)
{
    set_pucch_format(LIB_NR_UL_PUCCH_FORMAT_1);
    set_payload_size(2);
    set_rb_offset(0);
    set_rb_num(1);
    set_first_symbol(0);
    set_symbol_num(14);
    set_intra_slot_frequency_hopping(!is_repeated);
    if (is_repeated)
        set_inter_slot_frequency_hopping(true);
    _put_second_hop_at_top();
    _end_sequence_hopping();
    set_initial_cyclic_shift(0);
    set_occ_index(0);
    if (is_repeated)
        set_number_of_slots_for_pucch_repetition(2);
    set_uci_format(LIB_NR_UL_UCI_HARQ_ACK_ONLY);
}

void cfg_nr_pucch_test_model_t::_apply_nack_to_ack_detection_for_format_1()
{
    _lay_format_1(false);
    _send_pn9();
}

void cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_format_1()
{
    _lay_format_1(false);
    _send_ones();
}

void cfg_nr_pucch_test_model_t::_apply_nack_to_ack_detection_for_mutli_slot_format_1()
{
    _lay_format_1(true);
    _send_pn9();
}

void cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_mutli_slot_format_1()
{
    _lay_format_1(true);
    _send_ones();
}

void cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_format_2()
{
    set_pucch_format(LIB_NR_UL_PUCCH_FORMAT_2);
    set_rb_offset(0);
    set_intra_slot_frequency_hopping(false);
    set_rb_num(4);
    _put_second_hop_at_top();
    set_first_symbol(13);
    set_symbol_num(1);
    set_payload_size(4);
    set_scrambling_id0(0);
    _send_ones();
}

void cfg_nr_pucch_test_model_t::_apply_uci_bler_performance_for_format_2()
{
    set_pucch_format(LIB_NR_UL_PUCCH_FORMAT_2);
    set_rb_offset(0);
    set_intra_slot_frequency_hopping(true);
    set_rb_num(9);
    _put_second_hop_at_top();
    set_first_symbol(12);
    set_symbol_num(2);
    set_intra_slot_frequency_hopping(true); // ended on the way to two symbols
    set_payload_size(22);
    set_scrambling_id0(0);
    _send_pn9();
}

void cfg_nr_pucch_test_model_t::_apply_uci_bler_performance_for_format_3()
{
    const bool is_test_2 = m_format3_test_type == LIB_NR_PUCCH_FORMAT3_TEST_2;
    set_pucch_format(LIB_NR_UL_PUCCH_FORMAT_3);
    set_pi_2_bpsk(false);
    set_rb_offset(0);
    set_intra_slot_frequency_hopping(true);
    _end_sequence_hopping();
    set_rb_num(is_test_2 ? 3 : 1);
    _put_second_hop_at_top();
    set_first_symbol(0);
    set_symbol_num(is_test_2 ? 4 : 14);
    set_payload_size(16);
    set_additional_dmrs(m_additional_dmes_state);
    _send_pn9();
}

void cfg_nr_pucch_test_model_t::_apply_uci_bler_performance_for_format_4()
{
    set_pucch_format(LIB_NR_UL_PUCCH_FORMAT_4);
    set_pi_2_bpsk(false);
    set_rb_offset(0);
    set_intra_slot_frequency_hopping(true);
    _put_second_hop_at_top();
    _end_sequence_hopping();
    set_first_symbol(0);
    set_symbol_num(14);
    set_payload_size(22);
    set_occ_length(LIB_NR_UL_PUCCH_OCC_LENGTH_2);
    set_occ_index(0);
    set_additional_dmrs(m_additional_dmes_state);
    _send_pn9();
}

void cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_interlaced_format_0()
{
    set_pucch_format(LIB_NR_UL_PUCCH_FORMAT_0);
    set_use_interlace_pucch(true);
    set_payload_size(1);
    set_first_symbol(13);
    set_symbol_num(1);
    set_intra_slot_frequency_hopping(false);
    _end_sequence_hopping();
    set_initial_cyclic_shift(0);
    set_interlace0(0);
    set_pucch_interlace0(LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11);
    set_uci_format(LIB_NR_UL_UCI_HARQ_ACK_ONLY);
    _send_ones();
}

void cfg_nr_pucch_test_model_t::_lay_interlaced_format_1()
{
    set_pucch_format(LIB_NR_UL_PUCCH_FORMAT_1);
    set_use_interlace_pucch(true);
    set_payload_size(2);
    set_first_symbol(0);
    set_symbol_num(14);
    set_intra_slot_frequency_hopping(false);
    _end_sequence_hopping();
    set_initial_cyclic_shift(0);
    set_occ_index(0);
    set_interlace0(0);
    set_pucch_interlace0(LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11);
    set_uci_format(LIB_NR_UL_UCI_HARQ_ACK_ONLY);
}

void cfg_nr_pucch_test_model_t::_apply_nack_to_ack_detection_for_interlaced_format_1()
{
    _lay_interlaced_format_1();
    _send_pn9();
}

void cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_interlaced_format_1()
{
    _lay_interlaced_format_1();
    _send_ones();
}

void cfg_nr_pucch_test_model_t::_apply_uci_bler_performance_for_interlaced_format_2()
{
    set_pucch_format(LIB_NR_UL_PUCCH_FORMAT_2);
    set_use_interlace_pucch(true);
    set_pi_2_bpsk(false);
    set_intra_slot_frequency_hopping(false);
    set_payload_size(22);
    set_first_symbol(13);
    set_symbol_num(1);
    set_scrambling_id0(0);
    set_interlace0(0);
    set_pucch_interlace0(LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11);
    set_occ_length(LIB_NR_UL_PUCCH_OCC_LENGTH_1);
    _send_pn9();
}

void cfg_nr_pucch_test_model_t::_apply_ack_missed_detection_for_interlaced_format_3()
{
    set_pucch_format(LIB_NR_UL_PUCCH_FORMAT_3);
    set_use_interlace_pucch(true);
    set_pi_2_bpsk(false);
    set_intra_slot_frequency_hopping(false);
    _end_sequence_hopping();
    set_first_symbol(0);
    set_symbol_num(4);
    set_payload_size(4);
    set_occ_index(0);
    set_occ_length(LIB_NR_UL_PUCCH_OCC_LENGTH_1);
    set_scrambling_id0(0);
    set_interlace0(0);
    set_pucch_interlace0(LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_10);
    set_additional_dmrs(m_additional_dmes_state);
    _send_ones();
}

void cfg_nr_pucch_test_model_t::_end_sequence_hopping()
{
    set_pucch_group_hopping(LIB_NR_UL_GROUP_HOPPING_NEITHER);
    set_hopping_id(0);
}

/// The second hop takes the highest resource blocks of the BWP.
void cfg_nr_pucch_test_model_t::_put_second_hop_at_top()
{
    set_second_hop_prb(_carrier().get_ul_bwp(get_bwp_id()).get_rb_number() - get_rb_num());
}

void cfg_nr_pucch_test_model_t::_send_ones()
{
    set_payload_data(LIB_NR_USER_CFG);
    set_payload_user_bits("1");
}

void cfg_nr_pucch_test_model_t::_send_pn9() { set_payload_data(LIB_NR_PN9_ITU); }

} // namespace vek::nr_mod_lib

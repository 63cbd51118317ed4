#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_ul_pucch.h"
#include "phy_common/lib_nr_duplex_type.h"
#include "phy_common/lib_nr_pucch_test_model_type.h"
#include "phy_common/lib_nr_tdd_slot_allocation.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Performance tests of the PUCCH (TS 38.141-1 clause 8.3), laid on the first PUCCH of a carrier. What is chosen is
/// held here and not by a carrier: all carriers share it, and it outlives them. As far as the test leaves a choice, the
/// set-up is one of the PUCCH's own settings, so that its rules hold.
///
/// Setters return true when the stored value changed.
class NR_MOD_LIB_EXPORT cfg_nr_pucch_test_model_t : public cfg_nr_ul_pucch_t
{
public:
    explicit cfg_nr_pucch_test_model_t(lib_nr_waveform_configure_manager_t& waveform);

    /// Puts the cursor on the first carrier and brings all choices back to their defaults.
    void init();
    /// Moves the cursor to the first PUCCH of a carrier; false, and no move, past the end of the carriers.
    bool set_current_carrier_index(unsigned int carrier) { return set_current_pucch_index(carrier, 0); }

    /// Lays the test on the carrier, which starts anew as an uplink carrier: spacing, bandwidth, a BWP over all of it,
    /// and its PUCCH in every slot, or in TDD in the uplink slots of the pattern. The carrier keeps its timing offset
    /// and what is chosen in the families of presets; of the waveform, filter mask and block size of the crest factor
    /// reduction follow the sample rate. A pattern of no slots, or without one of the uplink, leaves slot 0. In NTN
    /// mode a bandwidth that has none becomes 30 MHz. False, with a line on the error stream and a PUCCH of the default
    /// format, for a value that is no test.
    bool apply_test_model();

    /// Interlaced tests have 15 and 30 kHz, a higher spacing becomes 30 kHz, and 20 MHz.
    bool set_test_model_type(lib_nr_pucch_test_model_t type);
    lib_nr_pucch_test_model_t get_test_model_type() const { return m_test_model_type; }
    /// The bandwidth moves to the nearest one that the spacing has. A value that is no spacing is sent as 15 kHz.
    bool set_subcarrier_spacing(lib_nr_pucch_test_model_subcarrier_spacing_t spacing);
    lib_nr_pucch_test_model_subcarrier_spacing_t get_subcarrier_spacing() const { return m_subcarrier_spacing; }
    const std::vector<lib_nr_pucch_test_model_subcarrier_spacing_t>& get_scs_range() const { return m_scs_range; }
    /// Limited to those of the spacing.
    bool set_bandwidth(lib_nr_pucch_test_model_bandwidth_t bandwidth);
    lib_nr_pucch_test_model_bandwidth_t get_bandwidth() const { return m_bandwidth; }
    const std::vector<lib_nr_pucch_test_model_bandwidth_t>& get_bandwidth_range() const { return m_bandwidth_range; }
    /// In TDD the pattern takes the spacing.
    bool set_duplex_type(lib_nr_duplex_type_t duplex_type);
    lib_nr_duplex_type_t get_duplex_type() const { return m_duplex_type; }

    // The TDD pattern; its rules are those of lib_nr_tdd_slot_allocation_t.

    /// A period that the pattern's spacing does not offer is ignored.
    bool set_transmission_periodicity(lib_nr_tdd_transmission_periodicity_t periodicity);
    lib_nr_tdd_transmission_periodicity_t get_transmission_periodicity() const;
    const std::vector<lib_nr_tdd_transmission_periodicity_t>& get_transmission_periodicity_range() const;
    /// At most the slots of the period; special slots give way first, then those of the uplink.
    bool set_number_of_downlink_slots(unsigned int number);
    unsigned int get_number_of_downlink_slots() const { return m_pattern.get_number_of_downlink_slots(); }
    /// 1 in place of 0, at most the slots of the period; special slots give way first, then those of the downlink.
    bool set_number_of_uplink_slots(unsigned int number);
    unsigned int get_number_of_uplink_slots() const { return m_pattern.get_number_of_uplink_slots(); }
    unsigned int get_number_of_special_slots() const { return m_pattern.get_number_of_special_slots(); }
    /// The slots one by one, cut or filled with special slots to the period.
    bool set_tdd_slot_allocation(const std::vector<lib_nr_tdd_slot_t>& slots);
    const std::vector<lib_nr_tdd_slot_t>& get_tdd_slot_allocation() const
    {
        return m_pattern.get_tdd_slot_allocation();
    }

    /// 1 or 2, of the first test alone, which hops with 2.
    bool set_number_of_symbols(unsigned int number);
    unsigned int get_number_of_symbols() const { return m_number_of_symbols; }
    /// Of the test of format 3: 1 resource block and 14 symbols, or 3 and 4.
    bool set_format3_test_type(lib_nr_pucch_format3_test_model_type_t type);
    lib_nr_pucch_format3_test_model_type_t get_format3_test_type() const { return m_format3_test_type; }
    /// Additional DMRS, in the tests of formats 3 and 4.
    bool set_additional_dmes_state(bool state);
    bool get_additional_dmes_state() const { return m_additional_dmes_state; }

    /// What the test sends, in lines; null, and a line on the error stream, for a value that is no test.
    const char* get_display_infomation() const;

private:
    void _updata_param_range();
    void _follow_spacing();
    void _lay_carrier();
    std::string _sent_slots() const;

    void _apply_ack_missed_detection_for_format_0();
    void _apply_nack_to_ack_detection_for_format_1();
    void _apply_ack_missed_detection_for_format_1();
    void _apply_ack_missed_detection_for_format_2();
    void _apply_uci_bler_performance_for_format_2();
    void _apply_uci_bler_performance_for_format_3();
    void _apply_uci_bler_performance_for_format_4();
    void _apply_nack_to_ack_detection_for_mutli_slot_format_1();
    void _apply_ack_missed_detection_for_mutli_slot_format_1();
    void _apply_ack_missed_detection_for_interlaced_format_0();
    void _apply_nack_to_ack_detection_for_interlaced_format_1();
    void _apply_ack_missed_detection_for_interlaced_format_1();
    void _apply_uci_bler_performance_for_interlaced_format_2();
    void _apply_ack_missed_detection_for_interlaced_format_3();

    // What several tests have in common.
    void _lay_format_1(bool is_repeated);
    void _lay_interlaced_format_1();
    void _end_sequence_hopping();
    void _put_second_hop_at_top();
    void _send_ones();
    void _send_pn9();

    lib_nr_pucch_test_model_t m_test_model_type = TS_38_141_831_ACK_MISSED_DETECTION_FOR_PUCCH_FORMAT_0;
    lib_nr_pucch_test_model_subcarrier_spacing_t m_subcarrier_spacing = LIB_NR_TEST_MODEL_SCS_30K;
    lib_nr_pucch_test_model_bandwidth_t m_bandwidth = LIB_NR_TEST_MODEL_BANDWIDTH_FR1_100MHZ;
    lib_nr_duplex_type_t m_duplex_type = LIB_NR_DUPLEX_TYPE_FDD;
    lib_nr_tdd_slot_allocation_t m_pattern;
    unsigned int m_number_of_symbols = 1;
    lib_nr_pucch_format3_test_model_type_t m_format3_test_type = LIB_NR_PUCCH_FORMAT3_TEST_1;
    bool m_additional_dmes_state = false;
    std::vector<lib_nr_pucch_test_model_bandwidth_t> m_bandwidth_range;
    std::vector<lib_nr_pucch_test_model_subcarrier_spacing_t> m_scs_range;
};

} // namespace vek::nr_mod_lib

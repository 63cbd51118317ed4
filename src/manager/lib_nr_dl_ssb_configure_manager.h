#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_common/lib_nr_pn_seq.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_phy_numerology_configure_manager_t;

/// Where the candidate blocks lie in a half frame: the cases of TS 38.213 clause 4.1.
enum lib_nr_ssb_case_t : std::uint32_t
{
    NR_SSB_CASE_A = 0,
    NR_SSB_CASE_B = 1,
    NR_SSB_CASE_C = 2,
    NR_SSB_CASE_D = 3,
    NR_SSB_CASE_E = 4,
    NR_SSB_CASE_F = 5,
    NR_SSB_CASE_G = 6,
};

/// How many candidate blocks a half frame has; the value is the count.
enum lib_nr_lmax_t : std::uint32_t
{
    LIB_NR_LMAX_4 = 4,
    LIB_NR_LMAX_8 = 8,
    LIB_NR_LMAX_64 = 64,
};

/// Time from burst to burst; the value is in milliseconds.
enum lib_ssb_periodicity_t : std::uint32_t
{
    LIB_NR_SSB_5MS_PERIODICITY = 5,
    LIB_NR_SSB_10MS_PERIODICITY = 10,
    LIB_NR_SSB_20MS_PERIODICITY = 20,
    LIB_NR_SSB_40MS_PERIODICITY = 40,
    LIB_NR_SSB_80MS_PERIODICITY = 80,
    LIB_NR_SSB_160MS_PERIODICITY = 160,
};

/// The SS/PBCH block of one carrier: when and where its blocks are sent, how strong they are and what their MIB says,
/// kept consistent with the numerology, the bandwidth and the radio frequency.
///
/// The block stands in one of the carrier's numerologies and follows it through the `update_` operations. It needs 20
/// resource blocks and has no place at 60 kHz; there it cannot be enabled. Setters return true when the stored value
/// changed; an operation that tells otherwise says so. The settings' rules are told in their façade, `cfg_nr_dl_ssb_t`,
/// here only what the façade does not show.
class NR_MOD_LIB_EXPORT lib_nr_dl_ssb_configure_manager_t
{
public:
    /// Resource blocks that the block takes in frequency.
    static constexpr unsigned int k_rb_number = 20;
    /// Half frame index that stands for both half frames.
    static constexpr unsigned char k_both_half_frames = 255;

    /// A disabled block with the settings of `init`.
    lib_nr_dl_ssb_configure_manager_t(const lib_nr_phy_numerology_configure_manager_t& numerology,
                                      lib_nr_channel_bw_type_t bandwidth);

    /// Back to the defaults, in the middle of the numerology given; the block's radio frequency stays.
    void init(const lib_nr_phy_numerology_configure_manager_t& numerology, lib_nr_channel_bw_type_t bandwidth);

    /// Follow the numerology: pattern, RB offset, Lmax with both lists, kssb. 60 kHz prints a line and disables the
    /// block, fewer than 20 resource blocks disable it silently.
    void update_by_numerology(const lib_nr_phy_numerology_configure_manager_t& numerology);
    /// The same for a new bandwidth. At 5 MHz the block goes to 15 kHz, the only spacing with room for it.
    void update_by_bandwidth(const lib_nr_phy_numerology_configure_manager_t& numerology,
                             lib_nr_channel_bw_type_t bandwidth);
    /// Stores the radio frequency in hertz, carrier offset included, then follows the numerology.
    void update_by_radio_frequency(const lib_nr_phy_numerology_configure_manager_t& numerology, double frequency);
    /// Stores the radio frequency in hertz, carrier offset included, and adapts Lmax, which resets both lists.
    void update_frequency_offset_hz(double frequency);

    /// True sticks only where the block has a place: not at 60 kHz, not below 20 resource blocks.
    bool set_enable(bool enable, unsigned int rb_size);
    bool get_enable() const { return m_enable; }

    /// Moves to a spacing: takes its pattern (case B at 30 kHz) and the RB offset `rb_size` - 20, and disables the
    /// block below 20 resource blocks. Returns whether the block has a place there: 60 kHz is stored, disables the
    /// block and gives false. An unknown spacing prints a line, changes nothing and gives true.
    bool set_numerology(lib_nr_numerology_type_t numerology, unsigned int rb_size);
    lib_nr_numerology_type_t get_numerology() const { return m_numerology; }

    bool set_ssb_pattern(lib_nr_ssb_case_t pattern);
    /// Stores the case that the spacing forces, if it forces one, and returns the stored case.
    lib_nr_ssb_case_t get_ssb_pattern(lib_nr_numerology_type_t numerology);
    lib_nr_ssb_case_t get_ssb_pattern() const { return m_ssb_pattern; }
    /// The cases that a spacing allows, which are stored as the valid pattern list; none at 60 kHz.
    const std::vector<lib_nr_ssb_case_t>& get_ssb_pattern_feedback(lib_nr_numerology_type_t numerology);

    /// Lmax follows from spacing, pattern and frequency in hertz (up to 3 GHz, this included, 4, above 8; 64 from
    /// 120 kHz on), whatever is asked for. Resets the active indices to 0 to 3 and their powers to 0 dB.
    bool set_lmax(lib_nr_numerology_type_t numerology, lib_nr_lmax_t lmax, double frequency);
    lib_nr_lmax_t get_lmax() const { return m_lmax; }

    bool set_active_idx(const std::string& text);
    const std::vector<int>& get_active_idx() const { return m_active_idx; }
    const std::string& get_active_idx_text() const { return m_active_idx_text; }

    bool set_power_boosting(const std::string& text);
    const std::vector<double>& get_power_boosting() const { return m_power_boosting; }
    const std::string& get_power_boosting_text() const { return m_power_boosting_text; }

    bool set_pss_power_boosting(double power);
    double get_pss_power_boosting() const { return m_pss_power_boosting; }

    bool set_periodicity(lib_ssb_periodicity_t periodicity);
    lib_ssb_periodicity_t get_periodicity() const { return m_periodicity; }

    bool set_half_frame_idx(unsigned char half_frame_idx);
    unsigned char get_half_frame_idx() const { return m_half_frame_idx; }

    /// Lowest resource block of the block, in RBs of 15 kHz in FR1 and of 60 kHz in FR2. The room above the block,
    /// (rb_size - 20) RBs of its own spacing, is the limit: it replaces what reaches it, with a printed line, and kssb
    /// becomes 0. Below 20 RBs there is no room. At 60 kHz anything up to 2^31 - 1 is stored.
    bool set_rb_offset(unsigned int rb_offset, lib_nr_numerology_type_t numerology, lib_nr_channel_bw_type_t bandwidth,
                       unsigned int rb_size);
    unsigned int get_rb_offset() const { return m_rb_offset; }

    /// k_SSB, in subcarriers of the RB offset's spacing: at most 23 at 15 and 30 kHz and 11 at 120 and 240 kHz, rounded
    /// down to whole subcarriers of the block, and limited by the room above the block. 480 and 960 kHz keep what is
    /// stored, 60 kHz takes anything up to 2^31 - 1. The MIB's ssb subcarrier offset takes the same value.
    bool set_kssb(unsigned int kssb, lib_nr_numerology_type_t numerology, lib_nr_channel_bw_type_t bandwidth,
                  unsigned int rb_size);
    unsigned int get_kssb() const { return m_kssb; }

    bool set_coding(bool coding);
    bool get_coding() const { return m_coding; }

    bool set_auto_cofig_mib(bool auto_cofig_mib);
    bool get_auto_cofig_mib() const { return m_auto_cofig_mib; }

    bool set_data_source_custom(const std::string& text);
    const std::vector<unsigned char>& get_data_source_custom_config() const { return m_data_source_custom; }
    const std::string& get_data_source_custom_text() const { return m_data_source_custom_text; }

    bool set_data_source(lib_nr_pn_seq_t data_source);
    lib_nr_pn_seq_t get_data_source() const { return m_data_source; }

    /// The common spacing of the MIB: the block's own, which is stored and returned.
    lib_nr_numerology_type_t get_subcarrier_spacing_common();

    bool set_ssb_subcarrier_offset(unsigned int offset);
    unsigned int get_ssb_subcarrier_offset() const { return m_ssb_subcarrier_offset; }

    bool set_dmrs_typea_position(unsigned int position);
    unsigned int get_dmrs_typeA_position() const { return m_dmrs_typea_position; }

    bool set_pdcch_config_sib1(unsigned int config);
    unsigned int get_pdcch_config_sib1() const { return m_pdcch_config_sib1; }

    bool set_cell_barred(bool cell_barred);
    bool get_cell_barred() const { return m_cell_barred; }

    bool set_intra_frequency_reselection(bool reselection);
    bool get_intra_freq_reselection() const { return m_intra_frequency_reselection; }

    lib_nr_channel_bw_type_t get_bandwidth() const { return m_bandwidth; }
    double get_radio_frequency() const { return m_radio_frequency; }

private:
    void _update_after_numerology(const lib_nr_phy_numerology_configure_manager_t& numerology);
    void _reset_rb_offset(lib_nr_numerology_type_t numerology, lib_nr_channel_bw_type_t bandwidth,
                          unsigned int rb_size);
    void _force_ssb_pattern(lib_nr_numerology_type_t numerology);

    bool m_enable = false;
    lib_nr_ssb_case_t m_ssb_pattern = NR_SSB_CASE_B;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_lmax_t m_lmax = LIB_NR_LMAX_4;
    std::vector<int> m_active_idx = {0, 1, 2, 3};
    std::vector<double> m_power_boosting = std::vector<double>(64, 0.0);
    double m_pss_power_boosting = 0.0;
    lib_ssb_periodicity_t m_periodicity = LIB_NR_SSB_10MS_PERIODICITY;
    unsigned char m_half_frame_idx = 0;
    std::uint32_t m_rb_offset = 253;
    std::uint32_t m_kssb = 0;
    bool m_coding = true;
    bool m_auto_cofig_mib = true;
    std::vector<unsigned char> m_data_source_custom = {0};
    lib_nr_pn_seq_t m_data_source = LIB_NR_PN9;
    lib_nr_numerology_type_t m_subcarrier_spacing_common = LIB_NR_SCS_30K;
    std::uint32_t m_ssb_subcarrier_offset = 0;
    std::uint32_t m_dmrs_typea_position = 2;
    std::uint32_t m_pdcch_config_sib1 = 0;
    bool m_cell_barred = false;
    bool m_intra_frequency_reselection = false;
    std::string m_active_idx_text = "0,1,2,3";
    std::string m_power_boosting_text = "0,0,0,0";
    std::string m_data_source_custom_text = "0";
    std::vector<lib_nr_ssb_case_t> m_valid_ssb_pattern = {NR_SSB_CASE_B};
    lib_nr_channel_bw_type_t m_bandwidth;
    double m_radio_frequency = 1e9;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' SS/PBCH blocks, of which each carrier has one. Setters return true when the stored value
/// changed.
///
/// At Lmax 4 the scrambling of the coded PBCH counts the half frame, unlike TS 38.211 clause 7.3.3.1, which leaves it
/// out.
class NR_MOD_LIB_EXPORT cfg_nr_dl_ssb_t : public cfg_nr_single_cursor_t
{
public:
    explicit cfg_nr_dl_ssb_t(lib_nr_waveform_configure_manager_t& waveform)
        : cfg_nr_single_cursor_t(waveform, "cfg_nr_dl_ssb_t")
    {}

    /// Stays false at 60 kHz and below 20 resource blocks, where the block has no place.
    bool set_enable(bool enable);
    bool get_enable() const { return _target().get_enable(); }

    /// 30 kHz alone leaves a choice, between the cases B and C; anything else is ignored.
    bool set_ssb_pattern(lib_nr_ssb_case_t pattern) { return _target().set_ssb_pattern(pattern); }
    lib_nr_ssb_case_t get_ssb_pattern() const;
    std::vector<lib_nr_ssb_case_t> get_ssb_pattern_for_ui() const;

    /// Powers in dB by block index, such as "0,-3,1.5"; missing ones are 0 dB. The active indices take theirs, limited
    /// to -40 to 40; what stands at an inactive index stays. Reads back with all Lmax powers, two decimals.
    bool set_power_boosting(const std::string& text) { return _target().set_power_boosting(text); }
    std::string get_power_boosting() const { return _target().get_power_boosting_text(); }

    /// Power of the PSS in dB above its block, limited to -40 to 40.
    bool set_pss_power_boosting(double power) { return _target().set_pss_power_boosting(power); }
    double get_pss_power_boosting() const { return _target().get_pss_power_boosting(); }

    /// Sets the half frame index too: 255 at 5 ms, else 0. Values without an enumerator are ignored.
    bool set_periodicity(lib_ssb_periodicity_t periodicity) { return _target().set_periodicity(periodicity); }
    lib_ssb_periodicity_t get_periodicity() const { return _target().get_periodicity(); }

    /// 0 or 1 (for anything but 0); always 255, both half frames, at a periodicity of 5 ms.
    bool set_half_frame_idx(unsigned char half_frame_idx) { return _target().set_half_frame_idx(half_frame_idx); }
    unsigned char get_half_frame_idx() const { return _target().get_half_frame_idx(); }

    /// Block indices to send, such as "0,2:4"; indices from Lmax on drop out, and a text without any index changes
    /// nothing. The powers are applied again.
    bool set_active_idx(const std::string& text) { return _target().set_active_idx(text); }
    std::string get_active_idx() const { return _target().get_active_idx_text(); }

    /// Lmax follows from spacing, pattern and radio frequency, whatever is asked for. Resets the active indices to 0 to
    /// 3 and their powers to 0 dB.
    bool set_lmax(lib_nr_lmax_t lmax);
    lib_nr_lmax_t get_lmax() const { return _target().get_lmax(); }

    /// Without coding the 32 scrambled payload bits are sent bare, zeros behind them.
    bool set_coding(bool coding) { return _target().set_coding(coding); }
    bool get_coding() const { return _target().get_coding(); }

    /// ssb-SubcarrierOffset of the MIB, at most 31; the MIB carries its low four bits.
    bool set_ssb_subcarrier_offset(unsigned int offset) { return _target().set_ssb_subcarrier_offset(offset); }
    unsigned int get_ssb_subcarrier_offset() const { return _target().get_ssb_subcarrier_offset(); }

    /// The user's MIB bits, such as "1011"; a text without bits changes nothing.
    bool set_data_source_custom(const std::string& text) { return _target().set_data_source_custom(text); }
    std::string get_data_source_custom() const { return _target().get_data_source_custom_text(); }

    /// A spacing of the carrier's enabled numerologies; any other becomes the first of them. Resets what depends on it.
    bool set_numerology(lib_nr_numerology_type_t numerology);
    lib_nr_numerology_type_t get_numerology() const { return _target().get_numerology(); }

    /// Whether the MIB is made from the fields here, or its 24 bits come from the data source.
    bool set_auto_cofig_mib(bool auto_cofig_mib) { return _target().set_auto_cofig_mib(auto_cofig_mib); }
    bool get_auto_cofig_mib() const { return _target().get_auto_cofig_mib(); }

    /// Ignored while the MIB is automatic.
    bool set_data_source(lib_nr_pn_seq_t data_source) { return _target().set_data_source(data_source); }
    lib_nr_pn_seq_t get_data_source() const { return _target().get_data_source(); }

    /// dmrs-TypeA-Position of the MIB, 2 or 3; shared channels that take their first DMRS symbol from the MIB follow.
    bool set_dmrs_typea_position(unsigned int position) { return _carrier().set_dl_ssb_dmrs_typea_position(position); }
    unsigned int get_dmrs_typea_position() const { return _target().get_dmrs_typeA_position(); }

    /// pdcch-ConfigSIB1 of the MIB, at most 255.
    bool set_pdcch_config_sib1(unsigned int config) { return _target().set_pdcch_config_sib1(config); }
    unsigned int get_pdcch_config_sib1() const { return _target().get_pdcch_config_sib1(); }

    /// The bits of the MIB themselves: TS 38.331 reads cellBarred 0 as barred, and intraFreqReselection 0 as allowed.
    bool set_cell_barred(bool cell_barred) { return _target().set_cell_barred(cell_barred); }
    bool get_cell_barred() const { return _target().get_cell_barred(); }

    /// As the bit above.
    bool set_intra_frequency_reselection(bool reselection)
    {
        return _target().set_intra_frequency_reselection(reselection);
    }
    bool get_intra_frequency_reselection() const { return _target().get_intra_freq_reselection(); }

    /// k_SSB in subcarriers of 15 kHz (FR1) or 60 kHz (FR2), limited by the spacing and by the room above the block.
    /// The MIB's ssb subcarrier offset takes the same value.
    bool set_kssb(unsigned int kssb);
    unsigned int get_kssb() const { return _target().get_kssb(); }

    /// Lowest resource block of the block in RBs of 15 kHz (FR1) or 60 kHz (FR2). What reaches the limit becomes the
    /// limit, with a printed line, and resets kssb. The value that a reset leaves at the full width stands for the
    /// middle.
    bool set_rb_offset(unsigned int rb_offset);
    unsigned int get_rb_offset() const { return _target().get_rb_offset(); }

    /// The common spacing of the MIB, which is the block's own.
    lib_nr_numerology_type_t get_subcarrier_spacing_common() const;

private:
    lib_nr_dl_ssb_configure_manager_t& _target() { return _carrier().get_dl_ssb(); }
    const lib_nr_dl_ssb_configure_manager_t& _target() const { return _carrier().get_dl_ssb(); }
    /// For the readers that bring the stored value up to date first.
    lib_nr_dl_ssb_configure_manager_t& _stored() const;
    const lib_nr_phy_numerology_configure_manager_t& _numerology() const;
};

} // namespace vek::nr_mod_lib

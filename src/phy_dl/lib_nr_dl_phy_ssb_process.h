#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_dl_ssb_configure_manager.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_pn_seq.h"
#include "phy_common/lib_nr_polar_coding.h"

#include <complex>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Builds one SS/PBCH block at a time (PSS, SSS, PBCH with its DMRS) and writes it into the resource grid, or marks its
/// cells for the view: TS 38.211 clauses 7.3.3 and 7.4.2 to 7.4.3, TS 38.212 clause 7.1.
///
/// `set_waveform_config` takes a snapshot of plain values; then `ssb_encode_process` writes a block, or, for the view,
/// `_init_ssb_symbol`, `_dl_phy_ssb_remap` and `_clear` mark one. What lies outside the grid is left out. In the pass
/// of a numerology other than the block's own there is nothing to send, so nothing is written or marked.
class NR_MOD_LIB_EXPORT lib_nr_dl_phy_ssb_process_t
{
public:
    lib_nr_dl_phy_ssb_process_t();

    /// Takes the settings of a carrier's block for one half frame (0 or 1) of a frame, in the pass of one of the
    /// carrier's numerologies, given by its place in the list.
    void set_waveform_config(unsigned int carrier, unsigned int system_frame, unsigned int half_frame,
                             unsigned int numerology_index, const lib_nr_waveform_configure_manager_t& waveform);

    /// Writes the block of an index below Lmax into the payload map. False, nothing written and a line, only where the
    /// polar coder fails.
    bool ssb_encode_process(unsigned int block_index);

    /// Fills the list of the candidates' first symbols in a half frame, TS 38.213 clause 4.1; empty, and a line, for a
    /// case that doesn't exist.
    void _init_ssb_symbol();
    /// Marks the block's cells, whole resource blocks in the symbols of PSS and PBCH, or writes the symbols that the
    /// work vectors hold. False where a cell was taken; false and a line for an unknown mode.
    bool _dl_phy_ssb_remap(unsigned int block_index, lib_nr_remap_mode_t mode);
    /// Empties the work vectors.
    void _clear();

    // The fields of the snapshot one by one. They store what they are given.
    void set_system_frame(unsigned int system_frame) { m_system_frame = system_frame; }
    void set_half_frame_idx(unsigned int half_frame_idx) { m_half_frame_idx = half_frame_idx; }
    void set_pci(unsigned int pci) { m_pci = pci; }
    /// In hertz, carrier offset included; the candidates' places change above 3 GHz.
    void set_center_frequency(double frequency) { m_center_frequency = frequency; }
    void set_ssb_pattern(lib_nr_ssb_case_t pattern) { m_ssb_pattern = pattern; }
    void set_lmax(lib_nr_lmax_t lmax) { m_lmax = lmax; }
    void set_active_index(const std::vector<int>& active_index) { m_active_index = active_index; }
    /// In dB, by block index.
    void set_pwr_boosting(const std::vector<double>& power) { m_power_boosting = power; }
    void set_pss_pwr_boosting(double power) { m_pss_power_boosting = power; }
    void set_periodicity(lib_ssb_periodicity_t periodicity) { m_periodicity = periodicity; }
    void set_rb_offset(unsigned int rb_offset) { m_rb_offset = rb_offset; }
    void set_kssb(unsigned int kssb) { m_kssb = kssb; }
    void set_coding(bool coding) { m_coding = coding; }
    /// The numerology of the pass.
    void set_numerology(lib_nr_numerology_type_t numerology, unsigned int rb_size, unsigned int rb_start,
                        unsigned int k0);
    /// The numerology that the block stands in.
    void set_ssb_numerology(lib_nr_numerology_type_t numerology) { m_ssb_numerology = numerology; }
    void set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth) { m_bandwidth = bandwidth; }
    /// Whether the MIB is automatic, and the source of its bits where it isn't.
    void set_mib_data_type(bool auto_cofig_mib, lib_nr_pn_seq_t data_source, const std::vector<unsigned char>& custom);
    void set_subcarrier_spacing_common(lib_nr_numerology_type_t spacing) { m_subcarrier_spacing_common = spacing; }
    void set_ssb_subcarrier_offset(unsigned int offset) { m_ssb_subcarrier_offset = offset; }
    void set_dmrs_typeA_position(unsigned int position) { m_dmrs_typea_position = position; }
    void set_pdcch_config_sib1(unsigned int config) { m_pdcch_config_sib1 = config; }
    void set_cell_barred(bool cell_barred) { m_cell_barred = cell_barred; }
    void set_intra_freq_reselection(bool reselection) { m_intra_frequency_reselection = reselection; }

private:
    friend struct vek::test_peer_t<lib_nr_dl_phy_ssb_process_t>;

    using bits_t = std::vector<unsigned char>;
    using symbols_t = std::vector<std::complex<double>>;

    /// Subcarriers of one of the block's four symbols, counted from the block's first.
    struct row_t
    {
        unsigned int symbol;
        unsigned int first_subcarrier;
        unsigned int subcarrier_number;
    };
    /// A cell that the block wants; it may lie outside the grid.
    struct resource_element_t
    {
        std::int64_t symbol;     ///< in the frame
        std::int64_t subcarrier; ///< from the grid's lowest
    };

    static const std::vector<row_t> s_pss_rows;
    static const std::vector<row_t> s_sss_rows;
    static const std::vector<row_t> s_pbch_and_dmrs_rows;

    void _init();

    void _nr_dl_pss_generation();
    void _nr_dl_sss_generation();
    void _nr_dl_pbch_dmrs_generation(unsigned int block_index);

    bool _dl_phy_pbch_process(unsigned int block_index);
    void _nr_dl_mib_data_source_generation();
    void _dl_phy_pbch_payload_generation(unsigned int block_index);
    void _dl_phy_pbch_interleave();
    unsigned int _get_v_from_frame() const;
    unsigned int _get_v_from_block(unsigned int block_index) const;
    void _dl_phy_pbch_scrambling(unsigned int kind, unsigned int block_index, bits_t& bits);
    bool _dl_phy_pbch_coding();

    void _cal_rboffset_position();
    bool _is_exist_ssb(unsigned int block_index) const;
    double _get_amplitude(unsigned int block_index, double boosting) const;
    std::int64_t _get_first_symbol(unsigned int block_index) const;
    void _list_resource_elements(unsigned int block_index, const std::vector<row_t>& rows);
    void _extend_to_whole_rb(unsigned int block_index, const std::vector<row_t>& rows);
    bool _mark();
    void _write();
    bool _dl_phy_ssb_pss_remap(unsigned int block_index, lib_nr_remap_mode_t mode);
    bool _dl_phy_ssb_sss_remap(unsigned int block_index, lib_nr_remap_mode_t mode);
    bool _dl_phy_ssb_pbch_and_dmrs_remap(unsigned int block_index, lib_nr_remap_mode_t mode);

    std::uint32_t m_system_frame = 0;
    std::uint32_t m_half_frame_idx = 0;
    std::uint32_t m_pci = 0;
    double m_center_frequency = 1e9;
    lib_nr_ssb_case_t m_ssb_pattern = NR_SSB_CASE_B;
    lib_nr_lmax_t m_lmax = LIB_NR_LMAX_4;
    std::vector<int> m_active_index;
    std::vector<double> m_power_boosting;
    double m_pss_power_boosting = 0.0;
    lib_ssb_periodicity_t m_periodicity = LIB_NR_SSB_10MS_PERIODICITY;
    std::uint32_t m_rb_offset = 0;
    std::uint32_t m_kssb = 0;
    bool m_coding = true;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    std::uint32_t m_rb_size = 0;
    std::uint32_t m_rb_start = 0;
    std::uint32_t m_k0 = 0;
    lib_nr_numerology_type_t m_ssb_numerology = LIB_NR_SCS_30K;
    bool m_auto_cofig_mib = true;
    lib_nr_pn_seq_t m_data_source = LIB_NR_PN9;
    bits_t m_data_source_custom;
    lib_nr_numerology_type_t m_subcarrier_spacing_common = LIB_NR_SCS_30K;
    std::uint32_t m_ssb_subcarrier_offset = 0;
    std::uint32_t m_dmrs_typea_position = 2;
    std::uint32_t m_pdcch_config_sib1 = 0;
    bool m_cell_barred = false;
    bool m_intra_frequency_reselection = false;
    lib_nr_channel_bw_type_t m_bandwidth = LIB_NR_CHANNEL_FR1_100M;

    // Work of one block.
    std::vector<int> m_kept_position; // where payload bits 24 to 31 go when interleaved, and their values
    std::vector<int> m_kept_value;
    bits_t m_mib_data; // the last bit first
    bits_t m_payload;
    bits_t m_scrambled;
    bits_t m_crc;
    bits_t m_coded;
    std::vector<double> m_pss;
    std::vector<double> m_sss;
    symbols_t m_dmrs;
    symbols_t m_pbch;
    std::vector<unsigned int> m_ssb_symbol_list;
    double m_scs_hz = 0.0;
    std::int64_t m_first_rb = 0;
    std::int64_t m_end_rb = 0;
    std::int64_t m_first_subcarrier = 0;

    // Storage that one block after the other reuses.
    lib_nr_polar_coding_t m_polar_coding;
    bits_t m_sequence;
    std::vector<resource_element_t> m_elements;
    symbols_t m_symbols;
    std::vector<lib_nr_resource_element_index_t> m_marks;
};

} // namespace vek::nr_mod_lib

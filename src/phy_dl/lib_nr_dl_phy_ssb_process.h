#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_dl_ssb_configure_manager.h"
#include "phy/lib_nr_phy_observer.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_deviation.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_common/lib_nr_pn_seq.h"
#include "phy_common/lib_nr_polar_coding.h"

#include <array>
#include <complex>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Builds one SS/PBCH block at a time (PSS, SSS, PBCH with its DMRS) and writes it into the resource grid, or marks its
/// cells for the view: TS 38.211 clauses 7.3.3 and 7.4.2 to 7.4.3, TS 38.212 clause 7.1.
///
/// `set_waveform_config` takes a snapshot of plain values, good for all blocks of a half frame; then
/// `ssb_encode_process` writes a block, or, for the view, `_dl_phy_ssb_remap` marks one. What lies outside the grid is
/// left out; the view prints the grid's line for it. In the pass of a numerology other than the block's own, and in a
/// half frame above 1, there is nothing to send, so nothing is written or marked. A process fresh from its constructor
/// holds a valid block.
class NR_MOD_LIB_EXPORT lib_nr_dl_phy_ssb_process_t : public lib_nr_ruled_t, public lib_nr_explaining_t
{
public:
    lib_nr_dl_phy_ssb_process_t();

    /// Takes the settings of a carrier's block for one half frame (0 or 1) of a frame, in the pass of one of the
    /// carrier's numerologies, given by its place in the list.
    void set_waveform_config(unsigned int carrier, unsigned int system_frame, unsigned int half_frame,
                             unsigned int numerology_index, const lib_nr_waveform_configure_manager_t& waveform);

    /// Writes the block of an index below Lmax into the payload map. False, nothing written and a printed line, only
    /// where the polar coder fails.
    bool ssb_encode_process(unsigned int block_index);

    /// For the view, marks the block's cells, and in the symbols of PSS and full PBCH all of the resource blocks that
    /// hold them; false where a cell was taken or lay outside. The other mode writes the block that is in work, and
    /// there is none between blocks. False and a printed line for an unknown mode.
    bool _dl_phy_ssb_remap(unsigned int block_index, lib_nr_remap_mode_t mode);

    // The fields of the snapshot one by one. They store what they are given.
    void set_system_frame(unsigned int system_frame) { m_system_frame = system_frame; }
    void set_half_frame_idx(unsigned int half_frame_idx) { m_half_frame_idx = half_frame_idx; }
    void set_pci(unsigned int pci) { m_pci = pci; }
    /// In hertz, carrier offset included; the candidates' places change above 3 GHz.
    void set_center_frequency(double frequency) { m_center_frequency = frequency; }
    void set_ssb_pattern(lib_nr_ssb_case_t pattern) { m_ssb_pattern = pattern; }
    void set_lmax(lib_nr_lmax_t lmax) { m_lmax = lmax; }
    /// Which blocks are sent and in which frames is up to the caller: neither value is kept.
    void set_active_index(const std::vector<int>&) {}
    void set_periodicity(lib_ssb_periodicity_t) {}
    /// In dB, by block index.
    void set_pwr_boosting(const std::vector<double>& power) { m_power_boosting = power; }
    void set_pss_pwr_boosting(double power) { m_pss_power_boosting = power; }
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
    using bits_t = std::vector<unsigned char>;
    using symbols_t = std::vector<std::complex<double>>;

    /// Subcarriers of one of the block's four symbols, counted from the block's first.
    struct row_t
    {
        unsigned int symbol;
        unsigned int first_subcarrier;
        unsigned int subcarrier_number;
    };
    /// What one block is made of, from the MIB to its symbols.
    struct work_t
    {
        work_t();

        std::array<std::uint8_t, 8> kept_position; ///< where payload bits 24 to 31 go when interleaved
        bits_t mib_data;                           ///< the last bit first
        bits_t payload;
        bits_t scrambled;
        bits_t crc;
        bits_t coded;
        symbols_t pss; ///< 127 real values
        symbols_t sss; ///< 127 real values
        symbols_t dmrs;
        symbols_t pbch;
        bits_t sequence; ///< Gold and polar bits in passing
    };

    static const std::vector<row_t> s_pss_rows;
    static const std::vector<row_t> s_sss_rows;
    static const std::vector<row_t> s_pbch_and_dmrs_rows;

    void _init();
    void _clear();
    void _init_ssb_symbol();

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
    void _explain(unsigned int block_index);
    void _explain_stage(std::string_view name, const bits_t& bits) const;

    void _cal_rboffset_position();
    bool _is_exist_ssb(unsigned int block_index) const;
    double _get_amplitude(unsigned int block_index, double boosting) const;
    const std::vector<lib_nr_resource_run_t>& _list_runs(unsigned int block_index, const std::vector<row_t>& rows);
    bool _mark(unsigned int block_index, const std::vector<row_t>& rows);
    void _write(unsigned int block_index, const std::vector<row_t>& rows, double amplitude);
    bool _map(unsigned int block_index, lib_nr_remap_mode_t mode);
    bool _dl_phy_ssb_pss_remap(unsigned int block_index, lib_nr_remap_mode_t mode);
    bool _dl_phy_ssb_sss_remap(unsigned int block_index, lib_nr_remap_mode_t mode);
    bool _dl_phy_ssb_pbch_and_dmrs_remap(unsigned int block_index, lib_nr_remap_mode_t mode);

    std::uint32_t m_system_frame = 0;
    std::uint32_t m_half_frame_idx = 0;
    std::uint32_t m_pci = 0;
    double m_center_frequency = 1e9;
    lib_nr_ssb_case_t m_ssb_pattern = NR_SSB_CASE_B;
    lib_nr_lmax_t m_lmax = LIB_NR_LMAX_4;
    std::vector<double> m_power_boosting;
    double m_pss_power_boosting = 0.0;
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

    std::vector<unsigned int> m_ssb_symbol_list;
    double m_scs_hz = 30000.0; ///< of the pass
    std::int32_t m_first_subcarrier = 0;
    bool m_fills_rbs = true; ///< begins and ends with a resource block

    std::optional<work_t> m_work; ///< none between blocks
    lib_nr_polar_coding_t m_polar_coding;
    std::vector<lib_nr_resource_run_t> m_runs;
    symbols_t m_symbols;
};

} // namespace vek::nr_mod_lib

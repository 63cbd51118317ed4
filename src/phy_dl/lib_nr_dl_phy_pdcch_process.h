#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_dl_coreset_configure_manager.h"
#include "manager/lib_nr_dl_dci_configure_manager.h"
#include "phy/lib_nr_phy_observer.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_deviation.h"
#include "phy_common/lib_nr_failing.h"

#include <complex>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Sends one DCI on a candidate of a search space: TS 38.212 clause 7.3, TS 38.211 clauses 7.3.2 and 7.4.1.3, TS 38.213
/// clause 10.1, without n_CI; a CORESET reaching past the BWP lets the DMRS sequence of each symbol run on. By the own
/// rules the DMRS counts resource blocks from the start of the BWP, and a view hashes the candidates by the RNTI, the
/// signal by n_RNTI, so that they agree where these do, in a common search space, and where they lead to the same CCEs.
///
/// `set_waveform_config` takes a snapshot of plain values, good for a frame; then `pdcch_encode_process` writes a slot,
/// or `dl_phy_pdcch_remap` marks one. What lies outside the grid is left out; the view prints the grid's line for it.
class NR_MOD_LIB_EXPORT lib_nr_dl_phy_pdcch_process_t : public lib_nr_ruled_t,
                                                        public lib_nr_explaining_t,
                                                        public lib_nr_failing_t
{
public:
    /// Takes an entry of a carrier's list, with its CORESET and BWP, and begins its payload anew. Always true.
    bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int dci,
                             const lib_nr_waveform_configure_manager_t& waveform);

    /// Writes one slot of the frame. False, nothing written and a printed line, where bits or level do not fit.
    bool pdcch_encode_process(unsigned int slot);
    /// For the view, marks the cells of a slot of the frame; false where a cell was taken or lay outside. The other
    /// mode writes the DCI that is in work, and there is none between slots. False where the candidate has no cells,
    /// with a printed line, and for an unknown mode. Without any group of resource blocks the view shows a conflict.
    bool dl_phy_pdcch_remap(unsigned int slot, lib_nr_remap_mode_t mode);

    // The fields of the snapshot one by one. They store what they are given; a value that is none of its enumeration's
    // counts as the first.
    /// In dB; that of the DMRS counts above the other.
    void set_pwr_boosting(double power) { m_pwr_boosting = power; }
    void set_dmrs_pwr_boosting(double power) { m_dmrs_pwr_boosting = power; }
    void set_scrambling_id(int scrambling_id) { m_scrambling_id = scrambling_id; }
    void set_rnti(unsigned int rnti) { m_rnti = rnti; }
    void set_crnti(unsigned int crnti) { m_crnti = crnti; }
    void set_ncell_id(unsigned int ncell_id) { m_ncell_id = ncell_id; }
    void set_search_space_type(lib_nr_dl_dci_search_space_type_t type) { m_search_space_type = type; }
    void set_start_symbol_within_slot(unsigned int symbol) { m_start_symbol = symbol; }
    void set_candidates_num(lib_nr_dl_dci_candidates_number_t number);
    void set_aggregation_level(lib_nr_dl_dci_aggregation_level_t level);
    void set_allocated_candidate(unsigned int candidate) { m_allocated_candidate = candidate; }
    void set_coding(bool coding) { m_coding = coding; }
    void set_data_block_size(unsigned int bits) { m_data_block_size = bits; }
    void set_data_source(lib_nr_pn_seq_t source) { m_data_source = source; }
    void set_data_source_custom(const std::vector<unsigned char>& bits) { m_data_source_custom = bits; }
    void set_slot_symbol_number(unsigned int number) { m_slot_symbol_number = number; }
    void set_bwp_rb_start(unsigned int rb_start) { m_bwp_rb_start = rb_start; }
    /// The BWP's width is not kept: nothing of a PDCCH depends on it.
    void set_bwp_rb_num(unsigned int) {}
    void set_coreset_id(unsigned int id) { m_coreset_id = id; }
    void set_coreset_rb_offset(int rb_offset) { m_coreset_rb_offset = rb_offset; }
    /// At least 1.
    void set_coreset_symbol_number(unsigned int number) { m_coreset_symbol_number = number > 0 ? number : 1; }
    void set_fd_resources(const std::vector<int>& bitmap) { m_fd_resources = bitmap; }
    void set_cce2reg_mapping_type(lib_nr_dl_dci_cce2reg_mapping_type_t type) { m_cce2reg_mapping_type = type; }
    /// Counts with interleaving alone; without it a bundle is a CCE.
    void set_reg_bundle_size(lib_nr_dl_dci_reg_bundle_size_t size);
    void set_interleaver_size(lib_nr_dl_dci_interleaver_size_t size);
    void set_shift_idx(unsigned int shift_idx) { m_shift_idx = shift_idx; }
    /// Not kept either.
    void set_precoder_granularity(lib_nr_coreset_precoder_granularity_t) {}

private:
    using bits_t = std::vector<unsigned char>;
    using indices_t = std::vector<unsigned int>;

    // From the data to the symbols.
    void _dl_phy_pdcch_data_generation();
    bool _dl_phy_pdcch_coding();
    bool _crc_bit_insert();
    bool _rnti_scrambling();
    bool _dl_phy_pdcch_no_coding();
    unsigned int _get_n_id() const;
    unsigned int _get_n_rnti() const;
    void _dl_phy_pdcch_csrambling();
    void _dci_dmrs_generation(unsigned int slot);
    unsigned int _get_dmrs_reference_rb() const;
    void _explain_stage(std::string_view name) const;
    void _explain_coding() const;
    /// TS 38.211 clause 7.3.2.3, modulo 2^31.
    unsigned int _get_c_init() const { return ((_get_n_rnti() << 16) + _get_n_id()) & 0x7FFFFFFF; }
    unsigned int _get_coded_bits() const { return m_aggregation_level * k_bits_in_cce; }

    // From the candidate to resource blocks.
    bool _deal_dci_para_conflict() const;
    bool _dci_interleaver(indices_t& regs, unsigned int slot, unsigned int n_rnti) const;
    indices_t _search_space_calculate(unsigned int slot, unsigned int n_rnti) const;
    indices_t _bundle_index_calculate(unsigned int bundle_size) const;
    bool _bwp_coreset_available_reg_calculate(indices_t& rbs) const;
    bool _get_map_reg_index(const indices_t& rbs, const indices_t& regs, indices_t& out) const;
    bool _choose_rbs(unsigned int slot, unsigned int n_rnti, indices_t& rbs) const;
    unsigned int _get_group_number() const;
    unsigned int _get_rb_offset() const;

    // From resource blocks to cells.
    const std::vector<lib_nr_resource_run_t>& _list_runs(unsigned int slot, const indices_t& rbs);
    bool _encode_remap(unsigned int slot, const indices_t& rbs);
    void _explain(unsigned int slot) const;
    bool _ui_view_remap(unsigned int slot, const indices_t& rbs);

    static constexpr unsigned int k_bits_in_cce = 108; // 6 REGs of 9 QPSK symbols
    static constexpr unsigned int k_regs_in_cce = 6;

    double m_pwr_boosting = 0.0;
    double m_dmrs_pwr_boosting = 0.0;
    int m_scrambling_id = -1;
    unsigned int m_rnti = 0;
    unsigned int m_crnti = 0;
    unsigned int m_ncell_id = 0;
    lib_nr_dl_dci_search_space_type_t m_search_space_type = LIB_NR_DCI_USS;
    unsigned int m_start_symbol = 0;
    lib_nr_dl_dci_candidates_number_t m_candidates_num = LIB_NR_DCI_CANDIDATE_1;
    lib_nr_dl_dci_aggregation_level_t m_aggregation_level = LIB_NR_DCI_AGGREGATION_LEVEL_4;
    unsigned int m_allocated_candidate = 0;
    bool m_coding = false;
    unsigned int m_data_block_size = 20;
    lib_nr_pn_seq_t m_data_source = LIB_NR_PN9_ITU;
    bits_t m_data_source_custom;
    unsigned int m_pn_seed = std::numeric_limits<unsigned int>::max();
    unsigned int m_slot_symbol_number = 14;
    unsigned int m_bwp_rb_start = 0;
    unsigned int m_coreset_id = 0;
    int m_coreset_rb_offset = 0;
    unsigned int m_coreset_symbol_number = 1;
    std::vector<int> m_fd_resources;
    lib_nr_dl_dci_cce2reg_mapping_type_t m_cce2reg_mapping_type = LIB_NR_CORSET_NO_INTERLEAVE;
    lib_nr_dl_dci_reg_bundle_size_t m_reg_bundle_size = LIB_NR_DCI_REG_BUNDLE_SIZE_6;
    lib_nr_dl_dci_interleaver_size_t m_interleaver_size = LIB_NR_DCI_INTERLEAVER_SIZE_2;
    unsigned int m_shift_idx = 0;

    bits_t m_bits; ///< of the step in work: data, checked, coded, scrambled
    bits_t m_sequence;
    std::vector<std::complex<double>> m_symbols; ///< empty between slots
    std::vector<std::complex<double>> m_dmrs;    ///< of one symbol of the CORESET after another
    std::vector<std::complex<double>> m_row;
    std::vector<lib_nr_resource_run_t> m_runs;
};

} // namespace vek::nr_mod_lib

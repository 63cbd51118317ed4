#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_ul_guard_band_configure_manager.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_dl/lib_nr_phy_sch_process.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace vek::nr_mod_lib
{

/// Generates a PUSCH without UCI, TS 38.211 clauses 6.3.1, 6.4.1.1 and 6.4.1.2, on up to four layers. One stream
/// reaches the carrier's one grid: that of the first antenna port of the channel's list.
///
/// PTRS samples of the transform-precoded waveform that overlap, in fewer than three RBs, count once. An empty list of
/// RBs sends nothing. What is not as the standard has it unless `standard_rules` asks for that, docs/deviations.md
/// tells.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pusch_process_t : public lib_nr_phy_sch_process_t
{
public:
    /// A channel of its own, for use without a configuration: RNTI 1, QPSK, three layers on four antenna ports, symbols
    /// 0 to 12, RBs 53 to 152.
    lib_nr_ul_phy_pusch_process_t();

    bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int channel,
                             const lib_nr_waveform_configure_manager_t& waveform) override;
    /// As the base, for the uplink's five tables. In the rows of one bit per symbol the modulation set decides between
    /// pi/2-BPSK and, at half the code rate, QPSK; any other prints a line and counts as QPSK.
    void update_read_only_parament() override;
    /// Generates a slot of the frame and writes it, whoever holds the cells. Always true. Cells outside the grid are
    /// left out, and a slot that has such cells, or fewer symbols than cells, prints a line.
    bool sch_encode_process(unsigned int slot);

    // The settings that the uplink adds; stored as they are where nothing else is told.

    void set_modulation(lib_nr_modulation_type_t modulation) { m_modulation = modulation; }
    void set_enable_transfer_precoding(bool enable) { m_enable_transfer_precoding = enable; }
    void set_rapid(int rapid) { m_rapid = rapid; }
    void set_enable_codebook(bool enable) { m_enable_codebook = enable; }
    /// Any number but 1 to 4 prints a line and becomes 4.
    void set_antenna_port_number(lib_nr_antenna_port_number_t number);
    void set_tpmi(unsigned int tpmi) { m_tpmi = tpmi; }
    void set_rb_set_start(unsigned int rb_set) { m_rb_set_start = rb_set; }
    void set_rb_set_number(unsigned int number) { m_rb_set_number = number; }
    void set_interlace_index(const std::vector<unsigned int>& interlaces) { m_interlaces = interlaces; }
    void set_hopping_mode(lib_nr_sch_hopping_mode_t mode) { m_hopping_mode = mode; }
    /// Wraps inside the BWP: reads the RBs and the BWP that are set.
    void set_hopping_rb_offset(unsigned int rb_offset);
    void set_enable_lbrm(bool enable) { m_enable_lbrm = enable; }
    void set_dmrs_hopping(lib_nr_sch_dmrs_hopping_t hopping) { m_dmrs_hopping = hopping; }
    void set_n_rs_id(unsigned int id) { m_n_rs_id = id; }
    void set_ptrs_port(const std::vector<unsigned int>& ports) { m_ptrs_port = ports; }
    /// A value that is none prints a line and changes nothing.
    void set_n_ptrs_group_sample(lib_nr_sch_ptrs_group_sample_t samples);
    /// A value that is none prints a line and changes nothing.
    void set_n_ptrs_group(lib_nr_sch_ptrs_group_t groups);
    void set_n_ptrs_id(unsigned int id) { m_n_ptrs_id = id; }

private:
    /// The values of a DMRS symbol; zeros where it has none.
    struct sequence_t
    {
        const std::complex<double>* values = nullptr;
        std::int64_t length = 0;

        std::complex<double> at(std::int64_t i) const { return i >= 0 && i < length ? values[i] : 0.0; }
    };

    void _phy_sch_rs_generation(unsigned int port, unsigned int slot) override;
    void _phy_sch_caculate_g(unsigned int port, unsigned int slot) override;
    void _phy_sch_channel_coding_rate_match() override;
    unsigned int _scrambling_c_init(unsigned int codeword) const override;
    void _phy_sch_precoding(const layers_t& in, layers_t& out) override;
    void _phy_sch_view_re_map(unsigned int slot, const rb_list_t& rb_list) override;
    void _phy_sch_encode_re_map(unsigned int port, unsigned int slot, const rb_list_t& rb_list) override;
    void _phy_sch_dmrs_time_domain_allocation(std::vector<unsigned int>& symbols) override;
    void _phy_sch_rb_index() override;
    bool _phy_sch_ptrs_re_index_generation(unsigned int port, std::vector<unsigned int>& subcarriers) override;

    void _ul_phy_pusch_rb_index_type_2();
    rb_list_t _list_interlaces_set_by_set() const;
    rb_list_t _list_interlaces_of_grid() const;
    bool _is_chosen_rb_set(unsigned int index) const;
    bool _hops_in_slot() const { return m_hopping_mode == LIB_NR_SCH_HOPPING_MODE_INTRA; }
    unsigned int _hop_boundary() const { return m_first_symbol + m_symbol_num / 2; }
    std::int32_t _hop_shift(unsigned int symbol, unsigned int slot) const;
    std::uint32_t _hop_shift_in_subcarriers(unsigned int symbol, unsigned int slot) const;
    void _list_dmrs_symbols_of_hops(std::vector<unsigned int>& symbols) const;
    template <class runs_of_t>
    void _place(unsigned int slot, runs_of_t runs_of, std::vector<lib_nr_resource_run_t>& placed) const;
    void _list_cells(unsigned int slot, const rb_list_t& rb_list);

    void _explain(unsigned int slot);

    void _generate_low_papr_dmrs(unsigned int slot);
    unsigned int _symbol_in_hop(unsigned int symbol) const;
    std::pair<unsigned int, unsigned int> _low_papr_hop(unsigned int place, std::uint32_t length) const;
    void _phy_sch_ptrs_generation(unsigned int port, unsigned int slot);
    void _ul_phy_pusch_ptrs_w(symbols_t& w) const;
    void _phy_sch_rs_encode_re_map(unsigned int slot, const rb_list_t& rb_list);
    sequence_t _dmrs_sequence_of(unsigned int port, std::size_t place) const;
    void _gather_dmrs(unsigned int port, unsigned int slot, symbols_t& stream) const;
    void _append_dmrs_among_zeros(unsigned int port, std::size_t place, const symbols_t& values,
                                  symbols_t& stream) const;
    void _gather_ptrs(unsigned int port, unsigned int slot, symbols_t& stream);
    bool _is_one_stream() const;
    void _ul_phy_pusch_transfer_precoding();

    bool m_enable_transfer_precoding = false;
    int m_rapid = -1;
    bool m_enable_codebook = false;
    unsigned int m_antenna_port_number = 1;
    unsigned int m_tpmi = 0;
    unsigned int m_rb_set_start = 0;
    unsigned int m_rb_set_number = 1;
    std::vector<unsigned int> m_interlaces{0};
    unsigned int m_unused_rb = 0;
    lib_nr_sch_hopping_mode_t m_hopping_mode = LIB_NR_SCH_HOPPING_MODE_DISABLE;
    std::uint32_t m_hop_shift = 0; ///< in RBs, modulo 2^32
    bool m_enable_lbrm = false;
    lib_nr_sch_dmrs_hopping_t m_dmrs_hopping = LIB_NR_SCH_DMRS_HOPPING_DISABLE;
    unsigned int m_n_rs_id = 0;
    std::vector<unsigned int> m_ptrs_port{0};
    unsigned int m_ptrs_samples_per_group = 2;
    unsigned int m_ptrs_groups = 2;
    unsigned int m_n_ptrs_id = 0;
    lib_nr_ul_guard_band_configure_manager_t::rb_set_map_t m_rb_sets;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;

    // The slot in work.
    std::vector<lib_nr_resource_run_t> m_rb_runs; ///< whole RBs of a symbol, ahead of hops
    lib_nr_sch_cells_t m_cells;                   ///< the DMRS among them are all that carry no data
    std::vector<unsigned int> m_ptrs_symbols;
    std::vector<unsigned int> m_ptrs_samples; ///< positions in a transform-precoded symbol
    layers_t m_dmrs_streams;                  ///< one for each layer, then for each antenna port
    layers_t m_ptrs_streams;
};

} // namespace vek::nr_mod_lib

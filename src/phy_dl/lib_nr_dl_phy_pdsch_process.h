#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_dl/lib_nr_phy_sch_process.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vek::nr_mod_lib
{

/// Generates a PDSCH of one layer, TS 38.211 clauses 7.3.1, 7.4.1.1 and 7.4.1.2. Its code word goes straight to the
/// carrier's one grid, whatever the antenna port. The view marks whole resource blocks; data, DMRS and PTRS leave out
/// the cells that SS/PBCH blocks and CSI-RS hold there, under `standard_rules` all of an RB that a block touches.
class NR_MOD_LIB_EXPORT lib_nr_dl_phy_pdsch_process_t : public lib_nr_phy_sch_process_t
{
public:
    /// A channel of its own, for use without a configuration: RNTI 2, QPSK, symbols 2 to 13, RBs 4 to 39.
    lib_nr_dl_phy_pdsch_process_t();

    bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int channel,
                             const lib_nr_waveform_configure_manager_t& waveform) override;

    void set_vrb2prb_interleaver(lib_nr_sch_interleave_t interleaver) { m_vrb2prb_interleaver = interleaver; }
    void set_vrb_bundle_size(lib_nr_sch_vrb_bundle_size_t size) { m_vrb_bundle_size = number_of(size); }
    void set_tb_scaling(lib_nr_sch_tb_scaling_t scaling) { m_tb_scaling = number_of(scaling); }

private:
    void _phy_sch_caculate_g(unsigned int port, unsigned int slot) override;
    void _phy_sch_view_re_map(unsigned int slot, const rb_list_t& rb_list) override;
    void _phy_sch_encode_re_map(unsigned int port, unsigned int slot, const rb_list_t& rb_list) override;
    void _phy_sch_rb_index() override;
    void _dl_phy_pdsch_interleaver(std::vector<unsigned int>& prb_of_vrb) const;
    void _list_runs(unsigned int slot, const rb_list_t& rb_list);
    bool _is_left_to_block(const std::uint8_t* owners, unsigned int rb) const;
    void _list_cells(unsigned int port, unsigned int slot, const rb_list_t& rb_list);
    void _write_reference_signals(unsigned int port, unsigned int slot);
    void _explain(unsigned int slot);
    void _write_dmrs(unsigned int port, unsigned int slot, const symbols_t& sequences, double amplitude);

    lib_nr_sch_interleave_t m_vrb2prb_interleaver = LIB_NR_SCH_NO_INTERLEAVE;
    unsigned int m_vrb_bundle_size = 2; ///< in RBs

    // The slot in work.
    std::vector<lib_nr_resource_run_t> m_runs;
    lib_nr_sch_cells_t m_cells;
    lib_nr_sch_cells_t m_claimed_cells;        ///< of one run, some of which another channel holds
    std::optional<unsigned int> m_listed_slot; ///< whose cells these are
    symbols_t m_dmrs_values;
};

} // namespace vek::nr_mod_lib

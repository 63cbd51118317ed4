#pragma once

#include "support/sch_run.h"

#include <vector>

namespace nr_test
{

// PDSCHs as a receiver sees them.

/// TS 38.214 clauses 5.1.2.2.1 and 5.1.2.2.2, TS 38.211 clause 7.3.1.6: RB by RB.
inline std::vector<unsigned int> pdsch_rbs(const vek::nr_mod_lib::lib_nr_dl_sch_configure_manager_t& sch,
                                           const vek::nr_mod_lib::lib_nr_dl_bwp_configure_manager_t& bwp)
{
    const unsigned int start = bwp.get_bwp_rb_start();
    const unsigned int end = start + bwp.get_bwp_rb_size();
    std::vector<unsigned int> rbs;
    if (sch.get_ra_type() == vek::nr_mod_lib::LIB_NR_SCH_RA_TYPE0) {
        const unsigned int P = 2u << sch.get_rbg_size();
        for (unsigned int rb = start; rb < end; ++rb)
            if (sch.get_rbg_bitmap_v().at(rb / P - start / P) != 0)
                rbs.push_back(rb);
        return rbs;
    }
    const unsigned int L = 2u << sch.get_vrb_bundle_size();
    const unsigned int bundles = (end - 1) / L - start / L + 1;
    for (unsigned int vrb = start + sch.get_rb_offset(); rbs.size() < sch.get_rb_num(); ++vrb) {
        const unsigned int j = vrb / L - start / L;
        const unsigned int moved = j == bundles - 1 ? j : j % 2 * (bundles / 2) + j / 2;
        rbs.push_back(sch.get_vrb2prb_interleaver() == vek::nr_mod_lib::LIB_NR_SCH_INTERLEAVE
                          ? (start / L + moved) * L + vrb % L
                          : vrb);
    }
    return rbs;
}

inline sch_channel_t pdsch_channel(const vek::nr_mod_lib::lib_nr_carrier_configure_manager_t& carrier,
                                   unsigned int index, bool standard_rules = false)
{
    const vek::nr_mod_lib::lib_nr_dl_sch_configure_manager_t& sch = carrier.get_dl_sch(index);
    const vek::nr_mod_lib::lib_nr_dl_bwp_configure_manager_t& bwp = carrier.get_dl_bwp(sch.get_bwp_id());
    const unsigned int cell = carrier.get_cell_index();
    return {sch,
            cell,
            bwp.get_cp_type() == vek::nr_mod_lib::LIB_NR_EXTEND_CP ? 12u : 14u,
            pdsch_rbs(sch, bwp),
            sch_dmrs_symbols(sch),
            (sch.get_rnti() << 15) + sch_identity(sch.get_nid(), cell, standard_rules),
            1.0 / (1 << sch.get_tb_scaling()),
            standard_rules,
            standard_rules && sch.get_dmrs_mapping_ref() == vek::nr_mod_lib::LIB_NR_DMRS_MAPPING_REF_PRB
                ? bwp.get_bwp_rb_start()
                : 0};
}

/// The engine's run, and the PDSCHs in it.
struct pdsch_run_t : sch_run_t
{
    using sch_run_t::sch_run_t;
    sch_channel_t channel(unsigned int index) const { return pdsch_channel(carrier(), index, standard_rules()); }
    sch_slot_t receive(unsigned int index, unsigned int slot, unsigned int frame = 0)
    {
        return sch_run_t::receive(channel(index), slot, frame);
    }
};

} // namespace nr_test

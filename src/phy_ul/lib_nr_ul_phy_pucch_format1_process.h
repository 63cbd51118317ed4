#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_ul/lib_nr_ul_phy_pucch_format0_process.h"

namespace vek::nr_mod_lib
{

/// Generates PUCCH format 1, TS 38.211 clause 6.3.2.4 with its DMRS of clause 6.4.1.3.1: the sequence of format 0, not
/// shifted by the UCI. The symbols of odd index, from the PUCCH's first one on, carry one BPSK or QPSK point; those of
/// even index are the DMRS; an orthogonal sequence spreads over each kind.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pucch_format1_process_t : public lib_nr_ul_phy_pucch_format0_process_t
{
protected:
    /// std::out_of_range where the orthogonal sequences, shortened since, have not the index.
    void _generate_multi_slot_sequence(slots_t& slots) const override;
    unsigned int _get_mcs_value(const std::vector<unsigned char>& bits, const bool& sr) const override;

private:
    /// Sequence `index` of length n, TS 38.211 Table 6.3.2.4.1-2.
    static symbol_row_t _get_spread_sequence(unsigned int n, unsigned int index);
    std::vector<unsigned char> _get_bits_of_scheduling_request(const std::vector<unsigned char>& harq_ack) const;
    void _deal_block_wise_spread(slot_rows_t& rows) const;
};

} // namespace vek::nr_mod_lib

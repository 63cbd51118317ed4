#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_ul/lib_nr_ul_phy_pucch_base.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// Generates PUCCH format 0, TS 38.211 clause 6.3.2.3: a low-PAPR sequence of type 1 whose cyclic shift tells HARQ-ACK
/// and SR, TS 38.213 clause 9.2. Each slot is made from its own number and bits; the manager holds the bits.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pucch_format0_process_t : public lib_nr_ul_phy_pucch_base_t
{
public:
    /// Adds a PUCCH of the carrier, all its slots, into the payload map. Always true: what does not fit was refused
    /// where the resource map was marked.
    bool deal_pucch_process(const lib_nr_carrier_configure_manager_t& carrier, unsigned int pucch_index,
                            payload_grid_t& grid);

protected:
    /// One entry for each allocated slot, in the order of the list.
    virtual void _generate_multi_slot_sequence(slots_t& slots) const;
    /// The part of the cyclic shift that tells the UCI, in twelfths of a turn.
    virtual unsigned int _get_mcs_value(const std::vector<unsigned char>& bits, const bool& sr) const;

    /// The symbols of a slot. An interlaced PUCCH shifts each resource block by 5 twelfths of a turn more than the one
    /// before it in its interlace, TS 38.211 clause 6.3.2.2.2, by the own rule than the one before it in the list of
    /// all, and does not hop.
    void _generate_one_slot_sequence(slot_rows_t& rows, unsigned int slot) const;
    /// HARQ-ACK bits, none where SR is all that is told, and whether SR is positive.
    void _get_harq_ack_and_sr(std::vector<unsigned char>& bits, bool& sr, unsigned int slot) const;

private:
    void _explain_uci(lib_nr_explanation_t& explanation) const;
    lib_nr_pucch_low_papr_seq_param_t _get_sequence_param(unsigned int slot, unsigned int m_int) const;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_ul/lib_nr_ul_phy_pucch_format2_process.h"

namespace vek::nr_mod_lib
{

/// Generates PUCCH format 3, TS 38.211 clause 6.3.2.6 with its DMRS of clause 6.4.1.3.3: UCI in transform-precoded
/// symbols, DMRS in symbols of their own.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pucch_format3_process_t : public lib_nr_ul_phy_pucch_format2_process_t
{
protected:
    unsigned int _get_e_total(unsigned int qm) const override;
    unsigned int _get_modulation_order() const override;
    void _deal_modulation(const bits_t& bits, slot_rows_t& rows) const override;
    void _generate_one_slot_sequence(slot_rows_t& rows, unsigned int slot) override;
    /// By the own rule the second part follows behind the first.
    void _deal_multiplexing(bits_t& coded, unsigned int e_uci1) const override;
    /// The part of the DMRS's cyclic shift that its orthogonal sequence gives; 0 where it is not interlaced.
    virtual unsigned int _get_m0() const;

    /// TS 38.211 Table 6.4.1.3.3.1-1; 0 without spreading. std::out_of_range for a length or index that is none.
    unsigned int _get_m0_of_occ() const;

private:
    std::vector<std::size_t> _get_points_of_first_part(std::size_t points, std::size_t per_symbol) const;
    bits_t _multiplexed(const bits_t& coded, unsigned int e_uci1) const;
    void _generate_dmrs_data(slot_rows_t& rows, unsigned int slot) const;
    void _deal_block_wish_spreading(symbol_row_t& row) const;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_modulator.h"
#include "phy_ul/lib_nr_ul_phy_pucch_base.h"

#include <complex>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

struct lib_nr_ul_pucch_payload_t;

/// Generates PUCCH format 2, TS 38.211 clause 6.3.2.5 with its DMRS of clause 6.4.1.3.2, and holds the chain from UCI
/// fields to scrambled bits, TS 38.212 clause 6.3.1, for formats 3 and 4 too. The DMRS sequence counts from RB 0 of the
/// carrier, by the own rule that of a PUCCH without interlaces from the first RB of its BWP.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pucch_format2_process_t : public lib_nr_ul_phy_pucch_base_t
{
public:
    /// Adds a PUCCH of the carrier, all its slots, into the payload map. Always true: what does not fit was refused
    /// where the resource map was marked. std::out_of_range for an orthogonal cover code that its length does not have.
    bool deal_pucch_process(const lib_nr_carrier_configure_manager_t& carrier, unsigned int pucch_index,
                            payload_grid_t& grid);

protected:
    using bits_t = std::vector<unsigned char>;

    /// Bits that fill the data symbols of a slot, with `qm` bits each.
    virtual unsigned int _get_e_total(unsigned int qm) const;
    virtual unsigned int _get_modulation_order() const;
    /// Modulates, and deals the symbols out to the data rows of a slot in equal runs.
    virtual void _deal_modulation(const bits_t& bits, slot_rows_t& rows) const;
    virtual void _generate_one_slot_sequence(slot_rows_t& rows, unsigned int slot);
    /// Brings the coded bits of two parts, `e_uci1` of the first ahead of the others, into their order in the slot.
    virtual void _deal_multiplexing(bits_t& /*coded*/, unsigned int /*e_uci1*/) const {}

    void _generate_uci_data(slot_rows_t& rows, unsigned int slot);
    static void _modulate(lib_nr_modulation_type_t type, const bits_t& bits, unsigned int row_number,
                          slot_rows_t& rows);

private:
    void _reset_pn_seed();
    void _generate_multi_slot_sequence(slots_t& slots);
    void _generate_dmrs_data(slot_rows_t& rows, unsigned int slot) const;
    std::vector<unsigned short> _get_dmrs_rbs(unsigned int row) const;
    /// The UCI bits of a slot, in one part or, the second being CSI part 2, in two.
    void _get_uci_bits(std::vector<bits_t>& parts, unsigned int slot);
    static void _generate_payload_data(unsigned int slot_index, std::uint32_t& seed,
                                       const lib_nr_ul_pucch_payload_t& field, bits_t& out);
    /// Also told where an explanation is given.
    void _deal_coding(const bits_t& bits, bits_t& coded, bool second_part, unsigned int qm,
                      lib_nr_explanation_t* explanation) const;
    void _explain(const std::vector<bits_t>& parts, lib_nr_explanation_t& explanation) const;
    unsigned int _get_c_init() const;
    static void _deal_small_block_coding(const bits_t& bits, bits_t& coded, unsigned int e, unsigned int qm);
    static void _deal_polar_code_block(const bits_t& bits, std::vector<bits_t>& blocks, bool segmented,
                                       lib_nr_crc_type_t crc_type);
    static void _deal_polar_coding(const bits_t& block, bits_t& coded, const lib_nr_uci_layout_t& layout);
    unsigned int _get_e_uci(bool second_part, unsigned int qm) const;
    /// Scrambles where the PUCCH does, and puts bits in the place of the small block code's placeholders.
    void _deal_scrambling(const bits_t& in, bits_t& out) const;
    void _deal_spreading(symbol_row_t& data_row, symbol_row_t& dmrs_row) const;
    void _deal_spreading(const symbol_row_t& in, symbol_row_t& out, unsigned int block) const;
    unsigned int _get_spreading_row(unsigned int rb) const;

    // State of each field's stream of bits, which runs on from slot to slot.
    std::uint32_t m_harq_ack_seed = 0;
    std::uint32_t m_sr_seed = 0;
    std::uint32_t m_csi1_seed = 0;
    std::uint32_t m_csi2_seed = 0;
    std::uint32_t m_payload_seed = 0;
};

} // namespace vek::nr_mod_lib

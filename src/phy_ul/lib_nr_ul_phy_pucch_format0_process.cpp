#include "phy_ul/lib_nr_ul_phy_pucch_format0_process.h"

#include "manager/lib_nr_carrier_configure_manager.h"
#include "phy_ul/lib_nr_low_papr_sequence1.h"

namespace vek::nr_mod_lib
{

namespace
{

// TS 38.213 Tables 9.2.3-3, 9.2.3-4, 9.2.5-1 and 9.2.5-2: by the bit, or by the pairs 00, 01, 11, 10.
constexpr std::array<unsigned char, 2> g_sequence_cyclic_shift_one_bit_not_sr = {0, 6};
constexpr std::array<unsigned char, 4> g_sequence_cyclic_shift_two_bit_not_sr = {0, 3, 6, 9};
constexpr std::array<unsigned char, 2> g_sequence_cyclic_shift_one_bit_and_sr = {3, 9};
constexpr std::array<unsigned char, 4> g_sequence_cyclic_shift_two_bit_and_sr = {1, 4, 7, 10};

constexpr unsigned int k_shift_of_next_rb = 5;

} // namespace

bool lib_nr_ul_phy_pucch_format0_process_t::deal_pucch_process(const lib_nr_carrier_configure_manager_t& carrier,
                                                               unsigned int pucch_index, payload_grid_t& grid)
{
    _set_pucch(carrier, pucch_index);
    slots_t slots;
    _generate_multi_slot_sequence(slots);
    _deal_physical_resource_mapping(slots, grid);
    return true;
}

void lib_nr_ul_phy_pucch_format0_process_t::_generate_multi_slot_sequence(slots_t& slots) const
{
    slots.clear();
    for (const unsigned int slot : m_pucch->get_allocated_slots())
        _generate_one_slot_sequence(slots.emplace_back(), slot);
}

void lib_nr_ul_phy_pucch_format0_process_t::_generate_one_slot_sequence(slot_rows_t& rows, unsigned int slot) const
{
    const bool is_interlaced = m_pucch->get_use_interlace_pucch();
    const unsigned int row_count = m_pucch->get_symbol_num();
    const unsigned int rb_count = is_interlaced ? _get_rb_num() : 1;
    std::vector<unsigned short> interlaced_rbs;
    _get_interlace_position(interlaced_rbs);
    rows.assign(row_count, {});
    lib_nr_explanation_t* const explanation = _explanation_of(slot);
    if (explanation)
        _explain_uci(*explanation);
    for (unsigned int n = 0; n < rb_count; ++n) {
        const unsigned int number =
            n < interlaced_rbs.size()
                ? m_rules.pick(lib_nr_deviation_t::interlaces, n, _get_number_in_interlace(interlaced_rbs[n]))
                : n;
        const lib_nr_pucch_low_papr_seq_param_t param = _get_sequence_param(slot, k_shift_of_next_rb * number);
        for (unsigned int l = 0; l < row_count; ++l) {
            const std::size_t hop = !is_interlaced && _is_second_hop(l, row_count) ? 1 : 0;
            if (explanation && n == 0) {
                explanation->u.push_back(param.u[hop]);
                explanation->v.push_back(param.v[hop]);
            }
            lib_nr_low_papr_sequence1::generate_low_papr_sequence_1(
                {param.u[hop], param.v[hop], param.alpha.at(m_pucch->get_first_symbol() + l),
                 static_cast<std::int32_t>(param.delta), k_subcarriers_per_rb},
                rows[l]);
        }
    }
}

void lib_nr_ul_phy_pucch_format0_process_t::_explain_uci(lib_nr_explanation_t& explanation) const
{
    std::vector<unsigned char> bits;
    bool sr = false;
    _get_harq_ack_and_sr(bits, sr, explanation.slot);
    explanation.add_stage("payload", bits);
    explanation.figures = {{"positive_sr", sr ? 1u : 0u},
                           {"n_id", _id_or_cell_index(m_pucch->get_hopping_id())},
                           {"m_0", m_pucch->get_initial_cyclic_shift()},
                           {"m_cs", _get_mcs_value(bits, sr)}};
}

lib_nr_ul_phy_pucch_base_t::lib_nr_pucch_low_papr_seq_param_t
lib_nr_ul_phy_pucch_format0_process_t::_get_sequence_param(unsigned int slot, unsigned int m_int) const
{
    std::vector<unsigned char> bits;
    bool sr = false;
    _get_harq_ack_and_sr(bits, sr, slot);
    return get_basic_sequence_param(slot, _get_mcs_value(bits, sr), m_pucch->get_initial_cyclic_shift(), m_int);
}

void lib_nr_ul_phy_pucch_format0_process_t::_get_harq_ack_and_sr(std::vector<unsigned char>& bits, bool& sr,
                                                                 unsigned int slot) const
{
    bits.clear();
    sr = true;
    const lib_nr_ul_uci_content_t content = m_pucch->get_uci_format();
    if (content == LIB_NR_UL_UCI_SR_ONLY)
        return;
    bits = m_pucch->get_uci_bits_per_slot().at(_get_slot_index(slot));
    sr = content == LIB_NR_UL_UCI_SR_AND_HARQ_ACK && m_pucch->get_sr_configuration() == LIB_NR_UL_SR_POSITIVE;
}

unsigned int lib_nr_ul_phy_pucch_format0_process_t::_get_mcs_value(const std::vector<unsigned char>& bits,
                                                                   const bool& sr) const
{
    if (bits.size() == 1)
        return (sr ? g_sequence_cyclic_shift_one_bit_and_sr : g_sequence_cyclic_shift_one_bit_not_sr).at(bits[0]);
    if (bits.size() != 2)
        return 0;
    const unsigned int pair = bits[0] == 0 ? bits[1] : 3u - bits[1];
    return (sr ? g_sequence_cyclic_shift_two_bit_and_sr : g_sequence_cyclic_shift_two_bit_not_sr).at(pair);
}

} // namespace vek::nr_mod_lib

#include "phy_ul/lib_nr_ul_phy_pucch_format1_process.h"

#include "common/lib_complex_product.h"
#include "manager/lib_nr_carrier_configure_manager.h"

#include <bit>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_longest_sequence = 7;
constexpr double k_half_power = 1.0 / std::numbers::sqrt2;

std::complex<double> modulated(const std::vector<unsigned char>& bits)
{
    const auto sign = [](unsigned char bit) { return bit == 0 ? k_half_power : -k_half_power; };
    if (bits.size() == 1)
        return {sign(bits[0]), sign(bits[0])};
    if (bits.size() == 2)
        return {sign(bits[0]), sign(bits[1])};
    return 0.0;
}

void multiply_row(std::vector<std::complex<double>>& row, const std::complex<double>& factor)
{
    common_lib::multiply(row.data(), row.size(), factor, row.data());
}

} // namespace

void lib_nr_ul_phy_pucch_format1_process_t::_generate_multi_slot_sequence(slots_t& slots) const
{
    slots.clear();
    for (const unsigned int slot : m_pucch->get_allocated_slots()) {
        std::vector<unsigned char> bits;
        bool sr = false;
        _get_harq_ack_and_sr(bits, sr, slot);
        if (sr)
            bits = _get_bits_of_scheduling_request(bits);
        const std::complex<double> d = modulated(bits);
        slot_rows_t& rows = slots.emplace_back();
        _generate_one_slot_sequence(rows, slot);
        for (std::size_t l = 0; l < rows.size(); ++l)
            multiply_row(rows[l], l % 2 == 0 ? _get_dmrs_amplitude() : d);
        if (lib_nr_explanation_t* const explanation = _explanation_of(slot))
            for (unsigned int l = 0; l < rows.size(); l += 2)
                explanation->dmrs_symbols.push_back(m_pucch->get_first_symbol() + l);
        _deal_block_wise_spread(rows);
    }
}

/// What a positive SR sends: by the own rule the bit 1, whatever HARQ-ACK says. TS 38.213 clauses 9.2.4 and 9.2.5.1
/// have the bit 0 where nothing else is told; where HARQ-ACK is, the resource alone tells of the SR.
std::vector<unsigned char>
lib_nr_ul_phy_pucch_format1_process_t::_get_bits_of_scheduling_request(const std::vector<unsigned char>& harq_ack) const
{
    return m_rules.pick(lib_nr_deviation_t::pucch1_scheduling_request, std::vector<unsigned char>{1},
                        harq_ack.empty() ? std::vector<unsigned char>{0} : harq_ack);
}

unsigned int lib_nr_ul_phy_pucch_format1_process_t::_get_mcs_value(const std::vector<unsigned char>& /*bits*/,
                                                                   const bool& /*sr*/) const
{
    return 0;
}

/// All lengths take the rows of the DFT but 4, which takes those of a Hadamard matrix.
lib_nr_ul_phy_pucch_base_t::symbol_row_t lib_nr_ul_phy_pucch_format1_process_t::_get_spread_sequence(unsigned int n,
                                                                                                     unsigned int index)
{
    if (n > k_longest_sequence || (n > 0 && index >= n))
        throw std::out_of_range("PUCCH format 1 has no orthogonal sequence of this length and index");
    symbol_row_t sequence;
    for (unsigned int m = 0; m < n; ++m) {
        const unsigned int phi = n == 4 ? static_cast<unsigned int>(std::popcount(index & m)) % 2 * 2 : index * m % n;
        sequence.push_back(std::polar(1.0, 2.0 * std::numbers::pi * phi / n));
    }
    return sequence;
}

/// With intra-slot hopping TS 38.211 Table 6.4.1.3.1.1-1 gives a hop's sequence the DMRS symbols that lie in the hop;
/// the own rule begins with the shorter half, as that of the data does, which differs for 6, 10 and 14 symbols.
void lib_nr_ul_phy_pucch_format1_process_t::_deal_block_wise_spread(slot_rows_t& rows) const
{
    const auto sequence_of = [&](unsigned int length, unsigned int first_length) {
        symbol_row_t sequence = _get_spread_sequence(first_length, m_pucch->get_occ_index());
        const symbol_row_t rest = _get_spread_sequence(length - first_length, m_pucch->get_occ_index());
        sequence.insert(sequence.end(), rest.begin(), rest.end());
        return sequence;
    };
    const auto row_count = static_cast<unsigned int>(rows.size());
    const unsigned int data_count = row_count / 2;
    const unsigned int dmrs_count = row_count - data_count;
    const bool has_two_hops = row_count > 2 && m_pucch->get_intra_slot_frequency_hopping();
    const symbol_row_t dmrs =
        m_rules.pick(lib_nr_deviation_t::pucch1_dmrs_cover, sequence_of(dmrs_count, has_two_hops ? dmrs_count / 2 : 0),
                     sequence_of(dmrs_count, has_two_hops ? (data_count + 1) / 2 : 0));
    const symbol_row_t data = sequence_of(data_count, has_two_hops ? row_count / 4 : 0);
    for (std::size_t l = 0; l < rows.size(); ++l)
        multiply_row(rows[l], (l % 2 == 0 ? dmrs : data)[l / 2]);
}

} // namespace vek::nr_mod_lib

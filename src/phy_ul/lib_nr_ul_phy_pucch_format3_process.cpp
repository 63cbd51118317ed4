#include "phy_ul/lib_nr_ul_phy_pucch_format3_process.h"

#include "manager/lib_nr_carrier_configure_manager.h"
#include "phy_common/lib_nr_reference_signal.h"
#include "phy_common/lib_nr_transform_precoding.h"
#include "phy_ul/lib_nr_low_papr_sequence1.h"
#include "phy_ul/lib_nr_low_papr_sequence2.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace vek::nr_mod_lib
{

namespace
{

void check_orthogonal_sequence(unsigned int length, unsigned int index)
{
    if ((length != LIB_NR_UL_PUCCH_OCC_LENGTH_2 && length != LIB_NR_UL_PUCCH_OCC_LENGTH_4) || index >= length)
        throw std::out_of_range("PUCCH formats 3 and 4 have no orthogonal sequence of this length and index");
}

/// TS 38.211 Tables 6.3.2.6.3-1 and 6.3.2.6.3-2: element m of row n is (-j)^(4 n m / length).
std::complex<double> spreading_factor(unsigned int length, unsigned int row, unsigned int element)
{
    constexpr std::array<std::complex<double>, 4> k_powers = {{{1.0, 0.0}, {0.0, -1.0}, {-1.0, 0.0}, {0.0, 1.0}}};
    return k_powers[row * element * (4 / length) % 4];
}

} // namespace

unsigned int lib_nr_ul_phy_pucch_format3_process_t::_get_e_total(unsigned int qm) const
{
    return (m_pucch->get_symbol_num() - _get_dmrs_symbol_num()) * qm * _get_rb_num() * k_subcarriers_per_rb /
           _get_occ();
}

unsigned int lib_nr_ul_phy_pucch_format3_process_t::_get_modulation_order() const
{
    return m_pucch->get_pi_2_bpsk() ? 1 : 2;
}

void lib_nr_ul_phy_pucch_format3_process_t::_deal_modulation(const bits_t& bits, slot_rows_t& rows) const
{
    _modulate(m_pucch->get_pi_2_bpsk() ? LIB_NR_MODULATION_HALF_PI_BPSK : LIB_NR_MODULATION_QPSK, bits,
              m_pucch->get_symbol_num() - _get_dmrs_symbol_num(), rows);
}

void lib_nr_ul_phy_pucch_format3_process_t::_deal_multiplexing(bits_t& coded, unsigned int e_uci1) const
{
    coded = m_rules.pick(lib_nr_deviation_t::uci_multiplexing, coded, _multiplexed(coded, e_uci1));
}

/// TS 38.212 clause 6.3.1.6: in each symbol what it has of the first part, then the second.
lib_nr_ul_phy_pucch_format3_process_t::bits_t
lib_nr_ul_phy_pucch_format3_process_t::_multiplexed(const bits_t& coded, unsigned int e_uci1) const
{
    const unsigned int qm = _get_modulation_order();
    const std::size_t symbols = m_pucch->get_symbol_num() - _get_dmrs_symbol_num();
    const std::size_t per_symbol = coded.size() / qm / symbols;
    auto first = coded.begin();
    auto second = coded.begin() + static_cast<std::ptrdiff_t>(e_uci1);
    bits_t mixed;
    mixed.reserve(coded.size());
    for (const std::size_t points : _get_points_of_first_part(e_uci1 / qm, per_symbol)) {
        const auto take = [&](auto& from, std::size_t number) {
            const auto end = from + static_cast<std::ptrdiff_t>(number * qm);
            mixed.insert(mixed.end(), from, end);
            from = end;
        };
        take(first, points);
        take(second, per_symbol - points);
    }
    return mixed;
}

/// How many points of each data symbol the first part has: all in the symbols next to a DMRS, then in those one
/// further away, and so on; the last ones that it comes to share what is left evenly, the earlier ones one more.
std::vector<std::size_t> lib_nr_ul_phy_pucch_format3_process_t::_get_points_of_first_part(std::size_t points,
                                                                                          std::size_t per_symbol) const
{
    const std::vector<unsigned int>& dmrs = _get_dmrs_symbol_postion();
    std::vector<unsigned int> distances; // to the nearest DMRS
    for (unsigned int symbol = 0; symbol < m_pucch->get_symbol_num(); ++symbol) {
        unsigned int least = m_pucch->get_symbol_num();
        for (const unsigned int position : dmrs)
            least = std::min(least, position > symbol ? position - symbol : symbol - position);
        if (least > 0)
            distances.push_back(least);
    }
    std::vector<std::size_t> shares(distances.size());
    for (unsigned int distance = 1; points > 0 && distance < m_pucch->get_symbol_num(); ++distance) {
        const auto ring = static_cast<std::size_t>(std::count(distances.begin(), distances.end(), distance));
        const std::size_t in_ring = std::min(points, ring * per_symbol);
        points -= in_ring;
        std::size_t place = 0;
        for (std::size_t i = 0; i < shares.size(); ++i)
            if (distances[i] == distance)
                shares[i] = in_ring / ring + (place++ < in_ring % ring ? 1 : 0);
    }
    return shares;
}

void lib_nr_ul_phy_pucch_format3_process_t::_generate_one_slot_sequence(slot_rows_t& rows, unsigned int slot)
{
    slot_rows_t data;
    slot_rows_t dmrs;
    _generate_uci_data(data, slot);
    _generate_dmrs_data(dmrs, slot);
    for (symbol_row_t& row : data) {
        if (_get_occ() != 1)
            _deal_block_wish_spreading(row);
        deal_transform_precoding(row.data(), row.size());
    }
    rows.resize(m_pucch->get_symbol_num());
    for (std::size_t k = 0; k < dmrs.size(); ++k)
        rows[_get_dmrs_symbol_postion()[k]] = std::move(dmrs[k]);
    auto next_data = data.begin();
    for (symbol_row_t& row : rows)
        if (row.empty())
            row = std::move(*next_data++);
}

/// TS 38.211 clause 6.3.2.6.3. The spread row fills the symbol once, since the bits were counted so.
void lib_nr_ul_phy_pucch_format3_process_t::_deal_block_wish_spreading(symbol_row_t& row) const
{
    const unsigned int length = _get_occ();
    check_orthogonal_sequence(length, m_pucch->get_occ_index());
    symbol_row_t spread;
    spread.reserve(row.size() * length);
    for (unsigned int m = 0; m < length; ++m)
        for (const std::complex<double>& value : row)
            spread.push_back(spreading_factor(length, m_pucch->get_occ_index(), m) * value);
    row.swap(spread);
}

void lib_nr_ul_phy_pucch_format3_process_t::_generate_dmrs_data(slot_rows_t& rows, unsigned int slot) const
{
    const bool is_type_2 = m_pucch->get_dmrs_uplink_transform_precoding_pucch() && m_pucch->get_pi_2_bpsk();
    const auto param = get_basic_sequence_param(slot, 0, is_type_2 ? 0 : _get_m0(), 0);
    const unsigned int n_id = _id_or_cell_index(m_pucch->get_scrambling_id0());
    const unsigned int length = k_subcarriers_per_rb * _get_rb_num();
    const std::vector<unsigned int>& positions = _get_dmrs_symbol_postion();
    const double amplitude = _get_dmrs_amplitude();
    rows.assign(positions.size(), {});
    for (unsigned int k = 0; k < rows.size(); ++k) {
        const unsigned int hop = _is_second_hop(k, static_cast<unsigned int>(positions.size())) ? 1 : 0;
        const unsigned int symbol = m_pucch->get_first_symbol() + positions[k];
        const unsigned int c_init = lib_nr_dmrs_initial_value(_get_slot_symbols() * slot + symbol, n_id);
        if (lib_nr_explanation_t* const explanation = _explanation_of(slot)) {
            explanation->dmrs_symbols.push_back(symbol);
            explanation->u.push_back(param.u[hop]);
            explanation->v.push_back(is_type_2 ? 0 : param.v[hop]);
            if (is_type_2)
                explanation->dmrs_c_init.push_back(c_init);
        }
        if (is_type_2)
            lib_nr_low_papr_sequence2::generate_low_papr_sequence_2({param.u[hop], 0, c_init, length}, rows[k]);
        else
            lib_nr_low_papr_sequence1::generate_low_papr_sequence_1(
                {param.u[hop], param.v[hop], param.alpha.at(symbol), 0, length}, rows[k]);
        for (std::complex<double>& value : rows[k])
            value *= amplitude;
    }
}

unsigned int lib_nr_ul_phy_pucch_format3_process_t::_get_m0() const
{
    if (!m_pucch->get_use_interlace_pucch())
        return 0;
    const unsigned int m0 = _get_m0_of_occ();
    return m_rules.pick(lib_nr_deviation_t::interlaces, m0, _get_occ() == 1 ? 0 : m0); // two interlaces are not spread
}

unsigned int lib_nr_ul_phy_pucch_format3_process_t::_get_m0_of_occ() const
{
    constexpr std::array<unsigned int, 4> k_m0 = {0, 6, 3, 9};
    const unsigned int length = m_pucch->get_occ_length();
    if (length == LIB_NR_UL_PUCCH_OCC_LENGTH_1)
        return 0;
    check_orthogonal_sequence(length, m_pucch->get_occ_index());
    return k_m0.at(m_pucch->get_occ_index());
}

} // namespace vek::nr_mod_lib

#include "receiver/sch_receiver.h"

#include "phy_common/tables/lib_nr_tbs_for_n_info_table.h"
#include "receiver/gold_sequence.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>

namespace nr_test
{

namespace
{

using complex_t = std::complex<double>;

/// The subcarriers of a symbol that the channel's RBs hold, in the order of the mapping.
std::vector<unsigned int> subcarriers_of(const sch_setup_t& setup)
{
    std::vector<unsigned int> list;
    for (const unsigned int rb : setup.rbs)
        for (unsigned int k = 0; k < 12; ++k)
            list.push_back(12 * rb + k);
    return list;
}

/// TS 38.211 clause 7.4.1.1.2, without amplitude: DMRS by subcarrier, as they would stand in a symbol of the slot.
/// `with_cover` leaves the weights out for PTRS, which take the same values.
std::map<unsigned int, complex_t> dmrs_of(const sch_setup_t& setup, unsigned int slot, unsigned int symbol,
                                          unsigned int l_prime, bool with_cover)
{
    const unsigned int lambda = setup.cdm_group();
    const unsigned int delta = lambda * (setup.is_type_2 ? 2 : 1);
    const unsigned int n_scid = setup.by_group && lambda == 1 ? 1 - setup.n_scid : setup.n_scid;
    const std::uint64_t n_id = setup.n_id[n_scid];
    const std::uint64_t count = std::uint64_t{setup.symbols_in_slot} * slot + symbol + 1;
    const std::uint64_t term = setup.by_group ? lambda / 2 : 0;
    const auto c_init = static_cast<std::uint32_t>(((count * (2 * n_id + 1) << 17) + (term << 17) + 2 * n_id + n_scid) %
                                                   (std::uint64_t{1} << 31));
    const unsigned int last = *std::max_element(setup.rbs.begin(), setup.rbs.end());
    const auto c = gold_sequence(c_init, 0, 12 * (last + 1));
    const bool turns_in_time = setup.port >= (setup.is_type_2 ? 6u : 4u) && l_prime == 1;
    std::map<unsigned int, complex_t> values;
    for (unsigned int n = 0; n < (last + 1) * (setup.is_type_2 ? 2 : 3); ++n)
        for (unsigned int k_prime = 0; k_prime < 2; ++k_prime) {
            const unsigned int k = (setup.is_type_2 ? 6 * n + k_prime : 4 * n + 2 * k_prime) + delta;
            const unsigned int i = 2 * n + k_prime;
            const double weight = with_cover && (setup.port % 2 * k_prime != 0) != turns_in_time ? -1.0 : 1.0;
            values[k] = weight * std::sqrt(0.5) * complex_t(1 - 2 * c[2 * i], 1 - 2 * c[2 * i + 1]);
        }
    return values;
}

/// The subcarriers with PTRS, TS 38.211 clause 7.4.1.2.2. RBs are counted within the allocation.
std::vector<unsigned int> ptrs_subcarriers_of(const sch_setup_t& setup)
{
    const unsigned int K = setup.ptrs_rbs;
    const unsigned int own[] = {0, 1, 6, 7};
    const unsigned int comb[] = {0, 2, 6, 8};
    const unsigned int k_re = setup.is_type_2 ? setup.port / 2 * 2 + own[(setup.ptrs_offset + setup.port % 2) % 4]
                                              : setup.port / 2 + comb[setup.ptrs_offset] + setup.port % 2 * 2;
    auto rbs = setup.rbs;
    std::sort(rbs.begin(), rbs.end());
    const auto n = static_cast<unsigned int>(rbs.size());
    std::vector<unsigned int> list;
    for (unsigned int rb = n % K == 0 ? setup.rnti % K : setup.rnti % (n % K); rb < n; rb += K)
        list.push_back(12 * rbs[rb] + k_re);
    return list;
}

/// TS 38.211 clause 5.1: the bits of one axis, and how far the value lies from the point.
double demap_axis(double value, unsigned int bits, unsigned char* out)
{
    for (unsigned int i = 0; i < bits; ++i) {
        out[2 * i] = value < 0 ? 1 : 0;
        value = i + 1 < bits ? static_cast<double>(1u << (bits - 1 - i)) - std::abs(value) : std::abs(value) - 1.0;
    }
    return value;
}

double demap(complex_t value, unsigned int order, bits_t& bits)
{
    const unsigned int axis = order / 2;
    const double scale = std::sqrt(2.0 * (std::pow(4.0, axis) - 1.0) / 3.0);
    bits.resize(bits.size() + order);
    unsigned char* out = &bits[bits.size() - order];
    const double real = demap_axis(scale * value.real(), axis, out);
    return std::hypot(real, demap_axis(scale * value.imag(), axis, out + 1)) / scale;
}

/// The cells of a symbol that carry no data, by subcarrier: DMRS, zeros beside them, PTRS.
std::map<unsigned int, complex_t> known_cells_of(const sch_setup_t& setup, unsigned int slot, unsigned int symbol)
{
    std::map<unsigned int, complex_t> cells;
    const auto& dmrs_symbols = setup.dmrs_symbols;
    const auto next = std::upper_bound(dmrs_symbols.begin(), dmrs_symbols.end(), symbol);
    const unsigned int reference = next == dmrs_symbols.begin() ? setup.first_symbol : *(next - 1);
    if (next != dmrs_symbols.begin() && reference == symbol) {
        const auto place = static_cast<unsigned int>(next - dmrs_symbols.begin() - 1);
        const auto dmrs = dmrs_of(setup, slot, symbol, setup.is_double ? place % 2 : 0, true);
        for (const unsigned int k : subcarriers_of(setup))
            if (setup.is_type_2 ? k % 6 < 2 * setup.groups_without_data : k % 2 < setup.groups_without_data)
                cells[k] = dmrs.count(k) != 0 ? setup.dmrs_amplitude * dmrs.at(k) : 0.0;
    }
    else if (setup.has_ptrs && !dmrs_symbols.empty() && (symbol - reference) % setup.ptrs_symbols == 0) {
        const auto values = dmrs_of(setup, slot, dmrs_symbols.front(), 0, false);
        for (const unsigned int k : ptrs_subcarriers_of(setup))
            cells[k] = setup.ptrs_amplitude * values.at(k);
    }
    return cells;
}

} // namespace

sch_slot_t receive_sch_slot(const sch_setup_t& setup, const rows_t& rows, unsigned int slot,
                            const std::function<bool(unsigned int, unsigned int)>& is_taken)
{
    sch_slot_t received;
    std::vector<std::map<unsigned int, complex_t>> known;
    complex_t product;
    double power = 0.0;
    for (unsigned int i = 0; i < setup.symbol_number; ++i) {
        const unsigned int row = slot * setup.symbols_in_slot + setup.first_symbol + i;
        known.push_back(known_cells_of(setup, slot, setup.first_symbol + i));
        for (const auto& [k, value] : known.back()) {
            const double weight = is_taken(row, k) ? 0.0 : 1.0;
            product += weight * rows[row][k] * std::conj(value);
            power += weight * std::norm(value);
        }
    }
    const complex_t gain = product / power;
    for (unsigned int i = 0; i < setup.symbol_number; ++i) {
        const unsigned int row = slot * setup.symbols_in_slot + setup.first_symbol + i;
        for (const unsigned int k : subcarriers_of(setup)) {
            if (is_taken(row, k))
                continue;
            const complex_t value = rows[row][k] / gain;
            const auto cell = known[i].find(k);
            const double error = cell != known[i].end() ? std::abs(value - cell->second)
                                                        : demap(value / setup.amplitude, setup.order, received.bits);
            received.error = std::isnan(error) ? error : std::max(received.error, error);
        }
    }
    const auto c = gold_sequence(setup.scrambling_c_init, 0, received.bits.size());
    for (std::size_t i = 0; i < c.size(); ++i)
        received.bits[i] ^= c[i];
    return received;
}

std::size_t transport_block_size(std::uint64_t n_info, bool low_rate)
{
    constexpr std::uint64_t k_unit = k_n_info_unit;
    if (n_info <= 3824 * k_unit) {
        std::uint64_t step = 8; // at least, and more from 64 steps on
        while (n_info >= 128 * step * k_unit)
            step *= 2;
        const std::uint64_t quantised = std::max<std::uint64_t>(24, n_info / (step * k_unit) * step);
        const auto& sizes = vek::nr_mod_lib::lib_nr_tbs_for_n_info_table();
        return *std::find_if(sizes.begin(), sizes.end(), [=](std::uint64_t size) { return size >= quantised; });
    }
    n_info -= 24 * k_unit;
    std::uint64_t step = 1;
    while (n_info >= 64 * step * k_unit)
        step *= 2;
    const std::uint64_t rounded = (n_info + step * k_unit / 2) / (step * k_unit) * step;
    const std::uint64_t quantised = std::max<std::uint64_t>(3840, rounded);
    std::uint64_t blocks = 1;
    while ((low_rate || quantised > 8424) && quantised + 24 > blocks * (low_rate ? 3816 : 8424))
        ++blocks;
    std::size_t size = quantised; // the least that fills the code blocks with whole bytes
    while ((size + 24) % (8 * blocks) != 0)
        ++size;
    return size;
}

std::size_t transport_block_size(const sch_setup_t& setup)
{
    const std::size_t dmrs = setup.dmrs_symbols.size() * setup.groups_without_data * (setup.is_type_2 ? 4 : 6);
    const std::size_t left_out = std::min<std::size_t>(12 * setup.symbol_number, setup.overhead + dmrs);
    const std::size_t per_rb = std::min<std::size_t>(156, 12 * setup.symbol_number - left_out);
    const double per_cell = setup.order * setup.code_rate * setup.scaling * static_cast<double>(k_n_info_unit);
    return transport_block_size(per_rb * setup.rbs.size() * static_cast<std::uint64_t>(std::llround(per_cell)),
                                setup.code_rate <= 0.25);
}

std::optional<bits_t> decode_sch(const std::vector<sch_setup_t>& setups, const std::vector<sch_slot_t>& slots)
{
    const std::size_t size = transport_block_size(setups.front());
    const double rate = setups.front().code_rate;
    ldpc_receiver_t receiver(size <= 292 || (size <= 3824 && rate <= 0.67) || rate <= 0.25 ? 2 : 1, size);
    for (std::size_t i = 0; i < slots.size(); ++i) {
        std::vector<double> soft_bits;
        for (const unsigned char bit : slots[i].bits)
            soft_bits.push_back(bit == 0 ? 1.0 : -1.0);
        if (!receiver.add({soft_bits.size(), setups[i].order, 1, setups[i].rv}, soft_bits))
            return std::nullopt;
    }
    return receiver.decode();
}

} // namespace nr_test

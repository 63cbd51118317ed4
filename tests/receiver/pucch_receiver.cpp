#include "receiver/pucch_receiver.h"

#include "phy_common/tables/lib_nr_small_block_basis_table.h"
#include "receiver/bits.h"
#include "receiver/gold_sequence.h"
#include "receiver/low_papr.h"
#include "receiver/polar_decoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace nr_test
{

namespace
{

using namespace vek::nr_mod_lib;
using std::numbers::pi;

constexpr unsigned char k_repeats = 254; // a coded bit that is sent as the one before it

/// DMRS of formats 3 and 4, TS 38.211 Table 6.4.1.3.3.2-1.
std::vector<unsigned int> dmrs_symbols(unsigned int symbols, bool hopping, bool additional)
{
    static const std::vector<std::vector<unsigned int>> few = {{0, 3}, {1, 4}, {1, 4}, {1, 5}, {1, 6},
                                                               {2, 7}, {2, 7}, {2, 8}, {2, 9}, {3, 10}};
    static const std::vector<std::vector<unsigned int>> many = {
        {1, 3, 6, 8}, {1, 3, 6, 9}, {1, 4, 7, 10}, {1, 4, 7, 11}, {1, 5, 8, 12}};
    if (symbols == 4)
        return hopping ? std::vector<unsigned int>{0, 2} : std::vector<unsigned int>{1};
    return additional && symbols >= 10 ? many[symbols - 10] : few[symbols - 5];
}

struct slot_receiver_t
{
    const rows_t& frame;
    const lib_nr_carrier_configure_manager_t& carrier;
    const lib_nr_ul_pucch_configure_manager_t& pucch;
    unsigned int slot;
    bool standard_rules;
    const lib_nr_ul_bwp_configure_manager_t& bwp = carrier.get_ul_bwp(pucch.get_bwp_id());
    unsigned int format = pucch.get_pucch_format();
    unsigned int interlaces = bwp.get_numerology() == LIB_NR_SCS_15K ? 10 : 5;
    unsigned int L = bwp.get_cp_type() == LIB_NR_EXTEND_CP ? 12 : 14;
    bool is_spread = format == 4 || (pucch.get_use_interlace_pucch() && pucch.get_interlace1() < 0);
    unsigned int S = is_spread ? static_cast<unsigned int>(pucch.get_occ_length()) : 1;
    unsigned int Qm = format != 2 && pucch.get_pi_2_bpsk() ? 1 : 2;
    double dmrs_amplitude = std::pow(10.0, pucch.get_dmrs_power() / 20.0);
    std::vector<double> soft{};
    received_uci_t uci{};

    unsigned int id(int value) const { return value < 0 ? carrier.get_cell_index() : static_cast<unsigned int>(value); }
    unsigned int symbol_in_frame(unsigned int l) const { return slot * L + pucch.get_first_symbol() + l; }
    bool is_second_hop(unsigned int l, std::size_t count) const
    {
        return pucch.get_intra_slot_frequency_hopping() && l >= count / 2;
    }
    /// Inter-slot hopping counts slots from the first of each repetition, TS 38.213 clause 9.2.6; by the own rule it
    /// goes by the place in the list of slots.
    bool is_moved() const
    {
        const auto& slots = pucch.get_allocated_slots();
        const auto place = static_cast<std::size_t>(std::find(slots.begin(), slots.end(), slot) - slots.begin());
        const std::size_t first =
            place / pucch.get_number_of_slots_for_pucch_repetition() * pucch.get_number_of_slots_for_pucch_repetition();
        return pucch.get_inter_slot_frequency_hopping() &&
               (standard_rules ? slot + slots[first] : static_cast<unsigned int>(place)) % 2 == 1;
    }
    /// The number of an RB within its interlace, TS 38.211 clause 4.4.4.6.
    unsigned int interlaced_rb(unsigned int rb) const { return (rb - bwp.get_rb_offset()) / interlaces; }
    void note(double error) { uci.error = std::max(uci.error, error); }

    /// RBs of the carrier's grid.
    std::vector<unsigned int> rbs(unsigned int l) const
    {
        std::vector<unsigned int> result;
        const auto add = [&](unsigned int first, unsigned int step, unsigned int last, unsigned int most) {
            for (unsigned int rb = first; rb <= last && most-- > 0; rb += step)
                result.push_back(rb);
        };
        if (!pucch.get_use_interlace_pucch()) {
            add(bwp.get_rb_offset() + (is_second_hop(l, pucch.get_symbol_num()) || is_moved()
                                           ? pucch.get_second_hop_prb()
                                           : pucch.get_rb_offset()),
                1, 273, pucch.get_rb_num());
            return result;
        }
        const auto sets = carrier.get_numerology_manager(bwp.get_numerology()).get_ul_guard_band().get_rb_set_info();
        const auto [first, last] = sets.at(static_cast<std::uint16_t>(pucch.get_rb_set_index()));
        const auto add_interlace = [&, begin = first, end = last](unsigned int interlace, unsigned int setting) {
            unsigned int rb = standard_rules ? begin : begin + interlace;
            while (standard_rules && rb % interlaces != interlace)
                ++rb;
            add(rb, interlaces, end, setting == 1 ? 10u : 11u);
        };
        add_interlace(pucch.get_interlace0(), pucch.get_pucch_interlace0());
        if (pucch.get_interlace1() >= 0)
            add_interlace(static_cast<unsigned int>(pucch.get_interlace1()), pucch.get_pucch_interlace1());
        if (standard_rules)
            std::sort(result.begin(), result.end());
        return result;
    }

    signal_t cells(unsigned int l) const
    {
        signal_t row;
        for (const unsigned int rb : rbs(l))
            for (unsigned int k = 12 * rb; k < 12 * rb + 12; ++k)
                row.push_back(frame.at(symbol_in_frame(l)).at(k) / std::pow(10.0, pucch.get_power() / 20.0));
        return row;
    }

    unsigned int dmrs_c_init(unsigned int l) const
    {
        const unsigned long long n = id(pucch.get_scrambling_id0());
        return static_cast<unsigned int>((131072ull * (symbol_in_frame(l) + 1) * (2 * n + 1) + 2 * n) % (1ull << 31));
    }

    /// Takes an orthogonal sequence out of values that lie `distance` apart, the first at `first`.
    template <class sequence_t>
    std::complex<double> despread(const signal_t& values, std::size_t first, std::size_t distance, sequence_t w)
    {
        std::complex<double> point = 0.0;
        for (unsigned int m = 0; m < S; ++m)
            point += std::conj(w(m)) * values[first + m * distance] / static_cast<double>(S);
        for (unsigned int m = 0; m < S; ++m)
            note(std::abs(values[first + m * distance] - w(m) * point));
        return point;
    }

    void receive_format_2(unsigned int l)
    {
        const signal_t row = cells(l);
        const std::vector<unsigned int> blocks = rbs(l);
        for (std::size_t r = 0; r < blocks.size(); ++r) {
            const bool is_counted_from_bwp = !pucch.get_use_interlace_pucch() && !standard_rules;
            const unsigned int counted = blocks[r] - (is_counted_from_bwp ? bwp.get_rb_offset() : 0);
            const auto c = gold_sequence(dmrs_c_init(l), 8 / S * counted, 8 / S);
            const unsigned int n =
                ((standard_rules ? interlaced_rb(blocks[r]) : blocks[r]) + pucch.get_occ_index()) % S;
            const auto w = [n](unsigned int m) { return std::complex<double>((n & m) % 3 == 0 ? 1.0 : -1.0); };
            signal_t data;
            for (std::size_t k = 0; k < 12; ++k)
                if (k % 3 != 1)
                    data.push_back(row[12 * r + k]);
            for (unsigned int k = 0; k < 4; ++k) {
                const std::complex<double> d(1 - 2 * c[k / S * 2], 1 - 2 * c[k / S * 2 + 1]);
                note(std::abs(row[12 * r + 3 * k + 1] / dmrs_amplitude - w(k % S) * d * std::sqrt(0.5)));
            }
            for (std::size_t first = 0; first < 8; first += S)
                demap(despread(data, first, 1, w));
        }
    }

    /// A sequence of type 1 or, for the DMRS of pi/2-BPSK, 2; `shift` is what is added to the symbol's.
    signal_t low_papr_row(unsigned int l, bool is_second, unsigned int shift, unsigned int length) const
    {
        const unsigned int n_id = id(pucch.get_hopping_id());
        const unsigned int hop = 2 * slot + (is_second ? 1 : 0);
        const unsigned int hopping = pucch.get_pucch_group_hopping();
        const unsigned int u = (n_id + (hopping == 1 ? hopping_number(n_id / 30, 8 * hop, 8) : 0)) % 30;
        const unsigned int v = hopping == 2 ? hopping_number(32 * (n_id / 30) + n_id % 30, hop, 1) : 0;
        if (format > 2 && pucch.get_pi_2_bpsk() && pucch.get_dmrs_uplink_transform_precoding_pucch())
            return low_papr_type_2(u, dmrs_c_init(l), length);
        signal_t row = low_papr_type_1(u, v, length);
        shift += hopping_number(n_id, 8 * symbol_in_frame(l), 8);
        for (unsigned int n = 0; n < length; ++n)
            row[n] *= std::polar(1.0, pi / 6.0 * (shift * n % 12));
        return row;
    }

    /// The rows of format 0, RB by RB.
    rows_t sequence_rows(unsigned int shift) const
    {
        rows_t rows(pucch.get_symbol_num());
        for (unsigned int l = 0; l < rows.size(); ++l)
            for (unsigned int r = 0; r < rbs(l).size(); ++r) {
                const bool is_second = is_second_hop(l, rows.size()) && !pucch.get_use_interlace_pucch();
                const bool by_interlace = standard_rules && pucch.get_use_interlace_pucch();
                const signal_t rb =
                    low_papr_row(l, is_second, shift + 5 * (by_interlace ? interlaced_rb(rbs(l)[r]) : r), 12);
                rows[l].insert(rows[l].end(), rb.begin(), rb.end());
            }
        return rows;
    }

    /// What format 1 spreads symbol l with; 0 where a sequence is too short for the index. By the own rule the DMRS is
    /// split like the data, the shorter half first.
    std::complex<double> spreading(unsigned int l, unsigned int index) const
    {
        constexpr unsigned int first_of[3][11] = {{1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3},
                                                  {1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3},
                                                  {1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4}}; // TS 38.211 Table 6.4.1.3.1.1-1
        constexpr unsigned int phi_of_4[4][4] = {{0, 0, 0, 0}, {0, 2, 0, 2}, {0, 0, 2, 2}, {0, 2, 2, 0}};
        const unsigned int all = (pucch.get_symbol_num() + 1 - l % 2) / 2;
        const unsigned int first = pucch.get_intra_slot_frequency_hopping()
                                       ? first_of[l % 2 == 0 && standard_rules ? 2 : l % 2][pucch.get_symbol_num() - 4]
                                       : all;
        const unsigned int n = l / 2 < first ? first : all - first;
        const unsigned int m = l / 2 < first ? l / 2 : l / 2 - first;
        if (index >= n)
            return 0.0;
        return std::polar(1.0, 2.0 * pi / n * (n == 4 ? phi_of_4[index][m] : index * m % n));
    }

    received_sequence_t receive_sequence() const
    {
        received_sequence_t best;
        for (unsigned int shift = 0; shift < 12; ++shift) {
            const rows_t expected = sequence_rows(shift);
            for (unsigned int content = 0; content < (format == 0 ? 1u : 7u * 4u); ++content) {
                const unsigned int index = content / 4;
                const auto point = std::polar(1.0, pi / 4.0 * (1 + content % 4 * 2));
                double error = 0.0;
                for (unsigned int l = 0; l < expected.size(); ++l) {
                    std::complex<double> factor = 1.0;
                    if (format == 1)
                        factor = spreading(l, index) * (l % 2 == 0 ? dmrs_amplitude : point);
                    const signal_t received = cells(l);
                    for (std::size_t k = 0; k < received.size(); ++k)
                        error = std::max(error, std::abs(received[k] - factor * expected[l][k]));
                }
                best.next_error = std::min(best.next_error, std::max(error, best.error));
                if (error < best.error)
                    best = {shift, index, point, error, best.next_error};
            }
        }
        return best;
    }

    void receive_format_3_or_4(unsigned int l)
    {
        const auto dmrs =
            dmrs_symbols(pucch.get_symbol_num(), pucch.get_intra_slot_frequency_hopping(), pucch.get_additional_dmrs());
        signal_t row = cells(l);
        const auto M = static_cast<unsigned int>(row.size());
        const auto k = static_cast<std::size_t>(std::find(dmrs.begin(), dmrs.end(), l) - dmrs.begin());
        if (k < dmrs.size()) {
            constexpr unsigned int m0[4] = {0, 6, 3, 9};
            const bool is_shifted = is_spread || (pucch.get_use_interlace_pucch() && !standard_rules);
            const signal_t expected = low_papr_row(l, is_second_hop(static_cast<unsigned int>(k), dmrs.size()),
                                                   is_shifted ? m0[pucch.get_occ_index()] : 0, M);
            for (unsigned int n = 0; n < M; ++n)
                note(std::abs(row[n] / dmrs_amplitude - expected[n]));
            return;
        }
        fft(row, 1);
        const unsigned int n = pucch.get_occ_index();
        for (unsigned int i = 0; i < M / S; ++i)
            demap(despread(row, i, M / S, [&](unsigned int m) { return std::polar(1.0, -2.0 * pi * (n * m) / S); }) /
                  std::sqrt(M));
    }

    /// Soft bits of a data point, 1 in magnitude where the point is ideal.
    void demap(std::complex<double> point)
    {
        if (Qm == 1)
            point *= std::polar(1.0, -pi / 4.0 * (soft.size() % 2 == 0 ? 1.0 : 3.0));
        else
            point *= std::sqrt(2.0);
        soft.push_back(point.real());
        note(std::abs(std::abs(point.real()) - 1.0));
        if (Qm == 2)
            soft.push_back(point.imag());
        note(std::abs(std::abs(point.imag()) - (Qm - 1.0)));
    }

    /// The places of coded bits in the slot, the first part's ahead of the second's: TS 38.212 clause 6.3.1.6 deals the
    /// first out among the symbols next to a DMRS, point by point, then among those one further away, and so on.
    std::vector<std::size_t> order_of_parts(std::size_t bits, std::size_t first_part) const
    {
        const auto dmrs =
            dmrs_symbols(pucch.get_symbol_num(), pucch.get_intra_slot_frequency_hopping(), pucch.get_additional_dmrs());
        std::vector<std::array<std::size_t, 3>> dealt; // by distance, point of the symbol, and place
        for (unsigned int l = 0; l < pucch.get_symbol_num(); ++l) {
            unsigned int distance = 14;
            for (const unsigned int k : dmrs)
                distance = std::min(distance, k > l ? k - l : l - k);
            const std::size_t per_symbol = distance == 0 ? 0 : bits / (pucch.get_symbol_num() - dmrs.size());
            for (std::size_t bit = 0; bit < per_symbol; ++bit)
                dealt.push_back({distance, bit / Qm, dealt.size()});
        }
        std::sort(dealt.begin(), dealt.end());
        std::vector<std::size_t> places;
        for (const auto& bit : dealt)
            places.push_back(bit[2]);
        std::sort(places.begin(), places.begin() + static_cast<std::ptrdiff_t>(first_part));
        std::sort(places.begin() + static_cast<std::ptrdiff_t>(first_part), places.end());
        return places;
    }

    /// A part's bits out of the hard decisions from `first` on.
    void decode(std::size_t A, const bits_t& hard, const bits_t& scrambling, std::size_t first, std::size_t E)
    {
        if (A == 0 || E == 0)
            return;
        const unsigned int C = A >= 1013 || (A >= 360 && E >= 1088) ? 2 : 1;
        const unsigned int crc = A < 12 ? 0 : A < 20 ? 6 : 11;
        polar_block_t block{static_cast<unsigned int>((A + C - 1) / C) + crc, static_cast<unsigned int>(E / C), 10,
                            false, true};
        block.n_pc = crc == 6 ? 3 : 0;
        block.n_pc_wm = crc == 6 && block.E + 3 > block.K + 192 ? 1 : 0;
        for (unsigned int r = 0; r < C; ++r, first += block.E) {
            bits_t bits = crc == 0 ? decode_small_block(A, hard, scrambling, first, E) : bits_t{};
            if (crc != 0) {
                std::vector<double> received(block.E);
                for (std::size_t i = 0; i < received.size(); ++i)
                    received[i] = hard[first + i] == scrambling[first + i] ? 1.0 : -1.0;
                bits = polar_decode(block, received);
                note(passes_crc(bits, crc == 6 ? 0x61 : 0xE21, crc) ? 0.0 : INFINITY);
            }
            const auto filler = static_cast<std::ptrdiff_t>(r == 0 ? C * (block.K - crc) - A : 0);
            uci.bits.insert(uci.bits.end(), bits.begin() + filler, bits.end() - crc);
        }
    }

    /// TS 38.212 clause 5.3.3; bits that are sent as ones, x, go unscrambled, but for pi/2-BPSK and QPSK there are
    /// none.
    bits_t small_block(const bits_t& c) const
    {
        if (c.size() == 1)
            return Qm == 1 ? c : bits_t{c[0], k_repeats};
        if (c.size() == 2) {
            const auto c2 = static_cast<unsigned char>(c[0] ^ c[1]);
            return Qm == 1 ? bits_t{c[0], c[1], c2} : bits_t{c[0], c[1], c2, c[0], c[1], c2};
        }
        bits_t word;
        for (const auto& row : lib_nr_small_block_basis_table())
            word.push_back(std::inner_product(c.begin(), c.end(), row.begin(), 0) % 2 != 0);
        return word;
    }

    bits_t decode_small_block(std::size_t A, const bits_t& hard, const bits_t& scrambling, std::size_t first,
                              std::size_t E)
    {
        std::vector<bits_t> fits;
        for (unsigned long message = 0; message < 1ul << A; ++message) {
            const bits_t word = small_block(bits_of(message, static_cast<unsigned int>(A)));
            std::size_t i = 0;
            for (; i < E; ++i) {
                const unsigned char bit = word[i % word.size()];
                if (hard[first + i] != (bit == k_repeats ? hard[first + i - 1] : bit ^ scrambling[first + i]))
                    break;
            }
            if (i == E)
                fits.push_back(bits_of(message, static_cast<unsigned int>(A)));
        }
        note(fits.size() == 1 ? 0.0 : INFINITY);
        return fits.empty() ? bits_t(A) : fits.front();
    }

    received_uci_t receive(std::size_t first_bits, std::size_t second_bits)
    {
        for (unsigned int l = 0; l < pucch.get_symbol_num(); ++l)
            format == 2 ? receive_format_2(l) : receive_format_3_or_4(l);
        bits_t hard;
        std::transform(soft.begin(), soft.end(), std::back_inserter(hard), [](double value) { return value < 0.0; });
        bits_t scrambling(hard.size(), 0);
        if (pucch.get_scrambling_state())
            scrambling = gold_sequence(pucch.get_n_rnti() * 32768u + id(pucch.get_scrambling_id()), 0, hard.size());
        if (!pucch.get_channel_coding()) {
            for (std::size_t i = 0; i < hard.size(); ++i)
                uci.bits.push_back(hard[i] ^ scrambling[i]);
            return uci;
        }
        std::size_t E1 = hard.size();
        if (second_bits != 0) {
            const std::size_t coded = first_bits + (first_bits < (standard_rules ? 12 : 11) ? 0
                                                    : first_bits < 20                       ? 6
                                                                                            : 11);
            const std::size_t rate = pucch.get_max_code_rate();
            E1 = std::min(E1, Qm * ((100 * coded + rate * Qm - 1) / (rate * Qm)));
        }
        if (second_bits != 0 && standard_rules && format != 2) {
            bits_t parts[2];
            for (const std::size_t place : order_of_parts(hard.size(), E1)) {
                parts[0].push_back(hard[place]);
                parts[1].push_back(scrambling[place]);
            }
            hard = parts[0];
            scrambling = parts[1];
        }
        decode(first_bits, hard, scrambling, 0, E1);
        decode(second_bits, hard, scrambling, E1, hard.size() - E1);
        return uci;
    }
};

} // namespace

received_uci_t receive_uci(const rows_t& frame, const lib_nr_carrier_configure_manager_t& carrier,
                           const lib_nr_ul_pucch_configure_manager_t& pucch, unsigned int slot, std::size_t first_bits,
                           std::size_t second_bits, bool standard_rules)
{
    slot_receiver_t receiver{frame, carrier, pucch, slot, standard_rules};
    return receiver.receive(first_bits, second_bits);
}

received_sequence_t receive_sequence(const rows_t& frame, const lib_nr_carrier_configure_manager_t& carrier,
                                     const lib_nr_ul_pucch_configure_manager_t& pucch, unsigned int slot,
                                     bool standard_rules)
{
    return slot_receiver_t{frame, carrier, pucch, slot, standard_rules}.receive_sequence();
}

} // namespace nr_test

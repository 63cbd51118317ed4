#include "receiver/ssb_receiver.h"

#include "receiver/bits.h"
#include "receiver/gold_sequence.h"
#include "receiver/polar_decoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace nr_test
{

namespace
{

using complex_t = std::complex<double>;

constexpr std::size_t k_width = 240;
constexpr std::size_t k_sync_length = 127;
constexpr std::size_t k_sync_first = 56;
constexpr std::size_t k_pbch_bits = 864;

/// x(i + 7) = x(i + tap) + x(i); bit i of the start is x(i).
std::array<int, k_sync_length> shift_register(unsigned int tap, unsigned int start)
{
    std::array<int, k_sync_length> x = {};
    unsigned int state = start;
    for (int& value : x) {
        value = static_cast<int>(state & 1u);
        state = state >> 1 | ((state >> tap ^ state) & 1u) << 6;
    }
    return x;
}

/// TS 38.211 clause 7.4.2.2: x(6) to x(0) start as 1110110.
std::vector<double> pss(unsigned int n_id_2)
{
    const auto x = shift_register(4, 0b1110110);
    std::vector<double> d(k_sync_length);
    for (std::size_t n = 0; n < k_sync_length; ++n)
        d[n] = x[(n + 43 * n_id_2) % k_sync_length] == 0 ? 1.0 : -1.0;
    return d;
}

/// TS 38.211 clause 7.4.2.3.
std::vector<double> sss(unsigned int n_id_1, unsigned int n_id_2)
{
    static const auto x0 = shift_register(4, 1);
    static const auto x1 = shift_register(1, 1);
    const std::size_t m0 = 15 * (n_id_1 / 112) + 5 * n_id_2;
    const std::size_t m1 = n_id_1 % 112;
    std::vector<double> d(k_sync_length);
    for (std::size_t n = 0; n < k_sync_length; ++n)
        d[n] = x0[(n + m0) % k_sync_length] == x1[(n + m1) % k_sync_length] ? 1.0 : -1.0;
    return d;
}

complex_t qpsk(unsigned char first, unsigned char second)
{
    const double a = std::sqrt(0.5);
    return {first ? -a : a, second ? -a : a};
}

/// TS 38.211 clause 7.4.1.4.
signal_t pbch_dmrs(unsigned int cell, unsigned int index)
{
    const std::uint32_t c_init = (1u << 11) * (index + 1) * (cell / 4 + 1) + (1u << 6) * (index + 1) + cell % 4;
    const bits_t c = gold_sequence(c_init, 0, 288);
    signal_t symbols;
    for (std::size_t m = 0; m < 144; ++m)
        symbols.push_back(qpsk(c[2 * m], c[2 * m + 1]));
    return symbols;
}

/// Symbol (1 to 3) and subcarrier of every PBCH or DMRS cell, in the order of mapping: TS 38.211 Table 7.4.3.1-1.
std::vector<std::pair<std::size_t, std::size_t>> pbch_region(unsigned int cell, bool dmrs)
{
    std::vector<std::pair<std::size_t, std::size_t>> cells;
    for (std::size_t l = 1; l <= 3; ++l)
        for (std::size_t k = 0; k < k_width; ++k) {
            const bool is_sss = l == 2 && k >= 48 && k < 192;
            if (!is_sss && (k % 4 == cell % 4) == dmrs)
                cells.emplace_back(l, k);
        }
    return cells;
}

/// The 240 subcarriers of one symbol out of all; those outside the band are 0.
signal_t block_subcarriers(const signal_t& subcarriers, int first)
{
    signal_t values(k_width);
    const auto centre = static_cast<std::ptrdiff_t>(subcarriers.size() / 2);
    for (std::size_t k = 0; k < k_width; ++k) {
        const std::ptrdiff_t place = centre + first + static_cast<std::ptrdiff_t>(k);
        if (place >= 0 && place < static_cast<std::ptrdiff_t>(subcarriers.size()))
            values[k] = subcarriers[static_cast<std::size_t>(place)];
    }
    return values;
}

/// The block's four symbols. None of them has the long prefix in any case, so they follow each other evenly.
std::array<signal_t, 4> block_symbols(const signal_t& signal, const ofdm_setup_t& setup, const ssb_place_t& place)
{
    const std::size_t step = prefix_length(setup, 1) + setup.useful_length();
    std::array<signal_t, 4> symbols;
    for (std::size_t l = 0; l < 4; ++l)
        symbols[l] = block_subcarriers(demodulate_at(signal, setup, place.sample + l * step), place.first_subcarrier);
    return symbols;
}

double power(const complex_t& value) { return std::norm(value); }

/// Power of the correlation with a sequence of unit values over the greatest that it could have, 0 to 1.
double likeness(const complex_t* values, const std::vector<double>& sequence)
{
    complex_t correlation;
    double total = 0.0;
    for (std::size_t n = 0; n < sequence.size(); ++n) {
        correlation += values[n] * sequence[n];
        total += power(values[n]);
    }
    return total > 0.0 ? power(correlation) / (total * static_cast<double>(sequence.size())) : 0.0;
}

/// Where bit i of the payload is found behind the interleaver of TS 38.212 Table 7.1.1-1. Ten places are the frame
/// number's, one the half frame's, three those of the block index; the others lie in rising order between them.
std::array<std::size_t, 32> payload_places()
{
    constexpr std::array<std::size_t, 10> frame_number = {16, 23, 18, 17, 8, 30, 10, 6, 24, 7};
    constexpr std::array<std::size_t, 3> block_index = {5, 3, 2};
    std::array<std::size_t, 32> places = {};
    std::array<bool, 32> taken = {};
    for (std::size_t i = 0; i < 10; ++i)
        places[i < 6 ? i + 1 : i + 18] = frame_number[i];
    places[28] = 0;
    for (std::size_t i = 0; i < 3; ++i)
        places[29 + i] = block_index[i];
    for (std::size_t i = 1; i < 32; ++i)
        if (i < 7 || i > 23)
            taken[places[i]] = true;
    std::size_t next = 0;
    for (std::size_t i = 0; i < 24; ++i) {
        if (i >= 1 && i <= 6)
            continue;
        while (taken[next])
            ++next;
        places[i] = next++;
    }
    return places;
}

std::uint32_t number(const bits_t& bits, std::size_t first, std::size_t count)
{
    std::uint32_t value = 0;
    for (std::size_t i = first; i < first + count; ++i)
        value = 2 * value + bits[i];
    return value;
}

} // namespace

std::vector<unsigned int> candidate_symbols(char ssb_case, unsigned int lmax)
{
    std::vector<unsigned int> starts;
    const auto add = [&](std::vector<unsigned int> firsts, unsigned int period, unsigned int n) {
        for (const unsigned int first : firsts)
            starts.push_back(first + period * n);
    };
    // With Lmax 64 a group of four slots' blocks is followed by a pause for other signals after every fourth group.
    for (unsigned int n = 0; starts.size() < lmax; ++n) {
        switch (ssb_case) {
        case 'A':
        case 'C':
            add({2, 8}, 14, n);
            break;
        case 'B':
            add({4, 8, 16, 20}, 28, n);
            break;
        case 'D':
            if (n % 5 != 4)
                add({4, 8, 16, 20}, 28, n);
            break;
        case 'E':
            if (n % 5 != 4)
                add({8, 12, 16, 20, 32, 36, 40, 44}, 56, n);
            break;
        case 'F':
        case 'G':
            add({2, 9}, 14, n);
            break;
        default:
            throw std::invalid_argument("no such case");
        }
    }
    return starts;
}

std::optional<unsigned int> find_cell(const std::array<signal_t, 4>& symbols)
{
    for (unsigned int n_id_2 = 0; n_id_2 < 3; ++n_id_2) {
        if (likeness(&symbols[0][k_sync_first], pss(n_id_2)) < 0.8)
            continue;
        for (unsigned int n_id_1 = 0; n_id_1 < 336; ++n_id_1)
            if (likeness(&symbols[2][k_sync_first], sss(n_id_1, n_id_2)) > 0.8)
                return 3 * n_id_1 + n_id_2;
    }
    return std::nullopt;
}

ssb_content_t read_pbch(const signal_t& signal, const ofdm_setup_t& setup, const ssb_place_t& place, unsigned int lmax)
{
    return read_pbch(block_symbols(signal, setup, place), place.cell, lmax);
}

ssb_content_t read_pbch(const std::array<signal_t, 4>& symbols, unsigned int cell, unsigned int lmax)
{
    const auto dmrs_cells = pbch_region(cell, true);
    const auto pbch_cells = pbch_region(cell, false);

    ssb_content_t content;
    std::array<complex_t, 4> channel = {};
    double best = -1.0;
    for (unsigned int index = 0; index < 8; ++index) {
        const signal_t dmrs = pbch_dmrs(cell, index);
        std::array<complex_t, 4> sums = {};
        for (std::size_t m = 0; m < dmrs.size(); ++m)
            sums[dmrs_cells[m].first] += symbols[dmrs_cells[m].first][dmrs_cells[m].second] * std::conj(dmrs[m]);
        const double total = power(sums[1]) + power(sums[2]) + power(sums[3]);
        if (total > best) {
            best = total;
            content.dmrs_index = index;
            channel = {0.0, sums[1] / 60.0, sums[2] / 24.0, sums[3] / 60.0};
        }
    }

    std::vector<double> soft;
    for (const auto& [l, k] : pbch_cells) {
        const complex_t value = symbols[l][k] / channel[l];
        soft.push_back(value.real());
        soft.push_back(value.imag());
    }

    // TS 38.211 clause 7.3.3.1 leaves two or three bits of the block index; the others are tried behind it.
    const unsigned int by_the_standard = lmax == 4 ? content.dmrs_index % 4 : content.dmrs_index;
    const polar_block_t code = {.K = 56, .E = static_cast<unsigned int>(k_pbch_bits)};
    bits_t decoded;
    for (unsigned int attempt = 0; attempt < 8 && !content.crc_matches; ++attempt) {
        content.scrambling_index = by_the_standard ^ attempt;
        const bits_t c = gold_sequence(cell, content.scrambling_index * k_pbch_bits, k_pbch_bits);
        std::vector<double> descrambled = soft;
        bits_t hard(k_pbch_bits);
        for (std::size_t i = 0; i < k_pbch_bits; ++i) {
            descrambled[i] = c[i] ? -soft[i] : soft[i];
            hard[i] = descrambled[i] < 0.0;
        }
        if (attempt == 0)
            content.coded_bits = hard;
        decoded = polar_decode(code, descrambled);
        content.crc_matches = passes_crc(decoded, 0x1B2B117, 24);
    }
    if (!content.crc_matches)
        return content;

    decoded.resize(32);
    const bits_t payload = payload_in_order(decoded, cell, lmax);
    content.payload = number(payload, 0, 32);
    content.mib.assign(payload.begin(), payload.begin() + 24);
    content.frame_number = number(payload, 1, 6) * 16 + number(payload, 24, 4);
    content.half_frame = payload[28];
    content.block_index = lmax == 4 ? content.dmrs_index % 4 : content.dmrs_index;
    if (lmax == 64)
        content.block_index += 8 * number(payload, 29, 3);
    else
        content.kssb_high_bit = payload[29];
    return content;
}

bits_t payload_in_order(bits_t bits, unsigned int cell, unsigned int lmax)
{
    const auto places = payload_places();
    std::array<bool, 32> is_plain = {};
    is_plain[places[25]] = is_plain[places[26]] = is_plain[places[28]] = true;
    if (lmax == 64)
        is_plain[places[29]] = is_plain[places[30]] = is_plain[places[31]] = true;
    const std::size_t v = 2u * bits[places[25]] + bits[places[26]];
    const bits_t c = gold_sequence(cell, v * (lmax == 64 ? 26 : 29), 32);
    std::size_t j = 0;
    for (std::size_t i = 0; i < 32; ++i)
        if (!is_plain[i])
            bits[i] ^= c[j++];
    bits_t payload(32);
    for (std::size_t i = 0; i < 32; ++i)
        payload[i] = bits[places[i]];
    return payload;
}

ssb_quality_t measure_ssb(const signal_t& signal, const ofdm_setup_t& setup, std::size_t frame_start,
                          unsigned int first_symbol, const ssb_place_t& place, unsigned int dmrs_index)
{
    std::array<signal_t, 4> received;
    for (unsigned int l = 0; l < 4; ++l)
        received[l] =
            block_subcarriers(demodulate_symbol(signal, setup, frame_start, first_symbol + l), place.first_subcarrier);

    std::array<signal_t, 4> ideal;
    ideal.fill(signal_t(k_width));
    const std::vector<double> pss_values = pss(place.cell % 3);
    const std::vector<double> sss_values = sss(place.cell / 3, place.cell % 3);
    for (std::size_t n = 0; n < k_sync_length; ++n) {
        ideal[0][k_sync_first + n] = pss_values[n];
        ideal[2][k_sync_first + n] = sss_values[n];
    }
    const auto dmrs_cells = pbch_region(place.cell, true);
    const signal_t dmrs = pbch_dmrs(place.cell, dmrs_index);
    for (std::size_t m = 0; m < dmrs.size(); ++m)
        ideal[dmrs_cells[m].first][dmrs_cells[m].second] = dmrs[m];

    // Gains from what is known beforehand, the PBCH being 0 in the ideal symbols so far.
    ssb_quality_t quality;
    const auto fit = [&](std::size_t first, std::size_t last) {
        complex_t correlation;
        double total = 0.0;
        for (std::size_t l = first; l <= last; ++l)
            for (std::size_t k = 0; k < k_width; ++k) {
                correlation += received[l][k] * std::conj(ideal[l][k]);
                total += power(ideal[l][k]);
            }
        return correlation / total;
    };
    quality.gain = fit(1, 3);
    const complex_t pss_ratio = fit(0, 0) / quality.gain;
    quality.pss_amplitude = std::abs(pss_ratio);
    for (complex_t& value : ideal[0])
        value *= quality.pss_amplitude;

    for (const auto& [l, k] : pbch_region(place.cell, false)) {
        const complex_t value = received[l][k] / quality.gain;
        ideal[l][k] = qpsk(value.real() < 0.0, value.imag() < 0.0);
    }
    double error = 0.0;
    double reference = 0.0;
    for (std::size_t l = 0; l < 4; ++l)
        for (std::size_t k = 0; k < k_width; ++k) {
            error += power(received[l][k] / quality.gain - ideal[l][k]);
            reference += power(ideal[l][k]);
        }
    quality.evm = std::sqrt(error / reference);
    return quality;
}

} // namespace nr_test

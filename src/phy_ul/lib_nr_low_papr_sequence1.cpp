#include "phy_ul/lib_nr_low_papr_sequence1.h"

#include "common/lib_complex_product.h"
#include "phy_common/tables/lib_nr_low_papr_type1_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace vek::nr_mod_lib
{

namespace
{

using complex_t = std::complex<double>;

constexpr std::uint32_t k_largest_prime = 1699;

constexpr bool is_prime(std::uint32_t number)
{
    for (std::uint32_t factor = 2; factor * factor <= number; ++factor)
        if (number % factor == 0)
            return false;
    return number > 1;
}

/// The largest prime that is not above a number, by number.
constexpr auto k_max_prime = [] {
    std::array<std::uint16_t, k_largest_prime + 1> primes{};
    for (std::uint32_t number = 2; number <= k_largest_prime; ++number)
        primes[number] = is_prime(number) ? static_cast<std::uint16_t>(number) : primes[number - 1];
    return primes;
}();

complex_t rotor(double angle) { return {std::cos(angle), std::sin(angle)}; }

/// Appends exp(-j pi q m (m + 1) / N) exp(j alpha n), m = n mod N. The phase is quadratic in m, so two products make a
/// value from the one before; each run starts from exact phases, whole turns taken out in whole numbers.
void append_zadoff_chu(std::uint64_t q, std::uint64_t prime, double alpha, std::size_t length,
                       std::vector<complex_t>& out)
{
    constexpr std::size_t k_run = 32;
    const double half_turn = std::numbers::pi / static_cast<double>(prime);
    const complex_t curvature = rotor(-2.0 * half_turn * static_cast<double>(q % prime));
    const std::size_t begin = out.size();
    out.resize(begin + length);
    complex_t* const values = out.data() + begin;
    for (std::size_t n = 0; n < length;) {
        const std::uint64_t m = n % prime;
        const std::size_t end = std::min({n + k_run, length, n + static_cast<std::size_t>(prime - m)});
        complex_t value = rotor(std::fmod(alpha * static_cast<double>(n), 2.0 * std::numbers::pi) -
                                half_turn * static_cast<double>(q * m * (m + 1) % (2 * prime)));
        complex_t step = rotor(alpha - 2.0 * half_turn * static_cast<double>(q * (m + 1) % prime));
        for (; n < end; ++n) {
            values[n] = value;
            value = common_lib::product(value, step);
            step = common_lib::product(step, curvature);
        }
    }
}

template <std::size_t count>
const std::int8_t* row_of(const std::array<std::array<std::int8_t, count>, 30>& table, std::uint32_t u)
{
    return table.at(u).data();
}

const std::int8_t* phase_row(std::uint32_t base_length, std::uint32_t u)
{
    switch (base_length) {
    case 6:
        return row_of(lib_nr_low_papr_type1_table_6(), u);
    case 12:
        return row_of(lib_nr_low_papr_type1_table_12(), u);
    case 18:
        return row_of(lib_nr_low_papr_type1_table_18(), u);
    default:
        return row_of(lib_nr_low_papr_type1_table_24(), u);
    }
}

/// What the tables have; zeros for the rest.
void append_tabulated(std::uint32_t base_length, std::uint32_t u, double alpha, std::size_t length,
                      std::vector<complex_t>& out)
{
    const std::int8_t* const phases = phase_row(base_length, u);
    const std::size_t known = base_length == 6 || base_length == 12 || base_length == 18 ? base_length : 24;
    for (std::size_t n = 0; n < length; ++n)
        out.push_back(n < known ? rotor(phases[n] * std::numbers::pi / 4.0 + alpha * static_cast<double>(n)) : 0.0);
}

void append(const low_papr_seq_1_param_t& param, double alpha, std::vector<complex_t>& out)
{
    const std::uint32_t base_length = get_low_papr_base_length(param.m, param.delta);
    if (base_length > 35) {
        const std::uint64_t prime = k_max_prime[std::min(base_length, k_largest_prime)];
        const std::uint64_t doubled = 2ull * (param.u + 1ull) * prime; // 62 q-bar is 2 of it
        std::uint64_t q = (doubled + 31) / 62;
        if (param.v != 0)
            q = doubled / 31 % 2 == 0 ? q + param.v : q - param.v;
        append_zadoff_chu(q, prime, alpha, param.m, out);
    }
    else if (base_length == 30) {
        for (std::uint64_t n = 0; n < param.m; ++n)
            out.push_back(
                rotor(alpha * static_cast<double>(n) -
                      std::numbers::pi / 31.0 * static_cast<double>((param.u + 1ull) * (n + 1) * (n + 2) % 62)));
    }
    else
        append_tabulated(base_length, param.u, alpha, param.m, out);
}

} // namespace

std::uint32_t get_low_papr_base_length(std::uint32_t length, std::int32_t delta)
{
    const std::uint64_t shift = static_cast<std::uint64_t>(std::min(std::abs(delta), 16));
    const std::uint64_t unit = delta < 0 ? 12ull << shift : 12;
    const std::uint64_t scaled = delta < 0 ? length : std::uint64_t{length} << shift;
    const std::uint64_t whole = (scaled + unit - 1) / unit * unit;
    return static_cast<std::uint32_t>(delta < 0 ? whole : whole >> shift);
}

void lib_nr_low_papr_sequence1::generate_basic_sequence(const low_papr_seq_1_param_t& param,
                                                        std::vector<std::complex<double>>& out)
{
    out.clear();
    append(param, 0.0, out);
}

void lib_nr_low_papr_sequence1::generate_low_papr_sequence_1(const low_papr_seq_1_param_t& param,
                                                             std::vector<std::complex<double>>& out)
{
    append(param, param.alpha, out);
}

} // namespace vek::nr_mod_lib

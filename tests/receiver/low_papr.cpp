#include "receiver/low_papr.h"

#include "phy_common/tables/lib_nr_low_papr_type1_table.h"
#include "phy_common/tables/lib_nr_low_papr_type2_table.h"
#include "receiver/gold_sequence.h"

#include <cmath>
#include <numbers>

namespace nr_test
{

namespace
{

using namespace vek::nr_mod_lib;
using std::numbers::pi;

bool is_prime(unsigned int number)
{
    unsigned int factor = 2;
    while (factor < number && number % factor != 0)
        ++factor;
    return factor == number;
}

template <class row_t>
signal_t from_phases(const row_t& phases, double unit)
{
    signal_t values;
    for (const int phase : phases)
        values.push_back(std::polar(1.0, unit * phase));
    return values;
}

/// TS 38.211 clause 5.1.1.
template <class bits_t>
signal_t half_pi_bpsk(const bits_t& bits)
{
    signal_t values;
    for (std::size_t i = 0; i < bits.size(); ++i)
        values.push_back(std::polar(1.0, pi / 4.0 + pi / 2.0 * static_cast<double>(i % 2) + pi * bits[i]));
    return values;
}

} // namespace

signal_t low_papr_type_1(unsigned int u, unsigned int v, unsigned int length)
{
    const unsigned int base_length = (length + 5) / 6 * 6;
    signal_t values;
    if (base_length == 6)
        values = from_phases(lib_nr_low_papr_type1_table_6()[u], pi / 4.0);
    else if (base_length == 12)
        values = from_phases(lib_nr_low_papr_type1_table_12()[u], pi / 4.0);
    else if (base_length == 18)
        values = from_phases(lib_nr_low_papr_type1_table_18()[u], pi / 4.0);
    else if (base_length == 24)
        values = from_phases(lib_nr_low_papr_type1_table_24()[u], pi / 4.0);
    else {
        unsigned int prime = base_length == 30 ? 31 : base_length;
        while (!is_prime(prime))
            --prime;
        const double q_bar = prime * (u + 1.0) / 31.0;
        const bool is_second = v != 0 && base_length != 30;
        const double q = std::floor(q_bar + 0.5) + (is_second ? std::pow(-1.0, std::floor(2.0 * q_bar)) : 0.0);
        for (unsigned int n = 0; n < base_length; ++n) {
            const double m = base_length == 30 ? n + 1.0 : n % prime; // the root 31 starts at its second value
            values.push_back(std::polar(1.0, -pi * std::fmod(q * m * (m + 1.0), 2.0 * prime) / prime));
        }
    }
    values.resize(length);
    return values;
}

signal_t low_papr_type_2(unsigned int u, std::uint32_t c_init, unsigned int length)
{
    signal_t values = length == 6    ? from_phases(lib_nr_low_papr_type2_table_6()[u], pi / 8.0)
                      : length == 12 ? half_pi_bpsk(lib_nr_low_papr_type2_table_12()[u])
                      : length == 18 ? half_pi_bpsk(lib_nr_low_papr_type2_table_18()[u])
                      : length == 24 ? half_pi_bpsk(lib_nr_low_papr_type2_table_24()[u])
                                     : half_pi_bpsk(gold_sequence(c_init, 0, length));
    fft(values, -1);
    for (auto& value : values)
        value /= std::sqrt(static_cast<double>(length));
    return values;
}

unsigned int hopping_number(std::uint32_t c_init, std::size_t first, unsigned int count)
{
    unsigned int value = 0;
    const auto bits = gold_sequence(c_init, first, count);
    for (unsigned int m = 0; m < count; ++m)
        value += bits[m] * (1u << m);
    return value;
}

} // namespace nr_test

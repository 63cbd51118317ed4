#include "receiver/low_papr.h"

#include "phy_common/tables/lib_nr_low_papr_type1_table.h"

#include <cmath>
#include <numbers>

namespace nr_test
{

namespace
{

using namespace vek::nr_mod_lib;
constexpr double k_pi = std::numbers::pi;

bool is_prime(unsigned int number)
{
    unsigned int factor = 2;
    while (number % factor != 0)
        ++factor;
    return factor == number;
}

double tabulated_phase(unsigned int u, unsigned int base_length, unsigned int n)
{
    return k_pi / 4.0 *
           (base_length == 6    ? lib_nr_low_papr_type1_table_6()[u].at(n)
            : base_length == 12 ? lib_nr_low_papr_type1_table_12()[u].at(n)
            : base_length == 18 ? lib_nr_low_papr_type1_table_18()[u].at(n)
                                : lib_nr_low_papr_type1_table_24()[u].at(n));
}

} // namespace

signal_t low_papr_base(unsigned int u, unsigned int v, unsigned int length)
{
    const unsigned int base_length = (length + 5) / 6 * 6;
    unsigned int prime = base_length - 1;
    while (!is_prime(prime))
        --prime;
    const double q_bar = prime * (u + 1.0) / 31.0;
    const double q = std::floor(q_bar + 0.5) + (v == 0 ? 0.0 : std::pow(-1.0, std::floor(2.0 * q_bar)));
    signal_t base;
    for (unsigned int n = 0; n < length; ++n) {
        const double m = n % prime;
        base.push_back(std::polar(1.0, base_length >= 36 ? -k_pi * std::fmod(q * m * (m + 1), 2.0 * prime) / prime
                                       : base_length == 30
                                           ? -k_pi * std::fmod((u + 1.0) * (n + 1.0) * (n + 2.0), 62.0) / 31.0
                                           : tabulated_phase(u, base_length, n)));
    }
    return base;
}

} // namespace nr_test

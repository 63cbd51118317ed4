#include "common/lib_common_math.h"

#include "common/lib_complex_product.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace vek::common_lib
{

bool lib_common_math_t::is_power_of_2(unsigned int value) { return std::has_single_bit(value); }

unsigned int lib_common_math_t::get_min_pow_of_2(unsigned int value, unsigned int minimum)
{
    constexpr unsigned int k_largest = 1U << 31U;
    return std::bit_ceil(std::min(std::max(value, minimum), k_largest));
}

double lib_common_math_t::angle_to_radian(double degrees) { return degrees * (std::numbers::pi / 180.0); }

double lib_common_math_t::db_value_to_amplitude_ratio(double db) { return std::pow(10.0, db / 20.0); }

double lib_common_math_t::get_complex_amplitude(const std::complex<double>& sample) { return std::abs(sample); }

double lib_common_math_t::get_data_max_amplitude(const std::vector<std::complex<double>>& signal)
{
    // Four maxima side by side, so that no comparison waits for the one before.
    double largest[4] = {};
    const std::size_t whole = signal.size() - signal.size() % 4;
    for (std::size_t i = 0; i < whole; i += 4)
        for (std::size_t lane = 0; lane < 4; ++lane)
            largest[lane] = std::max(largest[lane], std::norm(signal[i + lane]));
    for (std::size_t i = whole; i < signal.size(); ++i)
        largest[0] = std::max(largest[0], std::norm(signal[i]));
    return std::sqrt(*std::max_element(largest, largest + 4));
}

void lib_common_math_t::deal_phase_offset(double radians, std::complex<double>& sample)
{
    sample = product(sample, {std::cos(radians), std::sin(radians)});
}

} // namespace vek::common_lib

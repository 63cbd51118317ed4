#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <vector>

namespace vek::common_lib
{

/// Small mathematics that every layer needs: powers of two, angles, levels and amplitudes.
class NR_MOD_LIB_EXPORT lib_common_math_t
{
public:
    /// Whether exactly one bit is set; false for 0.
    static bool is_power_of_2(unsigned int value);
    /// Least power of two that is neither below `value` nor below `minimum`; 2^31 where that passes 32 bits.
    static unsigned int get_min_pow_of_2(unsigned int value, unsigned int minimum);
    static double angle_to_radian(double degrees);
    /// 10^(db / 20).
    static double db_value_to_amplitude_ratio(double db);
    /// Magnitude of one sample. Loops over samples compare squares instead.
    static double get_complex_amplitude(const std::complex<double>& sample);
    /// Largest magnitude of a signal; 0 for an empty one.
    static double get_data_max_amplitude(const std::vector<std::complex<double>>& signal);
    /// Rotates one sample counter-clockwise. For many samples of one angle, multiply by one rotated unit sample.
    static void deal_phase_offset(double radians, std::complex<double>& sample);
};

} // namespace vek::common_lib

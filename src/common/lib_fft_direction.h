#pragma once

#include <cstdint>

namespace vek::common_lib
{

enum lib_fft_direction_t : std::uint32_t
{
    LIB_FFT_FORWARD = 0,
    LIB_FFT_INVERSE = 1,
};

} // namespace vek::common_lib

#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Adds a frame into a circular waveform. `main` begins with the first sample of the frame, and what stands in it
/// behind `frame_length` runs over into the next frame; `head` falls ahead of the frame. Both go round the ends of the
/// buffer. A waveform that ends inside the frame lacks the frame's samples from there on, they do not go round.
NR_MOD_LIB_EXPORT void add_frame(const std::vector<std::complex<double>>& main,
                                 const std::vector<std::complex<double>>& head, std::uint64_t frame_length,
                                 std::uint64_t frame, std::vector<std::complex<double>>& buffer);

/// Adds one period of a periodic signal to a buffer that holds the same period at another rate. Band-limited: what lies
/// beyond half the lower of both rates is cut. Amplitudes are scaled by the root of own rate over buffer rate, so that
/// all carriers of a waveform have the same power per subcarrier and hertz of spacing. `own` is used up.
NR_MOD_LIB_EXPORT void add_resampled(std::vector<std::complex<double>>& own, std::vector<std::complex<double>>& buffer);

} // namespace vek::nr_mod_lib

#pragma once

#include "common/lib_signal_view.h"
#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstdint>
#include <vector>

namespace vek::common_lib
{

/// Weighting of a block ahead of its spectrum.
enum lib_spectrum_window_type_t : std::uint32_t
{
    LIB_SPECTRUM_WINDOW_RECTANGULAR = 0,
    LIB_SPECTRUM_WINDOW_HANN = 1,
};

/// Fourier transforms on whole vectors, in place, and the magnitude spectrum of a block.
class NR_MOD_LIB_EXPORT lib_fourier_transform_t
{
public:
    /// Forward transform without scaling. The vector is first cut or padded with zeros to `length`; a length of 0 is
    /// the vector's own. Any length is possible.
    static void deal_fft(std::vector<std::complex<double>>& values, unsigned int length);
    /// Inverse transform with the scale 1 / length, otherwise as `deal_fft`.
    static void deal_ifft(std::vector<std::complex<double>>& values, unsigned int length);
    /// Brings 0 Hz from index 0 to index size / 2. For even sizes also the way back.
    static void fft_shift(std::vector<std::complex<double>>& values);
    /// Magnitudes, as real numbers, over the frequencies from minus half the rate up; 0 Hz at index L / 2. The block is
    /// padded with zeros to L, the next power of two and at least 4. A tone of amplitude a on a bin reads a. `db` gives
    /// 20 log10 of that, with a floor at -400 dB. `window` is a `lib_spectrum_window_type_t`; unknown ones are
    /// rectangular. `signal` may be `spectrum` itself.
    static void calc_freq_spectrum(lib_signal_view_t signal, std::vector<std::complex<double>>& spectrum, bool db,
                                   unsigned int window);
    /// The sum of the spectra of so many equal blocks, one behind the other from the signal's start on, each as
    /// `calc_freq_spectrum` gives it without a window.
    static void add_freq_spectra(lib_signal_view_t signal, unsigned int blocks,
                                 std::vector<std::complex<double>>& spectrum);
};

} // namespace vek::common_lib

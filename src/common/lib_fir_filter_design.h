#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstdint>
#include <vector>

namespace vek::common_lib
{

/// What a design lets through.
enum lib_fir_filter_passband_type_t : std::uint32_t
{
    LIB_FIR_FILTER_LOW_PASS = 0,
};

/// Design of a linear-phase low-pass: a windowed sinc with real, symmetric taps, unit gain at 0 Hz and at least 80 dB
/// of stop band. The cut-off is the edge of the passband, and the transition lies wholly beyond it: measured over the
/// passband the ripple stays within 1e-4. Frequencies are fractions of half the sample rate.
class NR_MOD_LIB_EXPORT lib_fir_filter_design_t
{
public:
    /// Takes a `lib_fir_filter_passband_type_t`; an unknown one is refused with false.
    bool set_filter_passband_type(unsigned int type);
    /// The design has `order` + 1 taps, its group delay is order / 2 samples. Limited to 2^20.
    void set_filter_order(unsigned int order);
    /// Edge of the passband, limited to 0 to 1; NaN changes nothing. Where the transition behind it passes half the
    /// rate, the design is a pure delay and everything passes unchanged.
    void set_cutoff_freq(double cutoff);
    void generate_fir_filter();
    /// The taps of the last design; the imaginary parts are 0.
    const std::vector<std::complex<double>>& get_filter_data() const { return m_filter_data; }
    /// Width of the transition for the order set, as a fraction of half the sample rate.
    double get_transition_width() const;

private:
    unsigned int m_filter_order = 64;
    double m_cutoff_freq = 1.0;
    std::vector<std::complex<double>> m_filter_data;
};

} // namespace vek::common_lib

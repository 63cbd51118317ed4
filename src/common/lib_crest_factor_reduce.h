#pragma once

#include "common/lib_crest_factor_reduce_setting.h"
#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>
#include <vector>

namespace vek::common_lib
{

/// Crest factor reduction by iterative peak cancellation: whatever stands above the target is taken away by a pulse
/// whose spectrum is the filter mask, so that the correction stays where the mask allows it. The signal is circular.
class NR_MOD_LIB_EXPORT lib_crest_factor_reduce_t
{
public:
    /// The sample rate in Hz places the mask; one that is not a positive number switches the reduction off.
    void set_cfr_parameter(double sample_rate, const lib_crest_factor_reduce_setting_t& setting);

    /// Works in place until the target is reached to 0.01 dB, the iterations are used up, or a pass no longer lowers
    /// the energy above the target. The average is taken over the samples that carry signal, no more than 40 dB below
    /// the mean, so that gaps of a TDD signal do not lower the target. Targets of 3 dB and more are reached by any
    /// OFDM signal whose band the mask lets pass; one that cannot be reached does no harm. Does not ask `is_enable`. A
    /// mask without width allows no correction.
    void deal_crest_factor_reduce(std::vector<std::complex<double>>& signal);

private:
    /// The pulse for one transform length, and how it goes over the signal.
    struct kernel_t
    {
        std::size_t block_size = 0;    ///< samples whose excess one transform takes in
        std::size_t lead = 0;          ///< samples of the pulse ahead of its peak that reach out of the block
        std::size_t peak_distance = 1; ///< peaks closer than this share one pulse
        std::vector<double> spectrum;  ///< the scale of the inverse transform included; empty: nothing may pass
    };

    double _mask_level(double frequency) const;
    std::vector<double> _mask_spectrum(std::size_t length) const;
    kernel_t _make_whole_kernel(std::size_t signal_length) const;
    kernel_t _make_block_kernel(std::size_t signal_length) const;

    double m_sample_rate = 0.0;
    lib_crest_factor_reduce_setting_t m_setting;
};

} // namespace vek::common_lib

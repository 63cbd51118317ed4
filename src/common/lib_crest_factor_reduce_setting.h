#pragma once

#include "common/nr_mod_lib_export.h"

#include <utility>
#include <vector>

namespace vek::common_lib
{

/// The user's wishes for crest factor reduction. Setters correct rather than refuse and return whether the stored value
/// changed; NaN changes nothing.
class NR_MOD_LIB_EXPORT lib_crest_factor_reduce_setting_t
{
public:
    /// As `init` at a sample rate and passband of 7.68 MHz.
    lib_crest_factor_reduce_setting_t();

    /// Everything to its default: off, target 8 dB, at most 20 iterations, 100 % cancelled per pass, blocks of 12288
    /// samples, and the mask of `init_filter_mask_data`.
    void init(double sample_rate, double passband);

    /// The default mask, 0 dB over the passband (Hz) round the centre, or over the sample rate (Hz) where that is the
    /// smaller. A rate or passband that is not a positive number leaves the mask as it is.
    void init_filter_mask_data(double sample_rate, double passband);

    bool set_enable(bool enable);
    bool is_enable() const;

    /// The largest power over the average of the active signal, in dB, 0 to 30.
    bool set_target_peak_to_average_power_ratio(double ratio);
    double get_target_peak_to_average_power_ratio() const;

    /// Passes over the signal at most, 0 to 100.
    bool set_max_iteration(unsigned int iterations);
    unsigned int get_max_iteration() const;

    /// How much of a peak's excess one pass takes away, in percent, 0 to 100.
    bool set_cancel_percent(double percent);
    double get_cancel_percent() const;

    /// Samples that are corrected in one step; 0 is the whole signal. Longer blocks follow the mask more closely,
    /// shorter ones than the mask's steepest detail needs are taken as the whole signal.
    bool set_signal_block_size(unsigned int size);
    unsigned int get_signal_block_size() const;

    /// The spectrum that the correction may take: points (Hz, dB against the passband's 0 dB), linear in dB between
    /// points, nothing outside the first and the last; levels from -300 to 100 dB. Points that are not finite are left
    /// out, the others sorted by frequency; an empty mask changes nothing.
    bool set_filter_mask_data_arr(const std::vector<std::pair<double, double>>& mask);
    const std::vector<std::pair<double, double>>& get_filter_mask_data_arr() const;

    bool operator==(const lib_crest_factor_reduce_setting_t& other) const;
    bool operator!=(const lib_crest_factor_reduce_setting_t& other) const { return !(*this == other); }

private:
    bool m_enable;
    double m_target_peak_to_average_power_ratio;
    unsigned int m_max_iteration;
    double m_cancel_percent;
    unsigned int m_signal_block_size;
    std::vector<std::pair<double, double>> m_filter_mask_data_arr;
};

} // namespace vek::common_lib

#include "common/lib_ccdf_calculator.h"
#include "common/lib_common_math.h"
#include "common/lib_common_signal_process.h"
#include "common/lib_crest_factor_reduce.h"
#include "common/lib_fourier_transform.h"
#include "common/lib_normalization.h"
#include "phy/lib_nr_phy.h"

#include <algorithm>

// From the sum of all carriers to the product: finishing and analysis.

namespace vek::nr_mod_lib
{

using common_lib::lib_ccdf_calculator_t;
using common_lib::lib_common_math_t;
using common_lib::lib_common_signal_process_t;
using common_lib::lib_normalization_t;
using common_lib::lib_signal_view_t;

namespace
{

constexpr double k_silence = 1e-12;
constexpr unsigned int k_half_subframes = 20;

} // namespace

// Two passes over the samples. The curves take a third once somebody asks for them, and the spectrum its transforms.
void lib_nr_phy_t::_deal_baseband_process()
{
    const bool is_short = m_waveform.get_frame_number() == 1 && m_waveform.get_subframes_number() <= 9;
    const auto first_frame = static_cast<std::size_t>(
        std::min<std::uint64_t>(m_baseband_signal.size(), m_waveform.get_frame_sample_points()));
    m_finish = finish_t{false,
                        first_frame,
                        is_short ? m_waveform.get_subframes_number() : k_half_subframes,
                        {lib_common_signal_process_t::get_smoothing_width(first_frame), {}}};

    double largest = lib_normalization_t::get_largest_component(m_baseband_signal);
    m_finish->is_silent =
        largest < k_silence && lib_common_math_t::get_data_max_amplitude(m_baseband_signal) < k_silence;
    if (m_finish->is_silent)
        return;
    if (m_waveform.get_mirror_spectrum())
        for (std::complex<double>& sample : m_baseband_signal)
            sample.imag(-sample.imag());
    if (m_waveform.get_crest_factor_reduction_setting().is_enable()) {
        _deal_crest_factor_reduction();
        largest = lib_normalization_t::get_largest_component(m_baseband_signal);
    }
    _deal_normalize(largest);
}

void lib_nr_phy_t::_deal_crest_factor_reduction()
{
    common_lib::lib_crest_factor_reduce_t reduction;
    reduction.set_cfr_parameter(m_waveform.get_waveform_sample_rate_hz(),
                                m_waveform.get_crest_factor_reduction_setting());
    reduction.deal_crest_factor_reduce(m_baseband_signal);
}

void lib_nr_phy_t::_deal_normalize(double largest_component)
{
    lib_normalization_t::normalize(m_baseband_signal, largest_component, m_finish->first_frame, m_finish->power);
}

const lib_nr_phy_t::signal_t& lib_nr_phy_t::get_frequency_spectrum_data() const
{
    return m_frequency_spectrum.get([this] { return _deal_frequency_spectrum_calculation(); });
}

const lib_nr_phy_t::ccdfs_t& lib_nr_phy_t::_get_ccdfs() const
{
    return m_ccdfs.get([this] { return _deal_ccdf_calculation(); });
}

// An engine that was moved from has no samples left.
lib_signal_view_t lib_nr_phy_t::_get_first_frame() const
{
    return {m_baseband_signal.data(), std::min(m_finish->first_frame, m_baseband_signal.size())};
}

lib_nr_phy_t::signal_t lib_nr_phy_t::_deal_frequency_spectrum_calculation() const
{
    signal_t spectrum;
    if (!m_finish)
        return spectrum;
    if (m_finish->is_silent) {
        spectrum.resize(lib_common_math_t::get_min_pow_of_2(static_cast<unsigned int>(m_baseband_signal.size()), 4));
        return spectrum;
    }
    common_lib::lib_fourier_transform_t::add_freq_spectra(_get_first_frame(), m_finish->blocks, spectrum);
    lib_normalization_t::iq_value_max_normalize(spectrum);
    return spectrum;
}

lib_nr_phy_t::ccdfs_t lib_nr_phy_t::_deal_ccdf_calculation() const
{
    if (!m_finish)
        return {};
    const lib_signal_view_t frame = _get_first_frame();
    if (m_finish->is_silent)
        return lib_ccdf_calculator_t::calculate_ccdf(frame, 0.0, frame, 0.0);
    const lib_signal_view_t burst = lib_common_signal_process_t::find_burst(frame, m_finish->power);
    const auto power_of = [&](lib_signal_view_t part) {
        const auto begin = static_cast<std::size_t>(part.begin() - frame.begin());
        return common_lib::sum_of_power(frame, m_finish->power, begin, begin + part.size());
    };
    const bool has_gaps = burst.size() != frame.size(); // else the burst is the signal itself
    ccdfs_t ccdfs = lib_ccdf_calculator_t::calculate_ccdf(frame, power_of(frame),
                                                          has_gaps ? burst : lib_signal_view_t(frame.data(), 0),
                                                          has_gaps ? power_of(burst) : 0.0);
    if (!has_gaps)
        ccdfs.second = ccdfs.first;
    return ccdfs;
}

} // namespace vek::nr_mod_lib

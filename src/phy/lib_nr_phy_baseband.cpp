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
using common_lib::lib_signal_view_t;

namespace
{

constexpr double k_silence = 1e-12;
constexpr unsigned int k_marker_number = 7;

} // namespace

void lib_nr_phy_t::_deal_baseband_process()
{
    if (lib_common_math_t::get_data_max_amplitude(m_baseband_signal) < k_silence) {
        _init_baseband_analysis_data();
        return;
    }
    if (m_waveform.get_mirror_spectrum())
        for (std::complex<double>& sample : m_baseband_signal)
            sample.imag(-sample.imag());
    _deal_crest_factor_reduction();
    _deal_normalize();
    _deal_frequency_spectrum_calculation();
    _deal_ccdf_calculation();
}

void lib_nr_phy_t::_deal_crest_factor_reduction()
{
    const common_lib::lib_crest_factor_reduce_setting_t& setting = m_waveform.get_crest_factor_reduction_setting();
    if (!setting.is_enable())
        return;
    common_lib::lib_crest_factor_reduce_t reduction;
    reduction.set_cfr_parameter(m_waveform.get_waveform_sample_rate_hz(), setting);
    reduction.deal_crest_factor_reduce(m_baseband_signal);
}

void lib_nr_phy_t::_deal_normalize() { common_lib::lib_normalization_t::iq_value_max_normalize(m_baseband_signal); }

void lib_nr_phy_t::_deal_frequency_spectrum_calculation()
{
    const auto samples = std::min(static_cast<std::uint32_t>(m_waveform.get_frame_sample_points()),
                                  static_cast<std::uint32_t>(m_baseband_signal.size()));
    const bool is_short = m_waveform.get_frame_number() == 1 && m_waveform.get_subframes_number() <= 9;
    const std::uint32_t blocks = is_short ? m_waveform.get_subframes_number() : 20;
    const std::uint32_t length = samples / blocks;

    m_frequency_spectrum.assign(lib_common_math_t::get_min_pow_of_2(length, 4), 0.0);
    signal_t spectrum;
    for (std::uint32_t k = 0; k < blocks; ++k) {
        const lib_signal_view_t block(m_baseband_signal.data() + std::size_t{k} * length, length);
        common_lib::lib_fourier_transform_t::calc_freq_spectrum(block, spectrum, false, 0);
        const std::size_t count = std::min(spectrum.size(), m_frequency_spectrum.size());
        for (std::size_t i = 0; i < count; ++i)
            m_frequency_spectrum[i] += spectrum[i];
    }
    common_lib::lib_normalization_t::iq_value_max_normalize(m_frequency_spectrum);
}

void lib_nr_phy_t::_deal_ccdf_calculation()
{
    const auto analyse = [](lib_signal_view_t signal, std::vector<double>& curve, std::vector<double>& marker) {
        lib_ccdf_calculator_t::calculate_default_ccdf_data(signal, curve);
        lib_ccdf_calculator_t::get_default_ccdf_marker_data(curve, signal, marker);
    };
    const lib_signal_view_t first_frame(
        m_baseband_signal.data(),
        std::min<std::uint64_t>(m_baseband_signal.size(), m_waveform.get_frame_sample_points()));
    analyse(first_frame, m_waveform_ccdf_curve, m_waveform_ccdf_marker);
    const lib_signal_view_t burst = common_lib::lib_common_signal_process_t::find_burst(first_frame);
    if (burst.size() == first_frame.size()) { // without a gap, the burst is the signal itself
        m_burst_ccdf_curve = m_waveform_ccdf_curve;
        m_burst_ccdf_marker = m_waveform_ccdf_marker;
    }
    else
        analyse(burst, m_burst_ccdf_curve, m_burst_ccdf_marker);
}

void lib_nr_phy_t::_init_baseband_analysis_data()
{
    const auto points = static_cast<unsigned int>(m_baseband_signal.size());
    m_frequency_spectrum.assign(lib_common_math_t::get_min_pow_of_2(points, 4), 0.0);
    m_waveform_ccdf_curve.assign(lib_ccdf_calculator_t::get_default_ccdf_data_length(), 0.0);
    m_burst_ccdf_curve = m_waveform_ccdf_curve;
    m_waveform_ccdf_marker.assign(k_marker_number, 0.0);
    m_burst_ccdf_marker = m_waveform_ccdf_marker;
}

} // namespace vek::nr_mod_lib

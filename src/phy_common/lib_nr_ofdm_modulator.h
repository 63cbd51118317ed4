#pragma once

#include "common/lib_ofdm_cyclic_config.h"
#include "common/lib_ofdm_modulator.h"
#include "common/lib_ofdm_windowing_method.h"
#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_baseband_filter.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Turns the mapped symbols of one frame of one numerology into samples: OFDM modulation with the prefixes of
/// TS 38.211 clause 5.3.1 and windowing, the phase term of clause 5.4, and the carrier's low-pass filter. All settings
/// reach the signal with the next modulation.
class NR_MOD_LIB_EXPORT lib_nr_ofdm_modulator_t
{
public:
    using sample_t = std::complex<double>;

    lib_nr_ofdm_modulator_t();

    /// Also returns the prefix to normal, unless the numerology so far is 60 kHz.
    void set_numerology(lib_nr_numerology_type_t numerology);
    void set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth);
    /// The extended prefix goes with 60 kHz alone; with another numerology a line is printed and the type stays.
    void set_cyclic_prefix_type(lib_nr_cyclic_prefix_type_t cp_type);
    void set_windowing_enable(bool enable);
    /// Length of the transition between symbols as a fraction of the useful symbol, 0 to 0.5; clamped, NaN is ignored.
    void set_window_beta(double beta);
    void set_windowing_method(common_lib::lib_ofdm_windowing_method_type_t method);
    void set_phase_compensation_enable(bool enable);
    /// The frequency that the phase compensation reckons with, in Hz.
    void set_carrier_frequency(double frequency);
    void set_baseband_filter_enable(bool enable);
    /// Ratio of the sample rate to the rate of the numerology's own FFT length. 0 prints a line, keeps the former value
    /// and returns false.
    bool set_oversamping_ratio(unsigned int oversampling_ratio);
    /// Takes the least oversampling that reaches a rate in Hz, for the numerology and bandwidth set before. A rate that
    /// is not positive prints a line and returns false.
    bool set_target_sample_rate(double sample_rate);

    /// The least power of two that holds the subcarriers of the pair, at least 4.
    static unsigned int get_fft_length(lib_nr_numerology_type_t numerology, lib_nr_channel_bw_type_t bandwidth);
    /// The rate of the samples that a modulation gives: FFT length times oversampling ratio times spacing, in Hz.
    double get_actual_sample_rate() const;
    /// Samples of a frame of 10 ms at that rate.
    std::size_t get_frame_length() const;

    /// Modulates a frame: payload has a row per symbol with a value per subcarrier, full width of the bandwidth. Main
    /// begins with the first sample of the frame; what windowing and filter spread behind the frame stays at its end.
    /// Head is what the filter spreads ahead of the frame; tail is empty. A payload of another size prints a line,
    /// leaves main empty, head and tail as they were, and returns false.
    bool deal_frame_ofdm_modulation(const std::vector<std::vector<sample_t>>& payload, std::vector<sample_t>& main,
                                    std::vector<sample_t>& head, std::vector<sample_t>& tail);

    /// The same to where the frame belongs, `get_frame_length()` samples that are all written; what windowing and
    /// filter spread behind it becomes the tail. A payload of another size leaves all three as they were.
    bool modulate_frame(const common_lib::lib_ofdm_payload_t& payload, sample_t* frame, std::vector<sample_t>& head,
                        std::vector<sample_t>& tail);

    /// Turns each symbol of a frame of samples, prefix included, by the term of TS 38.211 clause 5.4 at the carrier
    /// frequency, with the prefixes of the last modulation; throws `std::out_of_range` when main is shorter than the
    /// frame. For signals made elsewhere: `deal_frame_ofdm_modulation` turns each symbol before it joins the next.
    void _deal_phase_compensation(std::vector<sample_t>& main) const;

private:
    unsigned int _get_protocol_defined_fft_length() const;
    std::size_t _get_actual_fft_length() const;
    void _update_modulation_parameter();
    void _update_fft_length();
    void _update_symbol_number_in_frame();
    void _update_cyclic_prefix();
    void _update_windowing();
    void _update_symbol_phases();
    bool _check_payload_data_size(const std::vector<std::vector<sample_t>>& payload) const;
    std::vector<double> _get_symbol_phase_turns() const;

    std::uint32_t m_oversampling_ratio = 1;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_15K;
    lib_nr_channel_bw_type_t m_channel_bandwidth = LIB_NR_CHANNEL_FR1_5M;
    lib_nr_cyclic_prefix_type_t m_cyclic_prefix_type = LIB_NR_NORMAL_CP;
    bool m_windowing_enable = false;
    double m_window_beta_minimum = 0.0;
    double m_window_beta_maximum = 0.5;
    double m_window_beta = 0.0;
    common_lib::lib_ofdm_windowing_method_type_t m_windowing_method = common_lib::LIB_OFDM_WINDOWING_RAISED_COSINE;
    bool m_phase_compensation_enable = false;
    double m_carrier_frequency = 0.0;
    common_lib::lib_ofdm_cyclic_config_t m_cyclic_prefix_config;
    common_lib::lib_ofdm_modulator_t m_common_modulator;
    lib_nr_baseband_filter_t m_baseband_filter;
};

} // namespace vek::nr_mod_lib

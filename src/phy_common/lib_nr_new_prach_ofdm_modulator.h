#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_prach_type.h"

#include <complex>
#include <vector>

namespace vek::nr_mod_lib
{

/// What the modulator has to know of a burst. Lengths are in samples at the rate given here, with one prefix and one
/// guard per row of the PRACH grid.
struct prach_ofdm_info_param_t
{
    prach_format_t format = prach_format_0;
    unsigned int column_number = 0;
    unsigned int fft_length = 0;
    unsigned int scs_hz = 1250;
    double sample_rate_hz = 0.0;
    std::vector<unsigned int> cp_lengths;
    std::vector<unsigned int> guard_lengths;
    unsigned int start_offset = 0;
    double frequency_shift_hz = 0.0;
    unsigned int lra = 839;
};

/// Turns the PRACH grid of a burst into the samples of its frame. Today every burst is silent: what it makes of a grid
/// is a frame of zeros.
class NR_MOD_LIB_EXPORT lib_nr_new_prach_ofdm_modulator_t
{
public:
    /// Spacing of the carrier. Leaving a spacing other than 60 kHz brings the normal prefix back.
    void set_numerology(lib_nr_numerology_type_t numerology);
    void set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth);
    /// The extended prefix goes with 60 kHz alone; elsewhere it is refused with a line and false.
    bool set_cyclic_prefix_type(lib_nr_cyclic_prefix_type_t cp_type);
    /// Takes the least whole oversampling ratio that reaches the rate, in hertz. A line and false for a rate of 0 or
    /// below and for NaN.
    bool set_target_sample_rate(double sample_rate_hz);
    /// A line and false for 0.
    bool set_oversamping_ratio(unsigned int ratio);
    void set_prach_ofdm_info(const prach_ofdm_info_param_t& info);

    /// Samples of one frame into `main`, which keeps its length; head and tail stay empty. False for an empty grid.
    bool deal_frame_ofdm_modulation(const std::vector<std::vector<std::complex<double>>>& grid,
                                    std::vector<std::complex<double>>& main, std::vector<std::complex<double>>& head,
                                    std::vector<std::complex<double>>& tail) const;

    /// The least power of two, not below 4, that holds the carrier's subcarriers.
    unsigned int get_protocol_defined_fft_length() const;
    /// The same times the oversampling ratio.
    unsigned int get_actual_fft_length() const;

private:
    unsigned int m_oversampling_ratio = 1;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_channel_bw_type_t m_bandwidth = LIB_NR_CHANNEL_FR1_100M;
    lib_nr_cyclic_prefix_type_t m_cp_type = LIB_NR_NORMAL_CP;
    prach_ofdm_info_param_t m_info;
};

} // namespace vek::nr_mod_lib

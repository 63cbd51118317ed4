#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_deviation.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_common/lib_nr_prach_type.h"

#include <complex>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// What the modulator has to know of a burst. Lengths are in samples at the rate given here, with one prefix per row of
/// the PRACH grid.
struct prach_ofdm_info_param_t
{
    prach_format_t format = prach_format_0;
    /// Length of a row: the rate over the spacing.
    unsigned int fft_length = 0;
    unsigned int scs_hz = 1250;
    double sample_rate_hz = 0.0;
    std::vector<unsigned int> cp_lengths;
    double frequency_shift_hz = 0.0;
    /// Samples from the burst's start to where the shift has no phase.
    unsigned int frequency_shift_from = 0;
};

/// Where a burst lies in its frame.
struct prach_resource_time_param_t
{
    double time_offset_ms = 0.0;
    /// Samples at 30.72 MHz.
    double start_position = 0.0;
    /// Row of the PRACH grid that the burst begins with.
    unsigned int first_row = 0;
    /// Samples of one repetition at 30.72 MHz.
    unsigned int n_u = 0;
    std::vector<unsigned int> cp_lengths;
    double sample_rate_hz = 0.0;
    prach_format_t format = prach_format_0;
};

/// Turns the PRACH grid of a burst into samples, TS 38.211 clause 5.3.2: rows of PRACH subcarriers become repetitions
/// of the preamble, with the prefix that the burst's information gives each, at the burst's place in the frame. No
/// windowing, no head and no tail. A row is as long as the rate over the preamble's spacing, and scaled like a symbol
/// of data: the mean power of a row is the sum of its cells' powers over its length.
class NR_MOD_LIB_EXPORT lib_nr_new_prach_ofdm_modulator_t : public lib_nr_ruled_t
{
public:
    using grid_t = std::vector<std::vector<std::complex<double>>>;
    using signal_t = std::vector<std::complex<double>>;

    /// Spacing of the carrier. Leaving a spacing other than 60 kHz brings the normal prefix back.
    void set_numerology(lib_nr_numerology_type_t numerology);
    void set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth);
    /// The extended prefix goes with 60 kHz alone; elsewhere it is refused with a printed line and false.
    bool set_cyclic_prefix_type(lib_nr_cyclic_prefix_type_t cp_type);
    /// Takes the least whole oversampling ratio that reaches the rate, in hertz. A printed line and false for a rate of
    /// 0 or below and for NaN.
    bool set_target_sample_rate(double sample_rate_hz);
    /// A printed line and false for 0.
    bool set_oversamping_ratio(unsigned int ratio);
    void set_prach_ofdm_info(const prach_ofdm_info_param_t& info) { m_info = info; }

    /// First symbol and first row of a burst. Symbols count from the start of the subframe or 60 kHz slot; a PRACH slot
    /// has as many as a slot of the carrier.
    void cal_start_symbol(prach_config_table_type_t table, unsigned int index, unsigned int n_RA_slot,
                          unsigned int n_RA_t, prach_format_t format);
    /// Position of the burst in its frame, in samples at 30.72 MHz. `subframe` counts up to 30 kHz, `slot`, of 60 kHz,
    /// from there on; the start symbol has `n_RA_slot` in it already. By the own rule the symbols before it count as
    /// whole samples at 480 and 960 kHz, and end in half and quarter ones otherwise.
    void cal_current_start_locate(prach_scs_type_t scs, unsigned int n_RA_slot, unsigned int subframe,
                                  unsigned int slot);
    /// The same in samples of the rate that the burst is sent at.
    std::int64_t get_start_sample() const;
    /// Where the burst lies, for the view; the time offset is the caller's.
    prach_resource_time_param_t nr_ul_phy_prach_time_map() const;

    /// Samples of one frame into `main`, which keeps its length; head and tail stay empty. What passes the frame's end
    /// comes back at its beginning. False for an empty grid; a printed line where prefixes and rows differ in number.
    bool deal_frame_ofdm_modulation(const grid_t& grid, signal_t& main, signal_t& head, signal_t& tail) const;
    /// Adds the same, turned round by `shift` samples within `frame_length`, which may be that of several frames, to
    /// the first `available` samples.
    bool add_frame(const grid_t& grid, std::int64_t shift, std::size_t frame_length, std::complex<double>* frame,
                   std::size_t available) const;

    /// The sample of such a frame that the burst's prefix begins with; `frame_length` is not 0.
    std::size_t get_first_sample(std::int64_t shift, std::size_t frame_length) const;

    /// The least power of two, not below 4, that holds the carrier's subcarriers.
    unsigned int get_protocol_defined_fft_length() const;
    /// The same times the oversampling ratio.
    unsigned int get_actual_fft_length() const;

private:
    void _transform(const std::vector<std::complex<double>>& row, signal_t& samples) const;

    unsigned int m_oversampling_ratio = 1;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_channel_bw_type_t m_bandwidth = LIB_NR_CHANNEL_FR1_100M;
    lib_nr_cyclic_prefix_type_t m_cp_type = LIB_NR_NORMAL_CP;
    double m_start_position = 0.0;
    unsigned int m_start_symbol = 0;
    unsigned int m_first_row = 0;
    prach_ofdm_info_param_t m_info;
};

} // namespace vek::nr_mod_lib

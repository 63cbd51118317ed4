#pragma once

#include "common/lib_crest_factor_reduce_setting.h"
#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_carrier_configure_manager.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace vek::nr_mod_lib
{

/// The root of the configuration: the carriers of a waveform and what holds for all of them. Sample rate, sample counts
/// and length follow from the carriers and are worked out anew at each call.
///
/// A waveform has at least one carrier, 1 to 4 frames of 10 ms and 1 to 10 subframes a frame, always 10 where it has
/// more than one frame. Setters return true when the stored value changed. The settings' rules are told in their
/// façade, `cfg_nr_waveform_t`, here only what it does not show.
class NR_MOD_LIB_EXPORT lib_nr_waveform_configure_manager_t
{
public:
    lib_nr_waveform_configure_manager_t();

    /// Back to one frame with one default carrier. The NTN flag and the standard's rules stay, and so does the first
    /// carrier's timing offset.
    void init();

    /// Non-terrestrial mode of the whole waveform; a change is followed by `init`.
    bool set_nr_ntn(bool nr_ntn);
    bool get_nr_ntn() const { return m_nr_ntn; }

    /// Frames of 10 ms, limited to 1 to 4; from two on a frame has all its 10 subframes. Slot allocations follow, and
    /// the block size of the crest factor reduction is held to the sample count. True for any number but the stored.
    bool set_frames_number(unsigned int frames_number);
    unsigned int get_frame_number() const { return m_frames_number; }

    /// Subframes of the one frame, limited to 1 to 10; with several frames it is 10. The block size of the crest factor
    /// reduction is held to the sample count. True for any number but the stored.
    bool set_subframes_number(unsigned int subframes_number);
    unsigned int get_subframes_number() const { return m_subframes_number; }

    bool set_mirror_spectrum(bool mirror_spectrum);
    bool get_mirror_spectrum() const { return m_mirror_spectrum; }

    /// Phase compensation per symbol, TS 38.211 clause 5.4.
    bool set_phase_compensation_enable(bool enable);
    bool get_phase_compensation_enable() const { return m_phase_compensation_enable; }

    /// The frequency in hertz that the waveform is meant for; SS/PBCH blocks follow.
    bool set_radio_frequency(double radio_frequency);
    double get_radio_frequency() const { return m_radio_frequency; }

    /// Number of antennas that the channels' port lists have, limited to 1 to 32, the most ports that a channel knows.
    bool set_antennas_number(unsigned int antennas_number);
    unsigned int get_antennas_number() const { return m_antennas_number; }

    /// The one rate in hertz that serves all enabled carriers; 0 where none is enabled. The widest occupied bandwidth
    /// decides: its spacing times a power of two, a quarter more than the width at least. A carrier off the centre adds
    /// once that rate for each whole half bandwidth of its offset.
    double get_waveform_sample_rate_hz() const;
    unsigned long long get_waveform_sample_points() const;
    /// Samples of a full frame of 10 ms, whatever the number of subframes.
    unsigned long long get_frame_sample_points() const;
    double get_waveform_length_s() const;

    bool set_standard_rules(bool standard_rules);
    bool get_standard_rules() const { return m_standard_rules; }

    // Crest factor reduction

    bool set_crest_factor_reduction_enable(bool enable);
    bool is_crest_factor_reduction_enable() const;
    bool set_cfr_target_papr(double target_papr);
    double get_cfr_target_papr() const;
    bool set_cfr_max_iteration(unsigned int max_iteration);
    unsigned int get_cfr_max_iteration() const;
    bool set_cfr_cancel_percent(double cancel_percent);
    double get_cfr_cancel_percent() const;
    bool set_cfr_block_size(unsigned int block_size);
    unsigned int get_cfr_block_size() const;
    /// Points of frequency in hertz and dB, in any order. Those outside half the sample rate and those with NaN are
    /// left out; without any the setting's own mask for the sample rate is used. The block size is held to the sample
    /// count.
    bool set_cfr_filter_mask_data_arr(const std::vector<std::pair<double, double>>& mask);
    const std::vector<std::pair<double, double>>& get_cfr_filter_mask_data_arr() const;
    /// Holds the mask and the block size to the sample rate, after a change that may have moved it.
    void refit_cfr_filter_mask();
    const common_lib::lib_crest_factor_reduce_setting_t& get_crest_factor_reduction_setting() const
    {
        return m_cfr_setting;
    }

    // Carriers

    unsigned int get_carrier_number() const { return static_cast<unsigned int>(m_carriers.size()); }
    /// The last carrier for an index past the end.
    lib_nr_carrier_configure_manager_t& get_carrier(unsigned int index);
    const lib_nr_carrier_configure_manager_t& get_carrier(unsigned int index) const;
    /// Appends a default carrier, which reckons with the radio frequency.
    void add_carrier();
    /// Appends a deep copy; false for an index past the end.
    bool copy_carrier(unsigned int index);
    /// False for an index past the end and for the last carrier left.
    bool remove_carrier(unsigned int index);

private:
    void _limit_cfr_block_size();
    void _update_waveform_frames_number();
    void _update_waveform_antennas_number();

    bool m_nr_ntn = false;
    bool m_standard_rules = false;
    std::uint32_t m_frames_number = 1;
    std::uint32_t m_subframes_number = 10;
    bool m_mirror_spectrum = false;
    bool m_phase_compensation_enable = true;
    double m_radio_frequency = 1e9;
    std::uint32_t m_antennas_number = 1;
    common_lib::lib_crest_factor_reduce_setting_t m_cfr_setting;
    std::vector<lib_nr_carrier_configure_manager_t> m_carriers;
};

} // namespace vek::nr_mod_lib

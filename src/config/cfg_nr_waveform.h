#pragma once

#include "common/cfg_protocol_base.h"
#include "common/lib_crest_factor_reduce_setting.h"
#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_carrier.h"
#include "manager/lib_nr_waveform_configure_manager.h"

#include <utility>
#include <vector>

namespace vek::nr_mod_lib
{

/// The configuration of a waveform, as a host holds it: it owns the configuration, hands out the carriers, and saves
/// and recalls the whole as a tree. Setters return true when the stored value changed.
class NR_MOD_LIB_EXPORT cfg_nr_waveform_t : public common_lib::cfg_protocol_base_t
{
public:
    cfg_nr_waveform_t();
    ~cfg_nr_waveform_t() override;
    cfg_nr_waveform_t(const cfg_nr_waveform_t&) = delete;
    cfg_nr_waveform_t& operator=(const cfg_nr_waveform_t&) = delete;

    /// Rebuilds the configuration from the tree below the node. False, and nothing changes, where its attribute
    /// `ProtocolType` does not name this protocol. What the tree lacks goes to the setters as 0, false or empty text.
    bool recall_setting(const pugi::xml_node& node) override;
    /// Appends the attribute `ProtocolType` and the whole configuration to the node; always true.
    bool save_setting(pugi::xml_node& node) override;
    common_lib::plib_protocol_type_t get_protocol_type() const override;

    /// Back to one frame with one default carrier; the NTN flag stays. The cursors go to their first entries.
    void init();

    /// Takes over the whole configuration of another waveform, as a host does that takes edits back. The cursors go to
    /// their first entries.
    void copy_configuration(const lib_nr_waveform_configure_manager_t& waveform);

    /// The configuration as the engine takes it.
    const lib_nr_waveform_configure_manager_t& get_waveform_manager() const { return m_waveform; }

    /// Non-terrestrial mode; a change brings everything else back to its defaults, with a single carrier.
    bool set_nr_ntn(bool nr_ntn);
    bool get_nr_ntn() const;
    /// Frames of 10 ms, limited to 1 to 4.
    bool set_frame_number(unsigned int number);
    unsigned int get_frame_number() const;
    /// Always 10, whatever is asked for.
    bool set_subframes_number(unsigned int number);
    unsigned int get_subframes_number() const;
    /// Whether the finished baseband is conjugated.
    bool set_mirror_spectrum(bool mirror);
    bool get_mirror_spectrum() const;
    /// Whether each symbol carries the phase term of TS 38.211 clause 5.4 for the radio frequency, in every carrier the
    /// same whatever its offset; under `standard_rules` for the carrier's own frequency.
    bool set_phase_compensation(bool enable);
    bool get_phase_compensation() const;
    /// Whole hertz.
    bool set_radio_frequency(unsigned long long hertz);
    unsigned long long get_radio_frequency() const;
    /// Hertz, with the fraction or the sign that a preset has laid down: only a preset takes these.
    double get_radio_frequency_hz() const;
    /// Always 1, whatever is asked for.
    bool set_antennas_number(unsigned int number);
    unsigned int get_antennas_number() const;

    /// Whether the standard's rules hold where this library's own ones prescribe another signal: the deviations of
    /// `phy_common/lib_nr_deviation.h`, docs/deviations.md. No other setting depends on it. Neither `init` nor a recall
    /// changes it, and the tree does not hold it.
    bool set_standard_rules(bool standard_rules);
    bool get_standard_rules() const;

    /// Hertz. Counts the carriers in their order: one off the centre asks for the rate of the widest up to it, once
    /// more for each of its own half widths. So a narrow carrier far out costs least ahead of a wide one.
    unsigned long long get_waveform_sample_rate() const;
    /// Seconds.
    double get_waveform_length() const;
    unsigned long long get_waveform_sample_points() const;

    /// Whether peaks of the finished baseband are cut to the target.
    bool set_crest_factor_reduction_enable(bool enable);
    bool get_crest_factor_reduction_enable() const;
    /// dB above the mean power of what carries signal: silence does not count.
    bool set_cfr_target_papr(double target_papr);
    double get_cfr_target_papr() const;
    /// Most passes over the signal, limited to 0 to 100.
    bool set_cfr_max_iteration(unsigned int number);
    unsigned int get_cfr_max_iteration() const;
    /// Part of the excess taken off in a pass, limited to 0 to 100.
    bool set_cfr_cancel_percent(double percent);
    double get_cfr_cancel_percent() const;
    /// Samples, at most those of the waveform.
    bool set_cfr_block_size(unsigned int block_size);
    unsigned int get_cfr_block_size() const;
    /// Points of frequency in hertz and dB; those outside half the sample rate are left out, and without any the
    /// default mask is used.
    bool set_cfr_filter_mask_data_arr(const std::vector<std::pair<double, double>>& mask);
    const std::vector<std::pair<double, double>>& get_cfr_filter_mask_data_arr() const;
    const common_lib::lib_crest_factor_reduce_setting_t& get_crest_factor_reduction_setting() const;

    unsigned int get_carrier_number() const;
    /// The one carrier façade, moved to the index; past the end it stays, with a printed line.
    cfg_nr_carrier_t* get_carrier(unsigned int index);
    void add_carrier();
    bool copy_carrier(unsigned int index);
    /// False for an index past the end and for the last carrier left; otherwise the cursor goes to carrier 0.
    bool remove_carrier(unsigned int index);

private:
    lib_nr_waveform_configure_manager_t m_waveform;
    cfg_nr_carrier_t m_carrier;
};

} // namespace vek::nr_mod_lib

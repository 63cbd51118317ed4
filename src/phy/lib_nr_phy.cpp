#include "phy/lib_nr_phy.h"

#include "common/lib_common_container.h"
#include "common/lib_common_math.h"
#include "common/lib_common_signal_process.h"
#include "common/lib_complex_product.h"
#include "common/lib_large_buffer.h"
#include "phy/lib_nr_phy_steps.h"
#include "phy/lib_nr_prach_resource_manager.h"
#include "phy/lib_nr_resource_manager.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <utility>

namespace vek::nr_mod_lib
{

namespace
{

using common_lib::lib_common_container_t;
using common_lib::lib_common_math_t;

lib_nr_channel_resource_manager_t& grid() { return lib_nr_channel_resource_manager_t::get_inst(); }

void multiply(lib_nr_phy_t::signal_t& signal, std::complex<double> factor)
{
    common_lib::multiply(signal.data(), signal.size(), factor, signal.data());
}

} // namespace

lib_nr_phy_t::lib_nr_phy_t()
{
    m_waveform.init();
    _clear_data();
}

lib_nr_phy_t& lib_nr_phy_t::operator=(const lib_nr_phy_t& other)
{
    if (this != &other)
        *this = lib_nr_phy_t(other);
    return *this;
}

void lib_nr_phy_t::waveform_config(const lib_nr_waveform_configure_manager_t& waveform) { m_waveform = waveform; }

bool lib_nr_phy_t::waveform_init()
{
    m_waveform.init();
    return true;
}

void lib_nr_phy_t::_clear_data()
{
    m_baseband_signal.clear();
    m_finish.reset();
    m_frequency_spectrum.clear();
    m_ccdfs.clear();
}

std::uint32_t lib_nr_phy_t::_get_sample_points() const
{
    return static_cast<std::uint32_t>(m_waveform.get_waveform_sample_points());
}

bool lib_nr_phy_t::nr_phy_process()
{
    m_first_failed_step.reset();
    m_step.reset();
    try {
        const bool succeeded = _generate();
        m_recorder.close(m_first_failed_step.has_value());
        return succeeded;
    } catch (...) {
        _keep_first_failed_step();
        m_recorder.close(true);
        _clear_data();
        throw;
    }
}

void lib_nr_phy_t::_keep_first_failed_step()
{
    if (!m_first_failed_step)
        m_first_failed_step = m_step;
}

/// Whether the waveform goes on at a fraction of a frame, which it may end within.
bool lib_nr_phy_t::_is_within_waveform(unsigned int frame, double fraction) const
{
    const double frames = m_waveform.get_frame_number() * (m_waveform.get_subframes_number() / 10.0);
    return frame + fraction < frames;
}

bool lib_nr_phy_t::_generate()
{
    if (m_waveform.get_carrier_number() == 0) {
        std::cout << "lib_nr_dl_phy_t::nr_phy_process : Error! no carrier enabled " << std::endl;
        return false;
    }
    // The first pair's buffer becomes the sum itself; it takes over the storage of the last result.
    signal_t sum = std::move(m_baseband_signal);
    _clear_data();
    m_recorder.open();
    grid().take_written();
    signal_t further;
    bool is_first = true;

    for (unsigned int c = 0; c < m_waveform.get_carrier_number(); ++c) {
        const lib_nr_carrier_configure_manager_t& carrier = m_waveform.get_carrier(c);
        for (unsigned int n = 0; n < carrier.get_numerology_number(); ++n) {
            if (!carrier.get_enable() || !carrier.get_numerology_manager(n).get_enable())
                continue;
            if (!_generate_pair(c, n, is_first ? sum : further)) {
                _clear_data();
                return false;
            }
            if (!is_first)
                lib_common_container_t::deal_data_addition(further, sum, 0);
            is_first = false;
        }
    }
    signal_t().swap(further);
    if (is_first)
        common_lib::make_silent(sum, _get_sample_points());
    m_baseband_signal = std::move(sum);
    _deal_baseband_process();
    return true;
}

/// All frames of a carrier's numerology, with the carrier's offsets; the buffer's former samples do not matter. False
/// on a conflict.
bool lib_nr_phy_t::_generate_pair(unsigned int c, unsigned int n, signal_t& buffer)
{
    const lib_nr_carrier_configure_manager_t& carrier = m_waveform.get_carrier(c);
    const bool is_prach = carrier.get_carrier_type() == LIB_NR_PRACH;
    if (is_prach)
        common_lib::make_silent(buffer, _get_sample_points());
    else
        _open_frames(c, n, buffer);
    for (unsigned int f = 0; f < m_waveform.get_frame_number(); ++f) {
        m_step = lib_nr_channel_step_t{{}, c, n, f, {}, {}, {}};
        if (is_prach) {
            _map_prach_frame(c, n, f, m_waveform);
            _fill_prach_frame_data(c, n, f, buffer);
            continue;
        }
        if (_map_frame(c, n, f, m_waveform) && grid().is_resource_mapping_conflict()) {
            std::cout << "lib_nr_dl_phy_t::nr_phy_process Report : Resource Mapping Conflict!" << std::endl;
            _note_conflicts(c, n, f);
            return false;
        }
        _fill_frame_data(c, n, f, buffer);
    }
    m_step.reset();
    if (!is_prach)
        _close_frames(buffer);
    _deal_carrier_process(c, buffer);
    return true;
}

bool lib_nr_phy_t::deal_resource_mapping(unsigned int carrier, unsigned int numerology, unsigned int frame,
                                         const lib_nr_waveform_configure_manager_t& waveform)
{
    m_first_failed_step.reset();
    return _map_frame(carrier, numerology, frame, waveform);
}

bool lib_nr_phy_t::_map_frame(unsigned int carrier, unsigned int numerology, unsigned int frame,
                              const lib_nr_waveform_configure_manager_t& waveform)
{
    _set_up_grid(waveform.get_carrier(carrier), numerology);
    grid().init_resource_mapping();
    return _map_channels(carrier, numerology, frame);
}

/// The grid of a pass. The prefix is that of downlink BWP 0, for uplink carriers too, and only at 60 kHz may it be the
/// extended one: a pass before this one leaves nothing of its own.
void lib_nr_phy_t::_set_up_grid(const lib_nr_carrier_configure_manager_t& carrier, unsigned int numerology)
{
    const lib_nr_phy_numerology_configure_manager_t& manager = carrier.get_numerology_manager(numerology);
    grid().set_cyclic_prefix_type(LIB_NR_NORMAL_CP);
    grid().set_numerology(manager.get_numerolgy());
    grid().set_rb_number(manager.get_rb_start() + manager.get_rb_size());
    grid().set_channel_bandwidth(carrier.get_bandwidth());
    grid().set_cyclic_prefix_type(carrier.get_dl_bwp(0).get_cp_type());
}

bool lib_nr_phy_t::deal_payload_mapping(unsigned int carrier, unsigned int numerology, unsigned int frame)
{
    m_first_failed_step.reset();
    return _deal_payload_mapping(carrier, numerology, frame);
}

void lib_nr_phy_t::_show_cells()
{
    if (!m_cell_observer)
        return;
    m_cells.rows = &std::as_const(grid()).get_payload_mapping();
    m_cell_observer(m_cells);
}

bool lib_nr_phy_t::_deal_payload_mapping(unsigned int carrier, unsigned int numerology, unsigned int frame)
{
    _set_up_grid(m_waveform.get_carrier(carrier), numerology);
    grid().init_payload_mapping();
    grid().set_run_notes(static_cast<bool>(m_cell_observer));
    grid().take_run_notes();
    m_cells = {};
    m_cells.carrier = carrier;
    m_cells.numerology = numerology;
    m_cells.frame = frame;
    if (!_link_channels(carrier, numerology, frame))
        return false;
    if (m_after_channel_steps)
        m_after_channel_steps(carrier, numerology, frame);
    _show_cells();
    return true;
}

void lib_nr_phy_t::_update_ofdm_config(unsigned int carrier, unsigned int numerology)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    m_ofdm_modulator.set_cyclic_prefix_type(LIB_NR_NORMAL_CP); // a pass before may have left the extended one
    m_ofdm_modulator.set_numerology(configuration.get_numerology_manager(numerology).get_numerolgy());
    m_ofdm_modulator.set_channel_bandwidth(configuration.get_bandwidth());
    m_ofdm_modulator.set_cyclic_prefix_type(configuration.get_dl_bwp(0).get_cp_type());
    m_ofdm_modulator.set_windowing_enable(true);
    m_ofdm_modulator.set_window_beta(configuration.get_windowing_beta());
    m_ofdm_modulator.set_windowing_method(configuration.get_windowing_method());
    m_ofdm_modulator.set_phase_compensation_enable(m_waveform.get_phase_compensation_enable());
    m_ofdm_modulator.set_carrier_frequency(_get_phase_frequency(carrier));
    m_ofdm_modulator.set_baseband_filter_enable(configuration.is_baseband_filter_enable());
    m_ofdm_modulator.set_target_sample_rate(m_waveform.get_waveform_sample_rate_hz());
}

/// The frequency that the phase terms of a carrier go by.
double lib_nr_phy_t::_get_phase_frequency(unsigned int carrier)
{
    const double centre = m_waveform.get_radio_frequency();
    if (!m_waveform.get_phase_compensation_enable())
        return centre;
    const lib_nr_rules_t rules(m_waveform.get_standard_rules());
    const double frequency = rules.pick(lib_nr_deviation_t::carrier_phase, centre,
                                        centre + m_waveform.get_carrier(carrier).get_frequency_offset_hz());
    m_recorder.note_met({{}, carrier, 0}, rules);
    return frequency;
}

bool lib_nr_phy_t::_fill_frame_data(unsigned int carrier, unsigned int numerology, unsigned int frame, signal_t& buffer)
{
    if (buffer.size() != _get_sample_points()) {
        std::cout << "lib_nr_dl_phy_t::_fill_frame_data Report : Carrier Data Length Error!" << std::endl;
        return false;
    }
    signal_t& waveform = m_own_rate_signal.empty() ? buffer : m_own_rate_signal;
    const std::uint64_t begin = std::min<std::uint64_t>(frame * m_seams.get_frame_length(), waveform.size());
    const std::uint64_t count = std::min<std::uint64_t>(m_seams.get_frame_length(), waveform.size() - begin);
    m_head.clear();
    m_tail.clear();
    const bool is_mapped = _deal_payload_mapping(carrier, numerology, frame);
    if (!is_mapped || !_modulate_frame(carrier, numerology, waveform.data() + begin, count))
        std::fill_n(waveform.data() + begin, count, 0.0); // the frame stays silent
    m_seams.join(frame, m_head, m_tail, waveform);
    return is_mapped;
}

/// Writes a frame to where it belongs; less of it where the waveform ends inside. False where the modulator refuses it.
bool lib_nr_phy_t::_modulate_frame(unsigned int carrier, unsigned int numerology, std::complex<double>* place,
                                   std::size_t count)
{
    _update_ofdm_config(carrier, numerology);
    const auto modulate = [this](std::complex<double>* frame) {
        return m_ofdm_modulator.modulate_frame(grid().get_written_payload(), frame, m_head, m_tail);
    };
    bool is_modulated = false;
    if (count == m_ofdm_modulator.get_frame_length())
        is_modulated = modulate(place);
    else {
        signal_t whole(m_ofdm_modulator.get_frame_length());
        is_modulated = count < whole.size() && modulate(whole.data());
        std::copy_n(whole.data(), std::min(count, whole.size()), place);
    }
    if (!is_modulated)
        _keep_first_failed_step();
    return is_modulated;
}

// Where the waveform's rate is no whole multiple of the carrier's, the frames are laid into a waveform at their own
// rate, and that waveform, being periodic, is brought to the other rate through its spectrum behind the last of them.
void lib_nr_phy_t::_open_frames(unsigned int carrier, unsigned int numerology, signal_t& buffer)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    m_ofdm_modulator.set_numerology(configuration.get_numerology_manager(numerology).get_numerolgy());
    m_ofdm_modulator.set_channel_bandwidth(configuration.get_bandwidth());
    m_ofdm_modulator.set_target_sample_rate(m_waveform.get_waveform_sample_rate_hz());
    const double rate = m_ofdm_modulator.get_actual_sample_rate();
    if (rate == m_waveform.get_waveform_sample_rate_hz()) {
        m_own_rate_signal.clear();
        m_seams.open(m_waveform.get_frame_sample_points());
        common_lib::make_room(buffer, _get_sample_points());
        buffer.resize(_get_sample_points());
        const std::uint64_t framed = m_waveform.get_frame_number() * m_seams.get_frame_length();
        std::fill_n(buffer.rbegin(), buffer.size() - std::min<std::uint64_t>(framed, buffer.size()), 0.0);
    }
    else {
        common_lib::make_silent(m_own_rate_signal,
                                static_cast<std::size_t>(std::llround(rate * m_waveform.get_waveform_length_s())));
        m_seams.open(m_ofdm_modulator.get_frame_length());
        common_lib::make_silent(buffer, _get_sample_points());
    }
}

void lib_nr_phy_t::_close_frames(signal_t& buffer)
{
    m_seams.close(m_own_rate_signal.empty() ? buffer : m_own_rate_signal);
    if (!m_own_rate_signal.empty())
        add_resampled(m_own_rate_signal, buffer);
}

void lib_nr_phy_t::_deal_carrier_process(unsigned int carrier, signal_t& buffer)
{
    _deal_carrier_timing_offset(carrier, buffer);
    _deal_carrier_frequency_offset(carrier, buffer);
    _deal_carrier_phase_offset(carrier, buffer);
    _deal_carrier_power_offset(carrier, buffer);
}

void lib_nr_phy_t::_deal_carrier_timing_offset(unsigned int carrier, signal_t& buffer)
{
    const int shift =
        samples_of(m_waveform.get_waveform_sample_rate_hz(), m_waveform.get_carrier(carrier).get_timing_offset_s());
    if (shift != 0)
        lib_common_container_t::deal_cyclic_shift(shift, buffer);
}

void lib_nr_phy_t::_deal_carrier_frequency_offset(unsigned int carrier, signal_t& buffer)
{
    const double offset = m_waveform.get_carrier(carrier).get_frequency_offset_hz();
    common_lib::lib_common_signal_process_t::deal_mixer(buffer, offset / m_waveform.get_waveform_sample_rate_hz(), 0.0);
}

void lib_nr_phy_t::_deal_carrier_phase_offset(unsigned int carrier, signal_t& buffer)
{
    const unsigned int degrees = m_waveform.get_carrier(carrier).get_init_phase();
    if (degrees % 360 == 0)
        return;
    std::complex<double> turned = 1.0;
    lib_common_math_t::deal_phase_offset(lib_common_math_t::angle_to_radian(degrees), turned);
    multiply(buffer, turned);
}

void lib_nr_phy_t::_deal_carrier_power_offset(unsigned int carrier, signal_t& buffer)
{
    const double boosting = m_waveform.get_carrier(carrier).get_power_boosting();
    if (boosting != 0.0)
        multiply(buffer, lib_common_math_t::db_value_to_amplitude_ratio(boosting));
}

} // namespace vek::nr_mod_lib

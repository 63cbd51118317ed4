#include "manager/lib_nr_waveform_configure_manager.h"

#include "common/lib_bounded_cast.h"
#include "manager/lib_nr_occupied_width.h"
#include "manager/lib_nr_setting.h"

#include <algorithm>
#include <cmath>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_max_frames_number = 4;
constexpr unsigned int k_max_subframes_number = 10;
constexpr unsigned int k_max_antennas_number = 32;
constexpr double k_subframe_s = 0.001;
constexpr double k_frame_s = 0.01;
constexpr double k_min_cfr_sample_rate = 7.68e6;

} // namespace

lib_nr_waveform_configure_manager_t::lib_nr_waveform_configure_manager_t() { init(); }

void lib_nr_waveform_configure_manager_t::init()
{
    m_frames_number = 1;
    m_subframes_number = 10;
    m_mirror_spectrum = false;
    m_phase_compensation_enable = true;
    m_radio_frequency = 1e9;
    m_antennas_number = 1;

    m_carriers.resize(1);
    m_carriers.front().init();
    m_carriers.front().set_nr_ntn(m_nr_ntn);
    m_carriers.front().set_radio_frequency(m_radio_frequency);
    m_carriers.front().set_antennas_number(m_antennas_number);

    const double rate = std::max(get_waveform_sample_rate_hz(), k_min_cfr_sample_rate);
    m_cfr_setting.init(rate, rate);
}

bool lib_nr_waveform_configure_manager_t::set_nr_ntn(bool nr_ntn)
{
    if (!assign(m_nr_ntn, nr_ntn))
        return false;
    init();
    return true;
}

bool lib_nr_waveform_configure_manager_t::set_frames_number(unsigned int frames_number)
{
    if (frames_number == m_frames_number)
        return false;
    m_frames_number = std::clamp(frames_number, 1U, k_max_frames_number);
    _update_waveform_frames_number();
    if (m_frames_number >= 2)
        m_subframes_number = k_max_subframes_number;
    _limit_cfr_block_size();
    return true;
}

bool lib_nr_waveform_configure_manager_t::set_subframes_number(unsigned int subframes_number)
{
    if (subframes_number == m_subframes_number)
        return false;
    m_subframes_number =
        m_frames_number >= 2 ? k_max_subframes_number : std::clamp(subframes_number, 1U, k_max_subframes_number);
    _limit_cfr_block_size();
    return true;
}

bool lib_nr_waveform_configure_manager_t::set_mirror_spectrum(bool mirror_spectrum)
{
    return assign(m_mirror_spectrum, mirror_spectrum);
}

bool lib_nr_waveform_configure_manager_t::set_phase_compensation_enable(bool enable)
{
    return assign(m_phase_compensation_enable, enable);
}

bool lib_nr_waveform_configure_manager_t::set_radio_frequency(double radio_frequency)
{
    if (!assign(m_radio_frequency, radio_frequency))
        return false;
    for (lib_nr_carrier_configure_manager_t& carrier : m_carriers)
        carrier.set_radio_frequency(m_radio_frequency);
    return true;
}

bool lib_nr_waveform_configure_manager_t::set_antennas_number(unsigned int antennas_number)
{
    if (!assign(m_antennas_number, std::clamp(antennas_number, 1U, k_max_antennas_number)))
        return false;
    _update_waveform_antennas_number();
    return true;
}

bool lib_nr_waveform_configure_manager_t::set_standard_rules(bool standard_rules)
{
    return assign(m_standard_rules, standard_rules);
}

double lib_nr_waveform_configure_manager_t::get_waveform_sample_rate_hz() const
{
    double rate = 0.0;
    lib_nr_occupied_width_t width;
    for (const lib_nr_carrier_configure_manager_t& carrier : m_carriers) {
        if (!carrier.get_enable())
            continue;
        for (unsigned int i = 0; i < carrier.get_numerology_number(); ++i)
            if (carrier.get_numerology_manager(i).get_enable())
                width.include(carrier.get_numerology_manager(i));
        const unsigned int half_bandwidth = carrier.get_configured_bandwidth() / 2;
        const double half_bandwidths_off =
            half_bandwidth > 0 ? std::trunc(std::fabs(carrier.get_frequency_offset_hz()) / half_bandwidth) : 0.0;
        rate = std::max(rate, half_bandwidths_off * width.get_sample_rate() + width.get_sample_rate());
    }
    return rate;
}

unsigned long long lib_nr_waveform_configure_manager_t::get_waveform_sample_points() const
{
    return common_lib::bounded_cast<unsigned long long>(m_frames_number * get_waveform_sample_rate_hz() *
                                                        m_subframes_number * k_subframe_s);
}

unsigned long long lib_nr_waveform_configure_manager_t::get_frame_sample_points() const
{
    return common_lib::bounded_cast<unsigned long long>(std::round(get_waveform_sample_rate_hz() * k_frame_s));
}

double lib_nr_waveform_configure_manager_t::get_waveform_length_s() const
{
    return m_frames_number * m_subframes_number * k_subframe_s;
}

bool lib_nr_waveform_configure_manager_t::set_crest_factor_reduction_enable(bool enable)
{
    return m_cfr_setting.set_enable(enable);
}

bool lib_nr_waveform_configure_manager_t::is_crest_factor_reduction_enable() const { return m_cfr_setting.is_enable(); }

bool lib_nr_waveform_configure_manager_t::set_cfr_target_papr(double target_papr)
{
    return m_cfr_setting.set_target_peak_to_average_power_ratio(target_papr);
}

double lib_nr_waveform_configure_manager_t::get_cfr_target_papr() const
{
    return m_cfr_setting.get_target_peak_to_average_power_ratio();
}

bool lib_nr_waveform_configure_manager_t::set_cfr_max_iteration(unsigned int max_iteration)
{
    return m_cfr_setting.set_max_iteration(max_iteration);
}

unsigned int lib_nr_waveform_configure_manager_t::get_cfr_max_iteration() const
{
    return m_cfr_setting.get_max_iteration();
}

bool lib_nr_waveform_configure_manager_t::set_cfr_cancel_percent(double cancel_percent)
{
    return m_cfr_setting.set_cancel_percent(cancel_percent);
}

double lib_nr_waveform_configure_manager_t::get_cfr_cancel_percent() const
{
    return m_cfr_setting.get_cancel_percent();
}

bool lib_nr_waveform_configure_manager_t::set_cfr_block_size(unsigned int block_size)
{
    const unsigned long long limited = std::min<unsigned long long>(get_waveform_sample_points(), block_size);
    return m_cfr_setting.set_signal_block_size(static_cast<unsigned int>(limited));
}

unsigned int lib_nr_waveform_configure_manager_t::get_cfr_block_size() const
{
    return m_cfr_setting.get_signal_block_size();
}

bool lib_nr_waveform_configure_manager_t::set_cfr_filter_mask_data_arr(
    const std::vector<std::pair<double, double>>& mask)
{
    using point_t = std::pair<double, double>;
    _limit_cfr_block_size();
    const std::vector<point_t> mask_before = get_cfr_filter_mask_data_arr();

    const double rate = get_waveform_sample_rate_hz();
    std::vector<point_t> points;
    for (const point_t& point : mask)
        if (std::fabs(point.first) <= 0.5 * rate && !std::isnan(point.second))
            points.push_back(point);
    std::stable_sort(points.begin(), points.end(),
                     [](const point_t& left, const point_t& right) { return left.first < right.first; });

    if (points.empty())
        m_cfr_setting.init_filter_mask_data(rate, rate);
    else
        m_cfr_setting.set_filter_mask_data_arr(points);
    return get_cfr_filter_mask_data_arr() != mask_before;
}

void lib_nr_waveform_configure_manager_t::refit_cfr_filter_mask()
{
    set_cfr_filter_mask_data_arr(get_cfr_filter_mask_data_arr());
}

const std::vector<std::pair<double, double>>& lib_nr_waveform_configure_manager_t::get_cfr_filter_mask_data_arr() const
{
    return m_cfr_setting.get_filter_mask_data_arr();
}

lib_nr_carrier_configure_manager_t& lib_nr_waveform_configure_manager_t::get_carrier(unsigned int index)
{
    return entry_or_last(m_carriers, index);
}

const lib_nr_carrier_configure_manager_t& lib_nr_waveform_configure_manager_t::get_carrier(unsigned int index) const
{
    return entry_or_last(m_carriers, index);
}

void lib_nr_waveform_configure_manager_t::add_carrier()
{
    lib_nr_carrier_configure_manager_t& carrier = m_carriers.emplace_back();
    carrier.set_nr_ntn(m_nr_ntn);
    carrier.set_radio_frequency(m_radio_frequency);
    carrier.set_antennas_number(m_antennas_number);
}

bool lib_nr_waveform_configure_manager_t::copy_carrier(unsigned int index) { return append_copy(m_carriers, index); }

bool lib_nr_waveform_configure_manager_t::remove_carrier(unsigned int index) { return remove_entry(m_carriers, index); }

void lib_nr_waveform_configure_manager_t::_limit_cfr_block_size() { set_cfr_block_size(get_cfr_block_size()); }

void lib_nr_waveform_configure_manager_t::_update_waveform_frames_number()
{
    for (lib_nr_carrier_configure_manager_t& carrier : m_carriers) {
        const auto follow = [this](auto& channel, lib_nr_numerology_type_t numerology) {
            channel.set_one_frame_period(channel.get_one_frame_period(), m_frames_number, numerology);
        };
        for (unsigned int i = 0; i < carrier.get_dl_sch_number(); ++i)
            follow(carrier.get_dl_sch(i), carrier.get_dl_bwp(carrier.get_dl_sch(i).get_bwp_id()).get_numerology());
        for (unsigned int i = 0; i < carrier.get_dl_csirs_number(); ++i)
            follow(carrier.get_dl_csirs(i), carrier.get_dl_bwp(carrier.get_dl_csirs(i).get_bwp_id()).get_numerology());
        for (unsigned int i = 0; i < carrier.get_ul_sch_number(); ++i)
            follow(carrier.get_ul_sch(i), carrier.get_ul_bwp(carrier.get_ul_sch(i).get_bwp_id()).get_numerology());
    }
}

void lib_nr_waveform_configure_manager_t::_update_waveform_antennas_number()
{
    for (lib_nr_carrier_configure_manager_t& carrier : m_carriers)
        carrier.set_antennas_number(m_antennas_number);
}

} // namespace vek::nr_mod_lib

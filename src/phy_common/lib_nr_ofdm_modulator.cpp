#include "phy_common/lib_nr_ofdm_modulator.h"

#include "common/lib_complex_product.h"
#include "common/lib_ofdm_cyclic_special_case.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <numbers>
#include <stdexcept>

namespace vek::nr_mod_lib
{

namespace
{

constexpr double k_frame_seconds = 0.01;

/// Fraction of a turn, in [0, 1), that position x frequency / sample rate leaves. The plain product of doubles loses
/// 1e-6 rad at 60 GHz: here the whole hertz are reduced in integers and only a fraction of a hertz in floating point.
double reduced_turns(std::uint64_t position, double frequency, std::uint64_t sample_rate)
{
    __extension__ using wide_t = unsigned __int128;
    const double rate = static_cast<double>(sample_rate);
    double residue = std::fmod(frequency, rate); // exact
    if (residue < 0.0)
        residue += rate;
    const double whole = std::floor(residue);
    const auto product = wide_t{position % sample_rate} * static_cast<std::uint64_t>(whole);
    const double turns = (static_cast<double>(static_cast<std::uint64_t>(product % sample_rate)) +
                          (residue - whole) * static_cast<double>(position)) /
                         rate;
    return turns - std::floor(turns);
}

} // namespace

lib_nr_ofdm_modulator_t::lib_nr_ofdm_modulator_t() : m_cyclic_prefix_config(0.0)
{
    m_common_modulator.set_frame_idle_length(0);
    m_common_modulator.set_cyclic_suffix_config(common_lib::lib_ofdm_cyclic_config_t(0.0));
    _update_modulation_parameter();
}

void lib_nr_ofdm_modulator_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    if (!lib_nr_phy_common_t::has_extended_prefix(m_numerology))
        m_cyclic_prefix_type = LIB_NR_NORMAL_CP;
    m_numerology = numerology;
    m_baseband_filter.set_numerology(numerology);
}

void lib_nr_ofdm_modulator_t::set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    m_channel_bandwidth = bandwidth;
    m_baseband_filter.set_channel_bandwidth(bandwidth);
}

void lib_nr_ofdm_modulator_t::set_cyclic_prefix_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    if (cp_type == m_cyclic_prefix_type)
        return;
    if (cp_type == LIB_NR_EXTEND_CP && !lib_nr_phy_common_t::has_extended_prefix(m_numerology)) {
        std::cout << "lib_nr_dl_resource_manager_t::set_cyclic_prefix_type Report : Extende CP is supported only with "
                     "60kHz SCS!"
                  << std::endl;
        return;
    }
    m_cyclic_prefix_type = cp_type;
}

void lib_nr_ofdm_modulator_t::set_windowing_enable(bool enable) { m_windowing_enable = enable; }

void lib_nr_ofdm_modulator_t::set_window_beta(double beta)
{
    if (!std::isnan(beta))
        m_window_beta = std::clamp(beta, m_window_beta_minimum, m_window_beta_maximum);
}

void lib_nr_ofdm_modulator_t::set_windowing_method(common_lib::lib_ofdm_windowing_method_type_t method)
{
    m_windowing_method = method;
}

void lib_nr_ofdm_modulator_t::set_phase_compensation_enable(bool enable) { m_phase_compensation_enable = enable; }

void lib_nr_ofdm_modulator_t::set_carrier_frequency(double frequency)
{
    if (std::isfinite(frequency))
        m_carrier_frequency = frequency;
}

void lib_nr_ofdm_modulator_t::set_baseband_filter_enable(bool enable)
{
    m_baseband_filter.set_baseband_filter_enable(enable);
}

bool lib_nr_ofdm_modulator_t::set_oversamping_ratio(unsigned int oversampling_ratio)
{
    if (oversampling_ratio == 0) {
        std::cout << "lib_nr_ofdm_modulator_t::set_oversamping_ratio Report : Oversampling Ratio Must NOT be zero!"
                  << std::endl;
        return false;
    }
    m_oversampling_ratio = oversampling_ratio;
    m_baseband_filter.set_oversampling_ratio(oversampling_ratio);
    return true;
}

bool lib_nr_ofdm_modulator_t::set_target_sample_rate(double sample_rate)
{
    if (!(sample_rate > 0.0)) {
        std::cout << "lib_nr_ofdm_modulator_t::set_target_sample_rate Report : Sample Rate Should be a positive value!"
                  << std::endl;
        return false;
    }
    const double protocol_rate =
        static_cast<double>(_get_protocol_defined_fft_length()) * lib_nr_phy_common_t::get_scs_hz_value(m_numerology);
    const double ratio = std::ceil(sample_rate / protocol_rate);
    set_oversamping_ratio(static_cast<unsigned int>(std::min<double>(ratio, std::numeric_limits<std::int32_t>::max())));
    return true;
}

unsigned int lib_nr_ofdm_modulator_t::get_fft_length(lib_nr_numerology_type_t numerology,
                                                     lib_nr_channel_bw_type_t bandwidth)
{
    return lib_nr_phy_common_t::get_fft_length(numerology, bandwidth);
}

double lib_nr_ofdm_modulator_t::get_actual_sample_rate() const
{
    return static_cast<double>(_get_actual_fft_length()) * lib_nr_phy_common_t::get_scs_hz_value(m_numerology);
}

std::size_t lib_nr_ofdm_modulator_t::get_frame_length() const
{
    return static_cast<std::size_t>(std::llround(get_actual_sample_rate() * k_frame_seconds));
}

bool lib_nr_ofdm_modulator_t::deal_frame_ofdm_modulation(const std::vector<std::vector<sample_t>>& payload,
                                                         std::vector<sample_t>& main, std::vector<sample_t>& head,
                                                         std::vector<sample_t>& tail)
{
    main.resize(get_frame_length());
    if (!modulate_frame({payload}, main.data(), head, tail)) {
        main.clear();
        return false;
    }
    main.insert(main.end(), tail.begin(), tail.end());
    tail.clear();
    return true;
}

bool lib_nr_ofdm_modulator_t::modulate_frame(const common_lib::lib_ofdm_payload_t& payload, sample_t* frame,
                                             std::vector<sample_t>& head, std::vector<sample_t>& tail)
{
    _update_modulation_parameter();
    if (!_check_payload_data_size(payload.rows)) {
        std::cout << "lib_nr_ofdm_modulator_t::deal_frame_ofdm_modulation Report : Payload Mapping Size Error!"
                  << std::endl;
        return false;
    }
    if (!m_common_modulator.modulate_frame(payload, frame, get_frame_length(), tail))
        return false;
    m_baseband_filter.filter_frame(payload, frame, get_frame_length(), head, tail);
    return true;
}

void lib_nr_ofdm_modulator_t::_deal_phase_compensation(std::vector<sample_t>& main) const
{
    const std::size_t fft_length = _get_actual_fft_length();
    std::size_t position = 0;
    unsigned int symbol = 0;
    for (const double turns : _get_symbol_phase_turns()) {
        const std::size_t end = position + fft_length +
                                m_cyclic_prefix_config.get_cyclic_length(symbol++, static_cast<unsigned>(fft_length));
        const sample_t rotation = std::polar(1.0, 2.0 * std::numbers::pi * turns);
        for (; position < std::min(end, main.size()); ++position)
            main[position] = common_lib::product(main[position], rotation);
        if (position < end)
            throw std::out_of_range("lib_nr_ofdm_modulator_t::_deal_phase_compensation: signal shorter than the frame");
    }
}

unsigned int lib_nr_ofdm_modulator_t::_get_protocol_defined_fft_length() const
{
    return get_fft_length(m_numerology, m_channel_bandwidth);
}

std::size_t lib_nr_ofdm_modulator_t::_get_actual_fft_length() const
{
    return std::size_t{_get_protocol_defined_fft_length()} * m_oversampling_ratio;
}

void lib_nr_ofdm_modulator_t::_update_modulation_parameter()
{
    _update_fft_length();
    _update_symbol_number_in_frame();
    _update_cyclic_prefix();
    _update_windowing();
    m_common_modulator.set_oversampling_ratio(m_oversampling_ratio);
    _update_symbol_phases();
}

void lib_nr_ofdm_modulator_t::_update_fft_length()
{
    m_common_modulator.set_fft_length(_get_protocol_defined_fft_length());
}

void lib_nr_ofdm_modulator_t::_update_symbol_number_in_frame()
{
    m_common_modulator.set_symbol_number(
        lib_nr_phy_common_t::get_symbol_number_in_frame(m_numerology, m_cyclic_prefix_type));
}

/// TS 38.211 clause 5.3.1, as fractions of the useful symbol: the spacing falls out of all terms but the 16 of the
/// long prefix at each half subframe.
void lib_nr_ofdm_modulator_t::_update_cyclic_prefix()
{
    const unsigned int u = lib_nr_phy_common_t::get_u_from_scs(m_numerology);
    const double scale = std::ldexp(1.0, -static_cast<int>(u));
    const double useful_length = 2048.0 * scale;
    m_cyclic_prefix_config = common_lib::lib_ofdm_cyclic_config_t(0.0);
    if (m_cyclic_prefix_type == LIB_NR_EXTEND_CP) {
        m_cyclic_prefix_config.set_all_symbol_cyclic_prefix_length(512.0 * scale / useful_length);
    }
    else {
        const unsigned int symbol_number =
            lib_nr_phy_common_t::get_symbol_number_in_frame(m_numerology, LIB_NR_NORMAL_CP);
        std::vector<unsigned int> long_symbols;
        for (unsigned int symbol = 0; symbol < symbol_number; symbol += 7U << u)
            long_symbols.push_back(symbol);
        common_lib::lib_ofdm_cyclic_special_case_t long_prefix;
        long_prefix.set_symbol_index_list(symbol_number, long_symbols);
        long_prefix.set_cyclic_length_factor((16.0 + 144.0 * scale) / useful_length);

        m_cyclic_prefix_config.set_default_cyclic_length_factor(144.0 * scale / useful_length);
        m_cyclic_prefix_config.set_specified_config_arr(symbol_number, {long_prefix});
    }
    m_common_modulator.set_cyclic_prefix_config(m_cyclic_prefix_config);
}

void lib_nr_ofdm_modulator_t::_update_windowing()
{
    if (!m_windowing_enable) {
        m_common_modulator.set_window_beta(0.0);
        return;
    }
    m_common_modulator.set_window_beta(m_window_beta);
    m_common_modulator.set_windowing_method(m_windowing_method);
}

/// Each symbol is turned together with its own suffix, before that falls into the prefix of the next.
void lib_nr_ofdm_modulator_t::_update_symbol_phases()
{
    m_common_modulator.set_symbol_phase_turns(m_phase_compensation_enable ? _get_symbol_phase_turns()
                                                                          : std::vector<double>{});
}

bool lib_nr_ofdm_modulator_t::_check_payload_data_size(const std::vector<std::vector<sample_t>>& payload) const
{
    const std::size_t symbol_number =
        lib_nr_phy_common_t::get_symbol_number_in_frame(m_numerology, m_cyclic_prefix_type);
    const std::size_t subcarrier_number =
        lib_nr_phy_common_t::get_subcarrier_total_number(m_numerology, m_channel_bandwidth);
    return !payload.empty() && payload.size() == symbol_number &&
           std::all_of(payload.begin(), payload.end(),
                       [&](const auto& row) { return row.size() == subcarrier_number; });
}

/// What the up-conversion adds by the start of each symbol's useful part, taken back (TS 38.211 clause 5.4).
std::vector<double> lib_nr_ofdm_modulator_t::_get_symbol_phase_turns() const
{
    const std::size_t fft_length = _get_actual_fft_length();
    const std::uint64_t sample_rate = std::uint64_t{fft_length} * lib_nr_phy_common_t::get_scs_hz_value(m_numerology);
    const unsigned int symbol_number =
        lib_nr_phy_common_t::get_symbol_number_in_frame(m_numerology, m_cyclic_prefix_type);
    std::vector<double> turns(symbol_number);
    std::uint64_t position = 0;
    for (unsigned int symbol = 0; symbol < symbol_number; ++symbol) {
        const std::uint64_t prefix =
            m_cyclic_prefix_config.get_cyclic_length(symbol, static_cast<unsigned int>(fft_length));
        turns[symbol] = -reduced_turns(position + prefix, m_carrier_frequency, sample_rate);
        position += prefix + fft_length;
    }
    return turns;
}

} // namespace vek::nr_mod_lib

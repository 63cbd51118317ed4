#include "phy_common/lib_nr_baseband_filter.h"

#include "common/lib_common_math.h"
#include "common/lib_filter.h"
#include "common/lib_signal_power.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/tables/lib_nr_minimum_guard_band_table.h"

#include <algorithm>
#include <cmath>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_filter_passband_type = 0;
constexpr unsigned int k_filter_order = lib_nr_baseband_filter_t::k_growth;
constexpr double k_empty_amplitude = 1e-12;
constexpr double k_minimum_guard_subcarriers = 12.0; // a resource block

/// Squares decide but near the limit, where the amplitude itself has to.
bool is_occupied(const std::complex<double>& value)
{
    const double power = common_lib::power_of(value);
    if (power > 4.0 * k_empty_amplitude * k_empty_amplitude)
        return true;
    return power > 0.0 && common_lib::lib_common_math_t::get_complex_amplitude(value) > k_empty_amplitude;
}

/// Empty subcarriers at the low end of a row, counting no further than the limit.
std::uint32_t count_low_guard(const std::vector<std::complex<double>>& row, std::uint32_t limit)
{
    std::uint32_t count = 0;
    while (count < limit && !is_occupied(row[count]))
        ++count;
    return count;
}

std::uint32_t count_high_guard(const std::vector<std::complex<double>>& row, std::uint32_t limit)
{
    std::uint32_t count = 0;
    while (count < limit && !is_occupied(row[row.size() - 1 - count]))
        ++count;
    return count;
}

/// The subcarrier in the middle of the row belongs to neither side.
std::uint32_t low_half(std::size_t row_length) { return static_cast<std::uint32_t>(row_length / 2); }

std::uint32_t high_half(std::size_t row_length)
{
    return row_length < 2 ? 0 : static_cast<std::uint32_t>(row_length - 1 - row_length / 2);
}

} // namespace

lib_nr_baseband_filter_t::lib_nr_baseband_filter_t()
{
    m_filter_design.set_filter_passband_type(k_filter_passband_type);
    m_filter_design.set_filter_order(k_filter_order);
}

void lib_nr_baseband_filter_t::set_baseband_filter_enable(bool enable) { m_enable = enable; }

bool lib_nr_baseband_filter_t::set_oversampling_ratio(unsigned int oversampling_ratio)
{
    if (oversampling_ratio == 0) {
        std::cout << "lib_nr_baseband_filter_t::set_oversamping_ratio Report : Oversampling Ratio Must NOT be zero!"
                  << std::endl;
        return false;
    }
    m_oversampling_ratio = oversampling_ratio;
    return true;
}

void lib_nr_baseband_filter_t::set_numerology(lib_nr_numerology_type_t numerology) { m_numerology = numerology; }

void lib_nr_baseband_filter_t::set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    m_channel_bandwidth = bandwidth;
}

void lib_nr_baseband_filter_t::deal_baseband_filter(const std::vector<std::vector<sample_t>>& payload,
                                                    std::vector<sample_t>& signal)
{
    if (!m_enable)
        return;
    _search_guard_subcarrier_number({payload});
    _generate_baseband_filter();
    _apply_filter(signal);
}

void lib_nr_baseband_filter_t::filter_frame(const common_lib::lib_ofdm_payload_t& payload, sample_t* frame,
                                            std::size_t count, std::vector<sample_t>& head, std::vector<sample_t>& tail)
{
    head.clear();
    if (!m_enable)
        return;
    _search_guard_subcarrier_number(payload);
    _generate_baseband_filter();
    common_lib::lib_filter_t::filter_frame(m_coefficients, frame, count, head, tail);
}

void lib_nr_baseband_filter_t::deal_prach_baseband_filter(const std::vector<sample_t>& payload,
                                                          std::vector<sample_t>& signal)
{
    if (!m_enable)
        return;
    _search_prach_guard_subcarrier_number(payload);
    _generate_baseband_filter();
    _apply_filter(signal);
}

void lib_nr_baseband_filter_t::_search_guard_subcarrier_number(const common_lib::lib_ofdm_payload_t& payload)
{
    const std::vector<std::vector<sample_t>>& rows = payload.rows;
    m_low_guard_count = 0;
    m_high_guard_count = 0;
    if (rows.empty()) {
        std::cout << "lib_nr_baseband_filter_t::_search_guard_subcarrier_number Report: Empty Payload data!"
                  << std::endl;
        return;
    }
    const std::size_t row_length = rows.front().size();
    if (std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return row.size() != row_length; })) {
        std::cout << "lib_nr_baseband_filter_t::_search_guard_subcarrier_number Report: Subcarrier number is NOT equal!"
                  << std::endl;
        return;
    }
    // A subcarrier is empty when it is empty in every row: each row may only narrow what the rows before it left.
    m_low_guard_count = low_half(row_length);
    m_high_guard_count = high_half(row_length);
    for (std::size_t l = 0; l < rows.size(); ++l) {
        if (!payload.may_sound(l))
            continue;
        m_low_guard_count = count_low_guard(rows[l], m_low_guard_count);
        m_high_guard_count = count_high_guard(rows[l], m_high_guard_count);
    }
}

void lib_nr_baseband_filter_t::_search_prach_guard_subcarrier_number(const std::vector<sample_t>& payload)
{
    m_low_guard_count = 0;
    m_high_guard_count = 0;
    if (payload.empty()) {
        std::cout << "_search_guard_subcarrier_number::_search_guard_subcarrier_number Report: Empty Payload data!"
                  << std::endl;
        return;
    }
    m_low_guard_count = count_low_guard(payload, low_half(payload.size()));
    m_high_guard_count = count_high_guard(payload, high_half(payload.size()));
}

float lib_nr_baseband_filter_t::_get_minimum_guardband(lib_nr_numerology_type_t numerology,
                                                       lib_nr_channel_bw_type_t bandwidth)
{
    const auto kilohertz = get_minimum_guard_band_khz(numerology, bandwidth);
    if (!kilohertz) {
        std::cerr << "The minimum guard bandwidth was not found" << std::endl;
        return 0.0F;
    }
    return *kilohertz;
}

/// Frequencies here are fractions of half the sample rate, as the filter design takes them.
void lib_nr_baseband_filter_t::_generate_baseband_filter()
{
    m_coefficients.clear();
    const double fft_length =
        static_cast<double>(lib_nr_phy_common_t::get_fft_length(m_numerology, m_channel_bandwidth)) *
        m_oversampling_ratio;
    const double subcarrier_width = 2.0 / fft_length;
    const double half_number =
        0.5 * lib_nr_phy_common_t::get_subcarrier_total_number(m_numerology, m_channel_bandwidth);
    const double spacing = lib_nr_phy_common_t::get_scs_hz_value(m_numerology);

    const double guard = std::max(
        std::ceil(static_cast<double>(_get_minimum_guardband(m_numerology, m_channel_bandwidth)) * 1000.0 / spacing),
        k_minimum_guard_subcarriers);
    const double low_edge = (m_low_guard_count - half_number) * subcarrier_width - guard * subcarrier_width;
    const double high_edge = guard * subcarrier_width + (half_number - m_high_guard_count - 1.0) * subcarrier_width;
    const bool reaches_half_rate = low_edge <= -1.0 || high_edge >= 1.0;
    m_filter_design.set_cutoff_freq(reaches_half_rate ? 1.0 : std::max(std::fabs(low_edge), std::fabs(high_edge)));
    m_filter_design.generate_fir_filter();
    m_coefficients = m_filter_design.get_filter_data();
}

void lib_nr_baseband_filter_t::_apply_filter(std::vector<sample_t>& signal) const
{
    common_lib::lib_filter_t::deal_filter(m_coefficients, signal, static_cast<common_lib::lib_filter_delay_type_t>(1));
}

} // namespace vek::nr_mod_lib

#include "phy/lib_nr_prach_resource_manager.h"

#include "common/lib_bounded_cast.h"
#include "phy_common/lib_nr_phy_common.h"

#include <cmath>
#include <cstdint>

namespace vek::nr_mod_lib
{

namespace
{

constexpr double k_frame_ms = 10.0;
constexpr double k_reference_samples_per_ms = 30720.0;

/// Modulo the frame, never negative.
double within_frame(double ms)
{
    const double rest = std::fmod(ms, k_frame_ms);
    return rest < 0.0 ? rest + k_frame_ms : rest;
}

} // namespace

lib_nr_prach_resource_manager_t& lib_nr_prach_resource_manager_t::get_inst()
{
    static lib_nr_prach_resource_manager_t instance;
    return instance;
}

void lib_nr_prach_resource_manager_t::init_resource_mapping()
{
    _update_numbers();
    m_resource_mapping = {};
}

void lib_nr_prach_resource_manager_t::init_payload_mapping()
{
    _update_numbers();
    const auto columns = common_lib::bounded_cast<std::uint32_t>(m_param.subcarrier_total_number * m_param.ratio);
    m_payload_mapping.resize(m_param.row_number);
    for (auto& row : m_payload_mapping)
        row.assign(columns, 0.0);
}

void lib_nr_prach_resource_manager_t::set_resource_freq_param(const prach_resource_freq_param_t& param)
{
    m_resource_mapping.start_frequencies_hz.push_back(param.start_frequency_hz);
    m_resource_mapping.end_frequencies_hz.push_back(param.end_frequency_hz);
}

void lib_nr_prach_resource_manager_t::set_resource_time_param(const prach_resource_time_param_t& param)
{
    const double start = param.start_position / k_reference_samples_per_ms + param.time_offset_ms;
    double prefix = 0.0;
    if (param.first_row < param.cp_lengths.size() && param.sample_rate_hz > 0.0)
        prefix = param.cp_lengths[param.first_row] * 1000.0 / param.sample_rate_hz;
    const double repetitions = param.n_u * lib_nr_phy_common_t::get_prach_repetitions(param.format);
    m_resource_mapping.start_times_ms.push_back(within_frame(start));
    m_resource_mapping.end_times_ms.push_back(within_frame(start + prefix + repetitions / k_reference_samples_per_ms));
}

void lib_nr_prach_resource_manager_t::_update_numbers()
{
    m_param.subcarrier_total_number =
        lib_nr_phy_common_t::get_subcarrier_total_number(m_param.numerology, m_param.bandwidth);
}

} // namespace vek::nr_mod_lib

#include "common/lib_crest_factor_reduce_setting.h"

#include <algorithm>
#include <cmath>

namespace vek::common_lib
{

namespace
{

constexpr double k_default_rate = 7.68e6;
constexpr double k_default_target_db = 8.0;
constexpr unsigned int k_default_iterations = 20;
constexpr double k_default_percent = 100.0;
constexpr unsigned int k_default_block_size = 12288;
constexpr double k_largest_target_db = 30.0;
constexpr unsigned int k_most_iterations = 100;
constexpr double k_lowest_mask_db = -300.0;
constexpr double k_highest_mask_db = 100.0;

template <class value_t>
bool assign(value_t& stored, const value_t& value)
{
    if (stored == value)
        return false;
    stored = value;
    return true;
}

} // namespace

lib_crest_factor_reduce_setting_t::lib_crest_factor_reduce_setting_t() { init(k_default_rate, k_default_rate); }

void lib_crest_factor_reduce_setting_t::init(double sample_rate, double passband)
{
    m_enable = false;
    m_target_peak_to_average_power_ratio = k_default_target_db;
    m_max_iteration = k_default_iterations;
    m_cancel_percent = k_default_percent;
    m_signal_block_size = k_default_block_size;
    init_filter_mask_data(sample_rate, passband);
}

void lib_crest_factor_reduce_setting_t::init_filter_mask_data(double sample_rate, double passband)
{
    const double half = std::min(sample_rate, passband) / 2.0;
    if (!std::isfinite(sample_rate) || !std::isfinite(passband) || !(half > 0.0))
        return;
    m_filter_mask_data_arr = {{-half, 0.0}, {half, 0.0}};
}

bool lib_crest_factor_reduce_setting_t::set_enable(bool enable) { return assign(m_enable, enable); }

bool lib_crest_factor_reduce_setting_t::is_enable() const { return m_enable; }

bool lib_crest_factor_reduce_setting_t::set_target_peak_to_average_power_ratio(double ratio)
{
    if (std::isnan(ratio))
        return false;
    return assign(m_target_peak_to_average_power_ratio, std::clamp(ratio, 0.0, k_largest_target_db));
}

double lib_crest_factor_reduce_setting_t::get_target_peak_to_average_power_ratio() const
{
    return m_target_peak_to_average_power_ratio;
}

bool lib_crest_factor_reduce_setting_t::set_max_iteration(unsigned int iterations)
{
    return assign(m_max_iteration, std::min(iterations, k_most_iterations));
}

unsigned int lib_crest_factor_reduce_setting_t::get_max_iteration() const { return m_max_iteration; }

bool lib_crest_factor_reduce_setting_t::set_cancel_percent(double percent)
{
    if (std::isnan(percent))
        return false;
    return assign(m_cancel_percent, std::clamp(percent, 0.0, 100.0));
}

double lib_crest_factor_reduce_setting_t::get_cancel_percent() const { return m_cancel_percent; }

bool lib_crest_factor_reduce_setting_t::set_signal_block_size(unsigned int size)
{
    return assign(m_signal_block_size, size);
}

unsigned int lib_crest_factor_reduce_setting_t::get_signal_block_size() const { return m_signal_block_size; }

bool lib_crest_factor_reduce_setting_t::set_filter_mask_data_arr(const std::vector<std::pair<double, double>>& mask)
{
    std::vector<std::pair<double, double>> points;
    for (const auto& [frequency, level] : mask)
        if (std::isfinite(frequency) && std::isfinite(level))
            points.emplace_back(frequency, std::clamp(level, k_lowest_mask_db, k_highest_mask_db));
    std::stable_sort(points.begin(), points.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    return !points.empty() && assign(m_filter_mask_data_arr, points);
}

const std::vector<std::pair<double, double>>& lib_crest_factor_reduce_setting_t::get_filter_mask_data_arr() const
{
    return m_filter_mask_data_arr;
}

bool lib_crest_factor_reduce_setting_t::operator==(const lib_crest_factor_reduce_setting_t& other) const
{
    return m_enable == other.m_enable &&
           m_target_peak_to_average_power_ratio == other.m_target_peak_to_average_power_ratio &&
           m_max_iteration == other.m_max_iteration && m_cancel_percent == other.m_cancel_percent &&
           m_signal_block_size == other.m_signal_block_size && m_filter_mask_data_arr == other.m_filter_mask_data_arr;
}

} // namespace vek::common_lib

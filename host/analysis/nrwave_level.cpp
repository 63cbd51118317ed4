#include "host/analysis/nrwave_level.h"

namespace nrwave
{

namespace
{

/// 10 log10 of a ratio of powers; nothing where there is no power.
std::optional<double> db_of(double power, double reference)
{
    return power > 0.0 ? std::optional(10.0 * std::log10(power / reference)) : std::nullopt;
}

} // namespace

std::optional<double> level_t::peak_dbfs() const { return db_of(m_largest_component * m_largest_component, 1.0); }

std::optional<double> level_t::rms_dbfs() const { return db_of(m_power_sum, static_cast<double>(m_samples)); }

std::optional<double> level_t::papr_db() const
{
    return db_of(m_largest_power * static_cast<double>(m_samples), m_power_sum);
}

} // namespace nrwave

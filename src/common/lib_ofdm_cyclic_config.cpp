#include "common/lib_ofdm_cyclic_config.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace vek::common_lib
{

lib_ofdm_cyclic_config_t::lib_ofdm_cyclic_config_t(double factor) { set_default_cyclic_length_factor(factor); }

void lib_ofdm_cyclic_config_t::set_all_symbol_cyclic_prefix_length(double factor)
{
    m_specified_factors.clear();
    set_default_cyclic_length_factor(factor);
}

void lib_ofdm_cyclic_config_t::set_default_cyclic_length_factor(double factor)
{
    if (!std::isnan(factor))
        m_default_cyclic_length_factor = std::clamp(factor, 0.0, 1.0);
}

void lib_ofdm_cyclic_config_t::set_specified_config_arr(
    unsigned int symbol_number, const std::vector<lib_ofdm_cyclic_special_case_t>& special_cases)
{
    std::map<unsigned int, double> factors;
    for (const lib_ofdm_cyclic_special_case_t& special_case : special_cases)
        for (const unsigned int symbol : special_case.get_symbol_index_list())
            if (symbol < symbol_number)
                factors[symbol] = special_case.get_cyclic_length_factor();
    m_specified_factors.assign(factors.begin(), factors.end());
}

unsigned int lib_ofdm_cyclic_config_t::get_cyclic_length(unsigned int symbol, unsigned int fft_length) const
{
    const auto found =
        std::lower_bound(m_specified_factors.begin(), m_specified_factors.end(), symbol,
                         [](const auto& specified, unsigned int wanted) { return specified.first < wanted; });
    const bool is_specified = found != m_specified_factors.end() && found->first == symbol;
    const double factor = is_specified ? found->second : m_default_cyclic_length_factor;
    return static_cast<unsigned int>(std::llround(factor * static_cast<double>(fft_length)));
}

} // namespace vek::common_lib

#include "common/lib_ofdm_cyclic_special_case.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace vek::common_lib
{

void lib_ofdm_cyclic_special_case_t::set_symbol_index_list(unsigned int symbol_number,
                                                           const std::vector<unsigned int>& symbol_index_list)
{
    std::vector<unsigned int> kept;
    std::copy_if(symbol_index_list.begin(), symbol_index_list.end(), std::back_inserter(kept),
                 [symbol_number](unsigned int symbol) { return symbol < symbol_number; });
    m_symbol_index_list = std::move(kept);
}

void lib_ofdm_cyclic_special_case_t::set_cyclic_length_factor(double factor)
{
    if (!std::isnan(factor))
        m_cyclic_length_factor = std::clamp(factor, 0.0, 1.0);
}

} // namespace vek::common_lib

#pragma once

#include "common/nr_mod_lib_export.h"

#include <vector>

namespace vek::common_lib
{

/// Symbols of a frame whose cyclic extension differs from the others', and its length as a fraction of the useful
/// symbol.
class NR_MOD_LIB_EXPORT lib_ofdm_cyclic_special_case_t
{
public:
    /// Keeps the indices below `symbol_number`.
    void set_symbol_index_list(unsigned int symbol_number, const std::vector<unsigned int>& symbol_index_list);
    /// Limited to 0 to 1; NaN changes nothing.
    void set_cyclic_length_factor(double factor);

    const std::vector<unsigned int>& get_symbol_index_list() const { return m_symbol_index_list; }
    double get_cyclic_length_factor() const { return m_cyclic_length_factor; }

private:
    std::vector<unsigned int> m_symbol_index_list;
    double m_cyclic_length_factor = 0.0;
};

} // namespace vek::common_lib

#pragma once

#include "common/lib_ofdm_cyclic_special_case.h"
#include "common/nr_mod_lib_export.h"

#include <utility>
#include <vector>

namespace vek::common_lib
{

/// Lengths of the cyclic prefixes, or suffixes, of a frame's OFDM symbols, as fractions of the useful symbol: one for
/// all, and others for the symbols that differ. Factors are limited to 0 to 1; NaN changes nothing.
class NR_MOD_LIB_EXPORT lib_ofdm_cyclic_config_t
{
public:
    explicit lib_ofdm_cyclic_config_t(double factor);

    /// One length for every symbol; what differed before is forgotten.
    void set_all_symbol_cyclic_prefix_length(double factor);
    /// The length of the symbols that no special case names.
    void set_default_cyclic_length_factor(double factor);
    /// Replaces the special cases. Symbols from `symbol_number` on are left out; of two cases for a symbol the later
    /// one holds.
    void set_specified_config_arr(unsigned int symbol_number,
                                  const std::vector<lib_ofdm_cyclic_special_case_t>& special_cases);

    /// Samples of the extension of one symbol, at the rate at which the useful symbol has `fft_length` samples;
    /// rounded.
    unsigned int get_cyclic_length(unsigned int symbol, unsigned int fft_length) const;

private:
    double m_default_cyclic_length_factor = 0.0;
    std::vector<std::pair<unsigned int, double>> m_specified_factors; // ascending by symbol
};

} // namespace vek::common_lib

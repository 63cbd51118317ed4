#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <vector>

namespace vek::nr_mod_lib
{

/// Spreads the symbols of one or two code words over 1 to 8 layers, TS 38.211 Table 7.3.1.3-1. A second code word comes
/// with the fifth layer.
class NR_MOD_LIB_EXPORT lib_nr_dl_phy_layer_mapping_t
{
public:
    void set_layer_number(unsigned int layers) { m_layer_number = layers; }
    void set_cw1_symbol_number(unsigned int symbols) { m_cw1_symbol_number = symbols; }
    void set_cw2_symbol_number(unsigned int symbols) { m_cw2_symbol_number = symbols; }

    /// `layers` gets as many entries as there are layers; symbols are appended to what they hold. Symbols past the
    /// numbers set or past the last whole group of one for each layer are left out. Always true; more than 8 layers
    /// print "input layer error" and nothing is mapped.
    bool _dl_phy_pdsch_layer_mapping(const std::vector<std::vector<std::complex<double>>>& codewords,
                                     std::vector<std::vector<std::complex<double>>>& layers) const;

private:
    unsigned int m_layer_number = 1;
    unsigned int m_cw1_symbol_number = 0;
    unsigned int m_cw2_symbol_number = 0;
};

} // namespace vek::nr_mod_lib

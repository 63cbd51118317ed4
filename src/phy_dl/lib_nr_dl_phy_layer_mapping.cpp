#include "phy_dl/lib_nr_dl_phy_layer_mapping.h"

#include <algorithm>
#include <cstddef>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_most_layers = 8;
constexpr unsigned int k_most_layers_of_one_codeword = 4;

using symbols_t = std::vector<std::complex<double>>;

/// Deals the symbols of a code word out to `count` layers from `layer` on, one after the other.
void deal_out(const symbols_t& codeword, std::size_t symbol_number, symbols_t* layer, std::size_t count)
{
    const std::size_t groups = std::min(symbol_number, codeword.size()) / count;
    for (std::size_t l = 0; l < count; ++l) {
        const std::size_t first = layer[l].size();
        layer[l].resize(first + groups);
        for (std::size_t i = 0; i < groups; ++i)
            layer[l][first + i] = codeword[i * count + l];
    }
}

} // namespace

bool lib_nr_dl_phy_layer_mapping_t::_dl_phy_pdsch_layer_mapping(const std::vector<symbols_t>& codewords,
                                                                std::vector<symbols_t>& layers) const
{
    if (m_layer_number > k_most_layers) {
        std::cout << "input layer error" << std::endl;
        return true;
    }
    layers.resize(m_layer_number);
    const bool has_two_codewords = m_layer_number > k_most_layers_of_one_codeword;
    const unsigned int first_share = has_two_codewords ? m_layer_number / 2 : m_layer_number;
    if (first_share > 0 && !codewords.empty())
        deal_out(codewords[0], m_cw1_symbol_number, layers.data(), first_share);
    if (has_two_codewords && codewords.size() > 1)
        deal_out(codewords[1], m_cw2_symbol_number, layers.data() + first_share, m_layer_number - first_share);
    return true;
}

} // namespace vek::nr_mod_lib

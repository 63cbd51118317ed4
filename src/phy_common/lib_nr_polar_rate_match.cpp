#include "phy_common/lib_nr_polar_rate_match.h"

#include "phy_common/tables/polar_tables.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_max_output_length = 8192;

} // namespace

bool lib_nr_polar_rate_match_t::set_i_bil(unsigned int i_bil)
{
    if (i_bil > 1)
        return false;
    m_i_bil = i_bil == 1;
    return true;
}

bool lib_nr_polar_rate_match_t::set_rate_match_output_length(unsigned int output_length)
{
    if (output_length > k_max_output_length) {
        std::cout << "lib_nr_polar_rate_match_t::set_rate_match_output_length Report: Input Parameter Out of Range!"
                  << std::endl;
        return false;
    }
    m_e = output_length;
    return true;
}

void lib_nr_polar_rate_match_t::set_polar_coding_input_lentgh(unsigned int input_length) { m_k = input_length; }

void lib_nr_polar_rate_match_t::genreate_subblock_interleave_sequence(unsigned int coded_length,
                                                                      std::vector<unsigned int>& out)
{
    const auto& pattern = polar_subblock_interleaver();
    const unsigned int block_length = coded_length / 32;
    out.clear();
    if (coded_length % 32 != 0)
        return;
    out.reserve(coded_length);
    for (const unsigned int block : pattern)
        for (unsigned int i = 0; i < block_length; ++i)
            out.push_back(block * block_length + i);
}

bool lib_nr_polar_rate_match_t::deal_rate_matching(const std::vector<unsigned char>& in,
                                                   std::vector<unsigned char>& out)
{
    if (m_e < m_k) {
        out.clear();
        std::cout << "lib_nr_dl_phy_polor_rate_match_t::deal_rate_matching Report: Rate Matching Output Length is Too "
                     "Short!"
                  << std::endl;
        return false;
    }
    if (!_check_input_data_length(in.size())) {
        out.clear();
        std::cout
            << "lib_nr_dl_phy_polor_rate_match_t::deal_rate_matching Report: Unexpected Input Bit Sequence Length!"
            << std::endl;
        return false;
    }
    std::vector<unsigned char> interleaved;
    std::vector<unsigned char> selected;
    _deal_subblock_interleave(in, interleaved);
    _deal_bit_selection(interleaved, selected);
    return _deal_coded_bit_interleaving(selected, out);
}

bool lib_nr_polar_rate_match_t::_check_input_data_length(std::size_t length)
{
    return length >= 32 && (length & (length - 1)) == 0;
}

// J(n) moves whole blocks of N / 32 bits.
void lib_nr_polar_rate_match_t::_deal_subblock_interleave(const std::vector<unsigned char>& in,
                                                          std::vector<unsigned char>& out)
{
    const std::size_t block_length = in.size() / 32;
    out.resize(in.size());
    auto target = out.begin();
    for (const std::size_t block : polar_subblock_interleaver())
        target = std::copy_n(in.begin() + static_cast<std::ptrdiff_t>(block * block_length), block_length, target);
}

// TS 38.212 clause 5.4.1.2.
void lib_nr_polar_rate_match_t::_deal_bit_selection(const std::vector<unsigned char>& in,
                                                    std::vector<unsigned char>& out) const
{
    const std::size_t coded_length = in.size();
    out.resize(m_e);
    if (m_e >= coded_length) { // repetition
        for (std::size_t k = 0; k < m_e; k += coded_length)
            std::copy_n(in.begin(), std::min<std::size_t>(coded_length, m_e - k),
                        out.begin() + static_cast<std::ptrdiff_t>(k));
        return;
    }
    const bool puncturing = std::uint64_t{16} * m_k <= std::uint64_t{7} * m_e; // else shortening
    const std::size_t first = puncturing ? coded_length - m_e : 0;
    std::copy_n(in.begin() + static_cast<std::ptrdiff_t>(first), m_e, out.begin());
}

// TS 38.212 clause 5.4.1.3: written by rows into a triangle of side T, read by columns.
bool lib_nr_polar_rate_match_t::_deal_coded_bit_interleaving(const std::vector<unsigned char>& in,
                                                             std::vector<unsigned char>& out) const
{
    if (in.size() != m_e) {
        std::cout
            << "lib_nr_polar_rate_match_t::_deal_coded_bit_interleaving Report : Unexpected Input Sequence Length!"
            << std::endl;
        return false;
    }
    if (!m_i_bil) {
        out = in;
        return true;
    }
    const auto side = static_cast<std::size_t>(std::ceil((std::sqrt(8.0 * m_e + 1.0) - 1.0) / 2.0));
    out.clear();
    out.reserve(m_e);
    for (std::size_t column = 0; column < side; ++column) {
        std::size_t cell = column;
        for (std::size_t row = 0; row < side - column && cell < m_e; ++row) {
            out.push_back(in[cell]);
            cell += side - row; // row r has side - r cells
        }
    }
    return true;
}

} // namespace vek::nr_mod_lib

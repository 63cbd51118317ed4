#include "phy_common/lib_nr_small_block_channel_coding.h"

#include "common/lib_bit_packing.h"
#include "common/lib_common_container.h"
#include "phy_common/tables/lib_nr_small_block_basis_table.h"

#include <array>
#include <bit>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

// Placeholders of TS 38.212 clause 5.3.3.
constexpr unsigned char k_placeholder_y = 254;
constexpr unsigned char k_placeholder_x = 255;

// A row of the basis with M(i, n) in bit n.
std::array<std::uint32_t, 32> pack_basis()
{
    std::array<std::uint32_t, 32> rows{};
    const auto& table = lib_nr_small_block_basis_table();
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t n = 0; n < table[i].size(); ++n)
            rows[i] |= static_cast<std::uint32_t>(table[i][n]) << n;
    return rows;
}

} // namespace

bool lib_nr_small_block_channel_coding_t::set_modulation_order(unsigned int order)
{
    if (order != 1 && order != 2 && order != 4 && order != 6 && order != 8) {
        std::cout << "lib_nr_small_block_channel_coding_t::set_modulation_order Report : Invalid Modulation Order!"
                  << std::endl;
        return false;
    }
    m_modulation_order = order;
    return true;
}

bool lib_nr_small_block_channel_coding_t::deal_small_block_channel_coding(const std::vector<unsigned char>& in,
                                                                          std::vector<unsigned char>& out)
{
    // Built apart, since `out` is emptied also when it is `in`.
    std::vector<unsigned char> coded;
    bool result = false;
    if (in.empty() || in.size() > 11)
        std::cout << "lib_nr_small_block_channel_coding_t::deal_small_block_channel_coding Report : Input Sequence "
                     "Length out of range!"
                  << std::endl;
    else if (in.size() == 1)
        result = _deal_repetition_coding(in, coded);
    else if (in.size() == 2)
        result = _deal_simplex_coding(in, coded);
    else
        result = _deal_reed_muller_coding(in, coded);
    out = std::move(coded);
    return result;
}

bool lib_nr_small_block_channel_coding_t::_deal_repetition_coding(const std::vector<unsigned char>& in,
                                                                  std::vector<unsigned char>& out) const
{
    out.clear();
    if (in.size() != 1) {
        std::cout << "lib_nr_small_block_channel_coding_t::_deal_repetition_coding Report : Invalid Input Sequence "
                     "Length!"
                  << std::endl;
        return false;
    }
    out.assign(m_modulation_order, k_placeholder_x);
    out[0] = in[0];
    if (m_modulation_order > 1)
        out[1] = k_placeholder_y;
    return true;
}

bool lib_nr_small_block_channel_coding_t::_deal_simplex_coding(const std::vector<unsigned char>& in,
                                                               std::vector<unsigned char>& out) const
{
    out.clear();
    if (in.size() != 2) {
        std::cout << "lib_nr_small_block_channel_coding_t::_deal_simplex_coding Report : Invalid Input Sequence Length!"
                  << std::endl;
        return false;
    }
    const unsigned char c0 = in[0];
    const unsigned char c1 = in[1];
    const auto c2 = static_cast<unsigned char>((c0 + c1) % 2);
    if (m_modulation_order == 1) {
        out = {c0, c1, c2};
        return true;
    }
    std::vector<std::vector<unsigned char>> groups = {{c0, c1}, {c2, c0}, {c1, c2}};
    for (auto& group : groups)
        group.resize(m_modulation_order, k_placeholder_x);
    common_lib::lib_common_container_t::combine_vector(groups, out);
    return true;
}

bool lib_nr_small_block_channel_coding_t::_deal_reed_muller_coding(const std::vector<unsigned char>& in,
                                                                   std::vector<unsigned char>& out) const
{
    static const std::array<std::uint32_t, 32> basis = pack_basis();
    const auto bits = static_cast<std::uint32_t>(common_lib::pack_word(in.data(), in.size()));
    out.resize(basis.size());
    for (std::size_t i = 0; i < basis.size(); ++i)
        out[i] = static_cast<unsigned char>(std::popcount(basis[i] & bits) % 2);
    return true;
}

const std::vector<std::vector<unsigned char>>& get_reed_muller_basis_sequence_vector()
{
    static const std::vector<std::vector<unsigned char>> rows = [] {
        std::vector<std::vector<unsigned char>> list;
        for (const auto& row : lib_nr_small_block_basis_table())
            list.emplace_back(row.begin(), row.end());
        return list;
    }();
    return rows;
}

} // namespace vek::nr_mod_lib

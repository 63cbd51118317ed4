#include "phy_common/lib_nr_ldpc_coding_calculation.h"

#include "common/lib_bit_packing.h"
#include "phy_common/lib_nr_ldpc_packed_rows.h"

#include <algorithm>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_core_rows = 4;

// Bits that the input lacks are zeros.
std::vector<std::uint64_t> pack_with_margin(const std::vector<unsigned char>& bits, std::size_t bit_count)
{
    std::vector<std::uint64_t> words(std::max(bit_count, bits.size()) / 64 + 2);
    common_lib::pack_bits(bits.data(), bits.size(), words.data());
    return words;
}

void unpack_rows(const lib_nr_ldpc_row_layout_t& layout, const std::vector<std::uint64_t>& rows, std::size_t row_count,
                 std::vector<unsigned char>& out)
{
    out.resize(row_count * layout.z);
    for (std::size_t row = 0; row < row_count; ++row)
        common_lib::unpack_bits(rows.data() + row * layout.words, layout.z, out.data() + row * layout.z);
}

} // namespace

void deal_ldpc_base_matrix_multiply(const std::vector<std::vector<int>>& matrix, const std::vector<unsigned char>& in,
                                    unsigned int z, std::vector<unsigned char>& out)
{
    if (matrix.empty()) {
        std::cout << "lib_nr_ldpc_coding_calculation.cpp::deal_matrix_multiply : Empty Matrix!" << std::endl;
        out.clear();
        return;
    }
    std::size_t column_count = 0;
    for (const auto& row : matrix)
        column_count = std::max(column_count, row.size());
    if (column_count * z != in.size())
        std::cout << "lib_nr_ldpc_coding_calculation.cpp::deal_matrix_multiply : Input Vector Length Not Match!"
                  << std::endl;
    if (z == 0) {
        out.clear();
        return;
    }

    const lib_nr_ldpc_row_layout_t layout(z);
    const std::vector<std::uint64_t> bits = pack_with_margin(in, column_count * z);
    std::vector<std::uint64_t> doubled(column_count * layout.doubled_words);
    for (std::size_t column = 0; column < column_count; ++column)
        lib_nr_ldpc_double_row(layout, bits.data(), column * z, doubled.data() + column * layout.doubled_words);

    std::vector<lib_nr_ldpc_term_t> terms;
    std::vector<std::uint32_t> term_ends;
    for (const auto& row : matrix) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (row[column] == -1)
                continue;
            const std::int64_t rest = row[column] % std::int64_t{z};
            const auto rotation = static_cast<unsigned int>(rest < 0 ? rest + z : rest);
            terms.push_back(lib_nr_ldpc_rotated_row(layout, static_cast<unsigned int>(column), rotation));
        }
        term_ends.push_back(static_cast<std::uint32_t>(terms.size()));
    }
    std::vector<std::uint64_t> rows(matrix.size() * layout.words);
    lib_nr_ldpc_sum_rows(layout, terms.data(), 0, term_ends.data(), static_cast<unsigned int>(matrix.size()),
                         doubled.data(), rows.data());
    unpack_rows(layout, rows, matrix.size(), out);
}

void deal_ldpc_core_matrix_solution(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int set_index, unsigned int z,
                                    const std::vector<unsigned char>& s, std::vector<unsigned char>& core)
{
    if (base_graph != LIB_NR_LDPC_BASE_GRAPH_1 && base_graph != LIB_NR_LDPC_BASE_GRAPH_2) {
        std::cout << "lib_nr_ldpc_coding_calculation.cpp::deal_ldpc_core_matrix_solution Report : Unknown Base Graph "
                     "Type!"
                  << std::endl;
        core.clear();
        return;
    }
    if (set_index > 7) {
        std::cout << "lib_nr_ldpc_coding_calculation.cpp::deal_ldpc_core_matrix_solution Report : Unknown Lifting Size "
                     "Set!"
                  << std::endl;
        core.clear();
        return;
    }
    const std::size_t length = std::size_t{k_core_rows} * z;
    if (s.size() != length) {
        // Graph 1 has a form of its own for set 6; the forms of graph 2 go by the same name.
        const bool is_type_0 = base_graph == LIB_NR_LDPC_BASE_GRAPH_1 && set_index != 6;
        std::cout << "lib_nr_ldpc_coding_calculation.cpp::deal_ldpc_core_matrix_solution_for_type_"
                  << (is_type_0 ? "0" : "1") << " Report : Input Vector Size Error!" << std::endl;
        core.clear();
        return;
    }
    if (z == 0) {
        core.clear();
        return;
    }

    const lib_nr_ldpc_row_layout_t layout(z);
    const std::vector<std::uint64_t> bits = pack_with_margin(s, length);
    std::vector<std::uint64_t> doubled(layout.doubled_words);
    std::vector<std::uint64_t> rows(k_core_rows * std::size_t{layout.words});
    std::vector<std::uint64_t> parity(k_core_rows * std::size_t{layout.words});
    for (std::size_t row = 0; row < k_core_rows; ++row) {
        lib_nr_ldpc_double_row(layout, bits.data(), row * z, doubled.data());
        std::copy_n(doubled.data(), layout.words, rows.data() + row * layout.words);
    }
    lib_nr_ldpc_solve_core(base_graph, set_index, layout, rows.data(), parity.data(), doubled.data());
    unpack_rows(layout, parity, k_core_rows, core);
}

} // namespace vek::nr_mod_lib

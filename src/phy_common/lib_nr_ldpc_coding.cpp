#include "phy_common/lib_nr_ldpc_coding.h"

#include "common/lib_bit_packing.h"
#include "phy_common/lib_nr_ldpc_packed_rows.h"
#include "phy_common/tables/lib_nr_ldpc_base_graph_table.h"
#include "phy_common/tables/lib_nr_ldpc_lifting_size_table.h"

#include <algorithm>
#include <iostream>
#include <span>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_core_rows = 4;
constexpr unsigned int k_untransmitted_columns = 2;

unsigned int get_information_columns(lib_nr_ldpc_base_graph_type_t base_graph)
{
    return base_graph == LIB_NR_LDPC_BASE_GRAPH_2 ? 10 : 22;
}

bool is_known(lib_nr_ldpc_base_graph_type_t base_graph)
{
    return base_graph == LIB_NR_LDPC_BASE_GRAPH_1 || base_graph == LIB_NR_LDPC_BASE_GRAPH_2;
}

std::span<const lib_nr_ldpc_base_graph_row_t> get_base_graph_table(lib_nr_ldpc_base_graph_type_t base_graph)
{
    if (base_graph == LIB_NR_LDPC_BASE_GRAPH_2)
        return lib_nr_ldpc_base_graph_2_table();
    return lib_nr_ldpc_base_graph_1_table();
}

} // namespace

/// A base matrix made ready for one lifting size: each row's blocks as places among the doubled information and core
/// parity rows. The identity behind them is left out, since it only says which parity row a sum is.
struct lib_nr_ldpc_coding_t::encoding_plan_t
{
    encoding_plan_t(unsigned int set, const base_matrix_t& matrix, unsigned int information_columns, unsigned int z)
        : set_index(set), layout(z)
    {
        for (std::size_t row = 0; row < matrix.size(); ++row) {
            const unsigned int columns = row < k_core_rows ? information_columns : information_columns + k_core_rows;
            for (const auto& [column, shift] : matrix[row])
                if (column < columns)
                    terms.push_back(lib_nr_ldpc_rotated_row(layout, column, shift % z));
            term_ends.push_back(static_cast<std::uint32_t>(terms.size()));
        }
    }

    unsigned int set_index;
    lib_nr_ldpc_row_layout_t layout;
    std::vector<lib_nr_ldpc_term_t> terms;
    std::vector<std::uint32_t> term_ends; // by row
};

lib_nr_ldpc_coding_t::lib_nr_ldpc_coding_t()
{
    _init_nr_ldpc_lifting_size_map();
    _init_nr_ldpc_base_matrix_data(LIB_NR_LDPC_BASE_GRAPH_1);
    _init_nr_ldpc_base_matrix_data(LIB_NR_LDPC_BASE_GRAPH_2);
    _update_lifting_size_set_index();
    _update_data_length();
}

void lib_nr_ldpc_coding_t::set_base_graph_type(lib_nr_ldpc_base_graph_type_t base_graph)
{
    m_base_graph = base_graph;
    _update_data_length();
}

bool lib_nr_ldpc_coding_t::deal_ldpc_coding(const std::vector<unsigned char>& in, std::vector<unsigned char>& out)
{
    if (!_set_input_data_length(in.size())) {
        std::cout << "lib_nr_ldpc_coding_t::deal_ldpc_coding Report : Input Data Length Error!" << std::endl;
        return false;
    }
    lib_nr_ldpc_packed_parity_t parity;
    _generate_parity_check_bit_data(in, parity);
    _combine_parity_check_data(in, parity, out);
    return true;
}

unsigned int lib_nr_ldpc_coding_t::get_ldpc_coding_input_data_length(lib_nr_ldpc_base_graph_type_t base_graph,
                                                                     unsigned int z)
{
    if (!is_known(base_graph)) {
        std::cout << "lib_nr_ldpc_coding_calculation.cpp::_deal_ldpc_base_matrix_division Report : Unknown LDPC Base "
                     "Graph Type!"
                  << std::endl;
        return 0;
    }
    return get_information_columns(base_graph) * z;
}

unsigned int lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length(lib_nr_ldpc_base_graph_type_t base_graph)
{
    if (!is_known(base_graph)) {
        std::cout << "lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length Report : Unknown LDPC Base Graph Type!"
                  << std::endl;
        return 0;
    }
    return base_graph == LIB_NR_LDPC_BASE_GRAPH_1 ? 66 : 50;
}

unsigned int lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length(lib_nr_ldpc_base_graph_type_t base_graph,
                                                                      unsigned int z)
{
    return get_ldpc_coding_output_data_length(base_graph) * z;
}

unsigned int lib_nr_ldpc_coding_t::get_min_lifting_size_value(unsigned int minimum)
{
    const std::vector<unsigned int>& sizes = _get_sorted_lifting_size_list();
    const auto found = std::lower_bound(sizes.begin(), sizes.end(), minimum);
    if (found == sizes.end()) {
        std::cout << "lib_nr_ldpc_coding_t::get_min_ldpc_lifting_size Report : Input Parameter is out of range!"
                  << std::endl;
        return 0;
    }
    return *found;
}

bool lib_nr_ldpc_coding_t::check_lifting_size_value(unsigned int z)
{
    const std::vector<unsigned int>& sizes = _get_sorted_lifting_size_list();
    return std::binary_search(sizes.begin(), sizes.end(), z);
}

const lib_nr_ldpc_coding_t::lifting_size_map_t& lib_nr_ldpc_coding_t::_init_nr_ldpc_lifting_size_map()
{
    static const lifting_size_map_t sizes_by_set = [] {
        lifting_size_map_t map;
        unsigned int set_index = 0;
        for (const auto& sizes : lib_nr_ldpc_lifting_size_table()) {
            const auto end = std::find(sizes.begin(), sizes.end(), 0);
            map[set_index++].assign(sizes.begin(), end);
        }
        return map;
    }();
    return sizes_by_set;
}

const std::vector<unsigned int>& lib_nr_ldpc_coding_t::_get_sorted_lifting_size_list()
{
    static const std::vector<unsigned int> sorted_sizes = [] {
        std::vector<unsigned int> list;
        for (const auto& [set_index, sizes] : _init_nr_ldpc_lifting_size_map())
            list.insert(list.end(), sizes.begin(), sizes.end());
        std::sort(list.begin(), list.end());
        return list;
    }();
    return sorted_sizes;
}

const lib_nr_ldpc_coding_t::base_matrix_store_t&
lib_nr_ldpc_coding_t::_init_nr_ldpc_base_matrix_data(lib_nr_ldpc_base_graph_type_t base_graph)
{
    const auto build = [](std::span<const lib_nr_ldpc_base_graph_row_t> table) {
        base_matrix_store_t store;
        for (unsigned int set_index = 0; set_index < 8; ++set_index) {
            base_matrix_t& matrix = store[set_index];
            matrix.resize(table.back().row + 1u);
            for (const lib_nr_ldpc_base_graph_row_t& edge : table)
                matrix[edge.row].emplace_back(edge.column, edge.shift[set_index]);
        }
        return store;
    };
    static const base_matrix_store_t store_1 = build(get_base_graph_table(LIB_NR_LDPC_BASE_GRAPH_1));
    static const base_matrix_store_t store_2 = build(get_base_graph_table(LIB_NR_LDPC_BASE_GRAPH_2));
    return base_graph == LIB_NR_LDPC_BASE_GRAPH_2 ? store_2 : store_1;
}

const lib_nr_ldpc_coding_t::base_matrix_t&
lib_nr_ldpc_coding_t::_get_base_matrix(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int set_index)
{
    if (!is_known(base_graph)) {
        std::cout << "lib_nr_ldpc_coding.cpp::get_base_matrix Report : Unknown Base Graph Type!" << std::endl;
        return _init_nr_ldpc_base_matrix_data(LIB_NR_LDPC_BASE_GRAPH_1).at(0);
    }
    return _init_nr_ldpc_base_matrix_data(base_graph).at(set_index);
}

unsigned int lib_nr_ldpc_coding_t::_get_ldpc_parity_check_bit_number(lib_nr_ldpc_base_graph_type_t base_graph,
                                                                     unsigned int z)
{
    if (!is_known(base_graph)) {
        std::cout << "lib_nr_ldpc_coding_t::get_ldpc_parity_check_bit_number Report : Unknown LDPC Base Graph Type!"
                  << std::endl;
        return 0;
    }
    return (base_graph == LIB_NR_LDPC_BASE_GRAPH_1 ? 46 : 42) * z;
}

const lib_nr_ldpc_coding_t::encoding_plan_t&
lib_nr_ldpc_coding_t::_get_encoding_plan(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int z)
{
    using plans_t = std::map<unsigned int, encoding_plan_t>;
    const auto build = [](lib_nr_ldpc_base_graph_type_t graph) {
        plans_t plans;
        for (const auto& [set_index, sizes] : _init_nr_ldpc_lifting_size_map())
            for (const unsigned int size : sizes)
                plans.try_emplace(size, set_index, _get_base_matrix(graph, set_index), get_information_columns(graph),
                                  size);
        return plans;
    };
    static const plans_t plans_1 = build(LIB_NR_LDPC_BASE_GRAPH_1);
    static const plans_t plans_2 = build(LIB_NR_LDPC_BASE_GRAPH_2);
    return (base_graph == LIB_NR_LDPC_BASE_GRAPH_2 ? plans_2 : plans_1).at(z);
}

bool lib_nr_ldpc_coding_t::_set_input_data_length(std::size_t length)
{
    const unsigned int columns = get_ldpc_coding_input_data_length(m_base_graph, 1);
    if (columns == 0 || length % columns != 0) {
        std::cout << "lib_nr_ldpc_coding_t::_update_input_data_length Report : Illegal input data length!" << std::endl;
        return false;
    }
    if (length > std::size_t{columns} * k_ldpc_max_lifting_size ||
        !_set_lifting_size(static_cast<unsigned int>(length / columns)))
    {
        std::cout << "lib_nr_ldpc_coding_t::_update_input_data_length Report : Illegal lifting size!" << std::endl;
        return false;
    }
    return true;
}

bool lib_nr_ldpc_coding_t::_set_lifting_size(unsigned int z)
{
    if (!check_lifting_size_value(z))
        return false;
    m_lifting_size = z;
    _update_lifting_size_set_index();
    _update_data_length();
    return true;
}

void lib_nr_ldpc_coding_t::_update_lifting_size_set_index()
{
    for (const auto& [set_index, sizes] : _init_nr_ldpc_lifting_size_map()) {
        if (std::binary_search(sizes.begin(), sizes.end(), m_lifting_size)) {
            m_lifting_size_set_index = set_index;
            return;
        }
    }
}

void lib_nr_ldpc_coding_t::_update_data_length()
{
    m_parity_check_bit_number = _get_ldpc_parity_check_bit_number(m_base_graph, m_lifting_size);
    m_output_data_length = get_ldpc_coding_output_data_length(m_base_graph, m_lifting_size);
}

void lib_nr_ldpc_coding_t::_generate_parity_check_bit_data(const std::vector<unsigned char>& in,
                                                           lib_nr_ldpc_packed_parity_t& parity) const
{
    std::array<std::uint64_t, 22 * k_ldpc_max_lifting_size / 64 + 2> bits;
    common_lib::pack_bits_with_fillers(in.data(), in.size(), bits.data());
    bits[(in.size() + 63) / 64] = 0;
    encode_words(m_base_graph, m_lifting_size, bits.data(), k_core_rows, k_ldpc_max_parity_rows, parity);
}

void lib_nr_ldpc_coding_t::encode_words(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int z,
                                        const std::uint64_t* block, unsigned int first_row, unsigned int end_row,
                                        lib_nr_ldpc_packed_parity_t& parity)
{
    const encoding_plan_t& plan = _get_encoding_plan(base_graph, z);
    const lib_nr_ldpc_row_layout_t& layout = plan.layout;
    const std::size_t columns = get_information_columns(base_graph);
    const auto doubled_row = [&](auto& doubled, std::size_t column) {
        return doubled.data() + column * layout.doubled_words;
    };

    std::array<std::uint64_t, std::size_t{k_ldpc_max_doubled_rows} * 2 * k_ldpc_max_row_words> doubled;
    for (std::size_t column = 0; column < columns; ++column)
        lib_nr_ldpc_double_row(layout, block, column * layout.z, doubled_row(doubled, column));

    std::array<std::uint64_t, k_core_rows * k_ldpc_max_row_words> s;
    lib_nr_ldpc_sum_rows(layout, plan.terms.data(), 0, plan.term_ends.data(), k_core_rows, doubled.data(), s.data());
    lib_nr_ldpc_solve_core(base_graph, plan.set_index, layout, s.data(), parity.words.data(),
                           doubled_row(doubled, columns));

    const unsigned int begin = std::max(first_row, k_core_rows);
    const unsigned int end = std::min(end_row, static_cast<unsigned int>(plan.term_ends.size()));
    if (begin >= end)
        return;
    for (std::size_t row = 0; row < k_core_rows; ++row)
        lib_nr_ldpc_double_row(layout, parity.words.data() + row * layout.words, 0,
                               doubled_row(doubled, columns + row));
    lib_nr_ldpc_sum_rows(layout, plan.terms.data(), plan.term_ends[begin - 1], plan.term_ends.data() + begin,
                         end - begin, doubled.data(), parity.words.data() + std::size_t{begin} * layout.words);
}

void lib_nr_ldpc_coding_t::_combine_parity_check_data(const std::vector<unsigned char>& in,
                                                      const lib_nr_ldpc_packed_parity_t& parity,
                                                      std::vector<unsigned char>& out) const
{
    const lib_nr_ldpc_row_layout_t layout(m_lifting_size);
    const std::size_t information_length = in.size();
    const std::size_t untransmitted_length = std::size_t{k_untransmitted_columns} * m_lifting_size;
    // Where both are one vector it grows, so that the block stays in front; the copy runs towards the front.
    out.resize(m_output_data_length);
    const auto first = in.begin() + static_cast<std::ptrdiff_t>(untransmitted_length);
    const auto last = in.begin() + static_cast<std::ptrdiff_t>(information_length);
    std::copy(first, last, out.begin());
    unsigned char* bits = out.data() + (information_length - untransmitted_length);
    const unsigned int row_count = m_parity_check_bit_number / m_lifting_size;
    for (std::size_t row = 0; row < row_count; ++row)
        common_lib::unpack_bits(parity.words.data() + row * layout.words, layout.z, bits + row * layout.z);
}

} // namespace vek::nr_mod_lib

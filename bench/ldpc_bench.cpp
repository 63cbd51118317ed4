// LDPC encoding through the interface of one bit per byte, packing and unpacking counted, beside two byte-wise ways
// of doing it; and the way of a whole transport block. The encoders' argument is the base graph, 1 or 2, at Z = 384.
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_ldpc_code_block_segmentation.h"
#include "phy_common/lib_nr_ldpc_coding.h"
#include "phy_common/lib_nr_ldpc_rate_match.h"
#include "phy_common/tables/lib_nr_ldpc_base_graph_table.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using bits_t = std::vector<unsigned char>;

constexpr std::size_t k_z = 384;
constexpr std::size_t k_set = 1; // the one that has Z = 384

bits_t random_bits(std::size_t count)
{
    std::mt19937 random(1);
    bits_t bits(count);
    for (unsigned char& bit : bits)
        bit = static_cast<unsigned char>(random() & 1u);
    return bits;
}

void count_bits(benchmark::State& state, std::size_t bits_per_iteration)
{
    state.counters["bit/s"] =
        benchmark::Counter(static_cast<double>(bits_per_iteration), benchmark::Counter::kIsIterationInvariantRate);
}

void ldpc_encode(benchmark::State& state)
{
    lib_nr_ldpc_coding_t coder;
    coder.set_base_graph_type(state.range(0) == 1 ? LIB_NR_LDPC_BASE_GRAPH_1 : LIB_NR_LDPC_BASE_GRAPH_2);
    const bits_t in = random_bits((state.range(0) == 1 ? 22 : 10) * k_z);
    bits_t out;
    for (auto _ : state) {
        coder.deal_ldpc_coding(in, out);
        benchmark::DoNotOptimize(out.data());
    }
    count_bits(state, in.size());
}

// A block of bytes, rotated, added to a row: by the definition, and in two runs, of which the compiler makes vectors.
struct add_by_index_t
{
    void operator()(const unsigned char* block, std::size_t shift, unsigned char* sum) const
    {
        for (std::size_t k = 0; k < k_z; ++k)
            sum[k] ^= block[(k + shift) % k_z];
    }
};

struct add_by_runs_t
{
    void operator()(const unsigned char* block, std::size_t shift, unsigned char* sum) const
    {
        for (std::size_t k = 0; k < k_z - shift; ++k)
            sum[k] ^= block[k + shift];
        for (std::size_t k = k_z - shift; k < k_z; ++k)
            sum[k] ^= block[k + shift - k_z];
    }
};

// Row by row over the table's edges.
template <class add_t, class edges_t>
void encode_byte_wise(const edges_t& edges, std::size_t information_columns, const bits_t& in, bits_t& word)
{
    constexpr add_t add;
    const std::size_t first_parity = information_columns * k_z;
    std::copy(in.begin(), in.end(), word.begin());
    std::fill(word.begin() + static_cast<std::ptrdiff_t>(first_parity), word.end(), static_cast<unsigned char>(0));

    bits_t sums(4 * k_z);
    for (const auto& edge : edges)
        if (edge.row < 4 && edge.column < information_columns)
            add(word.data() + edge.column * k_z, edge.shift[k_set] % k_z, sums.data() + edge.row * k_z);
    // The sum of the core's rows leaves p0, shifted by its entry that stands alone: 0 in graph 1, 1 in graph 2.
    const bool is_graph_1 = information_columns == 22;
    unsigned char* const p = word.data() + first_parity;
    for (std::size_t row = 0; row < 4; ++row)
        add(sums.data() + row * k_z, is_graph_1 ? 0 : k_z - 1, p);
    for (std::size_t row = 0; row < 3; ++row) {
        unsigned char* const next = p + (row + 1) * k_z;
        add(sums.data() + row * k_z, 0, next);
        if (row > 0)
            add(p + row * k_z, 0, next);
        for (const auto& edge : edges)
            if (edge.row == row && edge.column == information_columns)
                add(p, edge.shift[k_set] % k_z, next);
    }
    for (const auto& edge : edges)
        if (edge.row >= 4 && edge.column < information_columns + 4)
            add(word.data() + edge.column * k_z, edge.shift[k_set] % k_z, p + edge.row * k_z);
}

template <class add_t>
void ldpc_encode_byte_wise(benchmark::State& state)
{
    const bool is_graph_1 = state.range(0) == 1;
    const std::size_t columns = is_graph_1 ? 22 : 10;
    const bits_t in = random_bits(columns * k_z);
    bits_t word((columns + (is_graph_1 ? 46 : 42)) * k_z);
    for (auto _ : state) {
        if (is_graph_1)
            encode_byte_wise<add_t>(lib_nr_ldpc_base_graph_1_table(), columns, in, word);
        else
            encode_byte_wise<add_t>(lib_nr_ldpc_base_graph_2_table(), columns, in, word);
        benchmark::DoNotOptimize(word.data());
    }
    // A reference that makes another word measures nothing.
    lib_nr_ldpc_coding_t coder;
    coder.set_base_graph_type(is_graph_1 ? LIB_NR_LDPC_BASE_GRAPH_1 : LIB_NR_LDPC_BASE_GRAPH_2);
    bits_t out;
    coder.deal_ldpc_coding(in, out);
    if (!std::equal(out.begin(), out.end(), word.begin() + 2 * k_z, word.end()))
        state.SkipWithError("the words differ");
    count_bits(state, in.size());
}

// One slot of 273 resource blocks, 13 symbols of data, 256QAM at rate 948/1024, by bits of payload.
void ldpc_transport_block(benchmark::State& state)
{
    constexpr unsigned int k_elements = 273 * 12 * 13;
    constexpr unsigned int k_order = 8;
    const bits_t payload = random_bits(
        lib_nr_ldpc_code_block_segmentation_t::get_transport_block_size(k_elements, k_order, 1, 948.0 / 1024));
    bits_t transport_block;
    std::vector<bits_t> blocks;
    std::vector<bits_t> matched;
    bits_t coded;
    for (auto _ : state) {
        lib_nr_crc_calculator_t crc;
        crc.set_crc_type(LIB_NR_CRC_TYPE_24A);
        crc.deal_crc_attachment(payload, transport_block);
        lib_nr_ldpc_code_block_segmentation_t segmentation;
        segmentation.deal_code_block_segmentation(transport_block, blocks);
        std::vector<bits_t> words(blocks.size());
        lib_nr_ldpc_coding_t coder;
        for (std::size_t i = 0; i < blocks.size(); ++i)
            coder.deal_ldpc_coding(blocks[i], words[i]);
        lib_nr_ldpc_rate_match_t rate_match;
        rate_match.set_c(static_cast<unsigned int>(words.size()));
        rate_match.set_q_m(k_order);
        rate_match.set_g(k_elements * k_order);
        rate_match.deal_rate_match(words, matched);
        coded.clear();
        for (const bits_t& block : matched)
            coded.insert(coded.end(), block.begin(), block.end());
        benchmark::DoNotOptimize(coded.data());
    }
    if (coded.size() != k_elements * k_order)
        state.SkipWithError("a wrong length");
    count_bits(state, payload.size());
}

BENCHMARK(ldpc_encode)->Arg(1)->Arg(2);
BENCHMARK(ldpc_encode_byte_wise<add_by_index_t>)->Arg(1)->Arg(2);
BENCHMARK(ldpc_encode_byte_wise<add_by_runs_t>)->Arg(1)->Arg(2);
BENCHMARK(ldpc_transport_block);

} // namespace

#include "phy_dl/lib_nr_dl_phy_layer_mapping.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace
{

using namespace vek::nr_mod_lib;

TEST(lib_nr_dl_phy_layer_mapping, every_number_of_layers_takes_turns_on_its_codeword)
{
    using symbols_t = std::vector<std::complex<double>>;
    // Layer by layer: its code word and its turn, TS 38.211 Table 7.3.1.3-1.
    const std::vector<std::vector<std::pair<unsigned int, unsigned int>>> rows = {
        {{0, 0}},
        {{0, 0}, {0, 1}},
        {{0, 0}, {0, 1}, {0, 2}},
        {{0, 0}, {0, 1}, {0, 2}, {0, 3}},
        {{0, 0}, {0, 1}, {1, 0}, {1, 1}, {1, 2}},
        {{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}, {1, 2}},
        {{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}, {1, 2}, {1, 3}},
        {{0, 0}, {0, 1}, {0, 2}, {0, 3}, {1, 0}, {1, 1}, {1, 2}, {1, 3}},
    };
    std::vector<symbols_t> codewords(2);
    for (int i = 0; i < 13; ++i) {
        codewords[0].emplace_back(i, 0);
        codewords[1].emplace_back(i, 1);
    }
    for (const auto& row : rows) {
        std::vector<symbols_t> layers(1, symbols_t{{-1, -1}});
        lib_nr_dl_phy_layer_mapping_t mapper;
        mapper.set_layer_number(static_cast<unsigned int>(row.size()));
        mapper.set_cw1_symbol_number(13);
        mapper.set_cw2_symbol_number(11);
        mapper._dl_phy_pdsch_layer_mapping(codewords, layers);
        ASSERT_EQ(layers.size(), row.size());
        for (std::size_t l = 0; l < row.size(); ++l) {
            const auto [codeword, turn] = row[l];
            const auto shares =
                std::count_if(row.begin(), row.end(), [word = codeword](auto r) { return r.first == word; });
            symbols_t expected(l == 0 ? 1 : 0, {-1, -1});
            for (long i = 0; i < (codeword == 0 ? 13 : 11) / shares; ++i)
                expected.emplace_back(i * shares + turn, codeword);
            EXPECT_EQ(layers[l], expected) << row.size() << " layers, " << l;
        }
    }
}

} // namespace

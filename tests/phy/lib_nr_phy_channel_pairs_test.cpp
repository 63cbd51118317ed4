#include "phy/lib_nr_phy.h"
#include "support/captured_output.h"
#include "support/settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

// What channels do to one another where they meet in the grid.

namespace
{

using namespace vek::nr_mod_lib;
using grid_t = lib_nr_channel_resource_manager_t;
using owner_t = lib_nr_channel_resource_mapping_type_t;
using steps_t = std::vector<std::string>;

/// A channel that meets the others in symbol 5 of slot 0; `list` is its list, with a place for the index.
struct channel_t
{
    owner_t owner;
    const char* list;
    steps_t settings;
};

void append_steps(const channel_t& channel, bool again, steps_t& steps)
{
    const std::string list = std::string("carrier[0].") + channel.list;
    if (again)
        steps.push_back("add " + list);
    for (const std::string& setting : channel.settings)
        steps.push_back(list +
                        (channel.owner == LIB_NR_RESOURCE_MAPPING_SSB ? "."
                         : again                                      ? "[1]."
                                                                      : "[0].") +
                        setting);
}

/// Generates one frame into the grid; false at a conflict.
bool generate(const steps_t& steps)
{
    const nr_test::waveform_of_t waveform(steps);
    const nr_test::captured_output_t silence;
    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    return engine.nr_phy_process();
}

/// In the order of the engine. A pair that gets along leaves the first its cells and symbols, and what else is written
/// is marked as the second's; any other pair is a conflict.
void expect_pairs(const steps_t& carrier, const std::vector<channel_t>& channels,
                  const std::vector<std::pair<owner_t, owner_t>>& that_get_along)
{
    grid_t& grid = grid_t::get_inst();
    for (std::size_t a = 0; a < channels.size(); ++a)
        for (std::size_t b = a; b < channels.size(); ++b) {
            const auto [first, second] = std::pair(channels[a].owner, channels[b].owner);
            if (a == b && first == LIB_NR_RESOURCE_MAPPING_SSB)
                continue; // a carrier has one
            SCOPED_TRACE(std::string(channels[a].list) + " and " + channels[b].list);
            steps_t steps = carrier;
            append_steps(channels[a], false, steps);
            ASSERT_TRUE(generate(steps));
            const grid_t::payload_map_t alone = grid.get_payload_mapping();
            const grid_t::resource_map_t owners = grid.get_resource_mapping();
            append_steps(channels[b], a == b, steps);
            const bool gets_along = std::find(that_get_along.begin(), that_get_along.end(), std::pair(first, second)) !=
                                    that_get_along.end();
            ASSERT_EQ(generate(steps), gets_along);
            if (!gets_along) {
                const lib_nr_resource_conflict_t conflict = grid.get_conflicts().at(0);
                EXPECT_EQ(conflict.owner, first);
                EXPECT_EQ(conflict.newcomer, second);
                EXPECT_EQ(conflict.newcomer_entry, a == b ? 1u : 0u);
                EXPECT_EQ(conflict.symbol, 5u);
                continue;
            }
            std::size_t written = 0;
            for (const auto& [l, row] : owners)
                for (const auto& [k, owner] : row) {
                    const std::complex<double> symbol = grid.get_payload_mapping()[l][k];
                    if (owner == first && a != b)
                        ASSERT_TRUE(grid.get_owner(l, k) == first && symbol == alone[l][k]) << l << ", " << k;
                    else if (symbol != 0.0) {
                        ASSERT_EQ(grid.get_owner(l, k), second) << l << ", " << k;
                        ++written;
                    }
                }
            EXPECT_NE(written, 0u);
        }
}

TEST(lib_nr_phy_channel_pairs, meet_as_told)
{
    const steps_t symbols = {"symbol_offset=5", "symbol_number=LIB_NR_PRS_SYMBOL_NUMBER_4", "enable=true"};
    const steps_t type_b = {"mapping_type=LIB_NR_DMRS_MAPPING_TYPEB", "first_symbol=5", "symbol_num=7", "enable=true"};
    const std::string narrow = "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M";
    expect_pairs({narrow, "carrier[0].baseband_filter=false"},
                 {{LIB_NR_RESOURCE_MAPPING_SSB, "dl_ssb", {"active_idx=0", "enable=true"}},
                  {LIB_NR_RESOURCE_MAPPING_CSIRS, "dl_csirs", {"l0=5", "enable=true"}},
                  {LIB_NR_RESOURCE_MAPPING_PRS, "dl_prs", symbols},
                  {LIB_NR_RESOURCE_MAPPING_PDCCH, "dl_dci", {"start_symbol_within_slot=5", "enable=true"}},
                  {LIB_NR_RESOURCE_MAPPING_PDSCH, "dl_pdsch", type_b}},
                 {{LIB_NR_RESOURCE_MAPPING_SSB, LIB_NR_RESOURCE_MAPPING_PRS},
                  {LIB_NR_RESOURCE_MAPPING_SSB, LIB_NR_RESOURCE_MAPPING_PDSCH},
                  {LIB_NR_RESOURCE_MAPPING_CSIRS, LIB_NR_RESOURCE_MAPPING_PDSCH}});
    expect_pairs({"carrier[0].carrier_type=LIB_NR_UPLINK", narrow, "carrier[0].baseband_filter=false"},
                 {{LIB_NR_RESOURCE_MAPPING_PUCCH, "ul_pucch", {"first_symbol=5", "enable=true"}},
                  {LIB_NR_RESOURCE_MAPPING_PUSCH, "ul_pusch", type_b},
                  {LIB_NR_RESOURCE_MAPPING_SRS, "ul_srs", {"l_offset=8", "enable=true"}}},
                 {{LIB_NR_RESOURCE_MAPPING_PUCCH, LIB_NR_RESOURCE_MAPPING_PUCCH}});
}

} // namespace

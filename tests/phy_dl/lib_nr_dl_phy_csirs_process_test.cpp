#include "phy_dl/lib_nr_dl_phy_csirs_process.h"

#include "receiver/gold_sequence.h"
#include "support/generated.h"
#include "support/settings.h"
#include "support/test_grid.h"

#include <gtest/gtest.h>

#include <bitset>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;

constexpr unsigned int k_frames = 2;

/// The shape of a row of TS 38.211 Table 7.4.1.5.3-1: its CDM groups are as many places in frequency as the bitmap
/// gives, times as many in time as the ports then need.
struct shape_t
{
    unsigned int ports;
    unsigned int k_primes;
    unsigned int l_primes;
    unsigned int ones;
    unsigned int subcarriers_per_bit;
};
constexpr std::array<shape_t, 18> k_shapes = {{{1, 1, 1, 1, 1},
                                               {1, 1, 1, 1, 1},
                                               {2, 2, 1, 1, 2},
                                               {4, 2, 1, 1, 4},
                                               {4, 2, 1, 1, 2},
                                               {8, 2, 1, 4, 2},
                                               {8, 2, 1, 2, 2},
                                               {8, 2, 2, 2, 2},
                                               {12, 2, 1, 6, 2},
                                               {12, 2, 2, 3, 2},
                                               {16, 2, 1, 4, 2},
                                               {16, 2, 2, 4, 2},
                                               {24, 2, 1, 3, 2},
                                               {24, 2, 2, 3, 2},
                                               {24, 2, 4, 3, 2},
                                               {32, 2, 1, 4, 2},
                                               {32, 2, 2, 4, 2},
                                               {32, 2, 4, 4, 2}}};

struct cell_map_t
{
    nr_test::rows_t values;
    std::vector<std::vector<bool>> marks;
};

/// Clause 7.4.1.5.3 evaluated for each cell of one slot; by the own rules resource blocks are placed from the BWP and
/// come in fours, and zero power is sent.
void add_resource(const cfg_nr_dl_csirs_t& csirs, const cfg_nr_dl_bwp_t& bwp, double density, bool standard_rules,
                  cell_map_t& cells)
{
    const unsigned int row = csirs.get_table_idx();
    const shape_t& shape = k_shapes[row - 1];
    const unsigned int slot_symbols = bwp.get_cp_type() == LIB_NR_EXTEND_CP ? 12 : 14;
    const unsigned int frame_symbols = static_cast<unsigned int>(cells.values.size()) / k_frames;
    const auto slot = static_cast<unsigned int>(std::stoul(csirs.get_slot_allocation()));

    std::vector<unsigned int> k_bars;
    for (unsigned int i = 0; k_bars.size() < shape.ones; ++i)
        if (csirs.get_frequency_domain_bitmap()[i] == '1')
            k_bars.push_back(shape.subcarriers_per_bit * i);
    if (row == 1)
        k_bars = {k_bars[0], k_bars[0] + 4, k_bars[0] + 8};
    if (row == 4)
        k_bars.push_back(k_bars[0] + 2);
    std::vector<unsigned int> l_bars = {csirs.get_l0()};
    const std::size_t group = shape.k_primes * shape.l_primes;
    if (shape.l_primes == 1 && shape.ports > k_bars.size() * group)
        l_bars.push_back(csirs.get_l0() + 1);
    if (shape.ports > k_bars.size() * l_bars.size() * group) {
        l_bars.push_back(csirs.get_l1());
        if (shape.l_primes == 1)
            l_bars.push_back(csirs.get_l1() + 1);
    }

    const unsigned int port = csirs.get_antenna_port().front() - CSIRS_ANTENNA_PORT0;
    const std::uint64_t n_id = csirs.get_nid();
    unsigned int first = std::max(bwp.get_bwp_rb_start(), csirs.get_rb_offset());
    const unsigned int rbs = std::min(csirs.get_rb_num(), bwp.get_bwp_rb_start() + bwp.get_bwp_rb_size() - first);
    const unsigned int end = first + (standard_rules ? rbs : rbs / 4 * 4);
    const unsigned int origin = standard_rules ? 0 : bwp.get_bwp_rb_start();
    const bool odd = csirs.get_density_prb_allocation() == ODD_PRBS;
    for (unsigned int j = 0; j < k_bars.size() * l_bars.size(); ++j)
        for (unsigned int l_prime = 0; l_prime < shape.l_primes; ++l_prime) {
            const unsigned int k_bar = k_bars[j % k_bars.size()];
            const unsigned int symbol = slot_symbols * slot + l_bars[j / k_bars.size()] + l_prime;
            if (symbol / frame_symbols != slot_symbols * slot / frame_symbols)
                continue;
            const std::uint64_t in_frame = symbol % frame_symbols;
            const auto bits = nr_test::gold_sequence(
                static_cast<std::uint32_t>((1024 * (in_frame + 1) * (2 * n_id + 1) + n_id) % (1ull << 31)), 0, 400);
            for (unsigned int n = first; n < end; ++n)
                for (unsigned int k_prime = 0; k_prime < shape.k_primes; ++k_prime) {
                    if (density == 0.5 && n % 2 != (odd ? 1 : 0))
                        continue;
                    const unsigned int k = 12 * (n - origin) + k_bar + k_prime;
                    cells.marks[symbol][k] = true;
                    if ((row != 1 && port / group != j) || (standard_rules && csirs.get_zero_power()))
                        continue;
                    const auto m = static_cast<std::size_t>(n * density * (shape.ports == 1 ? 1 : 2)) + k_prime +
                                   static_cast<std::size_t>(k_bar * density / 12);
                    const bool minus = std::bitset<3>(port % group & (k_prime + 2 * l_prime)).count() % 2 != 0;
                    cells.values[symbol][k] += std::complex<double>(1 - 2 * bits[2 * m], 1 - 2 * bits[2 * m + 1]) *
                                               std::sqrt(0.5) * (minus ? -1.0 : 1.0) *
                                               std::pow(10.0, csirs.get_power_bosting() / 20);
                }
        }
}

// Each port in a slot of its own, everything else at random.
TEST(lib_nr_dl_phy_csirs_process, every_row_density_and_port_arrives_where_the_standard_puts_it)
{
    std::mt19937 random(1);
    const auto below = [&](unsigned int limit) { return static_cast<unsigned int>(random() % limit); };
    const auto text = [&](unsigned int limit) { return std::to_string(below(limit)); };
    const std::vector<std::string> normal = {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M"};
    const std::vector<std::string> extended = {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_40M",
                                               "carrier[0].numerology=LIB_NR_SCS_60K",
                                               "carrier[0].dl_bwp[0].cp_type=LIB_NR_EXTEND_CP"};
    for (unsigned int row = 1; row <= k_shapes.size(); ++row)
        for (const std::string density : {"0.5", "1", "0.3"}) {
            const shape_t& shape = k_shapes[row - 1];
            nr_test::waveform_of_t waveform(density == "0.3" ? extended : normal);
            nr_test::take(waveform, {"frame_number=2", "standard_rules=" + text(2), "carrier[0].baseband_filter=false",
                                     "carrier[0].dl_bwp[1].bwp_rb_start=" + text(14)});
            cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
            const auto setup = nr_test::setup_of(waveform.get_waveform_manager());
            const unsigned int width = 12 * carrier.get_numerology(0)->get_rb_size();
            const std::size_t symbols = k_frames * setup.symbols_in_frame();
            cell_map_t cells{nr_test::rows_t(symbols, nr_test::signal_t(width)),
                             std::vector<std::vector<bool>>(symbols, std::vector<bool>(width))};
            const unsigned int last_slot = k_frames * (10u << setup.mu) - 1;
            for (unsigned int i = 0; i < std::max(shape.ports, 4u); ++i) {
                const std::string csirs = "carrier[0].dl_csirs[" + std::to_string(i) + "].";
                if (i > 0)
                    nr_test::take(waveform, {"add carrier[0].dl_csirs"});
                const unsigned int l0 =
                    1 + below(14 - shape.l_primes); // what a slot before sends in its symbol 14 is not met
                const unsigned int l1 = l0 < 7 ? l0 + 2 + below(3) : l0 - 2 - below(3);
                nr_test::take(
                    waveform,
                    {csirs + "table_idx=" + std::to_string(row),
                     csirs + "antenna_port=CSIRS_ANTENNA_PORT" + std::to_string(i % shape.ports),
                     csirs + "one_frame_period=false",
                     csirs + "slot_allocation=" + std::to_string(last_slot - i * (setup.extended_prefix ? 2 : 1)),
                     csirs + "nid=" + text(65536), csirs + "rb_offset=" + text(24), csirs + "rb_num=" + text(52),
                     csirs + "l0=" + std::to_string(l0), csirs + "l1=" + std::to_string(l1),
                     csirs + "density=" + density,
                     csirs + "frequency_domain_bitmap=" + std::bitset<12>(random()).to_string(),
                     csirs + "density_prb_allocation=" + (below(2) ? "ODD_PRBS" : "EVEN_PRBS"),
                     csirs + "power_bosting=" + text(3), csirs + "zero_power=" + text(2), csirs + "enable=true"});
                const bool halved = density == "0.5" && carrier.get_dl_csirs(static_cast<int>(i))->get_density() == 0.5;
                add_resource(*carrier.get_dl_csirs(static_cast<int>(i)), *carrier.get_dl_bwp(1),
                             row == 1 ? 3.0
                             : halved ? 0.5
                                      : 1.0,
                             setup.standard_rules, cells);
            }
            const nr_test::generated_t generated = nr_test::generate(waveform);
            nr_test::rows_t received;
            for (unsigned int frame = 0; frame < k_frames; ++frame)
                for (const auto& symbol : nr_test::demodulate_frame(generated.samples, setup, width, 0.0, frame))
                    received.push_back(symbol);
            EXPECT_LT(nr_test::error_vector_magnitude(received, cells.values), 1e-6) << row << ", density " << density;
            const auto& grid = lib_nr_channel_resource_manager_t::get_inst();
            for (std::size_t l = symbols / 2; l < symbols; ++l)
                for (unsigned int k = 0; k < width; ++k)
                    ASSERT_EQ(grid.get_owner(static_cast<unsigned int>(l - symbols / 2), k) ==
                                  LIB_NR_RESOURCE_MAPPING_CSIRS,
                              cells.marks[l][k])
                        << row << ", " << l << ", " << k;
        }
}

// What the façade does not let through.
TEST(lib_nr_dl_phy_csirs_process, a_direct_caller_hears_of_what_cannot_be_sent)
{
    nr_test::test_grid_t grid(LIB_NR_SCS_30K, 51, LIB_NR_CHANNEL_FR1_20M);
    lib_nr_waveform_configure_manager_t waveform;
    waveform.get_carrier(0).get_dl_csirs(0).set_enable(true, LIB_NR_SCS_30K);
    lib_nr_dl_phy_csirs_process_t process;
    process.set_waveform_config(0, 0, 0, waveform);
    process.set_bwp_rb_size(22);
    process.set_antenna_port({CSIRS_ANTENNA_NONE, CSIRS_ANTENNA_PORT0});
    EXPECT_TRUE(process.nr_dl_phy_csirs_re_map(0, LIB_NR_REMAPP_MODE_UI_VIEW_MAP));
    EXPECT_EQ(grid.count_marks(LIB_NR_RESOURCE_MAPPING_CSIRS), 24u * 4) << "all ports of row 4";
    EXPECT_TRUE(process.csirs_process(0));
    EXPECT_EQ(grid.count_symbols(), 0u) << "a list that begins with none sends nothing";
    EXPECT_FALSE(process.nr_dl_phy_csirs_re_map(20, LIB_NR_REMAPP_MODE_UI_VIEW_MAP)) << "past the frame";
    EXPECT_FALSE(process.nr_dl_phy_csirs_re_map(0, static_cast<lib_nr_remap_mode_t>(2)));
    process.set_csirs_type(static_cast<csirs_cdm_type_t>(4));
    EXPECT_FALSE(process.csirs_process(0));
    process.set_table_idx(19);
    EXPECT_FALSE(process.csirs_process(0));
    const std::string range = "error: m_rb_num should greater than min\xE2\x81\xA1(24,m_bwp_rb_size)! irb_num:20\n";
    EXPECT_EQ(grid.output(),
              range + range + range +
                  "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : symbol index in frame out of range\n"
                  "lib_nr_dl_phy_csirs_process_t::nr_dl_phy_csirs_re_map : Error RE map mode!\n"
                  "csirs_wt_wf_init error!.\n\n"
                  "get_fi_from_bitmap occur error: table_index exceed the max limit.\n\n");
    process.set_enable(false);
    EXPECT_FALSE(process.csirs_process(0));
}

} // namespace

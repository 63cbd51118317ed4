#include "phy_common/lib_nr_phy_common.h"
#include "phy_ul/lib_nr_ul_phy_srs_process.h"

#include "config/leaves/cfg_nr_leaf.h"
#include "phy_common/tables/lib_nr_srs_bandwidth_table.h"
#include "receiver/low_papr.h"
#include "support/generated.h"
#include "support/settings.h"
#include "support/test_grid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <random>
#include <string>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using srs_t = lib_nr_ul_srs_configure_manager_t;

/// A slot of TS 38.211 clause 6.4.1.4, [symbol of the slot][subcarrier], or with what this system does its own way.
nr_test::rows_t expected_slot(const cfg_nr_waveform_t& waveform, unsigned int frame, unsigned int slot,
                              unsigned int slots, unsigned int slot_symbols, unsigned int width)
{
    const srs_t& srs = waveform.get_waveform_manager().get_carrier(0).get_ul_srs(0);
    const bool standard = waveform.get_standard_rules();
    const unsigned int bwp_start = waveform.get_waveform_manager().get_carrier(0).get_ul_bwp(0).get_rb_offset();
    const auto& bandwidth = lib_nr_srs_bandwidth_table()[srs.get_c_srs()];
    nr_test::rows_t rows(slot_symbols, nr_test::signal_t(width));
    const unsigned int comb = srs.get_Ktc_number();
    const unsigned int port = srs.get_antenna_port().front() - 1;
    const unsigned int ports = srs.get_port_number();
    const unsigned int n_max = comb == 2 ? 8 : comb == 4 ? 12 : 6;
    const unsigned int shift =
        srs.get_n_SRS_cs() + (ports == 4 && n_max == 6 ? n_max * (port / 2) / (ports / 2) : n_max * port / ports);
    const auto m_of = [&](unsigned int b) { return bandwidth.m_srs[b]; };
    const unsigned int band = 12u * m_of(srs.get_b_srs());
    const unsigned int length = band / comb / srs.get_p_f();
    const std::vector<std::vector<unsigned int>> combs = {{0, 1}, {0, 2, 1, 3}, {0, 4, 2, 6, 1, 5, 3, 7}};
    for (unsigned int l = 0; l < static_cast<unsigned int>(srs.get_N_symb_srs()); ++l) {
        const int symbol = static_cast<int>(slot_symbols + l) - 1 - srs.get_l_offset();
        if (symbol < 0)
            continue;
        const unsigned int in_frame = slot_symbols * slot + static_cast<unsigned int>(symbol);
        unsigned int u = srs.get_n_ID_SRS();
        unsigned int v = 0;
        if (srs.get_GroupOrSeqHop() == 1)
            u += nr_test::hopping_number(srs.get_n_ID_SRS(), 8 * in_frame, 8);
        else if (srs.get_GroupOrSeqHop() == 2 && (standard ? length : band / comb) >= 72)
            v = nr_test::hopping_number(srs.get_n_ID_SRS(), in_frame, 1);

        unsigned int hops = l / srs.get_srs_repetition_factor();
        if (const unsigned int period = srs.get_srs_periodity())
            hops += (slots * frame + slot - srs.get_t_offset()) / period *
                    (static_cast<unsigned int>(srs.get_N_symb_srs()) / srs.get_srs_repetition_factor());
        unsigned int first = 12u * srs.get_n_shift() + srs.get_k_f() * band / srs.get_p_f();
        if (standard && srs.get_n_shift() < bwp_start)
            first += 12u * bwp_start;
        for (unsigned int b = 0; b <= srs.get_b_srs(); ++b) {
            const auto n_of = [&](unsigned int level) -> double {
                return level == srs.get_b_hop() ? 1 : bandwidth.n[level];
            };
            double moved = 0;
            if (b > srs.get_b_hop()) {
                double rounds = 1;
                for (unsigned int level = srs.get_b_hop(); level < b; ++level)
                    rounds *= n_of(level);
                const double whole = rounds * n_of(b);
                moved = std::fmod(n_of(b), 2.0) == 0 ? n_of(b) / 2 * std::floor(std::fmod(hops, whole) / rounds) +
                                                           std::floor(std::fmod(hops, whole) / (2 * rounds))
                                                     : std::floor(n_of(b) / 2) * std::floor(hops / rounds);
            }
            const unsigned int number = bandwidth.n[b];
            first += 12u * m_of(b) * ((static_cast<unsigned int>(moved) + 4u * srs.get_n_RRC() / m_of(b)) % number);
        }
        unsigned int offset = srs.get_ktc_offset();
        if (ports == 4 && (port == 1 || port == 3) && (n_max == 6 || srs.get_n_SRS_cs() >= n_max / 2))
            offset += comb / 2;
        const auto& pattern = combs[comb == 2 ? 0 : comb == 4 ? 1 : 2];
        const unsigned int symbols = srs.get_N_symb_srs();
        if (srs.get_pos_resource() && symbols >= comb / 2 && symbols <= (comb == 2 ? 4 : 12))
            offset += pattern[l % pattern.size()];

        const auto base = nr_test::low_papr_type_1(u % 30, v, length);
        for (unsigned int n = 0; n < length; ++n)
            if (const unsigned int k = first + offset % comb + n * comb; k < width)
                rows[static_cast<unsigned int>(symbol)][k] =
                    std::pow(ports, standard ? -0.5 : 0.5) * std::pow(10.0, srs.get_power_bosting() / 20) * base[n] *
                    std::polar(1.0, 2 * std::numbers::pi * static_cast<double>(n * shift % n_max) / n_max);
    }
    return rows;
}

/// Random settings of an SRS, through the rows of its façade.
void draw(cfg_nr_waveform_t& waveform, std::mt19937& random)
{
    const auto& carrier = *find_row(g_cfg_nr_waveform_table.branches, "carrier");
    const auto& table = *find_row(carrier.facade->branches, "ul_srs")->facade;
    for (const cfg_nr_leaf_t* leaf : table.leaves_in_recall_order()) {
        cfg_nr_ul_srs_t* const srs = waveform.get_carrier(0)->get_ul_srs(0);
        std::vector<std::string> values = leaf->has_offer() ? leaf->on_offer(srs) : leaf->enumerators();
        if (values.empty())
            values = {"0", "1", "2", "3", "5", "8", std::to_string(random() % 11), std::to_string(random() % 70)};
        leaf->write(srs, values[random() % values.size()]);
    }
}

// Every row and column of the bandwidth table with either prefix, all else at random.
TEST(lib_nr_ul_phy_srs_process, fills_and_marks_the_cells_of_the_standard_with_its_sequences)
{
    const nr_test::captured_output_t silence;
    std::mt19937 random(38211);
    for (const auto& [numerology, rbs, cp_type] :
         {std::tuple(LIB_NR_SCS_15K, 270u, LIB_NR_NORMAL_CP), std::tuple(LIB_NR_SCS_60K, 65u, LIB_NR_EXTEND_CP)})
    {
        nr_test::waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK",
                                         "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_50M",
                                         "carrier[0].ul_bwp[0].rb_offset=8"});
        waveform.get_carrier(0)->set_numerology(numerology);
        waveform.get_carrier(0)->set_prach_cp_type(cp_type);
        nr_test::test_grid_t grid(numerology, rbs, LIB_NR_CHANNEL_FR1_50M, cp_type);
        const unsigned int slot_symbols = lib_nr_phy_common_t::get_symbol_number_in_slot(numerology, cp_type);
        const unsigned int slots = lib_nr_phy_common_t::get_slot_in_frame(numerology);
        unsigned int sent = 0;
        for (unsigned int setting = 0; setting < 512; ++setting) {
            draw(waveform, random);
            waveform.set_standard_rules(random() % 2 == 0);
            nr_test::take(waveform, {"carrier[0].ul_srs[0].c_srs=" + std::to_string(setting / 4 % 64),
                                     "carrier[0].ul_srs[0].b_srs=" + std::to_string(setting % 4),
                                     "carrier[0].ul_srs[0].enable=true"});
            const srs_t& srs = waveform.get_waveform_manager().get_carrier(0).get_ul_srs(0);
            const auto frame = static_cast<unsigned int>(random() % 4);
            lib_nr_ul_phy_srs_process_t process;
            process.set_waveform_config(0, frame, 0, 0, waveform.get_waveform_manager());
            grid.clear();
            for (const int listed : srs.get_slot_allocation()) {
                const auto slot = static_cast<unsigned int>(listed);
                ASSERT_TRUE(process.srs_process(slot));
                process.nr_ul_phy_srs_re_map(slot, LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
                const auto expected = expected_slot(waveform, frame, slot, slots, slot_symbols, 12 * rbs);
                for (unsigned int l = 0; l < slot_symbols; ++l)
                    for (unsigned int k = 0; k < 12 * rbs; ++k) {
                        ASSERT_LT(std::abs(grid.symbol_at(slot * slot_symbols + l, k) - expected[l][k]), 1e-9)
                            << "setting " << setting << ", symbol " << l << ", subcarrier " << k;
                        ASSERT_EQ(grid.grid().get_owner(slot * slot_symbols + l, k) == LIB_NR_RESOURCE_MAPPING_SRS,
                                  expected[l][k] != 0.0);
                    }
                ++sent;
            }
        }
        EXPECT_GT(sent, 256u);
    }
}

// With a period of 8 slots the list holds slots 3, 11 and 19; by the own rule only every second frame of 20 slots
// begins a period.
TEST(lib_nr_ul_phy_srs_process, is_sent_where_the_period_and_by_the_own_rule_the_list_have_the_slot)
{
    const std::string at = "carrier[0].ul_srs[0].";
    nr_test::waveform_of_t waveform(
        {"frame_number=3", "carrier[0].carrier_type=LIB_NR_UPLINK", "carrier[0].baseband_filter=false",
         "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M", at + "srs_periodity=LIB_NR_SRS_8MS_PERIODICITY",
         at + "t_offset=3", at + "c_srs=12", at + "b_srs=2", at + "n_RRC=3",
         at + "N_symb_srs=LIB_NR_N_SYMB_SRS_VALUE_4", at + "srs_repetition_factor=LIB_NR_REPETITION_FACTOR_2",
         at + "GroupOrSeqHop=1", at + "enable=true"});
    const auto& srs = waveform.get_waveform_manager().get_carrier(0).get_ul_srs(0);
    ASSERT_EQ(srs.get_slot_allocation(), (std::vector{3, 11, 19}));
    std::filesystem::remove("../srs_result.csv");
    nr_test::generated_t generated;
    for (const bool standard : {true, false}) {
        waveform.set_standard_rules(standard);
        generated = nr_test::generate(waveform);
        std::complex<double> gain;
        for (unsigned int frame = 0; frame < 3; ++frame) {
            nr_test::rows_t expected(280, nr_test::signal_t(612));
            for (unsigned int slot = 0; slot < 20; ++slot)
                if ((20 * frame + slot + 8 - 3) % 8 == 0 && (frame != 1 || standard)) {
                    const auto rows = expected_slot(waveform, frame, slot, 20, 14, 612);
                    std::copy(rows.begin(), rows.end(), expected.begin() + 14 * slot);
                }
            const auto received = nr_test::demodulate_frame(generated.samples, generated.setup, 612, 0.0, frame);
            if (frame == 0)
                gain = nr_test::fitted_gain(received, expected);
            for (unsigned int l = 0; l < 280; ++l)
                for (unsigned int k = 0; k < 612; ++k)
                    ASSERT_LT(std::abs(received[l][k] - gain * expected[l][k]), 1e-9) << frame << ' ' << l;
        }
    }
    // The trace holds the last slot sent: four symbols of 48 values each.
    std::ifstream trace("../srs_result.csv");
    const std::string text(std::istreambuf_iterator<char>(trace), {});
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3 + 2 * 4 + 4 * 48);
}

} // namespace

#include "config/cfg_nr_waveform.h"
#include "phy_common/lib_nr_phy_common.h"
#include "receiver/bits.h"
#include "support/generated.h"
#include "support/preset_choices.h"
#include "support/settings.h"
#include "support/shared_channel.h"
#include "support/test_grid.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;

/// The rules of the allocations, each by its letter: N resource blocks and a third T of them, W for 400 MHz, B for
/// 50 MHz at 120 kHz, M for modified MPR, P for transform precoding, F for 60 kHz.
struct rules_t
{
    unsigned int N;
    bool W, B, M, P, F, fr1, is_100_mhz_at_120_khz;
    unsigned int x;

    unsigned int R(unsigned int n) const
    {
        const auto is_smooth = [](unsigned int number) {
            for (const unsigned int prime : {2u, 3u, 5u})
                while (number % prime == 0)
                    number /= prime;
            return number == 1;
        };
        if (!P)
            return std::min(N, n);
        n = std::min(n, 270u);
        while (!is_smooth(n))
            --n;
        return n;
    }
    std::pair<unsigned int, unsigned int> inner_full() const
    {
        const unsigned int T = N / 3;
        if (W)
            return {66, 66};
        if (!fr1)
            return M ? std::pair(R(T), R(T)) : std::pair(T + B, R(T + B));
        const unsigned int c = (N + 1) / 2;
        const unsigned int h = c < 4 ? 1 : c / 2;
        const unsigned int n = N - c - h < h ? R(c - 1) : R(c);
        return {n <= 3 ? 1 : n / 2, n};
    }
    std::pair<unsigned int, unsigned int> operator()(unsigned int allocation) const
    {
        const unsigned int T = N / 3;
        const unsigned int inner = W ? 66 : M ? 1 : T + B;
        const unsigned int limit = W ? 198 : M ? N - 1 : N - T;
        const unsigned int seven = M && F ? 7 + P : 4;
        const unsigned int eight = F ? 16 : 8;
        const unsigned int more = !P && B ? 1 : 0;
        const unsigned int n9 = N < R(x) ? R(N) : R(x);
        const unsigned int n10 = N < R(x) + inner ? R(N - inner) : R(x);
        const unsigned int n11 = limit < R(x) ? R(limit) : R(x);
        switch (allocation) {
        case 0:
            return {0, 2};
        case 1:
            return {N - 2, 2};
        case 2:
            return {0, 1};
        case 3:
            return {N - 1, 1};
        case 4:
            return {0, R(N)};
        case 5:
            return inner_full();
        case 6:
            return {1, 1};
        case 7:
            return {N - 2, 1};
        case 8:
            return {0, R(x)};
        case 9:
            return {N - n9, n9};
        case 10:
            return {inner, n10};
        case 11:
            return {limit - n11, n11};
        case 12:
            return {W ? 66 : M ? seven : T + B, seven};
        case 13:
            return {W ? 194 : M ? N - 2 * seven : N - 4 - T, seven};
        case 14:
            return {F ? 6 : 3, F ? 6 : 3};
        case 15:
            return {F ? N - 12 : N - 6, F ? 6 : 3};
        case 16:
            return {T + (P && is_100_mhz_at_120_khz ? 1 : 0), R(T) + more};
        case 17:
            return {W ? 66 : F ? T : T + (B && !M ? 1 : 0), eight};
        case 18:
            return {W ? 190 : N - T - eight, eight};
        case 19:
            return {R(N / 2) / 2, R(N / 2)};
        case 20:
            return {F ? 8 : 4, eight};
        default:
            return {F ? N - 24 : N - 12, eight};
        }
    }
};

rules_t rules_of(const cfg_nr_ul_rmc_t& rmc, unsigned int x)
{
    const auto bandwidth = rmc.get_bandwidth();
    const bool at_120_khz = rmc.get_numerology() == LIB_NR_SCS_120K;
    return {lib_nr_phy_common_t::get_max_transmit_rb_num(rmc.get_numerology(), bandwidth),
            bandwidth == LIB_NR_CHANNEL_FR2_1_400M,
            bandwidth == LIB_NR_CHANNEL_FR2_1_50M && at_120_khz,
            rmc.get_modified_mpr_behaviour(),
            rmc.get_enable_transfer_precoding(),
            rmc.get_numerology() == LIB_NR_SCS_60K,
            rmc.get_frequency_range() == NR_FR1,
            bandwidth == LIB_NR_CHANNEL_FR2_1_100M && at_120_khz,
            x};
}

/// What the PUSCH sends of an allocation: with transform precoding the next number up that there is room for.
unsigned int sent_of(unsigned int number, unsigned int room, bool precoded)
{
    if (!precoded)
        return std::min(number, room);
    return number == 66 ? 72
                        : rules_t{room, false, false, false, true, false, false, false, 1}.R(std::min(number, room));
}

/// What a choice that asked for x comes to, and the PUSCH with it.
void expect_told(cfg_nr_waveform_t& waveform, unsigned int x)
{
    cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
    const cfg_nr_ul_rmc_t& rmc = *carrier.get_ul_rmc();
    const rules_t rules = rules_of(rmc, x);
    const unsigned int allocation = rmc.get_rmc_rb_allocation();
    EXPECT_EQ(std::pair(rmc.get_rb_offset(), rmc.get_rb_number()), rules(allocation));
    const bool is_cut = allocation >= 9 && allocation <= 11 && rmc.get_rb_number() < rules.R(x);
    EXPECT_EQ(rmc.get_x_rb(), allocation == 8 || is_cut ? rmc.get_rb_number() : x);
    const cfg_nr_ul_sch_t& sch = *carrier.get_ul_pusch(0);
    EXPECT_EQ(carrier.get_channel_bandwidth(), rmc.get_bandwidth());
    EXPECT_EQ(carrier.get_numerology(), rmc.get_numerology());
    EXPECT_EQ(carrier.get_ul_bwp(0)->get_rb_number(), rules.N);
    EXPECT_EQ(sch.get_rb_offset(), rmc.get_rb_offset());
    EXPECT_EQ(sch.get_rb_num(), sent_of(rmc.get_rb_number(), rules.N - rmc.get_rb_offset(), rules.P));
    EXPECT_EQ(sch.get_modulation(), rmc.get_modulation());
    EXPECT_EQ(sch.get_enable_transfer_precoding(), rules.P);
    const char* const slots[] = {"4,9", "8,9,18,19", "16,17,18,19,36,37,38,39", "8:15,24:32,40:48,56:64"};
    const std::string all = "0:" + std::to_string((10 << rmc.get_numerology()) - 1);
    const bool is_fr2_at_60_khz = !rules.fr1 && rules.F;
    EXPECT_EQ(sch.get_slot_allocation(), rmc.get_duplex_type() == LIB_NR_DUPLEX_TYPE_FDD ? all
                                         : is_fr2_at_60_khz                              ? "4:7,12:15,20:23,28:31"
                                                                                         : slots[rmc.get_numerology()]);
}

TEST(cfg_nr_ul_rmc_deal, every_choice_configures_a_fresh_carrier_by_its_rules)
{
    const nr_test::preset_family_t all = {"ul_rmc",
                                          {{"bandwidth", {}},
                                           {"numerology", {}},
                                           {"enable_transfer_precoding", {"true", "false"}},
                                           {"modulation", {}},
                                           {"modified_mpr_behaviour", {"false", "true"}},
                                           {"rmc_rb_allocation", {}},
                                           {"duplex_type", {}}}};
    const std::string fr2 = "LIB_NR_CHANNEL_FR2_1_";
    const nr_test::preset_family_t of_x = {"ul_rmc",
                                           {{"bandwidth", {fr2 + "50M", fr2 + "100M", fr2 + "200M", fr2 + "400M"}},
                                            {"numerology", {}},
                                            {"enable_transfer_precoding", {"true", "false"}},
                                            {"modified_mpr_behaviour", {"false", "true"}},
                                            {"rmc_rb_allocation",
                                             {"LIB_NR_UL_RMC_OUTER_XRB_LEFT", "LIB_NR_UL_RMC_OUTER_XRB_RIGHT",
                                              "LIB_NR_UL_RMC_INNER_XRB_LEFT", "LIB_NR_UL_RMC_INNER_XRB_RIGHT"}},
                                            {"x_rb", {"7", "300"}}}};
    std::vector<nr_test::steps_t> choices = nr_test::every_choice(all, false);
    for (const auto& more : {nr_test::every_choice(all, true), nr_test::every_choice(of_x, false)})
        choices.insert(choices.end(), more.begin(), more.end());
    for (const nr_test::steps_t& choice : choices) {
        SCOPED_TRACE(testing::PrintToString(choice));
        const std::string last = choice[choice.size() - 2];
        const std::size_t x_rb = last.find("x_rb=");
        cfg_nr_waveform_t waveform;
        EXPECT_EQ(nr_test::unexpected_of_presets(nr_test::take(waveform, choice), false), "");
        expect_told(waveform,
                    x_rb == std::string::npos ? 1 : static_cast<unsigned int>(std::stoul(last.substr(x_rb + 5))));
        if (HasFailure())
            return;
    }
    EXPECT_GT(choices.size(), 1000u);
}

TEST(cfg_nr_ul_rmc_deal, narrow_channels_of_every_allocation_are_decoded)
{
    unsigned int decoded = 0;
    for (const std::string bandwidth : {"FR1_5M", "FR2_1_50M"}) {
        const nr_test::preset_family_t family = {"ul_rmc",
                                                 {{"bandwidth", {"LIB_NR_CHANNEL_" + bandwidth}},
                                                  {"enable_transfer_precoding", {"true", "false"}},
                                                  {"rmc_rb_allocation", {}},
                                                  {"x_rb", {"5"}}}};
        for (const nr_test::steps_t& choice : nr_test::every_choice(family, false)) {
            SCOPED_TRACE(testing::PrintToString(choice));
            nr_test::waveform_of_t waveform(choice);
            cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
            const auto modulations = carrier.get_ul_rmc()->get_valid_modulation_list();
            carrier.get_ul_rmc()->set_modulation(modulations[decoded % modulations.size()]);
            carrier.get_ul_rmc()->set_numerology(carrier.get_ul_rmc()->get_valid_numerology_list().back());
            nr_test::take(waveform, {"apply carrier[0].ul_rmc", "carrier[0].baseband_filter=false"});
            const nr_test::generated_t generated = nr_test::generate(waveform);
            EXPECT_EQ(generated.output.find("error!!!"), std::string::npos);
            const auto& manager = waveform.get_waveform_manager().get_carrier(0);
            const auto slot = static_cast<unsigned int>(manager.get_ul_sch(0).get_slot_allocation_v().front());
            const auto rows =
                nr_test::demodulate_frame(generated.samples, generated.setup,
                                          nr_test::test_grid_t::grid().get_mapped_subcarrier_number(), 0.0, 0);
            const auto channel = nr_test::pusch_channel_of(manager, 0, slot);
            const auto received =
                nr_test::receive_sch_slot(channel, rows, slot, [](unsigned int, unsigned int) { return false; });
            EXPECT_LT(received.error, 1e-6);
            EXPECT_EQ(nr_test::decode_sch({channel}, {received}),
                      nr_test::data_source_t(LIB_NR_PN9).take(nr_test::transport_block_size(channel)));
            ++decoded;
        }
    }
    EXPECT_EQ(decoded, 2u * (8 + 16));
}

} // namespace

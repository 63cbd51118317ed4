#include "phy_ul/lib_nr_ul_phy_prach_process.h"

#include "config/cfg_nr_enum_name_maps.h"
#include "phy/lib_nr_prach_resource_manager.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/tables/lib_nr_prach_carrier_combination_table.h"
#include "phy_common/tables/lib_nr_prach_configuration_table.h"
#include "phy_common/tables/lib_nr_prach_cyclic_shift_table.h"
#include "phy_common/tables/lib_nr_prach_root_table.h"
#include "receiver/prach_receiver.h"
#include "support/generated.h"
#include "support/settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;

using steps_t = std::vector<std::string>;

constexpr double k_tick = 1.0 / 30.72e6;
const std::string burst = "carrier[0].ul_prach[0].";

/// Start of a symbol of spacing 15 kHz times 2^mu in its subframe, TS 38.211 clause 5.3.1.
double symbol_start(unsigned int symbol, unsigned int mu)
{
    double start = 0.0;
    for (unsigned int l = 0; l < symbol; ++l)
        start += (2048.0 + 144.0) / (1u << mu) * k_tick + (l % (7u << mu) == 0 ? 16.0 * k_tick : 0.0);
    return start;
}

const lib_nr_prach_configuration_row_t& row_of(prach_config_table_type_t table, unsigned int index)
{
    return table == FR1_FDD_SUL ? lib_nr_prach_configuration_fr1_paired_table()[index]
           : table == FR1_TDD   ? lib_nr_prach_configuration_fr1_unpaired_table()[index]
                                : lib_nr_prach_configuration_fr2_table()[index];
}

/// A burst as the settings of its façade name it, put where the standard has it.
nr_test::prach_place_t place_of(const cfg_nr_waveform_t& waveform, cfg_nr_prach_t& prach)
{
    const auto& carrier = waveform.get_waveform_manager().get_carrier(0);
    const std::uint32_t scs_hz = prach.get_prach_scs();
    const auto& row = row_of(prach.get_configuration_table(), prach.get_configuration_idx());
    const bool is_last = prach.get_n_RA_t() + 1 == row.occasions_per_slot;
    const prach_format_t format = row.formats[is_last ? 1 : 0];
    const bool is_long = format <= prach_format_3;
    const auto mu = is_long ? 0u : static_cast<unsigned int>(std::log2(scs_hz / 15000));
    nr_test::prach_place_t place;
    place.sample_rate = waveform.get_waveform_manager().get_waveform_sample_rate_hz();
    place.spacing_hz = scs_hz;
    place.length = prach.get_lra();

    unsigned int symbol = row.starting_symbol;
    if (!is_long)
        symbol += prach.get_n_RA_t() * row.duration + 14 * prach.get_n_RA_slot();
    unsigned int subframe = prach.get_subframe_index_config();
    if (prach.get_configuration_table() == FR2_TDD) {
        subframe = prach.get_slot_index_config() / 4;
        symbol += prach.get_slot_index_config() % 4 * (14u << mu) / 4;
    }
    const double in_subframe = symbol_start(symbol, mu);
    place.start_s = subframe * 1e-3 + in_subframe;

    // TS 38.211 Tables 6.3.3.1-1 and 6.3.3.1-2: N_CP and repetitions.
    static const std::map<prach_format_t, std::pair<double, std::size_t>> formats = {
        {prach_format_0, {3168, 1}}, {prach_format_1, {21024, 2}}, {prach_format_2, {4688, 4}},
        {prach_format_3, {3168, 4}}, {prach_format_A1, {288, 2}},  {prach_format_A2, {576, 4}},
        {prach_format_A3, {864, 6}}, {prach_format_B1, {216, 2}},  {prach_format_B2, {360, 4}},
        {prach_format_B3, {504, 6}}, {prach_format_B4, {936, 12}}, {prach_format_C0, {1240, 1}},
        {prach_format_C2, {2048, 4}}};
    const auto& [prefix, repetitions] = formats.at(format);
    place.repetitions = repetitions;
    place.prefix_s = prefix * k_tick / (1u << mu);
    if (!is_long) {
        const double end = in_subframe + place.prefix_s + static_cast<double>(repetitions) / scs_hz;
        for (const double boundary : {0.0, 0.5e-3, 1e-3})
            if (boundary > in_subframe - 1e-10 && boundary < end - 1e-10)
                place.prefix_s += 16.0 * k_tick;
    }

    const double carrier_hz = 15000.0 * (1u << carrier.get_numerology());
    const auto& combinations = lib_nr_prach_carrier_combination_table();
    const auto& combination = *std::find_if(combinations.begin(), combinations.end(), [&](const auto& other) {
        return other.lra == prach.get_lra() && other.prach_scs == scs_hz && 1e3 * other.carrier_scs_khz == carrier_hz;
    });
    const double rbs = prach.get_rb_offset() + prach.get_n_RA_start() + prach.get_n_RA_f() * combination.rb_number;
    const double grid = lib_nr_phy_common_t::get_max_transmit_rb_num(carrier.get_numerology(), carrier.get_bandwidth());
    place.fits = combination.rb_number <= grid;
    const bool is_own_k_bar = !waveform.get_standard_rules() || combination.k_bar != 0; // there is no 0 in the standard
    place.lowest_hz = (12.0 * rbs - 6.0 * grid) * carrier_hz + (is_own_k_bar ? combination.k_bar : 2) * scs_hz;
    return place;
}

/// What an unrestricted preamble looks like, TS 38.211 clause 6.3.3.1.
nr_test::signal_t unrestricted_spectrum(cfg_nr_prach_t& prach)
{
    const std::size_t length = prach.get_lra();
    const prach_format_t format = prach.get_format();
    const auto& zones = format < prach_format_3    ? lib_nr_prach_cyclic_shift_formats_0_1_2_table()
                        : format == prach_format_3 ? lib_nr_prach_cyclic_shift_format_3_table()
                                                   : lib_nr_prach_cyclic_shift_short_table();
    const auto& row = zones[prach.get_ZeroCorrelationZone()];
    const auto shift = static_cast<std::size_t>(length == 571 ? row[1] : length == 1151 ? row[2] : row[0]);
    const std::size_t shifts = shift > 0 ? length / shift : 1;
    const std::size_t index = (prach.get_sequence_index() + prach.get_premable_index() / shifts) % (length - 1);
    const std::size_t u = length == 839   ? lib_nr_prach_root_839_table()[index]
                          : index % 2 > 0 ? length - 1 - index / 2
                                          : index / 2 + 1;
    return nr_test::prach_spectrum(length, u, prach.get_premable_index() % shifts * shift);
}

/// The burst is where the standard has it and looks like its preamble, first and last repetition; one that is wider
/// than its carrier has lost its edges, and only its time counts.
void expect_received(cfg_nr_waveform_t& waveform)
{
    cfg_nr_prach_t& prach = *waveform.get_carrier(0)->get_ul_prach(0);
    const nr_test::prach_place_t place = place_of(waveform, prach);
    const nr_test::signal_t samples = nr_test::generate(waveform).samples;
    ASSERT_FALSE(samples.empty());

    const nr_test::span_t span = nr_test::sounding_span(samples);
    const double end = place.start_s + place.prefix_s + static_cast<double>(place.repetitions) / place.spacing_hz;
    EXPECT_NEAR(static_cast<double>(span.begin), place.start_s * place.sample_rate, 1.0);
    EXPECT_NEAR(static_cast<double>(span.end), end * place.sample_rate, 1.5);

    const auto& view = lib_nr_prach_resource_manager_t::get_inst().get_resource_mapping();
    EXPECT_NEAR(view.start_frequencies_hz.at(0), place.lowest_hz, 1e-3);
    if (!place.fits)
        return;
    const nr_test::signal_t expected = unrestricted_spectrum(prach);
    for (const std::size_t repetition : {std::size_t{0}, place.repetitions - 1})
        EXPECT_NEAR(nr_test::likeness(nr_test::receive_prach(samples, place, repetition), expected), 1.0, 1e-9)
            << "repetition " << repetition;
}

/// The first row of a table that sends in every frame, with formats for the first and the last occasion; -1 for none.
int row_with(prach_config_table_type_t table, std::array<prach_format_t, 2> formats, unsigned int least_start,
             unsigned int slots = 0)
{
    for (unsigned int index = 0; index < 256; ++index) {
        const auto& row = row_of(table, index);
        if (row.formats == formats && row.x == 1 && row.starting_symbol >= least_start &&
            (slots == 0 || row.slots_per_subframe_or_60khz_slot == slots))
            return static_cast<int>(index);
    }
    return -1;
}

steps_t carrier_steps(const std::string& bandwidth, const std::string& spacing)
{
    return {"carrier[0].carrier_type=LIB_NR_PRACH", "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_" + bandwidth,
            "carrier[0].numerology=LIB_NR_SCS_" + spacing};
}

// By the own rules 480 and 960 kHz, and spacings above the carrier's in a BWP that does not begin with the grid, would
// not; one of them lies between the carrier's subcarriers.
TEST(lib_nr_ul_phy_prach_process, every_format_length_and_spacing_arrives_where_the_standard_puts_it)
{
    struct carrier_t
    {
        const char* bandwidth;
        const char* spacing;
        prach_config_table_type_t table;
        std::vector<prach_format_t> formats;
        std::vector<const char*> prach_scs;
    };
    const std::vector<prach_format_t> all = {prach_format_0,  prach_format_1,  prach_format_2,  prach_format_3,
                                             prach_format_A1, prach_format_A2, prach_format_A3, prach_format_B1,
                                             prach_format_B4, prach_format_C0, prach_format_C2};
    const carrier_t carriers[] = {
        {"FR1_20M", "15K", FR1_FDD_SUL, all, {"15K", "30K"}},
        {"FR1_20M", "30K", FR1_TDD, all, {"15K", "30K"}},
        {"FR1_15M", "60K", FR1_TDD, {prach_format_0, prach_format_3, prach_format_A2, prach_format_C2}, {"15K"}},
        {"FR2_1_50M", "60K", FR2_TDD, {prach_format_A1, prach_format_B4, prach_format_C0}, {"60K"}},
        {"FR2_1_200M", "120K", FR2_TDD, {prach_format_A3, prach_format_C2}, {"120K"}},
        {"FR2_1_400M", "120K", FR2_TDD, {prach_format_B4}, {"480K", "960K"}},
        {"FR2_2_400M", "480K", FR2_TDD, {prach_format_A1}, {"480K"}},
        {"FR2_2_400M", "960K", FR2_TDD, {prach_format_C2}, {"960K"}},
    };
    unsigned int received = 0;
    for (const carrier_t& carrier : carriers)
        for (unsigned int choice = 0; choice < carrier.formats.size() * carrier.prach_scs.size() * 4 * 2; ++choice) {
            const prach_format_t format = carrier.formats[choice / 8 % carrier.formats.size()];
            const std::string scs = "PRACH_SCS_" + std::string(carrier.prach_scs[choice / 8 / carrier.formats.size()]);
            const std::string lra = std::array{"839", "139", "571", "1151"}[choice / 2 % 4];
            const int row = row_with(carrier.table, {format, format}, choice % 2);
            if (row < 0)
                continue;
            nr_test::waveform_of_t waveform(carrier_steps(carrier.bandwidth, carrier.spacing));
            if (choice % 2 == 0 || scs == "PRACH_SCS_480K" || scs == "PRACH_SCS_960K")
                nr_test::take(waveform, {"standard_rules=true", "carrier[0].ul_bwp[0].rb_offset=3"});
            const steps_t steps = {burst +
                                       "configuration_table=" + g_prach_config_table_type_t_name_map.at(carrier.table),
                                   burst + "configuration_idx=" + std::to_string(row),
                                   burst + "prach_scs=" + scs,
                                   burst + "lra=PRACH_LRA_" + lra,
                                   burst + "n_RA_t=1",
                                   burst + "premable_index=7",
                                   burst + "zeroCorrelation_zone=5"};
            nr_test::take(waveform, steps);
            if (nr_test::value_of(waveform, burst + "lra") != "PRACH_LRA_" + lra ||
                (format > prach_format_3 && nr_test::value_of(waveform, burst + "prach_scs") != scs))
                continue; // not a combination of this carrier
            SCOPED_TRACE(testing::PrintToString(steps) + carrier.bandwidth + carrier.spacing);
            expect_received(waveform);
            ++received;
        }
    EXPECT_GT(received, 90u);
}

// Among them a second, silent carrier that doubles the rate, and a carrier off the centre.
TEST(lib_nr_ul_phy_prach_process, occasions_offsets_and_other_carriers_leave_the_burst_where_the_standard_puts_it)
{
    const std::vector<steps_t> cases = {{burst + "n_RA_slot=1", burst + "n_RA_t=5"},
                                        {burst + "msg1_fdm=Msg1_FDM4", burst + "n_RA_f=2", burst + "n_RA_start=3"},
                                        {burst + "rb_offset=10", burst + "power_boosting=20"},
                                        {"add carrier", "carrier[1].frequency_offset=60000000"},
                                        {"carrier[0].frequency_offset=20000000"}};
    for (const auto& steps : cases) {
        nr_test::waveform_of_t waveform(carrier_steps("FR1_100M", "30K"));
        // A1 with B1 in the last of six occasions, in either of two slots.
        const int row = row_with(FR1_TDD, {prach_format_A1, prach_format_B1}, 0, 2);
        ASSERT_GE(row, 0);
        nr_test::take(waveform,
                      {burst + "configuration_table=FR1_TDD", burst + "configuration_idx=" + std::to_string(row),
                       burst + "prach_scs=PRACH_SCS_30K", burst + "lra=PRACH_LRA_139"});
        nr_test::take(waveform, steps);
        SCOPED_TRACE(steps.front());
        expect_received(waveform);
    }
}

// Root and cyclic shift of one preamble of each set, worked out by another program.
TEST(lib_nr_ul_phy_prach_process, preambles_of_every_set_have_their_root_and_shift)
{
    for (const auto& [set, zone, preamble, u, shift] : {std::tuple{"UNRESTRICTED", "8", "29", 721u, 506u},
                                                        {"RESTRICTED_TYPE_A", "3", "41", 750u, 210u},
                                                        {"RESTRICTED_TYPE_B", "6", "63", 660u, 346u}})
    {
        nr_test::waveform_of_t waveform(carrier_steps("FR1_15M", "15K"));
        nr_test::take(waveform, {burst + "configuration_idx=27", burst + "restrictedset=" + set,
                                 burst + "zeroCorrelation_zone=" + zone, burst + "sequence_index=100",
                                 burst + "premable_index=" + preamble});
        const nr_test::prach_place_t place = place_of(waveform, *waveform.get_carrier(0)->get_ul_prach(0));
        const nr_test::signal_t received = nr_test::receive_prach(nr_test::generate(waveform).samples, place, 0);
        EXPECT_NEAR(nr_test::likeness(received, nr_test::prach_spectrum(839, u, shift)), 1.0, 1e-9) << set;
    }
}

TEST(lib_nr_ul_phy_prach_process, bursts_are_sent_in_their_frames_and_stop_those_behind_them)
{
    const std::string carrier = "carrier[0].";
    nr_test::waveform_of_t waveform(carrier_steps("FR1_5M", "15K"));
    // Row 13 of the paired table sends format 0 in odd frames; the second burst in every frame, behind it.
    nr_test::take(waveform, {"frame_number=2", "add carrier[0].ul_prach", carrier + "ul_prach[0].configuration_idx=13",
                             carrier + "ul_prach[1].configuration_idx=27", carrier + "ul_prach[1].subframe_index=7"});
    const auto energy = [&](unsigned int subframe, unsigned int count) {
        const nr_test::signal_t samples = nr_test::generate(waveform).samples;
        const std::size_t length = samples.size() / 20;
        double sum = 0.0;
        for (std::size_t i = subframe * length; i < (subframe + count) * length; ++i)
            sum += std::norm(samples[i]);
        return sum;
    };
    ASSERT_EQ(nr_test::value_of(waveform, carrier + "ul_prach[0].frame_period"), "2");
    EXPECT_EQ(energy(0, 10), 0.0);
    EXPECT_GT(energy(17, 1), 1.0);
    nr_test::take(waveform, {carrier + "ul_prach[0].enable=false"});
    EXPECT_EQ(energy(0, 20), 0.0);

    // The view of the second frame tells both bursts.
    nr_test::take(waveform, {carrier + "ul_prach[0].enable=true"});
    const nr_test::captured_output_t output;
    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    EXPECT_FALSE(engine.deal_prach_resource_mapping(0, 0, 0, waveform.get_waveform_manager()));
    EXPECT_TRUE(engine.deal_prach_resource_mapping(0, 0, 1, waveform.get_waveform_manager()));
    const auto& view = lib_nr_prach_resource_manager_t::get_inst().get_resource_mapping();
    ASSERT_EQ(view.start_times_ms.size(), 2u);
    EXPECT_NEAR(view.start_times_ms[1], 7.0, 1e-9);
    EXPECT_NEAR(view.end_times_ms[1], 7.0 + (3168 + 24576) * k_tick * 1e3, 1e-6);
    EXPECT_NEAR(view.end_frequencies_hz[1] - view.start_frequencies_hz[1], 839 * 1250.0, 1e-6);
    EXPECT_NEAR(view.start_frequencies_hz[1], -6.0 * 25 * 15000 + 7 * 1250.0, 1e-6);
}

// Row 43 of the paired table sends format 1 from subframe 9 of odd frames on, 1.28 ms past their end.
TEST(lib_nr_ul_phy_prach_process, a_burst_goes_on_in_the_next_frame_by_the_standard_alone)
{
    for (const auto& [rules, subframe] : {std::pair{"true", 20u}, {"false", 10u}}) {
        nr_test::waveform_of_t waveform(carrier_steps("FR1_5M", "15K"));
        nr_test::take(waveform, {"frame_number=3", std::string("standard_rules=") + rules,
                                 "carrier[0].ul_prach[0].configuration_idx=43"});
        const nr_test::signal_t samples = nr_test::generate(waveform).samples;
        const std::size_t length = samples.size() / 30;
        EXPECT_GT(std::norm(samples[subframe * length + length / 2]), 1e-9) << rules;
        EXPECT_EQ(std::norm(samples[(30 - subframe) * length + length / 2]), 0.0) << rules;
    }
}

TEST(lib_nr_ul_phy_prach_process, a_time_offset_counts_within_the_frame_however_large_it_is)
{
    const std::string offset = "carrier[0].ul_prach[0].timeoffset=";
    nr_test::waveform_of_t waveform(carrier_steps("FR1_5M", "15K"));
    const auto samples_at = [&](const std::string& seconds) {
        nr_test::take(waveform, {offset + seconds});
        return nr_test::generate(waveform).samples;
    };
    // All of them lie 2^-11 seconds behind whole ones.
    const nr_test::signal_t expected = samples_at("0.00048828125");
    EXPECT_NE(samples_at("0"), expected);
    for (const char* seconds :
         {"-0.99951171875", "-17.99951171875", "-71582.99951171875", "-1099511627775.99951171875"})
        EXPECT_EQ(samples_at(seconds), expected) << seconds;
    EXPECT_EQ(samples_at("-1e300"), samples_at("0"));
    waveform.get_carrier(0)->get_ul_prach(0)->set_timeoffset(-HUGE_VAL);
    EXPECT_EQ(nr_test::generate(waveform).samples, samples_at("0"));
}

TEST(lib_nr_ul_phy_prach_process, settings_that_do_not_go_together_are_corrected)
{
    nr_test::waveform_of_t waveform(carrier_steps("FR1_20M", "15K"));
    nr_test::run_rows(waveform,
                      {{"configuration_idx", "300", "255", true},
                       {"configuration_table", "FR1_TDD", "FR1_TDD", true},
                       {"configuration_idx", "300", "262", true},
                       {"configuration_table", "FR1_FDD_SUL", "FR1_FDD_SUL", true},
                       {"configuration_idx", nullptr, "255"},
                       {"configuration_idx", "16", "16", true},
                       {"prach_scs", "PRACH_SCS_5K", "PRACH_SCS_1P25K", false},
                       {"lra", nullptr, "PRACH_LRA_839"},
                       {"premable_index", "64", "63", true},
                       {"restrictedset", "RESTRICTED_TYPE_A", "RESTRICTED_TYPE_A", true},
                       {"zeroCorrelation_zone", "14", "14", true,
                        "check_restricted_set_and_format:InvalidZeroCorrelationZone012A.\n\n"},
                       {"restrictedset", "RESTRICTED_TYPE_B", "RESTRICTED_TYPE_B", true},
                       {"zeroCorrelation_zone", nullptr, "12"},
                       {"sequence_index", "2000", "837", true},
                       {"timeoffset", "-1", "-1", true},
                       {"timeoffset", "1", "0.001", true},
                       {"configuration_idx", "198", "198", true},
                       {"prach_scs", nullptr, "PRACH_SCS_15K"},
                       {"lra", nullptr, "PRACH_LRA_139"},
                       {"sequence_index", nullptr, "137"},
                       {"restrictedset", nullptr, "UNRESTRICTED"},
                       {"lra", "PRACH_LRA_571", "PRACH_LRA_139", false,
                        "check_lra:: Error configuration only support 139 or 1151!\n\n"},
                       {"msg1_fdm", "Msg1_FDM4", "Msg1_FDM4", true},
                       {"n_RA_f", "7", "3", true},
                       {"msg1_fdm", "Msg1_FDM2", "Msg1_FDM2", true},
                       {"n_RA_f", nullptr, "1"},
                       {"carrier[0].ul_bwp[0].rb_offset=10"},
                       {"carrier[0].ul_bwp[0].rb_number=40"},
                       {"rb_offset", nullptr, "10"},
                       {"rb_num", nullptr, "40"},
                       {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR2_1_100M"},
                       {"configuration_table", nullptr, "FR2_TDD"},
                       {"lra", nullptr, "PRACH_LRA_139"},
                       {"prach_scs", nullptr, "PRACH_SCS_60K"},
                       {"configuration_idx", "16", "16", true},
                       {"carrier[0].numerology=LIB_NR_SCS_240K"},
                       {"enable", nullptr, "false"},
                       {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M"},
                       {"lra", nullptr, "PRACH_LRA_839"}},
                      "carrier[0].ul_prach[0]");
}

} // namespace

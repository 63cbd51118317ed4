#include "phy_common/lib_nr_ofdm_modulator.h"

#include "support/captured_output.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

// What the engine's tests do not see of modulator and filter: limits, lines, the search for the occupied band.

namespace vek
{

template <>
struct test_peer_t<nr_mod_lib::lib_nr_baseband_filter_t>
{
    using filter_t = nr_mod_lib::lib_nr_baseband_filter_t;

    static std::pair<unsigned int, unsigned int> guards(filter_t& filter,
                                                        const std::vector<std::vector<std::complex<double>>>& payload)
    {
        filter._search_guard_subcarrier_number({payload});
        return {filter.m_low_guard_count, filter.m_high_guard_count};
    }
    static std::pair<unsigned int, unsigned int> prach_guards(filter_t& filter,
                                                              const std::vector<std::complex<double>>& row)
    {
        filter._search_prach_guard_subcarrier_number(row);
        return {filter.m_low_guard_count, filter.m_high_guard_count};
    }
    static const std::vector<std::complex<double>>& design(filter_t& filter)
    {
        filter._generate_baseband_filter();
        return filter.m_coefficients;
    }
};

} // namespace vek

namespace
{

using namespace vek::nr_mod_lib;
using complex_t = std::complex<double>;
using rows_t = std::vector<std::vector<complex_t>>;
using filter_peer_t = vek::test_peer_t<lib_nr_baseband_filter_t>;
using counts_t = std::pair<unsigned int, unsigned int>;

double response(const std::vector<complex_t>& taps, double frequency)
{
    complex_t sum = 0;
    for (std::size_t i = 0; i < taps.size(); ++i)
        sum += taps[i] * std::polar(1.0, -M_PI * frequency * static_cast<double>(i));
    return std::abs(sum);
}

TEST(lib_nr_ofdm_modulator, limits_its_settings_and_refuses_grids_of_another_size)
{
    nr_test::captured_output_t output;
    lib_nr_ofdm_modulator_t modulator;
    modulator.set_numerology(LIB_NR_SCS_30K);
    modulator.set_channel_bandwidth(LIB_NR_CHANNEL_FR1_10M);
    modulator.set_cyclic_prefix_type(LIB_NR_EXTEND_CP);
    EXPECT_FALSE(modulator.set_oversamping_ratio(0));
    EXPECT_FALSE(modulator.set_target_sample_rate(0.0));
    EXPECT_FALSE(modulator.set_target_sample_rate(std::nan("")));
    EXPECT_TRUE(modulator.set_target_sample_rate(15.36e6 * 2 + 1));
    EXPECT_EQ(modulator.get_actual_sample_rate(), 15.36e6 * 3);
    std::vector<complex_t> main(3);
    std::vector<complex_t> head(2);
    std::vector<complex_t> tail(1);
    EXPECT_FALSE(modulator.deal_frame_ofdm_modulation(rows_t(280, std::vector<complex_t>(276)), main, head, tail));
    EXPECT_TRUE(main.empty());
    EXPECT_EQ(head.size(), 2u);
    EXPECT_EQ(tail.size(), 1u);
    EXPECT_EQ(output.text(),
              "lib_nr_dl_resource_manager_t::set_cyclic_prefix_type Report : Extende CP is supported only with 60kHz "
              "SCS!\n"
              "lib_nr_ofdm_modulator_t::set_oversamping_ratio Report : Oversampling Ratio Must NOT be zero!\n"
              "lib_nr_ofdm_modulator_t::set_target_sample_rate Report : Sample Rate Should be a positive value!\n"
              "lib_nr_ofdm_modulator_t::set_target_sample_rate Report : Sample Rate Should be a positive value!\n"
              "lib_nr_ofdm_modulator_t::deal_frame_ofdm_modulation Report : Payload Mapping Size Error!\n");
}

TEST(lib_nr_ofdm_modulator, a_pass_over_the_samples_turns_them_as_the_modulation_does)
{
    nr_test::captured_output_t silence;
    std::mt19937 random(4);
    rows_t rows(280, std::vector<complex_t>(288));
    for (auto& row : rows)
        for (auto& cell : row)
            cell = {random() % 2 ? 1.0 : -1.0, random() % 2 ? 1.0 : -1.0};
    const auto modulated = [&](bool compensated, lib_nr_ofdm_modulator_t& modulator) {
        modulator.set_numerology(LIB_NR_SCS_30K);
        modulator.set_channel_bandwidth(LIB_NR_CHANNEL_FR1_10M);
        modulator.set_phase_compensation_enable(compensated);
        modulator.set_carrier_frequency(60e9 + 123.5);
        modulator.set_target_sample_rate(15.36e6);
        std::vector<complex_t> main;
        std::vector<complex_t> head;
        std::vector<complex_t> tail;
        EXPECT_TRUE(modulator.deal_frame_ofdm_modulation(rows, main, head, tail));
        return main;
    };
    lib_nr_ofdm_modulator_t turning;
    lib_nr_ofdm_modulator_t plain;
    const std::vector<complex_t> expected = modulated(true, turning);
    std::vector<complex_t> turned = modulated(false, plain);
    plain._deal_phase_compensation(turned);
    double largest = 0;
    for (std::size_t i = 0; i < turned.size(); ++i)
        largest = std::max(largest, std::abs(turned[i] - expected[i]));
    EXPECT_LT(largest, 1e-12);
    turned.pop_back();
    EXPECT_THROW(plain._deal_phase_compensation(turned), std::out_of_range);
}

TEST(lib_nr_ofdm_modulator, finds_the_occupied_band_over_all_symbols)
{
    lib_nr_baseband_filter_t filter;
    rows_t rows(3, std::vector<complex_t>(24));
    EXPECT_EQ(filter_peer_t::guards(filter, rows), (counts_t{12, 11}));
    rows[1][5] = {0.0, 2e-12};
    rows[2][20] = 1.0;
    EXPECT_EQ(filter_peer_t::guards(filter, rows), (counts_t{5, 3}));
    rows[0][4] = 1e-12; // as good as empty
    rows[0][12] = 1.0;  // the middle belongs to neither side
    EXPECT_EQ(filter_peer_t::guards(filter, rows), (counts_t{5, 3}));
    EXPECT_EQ(filter_peer_t::prach_guards(filter, rows[2]), (counts_t{12, 3}));
    EXPECT_EQ(filter_peer_t::prach_guards(filter, {1.0}), (counts_t{0, 0}));

    nr_test::captured_output_t output;
    EXPECT_EQ(filter_peer_t::guards(filter, {}), (counts_t{0, 0}));
    rows[1].pop_back();
    EXPECT_EQ(filter_peer_t::guards(filter, rows), (counts_t{0, 0}));
    EXPECT_EQ(filter_peer_t::prach_guards(filter, {}), (counts_t{0, 0}));
    EXPECT_FALSE(filter.set_oversampling_ratio(0));
    EXPECT_EQ(output.text(),
              "lib_nr_baseband_filter_t::_search_guard_subcarrier_number Report: Empty Payload data!\n"
              "lib_nr_baseband_filter_t::_search_guard_subcarrier_number Report: Subcarrier number is NOT equal!\n"
              "_search_guard_subcarrier_number::_search_guard_subcarrier_number Report: Empty Payload data!\n"
              "lib_nr_baseband_filter_t::set_oversamping_ratio Report : Oversampling Ratio Must NOT be zero!\n");
}

TEST(lib_nr_ofdm_modulator, passes_what_is_occupied_with_its_guard_and_stops_the_rest)
{
    lib_nr_baseband_filter_t filter;
    filter.set_numerology(LIB_NR_SCS_30K);
    filter.set_channel_bandwidth(LIB_NR_CHANNEL_FR1_100M);
    rows_t full(1, std::vector<complex_t>(3276, 1.0));
    filter_peer_t::guards(filter, full);
    // 1638 subcarriers and a guard of 29 on the wider side, of 2048 up to half the rate.
    const std::vector<complex_t> wide = filter_peer_t::design(filter);
    EXPECT_NEAR(response(wide, 1667.0 / 2048), 1.0, 2e-4);
    EXPECT_LT(response(wide, 1697.0 / 2048), 1e-4);

    // Occupied on one side alone: that side sets the cut-off.
    rows_t high(1, std::vector<complex_t>(3276));
    for (std::size_t k = 1638; k < 2000; ++k)
        high[0][k] = 1.0;
    filter_peer_t::guards(filter, high);
    const std::vector<complex_t> narrow = filter_peer_t::design(filter);
    EXPECT_NEAR(response(narrow, 390.0 / 2048), 1.0, 2e-4);
    EXPECT_LT(response(narrow, 425.0 / 2048), 1e-4);

    // Disabled, it leaves the signal alone; a pair without a guard band of its own still has a filter.
    std::vector<complex_t> signal(10, 1.0);
    filter.deal_baseband_filter(full, signal);
    EXPECT_EQ(signal, std::vector<complex_t>(10, 1.0));
    filter.set_baseband_filter_enable(true);
    filter.set_channel_bandwidth(LIB_NR_CHANNEL_FR2_2_800M);
    filter.set_numerology(LIB_NR_SCS_480K);
    testing::internal::CaptureStderr();
    filter.deal_baseband_filter(full, signal);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "The minimum guard bandwidth was not found\n");
    EXPECT_EQ(signal.size(), 10 + 1024u);
}

} // namespace

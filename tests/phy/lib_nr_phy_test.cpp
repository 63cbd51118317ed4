#include "phy/lib_nr_phy.h"

#include "common/lib_ccdf_calculator.h"
#include "common/lib_common_signal_process.h"
#include "common/lib_fft_plan.h"
#include "config/cfg_nr_waveform.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_phy_common.h"
#include "receiver/ofdm_receiver.h"
#include "support/captured_output.h"
#include "support/engine_peer.h"
#include "support/generated.h"
#include "support/settings.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <thread>

// The engine end to end: a grid of random symbols goes in at the seam, a receiver of its own gets it back.

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::engine_peer_t;
using complex_t = std::complex<double>;
using rows_t = std::vector<std::vector<complex_t>>;

// A frame of 400 MHz at 120 kHz; the widest carrier of all is generated once.
constexpr unsigned long long k_most_samples = 5000000;

/// Random QPSK in every cell of one carrier's frames; the others stay silent.
class full_grid_t
{
public:
    full_grid_t(lib_nr_phy_t& engine, std::vector<unsigned int> carriers = {0})
    {
        engine_peer_t::after_channel_steps(
            engine, [this, carriers](unsigned int carrier, unsigned int, unsigned int frame) {
                if (std::find(carriers.begin(), carriers.end(), carrier) == carriers.end())
                    return;
                rows_t& payload = lib_nr_channel_resource_manager_t::get_inst().get_payload_mapping();
                for (auto& row : payload)
                    for (complex_t& cell : row) {
                        const auto bits = m_random();
                        cell = {(bits & 1U) ? -M_SQRT1_2 : M_SQRT1_2, (bits & 2U) ? -M_SQRT1_2 : M_SQRT1_2};
                    }
                m_sent[{carrier, frame}] = payload;
            });
    }

    const rows_t& sent(unsigned int carrier, unsigned int frame) const { return m_sent.at({carrier, frame}); }
    unsigned int subcarriers(unsigned int carrier = 0) const
    {
        return static_cast<unsigned int>(sent(carrier, 0).front().size());
    }

private:
    std::mt19937 m_random{7};
    std::map<std::pair<unsigned int, unsigned int>, rows_t> m_sent;
};

struct pair_t
{
    lib_nr_channel_bw_type_t bandwidth;
    lib_nr_numerology_type_t spacing;
};

std::vector<pair_t> all_pairs()
{
    std::vector<pair_t> pairs;
    for (unsigned int b = LIB_NR_CHANNEL_FR1_5M; b <= LIB_NR_CHANNEL_FR2_2_2000M; ++b)
        for (const auto spacing :
             lib_nr_phy_common_t::get_valid_numerology_list(static_cast<lib_nr_channel_bw_type_t>(b)))
            pairs.push_back({static_cast<lib_nr_channel_bw_type_t>(b), spacing});
    return pairs;
}

lib_nr_waveform_configure_manager_t waveform_of(const pair_t& pair)
{
    lib_nr_waveform_configure_manager_t waveform;
    waveform.get_carrier(0).set_bandwidth(pair.bandwidth);
    waveform.get_carrier(0).set_numerology(pair.spacing);
    return waveform;
}

double largest_error(const rows_t& received, const rows_t& sent)
{
    const complex_t gain = nr_test::fitted_gain(received, sent);
    double largest = 0;
    for (std::size_t l = 0; l < sent.size(); ++l)
        for (std::size_t k = 0; k < sent[l].size(); ++k)
            largest = std::max(largest, std::norm(received[l][k] / gain - sent[l][k]));
    return std::sqrt(largest);
}

double worst_symbol(const rows_t& received, const rows_t& sent)
{
    double worst = 0;
    for (std::size_t l = 0; l < sent.size(); ++l)
        worst = std::max(worst, nr_test::error_vector_magnitude({received[l]}, {sent[l]}));
    return worst;
}

std::string name_of(const pair_t& pair)
{
    return "bandwidth " + std::to_string(pair.bandwidth) + ", mu " + std::to_string(pair.spacing);
}

TEST(lib_nr_phy, a_full_grid_comes_back_exactly_with_the_filter_off)
{
    nr_test::captured_output_t silence;
    unsigned int checked = 0;
    for (const pair_t& pair : all_pairs())
        for (const bool extended : {false, true})
            for (const bool compensated : {true, false}) {
                if (extended && pair.spacing != LIB_NR_SCS_60K)
                    continue;
                lib_nr_waveform_configure_manager_t waveform = waveform_of(pair);
                const bool is_widest =
                    compensated && pair.bandwidth == LIB_NR_CHANNEL_FR2_2_2000M && pair.spacing == LIB_NR_SCS_960K;
                if (!is_widest &&
                    waveform.get_waveform_sample_points() > (compensated ? k_most_samples : k_most_samples / 10))
                    continue;
                waveform.get_carrier(0).set_baseband_filter_enable(false);
                waveform.get_carrier(0).get_dl_bwp(0).set_cp_type(extended ? LIB_NR_EXTEND_CP : LIB_NR_NORMAL_CP);
                waveform.set_phase_compensation_enable(compensated);
                waveform.set_radio_frequency(3549990000.0 + 17.0 * static_cast<int>(pair.bandwidth));

                lib_nr_phy_t engine;
                full_grid_t grid(engine);
                engine.waveform_config(waveform);
                ASSERT_TRUE(engine.nr_phy_process());
                const auto& samples = engine.get_baseband_signal_data();
                ASSERT_EQ(samples.size(), waveform.get_waveform_sample_points());
                const rows_t received =
                    nr_test::demodulate_frame(samples, nr_test::setup_of(waveform), grid.subcarriers(), 0.0, 0);
                EXPECT_LT(largest_error(received, grid.sent(0, 0)), 1e-9)
                    << name_of(pair) << (extended ? ", extended" : "") << (compensated ? ", compensated" : "");
                ++checked;
            }
    EXPECT_GE(checked, 40u);
}

TEST(lib_nr_phy, filter_and_windowing_cost_little_error_in_every_symbol)
{
    nr_test::captured_output_t silence;
    const auto expect_little = [](const lib_nr_waveform_configure_manager_t& waveform, const std::string& what) {
        lib_nr_phy_t engine;
        full_grid_t grid(engine);
        engine.waveform_config(waveform);
        ASSERT_TRUE(engine.nr_phy_process());
        const rows_t received = nr_test::demodulate_frame(engine.get_baseband_signal_data(),
                                                          nr_test::setup_of(waveform), grid.subcarriers(), 0.5, 0);
        EXPECT_LT(nr_test::error_vector_magnitude(received, grid.sent(0, 0)), 0.0015) << what;
        EXPECT_LT(worst_symbol(received, grid.sent(0, 0)), 0.004) << what;
    };
    for (const pair_t& pair : all_pairs()) {
        const lib_nr_waveform_configure_manager_t waveform = waveform_of(pair);
        if (waveform.get_waveform_sample_points() <= k_most_samples)
            expect_little(waveform, name_of(pair));
    }

    // A second carrier, silent here, raises the rate: 4 times and 24 times the first one's own.
    struct wider_t
    {
        pair_t first;
        pair_t second;
        double offset;
        double ratio;
    };
    for (const wider_t& c :
         {wider_t{{LIB_NR_CHANNEL_FR1_20M, LIB_NR_SCS_15K}, {LIB_NR_CHANNEL_FR1_100M, LIB_NR_SCS_30K}, 0, 4},
          wider_t{{LIB_NR_CHANNEL_FR1_20M, LIB_NR_SCS_30K}, {LIB_NR_CHANNEL_FR1_100M, LIB_NR_SCS_60K}, 0, 4},
          wider_t{{LIB_NR_CHANNEL_FR1_5M, LIB_NR_SCS_15K}, {LIB_NR_CHANNEL_FR1_50M, LIB_NR_SCS_15K}, 50e6, 24}})
    {
        lib_nr_waveform_configure_manager_t waveform = waveform_of(c.first);
        const double own = waveform.get_waveform_sample_rate_hz();
        waveform.add_carrier();
        waveform.get_carrier(1).set_bandwidth(c.second.bandwidth);
        waveform.get_carrier(1).set_numerology(c.second.spacing);
        waveform.get_carrier(1).set_frequency_offset_hz(1e9, c.offset);
        ASSERT_EQ(waveform.get_waveform_sample_rate_hz(), own * c.ratio);
        expect_little(waveform, name_of(c.first) + " oversampled " + std::to_string(c.ratio));
    }
}

/// Mean power density outside the channel against that inside, in dB, over the whole periodic waveform.
double outside_power_db(const std::vector<complex_t>& samples, double rate, double half_band, double half_channel)
{
    std::vector<complex_t> spectrum = samples;
    vek::common_lib::lib_fft_plan_t(samples.size(), vek::common_lib::LIB_FFT_FORWARD)
        .execute(spectrum.data(), spectrum.data());
    double inside = 0;
    double outside = 0;
    std::size_t inside_bins = 0;
    std::size_t outside_bins = 0;
    for (std::size_t i = 0; i < spectrum.size(); ++i) {
        const double bin = i < spectrum.size() / 2 ? static_cast<double>(i)
                                                   : static_cast<double>(i) - static_cast<double>(spectrum.size());
        const double frequency = std::fabs(bin) * rate / static_cast<double>(spectrum.size());
        if (frequency < half_band) {
            inside += std::norm(spectrum[i]);
            ++inside_bins;
        }
        else if (frequency > half_channel) {
            outside += std::norm(spectrum[i]);
            ++outside_bins;
        }
    }
    return 10 * std::log10((outside / static_cast<double>(outside_bins)) / (inside / static_cast<double>(inside_bins)));
}

TEST(lib_nr_phy, leaves_no_seam_between_frames_nor_at_the_wrap)
{
    nr_test::captured_output_t silence;
    double one_frame = 0;
    for (const unsigned int frames : {1u, 3u}) {
        lib_nr_waveform_configure_manager_t waveform;
        waveform.set_frames_number(frames);
        lib_nr_phy_t engine;
        full_grid_t grid(engine);
        engine.waveform_config(waveform);
        ASSERT_TRUE(engine.nr_phy_process());
        // 273 resource blocks of 30 kHz and twice the guard of 845 kHz.
        const double outside =
            outside_power_db(engine.get_baseband_signal_data(), 122.88e6, 49.14e6, 49.14e6 + 2 * 845e3);
        EXPECT_LT(outside, -60.0) << frames << " frames";
        if (frames == 1)
            one_frame = outside;
        else
            EXPECT_NEAR(outside, one_frame, 3.0);
    }
}

TEST(lib_nr_phy, two_carriers_land_where_they_are_asked_to_with_the_powers_asked_for)
{
    nr_test::captured_output_t silence;
    struct case_t
    {
        pair_t pairs[2];
        double offsets[2];
        double rate;
    };
    // In the second case the waveform's rate is no multiple of the second carrier's 122.88 MHz.
    for (const case_t& c :
         {case_t{{{LIB_NR_CHANNEL_FR1_40M, LIB_NR_SCS_30K}, {LIB_NR_CHANNEL_FR1_20M, LIB_NR_SCS_15K}},
                 {50e6, -50e6},
                 368.64e6},
          case_t{{{LIB_NR_CHANNEL_FR1_10M, LIB_NR_SCS_30K}, {LIB_NR_CHANNEL_FR1_100M, LIB_NR_SCS_30K}},
                 {55e6, -20e6},
                 199.68e6}})
    {
        lib_nr_waveform_configure_manager_t waveform = waveform_of(c.pairs[0]);
        waveform.set_standard_rules(c.rate > 300e6);
        waveform.add_carrier();
        waveform.get_carrier(1).set_bandwidth(c.pairs[1].bandwidth);
        waveform.get_carrier(1).set_numerology(c.pairs[1].spacing);
        for (unsigned int i = 0; i < 2; ++i)
            waveform.get_carrier(i).set_frequency_offset_hz(waveform.get_radio_frequency(), c.offsets[i]);
        waveform.get_carrier(1).set_power_boosting(-7.0);
        const double rate = waveform.get_waveform_sample_rate_hz();
        ASSERT_EQ(rate, c.rate);

        lib_nr_phy_t engine;
        full_grid_t grid(engine, {0, 1});
        engine.waveform_config(waveform);
        ASSERT_TRUE(engine.nr_phy_process());
        double densities[2]; // power of one subcarrier by its spacing
        for (unsigned int i = 0; i < 2; ++i) {
            nr_test::ofdm_setup_t setup = nr_test::setup_of(waveform, i);
            setup.sample_rate = setup.spacing();
            while (setup.sample_rate < 1.25 * setup.spacing() * grid.subcarriers(i))
                setup.sample_rate *= 2.0;
            const std::vector<complex_t> channel =
                nr_test::select_channel(engine.get_baseband_signal_data(), rate, c.offsets[i], setup.sample_rate);
            const rows_t received = nr_test::demodulate_frame(channel, setup, grid.subcarriers(i), 0.5, 0);
            EXPECT_LT(nr_test::error_vector_magnitude(received, grid.sent(i, 0)), 0.0015) << "carrier " << i;
            EXPECT_LT(worst_symbol(received, grid.sent(i, 0)), 0.004) << "carrier " << i;
            densities[i] = std::norm(nr_test::fitted_gain(received, grid.sent(i, 0))) / setup.sample_rate;
        }
        EXPECT_NEAR(10 * std::log10(densities[1] / densities[0]), -7.0, 0.01);
    }
}

TEST(lib_nr_phy, offsets_shift_turn_and_scale_the_carrier_exactly)
{
    nr_test::captured_output_t silence;
    lib_nr_waveform_configure_manager_t waveform = waveform_of({LIB_NR_CHANNEL_FR1_5M, LIB_NR_SCS_15K});
    lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(0);
    carrier.set_timing_offset_s(1000.4 / 7.68e6);
    carrier.set_frequency_offset_hz(1e9, 1234567);
    carrier.set_init_phase(77);
    carrier.set_power_boosting(-13.5);
    lib_nr_phy_t engine;
    engine.waveform_config(waveform);

    const std::size_t size = waveform.get_waveform_sample_points();
    std::mt19937 random(3);
    std::normal_distribution<double> gauss;
    std::vector<complex_t> before(size);
    for (complex_t& sample : before)
        sample = {gauss(random), gauss(random)};
    std::vector<complex_t> after = before;
    engine_peer_t::deal_carrier_process(engine, 0, after);
    double largest = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const long double turns = 1234567.0L * static_cast<long double>(i) /
                                      static_cast<long double>(waveform.get_waveform_sample_rate_hz()) +
                                  77.0L / 360.0L;
        const complex_t turn =
            std::polar(std::pow(10.0, -13.5 / 20.0), 2 * M_PI * static_cast<double>(turns - std::floor(turns)));
        largest = std::max(largest, std::norm(after[i] - before[(i + size - 1000) % size] * turn));
    }
    EXPECT_LT(std::sqrt(largest), 1e-9);

    // The length of the whole waveform is no shift at all.
    carrier.set_timing_offset_s(0.01);
    carrier.set_frequency_offset_hz(1e9, 0);
    carrier.set_init_phase(360);
    carrier.set_power_boosting(0);
    engine.waveform_config(waveform);
    after = before;
    engine_peer_t::deal_carrier_process(engine, 0, after);
    EXPECT_EQ(after, before);
}

TEST(lib_nr_phy, every_length_and_every_silence_has_well_formed_results)
{
    nr_test::captured_output_t silence;
    const auto run = [](const lib_nr_waveform_configure_manager_t& waveform, bool filled) {
        lib_nr_phy_t engine;
        full_grid_t grid(engine, filled ? std::vector<unsigned int>{0} : std::vector<unsigned int>{});
        engine.waveform_config(waveform);
        ASSERT_TRUE(engine.nr_phy_process());
        const auto& samples = engine.get_baseband_signal_data();
        ASSERT_EQ(samples.size(), waveform.get_waveform_sample_points());
        EXPECT_EQ(engine.get_waveform_ccdf_cruve_data().size(), 601u);
        EXPECT_EQ(engine.get_burst_ccdf_cruve_data().size(), 601u);
        EXPECT_EQ(engine.get_waveform_ccdf_marker_data().size(), 7u);
        EXPECT_EQ(engine.get_burst_ccdf_marker_data().size(), 7u);
        const double largest = std::accumulate(samples.begin(), samples.end(), 0.0, [](double most, complex_t sample) {
            return std::max({most, std::fabs(sample.real()), std::fabs(sample.imag())});
        });
        EXPECT_EQ(largest, filled ? 1.0 : 0.0);
        const auto& spectrum = engine.get_frequency_spectrum_data();
        const bool dark = std::all_of(spectrum.begin(), spectrum.end(), [](complex_t v) { return v == 0.0; });
        EXPECT_EQ(dark, !filled);
        EXPECT_FALSE(spectrum.empty());
    };
    for (unsigned int frames = 1; frames <= 4; ++frames)
        for (unsigned int subframes = 1; subframes <= 10; ++subframes) {
            lib_nr_waveform_configure_manager_t waveform = waveform_of({LIB_NR_CHANNEL_FR1_5M, LIB_NR_SCS_15K});
            waveform.set_frames_number(frames);
            waveform.set_subframes_number(subframes);
            ASSERT_EQ(waveform.get_waveform_sample_points(), 7680u * frames * (frames == 1 ? subframes : 10));
            run(waveform, true);
            run(waveform, false);
        }
    lib_nr_waveform_configure_manager_t disabled;
    disabled.get_carrier(0).set_enable(false);
    ASSERT_EQ(disabled.get_waveform_sample_points(), 0u);
    run(disabled, false);
}

TEST(lib_nr_phy, a_waveform_that_ends_inside_its_frame_is_the_frames_beginning)
{
    nr_test::captured_output_t silence;
    const auto filled = [](unsigned int subframes) {
        lib_nr_waveform_configure_manager_t waveform = waveform_of({LIB_NR_CHANNEL_FR1_5M, LIB_NR_SCS_15K});
        waveform.set_subframes_number(subframes);
        lib_nr_phy_t engine;
        full_grid_t grid(engine);
        engine.waveform_config(waveform);
        std::vector<complex_t> buffer(waveform.get_waveform_sample_points());
        EXPECT_TRUE(engine_peer_t::fill_frame_data(engine, 0, 0, 0, buffer));
        return buffer;
    };
    constexpr std::size_t k_reach = 512; // of the filter, ahead and behind
    const std::vector<complex_t> whole = filled(10);
    const std::vector<complex_t> cut = filled(3);
    ASSERT_EQ(cut.size(), 3u * 7680);
    // Behind what the whole frame's end spreads over its own beginning, up to what the beginning spreads ahead.
    for (std::size_t i = 2 * k_reach; i < cut.size() - k_reach; ++i)
        ASSERT_EQ(cut[i], whole[i]) << i;
}

TEST(lib_nr_phy, crest_factor_reduction_brings_the_waveform_to_its_target)
{
    nr_test::captured_output_t silence;
    for (const bool reduced : {false, true}) {
        lib_nr_waveform_configure_manager_t waveform = waveform_of({LIB_NR_CHANNEL_FR1_100M, LIB_NR_SCS_30K});
        waveform.set_crest_factor_reduction_enable(reduced);
        waveform.set_cfr_target_papr(8.0);
        lib_nr_phy_t engine;
        full_grid_t grid(engine);
        engine.waveform_config(waveform);
        ASSERT_TRUE(engine.nr_phy_process());
        const double hundredth_percent = engine.get_waveform_ccdf_marker_data()[4];
        const double peak = engine.get_waveform_ccdf_marker_data()[6];
        const rows_t received =
            nr_test::demodulate_frame(engine.get_baseband_signal_data(), nr_test::setup_of(waveform), 3276, 0.5, 0);
        const double error = nr_test::error_vector_magnitude(received, grid.sent(0, 0));
        if (reduced) {
            EXPECT_NEAR(hundredth_percent, 8.0, 0.5);
            EXPECT_LT(peak, 8.5);
            EXPECT_LT(error, 0.08);
            EXPECT_GT(error, 0.005); // the settings reached the reduction
        }
        else {
            EXPECT_NEAR(hundredth_percent, 9.6, 0.2);
            EXPECT_GT(peak, 11.0);
            EXPECT_LT(error, 0.0015);
        }
    }
}

/// All results of an engine, as far as they are made of its samples.
struct results_t
{
    explicit results_t(const lib_nr_phy_t& engine)
        : spectrum(engine.get_frequency_spectrum_data()),
          curves{engine.get_waveform_ccdf_cruve_data(), engine.get_waveform_ccdf_marker_data(),
                 engine.get_burst_ccdf_cruve_data(), engine.get_burst_ccdf_marker_data()}
    {}
    bool operator==(const results_t&) const = default;

    std::vector<complex_t> spectrum;
    std::vector<double> curves[4];
};

TEST(lib_nr_phy, results_are_those_of_the_samples_whenever_and_by_whomever_they_are_asked_for)
{
    nr_test::captured_output_t silence;
    const auto run = [](lib_nr_phy_t& engine, unsigned int slots) {
        nr_test::waveform_of_t waveform({"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_10M",
                                         "carrier[0].dl_ssb.enable=true",
                                         "carrier[0].dl_pdsch[0].slot_allocation=0:" + std::to_string(slots),
                                         "carrier[0].dl_pdsch[0].enable=true"});
        engine.waveform_config(waveform.get_waveform_manager());
        ASSERT_TRUE(engine.nr_phy_process());
    };
    auto& grid = lib_nr_channel_resource_manager_t::get_inst();
    grid.init_payload_mapping();
    const bool is_lent = grid.get_written_payload().may_sound(0); // by a test before, in the same process
    lib_nr_phy_t engine;
    EXPECT_TRUE(results_t(engine).spectrum.empty());
    run(engine, 1);
    EXPECT_EQ(grid.get_written_payload().may_sound(279), is_lent) << "the engine lends the payload to nobody";
    const results_t first(engine);
    // What the curves are by the operations of their own, the sums of power taken anew.
    const std::vector<complex_t> samples = engine.get_baseband_signal_data();
    std::vector<complex_t> burst;
    vek::common_lib::lib_common_signal_process_t::get_burst_signal_data(samples, burst);
    ASSERT_TRUE(!burst.empty() && burst.size() < samples.size());
    for (const std::size_t i : {0U, 2U}) {
        const auto& signal = i == 0 ? samples : burst;
        std::vector<double> curve;
        std::vector<double> markers;
        vek::common_lib::lib_ccdf_calculator_t::calculate_default_ccdf_data(signal, curve);
        vek::common_lib::lib_ccdf_calculator_t::get_default_ccdf_marker_data(curve, signal, markers);
        EXPECT_EQ(first.curves[i], curve);
        for (std::size_t m = 0; m < markers.size(); ++m)
            EXPECT_NEAR(first.curves[i + 1][m], markers[m], 1e-9);
    }

    lib_nr_phy_t copy(engine);
    run(engine, 15);
    const results_t second(engine);
    EXPECT_FALSE(second == first);
    EXPECT_TRUE(results_t(copy) == first);
    lib_nr_phy_t moved(std::move(copy));
    EXPECT_TRUE(results_t(moved) == first);
    EXPECT_TRUE(results_t(copy).spectrum.size() <= 4 && copy.get_baseband_signal_data().empty());
    moved = engine;
    EXPECT_TRUE(results_t(moved) == second);
    run(moved, 1);

    std::vector<std::thread> threads;
    std::atomic<int> agreeing = 0;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] { agreeing += results_t(moved) == first; });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(agreeing, 4);
}

TEST(lib_nr_phy, refuses_a_buffer_of_another_length)
{
    nr_test::captured_output_t output;
    lib_nr_phy_t engine;
    std::vector<complex_t> buffer(17);
    EXPECT_FALSE(engine_peer_t::fill_frame_data(engine, 0, 0, 0, buffer));
    EXPECT_NE(output.text().find("lib_nr_dl_phy_t::_fill_frame_data Report : Carrier Data Length Error!\n"),
              std::string::npos);
    EXPECT_EQ(buffer, std::vector<complex_t>(17));
}

TEST(lib_nr_phy, a_conflict_empties_the_results_and_tells_its_first_cell)
{
    const std::string carrier = "carrier[0].";
    nr_test::waveform_of_t waveform({carrier + "channel_bandwidth=LIB_NR_CHANNEL_FR1_10M",
                                     carrier + "dl_ssb.enable=true", carrier + "dl_dci[0].start_symbol_within_slot=5"});
    const nr_test::captured_output_t output;
    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    ASSERT_TRUE(engine.nr_phy_process());
    EXPECT_FALSE(engine.get_baseband_signal_data().empty());
    nr_test::take(waveform, {carrier + "dl_dci[0].enable=true"});
    engine.waveform_config(waveform.get_waveform_manager());
    EXPECT_FALSE(engine.nr_phy_process());
    EXPECT_NE(output.text().find("lib_nr_dl_phy_t::nr_phy_process Report : Resource Mapping Conflict!\n"),
              std::string::npos);
    EXPECT_TRUE(engine.get_baseband_signal_data().empty());
    EXPECT_TRUE(engine.get_frequency_spectrum_data().empty());
    EXPECT_TRUE(engine.get_waveform_ccdf_cruve_data().empty());
    ASSERT_EQ(engine.get_record().conflicts.size(), 1u);
    // The first block lies in symbols 4 to 7, subcarriers 24 to 263; the candidate is RBs 0 to 23.
    const lib_nr_entry_conflict_t& conflict = engine.get_record().conflicts.front();
    EXPECT_EQ(conflict.owner.channel, "SS/PBCH");
    EXPECT_EQ(conflict.newcomer.channel, "PDCCH");
    EXPECT_EQ(std::tuple(conflict.slot, conflict.symbol, conflict.rb, conflict.cells), std::tuple(0u, 5u, 2u, 240u));
}

TEST(lib_nr_phy, tells_each_step_of_a_frame_in_its_order)
{
    const auto steps = [](const std::vector<std::string>& names) {
        std::string lines;
        for (const std::string& name : names)
            lines += "-----+++++" + name + "+++++-----\ncarrier(1)\n";
        return lines;
    };
    lib_nr_waveform_configure_manager_t waveform;
    waveform.set_frames_number(2);
    waveform.add_carrier();
    lib_nr_phy_t engine;
    const auto lines_of_view = [&](unsigned int frame) {
        engine.waveform_config(waveform);
        nr_test::captured_output_t output;
        EXPECT_TRUE(engine.deal_resource_mapping(1, 0, frame, waveform));
        return output.text();
    };
    const std::string ssb = steps({"_nr_dl_ssb_re_map"});
    const std::string others =
        steps({"_nr_dl_csirs_re_map", "_nr_dl_prs_re_map", "_nr_dl_pdcch_re_map", "_nr_dl_pdsch_re_map"});
    const std::string disabled = "_nr_dl_ssb_re_map : ssb is not enable.\n\n";
    EXPECT_EQ(lines_of_view(0), ssb + disabled + others);
    EXPECT_EQ(lines_of_view(1), ssb + disabled + others);
    // With a period of 20 ms the block is not asked for in odd frames.
    waveform.get_carrier(1).get_dl_ssb().set_periodicity(LIB_NR_SSB_20MS_PERIODICITY);
    EXPECT_EQ(lines_of_view(0), ssb + disabled + others);
    EXPECT_EQ(lines_of_view(1), ssb + others);

    waveform.get_carrier(1).set_carrier_type(LIB_NR_UPLINK);
    EXPECT_EQ(lines_of_view(0), steps({"_nr_ul_pusch_re_map", "_nr_ul_srs_re_map"}) + "carrier enable : 1\n");

    nr_test::captured_output_t output;
    std::vector<complex_t> buffer(waveform.get_waveform_sample_points());
    EXPECT_TRUE(engine_peer_t::fill_frame_data(engine, 1, 0, 0, buffer));
    EXPECT_EQ(output.text(), steps({"_nr_ul_pusch_link_process", "_nr_ul_srs_link_process"}));
}

TEST(lib_nr_phy, mirroring_reverses_the_spectrum_and_a_tone_peaks_in_its_bin)
{
    nr_test::captured_output_t silence;
    for (const bool mirrored : {false, true}) {
        lib_nr_waveform_configure_manager_t waveform = waveform_of({LIB_NR_CHANNEL_FR1_5M, LIB_NR_SCS_15K});
        waveform.set_mirror_spectrum(mirrored);
        waveform.get_carrier(0).set_baseband_filter_enable(false);
        lib_nr_phy_t engine;
        engine_peer_t::after_channel_steps(engine, [](unsigned int, unsigned int, unsigned int) {
            for (auto& row : lib_nr_channel_resource_manager_t::get_inst().get_payload_mapping())
                row[150 + 64] = 1.0; // 64 x 15 kHz above the centre
        });
        engine.waveform_config(waveform);
        ASSERT_TRUE(engine.nr_phy_process());
        const auto& spectrum = engine.get_frequency_spectrum_data();
        const auto peak = std::max_element(spectrum.begin(), spectrum.end(),
                                           [](complex_t a, complex_t b) { return std::norm(a) < std::norm(b); });
        const double bin = 960e3 / 7.68e6 * static_cast<double>(spectrum.size());
        const double found = static_cast<double>(peak - spectrum.begin()) - static_cast<double>(spectrum.size() / 2);
        EXPECT_NEAR(found, mirrored ? -bin : bin, 4.0); // prefixes widen the line
    }
}

} // namespace

#include "receiver/fft.h"
#include "receiver/ofdm_receiver.h"
#include "support/program.h"

#include <cmath>
#include <cstring>
#include <nlohmann/json.hpp>
#include <numbers>
#include <random>

// Error vector magnitudes, and captures held against what was sent.

namespace
{

using nlohmann::json;
using nr_test::signal_t;

constexpr double k_turn = 2.0 * std::numbers::pi;

class nrwave_compare : public nr_test::program_test_t
{
protected:
    signal_t samples_in(const std::string& file) const
    {
        const std::string bytes = content(file);
        signal_t samples(bytes.size() / sizeof(signal_t::value_type));
        std::memcpy(static_cast<void*>(samples.data()), bytes.data(), bytes.size());
        return samples;
    }
    void write_samples(const std::string& file, const signal_t& samples) const
    {
        write(file, {reinterpret_cast<const char*>(samples.data()), samples.size() * sizeof samples[0]});
    }
};

/// A copy of a periodic signal that comes later by a number of samples that need not be whole.
signal_t delayed(signal_t samples, double delay)
{
    const auto count = static_cast<double>(samples.size());
    nr_test::fft(samples, -1);
    for (std::size_t k = 0; k < samples.size(); ++k) {
        const auto line = static_cast<double>(k) - (2 * k >= samples.size() ? count : 0.0);
        samples[k] *= std::polar(1.0 / count, -k_turn * std::fmod(line * delay / count, 1.0));
    }
    nr_test::fft(samples, 1);
    return samples;
}

/// The same, turned and with a frequency offset.
signal_t captured(const signal_t& sent, double delay, double turns_a_sample)
{
    signal_t samples = delayed(sent, delay);
    for (std::size_t n = 0; n < samples.size(); ++n)
        samples[n] *= std::polar(0.5, 0.7 + k_turn * std::fmod(turns_a_sample * static_cast<double>(n), 1.0));
    return samples;
}

void add_noise(signal_t& samples, double power)
{
    std::mt19937 generator(7);
    std::normal_distribution<double> part(0.0, std::sqrt(power / 2.0));
    for (auto& sample : samples)
        sample += std::complex<double>(part(generator), part(generator));
}

const json& channel(const json& all, const std::string& path)
{
    for (const json& own : all.at("channels"))
        if (own.at("path") == path)
            return own;
    throw std::out_of_range(path);
}

const std::string k_full = "[carrier[0]]\nchannel_bandwidth=FR1_10M\ndl_pdsch[0].enable=true\ndl_ssb.enable=true\n[]\n";

TEST_F(nrwave_compare, finds_a_planted_delay_turn_offset_and_noise)
{
    write("sent.recipe", k_full);
    ASSERT_EQ(run("generate --recipe sent.recipe --format cf64 -o sent --quiet").err, "");
    const double rate = json::parse(content("sent.json")).at("rate");
    signal_t samples = samples_in("sent.cf64");
    nr_test::ofdm_setup_t setup;
    setup.mu = 1;
    setup.sample_rate = rate;
    double power = 0.0;
    std::size_t cells = 0;
    for (const signal_t& row : nr_test::demodulate_frame(samples, setup, 24 * 12, 0.0, 0))
        for (const auto& cell : row)
            if (std::norm(cell) > 1e-9) {
                power += std::norm(cell);
                ++cells;
            }
    ASSERT_GT(cells, 50'000u);

    samples = captured(samples, 12'345.25, 1e3 / rate);
    add_noise(samples, 0.25 * 1e-3 * power / static_cast<double>(cells));
    write_samples("capture.cf64", samples);
    for (const char* reference : {"sent.recipe", "sent.cf64"}) {
        const nr_test::run_t told = run("compare capture.cf64 " + std::string(reference) + " --json --rate " +
                                        std::to_string(static_cast<std::uint64_t>(rate)));
        ASSERT_EQ(told.err, "");
        const json found = json::parse(told.out);
        EXPECT_NEAR(found.at("delay_samples"), 12'345.25, 0.01);
        EXPECT_NEAR(found.at("gain_db"), 20.0 * std::log10(0.5), 0.02);
        EXPECT_NEAR(found.at("phase_deg"), 0.7 * 360.0 / k_turn, 0.2);
        EXPECT_NEAR(found.at("frequency_offset_hz"), 1e3, 1.0);
        EXPECT_NEAR(found.at("evm_percent"), 3.162, 0.1);
        EXPECT_NEAR(channel(found, "carrier[0].dl_pdsch[0]").at("evm_percent"), 3.162, 0.1);
        EXPECT_NEAR(channel(found, "carrier[0].dl_ssb").at("evm_percent"), 3.162, 0.2);
    }
    ASSERT_EQ(run("generate --recipe sent.recipe --format ci16 --scale 1 --rate 25M -o slower --quiet").err, "");
    EXPECT_LT(json::parse(run("compare slower.ci16 sent.recipe --json").out).at("delay_samples"), 1e-3);
    // Two frames, mirrored; what is captured of them begins in the second and ends in the first.
    write("two.recipe", k_full + "frame_number=2\nmirror_spectrum=true\n");
    ASSERT_EQ(run("generate --recipe two.recipe --format cf64 -o two --quiet").err, "");
    signal_t part = delayed(samples_in("two.cf64"), 100'000.0);
    part.resize(200'000);
    write_samples("part.cf64", part);
    const json found = json::parse(run("compare part.cf64 two.recipe --json --rate 15.36M").out);
    EXPECT_NEAR(found.at("delay_samples"), 100'000.0, 1e-3);
    EXPECT_LT(found.at("evm_percent"), 0.3);
    EXPECT_NE(run("compare sent.cf64 sent.recipe").out.find("delay                     0.000 samples\n"),
              std::string::npos);
}

// Bands far apart agree nearly as well where they are turned by a whole turn more, bursts in them with another offset.
TEST_F(nrwave_compare, finds_carriers_and_bursts_that_are_far_apart)
{
    write("carriers.recipe", "[carrier[0]]\nchannel_bandwidth=FR1_10M\ndl_ssb.enable=true\n[]\ncopy carrier[0]\n"
                             "carrier[0].frequency_offset=-30M\ncarrier[1].frequency_offset=30M\n");
    write("bursts.recipe", "include " NR_MOD_LIB_SOURCE_DIR "/examples/prach_short.recipe\n");
    for (const std::string name : {"carriers", "bursts"}) {
        ASSERT_EQ(run("generate --recipe " + name + ".recipe --format cf64 -o " + name + " --quiet").err, "");
        const std::uint64_t rate = json::parse(content(name + ".json")).at("rate");
        const signal_t sent = samples_in(name + ".cf64");
        write_samples("capture.cf64", captured(sent, -0.5, -7400.5 / static_cast<double>(rate)));
        const json found =
            json::parse(run("compare capture.cf64 " + name + ".recipe --json --rate " + std::to_string(rate)).out);
        EXPECT_NEAR(found.at("delay_samples"), static_cast<double>(sent.size()) - 0.5, 1e-3) << name;
        EXPECT_NEAR(found.at("frequency_offset_hz"), -7400.5, 0.01) << name;
    }
}

TEST_F(nrwave_compare, shows_what_filter_windowing_and_peak_reduction_cost)
{
    const auto evm_of = [&](const std::string& steps) {
        write("x.recipe", k_full + steps);
        const nr_test::run_t told = run("show --recipe x.recipe --json");
        EXPECT_EQ(told.err, "");
        return json::parse(told.out);
    };
    const double plain = evm_of("carrier[0].windowing_beta=0\ncarrier[0].baseband_filter=false\n")
                             .at("carriers")
                             .at(0)
                             .at("evm_percent");
    EXPECT_LT(plain, 1e-5);
    const double windowed = evm_of("carrier[0].windowing_beta=0.06\ncarrier[0].baseband_filter=false\n")
                                .at("carriers")
                                .at(0)
                                .at("evm_percent");
    EXPECT_GT(windowed, 1e-2);
    const json reduced = evm_of("crest_factor_reduction_enable=true\ncfr_target_papr=4\n");
    const json& pdsch = channel(reduced, "carrier[0].dl_pdsch[0]");
    EXPECT_GT(pdsch.at("evm_percent"), 3.5);
    EXPECT_TRUE(channel(reduced, "carrier[0].dl_ssb").at("evm_limit_percent").is_null());
    const std::set<double> limits = {17.5, 12.5, 8.0, 3.5};
    EXPECT_TRUE(limits.contains(pdsch.at("evm_limit_percent").get<double>()));

    ASSERT_EQ(run("generate --recipe x.recipe --quiet --report r --constellation 'carrier[0].dl_pdsch[0]'").err, "");
    EXPECT_EQ(content("r/constellation_carrier[0].dl_pdsch[0].png").substr(1, 3), "PNG");
    const std::string page = content("r/report.html");
    EXPECT_NE(page.find("alt=\"constellation_carrier[0].dl_pdsch[0]\""), std::string::npos);
    EXPECT_NE(page.find("<h3>error vector magnitude</h3>"), std::string::npos);
    const std::set<std::string> before = files();
    for (const char* arguments : {"--report n --constellation 'carrier[0].dl_pdsch[7]'", "-o n --constellation x"}) {
        const nr_test::run_t failed = run("generate --recipe x.recipe " + std::string(arguments));
        EXPECT_NE(failed.status, 0);
        EXPECT_EQ(nr_test::lines_of(failed.err), 1u) << failed.err;
        EXPECT_EQ(files(), before);
    }
}

// Offsets, delays, a mirrored spectrum and the phase terms leave no error; another rate leaves what it cuts.
TEST_F(nrwave_compare, finds_the_cells_of_every_carrier_where_they_are)
{
    write("two.recipe",
          k_full + "mirror_spectrum=true\nphase_compensation=true\n[carrier[0]]\nbaseband_filter=false\n"
                   "windowing_beta=0\ntiming_offset=1e-4\n[]\ncopy carrier[0]\ncarrier[1].frequency_offset=15M\n"
                   "carrier[1].dl_ssb.enable=false\n");
    const auto shown = [&](const std::string& arguments) {
        return json::parse(run("show --recipe two.recipe --json " + arguments).out);
    };
    for (const auto& [rate, most] : {std::pair{"", 1e-3}, std::pair{"--rate 50M", 0.02}}) {
        const json both = shown(rate);
        ASSERT_EQ(both.at("channels").size(), 3u);
        for (const json& carrier : both.at("carriers"))
            EXPECT_LT(carrier.at("evm_percent"), most) << rate;
    }
    // Not a whole number of subcarriers off the centre, and so alone.
    const json one = shown("--set carrier[0].enable=false --set carrier[1].frequency_offset=15000100");
    EXPECT_LT(one.at("carriers").at(0).at("evm_percent"), 1e-3);
    const json burst =
        json::parse(run("show --json --recipe " NR_MOD_LIB_SOURCE_DIR "/examples/prach_short.recipe").out);
    EXPECT_LT(channel(burst, "carrier[0].ul_prach[0]").at("evm_percent"), 0.01);
}

TEST_F(nrwave_compare, tells_reference_signals_apart_in_maps)
{
    write("x.recipe", k_full);
    const std::string map = run("map --recipe x.recipe -o -").out;
    EXPECT_NE(map.find(",PDSCH DMRS\n"), std::string::npos);
    EXPECT_NE(map.find(",SSB DMRS\n"), std::string::npos);
    // Every fourth subcarrier of a block's 576 cells, TS 38.211 clause 7.4.3.1.3, in eight blocks at most.
    std::size_t dmrs = 0;
    for (std::size_t place = 0; (place = map.find(",SSB DMRS\n", place + 1)) != std::string::npos;)
        ++dmrs;
    EXPECT_TRUE(dmrs > 0 && dmrs % 144 == 0) << dmrs;
}

TEST_F(nrwave_compare, refuses_what_it_cannot_hold_against_each_other)
{
    write("sent.recipe", k_full);
    ASSERT_EQ(run("generate --recipe sent.recipe --format cf64 -o sent --quiet").status, 0);
    write("short.cf64", content("sent.cf64").substr(0, 1600));
    write("cut.cf64", content("sent.cf64").substr(0, 1601));
    write("silent.cf64", std::string(content("sent.cf64").size(), '\0'));
    write("empty.cf64", "");
    write_samples("far.cf64", captured(samples_in("sent.cf64"), 0.0, 150e3 / 15.36e6));
    for (const char* arguments :
         {"missing.cf64 sent.recipe", "sent.cf64 missing.recipe", "short.cf64 sent.recipe --rate 15.36M",
          "cut.cf64 sent.recipe --rate 15.36M", "silent.cf64 sent.recipe --rate 15.36M",
          "empty.cf64 sent.recipe --rate 15.36M", "far.cf64 sent.recipe --rate 15.36M",
          "sent.cf64 sent.recipe --rate 7", "sent.cf64 sent.recipe --rate ''", "short.cf64 sent.recipe", "sent.cf64",
          "sent.cf64 ''"})
    {
        const nr_test::run_t failed = run("compare " + std::string(arguments));
        EXPECT_NE(failed.status, 0) << arguments;
        EXPECT_EQ(nr_test::lines_of(failed.err), 1u) << failed.err;
        EXPECT_EQ(failed.out, "") << arguments;
    }
}

} // namespace

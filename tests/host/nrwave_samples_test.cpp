#include "host/nrwave_encoding.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_metadata.h"
#include "support/program.h"

#include <array>
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <map>
#include <nlohmann/json.hpp>
#include <numbers>
#include <random>
#include <vector>

namespace
{

using namespace nr_test;
using sample_t = std::complex<double>;

class nrwave_samples : public program_test_t
{
protected:
    /// The numbers of a bare file, in units of its full scale.
    template <class number_t>
    std::vector<sample_t> samples(const std::string& name, double full_scale = 1.0, std::size_t head = 0) const
    {
        const std::string bytes = content(name).substr(head);
        std::vector<sample_t> list(bytes.size() / (2 * sizeof(number_t)));
        for (std::size_t i = 0; i < list.size(); ++i) {
            std::array<number_t, 2> pair;
            std::memcpy(pair.data(), &bytes[i * sizeof pair], sizeof pair);
            list[i] = sample_t(static_cast<double>(pair[0]), static_cast<double>(pair[1])) / full_scale;
        }
        return list;
    }

    nlohmann::json json(const std::string& arguments) const
    {
        const run_t result = run(arguments);
        EXPECT_EQ(result.err, "") << arguments;
        return nlohmann::json::parse(result.out);
    }
};

double largest_difference(const std::vector<sample_t>& a, const std::vector<sample_t>& b)
{
    EXPECT_EQ(a.size(), b.size());
    double largest = 0.0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        largest = std::max({largest, std::fabs((a[i] - b[i]).real()), std::fabs((a[i] - b[i]).imag())});
    return largest;
}

/// One line of the periodic spectrum, by the plain sum.
sample_t line_of(const std::vector<sample_t>& samples, std::int64_t line)
{
    const auto count = static_cast<std::int64_t>(samples.size());
    sample_t sum = 0.0;
    for (std::int64_t n = 0; n < count; ++n)
        sum += samples[static_cast<std::size_t>(n)] *
               std::polar(1.0,
                          -2.0 * std::numbers::pi * static_cast<double>(line * n % count) / static_cast<double>(count));
    return sum / static_cast<double>(count);
}

TEST_F(nrwave_samples, holds_the_same_samples_in_every_format_and_reads_them_back)
{
    std::map<std::string, nlohmann::json> told;
    for (const char* format : {"sigmf", "cf32", "cf64", "ci16", "npy", "csv"})
        told[format] = json("generate " + k_small + "--scale 2.5 --json -o " + format + " --format " + format);
    const std::vector<sample_t> exact = samples<double>("cf64.cf64");
    double peak = 0.0;
    for (const sample_t& sample : exact)
        peak = std::max({peak, std::fabs(sample.real()), std::fabs(sample.imag())});
    EXPECT_NEAR(20 * std::log10(peak), -2.5, 1e-9);
    EXPECT_LE(largest_difference(samples<float>("cf32.cf32"), exact), 4e-8);
    EXPECT_LE(largest_difference(samples<std::int16_t>("ci16.ci16", 32767.0), exact) * 32767, 0.5 + 1e-9);
    EXPECT_EQ(content("npy.npy").substr(0, 8), std::string("\x93NUMPY\x01\0", 8));
    EXPECT_NE(content("npy.npy").find("{'descr': '<c16', 'fortran_order': False, 'shape': (153600,), }"),
              std::string::npos);
    EXPECT_EQ(largest_difference(samples<double>("npy.npy", 1.0, 128), exact), 0.0);
    std::vector<sample_t> lines;
    std::istringstream text(content("csv.csv"));
    std::string line;
    std::getline(text, line);
    EXPECT_EQ(line, "i,q");
    while (std::getline(text, line))
        lines.emplace_back(std::strtod(line.c_str(), nullptr), std::strtod(&line[line.find(',') + 1], nullptr));
    EXPECT_EQ(largest_difference(lines, exact), 0.0);

    for (auto& [format, figures] : told) {
        figures["ok"] = true;
        EXPECT_EQ(figures["deviations"][0]["name"], "mib_flags");
        figures.erase("deviations"); // of a run, not of a file
        EXPECT_EQ(json("info --json " + figures["files"][0].get<std::string>()), figures);
        EXPECT_EQ(json("info --json " + figures["files"][1].get<std::string>()), figures);
    }
}

TEST_F(nrwave_samples, keeps_the_lines_of_the_occupied_band_at_any_rate)
{
    ASSERT_EQ(run("generate " + k_small + "--format cf64 -o own").status, 0);
    const std::vector<sample_t> own = samples<double>("own.cf64");
    constexpr std::int64_t k_edge = 43200; // half of 8.64 MHz in lines of 100 Hz
    for (const char* rate : {"8.64M", "10000100", "40M"}) {
        ASSERT_EQ(run("generate " + k_small + "--format cf64 -o x --rate " + rate).status, 0);
        const std::vector<sample_t> other = samples<double>("x.cf64");
        EXPECT_EQ(static_cast<double>(other.size()),
                  std::round(json("info --json x.json")["rate"].get<double>() / 100));
        for (const std::int64_t line : {-k_edge, std::int64_t{-36150}, std::int64_t{0}, std::int64_t{301}, k_edge - 1})
            EXPECT_LT(std::abs(line_of(other, line) - line_of(own, line)), 1e-12) << rate << ' ' << line;
        EXPECT_LT(other.size() > own.size() ? std::abs(line_of(other, 100000)) : 0.0, 1e-12);
    }
    ASSERT_EQ(run("generate " + k_small + "--format cf64 -o long --multiple-of 4096").status, 0);
    const std::string once = content("own.cf64");
    const std::string often = content("long.cf64");
    ASSERT_EQ(often.size(), 2 * once.size()); // 153,600 samples are 37.5 times 4096
    EXPECT_EQ(often, once + once);
}

TEST_F(nrwave_samples, tells_of_clipped_samples_and_holds_them_at_full_scale)
{
    ASSERT_EQ(run("generate " + k_small + "--scale -6 --format cf64 -o loud").status, 0);
    const run_t clipped = run("generate " + k_small + "--scale -6 --format ci16 --json -o x");
    std::size_t expected = 0;
    for (const sample_t& sample : samples<double>("loud.cf64"))
        expected += std::max(std::fabs(sample.real()), std::fabs(sample.imag())) * 32767 > 32767.5 ? 1 : 0;
    EXPECT_GT(expected, 10u);
    EXPECT_EQ(clipped.err, std::to_string(expected) + " samples clipped: held at full scale\n");
    EXPECT_EQ(nlohmann::json::parse(clipped.out)["clipped"], expected);
    EXPECT_EQ(nlohmann::json::parse(clipped.out)["peak_dbfs"], 0.0);
    EXPECT_NE(run("generate " + k_small + "--strict --scale -6 --format ci16 -o strict").status, 0);
    EXPECT_FALSE(fs::exists(m_folder / "strict.ci16"));
}

TEST_F(nrwave_samples, annotates_what_is_sent_where_it_stands_in_the_air)
{
    const std::string steps = "--set mirror_spectrum=1 --set carrier[0].timing_offset=0.001 ";
    ASSERT_EQ(run("generate " + k_small + steps + "-o x --multiple-of 307200 --scale 1").status, 0);
    const auto meta = nlohmann::json::parse(content("x.sigmf-meta"));
    const auto& global = meta["global"];
    EXPECT_EQ(global["core:sha512"].get<std::string>() + "  x.sigmf-data\n", shell("sha512sum x.sigmf-data").out);
    EXPECT_EQ(global["core:recorder"], shell("nrwave --version | tr -d '\\n'").out);
    EXPECT_EQ(global["core:extensions"][0]["name"], "nrwave");
    EXPECT_EQ(global["nrwave:scale_db"], 1.0);
    EXPECT_NEAR(global["nrwave:peak_dbfs"], -1.0, 1e-6);
    EXPECT_LT(global["nrwave:rms_dbfs"], -1.0);
    // Blocks at the symbols 4, 8, 16 and 20 of two slots, their lowest subcarrier 24 of 288; a symbol has 548 samples,
    // the first of a half subframe 8 more. A millisecond of delay is 15,360 samples.
    std::vector<nlohmann::json> blocks;
    std::vector<nlohmann::json> dmrs;
    for (const auto& annotation : meta["annotations"])
        (annotation["core:label"] == "carrier[0].dl_ssb" ? blocks : dmrs).push_back(annotation);
    ASSERT_EQ(blocks.size(), 2u);
    ASSERT_EQ(dmrs.size(), 8u);
    EXPECT_EQ(dmrs[1]["core:label"], "carrier[0].dl_ssb DMRS");
    EXPECT_EQ(dmrs[1]["core:sample_start"], 15360 + 9 * 548 + 8);
    EXPECT_EQ(dmrs[1]["core:sample_count"], 3 * 548);
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_EQ(blocks[i], (nlohmann::json{{"core:sample_start", 15360 + 4 * 548 + 8 + i * 153600},
                                             {"core:sample_count", 20 * 548 + 8},
                                             {"core:freq_lower_edge", 1e9 - 30e3 * (24 + 240 - 144 - 0.5)},
                                             {"core:freq_upper_edge", 1e9 - 30e3 * (24 - 144 - 0.5)},
                                             {"core:label", "carrier[0].dl_ssb"}}));

    ASSERT_EQ(run("generate --recipe " NR_MOD_LIB_SOURCE_DIR "/examples/prach_short.recipe -o p").status, 0);
    const auto bursts = nlohmann::json::parse(content("p.sigmf-meta"));
    ASSERT_GE(bursts["annotations"].size(), 1u);
    EXPECT_EQ(bursts["annotations"][0]["core:label"], "carrier[0].ul_prach[0]");
    // The strongest sample lies within a burst.
    const std::vector<sample_t> signal = samples<float>("p.sigmf-data");
    const auto strongest =
        std::max_element(signal.begin(), signal.end(), [](auto a, auto b) { return std::norm(a) < std::norm(b); });
    const auto place = static_cast<std::uint64_t>(strongest - signal.begin());
    bool inside = false;
    for (const auto& burst : bursts["annotations"])
        inside = inside || place - burst["core:sample_start"].get<std::uint64_t>() < burst["core:sample_count"];
    EXPECT_TRUE(inside);
}

TEST_F(nrwave_samples, generates_the_same_bytes_from_the_recipe_in_the_metadata)
{
    ASSERT_EQ(run("generate --preset NR-FR1-TM2a:bandwidth=10m,duplex=fdd --set carrier[0].ncell_id=7 -o x").status, 0);
    ASSERT_EQ(shell("nrwave info x.sigmf-meta --settings >x.recipe && nrwave generate --strict --recipe x.recipe -o y "
                    "--quiet && cmp x.sigmf-data y.sigmf-data")
                  .err,
              "");
    ASSERT_EQ(run("generate " + k_small + "--format cf32 -o z").status, 0);
    for (const auto& [change, line] : std::map<std::string, std::string>{
             {"printf x | dd of=z.cf32 bs=1 seek=5000 conv=notrunc status=none", "z.cf32 is not as z.json tells: hash"},
             {"truncate -s -8 z.cf32", "z.cf32 is not as z.json tells: length, hash"},
             {"truncate -s -3 z.cf32", "z.cf32: its last sample is cut short"},
             {"sed -i 's/\"peak_dbfs\": .*/\"peak_dbfs\": -0.5,/' z.json", "z.cf32 is not as z.json tells: peak"}})
    {
        const run_t result = shell("mkdir -p c && cp z.* c && cd c && " + change + " && nrwave info z.cf32 --settings");
        EXPECT_NE(result.status, 0) << change;
        EXPECT_EQ(result.err.rfind("nrwave: " + line, 0), 0u) << result.err;
        EXPECT_EQ(result.out, "") << change;
    }
    EXPECT_EQ(shell("nrwave info z.json --json >/dev/full").status, 1);
}

// Whatever stands in a file: a failure, or figures, and no more.
TEST_F(nrwave_samples, survives_mutations_of_files)
{
    const std::string meta =
        R"({"global": {"core:datatype": "cf32_le", "core:sample_rate": 1e6, "nrwave:samples": 3}})";
    const std::string side = R"({"format": "npy", "rate": 1, "samples": 2, "sha512": "", "settings": "a=b"})";
    const std::string npy = nrwave::sample_encoder_t(nrwave::sample_format_t::npy, 1.0).head(1) + std::string(16, 'x');
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        std::string text = i % 3 == 0 ? meta : i % 3 == 1 ? side : npy;
        for (int change = 0; change < 1 + i % 4; ++change)
            text.replace(random() % text.size(), random() % 3,
                         std::string(1 + random() % 2, static_cast<char>(random() % 256)));
        try {
            nrwave::sample_decoder_t decoder(i % 2 == 0 ? nrwave::sample_format_t::npy : nrwave::sample_format_t::csv);
            i % 3 == 0   ? (void)nrwave::claim_of_sigmf("x", text)
            : i % 3 == 1 ? (void)nrwave::claim_of_sidecar("x", text)
                         : decoder.add(text);
            decoder.finish();
        } catch (const nrwave::failure_t& failure) {
            EXPECT_LT(std::strlen(failure.what()), 400u);
        }
    }
}

} // namespace

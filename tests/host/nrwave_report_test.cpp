#include "receiver/fft.h"
#include "support/program.h"

#include <cmath>
#include <cstring>
#include <nlohmann/json.hpp>

// What the tool reckons and draws of its samples, seen from outside.

namespace
{

namespace fs = std::filesystem;
using nlohmann::json;
using nr_test::k_small;

class nrwave_report : public nr_test::program_test_t
{
};

/// How much power a signal's periodic lines hold between two frequencies.
class lines_t
{
public:
    lines_t(const std::string& bytes, double rate) : m_below(1)
    {
        nr_test::signal_t samples(bytes.size() / sizeof(nr_test::signal_t::value_type));
        std::memcpy(static_cast<void*>(samples.data()), bytes.data(), bytes.size());
        nr_test::fft(samples, -1);
        const std::size_t count = samples.size();
        m_line = rate / static_cast<double>(count);
        for (std::size_t i = 0; i < count; ++i)
            m_below.push_back(m_below.back() +
                              std::norm(samples[(i + count / 2) % count] / static_cast<double>(count)));
    }
    double between(double low, double high) const { return m_below[_place(high)] - m_below[_place(low)]; }

private:
    std::size_t _place(double hertz) const
    {
        const auto count = static_cast<double>(m_below.size() - 1);
        return static_cast<std::size_t>(std::clamp(std::round(hertz / m_line + count / 2.0), 0.0, count));
    }

    double m_line = 0.0;
    std::vector<double> m_below;
};

double db(double ratio) { return 10.0 * std::log10(ratio); }

// Two carriers side by side, mirrored; crest factor reduction spreads their peaks over all of the rate.
TEST_F(nrwave_report, shows_what_another_transform_finds)
{
    write("two.recipe", "mirror_spectrum=true\ncrest_factor_reduction_enable=true\ncfr_target_papr=5\n"
                        "[carrier[0]]\nchannel_bandwidth=FR1_10M\ndl_pdsch[0].enable=true\nadd dl_pdsch\n[]\n"
                        "copy carrier[0]\ncarrier[1].frequency_offset=10M\n");
    ASSERT_EQ(run("generate --recipe two.recipe --format cf64 -o x").err, "");
    const auto shown = json::parse(run("show --recipe two.recipe --json").out);
    const double rate = shown.at("rate");
    const lines_t lines(content("x.cf64"), rate);
    const auto& carriers = shown.at("carriers");
    ASSERT_EQ(carriers.size(), 2u);
    json exceeded = json::array();
    constexpr double k_half_transmission = 12 * 24 * 30e3 / 2;
    for (int c = 0; c < 2; ++c) {
        const auto& carrier = carriers.at(static_cast<std::size_t>(c));
        const double centre = -10e6 * c;
        const auto in_transmission = [&](double middle) {
            return lines.between(middle - k_half_transmission, middle + k_half_transmission);
        };
        EXPECT_EQ(carrier.at("low_hz"), centre - 5e6);
        EXPECT_EQ(carrier.at("high_hz"), centre + 5e6);
        EXPECT_NEAR(carrier.at("power_dbfs"), db(lines.between(centre - 5e6, centre + 5e6)), 0.02);
        const double own = in_transmission(centre);
        EXPECT_NEAR(carrier.at("aclr_lower_db"), db(own / in_transmission(centre - 10e6)), 0.1) << c;
        EXPECT_NEAR(carrier.at("aclr_upper_db"), db(own / in_transmission(centre + 10e6)), 0.1) << c;
        const double from = c == 0 ? -5e6 : -rate;
        const double to = c == 0 ? rate : -5e6;
        double low = centre;
        while (lines.between(from, low) > 0.005 * lines.between(from, to))
            low -= 5e3;
        double high = centre;
        while (lines.between(high, to) > 0.005 * lines.between(from, to))
            high += 5e3;
        EXPECT_NEAR(carrier.at("occupied_bandwidth_hz"), high - low, 30e3) << c;
        const std::string path = "carrier[" + std::to_string(c) + "].";
        if (high - low > 10e6)
            exceeded.push_back(path + "occupied_bandwidth_hz");
        if (carrier.at(c == 0 ? "aclr_upper_db" : "aclr_lower_db") < 45.0) // another carrier stands on the other side
            exceeded.push_back(path + (c == 0 ? "aclr_upper_db" : "aclr_lower_db"));
    }
    for (const json& channel : shown.at("channels"))
        if (channel.at("evm_limit_percent").is_number() && channel.at("evm_percent") > channel.at("evm_limit_percent"))
            exceeded.push_back(channel.at("path").get<std::string>() + ".evm_percent");
    EXPECT_GE(exceeded.size(), 2u);
    EXPECT_EQ(shown.at("exceeded"), exceeded);
    const std::string text = run("show --recipe two.recipe").out;
    EXPECT_NE(text.find("EXCEEDED, at least 45 dB: TS 38.104 Release 17, clause 6.6.3.2\n"), std::string::npos) << text;
    EXPECT_NE(text.find("no limit: another carrier sends there\n"), std::string::npos) << text;
}

TEST_F(nrwave_report, names_every_figure_and_gives_null_for_silence)
{
    const auto keys_of = [](const json& object) {
        std::string keys;
        for (const auto& [key, value] : object.items())
            keys += key + ' ';
        return keys;
    };
    for (const bool is_silent : {false, true}) {
        const auto shown = json::parse(run("show --json " + (is_silent ? "" : k_small)).out);
        EXPECT_EQ(keys_of(shown),
                  "carriers ccdf channels exceeded expected_papr_db papr_db peak_dbfs rate resolution_hz rms_dbfs "
                  "samples ");
        const auto& carrier = shown.at("carriers").at(0);
        EXPECT_EQ(keys_of(carrier), "aclr_limit_db aclr_lower_db aclr_upper_db evm_percent high_hz low_hz "
                                    "occupied_bandwidth_hz "
                                    "occupied_bandwidth_limit_hz path power_dbfs ");
        EXPECT_EQ(carrier.at("aclr_limit_db"), 45.0);
        for (const char* key : {"peak_dbfs", "rms_dbfs", "papr_db"})
            EXPECT_EQ(shown.at(key).is_null(), is_silent) << key;
        for (const char* key : {"power_dbfs", "occupied_bandwidth_hz", "aclr_lower_db", "evm_percent"})
            EXPECT_EQ(carrier.at(key).is_null(), is_silent) << key;
        const double samples = shown.at("samples");
        EXPECT_NEAR(shown.at("expected_papr_db"), db(std::log(samples) + 0.5772156649), 1e-4);
        for (const char* name : {"waveform", "burst", "gaussian"})
            EXPECT_EQ(shown.at("ccdf").at(name).size(), 7u) << name;
        EXPECT_NEAR(shown.at("ccdf").at("gaussian").at(2), db(-std::log(0.01)), 1e-9);
        EXPECT_EQ(shown.at("ccdf").at("gaussian").at(6), shown.at("expected_papr_db"));
        EXPECT_EQ(shown.at("ccdf").at("waveform").at(0).is_null(), is_silent);
        EXPECT_EQ(shown.at("ccdf").at("burst").at(6).is_null(), is_silent);
    }
    const auto slower = json::parse(run("show --json --rate 10000000 --multiple-of 300000 " + k_small).out);
    EXPECT_EQ(slower.at("rate"), 10e6);
    EXPECT_EQ(slower.at("samples"), 300'000);
    EXPECT_TRUE(slower.at("carriers").at(0).at("aclr_upper_db").is_null()) << "the rate holds the channel alone";
    EXPECT_NE(run("show --json >/dev/full").status, 0);
    EXPECT_EQ(run("show --set carrier[0].enable=0 --json").out.find("nan"), std::string::npos);
}

TEST_F(nrwave_report, is_a_page_that_needs_nothing_else)
{
    write(
        "many.recipe",
        "frame_number=3\n[carrier[0]]\nchannel_bandwidth=FR1_10M\ndl_ssb.enable=true\nul_pucch[0].name=<a&b>\n"
        "numerology_mode=MULTIPLE\nnumerology[1].enable=true\nnumerology[0].enable=true\nnumerology[2].enable=true\n");
    const nr_test::run_t told = run("generate --recipe many.recipe --report new/r --json");
    ASSERT_EQ(told.status, 0) << told.err;
    EXPECT_TRUE(json::parse(told.out).at("format").is_null());
    std::set<std::string> names;
    for (const auto& file : fs::directory_iterator(m_folder / "new/r"))
        names.insert(file.path().filename());
    EXPECT_EQ(names, (std::set<std::string>{
                         "report.html", "spectrum.png", "spectrum.svg", "ccdf.png", "ccdf.svg", "power.png",
                         "power.svg", "resource_map.png", "resource_map_0_0_1.png", "resource_map_0_0_2.png",
                         "resource_map_0_1_0.png", "resource_map_0_1_1.png", "resource_map_0_1_2.png",
                         "resource_map_0_2_0.png", "resource_map_0_2_1.png", "resource_map_0_2_2.png"}));
    const std::string page = content("new/r/report.html");
    EXPECT_EQ(page.find("://"), std::string::npos);
    // The first picture is the spectrum, whole and at its natural size.
    const std::size_t image = page.find("base64,") + 7;
    write("page.base64", page.substr(image, page.find('"', image) - image));
    EXPECT_EQ(shell("base64 -d page.base64 | cmp - new/r/spectrum.png").status, 0);
    std::size_t pictures = 0;
    for (std::size_t place = 0; (place = page.find("src=\"data:image/png;base64,", place + 1)) != std::string::npos;)
        ++pictures;
    EXPECT_EQ(pictures, 3u + 8u);
    const std::string png = content("new/r/spectrum.png");
    const auto number = [&](std::size_t place) {
        return std::to_string(static_cast<unsigned char>(png[place]) * 256 +
                              static_cast<unsigned char>(png[place + 1]));
    };
    EXPECT_NE(page.find("alt=\"spectrum\" width=\"" + number(18) + "\" height=\"" + number(22) + "\" src="),
              std::string::npos);
    EXPECT_NE(page.find("<a href=\"resource_map_0_2_2.png\">"), std::string::npos);
    EXPECT_NE(page.find("carrier[0].ul_pucch[0].name=&lt;a&amp;b>\n"), std::string::npos);
    EXPECT_EQ(page.find("carrier[0].ncell_id"), std::string::npos) << "a default";

    ASSERT_EQ(run("generate --quiet --scale 6 --report low " + k_small).status, 0);
    EXPECT_NE(content("low/report.html").find("<th>peak</th><td>-6.00 dBFS</td>"), std::string::npos);
    // Beside samples the same report.
    ASSERT_EQ(run("generate --recipe many.recipe --report again -o x").status, 0);
    EXPECT_EQ(content("again/report.html"), page);
    EXPECT_EQ(content("again/spectrum.svg"), content("new/r/spectrum.svg"));
    EXPECT_EQ(run("generate --report silent --quiet").status, 0);
    EXPECT_EQ(run("generate --report rateless --quiet --set carrier[0].enable=0").status, 0);
    for (const std::string& arguments : {"generate " + k_small, "generate " + k_small + "--report /dev/null/r",
                                         "generate " + k_small + "-o y --report x.sigmf-data"})
    {
        const std::set<std::string> before = files();
        const nr_test::run_t failed = run(arguments);
        EXPECT_NE(failed.status, 0) << arguments;
        EXPECT_EQ(nr_test::lines_of(failed.err), 1u) << failed.err;
        EXPECT_EQ(files(), before) << arguments;
    }
}

} // namespace

#include "support/program.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <nlohmann/json.hpp>
#include <unistd.h>
#include <vector>

namespace
{

using namespace nr_test;

class nrwave_program : public program_test_t
{
};

TEST_F(nrwave_program, writes_the_same_bytes_for_the_same_input_in_every_format)
{
    ASSERT_EQ(run("generate " + k_small + "-o a").status, 0);
    ASSERT_EQ(run("generate " + k_small + "-o b").status, 0);
    ASSERT_EQ(run("generate " + k_small + "-o c --format cf32").status, 0);
    ASSERT_EQ(run("generate " + k_small + "-o d --format cf64").status, 0);
    EXPECT_EQ(files(), (std::set<std::string>{"a.sigmf-data", "a.sigmf-meta", "b.sigmf-data", "b.sigmf-meta", "c.cf32",
                                              "c.json", "d.cf64", "d.json"}));
    EXPECT_EQ(content("a.sigmf-data"), content("b.sigmf-data"));
    EXPECT_EQ(content("a.sigmf-meta"), content("b.sigmf-meta"));
    EXPECT_EQ(content("a.sigmf-data"), content("c.cf32"));

    const std::string singles = content("c.cf32");
    const std::string doubles = content("d.cf64");
    const std::string points = run("get " + k_small + "waveform_sample_points").out;
    const std::size_t count = singles.size() / 8;
    EXPECT_EQ(points, "waveform_sample_points=" + std::to_string(count) + '\n');
    ASSERT_EQ(doubles.size(), 16 * count);
    for (std::size_t i = 0; i < 2 * count; ++i) {
        float single = 0;
        double value = 0;
        std::memcpy(&single, &singles[4 * i], 4);
        std::memcpy(&value, &doubles[8 * i], 8);
        ASSERT_EQ(single, static_cast<float>(value)) << "number " << i;
    }

    const std::string meta = content("a.sigmf-meta");
    for (const char* part : {"\"core:datatype\": \"cf32_le\"", "\"core:version\"", "\"core:num_channels\": 1",
                             "\"core:sample_rate\": 15360000", "\"core:description\"", "\"core:sample_start\": 0",
                             "\"core:frequency\": 1000000000"})
        EXPECT_NE(meta.find(part), std::string::npos) << part << " is missing in\n" << meta;
}

TEST_F(nrwave_program, fails_with_one_line_and_leaves_nothing_behind)
{
    write("bad.recipe", "# first\n\nradio_frequency=1\nno.such=1\n");
    write("other.xml", "<root ProtocolType='other'/>");
    write("broken.xml", "<root");
    write("good.recipe", "");
    write("nul.recipe", std::string("nr_ntn=1\0\n", 10));
    write("loads.xml", "<r ProtocolType='NR'><nrwave_steps><step>\n load loads.xml </step></nrwave_steps></r>");
    write("head.recipe", "[carrier]\n");
    write("open.recipe", "[carrier[0].dl_ssb.x\n");
    write("a.recipe", "include sub/b.recipe\n");
    write("sub/b.recipe", "nr_ntn=0\ninclude ../a.recipe\n");
    write("foreign.json", "{\"format\": \"cf32\"}");
    write("broken.sigmf-meta", "{");
    write("big.sigmf-meta", "{\"global\": {\"core:datatype\": \"cf32_be\"}}");
    write("folder.sigmf-meta", "{\"global\": {\"core:datatype\": \"cf32_le\"}}");
    fs::create_directory(m_folder / "folder.sigmf-data");
    fs::create_symlink("loop", m_folder / "loop");
    const std::set<std::string> before = files();

    const std::array<std::pair<const char*, const char*>, 86> rows = {{
        {"generate --set nothing=1 -o x", "unknown path nothing"},
        {"generate --set carrier[0].nothing=1 -o x", "unknown path carrier[0].nothing"},
        {"generate --set carrier[1].enable=1 -o x", "index past the end"},
        {"explain --carrier 1", "carrier 1 is past the end: there are 1"},
        {"explain --frame 1", "frame 1 is past the end: there are 1"},
        {"explain --slot 20", "slot 20 is past the end: there are 20"},
        {"explain --set carrier[0].dl_ssb.enable=1 --channel dl_ss", "no enabled channel is dl_ss"},
        {"generate --set carrier.enable=1 -o x", "needs an index"},
        {"generate --set carrier[0].dl_ssb[0].enable=1 -o x", "index"},
        {"generate --set carrier[-1].enable=1 -o x", "bad index"},
        {"generate --set carrier[0].dl_bwp[1].coreset[0].duration=1 -o x", "coreset"},
        {"generate --set 'copy carrier[0].numerology[0]' -o x", "cannot copy"},
        {"generate --set waveform_length=1 -o x", "follows from other settings"},
        {"generate --set carrier[0].carrier_type=LIB_NR_SIDEWAYS -o x", "enumerators"},
        {"generate --set carrier[0].init_phase=1.5 -o x", "whole number"},
        {"generate --set carrier[0].init_phase=many -o x", "whole number"},
        {"generate --set carrier[0].init_phase= -o x", "whole number"},
        {"generate --set carrier[0].power_boosting=nan -o x", "number"},
        {"generate --set carrier[0].enable=maybe -o x", "true or false"},
        {"generate --set 'remove carrier[0]' -o x", "cannot remove carrier[0]"},
        {"generate --set 'add carrier[0]' -o x", "without an index"},
        {"generate --set 'copy carrier' -o x", "carrier[0]"},
        {"generate --set 'add carrier[0].numerology' -o x", "cannot add"},
        {"generate --set 'jump carrier[0]' -o x", "unknown step"},
        {"generate --set 'apply carrier[0].dl_ssb' -o x", "unknown step apply carrier[0].dl_ssb"},
        {"generate --set 'apply carrier[1].dl_tm' -o x", "index past the end"},
        {"presets dl_ssb", "unknown preset dl_ssb; nearest "},
        {"generate --set 'load missing.xml' -o x", "cannot read"},
        {"generate --recipe bad.recipe -o x", "bad.recipe:4: unknown path no.such"},
        {"generate --recipe missing.recipe -o x", "cannot read missing.recipe"},
        {"generate other.xml -o x", "no settings file"},
        {"generate broken.xml -o x", "no settings file"},
        {"generate --format wav -o x", "unknown format wav"},
        {"generate -o bad.recipe/x", "cannot write bad.recipe/x"},
        {"generate -o new/", "no name"},
        {"generate -o $(printf %0300d 0)", ": File name too long"},
        {"generate '' -o x", "cannot read"},
        {"generate . -o x", "cannot read .: it is a folder"},
        {"generate --recipe . -o x", "cannot read .: it is a folder"},
        {"generate --recipe nul.recipe -o x", "nul.recipe:1: a NUL in the step nr_ntn=1\\x00"},
        {"generate --set 'nr_ntn=1\n2' -o x", "a newline in the step nr_ntn=1\\n2"},
        {"generate loads.xml -o new/x --report new/r", "loads.xml: a settings file cannot load another, loads.xml"},
        {"save -o loop", "cannot write loop"},
        {"save --recipe good.recipe -o good.recipe", "cannot write good.recipe: it is one of the inputs"},
        {"save -o /dev/full", "cannot write /dev/full"},
        {"generate --help >/dev/full", "cannot write to standard output"},
        {"generate -o new/x --report bad.recipe/r", "bad.recipe/r"},
        {"genrate -o x", "unknown command genrate; nearest generate"},
        {"generate --format cf23 -o x", "unknown format cf23; nearest cf32, cf64, ci16"},
        {"generate --set carrier[0].dl_sbs.active_idx=1 -o x", "nearest carrier[i].dl_ssb.active_idx, "},
        {"generate --set ncell_id=1 -o x", "nearest carrier[i].ncell_id, "},
        {"generate --set carrier[0].channel_bandwidth=100M -o x",
         "may be any of LIB_NR_CHANNEL_FR1_100M, LIB_NR_CHANNEL_FR2_1_100M, LIB"},
        {"generate --set carrier[0].channel_bandwidth=FR1_21M -o x", "nearest LIB_NR_CHANNEL_FR1_20M, "},
        {"generate --set radio_frequency=0.0035k -o x", "0.0035k is no whole number"},
        {"generate --set radio_frequency=1e3k -o x", "no whole number"},
        {"generate --set carrier[0].power_boosting=1ek -o x", "no number"},
        {"generate --set radio_frequency=$(printf %0300d 0)x -o x", "00... (301 characters) is no whole number"},
        {"generate --recipe head.recipe -o x", "head.recipe:1: carrier heads no section"},
        {"generate --recipe open.recipe -o x", "open.recipe:1: no ] ends [carrier[0].dl_ssb.x"},
        {"generate --recipe a.recipe -o x", "a.recipe:1: sub/b.recipe:2: sub/../a.recipe includes itself"},
        {"generate --rate 1M -o x", "does not hold the occupied bands, which take 98280000 Hz"},
        {"generate --rate 98280001 -o x", "gives no whole number of samples in 10 ms"},
        {"generate --rate 0 -o x", "a rate of 0 Hz"},
        {"generate --rate 1e19 -o x", "more than 2^31 samples"},
        {"generate --rate nan -o x", "--rate: nan is no whole number from 0"},
        {"generate --rate '' -o x", "--rate: an empty value is no whole number"},
        {"map --frame 1e10 -o x.csv", "--frame: 1e10 is too large"},
        {"generate -o ..", "no name in front"},
        {"generate --multiple-of 0 -o x", "a multiple of 0"},
        {"generate --multiple-of 2147483647 -o x", "more than 2^31 samples"},
        {"generate --scale nan -o x", "no number of dB"},
        {"generate --preset NR-FR1-TM3.1x -o x", "unknown preset NR-FR1-TM3.1x; nearest NR-FR1-TM3.1, "},
        {"generate --preset '' -o x", "unknown preset ; nearest "},
        {"generate --preset 64QAM -o x", "may be any of LIB_NR_DL_FRC_FR1_64QAM, LIB_NR_DL_FRC_FR2_64QAM, "},
        {"generate --preset G-FR1-A3-14:bandwidth=20M -o x", "offers no bandwidth 20M, but LIB_NR_CHANNEL_FR1_100M"},
        {"generate --preset G-FR1-A3-14:scp=30k -o x", "unknown key scp of a preset; nearest scs, "},
        {"generate --preset G-FR1-A3-14:scs -o x", "takes one value of scs"},
        {"info good.recipe", "neither a file of samples"},
        {"info missing.cf32", "there is no file missing.cf32"},
        {"info foreign.json", "foreign.json tells of no samples"},
        {"info broken.sigmf-meta", "broken.sigmf-meta holds no JSON object"},
        {"info big.sigmf-meta", "samples of the kind cf32_be cannot be read"},
        {"info folder.sigmf-meta", "it is no regular file"},
        {"map --frame 1 -o x.csv", "frame 1 is past the end"},
        {"map --carrier 1 --numerology 0 --frame 0 -o x.csv", "past the end"},
        {"map --carrier 0 --numerology 0 --frame 0 -o x.bmp", ".csv or a .png"},
    }};
    for (const auto& [arguments, line] : rows) {
        const run_t result = run(arguments);
        EXPECT_EQ(result.status, 1) << arguments;
        EXPECT_NE(result.err.find(line), std::string::npos) << arguments << "\nsays " << result.err;
        EXPECT_EQ(lines_of(result.err), 1u) << arguments << "\nsays " << result.err;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_EQ(files(), before) << arguments;
    }
}

TEST_F(nrwave_program, tells_each_correction_in_one_line)
{
    const std::array<std::pair<const char*, const char*>, 11> rows = {{
        {"carrier[0].dl_prs[0].rb_number=max", ""},
        {"carrier[0].power_boosting=41", "carrier[0].power_boosting: asked 41, stored 40\n"},
        {"carrier[0].power_boosting=+4.0", ""},
        {"carrier[0].init_phase=99999999999", "carrier[0].init_phase: asked 99999999999, stored 360\n"},
        {"carrier[0].init_phase=007", ""},
        {"carrier[0].frequency_offset=-5e8", "carrier[0].frequency_offset: asked -5e8, stored -400000000\n"},
        {"carrier[0].dl_ssb.half_frame_idx=300", "carrier[0].dl_ssb.half_frame_idx: asked 300, stored 1\n"},
        {"carrier[0].dl_ssb.active_idx=0, 2", ""},
        {"carrier[0].dl_ssb.active_idx=0,9", "carrier[0].dl_ssb.active_idx: asked 0,9, stored 0\n"},
        {"carrier[0].dl_ssb.power_boosting=1,2,3,4", ""},
        {"carrier[0].dl_ssb.data_source_custom=1,0,1", ""},
    }};
    for (const auto& [step, line] : rows) {
        const run_t result = run(std::string("get --set '") + step + "' nr_ntn");
        EXPECT_EQ(result.status, 0) << step;
        EXPECT_EQ(result.err, line) << step;
        EXPECT_EQ(result.out, "nr_ntn=false\n") << step;
        EXPECT_EQ(run(std::string("get --strict --set '") + step + "' nr_ntn").status != 0, *line != '\0') << step;
    }
}

TEST_F(nrwave_program, tells_what_a_later_step_resets)
{
    const std::string ssb = "carrier[0].dl_ssb.active_idx=1,3\n";
    const std::string wide = "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M\n";
    const std::string told = "carrier[0].dl_ssb.active_idx: stored 1,3, reset to 0,1,2,3 by a later step\n";
    const std::string two = "add carrier\ncarrier[1].ncell_id=5\ncarrier[0].ncell_id=4\n";
    write("tree.xml", "<r ProtocolType='NR'><cfg_nr_waveform/></r>");
    const std::string models =
        "nr_ntn=true\ncarrier[0].dl_tm.bandwidth=LIB_NR_CHANNEL_FR2_1_50M\napply carrier[0].dl_tm\n";
    const std::array<std::pair<std::string, std::string>, 8> rows = {{
        {"carrier[0].ncell_id=4\napply carrier[0].dl_frc\n", ""},
        {models, "carrier[0].dl_tm: applied without a PDSCH: FR2 has no FDD test model\n"},
        {ssb + wide, told},
        {ssb + wide + ssb, ""},
        {wide + ssb + "carrier[0].dl_ssb.active_idx=0,1,2,3\n", ""},
        {ssb + "load tree.xml\n", ""},
        {two + "remove carrier[0]\n", ""},
        {two + "copy carrier[0]\nremove carrier[0]\ncarrier[0].carrier_type=LIB_NR_UPLINK\n",
         "carrier[0].ncell_id: stored 5, reset to 0 by a later step\n"},
    }};
    for (const auto& [recipe, line] : rows) {
        write("steps.recipe", recipe);
        const run_t result = run("get --recipe steps.recipe nr_ntn");
        EXPECT_EQ(result.err, line) << recipe;
        EXPECT_EQ(result.status, 0) << recipe;
        EXPECT_EQ(run("get --strict --recipe steps.recipe nr_ntn").status != 0, !line.empty()) << recipe;
    }
}

TEST_F(nrwave_program, tells_what_a_file_does_not_bring_back_and_what_a_load_passes_over_or_corrects)
{
    const auto file = [&](const std::string& carrier, const std::string& beside = {}) {
        return "<r ProtocolType='NR'><cfg_nr_waveform><cfg_nr_carrier><cfg_nr_carrier><enable>true</enable>" + carrier +
               "</cfg_nr_carrier></cfg_nr_carrier></cfg_nr_waveform>" + beside + "</r>";
    };
    const std::string c = "carrier[0].";
    const std::string wide = "<channel_bandwidth>LIB_NR_CHANNEL_FR1_7M</channel_bandwidth>";
    const std::string step = "<nrwave_steps><step>carrier[0].channel_bandwidth=FR1_5M</step></nrwave_steps>";
    const std::string pucch = "<carrier_type>LIB_NR_UPLINK</carrier_type><cfg_nr_ul_pucch><cfg_nr_ul_pucch><rb_num>";
    const std::vector<std::pair<std::string, std::string>> rows = {
        {file(wide, step), c + "channel_bandwidth: asked LIB_NR_CHANNEL_FR1_7M, stored LIB_NR_CHANNEL_FR1_5M"},
        {file("<timing_offset>1.5</timing_offset>", "<nrwave_steps><step>carrier[0].timing_offset=0.01</step>"
                                                    "</nrwave_steps>"),
         c + "timing_offset: asked 1.5, stored 0.01"},
        {file("<ncell_id>1e3</ncell_id>"), c + "ncell_id: asked 1e3, stored 1"},
        {file("<foo/>"), "unknown element foo in cfg_nr_carrier"},
        {file("<enable>0</enable>"), "another element enable in cfg_nr_carrier"},
        {file("<ncell_id unit='1'>0</ncell_id>"), "unknown attribute unit in ncell_id"},
        {file("<cfg_nr_phy_numerology><cfg_nr_phy_numerology/><cfg_nr_phy_numerology/></cfg_nr_phy_numerology>"),
         c + "numerology: asked 2 entries, stored 1"},
        {file("", "<cfg_nr_wavefrom/>"), "unknown element cfg_nr_wavefrom in r"},
        {"<r ProtocolType='NR'/>", "no element cfg_nr_waveform in r"},
        {file(pucch + "99</rb_num></cfg_nr_ul_pucch></cfg_nr_ul_pucch>"), c + "ul_pucch[0].rb_num: asked 99, stored 1"},
        {file("<!-- of the other direction, and set right beside -->" + pucch.substr(pucch.find("<cfg")) +
                  "99</rb_num></cfg_nr_ul_pucch></cfg_nr_ul_pucch>" +
                  "<channel_bandwidth>LIB_NR_CHANNEL_FR1_10M</channel_bandwidth>" +
                  "<numerology>LIB_NR_SCS_60K</numerology><cfg_nr_dl_prs><cfg_nr_dl_prs><periodicity>10</periodicity>"
                  "</cfg_nr_dl_prs></cfg_nr_dl_prs>",
              "<nrwave_steps><step>carrier[0].numerology=30K</step><step>carrier[0].dl_prs[0].periodicity=10</step>"
              "<step>carrier[0].numerology=60K</step></nrwave_steps>"),
         ""},
    };
    for (const auto& [content, line] : rows) {
        write("in.xml", content);
        EXPECT_EQ(run("get in.xml nr_ntn").err, line.empty() ? line : "in.xml: " + line + '\n');
        EXPECT_EQ(run("get in.xml --strict nr_ntn").status == 0, line.empty()) << line;
    }

    write("in.xml", file(pucch + "1</rb_num><name>a&#13;b&#1;</name></cfg_nr_ul_pucch></cfg_nr_ul_pucch>"));
    EXPECT_EQ(run("save in.xml -o out.xml").err,
              "carrier[0].ul_pucch[0].name: saved a\\x0db\\x01, comes back as a\\nb\\x01\n");
    EXPECT_EQ(run("save in.xml -o strict.xml --strict").status, 1);
    EXPECT_FALSE(fs::exists(m_folder / "strict.xml"));
}

TEST_F(nrwave_program, writes_through_what_is_no_regular_file)
{
    ASSERT_EQ(run("save -o plain.xml").status, 0);
    const std::string saved = content("plain.xml");
    EXPECT_EQ(run("save -o /dev/stdout").out, saved);
    EXPECT_EQ(shell("echo first >all; nrwave save -o /dev/stdout >>all; cat all").out, "first\n" + saved);
    EXPECT_EQ(shell("mkfifo pipe; cat pipe & nrwave save -o pipe; wait; test -p pipe && echo pipe").out,
              saved + "pipe\n");
    EXPECT_EQ(shell("ln -s new/target.xml link; nrwave save -o link; test -L link && cat new/target.xml").out, saved);
    EXPECT_EQ(run("generate " + k_small + "-o /dev/null && test -c /dev/null").status, 0);
    EXPECT_EQ(run("generate " + k_small + "--format cf32 -o /dev/stdout | wc -c").out, "1228800\n");
}

TEST_F(nrwave_program, leaves_nothing_of_a_run_that_breaks_off)
{
    const std::string generate = "nrwave generate " + k_small + "-o new/x --report new/r";
    const auto with_plotter = [&](const std::string& script) {
        return "mkdir bin; trap 'rm -r bin' 0; echo '#!/bin/sh\n" + script +
               "' >bin/gnuplot; chmod +x bin/gnuplot; PATH=$PWD/bin:$PATH; " + generate;
    };
    const std::array<std::pair<std::string, const char*>, 6> rows = {{
        {"ulimit -f 200; " + generate, "nrwave: cannot write new/x.sigmf-data: "},
        {"PATH=$(dirname $(command -v nrwave)); " + generate, "nrwave: cannot start gnuplot"},
        {with_plotter("/usr/bin/env -i PATH=/usr/bin:/bin gnuplot | head -c 2000"), "nrwave: gnuplot, which draws"},
        {with_plotter("kill -TERM $PPID"), ""},
        {with_plotter("kill -INT $PPID"), ""},
        {with_plotter("kill -HUP $PPID"), ""},
    }};
    for (const auto& [line, told] : rows) {
        const run_t result = shell("(" + line + ")");
        EXPECT_NE(result.status, 0) << line;
        EXPECT_EQ(result.err.rfind(told, 0), 0u) << line << "\nsays " << result.err;
        EXPECT_LE(lines_of(result.err), 1u) << line << "\nsays " << result.err;
        EXPECT_EQ(files(), std::set<std::string>{}) << line;
    }
}

TEST_F(nrwave_program, prints_settings_that_bring_a_fresh_waveform_to_the_same_state)
{
    write("first.recipe", "  # a comment\n"
                          "add carrier\n"
                          "carrier[1].channel_bandwidth = LIB_NR_CHANNEL_FR1_40M\r\n"
                          "carrier[1].numerology_mode=LIB_NR_NUMBEROLOGY_MODE_MULTIPLE\n"
                          "carrier[1].numerology[1].enable=true\n"
                          "carrier[1].numerology[0].enable=false\n"
                          "carrier[1].frequency_offset=-30000000\n"
                          "add carrier[1].ul_srs\n"
                          "carrier[0].dl_ssb.half_frame_idx=1\n"
                          "carrier[0].windowing_beta=0.1\n"
                          "carrier[1].ul_bwp[0].bwp_name=first  band\n"
                          "add carrier[0].numerology[0].ul_guard_band.guard_band\n"
                          "carrier[0].numerology[0].ul_guard_band.guard_band_start[0]=30\n"
                          "confirm carrier[0].numerology[0].ul_guard_band\n"
                          "carrier[0].dl_tm.modulation=LIB_NR_MODULATION_QPSK\n" // a fresh one has none of its own
                          "carrier[1].dl_tm.modulation=LIB_NR_MODULATION_QPSK\n"
                          "standard_rules=true\n"
                          "cfr_filter_mask_data_arr=-1e7:-3,1e7:0.5\n");
    const run_t first = run("get --recipe first.recipe");
    ASSERT_EQ(first.status, 0) << first.err;
    write("second.recipe", first.out);
    const run_t second = run("get --strict --recipe second.recipe");
    EXPECT_EQ(second.err, "");
    EXPECT_EQ(second.out, first.out);
    EXPECT_NE(first.out.find("add carrier\n"), std::string::npos);
    EXPECT_NE(first.out.find("carrier[0].windowing_beta=0.1\n"), std::string::npos);

    // The same through a settings file in another folder, loaded by a recipe.
    write("sub/load.recipe", "load settings.xml\n");
    ASSERT_EQ(run("save --recipe first.recipe -o sub/settings.xml").status, 0);
    const run_t loaded = run("get --strict --recipe sub/load.recipe");
    EXPECT_EQ(loaded.err, "");
    EXPECT_EQ(loaded.out, first.out);
    ASSERT_EQ(run("save sub/settings.xml -o again.xml").status, 0);
    EXPECT_EQ(content("again.xml"), content("sub/settings.xml"));
    EXPECT_GT(content("again.xml").find("standard_rules"), content("again.xml").find("<nrwave_steps"));

    const std::string branch = run("get --recipe first.recipe 'carrier[1].numerology[1]' 'carrier[1].numerology'").out;
    EXPECT_EQ(branch, "add carrier\ncarrier[1].numerology[1].enable=true\ncarrier[1].numerology[1].rb_size=106\n"
                      "carrier[1].numerology[1].rb_start=0\n# carrier[1].numerology[1].scs=LIB_NR_SCS_30K\n"
                      "# carrier[1].numerology[1].k0=0\ncarrier[1].numerology=LIB_NR_SCS_15K\n");
    EXPECT_EQ(run("get --recipe first.recipe 'carrier[1].frequency_offset' 'carrier[1].bandwidth'").out,
              "carrier[1].frequency_offset=-30000000\ncarrier[1].bandwidth=38160000\n");
}

TEST_F(nrwave_program, maps_and_draws_what_it_generates)
{
    ASSERT_EQ(run("map " + k_small + "--carrier 0 --numerology 0 --frame 0 -o map.csv").status, 0);
    const std::string map = content("map.csv");
    EXPECT_EQ(map.rfind("symbol,subcarrier,owner\n", 0), 0u);
    // Four blocks of 240 subcarriers in 4 symbols; 24 resource blocks hold a block that is two blocks off their start.
    EXPECT_EQ(lines_of(map), 1 + 4 * (4 * 240u));
    EXPECT_NE(map.find("4,24,SSB\n"), std::string::npos);

    ASSERT_EQ(run("map " + k_small + "--carrier 0 --numerology 0 --frame 0 -o map.png").status, 0);
    ASSERT_EQ(run("generate " + k_small + "-o x --report pictures").status, 0);
    for (const char* picture :
         {"map.png", "pictures/spectrum.png", "pictures/ccdf.png", "pictures/power.png", "pictures/resource_map.png"})
        EXPECT_EQ(content(picture).substr(1, 3), "PNG") << picture;

    // The user's own settings of the plotter do not count.
    write(".gnuplot", "exit\n");
    EXPECT_EQ(shell("HOME=$PWD nrwave map " + k_small + "--carrier 0 --numerology 0 --frame 0 -o again.png").status, 0);
    EXPECT_EQ(content("again.png"), content("map.png"));

    const run_t verbose = run("generate -v --quiet " + k_small + "-o y");
    EXPECT_NE(verbose.err.find("-----+++++_nr_dl_ssb_link_process+++++-----"), std::string::npos);
    EXPECT_EQ(verbose.out, "");
    EXPECT_EQ(run("list carrier[i].dl_ssb.ssb_pattern --set carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M --set "
                  "carrier[0].numerology=LIB_NR_SCS_15K")
                  .out,
              "carrier[i].dl_ssb.ssb_pattern  one of NR_SSB_CASE_A, NR_SSB_CASE_B, NR_SSB_CASE_C, NR_SSB_CASE_D, "
              "NR_SSB_CASE_E, NR_SSB_CASE_F, NR_SSB_CASE_G; default NR_SSB_CASE_B; on offer NR_SSB_CASE_A; case B or C "
              "at 30 kHz; everywhere else the spacing decides\n");
    EXPECT_EQ(run("list --manual").out, content(fs::path(NR_MOD_LIB_SOURCE_DIR) / "docs/settings.md"));
    for (const char* command : {"generate", "info", "compare", "get", "map", "save", "list", "presets"})
        EXPECT_NE(run(command + std::string(" --help")).out.find(std::string("Examples:\n  nrwave ") + command),
                  std::string::npos)
            << command;
}

// Every row can be chosen with the first bandwidth that it is listed with, and applied, without a word.
TEST_F(nrwave_program, lists_presets_as_they_can_be_chosen)
{
    const auto known = nlohmann::json::parse(run("presets --ntn --json dl_frc").out);
    EXPECT_EQ(known.size(), 10u);
    EXPECT_EQ(known.at(2).dump(), R"({"bandwidths":["LIB_NR_CHANNEL_FR2_1_50M","LIB_NR_CHANNEL_FR2_1_100M",)"
                                  R"("LIB_NR_CHANNEL_FR2_1_200M"],"duplex_types":["LIB_NR_DUPLEX_TYPE_FDD"],)"
                                  R"("family":"dl_frc","name":"LIB_NR_NTN_FRC_FR2_A_3_2_1_2_1_QPSK","ntn":true,)"
                                  R"("spacings":["LIB_NR_SCS_60K"]})");
    EXPECT_NE(run("presets").out.find("dl_tm NR-FR2-TM2  LIB_NR_CHANNEL_FR2_1_50M to LIB_NR_CHANNEL_FR2_2_2000M; "
                                      "LIB_NR_SCS_60K, LIB_NR_SCS_120K, LIB_NR_SCS_480K, LIB_NR_SCS_960K; "
                                      "LIB_NR_DUPLEX_TYPE_TDD\n"),
              std::string::npos);
    const std::map<std::string, std::string> rows = {{"dl_tm", ".test_model="},
                                                     {"dl_frc", ".fixed_reference_channels="},
                                                     {"ul_frc", ".frc_reference_channels="},
                                                     {"ul_rmc", ".rmc_rb_allocation="},
                                                     {"pucch_test_model", ".test_model_type="}};
    EXPECT_EQ(nlohmann::json::parse(run("presets NR-FR1-TM2a --json").out).at(0),
              "carrier[0].dl_tm.test_model=LIB_NR_FR1_TM2a");
    std::string recipe;
    for (const auto& row : nlohmann::json::parse(run("presets --json").out)) {
        const std::string family = row.at("family");
        const std::string value = row.at("name");
        const std::string path = "carrier[0]." + family;
        const std::string name = path + rows.at(family) + value;
        std::string bandwidth = path + ".bandwidth=" + row.at("bandwidths").at(0).get<std::string>();
        if (family == "pucch_test_model")
            bandwidth.insert(0, path + ".subcarrier_spacing=" + row.at("spacings").at(0).get<std::string>() + '\n');
        if (family == "ul_frc" && value.find("_FR1_A1_") == std::string::npos)
            continue; // of another family than the default
        recipe += (family == "dl_tm" || family == "ul_rmc" ? bandwidth + '\n' + name : name + '\n' + bandwidth) +
                  "\napply " + path + '\n';
    }
    write("all.recipe", recipe);
    EXPECT_EQ(run("get --recipe all.recipe --strict nr_ntn").err, "");
}

TEST_F(nrwave_program, maps_prach_bursts_and_tells_of_those_that_are_not_sent)
{
    const std::string prach = "--set carrier[0].carrier_type=LIB_NR_PRACH --set "
                              "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_5M --set \'add carrier[0].ul_prach\' "
                              "--set carrier[0].ul_prach[0].configuration_idx=13 ";
    ASSERT_EQ(run("map " + prach + "--set frame_number=2 --carrier 0 --numerology 0 --frame 1 -o map.csv").status, 0);
    EXPECT_EQ(content("map.csv").rfind("start_ms,end_ms,low_hz,high_hz\n4,", 0), 0u) << content("map.csv");
    const run_t generated = run("generate " + prach + "-o x");
    EXPECT_EQ(generated.status, 0);
    EXPECT_EQ(generated.err,
              "carrier[0].ul_prach[0]: sent in no frame: its period, offset and place in the frame put it into none\n"
              "carrier[0].ul_prach[1]: sent in no frame: stopped by ul_prach[0], which is disabled or not "
              "sent there\n");
}

TEST_F(nrwave_program, tells_what_is_not_sent_and_who_meets_whom)
{
    const auto steps_of = [](const std::vector<std::string>& steps) {
        std::string options;
        for (const std::string& step : steps)
            options += "--set 'carrier[0]." + step + "' ";
        return options;
    };
    const std::string narrow = "channel_bandwidth=LIB_NR_CHANNEL_FR1_20M";
    const std::string uplink = "carrier_type=LIB_NR_UPLINK";
    const std::vector<std::pair<std::string, std::string>> told = {
        {steps_of({uplink, narrow, "numerology=LIB_NR_SCS_60K", "ul_bwp[0].cp_type=LIB_NR_EXTEND_CP",
                   "ul_srs[0].enable=true"}),
         "carrier[0].ul_srs[0]: sent in no slot: its prefix is not that of dl_bwp[0]\n"},
        {steps_of({narrow, "dl_csirs[0].rb_offset=40", "dl_csirs[0].enable=true"}),
         "carrier[0].dl_csirs[0]: 13 of 24 RBs lie outside the grid\n"},
        {steps_of({uplink, narrow, "ul_pusch[0].symbol_num=4", "ul_pusch[0].enable=true"}),
         "carrier[0].ul_pusch[0]: sent without DMRS: none of its symbols has a place for them\n"},
    };
    for (const auto& [options, line] : told) {
        const run_t loose = run("generate " + options + "-o x --format cf32");
        EXPECT_EQ(std::pair(loose.status, loose.err), std::pair(0, line));
        const run_t strict = run("generate --strict " + options + "-o strict --format cf32");
        EXPECT_EQ(std::pair(strict.status != 0, strict.err), std::pair(true, "nrwave: " + line));
        EXPECT_FALSE(fs::exists(m_folder / "strict.cf32"));
    }
    EXPECT_EQ(run("generate " + steps_of({"numerology[0].rb_size=272"}) + "-o y").err,
              "nrwave: the modulation failed in carrier 0, numerology 0, frame 0: the numerology does not fill the "
              "channel bandwidth\n");
    EXPECT_EQ(
        run("generate " +
            steps_of({uplink, narrow, "ul_pucch[0].intra_slot_frequency_hopping=true", "ul_pucch[0].enable=true"}) +
            "-o y")
            .err,
        "nrwave: PUCCH failed in carrier 0, numerology 0, frame 0, entry 0: one symbol cannot hop within the slot\n");
    EXPECT_EQ(
        run("generate " +
            steps_of({narrow, "dl_ssb.enable=true", "dl_dci[0].start_symbol_within_slot=4", "dl_dci[0].enable=true"}) +
            "-o y")
            .err,
        "nrwave: resource conflict: carrier[0].dl_dci[0] on carrier[0].dl_ssb, frame 0, slot 0, symbol 4, RB 15, "
        "108 cells\n");
}

TEST_F(nrwave_program, takes_short_values_and_sections_for_long_ones)
{
    write("long.recipe", "radio_frequency=3500000000\ncarrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M\n"
                         "carrier[0].frequency_offset=-1500\ncarrier[0].numerology=LIB_NR_SCS_15K\n"
                         "carrier[0].power_boosting=0.003\nadd carrier[0].dl_pdsch\n"
                         "carrier[0].dl_csirs[0].antenna_port=CSIRS_ANTENNA_PORT2\n"
                         "carrier[0].dl_pdsch[1].rnti=7\ncarrier[0].dl_ssb.pdcch_config_sib1=2\nframe_number=2\n");
    write("short.recipe", "radio_frequency = 3.5e9\n[carrier[0]]\nchannel_bandwidth = 20m\nfrequency_offset=-1.5k\n"
                          "numerology=lib_nr_scs_15K\npower_boosting=0.000003k\ninclude sub/more.recipe\n"
                          "[ carrier[0].dl_pdsch[1] ]\nrnti = 700e-2\n[carrier[0].dl_ssb]\npdcch_config_sib1=2\n[]\n"
                          "frame_number=+2.0\n");
    write("sub/more.recipe", "add carrier[0].dl_pdsch\n[carrier[0].dl_csirs[0]]\nantenna_port = port2\n");
    const run_t full = run("get --recipe long.recipe");
    const run_t brief = run("get --strict --recipe short.recipe");
    EXPECT_EQ(brief.err, "");
    EXPECT_EQ(brief.out, full.out);
    EXPECT_NE(full.out.find("carrier[0].dl_csirs[0].antenna_port=CSIRS_ANTENNA_PORT2\n"), std::string::npos);
}

/// The number behind a key of a JSON object; NaN where it is null.
double figure_of(const std::string& json, const std::string& key)
{
    const std::size_t place = json.find('"' + key + "\": ");
    EXPECT_NE(place, std::string::npos) << key << " is missing in " << json;
    const std::string value = json.substr(std::min(place + key.size() + 4, json.size()));
    return value.rfind("null", 0) == 0 ? std::nan("") : std::atof(value.c_str());
}

TEST_F(nrwave_program, tells_what_it_has_written_and_leaves_standard_output_to_the_samples)
{
    const run_t told = run("generate " + k_small + "--json --format cf32 -o x");
    const std::string samples = content("x.cf32");
    double peak = 0;
    double largest = 0;
    double sum = 0;
    for (std::size_t i = 0; i < samples.size(); i += 8) {
        std::complex<float> sample;
        std::memcpy(&sample, &samples[i], 8);
        peak = std::max<double>({peak, std::abs(sample.real()), std::abs(sample.imag())});
        largest = std::max(largest, std::norm(std::complex<double>(sample)));
        sum += std::norm(std::complex<double>(sample));
    }
    const auto count = static_cast<double>(samples.size() / 8);
    EXPECT_NE(told.out.find("\"x.cf32\",\n    \"x.json\"\n"), std::string::npos) << told.out;
    EXPECT_NE(told.out.find("\"format\": \"cf32\""), std::string::npos) << told.out;
    EXPECT_NE(told.out.find("\"name\": \"mib_flags\""), std::string::npos) << told.out;
    for (const auto& [key, value] : std::map<std::string, double>{{"rate", 15.36e6},
                                                                  {"samples", count},
                                                                  {"seconds", 0.01},
                                                                  {"peak_dbfs", 20 * std::log10(peak)},
                                                                  {"rms_dbfs", 10 * std::log10(sum / count)},
                                                                  {"papr_db", 10 * std::log10(largest * count / sum)},
                                                                  {"clipped", 0}})
        EXPECT_NEAR(figure_of(told.out, key), value, 1e-9) << key;
    for (const char* key : {"peak_dbfs", "rms_dbfs", "papr_db"})
        EXPECT_TRUE(std::isnan(figure_of(run("generate --json -o x").out, key))) << key;

    const std::string lines = run("generate " + k_small + "-o x").out;
    std::string words;
    std::istringstream rows(lines);
    for (std::string row; std::getline(rows, row);)
        words += row.substr(0, row.find("  ")) + (row.find("  ") == std::string::npos ? '\n' : ' ');
    EXPECT_EQ(words, "files rate length peak RMS PAPR clip carrier[0].dl_ssb: mib_flags, not as TS 38.331 clause 6.2.2 "
                     "(standard_rules=true)\n")
        << lines;
    EXPECT_NE(
        lines.find("x.sigmf-data, x.sigmf-meta\nrate    15360000 Hz\nlength  153600 samples, 0.01 s\npeak    0.00 "),
        std::string::npos)
        << lines;
    EXPECT_EQ(run("generate " + k_small + "--json -o - --format cf32").out, samples);
    EXPECT_NE(content("x.sigmf-meta").find("not as the standard: mib_flags\""), std::string::npos);
    EXPECT_EQ(run("save -o -").out, run("save -o /dev/stdout").out);
    EXPECT_NE(run("generate " + k_small + "-o new/x >/dev/full").status, 0);
    EXPECT_FALSE(fs::exists(m_folder / "new"));
}

TEST_F(nrwave_program, lists_by_any_part_of_a_path_and_by_words)
{
    const std::string whole = run("list 'carrier[i].dl_ssb'").out;
    EXPECT_GT(lines_of(whole), 15u);
    EXPECT_EQ(run("list carrier.dl_ssb").out, whole);
    EXPECT_EQ(run("list dl_ssb").out, whole);
    EXPECT_EQ(lines_of(run("list dl_pdsch.mcs").out), 1u);
    std::string expected;
    std::istringstream all(run("list").out);
    for (std::string line; std::getline(all, line);)
        if (line.find("ptrs") != std::string::npos || line.find("PTRS") != std::string::npos)
            expected += line + '\n';
    EXPECT_GT(lines_of(expected), 10u);
    EXPECT_EQ(run("list --find PTRS").out, expected);
    EXPECT_EQ(run("list dl_ssb.enable --json").out,
              "[\n  {\n    \"path\": \"carrier[i].dl_ssb.enable\",\n    \"form\": \"true or false\",\n    "
              "\"default\": \"false\",\n    \"values\": [],\n    \"meaning\": \"needs 20 resource blocks; not at 60 "
              "kHz\"\n  }\n]\n");
}

TEST_F(nrwave_program, generates_every_example_as_it_stands)
{
    unsigned int examples = 0;
    for (const auto& file : fs::directory_iterator(fs::path(NR_MOD_LIB_SOURCE_DIR) / "examples")) {
        const std::string name = file.path().extension().string();
        if (name != ".recipe" && name != ".xml")
            continue;
        const std::string input = (name == ".xml" ? "'" : "--recipe '") + file.path().string() + "'";
        const run_t result = run("generate --strict " + input + " -o x --format cf32");
        EXPECT_EQ(result.status, 0) << file.path() << ": " << result.err;
        EXPECT_NE(content("x.cf32").find_first_not_of('\0'), std::string::npos) << file.path();
        fs::path beside = file.path();
        if (name == ".xml" && fs::exists(beside.replace_extension(".recipe"))) {
            ASSERT_EQ(run("generate --recipe '" + beside.string() + "' -o y --format cf32").status, 0);
            EXPECT_EQ(content("x.cf32"), content("y.cf32")) << file.path();
        }
        const std::string listing = run("get " + input).out;
        write("again.recipe", listing);
        const run_t again = run("get --strict --recipe again.recipe");
        EXPECT_EQ(again.err, "") << file.path();
        EXPECT_EQ(again.out, listing) << file.path();
        EXPECT_EQ(listing.find('#'), std::string::npos) << listing;
        ++examples;
    }
    EXPECT_GE(examples, 3u);
    EXPECT_EQ(shell("mkdir in && cd in && nrwave generate --set 'carrier[0].carrier_type=LIB_NR_UPLINK' --set "
                    "'carrier[0].ul_srs[0].enable=true' -o x")
                  .status,
              0);
    EXPECT_FALSE(fs::exists(m_folder / "srs_result.csv")) << "the library's trace, a folder above";
}

TEST_F(nrwave_program, leaves_no_file_of_a_run_that_is_killed)
{
    const int unnamed = open(m_folder.c_str(), O_TMPFILE | O_RDWR, 0600);
    if (unnamed < 0)
        GTEST_SKIP() << "the file system has no unnamed files";
    close(unnamed);
    write("bin/gnuplot", "#!/bin/sh\nkill -KILL $PPID\n");
    const run_t result =
        shell("chmod +x bin/gnuplot; mkdir r; (PATH=$PWD/bin:$PATH; nrwave generate " + k_small + "-o r/x --report r)");
    EXPECT_NE(result.status, 0);
    EXPECT_TRUE(fs::is_empty(m_folder / "r"));
}

TEST_F(nrwave_program, completes_command_lines_in_bash)
{
    const auto replies = [&](const std::string& line) {
        return shell("bash -c '. " NR_MOD_LIB_SOURCE_DIR
                     "/host/nrwave.bash-completion; COMP_WORDS=(nrwave); COMP_LINE=$1; "
                     "COMP_POINT=${#1}; _nrwave 2>/dev/null; printf \"%s\\n\" \"${COMPREPLY[@]}\"' _ " +
                     line)
            .out;
    };
    EXPECT_EQ(replies("'nrwave ge'"), "generate\nget\n");
    EXPECT_EQ(replies("'nrwave map --fr'"), "--frame\n");
    EXPECT_EQ(replies("'nrwave get carrier[0].dl_ss'"), "carrier[0].dl_ssb.\n");
    EXPECT_EQ(replies("'nrwave generate --set carrier[2].dl_ssb.act'"), "carrier[2].dl_ssb.active_idx=\n");
    EXPECT_EQ(replies("'nrwave generate --set carrier[0].channel_bandwidth=lib_nr_channel_fr1_10'"),
              "LIB_NR_CHANNEL_FR1_10M\nLIB_NR_CHANNEL_FR1_100M\n");
    EXPECT_EQ(replies("'nrwave generate --set \"carrier[0].dl_ssb.enable=f'"), "carrier[0].dl_ssb.enable=false\n");
    EXPECT_EQ(replies("'nrwave generate --format c'"), "cf32\ncf64\nci16\ncsv\n");
    EXPECT_EQ(replies("'nrwave map --preset nr-fr1-tm3.1'"), "NR-FR1-TM3.1\nNR-FR1-TM3.1a\nNR-FR1-TM3.1b\n");
    EXPECT_EQ(replies("'nrwave presets G-FR1-A3-14:bandwidth=20m,s'"), "20m,scs=\n");
    EXPECT_EQ(replies("'nrwave map --preset NR-FR2-TM2:scs='"), "60K\n120K\n480K\n960K\n");
    EXPECT_EQ(replies("'nrwave get --set \"add carrier[0].dl_c'"),
              "add carrier[0].dl_csirs\nadd carrier[0].dl_csirs[0].\n");
    EXPECT_EQ(replies("'nrwave map --recipe '"), "\n");
}

TEST_F(nrwave_program, explains_what_is_sent_and_why_the_rest_of_a_slot_is_not)
{
    const std::string pdsch =
        "explain --set carrier[0].channel_bandwidth=20m --set carrier[0].dl_csirs[0].enable=1 --set "
        "carrier[0].dl_pdsch[0].slot_allocation=1 --set carrier[0].dl_pdsch[0].enable=1 ";
    const auto sent = nlohmann::ordered_json::parse(run(pdsch + "--channel dl_pdsch --json").out);
    ASSERT_EQ(sent.size(), 1u);
    std::string keys;
    for (const auto& item : sent[0].items())
        keys += item.key() + ' ';
    EXPECT_EQ(keys, "path frame slot sent reason symbols rbs c_init dmrs_symbols dmrs_c_init tbs base_graph lifting "
                    "code_blocks e g k0 stages ");
    EXPECT_EQ(sent[0]["path"], "carrier[0].dl_pdsch[0]");
    EXPECT_EQ(sent[0]["slot"], 1);
    EXPECT_TRUE(sent[0]["reason"].is_null());
    const auto slot = nlohmann::json::parse(run(pdsch + "--slot 2 --channel carrier[0].dl_pdsch[0] --json").out);
    ASSERT_EQ(slot.size(), 1u);
    EXPECT_EQ(slot[0]["sent"], false);
    EXPECT_EQ(slot[0]["reason"], "its slot list leaves the slot out");
    const std::string text = run(pdsch + "--slot 2").out;
    EXPECT_NE(text.find("carrier[0].dl_pdsch[0], frame 0, slot 2: not sent: its slot list leaves the slot out\n"),
              std::string::npos);
}

TEST_F(nrwave_program, does_what_readme_and_manual_say_on_a_clean_copy)
{
    const fs::path source = NR_MOD_LIB_SOURCE_DIR;
    fs::copy(source / "examples", m_folder / "examples");
    unsigned int commands = 0;
    for (const char* document : {"README.md", "docs/nrwave.md", "docs/many.md"}) {
        std::istringstream text(content_of(source / document));
        for (std::string line; std::getline(text, line);)
            if (line.rfind("    nrwave ", 0) == 0 && line.rfind("    nrwave: ", 0) != 0) {
                const run_t result = shell(line);
                EXPECT_EQ(result.status, 0) << line << '\n' << result.err;
                EXPECT_EQ(result.err, "") << line;
                ++commands;
            }
    }
    EXPECT_GE(commands, 15u);
}

} // namespace

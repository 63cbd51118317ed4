#include "config/cfg_nr_waveform.h"
#include "phy/lib_nr_phy.h"
#include "receiver/ssb_receiver.h"
#include "support/captured_output.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <string>
#include <vector>

using namespace vek::nr_mod_lib;

namespace
{

/// A waveform with SS/PBCH blocks, and what a receiver must find in it.
struct ssb_case_t
{
    const char* name;
    char ssb_case;
    lib_nr_numerology_type_t numerology;
    lib_nr_channel_bw_type_t bandwidth;
    unsigned long long radio_frequency;
    unsigned int lmax;
    std::vector<unsigned int> active = {}; // all where none is listed
    unsigned int cell = 0;
    unsigned int frames = 1;
    lib_ssb_periodicity_t periodicity = LIB_NR_SSB_10MS_PERIODICITY;
    unsigned char half_frame = 0; // asked for; 5 ms makes it both
    std::optional<unsigned int> rb_offset = {};
    unsigned int kssb = 0;
    int first_subcarrier = -120; // of the block, from the carrier's centre
    int frequency_offset = 0;
    bool ntn = false;
    bool phase_compensation = true;
    const char* power_boosting = "0";
    double pss_power_boosting = 0.0;
};

std::string active_text(const ssb_case_t& c)
{
    if (c.active.empty())
        return "0:63";
    std::string text;
    for (const unsigned int index : c.active) {
        text += std::to_string(index);
        text += ',';
    }
    return text;
}

class ssb_waveform_t
{
public:
    explicit ssb_waveform_t(const ssb_case_t& c) : m_case(c)
    {
        m_waveform.set_nr_ntn(c.ntn);
        m_waveform.set_frame_number(c.frames);
        m_waveform.set_phase_compensation(c.phase_compensation);
        carrier().set_baseband_filter(false);
        carrier().set_windowing_beta(0.0);
        carrier().set_channel_bandwidth(c.bandwidth);
        carrier().set_numerology(c.numerology);
        carrier().set_ncell_id(c.cell);
        carrier().set_frequency_offset(c.frequency_offset);
        m_waveform.set_radio_frequency(c.radio_frequency);
        ssb().set_enable(true);
        ssb().set_ssb_pattern(static_cast<lib_nr_ssb_case_t>(c.ssb_case - 'A'));
        ssb().set_active_idx(active_text(c));
        ssb().set_power_boosting(c.power_boosting);
        ssb().set_pss_power_boosting(c.pss_power_boosting);
        ssb().set_periodicity(c.periodicity);
        ssb().set_half_frame_idx(c.half_frame);
        if (c.rb_offset)
            ssb().set_rb_offset(*c.rb_offset);
        ssb().set_kssb(c.kssb);
    }

    cfg_nr_carrier_t& carrier() { return *m_waveform.get_carrier(0); }
    cfg_nr_dl_ssb_t& ssb() { return *carrier().get_dl_ssb(); }

    /// The signal with the carrier's centre at 0 Hz.
    nr_test::signal_t generate()
    {
        lib_nr_phy_t phy;
        phy.waveform_config(m_waveform.get_waveform_manager());
        EXPECT_TRUE(phy.nr_phy_process());
        m_setup.mu = m_case.numerology;
        m_setup.sample_rate = static_cast<double>(m_waveform.get_waveform_sample_rate());
        m_setup.frequency_offset = m_case.frequency_offset;
        m_setup.radio_frequency = m_case.phase_compensation ? static_cast<double>(m_case.radio_frequency) : 0.0;
        return nr_test::mixed_down(phy.get_baseband_signal_data(), m_setup);
    }
    const nr_test::ofdm_setup_t& setup() const { return m_setup; }

private:
    ssb_case_t m_case;
    nr_test::captured_output_t m_output;
    cfg_nr_waveform_t m_waveform;
    nr_test::ofdm_setup_t m_setup;
};

bool is_sent(const ssb_case_t& c, unsigned int frame, unsigned int half_frame, unsigned int index)
{
    return frame * 10 % c.periodicity == 0 &&
           (c.periodicity == LIB_NR_SSB_5MS_PERIODICITY || half_frame == c.half_frame) &&
           (c.active.empty() || std::find(c.active.begin(), c.active.end(), index) != c.active.end());
}

unsigned int first_symbol(const ssb_case_t& c, unsigned int half_frame, unsigned int index)
{
    return half_frame * 70 * (1u << c.numerology) + nr_test::candidate_symbols(c.ssb_case, c.lmax)[index];
}

std::size_t pss_sample(const nr_test::ofdm_setup_t& setup, unsigned int frame, unsigned int symbol)
{
    return frame * setup.frame_length() + nr_test::useful_start(setup, symbol);
}

using check_t = std::function<void(const nr_test::ssb_content_t&, unsigned int frame)>;

/// Receives the waveform: a search with nothing known, then every candidate of every half frame.
void receive(const ssb_case_t& c, const nr_test::signal_t& signal, const nr_test::ofdm_setup_t& setup,
             const check_t& check = {})
{
    const auto found = nr_test::find_ssb(signal, setup);
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->cell, c.cell);
    EXPECT_EQ(found->first_subcarrier, c.first_subcarrier);
    const unsigned int first_half = c.periodicity == LIB_NR_SSB_5MS_PERIODICITY ? 0 : c.half_frame;
    EXPECT_EQ(found->sample,
              pss_sample(setup, 0, first_symbol(c, first_half, c.active.empty() ? 0 : c.active.front())));

    std::map<double, std::complex<double>> gains; // by power
    unsigned int received = 0;
    for (unsigned int frame = 0; frame < c.frames; ++frame)
        for (unsigned int half = 0; half < 2; ++half)
            for (unsigned int index = 0; index < c.lmax; ++index) {
                SCOPED_TRACE(::testing::Message() << "frame " << frame << ", half " << half << ", index " << index);
                const unsigned int symbol = first_symbol(c, half, index);
                nr_test::ssb_place_t place = *found;
                place.sample = pss_sample(setup, frame, symbol);
                if (!is_sent(c, frame, half, index)) {
                    const auto silent = nr_test::demodulate_at(signal, setup, place.sample);
                    for (const auto& value : silent)
                        ASSERT_LT(std::norm(value), 1e-20);
                    continue;
                }
                const auto content = nr_test::read_pbch(signal, setup, place, c.lmax);
                ASSERT_TRUE(content.crc_matches);
                EXPECT_EQ(content.half_frame, half);
                EXPECT_EQ(content.block_index, index);
                EXPECT_EQ(content.dmrs_index, c.lmax == 4 ? index + 4 * half : index % 8);
                EXPECT_EQ(content.scrambling_index, content.dmrs_index);
                EXPECT_EQ(content.frame_number & 15u, frame);
                if (c.lmax != 64) {
                    EXPECT_EQ(content.kssb_high_bit, c.kssb / 16);
                }
                if (check)
                    check(content, frame);
                const auto quality = nr_test::measure_ssb(signal, setup, frame * setup.frame_length(), symbol, place,
                                                          content.dmrs_index);
                EXPECT_LT(quality.evm, 1e-6);
                EXPECT_NEAR(20.0 * std::log10(quality.pss_amplitude), c.pss_power_boosting, 1e-6);
                const auto& first_gain = gains.emplace(0.0, quality.gain).first->second;
                EXPECT_NEAR(std::abs(quality.gain / first_gain), 1.0, 1e-6);
                // One phase from block to block: the carrier's phase is steady over the waveform.
                EXPECT_LT(std::abs(quality.gain / first_gain - 1.0), 1e-6);
                ++received;
            }
    EXPECT_GT(received, 0u);
}

/// Every MIB field as TS 38.331 clause 6.2.2 lays it out.
void expect_mib(const nr_test::ssb_content_t& content, unsigned int frame, unsigned int spacing_common,
                unsigned int subcarrier_offset, unsigned int dmrs_position, unsigned int sib1, bool barred,
                bool reselection)
{
    const auto number = [&](std::size_t first, std::size_t count) {
        unsigned int value = 0;
        for (std::size_t i = first; i < first + count; ++i)
            value = 2 * value + content.mib[i];
        return value;
    };
    EXPECT_EQ(number(0, 1), 0u);
    EXPECT_EQ(content.frame_number, frame);
    EXPECT_EQ(number(7, 1), spacing_common);
    EXPECT_EQ(number(8, 4), subcarrier_offset % 16);
    EXPECT_EQ(number(12, 1), dmrs_position - 2);
    EXPECT_EQ(number(13, 8), sib1);
    EXPECT_EQ(number(21, 1), barred ? 1u : 0u);
    EXPECT_EQ(number(22, 1), reselection ? 1u : 0u);
    EXPECT_EQ(number(23, 1), 0u);
}

const std::vector<ssb_case_t> k_cases = {
    {.name = "case A up to 3 GHz",
     .ssb_case = 'A',
     .numerology = LIB_NR_SCS_15K,
     .bandwidth = LIB_NR_CHANNEL_FR1_5M,
     .radio_frequency = 3000000000,
     .lmax = 4,
     .cell = 0,
     .first_subcarrier = -120},
    {.name = "case A above 3 GHz, moved, last cell, second half frame",
     .ssb_case = 'A',
     .numerology = LIB_NR_SCS_15K,
     .bandwidth = LIB_NR_CHANNEL_FR1_10M,
     .radio_frequency = 3000000100,
     .lmax = 8,
     .active = {1, 6, 7},
     .cell = 1007,
     .half_frame = 1,
     .rb_offset = 3,
     .kssb = 23,
     .first_subcarrier = 3 * 12 + 23 - 312},
    {.name = "case B up to 3 GHz, both half frames of two frames",
     .ssb_case = 'B',
     .numerology = LIB_NR_SCS_30K,
     .bandwidth = LIB_NR_CHANNEL_FR1_20M,
     .radio_frequency = 2345678900,
     .lmax = 4,
     .cell = 123,
     .frames = 2,
     .periodicity = LIB_NR_SSB_5MS_PERIODICITY},
    {.name = "case B above 3 GHz, kssb on top of the middle, four frames",
     .ssb_case = 'B',
     .numerology = LIB_NR_SCS_30K,
     .bandwidth = LIB_NR_CHANNEL_FR1_20M,
     .radio_frequency = 3456789100,
     .lmax = 8,
     .active = {0, 5},
     .cell = 502,
     .frames = 4,
     .kssb = 22,
     .first_subcarrier = -120 + 11,
     .pss_power_boosting = 3.0},
    {.name = "case C up to 3 GHz, every other frame",
     .ssb_case = 'C',
     .numerology = LIB_NR_SCS_30K,
     .bandwidth = LIB_NR_CHANNEL_FR1_20M,
     .radio_frequency = 1000000000,
     .lmax = 4,
     .active = {2},
     .cell = 77,
     .frames = 4,
     .periodicity = LIB_NR_SSB_20MS_PERIODICITY},
    {.name = "case C above 3 GHz, at the upper edge of a wide carrier",
     .ssb_case = 'C',
     .numerology = LIB_NR_SCS_30K,
     .bandwidth = LIB_NR_CHANNEL_FR1_100M,
     .radio_frequency = 4900000000ull,
     .lmax = 8,
     .active = {7},
     .cell = 334,
     .rb_offset = 505,
     .kssb = 6,
     .first_subcarrier = (505 * 12 + 6) / 2 - 1638},
    {.name = "case D",
     .ssb_case = 'D',
     .numerology = LIB_NR_SCS_120K,
     .bandwidth = LIB_NR_CHANNEL_FR2_1_50M,
     .radio_frequency = 28000100000ull,
     .lmax = 64,
     .cell = 9,
     .half_frame = 1,
     .first_subcarrier = -120},
    {.name = "case D, moved, four frames",
     .ssb_case = 'D',
     .numerology = LIB_NR_SCS_120K,
     .bandwidth = LIB_NR_CHANNEL_FR2_1_100M,
     .radio_frequency = 39000000000ull,
     .lmax = 64,
     .active = {0, 63},
     .cell = 600,
     .frames = 4,
     .rb_offset = 17,
     .kssb = 10,
     .first_subcarrier = (17 * 12 + 10) / 2 - 396},
    {.name = "case E",
     .ssb_case = 'E',
     .numerology = LIB_NR_SCS_240K,
     .bandwidth = LIB_NR_CHANNEL_FR2_1_100M,
     .radio_frequency = 28000000000ull,
     .lmax = 64,
     .cell = 700,
     .kssb = 8,
     .first_subcarrier = -120 + 2},
    {.name = "case E, second half frame, moved",
     .ssb_case = 'E',
     .numerology = LIB_NR_SCS_240K,
     .bandwidth = LIB_NR_CHANNEL_FR2_1_200M,
     .radio_frequency = 28000000000ull,
     .lmax = 64,
     .active = {35, 60},
     .cell = 701,
     .half_frame = 1,
     .rb_offset = 41,
     .kssb = 4,
     .first_subcarrier = (41 * 12 + 4) / 4 - 396},
    {.name = "case F",
     .ssb_case = 'F',
     .numerology = LIB_NR_SCS_480K,
     .bandwidth = LIB_NR_CHANNEL_FR2_2_400M,
     .radio_frequency = 60000000000ull,
     .lmax = 64,
     .cell = 1000,
     .first_subcarrier = -120},
    {.name = "case G, second half frame, moved",
     .ssb_case = 'G',
     .numerology = LIB_NR_SCS_960K,
     .bandwidth = LIB_NR_CHANNEL_FR2_2_400M,
     .radio_frequency = 66000000000ull,
     .lmax = 64,
     .active = {0, 17, 62},
     .cell = 1,
     .half_frame = 1,
     .rb_offset = 16,
     .first_subcarrier = 16 * 12 / 16 - 198},
    {.name = "a carrier off the centre",
     .ssb_case = 'C',
     .numerology = LIB_NR_SCS_30K,
     .bandwidth = LIB_NR_CHANNEL_FR1_20M,
     .radio_frequency = 2000000000,
     .lmax = 4,
     .cell = 55,
     .frequency_offset = -3210000},
    {.name = "a carrier far off the centre, across 3 GHz",
     .ssb_case = 'B',
     .numerology = LIB_NR_SCS_30K,
     .bandwidth = LIB_NR_CHANNEL_FR1_20M,
     .radio_frequency = 2990000000,
     .lmax = 8,
     .cell = 56,
     .frequency_offset = 20000000},
    {.name = "non-terrestrial",
     .ssb_case = 'A',
     .numerology = LIB_NR_SCS_15K,
     .bandwidth = LIB_NR_CHANNEL_FR1_30M,
     .radio_frequency = 2000000000,
     .lmax = 4,
     .cell = 57,
     .ntn = true},
    {.name = "no phase compensation",
     .ssb_case = 'B',
     .numerology = LIB_NR_SCS_30K,
     .bandwidth = LIB_NR_CHANNEL_FR1_20M,
     .radio_frequency = 2345678900,
     .lmax = 4,
     .cell = 58,
     .phase_compensation = false},
};

TEST(ssb, receiver_finds_and_reads_every_block)
{
    for (const ssb_case_t& c : k_cases) {
        SCOPED_TRACE(c.name);
        ssb_waveform_t waveform(c);
        const nr_test::signal_t signal = waveform.generate();
        const bool is_wide_common = c.numerology == LIB_NR_SCS_30K || c.numerology == LIB_NR_SCS_120K;
        receive(c, signal, waveform.setup(), [&](const nr_test::ssb_content_t& content, unsigned int frame) {
            expect_mib(content, frame, is_wide_common, c.kssb, 2, 0, false, false);
        });
    }
}

} // namespace

#include "config/cfg_nr_waveform.h"
#include "host/nrwave_saved.h"
#include "host/nrwave_steps.h"
#include "phy/lib_nr_phy.h"
#include "phy_common/lib_nr_phy_common.h"
#include "support/captured_output.h"
#include "support/leaf_walk.h"
#include "support/settings.h"
#include "support/settings_text.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <set>

// Whatever is set, in whatever order: the configuration stays valid, a settings file brings it back, and it generates.

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::difference_t;
using nr_test::recall;
using nr_test::saved;

constexpr unsigned int k_walks = 1000;
constexpr unsigned int k_steps = 40;
constexpr unsigned int k_bare_walks = 1500;
constexpr unsigned int k_generate_each = 20;
constexpr unsigned long long k_most_samples = 5000000;

/// Each getter lies within what its list offers, or within the limits of its setting.
void expect_valid(cfg_nr_waveform_t& waveform)
{
    EXPECT_GE(waveform.get_frame_number(), 1u);
    EXPECT_LE(waveform.get_frame_number(), 4u);
    EXPECT_EQ(waveform.get_subframes_number(), 10u);
    ASSERT_GE(waveform.get_carrier_number(), 1u);
    // A carrier starts at 100 MHz in NTN mode too, where a setter would not take it, and a test model at 256QAM; a test
    // model takes 240 kHz, and a reference channel any row, which they do not offer.
    for (const difference_t& value : nr_test::not_on_offer(waveform))
        EXPECT_TRUE(value.first == "LIB_NR_CHANNEL_FR1_100M" || value.first == "LIB_NR_SCS_240K" ||
                    value.first == "LIB_NR_MODULATION_256QAM" ||
                    value.path.find("dl_frc[0].fixed_reference_channels") != std::string::npos)
            << value.path << " is " << value.first << ", not on offer";
    for (unsigned int c = 0; c < waveform.get_carrier_number(); ++c) {
        cfg_nr_carrier_t& carrier = *waveform.get_carrier(c);
        EXPECT_LE(std::abs(carrier.get_frequency_offset()), 400000000);
        EXPECT_GE(carrier.get_timing_offset(), 0.0);
        EXPECT_LE(carrier.get_timing_offset(), 0.01);
        EXPECT_LE(std::abs(carrier.get_power_boosting()), 40.0);
        EXPECT_LE(carrier.get_init_phase(), 360u);
        EXPECT_LE(carrier.get_ncell_id(), 1007u);
        EXPECT_LE(carrier.get_windowing_beta(), 0.5);

        const auto enabled = carrier.get_enable_numerology_list();
        EXPECT_FALSE(enabled.empty());
        for (unsigned int n = 0; n < carrier.get_numerology_number(); ++n) {
            cfg_nr_phy_numerology_t& numerology = *carrier.get_numerology(static_cast<int>(n));
            const unsigned int most =
                lib_nr_phy_common_t::get_max_transmit_rb_num(numerology.get_scs(), carrier.get_channel_bandwidth());
            EXPECT_GE(numerology.get_rb_size(), 6u);
            EXPECT_LE(numerology.get_rb_start() + numerology.get_rb_size(), most);
        }

        cfg_nr_dl_ssb_t& ssb = *carrier.get_dl_ssb();
        EXPECT_NE(std::find(enabled.begin(), enabled.end(), ssb.get_numerology()), enabled.end());
        EXPECT_FALSE(ssb.get_enable() && ssb.get_numerology() == LIB_NR_SCS_60K);
        // At 60 kHz, where the block has no place, it follows kssb without a limit; at 480 and 960 kHz that stays.
        EXPECT_TRUE(ssb.get_ssb_subcarrier_offset() <= 31u || ssb.get_numerology() == LIB_NR_SCS_60K ||
                    ssb.get_numerology() >= LIB_NR_SCS_480K);
        EXPECT_LE(ssb.get_pdcch_config_sib1(), 255u);
    }
}

TEST(cfg_nr_leaf_walk, any_settings_in_any_order_stay_valid_and_come_back_from_a_file)
{
    for (unsigned int seed = 0; seed < k_walks; ++seed) {
        nr_test::captured_output_t silence;
        cfg_nr_waveform_t waveform;
        nr_test::leaf_walk_t walk(waveform, seed);
        walk.take_steps(k_steps);
        SCOPED_TRACE("walk " + std::to_string(seed) + ":\n" + walk.history());

        expect_valid(waveform);

        cfg_nr_waveform_t loaded;
        const nrwave::saved_settings_t file = nrwave::saved_settings(waveform);
        nr_test::load(loaded, file.text);
        for (const difference_t& difference :
             nr_test::differences(waveform, loaded, nr_test::scope_t::read_by_a_signal))
            EXPECT_TRUE(std::any_of(file.losses.begin(), file.losses.end(),
                                    [&](const std::string& line) { return line.rfind(difference.path, 0) == 0; }))
                << difference.path << " was " << difference.first << ", came back as " << difference.second;

        // The bare tree loses some of it; a second recall changes nothing any more.
        cfg_nr_waveform_t recalled;
        const std::string tree = saved(waveform);
        ASSERT_TRUE(recall(recalled, tree));
        const std::string kept = saved(recalled);
        ASSERT_TRUE(recall(recalled, tree));
        EXPECT_EQ(saved(recalled), kept);

        if (seed % k_generate_each == 0 && waveform.get_waveform_sample_points() <= k_most_samples) {
            lib_nr_phy_t engine;
            engine.waveform_config(waveform.get_waveform_manager());
            if (engine.nr_phy_process()) {
                EXPECT_EQ(engine.get_baseband_signal_data().size(), waveform.get_waveform_sample_points());
            }
            else {
                EXPECT_NE(silence.text().find("Resource Mapping Conflict!"), std::string::npos);
            }
        }
    }
}

/// A setting that the bare tree does not bring back: steps below the first carrier that lead there, and what it falls
/// to, behind a ~ where that is another value in another configuration.
struct fall_t
{
    std::vector<const char*> steps;
    std::string path; ///< below the carrier, or a setting of the waveform
    std::string fallen;
};

constexpr const char* k_uplink = "carrier_type=LIB_NR_UPLINK";
const std::vector<fall_t> k_falls = {
    {{"enable=false"}, "cfr_block_size", "~0"},
    {{"dl_csirs[0].table_idx=18", "dl_csirs[0].antenna_port=CSIRS_ANTENNA_PORT29"},
     "dl_csirs[0].antenna_port",
     "~CSIRS_ANTENNA_PORT0"},
    {{"dl_csirs[0].table_idx=18", "dl_csirs[0].csirs_port=20"}, "dl_csirs[0].csirs_port", "~0"},
    {{"dl_bwp[1].coreset[1].fd_resources=1"}, "dl_dci[0].aggregation_level", "~LIB_NR_DCI_AGGREGATION_LEVEL_1"},
    {{"dl_dci[0].candidates_num=LIB_NR_DCI_CANDIDATE_6", "dl_dci[0].allocated_candidate=5"},
     "dl_dci[0].allocated_candidate",
     "0"},
    {{"dl_dci[0].data_block_size=128", "dl_bwp[1].coreset[1].fd_resources=1"}, "dl_dci[0].data_block_size", "~84"},
    {{"dl_dci[0].search_space_type=LIB_NR_DCI_CSS", "dl_bwp[1].coreset[1].fd_resources=1"},
     "dl_dci[0].search_space_type",
     "LIB_NR_DCI_USS"},
    {{"channel_bandwidth=LIB_NR_CHANNEL_FR1_20M", "numerology=LIB_NR_SCS_60K"}, "dl_prs[0].periodicity", "~16"},
    {{"dl_prs[0].rb_number=999"}, "dl_prs[0].rb_number", "272"},
    {{"numerology[0].rb_start=255"}, "dl_prs[0].rb_offset", "~249"},
    {{"dl_prs[0].comb_size=LIB_NR_PRS_COMB_SIZE_6"}, "dl_prs[0].symbol_number", "~LIB_NR_PRS_SYMBOL_NUMBER_6"},
    {{"dl_prs[0].comb_size=LIB_NR_PRS_COMB_SIZE_12", "dl_prs[0].symbol_offset=99"}, "dl_prs[0].symbol_offset", "~8"},
    {{"dl_ssb.active_idx=0", "dl_ssb.power_boosting=1", "dl_ssb.active_idx=1"},
     "dl_ssb.power_boosting",
     "~0.00,0.00,0.00,0.00"},
    {{}, "dl_tm.modulation", "LIB_NR_MODULATION_QPSK"},
    {{k_uplink, "ul_pucch[0].dmrs_power=1", "ul_pucch[0].dmrs_power=1e-300"}, "ul_pucch[0].dmrs_power", "0"},
    {{k_uplink, "ul_pucch[0].interlace0=4", "numerology=LIB_NR_SCS_60K"}, "ul_pucch[0].interlace0", "0"},
    {{k_uplink, "ul_pucch[0].interlace1=4", "numerology=LIB_NR_SCS_60K"}, "ul_pucch[0].interlace1", "-1"},
    {{k_uplink, "ul_pucch[0].rb_offset=272", "ul_bwp[0].rb_offset=180"}, "ul_pucch[0].rb_offset", "~92"},
    {{k_uplink, "ul_pucch[0].second_hop_prb=272", "ul_bwp[0].rb_offset=261"}, "ul_pucch[0].second_hop_prb", "~11"},
    {{k_uplink, "ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_1"},
     "ul_pucch[0].uci_format",
     "~LIB_NR_UL_UCI_HARQ_ACK_ONLY"},
    {{k_uplink, "ul_pusch[0].rb_num=139", "ul_pusch[0].hopping_rb_offset=77"}, "ul_pusch[0].hopping_rb_offset", "~0"},
    {{k_uplink, "ul_pusch[0].dmrs_port=0:3", "ul_pusch[0].ptrs_port=2"}, "ul_pusch[0].ptrs_port", "~0"},
    {{k_uplink, "ul_pusch[0].ra_type=LIB_NR_SCH_RA_TYPE2", "ul_bwp[0].rb_number=8"},
     "ul_pusch[0].ra_type",
     "LIB_NR_SCH_RA_TYPE1"},
    {{k_uplink, "ul_pusch[0].unused_rb=272", "numerology=LIB_NR_SCS_60K"}, "ul_pusch[0].unused_rb", "~134"},
    {{k_uplink, "ul_rmc.bandwidth=LIB_NR_CHANNEL_FR2_1_100M",
      "ul_rmc.rmc_rb_allocation=LIB_NR_UL_RMC_INNER_FULL_REGION1"},
     "ul_rmc.rmc_rb_allocation",
     "LIB_NR_UL_RMC_OUTER_FULL"},
    {{"dl_tm.layers=2", "apply dl_tm"}, "antennas_number", "1"},
    {{"dl_tm.layers=2", "apply dl_tm"}, "dl_pdsch[0].antenna_port", "LIB_NR_ANTENNA_PORT_0"},
    {{"dl_tm.layers=3", "dl_tm.test_model=LIB_NR_FR1_TM2b"}, "dl_tm.layers", "1"},
    {{"dl_csirs[0].slot_allocation=17,0", "channel_bandwidth=LIB_NR_CHANNEL_FR2_2_2000M",
      "channel_bandwidth=LIB_NR_CHANNEL_FR1_30M"},
     "dl_csirs[0].slot_allocation",
     "~0"},
    {{"dl_ssb.dmrs_typea_position=3", "dl_pdsch[0].dmrs_type_a_position=LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB",
      "dl_pdsch[0].first_symbol=3"},
     "dl_pdsch[0].first_symbol",
     "2"},
    {{"dl_prs[0].set_slot_offset=9", "dl_prs[0].numerology=LIB_NR_SCS_480K", "dl_prs[0].periodicity=9",
      "channel_bandwidth=LIB_NR_CHANNEL_FR2_2_2000M", "channel_bandwidth=LIB_NR_CHANNEL_FR1_30M"},
     "dl_prs[0].set_slot_offset",
     "~3"},
    {{"dl_ssb.auto_cofig_mib=false", "dl_ssb.data_source=LIB_NR_PN15", "dl_ssb.auto_cofig_mib=true"},
     "dl_ssb.data_source",
     "LIB_NR_PN9"},
    {{"dl_ssb.kssb=22", "channel_bandwidth=LIB_NR_CHANNEL_FR2_2_2000M"}, "dl_ssb.kssb", "~0"},
    {{"channel_bandwidth=LIB_NR_CHANNEL_FR2_2_1600M", "channel_bandwidth=LIB_NR_CHANNEL_FR2_1_50M"},
     "dl_ssb.lmax",
     "~LIB_NR_LMAX_4"},
    {{"channel_bandwidth=LIB_NR_CHANNEL_FR2_2_1600M", "channel_bandwidth=LIB_NR_CHANNEL_FR1_40M",
      "numerology=LIB_NR_SCS_60K"},
     "dl_ssb.ssb_pattern",
     "NR_SSB_CASE_B"},
    {{"numerology=LIB_NR_SCS_60K", "dl_ssb.kssb=99"}, "dl_ssb.ssb_subcarrier_offset", "31"},
    {{"pucch_test_model.number_of_downlink_slots=99"}, "pucch_test_model.number_of_downlink_slots", "~9"},
    {{"pucch_test_model.number_of_downlink_slots=99"}, "pucch_test_model.number_of_uplink_slots", "~1"},
    {{"pucch_test_model.tdd_slot_allocation=LIB_NR_TDD_SPECIAL_SLOT"}, "pucch_test_model.number_of_uplink_slots", "~1"},
    {{"pucch_test_model.duplex_type=LIB_NR_DUPLEX_TYPE_TDD",
      "pucch_test_model.transmission_periodicity=LIB_NR_TDD_TRANSMISSION_PERIODICITY_2500_US",
      "pucch_test_model.subcarrier_spacing=LIB_NR_TEST_MODEL_SCS_15K"},
     "pucch_test_model.transmission_periodicity",
     "LIB_NR_TDD_TRANSMISSION_PERIODICITY_5000_US"},
    {{k_uplink, "ul_frc.fixed_reference_channels=LIB_NR_FR1_FRC_A_9_A_8",
      "ul_frc.mapping_type=LIB_NR_DMRS_MAPPING_TYPEB"},
     "ul_frc.dmrs_type_a_position",
     "~0"},
    {{k_uplink, "ul_frc.interlace_index=22", "ul_frc.frc_reference_channels=LIB_NR_G_FR1_A1_2"},
     "ul_frc.interlace_index",
     "5"},
    {{k_uplink, "ul_pucch[0].occ_length=LIB_NR_UL_PUCCH_OCC_LENGTH_4", "ul_pucch[0].occ_index=3"},
     "ul_pucch[0].occ_index",
     "~0"},
    {{k_uplink, "ul_pucch[0].power=1", "ul_pucch[0].power=1e-300"}, "ul_pucch[0].power", "0"},
    {{k_uplink, "ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_3", "ul_pucch[0].rb_num=16",
      "ul_bwp[0].rb_offset=267"},
     "ul_pucch[0].rb_num",
     "~6"},
    {{"dl_tm.layers=2", "apply dl_tm", k_uplink}, "ul_pusch[0].antenna_port", "LIB_NR_ANTENNA_PORT_0"},
    {{k_uplink, "ul_pusch[0].slot_allocation=16:19", "channel_bandwidth=LIB_NR_CHANNEL_FR2_2_2000M",
      "channel_bandwidth=LIB_NR_CHANNEL_FR1_30M"},
     "ul_pusch[0].slot_allocation",
     "~0:9"},
    {{k_uplink, "ul_pucch[0].allocated_slots=1,11,6,0", "ul_pucch[0].number_of_slots_for_pucch_repetition=4",
      "channel_bandwidth=LIB_NR_CHANNEL_FR1_30M", "numerology=LIB_NR_SCS_15K"},
     "ul_pucch[0].number_of_slots_for_pucch_repetition",
     "~3"},
    {{"channel_bandwidth=LIB_NR_CHANNEL_FR2_2_1600M", "dl_prs[0].numerology=LIB_NR_SCS_120K", "dl_prs[0].enable=true"},
     "dl_prs[0].enable",
     "false"},
    {{"dl_prs[0].numerology=LIB_NR_SCS_120K", "dl_prs[0].periodicity=256", "dl_prs[0].slot_offset=255",
      "numerology=LIB_NR_SCS_30K"},
     "dl_prs[0].slot_offset",
     "~7"},
    {{"channel_bandwidth=LIB_NR_CHANNEL_FR2_2_800M", "channel_bandwidth=LIB_NR_CHANNEL_FR2_1_50M",
      "dl_ssb.active_idx=3,1,5"},
     "dl_ssb.active_idx",
     "~3,1"},
    {{k_uplink, "ul_pusch[0].interlace_index=0:4", "ul_pusch[0].unused_rb=249",
      "channel_bandwidth=LIB_NR_CHANNEL_FR2_2_800M"},
     "ul_pusch[0].interlace_index",
     "~0"},
    {{"numerology=LIB_NR_SCS_60K", "dl_bwp[1].cp_type=LIB_NR_EXTEND_CP", "add dl_bwp"},
     "dl_bwp[0].cp_type",
     "LIB_NR_NORMAL_CP"},
    {{k_uplink, "numerology=LIB_NR_SCS_60K", "dl_bwp[1].scs=LIB_NR_SCS_60K", "dl_bwp[1].cp_type=LIB_NR_EXTEND_CP"},
     "dl_bwp[0].cp_type",
     "LIB_NR_EXTEND_CP"},
    {{k_uplink, "numerology=LIB_NR_SCS_60K"}, "dl_bwp[0].bwp_rb_size", "135"},
    {{k_uplink, "add numerology[0].ul_guard_band.guard_band", "confirm numerology[0].ul_guard_band",
      "ul_pusch[0].rb_set_number=2"},
     "ul_pusch[0].rb_set_number",
     "1"},
    {{"dl_csirs[0].table_idx=2", "dl_csirs[0].density=0.5", "dl_csirs[0].density_prb_allocation=ODD_PRBS",
      "dl_csirs[0].density=1"},
     "dl_csirs[0].density_prb_allocation",
     "EVEN_PRBS"},
    {{"dl_dci[0].slot_allocation=17", "channel_bandwidth=LIB_NR_CHANNEL_FR1_30M", "numerology=LIB_NR_SCS_15K"},
     "dl_dci[0].slot_allocation",
     "~0"},
    {{"dl_dci[0].start_symbol_within_slot=13", "dl_bwp[1].coreset_number=2", "dl_bwp[1].coreset[2].duration=3",
      "dl_dci[0].coreset_id=2"},
     "dl_dci[0].start_symbol_within_slot",
     "~11"},
    {{"dl_tm.bandwidth=LIB_NR_CHANNEL_FR1_10M", "dl_tm.numerology=LIB_NR_SCS_60K", "apply dl_tm",
      "dl_pdsch[0].slot_allocation=34", "numerology_mode=LIB_NR_NUMBEROLOGY_MODE_MULTIPLE"},
     "dl_pdsch[0].slot_allocation",
     "~0:9"},
    {{"dl_ssb.half_frame_idx=1"}, "dl_ssb.half_frame_idx", "0"},
    {{"dl_ssb.kssb=22", "channel_bandwidth=LIB_NR_CHANNEL_FR1_15M", "dl_ssb.rb_offset=35"}, "dl_ssb.kssb", "12"},
    {{k_uplink, "ul_pucch[0].allocated_slots=15", "channel_bandwidth=LIB_NR_CHANNEL_FR1_30M",
      "numerology=LIB_NR_SCS_15K"},
     "ul_pucch[0].allocated_slots",
     "0"},
    {{k_uplink, "numerology=LIB_NR_SCS_60K", "ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_3",
      "ul_pucch[0].first_symbol=0", "ul_pucch[0].symbol_num=14", "ul_bwp[0].cp_type=LIB_NR_EXTEND_CP"},
     "ul_pucch[0].symbol_num",
     "12"},
    {{k_uplink, "ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_1", "ul_pucch[0].allocated_slots=0,1",
      "ul_pucch[0].inter_slot_frequency_hopping=true", "ul_pucch[0].allocated_slots=0"},
     "ul_pucch[0].inter_slot_frequency_hopping",
     "false"},
    {{k_uplink, "ul_pusch[0].dmrs_port=0,1", "ul_pusch[0].tpmi=1"}, "ul_pusch[0].tpmi", "0"},
    {{k_uplink, "ul_pusch[0].enable_codebook=true", "ul_pusch[0].antenna_port_number=LIB_NR_ANTENNA_PORT_NUMBER_4",
      "ul_pusch[0].tpmi=27", "ul_pusch[0].enable_codebook=false"},
     "ul_pusch[0].tpmi",
     "0"},
};

/// NR_TEST_WALKS asks for another number of walks.
unsigned int walks_asked(unsigned int walks)
{
    const char* asked = std::getenv("NR_TEST_WALKS");
    return asked ? static_cast<unsigned int>(std::atoi(asked)) : walks;
}

TEST(cfg_nr_leaf_walk, the_bare_tree_loses_what_its_format_cannot_hold_and_nothing_else)
{
    const nr_test::captured_output_t silence;
    // Where a setting lies, and what it falls to.
    const auto case_of = [](const std::string& path, const std::string& fallen) {
        std::string bare;
        bool is_index = false;
        for (const char letter : path) {
            is_index = letter == '[' || (is_index && letter != ']');
            if (!is_index && letter != ']')
                bare += letter;
        }
        return bare + ' ' + fallen;
    };
    std::set<std::string> may_fall;
    for (const fall_t& fall : k_falls) {
        cfg_nr_waveform_t waveform;
        nrwave::stepper_t stepper(waveform, [](const std::string&) {});
        for (const char* step : fall.steps)
            stepper.apply(step, {}, "carrier[0]");
        cfg_nr_waveform_t recalled;
        ASSERT_TRUE(recall(recalled, saved(waveform)));
        const std::string path = (fall.path.find('.') == std::string::npos ? "" : "carrier[0].") + fall.path;
        const bool varies = fall.fallen[0] == '~';
        const std::string fallen = fall.fallen.substr(varies ? 1 : 0);
        EXPECT_NE(nr_test::value_of(waveform, path), fallen) << path;
        EXPECT_EQ(nr_test::value_of(recalled, path), fallen) << path;
        may_fall.insert(case_of(path, varies ? "~" : fallen));
    }
    for (unsigned int seed = 0; seed < walks_asked(k_bare_walks); ++seed) {
        cfg_nr_waveform_t waveform;
        if (seed % 2 == 0)
            waveform.get_carrier(0)->set_carrier_type(LIB_NR_UPLINK);
        nr_test::leaf_walk_t walk(waveform, seed);
        walk.take_steps(seed % 4 < 2 ? k_steps : 1, 8);
        cfg_nr_waveform_t recalled;
        ASSERT_TRUE(recall(recalled, saved(waveform)));
        for (const difference_t& difference : nr_test::differences(waveform, recalled, nr_test::scope_t::in_the_tree))
            EXPECT_TRUE(may_fall.count(case_of(difference.path, "~")) ||
                        may_fall.count(case_of(difference.path, difference.second)))
                << seed << ": " << difference.path << " was " << difference.first << ", came back as "
                << difference.second;
        // A second round changes nothing. A PRS takes a third, or goes to and fro where it has no room.
        cfg_nr_waveform_t again;
        ASSERT_TRUE(recall(again, saved(recalled)));
        for (const difference_t& difference : nr_test::differences(recalled, again, nr_test::scope_t::in_the_tree))
            EXPECT_NE(difference.path.find("].dl_prs["), std::string::npos) << seed << ": " << difference.path;
    }
}

} // namespace

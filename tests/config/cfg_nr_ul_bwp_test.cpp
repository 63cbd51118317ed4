#include "config/cfg_nr_ul_bwp.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_saved.h"
#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::take;
using nr_test::value_of;
using nr_test::waveform_of_t;

TEST(cfg_nr_ul_bwp, limits_follow_the_numerology_of_its_own_spacing)
{
    cfg_nr_waveform_t waveform;
    nr_test::run_rows(waveform, {{"carrier[0].carrier_type=LIB_NR_UPLINK"},
                                 {"carrier[0].numerology_mode=LIB_NR_NUMBEROLOGY_MODE_MULTIPLE"},
                                 {"carrier[0].numerology[1].enable=true"},
                                 {"add carrier[0].ul_bwp"},
                                 {"copy carrier[0].ul_bwp[1]"},
                                 {"carrier[0].ul_bwp[2].bwp_name", nullptr, "BWP2_copy"},
                                 {"carrier[0].ul_bwp[0].cp_type", "LIB_NR_EXTEND_CP", "LIB_NR_NORMAL_CP", false},
                                 {"carrier[0].ul_bwp[1].numerology", "LIB_NR_SCS_60K", "LIB_NR_SCS_60K", true},
                                 {"carrier[0].ul_bwp[2].numerology", "LIB_NR_SCS_60K", "LIB_NR_SCS_60K", true},
                                 {"carrier[0].ul_bwp[1].rb_number", nullptr, "135"},
                                 {"carrier[0].ul_bwp[1].rb_offset", "1000", "129", true},
                                 {"carrier[0].ul_bwp[1].rb_number", nullptr, "6"},
                                 {"carrier[0].ul_bwp[1].rb_number", "3", "6", false},
                                 {"carrier[0].ul_bwp[0].rb_offset", "1000", "267", true},
                                 {"carrier[0].ul_bwp[2].cp_type", "LIB_NR_EXTEND_CP", "LIB_NR_EXTEND_CP", true},
                                 {"carrier[0].ul_bwp[2].cp_type", "LIB_NR_EXTEND_CP", "LIB_NR_EXTEND_CP", false},
                                 {"carrier[0].ul_bwp[1].cp_type", nullptr, "LIB_NR_EXTEND_CP"},
                                 {"carrier[0].ul_bwp[0].cp_type", nullptr, "LIB_NR_NORMAL_CP"},
                                 {"carrier[0].ul_bwp[1].numerology", "LIB_NR_SCS_15K", "LIB_NR_SCS_30K", true},
                                 {"carrier[0].ul_bwp[1].cp_type", nullptr, "LIB_NR_NORMAL_CP"}});
}

TEST(cfg_nr_ul_bwp, channels_follow_what_stands_at_their_number)
{
    cfg_nr_waveform_t waveform;
    nr_test::run_rows(waveform, {{"carrier[0].carrier_type=LIB_NR_UPLINK"},
                                 {"add carrier[0].ul_bwp"},
                                 {"carrier[0].ul_bwp[1].rb_offset=200"},
                                 {"copy carrier[0].ul_bwp[0]"},
                                 {"carrier[0].ul_pucch[0].bwp_id", "2", "2", true},
                                 {"carrier[0].ul_pusch[0].rb_num", nullptr, "273"},
                                 {"remove carrier[0].ul_bwp[0]"},
                                 {"carrier[0].ul_pusch[0].rb_num", nullptr, "73"},
                                 {"carrier[0].ul_prach[0].rb_offset", nullptr, "200"},
                                 {"carrier[0].ul_pucch[0].bwp_id", nullptr, "0"},
                                 {"copy carrier[0].ul_bwp[0]"},
                                 {"carrier[0].ul_pucch[0].bwp_id", "2", "2", true},
                                 {"carrier[0].ul_bwp[2].rb_number", "20", "20", true},
                                 {"carrier[0].ul_pucch[0].bwp_id", nullptr, "2"},
                                 {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR2_1_100M"},
                                 {"carrier[0].numerology_mode=LIB_NR_NUMBEROLOGY_MODE_MULTIPLE"},
                                 {"carrier[0].numerology[2].enable=true"},
                                 {"carrier[0].ul_bwp[2].numerology", "LIB_NR_SCS_240K", "LIB_NR_SCS_240K", true},
                                 {"carrier[0].ul_pucch[0].enable", "true", "false", false},
                                 {"carrier[0].ul_pucch[0].bwp_id", "1", "1", true},
                                 {"carrier[0].ul_pucch[0].enable", "true", "true", true},
                                 {"carrier[0].ul_srs[0].bwp_id", "1", "1", true},
                                 {"carrier[0].ul_srs[0].enable", "true", "true", true},
                                 {"remove carrier[0].ul_bwp[1]"},
                                 {"carrier[0].ul_pucch[0].enable", nullptr, "false"},
                                 {"carrier[0].ul_srs[0].enable", nullptr, "false"}});
}

TEST(cfg_nr_ul_bwp, a_file_brings_back_what_was_confirmed)
{
    const std::string bands = "carrier[0].numerology[0].ul_guard_band";
    const std::string add = "add " + bands + ".guard_band";
    waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK", add, add, bands + ".guard_band_size[0]=160",
                            bands + ".guard_band_start[0]=30", bands + ".guard_band_end[0]=229",
                            bands + ".guard_band_size[1]=1", bands + ".guard_band_start[1]=400", "confirm " + bands,
                            "carrier[0].ul_bwp[0].bwp_name=my own"});
    const std::string rb_sets = "0:29,230:270,272:272";
    EXPECT_EQ(value_of(waveform, bands + ".rb_set_info"), rb_sets);

    // Edits that were refused or not confirmed stay out of the file.
    take(waveform, {add, bands + ".guard_band_start[2]=231"});
    EXPECT_THROW(take(waveform, {"confirm " + bands}), nrwave::failure_t);
    EXPECT_THROW(take(waveform, {"remove " + bands + ".guard_band[3]"}), nrwave::failure_t);
    EXPECT_THROW(take(waveform, {"remove " + bands + ".guard_band"}), nrwave::failure_t);
    cfg_nr_waveform_t recalled;
    nr_test::load(recalled, nrwave::saved_settings(waveform).text);
    EXPECT_EQ(value_of(recalled, bands + ".guard_band_number"), "2");
    EXPECT_EQ(value_of(recalled, bands + ".rb_set_info"), rb_sets);
    EXPECT_EQ(value_of(recalled, "carrier[0].ul_bwp[0].bwp_name"), "my own");

    take(recalled, {"remove " + bands + ".guard_band[0]", "cancel " + bands, "remove " + bands + ".guard_band[1]",
                    "confirm " + bands});
    EXPECT_EQ(value_of(recalled, bands + ".rb_set_info"), "0:29,230:272");
}

} // namespace

#include "config/cfg_nr_ul_srs.h"

#include "host/nrwave_listing.h"
#include "host/nrwave_saved.h"
#include "support/leaf_walk.h"
#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;

const std::string k_srs = "carrier[0].ul_srs[0]";

TEST(cfg_nr_ul_srs, settings_keep_to_their_limits_and_to_each_other)
{
    nr_test::waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK"});
    nr_test::run_rows(waveform,
                      {
                          {"N_symb_srs", "LIB_NR_N_SYMB_SRS_VALUE_4", "LIB_NR_N_SYMB_SRS_VALUE_4", true},
                          {"l_offset", nullptr, "5"},
                          {"srs_repetition_factor", "LIB_NR_REPETITION_FACTOR_3", "LIB_NR_REPETITION_FACTOR_4", true},
                          {"srs_repetition_factor", "LIB_NR_REPETITION_FACTOR_1", "LIB_NR_REPETITION_FACTOR_1", true},
                          {"N_symb_srs", "LIB_NR_N_SYMB_SRS_VALUE_12", "LIB_NR_N_SYMB_SRS_VALUE_12", true},
                          {"l_offset", nullptr, "11"},
                          {"srs_repetition_factor", "LIB_NR_REPETITION_FACTOR_3", "LIB_NR_REPETITION_FACTOR_3", true},
                          {"N_symb_srs", "LIB_NR_N_SYMB_SRS_VALUE_8", "LIB_NR_N_SYMB_SRS_VALUE_8", true},
                          {"srs_repetition_factor", nullptr, "LIB_NR_REPETITION_FACTOR_8"},
                          {"l_offset", "0", "7", true},
                          {"l_offset", "300", "13", true},
                          {"n_SRS_cs", "9", "7", true},
                          {"Ktc_number", "LIB_NR_K_TC_VALUE_8", "LIB_NR_K_TC_VALUE_8", true},
                          {"n_SRS_cs", nullptr, "5"},
                          {"ktc_offset", "8", "7", true},
                          {"Ktc_number", "LIB_NR_K_TC_VALUE_2", "LIB_NR_K_TC_VALUE_2", true},
                          {"ktc_offset", nullptr, "1"},
                          {"p_f", "SRS_SRS_PF_4", "SRS_SRS_PF_4", true}, // 4 RBs at comb 2: 6 values
                          {"k_f", "9", "3", true},
                          {"n_SRS_cs", nullptr, "5"},
                          {"Ktc_number", "LIB_NR_K_TC_VALUE_4", "LIB_NR_K_TC_VALUE_4", true},
                          {"k_f", nullptr, "0"},
                          {"n_SRS_cs", "255", "11", true},
                          {"p_f", nullptr, "SRS_SRS_PF_1"},
                          {"c_srs", "64", "63", true}, // 272 RBs
                          {"p_f", "SRS_SRS_PF_4", "SRS_SRS_PF_4", true},
                          {"b_srs", "4", "3", true}, // 4 RBs
                          {"p_f", nullptr, "SRS_SRS_PF_1"},
                          {"p_f", "SRS_SRS_PF_2", "SRS_SRS_PF_2", true},
                          {"b_hop", "7", "3", true},
                          {"n_shift", "300", "268", true},
                          {"n_RRC", "68", "67", true},
                          {"GroupOrSeqHop", "3", "2", true},
                          {"n_ID_SRS", "65536", "65535", true},
                          {"power_bosting", "-41", "-40", true},
                          {"port_number", "LIB_NR_PORT_NUMBER_4", "LIB_NR_PORT_NUMBER_4", true},
                          {"antenna_port", "SRS_ANTENNA_PORT3,SRS_ANTENNA_PORT1", "SRS_ANTENNA_PORT3", true},
                          {"srs_port", "2:9", "2,3", true},
                          {"port_number", "LIB_NR_PORT_NUMBER_2", "LIB_NR_PORT_NUMBER_2", true},
                          {"antenna_port", nullptr, "SRS_ANTENNA_PORT0"},
                          {"antenna_port", "SRS_ANTENNA_PORT2", "SRS_ANTENNA_PORT0", false},
                          {"available_port_for_ui", nullptr, "SRS_ANTENNA_NONE,SRS_ANTENNA_PORT0,SRS_ANTENNA_PORT1"},
                          {"srs_port", "7", "2,3", false}, // not held against the number of ports by itself
                          {"srs_port", "0:9", "0,1", true},
                          {"t_offset", "5", "0", false},
                          {"slot_allocation", "25,3,7:9", "3,7:9", true},
                          {"slot_allocation", "20", "3,7:9", false},
                          {"srs_periodity", "LIB_NR_SRS_5MS_PERIODICITY", "LIB_NR_SRS_5MS_PERIODICITY", true},
                          {"slot_allocation", nullptr, "0,5,10,15"},
                          {"t_offset", "7", "4", true},
                          {"t_offset", "2", "2", true},
                          {"slot_allocation", "1", "2,7,12,17", false},
                          {"srs_periodity", "LIB_NR_SRS_2MS_PERIODICITY", "LIB_NR_SRS_2MS_PERIODICITY", true},
                          {"t_offset", nullptr, "1"},
                          {"srs_periodity", "LIB_NR_SRS_640MS_PERIODICITY", "LIB_NR_SRS_640MS_PERIODICITY", true},
                          {"t_offset", "20", "20", true},
                          {"slot_allocation", nullptr, ""},
                          {"t_offset", "19", "19", true},
                          {"srs_periodity", "LIB_NR_SRS_0MS_PERIODICITY", "LIB_NR_SRS_0MS_PERIODICITY", true},
                          {"slot_allocation", nullptr, "19"},
                          {"bwp_id", "9", "0", false},
                          {"t_offset", nullptr, "0"},
                          {"enable", "true", "true", true},
                      },
                      k_srs);

    cfg_nr_waveform_t recalled;
    nr_test::load(recalled, nrwave::saved_settings(waveform).text);
    EXPECT_TRUE(nr_test::differences(waveform, recalled, nr_test::scope_t::read_by_a_signal).empty());

    nr_test::take(waveform, {k_srs + ".srs_periodity=LIB_NR_SRS_80MS_PERIODICITY", k_srs + ".t_offset=79",
                             k_srs + ".srs_periodity=LIB_NR_SRS_0MS_PERIODICITY"});
    for (std::vector<std::string> listing :
         {nrwave::steps_of(waveform), nrwave::steps_at(waveform, "carrier[0].ul_srs[0]")})
    {
        std::erase_if(listing, [](const std::string& line) { return line.front() == '#'; });
        nr_test::waveform_of_t listed(listing);
        EXPECT_EQ(nr_test::value_of(listed, k_srs + ".slot_allocation"), "");
        EXPECT_EQ(nr_test::value_of(listed, k_srs + ".srs_periodity"), "LIB_NR_SRS_0MS_PERIODICITY");
    }

    nr_test::take(waveform,
                  {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR2_1_400M", "carrier[0].numerology=LIB_NR_SCS_240K"});
    EXPECT_EQ(nr_test::value_of(waveform, k_srs + ".enable"), "false");
}

} // namespace

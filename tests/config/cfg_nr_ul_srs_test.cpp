#include "config/cfg_nr_ul_srs.h"

#include "host/nrwave_listing.h"
#include "host/nrwave_settings.h"
#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;

TEST(cfg_nr_ul_srs, settings_keep_to_their_limits_and_to_each_other)
{
    const std::string at = "carrier[0].ul_srs[0].";
    // What is asked, what is stored, and the neighbour that follows.
    struct row_t
    {
        const char* setting;
        const char* asked;
        const char* stored;
        const char* neighbour = nullptr;
        const char* follows = nullptr;
    };
    const row_t rows[] = {
        {"N_symb_srs", "LIB_NR_N_SYMB_SRS_VALUE_4", "LIB_NR_N_SYMB_SRS_VALUE_4", "l_offset", "5"},
        {"srs_repetition_factor", "LIB_NR_REPETITION_FACTOR_3", "LIB_NR_REPETITION_FACTOR_4"},
        {"srs_repetition_factor", "LIB_NR_REPETITION_FACTOR_1", "LIB_NR_REPETITION_FACTOR_1"},
        {"N_symb_srs", "LIB_NR_N_SYMB_SRS_VALUE_12", "LIB_NR_N_SYMB_SRS_VALUE_12", "l_offset", "11"},
        {"srs_repetition_factor", "LIB_NR_REPETITION_FACTOR_3", "LIB_NR_REPETITION_FACTOR_3"},
        {"N_symb_srs", "LIB_NR_N_SYMB_SRS_VALUE_8", "LIB_NR_N_SYMB_SRS_VALUE_8", "srs_repetition_factor",
         "LIB_NR_REPETITION_FACTOR_8"},
        {"l_offset", "0", "7"},
        {"l_offset", "300", "13"},
        {"n_SRS_cs", "9", "7"},
        {"Ktc_number", "LIB_NR_K_TC_VALUE_8", "LIB_NR_K_TC_VALUE_8", "n_SRS_cs", "5"},
        {"ktc_offset", "8", "7"},
        {"Ktc_number", "LIB_NR_K_TC_VALUE_2", "LIB_NR_K_TC_VALUE_2", "ktc_offset", "1"},
        {"p_f", "SRS_SRS_PF_4", "SRS_SRS_PF_4"}, // 4 RBs at comb 2: 6 values
        {"k_f", "9", "3", "n_SRS_cs", "5"},
        {"Ktc_number", "LIB_NR_K_TC_VALUE_4", "LIB_NR_K_TC_VALUE_4", "k_f", "0"},
        {"n_SRS_cs", "255", "11", "p_f", "SRS_SRS_PF_1"},
        {"c_srs", "64", "63"}, // 272 RBs
        {"p_f", "SRS_SRS_PF_4", "SRS_SRS_PF_4"},
        {"b_srs", "4", "3", "p_f", "SRS_SRS_PF_1"}, // 4 RBs
        {"p_f", "SRS_SRS_PF_2", "SRS_SRS_PF_2"},
        {"b_hop", "7", "3"},
        {"n_shift", "300", "268"},
        {"n_RRC", "68", "67"},
        {"GroupOrSeqHop", "3", "2"},
        {"n_ID_SRS", "65536", "65535"},
        {"power_bosting", "-41", "-40"},
        {"port_number", "LIB_NR_PORT_NUMBER_4", "LIB_NR_PORT_NUMBER_4"},
        {"antenna_port", "SRS_ANTENNA_PORT3,SRS_ANTENNA_PORT1", "SRS_ANTENNA_PORT3"},
        {"srs_port", "2:9", "2,3"},
        {"port_number", "LIB_NR_PORT_NUMBER_2", "LIB_NR_PORT_NUMBER_2", "antenna_port", "SRS_ANTENNA_PORT0"},
        {"antenna_port", "SRS_ANTENNA_PORT2", "SRS_ANTENNA_PORT0", "available_port_for_ui",
         "SRS_ANTENNA_NONE,SRS_ANTENNA_PORT0,SRS_ANTENNA_PORT1"},
        {"srs_port", "7", "2,3"}, // not held against the number of ports by itself
        {"srs_port", "0:9", "0,1"},
        {"t_offset", "5", "0"},
        {"slot_allocation", "25,3,7:9", "3,7:9"},
        {"slot_allocation", "20", "3,7:9"},
        {"srs_periodity", "LIB_NR_SRS_5MS_PERIODICITY", "LIB_NR_SRS_5MS_PERIODICITY", "slot_allocation", "0,5,10,15"},
        {"t_offset", "7", "4"},
        {"t_offset", "2", "2"},
        {"slot_allocation", "1", "2,7,12,17"},
        {"srs_periodity", "LIB_NR_SRS_2MS_PERIODICITY", "LIB_NR_SRS_2MS_PERIODICITY", "t_offset", "1"},
        {"srs_periodity", "LIB_NR_SRS_640MS_PERIODICITY", "LIB_NR_SRS_640MS_PERIODICITY"},
        {"t_offset", "20", "20", "slot_allocation", ""},
        {"t_offset", "19", "19"},
        {"srs_periodity", "LIB_NR_SRS_0MS_PERIODICITY", "LIB_NR_SRS_0MS_PERIODICITY", "slot_allocation", "19"},
        {"bwp_id", "9", "0", "t_offset", "0"},
        {"enable", "true", "true"},
    };
    nr_test::waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK"});
    for (const row_t& row : rows) {
        nr_test::take(waveform, {at + row.setting + '=' + row.asked});
        EXPECT_EQ(nr_test::value_of(waveform, at + row.setting), row.stored) << row.setting << " = " << row.asked;
        if (row.neighbour) {
            EXPECT_EQ(nr_test::value_of(waveform, at + row.neighbour), row.follows)
                << row.setting << " = " << row.asked;
        }
    }

    cfg_nr_waveform_t recalled;
    nr_test::take(recalled, nrwave::recall_text(recalled, "saved", nrwave::saved_text(waveform)));
    for (const row_t& row : rows)
        EXPECT_EQ(nr_test::value_of(recalled, at + row.setting), nr_test::value_of(waveform, at + row.setting))
            << row.setting;

    nr_test::take(waveform, {at + "srs_periodity=LIB_NR_SRS_80MS_PERIODICITY", at + "t_offset=79",
                             at + "srs_periodity=LIB_NR_SRS_0MS_PERIODICITY"});
    for (std::vector<std::string> listing :
         {nrwave::steps_of(waveform), nrwave::steps_at(waveform, "carrier[0].ul_srs[0]")})
    {
        std::erase_if(listing, [](const std::string& line) { return line.front() == '#'; });
        nr_test::waveform_of_t listed(listing);
        EXPECT_EQ(nr_test::value_of(listed, at + "slot_allocation"), "");
        EXPECT_EQ(nr_test::value_of(listed, at + "srs_periodity"), "LIB_NR_SRS_0MS_PERIODICITY");
    }

    nr_test::take(waveform,
                  {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR2_1_400M", "carrier[0].numerology=LIB_NR_SCS_240K"});
    EXPECT_EQ(nr_test::value_of(waveform, at + "enable"), "false");
}

} // namespace

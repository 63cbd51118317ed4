#include "manager/lib_nr_dl_frc_configure_manager.h"

#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

TEST(lib_nr_dl_frc_configure_manager, what_depends_on_a_setting_follows_it)
{
    nr_test::waveform_of_t waveform({});
    const std::vector<nr_test::setting_row_t> rows = {
        {"bandwidth", "LIB_NR_CHANNEL_FR1_5M", "LIB_NR_CHANNEL_FR1_5M", true},
        {"numerolgy", "LIB_NR_SCS_120K", "LIB_NR_SCS_15K", true},
        {"duplex_type", "LIB_NR_DUPLEX_TYPE_FDD", "LIB_NR_DUPLEX_TYPE_FDD", true},
        {"fixed_reference_channels", "LIB_NR_DL_FRC_FR2_QPSK", "LIB_NR_DL_FRC_FR2_QPSK", true},
        {"duplex_type", nullptr, "LIB_NR_DUPLEX_TYPE_TDD"},
        {"numerolgy", nullptr, "LIB_NR_SCS_60K"},
        {"freq_range_type", nullptr, "NR_FR2_1"},
        {"bandwidth", "LIB_NR_CHANNEL_FR1_5M", "LIB_NR_CHANNEL_FR2_1_50M", false},
        {"bandwidth", "LIB_NR_CHANNEL_FR2_1_400M", "LIB_NR_CHANNEL_FR2_1_400M", true},
        {"numerolgy", "LIB_NR_SCS_240K", "LIB_NR_SCS_120K", false},
        // Taken, though not on offer: outside NTN mode with what its range has.
        {"fixed_reference_channels", "LIB_NR_NTN_FRC_FR2_A_3_2_1_3_3_QPSK", "LIB_NR_NTN_FRC_FR2_A_3_2_1_3_3_QPSK",
         true},
        {"bandwidth", nullptr, "LIB_NR_CHANNEL_FR2_1_400M"},
        {"enable", "true", "true", true},
        {"carrier[0].carrier_type=LIB_NR_UPLINK"},
        {"enable", nullptr, "false"},
        {"nr_ntn=true"},
        {"fixed_reference_channels", nullptr, "LIB_NR_NTN_FRC_FR1_A_3_2_1_1_1_QPSK"},
        {"bandwidth", nullptr, "LIB_NR_CHANNEL_FR1_10M"},
        {"duplex_type", "LIB_NR_DUPLEX_TYPE_TDD", "LIB_NR_DUPLEX_TYPE_FDD", false},
        {"fixed_reference_channels", "LIB_NR_NTN_FRC_FR2_A_3_2_1_3_3_QPSK", "LIB_NR_NTN_FRC_FR2_A_3_2_1_3_3_QPSK",
         true},
        {"bandwidth", "LIB_NR_CHANNEL_FR2_1_50M", "LIB_NR_CHANNEL_FR2_1_200M", false},
        {"numerolgy", nullptr, "LIB_NR_SCS_120K"},
        {"fixed_reference_channels", "LIB_NR_DL_FRC_FR1_QPSK", "LIB_NR_DL_FRC_FR1_QPSK", true,
         "lib_nr_dl_frc_configure_manager_t::get_valid_bandwidth_list : Error FRC!\n"
         "lib_nr_dl_frc_configure_manager_t::get_valid_numerology_list : Error FRC!\n"},
        {"bandwidth", nullptr, "LIB_NR_CHANNEL_FR1_10M"},
        {"numerolgy", nullptr, "LIB_NR_SCS_15K"},
    };
    nr_test::run_rows(waveform, rows, "carrier[0].dl_frc");
}

} // namespace

#include "manager/lib_nr_dl_tm_configure_manager.h"

#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

TEST(lib_nr_dl_tm_configure_manager, what_depends_on_a_setting_follows_it)
{
    nr_test::waveform_of_t waveform({});
    const std::vector<nr_test::setting_row_t> rows = {
        {"modulation", nullptr, "LIB_NR_MODULATION_256QAM"}, // not the model's
        {"modulation", "LIB_NR_MODULATION_256QAM", "LIB_NR_MODULATION_QPSK", true},
        {"test_model", "LIB_NR_FR1_TM2b", "LIB_NR_FR1_TM2b", true, "test : m_nr_ntn 0\n"},
        {"modulation", nullptr, "LIB_NR_MODULATION_1024QAM"},
        {"layers", "2", "2", true},
        {"layers", "4", "1", true},
        {"numerology", "LIB_NR_SCS_120K", "LIB_NR_SCS_30K", false},
        {"duplex_type", "LIB_NR_DUPLEX_TYPE_FDD", "LIB_NR_DUPLEX_TYPE_FDD", true},
        {"bandwidth", "LIB_NR_CHANNEL_FR2_1_100M", "LIB_NR_CHANNEL_FR2_1_100M", true},
        {"test_model", nullptr, "LIB_NR_FR2_TM1_1"},
        {"numerology", nullptr, "LIB_NR_SCS_60K"},
        {"duplex_type", "LIB_NR_DUPLEX_TYPE_FDD", "LIB_NR_DUPLEX_TYPE_TDD", false},
        {"frequency_range", nullptr, "NR_FR2_1"},
        {"numerology", "LIB_NR_SCS_240K", "LIB_NR_SCS_240K", true}, // not on offer
        {"bandwidth", "LIB_NR_CHANNEL_FR2_2_400M", "LIB_NR_CHANNEL_FR2_2_400M", true},
        {"numerology", nullptr, "LIB_NR_SCS_120K"},
        {"test_model", "LIB_NR_FR2_TM3_1", "LIB_NR_FR2_TM3_1", true},
        {"modulation", "LIB_NR_MODULATION_16QAM", "LIB_NR_MODULATION_16QAM", true},
        {"bandwidth", "LIB_NR_CHANNEL_FR1_5M", "LIB_NR_CHANNEL_FR1_5M", true},
        {"test_model", nullptr, "LIB_NR_FR1_TM1_1"},
        {"layers", "4", "4", true},
        {"test_model", "LIB_NR_FR1_TM1_2", "LIB_NR_FR1_TM1_2", true},
        {"layers", nullptr, "4"},
        {"enable", "true", "true", true},
        {"carrier[0].carrier_type=LIB_NR_UPLINK"},
        {"enable", nullptr, "true"}, // as no other choice
        {"layers", nullptr, "1"},
        {"nr_ntn=true"},
        {"bandwidth", nullptr, "LIB_NR_CHANNEL_FR1_5M"},
        {"bandwidth", "LIB_NR_CHANNEL_FR1_25M", "LIB_NR_CHANNEL_FR1_30M", true},
        {"test_model", "LIB_NR_FR1_TM2a", "LIB_NR_FR1_TM1_1", false, "test : m_nr_ntn 1\n"},
        {"duplex_type", "LIB_NR_DUPLEX_TYPE_TDD", "LIB_NR_DUPLEX_TYPE_FDD", false},
        {"bandwidth", "LIB_NR_CHANNEL_FR2_1_50M", "LIB_NR_CHANNEL_FR2_1_50M", true},
        {"test_model", "LIB_NR_FR2_TM2a", "LIB_NR_FR2_TM1_1", false},
    };
    nr_test::run_rows(waveform, rows, "carrier[0].dl_tm");
}

} // namespace

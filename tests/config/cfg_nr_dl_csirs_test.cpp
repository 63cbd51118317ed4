#include "config/cfg_nr_dl_csirs.h"

#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;

TEST(cfg_nr_dl_csirs, settings_read_back_as_they_were_corrected)
{
    nr_test::waveform_of_t waveform({"frame_number=2", "add carrier[0].dl_csirs"}); // 100 MHz, 30 kHz
    nr_test::run_rows(
        waveform,
        {
            {"enable", "true", "true", true},
            {"power_bosting", "41", "40", true},
            {"nid", "65536", "65535", true},
            // Row 4 has four ports.
            {"antenna_port", "CSIRS_ANTENNA_PORT3", "CSIRS_ANTENNA_PORT3", true},
            {"antenna_port", "CSIRS_ANTENNA_PORT4", "CSIRS_ANTENNA_PORT0", true},
            {"csirs_port", "4, 1:2", "4,1:2", true},
            {"csirs_port", "5", "4,1:2", false},
            // Slots count from the start of the waveform, and back in the first frame begin anew behind it.
            {"slot_allocation", "5,20", "5", true},
            {"one_frame_period", "false", "false", true},
            {"slot_allocation", "21,39:40", "21,39", true},
            {"one_frame_period", "true", "true", true},
            {"slot_allocation", nullptr, "0"},
            // In steps of 4 within BWP 1 of 273 resource blocks.
            {"rb_offset", "7", "4", true},
            {"rb_offset", "300", "268", true},
            {"rb_num", "10", "24", true},
            {"rb_num", "31", "28", true},
            // One row after another: number of bits and the ones that are forced, densities, first symbols.
            {"frequency_domain_bitmap", "000", "001", true},
            {"l0", "14", "13", true},
            {"table_idx", "9", "9", true},
            {"frequency_domain_bitmap", nullptr, "111111"},
            {"table_idx", "6", "6", true},
            {"frequency_domain_bitmap", "110000", "111111", false},
            {"frequency_domain_bitmap", "0011110", "001111", true},
            {"table_idx", "8", "8", true},
            {"l0", nullptr, "12"},
            {"frequency_domain_bitmap", "01", "010011", true},
            {"density", "0.5", "1", false},
            {"l1", "7", "2", false},
            {"table_idx", "30", "18", true},
            {"l0", nullptr, "10"},
            {"table_idx", "16", "16", true},
            {"antenna_port", "CSIRS_ANTENNA_PORT31", "CSIRS_ANTENNA_PORT31", true},
            {"l1", "13", "12", true},
            {"l1", "0", "2", true},
            {"density_prb_allocation", "ODD_PRBS", "EVEN_PRBS", false},
            {"density", "0.5", "0.5", true},
            {"density_prb_allocation", "ODD_PRBS", "ODD_PRBS", true},
            {"density", "0.25", "0.25", true}, // whatever it is
            {"table_idx", "2", "2", true},
            {"density", nullptr, "1"},
            {"available_density", nullptr, "1,0.5"},
            {"antenna_port", nullptr, "CSIRS_ANTENNA_PORT0"},
            {"available_csirs_bitmap", nullptr, "12"},
            {"table_idx", "0", "1", true},
            {"density", nullptr, "3"},
            {"bwp_id", "7", "0", true, "lib_nr_carrier_configure_manager_t::set_dl_csirs_bwp_id : Error bwp id\n"},
            {"carrier[0].dl_csirs[0].bwp_id", nullptr, "1"},
            {"carrier[0].channel_bandwidth", "LIB_NR_CHANNEL_FR1_10M", "LIB_NR_CHANNEL_FR1_10M", true},
            {"rb_num", nullptr, "24"},
            {"rb_offset", nullptr, "20"},
            {"carrier[0].dl_bwp[0].bwp_rb_size=22"},
            {"rb_num", nullptr, "22"}, // all of a small BWP
        },
        "carrier[0].dl_csirs[1]");
}

} // namespace

#include "config/cfg_nr_dl_csirs.h"

#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;

TEST(csirs_facade, settings_read_back_as_they_were_corrected)
{
    nr_test::waveform_of_t waveform({"frame_number=2", "add carrier[0].dl_csirs"}); // 100 MHz, 30 kHz
    nr_test::run_rows(
        waveform, {
                      {"carrier[0].dl_csirs[1].enable", "true", "true", true},
                      {"carrier[0].dl_csirs[1].power_bosting", "41", "40", true},
                      {"carrier[0].dl_csirs[1].nid", "65536", "65535", true},
                      // Row 4 has four ports.
                      {"carrier[0].dl_csirs[1].antenna_port", "CSIRS_ANTENNA_PORT3", "CSIRS_ANTENNA_PORT3", true},
                      {"carrier[0].dl_csirs[1].antenna_port", "CSIRS_ANTENNA_PORT4", "CSIRS_ANTENNA_PORT0", true},
                      {"carrier[0].dl_csirs[1].csirs_port", "4, 1:2", "4,1:2", true},
                      {"carrier[0].dl_csirs[1].csirs_port", "5", "4,1:2", false},
                      // Slots count from the start of the waveform, and back in the first frame begin anew behind it.
                      {"carrier[0].dl_csirs[1].slot_allocation", "5,20", "5", true},
                      {"carrier[0].dl_csirs[1].one_frame_period", "false", "false", true},
                      {"carrier[0].dl_csirs[1].slot_allocation", "21,39:40", "21,39", true},
                      {"carrier[0].dl_csirs[1].one_frame_period", "true", "true", true},
                      {"carrier[0].dl_csirs[1].slot_allocation", nullptr, "0"},
                      // In steps of 4 within BWP 1 of 273 resource blocks.
                      {"carrier[0].dl_csirs[1].rb_offset", "7", "4", true},
                      {"carrier[0].dl_csirs[1].rb_offset", "300", "268", true},
                      {"carrier[0].dl_csirs[1].rb_num", "10", "24", true},
                      {"carrier[0].dl_csirs[1].rb_num", "31", "28", true},
                      // One row after another: number of bits and the ones that are forced, densities, first symbols.
                      {"carrier[0].dl_csirs[1].frequency_domain_bitmap", "000", "001", true},
                      {"carrier[0].dl_csirs[1].l0", "14", "13", true},
                      {"carrier[0].dl_csirs[1].table_idx", "9", "9", true},
                      {"carrier[0].dl_csirs[1].frequency_domain_bitmap", nullptr, "111111"},
                      {"carrier[0].dl_csirs[1].table_idx", "6", "6", true},
                      {"carrier[0].dl_csirs[1].frequency_domain_bitmap", "110000", "111111", false},
                      {"carrier[0].dl_csirs[1].frequency_domain_bitmap", "0011110", "001111", true},
                      {"carrier[0].dl_csirs[1].table_idx", "8", "8", true},
                      {"carrier[0].dl_csirs[1].l0", nullptr, "12"},
                      {"carrier[0].dl_csirs[1].frequency_domain_bitmap", "01", "010011", true},
                      {"carrier[0].dl_csirs[1].density", "0.5", "1", false},
                      {"carrier[0].dl_csirs[1].l1", "7", "2", false},
                      {"carrier[0].dl_csirs[1].table_idx", "30", "18", true},
                      {"carrier[0].dl_csirs[1].l0", nullptr, "10"},
                      {"carrier[0].dl_csirs[1].table_idx", "16", "16", true},
                      {"carrier[0].dl_csirs[1].antenna_port", "CSIRS_ANTENNA_PORT31", "CSIRS_ANTENNA_PORT31", true},
                      {"carrier[0].dl_csirs[1].l1", "13", "12", true},
                      {"carrier[0].dl_csirs[1].l1", "0", "2", true},
                      {"carrier[0].dl_csirs[1].density_prb_allocation", "ODD_PRBS", "EVEN_PRBS", false},
                      {"carrier[0].dl_csirs[1].density", "0.5", "0.5", true},
                      {"carrier[0].dl_csirs[1].density_prb_allocation", "ODD_PRBS", "ODD_PRBS", true},
                      {"carrier[0].dl_csirs[1].density", "0.25", "0.25", true}, // whatever it is
                      {"carrier[0].dl_csirs[1].table_idx", "2", "2", true},
                      {"carrier[0].dl_csirs[1].density", nullptr, "1"},
                      {"carrier[0].dl_csirs[1].available_density", nullptr, "1,0.5"},
                      {"carrier[0].dl_csirs[1].antenna_port", nullptr, "CSIRS_ANTENNA_PORT0"},
                      {"carrier[0].dl_csirs[1].available_csirs_bitmap", nullptr, "12"},
                      {"carrier[0].dl_csirs[1].table_idx", "0", "1", true},
                      {"carrier[0].dl_csirs[1].density", nullptr, "3"},
                      {"carrier[0].dl_csirs[1].bwp_id", "7", "0", true,
                       "lib_nr_carrier_configure_manager_t::set_dl_csirs_bwp_id : Error bwp id\n"},
                      {"carrier[0].dl_csirs[0].bwp_id", nullptr, "1"},
                      {"carrier[0].channel_bandwidth", "LIB_NR_CHANNEL_FR1_10M", "LIB_NR_CHANNEL_FR1_10M", true},
                      {"carrier[0].dl_csirs[1].rb_num", nullptr, "24"},
                      {"carrier[0].dl_csirs[1].rb_offset", nullptr, "20"},
                  });
}

} // namespace

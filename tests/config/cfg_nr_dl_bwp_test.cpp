#include "config/cfg_nr_waveform.h"
#include "support/settings.h"

#include <gtest/gtest.h>

// Downlink bandwidth parts and their CORESETs.

namespace
{

TEST(cfg_nr_dl_bwp, settings_read_back_as_they_were_corrected)
{
    nr_test::waveform_of_t waveform({"add carrier[0].dl_bwp", "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_50M",
                                     "carrier[0].numerology_mode=LIB_NR_NUMBEROLOGY_MODE_MULTIPLE",
                                     "carrier[0].numerology[2].enable=true", "carrier[0].numerology[2].rb_start=5"});
    nr_test::run_rows(
        waveform,
        {
            {"carrier[0].dl_bwp[1].scs", "LIB_NR_SCS_60K", "LIB_NR_SCS_60K", true},
            {"carrier[0].dl_bwp[1].bwp_rb_start", nullptr, "5"},
            {"carrier[0].dl_bwp[1].bwp_rb_size", nullptr, "60"},
            {"carrier[0].dl_bwp[1].coreset[1].fd_resources", nullptr, "1111111111"},
            {"carrier[0].dl_bwp[1].bwp_rb_start", "20", "20", true},
            {"carrier[0].dl_bwp[1].bwp_rb_size", nullptr, "45"},
            {"carrier[0].dl_bwp[1].coreset[1].fd_resources", nullptr, "1111111"},
            {"carrier[0].dl_bwp[1].bwp_rb_size", "5", "6", false},
            {"carrier[0].dl_bwp[1].coreset[1].available_coreset_bitmap", nullptr, "1"},
            {"carrier[0].dl_bwp[1].bwp_rb_size", "99", "45", true},
            {"carrier[0].dl_bwp[2].scs", "LIB_NR_SCS_60K", "LIB_NR_SCS_60K", true},
            // At any of them, for all of them, where 60 kHz is.
            {"carrier[0].dl_bwp[0].cp_type", "LIB_NR_EXTEND_CP", "LIB_NR_NORMAL_CP", true},
            {"carrier[0].dl_bwp[1].cp_type", nullptr, "LIB_NR_EXTEND_CP"},
            {"carrier[0].dl_bwp[2].cp_type", nullptr, "LIB_NR_EXTEND_CP"},
            {"carrier[0].dl_bwp[2].scs", "LIB_NR_SCS_120K", "LIB_NR_SCS_15K", true}, // the first that is enabled
            {"carrier[0].dl_bwp[2].cp_type", nullptr, "LIB_NR_NORMAL_CP"},
            {"carrier[0].dl_bwp[0].coreset_number", "9", "3", true},
            {"carrier[0].dl_bwp[0].first_coreset_index", nullptr, "0"},
            {"carrier[0].dl_bwp[0].coreset[2].rb_offset", "-7", "-1", true},
            {"carrier[0].dl_bwp[0].coreset[2].rb_offset", "9", "5", true},
            {"carrier[0].dl_bwp[0].coreset[2].shift_idx", "275", "274", true},
            {"carrier[0].dl_bwp[0].coreset[2].duration", "9", "3", true},
            {"carrier[0].dl_bwp[1].coreset[1].duration", nullptr, "1"},
            {"carrier[0].dl_bwp[0].coreset[2].cce2reg_mapping_type", "LIB_NR_CORSET_INTERLEAVE",
             "LIB_NR_CORSET_INTERLEAVE", true},
            {"carrier[0].dl_bwp[0].coreset[2].fd_resources", "111", "1111111111111111111111", false},
        });
}

} // namespace

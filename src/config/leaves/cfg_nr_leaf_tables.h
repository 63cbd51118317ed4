#pragma once

#include "config/cfg_nr_carrier.h"
#include "config/leaves/cfg_nr_leaf_rows.h"

namespace vek::nr_mod_lib
{

// The tables of the façades below the waveform's, each in its own source. The root is declared for everyone in
// cfg_nr_leaf.h; a host reaches the others through its branches.

extern const cfg_nr_table_of_t<cfg_nr_carrier_t> g_cfg_nr_carrier_table;
extern const cfg_nr_table_of_t<cfg_nr_phy_numerology_t> g_cfg_nr_phy_numerology_table;
extern const cfg_nr_table_of_t<cfg_nr_dl_bwp_t> g_cfg_nr_dl_bwp_table;
extern const cfg_nr_table_of_t<cfg_nr_dl_coreset_t> g_cfg_nr_dl_coreset_table;
extern const cfg_nr_table_of_t<cfg_nr_dl_csirs_t> g_cfg_nr_dl_csirs_table;
extern const cfg_nr_table_of_t<cfg_nr_dl_dci_t> g_cfg_nr_dl_dci_table;
extern const cfg_nr_table_of_t<cfg_nr_dl_sch_t> g_cfg_nr_dl_sch_table;
extern const cfg_nr_table_of_t<cfg_nr_dl_prs_t> g_cfg_nr_dl_prs_table;
extern const cfg_nr_table_of_t<cfg_nr_dl_ssb_t> g_cfg_nr_dl_ssb_table;
extern const cfg_nr_table_of_t<cfg_nr_dl_tm_t> g_cfg_nr_dl_tm_table;
extern const cfg_nr_table_of_t<cfg_nr_dl_frc_t> g_cfg_nr_dl_frc_table;
extern const cfg_nr_table_of_t<cfg_nr_ul_bwp_t> g_cfg_nr_ul_bwp_table;
extern const cfg_nr_table_of_t<cfg_nr_ul_guard_band_t> g_cfg_nr_ul_guard_band_table;
extern const cfg_nr_table_of_t<cfg_nr_ul_pucch_t> g_cfg_nr_ul_pucch_table;
extern const cfg_nr_table_of_t<cfg_nr_ul_sch_t> g_cfg_nr_ul_sch_table;
extern const cfg_nr_table_of_t<cfg_nr_ul_srs_t> g_cfg_nr_ul_srs_table;
extern const cfg_nr_table_of_t<cfg_nr_prach_t> g_cfg_nr_prach_table;
extern const cfg_nr_table_of_t<cfg_nr_ul_frc_t> g_cfg_nr_ul_frc_table;
extern const cfg_nr_table_of_t<cfg_nr_ul_rmc_t> g_cfg_nr_ul_rmc_table;
extern const cfg_nr_table_of_t<cfg_nr_pucch_test_model_t> g_cfg_nr_pucch_test_model_table;

} // namespace vek::nr_mod_lib

#include "config/cfg_nr_carrier.h"
#include "config/cfg_nr_leaf_rows.h"
#include "config/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using carrier_t = cfg_nr_carrier_t;
constexpr auto k_tree = cfg_nr_leaf_place_t::tree;
constexpr auto k_outside_tree = cfg_nr_leaf_place_t::outside_tree;

// The same name gives the carrier's spacing and the façade over its numerologies.
constexpr auto k_spacing = static_cast<lib_nr_numerology_type_t (carrier_t::*)() const>(&carrier_t::get_numerology);
constexpr auto k_numerology = static_cast<cfg_nr_phy_numerology_t* (carrier_t::*)(int)>(&carrier_t::get_numerology);

// A change of type makes the carrier anew, so the type comes first.
constexpr std::array k_leaves = {
    leaf<&carrier_t::get_enable, &carrier_t::set_enable>("enable", 2),
    leaf<&carrier_t::get_frequency_offset, &carrier_t::set_frequency_offset>("frequency_offset", 3),
    leaf<&carrier_t::get_timing_offset, &carrier_t::set_timing_offset>("timing_offset", 4),
    leaf<&carrier_t::get_power_boosting, &carrier_t::set_power_boosting>("power_boosting", 5),
    leaf<&carrier_t::get_init_phase, &carrier_t::set_init_phase>("init_phase", 6),
    leaf<&carrier_t::get_baseband_filter, &carrier_t::set_baseband_filter>("baseband_filter", 7),
    leaf<&carrier_t::get_carrier_type, &carrier_t::set_carrier_type>("carrier_type", 1),
    leaf<&carrier_t::get_ncell_id, &carrier_t::set_ncell_id>("ncell_id", 8),
    leaf<&carrier_t::get_channel_bandwidth, &carrier_t::set_channel_bandwidth>("channel_bandwidth", 9),
    leaf<&carrier_t::get_windowing_beta, &carrier_t::set_windowing_beta>("windowing_beta", 10),
    leaf<&carrier_t::get_windowing_method, &carrier_t::set_windowing_method>("windowing_method", 11, k_outside_tree),
    leaf<&carrier_t::get_numerology_mode, &carrier_t::set_numerology_mode>("numerology_mode", 12),
    leaf<k_spacing, &carrier_t::set_numerology>("numerology", 13),
};

constexpr std::array k_figures = {
    figure<&carrier_t::get_sample_rate>("sample_rate"),
    figure<&carrier_t::get_bandwidth>("bandwidth"),
    figure<&carrier_t::get_point_a>("point_a"),
};

// The last enabled numerology cannot be switched off, so a recall enables and disables once more at the end.
constexpr std::array k_branches = {
    list<&carrier_t::get_numerology_number, k_numerology, nullptr, nullptr, nullptr>(
        "numerology", g_cfg_nr_phy_numerology_table, k_tree, "enable"),
    list<&carrier_t::get_dl_bwp_number, &carrier_t::get_dl_bwp, &carrier_t::add_dl_bwp, &carrier_t::copy_dl_bwp,
         &carrier_t::delete_dl_bwp>("dl_bwp", g_cfg_nr_dl_bwp_table),
    list<&carrier_t::get_dl_csirs_number, &carrier_t::get_dl_csirs, &carrier_t::add_dl_csirs, &carrier_t::copy_dl_csirs,
         &carrier_t::delete_dl_csirs>("dl_csirs", g_cfg_nr_dl_csirs_table),
    list<&carrier_t::get_dl_dci_number, &carrier_t::get_dl_dci, &carrier_t::add_dl_dci, &carrier_t::copy_dl_dci,
         &carrier_t::delete_dl_dci>("dl_dci", g_cfg_nr_dl_dci_table),
    list<&carrier_t::get_dl_pdsch_number, &carrier_t::get_dl_pdsch, &carrier_t::add_dl_sch, &carrier_t::copy_dl_sch,
         &carrier_t::delete_dl_sch>("dl_pdsch", g_cfg_nr_dl_sch_table),
    list<&carrier_t::get_dl_prs_number, &carrier_t::get_dl_prs, &carrier_t::add_dl_prs, &carrier_t::copy_dl_prs,
         &carrier_t::delete_dl_prs>("dl_prs", g_cfg_nr_dl_prs_table),
    single<&carrier_t::get_dl_ssb>("dl_ssb", g_cfg_nr_dl_ssb_table),
    single<&carrier_t::get_dl_tm>("dl_tm", g_cfg_nr_dl_tm_table),
    single<&carrier_t::get_dl_frc>("dl_frc", g_cfg_nr_dl_frc_table),
    list<&carrier_t::get_ul_bwp_number, &carrier_t::get_ul_bwp, &carrier_t::add_ul_bwp, &carrier_t::copy_ul_bwp,
         &carrier_t::delete_ul_bwp>("ul_bwp", g_cfg_nr_ul_bwp_table),
    list<&carrier_t::get_ul_pucch_number, &carrier_t::get_ul_pucch, &carrier_t::add_ul_pucch, &carrier_t::copy_ul_pucch,
         &carrier_t::remove_ul_pucch>("ul_pucch", g_cfg_nr_ul_pucch_table),
    list<&carrier_t::get_ul_pusch_number, &carrier_t::get_ul_pusch, &carrier_t::add_ul_sch, &carrier_t::copy_ul_sch,
         &carrier_t::delete_ul_sch>("ul_pusch", g_cfg_nr_ul_sch_table),
    single<&carrier_t::get_ul_frc>("ul_frc", g_cfg_nr_ul_frc_table),
    single<&carrier_t::get_ul_rmc>("ul_rmc", g_cfg_nr_ul_rmc_table),
    single<&carrier_t::get_pucch_test_model>("pucch_test_model", g_cfg_nr_pucch_test_model_table),
    list<&carrier_t::get_ul_srs_number, &carrier_t::get_ul_srs, &carrier_t::add_ul_srs, &carrier_t::copy_ul_srs,
         &carrier_t::remove_ul_srs>("ul_srs", g_cfg_nr_ul_srs_table, k_outside_tree),
    list<&carrier_t::get_ul_prach_number, &carrier_t::get_ul_prach, &carrier_t::add_ul_prach, &carrier_t::copy_ul_prach,
         &carrier_t::remove_ul_prach>("ul_prach", g_cfg_nr_prach_table, k_outside_tree),
};

} // namespace

constinit const cfg_nr_facade_table_t g_cfg_nr_carrier_table = {"cfg_nr_carrier", k_leaves, k_branches, k_figures};

// Façades whose settings are to come: the tree holds their blocks and counts their entries.
constinit const cfg_nr_facade_table_t g_cfg_nr_dl_bwp_table = {"cfg_nr_dl_bwp", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_dl_csirs_table = {"cfg_nr_dl_csirs", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_dl_dci_table = {"cfg_nr_dl_dci", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_dl_sch_table = {"cfg_nr_dl_sch", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_dl_prs_table = {"cfg_nr_dl_prs", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_dl_tm_table = {"cfg_nr_dl_tm", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_dl_frc_table = {"cfg_nr_dl_frc", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_ul_bwp_table = {"cfg_nr_ul_bwp", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_ul_pucch_table = {"cfg_nr_ul_pucch", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_ul_sch_table = {"cfg_nr_ul_sch", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_ul_srs_table = {"cfg_nr_ul_srs", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_prach_table = {"cfg_nr_prach", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_ul_frc_table = {"cfg_nr_ul_frc", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_ul_rmc_table = {"cfg_nr_ul_rmc", {}, {}, {}};
constinit const cfg_nr_facade_table_t g_cfg_nr_pucch_test_model_table = {"cfg_nr_pucch_test_model", {}, {}, {}};

} // namespace vek::nr_mod_lib

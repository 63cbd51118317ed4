#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using carrier_t = cfg_nr_carrier_t;
using row = rows_of_t<carrier_t>;

// The same name gives the carrier's spacing and the façade over its numerologies.
constexpr auto k_spacing = static_cast<lib_nr_numerology_type_t (carrier_t::*)() const>(&carrier_t::get_numerology);
constexpr auto k_numerology = static_cast<cfg_nr_phy_numerology_t* (carrier_t::*)(int)>(&carrier_t::get_numerology);

/// A façade of which each carrier has one; its cursor follows the carrier's.
template <auto enter>
constexpr auto single(const char* name, const cfg_nr_table_of_t<cfg_nr_leaf_detail::child_of<enter>>& table,
                      const char* help)
{
    using child_t = cfg_nr_leaf_detail::child_of<enter>;
    return row::single<enter, &carrier_t::get_current_carrier_id, &child_t::set_current_carrier_index>(name, table,
                                                                                                       help);
}

constexpr auto k_leaves = row::leaves(
    row::leaf<&carrier_t::get_enable, &carrier_t::set_enable>("enable", "whether the carrier is sent"),
    row::leaf<&carrier_t::get_frequency_offset, &carrier_t::set_frequency_offset>(
        "frequency_offset", "hertz from the waveform's centre, -400000000 to 400000000; raises the rate by the widest "
                            "carrier up to this one"),
    row::leaf<&carrier_t::get_timing_offset, &carrier_t::set_timing_offset>("timing_offset",
                                                                            "delay in seconds, 0 to 0.01"),
    row::leaf<&carrier_t::get_power_boosting, &carrier_t::set_power_boosting>("power_boosting", "dB, -40 to 40"),
    row::leaf<&carrier_t::get_init_phase, &carrier_t::set_init_phase>("init_phase", "degrees, 0 to 360"),
    row::leaf<&carrier_t::get_baseband_filter, &carrier_t::set_baseband_filter>(
        "baseband_filter", "whether a low-pass filter cuts what lies outside the occupied band"),
    row::leaf<&carrier_t::get_carrier_type, &carrier_t::set_carrier_type>(
        "carrier_type", "direction; a new one resets the carrier, but for timing_offset")
        .before("enable"),
    row::leaf<&carrier_t::get_ncell_id, &carrier_t::set_ncell_id>("ncell_id", "physical cell identity, 0 to 1007"),
    row::leaf<&carrier_t::get_channel_bandwidth, &carrier_t::set_channel_bandwidth,
              &carrier_t::get_valid_bandwidth_list>("channel_bandwidth", "rebuilds the numerologies at full width"),
    row::leaf<&carrier_t::get_windowing_beta, &carrier_t::set_windowing_beta>(
        "windowing_beta", "transition between symbols as a fraction of the useful symbol, 0 to 0.5"),
    row::leaf<&carrier_t::get_windowing_method, &carrier_t::set_windowing_method>("windowing_method",
                                                                                  "form of that transition")
        .outside_tree(),
    row::leaf<&carrier_t::get_numerology_mode, &carrier_t::set_numerology_mode>(
        "numerology_mode", "one numerology, or one for each spacing; rebuilds them"),
    row::leaf<k_spacing, &carrier_t::set_numerology, &carrier_t::get_numerology_list>(
        "numerology", "spacing of a single numerology; without effect while there are several"),
    row::leaf<&carrier_t::get_prach_cp_type, &carrier_t::set_prach_cp_type>(
        "prach_cp_type", "cyclic prefix of all uplink BWPs; extended at 60 kHz alone")
        .outside_tree());

constexpr auto k_figures =
    row::rows(row::figure<&carrier_t::get_enable_numerology_list>("enable_numerology_list",
                                                                  "spacings of the enabled numerologies"),
              row::figure<&carrier_t::get_frequency_range>("frequency_range", "of the channel bandwidth"),
              row::figure<&carrier_t::get_sample_rate>("sample_rate", "hertz; what this carrier alone needs"),
              row::figure<&carrier_t::get_bandwidth>("bandwidth", "occupied bandwidth in hertz"),
              row::figure<&carrier_t::get_point_a>("point_a", "point A against the carrier centre, in hertz"));

// A preset is chosen below the carrier and rewrites the carrier, and what holds for the whole waveform.
constexpr auto k_verbs =
    row::rows(row::verb<&carrier_t::deal_test_model>("apply", "lays the chosen test model on the carrier")
                  .of("dl_tm")
                  .shortfall("applied without a PDSCH: FR2 has no FDD test model"),
              row::verb<&carrier_t::deal_dl_fixed_reference_channels>(
                  "apply", "lays the chosen downlink fixed reference channel on the carrier")
                  .of("dl_frc"),
              row::verb<&carrier_t::deal_ul_fixed_reference_channels>(
                  "apply", "lays the chosen uplink fixed reference channel on the carrier")
                  .of("ul_frc"),
              row::verb<&carrier_t::deal_ul_reference_measurement_channels>(
                  "apply", "lays the chosen uplink reference measurement channel on the carrier")
                  .of("ul_rmc"));

constexpr auto k_branches = row::rows(
    // The last enabled numerology cannot be switched off, so a recall enables and disables once more at the end.
    row::list<&carrier_t::get_numerology_number, k_numerology>("numerology", g_cfg_nr_phy_numerology_table,
                                                               "numerologies, one or one for each spacing")
        .recalled_twice("enable"),
    row::list<&carrier_t::get_dl_bwp_number, &carrier_t::get_dl_bwp, &carrier_t::add_dl_bwp, &carrier_t::copy_dl_bwp,
              &carrier_t::delete_dl_bwp>("dl_bwp", g_cfg_nr_dl_bwp_table,
                                         "downlink bandwidth parts; the first is the initial one"),
    row::list<&carrier_t::get_dl_csirs_number, &carrier_t::get_dl_csirs, &carrier_t::add_dl_csirs,
              &carrier_t::copy_dl_csirs, &carrier_t::delete_dl_csirs>("dl_csirs", g_cfg_nr_dl_csirs_table, "CSI-RS"),
    row::list<&carrier_t::get_dl_dci_number, &carrier_t::get_dl_dci, &carrier_t::add_dl_dci, &carrier_t::copy_dl_dci,
              &carrier_t::delete_dl_dci>("dl_dci", g_cfg_nr_dl_dci_table, "PDCCH"),
    row::list<&carrier_t::get_dl_pdsch_number, &carrier_t::get_dl_pdsch, &carrier_t::add_dl_sch,
              &carrier_t::copy_dl_sch, &carrier_t::delete_dl_sch>("dl_pdsch", g_cfg_nr_dl_sch_table, "PDSCH"),
    row::list<&carrier_t::get_dl_prs_number, &carrier_t::get_dl_prs, &carrier_t::add_dl_prs, &carrier_t::copy_dl_prs,
              &carrier_t::delete_dl_prs>("dl_prs", g_cfg_nr_dl_prs_table, "positioning reference signals"),
    single<&carrier_t::get_dl_ssb>("dl_ssb", g_cfg_nr_dl_ssb_table, "SS/PBCH block"),
    single<&carrier_t::get_dl_tm>("dl_tm", g_cfg_nr_dl_tm_table, "downlink test models"),
    single<&carrier_t::get_dl_frc>("dl_frc", g_cfg_nr_dl_frc_table, "downlink fixed reference channels"),
    row::list<&carrier_t::get_ul_bwp_number, &carrier_t::get_ul_bwp, &carrier_t::add_ul_bwp, &carrier_t::copy_ul_bwp,
              &carrier_t::delete_ul_bwp>("ul_bwp", g_cfg_nr_ul_bwp_table, "uplink bandwidth parts"),
    row::list<&carrier_t::get_ul_pucch_number, &carrier_t::get_ul_pucch, &carrier_t::add_ul_pucch,
              &carrier_t::copy_ul_pucch, &carrier_t::remove_ul_pucch>("ul_pucch", g_cfg_nr_ul_pucch_table, "PUCCH"),
    row::list<&carrier_t::get_ul_pusch_number, &carrier_t::get_ul_pusch, &carrier_t::add_ul_sch,
              &carrier_t::copy_ul_sch, &carrier_t::delete_ul_sch>("ul_pusch", g_cfg_nr_ul_sch_table, "PUSCH"),
    single<&carrier_t::get_ul_frc>("ul_frc", g_cfg_nr_ul_frc_table, "uplink fixed reference channels"),
    single<&carrier_t::get_ul_rmc>("ul_rmc", g_cfg_nr_ul_rmc_table, "uplink reference measurement channels"),
    single<&carrier_t::get_pucch_test_model>("pucch_test_model", g_cfg_nr_pucch_test_model_table, "PUCCH test set-ups"),
    row::list<&carrier_t::get_ul_srs_number, &carrier_t::get_ul_srs, &carrier_t::add_ul_srs, &carrier_t::copy_ul_srs,
              &carrier_t::remove_ul_srs>("ul_srs", g_cfg_nr_ul_srs_table, "sounding reference signals")
        .outside_tree(),
    row::list<&carrier_t::get_ul_prach_number, &carrier_t::get_ul_prach, &carrier_t::add_ul_prach,
              &carrier_t::copy_ul_prach, &carrier_t::remove_ul_prach>("ul_prach", g_cfg_nr_prach_table, "PRACH")
        .outside_tree());

} // namespace

constinit const cfg_nr_table_of_t<carrier_t> g_cfg_nr_carrier_table =
    row::table("cfg_nr_carrier", k_leaves, k_figures, k_verbs, k_branches);

} // namespace vek::nr_mod_lib

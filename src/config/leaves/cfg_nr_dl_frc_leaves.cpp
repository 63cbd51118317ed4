#include "config/leaves/cfg_nr_leaf_tables.h"
#include "config/leaves/cfg_nr_preset_leaves.h"

namespace vek::nr_mod_lib
{

namespace
{

using frc_t = cfg_nr_dl_frc_t;
using row = rows_of_t<frc_t>;

constexpr auto k_leaves = row::leaves(
    k_preset_enable<row>,
    row::leaf<&frc_t::get_fixed_reference_channels, &frc_t::set_fixed_reference_channels, &frc_t::get_valid_frc_list>(
        "fixed_reference_channels", "decides the frequency range, and in NTN mode the spacing"),
    row::leaf<&frc_t::get_numerolgy, &frc_t::set_numerolgy, &frc_t::get_valid_numerology_list>(
        "numerolgy", "spacing that the bandwidth has"),
    k_preset_bandwidth<row>.before("numerolgy"), k_preset_duplex_type<row>, k_preset_radio_leaves<row>);

constexpr auto k_figures = row::rows(row::figure<&frc_t::get_freq_range_type>("freq_range_type", "of the channel"));

} // namespace

constinit const cfg_nr_table_of_t<frc_t> g_cfg_nr_dl_frc_table = row::table("cfg_nr_dl_frc", k_leaves, k_figures);

} // namespace vek::nr_mod_lib

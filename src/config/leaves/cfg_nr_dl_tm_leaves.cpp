#include "config/leaves/cfg_nr_leaf_tables.h"
#include "config/leaves/cfg_nr_preset_leaves.h"

namespace vek::nr_mod_lib
{

namespace
{

using tm_t = cfg_nr_dl_tm_t;
using row = rows_of_t<tm_t>;

constexpr auto k_leaves = row::leaves(
    k_preset_enable<row>,
    row::leaf<&tm_t::get_test_model, &tm_t::set_test_model, &tm_t::get_valid_test_model_list>(
        "test_model", "of the bandwidth's frequency range; limits modulation"),
    k_preset_bandwidth<row>.before("test_model"),
    row::leaf<&tm_t::get_numerology, &tm_t::set_numerology, &tm_t::get_valid_numerology_list>(
        "numerology", "spacing that the bandwidth has"),
    k_preset_duplex_type<row>,
    row::leaf<&tm_t::get_n_id, &tm_t::set_n_id>("n_id", "identity of cell, 0 to 1007, and PDCCH, 0 to 65535"),
    row::leaf<&tm_t::get_layers, &tm_t::set_layers>(
        "layers", "antennas, 1 or 2, with LIB_NR_FR1_TM1_1 up to 32; the PDSCHs send the first layer"),
    row::leaf<&tm_t::get_modulation, &tm_t::set_modulation, &tm_t::get_valid_modulation_list>(
        "modulation", "of LIB_NR_FR2_TM2 and LIB_NR_FR2_TM3_1; the others have their own"),
    k_preset_radio_leaves<row>);

constexpr auto k_figures = row::rows(row::figure<&tm_t::get_frequency_range>("frequency_range", "of the bandwidth"));

} // namespace

constinit const cfg_nr_table_of_t<tm_t> g_cfg_nr_dl_tm_table = row::table("cfg_nr_dl_tm", k_leaves, k_figures);

} // namespace vek::nr_mod_lib

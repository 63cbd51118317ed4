#include "config/leaves/cfg_nr_leaf_tables.h"
#include "config/leaves/cfg_nr_preset_leaves.h"

namespace vek::nr_mod_lib
{

namespace
{

using rmc_t = cfg_nr_ul_rmc_t;
using row = rows_of_t<rmc_t>;

constexpr auto k_leaves = row::leaves(
    k_preset_enable<row>,
    row::leaf<&rmc_t::get_rmc_rb_allocation, &rmc_t::set_rmc_rb_allocation, &rmc_t::get_valid_rmc_rb_allocation_list>(
        "rmc_rb_allocation", "where the resource blocks lie; of the bandwidth's frequency range"),
    k_preset_bandwidth<row>, k_preset_duplex_type<row>,
    row::leaf<&rmc_t::get_numerology, &rmc_t::set_numerology, &rmc_t::get_valid_numerology_list>(
        "numerology", "spacing that the bandwidth has"),
    row::leaf<&rmc_t::get_modulation, &rmc_t::set_modulation, &rmc_t::get_valid_modulation_list>(
        "modulation", "of the frequency range; pi/2-BPSK with enable_transfer_precoding"),
    row::leaf<&rmc_t::get_enable_transfer_precoding, &rmc_t::set_enable_transfer_precoding>(
        "enable_transfer_precoding", "fits the number of resource blocks and the modulation"),
    row::leaf<&rmc_t::get_modified_mpr_behaviour, &rmc_t::set_modified_mpr_behaviour>(
        "modified_mpr_behaviour", "inner allocations of FR2 as modified MPR behaviour has them"),
    row::leaf<&rmc_t::get_x_rb, &rmc_t::set_x_rb>(
        "x_rb", "resource blocks of the allocations of x, from 1 up to what they have room for"),
    k_preset_radio_leaves<row>);

constexpr auto k_figures =
    row::rows(row::figure<&rmc_t::get_rb_offset>("rb_offset", "first resource block of the allocation"),
              row::figure<&rmc_t::get_rb_number>("rb_number", "resource blocks of the allocation"),
              row::figure<&rmc_t::get_frequency_range>("frequency_range", "of the bandwidth"));

} // namespace

constinit const cfg_nr_table_of_t<rmc_t> g_cfg_nr_ul_rmc_table = row::table("cfg_nr_ul_rmc", k_leaves, k_figures);

} // namespace vek::nr_mod_lib

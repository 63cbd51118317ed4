#include "config/cfg_nr_dl_ssb.h"
#include "config/cfg_nr_leaf_rows.h"
#include "config/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using ssb_t = cfg_nr_dl_ssb_t;
constexpr auto k_outside_tree = cfg_nr_leaf_place_t::outside_tree;

constexpr std::array k_leaves = {
    leaf<&ssb_t::get_enable, &ssb_t::set_enable>("enable", 2),
    leaf<&ssb_t::get_ssb_pattern, &ssb_t::set_ssb_pattern>("ssb_pattern", 3),
    leaf<&ssb_t::get_lmax, &ssb_t::set_lmax>("lmax", 5),
    leaf<&ssb_t::get_active_idx, &ssb_t::set_active_idx>("active_idx", 6),
    leaf<&ssb_t::get_power_boosting, &ssb_t::set_power_boosting>("power_boosting", 7),
    leaf<&ssb_t::get_pss_power_boosting, &ssb_t::set_pss_power_boosting>("pss_power_boosting", 8),
    leaf<&ssb_t::get_periodicity, &ssb_t::set_periodicity>("periodicity", 9),
    // The periodicity sets the half frame, so the half frame follows it.
    leaf<&ssb_t::get_half_frame_idx, &ssb_t::set_half_frame_idx>("half_frame_idx", 10, k_outside_tree),
    leaf<&ssb_t::get_rb_offset, &ssb_t::set_rb_offset>("rb_offset", 4),
    leaf<&ssb_t::get_kssb, &ssb_t::set_kssb>("kssb", 11),
    leaf<&ssb_t::get_coding, &ssb_t::set_coding>("coding", 12),
    leaf<&ssb_t::get_data_source_custom, &ssb_t::set_data_source_custom>("data_source_custom", 13),
    leaf<&ssb_t::get_numerology, &ssb_t::set_numerology>("numerology", 1),
    leaf<&ssb_t::get_auto_cofig_mib, &ssb_t::set_auto_cofig_mib>("auto_cofig_mib", 14),
    leaf<&ssb_t::get_data_source, &ssb_t::set_data_source>("data_source", 15),
    leaf<&ssb_t::get_ssb_subcarrier_offset, &ssb_t::set_ssb_subcarrier_offset>("ssb_subcarrier_offset", 16),
    leaf<&ssb_t::get_dmrs_typea_position, &ssb_t::set_dmrs_typea_position>("dmrs_typea_position", 17),
    leaf<&ssb_t::get_pdcch_config_sib1, &ssb_t::set_pdcch_config_sib1>("pdcch_config_sib1", 18),
    leaf<&ssb_t::get_cell_barred, &ssb_t::set_cell_barred>("cell_barred", 19),
    leaf<&ssb_t::get_intra_frequency_reselection, &ssb_t::set_intra_frequency_reselection>(
        "intra_frequency_reselection", 20),
};

} // namespace

constinit const cfg_nr_facade_table_t g_cfg_nr_dl_ssb_table = {"cfg_nr_dl_ssb", k_leaves, {}, {}};

} // namespace vek::nr_mod_lib

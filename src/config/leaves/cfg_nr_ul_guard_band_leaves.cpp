#include "config/cfg_nr_ul_guard_band.h"
#include "config/leaves/cfg_nr_leaf_rows.h"
#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using band_t = cfg_nr_ul_guard_band_t;
using row = rows_of_t<band_t>;

constexpr auto k_leaves = row::leaves(
    row::indexed<&band_t::get_guard_band_number, &band_t::get_guard_band_start, &band_t::set_guard_band_start>(
        "guard_band_start", "first resource block, 1 to what leaves room for the size; moves the end"),
    // The size goes first, since an added band's may be too large for a start near the numerology's end.
    row::indexed<&band_t::get_guard_band_number, &band_t::get_guard_band_size, &band_t::set_guard_band_size>(
        "guard_band_size", "resource blocks, 1 to what lies ahead of the numerology's last; moves the end")
        .before("guard_band_start"),
    row::indexed<&band_t::get_guard_band_number, &band_t::get_guard_band_end, &band_t::set_guard_band_end>(
        "guard_band_end", "last resource block, of the start to the numerology's last but one; changes the size"));

constexpr auto k_figures = row::rows(
    row::figure<&band_t::get_guard_band_number>("guard_band_number", "bands of the list, edits included"),
    row::figure<&band_t::get_rb_set_info>("rb_set_info", "first and last resource block of each RB set; confirmed"));

constexpr auto k_verbs = row::rows(
    row::verb<&band_t::add_guard_band>("add", "appends the band 100 to 104").of("guard_band"),
    row::verb<&band_t::remove_guard_band>("remove", "takes a band away").of("guard_band"),
    row::verb<&band_t::confirm_configuration>("confirm", "puts the bands into force; each at least 2 above the last")
        .ends_steps(),
    row::verb<&band_t::cancal_configuration>("cancel", "drops what was not confirmed").drops_edits());

} // namespace

constinit const cfg_nr_table_of_t<band_t> g_cfg_nr_ul_guard_band_table =
    row::table("cfg_nr_ul_guard_band", k_leaves, k_figures, k_verbs);

} // namespace vek::nr_mod_lib

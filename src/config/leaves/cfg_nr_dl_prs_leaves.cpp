#include "config/cfg_nr_dl_prs.h"
#include "config/leaves/cfg_nr_leaf_rows.h"
#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using prs_t = cfg_nr_dl_prs_t;
using row = rows_of_t<prs_t>;

constexpr auto k_leaves = row::leaves(
    row::leaf<&prs_t::get_enable, &prs_t::set_enable>("enable", "needs 24 resource blocks and at most 120 kHz"),
    row::leaf<&prs_t::get_power, &prs_t::set_power>("power", "dB, -40 to 40"),
    row::leaf<&prs_t::get_numerology, &prs_t::set_numerology>("numerology", "spacing; cuts the resource blocks"),
    row::leaf<&prs_t::get_cp_type, &prs_t::set_cp_type>("cp_type", "cyclic prefix of its slots"),
    row::leaf<&prs_t::get_n_id, &prs_t::set_n_id>("n_id", "sequence identity, 0 to 4095"),
    row::leaf<&prs_t::get_rb_number, &prs_t::set_rb_number>("rb_number", "resource blocks, 24 to 272 above rb_offset"),
    row::leaf<&prs_t::get_rb_offset, &prs_t::set_rb_offset>("rb_offset", "first resource block; cuts rb_number"),
    row::leaf<&prs_t::get_comb_size, &prs_t::set_comb_size>("comb_size", "limits re_offset and symbol_number"),
    row::leaf<&prs_t::get_periodicity, &prs_t::set_periodicity>("periodicity",
                                                                "slots, of periodicity_list; limits the slot offsets"),
    row::leaf<&prs_t::get_set_slot_offset, &prs_t::set_set_slot_offset>("set_slot_offset",
                                                                        "slots, 0 to periodicity - 1"),
    row::leaf<&prs_t::get_reptition_factor, &prs_t::set_reptition_factor>(
        "reptition_factor", "repetitions in a period; fits muting_option_2"),
    row::leaf<&prs_t::get_time_gap, &prs_t::set_time_gap>("time_gap", "slots from one repetition to the next"),
    row::leaf<&prs_t::get_muting_factor, &prs_t::set_muting_factor>("muting_factor",
                                                                    "periods for each bit of muting_option_1"),
    row::leaf<&prs_t::get_muting_option_1, &prs_t::set_muting_option_1>(
        "muting_option_1", "bits such as 10, an even number up to 32; 0 mutes"),
    row::leaf<&prs_t::get_muting_option_2, &prs_t::set_muting_option_2>(
        "muting_option_2", "a bit for each repetition; counts where muting_option_1 is empty"),
    row::leaf<&prs_t::get_re_offset, &prs_t::set_re_offset>("re_offset", "subcarriers, 0 to comb size - 1"),
    row::leaf<&prs_t::get_slot_offset, &prs_t::set_slot_offset>(
        "slot_offset", "slots behind set_slot_offset, both together below periodicity"),
    row::leaf<&prs_t::get_symbol_offset, &prs_t::set_symbol_offset>("symbol_offset",
                                                                    "first symbol of a slot, so that all fit"),
    row::leaf<&prs_t::get_symbol_number, &prs_t::set_symbol_number>("symbol_number",
                                                                    "symbols of a slot; what the comb has")
        .before("symbol_offset"));

constexpr auto k_figures =
    row::rows(row::figure<&prs_t::get_periodicity_list>("periodicity_list", "periods in slots, by the spacing"));

} // namespace

constinit const cfg_nr_table_of_t<prs_t> g_cfg_nr_dl_prs_table = row::table("cfg_nr_dl_prs", k_leaves, k_figures);

} // namespace vek::nr_mod_lib

#include "config/cfg_nr_ul_srs.h"
#include "config/leaves/cfg_nr_leaf_rows.h"
#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using srs_t = cfg_nr_ul_srs_t;
using row = rows_of_t<srs_t>;

/// No text empties the list of slots, but a period that begins behind the frame does, and then may go.
std::vector<std::pair<std::string, std::string>> way_to_no_slots(const srs_t& srs)
{
    if (srs.get_srs_periodity() != LIB_NR_SRS_0MS_PERIODICITY || !srs.get_slot_allocation().empty())
        return {};
    return {{"srs_periodity", "LIB_NR_SRS_1280MS_PERIODICITY"},
            {"t_offset", "1279"},
            {"srs_periodity", "LIB_NR_SRS_0MS_PERIODICITY"},
            {"t_offset", "0"}};
}

// The settings tree holds none of it. Each row is corrected by those before it alone, so that a listing, taken as
// steps, gives the same signal.
constexpr auto k_leaves = row::leaves(
    row::leaf<&srs_t::get_bwp_id, &srs_t::set_bwp_id>("bwp_id", "uplink BWP that it lies in").outside_tree(),
    row::leaf<&srs_t::get_enable, &srs_t::set_enable>("enable", "stays off at 240 kHz").outside_tree(),
    row::leaf<&srs_t::get_power_bosting, &srs_t::set_power_bosting>("power_bosting", "dB, -40 to 40").outside_tree(),
    row::leaf<&srs_t::get_port_number, &srs_t::set_port_number>("port_number", "ports of the SRS").outside_tree(),
    row::leaf<&srs_t::get_antenna_port, &srs_t::set_antenna_port, &srs_t::get_available_port_for_ui>(
        "antenna_port", "port sent on each antenna; the first one is sent")
        .outside_tree(),
    row::leaf<&srs_t::get_srs_port, &srs_t::set_srs_port>("srs_port", "ports, 0 to port_number - 1; kept, no effect")
        .outside_tree(),
    row::leaf<&srs_t::get_pos_resource, &srs_t::set_pos_resource>("pos_resource", "positioning: comb offset by symbol")
        .outside_tree(),
    row::leaf<&srs_t::get_srs_periodity, &srs_t::set_srs_periodity>("srs_periodity",
                                                                    "slots, whatever the name; none lets slots be set")
        .outside_tree(),
    row::leaf<&srs_t::get_t_offset, &srs_t::set_t_offset>("t_offset", "slots, below the period").outside_tree(),
    row::leaf<&srs_t::get_slot_allocation_feedback, &srs_t::set_slot_allocation>(
        "slot_allocation", "slots of a frame, as 0:4,9; follows from period and offset where there is a period")
        .by_way_of<&way_to_no_slots>()
        .outside_tree(),
    row::leaf<&srs_t::get_N_symb_srs, &srs_t::set_N_symb_srs>("N_symb_srs",
                                                              "symbols in a slot; fits l_offset and repetition")
        .outside_tree(),
    row::leaf<&srs_t::get_l_offset, &srs_t::set_l_offset>("l_offset",
                                                          "first symbol, back from the slot's last: N - 1 to 13")
        .outside_tree(),
    row::leaf<&srs_t::get_srs_repetition_factor, &srs_t::set_srs_repetition_factor>(
        "srs_repetition_factor", "symbols at one frequency, a divisor of N, else N")
        .outside_tree(),
    row::leaf<&srs_t::get_Ktc_number, &srs_t::set_Ktc_number>("Ktc_number", "comb; limits ktc_offset and n_SRS_cs")
        .outside_tree(),
    row::leaf<&srs_t::get_ktc_offset, &srs_t::set_ktc_offset>("ktc_offset", "subcarriers, below the comb")
        .outside_tree(),
    row::leaf<&srs_t::get_b_srs, &srs_t::set_b_srs>("b_srs", "B_SRS, 0 to 3").outside_tree(),
    row::leaf<&srs_t::get_c_srs, &srs_t::set_c_srs>("c_srs", "C_SRS, 0 to 63").outside_tree(),
    row::leaf<&srs_t::get_b_hop, &srs_t::set_b_hop>("b_hop", "0 to 3; hops where below b_srs").outside_tree(),
    row::leaf<&srs_t::get_n_shift, &srs_t::set_n_shift>(
        "n_shift",
        "resource blocks from the grid's first, 0 to 268; under standard_rules from a BWP's that begins above")
        .outside_tree(),
    row::leaf<&srs_t::get_n_RRC, &srs_t::set_n_RRC>("n_RRC", "frequency position, 4 resource blocks each, 0 to 67")
        .outside_tree(),
    row::leaf<&srs_t::get_GroupOrSeqHop, &srs_t::set_GroupOrSeqHop>("GroupOrSeqHop",
                                                                    "0 neither, 1 group, 2 sequence hopping")
        .outside_tree(),
    row::leaf<&srs_t::get_n_SRS_cs, &srs_t::set_n_SRS_cs>("n_SRS_cs", "cyclic shift, 0 to 7, 11 or 5 at comb 2, 4 or 8")
        .outside_tree(),
    row::leaf<&srs_t::get_n_ID_SRS, &srs_t::set_n_ID_SRS>("n_ID_SRS", "sequence identity, 0 to 65535").outside_tree(),
    row::leaf<&srs_t::get_p_f, &srs_t::set_p_f>("p_f", "part of the band that is sounded; 1 where the comb has no more")
        .outside_tree(),
    row::leaf<&srs_t::get_k_f, &srs_t::set_k_f>("k_f", "which part, below p_f").outside_tree());

constexpr auto k_figures = row::rows(
    row::figure<&srs_t::get_port_number_for_ui>("port_number_for_ui", "numbers of ports"),
    row::figure<&srs_t::get_srs_periodity_for_ui>("srs_periodity_for_ui", "periods"),
    row::figure<&srs_t::get_N_symb_srs_for_ui>("N_symb_srs_for_ui", "numbers of symbols"),
    row::figure<&srs_t::get_srs_repetition_factor_for_ui>("srs_repetition_factor_for_ui", "repetition factors"),
    row::figure<&srs_t::get_Ktc_number_for_ui>("Ktc_number_for_ui", "combs"),
    row::figure<&srs_t::get_p_f_for_ui>("p_f_for_ui", "parts of a band"),
    row::figure<&srs_t::get_available_port_for_ui>("available_port_for_ui", "none and the ports that there are"));

} // namespace

constinit const cfg_nr_table_of_t<srs_t> g_cfg_nr_ul_srs_table = row::table("cfg_nr_ul_srs", k_leaves, k_figures);

} // namespace vek::nr_mod_lib

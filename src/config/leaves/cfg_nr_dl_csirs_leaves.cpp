#include "config/cfg_nr_dl_csirs.h"
#include "config/leaves/cfg_nr_leaf_rows.h"
#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using csirs_t = cfg_nr_dl_csirs_t;
using row = rows_of_t<csirs_t>;

constexpr auto k_leaves = row::leaves(
    row::leaf<&csirs_t::get_enable, &csirs_t::set_enable>("enable", "stays off at 240 kHz"),
    row::leaf<&csirs_t::get_power_bosting, &csirs_t::set_power_bosting>("power_bosting", "dB, -40 to 40"),
    row::leaf<&csirs_t::get_antenna_port, &csirs_t::set_antenna_port, &csirs_t::get_available_port_number>(
        "antenna_port", "of the row's ports; the first is sent"),
    row::leaf<&csirs_t::get_csirs_feedback_port, &csirs_t::set_csirs_port>(
        "csirs_port", "indices such as 1:4, 0 for none and n + 1 for port n; kept for the host"),
    row::leaf<&csirs_t::get_nid, &csirs_t::set_nid>("nid", "sequence identity, 0 to 65535"),
    row::leaf<&csirs_t::get_bwp_id, &csirs_t::set_bwp_id>("bwp_id", "downlink BWP; resource blocks and enable follow")
        .before("enable"),
    row::leaf<&csirs_t::get_one_frame_period, &csirs_t::set_one_frame_period>(
        "one_frame_period", "slots repeat in each frame; takes slot_allocation anew"),
    row::leaf<&csirs_t::get_slot_allocation, &csirs_t::set_slot_allocation>(
        "slot_allocation", "slots such as 0:4,7, of a frame or of the waveform"),
    row::leaf<&csirs_t::get_rb_offset, &csirs_t::set_rb_offset>(
        "rb_offset", "first resource block, a multiple of 4; counts where it lies above the BWP's start"),
    row::leaf<&csirs_t::get_rb_num, &csirs_t::set_rb_num>(
        "rb_num", "resource blocks, a multiple of 4, at least 24 or the whole BWP"),
    row::leaf<&csirs_t::get_table_idx, &csirs_t::set_table_idx>(
        "table_idx", "row of TS 38.211 Table 7.4.1.5.3-1, 1 to 18; resets density, fits ports, bitmap, l0, l1"),
    row::leaf<&csirs_t::get_l0, &csirs_t::set_l0>("l0", "first symbol, 0 to 13, 12 or 10 by the row"),
    row::leaf<&csirs_t::get_l1, &csirs_t::set_l1>("l1", "second symbol of rows 13, 14, 16, 17, 2 to 12; else 2"),
    row::leaf<&csirs_t::get_frequency_domain_bitmap, &csirs_t::set_frequency_domain_bitmap>(
        "frequency_domain_bitmap", "bits such as 001, lowest subcarriers first, with the ones that the row needs"),
    row::leaf<&csirs_t::get_density, &csirs_t::set_density>("density", "of available_density"),
    row::leaf<&csirs_t::get_density_prb_allocation, &csirs_t::set_density_prb_allocation>(
        "density_prb_allocation", "resource blocks at density 0.5"),
    row::leaf<&csirs_t::get_reused_for_pdsch, &csirs_t::set_reused_for_pdsch>("reused_for_pdsch", "kept for the host"),
    row::leaf<&csirs_t::get_zero_power, &csirs_t::set_zero_power>(
        "zero_power", "under standard_rules its cells stay silent; else kept for the host"));

constexpr auto k_figures = row::rows(
    row::figure<&csirs_t::get_csirs_type>("csirs_type", "CDM type of the row"),
    row::figure<&csirs_t::get_available_density>("available_density", "cells in each resource block and port"),
    row::figure<&csirs_t::get_density_prb_allocation_feedback>("density_prb_allocation_feedback",
                                                               "what density 0.5 may take"),
    row::figure<&csirs_t::get_available_csirs_bitmap>("available_csirs_bitmap", "bits of frequency_domain_bitmap"));

} // namespace

constinit const cfg_nr_table_of_t<csirs_t> g_cfg_nr_dl_csirs_table = row::table("cfg_nr_dl_csirs", k_leaves, k_figures);

} // namespace vek::nr_mod_lib

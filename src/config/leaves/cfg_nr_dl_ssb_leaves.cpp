#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using ssb_t = cfg_nr_dl_ssb_t;
using row = rows_of_t<ssb_t>;

constexpr auto k_leaves = row::leaves(
    row::leaf<&ssb_t::get_enable, &ssb_t::set_enable>("enable", "needs 20 resource blocks; not at 60 kHz"),
    row::leaf<&ssb_t::get_ssb_pattern, &ssb_t::set_ssb_pattern, &ssb_t::get_ssb_pattern_for_ui>(
        "ssb_pattern", "case B or C at 30 kHz; everywhere else the spacing decides"),
    row::leaf<&ssb_t::get_lmax, &ssb_t::set_lmax>(
        "lmax", "follows from spacing, case and radio frequency, whatever is asked for; resets active_idx and powers"),
    row::leaf<&ssb_t::get_active_idx, &ssb_t::set_active_idx>("active_idx",
                                                              "indices of the blocks sent, such as 0,2:4, below Lmax"),
    row::leaf<&ssb_t::get_power_boosting, &ssb_t::set_power_boosting>(
        "power_boosting", "dB by block index, such as 0,-3,1.5, each -40 to 40; active blocks take theirs"),
    row::leaf<&ssb_t::get_pss_power_boosting, &ssb_t::set_pss_power_boosting>("pss_power_boosting",
                                                                              "PSS in dB above its block, -40 to 40"),
    row::leaf<&ssb_t::get_periodicity, &ssb_t::set_periodicity>("periodicity",
                                                                "sets half_frame_idx: 255 at 5 ms, else 0"),
    row::leaf<&ssb_t::get_half_frame_idx, &ssb_t::set_half_frame_idx>(
        "half_frame_idx", "half of the frame, 0 or 1; 255, both, at a periodicity of 5 ms")
        .outside_tree(),
    row::leaf<&ssb_t::get_rb_offset, &ssb_t::set_rb_offset>(
        "rb_offset", "lowest resource block, in those of 15 kHz in FR1, of 60 kHz in FR2; resets kssb at its limit")
        .before("lmax"),
    row::leaf<&ssb_t::get_kssb, &ssb_t::set_kssb>(
        "kssb", "k_SSB in subcarriers of 15 kHz in FR1, of 60 kHz in FR2; sets ssb_subcarrier_offset"),
    row::leaf<&ssb_t::get_coding, &ssb_t::set_coding>("coding",
                                                      "whether the PBCH is coded; else bare bits, zeros behind"),
    row::leaf<&ssb_t::get_data_source_custom, &ssb_t::set_data_source_custom>("data_source_custom",
                                                                              "MIB bits of the user, such as 1011"),
    row::leaf<&ssb_t::get_numerology, &ssb_t::set_numerology>(
        "numerology", "spacing, of the carrier's enabled ones; resets what depends on it")
        .before("enable"),
    row::leaf<&ssb_t::get_auto_cofig_mib, &ssb_t::set_auto_cofig_mib>(
        "auto_cofig_mib", "whether the MIB is made from the settings here, or comes from data_source"),
    row::leaf<&ssb_t::get_data_source, &ssb_t::set_data_source>("data_source",
                                                                "bits of the MIB while it is not automatic"),
    row::leaf<&ssb_t::get_ssb_subcarrier_offset, &ssb_t::set_ssb_subcarrier_offset>(
        "ssb_subcarrier_offset", "ssb-SubcarrierOffset of the MIB, 0 to 31"),
    row::leaf<&ssb_t::get_dmrs_typea_position, &ssb_t::set_dmrs_typea_position>(
        "dmrs_typea_position", "dmrs-TypeA-Position of the MIB, 2 or 3; shared channels at MIB follow"),
    row::leaf<&ssb_t::get_pdcch_config_sib1, &ssb_t::set_pdcch_config_sib1>("pdcch_config_sib1",
                                                                            "pdcch-ConfigSIB1 of the MIB, 0 to 255"),
    row::leaf<&ssb_t::get_cell_barred, &ssb_t::set_cell_barred>(
        "cell_barred", "bit cellBarred of the MIB itself: TS 38.331 reads false, 0, as barred"),
    row::leaf<&ssb_t::get_intra_frequency_reselection, &ssb_t::set_intra_frequency_reselection>(
        "intra_frequency_reselection", "bit intraFreqReselection of the MIB itself: false, 0, reads as allowed"));

constexpr auto k_figures = row::rows(row::figure<&ssb_t::get_subcarrier_spacing_common>(
    "subcarrier_spacing_common", "common spacing of the MIB, which is the block's own"));

} // namespace

constinit const cfg_nr_table_of_t<ssb_t> g_cfg_nr_dl_ssb_table = row::table("cfg_nr_dl_ssb", k_leaves, k_figures);

} // namespace vek::nr_mod_lib

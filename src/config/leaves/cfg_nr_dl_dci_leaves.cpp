#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using dci_t = cfg_nr_dl_dci_t;
using row = rows_of_t<dci_t>;

constexpr auto k_leaves = row::leaves(
    row::leaf<&dci_t::get_enable, &dci_t::set_enable>("enable", "not at 240 kHz"),
    row::leaf<&dci_t::get_pwr_boosting, &dci_t::set_pwr_boosting>("pwr_boosting", "dB, -40 to 40"),
    row::leaf<&dci_t::get_dmrs_pwr_boosting, &dci_t::set_dmrs_pwr_boosting>("dmrs_pwr_boosting",
                                                                            "DMRS in dB above pwr_boosting, -40 to 40"),
    row::leaf<&dci_t::get_scrambling_id, &dci_t::set_scrambling_id>(
        "scrambling_id", "0 to 65535; -1 takes the cell identity, and n_RNTI 0"),
    row::leaf<&dci_t::get_rnti, &dci_t::set_rnti>(
        "rnti", "0 to 65535; masks the CRC, and places candidates in a view, or where crnti is 0 under standard_rules"),
    row::leaf<&dci_t::get_crnti, &dci_t::set_crnti>(
        "crnti",
        "0 to 65535; n_RNTI of a UE-specific search space with a scrambling_id; under standard_rules hashes any"),
    row::leaf<&dci_t::get_aggregation_level, &dci_t::set_aggregation_level>(
        "aggregation_level", "CCEs, limited by the groups of 6 resource blocks of the CORESET"),
    row::leaf<&dci_t::get_allocated_candidate, &dci_t::set_allocated_candidate>(
        "allocated_candidate", "candidate that is sent, below candidates_num"),
    row::leaf<&dci_t::get_slot_allocation, &dci_t::set_slot_allocation>("slot_allocation",
                                                                        "slots of every frame, such as 0:2,5"),
    row::leaf<&dci_t::get_coding, &dci_t::set_coding>("coding", "whether the bits are coded; else bare, zeros behind"),
    row::leaf<&dci_t::get_data_block_size, &dci_t::set_data_block_size>(
        "data_block_size", "bits of a PN source, 1 to 108 x level - 24, at most 488"),
    row::leaf<&dci_t::get_data_source, &dci_t::set_data_source>("data_source", "bits of the DCI"),
    row::leaf<&dci_t::get_data_source_custom, &dci_t::set_data_source_custom>(
        "data_source_custom", "bits of the user, such as 1011, padded to 12"),
    row::leaf<&dci_t::get_coreset_id, &dci_t::set_coreset_id>("coreset_id",
                                                              "CORESET, one of the three ids of the bandwidth part"),
    row::leaf<&dci_t::get_bwp_id, &dci_t::set_bwp_id>("bwp_id", "downlink bandwidth part, which all else follows")
        .before("enable"),
    row::leaf<&dci_t::get_search_space_type, &dci_t::set_search_space_type>(
        "search_space_type", "a common one needs 4 groups of 6 resource blocks")
        .before("aggregation_level"),
    row::leaf<&dci_t::get_start_symbol_within_slot, &dci_t::set_start_symbol_within_slot>(
        "start_symbol_within_slot", "first symbol, so that all of the CORESET fit"),
    row::leaf<&dci_t::get_candidates_num, &dci_t::set_candidates_num>("candidates_num", "candidates at this level")
        .before("slot_allocation"));

constexpr auto k_figures = row::rows(row::figure<&dci_t::get_aggregation_level_list>(
    "aggregation_level_list", "levels of the search space that fit the CORESET at 1 symbol"));

} // namespace

constinit const cfg_nr_table_of_t<dci_t> g_cfg_nr_dl_dci_table = row::table("cfg_nr_dl_dci", k_leaves, k_figures);

} // namespace vek::nr_mod_lib

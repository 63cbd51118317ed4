#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using model_t = cfg_nr_pucch_test_model_t;
using row = rows_of_t<model_t>;

constexpr auto k_leaves =
    row::leaves(row::leaf<&model_t::get_test_model_type, &model_t::set_test_model_type>(
                    "test_model_type", "test of all carriers; limits subcarrier_spacing and bandwidth"),
                row::leaf<&model_t::get_subcarrier_spacing, &model_t::set_subcarrier_spacing, &model_t::get_scs_range>(
                    "subcarrier_spacing", "spacing that the test has; limits bandwidth"),
                row::leaf<&model_t::get_bandwidth, &model_t::set_bandwidth, &model_t::get_bandwidth_range>(
                    "bandwidth", "bandwidth that the test has at the spacing"),
                row::leaf<&model_t::get_duplex_type, &model_t::set_duplex_type>(
                    "duplex_type", "all slots, or in TDD those of the uplink in the pattern"),
                row::leaf<&model_t::get_transmission_periodicity, &model_t::set_transmission_periodicity,
                          &model_t::get_transmission_periodicity_range>(
                    "transmission_periodicity", "of the TDD pattern, of those that its spacing offers"),
                row::leaf<&model_t::get_number_of_downlink_slots, &model_t::set_number_of_downlink_slots>(
                    "number_of_downlink_slots", "of a period, 0 to all; the others give way"),
                row::leaf<&model_t::get_number_of_uplink_slots, &model_t::set_number_of_uplink_slots>(
                    "number_of_uplink_slots", "of a period, 1 to all; the others give way"),
                row::leaf<&model_t::get_tdd_slot_allocation, &model_t::set_tdd_slot_allocation>(
                    "tdd_slot_allocation", "slots of a period one by one, until one of the settings above changes them")
                    .outside_tree(),
                row::leaf<&model_t::get_number_of_symbols, &model_t::set_number_of_symbols>(
                    "number_of_symbols", "1 or 2, of the test of format 0"),
                row::leaf<&model_t::get_format3_test_type, &model_t::set_format3_test_type>(
                    "format3_test_type", "1 resource block and 14 symbols, or 3 and 4"),
                row::leaf<&model_t::get_additional_dmes_state, &model_t::set_additional_dmes_state>(
                    "additional_dmes_state", "additional DMRS in the tests of formats 3 and 4"));

constexpr auto k_figures = row::rows(
    row::figure<&model_t::get_display_infomation>("display_infomation", "what the test sends"),
    row::figure<&model_t::get_number_of_special_slots>("number_of_special_slots", "what the pattern has beside them"));

constexpr auto k_verbs =
    row::rows(row::verb<&model_t::apply_test_model>("apply", "lays the test on the carrier, which starts anew"));

} // namespace

constinit const cfg_nr_table_of_t<model_t> g_cfg_nr_pucch_test_model_table =
    row::table("cfg_nr_pucch_test_model", k_leaves, k_figures, k_verbs);

} // namespace vek::nr_mod_lib

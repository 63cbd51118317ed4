#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_carrier_configure_manager.h"
#include "manager/lib_nr_dl_coreset_configure_manager.h"
#include "manager/lib_nr_dl_csirs_configure_manager.h"
#include "manager/lib_nr_dl_dci_configure_manager.h"
#include "manager/lib_nr_dl_frc_configure_manager.h"
#include "manager/lib_nr_dl_prs_configure_manager.h"
#include "manager/lib_nr_dl_ssb_configure_manager.h"
#include "manager/lib_nr_dl_tm_configure_manager.h"
#include "manager/lib_nr_ul_rmc_configure_manager.h"
#include "manager/lib_nr_ul_srs_configure_manager.h"
#include "phy/lib_nr_phy_record.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_csirs_type.h"
#include "phy_common/lib_nr_duplex_type.h"
#include "phy_common/lib_nr_host_type.h"
#include "phy_common/lib_nr_ldpc_coding.h"
#include "phy_common/lib_nr_mcs_table_type.h"
#include "phy_common/lib_nr_modulator.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_common/lib_nr_pn_seq.h"
#include "phy_common/lib_nr_prach_type.h"
#include "phy_common/lib_nr_pucch_test_model_type.h"
#include "phy_common/lib_nr_sch_type.h"
#include "phy_common/lib_nr_tdd_slot_allocation.h"
#include "phy_common/lib_nr_ul_frc_type.h"
#include "phy_common/lib_nr_ul_pucch_type.h"

#include <map>
#include <string>

namespace vek::nr_mod_lib
{

template <class enum_t>
using enum_names_t = std::map<enum_t, std::string>;

// The name of every enumerator, as the settings file and the tool's steps spell it. A table is declared here and in the
// list below, and has its rows in the source file.

extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_dl_dci_cce2reg_mapping_type_t>
    g_lib_nr_dl_dci_cce2reg_mapping_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_dl_dci_reg_bundle_size_t> g_lib_nr_dl_dci_reg_bundle_size_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_dl_dci_interleaver_size_t>
    g_lib_nr_dl_dci_interleaver_size_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_remap_mode_t> g_lib_nr_remap_mode_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_silence_t> g_lib_nr_silence_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_channel_resource_mapping_type_t>
    g_lib_nr_channel_resource_mapping_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_ra_type_t> g_lib_nr_sch_ra_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_interleave_t> g_lib_nr_sch_interleave_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_dmrs_configuration_type_t>
    g_lib_nr_sch_dmrs_configuration_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_dmrs_mapping_type_t> g_lib_nr_sch_dmrs_mapping_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_dmrs_type_a_position_t>
    g_lib_nr_sch_dmrs_type_a_position_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_dmrs_additional_position_t>
    g_lib_nr_sch_dmrs_additional_position_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_dmrs_length_t> g_lib_nr_sch_dmrs_length_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_dmrs_mapping_ref_t> g_lib_nr_sch_dmrs_mapping_ref_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_vrb_bundle_size_t> g_lib_nr_sch_vrb_bundle_size_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_x_overhead_t> g_lib_nr_sch_x_overhead_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_tb_scaling_t> g_lib_nr_sch_tb_scaling_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_ptrs_frequency_density_size_t>
    g_lib_nr_sch_ptrs_frequency_density_size_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_ptrs_time_density_t> g_lib_nr_sch_ptrs_time_density_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_rbg_size_t> g_lib_nr_sch_rbg_size_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_carrier_type_t> g_lib_carrier_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_ssb_periodicity_t> g_lib_ssb_periodicity_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_antenna_port_t> g_lib_nr_antenna_port_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_coreset_precoder_granularity_t>
    g_lib_nr_coreset_precoder_granularity_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<csirs_antenna_port_t> g_csirs_antenna_port_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<srs_periodity_type_t> g_srs_periodity_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<srs_antenna_port_t> g_srs_antenna_port_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_freq_range_type_t> g_lib_nr_freq_range_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_numerology_mode_t> g_lib_nr_numerology_mode_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_numerology_type_t> g_lib_nr_numerology_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_channel_bw_type_t> g_lib_nr_channel_bw_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ssb_case_t> g_lib_nr_ssb_case_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_cyclic_prefix_type_t> g_lib_nr_cyclic_prefix_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_lmax_t> g_lib_nr_lmax_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_duplex_type_t> g_lib_nr_duplex_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_test_mode_t> g_lib_nr_test_mode_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_dl_fixed_reference_channels_t>
    g_lib_nr_dl_fixed_reference_channels_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ldpc_base_graph_type_t> g_lib_nr_ldpc_base_graph_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_pn_seq_t> g_lib_nr_pn_seq_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<mcs_table_t> g_mcs_table_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_tdd_slot_t> g_lib_nr_tdd_slot_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_tdd_transmission_periodicity_t>
    g_lib_nr_tdd_transmission_periodicity_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_transmission_periodicity_t>
    g_lib_nr_transmission_periodicity_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_dl_codewords_size_t> g_lib_nr_dl_codewords_size_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<prach_config_table_type_t> g_prach_config_table_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<prach_scs_type_t> g_prach_scs_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<prach_lra_type_t> g_prach_lra_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<prach_restricted_set_type_t> g_prach_restricted_set_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<prach_msg1_fdm_type_t> g_prach_msg1_fdm_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<prach_format_t> g_prach_format_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_modulation_type_t> g_lib_nr_modulation_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<csirs_cdm_type_t> g_csirs_cdm_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_prs_comb_size_t> g_lib_nr_prs_comb_size_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_prs_reptition_factor_t> g_lib_nr_prs_reptition_factor_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_prs_time_gap_t> g_lib_nr_prs_time_gap_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_prs_muting_factor_t> g_lib_nr_prs_muting_factor_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_prs_symbol_number> g_lib_nr_prs_symbol_number_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_dl_dci_aggregation_level_t>
    g_lib_nr_dl_dci_aggregation_level_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_dl_dci_search_space_type_t>
    g_lib_nr_dl_dci_search_space_type_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_dl_dci_candidates_number_t>
    g_lib_nr_dl_dci_candidates_number_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ul_uci_content_t> g_lib_nr_ul_uci_content_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ul_sr_configuration_t> g_lib_nr_ul_sr_configuration_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ul_group_hopping_t> g_lib_nr_ul_group_hopping_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ul_pucch_format_t> g_lib_nr_ul_pucch_format_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ul_pucch_interlace_rb_num_t>
    g_lib_nr_ul_pucch_interlace_rb_num_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ul_pucch_occ_length_t> g_lib_nr_ul_pucch_occ_length_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ul_pucch_max_code_rate_x100_t>
    g_lib_nr_ul_pucch_max_code_rate_x100_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<density_prb_allocation_t> g_density_prb_allocation_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_ptrs_group_t> g_lib_nr_sch_ptrs_group_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_ptrs_group_sample_t> g_lib_nr_sch_ptrs_group_sample_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_antenna_port_number_t> g_lib_nr_antenna_port_number_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_hopping_mode_t> g_lib_nr_sch_hopping_mode_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_sch_dmrs_hopping_t> g_lib_nr_sch_dmrs_hopping_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<srs_port_number_t> g_srs_port_number_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<srs_N_symb_srs_value_t> g_srs_N_symb_srs_value_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<srs_repetition_factor_value_t> g_srs_repetition_factor_value_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<srs_K_TC_value_t> g_srs_K_TC_value_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<srs_cs_max_t> g_srs_cs_max_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<T_SRS_PF_TYPE> g_T_SRS_PF_TYPE_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<T_SRS_GROUP_OR_SEQUEN_TYPE> g_T_SRS_GROUP_OR_SEQUEN_TYPE_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<T_SRS_RESOUR_TYPE> g_T_SRS_RESOUR_TYPE_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<T_SRS_POSRESOURCE_EN_TYPE> g_T_SRS_POSRESOURCE_EN_TYPE_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ul_fixed_reference_channels_t>
    g_lib_nr_ul_fixed_reference_channels_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ul_frc_reference_channel_t>
    g_lib_nr_ul_frc_reference_channel_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_ul_rmc_rb_allocation_t> g_lib_nr_ul_rmc_rb_allocation_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_pucch_test_model_t> g_lib_nr_pucch_test_model_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_pucch_test_model_subcarrier_spacing_t>
    g_lib_nr_pucch_test_model_subcarrier_spacing_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_pucch_test_model_bandwidth_t>
    g_lib_nr_pucch_test_model_bandwidth_t_name_map;
extern NR_MOD_LIB_EXPORT const enum_names_t<lib_nr_pucch_format3_test_model_type_t>
    g_lib_nr_pucch_format3_test_model_type_t_name_map;

/// The table of an enumeration, for code that is generic in it: the argument's value plays no part.
inline const auto& enum_name_map(lib_nr_dl_dci_cce2reg_mapping_type_t)
{
    return g_lib_nr_dl_dci_cce2reg_mapping_type_t_name_map;
}
inline const auto& enum_name_map(lib_nr_dl_dci_reg_bundle_size_t) { return g_lib_nr_dl_dci_reg_bundle_size_t_name_map; }
inline const auto& enum_name_map(lib_nr_dl_dci_interleaver_size_t)
{
    return g_lib_nr_dl_dci_interleaver_size_t_name_map;
}
inline const auto& enum_name_map(lib_nr_remap_mode_t) { return g_lib_nr_remap_mode_t_name_map; }
inline const auto& enum_name_map(lib_nr_silence_t) { return g_lib_nr_silence_t_name_map; }
inline const auto& enum_name_map(lib_nr_channel_resource_mapping_type_t)
{
    return g_lib_nr_channel_resource_mapping_type_t_name_map;
}
inline const auto& enum_name_map(lib_nr_sch_ra_type_t) { return g_lib_nr_sch_ra_type_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_interleave_t) { return g_lib_nr_sch_interleave_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_dmrs_configuration_type_t)
{
    return g_lib_nr_sch_dmrs_configuration_type_t_name_map;
}
inline const auto& enum_name_map(lib_nr_sch_dmrs_mapping_type_t) { return g_lib_nr_sch_dmrs_mapping_type_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_dmrs_type_a_position_t)
{
    return g_lib_nr_sch_dmrs_type_a_position_t_name_map;
}
inline const auto& enum_name_map(lib_nr_sch_dmrs_additional_position_t)
{
    return g_lib_nr_sch_dmrs_additional_position_t_name_map;
}
inline const auto& enum_name_map(lib_nr_sch_dmrs_length_t) { return g_lib_nr_sch_dmrs_length_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_dmrs_mapping_ref_t) { return g_lib_nr_sch_dmrs_mapping_ref_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_vrb_bundle_size_t) { return g_lib_nr_sch_vrb_bundle_size_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_x_overhead_t) { return g_lib_nr_sch_x_overhead_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_tb_scaling_t) { return g_lib_nr_sch_tb_scaling_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_ptrs_frequency_density_size_t)
{
    return g_lib_nr_sch_ptrs_frequency_density_size_t_name_map;
}
inline const auto& enum_name_map(lib_nr_sch_ptrs_time_density_t) { return g_lib_nr_sch_ptrs_time_density_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_rbg_size_t) { return g_lib_nr_sch_rbg_size_t_name_map; }
inline const auto& enum_name_map(lib_carrier_type_t) { return g_lib_carrier_type_t_name_map; }
inline const auto& enum_name_map(lib_ssb_periodicity_t) { return g_lib_ssb_periodicity_t_name_map; }
inline const auto& enum_name_map(lib_nr_antenna_port_t) { return g_lib_nr_antenna_port_t_name_map; }
inline const auto& enum_name_map(lib_nr_coreset_precoder_granularity_t)
{
    return g_lib_nr_coreset_precoder_granularity_t_name_map;
}
inline const auto& enum_name_map(csirs_antenna_port_t) { return g_csirs_antenna_port_t_name_map; }
inline const auto& enum_name_map(srs_periodity_type_t) { return g_srs_periodity_type_t_name_map; }
inline const auto& enum_name_map(srs_antenna_port_t) { return g_srs_antenna_port_t_name_map; }
inline const auto& enum_name_map(lib_nr_freq_range_type_t) { return g_lib_nr_freq_range_type_t_name_map; }
inline const auto& enum_name_map(lib_nr_numerology_mode_t) { return g_lib_nr_numerology_mode_t_name_map; }
inline const auto& enum_name_map(lib_nr_numerology_type_t) { return g_lib_nr_numerology_type_t_name_map; }
inline const auto& enum_name_map(lib_nr_channel_bw_type_t) { return g_lib_nr_channel_bw_type_t_name_map; }
inline const auto& enum_name_map(lib_nr_ssb_case_t) { return g_lib_nr_ssb_case_t_name_map; }
inline const auto& enum_name_map(lib_nr_cyclic_prefix_type_t) { return g_lib_nr_cyclic_prefix_type_t_name_map; }
inline const auto& enum_name_map(lib_nr_lmax_t) { return g_lib_nr_lmax_t_name_map; }
inline const auto& enum_name_map(lib_nr_duplex_type_t) { return g_lib_nr_duplex_type_t_name_map; }
inline const auto& enum_name_map(lib_nr_test_mode_t) { return g_lib_nr_test_mode_t_name_map; }
inline const auto& enum_name_map(lib_nr_dl_fixed_reference_channels_t)
{
    return g_lib_nr_dl_fixed_reference_channels_t_name_map;
}
inline const auto& enum_name_map(lib_nr_ldpc_base_graph_type_t) { return g_lib_nr_ldpc_base_graph_type_t_name_map; }
inline const auto& enum_name_map(lib_nr_pn_seq_t) { return g_lib_nr_pn_seq_t_name_map; }
inline const auto& enum_name_map(mcs_table_t) { return g_mcs_table_t_name_map; }
inline const auto& enum_name_map(lib_nr_tdd_slot_t) { return g_lib_nr_tdd_slot_t_name_map; }
inline const auto& enum_name_map(lib_nr_tdd_transmission_periodicity_t)
{
    return g_lib_nr_tdd_transmission_periodicity_t_name_map;
}
inline const auto& enum_name_map(lib_nr_transmission_periodicity_t)
{
    return g_lib_nr_transmission_periodicity_t_name_map;
}
inline const auto& enum_name_map(lib_nr_dl_codewords_size_t) { return g_lib_nr_dl_codewords_size_t_name_map; }
inline const auto& enum_name_map(prach_config_table_type_t) { return g_prach_config_table_type_t_name_map; }
inline const auto& enum_name_map(prach_scs_type_t) { return g_prach_scs_type_t_name_map; }
inline const auto& enum_name_map(prach_lra_type_t) { return g_prach_lra_type_t_name_map; }
inline const auto& enum_name_map(prach_restricted_set_type_t) { return g_prach_restricted_set_type_t_name_map; }
inline const auto& enum_name_map(prach_msg1_fdm_type_t) { return g_prach_msg1_fdm_type_t_name_map; }
inline const auto& enum_name_map(prach_format_t) { return g_prach_format_t_name_map; }
inline const auto& enum_name_map(lib_nr_modulation_type_t) { return g_lib_nr_modulation_type_t_name_map; }
inline const auto& enum_name_map(csirs_cdm_type_t) { return g_csirs_cdm_type_t_name_map; }
inline const auto& enum_name_map(lib_nr_prs_comb_size_t) { return g_lib_nr_prs_comb_size_t_name_map; }
inline const auto& enum_name_map(lib_nr_prs_reptition_factor_t) { return g_lib_nr_prs_reptition_factor_t_name_map; }
inline const auto& enum_name_map(lib_nr_prs_time_gap_t) { return g_lib_nr_prs_time_gap_t_name_map; }
inline const auto& enum_name_map(lib_nr_prs_muting_factor_t) { return g_lib_nr_prs_muting_factor_t_name_map; }
inline const auto& enum_name_map(lib_nr_prs_symbol_number) { return g_lib_nr_prs_symbol_number_name_map; }
inline const auto& enum_name_map(lib_nr_dl_dci_aggregation_level_t)
{
    return g_lib_nr_dl_dci_aggregation_level_t_name_map;
}
inline const auto& enum_name_map(lib_nr_dl_dci_search_space_type_t)
{
    return g_lib_nr_dl_dci_search_space_type_t_name_map;
}
inline const auto& enum_name_map(lib_nr_dl_dci_candidates_number_t)
{
    return g_lib_nr_dl_dci_candidates_number_t_name_map;
}
inline const auto& enum_name_map(lib_nr_ul_uci_content_t) { return g_lib_nr_ul_uci_content_t_name_map; }
inline const auto& enum_name_map(lib_nr_ul_sr_configuration_t) { return g_lib_nr_ul_sr_configuration_t_name_map; }
inline const auto& enum_name_map(lib_nr_ul_group_hopping_t) { return g_lib_nr_ul_group_hopping_t_name_map; }
inline const auto& enum_name_map(lib_nr_ul_pucch_format_t) { return g_lib_nr_ul_pucch_format_t_name_map; }
inline const auto& enum_name_map(lib_nr_ul_pucch_interlace_rb_num_t)
{
    return g_lib_nr_ul_pucch_interlace_rb_num_t_name_map;
}
inline const auto& enum_name_map(lib_nr_ul_pucch_occ_length_t) { return g_lib_nr_ul_pucch_occ_length_t_name_map; }
inline const auto& enum_name_map(lib_nr_ul_pucch_max_code_rate_x100_t)
{
    return g_lib_nr_ul_pucch_max_code_rate_x100_t_name_map;
}
inline const auto& enum_name_map(density_prb_allocation_t) { return g_density_prb_allocation_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_ptrs_group_t) { return g_lib_nr_sch_ptrs_group_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_ptrs_group_sample_t) { return g_lib_nr_sch_ptrs_group_sample_t_name_map; }
inline const auto& enum_name_map(lib_nr_antenna_port_number_t) { return g_lib_nr_antenna_port_number_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_hopping_mode_t) { return g_lib_nr_sch_hopping_mode_t_name_map; }
inline const auto& enum_name_map(lib_nr_sch_dmrs_hopping_t) { return g_lib_nr_sch_dmrs_hopping_t_name_map; }
inline const auto& enum_name_map(srs_port_number_t) { return g_srs_port_number_t_name_map; }
inline const auto& enum_name_map(srs_N_symb_srs_value_t) { return g_srs_N_symb_srs_value_t_name_map; }
inline const auto& enum_name_map(srs_repetition_factor_value_t) { return g_srs_repetition_factor_value_t_name_map; }
inline const auto& enum_name_map(srs_K_TC_value_t) { return g_srs_K_TC_value_t_name_map; }
inline const auto& enum_name_map(srs_cs_max_t) { return g_srs_cs_max_t_name_map; }
inline const auto& enum_name_map(T_SRS_PF_TYPE) { return g_T_SRS_PF_TYPE_name_map; }
inline const auto& enum_name_map(T_SRS_GROUP_OR_SEQUEN_TYPE) { return g_T_SRS_GROUP_OR_SEQUEN_TYPE_name_map; }
inline const auto& enum_name_map(T_SRS_RESOUR_TYPE) { return g_T_SRS_RESOUR_TYPE_name_map; }
inline const auto& enum_name_map(T_SRS_POSRESOURCE_EN_TYPE) { return g_T_SRS_POSRESOURCE_EN_TYPE_name_map; }
inline const auto& enum_name_map(lib_nr_ul_fixed_reference_channels_t)
{
    return g_lib_nr_ul_fixed_reference_channels_t_name_map;
}
inline const auto& enum_name_map(lib_nr_ul_frc_reference_channel_t)
{
    return g_lib_nr_ul_frc_reference_channel_t_name_map;
}
inline const auto& enum_name_map(lib_nr_ul_rmc_rb_allocation_t) { return g_lib_nr_ul_rmc_rb_allocation_t_name_map; }
inline const auto& enum_name_map(lib_nr_pucch_test_model_t) { return g_lib_nr_pucch_test_model_t_name_map; }
inline const auto& enum_name_map(lib_nr_pucch_test_model_subcarrier_spacing_t)
{
    return g_lib_nr_pucch_test_model_subcarrier_spacing_t_name_map;
}
inline const auto& enum_name_map(lib_nr_pucch_test_model_bandwidth_t)
{
    return g_lib_nr_pucch_test_model_bandwidth_t_name_map;
}
inline const auto& enum_name_map(lib_nr_pucch_format3_test_model_type_t)
{
    return g_lib_nr_pucch_format3_test_model_type_t_name_map;
}

} // namespace vek::nr_mod_lib

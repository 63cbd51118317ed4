#include "config/cfg_nr_enum_name_maps.h"

#include "config/cfg_nr_enum_name_rows.h"

namespace vek::nr_mod_lib
{

const enum_names_t<lib_nr_dl_dci_cce2reg_mapping_type_t> g_lib_nr_dl_dci_cce2reg_mapping_type_t_name_map =
    name_map<lib_nr_dl_dci_cce2reg_mapping_type_t>({
        {LIB_NR_CORSET_INTERLEAVE, "LIB_NR_CORSET_INTERLEAVE"},
        {LIB_NR_CORSET_NO_INTERLEAVE, "LIB_NR_CORSET_NO_INTERLEAVE"},
    });

const enum_names_t<lib_nr_dl_dci_reg_bundle_size_t> g_lib_nr_dl_dci_reg_bundle_size_t_name_map =
    name_map<lib_nr_dl_dci_reg_bundle_size_t>({
        {LIB_NR_DCI_REG_BUNDLE_SIZE_2, "LIB_NR_DCI_REG_BUNDLE_SIZE_2"},
        {LIB_NR_DCI_REG_BUNDLE_SIZE_3, "LIB_NR_DCI_REG_BUNDLE_SIZE_3"},
        {LIB_NR_DCI_REG_BUNDLE_SIZE_6, "LIB_NR_DCI_REG_BUNDLE_SIZE_6"},
    });

const enum_names_t<lib_nr_dl_dci_interleaver_size_t> g_lib_nr_dl_dci_interleaver_size_t_name_map =
    name_map<lib_nr_dl_dci_interleaver_size_t>({
        {LIB_NR_DCI_INTERLEAVER_SIZE_2, "LIB_NR_DCI_INTERLEAVER_SIZE_2"},
        {LIB_NR_DCI_INTERLEAVER_SIZE_3, "LIB_NR_DCI_INTERLEAVER_SIZE_3"},
        {LIB_NR_DCI_INTERLEAVER_SIZE_6, "LIB_NR_DCI_INTERLEAVER_SIZE_6"},
    });

const enum_names_t<lib_nr_remap_mode_t> g_lib_nr_remap_mode_t_name_map = name_map<lib_nr_remap_mode_t>({
    {LIB_NR_REMAPP_MODE_UI_VIEW_MAP, "LIB_NR_REMAPP_MODE_UI_VIEW_MAP"},
    {LIB_NR_REMAPP_MODE_ENCODE_MAP, "LIB_NR_REMAPP_MODE_ENCODE_MAP"},
});

const enum_names_t<lib_nr_silence_t> g_lib_nr_silence_t_name_map = name_map<lib_nr_silence_t>({
    {LIB_NR_SILENCE_NONE, "LIB_NR_SILENCE_NONE"},
    {LIB_NR_SILENCE_SPACING, "LIB_NR_SILENCE_SPACING"},
    {LIB_NR_SILENCE_PREFIX, "LIB_NR_SILENCE_PREFIX"},
    {LIB_NR_SILENCE_SLOT, "LIB_NR_SILENCE_SLOT"},
    {LIB_NR_SILENCE_STOPPED, "LIB_NR_SILENCE_STOPPED"},
    {LIB_NR_SILENCE_RB, "LIB_NR_SILENCE_RB"},
    {LIB_NR_SILENCE_PORT, "LIB_NR_SILENCE_PORT"},
    {LIB_NR_SILENCE_TAKEN, "LIB_NR_SILENCE_TAKEN"},
    {LIB_NR_SILENCE_GRID, "LIB_NR_SILENCE_GRID"},
    {LIB_NR_SILENCE_FAILED, "LIB_NR_SILENCE_FAILED"},
});
const enum_names_t<lib_nr_channel_resource_mapping_type_t> g_lib_nr_channel_resource_mapping_type_t_name_map =
    name_map<lib_nr_channel_resource_mapping_type_t>({
        {LIB_NR_RESOURCE_MAPPING_EMPTY, "LIB_NR_RESOURCE_MAPPING_EMPTY"},
        {LIB_NR_RESOURCE_MAPPING_SSB, "LIB_NR_RESOURCE_MAPPING_SSB"},
        {LIB_NR_RESOURCE_MAPPING_PDCCH, "LIB_NR_RESOURCE_MAPPING_PDCCH"},
        {LIB_NR_RESOURCE_MAPPING_CSIRS, "LIB_NR_RESOURCE_MAPPING_CSIRS"},
        {LIB_NR_RESOURCE_MAPPING_PDSCH, "LIB_NR_RESOURCE_MAPPING_PDSCH"},
        {LIB_NR_RESOURCE_MAPPING_PRS, "LIB_NR_RESOURCE_MAPPING_PRS"},
        {LIB_NR_RESOURCE_MAPPING_PUCCH, "LIB_NR_RESOURCE_MAPPING_PUCCH"},
        {LIB_NR_RESOURCE_MAPPING_PUSCH, "LIB_NR_RESOURCE_MAPPING_PUSCH"},
        {LIB_NR_RESOURCE_MAPPING_SRS, "LIB_NR_RESOURCE_MAPPING_SRS"},
        {LIB_NR_RESOURCE_MAPPING_CONFLICT, "LIB_NR_RESOURCE_MAPPING_CONFLICT"},
    });

const enum_names_t<lib_nr_sch_ra_type_t> g_lib_nr_sch_ra_type_t_name_map = name_map<lib_nr_sch_ra_type_t>({
    {LIB_NR_SCH_RA_TYPE0, "LIB_NR_SCH_RA_TYPE0"},
    {LIB_NR_SCH_RA_TYPE1, "LIB_NR_SCH_RA_TYPE1"},
    {LIB_NR_SCH_RA_TYPE2, "LIB_NR_SCH_RA_TYPE2"},
});

const enum_names_t<lib_nr_sch_interleave_t> g_lib_nr_sch_interleave_t_name_map = name_map<lib_nr_sch_interleave_t>({
    {LIB_NR_SCH_INTERLEAVE, "LIB_NR_SCH_INTERLEAVE"},
    {LIB_NR_SCH_NO_INTERLEAVE, "LIB_NR_SCH_NO_INTERLEAVE"},
});

const enum_names_t<lib_nr_sch_dmrs_configuration_type_t> g_lib_nr_sch_dmrs_configuration_type_t_name_map =
    name_map<lib_nr_sch_dmrs_configuration_type_t>({
        {LIB_NR_DMRS_CFG_TYPE1, "LIB_NR_DMRS_CFG_TYPE1"},
        {LIB_NR_DMRS_CFG_TYPE2, "LIB_NR_DMRS_CFG_TYPE2"},
    });

const enum_names_t<lib_nr_sch_dmrs_mapping_type_t> g_lib_nr_sch_dmrs_mapping_type_t_name_map =
    name_map<lib_nr_sch_dmrs_mapping_type_t>({
        {LIB_NR_DMRS_MAPPING_TYPEA, "LIB_NR_DMRS_MAPPING_TYPEA"},
        {LIB_NR_DMRS_MAPPING_TYPEB, "LIB_NR_DMRS_MAPPING_TYPEB"},
    });

const enum_names_t<lib_nr_sch_dmrs_type_a_position_t> g_lib_nr_sch_dmrs_type_a_position_t_name_map =
    name_map<lib_nr_sch_dmrs_type_a_position_t>({
        {LIB_NR_SCH_DMRS_TYPEA_POSITION_2, "LIB_NR_SCH_DMRS_TYPEA_POSITION_2"},
        {LIB_NR_SCH_DMRS_TYPEA_POSITION_3, "LIB_NR_SCH_DMRS_TYPEA_POSITION_3"},
        {LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB, "LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB"},
    });

const enum_names_t<lib_nr_sch_dmrs_additional_position_t> g_lib_nr_sch_dmrs_additional_position_t_name_map =
    name_map<lib_nr_sch_dmrs_additional_position_t>({
        {LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0, "LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0"},
        {LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1, "LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1"},
        {LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_2, "LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_2"},
        {LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_3, "LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_3"},
    });

const enum_names_t<lib_nr_sch_dmrs_length_t> g_lib_nr_sch_dmrs_length_t_name_map = name_map<lib_nr_sch_dmrs_length_t>({
    {LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL, "LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL"},
    {LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL, "LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL"},
});

const enum_names_t<lib_nr_sch_dmrs_mapping_ref_t> g_lib_nr_sch_dmrs_mapping_ref_t_name_map =
    name_map<lib_nr_sch_dmrs_mapping_ref_t>({
        {LIB_NR_DMRS_MAPPING_REF_CRB, "LIB_NR_DMRS_MAPPING_REF_CRB"},
        {LIB_NR_DMRS_MAPPING_REF_PRB, "LIB_NR_DMRS_MAPPING_REF_PRB"},
    });

const enum_names_t<lib_nr_sch_vrb_bundle_size_t> g_lib_nr_sch_vrb_bundle_size_t_name_map =
    name_map<lib_nr_sch_vrb_bundle_size_t>({
        {LIB_NR_SCH_VRB_BUNDLE_SIZE_2, "LIB_NR_SCH_VRB_BUNDLE_SIZE_2"},
        {LIB_NR_SCH_VRB_BUNDLE_SIZE_4, "LIB_NR_SCH_VRB_BUNDLE_SIZE_4"},
    });

const enum_names_t<lib_nr_sch_x_overhead_t> g_lib_nr_sch_x_overhead_t_name_map = name_map<lib_nr_sch_x_overhead_t>({
    {LIB_NR_SCH_X_OVERHEAD_0, "LIB_NR_SCH_X_OVERHEAD_0"},
    {LIB_NR_SCH_X_OVERHEAD_6, "LIB_NR_SCH_X_OVERHEAD_6"},
    {LIB_NR_SCH_X_OVERHEAD_12, "LIB_NR_SCH_X_OVERHEAD_12"},
    {LIB_NR_SCH_X_OVERHEAD_18, "LIB_NR_SCH_X_OVERHEAD_18"},
});

const enum_names_t<lib_nr_sch_tb_scaling_t> g_lib_nr_sch_tb_scaling_t_name_map = name_map<lib_nr_sch_tb_scaling_t>({
    {LIB_NR_SCH_TB_SCALING_1, "LIB_NR_SCH_TB_SCALING_1"},
    {LIB_NR_SCH_TB_SCALING_0_5, "LIB_NR_SCH_TB_SCALING_0_5"},
    {LIB_NR_SCH_TB_SCALING_0_25, "LIB_NR_SCH_TB_SCALING_0_25"},
});

const enum_names_t<lib_nr_sch_ptrs_frequency_density_size_t> g_lib_nr_sch_ptrs_frequency_density_size_t_name_map =
    name_map<lib_nr_sch_ptrs_frequency_density_size_t>({
        {LIB_NR_SCH_PTRS_FREQUENCY_DENSITYE_2, "LIB_NR_SCH_PTRS_FREQUENCY_DENSITYE_2"},
        {LIB_NR_SCH_PTRS_FREQUENCY_DENSITYE_4, "LIB_NR_SCH_PTRS_FREQUENCY_DENSITYE_4"},
    });

const enum_names_t<lib_nr_sch_ptrs_time_density_t> g_lib_nr_sch_ptrs_time_density_t_name_map =
    name_map<lib_nr_sch_ptrs_time_density_t>({
        {LIB_NR_SCH_PTRS_TIME_DENSITYE_1, "LIB_NR_SCH_PTRS_TIME_DENSITYE_1"},
        {LIB_NR_SCH_PTRS_TIME_DENSITYE_2, "LIB_NR_SCH_PTRS_TIME_DENSITYE_2"},
        {LIB_NR_SCH_PTRS_TIME_DENSITYE_4, "LIB_NR_SCH_PTRS_TIME_DENSITYE_4"},
    });

const enum_names_t<lib_nr_sch_rbg_size_t> g_lib_nr_sch_rbg_size_t_name_map = name_map<lib_nr_sch_rbg_size_t>({
    {LIB_NR_SCH_RBG_SIZE_2, "LIB_NR_SCH_RBG_SIZE_2"},
    {LIB_NR_SCH_RBG_SIZE_4, "LIB_NR_SCH_RBG_SIZE_4"},
    {LIB_NR_SCH_RBG_SIZE_8, "LIB_NR_SCH_RBG_SIZE_8"},
    {LIB_NR_SCH_RBG_SIZE_16, "LIB_NR_SCH_RBG_SIZE_16"},
});

const enum_names_t<lib_carrier_type_t> g_lib_carrier_type_t_name_map = name_map<lib_carrier_type_t>({
    {LIB_NR_DOWNLINK, "LIB_NR_DOWNLINK"},
    {LIB_NR_UPLINK, "LIB_NR_UPLINK"},
    {LIB_NR_PRACH, "LIB_NR_PRACH"},
});

const enum_names_t<lib_ssb_periodicity_t> g_lib_ssb_periodicity_t_name_map = name_map<lib_ssb_periodicity_t>({
    {LIB_NR_SSB_5MS_PERIODICITY, "LIB_NR_SSB_5MS_PERIODICITY"},
    {LIB_NR_SSB_10MS_PERIODICITY, "LIB_NR_SSB_10MS_PERIODICITY"},
    {LIB_NR_SSB_20MS_PERIODICITY, "LIB_NR_SSB_20MS_PERIODICITY"},
    {LIB_NR_SSB_40MS_PERIODICITY, "LIB_NR_SSB_40MS_PERIODICITY"},
    {LIB_NR_SSB_80MS_PERIODICITY, "LIB_NR_SSB_80MS_PERIODICITY"},
    {LIB_NR_SSB_160MS_PERIODICITY, "LIB_NR_SSB_160MS_PERIODICITY"},
});

const enum_names_t<lib_nr_antenna_port_t> g_lib_nr_antenna_port_t_name_map = name_map<lib_nr_antenna_port_t>({
    {LIB_NR_ANTENNA_PORT_NONE, "LIB_NR_ANTENNA_PORT_NONE"},
    {LIB_NR_ANTENNA_PORT_0, "LIB_NR_ANTENNA_PORT_0"},
    {LIB_NR_ANTENNA_PORT_1, "LIB_NR_ANTENNA_PORT_1"},
    {LIB_NR_ANTENNA_PORT_2, "LIB_NR_ANTENNA_PORT_2"},
    {LIB_NR_ANTENNA_PORT_3, "LIB_NR_ANTENNA_PORT_3"},
});

const enum_names_t<lib_nr_coreset_precoder_granularity_t> g_lib_nr_coreset_precoder_granularity_t_name_map =
    name_map<lib_nr_coreset_precoder_granularity_t>({
        {REG_BUNDLE_SIZE, "REG_BUNDLE_SIZE"},
        {CORESET_SIZE, "CORESET_SIZE"},
    });

const enum_names_t<csirs_antenna_port_t> g_csirs_antenna_port_t_name_map = name_map<csirs_antenna_port_t>({
    {CSIRS_ANTENNA_NONE, "CSIRS_ANTENNA_NONE"},     {CSIRS_ANTENNA_PORT0, "CSIRS_ANTENNA_PORT0"},
    {CSIRS_ANTENNA_PORT1, "CSIRS_ANTENNA_PORT1"},   {CSIRS_ANTENNA_PORT2, "CSIRS_ANTENNA_PORT2"},
    {CSIRS_ANTENNA_PORT3, "CSIRS_ANTENNA_PORT3"},   {CSIRS_ANTENNA_PORT4, "CSIRS_ANTENNA_PORT4"},
    {CSIRS_ANTENNA_PORT5, "CSIRS_ANTENNA_PORT5"},   {CSIRS_ANTENNA_PORT6, "CSIRS_ANTENNA_PORT6"},
    {CSIRS_ANTENNA_PORT7, "CSIRS_ANTENNA_PORT7"},   {CSIRS_ANTENNA_PORT8, "CSIRS_ANTENNA_PORT8"},
    {CSIRS_ANTENNA_PORT9, "CSIRS_ANTENNA_PORT9"},   {CSIRS_ANTENNA_PORT10, "CSIRS_ANTENNA_PORT10"},
    {CSIRS_ANTENNA_PORT11, "CSIRS_ANTENNA_PORT11"}, {CSIRS_ANTENNA_PORT12, "CSIRS_ANTENNA_PORT12"},
    {CSIRS_ANTENNA_PORT13, "CSIRS_ANTENNA_PORT13"}, {CSIRS_ANTENNA_PORT14, "CSIRS_ANTENNA_PORT14"},
    {CSIRS_ANTENNA_PORT15, "CSIRS_ANTENNA_PORT15"}, {CSIRS_ANTENNA_PORT16, "CSIRS_ANTENNA_PORT16"},
    {CSIRS_ANTENNA_PORT17, "CSIRS_ANTENNA_PORT17"}, {CSIRS_ANTENNA_PORT18, "CSIRS_ANTENNA_PORT18"},
    {CSIRS_ANTENNA_PORT19, "CSIRS_ANTENNA_PORT19"}, {CSIRS_ANTENNA_PORT20, "CSIRS_ANTENNA_PORT20"},
    {CSIRS_ANTENNA_PORT21, "CSIRS_ANTENNA_PORT21"}, {CSIRS_ANTENNA_PORT22, "CSIRS_ANTENNA_PORT22"},
    {CSIRS_ANTENNA_PORT23, "CSIRS_ANTENNA_PORT23"}, {CSIRS_ANTENNA_PORT24, "CSIRS_ANTENNA_PORT24"},
    {CSIRS_ANTENNA_PORT25, "CSIRS_ANTENNA_PORT25"}, {CSIRS_ANTENNA_PORT26, "CSIRS_ANTENNA_PORT26"},
    {CSIRS_ANTENNA_PORT27, "CSIRS_ANTENNA_PORT27"}, {CSIRS_ANTENNA_PORT28, "CSIRS_ANTENNA_PORT28"},
    {CSIRS_ANTENNA_PORT29, "CSIRS_ANTENNA_PORT29"}, {CSIRS_ANTENNA_PORT30, "CSIRS_ANTENNA_PORT30"},
    {CSIRS_ANTENNA_PORT31, "CSIRS_ANTENNA_PORT31"},
});

const enum_names_t<srs_periodity_type_t> g_srs_periodity_type_t_name_map = name_map<srs_periodity_type_t>({
    {LIB_NR_SRS_0MS_PERIODICITY, "LIB_NR_SRS_0MS_PERIODICITY"},
    {LIB_NR_SRS_1MS_PERIODICITY, "LIB_NR_SRS_1MS_PERIODICITY"},
    {LIB_NR_SRS_2MS_PERIODICITY, "LIB_NR_SRS_2MS_PERIODICITY"},
    {LIB_NR_SRS_4MS_PERIODICITY, "LIB_NR_SRS_4MS_PERIODICITY"},
    {LIB_NR_SRS_5MS_PERIODICITY, "LIB_NR_SRS_5MS_PERIODICITY"},
    {LIB_NR_SRS_8MS_PERIODICITY, "LIB_NR_SRS_8MS_PERIODICITY"},
    {LIB_NR_SRS_10MS_PERIODICITY, "LIB_NR_SRS_10MS_PERIODICITY"},
    {LIB_NR_SRS_16MS_PERIODICITY, "LIB_NR_SRS_16MS_PERIODICITY"},
    {LIB_NR_SRS_20MS_PERIODICITY, "LIB_NR_SRS_20MS_PERIODICITY"},
    {LIB_NR_SRS_32MS_PERIODICITY, "LIB_NR_SRS_32MS_PERIODICITY"},
    {LIB_NR_SRS_40MS_PERIODICITY, "LIB_NR_SRS_40MS_PERIODICITY"},
    {LIB_NR_SRS_64MS_PERIODICITY, "LIB_NR_SRS_64MS_PERIODICITY"},
    {LIB_NR_SRS_80MS_PERIODICITY, "LIB_NR_SRS_80MS_PERIODICITY"},
    {LIB_NR_SRS_160MS_PERIODICITY, "LIB_NR_SRS_160MS_PERIODICITY"},
    {LIB_NR_SRS_320MS_PERIODICITY, "LIB_NR_SRS_320MS_PERIODICITY"},
    {LIB_NR_SRS_640MS_PERIODICITY, "LIB_NR_SRS_640MS_PERIODICITY"},
    {LIB_NR_SRS_1280MS_PERIODICITY, "LIB_NR_SRS_1280MS_PERIODICITY"},
    {LIB_NR_SRS_2560MS_PERIODICITY, "LIB_NR_SRS_2560MS_PERIODICITY"},
    {LIB_NR_SRS_5120MS_PERIODICITY, "LIB_NR_SRS_5120MS_PERIODICITY"},
    {LIB_NR_SRS_10240MS_PERIODICITY, "LIB_NR_SRS_10240MS_PERIODICITY"},
    {LIB_NR_SRS_40960MS_PERIODICITY, "LIB_NR_SRS_40960MS_PERIODICITY"},
    {LIB_NR_SRS_81920MS_PERIODICITY, "LIB_NR_SRS_81920MS_PERIODICITY"},
});

const enum_names_t<srs_antenna_port_t> g_srs_antenna_port_t_name_map = name_map<srs_antenna_port_t>({
    {SRS_ANTENNA_NONE, "SRS_ANTENNA_NONE"},     {SRS_ANTENNA_PORT0, "SRS_ANTENNA_PORT0"},
    {SRS_ANTENNA_PORT1, "SRS_ANTENNA_PORT1"},   {SRS_ANTENNA_PORT2, "SRS_ANTENNA_PORT2"},
    {SRS_ANTENNA_PORT3, "SRS_ANTENNA_PORT3"},   {SRS_ANTENNA_PORT4, "SRS_ANTENNA_PORT4"},
    {SRS_ANTENNA_PORT5, "SRS_ANTENNA_PORT5"},   {SRS_ANTENNA_PORT6, "SRS_ANTENNA_PORT6"},
    {SRS_ANTENNA_PORT7, "SRS_ANTENNA_PORT7"},   {SRS_ANTENNA_PORT8, "SRS_ANTENNA_PORT8"},
    {SRS_ANTENNA_PORT9, "SRS_ANTENNA_PORT9"},   {SRS_ANTENNA_PORT10, "SRS_ANTENNA_PORT10"},
    {SRS_ANTENNA_PORT11, "SRS_ANTENNA_PORT11"}, {SRS_ANTENNA_PORT12, "SRS_ANTENNA_PORT12"},
    {SRS_ANTENNA_PORT13, "SRS_ANTENNA_PORT13"}, {SRS_ANTENNA_PORT14, "SRS_ANTENNA_PORT14"},
    {SRS_ANTENNA_PORT15, "SRS_ANTENNA_PORT15"}, {SRS_ANTENNA_PORT16, "SRS_ANTENNA_PORT16"},
    {SRS_ANTENNA_PORT17, "SRS_ANTENNA_PORT17"}, {SRS_ANTENNA_PORT18, "SRS_ANTENNA_PORT18"},
    {SRS_ANTENNA_PORT19, "SRS_ANTENNA_PORT19"}, {SRS_ANTENNA_PORT20, "SRS_ANTENNA_PORT20"},
    {SRS_ANTENNA_PORT21, "SRS_ANTENNA_PORT21"}, {SRS_ANTENNA_PORT22, "SRS_ANTENNA_PORT22"},
    {SRS_ANTENNA_PORT23, "SRS_ANTENNA_PORT23"}, {SRS_ANTENNA_PORT24, "SRS_ANTENNA_PORT24"},
    {SRS_ANTENNA_PORT25, "SRS_ANTENNA_PORT25"}, {SRS_ANTENNA_PORT26, "SRS_ANTENNA_PORT26"},
    {SRS_ANTENNA_PORT27, "SRS_ANTENNA_PORT27"}, {SRS_ANTENNA_PORT28, "SRS_ANTENNA_PORT28"},
    {SRS_ANTENNA_PORT29, "SRS_ANTENNA_PORT29"}, {SRS_ANTENNA_PORT30, "SRS_ANTENNA_PORT30"},
    {SRS_ANTENNA_PORT31, "SRS_ANTENNA_PORT31"},
});

const enum_names_t<lib_nr_freq_range_type_t> g_lib_nr_freq_range_type_t_name_map = name_map<lib_nr_freq_range_type_t>({
    {NR_FR1, "NR_FR1"},
    {NR_FR2_1, "NR_FR2_1"},
    {NR_FR2_2, "NR_FR2_2"},
});

const enum_names_t<lib_nr_numerology_mode_t> g_lib_nr_numerology_mode_t_name_map = name_map<lib_nr_numerology_mode_t>({
    {LIB_NR_NUMBEROLOGY_MODE_SINGLE, "LIB_NR_NUMBEROLOGY_MODE_SINGLE"},
    {LIB_NR_NUMBEROLOGY_MODE_MULTIPLE, "LIB_NR_NUMBEROLOGY_MODE_MULTIPLE"},
});

const enum_names_t<lib_nr_numerology_type_t> g_lib_nr_numerology_type_t_name_map = name_map<lib_nr_numerology_type_t>({
    {LIB_NR_SCS_15K, "LIB_NR_SCS_15K"},
    {LIB_NR_SCS_30K, "LIB_NR_SCS_30K"},
    {LIB_NR_SCS_60K, "LIB_NR_SCS_60K"},
    {LIB_NR_SCS_120K, "LIB_NR_SCS_120K"},
    {LIB_NR_SCS_240K, "LIB_NR_SCS_240K"},
    {LIB_NR_SCS_480K, "LIB_NR_SCS_480K"},
    {LIB_NR_SCS_960K, "LIB_NR_SCS_960K"},
});

const enum_names_t<lib_nr_channel_bw_type_t> g_lib_nr_channel_bw_type_t_name_map = name_map<lib_nr_channel_bw_type_t>({
    {LIB_NR_CHANNEL_FR1_5M, "LIB_NR_CHANNEL_FR1_5M"},
    {LIB_NR_CHANNEL_FR1_10M, "LIB_NR_CHANNEL_FR1_10M"},
    {LIB_NR_CHANNEL_FR1_15M, "LIB_NR_CHANNEL_FR1_15M"},
    {LIB_NR_CHANNEL_FR1_20M, "LIB_NR_CHANNEL_FR1_20M"},
    {LIB_NR_CHANNEL_FR1_25M, "LIB_NR_CHANNEL_FR1_25M"},
    {LIB_NR_CHANNEL_FR1_30M, "LIB_NR_CHANNEL_FR1_30M"},
    {LIB_NR_CHANNEL_FR1_35M, "LIB_NR_CHANNEL_FR1_35M"},
    {LIB_NR_CHANNEL_FR1_40M, "LIB_NR_CHANNEL_FR1_40M"},
    {LIB_NR_CHANNEL_FR1_45M, "LIB_NR_CHANNEL_FR1_45M"},
    {LIB_NR_CHANNEL_FR1_50M, "LIB_NR_CHANNEL_FR1_50M"},
    {LIB_NR_CHANNEL_FR1_60M, "LIB_NR_CHANNEL_FR1_60M"},
    {LIB_NR_CHANNEL_FR1_70M, "LIB_NR_CHANNEL_FR1_70M"},
    {LIB_NR_CHANNEL_FR1_80M, "LIB_NR_CHANNEL_FR1_80M"},
    {LIB_NR_CHANNEL_FR1_90M, "LIB_NR_CHANNEL_FR1_90M"},
    {LIB_NR_CHANNEL_FR1_100M, "LIB_NR_CHANNEL_FR1_100M"},
    {LIB_NR_CHANNEL_FR2_1_50M, "LIB_NR_CHANNEL_FR2_1_50M"},
    {LIB_NR_CHANNEL_FR2_1_100M, "LIB_NR_CHANNEL_FR2_1_100M"},
    {LIB_NR_CHANNEL_FR2_1_200M, "LIB_NR_CHANNEL_FR2_1_200M"},
    {LIB_NR_CHANNEL_FR2_1_400M, "LIB_NR_CHANNEL_FR2_1_400M"},
    {LIB_NR_CHANNEL_FR2_2_100M, "LIB_NR_CHANNEL_FR2_2_100M"},
    {LIB_NR_CHANNEL_FR2_2_400M, "LIB_NR_CHANNEL_FR2_2_400M"},
    {LIB_NR_CHANNEL_FR2_2_800M, "LIB_NR_CHANNEL_FR2_2_800M"},
    {LIB_NR_CHANNEL_FR2_2_1600M, "LIB_NR_CHANNEL_FR2_2_1600M"},
    {LIB_NR_CHANNEL_FR2_2_2000M, "LIB_NR_CHANNEL_FR2_2_2000M"},
});

const enum_names_t<lib_nr_ssb_case_t> g_lib_nr_ssb_case_t_name_map = name_map<lib_nr_ssb_case_t>({
    {NR_SSB_CASE_A, "NR_SSB_CASE_A"},
    {NR_SSB_CASE_B, "NR_SSB_CASE_B"},
    {NR_SSB_CASE_C, "NR_SSB_CASE_C"},
    {NR_SSB_CASE_D, "NR_SSB_CASE_D"},
    {NR_SSB_CASE_E, "NR_SSB_CASE_E"},
    {NR_SSB_CASE_F, "NR_SSB_CASE_F"},
    {NR_SSB_CASE_G, "NR_SSB_CASE_G"},
});

const enum_names_t<lib_nr_cyclic_prefix_type_t> g_lib_nr_cyclic_prefix_type_t_name_map =
    name_map<lib_nr_cyclic_prefix_type_t>({
        {LIB_NR_NORMAL_CP, "LIB_NR_NORMAL_CP"},
        {LIB_NR_EXTEND_CP, "LIB_NR_EXTEND_CP"},
    });

const enum_names_t<lib_nr_lmax_t> g_lib_nr_lmax_t_name_map = name_map<lib_nr_lmax_t>({
    {LIB_NR_LMAX_4, "LIB_NR_LMAX_4"},
    {LIB_NR_LMAX_8, "LIB_NR_LMAX_8"},
    {LIB_NR_LMAX_64, "LIB_NR_LMAX_64"},
});

const enum_names_t<lib_nr_duplex_type_t> g_lib_nr_duplex_type_t_name_map = name_map<lib_nr_duplex_type_t>({
    {LIB_NR_DUPLEX_TYPE_TDD, "LIB_NR_DUPLEX_TYPE_TDD"},
    {LIB_NR_DUPLEX_TYPE_FDD, "LIB_NR_DUPLEX_TYPE_FDD"},
});

const enum_names_t<lib_nr_test_mode_t> g_lib_nr_test_mode_t_name_map = name_map<lib_nr_test_mode_t>({
    {LIB_NR_FR1_TM1_1, "LIB_NR_FR1_TM1_1"},
    {LIB_NR_FR1_TM1_2, "LIB_NR_FR1_TM1_2"},
    {LIB_NR_FR1_TM2, "LIB_NR_FR1_TM2"},
    {LIB_NR_FR1_TM2a, "LIB_NR_FR1_TM2a"},
    {LIB_NR_FR1_TM2b, "LIB_NR_FR1_TM2b"},
    {LIB_NR_FR1_TM3_1, "LIB_NR_FR1_TM3_1"},
    {LIB_NR_FR1_TM3_1a, "LIB_NR_FR1_TM3_1a"},
    {LIB_NR_FR1_TM3_1b, "LIB_NR_FR1_TM3_1b"},
    {LIB_NR_FR1_TM3_2, "LIB_NR_FR1_TM3_2"},
    {LIB_NR_FR1_TM3_3, "LIB_NR_FR1_TM3_3"},
    {LIB_NR_FR2_TM1_1, "LIB_NR_FR2_TM1_1"},
    {LIB_NR_FR2_TM2, "LIB_NR_FR2_TM2"},
    {LIB_NR_FR2_TM2a, "LIB_NR_FR2_TM2a"},
    {LIB_NR_FR2_TM3_1, "LIB_NR_FR2_TM3_1"},
    {LIB_NR_FR2_TM3_1a, "LIB_NR_FR2_TM3_1a"},
});

const enum_names_t<lib_nr_dl_fixed_reference_channels_t> g_lib_nr_dl_fixed_reference_channels_t_name_map =
    name_map<lib_nr_dl_fixed_reference_channels_t>({
        {LIB_NR_DL_FRC_FR1_QPSK, "LIB_NR_DL_FRC_FR1_QPSK"},
        {LIB_NR_DL_FRC_FR1_64QAM, "LIB_NR_DL_FRC_FR1_64QAM"},
        {LIB_NR_DL_FRC_FR1_256QAM, "LIB_NR_DL_FRC_FR1_256QAM"},
        {LIB_NR_DL_FRC_FR1_1024QAM, "LIB_NR_DL_FRC_FR1_1024QAM"},
        {LIB_NR_DL_FRC_FR2_QPSK, "LIB_NR_DL_FRC_FR2_QPSK"},
        {LIB_NR_DL_FRC_FR2_64QAM, "LIB_NR_DL_FRC_FR2_64QAM"},
        {LIB_NR_DL_FRC_FR2_256QAM, "LIB_NR_DL_FRC_FR2_256QAM"},
        {LIB_NR_NTN_FRC_FR1_A_3_2_1_1_1_QPSK, "LIB_NR_NTN_FRC_FR1_A_3_2_1_1_1_QPSK"},
        {LIB_NR_NTN_FRC_FR1_A_3_2_1_1_2_16QAM, "LIB_NR_NTN_FRC_FR1_A_3_2_1_1_2_16QAM"},
        {LIB_NR_NTN_FRC_FR2_A_3_2_1_2_1_QPSK, "LIB_NR_NTN_FRC_FR2_A_3_2_1_2_1_QPSK"},
        {LIB_NR_NTN_FRC_FR2_A_3_2_1_2_2_16QAM, "LIB_NR_NTN_FRC_FR2_A_3_2_1_2_2_16QAM"},
        {LIB_NR_NTN_FRC_FR2_A_3_2_1_2_3_64QAM, "LIB_NR_NTN_FRC_FR2_A_3_2_1_2_3_64QAM"},
        {LIB_NR_NTN_FRC_FR2_A_3_2_1_3_1_QPSK, "LIB_NR_NTN_FRC_FR2_A_3_2_1_3_1_QPSK"},
        {LIB_NR_NTN_FRC_FR2_A_3_2_1_3_2_16QAM, "LIB_NR_NTN_FRC_FR2_A_3_2_1_3_2_16QAM"},
        {LIB_NR_NTN_FRC_FR2_A_3_2_1_3_3_QPSK, "LIB_NR_NTN_FRC_FR2_A_3_2_1_3_3_QPSK"},
        {LIB_NR_NTN_FRC_FR2_A_3_2_1_3_4_16QAM, "LIB_NR_NTN_FRC_FR2_A_3_2_1_3_4_16QAM"},
        {LIB_NR_NTN_FRC_FR2_A_3_2_1_3_5_64QAM, "LIB_NR_NTN_FRC_FR2_A_3_2_1_3_5_64QAM"},
    });

const enum_names_t<lib_nr_ldpc_base_graph_type_t> g_lib_nr_ldpc_base_graph_type_t_name_map =
    name_map<lib_nr_ldpc_base_graph_type_t>({
        {LIB_NR_LDPC_BASE_GRAPH_1, "LIB_NR_LDPC_BASE_GRAPH_1"},
        {LIB_NR_LDPC_BASE_GRAPH_2, "LIB_NR_LDPC_BASE_GRAPH_2"},
    });

const enum_names_t<lib_nr_pn_seq_t> g_lib_nr_pn_seq_t_name_map = name_map<lib_nr_pn_seq_t>({
    {LIB_NR_PN9_ITU, "LIB_NR_PN9_ITU"},
    {LIB_NR_PN9, "LIB_NR_PN9"},
    {LIB_NR_PN11, "LIB_NR_PN11"},
    {LIB_NR_PN15, "LIB_NR_PN15"},
    {LIB_NR_PN23, "LIB_NR_PN23"},
    {LIB_NR_USER_CFG, "LIB_NR_USER_CFG"},
});

const enum_names_t<mcs_table_t> g_mcs_table_t_name_map = name_map<mcs_table_t>({
    {TABLE_5_1_3_1_1, "TABLE_5_1_3_1_1"},
    {TABLE_5_1_3_1_2, "TABLE_5_1_3_1_2"},
    {TABLE_5_1_3_1_3, "TABLE_5_1_3_1_3"},
    {TABLE_5_1_3_1_4, "TABLE_5_1_3_1_4"},
    {TABLE_6_1_4_1_1, "TABLE_6_1_4_1_1"},
    {TABLE_6_1_4_1_2, "TABLE_6_1_4_1_2"},
});

const enum_names_t<lib_nr_tdd_slot_t> g_lib_nr_tdd_slot_t_name_map = name_map<lib_nr_tdd_slot_t>({
    {LIB_NR_TDD_DOWNLINK_SLOT, "LIB_NR_TDD_DOWNLINK_SLOT"},
    {LIB_NR_TDD_UPLINK_SLOT, "LIB_NR_TDD_UPLINK_SLOT"},
    {LIB_NR_TDD_SPECIAL_SLOT, "LIB_NR_TDD_SPECIAL_SLOT"},
});

const enum_names_t<lib_nr_tdd_transmission_periodicity_t> g_lib_nr_tdd_transmission_periodicity_t_name_map =
    name_map<lib_nr_tdd_transmission_periodicity_t>({
        {LIB_NR_TDD_TRANSMISSION_PERIODICITY_500_US, "LIB_NR_TDD_TRANSMISSION_PERIODICITY_500_US"},
        {LIB_NR_TDD_TRANSMISSION_PERIODICITY_625_US, "LIB_NR_TDD_TRANSMISSION_PERIODICITY_625_US"},
        {LIB_NR_TDD_TRANSMISSION_PERIODICITY_1000_US, "LIB_NR_TDD_TRANSMISSION_PERIODICITY_1000_US"},
        {LIB_NR_TDD_TRANSMISSION_PERIODICITY_1250_US, "LIB_NR_TDD_TRANSMISSION_PERIODICITY_1250_US"},
        {LIB_NR_TDD_TRANSMISSION_PERIODICITY_2000_US, "LIB_NR_TDD_TRANSMISSION_PERIODICITY_2000_US"},
        {LIB_NR_TDD_TRANSMISSION_PERIODICITY_2500_US, "LIB_NR_TDD_TRANSMISSION_PERIODICITY_2500_US"},
        {LIB_NR_TDD_TRANSMISSION_PERIODICITY_5000_US, "LIB_NR_TDD_TRANSMISSION_PERIODICITY_5000_US"},
        {LIB_NR_TDD_TRANSMISSION_PERIODICITY_10000_US, "LIB_NR_TDD_TRANSMISSION_PERIODICITY_10000_US"},
    });

const enum_names_t<lib_nr_transmission_periodicity_t> g_lib_nr_transmission_periodicity_t_name_map =
    name_map<lib_nr_transmission_periodicity_t>({
        {LIB_NR_TRANSMISSION_PERIODICITY_0_5MS, "LIB_NR_TRANSMISSION_PERIODICITY_0_5MS"},
        {LIB_NR_TRANSMISSION_PERIODICITY_1MS, "LIB_NR_TRANSMISSION_PERIODICITY_1MS"},
        {LIB_NR_TRANSMISSION_PERIODICITY_1_25MS, "LIB_NR_TRANSMISSION_PERIODICITY_1_25MS"},
        {LIB_NR_TRANSMISSION_PERIODICITY_2MS, "LIB_NR_TRANSMISSION_PERIODICITY_2MS"},
        {LIB_NR_TRANSMISSION_PERIODICITY_2_5MS, "LIB_NR_TRANSMISSION_PERIODICITY_2_5MS"},
        {LIB_NR_TRANSMISSION_PERIODICITY_5MS, "LIB_NR_TRANSMISSION_PERIODICITY_5MS"},
        {LIB_NR_TRANSMISSION_PERIODICITY_10MS, "LIB_NR_TRANSMISSION_PERIODICITY_10MS"},
    });

const enum_names_t<lib_nr_dl_codewords_size_t> g_lib_nr_dl_codewords_size_t_name_map =
    name_map<lib_nr_dl_codewords_size_t>({
        {LIB_NR_CODEWORDS_SIZE_1, "LIB_NR_CODEWORDS_SIZE_1"},
        {LIB_NR_CODEWORDS_SIZE_2, "LIB_NR_CODEWORDS_SIZE_2"},
    });

const enum_names_t<prach_config_table_type_t> g_prach_config_table_type_t_name_map =
    name_map<prach_config_table_type_t>({
        {FR1_FDD_SUL, "FR1_FDD_SUL"},
        {FR1_TDD, "FR1_TDD"},
        {FR2_TDD, "FR2_TDD"},
    });

const enum_names_t<prach_scs_type_t> g_prach_scs_type_t_name_map = name_map<prach_scs_type_t>({
    {PRACH_SCS_1P25K, "PRACH_SCS_1P25K"},
    {PRACH_SCS_5K, "PRACH_SCS_5K"},
    {PRACH_SCS_15K, "PRACH_SCS_15K"},
    {PRACH_SCS_30K, "PRACH_SCS_30K"},
    {PRACH_SCS_60K, "PRACH_SCS_60K"},
    {PRACH_SCS_120K, "PRACH_SCS_120K"},
    {PRACH_SCS_480K, "PRACH_SCS_480K"},
    {PRACH_SCS_960K, "PRACH_SCS_960K"},
});

const enum_names_t<prach_lra_type_t> g_prach_lra_type_t_name_map = name_map<prach_lra_type_t>({
    {PRACH_LRA_139, "PRACH_LRA_139"},
    {PRACH_LRA_839, "PRACH_LRA_839"},
    {PRACH_LRA_571, "PRACH_LRA_571"},
    {PRACH_LRA_1151, "PRACH_LRA_1151"},
});

const enum_names_t<prach_restricted_set_type_t> g_prach_restricted_set_type_t_name_map =
    name_map<prach_restricted_set_type_t>({
        {UNRESTRICTED, "UNRESTRICTED"},
        {RESTRICTED_TYPE_A, "RESTRICTED_TYPE_A"},
        {RESTRICTED_TYPE_B, "RESTRICTED_TYPE_B"},
    });

const enum_names_t<prach_msg1_fdm_type_t> g_prach_msg1_fdm_type_t_name_map = name_map<prach_msg1_fdm_type_t>({
    {Msg1_FDM1, "Msg1_FDM1"},
    {Msg1_FDM2, "Msg1_FDM2"},
    {Msg1_FDM4, "Msg1_FDM4"},
    {Msg1_FDM8, "Msg1_FDM8"},
});

const enum_names_t<prach_format_t> g_prach_format_t_name_map = name_map<prach_format_t>({
    {prach_format_0, "prach_format_0"},
    {prach_format_1, "prach_format_1"},
    {prach_format_2, "prach_format_2"},
    {prach_format_3, "prach_format_3"},
    {prach_format_A1, "prach_format_A1"},
    {prach_format_A2, "prach_format_A2"},
    {prach_format_A3, "prach_format_A3"},
    {prach_format_B1, "prach_format_B1"},
    {prach_format_B2, "prach_format_B2"},
    {prach_format_B3, "prach_format_B3"},
    {prach_format_B4, "prach_format_B4"},
    {prach_format_C0, "prach_format_C0"},
    {prach_format_C2, "prach_format_C2"},
});

const enum_names_t<lib_nr_modulation_type_t> g_lib_nr_modulation_type_t_name_map = name_map<lib_nr_modulation_type_t>({
    {LIB_NR_MODULATION_HALF_PI_BPSK, "LIB_NR_MODULATION_HALF_PI_BPSK"},
    {LIB_NR_MODULATION_BPSK, "LIB_NR_MODULATION_BPSK"},
    {LIB_NR_MODULATION_QPSK, "LIB_NR_MODULATION_QPSK"},
    {LIB_NR_MODULATION_16QAM, "LIB_NR_MODULATION_16QAM"},
    {LIB_NR_MODULATION_64QAM, "LIB_NR_MODULATION_64QAM"},
    {LIB_NR_MODULATION_256QAM, "LIB_NR_MODULATION_256QAM"},
    {LIB_NR_MODULATION_1024QAM, "LIB_NR_MODULATION_1024QAM"},
});

const enum_names_t<csirs_cdm_type_t> g_csirs_cdm_type_t_name_map = name_map<csirs_cdm_type_t>({
    {NO_CDM, "NO_CDM"},
    {FD_CDM2, "FD_CDM2"},
    {CDM4_FD2_TD2, "CDM4_FD2_TD2"},
    {CDM8_FD2_TD4, "CDM8_FD2_TD4"},
});

const enum_names_t<lib_nr_prs_comb_size_t> g_lib_nr_prs_comb_size_t_name_map = name_map<lib_nr_prs_comb_size_t>({
    {LIB_NR_PRS_COMB_SIZE_2, "LIB_NR_PRS_COMB_SIZE_2"},
    {LIB_NR_PRS_COMB_SIZE_4, "LIB_NR_PRS_COMB_SIZE_4"},
    {LIB_NR_PRS_COMB_SIZE_6, "LIB_NR_PRS_COMB_SIZE_6"},
    {LIB_NR_PRS_COMB_SIZE_12, "LIB_NR_PRS_COMB_SIZE_12"},
});

const enum_names_t<lib_nr_prs_reptition_factor_t> g_lib_nr_prs_reptition_factor_t_name_map =
    name_map<lib_nr_prs_reptition_factor_t>({
        {LIB_NR_PRS_REPTITION_FACTOR_1, "LIB_NR_PRS_REPTITION_FACTOR_1"},
        {LIB_NR_PRS_REPTITION_FACTOR_2, "LIB_NR_PRS_REPTITION_FACTOR_2"},
        {LIB_NR_PRS_REPTITION_FACTOR_4, "LIB_NR_PRS_REPTITION_FACTOR_4"},
        {LIB_NR_PRS_REPTITION_FACTOR_6, "LIB_NR_PRS_REPTITION_FACTOR_6"},
        {LIB_NR_PRS_REPTITION_FACTOR_8, "LIB_NR_PRS_REPTITION_FACTOR_8"},
        {LIB_NR_PRS_REPTITION_FACTOR_16, "LIB_NR_PRS_REPTITION_FACTOR_16"},
        {LIB_NR_PRS_REPTITION_FACTOR_32, "LIB_NR_PRS_REPTITION_FACTOR_32"},
    });

const enum_names_t<lib_nr_prs_time_gap_t> g_lib_nr_prs_time_gap_t_name_map = name_map<lib_nr_prs_time_gap_t>({
    {LIB_NR_PRS_TIME_GAP_1, "LIB_NR_PRS_TIME_GAP_1"},
    {LIB_NR_PRS_TIME_GAP_2, "LIB_NR_PRS_TIME_GAP_2"},
    {LIB_NR_PRS_TIME_GAP_4, "LIB_NR_PRS_TIME_GAP_4"},
    {LIB_NR_PRS_TIME_GAP_8, "LIB_NR_PRS_TIME_GAP_8"},
    {LIB_NR_PRS_TIME_GAP_16, "LIB_NR_PRS_TIME_GAP_16"},
    {LIB_NR_PRS_TIME_GAP_32, "LIB_NR_PRS_TIME_GAP_32"},
});

const enum_names_t<lib_nr_prs_muting_factor_t> g_lib_nr_prs_muting_factor_t_name_map =
    name_map<lib_nr_prs_muting_factor_t>({
        {LIB_NR_PRS_MUTING_FACTOR_1, "LIB_NR_PRS_MUTING_FACTOR_1"},
        {LIB_NR_PRS_MUTING_FACTOR_2, "LIB_NR_PRS_MUTING_FACTOR_2"},
        {LIB_NR_PRS_MUTING_FACTOR_4, "LIB_NR_PRS_MUTING_FACTOR_4"},
        {LIB_NR_PRS_MUTING_FACTOR_8, "LIB_NR_PRS_MUTING_FACTOR_8"},
    });

const enum_names_t<lib_nr_prs_symbol_number> g_lib_nr_prs_symbol_number_name_map = name_map<lib_nr_prs_symbol_number>({
    {LIB_NR_PRS_SYMBOL_NUMBER_2, "LIB_NR_PRS_SYMBOL_NUMBER_2"},
    {LIB_NR_PRS_SYMBOL_NUMBER_4, "LIB_NR_PRS_SYMBOL_NUMBER_4"},
    {LIB_NR_PRS_SYMBOL_NUMBER_6, "LIB_NR_PRS_SYMBOL_NUMBER_6"},
    {LIB_NR_PRS_SYMBOL_NUMBER_12, "LIB_NR_PRS_SYMBOL_NUMBER_12"},
});

const enum_names_t<lib_nr_dl_dci_aggregation_level_t> g_lib_nr_dl_dci_aggregation_level_t_name_map =
    name_map<lib_nr_dl_dci_aggregation_level_t>({
        {LIB_NR_DCI_AGGREGATION_LEVEL_1, "LIB_NR_DCI_AGGREGATION_LEVEL_1"},
        {LIB_NR_DCI_AGGREGATION_LEVEL_2, "LIB_NR_DCI_AGGREGATION_LEVEL_2"},
        {LIB_NR_DCI_AGGREGATION_LEVEL_4, "LIB_NR_DCI_AGGREGATION_LEVEL_4"},
        {LIB_NR_DCI_AGGREGATION_LEVEL_8, "LIB_NR_DCI_AGGREGATION_LEVEL_8"},
        {LIB_NR_DCI_AGGREGATION_LEVEL_16, "LIB_NR_DCI_AGGREGATION_LEVEL_16"},
    });

const enum_names_t<lib_nr_dl_dci_search_space_type_t> g_lib_nr_dl_dci_search_space_type_t_name_map =
    name_map<lib_nr_dl_dci_search_space_type_t>({
        {LIB_NR_DCI_USS, "LIB_NR_DCI_USS"},
        {LIB_NR_DCI_CSS, "LIB_NR_DCI_CSS"},
    });

const enum_names_t<lib_nr_dl_dci_candidates_number_t> g_lib_nr_dl_dci_candidates_number_t_name_map =
    name_map<lib_nr_dl_dci_candidates_number_t>({
        {LIB_NR_DCI_CANDIDATE_1, "LIB_NR_DCI_CANDIDATE_1"},
        {LIB_NR_DCI_CANDIDATE_2, "LIB_NR_DCI_CANDIDATE_2"},
        {LIB_NR_DCI_CANDIDATE_3, "LIB_NR_DCI_CANDIDATE_3"},
        {LIB_NR_DCI_CANDIDATE_4, "LIB_NR_DCI_CANDIDATE_4"},
        {LIB_NR_DCI_CANDIDATE_5, "LIB_NR_DCI_CANDIDATE_5"},
        {LIB_NR_DCI_CANDIDATE_6, "LIB_NR_DCI_CANDIDATE_6"},
        {LIB_NR_DCI_CANDIDATE_8, "LIB_NR_DCI_CANDIDATE_8"},
    });

const enum_names_t<lib_nr_ul_uci_content_t> g_lib_nr_ul_uci_content_t_name_map = name_map<lib_nr_ul_uci_content_t>({
    {LIB_NR_UL_UCI_SR_AND_HARQ_ACK, "LIB_NR_UL_UCI_SR_AND_HARQ_ACK"},
    {LIB_NR_UL_UCI_HARQ_ACK_ONLY, "LIB_NR_UL_UCI_HARQ_ACK_ONLY"},
    {LIB_NR_UL_UCI_SR_ONLY, "LIB_NR_UL_UCI_SR_ONLY"},
});

const enum_names_t<lib_nr_ul_sr_configuration_t> g_lib_nr_ul_sr_configuration_t_name_map =
    name_map<lib_nr_ul_sr_configuration_t>({
        {LIB_NR_UL_SR_NEGATIVE, "LIB_NR_UL_SR_NEGATIVE"},
        {LIB_NR_UL_SR_POSITIVE, "LIB_NR_UL_SR_POSITIVE"},
    });

const enum_names_t<lib_nr_ul_group_hopping_t> g_lib_nr_ul_group_hopping_t_name_map =
    name_map<lib_nr_ul_group_hopping_t>({
        {LIB_NR_UL_GROUP_HOPPING_NEITHER, "LIB_NR_UL_GROUP_HOPPING_NEITHER"},
        {LIB_NR_UL_GROUP_HOPPING_ENABLED, "LIB_NR_UL_GROUP_HOPPING_ENABLED"},
        {LIB_NR_UL_GROUP_HOPPING_DISABLED, "LIB_NR_UL_GROUP_HOPPING_DISABLED"},
    });

const enum_names_t<lib_nr_ul_pucch_format_t> g_lib_nr_ul_pucch_format_t_name_map = name_map<lib_nr_ul_pucch_format_t>({
    {LIB_NR_UL_PUCCH_FORMAT_0, "LIB_NR_UL_PUCCH_FORMAT_0"},
    {LIB_NR_UL_PUCCH_FORMAT_1, "LIB_NR_UL_PUCCH_FORMAT_1"},
    {LIB_NR_UL_PUCCH_FORMAT_2, "LIB_NR_UL_PUCCH_FORMAT_2"},
    {LIB_NR_UL_PUCCH_FORMAT_3, "LIB_NR_UL_PUCCH_FORMAT_3"},
    {LIB_NR_UL_PUCCH_FORMAT_4, "LIB_NR_UL_PUCCH_FORMAT_4"},
});

const enum_names_t<lib_nr_ul_pucch_interlace_rb_num_t> g_lib_nr_ul_pucch_interlace_rb_num_t_name_map =
    name_map<lib_nr_ul_pucch_interlace_rb_num_t>({
        {LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_NOT_CONFIGURED, "LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_NOT_CONFIGURED"},
        {LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_10, "LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_10"},
        {LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11, "LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11"},
    });

const enum_names_t<lib_nr_ul_pucch_occ_length_t> g_lib_nr_ul_pucch_occ_length_t_name_map =
    name_map<lib_nr_ul_pucch_occ_length_t>({
        {LIB_NR_UL_PUCCH_OCC_LENGTH_1, "LIB_NR_UL_PUCCH_OCC_LENGTH_1"},
        {LIB_NR_UL_PUCCH_OCC_LENGTH_2, "LIB_NR_UL_PUCCH_OCC_LENGTH_2"},
        {LIB_NR_UL_PUCCH_OCC_LENGTH_4, "LIB_NR_UL_PUCCH_OCC_LENGTH_4"},
    });

const enum_names_t<lib_nr_ul_pucch_max_code_rate_x100_t> g_lib_nr_ul_pucch_max_code_rate_x100_t_name_map =
    name_map<lib_nr_ul_pucch_max_code_rate_x100_t>({
        {LIB_NR_UL_PUCCH_MAX_CODE_RATE_8, "LIB_NR_UL_PUCCH_MAX_CODE_RATE_8"},
        {LIB_NR_UL_PUCCH_MAX_CODE_RATE_15, "LIB_NR_UL_PUCCH_MAX_CODE_RATE_15"},
        {LIB_NR_UL_PUCCH_MAX_CODE_RATE_25, "LIB_NR_UL_PUCCH_MAX_CODE_RATE_25"},
        {LIB_NR_UL_PUCCH_MAX_CODE_RATE_35, "LIB_NR_UL_PUCCH_MAX_CODE_RATE_35"},
        {LIB_NR_UL_PUCCH_MAX_CODE_RATE_45, "LIB_NR_UL_PUCCH_MAX_CODE_RATE_45"},
        {LIB_NR_UL_PUCCH_MAX_CODE_RATE_60, "LIB_NR_UL_PUCCH_MAX_CODE_RATE_60"},
        {LIB_NR_UL_PUCCH_MAX_CODE_RATE_80, "LIB_NR_UL_PUCCH_MAX_CODE_RATE_80"},
    });

const enum_names_t<density_prb_allocation_t> g_density_prb_allocation_t_name_map = name_map<density_prb_allocation_t>({
    {EVEN_PRBS, "EVEN_PRBS"},
    {ODD_PRBS, "ODD_PRBS"},
});

const enum_names_t<lib_nr_sch_ptrs_group_t> g_lib_nr_sch_ptrs_group_t_name_map = name_map<lib_nr_sch_ptrs_group_t>({
    {LIB_NR_PTRS_GROUP_2, "LIB_NR_PTRS_GROUP_2"},
    {LIB_NR_PTRS_GROUP_4, "LIB_NR_PTRS_GROUP_4"},
    {LIB_NR_PTRS_GROUP_8, "LIB_NR_PTRS_GROUP_8"},
});

const enum_names_t<lib_nr_sch_ptrs_group_sample_t> g_lib_nr_sch_ptrs_group_sample_t_name_map =
    name_map<lib_nr_sch_ptrs_group_sample_t>({
        {LIB_NR_PTRS_GROUP_SAMPLE_2, "LIB_NR_PTRS_GROUP_SAMPLE_2"},
        {LIB_NR_PTRS_GROUP_SAMPLE_4, "LIB_NR_PTRS_GROUP_SAMPLE_4"},
    });

const enum_names_t<lib_nr_antenna_port_number_t> g_lib_nr_antenna_port_number_t_name_map =
    name_map<lib_nr_antenna_port_number_t>({
        {LIB_NR_ANTENNA_PORT_NUMBER_1, "LIB_NR_ANTENNA_PORT_NUMBER_1"},
        {LIB_NR_ANTENNA_PORT_NUMBER_2, "LIB_NR_ANTENNA_PORT_NUMBER_2"},
        {LIB_NR_ANTENNA_PORT_NUMBER_3, "LIB_NR_ANTENNA_PORT_NUMBER_3"},
        {LIB_NR_ANTENNA_PORT_NUMBER_4, "LIB_NR_ANTENNA_PORT_NUMBER_4"},
    });

const enum_names_t<lib_nr_sch_hopping_mode_t> g_lib_nr_sch_hopping_mode_t_name_map =
    name_map<lib_nr_sch_hopping_mode_t>({
        {LIB_NR_SCH_HOPPING_MODE_DISABLE, "LIB_NR_SCH_HOPPING_MODE_DISABLE"},
        {LIB_NR_SCH_HOPPING_MODE_INTRA, "LIB_NR_SCH_HOPPING_MODE_INTRA"},
        {LIB_NR_SCH_HOPPING_MODE_INTER, "LIB_NR_SCH_HOPPING_MODE_INTER"},
    });

const enum_names_t<lib_nr_sch_dmrs_hopping_t> g_lib_nr_sch_dmrs_hopping_t_name_map =
    name_map<lib_nr_sch_dmrs_hopping_t>({
        {LIB_NR_SCH_DMRS_HOPPING_DISABLE, "LIB_NR_SCH_DMRS_HOPPING_DISABLE"},
        {LIB_NR_SCH_DMRS_HOPPING_GROUP, "LIB_NR_SCH_DMRS_HOPPING_GROUP"},
        {LIB_NR_SCH_DMRS_HOPPING_SEQUENCE, "LIB_NR_SCH_DMRS_HOPPING_SEQUENCE"},
    });

const enum_names_t<srs_port_number_t> g_srs_port_number_t_name_map = name_map<srs_port_number_t>({
    {LIB_NR_PORT_NUMBER_1, "LIB_NR_PORT_NUMBER_1"},
    {LIB_NR_PORT_NUMBER_2, "LIB_NR_PORT_NUMBER_2"},
    {LIB_NR_PORT_NUMBER_4, "LIB_NR_PORT_NUMBER_4"},
});

const enum_names_t<srs_N_symb_srs_value_t> g_srs_N_symb_srs_value_t_name_map = name_map<srs_N_symb_srs_value_t>({
    {LIB_NR_N_SYMB_SRS_VALUE_1, "LIB_NR_N_SYMB_SRS_VALUE_1"},
    {LIB_NR_N_SYMB_SRS_VALUE_2, "LIB_NR_N_SYMB_SRS_VALUE_2"},
    {LIB_NR_N_SYMB_SRS_VALUE_4, "LIB_NR_N_SYMB_SRS_VALUE_4"},
    {LIB_NR_N_SYMB_SRS_VALUE_8, "LIB_NR_N_SYMB_SRS_VALUE_8"},
    {LIB_NR_N_SYMB_SRS_VALUE_12, "LIB_NR_N_SYMB_SRS_VALUE_12"},
    {LIB_NR_N_SYMB_SRS_VALUE_14, "LIB_NR_N_SYMB_SRS_VALUE_14"},
});

const enum_names_t<srs_repetition_factor_value_t> g_srs_repetition_factor_value_t_name_map =
    name_map<srs_repetition_factor_value_t>({
        {LIB_NR_REPETITION_FACTOR_1, "LIB_NR_REPETITION_FACTOR_1"},
        {LIB_NR_REPETITION_FACTOR_2, "LIB_NR_REPETITION_FACTOR_2"},
        {LIB_NR_REPETITION_FACTOR_3, "LIB_NR_REPETITION_FACTOR_3"},
        {LIB_NR_REPETITION_FACTOR_4, "LIB_NR_REPETITION_FACTOR_4"},
        {LIB_NR_REPETITION_FACTOR_5, "LIB_NR_REPETITION_FACTOR_5"},
        {LIB_NR_REPETITION_FACTOR_6, "LIB_NR_REPETITION_FACTOR_6"},
        {LIB_NR_REPETITION_FACTOR_7, "LIB_NR_REPETITION_FACTOR_7"},
        {LIB_NR_REPETITION_FACTOR_8, "LIB_NR_REPETITION_FACTOR_8"},
        {LIB_NR_REPETITION_FACTOR_10, "LIB_NR_REPETITION_FACTOR_10"},
        {LIB_NR_REPETITION_FACTOR_12, "LIB_NR_REPETITION_FACTOR_12"},
        {LIB_NR_REPETITION_FACTOR_14, "LIB_NR_REPETITION_FACTOR_14"},
    });

const enum_names_t<srs_K_TC_value_t> g_srs_K_TC_value_t_name_map = name_map<srs_K_TC_value_t>({
    {LIB_NR_K_TC_VALUE_2, "LIB_NR_K_TC_VALUE_2"},
    {LIB_NR_K_TC_VALUE_4, "LIB_NR_K_TC_VALUE_4"},
    {LIB_NR_K_TC_VALUE_8, "LIB_NR_K_TC_VALUE_8"},
});

const enum_names_t<srs_cs_max_t> g_srs_cs_max_t_name_map = name_map<srs_cs_max_t>({
    {LIB_NR_SRS_CS_MAX6, "LIB_NR_SRS_CS_MAX6"},
    {LIB_NR_SRS_CS_MAX8, "LIB_NR_SRS_CS_MAX8"},
    {LIB_NR_SRS_CS_MAX12, "LIB_NR_SRS_CS_MAX12"},
});

const enum_names_t<T_SRS_PF_TYPE> g_T_SRS_PF_TYPE_name_map = name_map<T_SRS_PF_TYPE>({
    {SRS_SRS_PF_1, "SRS_SRS_PF_1"},
    {SRS_SRS_PF_2, "SRS_SRS_PF_2"},
    {SRS_SRS_PF_4, "SRS_SRS_PF_4"},
});

const enum_names_t<T_SRS_GROUP_OR_SEQUEN_TYPE> g_T_SRS_GROUP_OR_SEQUEN_TYPE_name_map =
    name_map<T_SRS_GROUP_OR_SEQUEN_TYPE>({
        {SRS_NEITHER_TYPE, "SRS_NEITHER_TYPE"},
        {SRS_GROUP_HOP_TYPE, "SRS_GROUP_HOP_TYPE"},
        {SRS_SEQUEN_HOP_TYPE, "SRS_SEQUEN_HOP_TYPE"},
    });

const enum_names_t<T_SRS_RESOUR_TYPE> g_T_SRS_RESOUR_TYPE_name_map = name_map<T_SRS_RESOUR_TYPE>({
    {SRS_PERIOD_TYPE, "SRS_PERIOD_TYPE"},
    {SRS_SEMI_PERSIS_TYPE, "SRS_SEMI_PERSIS_TYPE"},
    {SRS_APERIOD_TYPE, "SRS_APERIOD_TYPE"},
});

const enum_names_t<T_SRS_POSRESOURCE_EN_TYPE> g_T_SRS_POSRESOURCE_EN_TYPE_name_map =
    name_map<T_SRS_POSRESOURCE_EN_TYPE>({
        {SRS_POSRESOURCE_OFF, "SRS_POSRESOURCE_OFF"},
        {SRS_POSRESOURCE_ON, "SRS_POSRESOURCE_ON"},
    });

} // namespace vek::nr_mod_lib

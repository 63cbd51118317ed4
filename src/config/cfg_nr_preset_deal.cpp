#include "config/cfg_nr_preset_deal.h"

namespace vek::nr_mod_lib
{

void cfg_nr_carrier_t::clear_carrier()
{
    while (get_dl_bwp_number() > 2)
        delete_dl_bwp(1);
    while (get_dl_dci_number() > 1)
        delete_dl_dci(0);
    get_dl_dci(0)->set_enable(false);
    while (get_dl_csirs_number() > 1)
        delete_dl_csirs(0);
    get_dl_csirs(0)->set_enable(false);
    while (get_dl_pdsch_number() > 1)
        delete_dl_sch(0);
    get_dl_pdsch(0)->set_enable(false);
    m_dl_ssb.set_current_carrier_index(m_carrier_index); // its accessor does not place it
    m_dl_ssb.set_enable(false);
    while (get_ul_bwp_number() > 1)
        delete_ul_bwp(1);
    while (get_ul_pucch_number() > 1)
        remove_ul_pucch(0);
    get_ul_pucch(0)->set_enable(false);
    while (get_ul_srs_number() > 1)
        remove_ul_srs(0);
    get_ul_srs(0)->set_enable(false);
    while (get_ul_pusch_number() > 1)
        delete_ul_sch(0);
    get_ul_pusch(0)->set_enable(false);
    while (get_ul_prach_number() > 1)
        remove_ul_prach(0);
    get_ul_prach(0)->set_enable(false);
}

void cfg_nr_carrier_t::_lay_preset_carrier(const lib_nr_preset_configure_manager_t& choice,
                                           const preset_carrier_t& preset)
{
    clear_carrier();

    m_waveform.set_frames_number(preset.frames);
    m_waveform.set_subframes_number(10);
    m_waveform.set_mirror_spectrum(false);
    const double radio_frequency = choice.get_radio_frequency();
    m_waveform.set_phase_compensation_enable(radio_frequency != 0.0 && choice.get_phase_compensation_state());
    m_waveform.set_radio_frequency(radio_frequency);
    m_waveform.set_antennas_number(preset.antennas);

    set_enable(true);
    set_frequency_offset(0);
    set_timing_offset(0.0);
    set_power_boosting(0.0);
    set_init_phase(0);
    set_baseband_filter(true);
    const lib_nr_preset_choices_t choices = _target().get_presets();
    set_carrier_type(preset.type);
    _target().set_presets(choices);
    set_ncell_id(preset.ncell_id);
    set_channel_bandwidth(choice.get_bandwidth());
    set_windowing_beta(0.0);
    set_windowing_method(common_lib::LIB_OFDM_WINDOWING_RAISED_COSINE);
    set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_SINGLE);
    set_numerology(preset.numerology);

    cfg_nr_phy_numerology_t& numerology = *get_numerology(0);
    numerology.set_enable(true);
    numerology.set_rb_start(0);
    numerology.set_rb_size(choice.get_rb_number_of(preset.numerology));
}

void lay_preset_dl_bwp(cfg_nr_carrier_t& carrier, lib_nr_numerology_type_t numerology, unsigned int rb_number)
{
    cfg_nr_dl_bwp_t& bwp = *carrier.get_dl_bwp(1);
    bwp.set_bwp_rb_start(0);
    bwp.set_bwp_rb_size(rb_number);
    bwp.set_scs(numerology);
    bwp.set_cp_type(LIB_NR_NORMAL_CP);
    bwp.set_coreset_number(1);
    lay_preset_coreset(*bwp.get_coreset(1), "1");
}

void lay_preset_coreset(cfg_nr_dl_coreset_t& coreset, const char* bitmap)
{
    coreset.set_rb_offset(-1);
    coreset.set_fd_resources(bitmap);
    coreset.set_duration(2);
    coreset.set_cce2reg_mapping_type(LIB_NR_CORSET_NO_INTERLEAVE);
    coreset.set_precoder_granularity(REG_BUNDLE_SIZE);
}

void begin_preset_sch(cfg_nr_sch_t& sch, const preset_sch_t& preset)
{
    sch.set_dmrs_configuration_type(LIB_NR_DMRS_CFG_TYPE1);
    sch.set_dmrs_length(LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL);
    sch.set_mapping_type(preset.mapping_type);
    sch.set_dmrs_type_a_position(preset.type_a_position);
    sch.set_dmrs_additional_position(preset.additional_position);
    sch.set_enable(true);
    sch.set_power_boosting(0.0);
    sch.set_rnti(0);
    sch.set_nid(preset.nid);
}

void set_preset_ports(cfg_nr_sch_t& sch, unsigned int layers, unsigned int cdm_groups_without_data)
{
    if (layers == 1) {
        sch.set_dmrs_port("0");
        sch.set_antenna_port({LIB_NR_ANTENNA_PORT_0});
    }
    else {
        sch.set_dmrs_port("0,1");
        sch.set_antenna_port({LIB_NR_ANTENNA_PORT_0, LIB_NR_ANTENNA_PORT_1});
    }
    sch.set_cdm_groups_without_data_num(cdm_groups_without_data);
}

void end_preset_sch(cfg_nr_sch_t& sch, const preset_sch_t& preset)
{
    sch.set_rv(0);
    sch.set_enable_dmrs_downlink_r16(false);
    sch.set_nscid(0);
    sch.set_nid0(preset.nid);
    sch.set_nid1(preset.nid);
    sch.set_dmrs_mapping_ref(LIB_NR_DMRS_MAPPING_REF_CRB);
    sch.set_enable_ptrs(preset.ptrs);
}

void lay_preset_ul_bwp(cfg_nr_carrier_t& carrier, lib_nr_numerology_type_t numerology, unsigned int rb_number)
{
    cfg_nr_ul_bwp_t& bwp = *carrier.get_ul_bwp(0);
    bwp.set_rb_offset(0);
    bwp.set_rb_number(rb_number);
    bwp.set_numerology(numerology);
    bwp.set_cp_type(LIB_NR_NORMAL_CP);
}

void begin_preset_pusch(cfg_nr_ul_sch_t& sch, const preset_pusch_t& preset)
{
    sch.set_hopping_mode(LIB_NR_SCH_HOPPING_MODE_DISABLE);
    begin_preset_sch(sch, preset.sch);
    sch.set_enable_transfer_precoding(preset.transform_precoding);
    sch.set_rapid(preset.sch.nid);
    set_preset_ports(sch, preset.layers, 2);
    sch.set_enable_codebook(false);
    sch.set_antenna_port_number(preset.layers == 1 ? LIB_NR_ANTENNA_PORT_NUMBER_1 : LIB_NR_ANTENNA_PORT_NUMBER_2);
    sch.set_tpmi(0);
}

void end_preset_pusch(cfg_nr_ul_sch_t& sch, const preset_pusch_t& preset)
{
    sch.set_x_overhead(LIB_NR_SCH_X_OVERHEAD_0);
    sch.set_enable_lbrm(false);
    sch.set_data_source(LIB_NR_PN9);
    end_preset_sch(sch, preset.sch);
    sch.set_dmrs_hopping(LIB_NR_SCH_DMRS_HOPPING_DISABLE);
    sch.set_n_rs_id(preset.sch.nid);
    sch.set_ptrs_power(0.0);
    sch.set_ptrs_freqency_density(LIB_NR_SCH_PTRS_FREQUENCY_DENSITYE_2);
    sch.set_ptrs_time_density(LIB_NR_SCH_PTRS_TIME_DENSITYE_1);
    sch.set_ptrs_re_offset(0);
}

} // namespace vek::nr_mod_lib

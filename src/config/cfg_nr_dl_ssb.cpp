#include "config/cfg_nr_dl_ssb.h"

#include "manager/lib_nr_carrier_configure_manager.h"
#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_waveform_configure_manager.h"

#include <algorithm>
#include <iostream>

namespace vek::nr_mod_lib
{

cfg_nr_dl_ssb_t::cfg_nr_dl_ssb_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) { init(); }

void cfg_nr_dl_ssb_t::init() { set_current_carrier_index(0); }

bool cfg_nr_dl_ssb_t::set_current_carrier_index(unsigned int carrier)
{
    if (carrier >= m_waveform.get_carrier_number()) {
        std::cout << "cfg_nr_dl_ssb_t::set_current_carrier_index Report : Carrier index out of range!" << std::endl;
        return false;
    }
    m_current_carrier_index = carrier;
    return true;
}

lib_nr_carrier_configure_manager_t& cfg_nr_dl_ssb_t::_carrier() const
{
    return m_waveform.get_carrier(m_current_carrier_index);
}

lib_nr_dl_ssb_configure_manager_t& cfg_nr_dl_ssb_t::_target() { return _carrier().get_dl_ssb(); }

const lib_nr_dl_ssb_configure_manager_t& cfg_nr_dl_ssb_t::_target() const { return _carrier().get_dl_ssb(); }

bool cfg_nr_dl_ssb_t::get_enable() const { return _target().get_enable(); }
bool cfg_nr_dl_ssb_t::set_ssb_pattern(lib_nr_ssb_case_t pattern) { return _target().set_ssb_pattern(pattern); }
bool cfg_nr_dl_ssb_t::set_power_boosting(const std::string& text) { return _target().set_power_boosting(text); }
std::string cfg_nr_dl_ssb_t::get_power_boosting() const { return _target().get_power_boosting_text(); }
bool cfg_nr_dl_ssb_t::set_pss_power_boosting(double power) { return _target().set_pss_power_boosting(power); }
double cfg_nr_dl_ssb_t::get_pss_power_boosting() const { return _target().get_pss_power_boosting(); }
bool cfg_nr_dl_ssb_t::set_periodicity(lib_ssb_periodicity_t periodicity)
{
    return _target().set_periodicity(periodicity);
}
lib_ssb_periodicity_t cfg_nr_dl_ssb_t::get_periodicity() const { return _target().get_periodicity(); }
bool cfg_nr_dl_ssb_t::set_half_frame_idx(unsigned char half_frame_idx)
{
    return _target().set_half_frame_idx(half_frame_idx);
}
unsigned char cfg_nr_dl_ssb_t::get_half_frame_idx() const { return _target().get_half_frame_idx(); }
bool cfg_nr_dl_ssb_t::set_active_idx(const std::string& text) { return _target().set_active_idx(text); }
std::string cfg_nr_dl_ssb_t::get_active_idx() const { return _target().get_active_idx_text(); }
lib_nr_lmax_t cfg_nr_dl_ssb_t::get_lmax() const { return _target().get_lmax(); }
bool cfg_nr_dl_ssb_t::set_coding(bool coding) { return _target().set_coding(coding); }
bool cfg_nr_dl_ssb_t::get_coding() const { return _target().get_coding(); }
bool cfg_nr_dl_ssb_t::set_ssb_subcarrier_offset(unsigned int offset)
{
    return _target().set_ssb_subcarrier_offset(offset);
}
unsigned int cfg_nr_dl_ssb_t::get_ssb_subcarrier_offset() const { return _target().get_ssb_subcarrier_offset(); }
bool cfg_nr_dl_ssb_t::set_data_source_custom(const std::string& text) { return _target().set_data_source_custom(text); }
std::string cfg_nr_dl_ssb_t::get_data_source_custom() const { return _target().get_data_source_custom_text(); }
lib_nr_numerology_type_t cfg_nr_dl_ssb_t::get_numerology() const { return _target().get_numerology(); }
bool cfg_nr_dl_ssb_t::set_auto_cofig_mib(bool auto_cofig_mib) { return _target().set_auto_cofig_mib(auto_cofig_mib); }
bool cfg_nr_dl_ssb_t::get_auto_cofig_mib() const { return _target().get_auto_cofig_mib(); }
bool cfg_nr_dl_ssb_t::set_data_source(lib_nr_pn_seq_t data_source) { return _target().set_data_source(data_source); }
lib_nr_pn_seq_t cfg_nr_dl_ssb_t::get_data_source() const { return _target().get_data_source(); }
bool cfg_nr_dl_ssb_t::set_dmrs_typea_position(unsigned int position)
{
    return _target().set_dmrs_typea_position(position);
}
unsigned int cfg_nr_dl_ssb_t::get_dmrs_typea_position() const { return _target().get_dmrs_typeA_position(); }
bool cfg_nr_dl_ssb_t::set_pdcch_config_sib1(unsigned int config) { return _target().set_pdcch_config_sib1(config); }
unsigned int cfg_nr_dl_ssb_t::get_pdcch_config_sib1() const { return _target().get_pdcch_config_sib1(); }
bool cfg_nr_dl_ssb_t::set_cell_barred(bool cell_barred) { return _target().set_cell_barred(cell_barred); }
bool cfg_nr_dl_ssb_t::get_cell_barred() const { return _target().get_cell_barred(); }
bool cfg_nr_dl_ssb_t::set_intra_frequency_reselection(bool reselection)
{
    return _target().set_intra_frequency_reselection(reselection);
}
bool cfg_nr_dl_ssb_t::get_intra_frequency_reselection() const { return _target().get_intra_freq_reselection(); }
unsigned int cfg_nr_dl_ssb_t::get_kssb() const { return _target().get_kssb(); }
unsigned int cfg_nr_dl_ssb_t::get_rb_offset() const { return _target().get_rb_offset(); }

// The operations below need more than the block itself: its numerology, the carrier, the waveform. Some readers bring
// the block's stored value up to date first, so they take the target for writing.

bool cfg_nr_dl_ssb_t::set_enable(bool enable) { return _target().set_enable(enable, _numerology().get_rb_size()); }

lib_nr_ssb_case_t cfg_nr_dl_ssb_t::get_ssb_pattern() const
{
    lib_nr_dl_ssb_configure_manager_t& ssb = _carrier().get_dl_ssb();
    return ssb.get_ssb_pattern(ssb.get_numerology());
}

std::vector<lib_nr_ssb_case_t> cfg_nr_dl_ssb_t::get_ssb_pattern_for_ui() const
{
    lib_nr_dl_ssb_configure_manager_t& ssb = _carrier().get_dl_ssb();
    return ssb.get_ssb_pattern_feedback(ssb.get_numerology());
}

bool cfg_nr_dl_ssb_t::set_lmax(lib_nr_lmax_t lmax)
{
    const double frequency = m_waveform.get_radio_frequency() + _carrier().get_frequency_offset_hz();
    return _target().set_lmax(_target().get_numerology(), lmax, frequency);
}

bool cfg_nr_dl_ssb_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    const std::vector<lib_nr_numerology_type_t> enabled = _carrier().get_enable_numerology_list();
    if (std::find(enabled.begin(), enabled.end(), numerology) == enabled.end())
        numerology = enabled.front();
    const lib_nr_numerology_type_t former = get_numerology();
    _carrier().set_dl_ssb_numerology(numerology);
    return get_numerology() != former;
}

bool cfg_nr_dl_ssb_t::set_kssb(unsigned int kssb)
{
    const lib_nr_phy_numerology_configure_manager_t& numerology = _numerology();
    return _target().set_kssb(kssb, numerology.get_numerolgy(), _carrier().get_bandwidth(), numerology.get_rb_size());
}

bool cfg_nr_dl_ssb_t::set_rb_offset(unsigned int rb_offset)
{
    const lib_nr_phy_numerology_configure_manager_t& numerology = _numerology();
    return _target().set_rb_offset(rb_offset, numerology.get_numerolgy(), _carrier().get_bandwidth(),
                                   numerology.get_rb_size());
}

lib_nr_numerology_type_t cfg_nr_dl_ssb_t::get_subcarrier_spacing_common() const
{
    return _carrier().get_dl_ssb().get_subcarrier_spacing_common();
}

const lib_nr_phy_numerology_configure_manager_t& cfg_nr_dl_ssb_t::_numerology() const
{
    return _carrier().get_numerology_manager(_carrier().get_dl_ssb().get_numerology());
}

} // namespace vek::nr_mod_lib

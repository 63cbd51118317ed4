#include "config/cfg_nr_carrier.h"

#include "common/lib_bounded_cast.h"
#include "manager/lib_nr_waveform_configure_manager.h"

#include <iostream>

namespace vek::nr_mod_lib
{

bool cfg_nr_carrier_t::set_enable(bool enable) { return _target().set_enable(enable); }
bool cfg_nr_carrier_t::get_enable() const { return _target().get_enable(); }
int cfg_nr_carrier_t::get_frequency_offset() const
{
    return common_lib::bounded_cast<int>(_target().get_frequency_offset_hz());
}
bool cfg_nr_carrier_t::set_timing_offset(double seconds) { return _target().set_timing_offset_s(seconds); }
double cfg_nr_carrier_t::get_timing_offset() const { return _target().get_timing_offset_s(); }
bool cfg_nr_carrier_t::set_power_boosting(double boosting) { return _target().set_power_boosting(boosting); }
double cfg_nr_carrier_t::get_power_boosting() const { return _target().get_power_boosting(); }
bool cfg_nr_carrier_t::set_init_phase(unsigned int init_phase) { return _target().set_init_phase(init_phase); }
unsigned int cfg_nr_carrier_t::get_init_phase() const { return _target().get_init_phase(); }
bool cfg_nr_carrier_t::set_baseband_filter(bool enable) { return _target().set_baseband_filter_enable(enable); }
bool cfg_nr_carrier_t::get_baseband_filter() const { return _target().is_baseband_filter_enable(); }
bool cfg_nr_carrier_t::set_carrier_type(lib_carrier_type_t type) { return _target().set_carrier_type(type); }
lib_carrier_type_t cfg_nr_carrier_t::get_carrier_type() const { return _target().get_carrier_type(); }
bool cfg_nr_carrier_t::set_ncell_id(unsigned int ncell_id) { return _target().set_cell_index(ncell_id); }
unsigned int cfg_nr_carrier_t::get_ncell_id() const { return _target().get_cell_index(); }
lib_nr_channel_bw_type_t cfg_nr_carrier_t::get_channel_bandwidth() const { return _target().get_bandwidth(); }
void cfg_nr_carrier_t::set_windowing_beta(double beta) { _target().set_windowing_beta(beta); }
double cfg_nr_carrier_t::get_windowing_beta() const { return _target().get_windowing_beta(); }
void cfg_nr_carrier_t::set_windowing_method(common_lib::lib_ofdm_windowing_method_type_t method)
{
    _target().set_windowing_method(method);
}
common_lib::lib_ofdm_windowing_method_type_t cfg_nr_carrier_t::get_windowing_method() const
{
    return _target().get_windowing_method();
}
bool cfg_nr_carrier_t::set_numerology_mode(lib_nr_numerology_mode_t mode)
{
    return _target().set_numerology_mode(mode);
}
lib_nr_numerology_mode_t cfg_nr_carrier_t::get_numerology_mode() const { return _target().get_numerology_mode(); }
lib_nr_numerology_type_t cfg_nr_carrier_t::get_numerology() const { return _target().get_numerology(); }
std::vector<lib_nr_numerology_type_t> cfg_nr_carrier_t::get_numerology_list() const
{
    return lib_nr_phy_common_t::get_valid_numerology_list(_target().get_bandwidth());
}
std::vector<lib_nr_numerology_type_t> cfg_nr_carrier_t::get_enable_numerology_list() const
{
    return _target().get_enable_numerology_list();
}
lib_nr_freq_range_type_t cfg_nr_carrier_t::get_frequency_range() const
{
    return lib_nr_phy_common_t::get_freq_range_type(_target().get_bandwidth());
}
unsigned long long cfg_nr_carrier_t::get_sample_rate() const
{
    return common_lib::bounded_cast<unsigned long long>(_target().get_base_sample_rate());
}
unsigned int cfg_nr_carrier_t::get_bandwidth() const { return _target().get_configured_bandwidth(); }
double cfg_nr_carrier_t::get_point_a() const { return _target().get_frequency_offset_of_point_a(); }
lib_nr_cyclic_prefix_type_t cfg_nr_carrier_t::get_prach_cp_type() const
{
    return _target().get_ul_bwp(0).get_cp_type();
}
unsigned int cfg_nr_carrier_t::get_numerology_number() const { return _target().get_numerology_number(); }
unsigned int cfg_nr_carrier_t::get_dl_bwp_number() const { return _target().get_dl_bwp_number(); }
unsigned int cfg_nr_carrier_t::get_dl_dci_number() const { return _target().get_dl_dci_number(); }
unsigned int cfg_nr_carrier_t::get_dl_pdsch_number() const { return _target().get_dl_sch_number(); }
unsigned int cfg_nr_carrier_t::get_dl_csirs_number() const { return _target().get_dl_csirs_number(); }
unsigned int cfg_nr_carrier_t::get_dl_prs_number() const { return _target().get_dl_prs_number(); }
unsigned int cfg_nr_carrier_t::get_ul_bwp_number() const { return _target().get_ul_bwp_number(); }
unsigned int cfg_nr_carrier_t::get_ul_pusch_number() const { return _target().get_ul_sch_number(); }
unsigned int cfg_nr_carrier_t::get_ul_pucch_number() const { return _target().get_ul_pucch_number(); }
unsigned int cfg_nr_carrier_t::get_ul_srs_number() const { return _target().get_ul_srs_number(); }
unsigned int cfg_nr_carrier_t::get_ul_prach_number() const { return _target().get_ul_prach_number(); }
bool cfg_nr_carrier_t::copy_dl_bwp(unsigned int index) { return _target().copy_dl_bwp(index); }
bool cfg_nr_carrier_t::copy_dl_dci(unsigned int index) { return _target().copy_dl_dci(index); }
bool cfg_nr_carrier_t::copy_dl_sch(unsigned int index) { return _target().copy_dl_sch(index); }
bool cfg_nr_carrier_t::copy_dl_csirs(unsigned int index) { return _target().copy_dl_csirs(index); }
bool cfg_nr_carrier_t::copy_dl_prs(unsigned int index) { return _target().copy_dl_prs(index); }
bool cfg_nr_carrier_t::copy_ul_bwp(unsigned int index) { return _target().copy_ul_bwp(index); }
bool cfg_nr_carrier_t::copy_ul_sch(unsigned int index) { return _target().copy_ul_sch(index); }
bool cfg_nr_carrier_t::copy_ul_srs(unsigned int index) { return _target().copy_ul_srs(index); }
bool cfg_nr_carrier_t::copy_ul_prach(unsigned int index) { return _target().copy_ul_prach(index); }
bool cfg_nr_carrier_t::copy_ul_pucch(unsigned int index) { return _target().copy_ul_pucch(index); }
void cfg_nr_carrier_t::add_ul_pucch() { _target().add_ul_pucch(); }
bool cfg_nr_carrier_t::remove_ul_pucch(unsigned int index) { return _target().remove_ul_pucch(index); }

cfg_nr_carrier_t::cfg_nr_carrier_t(lib_nr_waveform_configure_manager_t& waveform)
    : m_waveform(waveform),
      m_numerology(waveform),
      m_dl_bwp(waveform),
      m_dl_tm(waveform),
      m_dl_frc(waveform),
      m_dl_ssb(waveform),
      m_dl_dci(waveform),
      m_dl_sch(waveform),
      m_dl_csirs(waveform),
      m_dl_prs(waveform),
      m_ul_bwp(waveform),
      m_ul_sch(waveform),
      m_ul_frc(waveform),
      m_ul_rmc(waveform),
      m_ul_pucch(waveform),
      m_pucch_test_model(waveform),
      m_ul_srs(waveform),
      m_prach(waveform)
{}

void cfg_nr_carrier_t::init()
{
    set_current_carrier_index(0);
    m_numerology.init();
    m_dl_tm.init();
    m_dl_frc.init();
    m_dl_ssb.init();
    m_dl_bwp.init();
    m_dl_dci.init();
    m_dl_sch.init();
    m_dl_csirs.init();
    m_dl_prs.init();
    m_ul_bwp.init();
    m_ul_sch.init();
    m_ul_frc.init();
    m_ul_rmc.init();
    m_ul_pucch.init();
    m_pucch_test_model.init();
    m_prach.init();
    m_ul_srs.init();
}

bool cfg_nr_carrier_t::set_current_carrier_index(unsigned int carrier)
{
    if (carrier >= m_waveform.get_carrier_number()) {
        std::cout << "cfg_nr_carrier_t::set_current_carrier Report: Carrier Index Out of Range!" << std::endl;
        return false;
    }
    if (carrier == m_carrier_index)
        return true;
    m_carrier_index = carrier;
    m_numerology.set_current_numerology_index(carrier, 0);
    m_dl_bwp.set_current_dl_bwp_index(carrier, 0);
    m_dl_tm.set_current_carrier_index(carrier);
    m_dl_frc.set_current_carrier_index(carrier);
    m_dl_ssb.set_current_carrier_index(carrier);
    m_dl_dci.set_current_dci_index(carrier, 0);
    m_dl_sch.set_current_sch_index(carrier, 0);
    m_dl_csirs.set_current_csirs_index(carrier, 0);
    m_dl_prs.set_current_prs_index(carrier, 0);
    m_ul_bwp.set_current_bwp_index(carrier, 0);
    m_ul_sch.set_current_sch_index(carrier, 0);
    m_ul_frc.set_current_carrier_index(carrier);
    m_ul_rmc.set_current_carrier_index(carrier);
    m_ul_pucch.set_current_pucch_index(carrier, 0);
    m_pucch_test_model.set_current_carrier_index(carrier);
    m_prach.set_current_prach_index(carrier, 0);
    return true;
}

bool cfg_nr_carrier_t::set_frequency_offset(int frequency_offset)
{
    const bool changed = _target().set_frequency_offset_hz(m_waveform.get_radio_frequency(), frequency_offset);
    _refit_filter_mask();
    return changed;
}

bool cfg_nr_carrier_t::set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    const bool changed = _target().set_bandwidth(bandwidth);
    _refit_filter_mask();
    return changed;
}

bool cfg_nr_carrier_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    const bool changed = _target().set_numerology(numerology);
    _refit_filter_mask();
    return changed;
}

std::vector<lib_nr_channel_bw_type_t> cfg_nr_carrier_t::get_valid_bandwidth_list() const
{
    using reference_t = lib_nr_phy_common_t;
    std::vector<std::vector<lib_nr_channel_bw_type_t>> ranges;
    if (_target().get_nr_ntn())
        ranges = {reference_t::get_ntn_valid_bandwidth_list(NR_FR1),
                  reference_t::get_ntn_valid_bandwidth_list(NR_FR2_1)};
    else
        ranges = {reference_t::get_valid_bandwidth_list(NR_FR1), reference_t::get_valid_bandwidth_list(NR_FR2_1),
                  reference_t::get_valid_bandwidth_list(NR_FR2_2)};
    std::vector<lib_nr_channel_bw_type_t> list;
    for (const std::vector<lib_nr_channel_bw_type_t>& range : ranges)
        list.insert(list.end(), range.begin(), range.end());
    return list;
}

bool cfg_nr_carrier_t::set_prach_cp_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    for (unsigned int i = 0; i < get_ul_bwp_number(); ++i)
        _target().set_ul_bwp_cp_type(i, cp_type);
    return true;
}

cfg_nr_phy_numerology_t* cfg_nr_carrier_t::get_numerology(int index)
{
    m_numerology.set_current_numerology_index(m_carrier_index, static_cast<unsigned int>(index));
    return &m_numerology;
}

cfg_nr_dl_bwp_t* cfg_nr_carrier_t::get_dl_bwp(int index)
{
    m_dl_bwp.set_current_dl_bwp_index(m_carrier_index, static_cast<unsigned int>(index));
    return &m_dl_bwp;
}

cfg_nr_dl_dci_t* cfg_nr_carrier_t::get_dl_dci(int index)
{
    m_dl_dci.set_current_dci_index(m_carrier_index, static_cast<unsigned int>(index));
    return &m_dl_dci;
}

cfg_nr_dl_sch_t* cfg_nr_carrier_t::get_dl_pdsch(int index)
{
    m_dl_sch.set_current_sch_index(m_carrier_index, static_cast<unsigned int>(index));
    return &m_dl_sch;
}

cfg_nr_dl_csirs_t* cfg_nr_carrier_t::get_dl_csirs(int index)
{
    m_dl_csirs.set_current_csirs_index(m_carrier_index, static_cast<unsigned int>(index));
    return &m_dl_csirs;
}

cfg_nr_dl_prs_t* cfg_nr_carrier_t::get_dl_prs(int index)
{
    m_dl_prs.set_current_prs_index(m_carrier_index, static_cast<unsigned int>(index));
    return &m_dl_prs;
}

cfg_nr_ul_bwp_t* cfg_nr_carrier_t::get_ul_bwp(int index)
{
    m_ul_bwp.set_current_bwp_index(m_carrier_index, static_cast<unsigned int>(index));
    return &m_ul_bwp;
}

cfg_nr_ul_sch_t* cfg_nr_carrier_t::get_ul_pusch(int index)
{
    m_ul_sch.set_current_sch_index(m_carrier_index, static_cast<unsigned int>(index));
    return &m_ul_sch;
}

cfg_nr_ul_pucch_t* cfg_nr_carrier_t::get_ul_pucch(unsigned int index)
{
    m_ul_pucch.set_current_pucch_index(m_carrier_index, index);
    return &m_ul_pucch;
}

cfg_nr_pucch_test_model_t* cfg_nr_carrier_t::get_pucch_test_model()
{
    m_pucch_test_model.set_current_carrier_index(m_carrier_index);
    return &m_pucch_test_model;
}

cfg_nr_ul_srs_t* cfg_nr_carrier_t::get_ul_srs(unsigned int index)
{
    m_ul_srs.set_current_srs_index(m_carrier_index, index);
    return &m_ul_srs;
}

cfg_nr_prach_t* cfg_nr_carrier_t::get_ul_prach(unsigned int index)
{
    m_prach.set_current_prach_index(m_carrier_index, index);
    return &m_prach;
}

void cfg_nr_carrier_t::add_dl_bwp()
{
    _target().add_dl_bwp();
    m_dl_bwp.set_current_dl_bwp_index(m_carrier_index, get_dl_bwp_number() - 1);
}

bool cfg_nr_carrier_t::delete_dl_bwp(unsigned int index)
{
    const bool removed = _target().remove_dl_bwp(index);
    m_dl_bwp.set_current_dl_bwp_index(m_carrier_index, 0);
    return removed;
}

void cfg_nr_carrier_t::add_dl_dci()
{
    _target().add_dl_dci();
    m_dl_dci.set_current_dci_index(m_carrier_index, get_dl_dci_number() - 1);
}

bool cfg_nr_carrier_t::delete_dl_dci(unsigned int index)
{
    const bool removed = _target().remove_dl_dci(index);
    m_dl_dci.set_current_dci_index(m_carrier_index, 0);
    return removed;
}

void cfg_nr_carrier_t::add_dl_sch()
{
    _target().add_dl_sch();
    m_dl_sch.set_current_sch_index(m_carrier_index, get_dl_pdsch_number() - 1);
}

bool cfg_nr_carrier_t::delete_dl_sch(unsigned int index)
{
    const bool removed = _target().remove_dl_sch(index);
    m_dl_sch.set_current_sch_index(m_carrier_index, 0);
    return removed;
}

void cfg_nr_carrier_t::add_dl_csirs()
{
    _target().add_dl_csirs();
    m_dl_csirs.set_current_csirs_index(m_carrier_index, get_dl_csirs_number() - 1);
}

bool cfg_nr_carrier_t::delete_dl_csirs(unsigned int index)
{
    const bool removed = _target().remove_dl_csirs(index);
    m_dl_csirs.set_current_csirs_index(m_carrier_index, 0);
    return removed;
}

void cfg_nr_carrier_t::add_dl_prs()
{
    _target().add_dl_prs();
    m_dl_prs.set_current_prs_index(m_carrier_index, get_dl_prs_number() - 1);
}

bool cfg_nr_carrier_t::delete_dl_prs(unsigned int index)
{
    const bool removed = _target().remove_dl_prs(index);
    m_dl_prs.set_current_prs_index(m_carrier_index, 0);
    return removed;
}

void cfg_nr_carrier_t::add_ul_bwp()
{
    _target().add_ul_bwp();
    m_ul_bwp.set_current_bwp_index(m_carrier_index, get_ul_bwp_number() - 1);
}

bool cfg_nr_carrier_t::delete_ul_bwp(unsigned int index)
{
    const bool removed = _target().remove_ul_bwp(index);
    m_ul_bwp.set_current_bwp_index(m_carrier_index, 0);
    return removed;
}

void cfg_nr_carrier_t::add_ul_sch()
{
    _target().add_ul_sch();
    m_ul_sch.set_current_sch_index(m_carrier_index, get_ul_pusch_number() - 1);
}

bool cfg_nr_carrier_t::delete_ul_sch(unsigned int index)
{
    const bool removed = _target().remove_ul_sch(index);
    m_ul_sch.set_current_sch_index(m_carrier_index, 0);
    return removed;
}

void cfg_nr_carrier_t::add_ul_srs()
{
    _target().add_ul_srs();
    m_ul_srs.set_current_srs_index(m_carrier_index, get_ul_srs_number() - 1);
}

bool cfg_nr_carrier_t::remove_ul_srs(unsigned int index)
{
    const bool removed = _target().remove_ul_srs(index);
    m_ul_srs.set_current_srs_index(m_carrier_index, 0);
    return removed;
}

void cfg_nr_carrier_t::add_ul_prach()
{
    _target().add_ul_prach();
    m_prach.set_current_prach_index(m_carrier_index, get_ul_prach_number() - 1);
}

bool cfg_nr_carrier_t::remove_ul_prach(unsigned int index)
{
    const bool removed = _target().remove_ul_prach(index);
    m_prach.set_current_prach_index(m_carrier_index, 0);
    return removed;
}

lib_nr_carrier_configure_manager_t& cfg_nr_carrier_t::_target() { return m_waveform.get_carrier(m_carrier_index); }
const lib_nr_carrier_configure_manager_t& cfg_nr_carrier_t::_target() const
{
    return m_waveform.get_carrier(m_carrier_index);
}

/// The sample rate may have moved, and with it what the mask may span.
void cfg_nr_carrier_t::_refit_filter_mask()
{
    m_waveform.set_cfr_filter_mask_data_arr(m_waveform.get_cfr_filter_mask_data_arr());
}

} // namespace vek::nr_mod_lib

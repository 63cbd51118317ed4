#include "config/cfg_nr_carrier.h"

#include "common/lib_bounded_cast.h"
#include "phy_common/lib_nr_phy_common.h"

#include <iostream>

namespace vek::nr_mod_lib
{

cfg_nr_carrier_t::cfg_nr_carrier_t(lib_nr_waveform_configure_manager_t& waveform)
    : cfg_nr_cursor_t(waveform),
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
    m_waveform.refit_cfr_filter_mask();
    return changed;
}

int cfg_nr_carrier_t::get_frequency_offset() const
{
    return common_lib::bounded_cast<int>(_target().get_frequency_offset_hz());
}

std::vector<lib_nr_numerology_type_t> cfg_nr_carrier_t::get_numerology_list() const
{
    return lib_nr_phy_common_t::get_valid_numerology_list(_target().get_bandwidth());
}

lib_nr_freq_range_type_t cfg_nr_carrier_t::get_frequency_range() const
{
    return lib_nr_phy_common_t::get_freq_range_type(_target().get_bandwidth());
}

unsigned long long cfg_nr_carrier_t::get_sample_rate() const
{
    return common_lib::bounded_cast<unsigned long long>(_target().get_base_sample_rate());
}

bool cfg_nr_carrier_t::set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    const bool changed = _target().set_bandwidth(bandwidth);
    m_waveform.refit_cfr_filter_mask();
    return changed;
}

bool cfg_nr_carrier_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    const bool changed = _target().set_numerology(numerology);
    m_waveform.refit_cfr_filter_mask();
    return changed;
}

std::vector<lib_nr_channel_bw_type_t> cfg_nr_carrier_t::get_valid_bandwidth_list() const
{
    return lib_nr_phy_common_t::get_carrier_bandwidth_list(_target().get_nr_ntn());
}

bool cfg_nr_carrier_t::set_prach_cp_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    _target().set_all_ul_bwps_cp_type(cp_type);
    return true;
}

} // namespace vek::nr_mod_lib

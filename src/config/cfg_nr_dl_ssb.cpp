#include "config/cfg_nr_dl_ssb.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

// What needs more than the block itself: its numerology, the carrier, the waveform.

bool cfg_nr_dl_ssb_t::set_enable(bool enable) { return _target().set_enable(enable, _numerology().get_rb_size()); }

lib_nr_ssb_case_t cfg_nr_dl_ssb_t::get_ssb_pattern() const
{
    lib_nr_dl_ssb_configure_manager_t& ssb = _stored();
    return ssb.get_ssb_pattern(ssb.get_numerology());
}

std::vector<lib_nr_ssb_case_t> cfg_nr_dl_ssb_t::get_ssb_pattern_for_ui() const
{
    lib_nr_dl_ssb_configure_manager_t& ssb = _stored();
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
    return _stored().get_subcarrier_spacing_common();
}

lib_nr_dl_ssb_configure_manager_t& cfg_nr_dl_ssb_t::_stored() const
{
    return m_waveform.get_carrier(m_carrier_index).get_dl_ssb();
}

const lib_nr_phy_numerology_configure_manager_t& cfg_nr_dl_ssb_t::_numerology() const
{
    return _carrier().get_numerology_manager(_target().get_numerology());
}

} // namespace vek::nr_mod_lib

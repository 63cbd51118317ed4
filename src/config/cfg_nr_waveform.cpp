#include "config/cfg_nr_waveform.h"

#include "common/lib_bounded_cast.h"

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_subframes_number = 10;
constexpr unsigned int k_antennas_number = 1;

} // namespace

using mask_t = std::vector<std::pair<double, double>>;

bool cfg_nr_waveform_t::set_nr_ntn(bool nr_ntn) { return m_waveform.set_nr_ntn(nr_ntn); }
bool cfg_nr_waveform_t::get_nr_ntn() const { return m_waveform.get_nr_ntn(); }
bool cfg_nr_waveform_t::set_frame_number(unsigned int number) { return m_waveform.set_frames_number(number); }
unsigned int cfg_nr_waveform_t::get_frame_number() const { return m_waveform.get_frame_number(); }
bool cfg_nr_waveform_t::set_subframes_number(unsigned int)
{
    return m_waveform.set_subframes_number(k_subframes_number);
}
unsigned int cfg_nr_waveform_t::get_subframes_number() const { return m_waveform.get_subframes_number(); }
bool cfg_nr_waveform_t::set_mirror_spectrum(bool mirror) { return m_waveform.set_mirror_spectrum(mirror); }
bool cfg_nr_waveform_t::get_mirror_spectrum() const { return m_waveform.get_mirror_spectrum(); }
bool cfg_nr_waveform_t::set_phase_compensation(bool enable) { return m_waveform.set_phase_compensation_enable(enable); }
bool cfg_nr_waveform_t::get_phase_compensation() const { return m_waveform.get_phase_compensation_enable(); }
bool cfg_nr_waveform_t::set_radio_frequency(unsigned long long hertz)
{
    return m_waveform.set_radio_frequency(static_cast<double>(hertz));
}
unsigned long long cfg_nr_waveform_t::get_radio_frequency() const
{
    return common_lib::bounded_cast<unsigned long long>(m_waveform.get_radio_frequency());
}
double cfg_nr_waveform_t::get_radio_frequency_hz() const { return m_waveform.get_radio_frequency(); }
bool cfg_nr_waveform_t::set_antennas_number(unsigned int) { return m_waveform.set_antennas_number(k_antennas_number); }
unsigned int cfg_nr_waveform_t::get_antennas_number() const { return m_waveform.get_antennas_number(); }
bool cfg_nr_waveform_t::set_standard_rules(bool standard_rules)
{
    return m_waveform.set_standard_rules(standard_rules);
}
bool cfg_nr_waveform_t::get_standard_rules() const { return m_waveform.get_standard_rules(); }

unsigned long long cfg_nr_waveform_t::get_waveform_sample_rate() const
{
    return common_lib::bounded_cast<unsigned long long>(m_waveform.get_waveform_sample_rate_hz());
}
double cfg_nr_waveform_t::get_waveform_length() const { return m_waveform.get_waveform_length_s(); }
unsigned long long cfg_nr_waveform_t::get_waveform_sample_points() const
{
    return m_waveform.get_waveform_sample_points();
}

bool cfg_nr_waveform_t::set_crest_factor_reduction_enable(bool enable)
{
    return m_waveform.set_crest_factor_reduction_enable(enable);
}
bool cfg_nr_waveform_t::get_crest_factor_reduction_enable() const
{
    return m_waveform.is_crest_factor_reduction_enable();
}
bool cfg_nr_waveform_t::set_cfr_target_papr(double target_papr) { return m_waveform.set_cfr_target_papr(target_papr); }
double cfg_nr_waveform_t::get_cfr_target_papr() const { return m_waveform.get_cfr_target_papr(); }
bool cfg_nr_waveform_t::set_cfr_max_iteration(unsigned int number) { return m_waveform.set_cfr_max_iteration(number); }
unsigned int cfg_nr_waveform_t::get_cfr_max_iteration() const { return m_waveform.get_cfr_max_iteration(); }
bool cfg_nr_waveform_t::set_cfr_cancel_percent(double percent) { return m_waveform.set_cfr_cancel_percent(percent); }
double cfg_nr_waveform_t::get_cfr_cancel_percent() const { return m_waveform.get_cfr_cancel_percent(); }
bool cfg_nr_waveform_t::set_cfr_block_size(unsigned int block_size)
{
    return m_waveform.set_cfr_block_size(block_size);
}
unsigned int cfg_nr_waveform_t::get_cfr_block_size() const { return m_waveform.get_cfr_block_size(); }
bool cfg_nr_waveform_t::set_cfr_filter_mask_data_arr(const mask_t& mask)
{
    return m_waveform.set_cfr_filter_mask_data_arr(mask);
}
const mask_t& cfg_nr_waveform_t::get_cfr_filter_mask_data_arr() const
{
    return m_waveform.get_cfr_filter_mask_data_arr();
}
const common_lib::lib_crest_factor_reduce_setting_t& cfg_nr_waveform_t::get_crest_factor_reduction_setting() const
{
    return m_waveform.get_crest_factor_reduction_setting();
}

unsigned int cfg_nr_waveform_t::get_carrier_number() const { return m_waveform.get_carrier_number(); }
void cfg_nr_waveform_t::add_carrier() { m_waveform.add_carrier(); }
bool cfg_nr_waveform_t::copy_carrier(unsigned int index) { return m_waveform.copy_carrier(index); }

cfg_nr_waveform_t::cfg_nr_waveform_t() : m_carrier(m_waveform) { init(); }

cfg_nr_waveform_t::~cfg_nr_waveform_t() = default;

void cfg_nr_waveform_t::init()
{
    m_waveform.init();
    m_carrier.init();
}

void cfg_nr_waveform_t::copy_configuration(const lib_nr_waveform_configure_manager_t& waveform)
{
    m_waveform = waveform;
    m_carrier.init();
}

common_lib::plib_protocol_type_t cfg_nr_waveform_t::get_protocol_type() const { return common_lib::PLIB_PROTOCOL_NR; }

cfg_nr_carrier_t* cfg_nr_waveform_t::get_carrier(unsigned int index)
{
    m_carrier.set_current_carrier_index(index);
    return &m_carrier;
}

bool cfg_nr_waveform_t::remove_carrier(unsigned int index)
{
    if (!m_waveform.remove_carrier(index))
        return false;
    m_carrier.set_current_carrier_index(0);
    return true;
}

} // namespace vek::nr_mod_lib

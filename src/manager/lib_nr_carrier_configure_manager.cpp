#include "manager/lib_nr_carrier_configure_manager.h"

#include "manager/lib_nr_occupied_width.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <iostream>

// The carrier's own settings and its numerologies; bandwidth parts and channels are in
// lib_nr_carrier_configure_manager_lists.cpp.

namespace vek::nr_mod_lib
{

namespace
{

constexpr double k_max_frequency_offset_hz = 4e8;
constexpr double k_max_timing_offset_s = 0.01;
constexpr unsigned int k_max_init_phase = 360;
constexpr unsigned int k_max_cell_index = 1007;
constexpr double k_default_windowing_beta = 0.01;

template <class list_t, class value_t>
bool contains(const list_t& list, const value_t& value)
{
    return std::find(list.begin(), list.end(), value) != list.end();
}

/// Calls the step with the place of each bandwidth part that has the spacing.
template <class bwp_t, class step_t>
void for_each_bwp_of(lib_nr_numerology_type_t numerology, const std::vector<bwp_t>& bwps, step_t step)
{
    for (unsigned int i = 0; i < bwps.size(); ++i)
        if (bwps[i].get_numerology() == numerology)
            step(i);
}

} // namespace

lib_nr_carrier_configure_manager_t::lib_nr_carrier_configure_manager_t()
    : m_dl_ssb(lib_nr_phy_numerology_configure_manager_t(), LIB_NR_CHANNEL_FR1_100M)
{
    init();
}

void lib_nr_carrier_configure_manager_t::init()
{
    m_enable = true;
    m_frequency_offset_hz = 0.0;
    m_power_boosting = 0.0;
    m_init_phase = 0;
    m_windowing_beta = std::clamp(k_default_windowing_beta, m_windowing_beta_min, m_windowing_beta_max);
    m_windowing_method = common_lib::LIB_OFDM_WINDOWING_RAISED_COSINE;
    m_baseband_filter_enable = true;
    m_carrier_type = LIB_NR_DOWNLINK;
    m_cell_index = 0;
    m_numerology_mode = LIB_NR_NUMBEROLOGY_MODE_SINGLE;
    m_bandwidth = LIB_NR_CHANNEL_FR1_100M;

    _clear_lists();
    _init_numerology_list();
    _init_bwp_list();
    std::apply([](auto&... presets) { (presets.init(), ...); }, m_presets);
    m_dl_ssb = lib_nr_dl_ssb_configure_manager_t(get_first_enable_numerology_manager(), m_bandwidth);
    m_dl_ssb.update_frequency_offset_hz(m_radio_frequency);
    _init_downlink_lists();
    _init_uplink_lists();
    _update_downlink_bwp_reference();
    _update_uplink_bwp_reference();
}

bool lib_nr_carrier_configure_manager_t::set_nr_ntn(bool nr_ntn)
{
    if (!assign(m_nr_ntn, nr_ntn))
        return false;
    std::apply([nr_ntn](auto&... presets) { (presets.set_nr_ntn(nr_ntn), ...); }, m_presets);
    init();
    return true;
}

bool lib_nr_carrier_configure_manager_t::set_enable(bool enable) { return assign(m_enable, enable); }

void lib_nr_carrier_configure_manager_t::set_radio_frequency(double radio_frequency)
{
    if (!assign(m_radio_frequency, radio_frequency))
        return;
    m_dl_ssb.update_frequency_offset_hz(m_radio_frequency + m_frequency_offset_hz);
    for (const lib_nr_phy_numerology_configure_manager_t& numerology : m_numerologies)
        if (numerology.get_numerolgy() == m_dl_ssb.get_numerology())
            m_dl_ssb.update_by_numerology(numerology);
}

bool lib_nr_carrier_configure_manager_t::set_frequency_offset_hz(double radio_frequency, double frequency_offset)
{
    const double limited = std::clamp(frequency_offset, -k_max_frequency_offset_hz, k_max_frequency_offset_hz);
    if (!assign(m_frequency_offset_hz, limited))
        return false;
    m_dl_ssb.update_frequency_offset_hz(radio_frequency + m_frequency_offset_hz);
    return true;
}

bool lib_nr_carrier_configure_manager_t::set_timing_offset_s(double timing_offset)
{
    return assign(m_timing_offset_s, std::clamp(timing_offset, 0.0, k_max_timing_offset_s));
}

bool lib_nr_carrier_configure_manager_t::set_power_boosting(double power_boosting)
{
    return assign_power(m_power_boosting, power_boosting);
}

bool lib_nr_carrier_configure_manager_t::set_init_phase(unsigned int init_phase)
{
    return assign(m_init_phase, std::min(init_phase, k_max_init_phase));
}

void lib_nr_carrier_configure_manager_t::set_windowing_beta(double windowing_beta)
{
    assign(m_windowing_beta, std::clamp(windowing_beta, m_windowing_beta_min, m_windowing_beta_max));
}

void lib_nr_carrier_configure_manager_t::set_windowing_method(
    common_lib::lib_ofdm_windowing_method_type_t windowing_method)
{
    m_windowing_method = windowing_method;
}

bool lib_nr_carrier_configure_manager_t::set_baseband_filter_enable(bool enable)
{
    return assign(m_baseband_filter_enable, enable);
}

bool lib_nr_carrier_configure_manager_t::set_carrier_type(lib_carrier_type_t carrier_type)
{
    carrier_type = known_or_first(carrier_type, LIB_NR_PRACH);
    if (carrier_type == m_carrier_type)
        return false;
    init();
    m_carrier_type = carrier_type;
    return true;
}

bool lib_nr_carrier_configure_manager_t::set_cell_index(unsigned int cell_index)
{
    return assign(m_cell_index, std::min(cell_index, k_max_cell_index));
}

bool lib_nr_carrier_configure_manager_t::set_numerology_mode(lib_nr_numerology_mode_t numerology_mode)
{
    if (!assign(m_numerology_mode, numerology_mode))
        return false;
    _update_numerology_list();
    return true;
}

bool lib_nr_carrier_configure_manager_t::set_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    if (bandwidth == m_bandwidth)
        return false;
    if (m_nr_ntn && !lib_nr_phy_common_t::is_ntn_bandwidth(bandwidth))
        bandwidth = LIB_NR_CHANNEL_FR1_30M;
    if (bandwidth > LIB_NR_CHANNEL_FR2_2_2000M)
        return false;
    const bool changed = assign(m_bandwidth, bandwidth);
    _update_carrier_bandwidth();
    _update_numerology_list();
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    if (!_is_single_numerology() || !lib_nr_phy_common_t::check_numerology_bandwidth_valid(numerology, m_bandwidth))
        return false;
    lib_nr_phy_numerology_configure_manager_t& entry = m_numerologies.front();
    const bool changed = entry.get_numerolgy() != numerology;
    entry.set_numerology(numerology, m_bandwidth);
    set_numerology_rb_size(0, entry.get_rb_size());
    _update_ssb_and_prs_numerology();
    _update_bwp_list();
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_numerology_enable(unsigned int index, bool enable)
{
    lib_nr_phy_numerology_configure_manager_t& entry = m_numerologies.at(index);
    const bool enabled_before = entry.get_enable();
    entry.set_enable(enable || _is_single_numerology());
    if (get_enable_numerology_list().empty())
        entry.set_enable(true);
    _update_ssb_and_prs_numerology();
    _update_bwp_list();
    return entry.get_enable() != enabled_before;
}

bool lib_nr_carrier_configure_manager_t::set_numerology_rb_size(unsigned int index, unsigned int rb_size)
{
    lib_nr_phy_numerology_configure_manager_t& entry = m_numerologies.at(index);
    const bool changed = entry.set_rb_size(rb_size);
    const lib_nr_numerology_type_t numerology = entry.get_numerolgy();
    _move_to_numerology(numerology);
    for_each_bwp_of(numerology, m_dl_bwps,
                    [this](unsigned int i) { set_dl_bwp_rb_size(i, m_dl_bwps[i].get_bwp_rb_size()); });
    for_each_bwp_of(numerology, m_ul_bwps, [&](unsigned int i) {
        set_ul_bwp_rb_number(i, m_ul_bwps[i].get_rb_number(), entry.get_rb_start(), entry.get_rb_size());
    });
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_numerology_rb_start(unsigned int index, unsigned int rb_start)
{
    lib_nr_phy_numerology_configure_manager_t& entry = m_numerologies.at(index);
    const bool changed = entry.set_rb_start(rb_start);
    const lib_nr_numerology_type_t numerology = entry.get_numerolgy();
    _move_to_numerology(numerology);
    for_each_bwp_of(numerology, m_dl_bwps, [this](unsigned int i) {
        set_dl_bwp_rb_start(i, m_dl_bwps[i].get_bwp_rb_start());
        set_dl_bwp_rb_size(i, m_dl_bwps[i].get_bwp_rb_size());
    });
    for_each_bwp_of(numerology, m_ul_bwps, [&](unsigned int i) {
        set_ul_bwp_rb_offset(i, m_ul_bwps[i].get_rb_offset(), entry.get_rb_start(), entry.get_rb_size());
        set_ul_bwp_rb_number(i, m_ul_bwps[i].get_rb_number(), entry.get_rb_start(), entry.get_rb_size());
    });
    return changed;
}

lib_nr_phy_numerology_configure_manager_t&
lib_nr_carrier_configure_manager_t::get_numerology_manager(lib_nr_numerology_type_t numerology)
{
    return m_numerologies[_numerology_index(numerology)];
}

const lib_nr_phy_numerology_configure_manager_t&
lib_nr_carrier_configure_manager_t::get_numerology_manager(lib_nr_numerology_type_t numerology) const
{
    return m_numerologies[_numerology_index(numerology)];
}

lib_nr_phy_numerology_configure_manager_t
lib_nr_carrier_configure_manager_t::get_first_enable_numerology_manager() const
{
    return _first_enabled_numerology();
}

std::vector<lib_nr_numerology_type_t> lib_nr_carrier_configure_manager_t::get_enable_numerology_list() const
{
    if (_is_single_numerology())
        return {m_numerologies.front().get_numerolgy()};
    std::vector<lib_nr_numerology_type_t> list;
    for (const lib_nr_phy_numerology_configure_manager_t& entry : m_numerologies)
        if (entry.get_enable())
            list.push_back(entry.get_numerolgy());
    return list;
}

unsigned int
lib_nr_carrier_configure_manager_t::get_numerology_manager_index_by_bwp(lib_nr_numerology_type_t numerology) const
{
    const std::vector<lib_nr_numerology_type_t> list = get_enable_numerology_list();
    const auto place = std::find(list.begin(), list.end(), numerology);
    return place == list.end() ? 0 : static_cast<unsigned int>(place - list.begin());
}

unsigned int lib_nr_carrier_configure_manager_t::get_configured_bandwidth() const
{
    unsigned int bandwidth = 0;
    for (const lib_nr_phy_numerology_configure_manager_t& entry : m_numerologies)
        if (entry.get_enable())
            bandwidth = entry.get_occupied_bandwidth();
    return bandwidth;
}

double lib_nr_carrier_configure_manager_t::get_base_sample_rate() const
{
    std::cout << "--------get_carrier_sample_rate()---------" << std::endl;
    lib_nr_occupied_width_t width;
    for (const lib_nr_phy_numerology_configure_manager_t& entry : m_numerologies) {
        if (!entry.get_enable())
            continue;
        std::cout << "ibandwith_tmp:" << entry.get_occupied_bandwidth() << std::endl;
        width.include(entry);
    }
    return width.get_sample_rate();
}

double lib_nr_carrier_configure_manager_t::get_frequency_offset_of_point_a() const
{
    std::cout << "--------get_carrier_sample_rate()---------" << std::endl;
    std::uint32_t widest = 0;
    double point_a = 0.0;
    for (const lib_nr_phy_numerology_configure_manager_t& entry : m_numerologies) {
        if (!entry.get_enable())
            continue;
        const std::uint32_t spacing = lib_nr_phy_common_t::get_scs_hz_value(entry.get_numerolgy());
        const std::uint32_t half = k_subcarriers_per_rb * entry.get_rb_size() * spacing / 2;
        const std::uint32_t shift = entry.get_k0() * spacing;
        const std::uint32_t width = 2 * (half + shift);
        std::cout << "ibandwith_tmp:" << width << std::endl;
        if (width > widest) {
            widest = width;
            point_a = -static_cast<double>(half - shift);
        }
    }
    return point_a;
}

void lib_nr_carrier_configure_manager_t::_init_numerology_list()
{
    std::vector<lib_nr_numerology_type_t> spacings = lib_nr_phy_common_t::get_valid_numerology_list(m_bandwidth);
    if (_is_single_numerology())
        spacings.resize(1);
    m_numerologies.clear();
    for (const lib_nr_numerology_type_t spacing : spacings)
        m_numerologies.emplace_back().set_numerology(spacing, m_bandwidth);
    m_numerologies.front().set_enable(true);
    if (_is_single_numerology())
        return;
    for (unsigned int i = 0; i < m_numerologies.size(); ++i)
        set_numerology_rb_size(i, m_numerologies[i].get_rb_size());
}

void lib_nr_carrier_configure_manager_t::_update_numerology_list()
{
    if (_is_single_numerology()) {
        m_numerologies.resize(1);
        lib_nr_phy_numerology_configure_manager_t& entry = m_numerologies.front();
        if (!entry.set_numerology(entry.get_numerolgy(), m_bandwidth))
            entry.set_numerology(lib_nr_phy_common_t::get_valid_numerology_list(m_bandwidth).front(), m_bandwidth);
        entry.set_enable(true);
        entry.init_resource_occupation();
    }
    else {
        _init_numerology_list();
    }
    _update_ssb_and_prs_numerology();
    _update_bwp_list();
}

void lib_nr_carrier_configure_manager_t::_update_carrier_bandwidth()
{
    _update_numerology_list();
    m_dl_ssb.update_by_bandwidth(_enabled_numerology(m_dl_ssb.get_numerology()), m_bandwidth);
    if (_is_single_numerology()) {
        for (lib_nr_ul_prach_configure_manager_t& prach : m_ul_prachs)
            prach.update_by_bandwidth(m_numerologies.front(), m_bandwidth);
    }
    else {
        std::cout << "_update_carrier_bandwidth: It is not applicable for PRACH carrier.\n " << std::endl;
    }
}

void lib_nr_carrier_configure_manager_t::_update_ssb_and_prs_numerology()
{
    set_dl_ssb_numerology(m_dl_ssb.get_numerology());
    _update_prs_numerology();
}

void lib_nr_carrier_configure_manager_t::_update_prs_numerology()
{
    for (unsigned int i = 0; i < m_dl_prss.size(); ++i)
        set_dl_prs_numerology(i, m_dl_prss[i].get_numerology());
}

void lib_nr_carrier_configure_manager_t::_move_to_numerology(lib_nr_numerology_type_t numerology)
{
    _update_bwp_list();
    set_dl_ssb_numerology(numerology);
    _update_prs_numerology();
}

std::size_t lib_nr_carrier_configure_manager_t::_numerology_index(lib_nr_numerology_type_t numerology) const
{
    for (std::size_t i = 0; i < m_numerologies.size(); ++i)
        if (m_numerologies[i].get_numerolgy() == numerology)
            return i;
    std::cout << "lib_nr_carrier_configure_manager_t::get_numerology_manager : get numerology error" << std::endl;
    return m_numerologies.size() - 1;
}

const lib_nr_phy_numerology_configure_manager_t& lib_nr_carrier_configure_manager_t::_first_enabled_numerology() const
{
    if (!_is_single_numerology())
        for (const lib_nr_phy_numerology_configure_manager_t& entry : m_numerologies)
            if (entry.get_enable())
                return entry;
    return m_numerologies.front();
}

const lib_nr_phy_numerology_configure_manager_t&
lib_nr_carrier_configure_manager_t::_enabled_numerology(lib_nr_numerology_type_t wanted) const
{
    if (contains(get_enable_numerology_list(), wanted))
        return m_numerologies[_numerology_index(wanted)];
    return _first_enabled_numerology();
}

} // namespace vek::nr_mod_lib

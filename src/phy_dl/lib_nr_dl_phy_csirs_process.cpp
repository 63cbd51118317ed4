#include "phy_dl/lib_nr_dl_phy_csirs_process.h"

#include "common/lib_common_math.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_reference_signal.h"
#include "phy_common/tables/lib_nr_csirs_cdm_table.h"
#include "phy_common/tables/lib_nr_csirs_location_table.h"

#include <algorithm>
#include <cmath>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_rb_granularity = 4;
constexpr unsigned int k_min_rb_number = 24;

unsigned int whole_steps(unsigned int rbs) { return rbs / k_rb_granularity * k_rb_granularity; }

lib_nr_channel_resource_manager_t& grid() { return lib_nr_channel_resource_manager_t::get_inst(); }

} // namespace

bool lib_nr_dl_phy_csirs_process_t::set_waveform_config(unsigned int carrier, unsigned int /*numerology*/,
                                                        unsigned int csirs,
                                                        const lib_nr_waveform_configure_manager_t& waveform)
{
    const lib_nr_carrier_configure_manager_t& configuration = waveform.get_carrier(carrier);
    const lib_nr_dl_csirs_configure_manager_t& manager = configuration.get_dl_csirs(csirs);
    const lib_nr_dl_bwp_configure_manager_t& bwp = configuration.get_dl_bwp(manager.get_bwp_id());
    set_standard_rules(waveform.get_standard_rules());
    set_enable(manager.get_enable());
    set_power_bosting(manager.get_power_bosting());
    set_zero_power(manager.get_zero_power());
    set_antenna_port(manager.get_antenna_port());
    set_nid(manager.get_nid());
    set_csirs_type(manager.get_csirs_type());
    set_rb_offset(manager.get_rb_offset());
    set_rb_num(manager.get_rb_num());
    set_table_idx(manager.get_table_idx());
    set_l0(manager.get_l0());
    set_l1(manager.get_l1());
    set_freq_domain_bitmap(manager.get_freq_domain_bitmap());
    set_density(manager.get_density());
    set_density_prb_allocation(manager.get_density_prb_allocation());
    set_bwp_rb_start(bwp.get_bwp_rb_start());
    set_bwp_rb_size(bwp.get_bwp_rb_size());
    set_symbol_per_slot(lib_nr_phy_common_t::get_symbol_number_in_slot(bwp.get_numerology(), bwp.get_cp_type()));
    return true;
}

void lib_nr_dl_phy_csirs_process_t::set_power_bosting(double power)
{
    m_amplitude = common_lib::lib_common_math_t::db_value_to_amplitude_ratio(power);
}

void lib_nr_dl_phy_csirs_process_t::set_antenna_port(const std::vector<csirs_antenna_port_t>& ports)
{
    m_antenna_port = ports.empty() ? CSIRS_ANTENNA_NONE : ports.front();
}

bool lib_nr_dl_phy_csirs_process_t::csirs_process(unsigned int slot)
{
    return m_enable && nr_dl_phy_csirs_re_map(slot, LIB_NR_REMAPP_MODE_ENCODE_MAP);
}

bool lib_nr_dl_phy_csirs_process_t::nr_dl_phy_csirs_re_map(unsigned int slot, lib_nr_remap_mode_t mode)
{
    if (mode != LIB_NR_REMAPP_MODE_UI_VIEW_MAP && mode != LIB_NR_REMAPP_MODE_ENCODE_MAP) {
        std::cout << "lib_nr_dl_phy_csirs_process_t::nr_dl_phy_csirs_re_map : Error RE map mode!" << std::endl;
        return false;
    }
    if (!_prepare())
        return false;
    _list_runs(slot);
    if (mode == LIB_NR_REMAPP_MODE_UI_VIEW_MAP)
        return grid().mark_runs(m_runs, LIB_NR_RESOURCE_MAPPING_CSIRS);
    _write(slot);
    return true;
}

bool lib_nr_dl_phy_csirs_process_t::_prepare()
{
    if (!_get_fi_from_bitmap())
        return false;
    _get_ki();
    _csirs_location_table_init();
    if (!_csirs_wt_wf_init())
        return false;
    _get_csirs_rb_position();
    return true;
}

/// f(0), f(1), ... of clause 7.4.1.5.3, as many as the row reads.
bool lib_nr_dl_phy_csirs_process_t::_get_fi_from_bitmap()
{
    m_row = get_csirs_location_row(m_table_idx);
    if (m_row == nullptr) {
        std::cout << "get_fi_from_bitmap occur error: table_index exceed the max limit.\n" << std::endl;
        return false;
    }
    m_f.clear();
    for (unsigned int i = 0; i < m_bitmap.size(); ++i)
        if (m_bitmap[i] != 0)
            m_f.push_back(i);
    m_f.resize(m_row->bitmap_ones());
    return true;
}

void lib_nr_dl_phy_csirs_process_t::_get_ki()
{
    m_k.clear();
    for (const unsigned int f : m_f)
        m_k.push_back(m_row->k_step * f);
}

void lib_nr_dl_phy_csirs_process_t::_csirs_location_table_init()
{
    m_places.clear();
    for (const lib_nr_csirs_start_t& l : m_row->l)
        for (const lib_nr_csirs_start_t& k : m_row->k)
            m_places.push_back({m_k[k.index] + k.shift, m_first_symbols[l.index] + l.shift});
    const auto [first_density, second_density] = m_row->densities;
    m_row_density = m_density == second_density && second_density != 0.0 ? second_density : first_density;
    m_alpha = m_row->ports == 1 ? m_row_density : 2 * m_row_density;
    m_rb_step = std::max(1U, static_cast<unsigned int>(std::lround(1 / m_row_density)));
}

bool lib_nr_dl_phy_csirs_process_t::_csirs_wt_wf_init()
{
    m_weights = get_csirs_cdm_table(m_csirs_type);
    if (m_weights == nullptr)
        std::cout << "csirs_wt_wf_init error!.\n" << std::endl;
    return m_weights != nullptr;
}

void lib_nr_dl_phy_csirs_process_t::_get_csirs_rb_position()
{
    m_first_rb = std::max(m_bwp_rb_start, whole_steps(m_rb_offset));
    const unsigned int end = std::max(m_bwp_rb_start + m_bwp_rb_size, m_first_rb);
    const unsigned int to_end = std::min(end - m_first_rb, m_rb_num);
    unsigned int whole = whole_steps(to_end);
    if (whole < std::min(m_bwp_rb_size, k_min_rb_number)) {
        std::cout << "error: m_rb_num should greater than min\u2061(24,m_bwp_rb_size)! irb_num:" << whole << std::endl;
        whole = k_min_rb_number;
    }
    m_rb_count = m_rules.pick(lib_nr_deviation_t::csirs_place, whole, to_end);
    if (m_rb_count != 0 && m_row_density == 0.5 && m_first_rb % 2 != (m_density_prb_allocation == ODD_PRBS ? 1U : 0U)) {
        ++m_first_rb;
        --m_rb_count;
    }
}

/// A run for each l' and k' of each place.
void lib_nr_dl_phy_csirs_process_t::_list_runs(unsigned int slot)
{
    const unsigned int first_subcarrier =
        k_subcarriers_per_rb *
        (m_first_rb - m_rules.pick(lib_nr_deviation_t::csirs_place, m_bwp_rb_start, 0u)); // what it counts from
    const unsigned int rbs = (m_rb_count + m_rb_step - 1) / m_rb_step;
    m_runs.clear();
    for (const place_t& place : m_places)
        for (unsigned int l = 0; l < m_row->l_prime_number; ++l)
            for (unsigned int k = 0; k < m_row->k_prime_number; ++k)
                m_runs.push_back({m_symbol_per_slot * slot + place.l + l,
                                  static_cast<std::int32_t>(place.k + first_subcarrier + k), rbs,
                                  m_rb_step * k_subcarriers_per_rb});
}

/// The length of a symbol's sequence: one more than the largest m' of clause 7.4.1.5.3.
std::size_t lib_nr_dl_phy_csirs_process_t::_nr_dl_phy_csirs_cal_mp() const
{
    const auto highest = std::max_element(m_places.begin(), m_places.end(),
                                          [](const place_t& a, const place_t& b) { return a.k < b.k; });
    const unsigned int last = m_first_rb + std::max(m_rb_count, 1U) - 1;
    return _m_of_rb(last) + _m_of_place(*highest) + m_row->k_prime_number;
}

std::size_t lib_nr_dl_phy_csirs_process_t::_m_of_rb(unsigned int rb) const
{
    return static_cast<std::size_t>(rb * m_alpha);
}

std::size_t lib_nr_dl_phy_csirs_process_t::_m_of_place(const place_t& place) const
{
    return static_cast<std::size_t>(place.k * m_row_density / k_subcarriers_per_rb);
}

void lib_nr_dl_phy_csirs_process_t::_nr_dl_phy_csirs_sequence_gen(unsigned int symbol_in_frame)
{
    for (unsigned int l = 0; l < m_row->l_prime_number; ++l) {
        const unsigned int c_init = lib_nr_csirs_initial_value(symbol_in_frame + l, m_nid);
        m_sequences[l].clear();
        lib_nr_append_reference_signal(c_init, _nr_dl_phy_csirs_cal_mp(), m_sequences[l]);
        if (m_explanation)
            m_explanation->c_init.push_back(c_init);
    }
}

void lib_nr_dl_phy_csirs_process_t::_write(unsigned int slot)
{
    if (m_antenna_port == CSIRS_ANTENNA_NONE || m_antenna_port > m_row->ports)
        return;
    const unsigned int runs_of_place = m_row->l_prime_number * m_row->k_prime_number;
    const unsigned int port = m_antenna_port - 1;
    const unsigned int s = port % runs_of_place;
    // A port has one place, the only port of row 1 three.
    const std::size_t first = port / runs_of_place;
    const std::size_t end = m_row->ports == 1 ? m_places.size() : first + 1;
    const double amplitude =
        m_rules.pick(lib_nr_deviation_t::csirs_zero_power, m_amplitude, m_is_zero_power ? 0.0 : m_amplitude);
    _nr_dl_phy_csirs_sequence_gen(m_runs[first * runs_of_place].symbol);
    const auto step = static_cast<std::size_t>(m_rb_step * m_alpha);
    for (std::size_t i = first * runs_of_place; i < end * runs_of_place; ++i) {
        const lib_nr_resource_run_t& run = m_runs[i];
        const std::size_t l = i % runs_of_place / m_row->k_prime_number;
        const std::size_t k = i % m_row->k_prime_number;
        const std::size_t m = _m_of_rb(m_first_rb) + k + _m_of_place(m_places[i / runs_of_place]);
        m_values.resize(run.count);
        for (std::size_t n = 0; n < run.count; ++n)
            m_values[n] = m_sequences[l][m + n * step];
        grid().write_run(run, m_values.data(), amplitude * m_weights->wf[s][k] * m_weights->wt[s][l]);
    }
    if (m_explanation)
        _explain({m_runs.begin() + static_cast<std::ptrdiff_t>(first * runs_of_place),
                  m_runs.begin() + static_cast<std::ptrdiff_t>(end * runs_of_place)},
                 slot);
}

void lib_nr_dl_phy_csirs_process_t::_explain(const std::vector<lib_nr_resource_run_t>& runs, unsigned int slot) const
{
    m_explanation->add_runs(runs, m_symbol_per_slot * slot);
    m_explanation->add_cells(runs, m_symbol_per_slot * slot);
    m_explanation->figures = {{"n_id", m_nid}, {"row", m_table_idx}, {"ports", m_row->ports}, {"port", m_antenna_port}};
}

} // namespace vek::nr_mod_lib

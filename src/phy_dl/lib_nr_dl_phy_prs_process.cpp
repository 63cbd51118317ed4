#include "phy_dl/lib_nr_dl_phy_prs_process.h"

#include "common/lib_common_math.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_reference_signal.h"
#include "phy_common/tables/lib_nr_prs_offset_table.h"

#include <algorithm>
#include <cstring>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_most_rbs = 1u << 16;

lib_nr_channel_resource_manager_t& grid() { return lib_nr_channel_resource_manager_t::get_inst(); }

/// Frequency offsets k' of the symbols; those of comb 2 and a printed line for a comb that is none.
const lib_nr_prs_offset_row_t& get_k(lib_nr_prs_comb_size_t comb)
{
    const auto& rows = get_prs_offset_table();
    if (comb < rows.size())
        return rows[comb];
    std::cout << "lib_nr_dl_phy_prs_process_t::lib_nr_dl_prs_configure_manager_t::_get_comb_size : Error comb size!"
              << std::endl;
    return rows.front();
}

} // namespace

bool lib_nr_dl_phy_prs_process_t::set_waveform_config(unsigned int carrier, unsigned int /*numerology*/,
                                                      unsigned int prs,
                                                      const lib_nr_waveform_configure_manager_t& waveform)
{
    using manager_t = lib_nr_dl_prs_configure_manager_t;
    const manager_t& manager = waveform.get_carrier(carrier).get_dl_prs(prs);
    set_standard_rules(waveform.get_standard_rules());
    m_amplitude = common_lib::lib_common_math_t::db_value_to_amplitude_ratio(manager.get_power());
    m_slot_symbols = lib_nr_phy_common_t::get_symbol_number_in_slot(manager.get_numerology(), manager.get_cp_type());
    m_slots_per_frame = lib_nr_phy_common_t::get_slot_in_frame(manager.get_numerology());
    m_n_id = manager.get_n_id();
    m_rb_number = manager.get_rb_number();
    m_rb_offset = std::min(manager.get_rb_offset(), k_most_rbs); // a disabled one may hold anything
    m_comb_size = manager.get_comb_size();
    m_comb = manager_t::_get_comb_size(m_comb_size);
    m_periodicity = manager.get_periodicity();
    m_offset = manager.get_set_slot_offset() + manager.get_slot_offset();
    m_repetitions = manager_t::_get_reptition_factor(manager.get_reptition_factor());
    m_time_gap = manager_t::_get_time_gap(manager.get_time_gap());
    m_muting_factor = manager_t::_get_muting_factor(manager.get_muting_factor());
    m_muting_option_1 = manager.get_muting_option_1_v();
    m_muting_option_2 = manager.get_muting_option_2_v();
    m_re_offset = manager.get_re_offset();
    m_symbol_offset = manager.get_symbol_offset();
    m_symbol_number = manager_t::_get_symbol_number(manager.get_symbol_number());
    return true;
}

bool lib_nr_dl_phy_prs_process_t::prs_encode_process(unsigned int slot)
{
    _phy_prs_encode_re_map(slot);
    return true;
}

bool lib_nr_dl_phy_prs_process_t::dl_phy_prs_remap(unsigned int slot, lib_nr_remap_mode_t mode)
{
    switch (mode) {
    case LIB_NR_REMAPP_MODE_UI_VIEW_MAP:
        _phy_prs_view_re_map(slot);
        return true;
    case LIB_NR_REMAPP_MODE_ENCODE_MAP:
        _phy_prs_encode_re_map(slot);
        return true;
    }
    std::cout << "lib_nr_phy_prs_process_t::phy_prs_remap : Error RE map mode!" << std::endl;
    return false;
}

bool lib_nr_dl_phy_prs_process_t::_is_exist_prs(unsigned int slot) const
{
    return m_rules.pick(lib_nr_deviation_t::prs_occasions, _is_own_occasion(slot), _is_standard_occasion(slot));
}

bool lib_nr_dl_phy_prs_process_t::_is_own_occasion(unsigned int slot) const
{
    if (slot < m_offset)
        return false;
    const unsigned int since = slot - m_offset;
    const unsigned int in_period = since % m_periodicity;
    if (in_period > (m_repetitions - 1) * m_time_gap)
        return false;
    if (!m_muting_option_1.empty())
        return m_muting_option_1[since % (m_periodicity * m_muting_factor) % m_muting_option_1.size()] != 0;
    if (!m_muting_option_2.empty())
        return m_muting_option_2[in_period / m_time_gap % m_muting_option_2.size()] != 0;
    return true;
}

/// TS 38.211 clause 7.4.1.7.4, TS 38.214 clause 5.1.6.5. The waveform begins at system frame 0, ahead of which periods
/// are counted on.
bool lib_nr_dl_phy_prs_process_t::_is_standard_occasion(unsigned int slot) const
{
    const auto floor_divided = [](std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); };
    const auto bit_of = [&](const std::vector<unsigned char>& bits, std::int64_t number) {
        const auto size = static_cast<std::int64_t>(bits.size());
        return bits.empty() || bits[static_cast<std::size_t>(number - floor_divided(number, size) * size)] != 0;
    };
    const std::int64_t since = std::int64_t{m_frame} * m_slots_per_frame + slot - m_offset;
    const std::int64_t period = floor_divided(since, m_periodicity);
    const std::int64_t in_period = since - period * m_periodicity;
    const std::int64_t repetition = in_period / m_time_gap;
    return in_period % m_time_gap == 0 && repetition < m_repetitions &&
           bit_of(m_muting_option_1, floor_divided(period, m_muting_factor)) && bit_of(m_muting_option_2, repetition);
}

/// The symbols of a slot that are sent, counted in the slot.
std::vector<unsigned int> lib_nr_dl_phy_prs_process_t::_symbols_without_ssb(unsigned int slot) const
{
    std::vector<unsigned int> symbols;
    const unsigned int width = grid().get_mapped_subcarrier_number();
    for (unsigned int i = 0; i < m_symbol_number; ++i) {
        const unsigned int symbol = m_symbol_offset + i;
        const std::uint8_t* const owners = grid().get_owner_row(slot * m_slot_symbols + symbol);
        if (symbol < m_slot_symbols && owners && !std::memchr(owners, LIB_NR_RESOURCE_MAPPING_SSB, width))
            symbols.push_back(symbol);
    }
    return symbols;
}

void lib_nr_dl_phy_prs_process_t::_phy_prs_view_re_map(unsigned int slot)
{
    if (!_is_exist_prs(slot))
        return;
    m_runs.clear();
    for (const unsigned int symbol : _symbols_without_ssb(slot))
        m_runs.push_back({slot * m_slot_symbols + symbol, static_cast<std::int32_t>(m_rb_offset * k_subcarriers_per_rb),
                          m_rb_number * k_subcarriers_per_rb, 1});
    grid().mark_runs(m_runs, LIB_NR_RESOURCE_MAPPING_PRS);
}

void lib_nr_dl_phy_prs_process_t::_phy_prs_encode_re_map(unsigned int slot)
{
    if (!_is_exist_prs(slot))
        return;
    const unsigned int values_per_rb = k_subcarriers_per_rb / m_comb;
    const lib_nr_prs_offset_row_t& k = get_k(m_comb_size);
    m_runs.clear();
    for (const unsigned int symbol : _symbols_without_ssb(slot)) {
        const unsigned int comb_offset = m_re_offset + k[(symbol - m_symbol_offset) % k.size()];
        _phy_prs_rs_generation(slot, symbol);
        m_runs.push_back({slot * m_slot_symbols + symbol,
                          static_cast<std::int32_t>(m_rb_offset * k_subcarriers_per_rb) +
                              static_cast<std::int32_t>(comb_offset % m_comb),
                          m_rb_number * values_per_rb, m_comb});
        grid().write_run(m_runs.back(), m_sequence.data() + std::size_t{m_rb_offset} * values_per_rb, m_amplitude);
    }
    if (!m_explanation)
        return;
    m_explanation->add_runs(m_runs, slot * m_slot_symbols);
    m_explanation->add_cells(m_runs, slot * m_slot_symbols);
    m_explanation->figures = {{"n_id", m_n_id}, {"comb", m_comb}};
}

/// The sequence counts from resource block 0 of the grid.
void lib_nr_dl_phy_prs_process_t::_phy_prs_rs_generation(unsigned int slot, unsigned int symbol)
{
    const unsigned int counted = m_rules.pick(lib_nr_deviation_t::prs_sequence, symbol, slot * m_slot_symbols + symbol);
    const unsigned int c_init = lib_nr_prs_initial_value(counted, m_n_id);
    m_sequence.clear();
    lib_nr_append_reference_signal(c_init, std::size_t{m_rb_number + m_rb_offset} * (k_subcarriers_per_rb / m_comb),
                                   m_sequence);
    if (m_explanation)
        m_explanation->c_init.push_back(c_init);
}

} // namespace vek::nr_mod_lib

#include "phy_ul/lib_nr_ul_phy_pucch_base.h"

#include "common/lib_common_math.h"
#include "manager/lib_nr_carrier_configure_manager.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>

// Where the symbols go in the frame: the view and the payload.

namespace vek::nr_mod_lib
{

namespace
{

constexpr const char* k_outside = "its cells lie outside the slot or the carrier's resource blocks";

} // namespace

unsigned int lib_nr_ul_phy_pucch_base_t::_get_first_rb(bool is_second_hop) const
{
    return _bwp().get_rb_offset() + (is_second_hop ? m_pucch->get_second_hop_prb() : m_pucch->get_rb_offset());
}

/// Whether hopping between slots has an allocated slot in the second hop, by its place in the list. The own side is
/// the number of the slot in the resource map, and the place in the signal; the standard counts the slots since the
/// first of each repetition, TS 38.213 clause 9.2.6.
bool lib_nr_ul_phy_pucch_base_t::_is_slot_moved(std::size_t place, bool own) const
{
    if (!m_pucch->get_inter_slot_frequency_hopping() || m_pucch->get_use_interlace_pucch())
        return false;
    const std::vector<unsigned int>& slots = m_pucch->get_allocated_slots();
    const std::size_t repetitions = std::max(m_pucch->get_number_of_slots_for_pucch_repetition(), 1u);
    const unsigned int first = slots.at(place - place % repetitions);
    return m_rules.pick(lib_nr_deviation_t::pucch_slot_hopping, own, (slots[place] - first) % 2 == 1);
}

/// The cells of a row of the slot: RB by RB on an interlace, in one piece otherwise.
std::vector<lib_nr_resource_run_t>
lib_nr_ul_phy_pucch_base_t::_list_runs(unsigned int slot, unsigned int row, bool is_slot_moved,
                                       const std::vector<unsigned short>& positions) const
{
    const unsigned int symbol = slot * _get_slot_symbols() + m_pucch->get_first_symbol() + row;
    std::vector<lib_nr_resource_run_t> runs;
    for (const unsigned short rb : positions)
        runs.push_back({symbol, static_cast<std::int32_t>(rb * k_subcarriers_per_rb), k_subcarriers_per_rb});
    if (!m_pucch->get_use_interlace_pucch()) {
        const unsigned int first_rb = _get_first_rb(is_slot_moved || _is_second_hop(row, m_pucch->get_symbol_num()));
        runs.push_back({symbol, static_cast<std::int32_t>(first_rb * k_subcarriers_per_rb),
                        m_pucch->get_rb_num() * k_subcarriers_per_rb});
    }
    return runs;
}

bool lib_nr_ul_phy_pucch_base_t::_is_dmrs_row(unsigned int row) const
{
    switch (m_pucch->get_pucch_format()) {
    case LIB_NR_UL_PUCCH_FORMAT_1:
        return row % 2 == 0;
    case LIB_NR_UL_PUCCH_FORMAT_3:
    case LIB_NR_UL_PUCCH_FORMAT_4: {
        const std::vector<unsigned int>& rows = _get_dmrs_symbol_postion();
        return std::find(rows.begin(), rows.end(), row) != rows.end();
    }
    default:
        return false;
    }
}

bool lib_nr_ul_phy_pucch_base_t::_deal_physical_resource_mapping(const slots_t& slots, payload_grid_t& grid) const
{
    std::vector<unsigned short> positions;
    if (!_get_interlace_position(positions))
        return true;
    const double amplitude = common_lib::lib_common_math_t::db_value_to_amplitude_ratio(m_pucch->get_power());
    lib_nr_cell_count_t added;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        const unsigned int slot = m_pucch->get_allocated_slots().at(i);
        const bool is_slot_moved = _is_slot_moved(i, i % 2 == 1);
        lib_nr_explanation_t* const explanation = _explanation_of(slot);
        for (unsigned int row = 0; row < slots[i].size(); ++row) {
            const std::vector<lib_nr_resource_run_t> runs = _list_runs(slot, row, is_slot_moved, positions);
            auto& resources = lib_nr_channel_resource_manager_t::get_inst();
            resources.set_content_at_work(_is_dmrs_row(row) ? LIB_NR_CELL_DMRS : LIB_NR_CELL_DATA);
            added += resources.add_stream(runs, slots[i][row], amplitude, grid);
            if (explanation)
                _explain_row(row, runs, *explanation);
            if (m_pucch->get_pucch_format() == LIB_NR_UL_PUCCH_FORMAT_2)
                for (const lib_nr_resource_run_t& run : runs)
                    resources.note_part({run.symbol, run.first_subcarrier + 1, run.count / 3, 3}, LIB_NR_CELL_DMRS);
        }
    }
    if (added.outside > 0)
        throw std::out_of_range("PUCCH past the resource blocks of the carrier");
    return true;
}

/// The first cells are those of the UCI.
void lib_nr_ul_phy_pucch_base_t::_explain_row(unsigned int row, const std::vector<lib_nr_resource_run_t>& runs,
                                              lib_nr_explanation_t& explanation) const
{
    const unsigned int slot_begin = explanation.slot * _get_slot_symbols();
    const bool is_hop = !m_pucch->get_use_interlace_pucch() && _is_second_hop(row, m_pucch->get_symbol_num());
    explanation.add_runs(runs, slot_begin, is_hop);
    const std::vector<unsigned int>& dmrs = explanation.dmrs_symbols;
    if (m_pucch->get_pucch_format() == LIB_NR_UL_PUCCH_FORMAT_2)
        for (const std::int32_t k : {0, 2, 3, 5}) // the others carry DMRS
            explanation.add_cells({{runs.front().symbol, runs.front().first_subcarrier + k, 1}}, slot_begin);
    else if (std::find(dmrs.begin(), dmrs.end(), m_pucch->get_first_symbol() + row) == dmrs.end())
        explanation.add_cells(runs, slot_begin);
}

bool lib_nr_ul_phy_pucch_base_t::_deal_physical_resource_mapping_for_ui(lib_nr_channel_resource_manager_t& grid) const
{
    if (!_check_payload_setting()) {
        std::cout << "!!! error: payload or resource does not meet channel coding requirements !!!" << std::endl;
        return false;
    }
    const std::vector<unsigned int>& slots = m_pucch->get_allocated_slots();
    const unsigned int rows = m_pucch->get_symbol_num();
    if (m_pucch->get_use_interlace_pucch())
        return _mark_interlaced(slots, grid);
    if (m_pucch->get_intra_slot_frequency_hopping()) {
        constexpr auto k_conflict = "error: pucch intra_slot_hopping resource mapping for ui conflict";
        const bool is_first_free = _mark(slots, 0, rows / 2, false, k_conflict, grid);
        return _mark(slots, rows / 2, rows - rows / 2, true, k_conflict, grid) && is_first_free;
    }
    if (m_pucch->get_inter_slot_frequency_hopping()) {
        constexpr auto k_conflict = "error: pucch inter_slot_hopping resource mapping for ui conflict";
        std::array<std::vector<unsigned int>, 2> slots_by_hop;
        for (std::size_t i = 0; i < slots.size(); ++i)
            slots_by_hop[_is_slot_moved(i, slots[i] % 2 == 1) ? 1 : 0].push_back(slots[i]);
        const bool is_first_free = _mark(slots_by_hop[0], 0, rows, false, k_conflict, grid);
        return _mark(slots_by_hop[1], 0, rows, true, k_conflict, grid) && is_first_free;
    }
    return _mark(slots, 0, rows, false, "error: pucch resource mapping for ui conflict", grid);
}

/// Some rows of slots, in the RBs of one hop.
bool lib_nr_ul_phy_pucch_base_t::_mark(const std::vector<unsigned int>& slots, unsigned int first_row,
                                       unsigned int row_count, bool is_second_hop, const char* conflict_line,
                                       lib_nr_channel_resource_manager_t& grid) const
{
    const lib_nr_slot_resource_range_t range{slots, m_pucch->get_first_symbol() + first_row, row_count,
                                             _get_first_rb(is_second_hop), m_pucch->get_rb_num()};
    const bool is_free = grid.deal_resource_mapping(range, LIB_NR_RESOURCE_MAPPING_PUCCH);
    if (is_free)
        return true;
    std::cout << conflict_line << std::endl;
    return _fails(row_count == 0 ? "one symbol cannot hop within the slot" : k_outside);
}

bool lib_nr_ul_phy_pucch_base_t::_mark_interlaced(const std::vector<unsigned int>& slots,
                                                  lib_nr_channel_resource_manager_t& grid) const
{
    std::vector<unsigned short> positions;
    std::vector<lib_nr_resource_run_t> runs;
    bool is_free = _get_interlace_position(positions);
    if (is_free) {
        for (const unsigned int slot : slots)
            for (unsigned int row = 0; row < m_pucch->get_symbol_num(); ++row) {
                const auto row_runs = _list_runs(slot, row, false, positions);
                runs.insert(runs.end(), row_runs.begin(), row_runs.end());
            }
        is_free = grid.mark_runs(runs, LIB_NR_RESOURCE_MAPPING_PUCCH);
    }
    if (is_free)
        return true;
    std::cout << " pucch interlace not finish " << std::endl;
    return _fails(k_outside); // unless the interlaces have told a reason
}

} // namespace vek::nr_mod_lib

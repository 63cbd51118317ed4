#include "phy_dl/lib_nr_dl_phy_pdsch_process.h"

#include "manager/lib_nr_waveform_configure_manager.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace vek::nr_mod_lib
{

namespace
{

lib_nr_channel_resource_manager_t& grid() { return lib_nr_channel_resource_manager_t::get_inst(); }

/// The place of a value in a list, the list's length where it is not there.
std::size_t place_of(const std::vector<unsigned int>& list, unsigned int value)
{
    return static_cast<std::size_t>(std::find(list.begin(), list.end(), value) - list.begin());
}

bool contains(const std::vector<unsigned int>& list, unsigned int value) { return place_of(list, value) < list.size(); }

/// Whether all cells of a run without gaps lie in the grid and belong to PDSCH.
bool is_owned(const lib_nr_resource_run_t& run)
{
    if (grid().clip(run).run.count != run.count)
        return false;
    const std::uint8_t* const owners = grid().get_owner_row(run.symbol) + run.first_subcarrier;
    std::uint8_t difference = 0;
    for (std::size_t i = 0; i < run.count; ++i)
        difference |= static_cast<std::uint8_t>(owners[i] ^ LIB_NR_RESOURCE_MAPPING_PDSCH);
    return difference == 0;
}

/// Appends the parts of runs whose cells lie in the grid and belong to PDSCH.
void append_owned(const std::vector<lib_nr_resource_run_t>& runs, std::vector<lib_nr_resource_run_t>& owned)
{
    for (const lib_nr_resource_run_t& whole : runs) {
        lib_nr_resource_run_t run = grid().clip(whole).run;
        if (run.count == 0)
            continue;
        const std::uint8_t* const owners = grid().get_owner_row(run.symbol);
        const auto step = static_cast<std::int32_t>(run.step);
        const std::int32_t end = run.first_subcarrier + static_cast<std::int32_t>(run.count) * step;
        run.count = 0;
        for (std::int32_t k = run.first_subcarrier; k < end; k += step) {
            if (owners[k] == LIB_NR_RESOURCE_MAPPING_PDSCH) {
                ++run.count;
                continue;
            }
            if (run.count != 0)
                owned.push_back(run);
            run.first_subcarrier = k + step;
            run.count = 0;
        }
        if (run.count != 0)
            owned.push_back(run);
    }
}

} // namespace

lib_nr_dl_phy_pdsch_process_t::lib_nr_dl_phy_pdsch_process_t()
{
    set_power_boosting(-3.0);
    set_rnti(2);
    set_first_symbol(2);
    set_symbol_num(12);
    set_rbg_size(LIB_NR_SCH_RBG_SIZE_4);
    set_rbg_bitmap({0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0});
    set_rb_num(36);
    set_data_source(LIB_NR_USER_CFG);
    set_data_source_custom({0});
    set_dmrs_configuration_type(LIB_NR_DMRS_CFG_TYPE2);
    set_dmrs_length(LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL);
    set_dmrs_additional_position(LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1);
    set_enable_ptrs(true);
    set_ptrs_power(-3.0);
    set_bwp_rb_start(4);
    set_bwp_rb_num(269);
    update_read_only_parament();
}

bool lib_nr_dl_phy_pdsch_process_t::set_waveform_config(unsigned int carrier, unsigned int numerology,
                                                        unsigned int channel,
                                                        const lib_nr_waveform_configure_manager_t& waveform)
{
    const lib_nr_dl_sch_configure_manager_t& manager = waveform.get_carrier(carrier).get_dl_sch(channel);
    set_vrb2prb_interleaver(manager.get_vrb2prb_interleaver());
    set_vrb_bundle_size(manager.get_vrb_bundle_size());
    set_tb_scaling(manager.get_tb_scaling());
    set_waveform_config_sch(carrier, numerology, manager, waveform);
    const bool is_from_bwp = m_dmrs_mapping_ref == LIB_NR_DMRS_MAPPING_REF_PRB;
    m_dmrs_reference_rb = m_rules.pick(lib_nr_deviation_t::dmrs_reference, 0u, is_from_bwp ? m_bwp_rb_start : 0u);
    return true;
}

void lib_nr_dl_phy_pdsch_process_t::_phy_sch_rb_index()
{
    m_rb_list.clear();
    if (m_ra_type == LIB_NR_SCH_RA_TYPE0) {
        _phy_sch_rb_index_type_0();
        return;
    }
    std::vector<unsigned int> prb_of_vrb;
    if (m_vrb2prb_interleaver != LIB_NR_SCH_NO_INTERLEAVE)
        _dl_phy_pdsch_interleaver(prb_of_vrb);
    for (unsigned int vrb = m_rb_offset; vrb < m_rb_offset + m_rb_num; ++vrb)
        m_rb_list.push_back(m_bwp_rb_start + (vrb < prb_of_vrb.size() ? prb_of_vrb[vrb] : vrb));
}

/// TS 38.211 clause 7.3.1.6, both numbers counted from the BWP's first RB. Bundles end at multiples of their size in
/// the grid.
void lib_nr_dl_phy_pdsch_process_t::_dl_phy_pdsch_interleaver(std::vector<unsigned int>& prb_of_vrb) const
{
    const unsigned int size = m_vrb_bundle_size;
    const unsigned int ahead = m_bwp_rb_start % size;
    const unsigned int bundles = (m_bwp_rb_num + ahead + size - 1) / size;
    prb_of_vrb.clear();
    const auto append_bundle = [&](unsigned int bundle) {
        for (unsigned int rb = bundle * size; rb < (bundle + 1) * size; ++rb)
            if (rb >= ahead && rb - ahead < m_bwp_rb_num)
                prb_of_vrb.push_back(rb - ahead);
    };
    for (unsigned int column = 0; column < bundles / 2; ++column) {
        append_bundle(column);
        append_bundle(bundles / 2 + column);
    }
    if (bundles % 2 == 1)
        append_bundle(bundles - 1);
}

/// The channel's cells in a slot, those of other channels among them: view and waveform both follow this list.
void lib_nr_dl_phy_pdsch_process_t::_list_runs(unsigned int slot, const rb_list_t& rb_list)
{
    m_runs.clear();
    for (unsigned int symbol = m_first_symbol; symbol < m_first_symbol + m_symbol_num; ++symbol) {
        const unsigned int symbol_in_frame = slot * m_symbol_per_slot + symbol;
        const std::uint8_t* const owners = grid().get_owner_row(symbol_in_frame);
        if (!owners || !std::memchr(owners, LIB_NR_RESOURCE_MAPPING_SSB, grid().get_mapped_subcarrier_number())) {
            _append_rb_runs(rb_list, symbol_in_frame, 0, m_runs);
            continue;
        }
        rb_list_t left;
        std::copy_if(rb_list.begin(), rb_list.end(), std::back_inserter(left),
                     [&](unsigned int rb) { return !_is_left_to_block(owners, rb); });
        _append_rb_runs(left, symbol_in_frame, 0, m_runs);
    }
}

/// Whether the channel keeps out of an RB where an SS/PBCH block holds some of the cells and not all.
bool lib_nr_dl_phy_pdsch_process_t::_is_left_to_block(const std::uint8_t* owners, unsigned int rb) const
{
    const std::size_t first = std::size_t{rb} * k_subcarriers_per_rb;
    if (first + k_subcarriers_per_rb > grid().get_mapped_subcarrier_number())
        return false;
    const auto cells = std::count(owners + first, owners + first + k_subcarriers_per_rb, LIB_NR_RESOURCE_MAPPING_SSB);
    return cells != 0 && cells != k_subcarriers_per_rb &&
           m_rules.pick(lib_nr_deviation_t::pdsch_beside_block, false, true);
}

void lib_nr_dl_phy_pdsch_process_t::_phy_sch_view_re_map(unsigned int slot, const rb_list_t& rb_list)
{
    _list_runs(slot, rb_list);
    grid().mark_runs(m_runs, LIB_NR_RESOURCE_MAPPING_PDSCH);
}

/// What the cells of the channel carry, without those that another channel holds.
void lib_nr_dl_phy_pdsch_process_t::_list_cells(unsigned int port, unsigned int slot, const rb_list_t& rb_list)
{
    std::vector<unsigned int> ptrs_subcarriers;
    std::vector<unsigned int> ptrs_symbols;
    _phy_sch_ptrs_re_index_generation(port, ptrs_subcarriers);
    _get_ptrs_symbol_position(m_dmrs_symbols, ptrs_symbols);
    _list_runs(slot, rb_list);
    m_cells.clear();
    for (const lib_nr_resource_run_t& run : m_runs) {
        const unsigned int symbol = run.symbol - slot * m_symbol_per_slot;
        const bool is_whole = is_owned(run);
        lib_nr_sch_cells_t& cells = is_whole ? m_cells : m_claimed_cells;
        m_claimed_cells.clear();
        if (contains(m_dmrs_symbols, symbol))
            _split_dmrs_symbol(run, _cdm_group_of(port), cells);
        else if (contains(ptrs_symbols, symbol))
            _split_ptrs_symbol(run, ptrs_subcarriers, cells);
        else
            cells.data.push_back(run);
        if (!is_whole) {
            append_owned(m_claimed_cells.data, m_cells.data);
            append_owned(m_claimed_cells.dmrs, m_cells.dmrs);
            append_owned(m_claimed_cells.silent, m_cells.silent);
            append_owned(m_claimed_cells.ptrs, m_cells.ptrs);
        }
    }
}

void lib_nr_dl_phy_pdsch_process_t::_phy_sch_caculate_g(unsigned int port, unsigned int slot)
{
    _list_cells(port, slot, m_rb_list);
    m_listed_slot = slot;
    m_g = static_cast<unsigned int>(grid().count(m_cells.data).all()) * m_q_m;
}

void lib_nr_dl_phy_pdsch_process_t::_phy_sch_encode_re_map(unsigned int port, unsigned int slot,
                                                           const rb_list_t& rb_list)
{
    if (m_listed_slot != slot)
        _list_cells(port, slot, rb_list);
    m_listed_slot.reset(); // the marks may change before its next turn
    // The code word's symbols one after the other; where they end early cells stay empty.
    grid().write_stream(m_cells.data, m_codeword_numbers[0], _points(_amplitude_of(0.0)));
    _write_reference_signals(port, slot);
    if (_explains())
        _explain(slot);
}

void lib_nr_dl_phy_pdsch_process_t::_write_reference_signals(unsigned int port, unsigned int slot)
{
    const auto sequences = m_dmrs_sequences.find(_cdm_group_of(port));
    if (sequences == m_dmrs_sequences.end() || sequences->second.empty())
        return;
    _write_dmrs(port, slot, sequences->second, _amplitude_of(m_dmrs_power));
    const double ptrs_amplitude = _amplitude_of(m_ptrs_power);
    grid().set_content_at_work(LIB_NR_CELL_PTRS);
    for (const lib_nr_resource_run_t& cell : m_cells.ptrs)
        grid().write_run(cell, &sequences->second[_dmrs_index_of(static_cast<unsigned int>(cell.first_subcarrier))],
                         ptrs_amplitude);
    grid().set_content_at_work(LIB_NR_CELL_DATA);
}

void lib_nr_dl_phy_pdsch_process_t::_explain(unsigned int slot)
{
    m_explanation->add_runs(m_runs, slot * m_symbol_per_slot);
    m_explanation->add_cells(m_cells.data, slot * m_symbol_per_slot);
    m_explanation->add_cells(m_cells.dmrs, slot * m_symbol_per_slot); // where others hold all of the data's
    _explain_figures();
}

void lib_nr_dl_phy_pdsch_process_t::_write_dmrs(unsigned int port, unsigned int slot, const symbols_t& sequences,
                                                double amplitude)
{
    const std::size_t length = sequences.size() / m_dmrs_symbols.size();
    std::size_t covered = m_dmrs_symbols.size(); // place of the DMRS symbol whose values are at hand; none yet
    grid().set_content_at_work(LIB_NR_CELL_DMRS);
    for (const lib_nr_resource_run_t& run : m_cells.dmrs) {
        const std::size_t place = place_of(m_dmrs_symbols, run.symbol - slot * m_symbol_per_slot);
        if (covered != place) {
            m_dmrs_values.clear();
            _append_covered_dmrs(port, place, sequences.data() + place * length, length, m_dmrs_values);
            covered = place;
        }
        grid().write_run(run, &m_dmrs_values[_dmrs_index_of(static_cast<unsigned int>(run.first_subcarrier))],
                         amplitude);
    }
    grid().set_content_at_work(LIB_NR_CELL_DATA);
    grid().write_stream(m_cells.silent, symbols_t(grid().count(m_cells.silent).all()));
}

} // namespace vek::nr_mod_lib

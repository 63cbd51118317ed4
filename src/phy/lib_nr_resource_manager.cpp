#include "phy/lib_nr_resource_manager.h"

#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <limits>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace vek::nr_mod_lib
{

namespace
{

void print_symbol_in_frame_error()
{
    std::cout << "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : symbol index in frame out of range"
              << std::endl;
}

void print_subcarrier_error()
{
    std::cout << "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : subcarrier index out of range"
              << std::endl;
}

lib_nr_clipped_run_t clip_to(const lib_nr_resource_run_t& run, std::size_t symbol_number, std::size_t subcarrier_number)
{
    lib_nr_clipped_run_t part{run, 0};
    const std::int64_t step = std::max(run.step, 1U);
    const std::int64_t room = static_cast<std::int64_t>(subcarrier_number) - run.first_subcarrier;
    const std::int64_t below = run.first_subcarrier < 0 ? (step - 1 - run.first_subcarrier) / step : 0;
    const std::int64_t end = room <= 0 ? 0 : std::min<std::int64_t>(run.count, (room + step - 1) / step);
    if (run.symbol >= symbol_number || end <= below) {
        part.run.count = 0;
        return part;
    }
    part.left_out_ahead = static_cast<std::uint32_t>(below);
    part.run.first_subcarrier = static_cast<std::int32_t>(run.first_subcarrier + below * step);
    part.run.count = static_cast<std::uint32_t>(end - below);
    return part;
}

lib_nr_cell_count_t split_cells(const lib_nr_resource_run_t& run, const lib_nr_clipped_run_t& part)
{
    return {part.run.count, run.count - part.run.count};
}

// What becomes of a cell.

struct write_t
{
    static constexpr bool k_overwrites = true;
    double amplitude;

    void operator()(std::complex<double>& cell, const std::complex<double>& value) const { cell = amplitude * value; }
};

struct add_t
{
    static constexpr bool k_overwrites = false;
    double amplitude;

    void operator()(std::complex<double>& cell, const std::complex<double>& value) const { cell += amplitude * value; }
};

struct write_point_t
{
    static constexpr bool k_overwrites = true;
    const std::complex<double>* points;

    void operator()(std::complex<double>& cell, std::uint16_t symbol) const { cell = points[symbol]; }
};

/// Neighbouring cells. The payload is too large for the near caches, and left to themselves they fetch a line when it
/// is written, which takes longer than writing it: so lines are asked for 2 KB ahead.
template <class value_t, class store_t>
void store_neighbours(std::complex<double>* cells, const value_t* values, std::size_t count, store_t store)
{
    constexpr std::size_t k_in_line = 4;
    constexpr std::size_t k_ahead = 128;
    std::size_t i = 0;
    for (; i + k_in_line <= count; i += k_in_line) {
        __builtin_prefetch(cells + std::min(i + k_ahead, count - 1), 1);
        for (std::size_t j = i; j < i + k_in_line; ++j)
            store(cells[j], values[j]);
    }
    for (; i < count; ++i)
        store(cells[i], values[i]);
}

} // namespace

lib_nr_channel_resource_manager_t& lib_nr_channel_resource_manager_t::get_inst()
{
    static lib_nr_channel_resource_manager_t instance;
    return instance;
}

lib_nr_channel_resource_manager_t::lib_nr_channel_resource_manager_t() { set_entry_at_work(0); }

void lib_nr_channel_resource_manager_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    if (!lib_nr_phy_common_t::has_extended_prefix(m_numerology))
        m_cyclic_prefix_type = LIB_NR_NORMAL_CP;
    m_numerology = numerology;
}

void lib_nr_channel_resource_manager_t::set_rb_number(unsigned int rb_number) { m_rb_number = rb_number; }

void lib_nr_channel_resource_manager_t::set_cyclic_prefix_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    if (cp_type == LIB_NR_EXTEND_CP && !lib_nr_phy_common_t::has_extended_prefix(m_numerology)) {
        std::cout << "lib_nr_dl_resource_manager_t::set_cyclic_prefix_type Report : Extende CP is supported only with "
                     "60kHz SCS!"
                  << std::endl;
        return;
    }
    m_cyclic_prefix_type = cp_type;
}

void lib_nr_channel_resource_manager_t::set_channel_bandwidth(const lib_nr_channel_bw_type_t& bandwidth)
{
    m_channel_bandwidth = bandwidth;
}

void lib_nr_channel_resource_manager_t::init_resource_mapping()
{
    _update_parameter();
    m_cells.assign(static_cast<std::size_t>(m_symbol_number) * m_subcarrier_number, LIB_NR_RESOURCE_MAPPING_EMPTY);
    m_mapped_symbol_number = m_symbol_number;
    m_mapped_subcarrier_number = m_subcarrier_number;
    m_conflict_number = 0;
    m_marks.clear();
    m_resource_mapping.clear();
    m_is_view_built = false;
}

void lib_nr_channel_resource_manager_t::init_payload_mapping()
{
    _update_parameter();
    m_payload_mapping.resize(m_symbol_number);
    m_written_rows.resize(m_symbol_number, 1);
    m_stale_rows.resize(m_symbol_number, 1);
    for (std::size_t l = 0; l < m_symbol_number; ++l) {
        if (m_payload_mapping[l].size() != m_subcarrier_number) {
            m_payload_mapping[l].assign(m_subcarrier_number, {});
            m_written_rows[l] = m_stale_rows[l] = 0;
        }
        m_stale_rows[l] |= m_written_rows[l];
        m_written_rows[l] = 0;
    }
    if (m_is_payload_lent) {
        _clear_stale_rows();
        m_written_rows.assign(m_symbol_number, 1);
    }
    m_slot_symbol_number = lib_nr_phy_common_t::get_symbol_number_in_slot(m_numerology, m_cyclic_prefix_type);
}

void lib_nr_channel_resource_manager_t::_update_parameter()
{
    m_symbol_number = lib_nr_phy_common_t::get_symbol_number_in_frame(m_numerology, m_cyclic_prefix_type);
    m_subcarrier_number = static_cast<std::uint32_t>(std::min<std::uint64_t>(
        std::uint64_t{m_rb_number} * k_subcarriers_per_rb, std::numeric_limits<std::uint32_t>::max()));
}

const lib_nr_channel_resource_manager_t::resource_map_t& lib_nr_channel_resource_manager_t::get_resource_mapping() const
{
    if (!m_is_view_built)
        _build_view();
    return m_resource_mapping;
}

void lib_nr_channel_resource_manager_t::_build_view() const
{
    m_resource_mapping.clear(); // of a build that ran out of memory
    for (unsigned int symbol = 0; symbol < m_mapped_symbol_number; ++symbol) {
        resource_row_t& row =
            m_resource_mapping.emplace_hint(m_resource_mapping.end(), symbol, resource_row_t{})->second;
        for (unsigned int subcarrier = 0; subcarrier < m_mapped_subcarrier_number; ++subcarrier)
            row.emplace_hint(row.end(), subcarrier, get_owner(symbol, subcarrier));
    }
    m_is_view_built = true;
}

lib_nr_channel_resource_manager_t::payload_map_t& lib_nr_channel_resource_manager_t::get_payload_mapping()
{
    if (m_is_payload_lent) // no row is stale then, and each counts as written
        return m_payload_mapping;
    _clear_stale_rows();
    m_written_rows.assign(m_written_rows.size(), 1);
    m_is_payload_lent = true;
    return m_payload_mapping;
}

const lib_nr_channel_resource_manager_t::payload_map_t& lib_nr_channel_resource_manager_t::get_payload_mapping() const
{
    _clear_stale_rows();
    return m_payload_mapping;
}

void lib_nr_channel_resource_manager_t::_clear_stale_rows() const
{
    for (std::size_t l = 0; l < m_stale_rows.size(); ++l)
        if (m_stale_rows[l] != 0) {
            std::fill(m_payload_mapping[l].begin(), m_payload_mapping[l].end(), std::complex<double>());
            m_stale_rows[l] = 0;
        }
}

/// Ahead of a write to a row; one that covers it spares clearing it.
void lib_nr_channel_resource_manager_t::_open_row(std::uint32_t symbol, bool is_covered)
{
    if (m_is_payload_lent)
        return;
    m_written_rows[symbol] = 1;
    if (m_stale_rows[symbol] != 0 && !is_covered)
        std::fill(m_payload_mapping[symbol].begin(), m_payload_mapping[symbol].end(), std::complex<double>());
    m_stale_rows[symbol] = 0;
}

const std::uint8_t* lib_nr_channel_resource_manager_t::get_owner_row(unsigned int symbol) const
{
    if (symbol >= m_mapped_symbol_number)
        return nullptr;
    return m_cells.data() + static_cast<std::size_t>(symbol) * m_mapped_subcarrier_number;
}

bool lib_nr_channel_resource_manager_t::deal_resource_mapping(const lib_nr_resource_element_range_t& range,
                                                              lib_nr_channel_resource_mapping_type_t type)
{
    if (!_is_symbol_range_valid(range.symbol_start, range.symbol_count, m_symbol_number)) {
        print_symbol_in_frame_error();
        return false;
    }
    if (!_is_crb_range_valid(range.crb_start, range.crb_count))
        return false;

    const std::uint64_t first = std::uint64_t{range.crb_start} * k_subcarriers_per_rb;
    const std::uint64_t last = first + std::uint64_t{range.crb_count} * k_subcarriers_per_rb;
    bool is_free = true;
    for (std::uint32_t symbol = 0; symbol < range.symbol_count; ++symbol)
        is_free &= _mark_row(range.symbol_start + symbol, first, last, type);
    return is_free;
}

bool lib_nr_channel_resource_manager_t::deal_resource_mapping(const lib_nr_slot_resource_range_t& range,
                                                              lib_nr_channel_resource_mapping_type_t type)
{
    if (range.slots.empty())
        return true;
    const std::uint32_t slot_number = lib_nr_phy_common_t::get_slot_in_frame(m_numerology);
    if (std::any_of(range.slots.begin(), range.slots.end(), [&](std::uint32_t slot) { return slot >= slot_number; })) {
        std::cout << "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : slot index out of range"
                  << std::endl;
        return false;
    }
    const std::uint32_t slot_symbols =
        lib_nr_phy_common_t::get_symbol_number_in_slot(m_numerology, m_cyclic_prefix_type);
    if (!_is_symbol_range_valid(range.symbol_start, range.symbol_count, slot_symbols)) {
        std::cout << "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : symbol index in slot out of range"
                  << std::endl;
        return false;
    }
    if (!_is_crb_range_valid(range.crb_start, range.crb_count))
        return false;

    const std::uint64_t first = std::uint64_t{range.crb_start} * k_subcarriers_per_rb;
    const std::uint64_t last = first + std::uint64_t{range.crb_count} * k_subcarriers_per_rb;
    bool is_free = true;
    for (const std::uint32_t slot : range.slots)
        for (std::uint32_t symbol = 0; symbol < range.symbol_count; ++symbol)
            is_free &= _mark_row(slot * slot_symbols + range.symbol_start + symbol, first, last, type);
    return is_free;
}

bool lib_nr_channel_resource_manager_t::deal_resource_mapping(
    const std::vector<lib_nr_resource_element_index_t>& elements, lib_nr_channel_resource_mapping_type_t type)
{
    // Locals, since a write to a byte may be a write to any member as far as the compiler knows.
    const std::uint32_t symbol_number = m_symbol_number;
    const std::uint32_t subcarrier_number = m_subcarrier_number;
    const std::size_t row_length = m_mapped_subcarrier_number;
    std::uint8_t* const cells = m_cells.data();
    const bool is_plain = !m_is_view_built && type != LIB_NR_RESOURCE_MAPPING_CONFLICT;
    bool is_free = true;
    lib_nr_resource_run_t marked; // neighbours are kept as one mark
    std::size_t i = 0;
    for (; i < elements.size(); ++i) {
        const auto [symbol, subcarrier] = elements[i];
        if (symbol >= symbol_number || subcarrier >= subcarrier_number)
            break;
        _check_mapped(symbol, subcarrier);
        if (symbol != marked.symbol || subcarrier != marked.first_subcarrier + static_cast<std::int64_t>(marked.count))
        {
            m_marks.add(type, m_entry_at_work, marked);
            marked = {symbol, subcarrier, 0};
        }
        ++marked.count;
        std::uint8_t& cell = cells[symbol * row_length + subcarrier];
        if (is_plain && cell == LIB_NR_RESOURCE_MAPPING_EMPTY)
            cell = static_cast<std::uint8_t>(type);
        else
            is_free &= _mark_cell(symbol, subcarrier, type, cell);
    }
    m_marks.add(type, m_entry_at_work, marked);
    if (i == elements.size())
        return is_free;
    elements[i].symbol >= symbol_number ? print_symbol_in_frame_error() : print_subcarrier_error();
    return false;
}

bool lib_nr_channel_resource_manager_t::is_resource_mapping_conflict() const
{
    if (m_mapped_symbol_number == 0) {
        std::cout << "lib_nr_dl_resource_manager_t::is_resource_mapping_conflict Report : Empty Resource Mapping!"
                  << std::endl;
        return false;
    }
    return m_conflict_number != 0;
}

bool lib_nr_channel_resource_manager_t::_is_symbol_range_valid(std::uint32_t start, std::uint32_t count,
                                                               std::uint32_t limit) const
{
    // A count of 0 makes the last symbol lie before the first and is refused, as is a sum past 32 bits.
    const std::uint32_t last = start + count - 1;
    return last >= start && last < limit;
}

bool lib_nr_channel_resource_manager_t::_is_crb_range_valid(std::uint32_t start, std::uint32_t count) const
{
    const std::uint32_t end = start + count;
    if (end >= start && end <= m_rb_number && start < m_rb_number)
        return true;
    std::cout << "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : crb index out of range" << std::endl;
    return false;
}

bool lib_nr_channel_resource_manager_t::_mark_row(std::uint32_t symbol, std::uint64_t first, std::uint64_t last,
                                                  lib_nr_channel_resource_mapping_type_t type)
{
    if (first == last)
        return true;
    _check_mapped(symbol, last - 1);
    return _mark_cells({symbol, static_cast<std::int32_t>(first), static_cast<std::uint32_t>(last - first)},
                       std::integral_constant<std::size_t, 1>(), type);
}

/// Marks a run that lies in the map. A step known to be 1 at compile time lets the loops work on whole vectors.
template <class step_t>
bool lib_nr_channel_resource_manager_t::_mark_cells(const lib_nr_resource_run_t& inside, step_t step,
                                                    lib_nr_channel_resource_mapping_type_t type)
{
    m_marks.add(type, m_entry_at_work, inside);
    std::uint8_t* const cells = m_cells.data() + static_cast<std::size_t>(inside.symbol) * m_mapped_subcarrier_number +
                                static_cast<std::size_t>(inside.first_subcarrier);
    const std::size_t count = inside.count;
    // Most runs meet no conflict: one look, one pass.
    if (!m_is_view_built && type != LIB_NR_RESOURCE_MAPPING_CONFLICT) {
        const auto [first, second] = get_respected_owners(type);
        std::uint8_t clash = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint8_t cell = cells[i * step];
            clash |=
                static_cast<std::uint8_t>((cell != LIB_NR_RESOURCE_MAPPING_EMPTY) & (cell != first) & (cell != second));
        }
        if (clash == 0) {
            const auto mark = static_cast<std::uint8_t>(type);
            for (std::size_t i = 0; i < count; ++i) {
                const std::uint8_t cell = cells[i * step];
                cells[i * step] = cell == LIB_NR_RESOURCE_MAPPING_EMPTY ? mark : cell;
            }
            return true;
        }
    }
    bool is_free = true;
    for (std::size_t i = 0; i < count; ++i)
        is_free &= _mark_cell(inside.symbol,
                              static_cast<std::uint32_t>(static_cast<std::size_t>(inside.first_subcarrier) + i * step),
                              type, cells[i * step]);
    return is_free;
}

lib_nr_clipped_run_t lib_nr_channel_resource_manager_t::clip(const lib_nr_resource_run_t& run) const
{
    return clip_to(run, m_mapped_symbol_number, m_mapped_subcarrier_number);
}

bool lib_nr_channel_resource_manager_t::mark_runs(const std::vector<lib_nr_resource_run_t>& runs,
                                                  lib_nr_channel_resource_mapping_type_t type)
{
    bool is_free = true;
    bool is_inside = true;
    for (const lib_nr_resource_run_t& run : runs) {
        const lib_nr_resource_run_t inside = clip(run).run;
        if (inside.count != run.count) {
            m_marks.add_cut(type, m_entry_at_work, run);
            if (is_inside)
                run.symbol >= m_mapped_symbol_number ? print_symbol_in_frame_error() : print_subcarrier_error();
            is_inside = false;
        }
        if (inside.count != 0)
            is_free &= run.step <= 1 ? _mark_cells(inside, std::integral_constant<std::size_t, 1>(), type)
                                     : _mark_cells(inside, std::size_t{run.step}, type);
    }
    return is_free && is_inside;
}

lib_nr_cell_count_t lib_nr_channel_resource_manager_t::count(const std::vector<lib_nr_resource_run_t>& runs) const
{
    lib_nr_cell_count_t cells;
    for (const lib_nr_resource_run_t& run : runs)
        cells += split_cells(run, clip(run));
    return cells;
}

void lib_nr_channel_resource_manager_t::write_run(const lib_nr_resource_run_t& run, const std::complex<double>* values,
                                                  double amplitude)
{
    _store_run(run, values, m_payload_mapping, write_t{amplitude});
}

lib_nr_cell_count_t lib_nr_channel_resource_manager_t::write_stream(const std::vector<lib_nr_resource_run_t>& runs,
                                                                    const std::vector<std::complex<double>>& values,
                                                                    double amplitude)
{
    return _store_stream(runs, values, m_payload_mapping, write_t{amplitude});
}

lib_nr_cell_count_t lib_nr_channel_resource_manager_t::write_stream(const std::vector<lib_nr_resource_run_t>& runs,
                                                                    const std::vector<std::uint16_t>& symbols,
                                                                    const std::vector<std::complex<double>>& points)
{
    return _store_stream(runs, symbols, m_payload_mapping, write_point_t{points.data()});
}

lib_nr_cell_count_t lib_nr_channel_resource_manager_t::add_stream(const std::vector<lib_nr_resource_run_t>& runs,
                                                                  const std::vector<std::complex<double>>& values,
                                                                  double amplitude, payload_map_t& payload)
{
    return _store_stream(runs, values, payload, add_t{amplitude});
}

/// Puts values into the part of a run that a payload map has. A step known to be 1 at compile time lets the loop work
/// on whole vectors.
template <class value_t, class store_t>
lib_nr_cell_count_t lib_nr_channel_resource_manager_t::_store_run(const lib_nr_resource_run_t& run,
                                                                  const value_t* values, payload_map_t& payload,
                                                                  store_t store)
{
    const std::size_t width = run.symbol < payload.size() ? payload[run.symbol].size() : 0;
    const lib_nr_clipped_run_t part = clip_to(run, payload.size(), width);
    const lib_nr_cell_count_t stored = split_cells(run, part);
    m_written_at_work->cells += stored;
    if (part.run.count == 0)
        return stored;
    _note_place(part.run);
    _note_run(part.run, m_content_at_work, false);
    if (&payload == &m_payload_mapping)
        _open_row(run.symbol, store_t::k_overwrites && part.run.count == width);
    std::complex<double>* const cells =
        payload[run.symbol].data() + static_cast<std::size_t>(part.run.first_subcarrier);
    values += part.left_out_ahead;
    const std::size_t count = part.run.count;
    if (run.step <= 1)
        store_neighbours(cells, values, count, store);
    else
        for (std::size_t i = 0; i < count; ++i)
            store(cells[i * run.step], values[i]);
    return stored;
}

template <class value_t, class store_t>
lib_nr_cell_count_t lib_nr_channel_resource_manager_t::_store_stream(const std::vector<lib_nr_resource_run_t>& runs,
                                                                     const std::vector<value_t>& values,
                                                                     payload_map_t& payload, store_t store)
{
    lib_nr_cell_count_t stored;
    std::size_t next = 0;
    for (lib_nr_resource_run_t run : runs) {
        run.count = static_cast<std::uint32_t>(std::min<std::size_t>(run.count, values.size() - next));
        stored += _store_run(run, values.data() + next, payload, store);
        next += run.count;
    }
    return stored;
}

bool lib_nr_channel_resource_manager_t::is_pass_of(lib_nr_numerology_type_t numerology,
                                                   lib_nr_cyclic_prefix_type_t cp_type) const
{
    return numerology == m_numerology &&
           lib_nr_phy_common_t::get_symbol_number_in_slot(numerology, cp_type) ==
               lib_nr_phy_common_t::get_symbol_number_in_slot(m_numerology, m_cyclic_prefix_type);
}

bool lib_nr_channel_resource_manager_t::_mark_cell(std::uint32_t symbol, std::uint32_t subcarrier,
                                                   lib_nr_channel_resource_mapping_type_t type, std::uint8_t& cell)
{
    const std::uint8_t before = cell;
    const bool is_free = claim_cell(type, cell);
    if (cell == before)
        return is_free;
    if (cell == LIB_NR_RESOURCE_MAPPING_CONFLICT)
        ++m_conflict_number;
    if (m_is_view_built)
        m_resource_mapping.at(symbol).at(subcarrier) = static_cast<lib_nr_channel_resource_mapping_type_t>(cell);
    return is_free;
}

void lib_nr_channel_resource_manager_t::set_entry_at_work(std::uint32_t entry)
{
    m_entry_at_work = entry;
    m_written_at_work = &m_written[entry];
    m_content_at_work = LIB_NR_CELL_DATA;
    m_slot_end = 0;
}

std::vector<lib_nr_resource_conflict_t> lib_nr_channel_resource_manager_t::get_conflicts() const
{
    return m_marks.get_conflicts(m_mapped_symbol_number, m_mapped_subcarrier_number);
}

std::vector<lib_nr_resource_cut_t> lib_nr_channel_resource_manager_t::get_cuts() const
{
    return m_marks.get_cuts(m_mapped_symbol_number, m_mapped_subcarrier_number);
}

void lib_nr_channel_resource_manager_t::_note_run(const lib_nr_resource_run_t& run, lib_nr_cell_content_t content,
                                                  bool is_part)
{
    if (m_notes_runs)
        m_run_notes.push_back({m_entry_at_work, content, is_part, run});
}

void lib_nr_channel_resource_manager_t::note_part(const lib_nr_resource_run_t& run, lib_nr_cell_content_t content)
{
    const lib_nr_clipped_run_t part = clip_to(run, m_payload_mapping.size(), m_subcarrier_number);
    if (part.run.count != 0)
        _note_run(part.run, content, true);
}

std::vector<lib_nr_written_run_t> lib_nr_channel_resource_manager_t::take_run_notes()
{
    return std::exchange(m_run_notes, {});
}

std::map<std::uint32_t, lib_nr_resource_written_t> lib_nr_channel_resource_manager_t::take_written()
{
    std::map<std::uint32_t, lib_nr_resource_written_t> written;
    written.swap(m_written);
    set_entry_at_work(m_entry_at_work);
    return written;
}

/// A slot counts once for what is written to it in a row.
void lib_nr_channel_resource_manager_t::_note_place(const lib_nr_resource_run_t& run)
{
    lib_nr_resource_written_t& written = *m_written_at_work;
    if (run.symbol >= m_slot_end || run.symbol < m_slot_end - m_slot_symbol_number) {
        const std::uint32_t slot = run.symbol / m_slot_symbol_number;
        m_slot_end = (slot + 1) * m_slot_symbol_number;
        if (written.slots.empty() || written.slots.back() != slot) {
            written.slots.push_back(slot);
            written.extents.push_back({m_slot_symbol_number, 0, run.first_subcarrier, run.first_subcarrier});
        }
    }
    lib_nr_slot_extent_t& extent = written.extents.back();
    const std::uint32_t symbol = run.symbol + m_slot_symbol_number - m_slot_end;
    const std::uint32_t step = std::max(run.step, 1u);
    const auto end = run.first_subcarrier + static_cast<std::int32_t>((run.count - 1) * step + 1);
    extent.first_symbol = std::min(extent.first_symbol, symbol);
    extent.symbol_end = std::max(extent.symbol_end, symbol + 1);
    extent.first_subcarrier = std::min(extent.first_subcarrier, run.first_subcarrier);
    extent.subcarrier_end = std::max(extent.subcarrier_end, end);
}

/// Parameters set after the last initialisation pass the range checks before the map has their cells.
void lib_nr_channel_resource_manager_t::_check_mapped(std::uint32_t symbol, std::uint64_t subcarrier) const
{
    if (symbol >= m_mapped_symbol_number || subcarrier >= m_mapped_subcarrier_number)
        throw std::out_of_range("map::at");
}

} // namespace vek::nr_mod_lib

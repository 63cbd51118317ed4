#pragma once

#include "common/lib_ofdm_modulator.h"
#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_resource_marks.h"
#include "phy/lib_nr_resource_type.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace vek::nr_mod_lib
{

/// What a channel does when it is mapped: mark its cells for the conflict check and the view, or write its symbols.
enum lib_nr_remap_mode_t : std::uint32_t
{
    LIB_NR_REMAPP_MODE_UI_VIEW_MAP = 0,
    LIB_NR_REMAPP_MODE_ENCODE_MAP = 1,
};

/// A rectangle of resource blocks, its symbols counted from the start of the frame.
struct lib_nr_resource_element_range_t
{
    std::uint32_t symbol_start = 0;
    std::uint32_t symbol_count = 0;
    std::uint32_t crb_start = 0;
    std::uint32_t crb_count = 0;
};

/// The same rectangle in each of the listed slots, its symbols counted from the start of the slot.
struct lib_nr_slot_resource_range_t
{
    std::vector<std::uint32_t> slots;
    std::uint32_t symbol_start = 0;
    std::uint32_t symbol_count = 0;
    std::uint32_t crb_start = 0;
    std::uint32_t crb_count = 0;
};

/// One cell: symbol in frame, and subcarrier counted from the lowest of the grid.
struct lib_nr_resource_element_index_t
{
    std::uint16_t symbol = 0;
    std::uint16_t subcarrier = 0;
};

/// The grid of one frame of one numerology: which channel owns each resource element (resource map), and the symbols
/// that go to the OFDM modulator (payload map). One for the whole process; the engine initialises it anew for each
/// frame of each carrier and numerology, so its content is that of the last one. One user at a time.
class NR_MOD_LIB_EXPORT lib_nr_channel_resource_manager_t
{
public:
    using resource_row_t = std::map<unsigned int, lib_nr_channel_resource_mapping_type_t>;
    using resource_map_t = std::map<unsigned int, resource_row_t>;
    using payload_map_t = std::vector<std::vector<std::complex<double>>>;

    static lib_nr_channel_resource_manager_t& get_inst();

    lib_nr_channel_resource_manager_t(const lib_nr_channel_resource_manager_t&) = delete;
    lib_nr_channel_resource_manager_t& operator=(const lib_nr_channel_resource_manager_t&) = delete;

    // The parameters reach the maps with the next initialisation. Order: numerology, RB number, then the other two.

    /// Also returns the prefix to normal, unless the numerology so far is 60 kHz.
    void set_numerology(lib_nr_numerology_type_t numerology);
    /// Width of the grid in resource blocks, counted from the grid's own start.
    void set_rb_number(unsigned int rb_number);
    /// The extended prefix goes with 60 kHz alone; with another numerology a line is printed and the type stays.
    void set_cyclic_prefix_type(lib_nr_cyclic_prefix_type_t cp_type);
    void set_channel_bandwidth(const lib_nr_channel_bw_type_t& bandwidth);

    /// Rebuilds the resource map with every cell empty. A reference got from `get_resource_mapping()` stays valid, but
    /// its map is empty until the view is asked for again.
    void init_resource_mapping();
    /// Rebuilds the payload map with zeros; its rows keep their storage, and each is cleared when it is next written or
    /// looked at.
    void init_payload_mapping();

    /// The resource map as symbol in frame -> subcarrier -> owner. Built at the first call after an initialisation;
    /// later marks show up in it until the next. Costs a map node per cell: code that only reads owners takes
    /// `get_owner` or `get_owner_row`.
    const resource_map_t& get_resource_mapping() const;
    /// The payload map as [symbol in frame][subcarrier], for writing. Whoever asks for it may write at any time: from
    /// then on every row counts as written.
    payload_map_t& get_payload_mapping();
    /// The same for reading.
    const payload_map_t& get_payload_mapping() const;
    /// The same for `add_stream`, which clears and tells what it writes.
    payload_map_t& get_payload_of_streams() { return m_payload_mapping; }
    /// The same for the modulator: a row that was not written since the last initialisation holds what it will.
    common_lib::lib_ofdm_payload_t get_written_payload() const { return {m_payload_mapping, &m_written_rows}; }

    /// Owner of a cell, `LIB_NR_RESOURCE_MAPPING_EMPTY` for a cell outside the map.
    lib_nr_channel_resource_mapping_type_t get_owner(unsigned int symbol, unsigned int subcarrier) const
    {
        if (symbol >= m_mapped_symbol_number || subcarrier >= m_mapped_subcarrier_number)
            return LIB_NR_RESOURCE_MAPPING_EMPTY;
        return static_cast<lib_nr_channel_resource_mapping_type_t>(
            m_cells[static_cast<std::size_t>(symbol) * m_mapped_subcarrier_number + subcarrier]);
    }
    /// Owners of a symbol's cells, one byte each and `get_mapped_subcarrier_number()` of them; null for a symbol
    /// outside the map. Valid until the next initialisation of the resource map.
    const std::uint8_t* get_owner_row(unsigned int symbol) const;
    /// Size of the resource map as it was last initialised.
    unsigned int get_mapped_symbol_number() const { return m_mapped_symbol_number; }
    unsigned int get_mapped_subcarrier_number() const { return m_mapped_subcarrier_number; }

    /// Marks cells for a channel; true when every cell went in without conflict. A cell that is free goes to the
    /// channel; PDSCH lies under SS/PBCH and CSI-RS without a mark; PUCCHs share a cell; anything else is a conflict,
    /// also a channel's second mark on its own cell. Range errors print a line and return false: the rectangles before
    /// anything is marked, the list at the cell in question, with the cells before it marked.
    bool deal_resource_mapping(const lib_nr_resource_element_range_t& range,
                               lib_nr_channel_resource_mapping_type_t type);
    bool deal_resource_mapping(const lib_nr_slot_resource_range_t& range, lib_nr_channel_resource_mapping_type_t type);
    bool deal_resource_mapping(const std::vector<lib_nr_resource_element_index_t>& elements,
                               lib_nr_channel_resource_mapping_type_t type);

    // Channels list their cells as runs, and give the same list to the view and to the payload.

    /// The part of a run inside the resource map.
    lib_nr_clipped_run_t clip(const lib_nr_resource_run_t& run) const;
    /// Marks the part of each run inside the resource map by the rule of `deal_resource_mapping`, whole runs at once.
    /// False where a cell was taken or lay outside; the latter also prints the line of the first such cell, once a
    /// call.
    bool mark_runs(const std::vector<lib_nr_resource_run_t>& runs, lib_nr_channel_resource_mapping_type_t type);
    /// The cells of runs inside the resource map and outside it.
    lib_nr_cell_count_t count(const std::vector<lib_nr_resource_run_t>& runs) const;
    /// Writes `values` times `amplitude` into the payload map, one value for each of the run's `count` cells, those
    /// outside the map included.
    void write_run(const lib_nr_resource_run_t& run, const std::complex<double>* values, double amplitude = 1.0);
    /// Writes a stream of values into the cells of runs in their order; a cell outside the map takes its value too.
    /// Where the stream ends early the cells left stay as they are, and count as neither inside nor outside.
    lib_nr_cell_count_t write_stream(const std::vector<lib_nr_resource_run_t>& runs,
                                     const std::vector<std::complex<double>>& values, double amplitude = 1.0);
    /// The same for symbols that stand for points of a table.
    lib_nr_cell_count_t write_stream(const std::vector<lib_nr_resource_run_t>& runs,
                                     const std::vector<std::uint16_t>& symbols,
                                     const std::vector<std::complex<double>>& points);
    /// The same, added to what the cells of a payload map hold, be it this grid's or another.
    lib_nr_cell_count_t add_stream(const std::vector<lib_nr_resource_run_t>& runs,
                                   const std::vector<std::complex<double>>& values, double amplitude,
                                   payload_map_t& payload);
    /// Whether a channel of this spacing and prefix belongs into the grid as it is set: both have the same spacing and
    /// as many symbols in a slot.
    bool is_pass_of(lib_nr_numerology_type_t numerology, lib_nr_cyclic_prefix_type_t cp_type) const;

    /// Whether any cell is a conflict; false and a printed line where the map has no symbols.
    bool is_resource_mapping_conflict() const;

    // Who marks and writes is told beforehand, by the place of the entry in its channel's list.

    void set_entry_at_work(std::uint32_t entry);
    /// The conflicts since the last initialisation, of each pair of entries, in the order in which they arose; the
    /// marks are gone through again for it.
    std::vector<lib_nr_resource_conflict_t> get_conflicts() const;
    /// The entries that lost marks at the grid's edges since the last initialisation.
    std::vector<lib_nr_resource_cut_t> get_cuts() const;
    /// Runs marked since the last initialisation.
    std::size_t get_mark_number() const { return m_marks.get_number(); }
    /// Counts cells that the entry at work has no place for, and gives no run.
    void leave_out(std::uint64_t cells) { m_written_at_work->cells.outside += cells; }
    /// What was written or added since the last call, by entry.
    std::map<std::uint32_t, lib_nr_resource_written_t> take_written();

    // Run by run it is noted where somebody asks for it, and then what the cells carry too.

    void set_run_notes(bool enable) { m_notes_runs = enable; }
    /// Of the runs that follow; `LIB_NR_CELL_DATA` until somebody says otherwise.
    void set_content_at_work(lib_nr_cell_content_t content) { m_content_at_work = content; }
    /// Tells what some cells of a run carry that is written as a whole.
    void note_part(const lib_nr_resource_run_t& run, lib_nr_cell_content_t content);
    /// The runs noted since the last call, in the order in which they were written.
    std::vector<lib_nr_written_run_t> take_run_notes();

private:
    lib_nr_channel_resource_manager_t();
    ~lib_nr_channel_resource_manager_t() = default;

    void _update_parameter();
    void _build_view() const;
    bool _is_symbol_range_valid(std::uint32_t start, std::uint32_t count, std::uint32_t limit) const;
    bool _is_crb_range_valid(std::uint32_t start, std::uint32_t count) const;
    bool _mark_row(std::uint32_t symbol, std::uint64_t first, std::uint64_t last,
                   lib_nr_channel_resource_mapping_type_t type);
    template <class step_t>
    bool _mark_cells(const lib_nr_resource_run_t& inside, step_t step, lib_nr_channel_resource_mapping_type_t type);
    bool _mark_cell(std::uint32_t symbol, std::uint32_t subcarrier, lib_nr_channel_resource_mapping_type_t type,
                    std::uint8_t& cell);
    void _check_mapped(std::uint32_t symbol, std::uint64_t subcarrier) const;
    void _note_place(const lib_nr_resource_run_t& run);
    void _note_run(const lib_nr_resource_run_t& run, lib_nr_cell_content_t content, bool is_part);
    void _open_row(std::uint32_t symbol, bool is_covered);
    void _clear_stale_rows() const;
    template <class value_t, class store_t>
    lib_nr_cell_count_t _store_run(const lib_nr_resource_run_t& run, const value_t* values, payload_map_t& payload,
                                   store_t store);
    template <class value_t, class store_t>
    lib_nr_cell_count_t _store_stream(const std::vector<lib_nr_resource_run_t>& runs,
                                      const std::vector<value_t>& values, payload_map_t& payload, store_t store);

    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_15K;
    lib_nr_cyclic_prefix_type_t m_cyclic_prefix_type = LIB_NR_NORMAL_CP;
    lib_nr_channel_bw_type_t m_channel_bandwidth = LIB_NR_CHANNEL_FR1_5M;
    std::uint32_t m_symbol_number = 140;
    std::uint32_t m_rb_number = 0;
    std::uint32_t m_subcarrier_number = 0;
    mutable payload_map_t m_payload_mapping;
    std::vector<std::uint8_t> m_written_rows;
    mutable std::vector<std::uint8_t> m_stale_rows; ///< count as zeros, and hold what an initialisation found
    bool m_is_payload_lent = false;

    // The resource map as it was last initialised, one byte per cell, symbol by symbol.
    std::uint32_t m_mapped_symbol_number = 140;
    std::uint32_t m_mapped_subcarrier_number = 0;
    std::vector<std::uint8_t> m_cells;
    std::size_t m_conflict_number = 0;
    lib_nr_resource_marks_t m_marks;

    std::uint32_t m_entry_at_work = 0;
    std::map<std::uint32_t, lib_nr_resource_written_t> m_written;
    lib_nr_resource_written_t* m_written_at_work = nullptr; ///< in `m_written`
    std::uint32_t m_slot_symbol_number = 14;
    std::uint32_t m_slot_end = 0; ///< of the slot that was written to last, 0 for none

    // The same as a map of maps, once somebody asked for it.
    mutable resource_map_t m_resource_mapping;
    mutable bool m_is_view_built = false;

    // What is written, run by run, for whoever asks for it.
    bool m_notes_runs = false;
    lib_nr_cell_content_t m_content_at_work = LIB_NR_CELL_DATA;
    std::vector<lib_nr_written_run_t> m_run_notes;
};

} // namespace vek::nr_mod_lib

#pragma once

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Owner of a cell of the resource map.
enum lib_nr_channel_resource_mapping_type_t : std::uint32_t
{
    LIB_NR_RESOURCE_MAPPING_EMPTY = 0,
    LIB_NR_RESOURCE_MAPPING_SSB = 1, ///< PSS, SSS, PBCH and its DMRS
    LIB_NR_RESOURCE_MAPPING_PDCCH = 2,
    LIB_NR_RESOURCE_MAPPING_CSIRS = 3,
    LIB_NR_RESOURCE_MAPPING_PDSCH = 4,
    LIB_NR_RESOURCE_MAPPING_PRS = 5,
    LIB_NR_RESOURCE_MAPPING_PUCCH = 6,
    LIB_NR_RESOURCE_MAPPING_PUSCH = 7,
    LIB_NR_RESOURCE_MAPPING_SRS = 8,
    LIB_NR_RESOURCE_MAPPING_CONFLICT = 9, ///< two channels claim the cell
};

/// Equally spaced cells of one symbol, the lowest first. A run may reach past the grid: what lies outside is left out.
struct lib_nr_resource_run_t
{
    std::uint32_t symbol = 0; ///< in the frame
    std::int32_t first_subcarrier = 0;
    std::uint32_t count = 0;
    std::uint32_t step = 1; ///< in subcarriers; 0 counts as 1
};

/// What cells carry.
enum lib_nr_cell_content_t : std::uint8_t
{
    LIB_NR_CELL_DATA = 0, ///< all that is nothing of the following, signals that are a channel of their own too
    LIB_NR_CELL_DMRS = 1,
    LIB_NR_CELL_PTRS = 2,
};

/// A run that an entry wrote into the payload map, as far as it lies inside.
struct lib_nr_written_run_t
{
    std::uint32_t entry = 0; ///< place in its channel's list
    lib_nr_cell_content_t content = LIB_NR_CELL_DATA;
    bool is_part = false; ///< of runs of its entry ahead of it: tells what these cells carry, and wrote nothing
    lib_nr_resource_run_t run;
};

/// The part of a run that lies in the grid; `run.count` is 0 where none does.
struct lib_nr_clipped_run_t
{
    lib_nr_resource_run_t run;
    std::uint32_t left_out_ahead = 0; ///< cells below the grid: the part's first cell is the run's cell of this index
};

/// The rectangle round cells of one slot; its ends lie behind the last of them.
struct lib_nr_slot_extent_t
{
    std::uint32_t first_symbol = 0; ///< of the slot
    std::uint32_t symbol_end = 0;
    std::int32_t first_subcarrier = 0;
    std::int32_t subcarrier_end = 0;
};

/// Cells of runs, by what became of them.
struct lib_nr_cell_count_t
{
    std::uint64_t inside = 0;
    std::uint64_t outside = 0; ///< of the grid

    std::uint64_t all() const { return inside + outside; }
    lib_nr_cell_count_t& operator+=(const lib_nr_cell_count_t& other)
    {
        inside += other.inside;
        outside += other.outside;
        return *this;
    }
};

/// What an entry of a channel wrote into the payload map.
struct lib_nr_resource_written_t
{
    lib_nr_cell_count_t cells;
    std::vector<std::uint32_t> slots;          ///< of the frame, in which cells were written, in that order
    std::vector<lib_nr_slot_extent_t> extents; ///< of the same slots, subcarriers counted from the lowest of the grid
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_resource_type.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// The owners that a channel leaves where they are, and goes without a conflict; none is
/// `LIB_NR_RESOURCE_MAPPING_EMPTY`.
std::array<std::uint8_t, 2> get_respected_owners(lib_nr_channel_resource_mapping_type_t type);
/// What becomes of a cell that a channel claims: true when no conflict arises.
bool claim_cell(lib_nr_channel_resource_mapping_type_t newcomer, std::uint8_t& cell);

/// Cells that an entry of a channel claimed of another, all of a frame.
struct lib_nr_resource_conflict_t
{
    std::uint32_t symbol = 0; ///< of the first such cell, in the frame
    std::uint32_t subcarrier = 0;
    lib_nr_channel_resource_mapping_type_t owner = LIB_NR_RESOURCE_MAPPING_EMPTY;    ///< who had the cells
    lib_nr_channel_resource_mapping_type_t newcomer = LIB_NR_RESOURCE_MAPPING_EMPTY; ///< who claimed them too
    std::uint32_t owner_entry = 0;                                                   ///< place in its channel's list
    std::uint32_t newcomer_entry = 0;
    std::uint64_t cells = 0;
};

/// What an entry of a channel lost at the grid's edges, in the symbol that lost most.
struct lib_nr_resource_cut_t
{
    lib_nr_channel_resource_mapping_type_t owner = LIB_NR_RESOURCE_MAPPING_EMPTY;
    std::uint32_t entry = 0;
    std::uint32_t rbs = 0; ///< all of the symbol, those outside among them
    std::uint32_t rbs_outside = 0;
};

/// The marks of a frame in their order, run by run, with the entries that made them. Cells are not looked at before
/// somebody asks who met whom.
class NR_MOD_LIB_EXPORT lib_nr_resource_marks_t
{
public:
    void clear();
    /// A run that lies in the grid; an empty one is passed over.
    void add(lib_nr_channel_resource_mapping_type_t owner, std::uint32_t entry, const lib_nr_resource_run_t& run);
    /// A run that reaches past the grid, as it was before its part inside was added.
    void add_cut(lib_nr_channel_resource_mapping_type_t owner, std::uint32_t entry, const lib_nr_resource_run_t& run);

    /// Marks so far, parts of runs among them.
    std::size_t get_number() const { return m_marks.size() + m_cuts.size(); }
    /// The conflicts of each pair of entries, in the order in which they arose.
    std::vector<lib_nr_resource_conflict_t> get_conflicts(std::uint32_t symbols, std::uint32_t subcarriers) const;
    /// The entries that lost resource blocks, in the order in which they did.
    std::vector<lib_nr_resource_cut_t> get_cuts(std::uint32_t symbols, std::uint32_t subcarriers) const;

private:
    struct mark_t
    {
        lib_nr_channel_resource_mapping_type_t owner;
        std::uint32_t entry;
        lib_nr_resource_run_t run;
    };

    std::vector<mark_t> m_marks;
    std::vector<mark_t> m_cuts;
};

} // namespace vek::nr_mod_lib

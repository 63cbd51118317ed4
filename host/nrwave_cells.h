#pragma once

#include "config/cfg_nr_waveform.h"
#include "host/analysis/nrwave_evm.h"
#include "phy/lib_nr_phy.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace nrwave
{

/// DMRS or PTRS of an entry in symbols of a slot that follow each other.
struct reference_signal_t
{
    vek::nr_mod_lib::lib_nr_channel_entry_t entry;
    vek::nr_mod_lib::lib_nr_cell_content_t content = vek::nr_mod_lib::LIB_NR_CELL_DMRS;
    vek::nr_mod_lib::lib_nr_numerology_type_t spacing = vek::nr_mod_lib::LIB_NR_SCS_15K;
    std::uint32_t slot = 0;                       ///< from the start of the waveform
    vek::nr_mod_lib::lib_nr_slot_extent_t extent; ///< subcarriers counted from the carrier's centre
};

/// Keeps what an engine maps, for as long as it lives: where reference signals lie, and, where they are asked for, all
/// cells that its runs send, as they are to be found in the samples.
class cell_keeper_t
{
public:
    cell_keeper_t(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, vek::nr_mod_lib::lib_nr_phy_t& engine,
                  bool keeps_cells = true);
    ~cell_keeper_t();
    cell_keeper_t(const cell_keeper_t&) = delete;
    cell_keeper_t& operator=(const cell_keeper_t&) = delete;

    const mapped_t& cells() const { return m_mapped; }
    const std::vector<reference_signal_t>& references() const { return m_references; }

private:
    void _take(const vek::nr_mod_lib::lib_nr_mapped_cells_t& cells);
    void _take_frame(const vek::nr_mod_lib::lib_nr_mapped_cells_t& cells);
    void _name_channels(const vek::nr_mod_lib::lib_nr_mapped_cells_t& cells);
    void _take_burst(const vek::nr_mod_lib::lib_nr_mapped_cells_t& cells);
    void _note_reference(const vek::nr_mod_lib::lib_nr_mapped_cells_t& cells,
                         const vek::nr_mod_lib::lib_nr_mapped_run_t& run, unsigned int slot_symbols);
    mapped_part_t& _part_of(const vek::nr_mod_lib::lib_nr_mapped_cells_t& cells);
    std::size_t _channel_of(const vek::nr_mod_lib::lib_nr_mapped_run_t& run, unsigned int carrier);
    void _append(const vek::nr_mod_lib::lib_nr_mapped_cells_t& cells, const vek::nr_mod_lib::lib_nr_mapped_run_t& run,
                 mapped_part_t& part, mapped_symbol_t& symbol);
    double _delay_of(unsigned int carrier) const;

    vek::nr_mod_lib::cfg_nr_waveform_t& m_waveform;
    vek::nr_mod_lib::lib_nr_phy_t& m_engine;
    bool m_keeps_cells;
    mapped_t m_mapped;
    std::vector<reference_signal_t> m_references;
    std::map<std::string, std::size_t> m_channels;                        ///< by path
    std::map<std::pair<unsigned int, unsigned int>, std::size_t> m_parts; ///< by carrier and numerology
};

} // namespace nrwave

#include "host/nrwave_generation.h"

#include "config/cfg_nr_enum_name_maps.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_progress.h"
#include "host/nrwave_record.h"
#include "phy/lib_nr_resource_manager.h"

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr std::uint64_t k_most_samples = std::uint64_t{1} << 31;
constexpr const char* k_narrow = "the numerology does not fill the channel bandwidth";

/// Where a run or view failed, and why where that is known.
std::string failure_line(const lib_nr_phy_t& engine, std::string reason = {})
{
    const auto& step = engine.get_first_failed_step();
    if (step && !step->reason.empty())
        reason = step->reason;
    std::string line = !step ? "the generation" : step->channel.empty() ? "the modulation" : std::string(step->channel);
    line += " failed";
    if (step)
        line += " in carrier " + std::to_string(step->carrier) + ", numerology " + std::to_string(step->numerology) +
                ", frame " + std::to_string(step->frame);
    if (step && step->entry)
        line += ", entry " + std::to_string(*step->entry);
    if (step && step->slot)
        line += ", slot " + std::to_string(*step->slot);
    return reason.empty() ? line : line + ": " + reason;
}

/// Owners of the cells that carry reference signals, numbered behind those of the grid.
struct reference_owner_t
{
    std::string_view channel;
    lib_nr_channel_resource_mapping_type_t owner; ///< of all cells of the channel
    lib_nr_cell_content_t content;
    const char* name;
};

constexpr std::array<reference_owner_t, k_prach_owner - k_conflict_owner - 1> k_reference_owners = {{
    {"SS/PBCH", LIB_NR_RESOURCE_MAPPING_SSB, LIB_NR_CELL_DMRS, "SSB DMRS"},
    {"PDCCH", LIB_NR_RESOURCE_MAPPING_PDCCH, LIB_NR_CELL_DMRS, "PDCCH DMRS"},
    {"PDSCH", LIB_NR_RESOURCE_MAPPING_PDSCH, LIB_NR_CELL_DMRS, "PDSCH DMRS"},
    {"PDSCH", LIB_NR_RESOURCE_MAPPING_PDSCH, LIB_NR_CELL_PTRS, "PDSCH PTRS"},
    {"PUCCH", LIB_NR_RESOURCE_MAPPING_PUCCH, LIB_NR_CELL_DMRS, "PUCCH DMRS"},
    {"PUSCH", LIB_NR_RESOURCE_MAPPING_PUSCH, LIB_NR_CELL_DMRS, "PUSCH DMRS"},
    {"PUSCH", LIB_NR_RESOURCE_MAPPING_PUSCH, LIB_NR_CELL_PTRS, "PUSCH PTRS"},
}};

/// Gives the cells of a run that carry reference signals an owner of their own.
void mark_reference(const lib_nr_mapped_run_t& run, resource_map_t& map)
{
    for (std::size_t i = 0; i < k_reference_owners.size(); ++i) {
        const reference_owner_t& row = k_reference_owners[i];
        if (row.channel != run.channel || row.content != run.content)
            continue;
        const std::size_t first =
            std::size_t{run.run.symbol} * map.subcarriers + static_cast<std::size_t>(run.run.first_subcarrier);
        for (std::size_t cell = 0; cell < run.run.count; ++cell)
            if (std::uint8_t& owner = map.owners.at(first + cell * std::max(run.run.step, 1U)); owner == row.owner)
                owner = static_cast<std::uint8_t>(k_conflict_owner + 1 + i);
    }
}

/// What the cells carry is known when they are written. Where that fails, or cannot be for a conflict, the map does
/// without.
void mark_references(lib_nr_phy_t& engine, resource_map_t& map)
{
    if (std::find(map.owners.begin(), map.owners.end(), k_conflict_owner) != map.owners.end())
        return;
    engine.set_trace_file_enable(false);
    struct observation_t
    {
        lib_nr_phy_t& engine;
        ~observation_t() { engine.set_cell_observer({}); }
    } const observation{engine};
    engine.set_cell_observer([&](const lib_nr_mapped_cells_t& cells) {
        for (const lib_nr_mapped_run_t& run : cells.runs)
            mark_reference(run, map);
    });
    try {
        engine.deal_payload_mapping(map.carrier, map.numerology, map.frame);
    } catch (const std::out_of_range&) { // as of a PUCCH beyond the carrier, which a run tells
    }
}

} // namespace

void generate(cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine)
{
    if (waveform.get_waveform_sample_points() > k_most_samples)
        throw failure_t("the waveform has " + std::to_string(waveform.get_waveform_sample_points()) +
                        " samples, more than 2^31");
    const progress_t progress("generating");
    try {
        engine.waveform_config(waveform.get_waveform_manager());
        if (!engine.nr_phy_process())
            throw failure_t(engine.get_record().conflicts.empty() ? failure_line(engine)
                                                                  : text_of(engine.get_record().conflicts.front()));
        if (const auto& step = engine.get_first_failed_step())
            throw failure_t(failure_line(engine, step->channel.empty() ? k_narrow : ""));
    } catch (const failure_t&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw failure_t("not enough memory for " + std::to_string(waveform.get_waveform_sample_points()) + " samples");
    } catch (const std::length_error&) {
        throw failure_t("not enough memory for " + std::to_string(waveform.get_waveform_sample_points()) + " samples");
    } catch (const std::exception& exception) {
        throw failure_t(failure_line(engine, exception.what()));
    }
}

void check_place(const lib_nr_waveform_configure_manager_t& waveform, unsigned int carrier, unsigned int numerology,
                 unsigned int frame)
{
    if (carrier >= waveform.get_carrier_number())
        throw failure_t("carrier " + std::to_string(carrier) + " is past the end: there are " +
                        std::to_string(waveform.get_carrier_number()));
    const unsigned int numerologies = waveform.get_carrier(carrier).get_numerology_number();
    if (numerology >= numerologies)
        throw failure_t("numerology " + std::to_string(numerology) + " is past the end: there are " +
                        std::to_string(numerologies));
    if (frame >= waveform.get_frame_number())
        throw failure_t("frame " + std::to_string(frame) + " is past the end: there are " +
                        std::to_string(waveform.get_frame_number()));
}

resource_map_t map_of(const lib_nr_waveform_configure_manager_t& waveform, lib_nr_phy_t& engine, unsigned int carrier,
                      unsigned int numerology, unsigned int frame)
{
    engine.waveform_config(waveform);
    if (!engine.deal_resource_mapping(carrier, numerology, frame, waveform))
        throw failure_t(failure_line(engine, "its cells cannot be mapped"));

    const auto& grid = lib_nr_channel_resource_manager_t::get_inst();
    resource_map_t map{carrier, numerology, frame, grid.get_mapped_symbol_number(), grid.get_mapped_subcarrier_number(),
                       {}};
    map.owners.reserve(static_cast<std::size_t>(map.symbols) * map.subcarriers);
    for (unsigned int symbol = 0; symbol < map.symbols; ++symbol) {
        const std::uint8_t* row = grid.get_owner_row(symbol);
        map.owners.insert(map.owners.end(), row, row + map.subcarriers);
    }
    mark_references(engine, map);
    return map;
}

const char* owner_name(std::uint8_t owner)
{
    constexpr std::size_t prefix = std::char_traits<char>::length("LIB_NR_RESOURCE_MAPPING_");
    if (owner == k_prach_owner)
        return "PRACH";
    if (owner > k_conflict_owner && owner < k_prach_owner)
        return k_reference_owners[owner - k_conflict_owner - 1U].name;
    const auto& names = g_lib_nr_channel_resource_mapping_type_t_name_map;
    const auto name = names.find(static_cast<lib_nr_channel_resource_mapping_type_t>(owner));
    return name == names.end() ? "EMPTY" : name->second.c_str() + prefix;
}

} // namespace nrwave

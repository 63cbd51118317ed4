#include "host/nrwave_cells.h"

#include "host/nrwave_record.h"
#include "host/nrwave_symbol_time.h"

#include <algorithm>
#include <cmath>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr double k_frame_s = 0.01;

/// TS 38.104 Table 6.5.2.2-1; what it does not name has none. TS 38.101-1 asks the same of a PUSCH.
std::optional<double> limit_of(lib_nr_modulation_type_t modulation)
{
    switch (modulation) {
    case LIB_NR_MODULATION_QPSK:
        return 17.5;
    case LIB_NR_MODULATION_16QAM:
        return 12.5;
    case LIB_NR_MODULATION_64QAM:
        return 8.0;
    case LIB_NR_MODULATION_256QAM:
        return 3.5;
    default:
        return std::nullopt;
    }
}

std::optional<double> limit_of(const lib_nr_channel_entry_t& entry, cfg_nr_carrier_t& carrier)
{
    const int place = static_cast<int>(entry.entry);
    if (entry.channel == "PDSCH")
        return limit_of(carrier.get_dl_pdsch(place)->get_modulation());
    if (entry.channel == "PUSCH")
        return limit_of(carrier.get_ul_pusch(place)->get_modulation());
    return std::nullopt;
}

/// The fraction of a turn by which the up-conversion turns a symbol (TS 38.211 clause 5.4), counted within its frame.
double turns_of(double useful_start_s, double frequency_hz)
{
    const long double turns = -static_cast<long double>(useful_start_s) * frequency_hz;
    return static_cast<double>(turns - std::floor(turns));
}

} // namespace

cell_keeper_t::cell_keeper_t(cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine, bool keeps_cells)
    : m_waveform(waveform), m_engine(engine), m_keeps_cells(keeps_cells)
{
    engine.set_cell_observer([this](const lib_nr_mapped_cells_t& cells) { _take(cells); });
}

cell_keeper_t::~cell_keeper_t() { m_engine.set_cell_observer({}); }

void cell_keeper_t::_take(const lib_nr_mapped_cells_t& cells)
{
    m_mapped.period_s = m_waveform.get_waveform_length(); // which may have been configured since
    m_mapped.is_mirrored = m_waveform.get_mirror_spectrum();
    if (!cells.burst)
        _take_frame(cells);
    else if (m_keeps_cells)
        _take_burst(cells);
}

void cell_keeper_t::_take_frame(const lib_nr_mapped_cells_t& cells)
{
    cfg_nr_carrier_t& carrier = *m_waveform.get_carrier(cells.carrier);
    const lib_nr_numerology_type_t spacing = carrier.get_numerology(static_cast<int>(cells.numerology))->get_scs();
    const unsigned int slots_in_subframe = 1U << spacing;
    const bool is_extended = spacing == LIB_NR_SCS_60K && carrier.get_dl_bwp(0)->get_cp_type() == LIB_NR_EXTEND_CP;
    const unsigned int slot_symbols = is_extended ? 12 : 14;
    const double phase_hz =
        static_cast<double>(m_waveform.get_radio_frequency()) +
        (m_waveform.get_standard_rules() ? static_cast<double>(carrier.get_frequency_offset()) : 0.0);
    _name_channels(cells);
    std::vector<lib_nr_mapped_run_t> runs = cells.runs;
    std::stable_sort(runs.begin(), runs.end(),
                     [](const auto& a, const auto& b) { return a.run.symbol < b.run.symbol; });

    mapped_part_t& part = _part_of(cells);
    std::optional<std::uint32_t> last;
    for (const lib_nr_mapped_run_t& run : runs) {
        if (last != run.run.symbol) {
            const unsigned int slot = run.run.symbol / slot_symbols;
            const unsigned int symbol_in_slot = run.run.symbol % slot_symbols;
            const double end = start_of(slot, symbol_in_slot + 1, is_extended, slots_in_subframe);
            const double start = end - useful_length_of(slots_in_subframe);
            // A waveform of fewer subframes ends inside its frame.
            if (cells.frame * k_frame_s + end > m_mapped.period_s + 1e-9)
                break;
            mapped_symbol_t symbol;
            symbol.start_s = cells.frame * k_frame_s + start + _delay_of(cells.carrier);
            symbol.prefix_s = start - start_of(slot, symbol_in_slot, is_extended, slots_in_subframe);
            symbol.turns = m_waveform.get_phase_compensation() ? turns_of(start, phase_hz) : 0.0;
            part.symbols.push_back(symbol);
            last = run.run.symbol;
        }
        if (run.content != LIB_NR_CELL_DATA)
            _note_reference(cells, run, slot_symbols);
        if (m_keeps_cells && !run.is_part)
            _append(cells, run, part, part.symbols.back());
    }
}

/// Runs come channel by channel, but within one a later entry may be the first to send.
void cell_keeper_t::_name_channels(const lib_nr_mapped_cells_t& cells)
{
    for (auto run = cells.runs.begin(); run != cells.runs.end();) {
        std::map<std::uint32_t, const lib_nr_mapped_run_t*> by_entry;
        for (const auto channel = run->channel; run != cells.runs.end() && run->channel == channel; ++run)
            by_entry.emplace(run->entry, &*run);
        for (const auto& [entry, own] : by_entry)
            _channel_of(*own, cells.carrier);
    }
}

/// Runs come by rising symbol: one of the slot's last signals goes on, or a new one begins, as behind a hop.
void cell_keeper_t::_note_reference(const lib_nr_mapped_cells_t& cells, const lib_nr_mapped_run_t& run,
                                    unsigned int slot_symbols)
{
    const auto half = static_cast<std::int32_t>((*cells.rows)[run.run.symbol].size() / 2);
    const std::int32_t first = run.run.first_subcarrier - half;
    const auto end = first + static_cast<std::int32_t>((run.run.count - 1) * std::max(run.run.step, 1U) + 1);
    const auto slots_in_frame = static_cast<std::uint32_t>((*cells.rows).size() / slot_symbols);
    const std::uint32_t symbol = run.run.symbol % slot_symbols;
    const lib_nr_channel_entry_t entry{run.channel, cells.carrier, run.entry};
    const lib_nr_numerology_type_t spacing =
        m_waveform.get_carrier(cells.carrier)->get_numerology(static_cast<int>(cells.numerology))->get_scs();
    const std::uint32_t slot = cells.frame * slots_in_frame + run.run.symbol / slot_symbols;
    const auto goes_on = [&](const lib_nr_slot_extent_t& extent) {
        return extent.symbol_end > symbol ||
               (extent.symbol_end == symbol && extent.first_subcarrier < end && extent.subcarrier_end > first);
    };
    for (auto own = m_references.rbegin(); own != m_references.rend() && own->slot == slot; ++own)
        if (own->entry.channel == entry.channel && own->entry.entry == entry.entry && own->content == run.content &&
            own->entry.carrier == entry.carrier && own->spacing == spacing && goes_on(own->extent))
        {
            own->extent.symbol_end = symbol + 1;
            own->extent.first_subcarrier = std::min(own->extent.first_subcarrier, first);
            own->extent.subcarrier_end = std::max(own->extent.subcarrier_end, end);
            return;
        }
    m_references.push_back({entry, run.content, spacing, slot, {symbol, symbol + 1, first, end}});
}

/// A burst has a gain of its own: by what it is turned depends on where it begins.
void cell_keeper_t::_take_burst(const lib_nr_mapped_cells_t& cells)
{
    const prach_ofdm_info_param_t& info = *cells.burst;
    const auto in_seconds = [&](double samples) { return samples / info.sample_rate_hz; };
    mapped_part_t part;
    part.carrier = cells.carrier;
    part.spacing_hz = info.scs_hz;
    part.centre_hz = m_waveform.get_carrier(cells.carrier)->get_frequency_offset() + info.frequency_shift_hz;
    double place = static_cast<double>(cells.start);
    // What passes the frame's end comes back at its beginning; by the standard it goes on in the next one.
    const double frame_s = cells.frame * k_frame_s;
    const bool is_on_through = m_waveform.get_standard_rules();
    const double turn_s = is_on_through ? m_mapped.period_s : k_frame_s;
    const double turn_begin_s = is_on_through ? 0.0 : frame_s;
    for (const lib_nr_mapped_run_t& run : cells.runs) {
        const double prefix = run.run.symbol < info.cp_lengths.size() ? info.cp_lengths[run.run.symbol] : 0.0;
        mapped_symbol_t symbol;
        symbol.start_s = in_seconds(place + prefix);
        symbol.prefix_s = in_seconds(prefix);
        place += prefix + info.fft_length;
        const double in_turn = std::fmod(std::fmod(frame_s - turn_begin_s + symbol.start_s, turn_s) + turn_s, turn_s);
        if (in_turn - symbol.prefix_s < 0.0 || in_turn + in_seconds(info.fft_length) > turn_s ||
            turn_begin_s + in_turn + in_seconds(info.fft_length) > m_mapped.period_s)
            continue;
        symbol.start_s = turn_begin_s + in_turn + _delay_of(cells.carrier);
        _append(cells, run, part, symbol);
        part.symbols.push_back(symbol);
    }
    m_mapped.parts.push_back(std::move(part));
}

mapped_part_t& cell_keeper_t::_part_of(const lib_nr_mapped_cells_t& cells)
{
    const auto [place, is_new] = m_parts.try_emplace(std::pair(cells.carrier, cells.numerology), m_mapped.parts.size());
    if (is_new) {
        cfg_nr_carrier_t& carrier = *m_waveform.get_carrier(cells.carrier);
        mapped_part_t part;
        part.carrier = cells.carrier;
        part.spacing_hz = std::uint64_t{15000} << carrier.get_numerology(static_cast<int>(cells.numerology))->get_scs();
        part.centre_hz = static_cast<double>(carrier.get_frequency_offset());
        m_mapped.parts.push_back(std::move(part));
    }
    return m_mapped.parts[place->second];
}

std::size_t cell_keeper_t::_channel_of(const lib_nr_mapped_run_t& run, unsigned int carrier)
{
    const lib_nr_channel_entry_t entry{run.channel, carrier, run.channel == "SS/PBCH" ? 0 : run.entry};
    const std::string path = path_of(entry);
    const auto [place, is_new] = m_channels.try_emplace(path, m_mapped.channels.size());
    if (is_new)
        m_mapped.channels.push_back({path, limit_of(entry, *m_waveform.get_carrier(carrier))});
    return place->second;
}

void cell_keeper_t::_append(const lib_nr_mapped_cells_t& cells, const lib_nr_mapped_run_t& run, mapped_part_t& part,
                            mapped_symbol_t& symbol)
{
    const std::vector<std::complex<double>>& row = (*cells.rows)[run.run.symbol];
    const std::uint32_t step = std::max(run.run.step, 1U);
    const auto half = static_cast<std::int32_t>((row.size() + (cells.burst ? 1 : 0)) / 2);
    symbol.runs.push_back(
        {_channel_of(run, cells.carrier), run.run.first_subcarrier - half, run.run.count, step, part.values.size()});
    for (std::uint32_t i = 0; i < run.run.count; ++i)
        part.values.push_back(row[static_cast<std::size_t>(run.run.first_subcarrier) + std::size_t{i} * step]);
}

/// In whole samples of the waveform, as the engine delays.
double cell_keeper_t::_delay_of(unsigned int carrier) const
{
    const auto rate = static_cast<double>(m_waveform.get_waveform_sample_rate());
    return rate > 0.0 ? std::round(m_waveform.get_carrier(carrier)->get_timing_offset() * rate) / rate : 0.0;
}

} // namespace nrwave

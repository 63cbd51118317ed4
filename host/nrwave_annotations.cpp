#include "host/nrwave_annotations.h"

#include "host/nrwave_prach.h"
#include "host/nrwave_record.h"
#include "host/nrwave_symbol_time.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr double k_frame_s = 0.01;

/// Times and frequencies of a piece, before its place among the samples is known.
struct piece_t
{
    double start_s = 0.0;
    double end_s = 0.0;
    double low_hz = 0.0; ///< from the carrier's centre
    double high_hz = 0.0;
};

/// What lies in one slot.
piece_t piece_of(std::uint32_t slot, const lib_nr_slot_extent_t& extent, lib_nr_numerology_type_t spacing,
                 bool is_extended)
{
    const unsigned int slots_in_subframe = 1u << spacing;
    const double hertz = 15e3 * slots_in_subframe;
    return {start_of(slot, extent.first_symbol, is_extended, slots_in_subframe),
            start_of(slot, extent.symbol_end, is_extended, slots_in_subframe), (extent.first_subcarrier - 0.5) * hertz,
            (extent.subcarrier_end - 0.5) * hertz};
}

/// One for each run of slots.
std::vector<piece_t> pieces_of(const lib_nr_entry_record_t& entry, bool is_extended)
{
    std::vector<std::pair<std::uint32_t, lib_nr_slot_extent_t>> slots;
    for (std::size_t i = 0; i < entry.slots.size(); ++i)
        slots.emplace_back(entry.slots[i], entry.extents[i]);
    std::stable_sort(slots.begin(), slots.end(), [](const auto& a, const auto& b) { return a.first < b.first; });

    std::vector<piece_t> pieces;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        const auto& [slot, extent] = slots[i];
        const piece_t piece = piece_of(slot, extent, entry.spacing, is_extended);
        if (i == 0 || slot > slots[i - 1].first + 1) {
            pieces.push_back(piece);
            continue;
        }
        piece_t& run = pieces.back();
        run.start_s = std::min(run.start_s, piece.start_s);
        run.end_s = std::max(run.end_s, piece.end_s);
        run.low_hz = std::min(run.low_hz, piece.low_hz);
        run.high_hz = std::max(run.high_hz, piece.high_hz);
    }
    return pieces;
}

/// The bursts of a PRACH entry: one that passes its frame's end comes back at its beginning, or by the standard goes on
/// in the next one.
std::vector<piece_t> bursts_of(const lib_nr_entry_record_t& entry, cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine)
{
    cfg_nr_carrier_t& carrier = *waveform.get_carrier(entry.carrier);
    unsigned int numerology = 0;
    while (numerology + 1 < carrier.get_numerology_number() &&
           carrier.get_numerology(static_cast<int>(numerology))->get_scs() != entry.spacing)
        ++numerology;
    std::vector<piece_t> pieces;
    for (const std::uint32_t frame : entry.slots) {
        const prach_map_t map = prach_map_of(waveform.get_waveform_manager(), engine, entry.carrier, numerology, frame);
        if (entry.entry >= map.bursts.size())
            continue;
        const prach_burst_t& burst = map.bursts[entry.entry];
        const double begin = frame * k_frame_s;
        const piece_t piece = {begin + burst.start_ms / 1e3, begin + burst.end_ms / 1e3, burst.low_hz, burst.high_hz};
        if (waveform.get_standard_rules()) {
            // The map counts within the frame. Where the time offset has led out of it, the frame is another one.
            const double offset_s = carrier.get_ul_prach(entry.entry)->get_timeoffet();
            const double frames =
                std::isfinite(offset_s) ? std::floor((burst.start_ms / 1e3 - offset_s) / k_frame_s + 1e-9) : 0.0;
            const double period_s = waveform.get_waveform_length();
            const double start_s =
                std::fmod(std::fmod(piece.start_s - frames * k_frame_s, period_s) + period_s, period_s);
            const double end_s =
                start_s + piece.end_s - piece.start_s + (piece.end_s < piece.start_s ? k_frame_s : 0.0);
            pieces.push_back({start_s, end_s, piece.low_hz, piece.high_hz});
        }
        else if (piece.end_s >= piece.start_s)
            pieces.push_back(piece);
        else {
            pieces.push_back({begin, piece.end_s, piece.low_hz, piece.high_hz});
            pieces.push_back({piece.start_s, begin + k_frame_s, piece.low_hz, piece.high_hz});
        }
    }
    return pieces;
}

/// Puts pieces among the samples of a period.
class placement_t
{
public:
    placement_t(cfg_nr_waveform_t& waveform, std::uint64_t samples)
        : m_waveform(waveform),
          m_samples(samples),
          m_rate(static_cast<double>(samples) / waveform.get_waveform_length())
    {}

    void add(const piece_t& piece, const lib_nr_channel_entry_t& entry, const std::string& what = {})
    {
        const cfg_nr_carrier_t& carrier = *m_waveform.get_carrier(entry.carrier);
        const double delay = carrier.get_timing_offset();
        annotation_t annotation = {_sample(piece.start_s + delay), 0, piece.low_hz, piece.high_hz,
                                   path_of(entry) + what};
        annotation.samples = _sample(piece.end_s + delay) - annotation.first_sample;
        annotation.low_hz += carrier.get_frequency_offset();
        annotation.high_hz += carrier.get_frequency_offset();
        if (m_waveform.get_mirror_spectrum())
            std::tie(annotation.low_hz, annotation.high_hz) = std::pair(-annotation.high_hz, -annotation.low_hz);
        const auto centre = static_cast<double>(m_waveform.get_radio_frequency());
        annotation.low_hz += centre;
        annotation.high_hz += centre;
        _wrap(std::move(annotation));
    }

    std::vector<annotation_t> in_order()
    {
        std::stable_sort(m_annotations.begin(), m_annotations.end(),
                         [](const annotation_t& a, const annotation_t& b) { return a.first_sample < b.first_sample; });
        return std::move(m_annotations);
    }

private:
    std::uint64_t _sample(double seconds) const
    {
        return static_cast<std::uint64_t>(std::llround(std::max(seconds, 0.0) * m_rate));
    }

    void _wrap(annotation_t annotation)
    {
        annotation.samples = std::min(annotation.samples, m_samples);
        annotation.first_sample %= m_samples;
        const std::uint64_t end = annotation.first_sample + annotation.samples;
        if (end > m_samples) {
            annotation_t head = annotation;
            head.first_sample = 0;
            head.samples = end - m_samples;
            m_annotations.push_back(std::move(head));
            annotation.samples = m_samples - annotation.first_sample;
        }
        m_annotations.push_back(std::move(annotation));
    }

    cfg_nr_waveform_t& m_waveform;
    std::uint64_t m_samples;
    double m_rate;
    std::vector<annotation_t> m_annotations;
};

} // namespace

std::vector<annotation_t> annotations_of(cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine,
                                         const std::vector<reference_signal_t>& references, std::uint64_t samples)
{
    if (samples == 0)
        return {};
    placement_t placement(waveform, samples);
    const std::vector<lib_nr_entry_record_t> entries = engine.get_record().entries; // views may follow
    const auto is_extended = [&](unsigned int carrier, lib_nr_numerology_type_t spacing) {
        return spacing == LIB_NR_SCS_60K &&
               waveform.get_carrier(carrier)->get_dl_bwp(0)->get_cp_type() == LIB_NR_EXTEND_CP;
    };
    for (const lib_nr_entry_record_t& entry : entries) {
        const bool is_burst = is_prach(waveform, entry.carrier);
        for (const piece_t& piece : is_burst ? bursts_of(entry, waveform, engine)
                                             : pieces_of(entry, is_extended(entry.carrier, entry.spacing)))
            placement.add(piece, entry);
    }
    for (const reference_signal_t& signal : references)
        placement.add(
            piece_of(signal.slot, signal.extent, signal.spacing, is_extended(signal.entry.carrier, signal.spacing)),
            signal.entry, signal.content == LIB_NR_CELL_DMRS ? " DMRS" : " PTRS");
    return placement.in_order();
}

} // namespace nrwave

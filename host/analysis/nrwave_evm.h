#pragma once

#include "host/analysis/nrwave_measurement.h"

#include <array>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace nrwave
{

/// Cells that an entry sends in a symbol, equally spaced.
struct mapped_run_t
{
    std::size_t channel = 0; ///< place in the list of `mapped_t`
    std::int32_t first = 0;  ///< subcarriers from the carrier's centre
    std::uint32_t count = 0;
    std::uint32_t step = 1;
    std::size_t first_value = 0; ///< in the values of its part
};

struct mapped_symbol_t
{
    double start_s = 0.0;  ///< of the useful part, from the start of the waveform
    double prefix_s = 0.0; ///< ahead of it
    double turns = 0.0;    ///< by which it is turned, a fraction of a turn
    std::vector<mapped_run_t> runs;
};

/// Symbols of one spacing that share one gain: those of a carrier's numerology, or of one burst of a PRACH.
struct mapped_part_t
{
    std::size_t carrier = 0; ///< place in the waveform's list
    double centre_hz = 0.0;  ///< from the waveform's centre, before it is mirrored
    std::uint64_t spacing_hz = 15000;
    std::vector<mapped_symbol_t> symbols;
    std::vector<std::complex<double>> values;
};

/// Who sends cells.
struct mapped_channel_t
{
    std::string path;
    std::optional<double> limit_percent;
};

/// What a waveform sends, cell by cell, from the first sample of its period to the last.
struct mapped_t
{
    double period_s = 0.0;
    bool is_mirrored = false;
    std::vector<mapped_channel_t> channels;
    std::vector<mapped_part_t> parts;
};

/// Samples that hold a waveform: one period of it as it is sent, or what was captured of it.
struct received_t
{
    vek::common_lib::lib_signal_view_t samples;
    std::uint64_t rate = 0;
    bool is_period = true; ///< else nothing stands behind the last sample or ahead of the first
    double start_s = 0.0;  ///< where in the samples the waveform begins
};

/// What a channel's cells look like, beside what was sent.
struct constellation_t
{
    std::string path;
    std::vector<std::complex<double>> received;
    std::vector<std::complex<double>> sent;
};

/// Error vector magnitudes; nothing where no cell was found among the samples, or only silence.
struct evm_t
{
    std::optional<double> percent;               ///< of all cells
    std::vector<std::optional<double>> carriers; ///< by the place in the waveform's list
    std::vector<channel_evm_t> channels;
    std::vector<constellation_t> constellations; ///< of the chosen channels
};

/// Demodulates all symbols and holds their cells against what was mapped. The root of the error's power over that of
/// the cells, all cells of an entry counting, reference signals too, but for those of no power.
///
/// As TS 38.104 Annex B has it, the transform does not stand where a symbol's useful part begins but at both ends of a
/// window in the middle of the prefix, here half as long as that, and the larger error counts: so what windowing and
/// filter leave of the prefix shows. A gain and a phase that all of a part share are no error; nothing else is
/// equalised.
evm_t evm_of(const received_t& received, const mapped_t& mapped, const std::set<std::string>& chosen = {});

/// Brings them into a measurement of the same samples.
void take(const evm_t& evm, measurement_t& measurement);

} // namespace nrwave

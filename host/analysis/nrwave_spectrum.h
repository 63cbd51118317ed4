#pragma once

#include "host/analysis/nrwave_signal.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace nrwave
{

/// Some neighbouring lines of a spectrum.
struct spectrum_point_t
{
    double frequency_hz = 0.0; ///< of their middle, from the centre
    double mean = 0.0;         ///< power within the resolution, as their mean
    double peak = 0.0;         ///< the largest of them
};

struct band_t
{
    double low_hz = 0.0;
    double high_hz = 0.0;

    double width_hz() const { return high_hz - low_hz; }
};

/// The power of a signal against frequency, averaged over all of it, so that a full-scale tone on I and Q has power 1.
/// Overlapping pieces go through a Kaiser window whose side lobes lie below -250 dB; the last ones run on into the
/// beginning, as the signal does. The powers of all lines together are the mean power.
class spectrum_t
{
public:
    explicit spectrum_t(const signal_t& signal);

    double rate_hz() const { return m_rate_hz; }
    /// The bandwidth in which the points' powers are stated, at most 15 kHz; 0 where there are no samples. It is the
    /// noise bandwidth of the window: noise and tones alike show their power within it.
    double resolution_hz() const { return m_resolution_hz; }

    /// As far as the rate holds the band.
    double power_between(double low_hz, double high_hz) const;
    double power_between(const band_t& band) const { return power_between(band.low_hz, band.high_hz); }
    /// The part of a band with this share of its power, as much being cut off below as above; nothing without power.
    std::optional<band_t> occupied(const band_t& within, double share) const;

    /// At most so many points over the whole rate, by rising frequency.
    std::vector<spectrum_point_t> points(std::size_t most) const;

private:
    /// Where a frequency lies, counted in lines from the lowest one's lower end.
    double _place_of(double hertz) const;
    double _frequency_of(double place) const;
    /// The part of a line's power that lies between two places: it is spread evenly half way to its neighbours.
    double _part_of(std::size_t line, double from, double to) const;

    double m_rate_hz = 0.0;
    double m_resolution_hz = 0.0;
    double m_line_hz = 0.0;
    std::vector<double> m_powers; ///< of the lines, by rising frequency, 0 Hz in the middle
};

} // namespace nrwave

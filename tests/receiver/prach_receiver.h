#pragma once

#include "receiver/fft.h"

#include <cstddef>

namespace nr_test
{

/// Where TS 38.211 clause 5.3.2 puts a preamble, and what it looks like.
struct prach_place_t
{
    double sample_rate = 0.0;
    double start_s = 0.0;     ///< of the prefix, from the start of the waveform
    double prefix_s = 0.0;    ///< N_CP
    double spacing_hz = 0.0;  ///< of the preamble
    double lowest_hz = 0.0;   ///< its lowest subcarrier, from the carrier's centre; no multiple of the spacing by need
    std::size_t length = 839; ///< L_RA
    std::size_t repetitions = 1;
    bool fits = true; ///< whether the carrier is wide enough
};

/// First and one past the last sample that is not silent.
struct span_t
{
    std::size_t begin = 0;
    std::size_t end = 0;
};
span_t sounding_span(const signal_t& samples);

/// The sequence x_u,v of TS 38.211 clause 6.3.3.1 as a receiver compares it: its DFT.
signal_t prach_spectrum(std::size_t length, std::size_t u, std::size_t cyclic_shift);

/// The preamble's subcarriers of one repetition.
signal_t receive_prach(const signal_t& samples, const prach_place_t& place, std::size_t repetition);

/// Magnitude of the correlation, 1 where they are alike but for one factor.
double likeness(const signal_t& a, const signal_t& b);

} // namespace nr_test

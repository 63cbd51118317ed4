#pragma once

namespace nrwave
{

/// When a symbol begins, its prefix included, from the start of the waveform (TS 38.211 clause 5.3.1).
double start_of(unsigned int slot, unsigned int symbol, bool is_extended, unsigned int slots_in_subframe);
/// How long the useful part of a symbol is; the rest of it up to the next is its prefix.
double useful_length_of(unsigned int slots_in_subframe);

} // namespace nrwave

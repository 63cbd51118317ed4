#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// The seams of a circular waveform whose frames are written to where they belong, in their order. What a frame spreads
/// ahead of itself and behind goes into its neighbours, and round the ends of the waveform; it waits here while those
/// are not written yet.
class NR_MOD_LIB_EXPORT frame_seams_t
{
public:
    /// Begins a waveform of frames of this length.
    void open(std::uint64_t frame_length);
    /// To be called when a frame's samples are written: `head` falls ahead of it, `tail` behind it. A waveform that
    /// ends inside the frame lacks the tail, it does not go round; a frame behind its end adds nothing. Takes both.
    void join(std::uint64_t frame, std::vector<std::complex<double>>& head, std::vector<std::complex<double>>& tail,
              std::vector<std::complex<double>>& waveform);
    /// To be called when all frames are written.
    void close(std::vector<std::complex<double>>& waveform);

    std::uint64_t get_frame_length() const { return m_frame_length; }

private:
    std::uint64_t m_frame_length = 0;
    std::vector<std::complex<double>> m_first_head;
    std::vector<std::complex<double>> m_tail;
    std::uint64_t m_tail_begin = 0;
};

/// Adds one period of a periodic signal to a buffer that holds the same period at another rate. Band-limited: what lies
/// beyond half the lower of both rates is cut. Amplitudes are scaled by the root of own rate over buffer rate, so that
/// all carriers of a waveform have the same power per subcarrier and hertz of spacing. `own` is used up.
NR_MOD_LIB_EXPORT void add_resampled(std::vector<std::complex<double>>& own, std::vector<std::complex<double>>& buffer);

} // namespace vek::nr_mod_lib

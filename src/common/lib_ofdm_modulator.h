#pragma once

#include "common/lib_ofdm_cyclic_config.h"
#include "common/lib_ofdm_windowing_method.h"
#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::common_lib
{

/// Rows of a frame's subcarriers, one a symbol. Where `written` is given, those whose entry is 0 count as zeros,
/// whatever they hold.
struct lib_ofdm_payload_t
{
    const std::vector<std::vector<std::complex<double>>>& rows;
    const std::vector<std::uint8_t>* written = nullptr;

    bool may_sound(std::size_t row) const { return written == nullptr || (*written)[row] != 0; }
};

/// OFDM modulation of a frame: rows of subcarriers in, samples out.
///
/// Subcarrier k of a row of M lies at (k - M / 2) spacings. With A = FFT length x oversampling ratio the inverse
/// transform is scaled by 1 / sqrt(A), so that the mean power of a fully occupied symbol is the mean power of its
/// subcarriers times M / A.
///
/// Windowing is weighted overlap-add. Each symbol fades out over a further suffix that lies in the prefix of the next
/// symbol, where that one fades in; the useful part is never touched. The suffix of the last symbol belongs to the
/// first prefix of the frame that follows: it stays at the end of main, behind the frame.
class NR_MOD_LIB_EXPORT lib_ofdm_modulator_t
{
public:
    /// Samples of the useful symbol at oversampling ratio 1.
    void set_fft_length(unsigned int fft_length);
    /// Symbols in a frame.
    void set_symbol_number(unsigned int symbol_number);
    /// 0 is taken as 1.
    void set_oversampling_ratio(unsigned int oversampling_ratio);
    void set_cyclic_prefix_config(const lib_ofdm_cyclic_config_t& config);
    /// Suffixes that lengthen their symbols, beside those of the windowing.
    void set_cyclic_suffix_config(const lib_ofdm_cyclic_config_t& config);
    /// Silence behind the last symbol, in samples of the result.
    void set_frame_idle_length(unsigned int frame_idle_length);
    /// Length of a transition as a fraction of the useful symbol; a transition is never longer than the prefix that it
    /// falls into. Below 0 is 0, NaN changes nothing.
    void set_window_beta(double window_beta);
    void set_windowing_method(lib_ofdm_windowing_method_type_t method);
    /// A phase for each symbol, in turns, counter-clockwise; the symbol is turned together with its extensions. Symbols
    /// without an entry, and those whose entry is not finite, stay as they are.
    void set_symbol_phase_turns(const std::vector<double>& symbol_phase_turns);

    /// One row per symbol of the frame, each with at most A subcarriers; rows without energy cost nothing. main takes
    /// the frame's samples, with what the window leaves behind the frame; head and tail come back empty. False, and
    /// main empty, when the rows are not as many as the symbols, a row is too long, or no length is set.
    bool deal_ofdm_modulation(const std::vector<std::vector<std::complex<double>>>& payload,
                              std::vector<std::complex<double>>& main, std::vector<std::complex<double>>& head,
                              std::vector<std::complex<double>>& tail);

    /// The same to where the frame belongs, `length` samples that are all written; what the window leaves behind the
    /// frame becomes the tail. False, and nothing written, also where the symbols are not of that length together.
    bool modulate_frame(const lib_ofdm_payload_t& payload, std::complex<double>* frame, std::size_t length,
                        std::vector<std::complex<double>>& tail);

private:
    struct frame_layout_t;

    bool _is_modulable(const std::vector<std::vector<std::complex<double>>>& payload) const;
    unsigned int _get_useful_length() const { return m_fft_length * m_oversampling_ratio; }
    unsigned int _get_transition_length(unsigned int prefix) const;
    frame_layout_t _lay_out_frame() const;
    void _modulate(const lib_ofdm_payload_t& payload, const frame_layout_t& layout, std::complex<double>* frame,
                   std::vector<std::complex<double>>& tail) const;

    unsigned int m_fft_length = 0;
    unsigned int m_symbol_number = 0;
    unsigned int m_oversampling_ratio = 1;
    lib_ofdm_cyclic_config_t m_cyclic_prefix_config{0.0};
    lib_ofdm_cyclic_config_t m_cyclic_suffix_config{0.0};
    unsigned int m_frame_idle_length = 0;
    double m_window_beta = 0.0;
    lib_ofdm_windowing_method_type_t m_windowing_method = LIB_OFDM_WINDOWING_RAISED_COSINE;
    std::vector<double> m_symbol_phase_turns;
};

} // namespace vek::common_lib

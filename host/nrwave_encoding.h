#pragma once

#include "host/analysis/nrwave_level.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nrwave
{

/// Formats of files of samples.
enum class sample_format_t
{
    sigmf, ///< single precision, little endian, I first, beside a file that describes it
    cf32,  ///< the same, bare
    cf64,  ///< double precision
    ci16,  ///< whole numbers of 16 bits, 32767 being full scale
    npy,   ///< NumPy's file of complex128
    csv,   ///< a line i,q a sample below the line "i,q", the shortest numbers that read back equal
};

/// The format of a name, such as cf32; an unknown name is a failure.
sample_format_t sample_format_of(const std::string& name);
const char* name_of(sample_format_t format);
/// What the name of a file of samples ends in.
const char* suffix_of(sample_format_t format);
/// All names, the default first.
std::vector<std::string> sample_format_names();

/// Turns samples into the bytes of a file, and keeps the level as the file holds it.
class sample_encoder_t
{
public:
    /// All samples are multiplied by a gain.
    sample_encoder_t(sample_format_t format, double gain) : m_format(format), m_gain(gain) {}

    /// What stands ahead of so many samples.
    std::string head(std::uint64_t samples) const;
    /// In bytes, of a file of so many samples, where the samples' values do not decide it.
    std::optional<std::uint64_t> file_size(std::uint64_t samples) const;
    /// The bytes of samples, good until the next call. They may be swapped for another buffer.
    std::string& encoded(const std::complex<double>* samples, std::size_t count);

    const level_t& level() const { return m_level; }
    /// Samples that the format cannot hold: they are at full scale.
    std::uint64_t clipped() const { return m_clipped; }

private:
    template <class number_t>
    void _append(const std::complex<number_t>* samples, std::size_t count);
    void _append_single(const std::complex<double>* samples, std::size_t count);
    void _append_whole(const std::complex<double>* samples, std::size_t count);
    void _append_text(const std::complex<double>* samples, std::size_t count);

    sample_format_t m_format;
    double m_gain;
    std::vector<std::complex<double>> m_block;
    std::string m_bytes;
    level_t m_level;
    std::uint64_t m_clipped = 0;
};

/// Reads the bytes of a file back, piece by piece.
class sample_decoder_t
{
public:
    explicit sample_decoder_t(sample_format_t format) : m_format(format) {}

    /// Bytes that are not of the format are a failure, which says why.
    void add(std::string_view bytes);
    /// Behind the last byte: a sample cut short is a failure.
    void finish();

    const level_t& level() const { return m_level; }
    /// Has the samples kept in full.
    void keep_in(std::vector<std::complex<double>>& samples) { m_kept = &samples; }

private:
    void _take(const std::complex<double>* samples, std::size_t count);
    bool _took_head();
    void _take_npy_head();
    void _take_binary();
    void _take_lines();
    void _take_line(std::string_view line);

    sample_format_t m_format;
    std::string m_bytes; ///< not taken yet
    bool m_is_behind_head = false;
    std::uint64_t m_promised = 0; ///< by the head of an npy file
    level_t m_level;
    std::vector<std::complex<double>>* m_kept = nullptr;
};

} // namespace nrwave

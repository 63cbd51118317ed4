#include "host/nrwave_encoding.h"

#include "common/lib_number_text.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_nearest.h"
#include "host/nrwave_value.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstring>

namespace nrwave
{

static_assert(std::endian::native == std::endian::little, "samples are written as they lie in memory");

namespace
{

struct format_row_t
{
    const char* name;
    const char* suffix;
};

/// In the order of their values.
constexpr std::array<format_row_t, 6> k_formats = {{{"sigmf", ".sigmf-data"},
                                                    {"cf32", ".cf32"},
                                                    {"cf64", ".cf64"},
                                                    {"ci16", ".ci16"},
                                                    {"npy", ".npy"},
                                                    {"csv", ".csv"}}};

constexpr double k_full_scale_16 = 32767.0;
constexpr std::string_view k_npy_magic = "\x93NUMPY\x01";
constexpr std::size_t k_npy_prefix = 10; // magic, version, length of the text
constexpr std::string_view k_csv_head = "i,q\n";

const format_row_t& row_of(sample_format_t format) { return k_formats[static_cast<std::size_t>(format)]; }

template <class number_t>
std::string_view bytes_of(const number_t* numbers, std::size_t count)
{
    return {reinterpret_cast<const char*>(numbers), count * sizeof(*numbers)};
}

/// Version 1.0 of the format: the text ends with a newline on a multiple of 64 bytes.
std::string npy_head(std::uint64_t samples)
{
    std::string text = "{'descr': '<c16', 'fortran_order': False, 'shape': (" + std::to_string(samples) + ",), }";
    text.append(63 - (k_npy_prefix + text.size()) % 64, ' ').append(1, '\n');
    std::string head(k_npy_magic);
    head += '\0';
    head += static_cast<char>(text.size() & 0xff);
    head += static_cast<char>(text.size() >> 8);
    return head + text;
}

/// What stands behind a key of an npy file's head, up to the comma; of a tuple its first item.
std::string_view npy_value(std::string_view head, std::string_view key)
{
    const std::size_t place = head.find(key);
    if (place == std::string_view::npos)
        return {};
    std::string_view value = head.substr(place + key.size());
    value.remove_prefix(std::min(value.find_first_not_of(": ("), value.size()));
    return value.substr(0, value.find_first_of(",)}"));
}

/// In bytes, of a binary format.
std::size_t sample_size(sample_format_t format)
{
    switch (format) {
    case sample_format_t::ci16:
        return 2 * sizeof(std::int16_t);
    case sample_format_t::cf64:
    case sample_format_t::npy:
        return 2 * sizeof(double);
    default:
        return 2 * sizeof(float);
    }
}

double whole_16(double value, bool& clips)
{
    const double rounded = std::nearbyint(value * k_full_scale_16);
    clips = clips || std::fabs(rounded) > k_full_scale_16;
    return std::clamp(rounded, -k_full_scale_16, k_full_scale_16);
}

void append_number(std::string& text, double number)
{
    char digits[32];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

} // namespace

sample_format_t sample_format_of(const std::string& name)
{
    for (std::size_t i = 0; i < k_formats.size(); ++i)
        if (name == k_formats[i].name)
            return static_cast<sample_format_t>(i);
    throw failure_t("unknown format " + shortened(name) + nearest_to(name, sample_format_names()));
}

const char* name_of(sample_format_t format) { return row_of(format).name; }

const char* suffix_of(sample_format_t format) { return row_of(format).suffix; }

std::vector<std::string> sample_format_names()
{
    std::vector<std::string> names;
    for (const format_row_t& row : k_formats)
        names.emplace_back(row.name);
    return names;
}

std::string sample_encoder_t::head(std::uint64_t samples) const
{
    switch (m_format) {
    case sample_format_t::npy:
        return npy_head(samples);
    case sample_format_t::csv:
        return std::string(k_csv_head);
    default:
        return {};
    }
}

std::optional<std::uint64_t> sample_encoder_t::file_size(std::uint64_t samples) const
{
    if (m_format == sample_format_t::csv)
        return std::nullopt;
    return head(samples).size() + samples * sample_size(m_format);
}

std::string& sample_encoder_t::encoded(const std::complex<double>* samples, std::size_t count)
{
    m_bytes.clear();
    if (m_gain != 1.0) {
        m_block.assign(samples, samples + count);
        for (std::complex<double>& sample : m_block)
            sample *= m_gain;
        samples = m_block.data();
    }
    switch (m_format) {
    case sample_format_t::sigmf:
    case sample_format_t::cf32:
        _append_single(samples, count);
        break;
    case sample_format_t::cf64:
    case sample_format_t::npy:
        _append(samples, count);
        break;
    case sample_format_t::ci16:
        _append_whole(samples, count);
        break;
    case sample_format_t::csv:
        _append_text(samples, count);
        break;
    }
    return m_bytes;
}

template <class number_t>
void sample_encoder_t::_append(const std::complex<number_t>* samples, std::size_t count)
{
    m_level.add(samples, count);
    m_bytes.append(bytes_of(samples, count));
}

/// By parts that stay in the nearest cache.
void sample_encoder_t::_append_single(const std::complex<double>* samples, std::size_t count)
{
    std::array<std::complex<float>, 512> part;
    for (std::size_t begin = 0; begin < count; begin += part.size()) {
        const std::size_t size = std::min(part.size(), count - begin);
        std::copy_n(samples + begin, size, part.begin());
        _append(part.data(), size);
    }
}

void sample_encoder_t::_append_whole(const std::complex<double>* samples, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        bool clips = false;
        const std::complex<double> rounded = {whole_16(samples[i].real(), clips), whole_16(samples[i].imag(), clips)};
        const std::array pair = {static_cast<std::int16_t>(rounded.real()), static_cast<std::int16_t>(rounded.imag())};
        const std::complex<double> held = rounded / k_full_scale_16;
        m_level.add(&held, 1);
        m_bytes.append(bytes_of(pair.data(), pair.size()));
        m_clipped += clips ? 1 : 0;
    }
}

void sample_encoder_t::_append_text(const std::complex<double>* samples, std::size_t count)
{
    m_level.add(samples, count);
    for (std::size_t i = 0; i < count; ++i) {
        append_number(m_bytes, samples[i].real());
        m_bytes += ',';
        append_number(m_bytes, samples[i].imag());
        m_bytes += '\n';
    }
}

void sample_decoder_t::_take(const std::complex<double>* samples, std::size_t count)
{
    m_level.add(samples, count);
    if (m_kept)
        m_kept->insert(m_kept->end(), samples, samples + count);
}

void sample_decoder_t::add(std::string_view bytes)
{
    m_bytes.append(bytes);
    if (!m_is_behind_head && !_took_head())
        return;
    m_format == sample_format_t::csv ? _take_lines() : _take_binary();
}

void sample_decoder_t::finish()
{
    if (!m_is_behind_head)
        throw failure_t(std::string("it is no ") + name_of(m_format) + " file");
    if (!m_bytes.empty())
        throw failure_t("its last sample is cut short");
    if (m_format == sample_format_t::npy && m_promised != m_level.samples())
        throw failure_t("it has " + std::to_string(m_level.samples()) + " samples, its head says " +
                        std::to_string(m_promised));
}

/// Whether the head is whole and has been taken off.
bool sample_decoder_t::_took_head()
{
    if (m_format == sample_format_t::npy)
        _take_npy_head();
    else if (m_format == sample_format_t::csv) {
        if (m_bytes.size() < k_csv_head.size())
            return false;
        if (!m_bytes.starts_with(k_csv_head))
            throw failure_t("its first line is not i,q");
        m_bytes.erase(0, k_csv_head.size());
        m_is_behind_head = true;
    }
    else
        m_is_behind_head = true;
    return m_is_behind_head;
}

void sample_decoder_t::_take_npy_head()
{
    if (m_bytes.size() < k_npy_prefix)
        return;
    if (!m_bytes.starts_with(k_npy_magic))
        throw failure_t("it is no npy file of version 1");
    const std::size_t size = k_npy_prefix + static_cast<unsigned char>(m_bytes[8]) +
                             std::size_t{256} * static_cast<unsigned char>(m_bytes[9]);
    if (m_bytes.size() < size)
        return;
    const std::string_view head = std::string_view(m_bytes).substr(0, size);
    if (npy_value(head, "'descr'") != "'<c16'")
        throw failure_t("its numbers are not complex128, little endian");
    const std::string_view samples = npy_value(head, "'shape'");
    const auto [end, error] = std::from_chars(samples.data(), samples.data() + samples.size(), m_promised);
    if (error != std::errc{} || end != samples.data() + samples.size() || head.find(",)") == std::string_view::npos)
        throw failure_t("it has more than one dimension, or none");
    m_bytes.erase(0, size);
    m_is_behind_head = true;
}

void sample_decoder_t::_take_binary()
{
    const std::size_t count = m_bytes.size() / sample_size(m_format);
    std::vector<std::complex<double>> samples(count);
    const auto read = [&](auto number, double full_scale) {
        for (std::size_t i = 0; i < count; ++i) {
            std::array<decltype(number), 2> pair;
            std::memcpy(pair.data(), m_bytes.data() + i * sizeof pair, sizeof pair);
            samples[i] = {static_cast<double>(pair[0]) / full_scale, static_cast<double>(pair[1]) / full_scale};
        }
    };
    switch (m_format) {
    case sample_format_t::ci16:
        read(std::int16_t{}, k_full_scale_16);
        break;
    case sample_format_t::cf64:
    case sample_format_t::npy:
        read(double{}, 1.0);
        break;
    default:
        read(float{}, 1.0);
        break;
    }
    _take(samples.data(), count);
    m_bytes.erase(0, count * sample_size(m_format));
}

void sample_decoder_t::_take_lines()
{
    std::string_view rest = m_bytes;
    for (std::size_t end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
        _take_line(rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    m_bytes.erase(0, m_bytes.size() - rest.size());
    constexpr std::size_t k_longest_line = 1000;
    if (m_bytes.size() > k_longest_line)
        throw failure_t("a line of it is too long");
}

void sample_decoder_t::_take_line(std::string_view line)
{
    using vek::common_lib::lib_number_text_t;

    const std::size_t comma = std::min(line.find(','), line.size());
    double real = 0.0;
    double imaginary = 0.0;
    if (comma == line.size() || !lib_number_text_t::text_to_double(line.substr(0, comma), real) ||
        !lib_number_text_t::text_to_double(line.substr(comma + 1), imaginary))
        throw failure_t("no sample: " + shortened(one_line(std::string(line))));
    const std::complex<double> sample(real, imaginary);
    _take(&sample, 1);
}

} // namespace nrwave

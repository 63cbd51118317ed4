#include "host/nrwave_samples.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_nearest.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <array>
#include <bit>
#include <nlohmann/json.hpp>
#include <string_view>

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
constexpr std::array<format_row_t, 3> k_formats = {{{"sigmf", ".sigmf-data"}, {"cf32", ".cf32"}, {"cf64", ".cf64"}}};

const char* suffix(sample_format_t format) { return k_formats[static_cast<std::size_t>(format)].suffix; }

/// Bytes as they lie in memory.
template <class number_t>
std::string_view bytes_of(const std::complex<number_t>* samples, std::size_t count)
{
    return {reinterpret_cast<const char*>(samples), count * sizeof(*samples)};
}

/// Single precision a block at a time: no second copy of the waveform.
void write_single(output_t& output, const std::vector<std::complex<double>>& samples, level_t& level)
{
    std::array<std::complex<float>, 8192> block;
    for (std::size_t begin = 0; begin < samples.size(); begin += block.size()) {
        const std::size_t count = std::min(block.size(), samples.size() - begin);
        for (std::size_t i = 0; i < count; ++i)
            block[i] = {static_cast<float>(samples[begin + i].real()), static_cast<float>(samples[begin + i].imag())};
        level.add(block.data(), count);
        output.write(bytes_of(block.data(), count));
    }
}

/// A prefix that ends in a name: files that begin with a dot would seem to be missing.
const std::string& named(const std::string& prefix)
{
    if (!std::filesystem::path(prefix).has_filename())
        throw failure_t("cannot write " + shortened(prefix) + suffix(sample_format_t::sigmf) + ": no name in front");
    return prefix;
}

std::string meta_of(const recording_t& recording)
{
    const nlohmann::ordered_json meta = {
        {"global",
         {{"core:datatype", "cf32_le"},
          {"core:version", "1.0.0"},
          {"core:num_channels", 1},
          {"core:sample_rate", recording.sample_rate},
          {"core:description", recording.description}}},
        {"captures", {{{"core:sample_start", 0}, {"core:frequency", recording.radio_frequency}}}},
        {"annotations", nlohmann::ordered_json::array()},
    };
    return meta.dump(2) + '\n';
}

} // namespace

sample_format_t sample_format_of(const std::string& name)
{
    for (std::size_t i = 0; i < k_formats.size(); ++i)
        if (name == k_formats[i].name)
            return static_cast<sample_format_t>(i);
    std::vector<std::string> names;
    for (const format_row_t& row : k_formats)
        names.emplace_back(row.name);
    throw failure_t("unknown format " + shortened(name) + nearest_to(name, names));
}

const char* name_of(sample_format_t format) { return k_formats[static_cast<std::size_t>(format)].name; }

sample_files_t::sample_files_t(outputs_t& outputs, const std::string& prefix, sample_format_t format)
    : m_format(format), m_data(outputs.add(is_written_through(prefix) ? prefix : named(prefix) + suffix(format)))
{
    if (format == sample_format_t::sigmf && !is_written_through(prefix))
        m_meta = &outputs.add(prefix + ".sigmf-meta");
}

level_t sample_files_t::write(const std::vector<std::complex<double>>& samples, const recording_t& recording)
{
    level_t level;
    if (m_meta)
        m_meta->write(meta_of(recording));
    if (m_format == sample_format_t::cf64) {
        level.add(samples.data(), samples.size());
        m_data.write(bytes_of(samples.data(), samples.size()));
    }
    else
        write_single(m_data, samples, level);
    return level;
}

} // namespace nrwave

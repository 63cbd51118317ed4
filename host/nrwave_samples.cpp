#include "host/nrwave_samples.h"

#include "host/nrwave_failure.h"

#include <algorithm>
#include <array>
#include <bit>
#include <fstream>
#include <nlohmann/json.hpp>

namespace nrwave
{

static_assert(std::endian::native == std::endian::little, "samples are written as they lie in memory");

namespace
{

const char* suffix(sample_format_t format)
{
    switch (format) {
    case sample_format_t::sigmf:
        return ".sigmf-data";
    case sample_format_t::cf32:
        return ".cf32";
    case sample_format_t::cf64:
        return ".cf64";
    }
    return "";
}

/// Single precision a block at a time: no second copy of the waveform.
void write_single(std::ofstream& stream, const std::vector<std::complex<double>>& samples)
{
    std::array<std::complex<float>, 8192> block;
    for (std::size_t begin = 0; begin < samples.size() && stream; begin += block.size()) {
        const std::size_t count = std::min(block.size(), samples.size() - begin);
        for (std::size_t i = 0; i < count; ++i)
            block[i] = {static_cast<float>(samples[begin + i].real()), static_cast<float>(samples[begin + i].imag())};
        stream.write(reinterpret_cast<const char*>(block.data()),
                     static_cast<std::streamsize>(count * sizeof(block.front())));
    }
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

sample_files_t::sample_files_t(const std::string& prefix, sample_format_t format)
    : m_format(format), m_data(prefix + suffix(format))
{
    if (format == sample_format_t::sigmf)
        m_meta.emplace(prefix + ".sigmf-meta");
}

void sample_files_t::write(const std::vector<std::complex<double>>& samples, const recording_t& recording)
{
    std::ofstream data(m_data.beside(), std::ios::binary);
    if (m_format == sample_format_t::cf64)
        data.write(reinterpret_cast<const char*>(samples.data()),
                   static_cast<std::streamsize>(samples.size() * sizeof(samples.front())));
    else
        write_single(data, samples);
    data.close();
    if (!data)
        throw failure_t("cannot write the samples: " + m_data.beside().string());

    if (m_meta) {
        std::ofstream meta(m_meta->beside(), std::ios::binary);
        meta << meta_of(recording);
        meta.close();
        if (!meta)
            throw failure_t("cannot write " + m_meta->beside().string());
    }

    m_data.keep();
    if (m_meta) {
        try {
            m_meta->keep();
        } catch (const failure_t&) {
            m_data.discard();
            throw;
        }
    }
}

} // namespace nrwave

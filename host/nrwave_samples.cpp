#include "host/nrwave_samples.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <filesystem>

namespace nrwave
{

namespace
{

/// A prefix that ends in a name: files that begin with a dot would seem to be missing.
const std::string& named(const std::string& prefix)
{
    const std::filesystem::path name = std::filesystem::path(prefix).filename();
    if (name.empty() || name == "." || name == "..")
        throw failure_t("cannot write " + shortened(prefix) + suffix_of(sample_format_t::sigmf) + ": no name in front");
    return prefix;
}

const char* suffix_of_metadata(sample_format_t format)
{
    return format == sample_format_t::sigmf ? ".sigmf-meta" : ".json";
}

} // namespace

sample_files_t::sample_files_t(outputs_t& outputs, const std::string& prefix, sample_format_t format)
    : m_format(format), m_data(outputs.add(is_written_through(prefix) ? prefix : named(prefix) + suffix_of(format)))
{
    if (is_written_through(prefix))
        return;
    m_meta = &outputs.add(prefix + suffix_of_metadata(format));
    m_hashing.emplace();
}

void sample_files_t::write(const delivered_t& delivered, metadata_t& metadata)
{
    constexpr std::size_t k_block = std::size_t{1} << 16U; // what a core's own cache keeps until it is written

    sample_encoder_t encoder(m_format, delivered.gain);
    if (const auto bytes = encoder.file_size(delivered.samples()))
        m_data.reserve(*bytes);
    std::string head = encoder.head(delivered.samples());
    _add(head);
    for (std::uint64_t repeat = 0; repeat < delivered.repeats; ++repeat)
        for (std::size_t begin = 0; begin < delivered.period.size(); begin += k_block)
            _add(encoder.encoded(delivered.period.data() + begin, std::min(k_block, delivered.period.size() - begin)));
    metadata.summary.format = name_of(m_format);
    metadata.summary.rate = delivered.rate;
    metadata.summary.level = encoder.level();
    metadata.summary.clipped = encoder.clipped();
}

void sample_files_t::_add(std::string& bytes)
{
    m_data.write(bytes);
    if (m_hashing)
        m_hashing->add(bytes);
}

void sample_files_t::describe(metadata_t& metadata)
{
    if (!m_hashing)
        return;
    metadata.sha512 = m_hashing->digest();
    m_meta->write(m_format == sample_format_t::sigmf ? sigmf_meta_of(metadata) : sidecar_of(metadata));
}

} // namespace nrwave

#pragma once

#include "host/nrwave_delivery.h"
#include "host/nrwave_hashing.h"
#include "host/nrwave_metadata.h"
#include "host/nrwave_output.h"

#include <optional>
#include <string>

namespace nrwave
{

/// The files of the samples. Made before the run, so that an unwritable place is found out at once.
class sample_files_t
{
public:
    /// A prefix that names a device, a FIFO or an open file takes the bare samples itself.
    sample_files_t(outputs_t& outputs, const std::string& prefix, sample_format_t format);

    /// Writes the samples, once, and puts what the format makes of them into the summary of the metadata.
    void write(const delivered_t& delivered, metadata_t& metadata);
    /// Puts the hash of the samples into the metadata, which are finished else, and writes them beside the samples.
    void describe(metadata_t& metadata);

private:
    void _add(std::string& bytes);

    sample_format_t m_format;
    output_t& m_data;
    output_t* m_meta = nullptr;
    std::optional<hashing_t> m_hashing; ///< where there are metadata
};

} // namespace nrwave

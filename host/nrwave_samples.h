#pragma once

#include "host/nrwave_delivery.h"
#include "host/nrwave_metadata.h"
#include "host/nrwave_output.h"

#include <string>

namespace nrwave
{

/// The files of the samples. Made before the run, so that an unwritable place is found out at once.
class sample_files_t
{
public:
    /// A prefix that names a device, a FIFO or an open file takes the bare samples itself.
    sample_files_t(outputs_t& outputs, const std::string& prefix, sample_format_t format);

    /// Writes the samples, and puts what the format makes of them into the summary and the hash of the metadata.
    void write(const delivered_t& delivered, metadata_t& metadata);
    /// Writes the finished metadata beside the samples.
    void describe(const metadata_t& metadata);

private:
    sample_format_t m_format;
    output_t& m_data;
    output_t* m_meta = nullptr;
};

} // namespace nrwave

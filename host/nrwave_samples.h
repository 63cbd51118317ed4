#pragma once

#include "host/analysis/nrwave_level.h"
#include "host/nrwave_output.h"

#include <complex>
#include <cstdint>
#include <string>
#include <vector>

namespace nrwave
{

enum class sample_format_t
{
    sigmf, ///< PREFIX.sigmf-data (cf32_le) with PREFIX.sigmf-meta
    cf32,  ///< PREFIX.cf32: single precision, little endian, I first, bare
    cf64,  ///< PREFIX.cf64: double precision
};

/// The format of a name, such as cf32; an unknown name is a failure.
sample_format_t sample_format_of(const std::string& name);
const char* name_of(sample_format_t format);

/// What a SigMF file says of its samples.
struct recording_t
{
    std::uint64_t sample_rate = 0;
    std::uint64_t radio_frequency = 0;
    std::string description;
};

/// The files of the samples. Made before the run, so that an unwritable place is found out at once.
class sample_files_t
{
public:
    /// A prefix that names a device, a FIFO or an open file takes the bare samples itself.
    sample_files_t(outputs_t& outputs, const std::string& prefix, sample_format_t format);

    /// Writes the samples and gives their level as the format holds them.
    level_t write(const std::vector<std::complex<double>>& samples, const recording_t& recording);

private:
    sample_format_t m_format;
    output_t& m_data;
    output_t* m_meta = nullptr;
};

} // namespace nrwave

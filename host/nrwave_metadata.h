#pragma once

#include "host/nrwave_annotations.h"
#include "host/nrwave_encoding.h"
#include "host/nrwave_summary.h"

#include <optional>
#include <string>
#include <vector>

namespace nrwave
{

/// What stands beside samples and tells of them.
struct metadata_t
{
    summary_t summary;
    std::string sha512;   ///< of the samples' file
    std::string settings; ///< steps that bring a fresh waveform to the settings, one a line

    // Of SigMF alone.
    std::uint64_t radio_frequency = 0;
    std::string description;
    std::optional<double> scale_db;
    std::vector<annotation_t> annotations;
};

/// PREFIX.sigmf-meta.
std::string sigmf_meta_of(const metadata_t& metadata);
/// PREFIX.json, beside formats that tell nothing themselves: the keys of a summary, with sha512 and settings.
std::string sidecar_of(const metadata_t& metadata);

/// What a file of metadata claims of its samples. What it does not tell is not checked.
struct claim_t
{
    sample_format_t format = sample_format_t::sigmf; ///< in which the samples lie
    std::optional<std::uint64_t> rate;
    std::optional<std::uint64_t> samples;
    std::optional<double> peak_dbfs;
    std::optional<double> rms_dbfs;
    std::uint64_t clipped = 0;
    std::optional<std::string> sha512;
    std::optional<std::string> settings;
};

/// Reads PREFIX.sigmf-meta or PREFIX.json. What is none of them, or of another kind of samples, is a failure.
claim_t claim_of_sigmf(const std::string& file, const std::string& content);
claim_t claim_of_sidecar(const std::string& file, const std::string& content);

} // namespace nrwave

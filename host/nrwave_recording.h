#pragma once

#include "host/nrwave_encoding.h"
#include "host/nrwave_metadata.h"

#include <functional>
#include <string>
#include <string_view>

namespace nrwave
{

/// A file of samples and the one that tells of them.
struct recording_t
{
    std::string data;
    std::string meta;
    claim_t claim;
    bool is_sigmf = false;
};

/// Whether a file's name ends as that of samples or of what tells of them.
bool is_recording(const std::string& file);

/// By the samples or by what stands beside them. What is neither, or is told of otherwise, is a failure.
recording_t recording_of(const std::string& file);
/// Bare samples, of which nothing is told but by their name.
recording_t bare_recording_of(const std::string& file);

/// Reads the samples through a decoder; the bytes of the file are also handed on. What is not of the format is a
/// failure, which names the file.
void read_samples(const recording_t& recording, sample_decoder_t& decoder,
                  const std::function<void(std::string_view)>& take = {});

} // namespace nrwave

#pragma once

#include "config/cfg_nr_waveform.h"

#include <string>
#include <vector>

namespace nrwave
{

/// What a settings file is written from, and what it will not bring back.
struct saved_settings_t
{
    /// The content: the tree and, beside it, the steps that bring back what the tree alone does not.
    std::string text;
    /// A line for each setting that neither brings back, as "PATH: saved A, comes back as B". Channels that the carrier
    /// does not send are not told.
    std::vector<std::string> losses;
};

saved_settings_t saved_settings(vek::nr_mod_lib::cfg_nr_waveform_t& waveform);

} // namespace nrwave

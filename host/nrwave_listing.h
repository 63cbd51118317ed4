#pragma once

#include "config/cfg_nr_waveform.h"

#include <string>
#include <vector>

namespace nrwave
{

/// The whole waveform as steps that bring a fresh one to the same settings, each taken as it stands. What no step
/// brings back stands at the end as comments.
std::vector<std::string> steps_of(vek::nr_mod_lib::cfg_nr_waveform_t& waveform);
/// The settings at a path as steps: a setting or figure alone; a list or façade with the `add` steps for the entries
/// that a fresh waveform lacks, with steps for what these would move elsewhere, and a façade's figures as comments
/// behind. What another setting fixes is a comment too: where the entries are there, the waveform takes the other steps
/// without a line and stays as it is.
std::vector<std::string> steps_at(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path);

} // namespace nrwave

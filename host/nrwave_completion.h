#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace nrwave
{

/// What the word at the end of a command line, up to the cursor, may go on to: commands, options, paths with the
/// entries that a fresh waveform has, values, formats, presets. Nothing where a file is meant or nothing is known.
/// Outside of quotes only the part behind an equals sign or colon is given, as the shell takes that for a word.
std::vector<std::string> completions_of(const CLI::App& app, const std::string& line);

} // namespace nrwave

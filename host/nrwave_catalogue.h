#pragma once

#include <string>
#include <vector>

namespace nrwave
{

/// Every path that the leaf tables know, with [i] for any entry of a list, in the order of the listing.
std::vector<std::string> known_paths();

/// The known paths that end in a path, whatever its indices, or without them: dl_ssb, carrier.dl_ssb.
std::vector<std::string> known_paths_ending_in(const std::string& path);

/// The line on a path that leads nowhere, with the nearest ones.
std::string unknown_path_line(const std::string& path);

} // namespace nrwave

#pragma once

#include <algorithm>
#include <vector>

namespace vek::nr_mod_lib
{

/// The port list of a channel for `antennas` antennas: the given ports as far as they fit, none behind them. The port
/// enumerations count 0 for none and n + 1 for port n; a port beyond the `offered` ones becomes none, and where every
/// antenna would stay silent the first takes port 0.
template <class port_t>
std::vector<port_t> fit_antenna_ports(const std::vector<port_t>& ports, unsigned int antennas, unsigned int offered)
{
    std::vector<port_t> fitted(antennas, port_t{});
    std::copy_n(ports.begin(), std::min(ports.size(), fitted.size()), fitted.begin());
    std::replace_if(
        fitted.begin(), fitted.end(), [offered](port_t port) { return static_cast<unsigned int>(port) > offered; },
        port_t{});
    const bool silent = std::all_of(fitted.begin(), fitted.end(), [](port_t port) { return port == port_t{}; });
    if (silent && !fitted.empty())
        fitted.front() = static_cast<port_t>(1);
    return fitted;
}

} // namespace vek::nr_mod_lib

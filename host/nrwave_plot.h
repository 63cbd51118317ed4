#pragma once

#include <sstream>
#include <string>

namespace nrwave
{

/// A picture in the making: a script for the plotter, gnuplot, with the house's fonts and lines set up.
class plot_t
{
public:
    plot_t(unsigned int width, unsigned int height);

    std::ostream& script() { return m_script; }
    /// The picture as the content of a PNG file. A plotter that is missing, fails or stops half-way is a failure.
    std::string drawn() const;

private:
    std::ostringstream m_script;
};

} // namespace nrwave

#pragma once

#include <sstream>
#include <string>

namespace nrwave
{

enum class picture_format_t
{
    png,
    svg,
};

/// The house's colours in pictures and pages.
constexpr const char* k_dark = "#1f3b57";
constexpr const char* k_accent = "#c8102e";
constexpr const char* k_pale = "#a9bdd0";

/// A picture in the making: a script for the plotter, gnuplot, with the house's fonts and lines set up.
class plot_t
{
public:
    /// In pixels.
    plot_t(unsigned int width, unsigned int height);

    std::ostream& script() { return m_script; }
    unsigned int width() const { return m_width; }
    unsigned int height() const { return m_height; }
    /// The picture as the content of a file. A plotter that is missing, fails or stops half-way is a failure.
    std::string drawn(picture_format_t format) const;

private:
    unsigned int m_width;
    unsigned int m_height;
    std::ostringstream m_script;
};

} // namespace nrwave

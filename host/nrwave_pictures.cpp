#include "host/nrwave_pictures.h"

#include "host/nrwave_plot.h"

#include <algorithm>
#include <array>
#include <vector>

namespace nrwave
{

namespace
{

/// One colour for each owner, in the order of their values.
constexpr std::array<const char*, k_owners> k_colours = {
    "#f4f6f8", "#e6a817", "#8e5bb5", "#2f9e8f", "#3a78b8", "#d66a2c", "#5b8c3a", "#8aa9c8", "#b5577f",
    "#d00000", "#b07d00", "#5e3580", "#163f66", "#7fb2e5", "#35561f", "#4c6a88", "#c3d6ea", "#1f3b57"};

/// A map no finer than a picture shows, column by column.
struct raster_t
{
    unsigned int columns = 0;
    unsigned int rows = 0;
    std::vector<std::uint8_t> owners;
};

/// Of the cells that fall together it is the rarest owner's that shows, so that no thin channel gets lost; a conflict
/// shows always.
raster_t raster_of(const resource_map_t& map, const std::array<std::size_t, k_owners>& cells)
{
    constexpr unsigned int k_columns = 840;
    constexpr unsigned int k_rows = 480;
    std::array<std::size_t, k_owners> rank{};
    for (unsigned int owner = 1; owner < k_owners; ++owner)
        rank[owner] = map.owners.size() + 1 - cells[owner];
    rank[k_conflict_owner] = map.owners.size() + 2;

    raster_t raster{std::min(map.symbols, k_columns), std::min(map.subcarriers, k_rows), {}};
    raster.owners.resize(std::size_t{raster.columns} * raster.rows);
    for (std::size_t symbol = 0; symbol < map.symbols; ++symbol) {
        std::uint8_t* column = &raster.owners[symbol * raster.columns / map.symbols * raster.rows];
        for (std::size_t subcarrier = 0; subcarrier < map.subcarriers; ++subcarrier) {
            std::uint8_t& shown = column[subcarrier * raster.rows / map.subcarriers];
            const std::uint8_t owner = map.owners[symbol * map.subcarriers + subcarrier];
            if (rank[owner] > rank[shown])
                shown = owner;
        }
    }
    return raster;
}

} // namespace

std::string csv_of(const resource_map_t& map)
{
    std::string text = "symbol,subcarrier,owner\n";
    for (std::size_t cell = 0; cell < map.owners.size(); ++cell)
        if (map.owners[cell] != 0)
            text += std::to_string(cell / map.subcarriers) + ',' + std::to_string(cell % map.subcarriers) + ',' +
                    owner_name(map.owners[cell]) + '\n';
    return text;
}

std::string picture_of(const resource_map_t& map)
{
    constexpr unsigned int k_frame_ms = 10;
    constexpr unsigned int k_subcarriers_per_rb = 12;
    std::array<std::size_t, k_owners> cells{};
    for (const std::uint8_t owner : map.owners)
        ++cells[owner];
    const raster_t raster = raster_of(map, cells);
    const unsigned int symbols = std::max(map.symbols, 1U);
    const unsigned int subcarriers = std::max(map.subcarriers, 1U);

    plot_t plot(1100, 620);
    std::ostream& out = plot.script();
    out << "set title 'Resource map of carrier " << map.carrier << ", numerology " << map.numerology << ", frame "
        << map.frame
        << "' offset 0,0.6\nset xlabel 'symbol in the frame'\nset x2label 'time, ms'\nset ylabel 'subcarrier'\n"
        << "set y2label 'resource block'\nset x2tics 1\nset y2tics\nset tics out\nset key spacing 1.2\nunset "
           "grid\nunset colorbox\n"
        << "set key outside right top reverse Left\nset cbrange [-0.5:" << k_owners - 0.5 << "]\nset palette maxcolors "
        << k_owners << " defined (";
    for (unsigned int owner = 0; owner < k_owners; ++owner)
        out << (owner ? "," : "") << owner << " '" << k_colours[owner] << '\'';
    out << ")\nset xrange [-0.5:" << symbols - 0.5 << "]\nset yrange [-0.5:" << subcarriers - 0.5
        << "]\nset x2range [0:" << k_frame_ms
        << "]\nset y2range [0:" << static_cast<double>(subcarriers) / k_subcarriers_per_rb << "]\nplot ";
    if (!raster.owners.empty()) {
        const double width = static_cast<double>(symbols) / raster.columns;
        const double height = static_cast<double>(subcarriers) / raster.rows;
        out << "'-' binary array=(" << raster.columns << ',' << raster.rows << ") scan=yx dx=" << width
            << " dy=" << height << " origin=(" << width / 2 - 0.5 << ',' << height / 2 - 0.5
            << ") format='%uchar' with image notitle, ";
    }
    for (unsigned int owner = 1; owner < k_owners; ++owner)
        if (cells[owner] != 0)
            out << "NaN with boxes fs solid noborder lc rgb '" << k_colours[owner] << "' title '"
                << owner_name(static_cast<std::uint8_t>(owner)) << "', ";
    out << "NaN with boxes fillcolor rgb '" << k_colours[0] << "' fs solid border lc rgb '#909090' title 'empty'\n";
    out.write(reinterpret_cast<const char*>(raster.owners.data()), static_cast<std::streamsize>(raster.owners.size()));
    return plot.drawn(picture_format_t::png);
}

} // namespace nrwave

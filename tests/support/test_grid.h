#pragma once

#include "phy/lib_nr_resource_manager.h"
#include "support/captured_output.h"

#include <complex>
#include <cstddef>
#include <string>
#include <vector>

namespace nr_test
{

/// The process's grid, set up for one frame of a channel test and empty. What is printed while it lives is kept.
class test_grid_t
{
public:
    using grid_t = vek::nr_mod_lib::lib_nr_channel_resource_manager_t;
    using owner_t = vek::nr_mod_lib::lib_nr_channel_resource_mapping_type_t;

    test_grid_t(vek::nr_mod_lib::lib_nr_numerology_type_t numerology, unsigned int rb_number,
                vek::nr_mod_lib::lib_nr_channel_bw_type_t bandwidth,
                vek::nr_mod_lib::lib_nr_cyclic_prefix_type_t cp_type = vek::nr_mod_lib::LIB_NR_NORMAL_CP)
    {
        grid().set_numerology(numerology);
        grid().set_rb_number(rb_number);
        grid().set_channel_bandwidth(bandwidth);
        grid().set_cyclic_prefix_type(cp_type);
        clear();
    }

    static grid_t& grid() { return grid_t::get_inst(); }
    void clear()
    {
        grid().init_resource_mapping();
        grid().init_payload_mapping();
    }

    std::complex<double> symbol_at(unsigned int symbol, unsigned int subcarrier) const
    {
        return grid().get_payload_mapping().at(symbol).at(subcarrier);
    }
    /// Some of a symbol's values, from a subcarrier of the grid on.
    std::vector<std::complex<double>> symbols_at(unsigned int symbol, std::size_t first, std::size_t count) const
    {
        const auto begin = grid().get_payload_mapping().at(symbol).begin() + static_cast<std::ptrdiff_t>(first);
        return {begin, begin + static_cast<std::ptrdiff_t>(count)};
    }
    /// Cells of the resource map that belong to an owner.
    std::size_t count_marks(owner_t owner) const
    {
        return count([&](unsigned int l, unsigned int k) { return grid().get_owner(l, k) == owner; });
    }
    /// Cells of the payload map that hold something.
    std::size_t count_symbols() const
    {
        return count([&](unsigned int l, unsigned int k) { return symbol_at(l, k) != 0.0; });
    }
    std::string output() const { return m_output.text(); }

private:
    template <class predicate_t>
    static std::size_t count(predicate_t predicate)
    {
        std::size_t number = 0;
        for (unsigned int l = 0; l < grid().get_mapped_symbol_number(); ++l)
            for (unsigned int k = 0; k < grid().get_mapped_subcarrier_number(); ++k)
                number += predicate(l, k) ? 1 : 0;
        return number;
    }

    captured_output_t m_output;
};

} // namespace nr_test

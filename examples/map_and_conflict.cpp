#include "config/cfg_nr_enum_name_maps.h"
#include "config/cfg_nr_waveform.h"
#include "phy/lib_nr_phy.h"
#include "phy/lib_nr_resource_manager.h"

#include <iostream>
#include <map>
#include <sstream>

// A host whose standard output is its own: what the library prints goes into a log. It counts the cells that each
// channel holds in a frame, then lets two PDCCHs claim the same cells.

namespace
{

using namespace vek::nr_mod_lib;

/// While it lives, what the library prints on standard output is caught.
class caught_log_t
{
public:
    caught_log_t() : m_before(std::cout.rdbuf(m_log.rdbuf())) {}
    ~caught_log_t() { std::cout.rdbuf(m_before); }
    caught_log_t(const caught_log_t&) = delete;
    caught_log_t& operator=(const caught_log_t&) = delete;

    std::string text() const { return m_log.str(); }

private:
    std::ostringstream m_log;
    std::streambuf* m_before;
};

const std::string& name_of(lib_nr_channel_resource_mapping_type_t owner)
{
    return g_lib_nr_channel_resource_mapping_type_t_name_map.at(owner);
}

} // namespace

int main()
{
    std::ostream out(std::cout.rdbuf()); // keeps its place while the library's lines are caught
    const caught_log_t log;

    cfg_nr_waveform_t waveform;
    cfg_nr_carrier_t* carrier = waveform.get_carrier(0);
    carrier->get_dl_ssb()->set_enable(true);
    carrier->get_dl_dci(0)->set_enable(true);

    // The map of carrier 0, numerology 0, frame 0: nothing is generated for it.
    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    if (!engine.deal_resource_mapping(0, 0, 0, waveform.get_waveform_manager()))
        return 1;
    const auto& grid = lib_nr_channel_resource_manager_t::get_inst();
    std::map<lib_nr_channel_resource_mapping_type_t, unsigned int> cells;
    for (unsigned int symbol = 0; symbol < grid.get_mapped_symbol_number(); ++symbol)
        for (unsigned int subcarrier = 0; subcarrier < grid.get_mapped_subcarrier_number(); ++subcarrier)
            ++cells[grid.get_owner(symbol, subcarrier)];
    for (const auto& [owner, number] : cells)
        out << name_of(owner) << ": " << number << " cells\n";

    // The copy lies where its original lies.
    carrier->copy_dl_dci(0);
    engine.waveform_config(waveform.get_waveform_manager());
    if (engine.nr_phy_process() || engine.get_record().conflicts.empty())
        return 1;
    const auto& conflict = engine.get_record().conflicts.front();
    out << conflict.newcomer.channel << ' ' << conflict.newcomer.entry << " claims " << conflict.cells << " cells of "
        << conflict.owner.channel << ' ' << conflict.owner.entry << ", the first in slot " << conflict.slot
        << ", symbol " << conflict.symbol << ", RB " << conflict.rb << '\n'
        << log.text().size() << " characters of the library's log\n";
}

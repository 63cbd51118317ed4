#include "phy/lib_nr_phy_observer.h"

#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_phy_common.h"

#include <set>
#include <utility>

namespace vek::nr_mod_lib
{

namespace
{

constexpr std::size_t k_most_cells = 4;
constexpr auto k_rb = static_cast<std::int32_t>(k_subcarriers_per_rb);

std::int32_t rb_of(std::int32_t subcarrier) { return (subcarrier - (subcarrier < 0 ? k_rb - 1 : 0)) / k_rb; }

} // namespace

void lib_nr_explanation_t::add_runs(const std::vector<lib_nr_resource_run_t>& runs, unsigned int first_symbol_of_slot,
                                    bool is_second_hop)
{
    std::vector<std::int32_t>& list = is_second_hop ? second_hop_rbs : rbs;
    std::set<std::int32_t> known(list.begin(), list.end());
    for (const lib_nr_resource_run_t& run : runs) {
        if (run.count == 0)
            continue;
        const unsigned int symbol = run.symbol - first_symbol_of_slot;
        if (std::find(symbols.begin(), symbols.end(), symbol) == symbols.end())
            symbols.push_back(symbol);
        const std::uint32_t step = std::max(run.step, 1u);
        const std::int32_t last = run.first_subcarrier + static_cast<std::int32_t>((run.count - 1) * step);
        for (std::int32_t k = run.first_subcarrier; rb_of(k) <= rb_of(last);
             k = step < k_subcarriers_per_rb ? (rb_of(k) + 1) * k_rb : k + static_cast<std::int32_t>(step))
            if (known.insert(rb_of(k)).second)
                list.push_back(rb_of(k));
    }
    std::sort(symbols.begin(), symbols.end());
}

void lib_nr_explanation_t::add_cells(const std::vector<lib_nr_resource_run_t>& runs, unsigned int first_symbol_of_slot)
{
    const auto& grid = std::as_const(lib_nr_channel_resource_manager_t::get_inst());
    for (const lib_nr_resource_run_t& whole : runs) {
        const lib_nr_resource_run_t run = grid.clip(whole).run;
        for (std::uint32_t i = 0; i < run.count && cells.size() < k_most_cells; ++i) {
            const auto subcarrier = run.first_subcarrier + static_cast<std::int32_t>(i * std::max(run.step, 1u));
            cells.push_back({run.symbol - first_symbol_of_slot, subcarrier,
                             grid.get_payload_mapping()[run.symbol][static_cast<std::size_t>(subcarrier)]});
        }
    }
}

} // namespace vek::nr_mod_lib

#include "phy/lib_nr_resource_marks.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace vek::nr_mod_lib
{

namespace
{

constexpr std::int64_t k_subcarriers_per_rb = 12;

std::int32_t rb_of(std::int64_t subcarrier)
{
    return static_cast<std::int32_t>((subcarrier - (subcarrier < 0 ? k_subcarriers_per_rb - 1 : 0)) /
                                     k_subcarriers_per_rb);
}

/// Appends the resource blocks that a run has cells in.
void append_rbs(const lib_nr_resource_run_t& run, std::vector<std::int32_t>& rbs)
{
    const auto step = static_cast<std::int64_t>(std::max(run.step, 1U));
    const std::int64_t last = run.first_subcarrier + (static_cast<std::int64_t>(run.count) - 1) * step;
    for (std::int64_t k = run.first_subcarrier; k <= last; k += std::max(step, k_subcarriers_per_rb))
        rbs.push_back(rb_of(k));
    rbs.push_back(rb_of(last));
}

} // namespace

std::array<std::uint8_t, 2> get_respected_owners(lib_nr_channel_resource_mapping_type_t type)
{
    switch (type) {
    case LIB_NR_RESOURCE_MAPPING_PDSCH:
        return {LIB_NR_RESOURCE_MAPPING_SSB, LIB_NR_RESOURCE_MAPPING_CSIRS};
    case LIB_NR_RESOURCE_MAPPING_PUCCH:
        return {LIB_NR_RESOURCE_MAPPING_PUCCH, LIB_NR_RESOURCE_MAPPING_PUCCH};
    default:
        return {LIB_NR_RESOURCE_MAPPING_EMPTY, LIB_NR_RESOURCE_MAPPING_EMPTY};
    }
}

bool claim_cell(lib_nr_channel_resource_mapping_type_t newcomer, std::uint8_t& cell)
{
    if (cell == LIB_NR_RESOURCE_MAPPING_EMPTY) {
        cell = static_cast<std::uint8_t>(newcomer);
        return true;
    }
    const auto [first, second] = get_respected_owners(newcomer);
    if (cell == first || cell == second)
        return true;
    cell = LIB_NR_RESOURCE_MAPPING_CONFLICT;
    return false;
}

void lib_nr_resource_marks_t::clear()
{
    m_marks.clear();
    m_cuts.clear();
}

void lib_nr_resource_marks_t::add(lib_nr_channel_resource_mapping_type_t owner, std::uint32_t entry,
                                  const lib_nr_resource_run_t& run)
{
    if (run.count != 0)
        m_marks.push_back({owner, entry, run});
}

void lib_nr_resource_marks_t::add_cut(lib_nr_channel_resource_mapping_type_t owner, std::uint32_t entry,
                                      const lib_nr_resource_run_t& run)
{
    m_cuts.push_back({owner, entry, run});
}

std::vector<lib_nr_resource_conflict_t> lib_nr_resource_marks_t::get_conflicts(std::uint32_t symbols,
                                                                               std::uint32_t subcarriers) const
{
    std::vector<lib_nr_resource_conflict_t> conflicts;
    const std::size_t cell_number = static_cast<std::size_t>(symbols) * subcarriers;
    std::vector<std::uint8_t> cells(cell_number, LIB_NR_RESOURCE_MAPPING_EMPTY);
    std::vector<const mark_t*> owners(cell_number, nullptr);
    const auto note = [&](const mark_t& owner, const mark_t& newcomer, std::uint32_t subcarrier) {
        const auto known =
            std::find_if(conflicts.rbegin(), conflicts.rend(), [&](const lib_nr_resource_conflict_t& conflict) {
                return conflict.owner == owner.owner && conflict.owner_entry == owner.entry &&
                       conflict.newcomer == newcomer.owner && conflict.newcomer_entry == newcomer.entry;
            });
        if (known != conflicts.rend())
            ++known->cells;
        else
            conflicts.push_back(
                {newcomer.run.symbol, subcarrier, owner.owner, newcomer.owner, owner.entry, newcomer.entry, 1});
    };
    for (const mark_t& mark : m_marks)
        for (std::uint32_t i = 0; i < mark.run.count; ++i) {
            const std::uint32_t subcarrier =
                static_cast<std::uint32_t>(mark.run.first_subcarrier) + i * std::max(mark.run.step, 1U);
            const std::size_t place = static_cast<std::size_t>(mark.run.symbol) * subcarriers + subcarrier;
            if (owners[place] == nullptr)
                owners[place] = &mark;
            if (!claim_cell(mark.owner, cells[place]))
                note(*owners[place], mark, subcarrier);
        }
    return conflicts;
}

std::vector<lib_nr_resource_cut_t> lib_nr_resource_marks_t::get_cuts(std::uint32_t symbols,
                                                                     std::uint32_t subcarriers) const
{
    // The resource blocks in each symbol where an entry was cut.
    using place_t = std::tuple<lib_nr_channel_resource_mapping_type_t, std::uint32_t, std::uint32_t>;
    const auto place_of = [](const mark_t& mark) { return place_t(mark.owner, mark.entry, mark.run.symbol); };
    std::map<place_t, std::vector<std::int32_t>> rbs_of;
    for (const mark_t& cut : m_cuts)
        append_rbs(cut.run, rbs_of[place_of(cut)]);
    for (const mark_t& mark : m_marks)
        if (const auto found = rbs_of.find(place_of(mark)); found != rbs_of.end())
            append_rbs(mark.run, found->second);

    std::vector<lib_nr_resource_cut_t> cuts;
    const std::int32_t end = rb_of(subcarriers);
    for (auto& [place, rbs] : rbs_of) {
        const auto [owner, entry, symbol] = place;
        std::sort(rbs.begin(), rbs.end());
        rbs.erase(std::unique(rbs.begin(), rbs.end()), rbs.end());
        const auto inside = std::lower_bound(rbs.begin(), rbs.end(), end) - std::lower_bound(rbs.begin(), rbs.end(), 0);
        const auto all = static_cast<std::uint32_t>(rbs.size());
        const std::uint32_t outside = symbol < symbols ? all - static_cast<std::uint32_t>(inside) : all;
        if (cuts.empty() || cuts.back().owner != owner || cuts.back().entry != entry)
            cuts.push_back({owner, entry, 0, 0});
        if (outside > cuts.back().rbs_outside)
            cuts.back() = {owner, entry, all, outside};
    }
    return cuts;
}

} // namespace vek::nr_mod_lib

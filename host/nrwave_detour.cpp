#include "host/nrwave_detour.h"

#include "config/leaves/cfg_nr_leaf.h"
#include "host/nrwave_difference.h"
#include "host/nrwave_path.h"
#include "host/nrwave_rows.h"
#include "host/nrwave_single_steps.h"
#include "host/nrwave_steps.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

// All groups of resource blocks that a CORESET may have, as bits.
constexpr std::size_t k_most_groups = 45;
constexpr const char* k_most_number = "2147483647";
constexpr const char* k_most_indices = "0:63";
// Bounds the search in a large configuration with many settings that nothing brings back.
constexpr unsigned int k_most_trials = 4000;

/// What a setting may be set to for a moment: what else it may hold, or the ends of its range.
std::vector<std::string> values_to_try(const cfg_nr_leaf_t& leaf)
{
    constexpr std::size_t k_most_names = 16; // of bandwidths and preset rows the first alone leads to another setting
    switch (leaf.form) {
    case cfg_nr_leaf_form_t::boolean:
        return {"true", "false"};
    case cfg_nr_leaf_form_t::enumerator: {
        const std::vector<std::string> names = leaf.enumerators();
        return names.size() <= k_most_names ? names : std::vector<std::string>{names.front()};
    }
    case cfg_nr_leaf_form_t::integer:
    case cfg_nr_leaf_form_t::unsigned_integer:
    case cfg_nr_leaf_form_t::unsigned_short:
    case cfg_nr_leaf_form_t::unsigned_byte:
        return {"0", "1", k_most_number};
    case cfg_nr_leaf_form_t::real:
        return {"1"}; // from which a step to anything is no small one
    case cfg_nr_leaf_form_t::text:
        return {std::string(k_most_groups, '1'), k_most_indices};
    default:
        return {};
    }
}

/// Settings of which a change brings everything else back to its defaults.
bool is_reset(const cfg_nr_leaf_t& leaf)
{
    const std::string_view name = leaf.name;
    return name == "nr_ntn" || name == "carrier_type";
}

/// A setting that opens the way for another.
struct way_t
{
    std::string facade;
    const cfg_nr_leaf_t* leaf;
    std::string value;
};
using ways_t = std::vector<way_t>;

bool contains(const std::vector<difference_t>& differences, const std::string& path)
{
    return std::any_of(differences.begin(), differences.end(),
                       [&](const difference_t& difference) { return difference.path == path; });
}

/// Goes on from one difference to the next as long as each step leaves fewer of them.
class detours_t
{
public:
    detours_t(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, std::vector<std::string>& steps)
        : m_original(original), m_copy(copy), m_steps(steps), m_differences(differences(original, copy))
    {}

    void take()
    {
        for (const difference_t& difference : std::vector<difference_t>(m_differences))
            if (contains(m_differences, difference.path) && fits_a_step(difference.first))
                _mend(difference);
    }

private:
    void _mend(const difference_t& difference)
    {
        const std::string own = split_last(difference.path).first;
        const ways_t wide = _wide(_scope_of(difference.path));
        if (_mend(difference, {}, own, true) || _leads(wide, difference, difference.first))
            return;
        for (const std::string& facade : _facades_to_try(difference.path))
            if (_mend(difference, {}, facade, false))
                return;
        if (wide.empty())
            _mend_beside_a_carrier(difference);
        else if (!_mend(difference, wide, own, true))
            _leads(_at_the_narrowest(_scope_of(difference.path)), difference, difference.first);
    }

    /// One more carrier raises the rate, which bounds settings of the waveform, for a moment.
    void _mend_beside_a_carrier(const difference_t& difference)
    {
        std::vector<std::string> run = {"add carrier", difference.path + '=' + difference.first,
                                        "remove " + entry("carrier", m_copy.get_carrier_number())};
        _is_taken(run, difference.path);
    }

    /// One setting after the other of a façade opens the way, behind others that do for all of them.
    bool _mend(const difference_t& difference, ways_t ways, const std::string& facade, bool is_own)
    {
        ways.emplace_back();
        for (const cfg_nr_leaf_t& leaf : resolve(m_original, facade).table->leaves)
            for (const std::string& value : values_to_try(leaf))
                for (const std::optional<std::string>& stay : _values_on_the_way(difference, is_own)) {
                    ways.back() = {facade, &leaf, value};
                    if (m_trials < k_most_trials && _leads(ways, difference, stay))
                        return true;
                }
        return false;
    }

    /// What the setting takes on the way: mostly the value that it shall have. Some come to that only when what opened
    /// the way is back, and some follow the others without being set.
    std::vector<std::optional<std::string>> _values_on_the_way(const difference_t& difference, bool in_own_facade)
    {
        constexpr std::size_t k_most_names = 8;
        std::vector<std::optional<std::string>> values = {difference.first};
        const target_t target = resolve(m_original, difference.path);
        if (!in_own_facade || !target.leaf)
            return values;
        values.emplace_back(std::nullopt);
        const std::vector<std::string> names = target.leaf->enumerators();
        if (names.size() <= k_most_names)
            std::copy_if(names.begin(), names.end(), std::back_inserter(values),
                         [&](const std::string& name) { return name != difference.first; });
        return values;
    }

    /// What a setting may depend on beside those of its own façade.
    std::vector<std::string> _facades_to_try(const std::string& path)
    {
        std::vector<std::string> facades;
        const std::string carrier = _scope_of(path);
        if (carrier.empty()) {
            for (const std::string& each : _entries_of("carrier")) {
                facades.push_back(each);
                for (const std::string& numerology : _entries_of(below(each, "numerology")))
                    facades.push_back(numerology);
            }
            return facades;
        }
        for (const char* list : {"ul_bwp", "dl_bwp", "numerology", "ul_prach"})
            for (const std::string& bwp : _entries_of(below(carrier, list))) {
                facades.push_back(bwp);
                if (list == std::string_view("dl_bwp"))
                    for (const std::string& coreset : _entries_of(below(bwp, "coreset")))
                        facades.push_back(coreset);
            }
        facades.push_back(carrier);
        return facades;
    }

    /// All that a carrier's channels lie in at its full width.
    ways_t _wide(const std::string& carrier)
    {
        struct band_t
        {
            const char* list;
            const char* start;
            const char* size;
        };
        constexpr band_t k_bands[] = {{"numerology", "rb_start", "rb_size"},
                                      {"ul_bwp", "rb_offset", "rb_number"},
                                      {"dl_bwp", "bwp_rb_start", "bwp_rb_size"}};
        ways_t ways;
        for (const auto& [list, start, size] : k_bands)
            for (const std::string& facade :
                 carrier.empty() ? std::vector<std::string>{} : _entries_of(below(carrier, list))) {
                const cfg_nr_facade_table_t& table = *resolve(m_original, facade).table;
                ways.push_back({facade, find_row(table.leaves, start), "0"});
                ways.push_back({facade, find_row(table.leaves, size), k_most_number});
                for (const std::string& coreset : list == std::string_view("dl_bwp")
                                                      ? _entries_of(below(facade, "coreset"))
                                                      : std::vector<std::string>{})
                    ways.push_back({coreset, find_row(resolve(m_original, coreset).table->leaves, "fd_resources"),
                                    std::string(k_most_groups, '1')});
            }
        return ways;
    }

    /// A carrier of the narrowest bandwidth, which has the lowest spacing: that has the most interlaces.
    ways_t _at_the_narrowest(const std::string& carrier)
    {
        const cfg_nr_facade_table_t& table = *resolve(m_original, carrier).table;
        ways_t ways;
        for (const char* name : {"channel_bandwidth", "numerology"}) {
            const cfg_nr_leaf_t* leaf = find_row(table.leaves, name);
            ways.push_back({carrier, leaf, leaf->enumerators().front()});
        }
        return ways;
    }

    std::vector<std::string> _entries_of(const std::string& path)
    {
        std::vector<std::string> entries;
        const target_t target = resolve(m_original, path, reading_t::list_first);
        for (unsigned int i = 0; i < target.list->count(target.list_parent); ++i)
            entries.push_back(entry(path, target.list->first(target.list_parent) + i));
        return entries;
    }

    /// The carrier of a path, or the whole waveform.
    static std::string _scope_of(const std::string& path)
    {
        const std::string first = path.substr(0, path.find('.'));
        return first.rfind("carrier[", 0) == 0 ? first : std::string{};
    }

    /// Opens the way, sets what differs, then brings all that this has moved to what it shall be.
    bool _leads(const ways_t& ways, const difference_t& difference, const std::optional<std::string>& stay)
    {
        ++m_trials;
        take_over(m_copy, m_trial);
        std::vector<std::string> run;
        for (const way_t& way : ways)
            _set(way, difference.path, run);
        if (run.empty() || (stay && !_holds(difference.path, stay)))
            return false;
        if (stay)
            run.push_back(difference.path + '=' + *stay);
        if (const std::string own = split_last(difference.path).first; !own.empty())
            mend(m_original, m_trial, own, run);
        if (!_holds(difference.path, std::nullopt, difference.first))
            return false;
        for (const std::string& scope : {_scope_of(difference.path), std::string{}}) // the waveform follows a carrier
            mend(m_original, m_trial, scope, run);
        return _is_taken(run, difference.path);
    }

    /// Takes the steps if they mend the setting, none of them is corrected and none reset by a later one.
    bool _is_taken(std::vector<std::string>& run, const std::string& path)
    {
        std::optional<std::vector<std::string>> reset = _reset_by(run);
        if (reset && !reset->empty()) { // what a later step brings back is said once more
            for (const std::string& each : *reset) {
                const target_t target = resolve(m_original, each);
                run.push_back(each + '=' + target.leaf->read(target.facade, target.index.value_or(0)));
            }
            reset = _reset_by(run);
        }
        std::vector<difference_t> left = differences(m_original, m_trial);
        if (!reset || !reset->empty() || left.size() >= m_differences.size() || contains(left, path))
            return false;
        take_over(m_trial, m_copy);
        m_steps.insert(m_steps.end(), run.begin(), run.end());
        m_differences.swap(left);
        return true;
    }

    /// Takes the steps on the trial: the paths that later ones reset; nothing where one is corrected.
    std::optional<std::vector<std::string>> _reset_by(const std::vector<std::string>& run)
    {
        std::vector<std::string> told;
        take_over(m_copy, m_trial);
        stepper_t stepper(m_trial, [&](const std::string& line) { told.push_back(line.substr(0, line.find(": "))); });
        for (const std::string& step : run)
            stepper.apply(step);
        if (!told.empty())
            return std::nullopt;
        stepper.tell_resets();
        return told;
    }

    /// Whether the setting that differs, once it is set where a value is given, holds that value, or the other.
    bool _holds(const std::string& path, const std::optional<std::string>& value, const std::string& otherwise = {})
    {
        const target_t target = resolve(m_trial, path);
        const unsigned int index = target.index.value_or(0);
        if (target.leaf && value)
            target.leaf->write(target.facade, *value, index);
        return target.leaf && target.leaf->read(target.facade, index) == value.value_or(otherwise);
    }

    /// Sets a setting of the trial; without a step where that changes neither it nor what differs.
    void _set(const way_t& way, const std::string& path, std::vector<std::string>& run)
    {
        if (way.leaf->is_indexed() || is_reset(*way.leaf))
            return;
        const auto values = [&] {
            const std::optional<std::string> differing = value_at(m_trial, path);
            return std::pair(differing, way.leaf->read(resolve(m_trial, way.facade).facade));
        };
        const auto before = values();
        way.leaf->write(resolve(m_trial, way.facade).facade, way.value);
        if (values() != before)
            run.push_back(setting_step(way.facade, *way.leaf, resolve(m_trial, way.facade).facade));
    }

    cfg_nr_waveform_t& m_original;
    cfg_nr_waveform_t& m_copy;
    std::vector<std::string>& m_steps;
    std::vector<difference_t> m_differences;
    cfg_nr_waveform_t m_trial;
    unsigned int m_trials = 0;
};

} // namespace

void take_detours(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, std::vector<std::string>& steps)
{
    detours_t(original, copy, steps).take();
}

} // namespace nrwave

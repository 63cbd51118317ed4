#include "host/nrwave_preset.h"

#include "config/leaves/cfg_nr_leaf.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_nearest.h"
#include "host/nrwave_path.h"
#include "host/nrwave_shorthand.h"
#include "host/nrwave_value.h"

#include "common/lib_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <utility>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

/// A family of presets by its façade below the carrier, and the settings there that make the choice.
struct family_t
{
    const char* name;
    const char* row;
    const char* spacing; // a figure where the row decides
    const char* group = nullptr;
};

constexpr std::array k_families = {
    family_t{"dl_tm", "test_model", "numerology"},
    family_t{"dl_frc", "fixed_reference_channels", "numerolgy"},
    family_t{"ul_frc", "frc_reference_channels", "numerolgy", "fixed_reference_channels"},
    family_t{"ul_rmc", "rmc_rb_allocation", "numerology"},
    family_t{"pucch_test_model", "test_model_type", "subcarrier_spacing"},
};

bool contains(const std::vector<std::string>& list, const std::string& item)
{
    return std::find(list.begin(), list.end(), item) != list.end();
}

using choice_t = std::vector<std::pair<const cfg_nr_leaf_t*, std::string>>;

/// One way to choose a row.
struct combination_t
{
    std::string bandwidth;
    std::string spacing;
    std::string duplex_type;
    choice_t choice; ///< all settings but the duplex type
};

/// Finds out what a family offers by choosing: all of it comes from the lists of the façade.
class explorer_t
{
public:
    explorer_t(cfg_nr_waveform_t& waveform, const family_t& family) : m_family(family), m_ntn(waveform.get_nr_ntn())
    {
        const target_t target = resolve(waveform, below("carrier[0]", family.name));
        m_facade = target.facade;
        m_row = find_row(target.table->leaves, family.row);
        m_bandwidth = find_row(target.table->leaves, "bandwidth");
        m_duplex_type = find_row(target.table->leaves, "duplex_type");
        m_spacing = find_row(target.table->leaves, family.spacing);
        m_fixed_spacing = find_row(target.table->figures, family.spacing);
        m_group = family.group ? find_row(target.table->leaves, family.group) : nullptr;
    }

    /// The names of all rows, also of those that are not offered.
    std::vector<std::string> names() const { return m_row ? m_row->enumerators() : std::vector<std::string>{}; }
    const cfg_nr_leaf_t& duplex_setting() const { return *m_duplex_type; }

    /// All that one row is offered with.
    std::vector<combination_t> combinations_of(const std::string& row)
    {
        if (!m_group)
            return _combinations_of({}, row);
        for (const std::string& group : _offer(*m_group)) {
            m_group->write(m_facade, group);
            if (contains(_offer(*m_row), row))
                return _combinations_of(group, row);
        }
        return {};
    }

    std::vector<preset_t> presets()
    {
        if (!m_row)
            return {};
        if (!m_group)
            return _presets_of({}, m_row->enumerators());
        std::vector<preset_t> all;
        for (const std::string& group : _offer(*m_group)) {
            m_group->write(m_facade, group);
            for (preset_t& preset : _presets_of(group, _offer(*m_row)))
                all.push_back(std::move(preset));
        }
        return all;
    }

private:
    std::vector<preset_t> _presets_of(const std::string& group, const std::vector<std::string>& rows)
    {
        std::vector<preset_t> presets;
        for (const std::string& row : rows) {
            m_row->write(m_facade, row);
            preset_t preset{m_family.name,
                            row,
                            m_ntn,
                            {m_bandwidth->enumerators(), {}},
                            {_spacings(), {}},
                            {m_duplex_type->enumerators(), {}}};
            for (const combination_t& combination : _combinations_of(group, row)) {
                preset.bandwidths.include(combination.bandwidth);
                preset.spacings.include(combination.spacing);
                preset.duplex_types.include(combination.duplex_type);
            }
            if (!preset.bandwidths.taken.empty())
                presets.push_back(std::move(preset));
        }
        return presets;
    }

    std::vector<combination_t> _combinations_of(const std::string& group, const std::string& row)
    {
        m_row->write(m_facade, row);
        std::vector<combination_t> combinations;
        for (const std::string& bandwidth : m_bandwidth->enumerators())
            for (const std::string& spacing : _spacings()) {
                choice_t choice = {{m_row, row}, {m_bandwidth, bandwidth}};
                if (m_spacing)
                    choice.emplace_back(m_spacing, spacing);
                if (m_group)
                    choice.emplace(choice.begin(), m_group, group);
                if (_choose(choice))
                    for (const std::string& duplex_type : _offer(*m_duplex_type))
                        combinations.push_back({bandwidth, spacing, duplex_type, choice});
            }
        return combinations;
    }

    /// Whether all of it can be chosen at a time. What one setting needs of another may come only in the second round.
    bool _choose(const choice_t& choice)
    {
        for (int round = 0; round < 2; ++round)
            for (const auto& [leaf, value] : choice)
                leaf->write(m_facade, value);
        return std::all_of(choice.begin(), choice.end(), [this](const auto& setting) {
            const auto& [leaf, value] = setting;
            return leaf->read(m_facade) == value && contains(_offer(*leaf), value);
        });
    }

    /// All spacings, or that of the row.
    std::vector<std::string> _spacings() const
    {
        return m_spacing ? m_spacing->enumerators() : std::vector<std::string>{m_fixed_spacing->read(m_facade)};
    }

    std::vector<std::string> _offer(const cfg_nr_leaf_t& leaf) const
    {
        return leaf.has_offer() ? leaf.on_offer(m_facade) : leaf.enumerators();
    }

    const family_t& m_family;
    bool m_ntn;
    void* m_facade = nullptr;
    const cfg_nr_leaf_t* m_row = nullptr;
    const cfg_nr_leaf_t* m_bandwidth = nullptr;
    const cfg_nr_leaf_t* m_duplex_type = nullptr;
    const cfg_nr_leaf_t* m_spacing = nullptr;
    const cfg_nr_leaf_t* m_group = nullptr;
    const cfg_nr_figure_t* m_fixed_spacing = nullptr;
};

/// What a user asks for behind the name.
using wishes_t = std::map<std::string, std::string>;

struct key_t
{
    const char* name;
    std::string combination_t::*value;
};

constexpr std::array k_keys = {key_t{"bandwidth", &combination_t::bandwidth}, key_t{"scs", &combination_t::spacing},
                               key_t{"duplex", &combination_t::duplex_type}};

/// A row that a name stands for.
struct found_t
{
    const family_t* family;
    std::string row;
};

/// A name of the standard as an enumerator has it: NR-FR1-TM3.1a as NR_FR1_TM3_1a.
std::string as_enumerator(const std::string& name)
{
    std::string text = name;
    for (char& letter : text)
        if (std::isalnum(static_cast<unsigned char>(letter)) == 0)
            letter = '_';
    return text;
}

found_t row_meant_by(const std::string& name)
{
    cfg_nr_waveform_t waveform;
    std::vector<std::string> names;
    std::vector<found_t> rows;
    for (const family_t& family : k_families)
        for (const std::string& row : explorer_t(waveform, family).names()) {
            names.push_back(row);
            rows.push_back({&family, row});
        }
    const std::vector<std::string> meant = enumerators_meant_by(names, as_enumerator(name));
    if (meant.empty())
        throw failure_t("unknown preset " + shortened(name) + nearest_to(name, preset_names()));
    if (meant.size() > 1)
        throw failure_t("the preset " + shortened(name) + " may be any of " + joined(meant));
    return rows[static_cast<std::size_t>(std::find(names.begin(), names.end(), meant.front()) - names.begin())];
}

wishes_t wishes_in(const std::string& text)
{
    wishes_t wishes;
    for (const std::string_view item : vek::common_lib::split(text, ",")) {
        const std::size_t equals = std::min(item.find('='), item.size());
        const std::string key = trimmed(std::string(item.substr(0, equals)));
        if (!contains(preset_keys(), key))
            throw failure_t("unknown key " + shortened(key) + " of a preset" + nearest_to(key, preset_keys()));
        if (equals == item.size() || !wishes.emplace(key, trimmed(std::string(item.substr(equals + 1)))).second)
            throw failure_t("a preset takes one value of " + key);
    }
    return wishes;
}

/// What of the combinations is different under a key.
std::vector<std::string> values_under(const key_t& key, const std::vector<combination_t>& combinations)
{
    std::vector<std::string> values;
    for (const combination_t& combination : combinations)
        if (!contains(values, combination.*key.value))
            values.push_back(combination.*key.value);
    return values;
}

/// Leaves the combinations that fulfil a wish.
void narrow(std::vector<combination_t>& combinations, const wishes_t& wishes, const key_t& key)
{
    const auto wish = wishes.find(key.name);
    if (wish == wishes.end())
        return;
    const std::vector<std::string> offered = values_under(key, combinations);
    const std::vector<std::string> meant = enumerators_meant_by(offered, wish->second);
    if (meant.size() != 1)
        throw failure_t("the preset offers no " + std::string(key.name) + ' ' + shortened(wish->second) + ", but " +
                        joined(offered));
    std::erase_if(combinations, [&](const combination_t& other) { return other.*key.value != meant.front(); });
}

/// The settings of a choice in an order in which a fresh waveform takes each as it stands.
std::vector<std::string> steps_in_order(const family_t& family, bool ntn, choice_t choice)
{
    const std::string path = below("carrier[0]", family.name);
    const auto by_place = [](const auto& a, const auto& b) { return a.first < b.first; };
    std::sort(choice.begin(), choice.end(), by_place);
    bool taken = false;
    do {
        cfg_nr_waveform_t waveform;
        waveform.set_nr_ntn(ntn);
        void* facade = resolve(waveform, path).facade;
        const auto holds = [&](const auto& setting) { return setting.first->read(facade) == setting.second; };
        taken = std::all_of(choice.begin(), choice.end(),
                            [&](const auto& setting) {
                                setting.first->write(facade, setting.second);
                                return holds(setting);
                            }) &&
                std::all_of(choice.begin(), choice.end(), holds);
    } while (!taken && std::next_permutation(choice.begin(), choice.end(), by_place));
    std::vector<std::string> steps;
    for (const auto& [leaf, value] : choice)
        steps.push_back(below(path, leaf->name) + '=' + value);
    steps.push_back("apply " + path);
    return steps;
}

} // namespace

void preset_values_t::include(const std::string& value)
{
    if (!contains(taken, value))
        taken.push_back(value);
}

std::string preset_values_t::text() const
{
    std::string text;
    for (auto value = known.begin(); value != known.end();) {
        const auto end = std::find_if_not(value, known.end(), [this](const auto& v) { return contains(taken, v); });
        if (value != end)
            text += (text.empty() ? "" : ", ") + *value;
        if (end - value > 1)
            text += (end - value > 2 ? " to " : ", ") + *(end - 1);
        value = end == known.end() ? end : end + 1;
    }
    return text;
}

std::vector<std::string> preset_families()
{
    std::vector<std::string> names;
    for (const family_t& family : k_families)
        names.emplace_back(family.name);
    return names;
}

std::vector<preset_t> presets_of(const std::string& name, bool ntn)
{
    cfg_nr_waveform_t waveform;
    waveform.set_nr_ntn(ntn);
    std::vector<preset_t> presets;
    for (const family_t& family : k_families)
        if (name.empty() || name == family.name)
            for (preset_t& preset : explorer_t(waveform, family).presets())
                presets.push_back(std::move(preset));
    return presets;
}

std::vector<std::string> preset_steps(const std::string& text, bool ntn)
{
    const std::size_t colon = std::min(text.find(':'), text.size());
    const found_t found = row_meant_by(trimmed(text.substr(0, colon)));
    const wishes_t wishes = colon == text.size() ? wishes_t{} : wishes_in(text.substr(colon + 1));
    for (const bool mode : {ntn, !ntn}) {
        cfg_nr_waveform_t waveform;
        waveform.set_nr_ntn(mode);
        explorer_t explorer(waveform, *found.family);
        std::vector<combination_t> combinations = explorer.combinations_of(found.row);
        if (combinations.empty())
            continue;
        for (const key_t& key : k_keys)
            narrow(combinations, wishes, key);
        choice_t choice = combinations.front().choice;
        choice.emplace_back(&explorer.duplex_setting(), combinations.front().duplex_type);
        std::vector<std::string> steps = steps_in_order(*found.family, mode, std::move(choice));
        if (mode != ntn)
            steps.insert(steps.begin(), mode ? "nr_ntn=true" : "nr_ntn=false");
        return steps;
    }
    throw failure_t("the preset " + found.row + " is not on offer");
}

std::vector<std::string> preset_names()
{
    cfg_nr_waveform_t waveform;
    std::vector<std::string> names;
    for (const family_t& family : k_families)
        for (const std::string& row : explorer_t(waveform, family).names())
            names.push_back(name_of_preset(row));
    return names;
}

std::string name_of_preset(const std::string& row)
{
    constexpr std::string_view k_front = "LIB_";
    constexpr std::string_view k_reference_channel = "LIB_NR_G_FR";
    const std::size_t model = row.find("_TM");
    const bool is_model = row.starts_with("LIB_NR_FR") && model != std::string::npos;
    if (!is_model && !row.starts_with(k_reference_channel))
        return row;
    std::string name = row;
    std::replace(name.begin(), name.end(), '_', '-');
    if (is_model)
        std::replace(name.begin() + static_cast<std::ptrdiff_t>(model) + 1, name.end(), '-', '.');
    return name.substr(is_model ? k_front.size() : k_reference_channel.find('G'));
}

std::vector<std::string> preset_keys()
{
    std::vector<std::string> names;
    for (const key_t& key : k_keys)
        names.emplace_back(key.name);
    return names;
}

std::vector<std::string> preset_values(const std::string& name, const std::string& key)
{
    const found_t found = row_meant_by(name);
    std::vector<std::string> values;
    for (const bool mode : {false, true}) {
        cfg_nr_waveform_t waveform;
        waveform.set_nr_ntn(mode);
        const std::vector<combination_t> combinations = explorer_t(waveform, *found.family).combinations_of(found.row);
        for (const key_t& each : k_keys)
            if (values.empty() && key == each.name)
                for (const std::string& value : values_under(each, combinations))
                    values.push_back(value.substr(value.rfind('_') + 1));
    }
    return values;
}

} // namespace nrwave

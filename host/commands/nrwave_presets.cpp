#include "host/commands/nrwave_commands.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_path.h"

#include "config/leaves/cfg_nr_leaf.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>
#include <vector>

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

/// The values of a setting that a row can be chosen with, among all that the setting knows.
struct values_t
{
    std::vector<std::string> known;
    std::vector<std::string> taken;

    void include(const std::string& value)
    {
        if (!contains(taken, value))
            taken.push_back(value);
    }
    /// With "to" between the ends of a run.
    std::string text() const
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
};

/// A row with all that it can be chosen with.
struct preset_t
{
    const char* family;
    std::string name;
    bool ntn;
    values_t bandwidths;
    values_t spacings;
    values_t duplex_types;
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
    using choice_t = std::vector<std::pair<const cfg_nr_leaf_t*, std::string>>;

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
            for (const std::string& bandwidth : preset.bandwidths.known)
                for (const std::string& spacing : preset.spacings.known) {
                    choice_t choice = {{m_row, row}, {m_bandwidth, bandwidth}};
                    if (m_spacing)
                        choice.emplace_back(m_spacing, spacing);
                    if (m_group)
                        choice.emplace(choice.begin(), m_group, group);
                    if (!_choose(choice))
                        continue;
                    preset.bandwidths.include(bandwidth);
                    preset.spacings.include(spacing);
                    for (const std::string& duplex_type : _offer(*m_duplex_type))
                        preset.duplex_types.include(duplex_type);
                }
            if (!preset.bandwidths.taken.empty())
                presets.push_back(std::move(preset));
        }
        return presets;
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

std::string joined(const std::vector<std::string>& items)
{
    std::string text;
    for (const std::string& item : items)
        text += (text.empty() ? "" : ", ") + item;
    return text;
}

void write_lines(std::ostream& out, const std::vector<preset_t>& presets)
{
    for (const preset_t& preset : presets)
        out << preset.family << ' ' << preset.name << "  " << preset.bandwidths.text() << "; " << preset.spacings.text()
            << "; " << preset.duplex_types.text() << '\n';
}

void write_json(std::ostream& out, const std::vector<preset_t>& presets)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const preset_t& preset : presets)
        list.push_back({{"family", preset.family},
                        {"name", preset.name},
                        {"ntn", preset.ntn},
                        {"bandwidths", preset.bandwidths.taken},
                        {"spacings", preset.spacings.taken},
                        {"duplex_types", preset.duplex_types.taken}});
    out << list.dump(2) << '\n';
}

class presets_t : public command_t
{
public:
    presets_t() : command_t("presets", "Show the presets, and what each can be chosen with") {}

    void declare(CLI::App& app) override
    {
        app.add_option("family", m_family, "dl_tm, dl_frc, ul_frc, ul_rmc or pucch_test_model; none: all of them")
            ->type_name("FAMILY");
        app.add_flag("--ntn", m_ntn, "Those of non-terrestrial mode instead of the others");
        app.add_flag("--json", m_json, "As a JSON array");
    }

    void run(trace_t& trace) override
    {
        cfg_nr_waveform_t waveform;
        waveform.set_nr_ntn(m_ntn);
        std::vector<preset_t> presets;
        std::vector<std::string> names;
        for (const family_t& family : k_families) {
            names.emplace_back(family.name);
            if (!m_family || *m_family == family.name)
                for (preset_t& preset : explorer_t(waveform, family).presets())
                    presets.push_back(std::move(preset));
        }
        if (m_family && !contains(names, *m_family))
            throw failure_t("unknown family " + *m_family + "; there are " + joined(names));
        m_json ? write_json(trace.out, presets) : write_lines(trace.out, presets);
    }

private:
    std::optional<std::string> m_family;
    bool m_ntn = false;
    bool m_json = false;
};

} // namespace

std::unique_ptr<command_t> presets_command() { return std::make_unique<presets_t>(); }

} // namespace nrwave

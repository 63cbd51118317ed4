#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_catalogue.h"
#include "host/nrwave_description.h"
#include "host/nrwave_nearest.h"
#include "host/nrwave_summary.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

bool holds_word(const description_row_t& row, const std::string& word)
{
    const auto holds = [&](const std::string& text) { return contains_in_any_case(text, word); };
    return holds(row.path) || holds(row.meaning) || std::any_of(row.values.begin(), row.values.end(), holds);
}

nlohmann::ordered_json json_of(const std::vector<description_row_t>& rows)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const description_row_t& row : rows)
        list.push_back({{"path", row.path},
                        {"form", row.form},
                        {"default", row.standard ? nlohmann::ordered_json(*row.standard) : nlohmann::ordered_json()},
                        {"values", row.values},
                        {"meaning", row.meaning}});
    return list;
}

/// The paths that a path stands for: itself, or without indices every one that ends in it.
std::vector<std::string> meant_by(const std::string& path)
{
    if (path.empty() || path.find('[') != std::string::npos)
        return {path};
    const std::vector<std::string> paths = known_paths_ending_in(path);
    return paths.empty() ? std::vector{path} : paths;
}

class list_t : public command_t
{
public:
    list_t() : command_t("list", "Show the paths: form, default, what is on offer, meaning") {}

    void declare(CLI::App& app) override
    {
        app.add_option("path", m_path,
                       "Show this path and what lies below it; [i] or no index is any entry of a list, "
                       "and the front may be left out")
            ->type_name("PATH");
        app.add_option("--find", m_word, "Only what has this word in its path, its meaning or its enumerators")
            ->type_name("WORD");
        app.add_flag("--json", m_json, "As a JSON array of objects: path, form, default, values, meaning");
        app.add_flag("--manual", m_manual, "Write all settings as a document");
        m_configuration.declare_steps(app);
        app.footer("Examples:\n"
                   "  nrwave list dl_ssb                        all settings of the SS/PBCH block\n"
                   "  nrwave list --find dmrs                   every setting that has to do with DMRS\n"
                   "  nrwave list carrier.channel_bandwidth --set 'carrier[0].numerology=60k'\n"
                   "                                            with what is on offer in that state");
    }

    void run(trace_t& trace) override
    {
        if (m_manual)
            return write_manual(trace.out);
        cfg_nr_waveform_t waveform;
        m_configuration.apply(waveform, trace);
        std::vector<description_row_t> rows;
        for (const std::string& path : meant_by(m_path))
            for (description_row_t& row : described(waveform, path))
                if (holds_word(row, m_word))
                    rows.push_back(std::move(row));
        if (m_json)
            trace.out << written(json_of(rows));
        else
            for (const description_row_t& row : rows)
                trace.out << line_of(row) << '\n';
    }

private:
    configuration_t m_configuration;
    std::string m_path;
    std::string m_word;
    bool m_json = false;
    bool m_manual = false;
};

} // namespace

std::unique_ptr<command_t> list_command() { return std::make_unique<list_t>(); }

} // namespace nrwave

#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_digits.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_input.h"
#include "host/nrwave_jobs.h"
#include "host/nrwave_summary.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

namespace nrwave
{

namespace
{

/// A line of the list, and what became of it.
struct line_t
{
    line_t(unsigned int n, std::string text) : number(n), arguments(std::move(text)) {}

    unsigned int number;
    std::string arguments;
    int status = 0;
    double seconds = 0.0;
    nlohmann::ordered_json figures = nlohmann::ordered_json::object();
    std::string error; ///< empty where all went well
};

/// A line's words, as a shell tells them apart by blanks, quotes and backslashes; it expands nothing.
std::vector<std::string> words_of(const std::string& line)
{
    std::vector<std::string> words;
    char quote = '\0';
    bool in_word = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        char c = line[i];
        if (c == quote) {
            quote = '\0';
            continue;
        }
        if (quote == '\0' && (c == ' ' || c == '\t')) {
            in_word = false;
            continue;
        }
        if (!in_word)
            words.emplace_back();
        in_word = true;
        if (quote == '\0' && (c == '\'' || c == '"')) {
            quote = c;
            continue;
        }
        const char next = i + 1 < line.size() ? line[i + 1] : '\0';
        if (c == '\\' && (quote == '\0' || (quote == '"' && (next == '"' || next == '\\')))) {
            if (next == '\0')
                throw failure_t("nothing behind the last backslash");
            c = line[++i];
        }
        words.back() += c;
    }
    if (quote != '\0')
        throw failure_t(std::string("no ") + quote + " ends what one begins");
    return words;
}

/// What a line asks of the tool. Its summary comes back as JSON, whatever it asks to be told.
job_t job_of(const std::string& arguments)
{
    if (arguments.find('\0') != std::string::npos)
        throw failure_t("a NUL in the line");
    job_t job;
    job.words = words_of(arguments);
    std::erase_if(job.words, [](const std::string& word) { return word == "--quiet" || word == "--json"; });
    job.words.insert(job.words.begin(), "generate");
    job.words.emplace_back("--json");
    return job;
}

/// The lines that a process printed, without the tool's own name ahead of them.
std::vector<std::string> lines_of(const std::string& text)
{
    constexpr std::string_view k_name = "nrwave: ";
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line.starts_with(k_name) ? line.substr(k_name.size()) : line);
    return lines;
}

std::string column(const std::string& text, std::size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

class batch_t : public command_t
{
public:
    batch_t() : command_t("batch", "Generate many waveforms at a time") {}

    void declare(CLI::App& app) override
    {
        app.add_option("list", m_list, "Text file, each line the arguments of a 'generate'")
            ->type_name("LIST")
            ->required();
        declare_number(app, "-j,--jobs", m_together, "Processes at a time; as many as there are cores where not given");
        app.add_flag("--json", m_json, "Tell the lines as a JSON array instead of a table");
        app.footer("A line may have quotes, as in a shell; empty lines and lines that begin with #\ndo not count.\n"
                   "Examples:\n"
                   "  nrwave batch examples/many.list\n"
                   "  nrwave batch examples/many.list -j 2 --json");
    }

    void run(trace_t& trace) override
    {
        if (m_together == 0)
            throw failure_t("-j 0 would run nothing");
        read_list();
        std::vector<job_t> jobs;
        std::vector<line_t*> asked;
        for (line_t& line : m_lines) {
            try {
                jobs.push_back(job_of(line.arguments));
                asked.push_back(&line);
            } catch (const failure_t& failure) {
                line.status = 1;
                tell(line, failure.what(), trace);
            }
        }
        run_jobs(jobs, m_together,
                 [&](job_t& job) { finish(*asked[static_cast<std::size_t>(&job - jobs.data())], job, trace); });
        trace.out << (m_json ? json() : table());
        trace.flush_out();
        const auto failed = std::count_if(m_lines.begin(), m_lines.end(), [](auto& line) { return line.status != 0; });
        if (failed != 0)
            throw failure_t(std::to_string(failed) + " of " + std::to_string(m_lines.size()) + " lines failed");
    }

private:
    void read_list()
    {
        std::istringstream list(inputs_t().read(m_list));
        unsigned int number = 0;
        for (std::string text; std::getline(list, text);) {
            ++number;
            text = trimmed(text);
            if (!text.empty() && text.front() != '#')
                m_lines.emplace_back(number, text);
        }
        if (m_lines.empty())
            throw failure_t(shortened(m_list) + " has no line to run");
    }

    /// What a line has to say goes to standard error at once; the last one on a failure is its error.
    void tell(line_t& line, const std::string& text, trace_t& trace) const
    {
        trace.err << one_line(shortened(m_list)) << ':' << line.number << ": " << one_line(text) << std::endl;
        if (line.status != 0)
            line.error = text;
    }

    void finish(line_t& line, job_t& job, trace_t& trace)
    {
        line.status = job.status;
        line.seconds = job.seconds;
        for (const std::string& text : lines_of(job.err))
            tell(line, text, trace);
        job.err.clear();
        if (line.status > 128)
            tell(line, std::string("ended by a signal: ") + ::strsignal(line.status - 128), trace);
        else if (line.status == 0)
            take_figures(line, job.out, trace);
        job.out.clear();
    }

    void take_figures(line_t& line, const std::string& out, trace_t& trace)
    {
        line.figures = nlohmann::ordered_json::parse(out, nullptr, false);
        if (line.figures.is_object() && line.figures.contains("files"))
            return check_files(line, trace);
        line.figures = nlohmann::ordered_json::object();
        line.status = 1;
        tell(line, "nothing was written to a file: samples and help cannot go to standard output here", trace);
    }

    /// Of two lines with one output the later would silently take the place of the other.
    void check_files(line_t& line, trace_t& trace)
    {
        for (const auto& file : line.figures["files"]) {
            std::error_code ignored;
            const auto place = std::filesystem::weakly_canonical(file.get<std::string>(), ignored);
            const auto [owner, is_new] = m_files.emplace(place.string(), line.number);
            if (is_new || !std::filesystem::is_regular_file(place, ignored))
                continue;
            line.status = 1;
            return tell(line, file.get<std::string>() + " is that of line " + std::to_string(owner->second), trace);
        }
    }

    std::string json() const
    {
        const auto figure = [](const line_t& line, const char* name) {
            return line.figures.value(name, nlohmann::ordered_json());
        };
        nlohmann::ordered_json lines = nlohmann::ordered_json::array();
        for (const line_t& line : m_lines)
            lines.push_back(
                {{"line", line.number},
                 {"arguments", line.arguments},
                 {"status", line.status},
                 {"seconds", line.seconds},
                 {"peak_dbfs", figure(line, "peak_dbfs")},
                 {"rms_dbfs", figure(line, "rms_dbfs")},
                 {"error", line.status == 0 ? nlohmann::ordered_json() : nlohmann::ordered_json(line.error)}});
        return written(lines);
    }

    std::string table() const
    {
        const auto level = [](const line_t& line, const char* name) {
            const auto figure = line.figures.find(name);
            return figure != line.figures.end() && figure->is_number() ? fixed(figure->get<double>(), 2) : "-";
        };
        std::string text = "line  status  seconds  peak dBFS  RMS dBFS  arguments\n";
        for (const line_t& line : m_lines)
            text += column(std::to_string(line.number), 4) + column(std::to_string(line.status), 8) +
                    column(fixed(line.seconds, 2), 9) + column(level(line, "peak_dbfs"), 11) +
                    column(level(line, "rms_dbfs"), 10) + "  " + one_line(line.arguments) + '\n';
        return text;
    }

    std::string m_list;
    unsigned int m_together = std::max(1u, std::thread::hardware_concurrency());
    bool m_json = false;
    std::vector<line_t> m_lines;
    std::map<std::string, unsigned int> m_files;
};

} // namespace

std::unique_ptr<command_t> batch_command() { return std::make_unique<batch_t>(); }

} // namespace nrwave

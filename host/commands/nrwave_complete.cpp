#include "host/commands/nrwave_commands.h"
#include "host/nrwave_completion.h"

namespace nrwave
{

namespace
{

/// For the shell alone: the help does not show it.
class complete_t : public command_t
{
public:
    complete_t() : command_t("complete", "Show what a command line may go on to") {}

    void declare(CLI::App& app) override
    {
        app.group("");
        app.add_option("line", m_line, "The command line up to the cursor")->required();
        m_app = app.get_parent();
    }

    void run(trace_t& trace) override
    {
        for (const std::string& word : completions_of(*m_app, m_line))
            trace.out << word << '\n';
    }

private:
    std::string m_line;
    const CLI::App* m_app = nullptr;
};

} // namespace

std::unique_ptr<command_t> complete_command() { return std::make_unique<complete_t>(); }

} // namespace nrwave

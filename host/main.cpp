#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_help.h"
#include "host/nrwave_nearest.h"
#include "host/nrwave_output.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <vector>

// The command-line tool: reads the command line and runs the command that it names.

namespace
{

using namespace nrwave;

/// The status of the program; what ends a run is one line on standard error.
int run(command_t& command, trace_t& trace)
{
    try {
        command.run(trace);
        trace.flush_out();
        return 0;
    } catch (const std::bad_alloc&) {
        trace.err << "nrwave: not enough memory" << std::endl;
    } catch (const std::exception& failure) {
        trace.err << "nrwave: " << one_line(failure.what()) << std::endl;
    }
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    const std::array commands = {generate_command(), show_command(),    info_command(),    compare_command(),
                                 get_command(),      map_command(),     explain_command(), save_command(),
                                 list_command(),     presets_command(), batch_command(),   complete_command()};
    bool verbose = false;

    CLI::App app("5G NR baseband waveforms: samples, resource maps and settings files from steps.\n"
                 "The inputs configure a fresh waveform in this order: settings file, presets,\n"
                 "recipes, single steps.",
                 "nrwave");
    app.formatter(std::make_shared<help_t>());
    app.require_subcommand(1);
    app.set_version_flag("--version", NRWAVE_VERSION);
    app.set_help_all_flag("--help-all", "Print the help of all commands and exit");
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return "nrwave: " + shortened(one_line(error.what())) + " (try --help)\n";
    });
    std::vector<std::string> names;
    for (const auto& command : commands) {
        CLI::App& declared = *app.add_subcommand(command->name(), command->help());
        command->declare(declared);
        names.emplace_back(command->name());
        declared.add_flag("-v,--verbose", verbose, "Show the library's own trace on standard error");
    }

    guard_outputs();
    if (argc > 1 && argv[1][0] != '-' && std::find(names.begin(), names.end(), argv[1]) == names.end()) {
        std::cerr << "nrwave: unknown command " << one_line(shortened(argv[1])) << nearest_to(argv[1], names)
                  << " (try --help)" << std::endl;
        return 1;
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) { // or a help that was asked for
        const int status = app.exit(error) == 0 ? 0 : 1;
        if (std::cout.flush())
            return status;
        std::cerr << "nrwave: cannot write to standard output" << std::endl;
        return 1;
    }

    trace_t trace(verbose);
    for (const auto& command : commands)
        if (app.got_subcommand(command->name()))
            return run(*command, trace);
    return 0;
}

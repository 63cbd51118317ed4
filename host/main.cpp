#include "host/nrwave_failure.h"
#include "host/nrwave_generation.h"
#include "host/nrwave_listing.h"
#include "host/nrwave_output.h"
#include "host/nrwave_pictures.h"
#include "host/nrwave_prach.h"
#include "host/nrwave_samples.h"
#include "host/nrwave_settings.h"
#include "host/nrwave_steps.h"
#include "host/nrwave_trace.h"
#include "host/nrwave_value.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <vector>

// The command-line tool: configures a fresh waveform from a settings file, recipes and single steps, in that order, and
// generates, lists, maps or saves it.

namespace
{

using namespace nrwave;
using vek::nr_mod_lib::cfg_nr_waveform_t;
using vek::nr_mod_lib::lib_nr_phy_t;

struct options_t
{
    std::optional<std::string> file;
    std::vector<std::string> words; // get: a settings file, then paths
    std::vector<std::string> recipes;
    std::vector<std::string> steps;
    std::string output;
    std::string report;
    std::string path;
    sample_format_t format = sample_format_t::sigmf;
    unsigned int carrier = 0;
    unsigned int numerology = 0;
    unsigned int frame = 0;
    bool manual = false;
    bool strict = false;
    bool verbose = false;
};

bool ends_with(const std::string& text, const std::string& ending)
{
    return text.size() >= ending.size() && text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

/// The files read on the way.
inputs_t configure(cfg_nr_waveform_t& waveform, const options_t& options, std::ostream& err)
{
    stepper_t stepper(waveform, [&](const std::string& line) {
        if (options.strict)
            throw failure_t(line);
        err << one_line(line) << std::endl;
    });
    if (options.file)
        stepper.load(*options.file);
    for (const std::string& recipe : options.recipes)
        stepper.apply_recipe(recipe);
    for (const std::string& step : options.steps)
        stepper.apply(step);
    stepper.tell_resets();
    return stepper.inputs();
}

std::string description_of(cfg_nr_waveform_t& waveform)
{
    const unsigned int carriers = waveform.get_carrier_number();
    const unsigned int frames = waveform.get_frame_number();
    return "5G NR baseband waveform, " + std::to_string(carriers) + (carriers == 1 ? " carrier, " : " carriers, ") +
           std::to_string(frames) + (frames == 1 ? " frame" : " frames");
}

void run_generate(const options_t& options, trace_t& trace)
{
    cfg_nr_waveform_t waveform;
    const inputs_t inputs = configure(waveform, options, trace.err);
    outputs_t outputs(inputs);
    sample_files_t files(outputs, options.output, options.format);
    if (!options.report.empty())
        outputs.make_folder(options.report);
    lib_nr_phy_t engine;
    generate(waveform, engine);
    for (const std::string& line : silent_bursts(engine))
        trace.err << line << std::endl;
    if (!options.report.empty())
        draw_report(waveform, engine, outputs, options.report);
    files.write(engine.get_baseband_signal_data(),
                {waveform.get_waveform_sample_rate(), waveform.get_radio_frequency(), description_of(waveform)});
    outputs.keep();
}

void run_get(options_t options, trace_t& trace)
{
    if (!options.words.empty() && ends_with(options.words.front(), ".xml")) {
        options.file = options.words.front();
        options.words.erase(options.words.begin());
    }
    cfg_nr_waveform_t waveform;
    configure(waveform, options, trace.err);
    std::vector<std::string> steps;
    for (const std::string& path : options.words)
        for (std::string& step : steps_at(waveform, path))
            steps.push_back(std::move(step));
    if (options.words.empty())
        steps = steps_of(waveform);
    for (const std::string& step : steps)
        trace.out << step << '\n';
}

void run_map(const options_t& options, trace_t& trace)
{
    const bool picture = ends_with(options.output, ".png");
    if (!picture && !ends_with(options.output, ".csv") && !is_written_through(options.output))
        throw failure_t("a map is a .csv or a .png file, not " + options.output);
    cfg_nr_waveform_t waveform;
    const inputs_t inputs = configure(waveform, options, trace.err);
    lib_nr_phy_t engine;
    check_place(waveform, options.carrier, options.numerology, options.frame);
    const auto write = [&](const auto& map) {
        write_text(options.output, picture ? picture_of(map) : csv_of(map), inputs);
    };
    if (is_prach(waveform, options.carrier))
        write(prach_map_of(waveform, engine, options.carrier, options.numerology, options.frame));
    else
        write(map_of(waveform, engine, options.carrier, options.numerology, options.frame));
}

void run_save(const options_t& options, trace_t& trace)
{
    cfg_nr_waveform_t waveform;
    const inputs_t inputs = configure(waveform, options, trace.err);
    write_text(options.output, saved_text(waveform), inputs);
}

void run_list(const options_t& options, trace_t& trace)
{
    if (options.manual)
        return write_manual(trace.out);
    cfg_nr_waveform_t waveform;
    configure(waveform, options, trace.err);
    describe(trace.out, waveform, options.path);
}

void add_inputs(CLI::App& command, options_t& options)
{
    command.add_option("--recipe", options.recipes, "Text file of steps, one a line; may be given several times")
        ->type_name("FILE")
        ->allow_extra_args(false);
    command
        .add_option("--set", options.steps,
                    "One step: PATH=VALUE, \"add PATH\", \"copy PATH[i]\", \"remove PATH[i]\", \"load FILE.xml\"")
        ->type_name("STEP")
        ->allow_extra_args(false);
    command.add_flag("--strict", options.strict, "Fail where the library corrects a value");
    command.add_flag("-v,--verbose", options.verbose, "Show the library's own trace on standard error");
}

void add_file(CLI::App& command, options_t& options)
{
    command.add_option("file", options.file, "Settings file to begin with")->type_name("FILE.xml");
}

} // namespace

int main(int argc, char** argv)
{
    options_t options;
    CLI::App app("5G NR baseband waveforms: samples, resource maps and settings files from a list of steps.\n"
                 "The inputs configure a fresh waveform in this order: settings file, recipes, single steps.",
                 "nrwave");
    app.require_subcommand(1);
    app.set_version_flag("--version", NRWAVE_VERSION);
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return "nrwave: " + one_line(error.what()) + " (try --help)\n";
    });

    CLI::App* generate_command = app.add_subcommand("generate", "Generate the samples");
    add_file(*generate_command, options);
    add_inputs(*generate_command, options);
    generate_command->add_option("-o,--output", options.output, "What the names of the files begin with")
        ->type_name("PREFIX")
        ->required();
    const std::map<std::string, sample_format_t> formats = {
        {"sigmf", sample_format_t::sigmf}, {"cf32", sample_format_t::cf32}, {"cf64", sample_format_t::cf64}};
    std::string format = "sigmf";
    generate_command->add_option("--format", format, "sigmf (default), cf32 or cf64")->type_name("FORMAT");
    generate_command->add_option("--report", options.report, "Folder for pictures: spectrum, CCDF, power, resource map")
        ->type_name("DIR");

    CLI::App* get_command = app.add_subcommand("get", "Print settings as steps, and single figures");
    get_command->add_option("words", options.words, "A settings file to begin with, then paths; no path: everything")
        ->type_name("[FILE.xml] [PATH]");
    add_inputs(*get_command, options);

    CLI::App* map_command = app.add_subcommand("map", "Write the resource map of a frame as a table or a picture");
    add_file(*map_command, options);
    add_inputs(*map_command, options);
    map_command->add_option("--carrier", options.carrier, "Index of the carrier")->required();
    map_command->add_option("--numerology", options.numerology, "Index of the numerology")->required();
    map_command->add_option("--frame", options.frame, "Index of the frame")->required();
    map_command->add_option("-o,--output", options.output, "FILE.csv or FILE.png")->type_name("FILE")->required();

    CLI::App* save_command = app.add_subcommand("save", "Write a settings file");
    add_file(*save_command, options);
    add_inputs(*save_command, options);
    save_command->add_option("-o,--output", options.output, "The settings file")->type_name("FILE.xml")->required();

    CLI::App* list_command = app.add_subcommand("list", "Show the paths: form, default, what is on offer, meaning");
    list_command->add_option("path", options.path, "Show this path and what lies below it; [i] is any entry of a list")
        ->type_name("PATH");
    list_command->add_flag("--manual", options.manual, "Write all settings as a document");
    add_inputs(*list_command, options);

    guard_outputs();
    CLI11_PARSE(app, argc, argv);

    trace_t trace(options.verbose);
    try {
        if (*generate_command) {
            const auto found = formats.find(format);
            if (found == formats.end())
                throw failure_t("unknown format " + format + "; there are sigmf, cf32 and cf64");
            options.format = found->second;
            run_generate(options, trace);
        }
        else if (*get_command)
            run_get(options, trace);
        else if (*map_command)
            run_map(options, trace);
        else if (*save_command)
            run_save(options, trace);
        else if (*list_command)
            run_list(options, trace);
        trace.out.flush();
        if (!trace.out)
            throw failure_t("cannot write to standard output");
        return 0;
    } catch (const std::bad_alloc&) {
        trace.err << "nrwave: not enough memory" << std::endl;
    } catch (const std::exception& failure) {
        trace.err << "nrwave: " << one_line(failure.what()) << std::endl;
    }
    return 1;
}

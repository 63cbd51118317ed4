// What the tool adds to the library's generation: samples of 4 frames of 100 MHz with hash and metadata as SigMF. The
// counters are the added time over that of the generation, and the added memory over that of the waveform.
#include "host/nrwave_annotations.h"
#include "host/nrwave_cells.h"
#include "host/nrwave_generation.h"
#include "host/nrwave_listing.h"
#include "host/nrwave_preset.h"
#include "host/nrwave_samples.h"
#include "host/nrwave_steps.h"
#include "support/captured_output.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;

using steady_t = std::chrono::steady_clock;

double peak_bytes()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return 1024.0 * static_cast<double>(usage.ru_maxrss);
}

void write_files(cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine,
                 const std::vector<nrwave::reference_signal_t>& references, const std::filesystem::path& prefix)
{
    const nrwave::inputs_t inputs;
    nrwave::outputs_t outputs(inputs);
    nrwave::sample_files_t files(outputs, prefix.string(), nrwave::sample_format_t::sigmf);
    const nrwave::delivered_t delivered = nrwave::delivered({}, waveform, engine.get_baseband_signal_data());
    nrwave::metadata_t metadata;
    files.write(delivered, metadata);
    for (const std::string& step : nrwave::steps_of(waveform))
        metadata.settings += step + '\n';
    metadata.annotations = nrwave::annotations_of(waveform, engine, references, delivered.period.size());
    files.describe(metadata);
    outputs.keep();
}

void tool_beside_the_library(benchmark::State& state)
{
    const nr_test::captured_output_t silence;
    const auto prefix = std::filesystem::temp_directory_path() / "nrwave_bench";
    cfg_nr_waveform_t waveform;
    nrwave::stepper_t stepper(waveform, [](const std::string&) {});
    for (const std::string& step : nrwave::preset_steps("NR-FR1-TM3.1a:bandwidth=100M", false))
        stepper.apply(step);
    stepper.apply("frame_number=4");

    std::chrono::duration<double> in_library{};
    std::chrono::duration<double> in_tool{};
    double added_bytes = 0.0;
    for (auto _ : state) {
        lib_nr_phy_t engine;
        engine.set_trace_file_enable(false);
        const nrwave::cell_keeper_t keeper(waveform, engine, false);
        const auto start = steady_t::now();
        nrwave::generate(waveform, engine);
        const auto generated = steady_t::now();
        const double before = peak_bytes();
        write_files(waveform, engine, keeper.references(), prefix);
        added_bytes = std::max(added_bytes, peak_bytes() - before);
        in_library += generated - start;
        in_tool += steady_t::now() - generated;
    }
    for (const char* suffix : {".sigmf-data", ".sigmf-meta"})
        std::filesystem::remove(prefix.string() + suffix);
    state.counters["share"] = in_tool / in_library;
    state.counters["memory"] =
        added_bytes / (static_cast<double>(waveform.get_waveform_sample_points()) * sizeof(std::complex<double>));
}
BENCHMARK(tool_beside_the_library)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

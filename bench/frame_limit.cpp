#include "common/lib_fft_plan.h"
#include "config/cfg_nr_waveform.h"
#include "host/nrwave_steps.h"
#include "phy/lib_nr_phy.h"
#include "phy/lib_nr_resource_manager.h"
#include "support/engine_peer.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fftw3.h>
#include <functional>
#include <iostream>
#include <limits>
#include <malloc.h>
#include <string>
#include <sys/resource.h>
#include <vector>

// Whole waveforms through the engine against the work that nobody can leave out: the transforms of the OFDM symbols, of
// the filter and of the spectrum, and a pass over two waveforms, a payload map and a frame. Each waveform runs in a
// process of its own, so that its peak memory is its own. Page faults count on neither side: engine and reference both
// work on memory that was touched before. The cold run, the first of a process with all its faults and plans, is told
// apart.

namespace
{

using namespace vek::nr_mod_lib;
using complex_t = std::complex<double>;

constexpr unsigned int k_symbols = 280;
constexpr unsigned int k_subcarriers = 3276;
constexpr unsigned int k_fft_length = 4096;
constexpr std::size_t k_frame_samples = 1228800;
constexpr std::size_t k_filter_block = 4096; // the quickest length for this order
constexpr std::size_t k_filter_order = 1024;
constexpr std::size_t k_spectrum_length = 65536;
constexpr unsigned int k_spectrum_blocks = 20;

struct transform_t
{
    std::size_t length;
    std::size_t count;
    bool inverse;
};

/// A waveform of one carrier at 100 MHz and 30 kHz, as a fresh configuration is. A new one is a row here: its steps as
/// in a recipe, and the transforms that its channels need in a frame, beside those of every waveform.
struct waveform_t
{
    const char* name;
    std::vector<std::string> steps;
    bool fills_grid; ///< with symbols of the benchmark's own, which do not count
    std::vector<transform_t> channel_transforms;
};

/// A PDSCH of 273 RBs and 256QAM in every slot, behind a PDCCH and round SS/PBCH blocks and CSI-RS.
std::vector<std::string> full_cell(const std::string& enable_coding)
{
    return {"carrier[0].dl_ssb.enable=true",
            "carrier[0].dl_csirs[0].slot_allocation=0:19",
            "carrier[0].dl_csirs[0].enable=true",
            "carrier[0].dl_dci[0].slot_allocation=0:19",
            "carrier[0].dl_dci[0].enable=true",
            "carrier[0].dl_pdsch[0].first_symbol=1",
            "carrier[0].dl_pdsch[0].mcs_table=TABLE_5_1_3_1_2",
            "carrier[0].dl_pdsch[0].mcs=27",
            "carrier[0].dl_pdsch[0].enable_coding=" + enable_coding,
            "carrier[0].dl_pdsch[0].enable=true"};
}

/// An SRS of 272 resource blocks in the last four symbols of every slot, and a PUCCH of each format ahead of it.
std::vector<std::string> uplink_control_steps()
{
    std::vector<std::string> steps = {"carrier[0].carrier_type=LIB_NR_UPLINK",
                                      "carrier[0].ul_srs[0].slot_allocation=0:19",
                                      "carrier[0].ul_srs[0].N_symb_srs=LIB_NR_N_SYMB_SRS_VALUE_4",
                                      "carrier[0].ul_srs[0].l_offset=3",
                                      "carrier[0].ul_srs[0].c_srs=63",
                                      "carrier[0].ul_srs[0].enable=true"};
    const char* const sizes[] = {"2", "2", "64", "128", "12"};
    const char* const rbs[] = {"1", "1", "16", "16", "1"};
    for (unsigned int format = 0; format < 5; ++format) {
        const std::string pucch = "carrier[0].ul_pucch[" + std::to_string(format) + "].";
        if (format > 0)
            steps.push_back("add carrier[0].ul_pucch");
        const bool is_short = format == 0 || format == 2;
        for (const std::string& step :
             {"pucch_format=LIB_NR_UL_PUCCH_FORMAT_" + std::to_string(format), std::string("allocated_slots=0:19"),
              std::string("first_symbol=0"), std::string("symbol_num=") + (is_short ? "2" : "10"),
              "rb_offset=" + std::to_string(20 * format), std::string("rb_num=") + rbs[format],
              std::string("payload_size=") + sizes[format], std::string("enable=true")})
            steps.push_back(pucch + step);
    }
    return steps;
}

/// A PUSCH of 256QAM in every slot.
std::vector<std::string> pusch_steps(const std::vector<std::string>& settings)
{
    std::vector<std::string> steps = {"carrier[0].carrier_type=LIB_NR_UPLINK"};
    for (const std::string& setting : settings)
        steps.push_back("carrier[0].ul_pusch[0]." + setting);
    for (const char* setting : {"mcs_table=TABLE_5_1_3_1_2", "mcs=27", "enable=true"})
        steps.push_back(std::string("carrier[0].ul_pusch[0].") + setting);
    return steps;
}

const std::vector<waveform_t>& waveforms()
{
    constexpr std::size_t k_precoded_length = 270 * 12;
    constexpr std::size_t k_precoded_symbols = 20 * 13; // all but one DMRS symbol a slot
    static const std::vector<waveform_t> rows = {
        {"full_grid", {}, true, {}},
        {"full_cell_coded", full_cell("true"), false, {}},
        {"full_cell_uncoded", full_cell("false"), false, {}},
        {"uplink_control", uplink_control_steps(), false, {}},
        {"pusch_coded", pusch_steps({}), false, {}},
        {"pusch_transform_precoded",
         pusch_steps({"enable_transfer_precoding=true"}),
         false,
         {{k_precoded_length, k_precoded_symbols, false}}},
    };
    return rows;
}

/// Time of the processor spent, which what else the machine does hardly touches; all of the work is one thread's.
double processor_time()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double seconds(const std::function<void()>& work)
{
    const double begin = processor_time();
    work();
    return processor_time() - begin;
}

/// The quickest of a few runs: what disturbs a machine only adds.
double quickest(unsigned int runs, const std::function<void()>& work)
{
    double best = seconds(work);
    for (unsigned int i = 1; i < runs; ++i)
        best = std::min(best, seconds(work));
    return best;
}

rusage usage()
{
    rusage now{};
    getrusage(RUSAGE_SELF, &now);
    return now;
}

/// From here on what is given back stays with the process, touched as it is.
void keep_memory_in_the_process()
{
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

/// Random QPSK in every cell.
void fill_grid(unsigned int, unsigned int, unsigned int)
{
    std::uint64_t state = 0x9E3779B97F4A7C15U;
    for (auto& row : lib_nr_channel_resource_manager_t::get_inst().get_payload_mapping())
        for (complex_t& cell : row) {
            state ^= state << 13U;
            state ^= state >> 7U;
            state ^= state << 17U;
            cell = {(state & 1U) ? M_SQRT1_2 : -M_SQRT1_2, (state & 2U) ? M_SQRT1_2 : -M_SQRT1_2};
        }
}

/// Those of every waveform, and apart from them those of its channels.
std::vector<transform_t> common_transforms(unsigned int frames)
{
    const std::size_t blocks = (k_frame_samples + k_filter_order) / (k_filter_block - k_filter_order) + 1;
    return {{k_fft_length, std::size_t{k_symbols} * frames, true},
            {k_filter_block, blocks * frames, false},
            {k_filter_block, blocks * frames, true},
            {k_spectrum_length, k_spectrum_blocks, false}};
}

std::vector<transform_t> channel_transforms(const waveform_t& waveform, unsigned int frames)
{
    std::vector<transform_t> transforms = waveform.channel_transforms;
    for (transform_t& transform : transforms)
        transform.count *= frames;
    return transforms;
}

/// A pass over the buffers that no engine can do without: each set to zero, then added up.
double pass_seconds(unsigned int frames, unsigned int runs)
{
    std::vector<complex_t> first(k_frame_samples * frames);
    std::vector<complex_t> second(first.size());
    std::vector<complex_t> payload(std::size_t{k_symbols} * k_subcarriers);
    std::vector<complex_t> frame(k_frame_samples);
    return quickest(runs, [&] {
        for (auto* buffer : {&first, &second, &payload, &frame})
            std::fill(buffer->begin(), buffer->end(), complex_t());
        for (std::size_t i = 0; i < first.size(); ++i)
            first[i] += second[i];
        for (std::size_t i = 0; i < frame.size(); ++i)
            frame[i] += first[i];
        // What nobody reads would be left out.
        volatile double sink = first[first.size() / 2].real() + payload[payload.size() / 2].real() + frame[1].real();
        static_cast<void>(sink);
    });
}

/// The same transforms through the library's wrapper, and through plans that were measured before.
double transform_seconds(const std::vector<transform_t>& transforms, unsigned int runs, bool measured)
{
    double total = 0;
    for (const transform_t& transform : transforms) {
        std::vector<complex_t> in(transform.length, complex_t(1.0, -1.0));
        std::vector<complex_t> out(transform.length);
        if (measured) {
            std::vector<complex_t> kept = in;
            auto* raw_in = reinterpret_cast<fftw_complex*>(in.data());
            auto* raw_out = reinterpret_cast<fftw_complex*>(out.data());
            fftw_plan plan = fftw_plan_dft_1d(static_cast<int>(transform.length), raw_in, raw_out,
                                              transform.inverse ? FFTW_BACKWARD : FFTW_FORWARD, FFTW_MEASURE);
            in = kept;
            total += quickest(runs, [&] {
                for (std::size_t i = 0; i < transform.count; ++i)
                    fftw_execute(plan);
            });
            fftw_destroy_plan(plan);
        }
        else {
            const auto& plan = vek::common_lib::lib_fft_plan_t::get(
                transform.length,
                transform.inverse ? vek::common_lib::LIB_FFT_INVERSE : vek::common_lib::LIB_FFT_FORWARD);
            total += quickest(runs, [&] {
                for (std::size_t i = 0; i < transform.count; ++i)
                    plan.execute(in.data(), out.data());
            });
        }
    }
    return total;
}

/// Times in seconds of processor time.
struct result_t
{
    double engine;
    double engine_cold;
    double transforms;
    double transforms_measured; ///< with plans that were measured before
    double channels;            ///< the channels' own transforms
    double channels_measured;
    double pass;
    double memory; ///< peak resident bytes over those of one waveform buffer
    double faults; ///< of a warm run

    double unavoidable() const { return transforms + channels + pass; }
    double ratio() const { return engine / unavoidable(); }
    double ratio_measured() const { return engine / (transforms_measured + channels_measured + pass); }
    double ratio_cold() const { return engine_cold / unavoidable(); }
    double ratio_without_channels() const { return engine / (transforms + pass); }
};

// The order of the members, for the way from process to process.
constexpr std::size_t k_figures = sizeof(result_t) / sizeof(double);

/// Nothing but the steps' own settings may come out of them.
void configure(const waveform_t& row, unsigned int frames, cfg_nr_waveform_t& waveform)
{
    nrwave::stepper_t stepper(waveform, [&](const std::string& line) {
        std::fprintf(stderr, "frame_limit: %s: %s\n", row.name, line.c_str());
        std::exit(1);
    });
    for (const std::string& step : row.steps)
        stepper.apply(step);
    waveform.set_frame_number(frames);
}

/// In a process of its own: the cold run and memory first, then what stays with the process.
result_t measure(const waveform_t& row, unsigned int frames)
{
    std::streambuf* original = std::cout.rdbuf(nullptr);
    const unsigned int runs = frames == 1 ? 9 : 5;
    cfg_nr_waveform_t waveform;
    configure(row, frames, waveform);
    const std::size_t samples = waveform.get_waveform_manager().get_waveform_sample_points();

    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    if (row.fills_grid)
        vek::test_peer_t<lib_nr_phy_t>::after_channel_steps(engine, fill_grid);
    const auto run = [&] {
        if (!engine.nr_phy_process() || engine.get_first_failed_step() ||
            engine.get_baseband_signal_data().size() != k_frame_samples * frames)
        {
            std::fprintf(stderr, "frame_limit: %s: the waveform is not whole\n", row.name);
            std::exit(1);
        }
    };
    result_t result{};
    result.engine_cold = seconds(run);
    run();
    result.memory = static_cast<double>(usage().ru_maxrss) * 1024.0 / static_cast<double>(samples * sizeof(complex_t));

    keep_memory_in_the_process();
    run();
    result.engine = quickest(runs, run);
    const long faults = usage().ru_minflt;
    run();
    result.faults = static_cast<double>(usage().ru_minflt - faults);
    if (row.fills_grid) {
        const double filling = frames * quickest(runs, [] { fill_grid(0, 0, 0); });
        result.engine -= filling;
        result.engine_cold -= filling;
    }
    result.pass = pass_seconds(frames, runs);
    result.transforms = transform_seconds(common_transforms(frames), runs, false);
    result.transforms_measured = transform_seconds(common_transforms(frames), runs, true);
    result.channels = transform_seconds(channel_transforms(row, frames), runs, false);
    result.channels_measured = transform_seconds(channel_transforms(row, frames), runs, true);
    std::cout.rdbuf(original);
    return result;
}

result_t measure_apart(const char* program, const waveform_t& row, unsigned int frames)
{
    const std::string command = std::string("'") + program + "' --measure " + row.name + " " + std::to_string(frames);
    std::FILE* child = popen(command.c_str(), "r");
    double figures[k_figures] = {};
    std::size_t read = 0;
    while (child != nullptr && read < k_figures && std::fscanf(child, "%lf", &figures[read]) == 1)
        ++read;
    if (read != k_figures || pclose(child) != 0) {
        std::fprintf(stderr, "frame_limit: the run of %s with %u frames failed\n", row.name, frames);
        std::exit(1);
    }
    result_t result{};
    std::memcpy(&result, figures, sizeof(result));
    return result;
}

void print_text(const waveform_t& row, const result_t& one, const result_t& four)
{
    std::printf(
        "%s: %.2f times the unavoidable work (%.2f with measured plans, %.2f cold), peak %.2f waveform "
        "buffers; 4 frames: %.2f times (%.2f cold), peak %.2f; time grows %.2f-fold; page faults of a warm run: "
        "%.0f and %.0f\n",
        row.name, one.ratio(), one.ratio_measured(), one.ratio_cold(), one.memory, four.ratio(), four.ratio_cold(),
        four.memory, four.engine / one.engine, one.faults, four.faults);
    if (one.channels > 0)
        std::printf("%s: %.2f times where its channels' own transforms are not counted as unavoidable\n", row.name,
                    one.ratio_without_channels());
}

void print_json(const waveform_t& row, const result_t& one, const result_t& four, bool is_first)
{
    std::printf("%s{\"waveform\": \"%s\", \"ratio\": %.3f, \"ratio_measured_plans\": %.3f, \"memory\": %.3f, "
                "\"ratio_4_frames\": %.3f, \"ratio_measured_plans_4_frames\": %.3f, \"memory_4_frames\": %.3f, "
                "\"ratio_cold\": %.3f, "
                "\"ratio_cold_4_frames\": %.3f, \"time_4_frames\": %.3f, \"ratio_without_channel_transforms\": %.3f, "
                "\"page_faults\": %.0f}",
                is_first ? "" : ",\n ", row.name, one.ratio(), one.ratio_measured(), one.memory, four.ratio(),
                four.ratio_measured(), four.memory, one.ratio_cold(), four.ratio_cold(), four.engine / one.engine,
                one.ratio_without_channels(), one.faults);
}

const waveform_t* find(const char* name)
{
    const auto found = std::find_if(waveforms().begin(), waveforms().end(),
                                    [&](const waveform_t& row) { return std::strcmp(row.name, name) == 0; });
    return found == waveforms().end() ? nullptr : &*found;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 4 && std::strcmp(argv[1], "--measure") == 0 && find(argv[2]) != nullptr) {
        const result_t result = measure(*find(argv[2]), static_cast<unsigned int>(std::atoi(argv[3])));
        double figures[k_figures];
        std::memcpy(figures, &result, sizeof(result));
        for (const double figure : figures)
            std::printf("%.9g ", figure);
        return 0;
    }
    const bool json = argc > 1 && std::strcmp(argv[1], "--json") == 0;
    std::vector<const waveform_t*> chosen;
    for (int i = json ? 2 : 1; i < argc; ++i) {
        chosen.push_back(find(argv[i]));
        if (chosen.back() == nullptr) {
            std::fprintf(stderr, "usage: frame_limit [--json] [WAVEFORM...]\n");
            return 2;
        }
    }
    if (chosen.empty())
        for (const waveform_t& row : waveforms())
            chosen.push_back(&row);

    std::printf("%s", json ? "[" : "");
    for (const waveform_t* row : chosen) {
        const result_t one = measure_apart(argv[0], *row, 1);
        const result_t four = measure_apart(argv[0], *row, 4);
        if (json)
            print_json(*row, one, four, row == chosen.front());
        else
            print_text(*row, one, four);
    }
    std::printf("%s", json ? "]\n" : "");
    return 0;
}

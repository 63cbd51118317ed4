#include "common/lib_fft_plan.h"
#include "config/cfg_nr_waveform.h"
#include "host/nrwave_steps.h"
#include "phy/lib_nr_phy.h"
#include "phy/lib_nr_resource_manager.h"
#include "support/engine_peer.h"
#include "support/fft_peer.h"

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
#include <map>
#include <string>
#include <sys/resource.h>
#include <vector>

// Whole waveforms through the engine against the work that nobody can leave out: the transforms that the engine was
// seen to run, and a pass over two waveforms, a payload map and a frame. The second mark has the same transforms by
// plans that FFTW measured before. Engine and reference alternate, so that what else the machine does meets both. Each
// waveform runs in a process of its own, so that its peak memory is its own. Page faults count on neither side: engine
// and reference both work on memory that was touched before. The cold run, the first of a process with all its faults
// and tables, is told apart; so is the time of a host that reads the samples and no other result.

namespace
{

using namespace vek::nr_mod_lib;
using vek::common_lib::lib_fft_direction_t;
using vek::common_lib::lib_fft_plan_t;
using complex_t = std::complex<double>;

constexpr unsigned int k_symbols = 280;
constexpr unsigned int k_subcarriers = 3276;
constexpr std::size_t k_frame_samples = 1228800;

/// A waveform of one carrier at 100 MHz and 30 kHz, as a fresh configuration is. A new one is a row here: its steps as
/// in a recipe.
struct waveform_t
{
    const char* name;
    std::vector<std::string> steps;
    bool fills_grid; ///< with symbols of the benchmark's own, which do not count
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

/// A burst of format A1 in every frame.
std::vector<std::string> prach_steps()
{
    return {"carrier[0].carrier_type=LIB_NR_PRACH", "carrier[0].ul_prach[0].configuration_table=FR1_TDD",
            "carrier[0].ul_prach[0].configuration_idx=77", "carrier[0].ul_prach[0].prach_scs=PRACH_SCS_30K"};
}

const std::vector<waveform_t>& waveforms()
{
    static const std::vector<waveform_t> rows = {
        {"full_grid", {}, true},
        {"full_cell_coded", full_cell("true"), false},
        {"full_cell_uncoded", full_cell("false"), false},
        {"uplink_control", uplink_control_steps(), false},
        {"pusch_coded", pusch_steps({}), false},
        {"pusch_transform_precoded", pusch_steps({"enable_transfer_precoding=true"}), false},
        {"ssb", {"carrier[0].dl_ssb.enable=true"}, false},
        {"prach", prach_steps(), false},
        {"nr_fr1_tm3_1a", {"carrier[0].dl_tm.test_model=LIB_NR_FR1_TM3_1a", "apply carrier[0].dl_tm"}, false},
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
struct quickest_t
{
    double best = std::numeric_limits<double>::infinity();

    void add(double time) { best = std::min(best, time); }
};

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

using transform_counts_t = std::map<std::pair<std::size_t, lib_fft_direction_t>, std::size_t>;
transform_counts_t counted;

/// The transforms that some work runs.
transform_counts_t count_transforms(const std::function<void()>& work)
{
    using peer_t = vek::test_peer_t<lib_fft_plan_t>;
    counted.clear();
    peer_t::observe([](std::size_t length, lib_fft_direction_t direction) { ++counted[{length, direction}]; });
    work();
    peer_t::observe(nullptr);
    return counted;
}

/// All transforms of one length and direction in a row, through the library's door and by a measured plan.
class transform_timer_t
{
public:
    transform_timer_t(std::size_t length, lib_fft_direction_t direction)
        : m_in(length), m_out(length), m_plan(lib_fft_plan_t::get(length, direction))
    {
        m_measured = fftw_plan_dft_1d(static_cast<int>(length), reinterpret_cast<fftw_complex*>(m_in.data()),
                                      reinterpret_cast<fftw_complex*>(m_out.data()),
                                      direction == vek::common_lib::LIB_FFT_INVERSE ? FFTW_BACKWARD : FFTW_FORWARD,
                                      FFTW_MEASURE);
        std::fill(m_in.begin(), m_in.end(), complex_t(1.0, -1.0));
    }

    void time(std::size_t count)
    {
        const auto per_transform = [count](const std::function<void()>& transform) {
            return seconds([&] {
                       for (std::size_t i = 0; i < count; ++i)
                           transform();
                   }) /
                   static_cast<double>(count);
        };
        own.add(per_transform([this] { m_plan.execute(m_in.data(), m_out.data()); }));
        measured.add(per_transform([this] { fftw_execute(m_measured); }));
    }

    quickest_t own;
    quickest_t measured;

private:
    std::vector<complex_t> m_in;
    std::vector<complex_t> m_out;
    const lib_fft_plan_t& m_plan;
    fftw_plan m_measured; // ends with the process
};

/// A pass over the buffers that no engine can do without: each set to zero, then added up.
class pass_t
{
public:
    explicit pass_t(unsigned int frames)
        : m_first(k_frame_samples * frames),
          m_second(m_first.size()),
          m_payload(std::size_t{k_symbols} * k_subcarriers),
          m_frame(k_frame_samples)
    {}

    void run()
    {
        for (auto* buffer : {&m_first, &m_second, &m_payload, &m_frame})
            std::fill(buffer->begin(), buffer->end(), complex_t());
        for (std::size_t i = 0; i < m_first.size(); ++i)
            m_first[i] += m_second[i];
        for (std::size_t i = 0; i < m_frame.size(); ++i)
            m_frame[i] += m_first[i];
        // What nobody reads would be left out.
        volatile double sink = m_first[m_first.size() / 2].real() + m_payload[1].real() + m_frame[1].real();
        static_cast<void>(sink);
    }

private:
    std::vector<complex_t> m_first;
    std::vector<complex_t> m_second;
    std::vector<complex_t> m_payload;
    std::vector<complex_t> m_frame;
};

/// The engine's time and that of the unavoidable work, in seconds of processor time.
struct times_t
{
    double engine;
    double unavoidable;
    double unavoidable_measured; ///< with plans that were measured before

    double ratio() const { return engine / unavoidable; }
    double ratio_measured() const { return engine / unavoidable_measured; }
};

struct result_t
{
    times_t all;     ///< all results read
    times_t samples; ///< the samples alone
    double engine_cold;
    double memory; ///< peak resident bytes over those of one waveform buffer
    double faults; ///< of a warm run

    double ratio_cold() const { return engine_cold / all.unavoidable; }
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

void run_engine(const waveform_t& row, unsigned int frames, bool reads_all, lib_nr_phy_t& engine)
{
    std::size_t results = 1;
    bool is_whole = engine.nr_phy_process() && !engine.get_first_failed_step() &&
                    engine.get_baseband_signal_data().size() == k_frame_samples * frames;
    if (reads_all)
        for (const std::size_t size :
             {engine.get_frequency_spectrum_data().size(), engine.get_waveform_ccdf_cruve_data().size(),
              engine.get_waveform_ccdf_marker_data().size(), engine.get_burst_ccdf_cruve_data().size(),
              engine.get_burst_ccdf_marker_data().size()})
            results *= size;
    if (!is_whole || results == 0) {
        std::fprintf(stderr, "frame_limit: %s: the waveform is not whole\n", row.name);
        std::exit(1);
    }
}

/// Engine and reference in turn.
void measure_times(const waveform_t& row, unsigned int frames, lib_nr_phy_t& engine, result_t& result)
{
    const auto run_all = [&] { run_engine(row, frames, true, engine); };
    const auto run_for_samples = [&] { run_engine(row, frames, false, engine); };
    const transform_counts_t counts_all = count_transforms(run_all);
    const transform_counts_t counts_samples = count_transforms(run_for_samples);
    std::map<transform_counts_t::key_type, transform_timer_t> timers;
    for (const auto& [key, count] : counts_all)
        timers.try_emplace(key, key.first, key.second);
    pass_t pass(frames);

    quickest_t all;
    quickest_t samples;
    quickest_t filling;
    quickest_t passing;
    for (unsigned int round = 0; round < (frames == 1 ? 15U : 7U); ++round) {
        all.add(seconds(run_all));
        samples.add(seconds(run_for_samples));
        for (auto& [key, timer] : timers)
            timer.time(counts_all.at(key));
        passing.add(seconds([&] { pass.run(); }));
        filling.add(row.fills_grid ? seconds([] { fill_grid(0, 0, 0); }) : 0.0);
    }
    const auto times = [&](const quickest_t& run, const transform_counts_t& counts) {
        times_t found{run.best - frames * filling.best, passing.best, passing.best};
        for (const auto& [key, count] : counts) {
            found.unavoidable += static_cast<double>(count) * timers.at(key).own.best;
            found.unavoidable_measured += static_cast<double>(count) * timers.at(key).measured.best;
        }
        return found;
    };
    result.all = times(all, counts_all);
    result.samples = times(samples, counts_samples);
    result.engine_cold -= frames * filling.best;
}

/// In a process of its own: the cold run and memory first, then what stays with the process.
result_t measure(const waveform_t& row, unsigned int frames)
{
    std::streambuf* original = std::cout.rdbuf(nullptr);
    cfg_nr_waveform_t waveform;
    configure(row, frames, waveform);
    const std::size_t samples = waveform.get_waveform_manager().get_waveform_sample_points();

    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    if (row.fills_grid)
        vek::test_peer_t<lib_nr_phy_t>::after_channel_steps(engine, fill_grid);
    const auto run = [&] { run_engine(row, frames, true, engine); };
    result_t result{};
    result.engine_cold = seconds(run);
    run();
    result.memory = static_cast<double>(usage().ru_maxrss) * 1024.0 / static_cast<double>(samples * sizeof(complex_t));

    keep_memory_in_the_process();
    run();
    run();
    const long faults = usage().ru_minflt;
    run();
    result.faults = static_cast<double>(usage().ru_minflt - faults);
    measure_times(row, frames, engine, result);
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
        "%s: %.2f times the unavoidable work (%.2f with measured plans, %.2f cold), peak %.2f waveform buffers; "
        "4 frames: %.2f times (%.2f with measured plans, %.2f cold), peak %.2f; time grows %.2f-fold; page faults "
        "of a warm run: %.0f and %.0f\n",
        row.name, one.all.ratio(), one.all.ratio_measured(), one.ratio_cold(), one.memory, four.all.ratio(),
        four.all.ratio_measured(), four.ratio_cold(), four.memory, four.all.engine / one.all.engine, one.faults,
        four.faults);
    std::printf("%s, samples alone: %.2f of that time, %.2f times their unavoidable work (%.2f with measured plans)\n",
                row.name, one.samples.engine / one.all.engine, one.samples.ratio(), one.samples.ratio_measured());
}

void print_json(const waveform_t& row, const result_t& one, const result_t& four, bool is_first)
{
    std::printf("%s{\"waveform\": \"%s\", \"ratio\": %.3f, \"ratio_measured_plans\": %.3f, \"memory\": %.3f, "
                "\"ratio_4_frames\": %.3f, \"ratio_measured_plans_4_frames\": %.3f, \"memory_4_frames\": %.3f, "
                "\"time_4_frames\": %.3f, \"ratio_samples\": %.3f, \"ratio_samples_measured_plans\": %.3f, "
                "\"time_samples\": %.3f, \"ratio_cold\": %.3f, \"ratio_cold_4_frames\": %.3f, \"page_faults\": %.0f}",
                is_first ? "" : ",\n ", row.name, one.all.ratio(), one.all.ratio_measured(), one.memory,
                four.all.ratio(), four.all.ratio_measured(), four.memory, four.all.engine / one.all.engine,
                one.samples.ratio(), one.samples.ratio_measured(), one.samples.engine / one.all.engine,
                one.ratio_cold(), four.ratio_cold(), one.faults);
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

#include "common/lib_fft_plan.h"
#include "phy/lib_nr_phy.h"
#include "phy/lib_nr_resource_manager.h"
#include "support/engine_peer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
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
#include <unistd.h>
#include <vector>

// Whole waveforms through the engine against the work that nobody can leave out: the transforms of the OFDM symbols, of
// the filter and of the spectrum, and a pass over two waveforms, a payload map and a frame. Page faults count on
// neither side: engine and reference both work on memory that was touched before. The cold run, the first of a process
// with all its faults and plans, is told apart; it has a process of its own, and so its peak memory is its own.

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

std::size_t peak_resident_bytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
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

struct transform_t
{
    std::size_t length;
    std::size_t count;
    bool inverse;
};

std::vector<transform_t> unavoidable_transforms(unsigned int frames)
{
    const std::size_t blocks = (k_frame_samples + k_filter_order) / (k_filter_block - k_filter_order) + 1;
    return {{k_fft_length, std::size_t{k_symbols} * frames, true},
            {k_filter_block, blocks * frames, false},
            {k_filter_block, blocks * frames, true},
            {k_spectrum_length, k_spectrum_blocks, false}};
}

/// The seconds of a pass over the buffers that no engine can do without: each set to zero, then added up.
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
double transform_seconds(unsigned int frames, unsigned int runs, bool measured)
{
    double total = 0;
    for (const transform_t& transform : unavoidable_transforms(frames)) {
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

/// An engine that generates the full grid, and what it has to make of it.
class full_grid_t
{
public:
    explicit full_grid_t(unsigned int frames)
    {
        m_waveform.set_frames_number(frames);
        m_engine.waveform_config(m_waveform);
        vek::test_peer_t<lib_nr_phy_t>::after_channel_steps(m_engine, fill_grid);
    }

    double bytes() const { return static_cast<double>(m_waveform.get_waveform_sample_points() * sizeof(complex_t)); }
    void run()
    {
        m_engine.nr_phy_process();
        if (m_engine.get_baseband_signal_data().size() != m_waveform.get_waveform_sample_points())
            std::abort();
    }

private:
    lib_nr_waveform_configure_manager_t m_waveform;
    lib_nr_phy_t m_engine;
};

/// The symbols are the benchmark's own, so making them does not count.
double symbol_seconds(unsigned int frames, unsigned int runs)
{
    return frames * quickest(runs, [] { fill_grid(0, 0, 0); });
}

/// Prints the seconds of a process's first run, and its peak resident bytes over those of a waveform buffer.
void measure_cold(unsigned int frames)
{
    full_grid_t grid(frames);
    const double cold = seconds([&] { grid.run(); });
    const double memory = static_cast<double>(peak_resident_bytes()) / grid.bytes();
    std::printf("%.9g %.9g\n", cold - symbol_seconds(frames, 5), memory);
}

/// Prints the seconds of a run, of the unavoidable work, and of that with measured plans.
void measure_warm(unsigned int frames)
{
    // What is given back stays with the process, touched as it is.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    const unsigned int runs = frames == 1 ? 9 : 5;
    double engine = 0;
    {
        full_grid_t grid(frames);
        grid.run();
        engine = quickest(runs, [&] { grid.run(); }) - symbol_seconds(frames, runs);
    }
    const double pass = pass_seconds(frames, runs);
    const double estimated = transform_seconds(frames, runs, false);
    std::printf("%.9g %.9g %.9g\n", engine, estimated + pass, transform_seconds(frames, runs, true) + pass);
}

template <std::size_t count>
std::array<double, count> measure_apart(const char* program, const char* mode, unsigned int frames)
{
    const std::string command = std::string("'") + program + "' " + mode + ' ' + std::to_string(frames);
    std::FILE* child = popen(command.c_str(), "r");
    std::array<double, count> figures{};
    bool read = child != nullptr;
    for (double& figure : figures)
        read = read && std::fscanf(child, "%lf", &figure) == 1;
    if (!read || pclose(child) != 0) {
        std::fprintf(stderr, "frame_limit: the run of %u frames failed\n", frames);
        std::exit(1);
    }
    return figures;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3) {
        std::cout.rdbuf(nullptr);
        const auto frames = static_cast<unsigned int>(std::atoi(argv[2]));
        if (std::strcmp(argv[1], "--cold") == 0)
            measure_cold(frames);
        else
            measure_warm(frames);
        return 0;
    }
    const bool json = argc == 2 && std::strcmp(argv[1], "--json") == 0;
    if (argc > 1 && !json) {
        std::fprintf(stderr, "usage: frame_limit [--json]\n");
        return 2;
    }
    const auto [cold, memory] = measure_apart<2>(argv[0], "--cold", 1);
    const auto [cold_4, memory_4] = measure_apart<2>(argv[0], "--cold", 4);
    const auto [engine, reference, measured] = measure_apart<3>(argv[0], "--warm", 1);
    const auto [engine_4, reference_4, measured_4] = measure_apart<3>(argv[0], "--warm", 4);
    if (json)
        std::printf("[{\"waveform\": \"full_grid\", \"ratio\": %.3f, \"ratio_measured_plans\": %.3f, "
                    "\"ratio_cold\": %.3f, \"memory\": %.3f, \"ratio_4_frames\": %.3f, "
                    "\"ratio_measured_plans_4_frames\": %.3f, \"ratio_cold_4_frames\": %.3f, \"memory_4_frames\": "
                    "%.3f}]\n",
                    engine / reference, engine / measured, cold / reference, memory, engine_4 / reference_4,
                    engine_4 / measured_4, cold_4 / reference_4, memory_4);
    else
        std::printf("full_grid: %.2f times the unavoidable work (%.2f with measured plans), cold %.2f, peak %.2f "
                    "waveform buffers; 4 frames: %.2f times, cold %.2f, peak %.2f; time grows %.2f-fold\n",
                    engine / reference, engine / measured, cold / reference, memory, engine_4 / reference_4,
                    cold_4 / reference_4, memory_4, engine_4 / engine);
    return 0;
}

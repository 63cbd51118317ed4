#include "common/lib_fft_plan.h"
#include "phy/lib_nr_phy.h"
#include "phy/lib_nr_resource_manager.h"
#include "support/engine_peer.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fftw3.h>
#include <functional>
#include <iostream>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

// Whole waveforms through the engine against the work that nobody can leave out: the transforms of the OFDM symbols, of
// the filter and of the spectrum, and the first touch of two waveforms, a payload map and a frame. Each waveform runs
// in a process of its own, so that its peak memory is its own.

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

void touch_buffers(unsigned int frames)
{
    const std::size_t waveform = k_frame_samples * frames;
    std::vector<complex_t> first(waveform);
    std::vector<complex_t> second(waveform);
    std::vector<complex_t> payload(std::size_t{k_symbols} * k_subcarriers);
    std::vector<complex_t> frame(k_frame_samples);
    for (std::size_t i = 0; i < waveform; ++i)
        first[i] += second[i];
    for (std::size_t i = 0; i < frame.size(); ++i)
        frame[i] += first[i];
    // What nobody reads would be left out.
    volatile double sink = first[waveform / 2].real() + payload[payload.size() / 2].real() + frame[1].real();
    static_cast<void>(sink);
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

struct result_t
{
    double engine = 0;
    double reference = 0;
    double reference_measured = 0;
    double memory = 0; ///< peak resident bytes over those of one waveform buffer
};

/// In a process of its own: memory first, before the reference work.
result_t measure(unsigned int frames)
{
    std::streambuf* original = std::cout.rdbuf(nullptr);

    const std::size_t runs = frames == 1 ? 9 : 5;
    lib_nr_waveform_configure_manager_t waveform;
    waveform.set_frames_number(frames);
    result_t result;
    {
        lib_nr_phy_t engine;
        engine.waveform_config(waveform);
        vek::test_peer_t<lib_nr_phy_t>::after_channel_steps(engine, fill_grid);
        result.engine = quickest(static_cast<unsigned int>(runs), [&] { engine.nr_phy_process(); });
        // The symbols are the benchmark's own, so making them does not count.
        result.engine -= frames * quickest(static_cast<unsigned int>(runs), [] { fill_grid(0, 0, 0); });
        if (engine.get_baseband_signal_data().size() != waveform.get_waveform_sample_points())
            std::abort();
    }
    result.memory = static_cast<double>(peak_resident_bytes()) /
                    static_cast<double>(waveform.get_waveform_sample_points() * sizeof(complex_t));
    const double touching = quickest(static_cast<unsigned int>(runs), [&] { touch_buffers(frames); });
    result.reference = transform_seconds(frames, static_cast<unsigned int>(runs), false) + touching;
    result.reference_measured = transform_seconds(frames, static_cast<unsigned int>(runs), true) + touching;
    std::cout.rdbuf(original);
    return result;
}

result_t measure_apart(const char* program, unsigned int frames)
{
    const std::string command = std::string("'") + program + "' --frames " + std::to_string(frames);
    std::FILE* child = popen(command.c_str(), "r");
    result_t result;
    const int read = child ? std::fscanf(child, "%lf %lf %lf %lf", &result.engine, &result.reference,
                                         &result.reference_measured, &result.memory)
                           : 0;
    if (read != 4 || pclose(child) != 0) {
        std::fprintf(stderr, "frame_limit: the run of %u frames failed\n", frames);
        std::exit(1);
    }
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], "--frames") == 0) {
        const result_t result = measure(static_cast<unsigned int>(std::atoi(argv[2])));
        std::printf("%.9g %.9g %.9g %.9g\n", result.engine, result.reference, result.reference_measured, result.memory);
        return 0;
    }
    const bool json = argc == 2 && std::strcmp(argv[1], "--json") == 0;
    if (argc > 1 && !json) {
        std::fprintf(stderr, "usage: frame_limit [--json]\n");
        return 2;
    }
    const result_t one = measure_apart(argv[0], 1);
    const result_t four = measure_apart(argv[0], 4);
    if (json)
        std::printf("[{\"waveform\": \"full_grid\", \"ratio\": %.3f, \"ratio_measured_plans\": %.3f, "
                    "\"memory\": %.3f, \"ratio_4_frames\": %.3f, \"memory_4_frames\": %.3f}]\n",
                    one.engine / one.reference, one.engine / one.reference_measured, one.memory,
                    four.engine / four.reference, four.memory);
    else
        std::printf(
            "full_grid: %.2f times the unavoidable work (%.2f with measured plans), peak %.2f waveform buffers; "
            "4 frames: %.2f times, peak %.2f; time grows %.2f-fold\n",
            one.engine / one.reference, one.engine / one.reference_measured, one.memory, four.engine / four.reference,
            four.memory, four.engine / one.engine);
    return 0;
}

#include "host/analysis/nrwave_alignment.h"
#include "host/analysis/nrwave_resampling.h"
#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_cells.h"
#include "host/nrwave_digits.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_figures.h"
#include "host/nrwave_generation.h"
#include "host/nrwave_recording.h"
#include "host/nrwave_steps.h"
#include "host/nrwave_summary.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <numbers>
#include <sstream>

namespace nrwave
{

using namespace vek::nr_mod_lib;
using samples_t = std::vector<std::complex<double>>;

namespace
{

/// All samples of a recording; one that is no number is a failure.
samples_t samples_of(const recording_t& recording)
{
    samples_t samples;
    sample_decoder_t decoder(recording.claim.format);
    decoder.keep_in(samples);
    read_samples(recording, decoder);
    if (std::any_of(samples.begin(), samples.end(), [](const std::complex<double>& sample) {
            return !std::isfinite(sample.real()) || !std::isfinite(sample.imag());
        }))
        throw failure_t(shortened(recording.data) + ": a sample is no number");
    return samples;
}

/// What a capture is held against: one period of a waveform, and the cells in it.
struct reference_t
{
    cfg_nr_waveform_t waveform;
    lib_nr_phy_t engine;
    cell_keeper_t keeper{waveform, engine};
    std::optional<recording_t> recording; ///< of its samples
};

/// The steps in the metadata of samples, without a word about corrections: they were told when the samples were made.
void apply_settings(const recording_t& recording, cfg_nr_waveform_t& waveform)
{
    if (!recording.claim.settings)
        throw failure_t(shortened(recording.meta) + " holds no settings, which tell what the samples are");
    stepper_t stepper(waveform, [](const std::string&) {});
    std::istringstream steps(*recording.claim.settings);
    for (std::string step; std::getline(steps, step);)
        if (!step.empty() && step.front() != '#')
            stepper.apply(step);
}

/// One period of the reference at a rate: of its samples where it is a file of them, else of the waveform itself.
samples_t period_of(const reference_t& reference, std::uint64_t rate)
{
    const samples_t& own = reference.engine.get_baseband_signal_data();
    const std::uint64_t own_rate = reference.waveform.get_waveform_sample_rate();
    const auto count = samples_at(rate, own.size(), own_rate);
    if (!count || *count == 0)
        throw failure_t("a rate of " + std::to_string(rate) + " Hz gives no whole number of samples of the waveform");
    const auto at_rate = [&](const samples_t& samples) {
        return samples.size() == *count
                   ? samples
                   : resampled(samples, static_cast<std::size_t>(*count), reference.waveform.get_mirror_spectrum());
    };
    if (!reference.recording)
        return at_rate(own);
    samples_t samples = samples_of(*reference.recording);
    const auto period = samples_at(reference.recording->claim.rate.value_or(own_rate), own.size(), own_rate);
    if (!period || *period == 0 || samples.size() < *period)
        throw failure_t(shortened(reference.recording->data) + " holds no whole period of its waveform");
    samples.resize(static_cast<std::size_t>(*period));
    return at_rate(samples);
}

class compare_t : public command_t
{
public:
    compare_t() : command_t("compare", "Hold a capture against what was sent: delay, gain, frequency offset, EVM") {}

    void declare(CLI::App& app) override
    {
        app.add_option("file", m_file, "The capture, a frame or more: samples, or the metadata beside them")
            ->type_name("FILE")
            ->required();
        app.add_option("reference", m_reference,
                       "What was sent: samples with their settings in the metadata, a recipe, or a settings file")
            ->type_name("REFERENCE")
            ->required();
        declare_rate(app, m_rate, "Samples a second of the capture, where its metadata tell none or another");
        app.add_flag("--json", m_json, "Tell it as a JSON object");
        app.footer("Examples:\n"
                   "  nrwave compare capture.sigmf-meta sent.recipe\n"
                   "  nrwave compare capture.cf32 out/cell.sigmf-meta --rate 122.88M --json");
    }

    void run(trace_t& trace) override
    {
        const recording_t recording = has_metadata() ? recording_of(m_file) : bare_recording_of(m_file);
        const samples_t captured = samples_of(recording);
        const std::uint64_t rate = m_rate.value_or(recording.claim.rate.value_or(0));
        if (rate == 0)
            throw failure_t("the rate of " + shortened(m_file) + " is not known: --rate tells it");
        reference_t reference;
        configure(reference);
        reference.engine.set_trace_file_enable(false);
        generate(reference.waveform, reference.engine);
        const samples_t period = period_of(reference, rate);
        // A waveform of fewer subframes is whole before the frame is.
        if (static_cast<double>(captured.size()) <
            std::min(k_frame_s * static_cast<double>(rate), static_cast<double>(period.size())))
            throw failure_t(shortened(recording.data) + " holds less than a frame");
        const auto alignment = aligned(captured, period, rate);
        if (!alignment)
            throw failure_t(shortened(m_reference) + " is not found in " + shortened(m_file));
        const samples_t still = corrected(captured, *alignment, rate);
        const evm_t evm = evm_of({still, rate, false, alignment->delay_samples / static_cast<double>(rate)},
                                 reference.keeper.cells());
        trace.out << (m_json ? json_text(*alignment, evm) : text(*alignment, evm));
    }

private:
    static constexpr double k_frame_s = 0.01;

    /// Whether something beside the samples should tell of them.
    bool has_metadata() const
    {
        std::filesystem::path beside = m_file;
        const bool may_be_bare =
            is_recording(m_file) && beside.extension() != ".json" && !beside.extension().string().starts_with(".sigmf");
        std::error_code ignored;
        return !may_be_bare || std::filesystem::exists(beside.replace_extension(".json"), ignored);
    }

    void configure(reference_t& reference) const
    {
        if (is_recording(m_reference)) {
            reference.recording = recording_of(m_reference);
            return apply_settings(*reference.recording, reference.waveform);
        }
        stepper_t stepper(reference.waveform, [](const std::string&) {});
        if (m_reference.ends_with(".xml"))
            stepper.load(m_reference);
        else
            stepper.apply_recipe(m_reference);
    }

    static double gain_db(const alignment_t& alignment) { return 10.0 * std::log10(std::norm(alignment.gain)); }
    static double phase_deg(const alignment_t& alignment)
    {
        return std::arg(alignment.gain) * 180.0 / std::numbers::pi;
    }

    static std::string text(const alignment_t& alignment, const evm_t& evm)
    {
        std::string all;
        const auto line = [&](const std::string& name, const std::string& value) {
            all += name + std::string(name.size() < 26 ? 26 - name.size() : 1, ' ') + value + '\n';
        };
        line("delay", fixed(alignment.delay_samples, 3) + " samples");
        line("gain", fixed(gain_db(alignment), 3) + " dB");
        line("phase", fixed(phase_deg(alignment), 2) + " degrees at the first sample");
        line("frequency offset", fixed(alignment.frequency_offset_hz, 3) + " Hz");
        line("EVM", evm.percent ? fixed(*evm.percent, 3) + " %" : "none");
        for (const channel_evm_t& channel : evm.channels)
            line(channel.path,
                 (channel.percent ? fixed(*channel.percent, 3) + " %" : "none") +
                     (channel.limit_percent ? ", at most " + shortest(*channel.limit_percent) + " %: " + k_evm_source
                                            : "") +
                     (channel.is_exceeded() ? ", EXCEEDED" : ""));
        return all;
    }

    static std::string json_text(const alignment_t& alignment, const evm_t& evm)
    {
        return written({{"delay_samples", alignment.delay_samples},
                        {"gain_db", gain_db(alignment)},
                        {"phase_deg", phase_deg(alignment)},
                        {"frequency_offset_hz", alignment.frequency_offset_hz},
                        {"evm_percent", or_null(evm.percent)},
                        {"channels", json_of(evm.channels)}});
    }

    std::string m_file;
    std::string m_reference;
    std::optional<std::uint64_t> m_rate;
    bool m_json = false;
};

} // namespace

std::unique_ptr<command_t> compare_command() { return std::make_unique<compare_t>(); }

} // namespace nrwave

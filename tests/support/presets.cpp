#include "support/presets.h"

#include "support/captured_output.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <sstream>

namespace nr_test
{

using namespace vek::nr_mod_lib;

std::unique_ptr<cfg_nr_waveform_t> waveform_of(lib_nr_ul_frc_reference_channel_t channel)
{
    const captured_output_t silence;
    auto waveform = std::make_unique<cfg_nr_waveform_t>();
    waveform->set_nr_ntn(channel >= LIB_NR_G_FR1_NTN_A1_1);
    cfg_nr_ul_frc_t& frc = *waveform->get_carrier(0)->get_ul_frc();
    for (const auto family : frc.get_valid_fixed_reference_channels_list()) {
        frc.set_fixed_reference_channels(family);
        if (frc.get_valid_frc_reference_channels_list().back() >= channel)
            break;
    }
    frc.set_frc_reference_channels(channel);
    EXPECT_EQ(frc.get_frc_reference_channels(), channel);
    return waveform;
}

std::vector<std::string> surprises(const std::string& output)
{
    // SS/PBCH at 60 kHz, its limits, FR2, PRACH.
    static constexpr std::array k_traces = {
        "update_by_numerology:60khz invalid",       "ssb-rb_offset reach limitation ,max_rb_offset",
        "current frequency range within FR2",       "validate_prach_and_carrier:not find valid record",
        "check_scs_and_format:InvalidSCSForFormat", "check_lra:: Error configuration only support"};
    std::vector<std::string> found;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty() && std::none_of(k_traces.begin(), k_traces.end(),
                                          [&](const char* trace) { return line.rfind(trace, 0) == 0; }))
            found.push_back(line);
    return found;
}

} // namespace nr_test

#include "host/nrwave_listing.h"

#include "host/nrwave_single_steps.h"
#include "host/nrwave_steps.h"
#include "support/leaf_walk.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;

/// Takes the steps of a listing, but for comments, without a line.
void replay(const std::vector<std::string>& steps, cfg_nr_waveform_t& waveform, const std::string& name)
{
    nrwave::stepper_t stepper(waveform, [&](const std::string& line) { ADD_FAILURE() << name << ": " << line; });
    for (const std::string& step : steps)
        if (step.front() != '#')
            stepper.apply(step);
    stepper.tell_resets();
}

void expect_same(cfg_nr_waveform_t& waveform, cfg_nr_waveform_t& again, const std::string& name)
{
    for (const auto& [path, first, second] : nr_test::differences(waveform, again, nr_test::scope_t::in_the_tree))
        ADD_FAILURE() << name << ": " << path << ' ' << first << ' ' << second;
}

TEST(nrwave_listing, comes_back_from_random_states_without_a_line)
{
    // The last two hold what comes back beside a test model of the PUCCH alone, and by way of another width.
    for (unsigned int seed = 0; seed < 62; ++seed) {
        cfg_nr_waveform_t waveform;
        nr_test::leaf_walk_t(waveform, seed == 60 ? 309 : seed == 61 ? 501 : seed).take_steps(40);
        cfg_nr_waveform_t again;
        const std::vector<std::string> steps = nrwave::steps_of(waveform);
        replay(steps, again, std::to_string(seed));
        for (const std::string& step : steps)
            EXPECT_NE(step.front(), '#') << seed << step; // what no step brings back
        expect_same(waveform, again, std::to_string(seed));
        for (const char* path : {"carrier[0].dl_bwp", "carrier[0].numerology[0]", "carrier[0].ul_pusch[0]"}) {
            cfg_nr_waveform_t copy;
            nrwave::take_over(waveform, copy);
            std::vector<std::string> part = nrwave::steps_at(waveform, path);
            std::erase_if(
                part, [](const std::string& step) { return step.starts_with("add ") || step.starts_with("remove "); });
            replay(part, copy, std::to_string(seed) + path);
            expect_same(waveform, copy, std::to_string(seed) + path);
        }
    }
}

} // namespace

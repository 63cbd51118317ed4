#include "host/nrwave_listing.h"

#include "host/nrwave_steps.h"
#include "support/leaf_walk.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;

TEST(nrwave_listing, comes_back_from_random_states_without_a_line)
{
    unsigned int with_comments = 0;
    for (unsigned int seed = 0; seed < 60; ++seed) {
        cfg_nr_waveform_t waveform;
        nr_test::leaf_walk_t(waveform, seed).take_steps(40);
        cfg_nr_waveform_t again;
        nrwave::stepper_t stepper(again, [&](const std::string& line) { ADD_FAILURE() << seed << ": " << line; });
        bool whole = true;
        for (const std::string& step : nrwave::steps_of(waveform))
            if (step.front() == '#')
                whole = false; // what no step brings back
            else
                stepper.apply(step);
        stepper.tell_resets();
        with_comments += whole ? 0 : 1;
        if (whole)
            for (const auto& [path, first, second] :
                 nr_test::differences(waveform, again, nr_test::scope_t::in_the_tree))
                ADD_FAILURE() << seed << ": " << path << ' ' << first << ' ' << second;
    }
    EXPECT_LE(with_comments, 2u); // PRS of 273 RBs, which only a correction makes
}

} // namespace

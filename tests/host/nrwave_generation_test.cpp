#include "host/nrwave_generation.h"

#include "host/nrwave_failure.h"
#include "support/engine_peer.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace
{

using namespace vek::nr_mod_lib;

TEST(nrwave_generation, names_channel_carrier_and_frame_of_a_step_that_fails_or_throws)
{
    cfg_nr_waveform_t waveform;
    waveform.set_frame_number(2);
    waveform.get_carrier(0)->get_dl_ssb()->set_enable(true);
    for (const bool throws : {false, true}) {
        lib_nr_phy_t engine;
        vek::test_peer_t<lib_nr_phy_t>::instead_of_calls(engine, [&](const lib_nr_channel_step_t& step, auto) {
            if (throws && step.frame == 1)
                throw std::runtime_error("no way");
            return step.frame == 0;
        });
        try {
            nrwave::generate(waveform, engine);
            ADD_FAILURE() << "no failure";
        } catch (const nrwave::failure_t& failure) {
            EXPECT_EQ(std::string(failure.what()).rfind("SS/PBCH failed in carrier 0, numerology 0, frame 1", 0), 0u);
            EXPECT_EQ(std::string(failure.what()).find("no way") != std::string::npos, throws) << failure.what();
        }
    }
}

} // namespace

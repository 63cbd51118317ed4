#pragma once

#include "phy/lib_nr_phy.h"

#include <functional>

namespace vek
{

/// The engine's private steps, and the seam where a test puts symbols of its own into the payload map.
template <>
struct test_peer_t<nr_mod_lib::lib_nr_phy_t>
{
    using engine_t = nr_mod_lib::lib_nr_phy_t;
    using signal_t = engine_t::signal_t;

    /// Runs behind the channel steps of every frame, with carrier, numerology and frame.
    static void after_channel_steps(engine_t& engine,
                                    std::function<void(unsigned int, unsigned int, unsigned int)> step)
    {
        engine.m_after_channel_steps = std::move(step);
    }
    /// Stands in for every call of a channel's process.
    static void instead_of_calls(
        engine_t& engine,
        std::function<bool(const nr_mod_lib::lib_nr_channel_step_t&, nr_mod_lib::lib_nr_remap_mode_t)> call)
    {
        engine.m_instead_of_calls = std::move(call);
    }
    static auto& pdsch_process(engine_t& engine) { return engine.m_pdsch_process; }
    static bool fill_frame_data(engine_t& engine, unsigned int carrier, unsigned int numerology, unsigned int frame,
                                engine_t::signal_t& buffer)
    {
        signal_t opened;
        engine._open_frames(carrier, numerology, opened);
        const bool is_mapped = engine._fill_frame_data(carrier, numerology, frame, buffer);
        engine._close_frames(buffer);
        return is_mapped;
    }
    static void deal_carrier_process(engine_t& engine, unsigned int carrier, engine_t::signal_t& buffer)
    {
        engine._deal_carrier_process(carrier, buffer);
    }
};

} // namespace vek

namespace nr_test
{

using engine_peer_t = vek::test_peer_t<vek::nr_mod_lib::lib_nr_phy_t>;

} // namespace nr_test

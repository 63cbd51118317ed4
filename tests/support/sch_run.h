#pragma once

#include "phy/lib_nr_resource_manager.h"
#include "receiver/sch_receiver.h"
#include "support/generated.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace nr_test
{

/// The engine's run over a carrier of shared channels, and what a receiver gets of it. The owners of cells are those of
/// the last frame.
class sch_run_t
{
public:
    explicit sch_run_t(const vek::nr_mod_lib::cfg_nr_waveform_t& waveform)
        : m_carrier(waveform.get_waveform_manager().get_carrier(0)), m_generated(generate(waveform))
    {}
    const vek::nr_mod_lib::lib_nr_carrier_configure_manager_t& carrier() const { return m_carrier; }
    bool standard_rules() const { return m_generated.setup.standard_rules; }
    const std::string& output() const { return m_generated.output; }
    const rows_t& rows(unsigned int frame = 0)
    {
        m_frames.resize(std::max<std::size_t>(m_frames.size(), frame + 1));
        if (m_frames[frame].empty())
            m_frames[frame] = demodulate_frame(m_generated.samples, m_generated.setup,
                                               m_grid.get_mapped_subcarrier_number(), 0.0, frame);
        return m_frames[frame];
    }
    sch_slot_t receive(const sch_channel_t& channel, unsigned int slot, unsigned int frame)
    {
        return receive_sch_slot(channel, rows(frame), slot, [&](unsigned int symbol, unsigned int subcarrier) {
            // TS 38.214 clause 5.1.4: an RB that a block touches is the block's.
            bool is_block = m_grid.get_owner(symbol, subcarrier) == vek::nr_mod_lib::LIB_NR_RESOURCE_MAPPING_SSB;
            for (unsigned int k = 0; k < (standard_rules() ? 12u : 0u); ++k)
                is_block |=
                    m_grid.get_owner(symbol, subcarrier / 12 * 12 + k) == vek::nr_mod_lib::LIB_NR_RESOURCE_MAPPING_SSB;
            return is_block || m_grid.get_owner(symbol, subcarrier) == vek::nr_mod_lib::LIB_NR_RESOURCE_MAPPING_CSIRS;
        });
    }
    /// Cells of an owner; those of nobody are silent.
    std::size_t count_marks(vek::nr_mod_lib::lib_nr_channel_resource_mapping_type_t owner)
    {
        std::size_t marks = 0;
        double loudest = 0.0;
        for (unsigned int symbol = 0; symbol < m_grid.get_mapped_symbol_number(); ++symbol)
            for (unsigned int k = 0; k < m_grid.get_mapped_subcarrier_number(); ++k) {
                marks += m_grid.get_owner(symbol, k) == owner ? 1 : 0;
                if (m_grid.get_owner(symbol, k) == vek::nr_mod_lib::LIB_NR_RESOURCE_MAPPING_EMPTY)
                    loudest = std::max(loudest, std::abs(rows()[symbol][k]));
            }
        EXPECT_LT(loudest, 1e-9);
        return marks;
    }

private:
    const vek::nr_mod_lib::lib_nr_channel_resource_manager_t& m_grid =
        vek::nr_mod_lib::lib_nr_channel_resource_manager_t::get_inst();
    const vek::nr_mod_lib::lib_nr_carrier_configure_manager_t& m_carrier;
    generated_t m_generated;
    std::vector<rows_t> m_frames;
};

} // namespace nr_test

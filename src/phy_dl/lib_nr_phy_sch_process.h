#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_resource_manager.h"

#include <limits>

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// The common body of the shared channels' generators: keeps the PN state of the payload, which the engine hands from
/// channel to channel of one RNTI. It writes nothing yet.
class NR_MOD_LIB_EXPORT lib_nr_phy_sch_process_t
{
public:
    virtual ~lib_nr_phy_sch_process_t() = default;

    /// Binds the process to an entry of a carrier's list, for the pass of a numerology, and starts the PN sequence
    /// anew. Always true.
    virtual bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int channel,
                                     const lib_nr_waveform_configure_manager_t& waveform) = 0;
    /// Generates one slot of the frame.
    bool sch_encode_process(unsigned int slot);
    /// Maps a slot of the frame in one of the two modes.
    bool phy_sch_remap(unsigned int slot, lib_nr_remap_mode_t mode);

    /// State of the payload's PN generator, all ones at the start of a sequence.
    void set_pn_seed(unsigned int seed) { m_pn_seed = seed; }
    unsigned int get_pn_seed() const { return m_pn_seed; }

protected:
    lib_nr_phy_sch_process_t() = default;
    lib_nr_phy_sch_process_t(const lib_nr_phy_sch_process_t&) = default;
    lib_nr_phy_sch_process_t& operator=(const lib_nr_phy_sch_process_t&) = default;

    bool _bind(unsigned int carrier, unsigned int numerology);

private:
    unsigned int m_carrier_index = 0;
    unsigned int m_numerology_index = 0;
    unsigned int m_pn_seed = std::numeric_limits<unsigned int>::max();
};

} // namespace vek::nr_mod_lib

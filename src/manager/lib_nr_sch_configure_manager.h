#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_sch_type.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// What the downlink and the uplink shared channel have in common: when and for whom a channel sends, and its
/// RBs inside its BWP. A channel cannot be enabled yet, and has one port.
class NR_MOD_LIB_EXPORT lib_nr_sch_configure_manager_t
{
public:
    bool get_enable() const { return m_enable; }
    unsigned int get_rnti() const { return m_rnti; }
    /// One entry per antenna; ports that the channel does not have become none, and never all of them.
    bool set_antenna_port(const std::vector<lib_nr_antenna_port_t>& ports, unsigned int antennas);
    const std::vector<lib_nr_antenna_port_t>& get_antenna_port() const { return m_antenna_port; }
    /// Whether the slot allocation repeats in every frame, or counts over all `frames` of the waveform. True where the
    /// flag changed.
    bool set_one_frame_period(bool one_frame_period, unsigned int frames, lib_nr_numerology_type_t numerology);
    bool get_one_frame_period() const { return m_one_frame_period; }
    const std::vector<unsigned int>& get_slot_allocation_v() const { return m_slot_allocation; }
    bool set_bwp_id(unsigned int id);
    unsigned int get_bwp_id() const { return m_bwp_id; }
    /// Relative to the BWP.
    unsigned int get_rb_offset() const { return m_rb_offset; }
    unsigned int get_rb_num() const { return m_rb_num; }

protected:
    lib_nr_sch_configure_manager_t() = default;
    ~lib_nr_sch_configure_manager_t() = default;
    lib_nr_sch_configure_manager_t(const lib_nr_sch_configure_manager_t&) = default;
    lib_nr_sch_configure_manager_t& operator=(const lib_nr_sch_configure_manager_t&) = default;

    /// Everything back to its default, in the BWP of this id.
    void _reset(unsigned int bwp_id);
    /// Cuts the channel's RBs to those of its BWP.
    void _fit_resource_blocks(unsigned int bwp_rb_size);

private:
    bool m_enable = false;
    unsigned int m_rnti = 1;
    std::vector<lib_nr_antenna_port_t> m_antenna_port;
    bool m_one_frame_period = true;
    std::vector<unsigned int> m_slot_allocation;
    unsigned int m_bwp_id = 0;
    unsigned int m_rb_offset = 0;
    unsigned int m_rb_num = 273;
    unsigned int m_frame_count = 1;
};

} // namespace vek::nr_mod_lib

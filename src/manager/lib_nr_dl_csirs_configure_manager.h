#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_phy_common.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_dl_bwp_configure_manager_t;

/// CSI-RS antenna port: 0 for none, n + 1 for port n.
enum csirs_antenna_port_t : std::uint32_t
{
    CSIRS_ANTENNA_NONE = 0,
    CSIRS_ANTENNA_PORT0 = 1,
    CSIRS_ANTENNA_PORT1 = 2,
    CSIRS_ANTENNA_PORT2 = 3,
    CSIRS_ANTENNA_PORT3 = 4,
    CSIRS_ANTENNA_PORT4 = 5,
    CSIRS_ANTENNA_PORT5 = 6,
    CSIRS_ANTENNA_PORT6 = 7,
    CSIRS_ANTENNA_PORT7 = 8,
    CSIRS_ANTENNA_PORT8 = 9,
    CSIRS_ANTENNA_PORT9 = 10,
    CSIRS_ANTENNA_PORT10 = 11,
    CSIRS_ANTENNA_PORT11 = 12,
    CSIRS_ANTENNA_PORT12 = 13,
    CSIRS_ANTENNA_PORT13 = 14,
    CSIRS_ANTENNA_PORT14 = 15,
    CSIRS_ANTENNA_PORT15 = 16,
    CSIRS_ANTENNA_PORT16 = 17,
    CSIRS_ANTENNA_PORT17 = 18,
    CSIRS_ANTENNA_PORT18 = 19,
    CSIRS_ANTENNA_PORT19 = 20,
    CSIRS_ANTENNA_PORT20 = 21,
    CSIRS_ANTENNA_PORT21 = 22,
    CSIRS_ANTENNA_PORT22 = 23,
    CSIRS_ANTENNA_PORT23 = 24,
    CSIRS_ANTENNA_PORT24 = 25,
    CSIRS_ANTENNA_PORT25 = 26,
    CSIRS_ANTENNA_PORT26 = 27,
    CSIRS_ANTENNA_PORT27 = 28,
    CSIRS_ANTENNA_PORT28 = 29,
    CSIRS_ANTENNA_PORT29 = 30,
    CSIRS_ANTENNA_PORT30 = 31,
    CSIRS_ANTENNA_PORT31 = 32,
};

/// One CSI-RS resource of a carrier, of row 4 of TS 38.211 Table 7.4.1.5.3-1. Today it holds its place in the lists
/// and follows its BWP; it cannot be enabled.
class NR_MOD_LIB_EXPORT lib_nr_dl_csirs_configure_manager_t
{
public:
    explicit lib_nr_dl_csirs_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp);

    void init(const lib_nr_dl_bwp_configure_manager_t& bwp);
    /// Brings the resource in line with a changed BWP.
    void update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp);

    bool get_enable() const { return m_enable; }
    /// One entry per antenna; ports that the row does not have become none, and never all of them.
    bool set_antenna_port(const std::vector<csirs_antenna_port_t>& ports, unsigned int antennas);
    const std::vector<csirs_antenna_port_t>& get_antenna_port() const { return m_antenna_port; }
    bool set_bwp_id(unsigned int id);
    unsigned int get_bwp_id() const { return m_bwp_id; }
    /// Whether the slot allocation repeats in every frame, or counts over all `frames` of the waveform. True where the
    /// flag changed.
    bool set_one_frame_period(bool one_frame_period, unsigned int frames, lib_nr_numerology_type_t numerology);
    bool get_one_frame_period() const { return m_one_frame_period; }
    const std::vector<int>& get_slot_allocation() const { return m_slot_allocation; }
    /// A multiple of 4.
    unsigned int get_rb_offset() const { return m_rb_offset; }
    /// At least 24, or all RBs of a smaller BWP.
    unsigned int get_rb_num() const { return m_rb_num; }

private:
    bool m_enable = false;
    std::vector<csirs_antenna_port_t> m_antenna_port;
    unsigned int m_bwp_id = 0;
    bool m_one_frame_period = true;
    std::vector<int> m_slot_allocation;
    unsigned int m_rb_offset = 0;
    unsigned int m_rb_num = 0;
    unsigned int m_slots_covered = 0;
    unsigned int m_frame_count = 1;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_phy_common.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_ul_bwp_configure_manager_t;

/// Period of the SRS; the value is the number of slots, 0 for none.
enum srs_periodity_type_t : std::uint32_t
{
    LIB_NR_SRS_0MS_PERIODICITY = 0,
    LIB_NR_SRS_1MS_PERIODICITY = 1,
    LIB_NR_SRS_2MS_PERIODICITY = 2,
    LIB_NR_SRS_4MS_PERIODICITY = 4,
    LIB_NR_SRS_5MS_PERIODICITY = 5,
    LIB_NR_SRS_8MS_PERIODICITY = 8,
    LIB_NR_SRS_10MS_PERIODICITY = 10,
    LIB_NR_SRS_16MS_PERIODICITY = 16,
    LIB_NR_SRS_20MS_PERIODICITY = 20,
    LIB_NR_SRS_32MS_PERIODICITY = 32,
    LIB_NR_SRS_40MS_PERIODICITY = 40,
    LIB_NR_SRS_64MS_PERIODICITY = 64,
    LIB_NR_SRS_80MS_PERIODICITY = 80,
    LIB_NR_SRS_160MS_PERIODICITY = 160,
    LIB_NR_SRS_320MS_PERIODICITY = 320,
    LIB_NR_SRS_640MS_PERIODICITY = 640,
    LIB_NR_SRS_1280MS_PERIODICITY = 1280,
    LIB_NR_SRS_2560MS_PERIODICITY = 2560,
    LIB_NR_SRS_5120MS_PERIODICITY = 5120,
    LIB_NR_SRS_10240MS_PERIODICITY = 10240,
    LIB_NR_SRS_40960MS_PERIODICITY = 40960,
    LIB_NR_SRS_81920MS_PERIODICITY = 81920,
};

/// SRS antenna port: 0 for none, n + 1 for port n.
enum srs_antenna_port_t : std::uint32_t
{
    SRS_ANTENNA_NONE = 0,
    SRS_ANTENNA_PORT0 = 1,
    SRS_ANTENNA_PORT1 = 2,
    SRS_ANTENNA_PORT2 = 3,
    SRS_ANTENNA_PORT3 = 4,
    SRS_ANTENNA_PORT4 = 5,
    SRS_ANTENNA_PORT5 = 6,
    SRS_ANTENNA_PORT6 = 7,
    SRS_ANTENNA_PORT7 = 8,
    SRS_ANTENNA_PORT8 = 9,
    SRS_ANTENNA_PORT9 = 10,
    SRS_ANTENNA_PORT10 = 11,
    SRS_ANTENNA_PORT11 = 12,
    SRS_ANTENNA_PORT12 = 13,
    SRS_ANTENNA_PORT13 = 14,
    SRS_ANTENNA_PORT14 = 15,
    SRS_ANTENNA_PORT15 = 16,
    SRS_ANTENNA_PORT16 = 17,
    SRS_ANTENNA_PORT17 = 18,
    SRS_ANTENNA_PORT18 = 19,
    SRS_ANTENNA_PORT19 = 20,
    SRS_ANTENNA_PORT20 = 21,
    SRS_ANTENNA_PORT21 = 22,
    SRS_ANTENNA_PORT22 = 23,
    SRS_ANTENNA_PORT23 = 24,
    SRS_ANTENNA_PORT24 = 25,
    SRS_ANTENNA_PORT25 = 26,
    SRS_ANTENNA_PORT26 = 27,
    SRS_ANTENNA_PORT27 = 28,
    SRS_ANTENNA_PORT28 = 29,
    SRS_ANTENNA_PORT29 = 30,
    SRS_ANTENNA_PORT30 = 31,
    SRS_ANTENNA_PORT31 = 32,
};

/// One sounding reference signal of a carrier, with one port and no period. It knows its BWP and cannot be
/// enabled yet.
class NR_MOD_LIB_EXPORT lib_nr_ul_srs_configure_manager_t
{
public:
    explicit lib_nr_ul_srs_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp);

    void init(const lib_nr_ul_bwp_configure_manager_t& bwp);
    /// Brings the SRS in line with a changed BWP.
    void update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp);

    bool get_enable() const { return m_enable; }
    /// One entry per antenna; ports that the SRS does not have become none, and never all of them.
    bool set_antenna_port(const std::vector<srs_antenna_port_t>& ports, unsigned int antennas);
    const std::vector<srs_antenna_port_t>& get_antenna_port() const { return m_antenna_port; }
    srs_periodity_type_t get_srs_periodity() const { return m_periodicity; }
    unsigned int get_t_offset() const { return m_t_offset; }
    const std::vector<int>& get_slot_allocation() const { return m_slot_allocation; }
    bool set_bwp_id(unsigned int id);
    unsigned int get_bwp_id() const { return m_bwp_id; }

private:
    friend struct vek::test_peer_t<lib_nr_ul_srs_configure_manager_t>;

    bool m_enable = false;
    std::vector<srs_antenna_port_t> m_antenna_port;
    srs_periodity_type_t m_periodicity = LIB_NR_SRS_0MS_PERIODICITY;
    unsigned int m_t_offset = 0;
    std::vector<int> m_slot_allocation;
    unsigned int m_bwp_id = 0;
    // What it was last told of its BWP.
    lib_nr_numerology_type_t m_bwp_numerology = LIB_NR_SCS_30K;
};

} // namespace vek::nr_mod_lib

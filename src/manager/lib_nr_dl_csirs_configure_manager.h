#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_csirs_type.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_dl_bwp_configure_manager_t;

/// Which RBs carry the signal at density 0.5.
enum density_prb_allocation_t : std::uint32_t
{
    EVEN_PRBS = 0,
    ODD_PRBS = 1,
};

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

/// One CSI-RS resource of a carrier, in a downlink BWP. The façade tells the rules; where a rule needs something of the
/// BWP or the waveform, it is an argument here.
class NR_MOD_LIB_EXPORT lib_nr_dl_csirs_configure_manager_t
{
public:
    explicit lib_nr_dl_csirs_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp);

    void init(const lib_nr_dl_bwp_configure_manager_t& bwp);
    /// Brings the resource in line with a changed BWP: off at 240 kHz, its RBs inside.
    void update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp);
    /// Ports that the row does not have become port 0.
    void update_antenna_port_by_idx();

    bool set_enable(bool enable, lib_nr_numerology_type_t bwp_numerology);
    bool get_enable() const { return m_enable; }
    bool set_power_bosting(double power);
    double get_power_bosting() const { return m_power_bosting; }
    bool set_csirs_port(const std::string& text);
    const std::vector<csirs_antenna_port_t>& get_csirs_port() const { return m_csirs_port; }
    const std::string& get_csirs_feedback_port() const { return m_csirs_port_text; }
    bool set_antenna_port(const std::vector<csirs_antenna_port_t>& ports, unsigned int antennas);
    const std::vector<csirs_antenna_port_t>& get_antenna_port() const { return m_antenna_port; }
    /// 0, none, and one for each port of the row.
    std::vector<unsigned int> get_available_port_number() const;
    bool set_nid(unsigned int nid);
    unsigned int get_nid() const { return m_nid; }
    bool set_zero_power(bool zero_power);
    bool get_zero_power() const { return m_zero_power; }
    bool set_csirs_type(csirs_cdm_type_t type);
    csirs_cdm_type_t get_csirs_type() const { return m_csirs_type; }
    /// Stores the id alone: the carrier moves a resource to another BWP.
    bool set_bwp_id(unsigned int id);
    unsigned int get_bwp_id() const { return m_bwp_id; }
    bool set_one_frame_period(bool one_frame_period, unsigned int frames, lib_nr_numerology_type_t numerology);
    bool get_one_frame_period() const { return m_one_frame_period; }
    bool set_slot_allocation(const std::string& text, lib_nr_numerology_type_t numerology);
    const std::vector<int>& get_slot_allocation() const { return m_slot_allocation; }
    const std::string& get_slot_allocation_feedback() const { return m_slot_allocation_text; }
    bool set_rb_offset(unsigned int rb_offset, unsigned int bwp_rb_start, unsigned int bwp_rb_size);
    unsigned int get_rb_offset() const { return m_rb_offset; }
    bool set_rb_num(unsigned int rb_num, unsigned int bwp_rb_size);
    unsigned int get_rb_num() const { return m_rb_num; }
    bool set_table_idx(unsigned int table_idx);
    unsigned int get_table_idx() const { return m_table_idx; }
    bool set_l0(unsigned int l0);
    unsigned int get_l0() const { return m_l0; }
    bool set_l1(unsigned int l1);
    unsigned int get_l1() const { return m_l1; }
    bool set_frequency_domain_bitmap(const std::string& text, unsigned int table_idx);
    const std::string& get_frequency_domain_bitmap() const { return m_bitmap_text; }
    const std::vector<int>& get_freq_domain_bitmap() const { return m_bitmap; }
    /// Bits of the row's bitmap.
    unsigned int get_available_csirs_bitmap() const;
    bool set_density(double density);
    double get_density() const { return m_density; }
    /// The row's densities.
    const std::vector<double>& get_density_feedback() const { return m_densities; }
    bool set_density_prb_allocation(density_prb_allocation_t allocation);
    density_prb_allocation_t get_density_prb_allocation() const { return m_density_prb_allocation; }
    /// What the row offers; empty where it has one density.
    const std::vector<density_prb_allocation_t>& get_density_prb_allocation_feedback() const
    {
        return m_density_prb_allocations;
    }
    bool set_reused_for_pdsch(bool reused);
    bool get_reused_for_pdsch() const { return m_reused_for_pdsch; }

private:
    bool m_enable = false;
    double m_power_bosting = 0.0;
    std::vector<csirs_antenna_port_t> m_antenna_port;
    std::vector<csirs_antenna_port_t> m_csirs_port;
    unsigned int m_nid = 1000;
    bool m_zero_power = false;
    csirs_cdm_type_t m_csirs_type = FD_CDM2;
    unsigned int m_bwp_id = 0;
    bool m_one_frame_period = true;
    std::vector<int> m_slot_allocation;
    unsigned int m_rb_offset = 0;
    unsigned int m_rb_num = 272;
    unsigned int m_table_idx = 4;
    unsigned int m_l0 = 12;
    unsigned int m_l1 = 2;
    std::vector<int> m_bitmap;
    double m_density = 1.0;
    density_prb_allocation_t m_density_prb_allocation = EVEN_PRBS;
    bool m_reused_for_pdsch = false;
    std::vector<double> m_densities;
    std::vector<density_prb_allocation_t> m_density_prb_allocations;
    unsigned int m_port_number = 4;
    std::string m_slot_allocation_text;
    std::string m_bitmap_text;
    std::string m_csirs_port_text;
    unsigned int m_frame_count = 1;
};

} // namespace vek::nr_mod_lib

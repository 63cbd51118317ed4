#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <cstdint>
#include <string>
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

enum srs_port_number_t : std::uint32_t
{
    LIB_NR_PORT_NUMBER_1 = 1,
    LIB_NR_PORT_NUMBER_2 = 2,
    LIB_NR_PORT_NUMBER_4 = 4,
};

/// Symbols of the SRS in a slot.
enum srs_N_symb_srs_value_t : std::uint32_t
{
    LIB_NR_N_SYMB_SRS_VALUE_1 = 1,
    LIB_NR_N_SYMB_SRS_VALUE_2 = 2,
    LIB_NR_N_SYMB_SRS_VALUE_4 = 4,
    LIB_NR_N_SYMB_SRS_VALUE_8 = 8,
    LIB_NR_N_SYMB_SRS_VALUE_12 = 12,
    LIB_NR_N_SYMB_SRS_VALUE_14 = 14,
};

/// Symbols for which the SRS stays at a frequency before it hops.
enum srs_repetition_factor_value_t : std::uint32_t
{
    LIB_NR_REPETITION_FACTOR_1 = 1,
    LIB_NR_REPETITION_FACTOR_2 = 2,
    LIB_NR_REPETITION_FACTOR_3 = 3,
    LIB_NR_REPETITION_FACTOR_4 = 4,
    LIB_NR_REPETITION_FACTOR_5 = 5,
    LIB_NR_REPETITION_FACTOR_6 = 6,
    LIB_NR_REPETITION_FACTOR_7 = 7,
    LIB_NR_REPETITION_FACTOR_8 = 8,
    LIB_NR_REPETITION_FACTOR_10 = 10,
    LIB_NR_REPETITION_FACTOR_12 = 12,
    LIB_NR_REPETITION_FACTOR_14 = 14,
};

/// Comb: the distance of two subcarriers of the SRS.
enum srs_K_TC_value_t : std::uint32_t
{
    LIB_NR_K_TC_VALUE_2 = 2,
    LIB_NR_K_TC_VALUE_4 = 4,
    LIB_NR_K_TC_VALUE_8 = 8,
};

/// Cyclic shifts of a comb, TS 38.211 Table 6.4.1.4.2-1.
enum srs_cs_max_t : std::uint32_t
{
    LIB_NR_SRS_CS_MAX6 = 6,
    LIB_NR_SRS_CS_MAX8 = 8,
    LIB_NR_SRS_CS_MAX12 = 12,
};

/// P_F: the SRS fills one P_F-th of its band.
enum T_SRS_PF_TYPE : std::uint32_t
{
    SRS_SRS_PF_1 = 1,
    SRS_SRS_PF_2 = 2,
    SRS_SRS_PF_4 = 4,
};

enum T_SRS_GROUP_OR_SEQUEN_TYPE : std::uint32_t
{
    SRS_NEITHER_TYPE = 0,
    SRS_GROUP_HOP_TYPE = 1,
    SRS_SEQUEN_HOP_TYPE = 2,
};

enum T_SRS_RESOUR_TYPE : std::uint32_t
{
    SRS_PERIOD_TYPE = 0,
    SRS_SEMI_PERSIS_TYPE = 1,
    SRS_APERIOD_TYPE = 2,
};

enum T_SRS_POSRESOURCE_EN_TYPE : std::uint32_t
{
    SRS_POSRESOURCE_OFF = 0,
    SRS_POSRESOURCE_ON = 1,
};

/// One sounding reference signal of a carrier, in an uplink BWP. The façade tells the rules; where a rule needs
/// something of the BWP or the waveform, it is an argument here. An enumerator that a list does not have becomes the
/// list's first.
class NR_MOD_LIB_EXPORT lib_nr_ul_srs_configure_manager_t
{
public:
    explicit lib_nr_ul_srs_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp);

    void init(const lib_nr_ul_bwp_configure_manager_t& bwp);
    /// Brings the SRS in line with a changed BWP: off at 240 kHz, its slots within the frame.
    void update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp);

    bool set_enable(bool enable, lib_nr_numerology_type_t bwp_numerology);
    bool get_enable() const { return m_enable; }
    bool set_power_bosting(double power);
    double get_power_bosting() const { return m_power_bosting; }
    bool set_antenna_port(const std::vector<srs_antenna_port_t>& ports, unsigned int antennas);
    const std::vector<srs_antenna_port_t>& get_antenna_port() const { return m_antenna_port; }
    bool set_port_number(srs_port_number_t number);
    srs_port_number_t get_port_number() const { return m_port_number; }
    bool set_srs_port(const std::string& text);
    const std::vector<int>& get_srs_port() const { return m_srs_port; }
    const std::string& get_srs_feedback_port() const { return m_srs_port_text; }
    bool set_pos_resource(bool pos_resource);
    bool get_pos_resource() const { return m_pos_resource; }
    bool set_srs_periodity(srs_periodity_type_t periodicity, lib_nr_numerology_type_t bwp_numerology);
    srs_periodity_type_t get_srs_periodity() const { return m_periodicity; }
    bool set_t_offset(unsigned int offset, lib_nr_numerology_type_t bwp_numerology);
    unsigned int get_t_offset() const { return m_t_offset; }
    bool set_slot_allocation(const std::string& text, lib_nr_numerology_type_t bwp_numerology);
    const std::vector<int>& get_slot_allocation() const { return m_slot_allocation; }
    const std::string& get_slot_allocation_feedback() const { return m_slot_allocation_text; }
    bool set_N_symb_srs(srs_N_symb_srs_value_t number);
    srs_N_symb_srs_value_t get_N_symb_srs() const { return m_N_symb; }
    bool set_l_offset(unsigned char offset);
    unsigned char get_l_offset() const { return m_l_offset; }
    bool set_srs_repetition_factor(srs_repetition_factor_value_t factor);
    srs_repetition_factor_value_t get_srs_repetition_factor() const { return m_repetition_factor; }
    bool set_Ktc_number(srs_K_TC_value_t comb);
    srs_K_TC_value_t get_Ktc_number() const { return m_K_TC; }
    bool set_ktc_offset(unsigned char offset);
    unsigned char get_ktc_offset() const { return m_ktc_offset; }
    bool set_b_srs(unsigned char b_srs);
    unsigned char get_b_srs() const { return m_b_srs; }
    bool set_c_srs(unsigned char c_srs);
    unsigned char get_c_srs() const { return m_c_srs; }
    bool set_b_hop(unsigned char b_hop);
    unsigned char get_b_hop() const { return m_b_hop; }
    bool set_n_shift(unsigned short n_shift);
    unsigned short get_n_shift() const { return m_n_shift; }
    bool set_n_RRC(unsigned char n_RRC);
    unsigned char get_n_RRC() const { return m_n_RRC; }
    bool set_GroupOrSeqHop(unsigned char hopping);
    unsigned char get_GroupOrSeqHop() const { return m_GroupOrSeqHop; }
    bool set_n_SRS_cs(unsigned char shift);
    unsigned char get_n_SRS_cs() const { return m_n_SRS_cs; }
    bool set_n_ID_SRS(unsigned int identity);
    unsigned int get_n_ID_SRS() const { return m_n_ID_SRS; }
    bool set_p_f(T_SRS_PF_TYPE p_f);
    T_SRS_PF_TYPE get_p_f() const { return m_p_f; }
    bool set_k_f(unsigned char k_f);
    unsigned char get_k_f() const { return m_k_f; }
    /// Stores the id alone: the carrier moves an SRS to another BWP.
    bool set_bwp_id(unsigned int id);
    unsigned int get_bwp_id() const { return m_bwp_id; }

    static std::vector<srs_port_number_t> get_port_number_for_ui();
    static std::vector<srs_periodity_type_t> get_srs_periodity_for_ui();
    static std::vector<srs_N_symb_srs_value_t> get_N_symb_srs_for_ui();
    static std::vector<srs_repetition_factor_value_t> get_srs_repetition_factor_for_ui();
    static std::vector<srs_K_TC_value_t> get_Ktc_number_for_ui();
    static std::vector<T_SRS_PF_TYPE> get_p_f_for_ui();
    /// None, and the ports that there are.
    std::vector<srs_antenna_port_t> get_available_port_for_ui() const;
    /// The cyclic shifts of a comb.
    static srs_cs_max_t get_cs_max(srs_K_TC_value_t comb);

private:
    bool _set_periodic_slots(lib_nr_numerology_type_t bwp_numerology);
    bool _fits_comb(unsigned int comb, unsigned int p_f) const;
    void _keep_comb();

    bool m_enable = false;
    double m_power_bosting = 0.0;
    std::vector<srs_antenna_port_t> m_antenna_port;
    srs_port_number_t m_port_number = LIB_NR_PORT_NUMBER_1;
    std::vector<int> m_srs_port;
    std::string m_srs_port_text;
    bool m_pos_resource = false;
    srs_periodity_type_t m_periodicity = LIB_NR_SRS_0MS_PERIODICITY;
    unsigned int m_t_offset = 0;
    std::vector<int> m_slot_allocation;
    std::string m_slot_allocation_text;
    unsigned char m_l_offset = 5;
    srs_N_symb_srs_value_t m_N_symb = LIB_NR_N_SYMB_SRS_VALUE_1;
    srs_repetition_factor_value_t m_repetition_factor = LIB_NR_REPETITION_FACTOR_1;
    srs_K_TC_value_t m_K_TC = LIB_NR_K_TC_VALUE_2;
    unsigned char m_ktc_offset = 0;
    unsigned char m_b_srs = 0;
    unsigned char m_c_srs = 0;
    unsigned char m_b_hop = 0;
    unsigned short m_n_shift = 0;
    unsigned char m_n_RRC = 0;
    unsigned char m_GroupOrSeqHop = SRS_NEITHER_TYPE;
    unsigned char m_n_SRS_cs = 0;
    unsigned int m_n_ID_SRS = 0;
    T_SRS_PF_TYPE m_p_f = SRS_SRS_PF_1;
    unsigned char m_k_f = 0;
    unsigned int m_bwp_id = 0;
};

} // namespace vek::nr_mod_lib

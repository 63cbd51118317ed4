#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_phy_numerology_configure_manager_t;

// The number in the name is what an enumerator stands for.

enum lib_nr_prs_comb_size_t : std::uint32_t
{
    LIB_NR_PRS_COMB_SIZE_2 = 0,
    LIB_NR_PRS_COMB_SIZE_4 = 1,
    LIB_NR_PRS_COMB_SIZE_6 = 2,
    LIB_NR_PRS_COMB_SIZE_12 = 3,
};

enum lib_nr_prs_reptition_factor_t : std::uint32_t
{
    LIB_NR_PRS_REPTITION_FACTOR_1 = 0,
    LIB_NR_PRS_REPTITION_FACTOR_2 = 1,
    LIB_NR_PRS_REPTITION_FACTOR_4 = 2,
    LIB_NR_PRS_REPTITION_FACTOR_6 = 3,
    LIB_NR_PRS_REPTITION_FACTOR_8 = 4,
    LIB_NR_PRS_REPTITION_FACTOR_16 = 5,
    LIB_NR_PRS_REPTITION_FACTOR_32 = 6,
};

/// In slots.
enum lib_nr_prs_time_gap_t : std::uint32_t
{
    LIB_NR_PRS_TIME_GAP_1 = 0,
    LIB_NR_PRS_TIME_GAP_2 = 1,
    LIB_NR_PRS_TIME_GAP_4 = 2,
    LIB_NR_PRS_TIME_GAP_8 = 3,
    LIB_NR_PRS_TIME_GAP_16 = 4,
    LIB_NR_PRS_TIME_GAP_32 = 5,
};

enum lib_nr_prs_muting_factor_t : std::uint32_t
{
    LIB_NR_PRS_MUTING_FACTOR_1 = 0,
    LIB_NR_PRS_MUTING_FACTOR_2 = 1,
    LIB_NR_PRS_MUTING_FACTOR_4 = 2,
    LIB_NR_PRS_MUTING_FACTOR_8 = 3,
};

enum lib_nr_prs_symbol_number : std::uint32_t
{
    LIB_NR_PRS_SYMBOL_NUMBER_2 = 0,
    LIB_NR_PRS_SYMBOL_NUMBER_4 = 1,
    LIB_NR_PRS_SYMBOL_NUMBER_6 = 2,
    LIB_NR_PRS_SYMBOL_NUMBER_12 = 3,
};

/// One positioning reference signal of a carrier, tied to a numerology by its spacing. The façade tells the rules.
class NR_MOD_LIB_EXPORT lib_nr_dl_prs_configure_manager_t
{
public:
    explicit lib_nr_dl_prs_configure_manager_t(const lib_nr_phy_numerology_configure_manager_t& numerology);

    /// Defaults, but for the RBs: those it held, clipped to the numerology.
    void init(const lib_nr_phy_numerology_configure_manager_t& numerology);
    /// Takes spacing and RBs of a numerology and keeps its own RBs inside; normal prefix.
    void update_by_numerology(const lib_nr_phy_numerology_configure_manager_t& numerology);

    bool set_enable(bool enable);
    bool get_enable() const { return m_enable; }
    bool set_power(double power);
    double get_power() const { return m_power; }
    /// Leaves the RBs of the numerology as they were: the carrier moves a PRS to another numerology.
    bool set_numerology(lib_nr_numerology_type_t numerology);
    lib_nr_numerology_type_t get_numerology() const { return m_numerology; }
    bool set_cp_type(lib_nr_cyclic_prefix_type_t cp_type);
    lib_nr_cyclic_prefix_type_t get_cp_type() const { return m_cp_type; }
    bool set_n_id(unsigned int n_id);
    unsigned int get_n_id() const { return m_n_id; }
    bool set_rb_number(unsigned int rb_number);
    unsigned int get_rb_number() const { return m_rb_number; }
    bool set_rb_offset(unsigned int rb_offset);
    unsigned int get_rb_offset() const { return m_rb_offset; }
    bool set_comb_size(lib_nr_prs_comb_size_t comb_size);
    lib_nr_prs_comb_size_t get_comb_size() const { return m_comb_size; }
    bool set_periodicity(unsigned int periodicity);
    unsigned int get_periodicity() const { return m_periodicity; }
    /// In slots, by the spacing.
    std::vector<unsigned int> get_periodicity_list() const;
    bool set_set_slot_offset(unsigned int offset);
    unsigned int get_set_slot_offset() const { return m_set_slot_offset; }
    bool set_reptition_factor(lib_nr_prs_reptition_factor_t factor);
    lib_nr_prs_reptition_factor_t get_reptition_factor() const { return m_reptition_factor; }
    bool set_time_gap(lib_nr_prs_time_gap_t gap);
    lib_nr_prs_time_gap_t get_time_gap() const { return m_time_gap; }
    bool set_muting_factor(lib_nr_prs_muting_factor_t factor);
    lib_nr_prs_muting_factor_t get_muting_factor() const { return m_muting_factor; }
    bool set_muting_option_1(const std::string& text);
    const std::string& get_muting_option_1() const { return m_muting_option_1; }
    const std::vector<unsigned char>& get_muting_option_1_v() const { return m_muting_option_1_v; }
    bool set_muting_option_2(const std::string& text);
    const std::string& get_muting_option_2() const { return m_muting_option_2; }
    const std::vector<unsigned char>& get_muting_option_2_v() const { return m_muting_option_2_v; }
    bool set_re_offset(unsigned int re_offset);
    unsigned int get_re_offset() const { return m_re_offset; }
    bool set_slot_offset(unsigned int offset);
    unsigned int get_slot_offset() const { return m_slot_offset; }
    bool set_symbol_offset(unsigned int offset);
    unsigned int get_symbol_offset() const { return m_symbol_offset; }
    bool set_symbol_number(lib_nr_prs_symbol_number number);
    lib_nr_prs_symbol_number get_symbol_number() const { return m_symbol_number; }

    // What an enumerator stands for; the first of its kind, and a printed line, for a value that has none.

    static unsigned int _get_comb_size(lib_nr_prs_comb_size_t comb_size);
    static unsigned int _get_reptition_factor(lib_nr_prs_reptition_factor_t factor);
    static unsigned int _get_time_gap(lib_nr_prs_time_gap_t gap);
    static unsigned int _get_muting_factor(lib_nr_prs_muting_factor_t factor);
    static unsigned int _get_symbol_number(lib_nr_prs_symbol_number number);

private:
    void _limit_rb_number(unsigned int rb_number);
    void _switch_off_where_impossible();

    bool m_enable = false;
    double m_power = 0.0;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_cyclic_prefix_type_t m_cp_type = LIB_NR_NORMAL_CP;
    unsigned int m_n_id = 0;
    unsigned int m_rb_number = 272;
    unsigned int m_rb_offset = 0;
    lib_nr_prs_comb_size_t m_comb_size = LIB_NR_PRS_COMB_SIZE_2;
    unsigned int m_periodicity = 10;
    unsigned int m_set_slot_offset = 0;
    lib_nr_prs_reptition_factor_t m_reptition_factor = LIB_NR_PRS_REPTITION_FACTOR_1;
    lib_nr_prs_time_gap_t m_time_gap = LIB_NR_PRS_TIME_GAP_1;
    lib_nr_prs_muting_factor_t m_muting_factor = LIB_NR_PRS_MUTING_FACTOR_1;
    std::string m_muting_option_1;
    std::vector<unsigned char> m_muting_option_1_v;
    std::string m_muting_option_2;
    std::vector<unsigned char> m_muting_option_2_v;
    unsigned int m_re_offset = 0;
    unsigned int m_slot_offset = 0;
    unsigned int m_symbol_offset = 0;
    lib_nr_prs_symbol_number m_symbol_number = LIB_NR_PRS_SYMBOL_NUMBER_2;
    unsigned int m_numerology_rb_start = 0;
    unsigned int m_numerology_rb_size = 273;
};

} // namespace vek::nr_mod_lib

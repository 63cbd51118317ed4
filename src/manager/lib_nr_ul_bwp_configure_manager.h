#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <string>

namespace vek::nr_mod_lib
{

class lib_nr_phy_numerology_configure_manager_t;

/// One uplink bandwidth part: a named range of at least 6 RBs inside its numerology, with a cyclic prefix type.
class NR_MOD_LIB_EXPORT lib_nr_ul_bwp_configure_manager_t
{
public:
    lib_nr_ul_bwp_configure_manager_t(const lib_nr_phy_numerology_configure_manager_t& numerology, unsigned int id);

    /// Takes id and numerology; the name becomes "BWP" and the id + 1.
    void init(const lib_nr_phy_numerology_configure_manager_t& numerology, unsigned int id);

    bool set_bwp_id(unsigned int id);
    unsigned int get_bwp_id() const { return m_bwp_id; }
    bool set_bwp_name(const std::string& name);
    const std::string& get_bwp_name() const { return m_bwp_name; }

    /// Moves to a spacing and keeps the range inside its RBs; leaving 60 kHz ends an extended prefix. Always true.
    bool set_numerology(const lib_nr_phy_numerology_configure_manager_t& numerology);
    lib_nr_numerology_type_t get_numerology() const { return m_numerology; }
    /// Only 60 kHz has two prefixes: elsewhere nothing changes.
    bool set_cp_type(lib_nr_cyclic_prefix_type_t cp_type);
    lib_nr_cyclic_prefix_type_t get_cp_type() const { return m_cp_type; }
    /// First RB, within the `rb_size` RBs from `rb_start` on and at least 6 RBs below their end; the RB number follows.
    bool set_rb_offset(unsigned int value, unsigned int rb_start, unsigned int rb_size);
    unsigned int get_rb_offset() const { return m_rb_offset; }
    /// At least 6, and no more than lie between the offset and the end of the range.
    bool set_rb_number(unsigned int value, unsigned int rb_start, unsigned int rb_size);
    unsigned int get_rb_number() const { return m_rb_number; }

private:
    unsigned int m_bwp_id = 0;
    std::string m_bwp_name;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_cyclic_prefix_type_t m_cp_type = LIB_NR_NORMAL_CP;
    unsigned int m_rb_offset = 0;
    unsigned int m_rb_number = 273;
};

} // namespace vek::nr_mod_lib

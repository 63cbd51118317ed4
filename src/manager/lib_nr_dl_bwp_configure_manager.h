#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_dl_coreset_configure_manager.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_phy_numerology_configure_manager_t;

/// One downlink bandwidth part: a range of at least 6 RBs inside its numerology, a cyclic prefix type, and three
/// CORESETs, of which the CORESET number says how many count. The initial BWP's CORESETs have the ids 0 to 2, those of
/// any other BWP 1 to 3.
class NR_MOD_LIB_EXPORT lib_nr_dl_bwp_configure_manager_t
{
public:
    lib_nr_dl_bwp_configure_manager_t(const lib_nr_phy_numerology_configure_manager_t& numerology, unsigned int id,
                                      bool initial);

    /// Takes id, spacing and limits; one CORESET, normal prefix. The CORESETs' own settings stay.
    void init(const lib_nr_phy_numerology_configure_manager_t& numerology, unsigned int id);

    bool is_initial_bwp() const { return m_initial_bwp; }
    bool set_bwp_id(unsigned int id);
    unsigned int get_bwp_id() const { return m_bwp_id; }

    /// Moves to a spacing and its limits and keeps the range inside; the size is not widened. Leaving 60 kHz ends an
    /// extended prefix, which exists nowhere else (TS 38.211 clause 4.2). True where the spacing changed.
    bool set_numerology(const lib_nr_phy_numerology_configure_manager_t& numerology);
    lib_nr_numerology_type_t get_numerology() const { return m_numerology; }
    /// Only 60 kHz has two prefixes: elsewhere nothing changes.
    bool set_cp_type(lib_nr_cyclic_prefix_type_t cp_type);
    lib_nr_cyclic_prefix_type_t get_cp_type() const { return m_cp_type; }

    /// First RB, clamped to the `limit_number` RBs from `limit_start` on and to 6 RBs below their end; a size that
    /// overruns is cut. True where the start changed.
    bool set_bwp_rb_start(unsigned int value, unsigned int limit_start, unsigned int limit_number);
    unsigned int get_bwp_rb_start() const { return m_bwp_rb_start; }
    /// A value below 6 stores 6, takes no limits and returns false. Any other takes the limits, is cut to what lies
    /// between the start and their end, and returns true.
    bool set_bwp_rb_size(unsigned int value, unsigned int limit_start, unsigned int limit_number);
    unsigned int get_bwp_rb_size() const { return m_bwp_rb_size; }
    void set_bwp_resource_block_start_limit(unsigned int limit_start);
    void set_bwp_resource_block_number_limit(unsigned int limit_number);

    /// Clamped to 1 to 3.
    bool set_coreset_number(unsigned int number);
    unsigned int get_coreset_number() const { return m_coreset_number; }
    /// 0 for the initial BWP, 1 for any other.
    unsigned int get_first_coreset_index() const { return m_initial_bwp ? 0 : 1; }
    bool check_coreset_index_valid(unsigned int index) const;
    /// By CORESET id; the last of the three for an id outside them.
    lib_nr_dl_coreset_configure_manager_t& get_coreset(unsigned int index);
    const lib_nr_dl_coreset_configure_manager_t& get_coreset(unsigned int index) const;
    /// Applies the bitmap of each CORESET that counts to the BWP's size again.
    void update_coresets();

private:
    void _update_rb_limit(unsigned int limit_start, unsigned int limit_number);

    bool m_initial_bwp;
    unsigned int m_bwp_id;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_cyclic_prefix_type_t m_cp_type = LIB_NR_NORMAL_CP;
    unsigned int m_rb_start_limit = 0;
    unsigned int m_rb_number_limit = 0;
    unsigned int m_bwp_rb_size = 273;
    unsigned int m_bwp_rb_start = 0;
    unsigned int m_coreset_number = 1;
    std::vector<lib_nr_dl_coreset_configure_manager_t> m_coresets;
};

} // namespace vek::nr_mod_lib

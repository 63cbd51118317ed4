#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_sch_configure_manager.h"

namespace vek::nr_mod_lib
{

class lib_nr_dl_bwp_configure_manager_t;

/// One PDSCH of a carrier: the settings of a shared channel in the form of the downlink, and the mapping of its virtual
/// resource blocks. It has one DMRS port, and so one layer and one codeword.
class NR_MOD_LIB_EXPORT lib_nr_dl_sch_configure_manager_t final : public lib_nr_sch_configure_manager_t
{
public:
    explicit lib_nr_dl_sch_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp);

    /// Everything back to its default, in this BWP.
    void init(const lib_nr_dl_bwp_configure_manager_t& bwp);
    /// Brings the channel in line with a changed BWP.
    void update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp);

    /// The first port of the text counts.
    bool set_dmrs_port(const std::string& text) override;
    bool set_first_symbol(unsigned int symbol, lib_nr_cyclic_prefix_type_t cp_type) override;
    bool set_symbol_num(unsigned int number, lib_nr_cyclic_prefix_type_t cp_type) override;
    std::vector<lib_nr_sch_ra_type_t> get_ra_type_list() const override;
    std::vector<mcs_table_t> get_mcs_table_list() const override;

    bool set_vrb2prb_interleaver(lib_nr_sch_interleave_t interleaver);
    lib_nr_sch_interleave_t get_vrb2prb_interleaver() const { return m_vrb2prb_interleaver; }
    bool set_vrb_bundle_size(lib_nr_sch_vrb_bundle_size_t size);
    lib_nr_sch_vrb_bundle_size_t get_vrb_bundle_size() const { return m_vrb_bundle_size; }
    bool set_tb_scaling(lib_nr_sch_tb_scaling_t scaling);
    lib_nr_sch_tb_scaling_t get_tb_scaling() const { return m_tb_scaling; }

private:
    lib_nr_dl_sch_configure_manager_t() = default;

    unsigned int _fit_type_a(unsigned int number, lib_nr_cyclic_prefix_type_t cp_type) const;
    unsigned int _fit_type_b(unsigned int number, lib_nr_cyclic_prefix_type_t cp_type) const;
    unsigned int _shortest_type_b(lib_nr_cyclic_prefix_type_t cp_type) const;

    lib_nr_sch_interleave_t m_vrb2prb_interleaver = LIB_NR_SCH_NO_INTERLEAVE;
    lib_nr_sch_vrb_bundle_size_t m_vrb_bundle_size = LIB_NR_SCH_VRB_BUNDLE_SIZE_2;
    lib_nr_sch_tb_scaling_t m_tb_scaling = LIB_NR_SCH_TB_SCALING_1;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_dl/lib_nr_phy_sch_process.h"

namespace vek::nr_mod_lib
{

/// Generates the PUSCH, TS 38.211 clause 6.3.1. Bound to its channel, it writes nothing yet.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pusch_process_t : public lib_nr_phy_sch_process_t
{
public:
    bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int channel,
                             const lib_nr_waveform_configure_manager_t& waveform) override;

private:
    void _phy_sch_caculate_g(unsigned int, unsigned int) override {}
    void _phy_sch_view_re_map(unsigned int, const rb_list_t&) override {}
    void _phy_sch_encode_re_map(unsigned int, unsigned int, const rb_list_t&) override {}
    void _phy_sch_rb_index() override {}
};

} // namespace vek::nr_mod_lib

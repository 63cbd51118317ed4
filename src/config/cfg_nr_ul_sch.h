#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_sch.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' PUSCHs.
class NR_MOD_LIB_EXPORT cfg_nr_ul_sch_t : public cfg_nr_sch_t
{
public:
    explicit cfg_nr_ul_sch_t(lib_nr_waveform_configure_manager_t& waveform);

    bool set_current_sch_index(unsigned int carrier, unsigned int index) override;

private:
    lib_nr_sch_configure_manager_t& _get_sch_manager() const override;
    lib_nr_ul_sch_configure_manager_t& _get_pusch_manager() const;
};

} // namespace vek::nr_mod_lib

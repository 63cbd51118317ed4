#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_sch.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' PUSCHs. One cannot be enabled yet.
class NR_MOD_LIB_EXPORT cfg_nr_ul_sch_t final : public cfg_nr_sch_t
{
public:
    explicit cfg_nr_ul_sch_t(lib_nr_waveform_configure_manager_t& waveform);

    bool set_current_sch_index(unsigned int carrier, unsigned int index) override;
    bool set_enable(bool enable) override;
    bool set_bwp_id(unsigned int id) override;

private:
    lib_nr_sch_configure_manager_t& _get_sch_manager() const override;
    bwp_t _get_bwp() const override;
    lib_nr_ul_sch_configure_manager_t& _get_pusch_manager() const;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_sch.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' PDSCHs, TS 38.211 clause 7.3.1. A PDSCH has one DMRS port, and so one layer and one
/// codeword.
class NR_MOD_LIB_EXPORT cfg_nr_dl_sch_t final : public cfg_nr_sch_t
{
public:
    explicit cfg_nr_dl_sch_t(lib_nr_waveform_configure_manager_t& waveform);

    bool set_current_sch_index(unsigned int carrier, unsigned int index) override;
    bool set_bwp_id(unsigned int id) override;

    /// Whether virtual resource blocks are interleaved onto physical ones, for type 1 (clause 7.3.1.6).
    bool set_vrb2prb_interleaver(lib_nr_sch_interleave_t interleaver)
    {
        return _get_pdsch_manager().set_vrb2prb_interleaver(interleaver);
    }
    lib_nr_sch_interleave_t get_vrb2prb_interleaver() const { return _get_pdsch_manager().get_vrb2prb_interleaver(); }
    /// Resource blocks of an interleaved bundle.
    bool set_vrb_bundle_size(lib_nr_sch_vrb_bundle_size_t size)
    {
        return _get_pdsch_manager().set_vrb_bundle_size(size);
    }
    lib_nr_sch_vrb_bundle_size_t get_vrb_bundle_size() const { return _get_pdsch_manager().get_vrb_bundle_size(); }
    /// Factor of the transport block size, TS 38.214 Table 5.1.3.2-2.
    bool set_tb_scaling(lib_nr_sch_tb_scaling_t scaling) { return _get_pdsch_manager().set_tb_scaling(scaling); }
    lib_nr_sch_tb_scaling_t get_tb_scaling() const { return _get_pdsch_manager().get_tb_scaling(); }

private:
    lib_nr_sch_configure_manager_t& _get_sch_manager() const override;
    bwp_t _get_bwp() const override;
    lib_nr_dl_sch_configure_manager_t& _get_pdsch_manager() const;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the CORESETs of the carriers' downlink bandwidth parts, each named by its id (TS 38.211 clause 7.3.2.2).
/// With interleaving the number of its resource blocks is a multiple of bundle size times interleaver size; whatever
/// would break this changes `fd_resources`. Setters return true when the stored value changed.
class NR_MOD_LIB_EXPORT cfg_nr_dl_coreset_t : public cfg_nr_cursor_t
{
public:
    explicit cfg_nr_dl_coreset_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_cursor_t(waveform) {}

    /// Puts the cursor on CORESET 0 of the initial BWP of the first carrier.
    void init();
    /// Moves the cursor; false, and no move, where an index lies past its list's end or the BWP does not count that
    /// CORESET.
    bool set_current_coreset_index(unsigned int carrier, unsigned int bwp, unsigned int coreset);

    /// Resource blocks by which all groups of 6 move up, limited to -1 to 5; -1 aligns them with point A.
    bool set_rb_offset(int rb_offset) { return _target().set_rb_offset(rb_offset); }
    int get_rb_offset() const { return _target().get_rb_offset(); }
    /// A bit for each group of 6 resource blocks of the BWP, the lowest first, as "110100", cut or padded with 0.
    /// Without any 1 the first group is taken. A bitmap that interleaving cannot use gives way to the one before, and
    /// if that does not fit either, to the shortest that does. An empty text takes no group: nothing can be sent.
    bool set_fd_resources(const std::string& text)
    {
        return _target().set_fd_resources(text, _bwp().get_bwp_rb_size());
    }
    std::string get_fd_resources() const { return _target().get_fd_resources(); }
    /// Symbols, limited to 1 to 3. Below 3 a bundle size of 3 becomes 2. The DCIs of the BWP follow.
    bool set_duration(unsigned int duration);
    unsigned int get_duration() const { return _target().get_duration(); }
    /// Whether the REGs of a CCE are interleaved; the bitmap is then fitted to whole rows of bundles.
    bool set_cce2reg_mapping_type(lib_nr_dl_dci_cce2reg_mapping_type_t type)
    {
        return _target().set_cce2reg_mapping_type(type);
    }
    lib_nr_dl_dci_cce2reg_mapping_type_t get_cce2reg_mapping_type() const
    {
        return _target().get_cce2reg_mapping_type();
    }
    /// L of the clause, for interleaving alone; 3 becomes 2 unless the CORESET lasts 3 symbols. The clause has no 2 at
    /// 3 symbols, where it is stored all the same.
    bool set_reg_bundle_size(lib_nr_dl_dci_reg_bundle_size_t size) { return _target().set_reg_bundle_size(size); }
    lib_nr_dl_dci_reg_bundle_size_t get_reg_bundle_size() const { return _target().get_reg_bundle_size(); }
    /// R of the clause.
    bool set_interleaver_size(lib_nr_dl_dci_interleaver_size_t size) { return _target().set_interleaver_size(size); }
    lib_nr_dl_dci_interleaver_size_t get_interleaver_size() const { return _target().get_interleaver_size(); }
    /// n_shift of the clause, at most 274.
    bool set_shift_idx(unsigned int shift_idx) { return _target().set_shift_idx(shift_idx); }
    unsigned int get_shift_idx() const { return _target().get_shift_idx(); }
    /// Without effect on the signal.
    bool set_precoder_granularity(lib_nr_coreset_precoder_granularity_t granularity)
    {
        return _target().set_precoder_granularity(granularity);
    }
    lib_nr_coreset_precoder_granularity_t get_precoder_granularity() const
    {
        return _target().get_precoder_granularity();
    }
    /// A 1 for each group of 6 resource blocks of the BWP.
    std::vector<int> get_available_coreset_bitmap() const;

private:
    template <class tested_t>
    friend struct vek::test_peer_t;

    const lib_nr_dl_bwp_configure_manager_t& _bwp() const { return _carrier().get_dl_bwp(m_index); }
    lib_nr_dl_coreset_configure_manager_t& _target()
    {
        return _carrier().get_dl_bwp(m_index).get_coreset(m_coreset_index);
    }
    const lib_nr_dl_coreset_configure_manager_t& _target() const { return _bwp().get_coreset(m_coreset_index); }

    unsigned int m_coreset_index = 0;
};

} // namespace vek::nr_mod_lib

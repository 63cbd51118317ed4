#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"
#include "config/cfg_nr_dl_coreset.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' downlink bandwidth parts, with one over their CORESETs (TS 38.211 clause 4.4.5). A BWP has
/// 6 resource blocks at least and lies within the numerology of its spacing. Its DCIs, PDSCHs and CSI-RSs follow what
/// is set here, and a new width gives the bitmap of each CORESET that counts anew. Setters return true when the stored
/// value changed, where they tell nothing else.
class NR_MOD_LIB_EXPORT cfg_nr_dl_bwp_t : public cfg_nr_list_cursor_t<lib_nr_dl_bwp_configure_manager_t>
{
public:
    explicit cfg_nr_dl_bwp_t(lib_nr_waveform_configure_manager_t& waveform)
        : cfg_nr_list_cursor_t(waveform), m_coreset(waveform)
    {}

    /// Puts the cursor on the initial BWP of the first carrier.
    void init();
    /// Moves the cursor, and that of the CORESETs to the first one of the BWP; false, and no move, where an index lies
    /// past its list's end. Indices that are current already move nothing.
    bool set_current_dl_bwp_index(unsigned int carrier, unsigned int bwp);
    bool set_current_index(unsigned int carrier, unsigned int bwp) { return set_current_dl_bwp_index(carrier, bwp); }
    /// The CORESET cursor, moved to a CORESET of the current BWP; it stays where it was for an invalid index.
    cfg_nr_dl_coreset_t* get_coreset(unsigned int index);

    /// Width in resource blocks, cut to what lies between the start and the end of the numerology: always true. A value
    /// below 6 becomes 6, and false. A printed line where the numerology is not enabled.
    bool set_bwp_rb_size(unsigned int rb_size);
    unsigned int get_bwp_rb_size() const { return _target().get_bwp_rb_size(); }
    /// First resource block of the carrier's grid, within the numerology and 6 below its end; cuts the width. A printed
    /// line where the numerology is not enabled.
    bool set_bwp_rb_start(unsigned int rb_start);
    unsigned int get_bwp_rb_start() const { return _target().get_bwp_rb_start(); }
    /// Spacing: one whose numerology is not enabled becomes the first enabled one. The range is cut to the
    /// numerology's, and never widened.
    bool set_scs(lib_nr_numerology_type_t scs);
    lib_nr_numerology_type_t get_scs() const { return _target().get_numerology(); }
    /// Cyclic prefix of every downlink BWP of the carrier, as far as it lies at 60 kHz: the others keep the normal one.
    /// True where any of them changed.
    bool set_cp_type(lib_nr_cyclic_prefix_type_t cp_type);
    lib_nr_cyclic_prefix_type_t get_cp_type() const { return _target().get_cp_type(); }
    /// CORESETs that count, limited to 1 to 3: always true. A DCI in one that no longer counts moves to the first.
    bool set_coreset_number(unsigned int number) { return _carrier().set_coreset_number(_index(), number); }
    unsigned int get_coreset_number() const { return _target().get_coreset_number(); }
    /// Index of the first CORESET: 0 in the initial BWP, 1 in any other.
    unsigned int get_first_coreset_index() const { return _target().get_first_coreset_index(); }

private:
    cfg_nr_dl_coreset_t m_coreset;
};

} // namespace vek::nr_mod_lib

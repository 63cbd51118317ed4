#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <string>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' uplink bandwidth parts, TS 38.211 clause 4.4.5: a named range of at least 6 resource
/// blocks of one spacing, which channels refer to by its place. Every channel of a part follows its changes. Setters
/// return true when the stored value changed.
class NR_MOD_LIB_EXPORT cfg_nr_ul_bwp_t : public cfg_nr_list_cursor_t<lib_nr_ul_bwp_configure_manager_t>
{
public:
    explicit cfg_nr_ul_bwp_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_bwp_index(unsigned int carrier, unsigned int bwp) { return set_current_index(carrier, bwp); }

    /// Any text; "BWP1" for the first part, "_copy" behind the name of a copy.
    bool set_bwp_name(const std::string& name) { return _target().set_bwp_name(name); }
    const std::string& get_bwp_name() const { return _target().get_bwp_name(); }
    /// Spacing; one that the carrier has not enabled becomes the first enabled. The range is kept inside that
    /// numerology's, and leaving 60 kHz ends an extended prefix. Refits the mask of the crest factor reduction.
    bool set_numerology(lib_nr_numerology_type_t numerology);
    lib_nr_numerology_type_t get_numerology() const { return _target().get_numerology(); }
    /// Cyclic prefix of all uplink bandwidth parts of the carrier; the extended one goes with 60 kHz alone. The symbols
    /// of a frame are laid out by downlink BWP 0, of an uplink carrier too: with the extended prefix its spacing must
    /// be 60 kHz and its prefix the extended one, or the channels of the uplink are not sent.
    bool set_cp_type(lib_nr_cyclic_prefix_type_t cp_type);
    lib_nr_cyclic_prefix_type_t get_cp_type() const { return _target().get_cp_type(); }
    /// First resource block, within the numerology of the part's own spacing and 6 below its end; cuts the number.
    bool set_rb_offset(unsigned int rb_offset);
    unsigned int get_rb_offset() const { return _target().get_rb_offset(); }
    /// Resource blocks, from 6 to what lies between the offset and the end of that numerology.
    bool set_rb_number(unsigned int rb_number);
    unsigned int get_rb_number() const { return _target().get_rb_number(); }

private:
    lib_nr_ul_bwp_configure_manager_t& _get_bwp_manager() { return _target(); }
    const lib_nr_ul_bwp_configure_manager_t& _get_bwp_manager() const { return _target(); }
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <map>
#include <string>
#include <utility>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' numerologies, for their intra-cell guard bands in shared spectrum (TS 38.214 clause 7).
///
/// Edits go to a working list. `confirm_configuration` hands it to the rest of the system: the RB sets between the
/// confirmed bands are what interlaced PUCCH and PUSCH lie in. A changed width of the numerology drops edits, and cuts
/// or drops confirmed bands at its end.
class NR_MOD_LIB_EXPORT cfg_nr_ul_guard_band_t : public cfg_nr_list_cursor_t<lib_nr_phy_numerology_configure_manager_t>
{
public:
    explicit cfg_nr_ul_guard_band_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_guard_band_index(unsigned int carrier, unsigned int numerology)
    {
        return set_current_index(carrier, numerology);
    }

    /// Appends the band of resource blocks 100 to 104; always true. On a narrow numerology it lies past the end until
    /// an edit moves it.
    bool add_guard_band() { return _get_guard_band_manager().add_guard_band(); }
    /// False for an index past the end.
    bool remove_guard_band(unsigned short index) { return _get_guard_band_manager().remove_guard_band(index); }
    /// Whether the bands are whole, ascending and at least one resource block apart. True empties the message and fills
    /// the RB sets that a confirmation would give; false leaves an explanation in the message.
    bool check_configuration_validity(std::string& message,
                                      std::map<unsigned short, std::pair<unsigned short, unsigned short>>& rb_sets)
    {
        return _get_guard_band_manager().check_configuration_validity(message, rb_sets);
    }
    /// Takes the edits over if they are valid, and updates the channels of the BWPs of that spacing; otherwise an
    /// explanation is printed on the error stream, nothing changes, and the result is false.
    bool confirm_configuration() { return _carrier().set_numerology_guard_band(_index()); }
    /// Drops the edits since the last confirmation; always true.
    bool cancal_configuration() { return _get_guard_band_manager().cancal_configuration(); }

    /// First resource block of a band, from 1, so that the band ends below the last resource block; the end follows.
    /// Setters return true where the band changed, and do nothing for an index past the end.
    bool set_guard_band_start(unsigned short start, unsigned short index)
    {
        return _get_guard_band_manager().set_guard_band_start(start, index);
    }
    /// Resource blocks of a band, from 1, so that it ends below the last resource block; the end follows.
    bool set_guard_band_size(unsigned short size, unsigned short index)
    {
        return _get_guard_band_manager().set_guard_band_size(size, index);
    }
    /// Last resource block of a band, from its start to the last but one of the numerology; the size follows.
    bool set_guard_band_end(unsigned short end, unsigned short index)
    {
        return _get_guard_band_manager().set_guard_band_end(end, index);
    }

    unsigned short get_guard_band_number() const { return _get_guard_band_manager().get_guard_band_number(); }
    // An index past the end reads the last band; without any band the result is 0.
    unsigned short get_guard_band_start(unsigned short index) const
    {
        return _get_guard_band_manager().get_guard_band_start(index);
    }
    unsigned short get_guard_band_size(unsigned short index) const
    {
        return _get_guard_band_manager().get_guard_band_size(index);
    }
    unsigned short get_guard_band_end(unsigned short index) const
    {
        return _get_guard_band_manager().get_guard_band_end(index);
    }
    /// First and last resource block of each RB set between the confirmed bands.
    std::map<unsigned short, std::pair<unsigned short, unsigned short>> get_rb_set_info() const
    {
        return _get_guard_band_manager().get_rb_set_info();
    }

private:
    lib_nr_ul_guard_band_configure_manager_t& _get_guard_band_manager() { return _target().get_ul_guard_band(); }
    const lib_nr_ul_guard_band_configure_manager_t& _get_guard_band_manager() const
    {
        return _target().get_ul_guard_band();
    }
};

} // namespace vek::nr_mod_lib

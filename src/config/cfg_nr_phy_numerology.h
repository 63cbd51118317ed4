#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"
#include "config/cfg_nr_ul_guard_band.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' numerologies, with one over their guard bands. Setters return true when the stored value
/// changed.
class NR_MOD_LIB_EXPORT cfg_nr_phy_numerology_t : public cfg_nr_list_cursor_t<lib_nr_phy_numerology_configure_manager_t>
{
public:
    explicit cfg_nr_phy_numerology_t(lib_nr_waveform_configure_manager_t& waveform)
        : cfg_nr_list_cursor_t(waveform), m_ul_guard_band(waveform)
    {}

    /// Puts the cursor on the first numerology of the first carrier.
    void init();

    /// Moves the cursor, and that of the guard bands; a printed line, false and no move where an index lies past its
    /// list's end.
    bool set_current_numerology_index(unsigned int carrier, unsigned int numerology);
    bool set_current_index(unsigned int carrier, unsigned int numerology)
    {
        return set_current_numerology_index(carrier, numerology);
    }

    /// The one numerology of single mode and the last enabled one of multiple mode cannot be switched off.
    bool set_enable(bool enable);
    bool get_enable() const { return _target().get_enable(); }

    lib_nr_numerology_type_t get_scs() const { return _target().get_numerolgy(); }

    /// Width in resource blocks, from 6 to what fits behind the start.
    bool set_rb_size(unsigned int rb_size);
    unsigned int get_rb_size() const { return _target().get_rb_size(); }

    /// First resource block; it leaves room for 6, and a width that no longer fits is cut.
    bool set_rb_start(unsigned int rb_start) { return _carrier().set_numerology_rb_start(_index(), rb_start); }
    unsigned int get_rb_start() const { return _target().get_rb_start(); }

    unsigned int get_k0() const { return _target().get_k0(); }

    /// The spacings that go with the carrier's bandwidth.
    std::vector<lib_nr_numerology_type_t> get_valid_numerology_list() const;

    cfg_nr_ul_guard_band_t* get_ul_guard_band();

private:
    cfg_nr_ul_guard_band_t m_ul_guard_band;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_ul_guard_band.h"
#include "phy_common/lib_nr_phy_common.h"

#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_carrier_configure_manager_t;
class lib_nr_phy_numerology_configure_manager_t;
class lib_nr_waveform_configure_manager_t;

/// Cursor over the carriers' numerologies, with one over their guard bands. Owns nothing: every call looks its target
/// up anew, and where the list has shrunk below the cursor that is its last entry. Setters return true when the stored
/// value changed.
class NR_MOD_LIB_EXPORT cfg_nr_phy_numerology_t
{
public:
    explicit cfg_nr_phy_numerology_t(lib_nr_waveform_configure_manager_t& waveform);

    /// Puts the cursor on the first numerology of the first carrier.
    void init();

    /// Moves the cursor, and that of the guard bands; a line, false and no move where an index lies past its list's
    /// end.
    bool set_current_numerology_index(unsigned int carrier, unsigned int numerology);

    /// The one numerology of single mode and the last enabled one of multiple mode cannot be switched off.
    bool set_enable(bool enable);
    bool get_enable() const;

    lib_nr_numerology_type_t get_scs() const;

    /// Width in resource blocks, from 6 to what fits behind the start.
    bool set_rb_size(unsigned int rb_size);
    unsigned int get_rb_size() const;

    /// First resource block; it leaves room for 6, and a width that no longer fits is cut.
    bool set_rb_start(unsigned int rb_start);
    unsigned int get_rb_start() const;

    unsigned int get_k0() const;

    /// The spacings that go with the carrier's bandwidth.
    std::vector<lib_nr_numerology_type_t> get_valid_numerology_list() const;

    cfg_nr_ul_guard_band_t* get_ul_guard_band();

private:
    lib_nr_carrier_configure_manager_t& _carrier();
    const lib_nr_carrier_configure_manager_t& _carrier() const;
    const lib_nr_phy_numerology_configure_manager_t& _target() const;
    unsigned int _index() const;
    void _refit_filter_mask();

    lib_nr_waveform_configure_manager_t& m_waveform;
    unsigned int m_carrier_index = 0;
    unsigned int m_numerology_index = 0;
    cfg_nr_ul_guard_band_t m_ul_guard_band;
};

} // namespace vek::nr_mod_lib

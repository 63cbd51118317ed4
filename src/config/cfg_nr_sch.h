#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

namespace vek::nr_mod_lib
{

/// Cursor over the shared channels of one direction.
class NR_MOD_LIB_EXPORT cfg_nr_sch_t : public cfg_nr_cursor_t
{
public:
    virtual ~cfg_nr_sch_t();

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    virtual bool set_current_sch_index(unsigned int carrier, unsigned int index) = 0;
    bool set_current_index(unsigned int carrier, unsigned int index) { return set_current_sch_index(carrier, index); }

    bool get_enable() const { return _target().get_enable(); }

protected:
    template <class tested_t>
    friend struct vek::test_peer_t;

    using cfg_nr_cursor_t::cfg_nr_cursor_t;
    cfg_nr_sch_t(const cfg_nr_sch_t&) = default;

    /// The channel that the cursor stands on.
    virtual lib_nr_sch_configure_manager_t& _get_sch_manager() const = 0;
    lib_nr_sch_configure_manager_t& _target() { return _get_sch_manager(); }
    const lib_nr_sch_configure_manager_t& _target() const { return _get_sch_manager(); }
};

} // namespace vek::nr_mod_lib

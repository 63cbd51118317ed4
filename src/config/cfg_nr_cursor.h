#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

/// Where a façade stands: a carrier and, in the lists that a carrier holds, an entry. It owns nothing, and every call
/// looks its target up anew, so that a façade stays valid while lists grow and shrink; where they have shrunk below the
/// cursor, the target is the last entry.
class NR_MOD_LIB_EXPORT cfg_nr_cursor_t
{
public:
    /// Puts the cursor on the first entry of the first carrier.
    void init()
    {
        m_carrier_index = 0;
        m_index = 0;
    }

protected:
    template <class tested_t>
    friend struct vek::test_peer_t;

    explicit cfg_nr_cursor_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) {}
    ~cfg_nr_cursor_t() = default;
    cfg_nr_cursor_t(const cfg_nr_cursor_t&) = default;
    cfg_nr_cursor_t& operator=(const cfg_nr_cursor_t&) = delete;

    lib_nr_carrier_configure_manager_t& _carrier() { return m_waveform.get_carrier(m_carrier_index); }
    const lib_nr_carrier_configure_manager_t& _carrier() const { return m_waveform.get_carrier(m_carrier_index); }

    /// Moves to an entry of the carrier's list of this type; false, and no move, where an index lies past its list's
    /// end.
    template <class entry_t>
    bool _move_in_list_of(unsigned int carrier, unsigned int index)
    {
        if (carrier >= m_waveform.get_carrier_number() ||
            index >= m_waveform.get_carrier(carrier).get_entry_number<entry_t>())
            return false;
        m_carrier_index = carrier;
        m_index = index;
        return true;
    }

    /// The place of the target in the carrier's list of this type, as the carrier's operations take it.
    template <class entry_t>
    unsigned int _place_in_list_of() const
    {
        const unsigned int number = _carrier().get_entry_number<entry_t>();
        return m_index < number ? m_index : number - 1;
    }

    lib_nr_waveform_configure_manager_t& m_waveform;
    unsigned int m_carrier_index = 0;
    unsigned int m_index = 0;
};

/// The cursor of a façade over a list that every carrier holds.
template <class entry_t>
class NR_MOD_LIB_EXPORT cfg_nr_list_cursor_t : public cfg_nr_cursor_t
{
public:
    /// Moves the cursor; false, and no move, where an index lies past its list's end. Each façade has a name of its own
    /// for this beside it.
    bool set_current_index(unsigned int carrier, unsigned int index)
    {
        return _move_in_list_of<entry_t>(carrier, index);
    }

protected:
    using cfg_nr_cursor_t::cfg_nr_cursor_t;
    template <class tested_t>
    friend struct vek::test_peer_t;

    entry_t& _target() { return _carrier().template get_entry<entry_t>(m_index); }
    const entry_t& _target() const { return _carrier().template get_entry<entry_t>(m_index); }
    /// The place of the target in its list, as the carrier's operations take it.
    unsigned int _index() const { return _place_in_list_of<entry_t>(); }
};

/// The cursor of a façade of which every carrier has one.
class NR_MOD_LIB_EXPORT cfg_nr_single_cursor_t : public cfg_nr_cursor_t
{
public:
    /// Puts the cursor on the first carrier.
    void init() { set_current_carrier_index(0); }
    /// Moves the cursor; a printed line, false and no move for a carrier that the waveform has not.
    bool set_current_carrier_index(unsigned int carrier);

protected:
    /// The façade's name as the line tells it; a literal.
    cfg_nr_single_cursor_t(lib_nr_waveform_configure_manager_t& waveform, const char* facade);
    ~cfg_nr_single_cursor_t() = default;
    cfg_nr_single_cursor_t(const cfg_nr_single_cursor_t&) = default;

private:
    const char* m_facade;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vek::nr_mod_lib
{

/// One guard band inside a cell, in resource blocks; `end` belongs to the band.
struct lib_nr_ul_guard_band_setting_t
{
    std::uint16_t start = 0;
    std::uint16_t size = 0;
    std::uint16_t end = 0;
};

/// Intra-cell guard bands of a numerology for shared spectrum (TS 38.214 clause 7), and the RB sets between them.
/// Edits go to a working list; the rest of the system reads the confirmed list, which `confirm_configuration` replaces.
/// Whatever a setter has touched lies between RB 1 and the last RB but one, on numerologies narrower than the default
/// band as well.
class NR_MOD_LIB_EXPORT lib_nr_ul_guard_band_configure_manager_t
{
public:
    /// RB set index to its first and last RB, both of the set.
    using rb_set_map_t = std::map<std::uint16_t, std::pair<std::uint16_t, std::uint16_t>>;

    /// Both lists empty, on 273 RBs.
    void init();

    /// Appends the band 100 to 104.
    bool add_guard_band();
    /// False for an index past the end.
    bool remove_guard_band(std::uint16_t index);
    /// Setters of one band of the working list; true where it changed, false for an index past the end. A start or a
    /// size of 0 becomes 1; both keep the band below the last RB and move its end. An end moves the size.
    bool set_guard_band_start(std::uint16_t value, std::uint16_t index);
    bool set_guard_band_size(std::uint16_t value, std::uint16_t index);
    bool set_guard_band_end(std::uint16_t value, std::uint16_t index);

    /// Getters of the working list; past the end they read the last band, and 0 where there is none.
    std::uint16_t get_guard_band_number() const;
    std::uint16_t get_guard_band_start(std::uint16_t index) const;
    std::uint16_t get_guard_band_size(std::uint16_t index) const;
    std::uint16_t get_guard_band_end(std::uint16_t index) const;

    /// Whether the bands of the working list are whole, ascending and at least one RB apart. True empties the message
    /// and fills the RB sets of the working list; false leaves an explanation in the message.
    bool check_configuration_validity(std::string& message, rb_set_map_t& rb_sets) const;
    /// Takes the working list over if it is valid, otherwise prints the explanation on the error stream.
    bool confirm_configuration();
    /// Drops the edits since the last confirmation; always true.
    bool cancal_configuration();
    /// RB sets of the confirmed list. A band that passes the last RB leaves no set behind it.
    rb_set_map_t get_rb_set_info() const;

    /// Follows the numerology's number of RBs: confirmed bands are cut or dropped at the new edge, edits are dropped.
    void set_config(unsigned int rb_number);

private:
    rb_set_map_t _generate_rb_set_info(const std::vector<lib_nr_ul_guard_band_setting_t>& list) const;
    template <class edit_t>
    bool _edit(std::uint16_t index, edit_t edit);
    lib_nr_ul_guard_band_setting_t _setting(std::uint16_t index) const;

    std::vector<lib_nr_ul_guard_band_setting_t> m_working_list;
    std::vector<lib_nr_ul_guard_band_setting_t> m_confirmed_list;
    std::uint16_t m_last_rb_index = 272;
};

} // namespace vek::nr_mod_lib

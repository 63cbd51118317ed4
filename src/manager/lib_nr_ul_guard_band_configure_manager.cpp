#include "manager/lib_nr_ul_guard_band_configure_manager.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <limits>

namespace vek::nr_mod_lib
{

namespace
{

std::uint16_t to_rb(int value) { return static_cast<std::uint16_t>(value); }

} // namespace

void lib_nr_ul_guard_band_configure_manager_t::init()
{
    m_working_list.clear();
    m_confirmed_list.clear();
    m_last_rb_index = 272;
}

bool lib_nr_ul_guard_band_configure_manager_t::add_guard_band()
{
    m_working_list.push_back({100, 5, 104});
    return true;
}

bool lib_nr_ul_guard_band_configure_manager_t::remove_guard_band(std::uint16_t index)
{
    if (index >= m_working_list.size())
        return false;
    m_working_list.erase(m_working_list.begin() + index);
    return true;
}

bool lib_nr_ul_guard_band_configure_manager_t::set_guard_band_start(std::uint16_t value, std::uint16_t index)
{
    return _edit(index, [value](lib_nr_ul_guard_band_setting_t& band, int last) {
        band.start = to_rb(std::max(1, std::min<int>(value, last - band.size)));
        band.size = to_rb(std::clamp<int>(band.size, 1, std::max(1, last - band.start)));
        band.end = to_rb(band.start + band.size - 1);
    });
}

bool lib_nr_ul_guard_band_configure_manager_t::set_guard_band_size(std::uint16_t value, std::uint16_t index)
{
    return _edit(index, [value](lib_nr_ul_guard_band_setting_t& band, int last) {
        band.size = to_rb(std::max(1, std::min<int>(value, last - band.start)));
        band.end = to_rb(band.start + band.size - 1);
    });
}

bool lib_nr_ul_guard_band_configure_manager_t::set_guard_band_end(std::uint16_t value, std::uint16_t index)
{
    return _edit(index, [value](lib_nr_ul_guard_band_setting_t& band, int last) {
        band.end = to_rb(std::max<int>(band.start, std::min<int>(value, last - 1)));
        band.size = to_rb(band.end - band.start + 1);
    });
}

std::uint16_t lib_nr_ul_guard_band_configure_manager_t::get_guard_band_number() const
{
    return to_rb(static_cast<int>(m_working_list.size()));
}

std::uint16_t lib_nr_ul_guard_band_configure_manager_t::get_guard_band_start(std::uint16_t index) const
{
    return _setting(index).start;
}

std::uint16_t lib_nr_ul_guard_band_configure_manager_t::get_guard_band_size(std::uint16_t index) const
{
    return _setting(index).size;
}

std::uint16_t lib_nr_ul_guard_band_configure_manager_t::get_guard_band_end(std::uint16_t index) const
{
    return _setting(index).end;
}

bool lib_nr_ul_guard_band_configure_manager_t::check_configuration_validity(std::string& message,
                                                                            rb_set_map_t& rb_sets) const
{
    message = "Error: Start Index of GuardBand 1 should larger than the End Index of GuardBand 0 by at least 2";
    for (std::size_t i = 0; i < m_working_list.size(); ++i) {
        const lib_nr_ul_guard_band_setting_t& band = m_working_list[i];
        if (band.start + band.size - 1 != band.end)
            return false;
        if (i + 1 < m_working_list.size() && m_working_list[i + 1].start <= band.start + band.size)
            return false;
    }
    message.clear();
    rb_sets = _generate_rb_set_info(m_working_list);
    return true;
}

bool lib_nr_ul_guard_band_configure_manager_t::confirm_configuration()
{
    std::string message;
    rb_set_map_t rb_sets;
    if (!check_configuration_validity(message, rb_sets)) {
        std::cerr << message << std::endl;
        return false;
    }
    m_confirmed_list = m_working_list;
    return true;
}

bool lib_nr_ul_guard_band_configure_manager_t::cancal_configuration()
{
    m_working_list = m_confirmed_list;
    return true;
}

lib_nr_ul_guard_band_configure_manager_t::rb_set_map_t lib_nr_ul_guard_band_configure_manager_t::get_rb_set_info() const
{
    return _generate_rb_set_info(m_confirmed_list);
}

void lib_nr_ul_guard_band_configure_manager_t::set_config(unsigned int rb_number)
{
    constexpr unsigned int k_most = std::numeric_limits<std::uint16_t>::max();
    m_last_rb_index = static_cast<std::uint16_t>(std::min(rb_number > 0 ? rb_number - 1 : 0, k_most));
    const std::uint16_t last = m_last_rb_index;
    m_confirmed_list.erase(std::remove_if(m_confirmed_list.begin(), m_confirmed_list.end(),
                                          [last](const auto& band) { return band.start >= last; }),
                           m_confirmed_list.end());
    for (lib_nr_ul_guard_band_setting_t& band : m_confirmed_list) {
        if (band.end >= last) {
            band.end = to_rb(last - 1);
            band.size = to_rb(last - band.start);
        }
    }
    m_working_list = m_confirmed_list;
}

lib_nr_ul_guard_band_configure_manager_t::rb_set_map_t lib_nr_ul_guard_band_configure_manager_t::_generate_rb_set_info(
    const std::vector<lib_nr_ul_guard_band_setting_t>& list) const
{
    rb_set_map_t rb_sets;
    int first = 0;
    const auto add_set = [&](int last) {
        if (first <= last)
            rb_sets.emplace(to_rb(static_cast<int>(rb_sets.size())), std::pair(to_rb(first), to_rb(last)));
    };
    for (const lib_nr_ul_guard_band_setting_t& band : list) {
        add_set(std::min<int>(band.start - 1, m_last_rb_index));
        first = band.end + 1;
    }
    add_set(m_last_rb_index);
    return rb_sets;
}

template <class edit_t>
bool lib_nr_ul_guard_band_configure_manager_t::_edit(std::uint16_t index, edit_t edit)
{
    if (index >= m_working_list.size())
        return false;
    lib_nr_ul_guard_band_setting_t& band = m_working_list[index];
    const lib_nr_ul_guard_band_setting_t before = band;
    // A band as it was added may lie past the edge of a narrow numerology.
    band.start = to_rb(std::max(1, std::min<int>(band.start, m_last_rb_index - 1)));
    edit(band, m_last_rb_index);
    return band.start != before.start || band.size != before.size || band.end != before.end;
}

lib_nr_ul_guard_band_setting_t lib_nr_ul_guard_band_configure_manager_t::_setting(std::uint16_t index) const
{
    if (m_working_list.empty())
        return {};
    return m_working_list[std::min<std::size_t>(index, m_working_list.size() - 1)];
}

} // namespace vek::nr_mod_lib

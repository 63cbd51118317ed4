#pragma once

#include "config/leaves/cfg_nr_leaf_rows.h"

#include <array>

namespace vek::nr_mod_lib
{

// The settings that the families of presets have in common, for the table of each.

template <class row, class x_t = typename row::facade_type>
constexpr auto k_preset_enable =
    row::template leaf<&x_t::get_enable, &x_t::set_enable>("enable", "for the host's own use; nothing follows it");

template <class row, class x_t = typename row::facade_type>
constexpr auto
    k_preset_bandwidth = row::template leaf<&x_t::get_bandwidth, &x_t::set_bandwidth, &x_t::get_valid_bandwidth_list>(
        "bandwidth", "of the carrier; spacing, duplex type and row follow");

template <class row, class x_t = typename row::facade_type>
constexpr auto k_preset_duplex_type =
    row::template leaf<&x_t::get_duplex_type, &x_t::set_duplex_type, &x_t::get_valid_duplex_type_list>(
        "duplex_type", "decides the slots");

template <class row, class x_t = typename row::facade_type>
constexpr std::array k_preset_radio_leaves = {
    row::template leaf<&x_t::get_phase_compensation_state, &x_t::set_phase_compensation_state>(
        "phase_compensation_state", "whether the waveform gets the phase terms of its radio frequency; not at 0 Hz"),
    row::template leaf<&x_t::get_radio_frequency, &x_t::set_radio_frequency>("radio_frequency",
                                                                             "of the waveform, in hertz"),
};

} // namespace vek::nr_mod_lib

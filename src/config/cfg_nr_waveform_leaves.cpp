#include "config/cfg_nr_leaf_rows.h"
#include "config/cfg_nr_leaf_tables.h"
#include "config/cfg_nr_waveform.h"

namespace vek::nr_mod_lib
{

namespace
{

using waveform_t = cfg_nr_waveform_t;
constexpr auto k_outside_tree = cfg_nr_leaf_place_t::outside_tree;

constexpr std::array k_leaves = {
    leaf<&waveform_t::get_nr_ntn, &waveform_t::set_nr_ntn>("nr_ntn", 1),
    leaf<&waveform_t::get_frame_number, &waveform_t::set_frame_number>("frame_number", 2),
    leaf<&waveform_t::get_subframes_number, &waveform_t::set_subframes_number>("subframes_number", 3),
    leaf<&waveform_t::get_mirror_spectrum, &waveform_t::set_mirror_spectrum>("mirror_spectrum", 4),
    leaf<&waveform_t::get_phase_compensation, &waveform_t::set_phase_compensation>("phase_compensation", 5),
    leaf<&waveform_t::get_radio_frequency, &waveform_t::set_radio_frequency>("radio_frequency", 6),
    leaf<&waveform_t::get_antennas_number, &waveform_t::set_antennas_number>("antennas_number", 7),
    leaf<&waveform_t::get_crest_factor_reduction_enable, &waveform_t::set_crest_factor_reduction_enable>(
        "crest_factor_reduction_enable", 8),
    leaf<&waveform_t::get_cfr_target_papr, &waveform_t::set_cfr_target_papr>("cfr_target_papr", 9),
    leaf<&waveform_t::get_cfr_max_iteration, &waveform_t::set_cfr_max_iteration>("cfr_max_iteration", 10),
    leaf<&waveform_t::get_cfr_cancel_percent, &waveform_t::set_cfr_cancel_percent>("cfr_cancel_percent", 11),
    leaf<&waveform_t::get_cfr_block_size, &waveform_t::set_cfr_block_size>("cfr_block_size", 12),
    leaf<&waveform_t::get_cfr_filter_mask_data_arr, &waveform_t::set_cfr_filter_mask_data_arr>(
        "cfr_filter_mask_data_arr", 13, k_outside_tree),
};

constexpr std::array k_figures = {
    figure<&waveform_t::get_waveform_sample_rate>("waveform_sample_rate"),
    figure<&waveform_t::get_waveform_sample_points>("waveform_sample_points"),
    figure<&waveform_t::get_waveform_length>("waveform_length"),
};

constexpr std::array k_branches = {
    list<&waveform_t::get_carrier_number, &waveform_t::get_carrier, &waveform_t::add_carrier, &waveform_t::copy_carrier,
         &waveform_t::remove_carrier>("carrier", g_cfg_nr_carrier_table),
};

} // namespace

constinit const cfg_nr_facade_table_t g_cfg_nr_waveform_table = {"cfg_nr_waveform", k_leaves, k_branches, k_figures};

} // namespace vek::nr_mod_lib

#include "config/cfg_nr_waveform.h"
#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using waveform_t = cfg_nr_waveform_t;
using row = rows_of_t<waveform_t>;

constexpr auto k_leaves = row::leaves(
    row::leaf<&waveform_t::get_nr_ntn, &waveform_t::set_nr_ntn>(
        "nr_ntn", "non-terrestrial mode; a change resets everything else, with a single carrier"),
    row::leaf<&waveform_t::get_frame_number, &waveform_t::set_frame_number>("frame_number", "frames of 10 ms, 1 to 4"),
    row::leaf<&waveform_t::get_subframes_number, &waveform_t::set_subframes_number>("subframes_number",
                                                                                    "always 10, whatever is asked for"),
    row::leaf<&waveform_t::get_mirror_spectrum, &waveform_t::set_mirror_spectrum>(
        "mirror_spectrum", "whether the finished baseband is conjugated"),
    row::leaf<&waveform_t::get_phase_compensation, &waveform_t::set_phase_compensation>(
        "phase_compensation",
        "whether symbols carry the phase terms of radio_frequency, under standard_rules of their carrier's frequency"),
    row::leaf<&waveform_t::get_radio_frequency, &waveform_t::set_radio_frequency>("radio_frequency", "whole hertz"),
    row::leaf<&waveform_t::get_antennas_number, &waveform_t::set_antennas_number>("antennas_number",
                                                                                  "always 1, whatever is asked for"),
    row::leaf<&waveform_t::get_crest_factor_reduction_enable, &waveform_t::set_crest_factor_reduction_enable>(
        "crest_factor_reduction_enable", "whether peaks of the finished baseband are cut to cfr_target_papr"),
    row::leaf<&waveform_t::get_cfr_target_papr, &waveform_t::set_cfr_target_papr>(
        "cfr_target_papr", "highest peak allowed, in dB above the mean of what is not silence, 0 to 30"),
    row::leaf<&waveform_t::get_cfr_max_iteration, &waveform_t::set_cfr_max_iteration>(
        "cfr_max_iteration", "most passes over the signal, 0 to 100"),
    row::leaf<&waveform_t::get_cfr_cancel_percent, &waveform_t::set_cfr_cancel_percent>(
        "cfr_cancel_percent", "part of the excess taken off in a pass, in percent, 0 to 100"),
    row::leaf<&waveform_t::get_cfr_block_size, &waveform_t::set_cfr_block_size>(
        "cfr_block_size", "samples worked on at a time, at most those of the waveform"),
    row::leaf<&waveform_t::get_cfr_filter_mask_data_arr, &waveform_t::set_cfr_filter_mask_data_arr>(
        "cfr_filter_mask_data_arr", "where cut peaks may spread: hertz and dB, within half the sample rate either way")
        .outside_tree(),
    row::leaf<&waveform_t::get_standard_rules, &waveform_t::set_standard_rules>(
        "standard_rules", "whether the standard's rules hold where this library's own differ, see deviations.md")
        .outside_tree());

constexpr auto k_figures = row::rows(
    row::figure<&waveform_t::get_radio_frequency_hz>("radio_frequency_hz", "radio_frequency as a preset has laid it "
                                                                           "down, with its fraction of a hertz"),
    row::figure<&waveform_t::get_waveform_sample_rate>(
        "waveform_sample_rate", "hertz; least with narrow carriers far out ahead of wide ones in the list"),
    row::figure<&waveform_t::get_waveform_sample_points>("waveform_sample_points", "samples of the whole waveform"),
    row::figure<&waveform_t::get_waveform_length>("waveform_length", "seconds"));

constexpr auto k_branches =
    row::rows(row::list<&waveform_t::get_carrier_number, &waveform_t::get_carrier, &waveform_t::add_carrier,
                        &waveform_t::copy_carrier, &waveform_t::remove_carrier>("carrier", g_cfg_nr_carrier_table,
                                                                                "carriers, summed into one waveform"));

} // namespace

constinit const cfg_nr_facade_table_t g_cfg_nr_waveform_table =
    row::table("cfg_nr_waveform", k_leaves, k_figures, k_branches);

} // namespace vek::nr_mod_lib

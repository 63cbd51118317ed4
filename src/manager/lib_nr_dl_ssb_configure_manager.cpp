#include "manager/lib_nr_dl_ssb_configure_manager.h"

#include "common/lib_common_list_parse.h"
#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <iostream>
#include <limits>

namespace vek::nr_mod_lib
{

using common_lib::lib_common_list_parse_t;

namespace
{

constexpr unsigned int k_largest_unlimited = std::numeric_limits<std::int32_t>::max();
constexpr double k_default_frequency = 1e9;

/// Resource blocks that the block leaves free. A numerology too narrow for the block leaves none.
unsigned int get_spare_rb_number(unsigned int rb_size)
{
    constexpr unsigned int needed = lib_nr_dl_ssb_configure_manager_t::k_rb_number;
    return std::max(rb_size, needed) - needed;
}

/// The highest RB offset, in resource blocks of the reference spacing.
unsigned int get_max_rb_offset(lib_nr_numerology_type_t numerology, lib_nr_channel_bw_type_t bandwidth,
                               unsigned int rb_size)
{
    if (lib_nr_phy_common_t::get_freq_range_type(bandwidth) != NR_FR1)
        std::cout << "current frequency range within FR2" << std::endl;
    const std::uint64_t reference_spacing = lib_nr_phy_common_t::get_reference_scs_hz(bandwidth);
    const std::uint64_t spacing = lib_nr_phy_common_t::get_scs_hz_value(numerology);
    const std::uint64_t max_offset = get_spare_rb_number(rb_size) * spacing / reference_spacing;
    return static_cast<unsigned int>(std::min<std::uint64_t>(max_offset, k_largest_unlimited));
}

/// The cases that a spacing allows, TS 38.213 clause 4.1.
std::vector<lib_nr_ssb_case_t> get_ssb_pattern_list(lib_nr_numerology_type_t numerology)
{
    switch (numerology) {
    case LIB_NR_SCS_15K:
        return {NR_SSB_CASE_A};
    case LIB_NR_SCS_30K:
        return {NR_SSB_CASE_B, NR_SSB_CASE_C};
    case LIB_NR_SCS_120K:
        return {NR_SSB_CASE_D};
    case LIB_NR_SCS_240K:
        return {NR_SSB_CASE_E};
    case LIB_NR_SCS_480K:
        return {NR_SSB_CASE_F};
    case LIB_NR_SCS_960K:
        return {NR_SSB_CASE_G};
    default:
        return {};
    }
}

lib_nr_lmax_t get_lmax_by_frequency(double frequency)
{
    return lib_nr_phy_common_t::is_up_to_3_ghz(frequency) ? LIB_NR_LMAX_4 : LIB_NR_LMAX_8;
}

std::string power_list_to_text(const std::vector<double>& powers)
{
    std::string text;
    for (const double power : powers) {
        std::array<char, 32> digits;
        const auto end =
            std::to_chars(digits.data(), digits.data() + digits.size(), power, std::chars_format::fixed, 2).ptr;
        if (!text.empty())
            text += ',';
        text.append(digits.data(), end);
    }
    return text;
}

} // namespace

lib_nr_dl_ssb_configure_manager_t::lib_nr_dl_ssb_configure_manager_t(
    const lib_nr_phy_numerology_configure_manager_t& numerology, lib_nr_channel_bw_type_t bandwidth)
    : m_bandwidth(bandwidth)
{
    init(numerology, bandwidth);
}

void lib_nr_dl_ssb_configure_manager_t::init(const lib_nr_phy_numerology_configure_manager_t& numerology,
                                             lib_nr_channel_bw_type_t bandwidth)
{
    const unsigned int rb_size = numerology.get_rb_size();
    set_numerology(m_numerology, rb_size);
    m_enable = false;
    if (m_numerology == LIB_NR_SCS_30K)
        m_ssb_pattern = NR_SSB_CASE_B;
    set_lmax(m_numerology, m_lmax, k_default_frequency);
    set_active_idx("0, 1, 2, 3");
    set_power_boosting("0.0,0.0,0.0,0.0");
    m_pss_power_boosting = 0.0;
    m_periodicity = LIB_NR_SSB_10MS_PERIODICITY;
    m_half_frame_idx = 0;
    set_kssb(0, m_numerology, bandwidth, rb_size);
    _reset_rb_offset(m_numerology, bandwidth, rb_size);
    if (!m_auto_cofig_mib)
        m_data_source = LIB_NR_PN9;
    m_auto_cofig_mib = true;
    m_pdcch_config_sib1 = 0;
    m_coding = true;
    m_ssb_subcarrier_offset = 0;
    m_dmrs_typea_position = 2;
    m_cell_barred = false;
    m_intra_frequency_reselection = false;
    update_by_bandwidth(numerology, bandwidth);
}

void lib_nr_dl_ssb_configure_manager_t::update_by_numerology(
    const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    if (!set_numerology(numerology.get_numerolgy(), numerology.get_rb_size())) {
        std::cout << "update_by_numerology:60khz invalid" << std::endl;
        return;
    }
    _update_after_numerology(numerology);
}

void lib_nr_dl_ssb_configure_manager_t::update_by_bandwidth(const lib_nr_phy_numerology_configure_manager_t& numerology,
                                                            lib_nr_channel_bw_type_t bandwidth)
{
    lib_nr_phy_numerology_configure_manager_t own = numerology;
    if (bandwidth == LIB_NR_CHANNEL_FR1_5M)
        own.set_numerology(LIB_NR_SCS_15K, bandwidth);

    _reset_rb_offset(own.get_numerolgy(), bandwidth, own.get_rb_size());
    set_kssb(m_kssb, own.get_numerolgy(), bandwidth, own.get_rb_size());
    m_bandwidth = bandwidth;
    update_by_numerology(own);
}

void lib_nr_dl_ssb_configure_manager_t::update_by_radio_frequency(
    const lib_nr_phy_numerology_configure_manager_t& numerology, double frequency)
{
    update_frequency_offset_hz(frequency);
    update_by_numerology(numerology);
}

void lib_nr_dl_ssb_configure_manager_t::update_frequency_offset_hz(double frequency)
{
    m_radio_frequency = frequency;
    set_lmax(m_numerology, m_lmax, frequency);
}

void lib_nr_dl_ssb_configure_manager_t::_update_after_numerology(
    const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    const lib_nr_numerology_type_t spacing = numerology.get_numerolgy();
    const unsigned int rb_size = numerology.get_rb_size();
    if (spacing == LIB_NR_SCS_60K || rb_size < k_rb_number)
        m_enable = false;
    _reset_rb_offset(spacing, m_bandwidth, rb_size);
    set_lmax(spacing, m_lmax, m_radio_frequency);
    set_kssb(m_kssb, spacing, m_bandwidth, rb_size);
}

bool lib_nr_dl_ssb_configure_manager_t::set_enable(bool enable, unsigned int rb_size)
{
    return assign(m_enable, enable && m_numerology != LIB_NR_SCS_60K && rb_size >= k_rb_number);
}

bool lib_nr_dl_ssb_configure_manager_t::set_numerology(lib_nr_numerology_type_t numerology, unsigned int rb_size)
{
    if (numerology == LIB_NR_SCS_60K) {
        m_numerology = numerology;
        m_enable = false;
        return false;
    }
    const std::vector<lib_nr_ssb_case_t> patterns = get_ssb_pattern_list(numerology);
    if (patterns.empty()) {
        std::cout << "lib_nr_dl_ssb_configure_manager_t::set_numerology invalid!" << std::endl;
        return true;
    }

    m_numerology = numerology;
    m_valid_ssb_pattern = patterns;
    m_ssb_pattern = patterns.front();
    if (rb_size < k_rb_number)
        m_enable = false;
    _reset_rb_offset(numerology, m_bandwidth, rb_size);
    return true;
}

bool lib_nr_dl_ssb_configure_manager_t::set_ssb_pattern(lib_nr_ssb_case_t pattern)
{
    if (m_numerology != LIB_NR_SCS_30K || (pattern != NR_SSB_CASE_B && pattern != NR_SSB_CASE_C))
        return false;
    return assign(m_ssb_pattern, pattern);
}

lib_nr_ssb_case_t lib_nr_dl_ssb_configure_manager_t::get_ssb_pattern(lib_nr_numerology_type_t numerology)
{
    _force_ssb_pattern(numerology);
    return m_ssb_pattern;
}

const std::vector<lib_nr_ssb_case_t>&
lib_nr_dl_ssb_configure_manager_t::get_ssb_pattern_feedback(lib_nr_numerology_type_t numerology)
{
    m_valid_ssb_pattern = get_ssb_pattern_list(numerology);
    return m_valid_ssb_pattern;
}

void lib_nr_dl_ssb_configure_manager_t::_force_ssb_pattern(lib_nr_numerology_type_t numerology)
{
    const std::vector<lib_nr_ssb_case_t> patterns = get_ssb_pattern_list(numerology);
    if (patterns.size() == 1)
        m_ssb_pattern = patterns.front();
}

bool lib_nr_dl_ssb_configure_manager_t::set_lmax(lib_nr_numerology_type_t numerology, lib_nr_lmax_t lmax,
                                                 double frequency)
{
    _force_ssb_pattern(numerology);
    lmax = m_ssb_pattern < NR_SSB_CASE_D ? get_lmax_by_frequency(frequency) : LIB_NR_LMAX_64;
    const bool changed = assign(m_lmax, lmax);
    set_active_idx("0, 1, 2, 3");
    set_power_boosting("0.0,0.0,0.0,0.0");
    return changed;
}

bool lib_nr_dl_ssb_configure_manager_t::set_active_idx(const std::string& text)
{
    const bool changed = assign_index_text(m_active_idx, m_active_idx_text, text, m_lmax);
    set_power_boosting(std::string(m_power_boosting_text));
    return changed;
}

bool lib_nr_dl_ssb_configure_manager_t::set_power_boosting(const std::string& text)
{
    std::vector<double> asked;
    lib_common_list_parse_t::string_to_float_list(text, asked);
    asked.resize(m_lmax, 0.0);

    std::vector<double> powers = m_power_boosting;
    powers.resize(m_lmax, 0.0);
    for (const int index : m_active_idx) {
        const auto i = static_cast<std::size_t>(index);
        if (i < powers.size() && !std::isnan(asked[i]))
            powers[i] = limited_power(asked[i]);
    }
    const bool changed = assign(m_power_boosting, powers);
    m_power_boosting_text = power_list_to_text(m_power_boosting);
    return changed;
}

bool lib_nr_dl_ssb_configure_manager_t::set_pss_power_boosting(double power)
{
    return assign_power(m_pss_power_boosting, power);
}

bool lib_nr_dl_ssb_configure_manager_t::set_periodicity(lib_ssb_periodicity_t periodicity)
{
    switch (periodicity) {
    case LIB_NR_SSB_5MS_PERIODICITY:
    case LIB_NR_SSB_10MS_PERIODICITY:
    case LIB_NR_SSB_20MS_PERIODICITY:
    case LIB_NR_SSB_40MS_PERIODICITY:
    case LIB_NR_SSB_80MS_PERIODICITY:
    case LIB_NR_SSB_160MS_PERIODICITY:
        break;
    default:
        return false;
    }
    const bool changed = assign(m_periodicity, periodicity);
    set_half_frame_idx(0);
    return changed;
}

bool lib_nr_dl_ssb_configure_manager_t::set_half_frame_idx(unsigned char half_frame_idx)
{
    const bool is_every_half_frame = m_periodicity == LIB_NR_SSB_5MS_PERIODICITY;
    const unsigned char one_half_frame = half_frame_idx == 0 ? 0 : 1;
    return assign(m_half_frame_idx, is_every_half_frame ? k_both_half_frames : one_half_frame);
}

bool lib_nr_dl_ssb_configure_manager_t::set_rb_offset(unsigned int rb_offset, lib_nr_numerology_type_t numerology,
                                                      lib_nr_channel_bw_type_t bandwidth, unsigned int rb_size)
{
    if (numerology == LIB_NR_SCS_60K)
        return assign(m_rb_offset, std::min(rb_offset, k_largest_unlimited));

    const unsigned int max_offset = get_max_rb_offset(numerology, bandwidth, rb_size);
    if (rb_offset < max_offset)
        return assign(m_rb_offset, rb_offset);

    const bool changed = assign(m_rb_offset, max_offset);
    std::cout << "ssb-rb_offset reach limitation ,max_rb_offset  = " << max_offset << ":\n" << std::endl;
    set_kssb(0, numerology, bandwidth, rb_size);
    return changed;
}

void lib_nr_dl_ssb_configure_manager_t::_reset_rb_offset(lib_nr_numerology_type_t numerology,
                                                         lib_nr_channel_bw_type_t bandwidth, unsigned int rb_size)
{
    set_rb_offset(get_spare_rb_number(rb_size), numerology, bandwidth, rb_size);
}

bool lib_nr_dl_ssb_configure_manager_t::set_kssb(unsigned int kssb, lib_nr_numerology_type_t numerology,
                                                 lib_nr_channel_bw_type_t bandwidth, unsigned int rb_size)
{
    // An offset beyond the limit, as 60 kHz may leave it, leaves no room.
    const auto get_room = [&] {
        const std::uint64_t max_offset = get_max_rb_offset(numerology, bandwidth, rb_size);
        return (std::max<std::uint64_t>(max_offset, m_rb_offset) - m_rb_offset) * k_subcarriers_per_rb;
    };
    // k_SSB is worth whole subcarriers of the block where it is a multiple of `step`.
    const auto limit = [&](unsigned int largest, unsigned int step) {
        const unsigned int limited = std::min(kssb, largest);
        const std::uint64_t room = get_room();
        return limited >= room ? static_cast<unsigned int>(room) : limited - limited % step;
    };

    unsigned int result = m_kssb;
    switch (numerology) {
    case LIB_NR_SCS_15K:
        result = limit(23, 1);
        break;
    case LIB_NR_SCS_30K:
        result = limit(23, 2);
        break;
    case LIB_NR_SCS_60K:
        result = std::min(kssb, k_largest_unlimited);
        break;
    case LIB_NR_SCS_120K:
        result = limit(11, 2);
        break;
    case LIB_NR_SCS_240K:
        result = limit(11, 4);
        break;
    default:
        break;
    }
    m_ssb_subcarrier_offset = result;
    return assign(m_kssb, result);
}

bool lib_nr_dl_ssb_configure_manager_t::set_coding(bool coding) { return assign(m_coding, coding); }

bool lib_nr_dl_ssb_configure_manager_t::set_auto_cofig_mib(bool auto_cofig_mib)
{
    return assign(m_auto_cofig_mib, auto_cofig_mib);
}

bool lib_nr_dl_ssb_configure_manager_t::set_data_source_custom(const std::string& text)
{
    return assign_bit_text(m_data_source_custom, m_data_source_custom_text, text);
}

bool lib_nr_dl_ssb_configure_manager_t::set_data_source(lib_nr_pn_seq_t data_source)
{
    if (m_auto_cofig_mib)
        return false;
    return assign(m_data_source, data_source);
}

lib_nr_numerology_type_t lib_nr_dl_ssb_configure_manager_t::get_subcarrier_spacing_common()
{
    m_subcarrier_spacing_common = m_numerology;
    return m_subcarrier_spacing_common;
}

bool lib_nr_dl_ssb_configure_manager_t::set_ssb_subcarrier_offset(unsigned int offset)
{
    return assign(m_ssb_subcarrier_offset, std::min(offset, 31u));
}

bool lib_nr_dl_ssb_configure_manager_t::set_dmrs_typea_position(unsigned int position)
{
    return assign(m_dmrs_typea_position, std::clamp(position, 2u, 3u));
}

bool lib_nr_dl_ssb_configure_manager_t::set_pdcch_config_sib1(unsigned int config)
{
    return assign(m_pdcch_config_sib1, std::min(config, 255u));
}

bool lib_nr_dl_ssb_configure_manager_t::set_cell_barred(bool cell_barred) { return assign(m_cell_barred, cell_barred); }

bool lib_nr_dl_ssb_configure_manager_t::set_intra_frequency_reselection(bool reselection)
{
    return assign(m_intra_frequency_reselection, reselection);
}

} // namespace vek::nr_mod_lib

#include "manager/lib_nr_ul_prach_configure_manager.h"

#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_setting.h"
#include "manager/lib_nr_ul_bwp_configure_manager.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_prach_preamble.h"

#include <algorithm>
#include <iostream>
#include <numeric>

namespace vek::nr_mod_lib
{

namespace
{

using common_t = lib_nr_phy_common_t;

constexpr double k_most_timeoffset_s = 0.001;
constexpr unsigned int k_most_preamble_index = 63;
constexpr unsigned int k_most_zone = 15;
constexpr unsigned int k_most_n_RA_slot = 15;

unsigned int last_configuration_idx(prach_config_table_type_t table) { return table == FR1_TDD ? 262 : 255; }

bool is_fr1(lib_nr_channel_bw_type_t bandwidth) { return common_t::get_freq_range_type(bandwidth) == NR_FR1; }

} // namespace

lib_nr_ul_prach_configure_manager_t::lib_nr_ul_prach_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_ul_prach_configure_manager_t::init(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    *this = lib_nr_ul_prach_configure_manager_t();
    update_by_ul_bwp(bwp);
}

void lib_nr_ul_prach_configure_manager_t::update_by_bandwidth(
    const lib_nr_phy_numerology_configure_manager_t& numerology, lib_nr_channel_bw_type_t bandwidth)
{
    const lib_nr_numerology_type_t spacing = numerology.get_numerolgy();
    _force_off_without_channels(spacing);
    const bool fr1 = is_fr1(bandwidth);
    set_configuration_table(fr1 ? FR1_FDD_SUL : FR2_TDD, spacing);
    set_lra(fr1 ? PRACH_LRA_839 : PRACH_LRA_139, spacing);
    set_prach_scs(fr1 ? PRACH_SCS_1P25K : PRACH_SCS_60K, bandwidth, spacing);
}

void lib_nr_ul_prach_configure_manager_t::update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    _force_off_without_channels(bwp.get_numerology());
    m_rb_offset = bwp.get_rb_offset();
    m_rb_num = bwp.get_rb_number();
}

bool lib_nr_ul_prach_configure_manager_t::set_enable(bool enable, lib_nr_numerology_type_t numerology)
{
    m_enable = enable;
    _force_off_without_channels(numerology);
    return false;
}

void lib_nr_ul_prach_configure_manager_t::_force_off_without_channels(lib_nr_numerology_type_t numerology)
{
    m_enable = m_enable && common_t::carries_channels(numerology);
}

bool lib_nr_ul_prach_configure_manager_t::set_power_boosting(double boosting)
{
    return assign_power(m_power_boosting, boosting);
}

bool lib_nr_ul_prach_configure_manager_t::set_timeoffset(double seconds)
{
    return assign(m_timeoffset, std::min(seconds, k_most_timeoffset_s));
}

bool lib_nr_ul_prach_configure_manager_t::set_premable_index(unsigned int index)
{
    const bool changed = assign(m_preamble_index, std::min(index, k_most_preamble_index));
    update_preamble_sequence_parameters();
    return changed;
}

bool lib_nr_ul_prach_configure_manager_t::set_frame_offset(unsigned int offset)
{
    return assign(m_frame_offset, offset);
}

bool lib_nr_ul_prach_configure_manager_t::set_subframe_index(unsigned int index)
{
    return assign(m_subframe_index, index);
}

bool lib_nr_ul_prach_configure_manager_t::set_slot_index(unsigned int index) { return assign(m_slot_index, index); }

bool lib_nr_ul_prach_configure_manager_t::set_n_RA_t(unsigned int occasion)
{
    return assign(m_n_RA_t, m_lra == PRACH_LRA_839 ? 0 : std::min(get_n_RA_slot_t() - 1, occasion));
}

bool lib_nr_ul_prach_configure_manager_t::set_n_RA_slot(unsigned int slot)
{
    common_t::check_ci_and_fr_and_duplex_mode(m_configuration_idx, m_configuration_table);
    common_t::check_aps_and_scs_and_ci(m_configuration_table, m_prach_scs, m_configuration_idx, slot);
    return assign(m_n_RA_slot, std::min(slot, k_most_n_RA_slot));
}

bool lib_nr_ul_prach_configure_manager_t::set_n_RA_f(unsigned int occasion)
{
    return assign(m_n_RA_f, std::min(offered_or_first(m_msg1_fdm, get_msg1_fdm_for_ui()) - 1u, occasion));
}

bool lib_nr_ul_prach_configure_manager_t::set_configuration_table(prach_config_table_type_t table,
                                                                  lib_nr_numerology_type_t numerology)
{
    const bool changed = assign(m_configuration_table, table);
    set_configuration_idx(m_configuration_idx, numerology);
    return changed;
}

bool lib_nr_ul_prach_configure_manager_t::set_configuration_idx(unsigned int index,
                                                                lib_nr_numerology_type_t /*numerology*/)
{
    const bool changed = assign(m_configuration_idx, std::min(index, last_configuration_idx(m_configuration_table)));
    const configuration_table_t row = _row();
    m_frame_offset = row.y.front();
    m_subframe_index = row.subframe_or_slot.front();
    m_slot_index = row.subframe_or_slot.front();
    common_t::check_ci_and_fr_and_duplex_mode(m_configuration_idx, m_configuration_table);
    common_t::check_aps_and_scs_and_ci(m_configuration_table, m_prach_scs, m_configuration_idx, m_n_RA_slot);
    const prach_format_t format = get_Format();
    _check_lra(format);
    _follow_lra();
    _check_n_RA_slot();
    common_t::check_restricted_set_and_format(m_restricted_set, format, m_zero_correlation_zone);
    update_preamble_sequence_parameters();
    return changed;
}

bool lib_nr_ul_prach_configure_manager_t::set_prach_scs(prach_scs_type_t scs, lib_nr_channel_bw_type_t bandwidth,
                                                        lib_nr_numerology_type_t numerology)
{
    const prach_scs_type_t former = m_prach_scs;
    const prach_format_t format = get_Format();
    m_prach_scs = scs;
    common_t::check_scs_and_fr(m_prach_scs, bandwidth);
    common_t::check_scs_and_format(m_prach_scs, format);
    common_t::check_aps_and_scs_and_ci(m_configuration_table, m_prach_scs, m_configuration_idx, m_n_RA_slot);
    common_t::validate_prach_and_carrier(numerology, m_prach_scs, m_lra);
    _check_n_RA_slot();
    _check_lra(format);
    common_t::validate_prach_and_carrier(numerology, m_prach_scs, m_lra);
    _follow_lra();
    return m_prach_scs != former;
}

bool lib_nr_ul_prach_configure_manager_t::set_lra(prach_lra_type_t lra, lib_nr_numerology_type_t numerology)
{
    const prach_lra_type_t former = m_lra;
    m_lra = lra;
    _check_lra(get_Format());
    common_t::validate_prach_and_carrier(numerology, m_prach_scs, m_lra);
    _follow_lra();
    return m_lra != former;
}

void lib_nr_ul_prach_configure_manager_t::_check_lra(prach_format_t format)
{
    common_t::check_lra(format, m_configuration_table, m_prach_scs, m_configuration_idx, m_n_RA_t, m_lra);
}

void lib_nr_ul_prach_configure_manager_t::_check_n_RA_slot()
{
    common_t::check_aps_and_scs_and_ci(m_configuration_table, m_prach_scs, m_configuration_idx, m_n_RA_slot);
    m_n_RA_slot = std::min(m_n_RA_slot, k_most_n_RA_slot);
}

/// The sequence index lies in the table of its length, and the logical index not below it.
void lib_nr_ul_prach_configure_manager_t::_follow_lra() { set_root_sequence_index(m_sequence_index); }

bool lib_nr_ul_prach_configure_manager_t::set_root_sequence_index(unsigned int index)
{
    const bool changed = assign(m_sequence_index, std::min(m_lra - 2u, index));
    m_logical_root_sequence_index = std::max(m_logical_root_sequence_index, m_sequence_index);
    return changed;
}

bool lib_nr_ul_prach_configure_manager_t::set_restrictedset(prach_restricted_set_type_t set)
{
    const prach_restricted_set_type_t former = m_restricted_set;
    m_restricted_set = set;
    common_t::check_restricted_set_and_format(m_restricted_set, get_Format(), m_zero_correlation_zone);
    update_preamble_sequence_parameters();
    return m_restricted_set != former;
}

bool lib_nr_ul_prach_configure_manager_t::set_zeroCorrelation_zone(unsigned int zone)
{
    const unsigned int former = m_zero_correlation_zone;
    m_zero_correlation_zone = std::min(zone, k_most_zone);
    common_t::check_restricted_set_and_format(m_restricted_set, get_Format(), m_zero_correlation_zone);
    return m_zero_correlation_zone != former;
}

bool lib_nr_ul_prach_configure_manager_t::set_n_RA_start(unsigned int start)
{
    return assign(m_n_RA_start, std::min(m_rb_num, start));
}

bool lib_nr_ul_prach_configure_manager_t::set_msg1_fdm(prach_msg1_fdm_type_t fdm)
{
    const bool changed = assign(m_msg1_fdm, fdm);
    set_n_RA_f(m_n_RA_f);
    return changed;
}

bool lib_nr_ul_prach_configure_manager_t::set_rb_num(unsigned int rb_num) { return assign(m_rb_num, rb_num); }
bool lib_nr_ul_prach_configure_manager_t::set_rb_offset(unsigned int rb_offset)
{
    return assign(m_rb_offset, rb_offset);
}

configuration_table_t lib_nr_ul_prach_configure_manager_t::_row() const
{
    configuration_table_t row;
    common_t::get_variables_from_configTable(m_configuration_table, m_configuration_idx, row, m_n_RA_t);
    return row;
}

prach_format_t lib_nr_ul_prach_configure_manager_t::get_Format() const
{
    return common_t::prach_string_map_index(_row().format.front());
}

unsigned int lib_nr_ul_prach_configure_manager_t::get_frame_period() const { return _row().x; }
unsigned int lib_nr_ul_prach_configure_manager_t::get_prach_slot_per_subframe_and_60khz() const
{
    return _row().slots_per_subframe_or_60khz_slot;
}
unsigned int lib_nr_ul_prach_configure_manager_t::get_n_RA_slot_t() const { return _row().occasions_per_slot; }
unsigned int lib_nr_ul_prach_configure_manager_t::get_first_symbol() const
{
    return m_lra == PRACH_LRA_839 ? 0 : _row().starting_symbol;
}

unsigned int lib_nr_ul_prach_configure_manager_t::get_prach_duration() const
{
    const prach_format_t format = get_Format();
    const unsigned int rows = _row().duration;
    if (is_long_prach_format(format))
        return rows;
    std::cout << "lib_nr_ul_prach_configure_manager_t::get_PRACHDuration,value from the configuration table.\n"
              << std::endl;
    return format == prach_format_C0 ? 2 * rows : rows;
}

int lib_nr_ul_prach_configure_manager_t::get_ncs() const
{
    return common_t::get_prach_ncs(get_Format(), m_lra, m_restricted_set, m_zero_correlation_zone);
}

unsigned int lib_nr_ul_prach_configure_manager_t::get_sequence_number(prach_lra_type_t lra, unsigned int index)
{
    switch (lra) {
    case PRACH_LRA_139:
    case PRACH_LRA_571:
    case PRACH_LRA_839:
    case PRACH_LRA_1151:
        m_root_sequence_u = common_t::get_prach_root(lra, std::min(index, lra - 2u));
        break;
    default:
        std::cout << "get_sequence_number error." << std::endl;
    }
    return m_root_sequence_u;
}

bool lib_nr_ul_prach_configure_manager_t::update_preamble_sequence_parameters()
{
    const prach_preamble_t preamble = lib_nr_prach_preamble_t::get_preamble(
        {get_Format(), m_lra, m_restricted_set, m_zero_correlation_zone, m_sequence_index, m_preamble_index});
    m_logical_root_sequence_index = preamble.logical_index;
    m_root_sequence_u = preamble.u;
    return true;
}

std::vector<prach_config_table_type_t>
lib_nr_ul_prach_configure_manager_t::get_config_table_for_ui(lib_nr_channel_bw_type_t bandwidth)
{
    if (is_fr1(bandwidth))
        return {FR1_FDD_SUL, FR1_TDD};
    return {FR2_TDD};
}

std::vector<prach_scs_type_t>
lib_nr_ul_prach_configure_manager_t::get_prach_scs_for_ui(prach_format_t format, lib_nr_channel_bw_type_t bandwidth)
{
    const bool is_short = !is_long_prach_format(format) && format <= prach_format_C2;
    if (is_fr1(bandwidth)) {
        if (is_short)
            return {PRACH_SCS_15K, PRACH_SCS_30K};
        if (format == prach_format_3)
            return {PRACH_SCS_5K};
        if (!is_long_prach_format(format))
            std::cout << "format error！get_prach_scs_for_ui is default value!!." << std::endl;
        return {PRACH_SCS_1P25K};
    }
    if (is_short)
        return {PRACH_SCS_60K, PRACH_SCS_120K, PRACH_SCS_480K, PRACH_SCS_960K};
    std::cout << "format is (0,1,2,3) or (invalid),get_prach_scs_for_ui is default value!!." << std::endl;
    return {PRACH_SCS_1P25K};
}

std::vector<prach_msg1_fdm_type_t> lib_nr_ul_prach_configure_manager_t::get_msg1_fdm_for_ui()
{
    return {Msg1_FDM1, Msg1_FDM2, Msg1_FDM4, Msg1_FDM8};
}

std::vector<prach_lra_type_t> lib_nr_ul_prach_configure_manager_t::get_lra_for_ui(prach_format_t format,
                                                                                  prach_scs_type_t scs)
{
    if (is_long_prach_format(format))
        return {PRACH_LRA_839};
    switch (scs) {
    case PRACH_SCS_15K:
        return {PRACH_LRA_139, PRACH_LRA_1151};
    case PRACH_SCS_30K:
    case PRACH_SCS_480K:
        return {PRACH_LRA_139, PRACH_LRA_571};
    case PRACH_SCS_60K:
    case PRACH_SCS_960K:
        return {PRACH_LRA_139};
    case PRACH_SCS_120K:
        return {PRACH_LRA_139, PRACH_LRA_571, PRACH_LRA_1151};
    default:
        std::cout << "default format and LRA.\n" << std::endl;
        return {PRACH_LRA_839};
    }
}

std::vector<unsigned int> lib_nr_ul_prach_configure_manager_t::get_n_RA_slot_for_ui(prach_scs_type_t scs)
{
    switch (scs) {
    case PRACH_SCS_1P25K:
    case PRACH_SCS_5K:
    case PRACH_SCS_15K:
    case PRACH_SCS_60K:
        return {0};
    case PRACH_SCS_30K:
    case PRACH_SCS_120K:
        return {0, 1};
    case PRACH_SCS_480K:
        return {3, 7};
    case PRACH_SCS_960K:
        return {7, 15};
    }
    std::cout << "get_n_RA_slot_for_ui,unvalid prach scs！\n" << std::endl;
    return {};
}

std::vector<unsigned int> lib_nr_ul_prach_configure_manager_t::get_frame_offset_for_ui() const { return _row().y; }
std::vector<unsigned int> lib_nr_ul_prach_configure_manager_t::get_subframe_index_for_ui() const
{
    return _row().subframe_or_slot;
}
std::vector<unsigned int> lib_nr_ul_prach_configure_manager_t::get_slot_index_for_ui() const
{
    return _row().subframe_or_slot;
}

std::vector<unsigned int> lib_nr_ul_prach_configure_manager_t::get_n_RA_t_for_ui() const
{
    std::vector<unsigned int> occasions(m_lra == PRACH_LRA_839 ? 1 : get_n_RA_slot_t());
    std::iota(occasions.begin(), occasions.end(), 0u);
    return occasions;
}

} // namespace vek::nr_mod_lib

#include "manager/lib_nr_ul_pucch_configure_manager.h"

#include "common/lib_common_list_parse.h"
#include "manager/lib_nr_setting.h"
#include "manager/lib_nr_ul_bwp_configure_manager.h"
#include "phy_common/lib_nr_interlace.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_pn_payload.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace vek::nr_mod_lib
{

namespace
{

constexpr double k_power_step = 1e-12;
constexpr unsigned int k_symbol_room = 14; // with either prefix
constexpr unsigned int k_max_cyclic_shift = 11;
constexpr int k_max_hopping_id = 1023;
constexpr int k_max_scrambling_id = 1023;
constexpr int k_max_scrambling_id0 = 65535;
constexpr unsigned int k_max_n_rnti = 65535;
constexpr unsigned int k_max_repetition = 8;

struct format_limits_t
{
    unsigned int min_symbol_num;
    std::array<unsigned int, 2> max_symbol_num; // normal prefix, extended prefix
    std::array<unsigned int, 2> max_first_symbol;
    unsigned int max_rb_num;
    unsigned int min_payload_size;
    unsigned int max_payload_size;
};

// Formats 0 to 4; TS 38.213 clause 9.2.1.
constexpr std::array<format_limits_t, 5> k_limits = {{
    {1, {2, 2}, {13, 11}, 1, 1, 2},
    {4, {14, 12}, {10, 8}, 1, 1, 2},
    {1, {2, 2}, {13, 11}, 16, 3, 2026},
    {4, {14, 12}, {10, 8}, 16, 3, 2026},
    {4, {14, 12}, {10, 8}, 1, 3, 2026},
}};

unsigned int limit_of(const std::array<unsigned int, 2>& limits, lib_nr_cyclic_prefix_type_t cp_type)
{
    return limits[cp_type == LIB_NR_EXTEND_CP ? 1 : 0];
}

/// Resource blocks of a BWP behind the first `used`; a BWP that was moved may have become narrower than these.
unsigned int room_behind(unsigned int used, unsigned int bwp_rb_number)
{
    return bwp_rb_number > used ? bwp_rb_number - used : 0;
}

/// Steps too small to be heard are no change.
bool assign_power_step(double& field, double power)
{
    return std::abs(limited_power(power) - field) > k_power_step && assign_power(field, power);
}

/// An identifier, or -1 for that of the cell.
bool assign_id(int& field, int id, int highest) { return assign(field, std::clamp(id, -1, highest)); }

bool assign_user_bits(lib_nr_ul_pucch_payload_t& payload, const std::string& text)
{
    return assign_bit_text(payload.user_bits, payload.user_bits_text, text);
}

bool has_sequence_alone(lib_nr_ul_pucch_format_t format) { return format <= LIB_NR_UL_PUCCH_FORMAT_1; }

} // namespace

lib_nr_ul_pucch_configure_manager_t::lib_nr_ul_pucch_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_ul_pucch_configure_manager_t::init(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    m_name = "UCI1";
    m_power = 0.0;
    m_pucch_interlace0 = LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_10;
    m_pucch_interlace1 = LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_10;
    m_hopping_id = 0;
    m_pucch_group_hopping = LIB_NR_UL_GROUP_HOPPING_NEITHER;
    m_initial_cyclic_shift = 0;
    m_scrambling_id = 0;
    m_n_rnti = 0;
    m_scrambling_id0 = -1;
    m_intra_slot_frequency_hopping = false;
    m_inter_slot_frequency_hopping = false;
    m_number_of_slots_for_pucch_repetition = 1;
    m_occ_index = 0;
    m_occ_length =
        m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_4 ? LIB_NR_UL_PUCCH_OCC_LENGTH_2 : LIB_NR_UL_PUCCH_OCC_LENGTH_1;
    m_pi_2_bpsk = false;
    m_additional_dmrs = false;
    m_dmrs_power = 0.0;
    m_dmrs_uplink_transform_precoding_pucch = false;
    if (m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_0)
        m_uci_format = LIB_NR_UL_UCI_SR_AND_HARQ_ACK;
    else if (m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_1)
        m_uci_format = LIB_NR_UL_UCI_HARQ_ACK_ONLY;
    m_sr_configuration = m_uci_format == LIB_NR_UL_UCI_SR_ONLY ? LIB_NR_UL_SR_POSITIVE : LIB_NR_UL_SR_NEGATIVE;
    m_scrambling_state = true;
    m_channel_coding = true;
    m_uci_content = false;
    m_max_code_rate = LIB_NR_UL_PUCCH_MAX_CODE_RATE_80;
    m_sr = m_csi1 = m_csi2 = lib_nr_ul_pucch_payload_t{};
    m_payload = {true, LIB_NR_PN9_ITU, has_sequence_alone(m_pucch_format) ? 2U : 3U, {1}, "1"};
    _updata_uci_bit_per_slot();
    updata_param_when_bwp_change(bwp);
}

void lib_nr_ul_pucch_configure_manager_t::updata_param_when_bwp_change(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    const lib_nr_numerology_type_t numerology = bwp.get_numerology();
    const unsigned int rb_number = bwp.get_rb_number();
    if (!lib_nr_phy_common_t::carries_channels(numerology))
        m_enable = false;
    m_rb_set_index = std::min(m_rb_set_index, rb_number - 1);
    m_bwp_id = bwp.get_bwp_id();
    set_allocated_slots(get_allocated_slots_feedback(), numerology);
    m_rb_offset = std::min(m_rb_offset, rb_number - 1);
    _limit_rb_num(m_rb_num, rb_number);
    set_first_symbol(m_first_symbol, bwp.get_cp_type());
    if (get_interlace_number(numerology) == 0)
        m_use_interlace_pucch = false;
    set_interlace0(m_interlace0, numerology);
    set_interlace1(m_interlace1, numerology);
}

bool lib_nr_ul_pucch_configure_manager_t::set_name(const std::string& name)
{
    m_name = name;
    return true;
}

bool lib_nr_ul_pucch_configure_manager_t::set_enable(bool enable, lib_nr_numerology_type_t bwp_numerology)
{
    return lib_nr_phy_common_t::carries_channels(bwp_numerology) && assign(m_enable, enable);
}

bool lib_nr_ul_pucch_configure_manager_t::set_power(double power) { return assign_power_step(m_power, power); }

bool lib_nr_ul_pucch_configure_manager_t::set_pucch_format(lib_nr_ul_pucch_format_t format, unsigned int bwp_rb_number,
                                                           lib_nr_cyclic_prefix_type_t bwp_cp_type)
{
    if (!assign(m_pucch_format, std::min(format, LIB_NR_UL_PUCCH_FORMAT_4)))
        return false;
    const format_limits_t& limits = k_limits[m_pucch_format];
    if (m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_4)
        m_use_interlace_pucch = false;
    _limit_rb_num(m_rb_num, bwp_rb_number);
    m_first_symbol = std::min(m_first_symbol, limit_of(limits.max_first_symbol, bwp_cp_type));
    m_symbol_num = _limited_symbol_num(m_symbol_num, bwp_cp_type);
    _end_hopping_of_one_symbol();
    if (assign(m_payload.size, std::clamp(m_payload.size, limits.min_payload_size, limits.max_payload_size)))
        _updata_uci_bit_per_slot();
    if (m_pucch_format != LIB_NR_UL_PUCCH_FORMAT_1)
        m_inter_slot_frequency_hopping = false;
    if (m_pucch_format != LIB_NR_UL_PUCCH_FORMAT_0)
        _limit_occ_index(m_occ_index);
    if (m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_4)
        set_occ_length(m_occ_length);
    return true;
}

bool lib_nr_ul_pucch_configure_manager_t::set_allocated_slots(const std::string& text,
                                                              lib_nr_numerology_type_t bwp_numerology)
{
    using common_lib::lib_common_list_parse_t;
    const auto last = static_cast<int>(lib_nr_phy_common_t::get_slot_in_frame(bwp_numerology)) - 1;
    std::vector<unsigned int> slots;
    std::string stored_text;
    if (!lib_common_list_parse_t::string_to_index_list_in_range(text, slots, stored_text, 0, last) ||
        !assign(m_allocated_slots, slots))
        return false;
    _updata_uci_bit_per_slot();
    return true;
}

std::string lib_nr_ul_pucch_configure_manager_t::get_allocated_slots_feedback() const
{
    return common_lib::lib_common_list_parse_t::index_list_to_string(m_allocated_slots);
}

bool lib_nr_ul_pucch_configure_manager_t::set_first_symbol(unsigned int first_symbol,
                                                           lib_nr_cyclic_prefix_type_t bwp_cp_type)
{
    const unsigned int highest = limit_of(k_limits[m_pucch_format].max_first_symbol, bwp_cp_type);
    if (!assign(m_first_symbol, std::min(first_symbol, highest)))
        return false;
    m_symbol_num = _limited_symbol_num(m_symbol_num, bwp_cp_type);
    _end_hopping_of_one_symbol();
    return true;
}

bool lib_nr_ul_pucch_configure_manager_t::set_symbol_num(unsigned int symbol_num,
                                                         lib_nr_cyclic_prefix_type_t bwp_cp_type)
{
    const bool changed = assign(m_symbol_num, _limited_symbol_num(symbol_num, bwp_cp_type));
    return _end_hopping_of_one_symbol() || changed;
}

bool lib_nr_ul_pucch_configure_manager_t::set_bwp_id(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    if (bwp.get_bwp_id() == m_bwp_id)
        return false;
    updata_param_when_bwp_change(bwp);
    return true;
}

bool lib_nr_ul_pucch_configure_manager_t::set_use_interlace_pucch(bool use_interlace,
                                                                  lib_nr_numerology_type_t bwp_numerology)
{
    const bool has_interlaces = m_pucch_format != LIB_NR_UL_PUCCH_FORMAT_4 && get_interlace_number(bwp_numerology) > 0;
    bool changed = assign(m_use_interlace_pucch, use_interlace && has_interlaces);
    if (m_use_interlace_pucch) {
        changed |= assign(m_intra_slot_frequency_hopping, false);
        changed |= assign(m_inter_slot_frequency_hopping, false);
    }
    return changed;
}

bool lib_nr_ul_pucch_configure_manager_t::set_rb_offset(unsigned int rb_offset, unsigned int bwp_rb_number)
{
    if (!assign(m_rb_offset, std::min(rb_offset, bwp_rb_number - 1)))
        return false;
    _limit_rb_num(m_rb_num, bwp_rb_number);
    return true;
}

bool lib_nr_ul_pucch_configure_manager_t::set_rb_num(unsigned int rb_num, unsigned int bwp_rb_number)
{
    return _limit_rb_num(rb_num, bwp_rb_number);
}

bool lib_nr_ul_pucch_configure_manager_t::set_rb_set_index(unsigned int index, unsigned int rb_set_number)
{
    return assign(m_rb_set_index, rb_set_number == 0 ? 0 : std::min(index, rb_set_number - 1));
}

bool lib_nr_ul_pucch_configure_manager_t::set_interlace0(unsigned int interlace,
                                                         lib_nr_numerology_type_t bwp_numerology)
{
    const unsigned int number = get_interlace_number(bwp_numerology);
    return number > 0 && assign(m_interlace0, std::min(interlace, number - 1));
}

bool lib_nr_ul_pucch_configure_manager_t::set_pucch_interlace0(lib_nr_ul_pucch_interlace_rb_num_t rb_num)
{
    return assign(m_pucch_interlace0, rb_num);
}

bool lib_nr_ul_pucch_configure_manager_t::set_interlace1(int interlace, lib_nr_numerology_type_t bwp_numerology)
{
    const auto number = static_cast<int>(get_interlace_number(bwp_numerology));
    return number > 0 && assign(m_interlace1, std::clamp(interlace, -1, number - 1));
}

bool lib_nr_ul_pucch_configure_manager_t::set_pucch_interlace1(lib_nr_ul_pucch_interlace_rb_num_t rb_num)
{
    return assign(m_pucch_interlace1, rb_num);
}

bool lib_nr_ul_pucch_configure_manager_t::set_hopping_id(int hopping_id)
{
    return assign_id(m_hopping_id, hopping_id, k_max_hopping_id);
}

bool lib_nr_ul_pucch_configure_manager_t::set_pucch_group_hopping(lib_nr_ul_group_hopping_t hopping)
{
    return assign(m_pucch_group_hopping, std::min(hopping, LIB_NR_UL_GROUP_HOPPING_DISABLED));
}

bool lib_nr_ul_pucch_configure_manager_t::set_initial_cyclic_shift(unsigned int shift)
{
    return assign(m_initial_cyclic_shift, std::min(shift, k_max_cyclic_shift));
}

bool lib_nr_ul_pucch_configure_manager_t::set_scrambling_id(int scrambling_id)
{
    return assign_id(m_scrambling_id, scrambling_id, k_max_scrambling_id);
}

bool lib_nr_ul_pucch_configure_manager_t::set_n_rnti(unsigned int n_rnti)
{
    return assign(m_n_rnti, std::min(n_rnti, k_max_n_rnti));
}

bool lib_nr_ul_pucch_configure_manager_t::set_scrambling_id0(int scrambling_id)
{
    return assign_id(m_scrambling_id0, scrambling_id, k_max_scrambling_id0);
}

bool lib_nr_ul_pucch_configure_manager_t::set_intra_slot_frequency_hopping(bool hopping)
{
    if (!assign(m_intra_slot_frequency_hopping, hopping))
        return false;
    if (hopping)
        m_inter_slot_frequency_hopping = false;
    return true;
}

bool lib_nr_ul_pucch_configure_manager_t::set_inter_slot_frequency_hopping(bool hopping)
{
    const bool can_hop = m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_1 && m_allocated_slots.size() > 1;
    if (!assign(m_inter_slot_frequency_hopping, hopping && can_hop))
        return false;
    if (m_inter_slot_frequency_hopping)
        m_intra_slot_frequency_hopping = false;
    return true;
}

bool lib_nr_ul_pucch_configure_manager_t::set_number_of_slots_for_pucch_repetition(unsigned int number)
{
    const auto slots = static_cast<unsigned int>(std::min<std::size_t>(m_allocated_slots.size(), k_max_repetition));
    return assign(m_number_of_slots_for_pucch_repetition, std::clamp(number, 1U, slots));
}

bool lib_nr_ul_pucch_configure_manager_t::set_second_hop_prb(unsigned int prb, unsigned int bwp_rb_number)
{
    return assign(m_second_hop_prb, std::min(prb, room_behind(m_rb_num, bwp_rb_number)));
}

bool lib_nr_ul_pucch_configure_manager_t::set_occ_index(unsigned int index) { return _limit_occ_index(index); }

bool lib_nr_ul_pucch_configure_manager_t::set_occ_length(lib_nr_ul_pucch_occ_length_t length)
{
    const auto shortest =
        m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_4 ? LIB_NR_UL_PUCCH_OCC_LENGTH_2 : LIB_NR_UL_PUCCH_OCC_LENGTH_1;
    const bool changed = assign(m_occ_length, std::clamp(length, shortest, LIB_NR_UL_PUCCH_OCC_LENGTH_4));
    return _limit_occ_index(m_occ_index) || changed;
}

bool lib_nr_ul_pucch_configure_manager_t::set_pi_2_bpsk(bool pi_2_bpsk) { return assign(m_pi_2_bpsk, pi_2_bpsk); }

bool lib_nr_ul_pucch_configure_manager_t::set_additional_dmrs(bool additional_dmrs)
{
    return assign(m_additional_dmrs, additional_dmrs);
}

bool lib_nr_ul_pucch_configure_manager_t::set_dmrs_power(double power)
{
    return assign_power_step(m_dmrs_power, power);
}

bool lib_nr_ul_pucch_configure_manager_t::set_dmrs_uplink_transform_precoding_pucch(bool precoding)
{
    return assign(m_dmrs_uplink_transform_precoding_pucch, precoding);
}

bool lib_nr_ul_pucch_configure_manager_t::set_uci_format(lib_nr_ul_uci_content_t content)
{
    if (!has_sequence_alone(m_pucch_format))
        return false;
    const auto first =
        m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_0 ? LIB_NR_UL_UCI_SR_AND_HARQ_ACK : LIB_NR_UL_UCI_HARQ_ACK_ONLY;
    const bool changed = assign(m_uci_format, std::clamp(content, first, LIB_NR_UL_UCI_SR_ONLY));
    return set_sr_configuration(m_sr_configuration) || changed;
}

std::vector<lib_nr_ul_uci_content_t> lib_nr_ul_pucch_configure_manager_t::get_uci_format_range() const
{
    if (m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_0)
        return {LIB_NR_UL_UCI_SR_AND_HARQ_ACK, LIB_NR_UL_UCI_HARQ_ACK_ONLY, LIB_NR_UL_UCI_SR_ONLY};
    return {LIB_NR_UL_UCI_HARQ_ACK_ONLY, LIB_NR_UL_UCI_SR_ONLY};
}

bool lib_nr_ul_pucch_configure_manager_t::set_sr_configuration(lib_nr_ul_sr_configuration_t sr)
{
    const bool is_positive = sr != LIB_NR_UL_SR_NEGATIVE || m_uci_format == LIB_NR_UL_UCI_SR_ONLY;
    return assign(m_sr_configuration, is_positive ? LIB_NR_UL_SR_POSITIVE : LIB_NR_UL_SR_NEGATIVE);
}

bool lib_nr_ul_pucch_configure_manager_t::set_scrambling_state(bool scrambling)
{
    return assign(m_scrambling_state, scrambling);
}

bool lib_nr_ul_pucch_configure_manager_t::set_channel_coding(bool coding)
{
    const bool changed = assign(m_channel_coding, coding);
    return (!coding && assign(m_uci_content, false)) || changed;
}

bool lib_nr_ul_pucch_configure_manager_t::set_uci_content(bool uci_content)
{
    return assign(m_uci_content, uci_content);
}

bool lib_nr_ul_pucch_configure_manager_t::set_max_code_rate(lib_nr_ul_pucch_max_code_rate_x100_t rate)
{
    return assign(m_max_code_rate, std::clamp(rate, LIB_NR_UL_PUCCH_MAX_CODE_RATE_8, LIB_NR_UL_PUCCH_MAX_CODE_RATE_80));
}

// UCI fields

bool lib_nr_ul_pucch_configure_manager_t::set_harq_ack_enable(bool enable) { return assign(m_harq_ack.enable, enable); }

bool lib_nr_ul_pucch_configure_manager_t::set_harq_ack_payload_data(lib_nr_pn_seq_t data)
{
    return assign(m_harq_ack.data, data);
}

bool lib_nr_ul_pucch_configure_manager_t::set_harq_ack_payload_size(unsigned int size)
{
    return assign(m_harq_ack.size, size);
}

bool lib_nr_ul_pucch_configure_manager_t::set_harq_ack_user_bits(const std::string& text)
{
    return assign_user_bits(m_harq_ack, text);
}

bool lib_nr_ul_pucch_configure_manager_t::set_sr_enable(bool enable) { return assign(m_sr.enable, enable); }

bool lib_nr_ul_pucch_configure_manager_t::set_sr_payload_data(lib_nr_pn_seq_t data) { return assign(m_sr.data, data); }

bool lib_nr_ul_pucch_configure_manager_t::set_sr_payload_size(unsigned int size) { return assign(m_sr.size, size); }

bool lib_nr_ul_pucch_configure_manager_t::set_sr_user_bits(const std::string& text)
{
    return assign_user_bits(m_sr, text);
}

bool lib_nr_ul_pucch_configure_manager_t::set_csi1_enable(bool enable) { return assign(m_csi1.enable, enable); }

bool lib_nr_ul_pucch_configure_manager_t::set_csi1_payload_data(lib_nr_pn_seq_t data)
{
    return assign(m_csi1.data, data);
}

bool lib_nr_ul_pucch_configure_manager_t::set_csi1_payload_size(unsigned int size) { return assign(m_csi1.size, size); }

bool lib_nr_ul_pucch_configure_manager_t::set_csi1_user_bits(const std::string& text)
{
    return assign_user_bits(m_csi1, text);
}

bool lib_nr_ul_pucch_configure_manager_t::set_csi2_enable(bool enable) { return assign(m_csi2.enable, enable); }

bool lib_nr_ul_pucch_configure_manager_t::set_csi2_payload_data(lib_nr_pn_seq_t data)
{
    return assign(m_csi2.data, data);
}

bool lib_nr_ul_pucch_configure_manager_t::set_csi2_payload_size(unsigned int size) { return assign(m_csi2.size, size); }

bool lib_nr_ul_pucch_configure_manager_t::set_csi2_user_bits(const std::string& text)
{
    return assign_user_bits(m_csi2, text);
}

bool lib_nr_ul_pucch_configure_manager_t::set_payload_data(lib_nr_pn_seq_t data)
{
    const bool changed = assign(m_payload.data, std::min(data, LIB_NR_USER_CFG));
    _updata_uci_bit_per_slot();
    return changed;
}

bool lib_nr_ul_pucch_configure_manager_t::set_payload_size(unsigned int size)
{
    const format_limits_t& limits = k_limits[m_pucch_format];
    const bool changed = assign(m_payload.size, std::clamp(size, limits.min_payload_size, limits.max_payload_size));
    _updata_uci_bit_per_slot();
    return changed;
}

bool lib_nr_ul_pucch_configure_manager_t::set_payload_user_bits(const std::string& text)
{
    const bool changed = assign_user_bits(m_payload, text);
    _updata_uci_bit_per_slot();
    return changed;
}

// Rules between settings

/// The number of symbols that the format and the room behind the first symbol allow.
unsigned int lib_nr_ul_pucch_configure_manager_t::_limited_symbol_num(unsigned int symbol_num,
                                                                      lib_nr_cyclic_prefix_type_t cp_type) const
{
    const format_limits_t& limits = k_limits[m_pucch_format];
    const unsigned int most = std::min(limit_of(limits.max_symbol_num, cp_type), k_symbol_room - m_first_symbol);
    return std::clamp(symbol_num, limits.min_symbol_num, most);
}

bool lib_nr_ul_pucch_configure_manager_t::_end_hopping_of_one_symbol()
{
    return m_symbol_num == 1 && assign(m_intra_slot_frequency_hopping, false);
}

/// Keeps the resource blocks of both hops within the BWP and the format's most.
bool lib_nr_ul_pucch_configure_manager_t::_limit_rb_num(unsigned int rb_num, unsigned int bwp_rb_number)
{
    const unsigned int most = std::min(k_limits[m_pucch_format].max_rb_num, room_behind(m_rb_offset, bwp_rb_number));
    const bool changed = assign(m_rb_num, std::max(1U, std::min(rb_num, most)));
    return set_second_hop_prb(m_second_hop_prb, bwp_rb_number) || changed;
}

/// Format 1 spreads over its data symbols of a hop, TS 38.211 Table 6.3.2.4.1-1; the others over the OCC length.
bool lib_nr_ul_pucch_configure_manager_t::_limit_occ_index(unsigned int index)
{
    unsigned int length = m_occ_length;
    if (m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_1)
        length = m_symbol_num / (m_intra_slot_frequency_hopping ? 4 : 2);
    return assign(m_occ_index, std::min(index, length - 1));
}

/// The bits of the slots are one stream; a repetition of format 1 (TS 38.213 clause 9.2.6) sends those of one slot in a
/// run of slots.
void lib_nr_ul_pucch_configure_manager_t::_updata_uci_bit_per_slot()
{
    if (!has_sequence_alone(m_pucch_format))
        return;
    m_uci_bits_per_slot.resize(m_allocated_slots.size());
    lib_nr_pn_payload_t stream(m_payload.data, m_payload.user_bits);
    for (std::size_t i = 0; i < m_uci_bits_per_slot.size(); ++i)
        stream.generate_repeated(m_payload.size, std::uint64_t{m_payload.size} * i, m_uci_bits_per_slot[i]);
    if (m_pucch_format == LIB_NR_UL_PUCCH_FORMAT_1)
        for (std::size_t i = m_uci_bits_per_slot.size(); i-- > 0;)
            m_uci_bits_per_slot[i] = m_uci_bits_per_slot[i / m_number_of_slots_for_pucch_repetition];
}

} // namespace vek::nr_mod_lib

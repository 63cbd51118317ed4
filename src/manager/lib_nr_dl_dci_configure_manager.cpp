#include "manager/lib_nr_dl_dci_configure_manager.h"

#include "common/lib_common_list_parse.h"
#include "manager/lib_nr_dl_bwp_configure_manager.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_coresets_in_bwp = 3;
constexpr unsigned int k_highest_id = 65535;
// Of a CCE, 6 REGs of 9 QPSK symbols each.
constexpr unsigned int k_bits_in_cce = 108;
constexpr unsigned int k_crc_bits = 24;
constexpr unsigned int k_most_data_bits = 488;

std::ptrdiff_t count_groups(const std::vector<int>& bitmap) { return std::count(bitmap.begin(), bitmap.end(), 1); }

lib_nr_dl_dci_aggregation_level_t limit_level(lib_nr_dl_dci_aggregation_level_t level, std::ptrdiff_t groups)
{
    if (groups >= 16 || level == LIB_NR_DCI_AGGREGATION_LEVEL_1)
        return level;
    if (groups == 1)
        return LIB_NR_DCI_AGGREGATION_LEVEL_1;
    if (groups < 4 || level == LIB_NR_DCI_AGGREGATION_LEVEL_2)
        return LIB_NR_DCI_AGGREGATION_LEVEL_2;
    return LIB_NR_DCI_AGGREGATION_LEVEL_4;
}

} // namespace

lib_nr_dl_dci_configure_manager_t::lib_nr_dl_dci_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_dl_dci_configure_manager_t::init(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    m_pwr_boosting = 0.0;
    m_dmrs_pwr_boosting = 0.0;
    m_scrambling_id = -1;
    m_rnti = 0;
    m_crnti = 0;
    m_bwp_id = bwp.get_bwp_id();
    m_coreset_id = bwp.get_first_coreset_index();
    m_coding = false;
    m_allocated_candidate = 0;
    m_candidates_num = LIB_NR_DCI_CANDIDATE_1;
    m_data_block_size = 20;
    m_data_source = LIB_NR_PN9_ITU;
    m_data_source_custom = {0};
    m_data_source_custom_text.assign(1, '0');
    update_by_dl_bwp(bwp);
}

void lib_nr_dl_dci_configure_manager_t::update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    set_enable(m_enable, bwp.get_numerology());
    m_first_coreset_index = bwp.get_first_coreset_index();
    set_coreset_id(bwp.check_coreset_index_valid(m_coreset_id) ? m_coreset_id : m_first_coreset_index);
    set_slot_allocation(std::string(m_slot_allocation_text), bwp.get_numerology());
    const lib_nr_dl_coreset_configure_manager_t& coreset = bwp.get_coreset(m_coreset_id);
    set_start_symbol_within_slot(
        m_start_symbol, lib_nr_phy_common_t::get_symbol_number_in_slot(bwp.get_numerology(), bwp.get_cp_type()),
        coreset.get_duration());
    set_aggregation_level(m_aggregation_level, coreset.get_fd_resources_for_lib());
}

bool lib_nr_dl_dci_configure_manager_t::set_enable(bool enable, lib_nr_numerology_type_t bwp_numerology)
{
    return assign(m_enable, enable && lib_nr_phy_common_t::carries_channels(bwp_numerology));
}

bool lib_nr_dl_dci_configure_manager_t::set_pwr_boosting(double power) { return assign_power(m_pwr_boosting, power); }

bool lib_nr_dl_dci_configure_manager_t::set_dmrs_pwr_boosting(double power)
{
    return assign_power(m_dmrs_pwr_boosting, power);
}

bool lib_nr_dl_dci_configure_manager_t::set_scrambling_id(int scrambling_id)
{
    return assign(m_scrambling_id, std::clamp(scrambling_id, -1, static_cast<int>(k_highest_id)));
}

bool lib_nr_dl_dci_configure_manager_t::set_rnti(unsigned int rnti)
{
    return assign(m_rnti, std::min(rnti, k_highest_id));
}

bool lib_nr_dl_dci_configure_manager_t::set_crnti(unsigned int crnti)
{
    return assign(m_crnti, std::min(crnti, k_highest_id));
}

bool lib_nr_dl_dci_configure_manager_t::set_coreset_id(unsigned int id)
{
    const bool in_bwp = id >= m_first_coreset_index && id - m_first_coreset_index < k_coresets_in_bwp;
    return assign(m_coreset_id, in_bwp ? id : m_first_coreset_index);
}

bool lib_nr_dl_dci_configure_manager_t::set_bwp_id(unsigned int id) { return assign(m_bwp_id, id); }

bool lib_nr_dl_dci_configure_manager_t::set_search_space_type(lib_nr_dl_dci_search_space_type_t type,
                                                              const std::vector<int>& coreset_bitmap)
{
    return (type == LIB_NR_DCI_USS || count_groups(coreset_bitmap) > 3) && assign(m_search_space_type, type);
}

bool lib_nr_dl_dci_configure_manager_t::set_start_symbol_within_slot(unsigned int symbol, unsigned int symbols_in_slot,
                                                                     unsigned int coreset_duration)
{
    return assign(m_start_symbol, std::min(symbol, symbols_in_slot - std::min(symbols_in_slot, coreset_duration)));
}

bool lib_nr_dl_dci_configure_manager_t::set_candidates_num(lib_nr_dl_dci_candidates_number_t number)
{
    const bool changed = assign(m_candidates_num, number);
    set_allocated_candidate(m_allocated_candidate);
    return changed;
}

bool lib_nr_dl_dci_configure_manager_t::set_aggregation_level(lib_nr_dl_dci_aggregation_level_t level,
                                                              const std::vector<int>& coreset_bitmap)
{
    return assign(m_aggregation_level, limit_level(level, count_groups(coreset_bitmap)));
}

std::vector<lib_nr_dl_dci_aggregation_level_t>
lib_nr_dl_dci_configure_manager_t::get_aggregation_level_list(const std::vector<int>& coreset_bitmap) const
{
    const std::ptrdiff_t groups = count_groups(coreset_bitmap);
    std::vector<lib_nr_dl_dci_aggregation_level_t> levels;
    for (const lib_nr_dl_dci_aggregation_level_t level : k_dci_aggregation_levels) {
        const bool is_smallest = level == (m_search_space_type == LIB_NR_DCI_CSS ? LIB_NR_DCI_AGGREGATION_LEVEL_4
                                                                                 : LIB_NR_DCI_AGGREGATION_LEVEL_1);
        if (is_smallest || (!levels.empty() && static_cast<std::ptrdiff_t>(level) <= groups))
            levels.push_back(level);
    }
    return levels;
}

bool lib_nr_dl_dci_configure_manager_t::set_allocated_candidate(unsigned int candidate)
{
    const unsigned int number = offered_or_first(m_candidates_num, k_dci_candidates_numbers);
    return assign(m_allocated_candidate, std::min(candidate, number - 1));
}

bool lib_nr_dl_dci_configure_manager_t::set_slot_allocation(const std::string& text,
                                                            lib_nr_numerology_type_t bwp_numerology)
{
    return assign_index_text(m_slot_allocation, m_slot_allocation_text, text,
                             lib_nr_phy_common_t::get_slot_in_frame(bwp_numerology));
}

bool lib_nr_dl_dci_configure_manager_t::set_coding(bool coding) { return assign(m_coding, coding); }

bool lib_nr_dl_dci_configure_manager_t::set_data_block_size(unsigned int bits)
{
    const unsigned int level = offered_or_first(m_aggregation_level, k_dci_aggregation_levels);
    const unsigned int most = level * k_bits_in_cce - k_crc_bits;
    return assign(m_data_block_size, std::clamp(bits, 1U, std::min(most, k_most_data_bits)));
}

bool lib_nr_dl_dci_configure_manager_t::set_data_source(lib_nr_pn_seq_t source)
{
    return assign(m_data_source, source);
}

bool lib_nr_dl_dci_configure_manager_t::set_data_source_custom(const std::string& text)
{
    std::vector<unsigned char> bits;
    if (common_lib::lib_common_list_parse_t::string_to_bit_list(text, bits))
        m_data_source_custom = bits;
    return assign(m_data_source_custom_text, text);
}

} // namespace vek::nr_mod_lib

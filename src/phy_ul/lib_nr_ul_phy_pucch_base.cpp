#include "phy_ul/lib_nr_ul_phy_pucch_base.h"

#include "common/lib_common_math.h"
#include "manager/lib_nr_carrier_configure_manager.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_sequence_hopping.h"

#include <algorithm>
#include <numbers>

// The PUCCH that is bound, and its sequences.

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_shifts = 12;
// A host may cast a number between the enumerators: it is sent as the enumerator below.
constexpr unsigned int k_length_without_sequences = 3;

} // namespace

void lib_nr_ul_phy_pucch_base_t::_set_pucch(const lib_nr_carrier_configure_manager_t& carrier, unsigned int pucch_index)
{
    m_carrier = &carrier;
    m_pucch = &carrier.get_ul_pucch(pucch_index);
    if (m_pucch->get_occ_length() != k_length_without_sequences)
        return;
    m_pucch_of_known_length = std::make_shared<lib_nr_ul_pucch_configure_manager_t>(*m_pucch);
    m_pucch_of_known_length->set_occ_length(LIB_NR_UL_PUCCH_OCC_LENGTH_2);
    m_pucch = m_pucch_of_known_length.get();
}

const lib_nr_ul_bwp_configure_manager_t& lib_nr_ul_phy_pucch_base_t::_bwp() const
{
    return m_carrier->get_ul_bwp(m_pucch->get_bwp_id());
}

unsigned int lib_nr_ul_phy_pucch_base_t::_get_slot_symbols() const
{
    return lib_nr_phy_common_t::get_symbol_number_in_slot(_bwp().get_numerology(), _bwp().get_cp_type());
}

unsigned int lib_nr_ul_phy_pucch_base_t::_get_slot_index(unsigned int slot) const
{
    const std::vector<unsigned int>& slots = m_pucch->get_allocated_slots();
    const auto found = std::find(slots.begin(), slots.end(), slot);
    return found == slots.end() ? 0 : static_cast<unsigned int>(found - slots.begin());
}

lib_nr_explanation_t* lib_nr_ul_phy_pucch_base_t::_explanation_of(unsigned int slot) const
{
    if (!m_explanations)
        return nullptr;
    if (m_explanations->empty() || m_explanations->back().slot != slot) {
        const auto known = std::find_if(m_explanations->begin(), m_explanations->end(),
                                        [slot](const lib_nr_explanation_t& other) { return other.slot == slot; });
        if (known != m_explanations->end())
            return &*known;
        m_explanations->emplace_back().slot = slot;
    }
    return &m_explanations->back();
}

unsigned int lib_nr_ul_phy_pucch_base_t::_id_or_cell_index(int id) const
{
    return id < 0 ? m_carrier->get_cell_index() : static_cast<unsigned int>(id);
}

double lib_nr_ul_phy_pucch_base_t::_get_dmrs_amplitude() const
{
    return common_lib::lib_common_math_t::db_value_to_amplitude_ratio(m_pucch->get_dmrs_power());
}

bool lib_nr_ul_phy_pucch_base_t::_is_second_hop(unsigned int row, unsigned int row_count) const
{
    return m_pucch->get_intra_slot_frequency_hopping() && row >= row_count / 2;
}

lib_nr_ul_phy_pucch_base_t::lib_nr_pucch_low_papr_seq_param_t
lib_nr_ul_phy_pucch_base_t::get_basic_sequence_param(unsigned int slot, unsigned int m_cs, unsigned int m0,
                                                     unsigned int m_int) const
{
    const unsigned int n_id = _id_or_cell_index(m_pucch->get_hopping_id());
    const lib_nr_ul_group_hopping_t hopping = m_pucch->get_pucch_group_hopping();
    lib_nr_pucch_low_papr_seq_param_t param;
    if (hopping == LIB_NR_UL_GROUP_HOPPING_ENABLED)
        param.u = _get_group_hopping_value(n_id, slot);
    else if (hopping == LIB_NR_UL_GROUP_HOPPING_DISABLED)
        param.v = _get_v_value(n_id, slot);
    for (unsigned int& u : param.u)
        u = get_sequence_group(n_id, u);

    const std::vector<unsigned int> n_cs = _get_ncs_value(n_id, slot);
    for (std::size_t l = 0; l < n_cs.size(); ++l)
        param.alpha[l] = std::numbers::pi / 6.0 * ((n_cs[l] + m_cs + m0 + m_int) % k_shifts);
    return param;
}

std::array<unsigned int, 2> lib_nr_ul_phy_pucch_base_t::_get_group_hopping_value(unsigned int n_id,
                                                                                 unsigned int slot) const
{
    const unsigned int c_init = n_id / k_low_papr_groups;
    return {get_group_hop(c_init, 2 * slot), get_group_hop(c_init, 2 * slot + 1)};
}

std::array<unsigned int, 2> lib_nr_ul_phy_pucch_base_t::_get_v_value(unsigned int n_id, unsigned int slot) const
{
    const unsigned int c_init = 32 * (n_id / k_low_papr_groups) + n_id % k_low_papr_groups;
    return {get_sequence_number(c_init, 2 * slot), get_sequence_number(c_init, 2 * slot + 1)};
}

std::vector<unsigned int> lib_nr_ul_phy_pucch_base_t::_get_ncs_value(unsigned int n_id, unsigned int slot) const
{
    const std::size_t slot_symbols = _get_slot_symbols();
    return get_hopping_values(n_id, slot_symbols * slot, slot_symbols);
}

} // namespace vek::nr_mod_lib

#include "phy_ul/lib_nr_ul_phy_pucch_base.h"

#include "manager/lib_nr_carrier_configure_manager.h"
#include "phy_common/tables/lib_nr_pucch_dmrs_position_table.h"

#include <iostream>

// How many bits the resource carries, how UCI parts share them, and whether the payload fits.

namespace vek::nr_mod_lib
{

namespace
{

constexpr std::uint64_t k_most_uci_bits = 2026; // two code blocks of 1024 bits with 11 of CRC each
constexpr unsigned int k_most_rate_matched = 8192;

std::uint64_t size_of(const lib_nr_ul_pucch_payload_t& field) { return field.enable ? field.size : 0; }

} // namespace

const std::vector<unsigned int>& lib_nr_ul_phy_pucch_base_t::_get_dmrs_symbol_postion() const
{
    return get_pucch_dmrs_positions(m_pucch->get_intra_slot_frequency_hopping(), m_pucch->get_additional_dmrs(),
                                    m_pucch->get_symbol_num());
}

unsigned int lib_nr_ul_phy_pucch_base_t::_get_dmrs_symbol_num() const
{
    return static_cast<unsigned int>(_get_dmrs_symbol_postion().size());
}

unsigned int lib_nr_ul_phy_pucch_base_t::_get_occ() const
{
    const bool is_single_interlace = m_pucch->get_use_interlace_pucch() && m_pucch->get_interlace1() == -1;
    return is_single_interlace || m_pucch->get_pucch_format() == LIB_NR_UL_PUCCH_FORMAT_4
               ? unsigned{m_pucch->get_occ_length()}
               : 1;
}

unsigned int lib_nr_ul_phy_pucch_base_t::get_total_length_after_rate_matching() const
{
    const lib_nr_ul_pucch_format_t format = m_pucch->get_pucch_format();
    const bool has_dmrs_symbols = format == LIB_NR_UL_PUCCH_FORMAT_3 || format == LIB_NR_UL_PUCCH_FORMAT_4;
    const unsigned int symbols = m_pucch->get_symbol_num() - (has_dmrs_symbols ? _get_dmrs_symbol_num() : 0);
    const unsigned int values = format == LIB_NR_UL_PUCCH_FORMAT_2 ? 8 : 12; // per RB and symbol
    return values * symbols * _get_checked_modulation_order() * _get_rb_num() / _get_occ();
}

unsigned int lib_nr_ul_phy_pucch_base_t::_get_checked_modulation_order() const
{
    return m_pucch->get_pi_2_bpsk() ? 1 : 2;
}

lib_nr_ul_phy_pucch_base_t::uci_size_t lib_nr_ul_phy_pucch_base_t::_get_uci_size() const
{
    return {size_of(m_pucch->get_harq_ack()) + size_of(m_pucch->get_sr()) + size_of(m_pucch->get_csi1()),
            size_of(m_pucch->get_csi2())};
}

lib_nr_uci_split_t lib_nr_ul_phy_pucch_base_t::_split(unsigned int e_total, unsigned int qm) const
{
    const uci_size_t size = m_pucch->get_uci_content() ? _get_uci_size() : uci_size_t{};
    return split_uci(size.first, size.second, e_total, qm, m_pucch->get_max_code_rate(), m_rules);
}

void lib_nr_ul_phy_pucch_base_t::_get_uci_info(unsigned int& e_total, unsigned int& e_uci1, unsigned int& e_uci2) const
{
    e_total = get_total_length_after_rate_matching();
    const lib_nr_uci_split_t split = _split(e_total, _get_checked_modulation_order());
    e_uci1 = split.e_uci1;
    e_uci2 = split.e_uci2;
}

bool lib_nr_ul_phy_pucch_base_t::_is_valid_uci(unsigned int a, unsigned int e) const
{
    const lib_nr_uci_layout_t layout = get_uci_layout(a, e);
    if (!layout.is_polar)
        return true;
    std::cout << "max payload size = " << std::int64_t{layout.e} - layout.crc_length - layout.n_pc
              << " current payload size = " << a << std::endl;
    if (layout.e < layout.k + layout.n_pc) {
        std::cerr << "lib_nr_ul_phy_pucch_base_t::_is_valid_uci Report : Output Sequence is Overlength!" << std::endl;
        return _fails("its UCI bits and their CRC are more than its cells carry");
    }
    if (layout.e > k_most_rate_matched) {
        std::cerr << " Er > 8192 " << std::endl;
        std::cerr << " Er = " << layout.e << std::endl;
        return _fails("its cells are more than the code of its UCI bits fills");
    }
    return true;
}

bool lib_nr_ul_phy_pucch_base_t::_check_payload_setting() const
{
    const lib_nr_ul_pucch_format_t format = m_pucch->get_pucch_format();
    if (!m_pucch->get_enable() || !m_pucch->get_channel_coding() || format == LIB_NR_UL_PUCCH_FORMAT_0 ||
        format == LIB_NR_UL_PUCCH_FORMAT_1)
        return true;
    unsigned int e_total = 0;
    unsigned int e_uci1 = 0;
    unsigned int e_uci2 = 0;
    _get_uci_info(e_total, e_uci1, e_uci2);
    if (!m_pucch->get_uci_content())
        return _is_valid_uci(m_pucch->get_payload_size(), e_total);

    const uci_size_t size = _get_uci_size();
    if (size.first == 0 && size.second == 0)
        return _fails("its UCI has no bits");
    if (size.first > k_most_uci_bits || size.second > k_most_uci_bits)
        return _fails("its UCI has more bits than are coded");
    const auto first = static_cast<unsigned int>(size.first);
    const auto second = static_cast<unsigned int>(size.second);
    if (first == 0)
        return _is_valid_uci(second, e_uci1);
    const bool is_first_valid = _is_valid_uci(first, e_uci1);
    const bool is_second_valid = second == 0 || _is_valid_uci(second, e_uci2);
    return is_first_valid && is_second_valid;
}

} // namespace vek::nr_mod_lib

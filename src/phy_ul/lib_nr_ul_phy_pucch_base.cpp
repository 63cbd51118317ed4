#include "phy_ul/lib_nr_ul_phy_pucch_base.h"

#include "common/lib_common_math.h"
#include "manager/lib_nr_carrier_configure_manager.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_interlace.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_sequence_hopping.h"
#include "phy_common/tables/lib_nr_pucch_dmrs_position_table.h"

#include <algorithm>
#include <iostream>
#include <numbers>
#include <stdexcept>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_shifts = 12;
constexpr std::uint64_t k_most_uci_bits = 2026; // two code blocks of 1024 bits with 11 of CRC each
constexpr unsigned int k_most_rate_matched = 8192;
constexpr std::size_t k_least_interlace = 10;
constexpr std::size_t k_most_interlace = 11;

std::uint64_t size_of(const lib_nr_ul_pucch_payload_t& field) { return field.enable ? field.size : 0; }

} // namespace

void lib_nr_ul_phy_pucch_base_t::_set_pucch(const lib_nr_carrier_configure_manager_t& carrier, unsigned int pucch_index)
{
    m_carrier = &carrier;
    m_pucch = &carrier.get_ul_pucch(pucch_index);
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

bool lib_nr_ul_phy_pucch_base_t::_get_interlace_range(unsigned int& first, unsigned int& last) const
{
    const lib_nr_ul_bwp_configure_manager_t& bwp = _bwp();
    const unsigned int bwp_first = bwp.get_rb_offset();
    const unsigned int bwp_last = bwp_first + bwp.get_rb_number() - 1;
    const auto rb_sets = m_carrier->get_numerology_manager(bwp.get_numerology()).get_ul_guard_band().get_rb_set_info();
    if (rb_sets.empty()) {
        first = bwp_first;
        last = bwp_last;
        return true;
    }
    const auto& rb_set = rb_sets.at(static_cast<std::uint16_t>(m_pucch->get_rb_set_index()));
    first = rb_set.first;
    last = rb_set.second;
    if (first >= bwp_first && last <= bwp_last)
        return true;
    std::cerr << "rb_set range = " << first << ":" << last << std::endl;
    std::cerr << "bwp_num range = " << bwp_first << ":" << bwp_last << std::endl;
    std::cerr << "!! error : rb set are outside the scope of BWP !!" << std::endl;
    return false;
}

bool lib_nr_ul_phy_pucch_base_t::_get_interlace_position(std::vector<unsigned short>& out) const
{
    out.clear();
    if (!m_pucch->get_use_interlace_pucch())
        return true;
    unsigned int first = 0;
    unsigned int last = 0;
    if (!_get_interlace_range(first, last))
        return false;
    if (get_interlace_number(_bwp().get_numerology()) == 0) {
        std::cerr << "The number of available RBs is not enough to interleaving" << std::endl;
        return false;
    }
    const int interlace1 = m_pucch->get_interlace1();
    if (static_cast<int>(m_pucch->get_interlace0()) == interlace1) {
        std::cout << "interlace 0 and interlace 1 conflict" << std::endl;
        return false;
    }
    if (!_append_interlace(m_pucch->get_interlace0(), m_pucch->get_pucch_interlace0(), first, last, out))
        return false;
    return interlace1 < 0 ||
           _append_interlace(static_cast<unsigned int>(interlace1), m_pucch->get_pucch_interlace1(), first, last, out);
}

bool lib_nr_ul_phy_pucch_base_t::_append_interlace(unsigned int interlace, unsigned int rb_number_setting,
                                                   unsigned int first, unsigned int last,
                                                   std::vector<unsigned short>& out) const
{
    const unsigned int step = get_interlace_number(_bwp().get_numerology());
    std::size_t count = 0;
    for (unsigned int rb = first + interlace; rb <= last && count < k_most_interlace; rb += step, ++count)
        out.push_back(static_cast<unsigned short>(rb));
    if (count < k_least_interlace) {
        std::cerr << " Cannot assign 10 RBs for interleaving " << std::endl;
        std::cerr << " The number of available RBs is not enough to interleaving " << std::endl;
        return false;
    }
    if (rb_number_setting == LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_10 && count == k_most_interlace)
        out.pop_back();
    if (rb_number_setting == LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11 && count == k_least_interlace) {
        std::cout << " Cannot assign 11 RBs for interleaving " << std::endl;
        return false;
    }
    return true;
}

unsigned int lib_nr_ul_phy_pucch_base_t::_get_rb_num() const
{
    if (!m_pucch->get_use_interlace_pucch())
        return m_pucch->get_rb_num();
    std::vector<unsigned short> positions;
    if (_get_interlace_position(positions))
        return static_cast<unsigned int>(positions.size());
    std::cerr << "Interleaving condition is not met, interleaving is not enabled" << std::endl;
    return m_pucch->get_rb_num();
}

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
    return split_uci(size.first, size.second, e_total, qm, m_pucch->get_max_code_rate());
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
        return false;
    }
    if (layout.e > k_most_rate_matched) {
        std::cerr << " Er > 8192 " << std::endl;
        std::cerr << " Er = " << layout.e << std::endl;
        return false;
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
    if ((size.first == 0 && size.second == 0) || size.first > k_most_uci_bits || size.second > k_most_uci_bits)
        return false;
    const auto first = static_cast<unsigned int>(size.first);
    const auto second = static_cast<unsigned int>(size.second);
    if (first == 0)
        return _is_valid_uci(second, e_uci1);
    const bool is_first_valid = _is_valid_uci(first, e_uci1);
    const bool is_second_valid = second == 0 || _is_valid_uci(second, e_uci2);
    return is_first_valid && is_second_valid;
}

/// Both maps read this list; `is_slot_moved` puts the whole slot into the second hop's RBs.
std::vector<lib_nr_ul_phy_pucch_base_t::hop_t> lib_nr_ul_phy_pucch_base_t::_get_hops(bool is_slot_moved) const
{
    const unsigned int rows = m_pucch->get_symbol_num();
    const unsigned int first_rb = _bwp().get_rb_offset() + m_pucch->get_rb_offset();
    const unsigned int second_rb = _bwp().get_rb_offset() + m_pucch->get_second_hop_prb();
    if (m_pucch->get_intra_slot_frequency_hopping())
        return {{0, rows / 2, first_rb}, {rows / 2, rows - rows / 2, second_rb}};
    return {{0, rows, is_slot_moved ? second_rb : first_rb}};
}

bool lib_nr_ul_phy_pucch_base_t::_deal_physical_resource_mapping(const slots_t& slots, payload_grid_t& grid) const
{
    std::vector<unsigned short> positions;
    if (!_get_interlace_position(positions))
        return true;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        const std::size_t first_symbol =
            std::size_t{_get_slot_symbols()} * m_pucch->get_allocated_slots().at(i) + m_pucch->get_first_symbol();
        if (m_pucch->get_use_interlace_pucch())
            _add_interlaced_slot(slots[i], positions, first_symbol, grid);
        else // by the place in the list, where the resource map goes by the number of the slot
            _add_slot(slots[i], m_pucch->get_inter_slot_frequency_hopping() && i % 2 == 1, first_symbol, grid);
    }
    return true;
}

void lib_nr_ul_phy_pucch_base_t::_add_slot(const slot_rows_t& rows, bool is_slot_moved, std::size_t first_symbol,
                                           payload_grid_t& grid) const
{
    for (const hop_t& hop : _get_hops(is_slot_moved))
        for (std::size_t s = hop.first_row; s < hop.first_row + hop.row_count; ++s)
            _add_values(rows.at(s).data(), rows.at(s).size(), hop.first_rb, grid.at(first_symbol + s));
}

void lib_nr_ul_phy_pucch_base_t::_add_interlaced_slot(const slot_rows_t& rows,
                                                      const std::vector<unsigned short>& positions,
                                                      std::size_t first_symbol, payload_grid_t& grid) const
{
    for (std::size_t s = 0; s < rows.size(); ++s)
        for (std::size_t k = 0; k < rows[s].size() / k_subcarriers_per_rb; ++k)
            _add_values(rows[s].data() + k * k_subcarriers_per_rb, k_subcarriers_per_rb, positions.at(k),
                        grid.at(first_symbol + s));
}

void lib_nr_ul_phy_pucch_base_t::_add_values(const std::complex<double>* values, std::size_t count,
                                             unsigned int first_rb, std::vector<std::complex<double>>& grid_row) const
{
    const std::size_t first = std::size_t{first_rb} * k_subcarriers_per_rb;
    if (first + count > grid_row.size())
        throw std::out_of_range("PUCCH past the resource blocks of the carrier");
    const double amplitude = common_lib::lib_common_math_t::db_value_to_amplitude_ratio(m_pucch->get_power());
    for (std::size_t i = 0; i < count; ++i)
        grid_row[first + i] += amplitude * values[i];
}

bool lib_nr_ul_phy_pucch_base_t::_deal_physical_resource_mapping_for_ui(lib_nr_channel_resource_manager_t& grid) const
{
    if (!_check_payload_setting()) {
        std::cout << "!!! error: payload or resource does not meet channel coding requirements !!!" << std::endl;
        return false;
    }
    const std::vector<unsigned int>& slots = m_pucch->get_allocated_slots();
    if (m_pucch->get_use_interlace_pucch())
        return _mark_interlaced(slots, grid);
    if (m_pucch->get_intra_slot_frequency_hopping())
        return _mark(slots, false, "error: pucch intra_slot_hopping resource mapping for ui conflict", grid);
    if (!m_pucch->get_inter_slot_frequency_hopping())
        return _mark(slots, false, "error: pucch resource mapping for ui conflict", grid);

    constexpr auto k_conflict = "error: pucch inter_slot_hopping resource mapping for ui conflict";
    std::array<std::vector<unsigned int>, 2> slots_by_parity;
    for (const unsigned int slot : slots)
        slots_by_parity[slot % 2].push_back(slot);
    const bool is_even_free = _mark(slots_by_parity[0], false, k_conflict, grid);
    const bool is_odd_free = _mark(slots_by_parity[1], true, k_conflict, grid);
    return is_even_free && is_odd_free;
}

bool lib_nr_ul_phy_pucch_base_t::_mark(const std::vector<unsigned int>& slots, bool is_slot_moved,
                                       const char* conflict_line, lib_nr_channel_resource_manager_t& grid) const
{
    bool is_free = true;
    for (const hop_t& hop : _get_hops(is_slot_moved)) {
        const lib_nr_slot_resource_range_t range{slots, m_pucch->get_first_symbol() + hop.first_row, hop.row_count,
                                                 hop.first_rb, m_pucch->get_rb_num()};
        if (!grid.deal_resource_mapping(range, LIB_NR_RESOURCE_MAPPING_PUCCH)) {
            std::cout << conflict_line << std::endl;
            is_free = false;
        }
    }
    return is_free;
}

bool lib_nr_ul_phy_pucch_base_t::_mark_interlaced(const std::vector<unsigned int>& slots,
                                                  lib_nr_channel_resource_manager_t& grid) const
{
    std::vector<unsigned short> positions;
    std::vector<lib_nr_resource_run_t> runs;
    bool is_free = _get_interlace_position(positions);
    if (is_free) {
        for (const unsigned int slot : slots)
            for (unsigned int s = 0; s < m_pucch->get_symbol_num(); ++s)
                for (const unsigned short rb : positions)
                    runs.push_back({slot * _get_slot_symbols() + m_pucch->get_first_symbol() + s,
                                    static_cast<std::int32_t>(rb * k_subcarriers_per_rb), k_subcarriers_per_rb});
        is_free = grid.mark_runs(runs, LIB_NR_RESOURCE_MAPPING_PUCCH);
    }
    if (!is_free)
        std::cout << " pucch interlace not finish " << std::endl;
    return is_free;
}

} // namespace vek::nr_mod_lib

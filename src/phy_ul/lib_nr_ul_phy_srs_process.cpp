#include "phy_ul/lib_nr_ul_phy_srs_process.h"

#include "common/lib_common_math.h"
#include "common/lib_number_text.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_sequence_hopping.h"
#include "phy_common/tables/lib_nr_srs_bandwidth_table.h"
#include "phy_ul/lib_nr_low_papr_sequence1.h"

#include <array>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <memory>
#include <numbers>
#include <string>
#include <system_error>
#include <tuple>

namespace vek::nr_mod_lib
{

namespace
{

constexpr const char* k_trace_file = "../srs_result.csv";
constexpr unsigned int k_least_length_with_two_sequences = 72;
// n_RRC counts in steps of 4 resource blocks.
constexpr unsigned int k_rbs_per_position = 4;

/// TS 38.211 Table 6.4.1.4.3-2: the comb offsets of a positioning SRS by symbol, which repeat, for the numbers of
/// symbols that the table has.
struct comb_offset_row_t
{
    unsigned int K_TC;
    unsigned int least_N_symb;
    unsigned int most_N_symb;
    unsigned int period;
    std::array<unsigned char, 8> offsets;
};
constexpr std::array<comb_offset_row_t, 3> k_comb_offsets = {{
    {2, 1, 4, 2, {0, 1}},
    {4, 2, 12, 4, {0, 2, 1, 3}},
    {8, 4, 12, 8, {0, 4, 2, 6, 1, 5, 3, 7}},
}};

lib_nr_channel_resource_manager_t& grid() { return lib_nr_channel_resource_manager_t::get_inst(); }

} // namespace

bool lib_nr_ul_phy_srs_process_t::set_waveform_config(unsigned int carrier, unsigned int frame, unsigned int numerology,
                                                      unsigned int srs,
                                                      const lib_nr_waveform_configure_manager_t& waveform)
{
    const lib_nr_carrier_configure_manager_t& configuration = waveform.get_carrier(carrier);
    const lib_nr_ul_srs_configure_manager_t& manager = configuration.get_ul_srs(srs);
    set_standard_rules(waveform.get_standard_rules());
    m_enable = manager.get_enable();
    m_port_number = manager.get_port_number();
    m_power_boosting = manager.get_power_bosting();
    const srs_antenna_port_t port = manager.get_antenna_port().front();
    m_has_port = port != SRS_ANTENNA_NONE;
    m_port = m_has_port ? port - SRS_ANTENNA_PORT0 : 0;
    m_pos_resource = manager.get_pos_resource();
    m_periodicity = manager.get_srs_periodity();
    m_t_offset = manager.get_t_offset();
    m_l_offset = manager.get_l_offset();
    m_N_symb = manager.get_N_symb_srs();
    m_repetition_factor = manager.get_srs_repetition_factor();
    m_K_TC = manager.get_Ktc_number();
    m_cs_max = lib_nr_ul_srs_configure_manager_t::get_cs_max(manager.get_Ktc_number());
    m_ktc_offset = manager.get_ktc_offset();
    m_b_srs = manager.get_b_srs();
    m_c_srs = manager.get_c_srs();
    m_b_hop = manager.get_b_hop();
    m_n_shift = manager.get_n_shift();
    m_n_RRC = manager.get_n_RRC();
    m_GroupOrSeqHop = manager.get_GroupOrSeqHop();
    m_n_SRS_cs = manager.get_n_SRS_cs();
    m_n_ID_SRS = manager.get_n_ID_SRS();
    m_p_f = manager.get_p_f();
    m_k_f = manager.get_k_f();
    m_resource_type = m_periodicity == 0 ? SRS_APERIOD_TYPE : SRS_PERIOD_TYPE;
    m_frame = frame;
    const lib_nr_numerology_type_t spacing = configuration.get_numerology_manager(numerology).get_numerolgy();
    m_slots = lib_nr_phy_common_t::get_slot_in_frame(spacing);
    const lib_nr_ul_bwp_configure_manager_t& bwp = configuration.get_ul_bwp(manager.get_bwp_id());
    m_slot_symbols = lib_nr_phy_common_t::get_symbol_number_in_slot(spacing, bwp.get_cp_type());
    m_bwp_start = bwp.get_rb_offset();

    _srs_slots_init(manager.get_slot_allocation());
    _srs_k_offset_lp_init();
    m_subcarriers = k_subcarriers_per_rb * lib_nr_srs_bandwidth_table()[m_c_srs].m_srs[m_b_srs];
    m_sequences.clear();
    m_symbols.clear();
    return true;
}

void lib_nr_ul_phy_srs_process_t::_srs_slots_init(const std::vector<int>& listed)
{
    const auto begins_period = [this](unsigned int slot) {
        const std::int64_t since = std::int64_t{m_slots} * m_frame + slot - m_t_offset;
        return m_periodicity == 0 || (since >= 0 && since % m_periodicity == 0);
    };
    std::vector<unsigned int> own;
    for (const int slot : listed)
        if (begins_period(static_cast<unsigned int>(slot)))
            own.push_back(static_cast<unsigned int>(slot));
    std::vector<unsigned int> standard = own;
    if (m_periodicity != 0) {
        standard.clear();
        for (unsigned int slot = 0; slot < m_slots; ++slot)
            if (begins_period(slot))
                standard.push_back(slot);
    }
    m_sent_slots = m_rules.pick(lib_nr_deviation_t::srs_place, own, standard);
}

void lib_nr_ul_phy_srs_process_t::_srs_k_offset_lp_init()
{
    m_k_offset.assign(m_N_symb, 0);
    for (const comb_offset_row_t& row : k_comb_offsets)
        if (row.K_TC == m_K_TC && m_N_symb >= row.least_N_symb && m_N_symb <= row.most_N_symb)
            for (unsigned int l = 0; l < m_N_symb; ++l)
                m_k_offset[l] = row.offsets[l % row.period];
}

bool lib_nr_ul_phy_srs_process_t::srs_process(unsigned int slot) { return nr_ul_phy_srs_encode_map(slot); }

bool lib_nr_ul_phy_srs_process_t::nr_ul_phy_srs_re_map(unsigned int slot, lib_nr_remap_mode_t mode)
{
    switch (mode) {
    case LIB_NR_REMAPP_MODE_UI_VIEW_MAP:
        return nr_ul_phy_srs_ui_view_map(slot);
    case LIB_NR_REMAPP_MODE_ENCODE_MAP:
        return nr_ul_phy_srs_encode_map(slot);
    }
    return false;
}

bool lib_nr_ul_phy_srs_process_t::_is_enabled() const
{
    if (!m_enable)
        std::cout << "srs_process:m_enable is disable.\n" << std::endl;
    return m_enable;
}

bool lib_nr_ul_phy_srs_process_t::nr_ul_phy_srs_ui_view_map(unsigned int slot)
{
    if (!_is_enabled())
        return false;
    _list_symbols(slot);
    std::vector<lib_nr_resource_run_t> runs;
    for (const symbol_t& symbol : m_symbols)
        runs.push_back(symbol.run);
    return grid().mark_runs(runs, LIB_NR_RESOURCE_MAPPING_SRS);
}

bool lib_nr_ul_phy_srs_process_t::nr_ul_phy_srs_encode_map(unsigned int slot)
{
    if (!_is_enabled())
        return false;
    _list_symbols(slot);
    const double amplitude = _amplitude();
    for (const symbol_t& symbol : m_symbols)
        grid().write_run(symbol.run, _nr_ul_phy_srs_sequence_gen(symbol.u, symbol.v).data(), amplitude);
    if (m_has_port)
        grid().leave_out((m_N_symb - m_symbols.size()) * (m_subcarriers / (m_p_f * m_K_TC)));
    if (m_explanation && m_has_port)
        _explain(slot);
    return true;
}

/// The RBs of the first symbol are the first hop's; where later symbols have others, those stand apart.
void lib_nr_ul_phy_srs_process_t::_explain(unsigned int slot) const
{
    const unsigned int first_symbol = slot * m_slot_symbols;
    for (const symbol_t& symbol : m_symbols) {
        constexpr auto k_rb = static_cast<std::int32_t>(k_subcarriers_per_rb);
        const bool has_hopped = symbol.run.first_subcarrier / k_rb != m_symbols.front().run.first_subcarrier / k_rb;
        m_explanation->add_runs({symbol.run}, first_symbol, has_hopped);
        m_explanation->add_cells({symbol.run}, first_symbol);
        m_explanation->u.push_back(symbol.u);
        m_explanation->v.push_back(symbol.v);
    }
    m_explanation->figures = {{"n_id", m_n_ID_SRS}, {"comb", m_K_TC}, {"ports", m_port_number}, {"port", m_port}};
}

/// The symbols of a slot. With the extended prefix the first ones may lie ahead of it.
void lib_nr_ul_phy_srs_process_t::_list_symbols(unsigned int slot)
{
    m_symbols.clear();
    for (unsigned int l = 0; l < m_N_symb && m_has_port && slot < m_slots; ++l) {
        const unsigned int from_end = m_l_offset - l;
        if (from_end >= m_slot_symbols)
            continue;
        symbol_t symbol;
        symbol.run.symbol = m_slot_symbols * (slot + 1) - 1 - from_end;
        symbol.run.first_subcarrier = static_cast<std::int32_t>(
            _nr_ul_srs_cal_k0_bar(l) + _nr_ul_srs_cal_n_FH_offset(slot, l) + _nr_ul_srs_cal_n_RPFS_offset());
        symbol.run.count = m_subcarriers / (m_p_f * m_K_TC);
        symbol.run.step = m_K_TC;
        std::tie(symbol.u, symbol.v) = _get_sequence_uv(symbol.run.symbol);
        m_symbols.push_back(symbol);
    }
}

/// Group and number of a symbol's sequence, TS 38.211 clause 6.4.1.4.2.
std::pair<unsigned int, unsigned int> lib_nr_ul_phy_srs_process_t::_get_sequence_uv(unsigned int symbol_in_frame) const
{
    const unsigned int group_hop =
        m_GroupOrSeqHop == SRS_GROUP_HOP_TYPE ? get_group_hop(m_n_ID_SRS, symbol_in_frame) : 0;
    unsigned int number = 0;
    if (m_GroupOrSeqHop == SRS_SEQUEN_HOP_TYPE) {
        // By the own rule the length is that ahead of partial sounding.
        const auto number_at = [&](unsigned int length) {
            return length >= k_least_length_with_two_sequences ? get_sequence_number(m_n_ID_SRS, symbol_in_frame) : 0;
        };
        number = m_rules.pick(lib_nr_deviation_t::srs_place, number_at(m_subcarriers / m_K_TC),
                              number_at(m_subcarriers / (m_p_f * m_K_TC)));
    }
    return {get_sequence_group(m_n_ID_SRS, group_hop), number};
}

/// The values of a sequence; those that a frame has had stay.
const std::vector<std::complex<double>>& lib_nr_ul_phy_srs_process_t::_nr_ul_phy_srs_sequence_gen(unsigned int u,
                                                                                                  unsigned int v)
{
    std::vector<std::complex<double>>& sequence = m_sequences[{u, v}];
    if (sequence.empty()) {
        const auto delta = static_cast<std::int32_t>(std::bit_width(m_K_TC)) - 1; // log2(K_TC)
        lib_nr_low_papr_sequence1::generate_low_papr_sequence_1(
            {u, v, _cyclic_shift(), delta, m_subcarriers / (m_p_f * m_K_TC)}, sequence);
    }
    return sequence;
}

/// alpha_i of TS 38.211 clause 6.4.1.4.2, in radians.
double lib_nr_ul_phy_srs_process_t::_cyclic_shift() const
{
    const unsigned int port_shift =
        m_port_number == 4 && m_cs_max == LIB_NR_SRS_CS_MAX6 ? m_port / 2 * 3 : m_port * m_cs_max / m_port_number;
    return 2.0 * std::numbers::pi * ((port_shift + m_n_SRS_cs) % m_cs_max) / m_cs_max;
}

/// beta_SRS over the root of the ports, TS 38.211 clause 6.4.1.4.3, by the own rule times it.
double lib_nr_ul_phy_srs_process_t::_amplitude() const
{
    const double boosting = common_lib::lib_common_math_t::db_value_to_amplitude_ratio(m_power_boosting);
    const double root = std::sqrt(static_cast<double>(m_port_number));
    return m_rules.pick(lib_nr_deviation_t::srs_place, boosting * root, boosting / root);
}

/// Start of the comb within the grid, TS 38.211 clause 6.4.1.4.3: a BWP that begins above n_shift has it counted from
/// its own start, but not by the own rule.
unsigned int lib_nr_ul_phy_srs_process_t::_nr_ul_srs_cal_k0_bar(unsigned int l) const
{
    unsigned int k = m_ktc_offset;
    if (m_port_number == 4 && m_port % 2 == 1 && (m_cs_max == LIB_NR_SRS_CS_MAX6 || m_n_SRS_cs >= m_cs_max / 2))
        k += m_K_TC / 2;
    if (m_pos_resource)
        k += m_k_offset[l];
    const unsigned int reference =
        m_rules.pick(lib_nr_deviation_t::srs_place, 0u, m_bwp_start <= m_n_shift ? 0 : m_bwp_start);
    return k % m_K_TC + k_subcarriers_per_rb * (reference + m_n_shift);
}

/// Where the frequency hopping of TS 38.211 clause 6.4.1.4.3 has come to, in subcarriers.
unsigned int lib_nr_ul_phy_srs_process_t::_nr_ul_srs_cal_n_FH_offset(unsigned int slot, unsigned int l) const
{
    const lib_nr_srs_bandwidth_row_t& row = lib_nr_srs_bandwidth_table()[m_c_srs];
    const unsigned int counter = _hop_counter(slot, l);
    unsigned int offset = 0;
    unsigned int product = 1; // of N_b from b_hop + 1 to b - 1
    for (unsigned int b = 0; b <= m_b_srs; ++b) {
        const unsigned int number = row.n[b];
        unsigned int position = k_rbs_per_position * m_n_RRC / row.m_srs[b];
        if (b > m_b_hop) {
            // After a round of N_b positions all repeats, so the odd case, which has no modulo, may be in it too.
            const unsigned int in_round = counter % (product * number);
            position += number / 2 * (in_round / product) + (number % 2 == 0 ? in_round / (2 * product) : 0);
            product *= number;
        }
        offset += k_subcarriers_per_rb * row.m_srs[b] * (position % number);
    }
    return offset;
}

/// Start of the part that partial sounding takes of the band, in subcarriers.
unsigned int lib_nr_ul_phy_srs_process_t::_nr_ul_srs_cal_n_RPFS_offset() const
{
    return m_k_f % m_p_f * m_subcarriers / m_p_f;
}

/// n_SRS. The gate lets no slot ahead of the offset pass.
unsigned int lib_nr_ul_phy_srs_process_t::_hop_counter(unsigned int slot, unsigned int l) const
{
    const unsigned int in_slot = l / m_repetition_factor;
    if (m_resource_type == SRS_APERIOD_TYPE)
        return in_slot;
    return (m_slots * m_frame + slot - m_t_offset) / m_periodicity * (m_N_symb / m_repetition_factor) + in_slot;
}

void lib_nr_ul_phy_srs_process_t::write_trace_file() const
{
    if (m_symbols.empty())
        return;
    using number_t = common_lib::lib_number_text_t;
    std::string text = " m_u \n";
    for (const symbol_t& symbol : m_symbols)
        text += std::to_string(symbol.u) + '\n';
    text += " m_v \n";
    for (const symbol_t& symbol : m_symbols)
        text += std::to_string(symbol.v) + '\n';
    text += " m_srs_ri_sequence \n";
    for (const symbol_t& symbol : m_symbols)
        for (const std::complex<double>& value : m_sequences.at({symbol.u, symbol.v}))
            text += number_t::double_to_text(value.real()) + ',' + number_t::double_to_text(value.imag()) + '\n';

    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(k_trace_file, "w+"), &std::fclose);
    if (!file)
        std::cerr << "Open file error.\n: " << std::generic_category().message(errno) << std::endl;
    else
        std::fwrite(text.data(), 1, text.size(), file.get());
}

} // namespace vek::nr_mod_lib

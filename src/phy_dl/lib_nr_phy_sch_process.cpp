#include "phy_dl/lib_nr_phy_sch_process.h"

#include "common/lib_common_math.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_ldpc_code_block_segmentation.h"
#include "phy_common/lib_nr_ldpc_rate_match.h"
#include "phy_common/lib_nr_mcs.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_pn_payload.h"
#include "phy_common/lib_nr_reference_signal.h"
#include "phy_common/lib_nr_sequence_generator.h"
#include "phy_common/lib_nr_transport_block_size.h"
#include "phy_common/tables/lib_nr_dmrs_position_table.h"
#include "phy_common/tables/lib_nr_ptrs_subcarrier_table.h"
#include "phy_dl/lib_nr_dl_phy_layer_mapping.h"
#include "phy_dl/lib_nr_dl_phy_pre_coding.h"

#include <algorithm>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_most_re_per_rb = 156;

} // namespace

void lib_nr_sch_cells_t::clear()
{
    data.clear();
    dmrs.clear();
    silent.clear();
    ptrs.clear();
}

bool lib_nr_phy_sch_process_t::set_waveform_config_sch(unsigned int carrier, unsigned int /*numerology*/,
                                                       const lib_nr_sch_configure_manager_t& channel,
                                                       const lib_nr_waveform_configure_manager_t& waveform)
{
    const lib_nr_carrier_configure_manager_t& configuration = waveform.get_carrier(carrier);
    const unsigned int cell = configuration.get_cell_index();
    set_standard_rules(waveform.get_standard_rules());
    set_power_boosting(channel.get_power_boosting());
    set_rnti(channel.get_rnti());
    set_nid(_identity_in_use(channel.get_nid(), cell));
    set_dmrs_port(channel.get_dmrs_port_v());
    set_antenna_port(channel.get_antenna_port());
    set_cdm_groups_without_data_num(channel.get_cdm_groups_without_data_num());
    set_first_symbol(channel.get_first_symbol());
    set_symbol_num(channel.get_symbol_num());
    set_bwp_id(channel.get_bwp_id());
    set_ra_type(channel.get_ra_type());
    set_rbg_size(channel.get_rbg_size());
    set_rbg_bitmap(channel.get_rbg_bitmap_v());
    set_rb_offset(channel.get_rb_offset());
    set_rb_num(channel.get_rb_num());
    set_enable_coding(channel.get_enable_coding());
    set_mcs_table(channel.get_mcs_table());
    set_mcs(channel.get_mcs());
    set_x_overhead(channel.get_x_overhead());
    set_data_source(channel.get_data_source());
    set_data_source_custom(channel.get_data_source_custom_v());
    set_rv(channel.get_rv());
    set_enable_dmrs_downlink_r16(channel.get_enable_dmrs_downlink_r16());
    set_nscid(channel.get_nscid());
    set_nid0(_identity_in_use(channel.get_nid0(), cell));
    set_nid1(_identity_in_use(channel.get_nid1(), cell));
    set_dmrs_power(channel.get_dmrs_power());
    set_dmrs_configuration_type(channel.get_dmrs_configuration_type());
    set_dmrs_length(channel.get_dmrs_length());
    set_dmrs_additional_position(channel.get_dmrs_additional_position());
    set_mapping_type(channel.get_mapping_type());
    set_dmrs_type_a_position(channel.get_dmrs_type_a_position(), channel.get_l0());
    set_dmrs_mapping_ref(channel.get_dmrs_mapping_ref());
    set_enable_ptrs(channel.get_enable_ptrs());
    set_ptrs_power(channel.get_ptrs_power());
    set_ptrs_freqency_density(channel.get_ptrs_freqency_density());
    set_ptrs_time_density(channel.get_ptrs_time_density());
    set_ptrs_re_offset(channel.get_ptrs_re_offset());
    if (configuration.get_carrier_type() == LIB_NR_DOWNLINK) {
        const lib_nr_dl_bwp_configure_manager_t& bwp = configuration.get_dl_bwp(channel.get_bwp_id());
        set_symbol_per_slot(lib_nr_phy_common_t::get_symbol_number_in_slot(bwp.get_numerology(), bwp.get_cp_type()));
        set_bwp_rb_start(bwp.get_bwp_rb_start());
        set_bwp_rb_num(bwp.get_bwp_rb_size());
    }
    else {
        const lib_nr_ul_bwp_configure_manager_t& bwp = configuration.get_ul_bwp(channel.get_bwp_id());
        set_symbol_per_slot(lib_nr_phy_common_t::get_symbol_number_in_slot(bwp.get_numerology(), bwp.get_cp_type()));
        set_bwp_rb_start(bwp.get_rb_offset());
        set_bwp_rb_num(bwp.get_rb_number());
    }
    set_pn_seed(std::numeric_limits<unsigned int>::max());
    update_read_only_parament();
    return true;
}

void lib_nr_phy_sch_process_t::update_read_only_parament()
{
    m_layers = static_cast<unsigned int>(m_dmrs_port.size());
    mcs_table_t table = m_mcs_table;
    if (table > TABLE_5_1_3_1_4) {
        std::cout << "lib_nr_phy_sch_process_t::_phy_sch_payload_generation : Error MCS table!" << std::endl;
        table = TABLE_5_1_3_1_1;
    }
    _apply_mcs(read_mcs(table, m_mcs));
}

// TS 38.211 clauses 7.3.1.1 and 7.4.1.1.1
unsigned int lib_nr_phy_sch_process_t::_identity_in_use(int identity, unsigned int cell) const
{
    const unsigned int as_set = identity < 0 ? cell : static_cast<unsigned int>(identity);
    return m_rules.pick(lib_nr_deviation_t::sch_identity_zero, identity < 1 ? cell : as_set, as_set);
}

void lib_nr_phy_sch_process_t::_apply_mcs(const lib_nr_mcs_t& mcs)
{
    if (mcs.is_reserved)
        std::cout << "lib_nr_phy_sch_process_t::update_read_only_parament : Error modulation!" << std::endl;
    m_q_m = mcs.qm;
    m_target_code_rate = mcs.code_rate;
    m_modulation = mcs.modulation;
}

bool lib_nr_phy_sch_process_t::sch_encode_process(unsigned int slot)
{
    const unsigned int port = m_dmrs_port.front();
    m_dmrs_sequences.clear();
    _phy_sch_rb_index();
    _phy_sch_rs_generation(port, slot);
    _phy_sch_caculate_g(port, slot);
    for (unsigned int codeword = 0; codeword < _get_codewords_from_layer(m_layers); ++codeword)
        _phy_sch_codeword(codeword);
    // One layer is its code word as it stands.
    if (m_layers > 1) {
        _phy_sch_layer_mapping();
        _phy_sch_precoding(m_layer_symbols, m_precoded_symbols);
    }
    _phy_sch_encode_re_map(port, slot, m_rb_list);
    _clear_slot();
    return true;
}

bool lib_nr_phy_sch_process_t::phy_sch_remap(unsigned int slot, lib_nr_remap_mode_t mode)
{
    switch (mode) {
    case LIB_NR_REMAPP_MODE_UI_VIEW_MAP:
        _phy_sch_rb_index();
        _phy_sch_view_re_map(slot, m_rb_list);
        return true;
    case LIB_NR_REMAPP_MODE_ENCODE_MAP:
        _phy_sch_encode_re_map(m_dmrs_port.front(), slot, m_rb_list);
        return true;
    }
    std::cout << "lib_nr_phy_sch_process_t::phy_sch_remap : Error RE map mode!" << std::endl;
    return false;
}

void lib_nr_phy_sch_process_t::set_antenna_port(const std::vector<lib_nr_antenna_port_t>& ports)
{
    const lib_nr_antenna_port_t port = ports.empty() ? LIB_NR_ANTENNA_PORT_NONE : ports.front();
    const bool is_port = port >= LIB_NR_ANTENNA_PORT_0 && port <= LIB_NR_ANTENNA_PORT_3;
    if (!is_port)
        std::cout << "lib_nr_phy_sch_process_t::m_antenna_port : Error antenna port" << std::endl;
    m_antenna_port = is_port ? port - LIB_NR_ANTENNA_PORT_0 : 0;
}

void lib_nr_phy_sch_process_t::set_dmrs_type_a_position(lib_nr_sch_dmrs_type_a_position_t position, unsigned int l0)
{
    switch (position) {
    case LIB_NR_SCH_DMRS_TYPEA_POSITION_2:
    case LIB_NR_SCH_DMRS_TYPEA_POSITION_3:
        m_l0 = position;
        return;
    case LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB:
        m_l0 = l0;
        return;
    }
    std::cout << "lib_nr_phy_sch_process_t::set_dmrs_type_a_position : Error Type A DMRS l0 position!" << std::endl;
}

// From payload to symbols

/// Draws from the payload's stream where the last slot left it.
template <class generate_t>
void lib_nr_phy_sch_process_t::_draw_payload(generate_t generate)
{
    lib_nr_pn_payload_t payload(m_data_source, m_data_source_custom);
    payload.set_seed(m_pn_seed);
    if (!generate(payload))
        std::cout << "lib_nr_phy_sch_process_t::_phy_sch_payload_generation : Error PN code!" << std::endl;
    m_pn_seed = payload.get_seed();
}

void lib_nr_phy_sch_process_t::_phy_sch_codeword(unsigned int codeword)
{
    if (m_enable_coding) {
        _phy_sch_tbs();
        _phy_sch_ldpc_base_graph_selection();
    }
    const unsigned int payload_bits = m_enable_coding ? m_tbs : m_g;
    _draw_payload([&](lib_nr_pn_payload_t& payload) { return payload.generate_words(payload_bits, m_packed_payload); });

    std::vector<std::uint16_t>& symbols = m_codeword_numbers[codeword];
    const lib_nr_packed_code_word_t::settings_t settings = {m_base_graph, m_q_m, m_layers,
                                                            m_g,          m_rv,  _scrambling_c_init(codeword)};
    if (m_enable_coding)
        m_code_word.encode(m_packed_payload, payload_bits, settings, symbols);
    else
        m_code_word.scramble(m_packed_payload, settings, symbols);
    if (_explains() && codeword == 0) // the one that is sent
        _explain_codeword(payload_bits, settings, symbols);
    if (symbols.empty())
        std::cout << "error,input data is empty" << std::endl;
    if (m_modulation == LIB_NR_MODULATION_HALF_PI_BPSK)
        for (std::size_t i = 1; i < symbols.size(); i += 2)
            symbols[i] |= 2;
}

void lib_nr_phy_sch_process_t::_explain_codeword(unsigned int payload_bits,
                                                 const lib_nr_packed_code_word_t::settings_t& settings,
                                                 const std::vector<std::uint16_t>& symbols)
{
    const auto packed_bit = [](const std::vector<std::uint64_t>& words, std::size_t i) {
        return words[i / 64] >> (i % 64) & 1u;
    };
    const auto payload_bit = [&](std::size_t i) { return packed_bit(m_packed_payload, i); };
    const auto scrambled_bit = [&](std::size_t i) {
        return std::uint64_t{symbols[i / settings.q_m]} >> (i % settings.q_m) & 1u;
    };
    const std::size_t sent = symbols.size() * settings.q_m;
    m_explanation->c_init = {settings.c_init};
    m_explanation->add_stage("payload", payload_bits, payload_bit);
    if (m_enable_coding) {
        const lib_nr_ldpc_segments_t& segments = m_code_word.get_segments();
        m_explanation->coding = {payload_bits,
                                 settings.base_graph == LIB_NR_LDPC_BASE_GRAPH_1 ? 1u : 2u,
                                 segments.lifting_size,
                                 static_cast<unsigned int>(segments.count),
                                 m_code_word.get_output_lengths(),
                                 settings.g,
                                 m_code_word.get_start_index()};
        const lib_nr_crc_type_t crc = lib_nr_ldpc_code_block_segmentation_t::get_transport_block_crc_type(payload_bits);
        m_explanation->add_stage("crc", payload_bits + lib_nr_crc_calculator_t::get_crc_length(crc), payload_bit);
        m_explanation->add_stage("rate_matched", sent, [&](std::size_t i) {
            return scrambled_bit(i) ^ packed_bit(m_code_word.get_scrambling(), i);
        });
    }
    m_explanation->add_stage("scrambled", sent, scrambled_bit);
}

void lib_nr_phy_sch_process_t::_explain_figures()
{
    m_explanation->figures = {{"rnti", m_rnti}, {"n_id", m_nid},      {"q_m", m_q_m},
                              {"rv", m_rv},     {"layers", m_layers}, {"dmrs_port", m_dmrs_port.front()}};
    if (!m_explanation->dmrs_c_init.empty())
        m_explanation->figures.insert(m_explanation->figures.end(),
                                      {{"n_scid", m_nscid}, {"dmrs_n_id_0", m_nid0}, {"dmrs_n_id_1", m_nid1}});
}

std::vector<std::complex<double>> lib_nr_phy_sch_process_t::_points(double amplitude) const
{
    std::vector<std::complex<double>> points = lib_nr_modulator_t(m_modulation).get_points(amplitude);
    points.resize(std::max(points.size(), std::size_t{1} << m_q_m));
    return points;
}

void lib_nr_phy_sch_process_t::_phy_sch_codeword_by_bytes(unsigned int codeword)
{
    if (m_enable_coding) {
        _phy_sch_tbs();
        _phy_sch_payload_generation(m_tbs);
        _phy_sch_ldpc_base_graph_selection();
        _phy_sch_block_segmentation_and_crc();
        _phy_sch_channel_coding_rate_match();
        m_coded_bits.clear();
        m_coded_bits.reserve(m_g);
        for (const bits_t& block : m_rate_matched_blocks)
            m_coded_bits.insert(m_coded_bits.end(), block.begin(), block.end());
    }
    else {
        _phy_sch_payload_generation(m_g);
        m_coded_bits.swap(m_payload);
    }
    m_scrambled_bits.clear();
    _phy_sch_scrambling(m_coded_bits, m_scrambled_bits, codeword);
    lib_nr_modulator_t(m_modulation).deal_nr_modulation(m_scrambled_bits, m_codeword_symbols[codeword]);
}

/// TS 38.214 clause 5.1.3.2, steps 1 and 2.
void lib_nr_phy_sch_process_t::_phy_sch_tbs()
{
    const std::size_t dmrs = m_dmrs_symbols.size() * m_cdm_groups_without_data_num * _dmrs_per_rb();
    const std::size_t left_out = dmrs + m_x_overhead;
    const std::size_t all = std::size_t{k_subcarriers_per_rb} * m_symbol_num;
    const std::size_t per_rb = std::min<std::size_t>(all > left_out ? all - left_out : 0, k_most_re_per_rb);
    const double n_info =
        static_cast<double>(per_rb * m_rb_list.size()) * m_tb_scaling * m_target_code_rate * m_q_m * m_layers;
    m_tbs = lib_nr_transport_block_size(n_info, m_target_code_rate);
}

void lib_nr_phy_sch_process_t::_phy_sch_payload_generation(unsigned int length)
{
    _draw_payload([&](lib_nr_pn_payload_t& payload) { return payload.generate(length, m_payload); });
}

/// TS 38.212 clause 7.2.2.
void lib_nr_phy_sch_process_t::_phy_sch_ldpc_base_graph_selection()
{
    const bool is_graph_2 = m_tbs <= 292 || (m_tbs <= 3824 && m_target_code_rate <= 0.67) || m_target_code_rate <= 0.25;
    m_base_graph = is_graph_2 ? LIB_NR_LDPC_BASE_GRAPH_2 : LIB_NR_LDPC_BASE_GRAPH_1;
}

/// TS 38.212 clauses 7.2.1 and 7.2.3.
void lib_nr_phy_sch_process_t::_phy_sch_block_segmentation_and_crc()
{
    lib_nr_crc_calculator_t crc;
    crc.set_crc_type(lib_nr_ldpc_code_block_segmentation_t::get_transport_block_crc_type(m_tbs));
    crc.deal_crc_attachment(m_payload, m_payload);
    lib_nr_ldpc_code_block_segmentation_t segmentation;
    segmentation.set_base_graph_type(m_base_graph);
    segmentation.deal_code_block_segmentation(m_payload, m_code_blocks);
}

void lib_nr_phy_sch_process_t::_phy_sch_channel_coding_rate_match() { _code_and_match(1); }

void lib_nr_phy_sch_process_t::_code_and_match(unsigned int i_lbrm)
{
    lib_nr_ldpc_coding_t coder;
    coder.set_base_graph_type(m_base_graph);
    m_encoded_blocks.resize(m_code_blocks.size());
    for (std::size_t i = 0; i < m_code_blocks.size(); ++i)
        coder.deal_ldpc_coding(m_code_blocks[i], m_encoded_blocks[i]);

    lib_nr_ldpc_rate_match_t rate_match;
    rate_match.set_base_graph_type(m_base_graph);
    rate_match.set_i_lbrm(i_lbrm);
    rate_match.set_c(static_cast<unsigned int>(m_encoded_blocks.size()));
    rate_match.set_q_m(m_q_m);
    rate_match.set_n_l(m_layers);
    rate_match.set_g(m_g);
    rate_match.set_rv_id(m_rv);
    rate_match.deal_rate_match(m_encoded_blocks, m_rate_matched_blocks);
}

unsigned int lib_nr_phy_sch_process_t::_scrambling_c_init(unsigned int codeword) const
{
    return (m_rnti << 15) + (codeword << 14) + m_nid;
}

bool lib_nr_phy_sch_process_t::_phy_sch_scrambling(const bits_t& in, bits_t& out, unsigned int codeword)
{
    return _scramble(_scrambling_c_init(codeword), in, out);
}

/// TS 38.211 clause 7.3.1.1, with the initial value given.
bool lib_nr_phy_sch_process_t::_scramble(unsigned int c_init, const bits_t& in, bits_t& out)
{
    if (in.empty()) {
        std::cout << "error,input data is empty" << std::endl;
        return false;
    }
    out.resize(in.size());
    lib_nr_sequence_generator_t::add_pseudo_random_bits(c_init, in.size(), in.data(), out.data());
    return true;
}

void lib_nr_phy_sch_process_t::_phy_sch_layer_mapping()
{
    const std::vector<std::complex<double>> points = _points(1.0);
    const auto modulate = [&points](const std::vector<std::uint16_t>& numbers, symbols_t& symbols) {
        symbols.resize(numbers.size());
        std::transform(numbers.begin(), numbers.end(), symbols.begin(),
                       [&points](std::uint16_t number) { return points[number]; });
    };
    if (m_layers == 1) { // its code word as it stands
        m_layer_symbols.resize(1);
        modulate(m_codeword_numbers[0], m_layer_symbols[0]);
        return;
    }
    for (std::size_t codeword = 0; codeword < m_codeword_numbers.size(); ++codeword)
        modulate(m_codeword_numbers[codeword], m_codeword_symbols[codeword]);
    lib_nr_dl_phy_layer_mapping_t mapping;
    mapping.set_layer_number(m_layers);
    mapping.set_cw1_symbol_number(static_cast<unsigned int>(m_codeword_symbols[0].size()));
    mapping.set_cw2_symbol_number(static_cast<unsigned int>(m_codeword_symbols[1].size()));
    mapping._dl_phy_pdsch_layer_mapping(m_codeword_symbols, m_layer_symbols);
}

void lib_nr_phy_sch_process_t::_phy_sch_precoding(const layers_t& in, layers_t& out)
{
    lib_nr_dl_phy_pre_coding_t precoder;
    precoder.set_port_number(m_layers);
    precoder._dl_phy_pdsch_pre_coding(in, out);
}

void lib_nr_phy_sch_process_t::_clear_slot()
{
    m_dmrs_sequences.clear();
    for (std::vector<std::uint16_t>& symbols : m_codeword_numbers)
        symbols.clear();
    for (symbols_t& symbols : m_codeword_symbols)
        symbols.clear();
    m_layer_symbols.clear();
    m_precoded_symbols.clear();
}

// Reference signals

void lib_nr_phy_sch_process_t::_phy_sch_rs_generation(unsigned int port, unsigned int slot)
{
    const unsigned int group = _cdm_group_of(port);
    const auto [entry, is_new] = m_dmrs_sequences.try_emplace(group);
    if (!is_new)
        return;
    _phy_sch_dmrs_time_domain_allocation(m_dmrs_symbols);
    const bool swaps = m_enable_dmrs_downlink_r16 && group == 1;
    const unsigned int n_scid = swaps ? 1 - m_nscid : m_nscid;
    const unsigned int group_term = m_enable_dmrs_downlink_r16 ? group / 2 : 0;
    const unsigned int n_id = n_scid == 1 ? m_nid1 : m_nid0;
    const unsigned int length = _dmrs_sequence_length();
    const bool explains = _explains() && m_explanation->dmrs_symbols.empty(); // the first port
    for (const unsigned int symbol : m_dmrs_symbols) {
        const unsigned int c_init =
            lib_nr_dmrs_initial_value(m_symbol_per_slot * slot + symbol, n_id, n_scid, group_term);
        lib_nr_append_reference_signal(c_init, length, entry->second);
        if (explains) {
            m_explanation->dmrs_symbols.push_back(symbol);
            m_explanation->dmrs_c_init.push_back(c_init);
        }
    }
}

unsigned int lib_nr_phy_sch_process_t::_dmrs_sequence_length() const
{
    if (m_rb_list.empty())
        return 0;
    const unsigned int reference = m_dmrs_mapping_ref == LIB_NR_DMRS_MAPPING_REF_PRB ? 0 : m_bwp_rb_start;
    return (*std::max_element(m_rb_list.begin(), m_rb_list.end()) + 1 + reference) * _dmrs_per_rb();
}

unsigned int lib_nr_phy_sch_process_t::_dmrs_index_of(unsigned int subcarrier) const
{
    const dmrs_comb_t comb = _dmrs_comb();
    const unsigned int place = subcarrier - m_dmrs_reference_rb * k_subcarriers_per_rb;
    return place / comb.period * comb.width + place % comb.width;
}

void lib_nr_phy_sch_process_t::_phy_sch_dmrs_time_domain_allocation(std::vector<unsigned int>& symbols)
{
    const bool is_type_b = m_mapping_type == LIB_NR_DMRS_MAPPING_TYPEB;
    _list_dmrs_symbols(get_pdsch_dmrs_position_row(_is_double_symbol(), is_type_b, m_dmrs_additional_position,
                                                   is_type_b ? m_symbol_num : m_first_symbol + m_symbol_num),
                       symbols);
}

void lib_nr_phy_sch_process_t::_list_dmrs_symbols(const lib_nr_dmrs_position_row_t* row,
                                                  std::vector<unsigned int>& symbols) const
{
    symbols.clear();
    if (!row)
        return;
    const bool is_type_b = m_mapping_type == LIB_NR_DMRS_MAPPING_TYPEB;
    const auto append = [&](unsigned int symbol) {
        symbols.push_back(symbol);
        if (_is_double_symbol())
            symbols.push_back(symbol + 1);
    };
    append(is_type_b ? m_first_symbol : m_l0);
    for (std::size_t i = 0; i < row->number; ++i)
        append((is_type_b ? m_first_symbol : 0) + row->positions[i]);
}

void lib_nr_phy_sch_process_t::_get_ptrs_symbol_position(const std::vector<unsigned int>& dmrs_symbols,
                                                         std::vector<unsigned int>& symbols) const
{
    symbols.clear();
    if (dmrs_symbols.empty() || !m_enable_ptrs)
        return;
    const unsigned int end = m_first_symbol + m_symbol_num;
    const unsigned int step = m_ptrs_time_density;
    unsigned int reference = m_first_symbol;
    unsigned int i = 0;
    while (reference + i * step < end) {
        const unsigned int last = reference + i * step;
        const unsigned int first = i == 0 ? reference : last - step + 1;
        const auto dmrs = std::find_if(dmrs_symbols.begin(), dmrs_symbols.end(),
                                       [=](unsigned int symbol) { return symbol >= first && symbol <= last; });
        if (dmrs != dmrs_symbols.end()) {
            reference = *dmrs + (_is_double_symbol() ? 1 : 0);
            i = 1;
        }
        else {
            symbols.push_back(last);
            ++i;
        }
    }
}

bool lib_nr_phy_sch_process_t::_phy_sch_ptrs_re_index_generation(unsigned int port,
                                                                 std::vector<unsigned int>& subcarriers)
{
    subcarriers.clear();
    const std::size_t ports = _is_type_1() ? tbs_k_re_ref_type1.size() : tbs_k_re_ref_type2.size();
    if (port >= ports || !m_enable_ptrs || m_rb_list.empty())
        return false;
    const unsigned int k_re = (_is_type_1() ? tbs_k_re_ref_type1[port] : tbs_k_re_ref_type2[port])[m_ptrs_re_offset];
    const unsigned int step = m_ptrs_frequency_density;
    const unsigned int rest = static_cast<unsigned int>(m_rb_list.size()) % step;
    rb_list_t rbs = m_rb_list;
    std::sort(rbs.begin(), rbs.end());
    for (std::size_t i = m_rnti % (rest != 0 ? rest : step); i < rbs.size(); i += step)
        subcarriers.push_back(rbs[i] * k_subcarriers_per_rb + k_re);
    return true;
}

void lib_nr_phy_sch_process_t::_append_covered_dmrs(unsigned int port, std::size_t position,
                                                    const std::complex<double>* sequence, std::size_t length,
                                                    symbols_t& values) const
{
    const bool turns_in_time = port > (_is_type_1() ? 3u : 5u) && position % 2 == 1;
    const double even = turns_in_time ? -1.0 : 1.0;
    const double odd = port % 2 == 1 ? -even : even;
    for (std::size_t i = 0; i < length; ++i)
        values.push_back((i % 2 == 0 ? even : odd) * sequence[i]);
}

// Resource elements

double lib_nr_phy_sch_process_t::_amplitude_of(double power) const
{
    return common_lib::lib_common_math_t::db_value_to_amplitude_ratio(m_power_boosting + power);
}

void lib_nr_phy_sch_process_t::_phy_sch_rb_index_type_0()
{
    const unsigned int end = m_bwp_rb_start + m_bwp_rb_num;
    unsigned int rb = m_bwp_rb_start;
    for (std::size_t group = 0; group < m_rbg_bitmap.size() && rb < end; ++group) {
        const unsigned int group_end = std::min(end, (rb / m_rbg_size + 1) * m_rbg_size);
        for (; rb < group_end; ++rb)
            if (m_rbg_bitmap[group] == 1)
                m_rb_list.push_back(rb);
    }
}

void lib_nr_phy_sch_process_t::_append_rb_runs(const rb_list_t& rb_list, unsigned int symbol, int shift,
                                               std::vector<lib_nr_resource_run_t>& runs)
{
    for (std::size_t i = 0; i < rb_list.size();) {
        const std::size_t first = i;
        while (++i < rb_list.size() && rb_list[i] == rb_list[i - 1] + 1) {
        }
        const auto first_rb = static_cast<std::int32_t>(rb_list[first]) + shift;
        runs.push_back({symbol, first_rb * static_cast<std::int32_t>(k_subcarriers_per_rb),
                        static_cast<std::uint32_t>(i - first) * k_subcarriers_per_rb});
    }
}

unsigned int lib_nr_phy_sch_process_t::_subcarriers_without_data() const
{
    const dmrs_comb_t comb = _dmrs_comb();
    return std::min(m_cdm_groups_without_data_num * comb.width, comb.period);
}

/// A whole period is one run, and so is a part of one subcarrier, with gaps.
void lib_nr_phy_sch_process_t::_append_comb_part(const lib_nr_resource_run_t& rbs, unsigned int first, unsigned int end,
                                                 std::vector<lib_nr_resource_run_t>& runs) const
{
    const unsigned int period = _dmrs_comb().period;
    const std::int32_t start = rbs.first_subcarrier + static_cast<std::int32_t>(first);
    if (end - first == period)
        runs.push_back(rbs);
    else if (end == first + 1)
        runs.push_back({rbs.symbol, start, rbs.count / period, period});
    else if (first < end)
        for (std::uint32_t i = 0; i < rbs.count; i += period)
            runs.push_back({rbs.symbol, start + static_cast<std::int32_t>(i), end - first});
}

void lib_nr_phy_sch_process_t::_split_dmrs_symbol(const lib_nr_resource_run_t& rbs, unsigned int group,
                                                  lib_nr_sch_cells_t& cells) const
{
    const dmrs_comb_t comb = _dmrs_comb();
    const unsigned int reserved = _subcarriers_without_data();
    const unsigned int own = std::min(group * comb.width, reserved);
    const unsigned int own_end = std::min(own + comb.width, reserved);
    _append_comb_part(rbs, 0, own, cells.silent);
    _append_comb_part(rbs, own, own_end, cells.dmrs);
    _append_comb_part(rbs, own_end, reserved, cells.silent);
    _append_comb_part(rbs, reserved, comb.period, cells.data);
}

void lib_nr_phy_sch_process_t::_split_ptrs_symbol(const lib_nr_resource_run_t& rbs,
                                                  const std::vector<unsigned int>& ptrs_subcarriers,
                                                  lib_nr_sch_cells_t& cells)
{
    auto first = static_cast<std::uint32_t>(rbs.first_subcarrier);
    const std::uint32_t end = first + rbs.count;
    const auto append_data = [&](std::uint32_t data_end) {
        if (first < data_end)
            cells.data.push_back({rbs.symbol, static_cast<std::int32_t>(first), data_end - first});
    };
    for (auto ptrs = std::lower_bound(ptrs_subcarriers.begin(), ptrs_subcarriers.end(), first);
         ptrs != ptrs_subcarriers.end() && *ptrs < end; ++ptrs)
    {
        append_data(*ptrs);
        cells.ptrs.push_back({rbs.symbol, static_cast<std::int32_t>(*ptrs), 1});
        first = *ptrs + 1;
    }
    append_data(end);
}

} // namespace vek::nr_mod_lib

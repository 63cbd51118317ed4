#include "phy_ul/lib_nr_ul_phy_pusch_process.h"

#include "common/lib_common_math.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy_common/lib_nr_interlace.h"
#include "phy_common/lib_nr_mcs.h"
#include "phy_common/lib_nr_reference_signal.h"
#include "phy_common/lib_nr_sequence_generator.h"
#include "phy_common/lib_nr_sequence_hopping.h"
#include "phy_common/lib_nr_transform_precoding.h"
#include "phy_common/tables/lib_nr_dmrs_position_table.h"
#include "phy_common/tables/lib_nr_ptrs_sample_table.h"
#include "phy_ul/lib_nr_low_papr_sequence1.h"
#include "phy_ul/lib_nr_ul_phy_pre_coding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iostream>
#include <map>
#include <numeric>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_low_papr_group = 127; ///< in the map of DMRS sequences

lib_nr_channel_resource_manager_t& grid() { return lib_nr_channel_resource_manager_t::get_inst(); }

/// The place of a value in a list, the list's length where it is not there.
std::size_t place_of(const std::vector<unsigned int>& list, unsigned int value)
{
    return static_cast<std::size_t>(std::find(list.begin(), list.end(), value) - list.begin());
}

bool contains(const std::vector<unsigned int>& list, unsigned int value) { return place_of(list, value) < list.size(); }

/// Puts samples of a transform-precoded symbol at their ascending positions, data between them.
void merge_samples(const std::complex<double>* data, const std::complex<double>* samples, double sample_amplitude,
                   const std::vector<unsigned int>& positions, std::vector<std::complex<double>>& symbol)
{
    std::size_t first = 0;
    for (const std::size_t position : positions) {
        std::copy_n(data, position - first, symbol.data() + first);
        data += position - first;
        symbol[position] = sample_amplitude * *samples++;
        first = position + 1;
    }
    std::copy_n(data, symbol.size() - first, symbol.data() + first);
}

/// The way back.
void part_samples(const std::vector<std::complex<double>>& symbol, const std::vector<unsigned int>& positions,
                  double sample_amplitude, std::complex<double>* data, std::complex<double>* samples)
{
    std::size_t first = 0;
    for (const std::size_t position : positions) {
        data = std::copy_n(symbol.data() + first, position - first, data);
        *samples++ = sample_amplitude * symbol[position];
        first = position + 1;
    }
    std::copy_n(symbol.data() + first, symbol.size() - first, data);
}

} // namespace

lib_nr_ul_phy_pusch_process_t::lib_nr_ul_phy_pusch_process_t()
{
    set_dmrs_port({0, 1, 3});
    set_cdm_groups_without_data_num(2);
    set_symbol_num(13);
    set_rb_num(100);
    set_rb_offset(50);
    set_mcs(2);
    set_dmrs_additional_position(LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1);
    set_enable_ptrs(true);
    set_n_ptrs_group_sample(LIB_NR_PTRS_GROUP_SAMPLE_4);
    set_n_ptrs_group(LIB_NR_PTRS_GROUP_8);
    set_antenna_port_number(LIB_NR_ANTENNA_PORT_NUMBER_4);
    set_enable_codebook(true);
    set_bwp_rb_start(3);
    set_bwp_rb_num(270);
    update_read_only_parament();
}

// Settings

bool lib_nr_ul_phy_pusch_process_t::set_waveform_config(unsigned int carrier, unsigned int numerology,
                                                        unsigned int channel,
                                                        const lib_nr_waveform_configure_manager_t& waveform)
{
    const lib_nr_carrier_configure_manager_t& configuration = waveform.get_carrier(carrier);
    const lib_nr_ul_sch_configure_manager_t& manager = configuration.get_ul_sch(channel);
    set_modulation(manager.get_modulation()); // the rows of one bit per symbol ask for it
    set_waveform_config_sch(carrier, numerology, manager, waveform);
    set_enable_transfer_precoding(manager.get_enable_transfer_precoding());
    set_rapid(manager.get_rapid());
    set_enable_codebook(manager.get_enable_codebook());
    set_antenna_port_number(manager.get_antenna_port_number());
    set_tpmi(manager.get_tpmi());
    set_rb_set_start(manager.get_rb_set_start());
    set_rb_set_number(manager.get_rb_set_number());
    set_interlace_index(manager.get_interlace_index_v());
    set_hopping_mode(manager.get_hopping_mode());
    set_hopping_rb_offset(manager.get_hopping_rb_offset());
    set_enable_lbrm(manager.get_enable_lbrm());
    set_dmrs_hopping(manager.get_dmrs_hopping());
    set_n_rs_id(_identity_in_use(manager.get_n_rs_id(), configuration.get_cell_index()));
    set_ptrs_port(manager.get_ptrs_port_v());
    set_n_ptrs_group_sample(manager.get_n_ptrs_group_sample());
    set_n_ptrs_group(manager.get_n_ptrs_group());
    set_n_ptrs_id(manager.get_n_ptrs_id());
    m_numerology = configuration.get_ul_bwp(manager.get_bwp_id()).get_numerology();
    m_rb_sets = configuration.get_numerology_manager(numerology).get_ul_guard_band().get_rb_set_info();
    m_unused_rb = manager.get_unused_rb();
    return true;
}

void lib_nr_ul_phy_pusch_process_t::update_read_only_parament()
{
    m_layers = static_cast<unsigned int>(m_dmrs_port.size());
    mcs_table_t table = m_mcs_table;
    if (table > TABLE_6_1_4_1_2 || table == TABLE_5_1_3_1_4) {
        std::cout << "lib_nr_phy_sch_process_t::_phy_sch_payload_generation : Error MCS table!" << std::endl;
        table = TABLE_5_1_3_1_1;
    }
    const lib_nr_mcs_t mcs = read_mcs(table, m_mcs, m_modulation);
    if (mcs.is_open && m_modulation != mcs.modulation)
        std::cout << "lib_nr_phy_sch_process_t::update_read_only_parament : Error modulation!" << std::endl;
    _apply_mcs(mcs);
}

void lib_nr_ul_phy_pusch_process_t::set_antenna_port_number(lib_nr_antenna_port_number_t number)
{
    m_antenna_port_number = number;
    if (number >= LIB_NR_ANTENNA_PORT_NUMBER_1 && number <= LIB_NR_ANTENNA_PORT_NUMBER_4)
        return;
    std::cout << "lib_nr_ul_phy_pusch_process_t::set_antenna_port_number : Error antenna port number" << std::endl;
    m_antenna_port_number = LIB_NR_ANTENNA_PORT_NUMBER_4;
}

void lib_nr_ul_phy_pusch_process_t::set_hopping_rb_offset(unsigned int rb_offset)
{
    const bool wraps = m_rb_offset + m_rb_num + rb_offset > m_bwp_rb_num;
    m_hop_shift = rb_offset - (wraps ? m_bwp_rb_num : 0);
}

void lib_nr_ul_phy_pusch_process_t::set_n_ptrs_group_sample(lib_nr_sch_ptrs_group_sample_t samples)
{
    if (samples <= LIB_NR_PTRS_GROUP_SAMPLE_4)
        m_ptrs_samples_per_group = 2u << samples;
    else
        std::cout << "lib_nr_ul_phy_pusch_process_t::set_n_ptrs_group_sample : Error PT-RS N^{group}_{sample}"
                  << std::endl;
}

void lib_nr_ul_phy_pusch_process_t::set_n_ptrs_group(lib_nr_sch_ptrs_group_t groups)
{
    if (groups <= LIB_NR_PTRS_GROUP_8)
        m_ptrs_groups = 2u << groups;
    else
        std::cout << "lib_nr_ul_phy_pusch_process_t::set_n_ptrs_group : Error PT-RS N^{PT-RS}_{group}" << std::endl;
}

// The chain

// The reference signals come first: their mapping leaves the cells that the data fills.
bool lib_nr_ul_phy_pusch_process_t::sch_encode_process(unsigned int slot)
{
    _phy_sch_rb_index();
    if (m_rb_list.empty())
        return true;
    m_dmrs_sequences.clear();
    m_ptrs_streams.assign(m_dmrs_port.size(), {});
    for (const unsigned int port : m_dmrs_port)
        _phy_sch_rs_generation(port, slot);
    _phy_sch_rs_encode_re_map(slot, m_rb_list);
    for (unsigned int q = 0; q < _get_codewords_from_layer(m_layers); ++q)
        _phy_sch_codeword(q);
    if (!_is_one_stream()) {
        _phy_sch_layer_mapping();
        _phy_sch_precoding(m_layer_symbols, m_precoded_symbols);
    }
    phy_sch_remap(slot, LIB_NR_REMAPP_MODE_ENCODE_MAP);
    if (m_explanation)
        _explain(slot);
    _clear_slot();
    return true;
}

/// The DMRS symbols of hops are listed out of order.
void lib_nr_ul_phy_pusch_process_t::_explain(unsigned int slot)
{
    const unsigned int first_symbol = slot * m_symbol_per_slot;
    std::vector<lib_nr_resource_run_t> runs;
    _place(
        slot, [&](unsigned int) -> const auto& { return m_rb_runs; }, runs);
    const auto second_hop = std::find_if(runs.begin(), runs.end(), [&](const lib_nr_resource_run_t& run) {
        return _hops_in_slot() && run.symbol - first_symbol >= _hop_boundary();
    });
    m_explanation->add_runs({runs.begin(), second_hop}, first_symbol);
    m_explanation->add_runs({second_hop, runs.end()}, first_symbol, true);
    if (m_antenna_port < (_is_one_stream() ? 1 : m_precoded_symbols.size()))
        m_explanation->add_cells(m_cells.data, first_symbol);
    if (m_enable_transfer_precoding)
        m_explanation->dmrs_symbols = m_dmrs_symbols;
    _explain_figures();
    std::map<unsigned int, std::uint32_t> initial_values;
    for (std::size_t i = 0; i < m_explanation->dmrs_c_init.size(); ++i)
        initial_values[m_explanation->dmrs_symbols[i]] = m_explanation->dmrs_c_init[i];
    m_explanation->dmrs_c_init.clear();
    for (const auto& [symbol, initial_value] : initial_values)
        m_explanation->dmrs_c_init.push_back(initial_value);
    std::sort(m_explanation->dmrs_symbols.begin(), m_explanation->dmrs_symbols.end());
}

/// One layer on one port, as it is: its symbols go into the grid straight from their numbers.
bool lib_nr_ul_phy_pusch_process_t::_is_one_stream() const
{
    return m_layers == 1 && !m_enable_transfer_precoding && (!m_enable_codebook || m_antenna_port_number == 1);
}

void lib_nr_ul_phy_pusch_process_t::_phy_sch_channel_coding_rate_match() { _code_and_match(m_enable_lbrm ? 1 : 0); }

/// TS 38.211 clause 6.3.1.1; a RAPID is that of msgA. An initial value has 31 bits: a high RNTI's first is lost.
unsigned int lib_nr_ul_phy_pusch_process_t::_scrambling_c_init(unsigned int /*codeword*/) const
{
    constexpr unsigned int k_initial_value_bits = 0x7FFFFFFF;
    return m_rapid < 0 ? (m_rnti << 15) + m_nid
                       : ((m_rnti << 16) + (static_cast<unsigned int>(m_rapid) << 10) + m_nid) & k_initial_value_bits;
}

/// TS 38.211 clause 6.3.1.5.
void lib_nr_ul_phy_pusch_process_t::_phy_sch_precoding(const layers_t& in, layers_t& out)
{
    _ul_phy_pusch_transfer_precoding();
    if (!m_enable_codebook || m_antenna_port_number == 1) {
        lib_nr_phy_sch_process_t::_phy_sch_precoding(in, out);
        return;
    }
    lib_nr_ul_phy_pre_coding_t precoder;
    precoder.set_standard_rules(m_rules.is_standard());
    precoder.set_antenna_number(m_antenna_port_number);
    precoder.set_tpmi_index(m_tpmi);
    precoder.set_transfer_precoding(m_enable_transfer_precoding);
    precoder._ul_phy_pusch_pre_coding(in, out);
    for (layers_t* const streams : {&m_dmrs_streams, &m_ptrs_streams}) {
        layers_t precoded;
        precoder._ul_phy_pusch_pre_coding(*streams, precoded);
        streams->swap(precoded);
    }
    m_rules.add_met(precoder.get_rules());
}

/// TS 38.211 clause 6.3.1.4: PTRS samples take part in the transform at their places; what it leaves there is theirs.
void lib_nr_ul_phy_pusch_process_t::_ul_phy_pusch_transfer_precoding()
{
    if (!m_enable_transfer_precoding)
        return;
    const std::size_t length = m_rb_list.size() * k_subcarriers_per_rb;
    std::vector<unsigned int> samples = m_ptrs_samples;
    std::sort(samples.begin(), samples.end());
    samples.erase(std::unique(samples.begin(), samples.end()), samples.end());
    samples.erase(std::lower_bound(samples.begin(), samples.end(), length), samples.end());

    std::size_t symbols = 0;
    for (unsigned int symbol = m_first_symbol; symbol < m_first_symbol + m_symbol_num; ++symbol)
        symbols += contains(m_dmrs_symbols, symbol) ? 0 : 1;
    symbols_t& data = m_layer_symbols.front();
    data.resize(symbols * length - m_ptrs_symbols.size() * samples.size());
    std::complex<double>* next_data = data.data();
    std::complex<double>* next_sample = m_ptrs_streams.front().data();
    symbols_t block(length);
    for (unsigned int symbol = m_first_symbol; symbol < m_first_symbol + m_symbol_num; ++symbol) {
        if (contains(m_dmrs_symbols, symbol))
            continue;
        if (!contains(m_ptrs_symbols, symbol)) {
            deal_transform_precoding(next_data, length);
            next_data += length;
            continue;
        }
        // The boosting of the channel: the rest of the symbol gets it where it is written.
        const double before = m_rules.pick(lib_nr_deviation_t::dft_ptrs_power, _amplitude_of(m_ptrs_power),
                                           common_lib::lib_common_math_t::db_value_to_amplitude_ratio(m_ptrs_power));
        const double behind = m_rules.pick(lib_nr_deviation_t::dft_ptrs_power, 1.0, _amplitude_of(0.0));
        merge_samples(next_data, next_sample, before, samples, block);
        deal_transform_precoding(block.data(), length);
        part_samples(block, samples, behind, next_data, next_sample);
        next_data += length - samples.size();
        next_sample += samples.size();
    }
}

// Symbols and resource blocks

void lib_nr_ul_phy_pusch_process_t::_phy_sch_dmrs_time_domain_allocation(std::vector<unsigned int>& symbols)
{
    if (!_is_double_symbol() && _hops_in_slot()) {
        _list_dmrs_symbols_of_hops(symbols);
        return;
    }
    const bool is_type_b = m_mapping_type == LIB_NR_DMRS_MAPPING_TYPEB;
    const auto row_at = [&](unsigned int length) {
        return get_pusch_dmrs_position_row(_is_double_symbol(), is_type_b, m_dmrs_additional_position, length);
    };
    // The shortest length that has a DMRS by the standard has none by the own rule, and is like the next one.
    const unsigned int length = is_type_b ? m_symbol_num : m_first_symbol + m_symbol_num;
    const bool is_shortest = !_is_double_symbol() && length == (is_type_b ? 1 : 4);
    _list_dmrs_symbols(
        m_rules.pick(lib_nr_deviation_t::pusch_short_dmrs, row_at(length), row_at(is_shortest ? length + 1 : length)),
        symbols);
}

/// TS 38.211 Table 6.4.1.1.3-6. The list is not in the order of time, which nothing asks for: the first symbol of each
/// hop carries the sequence that is also its PTRS.
void lib_nr_ul_phy_pusch_process_t::_list_dmrs_symbols_of_hops(std::vector<unsigned int>& symbols) const
{
    constexpr unsigned int k_least_of_type_a = 4;
    constexpr unsigned int k_least_with_additional = 5;
    constexpr unsigned int k_least_with_additional_of_type_a = 7;
    const bool is_type_b = m_mapping_type == LIB_NR_DMRS_MAPPING_TYPEB;
    const bool has_additional = m_dmrs_additional_position == LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1;
    const unsigned int first_length = m_symbol_num / 2;
    const unsigned int second_length = m_symbol_num - first_length;
    symbols.clear();
    if (!is_type_b && first_length < k_least_of_type_a)
        return;
    symbols.push_back(is_type_b ? 0 : m_l0);
    if (has_additional && is_type_b && first_length >= k_least_with_additional)
        symbols.push_back(4);
    if (has_additional && !is_type_b && m_l0 == 2 && first_length >= k_least_with_additional_of_type_a)
        symbols.push_back(6);
    symbols.push_back(first_length);
    if (has_additional && second_length >= k_least_with_additional)
        symbols.insert(symbols.begin() + 1, first_length + 4);
    for (unsigned int& symbol : symbols)
        symbol += m_first_symbol;
}

void lib_nr_ul_phy_pusch_process_t::_phy_sch_rb_index()
{
    m_rb_list.clear();
    switch (known_or_first(m_ra_type, LIB_NR_SCH_RA_TYPE2)) {
    case LIB_NR_SCH_RA_TYPE0:
        _phy_sch_rb_index_type_0();
        return;
    case LIB_NR_SCH_RA_TYPE1:
        m_rb_list.resize(m_rb_num);
        std::iota(m_rb_list.begin(), m_rb_list.end(), m_bwp_rb_start + m_rb_offset);
        return;
    case LIB_NR_SCH_RA_TYPE2:
        _ul_phy_pusch_rb_index_type_2();
        return;
    }
}

/// TS 38.214 clause 6.1.2.2.3. RB sets that are gone have no RBs.
void lib_nr_ul_phy_pusch_process_t::_ul_phy_pusch_rb_index_type_2()
{
    m_rb_list = m_rules.pick(lib_nr_deviation_t::interlaces, _list_interlaces_set_by_set(), _list_interlaces_of_grid());
}

/// The own rule: one interlace after the other, each counted from the first RB of each set; the last RB of a set is not
/// interlace 0's.
lib_nr_ul_phy_pusch_process_t::rb_list_t lib_nr_ul_phy_pusch_process_t::_list_interlaces_set_by_set() const
{
    const int step = static_cast<int>(get_pusch_interlace_number(m_numerology));
    rb_list_t rbs;
    for (const unsigned int interlace : m_interlaces)
        for (const auto& [index, set] : m_rb_sets) {
            if (!_is_chosen_rb_set(index))
                continue;
            const auto [first, last] = set;
            for (int x = first; x < last; x += step)
                if (const int rb = x + static_cast<int>(interlace); rb <= last - static_cast<int>(m_unused_rb))
                    rbs.push_back(static_cast<unsigned int>(rb));
        }
    return rbs;
}

/// Ascending, in the sets and the guard bands between them. An interlace counts through the grid, TS 38.211 clause
/// 4.4.4.6.
lib_nr_ul_phy_pusch_process_t::rb_list_t lib_nr_ul_phy_pusch_process_t::_list_interlaces_of_grid() const
{
    std::vector<unsigned int> edges; // of the chosen sets
    for (const auto& [index, set] : m_rb_sets)
        if (_is_chosen_rb_set(index)) {
            const unsigned int end = set.second + 1u;
            edges.insert(edges.end(), {set.first, end - std::min(m_unused_rb, end)}); // more than a set that shrank has
        }
    rb_list_t rbs;
    for (unsigned int rb = edges.empty() ? 0 : edges.front(); !edges.empty() && rb < edges.back(); ++rb)
        if (contains(m_interlaces, rb % get_pusch_interlace_number(m_numerology)))
            rbs.push_back(rb);
    return rbs;
}

bool lib_nr_ul_phy_pusch_process_t::_is_chosen_rb_set(unsigned int index) const
{
    return index >= m_rb_set_start && index - m_rb_set_start < m_rb_set_number;
}

/// RBs from where the channel was allocated to where a symbol lies.
std::int32_t lib_nr_ul_phy_pusch_process_t::_hop_shift(unsigned int symbol, unsigned int slot) const
{
    const bool is_second =
        m_hopping_mode == LIB_NR_SCH_HOPPING_MODE_INTER ? slot % 2 == 1 : _hops_in_slot() && symbol >= _hop_boundary();
    return is_second ? static_cast<std::int32_t>(m_hop_shift) : 0;
}

/// The same in subcarriers, modulo 2^32.
std::uint32_t lib_nr_ul_phy_pusch_process_t::_hop_shift_in_subcarriers(unsigned int symbol, unsigned int slot) const
{
    return static_cast<std::uint32_t>(_hop_shift(symbol, slot)) * k_subcarriers_per_rb;
}

// Resource elements

/// Puts runs of one symbol into each symbol of the channel, at the place of its hop: view and waveform both follow
/// this.
template <class runs_of_t>
void lib_nr_ul_phy_pusch_process_t::_place(unsigned int slot, runs_of_t runs_of,
                                           std::vector<lib_nr_resource_run_t>& placed) const
{
    placed.clear();
    for (unsigned int symbol = m_first_symbol; symbol < m_first_symbol + m_symbol_num; ++symbol) {
        const std::uint32_t shift = _hop_shift_in_subcarriers(symbol, slot);
        for (lib_nr_resource_run_t run : runs_of(symbol)) {
            run.symbol = slot * m_symbol_per_slot + symbol;
            run.first_subcarrier = static_cast<std::int32_t>(static_cast<std::uint32_t>(run.first_subcarrier) + shift);
            placed.push_back(run);
        }
    }
}

void lib_nr_ul_phy_pusch_process_t::_phy_sch_view_re_map(unsigned int slot, const rb_list_t& rb_list)
{
    if (m_hopping_mode > LIB_NR_SCH_HOPPING_MODE_INTER)
        std::cout << "lib_nr_ul_phy_pusch_process_t::_phy_sch_view_re_map : Error hopping mode!" << std::endl;
    std::vector<lib_nr_resource_run_t> rbs;
    std::vector<lib_nr_resource_run_t> runs;
    _append_rb_runs(rb_list, 0, 0, rbs);
    _place(
        slot, [&](unsigned int) -> const auto& { return rbs; }, runs);
    grid().mark_runs(runs, LIB_NR_RESOURCE_MAPPING_PUSCH);
}

/// What the cells of the slot carry.
void lib_nr_ul_phy_pusch_process_t::_list_cells(unsigned int slot, const rb_list_t& rb_list)
{
    std::vector<unsigned int> subcarriers;
    std::vector<unsigned int> ptrs_subcarriers;
    for (const unsigned int port : m_ptrs_port) {
        _phy_sch_ptrs_re_index_generation(port, subcarriers);
        ptrs_subcarriers.insert(ptrs_subcarriers.end(), subcarriers.begin(), subcarriers.end());
    }
    std::sort(ptrs_subcarriers.begin(), ptrs_subcarriers.end());
    ptrs_subcarriers.erase(std::unique(ptrs_subcarriers.begin(), ptrs_subcarriers.end()), ptrs_subcarriers.end());
    _get_ptrs_symbol_position(m_dmrs_symbols, m_ptrs_symbols);

    m_rb_runs.clear();
    _append_rb_runs(rb_list, 0, 0, m_rb_runs);
    lib_nr_sch_cells_t plain;
    lib_nr_sch_cells_t with_dmrs;
    lib_nr_sch_cells_t with_ptrs;
    plain.data = m_rb_runs;
    for (const lib_nr_resource_run_t& run : m_rb_runs) {
        _append_comb_part(run, 0, _subcarriers_without_data(), with_dmrs.dmrs);
        _append_comb_part(run, _subcarriers_without_data(), _dmrs_comb().period, with_dmrs.data);
        _split_ptrs_symbol(run, ptrs_subcarriers, with_ptrs);
    }
    const auto cells_of = [&](unsigned int symbol) -> const lib_nr_sch_cells_t& {
        return contains(m_dmrs_symbols, symbol) ? with_dmrs : contains(m_ptrs_symbols, symbol) ? with_ptrs : plain;
    };
    _place(
        slot, [&](unsigned int symbol) -> const auto& { return cells_of(symbol).data; }, m_cells.data);
    _place(
        slot, [&](unsigned int symbol) -> const auto& { return cells_of(symbol).dmrs; }, m_cells.dmrs);
    _place(
        slot, [&](unsigned int symbol) -> const auto& { return cells_of(symbol).ptrs; }, m_cells.ptrs);
}

/// All layers together. The downlink counts around other channels, the uplink its own cells.
void lib_nr_ul_phy_pusch_process_t::_phy_sch_caculate_g(unsigned int /*port*/, unsigned int /*slot*/)
{
    m_g = static_cast<unsigned int>(grid().count(m_cells.data).all()) * m_q_m * m_layers;
}

void lib_nr_ul_phy_pusch_process_t::_phy_sch_encode_re_map(unsigned int /*port*/, unsigned int /*slot*/,
                                                           const rb_list_t& /*rb_list*/)
{
    // What lies outside the grid and what has no symbol are both missing.
    const auto is_missing_some = [this](const std::vector<lib_nr_resource_run_t>& runs, const layers_t& streams,
                                        double amplitude) {
        static const symbols_t k_none;
        const symbols_t& stream = m_antenna_port < streams.size() ? streams[m_antenna_port] : k_none;
        return grid().write_stream(runs, stream, amplitude).inside != grid().count(runs).all();
    };
    bool is_incomplete = false;
    if (_is_one_stream() && m_antenna_port == 0) {
        symbols_t points = _points(1.0);
        const double amplitude = _amplitude_of(0.0);
        for (std::complex<double>& point : points)
            point *= amplitude;
        is_incomplete =
            grid().write_stream(m_cells.data, m_codeword_numbers[0], points).inside != grid().count(m_cells.data).all();
    }
    else
        is_incomplete = is_missing_some(m_cells.data, m_precoded_symbols, _amplitude_of(0.0));
    grid().set_content_at_work(LIB_NR_CELL_DMRS);
    is_incomplete |= is_missing_some(m_cells.dmrs, m_dmrs_streams, 1.0);
    grid().set_content_at_work(LIB_NR_CELL_PTRS);
    is_incomplete |= is_missing_some(m_cells.ptrs, m_ptrs_streams, 1.0);
    grid().set_content_at_work(LIB_NR_CELL_DATA);
    if (is_incomplete)
        std::cout << " mapping error" << std::endl;
}

// Reference signals

void lib_nr_ul_phy_pusch_process_t::_phy_sch_rs_generation(unsigned int port, unsigned int slot)
{
    if (m_enable_transfer_precoding) {
        _generate_low_papr_dmrs(slot);
        _phy_sch_ptrs_generation(port, slot);
        return;
    }
    // The sequence reaches the second hop, as far as the grid goes.
    const std::int64_t largest = *std::max_element(m_rb_list.begin(), m_rb_list.end());
    const std::int64_t grid_end = grid().get_mapped_subcarrier_number() / k_subcarriers_per_rb;
    const std::int64_t hop =
        m_hopping_mode == LIB_NR_SCH_HOPPING_MODE_DISABLE ? 0 : static_cast<std::int32_t>(m_hop_shift);
    m_rb_list.push_back(static_cast<unsigned int>(std::max(largest, std::min(largest + hop, grid_end - 1))));
    lib_nr_phy_sch_process_t::_phy_sch_rs_generation(port, slot);
    m_rb_list.pop_back();
}

/// TS 38.211 clause 6.4.1.1.1.2.
void lib_nr_ul_phy_pusch_process_t::_generate_low_papr_dmrs(unsigned int slot)
{
    constexpr std::int32_t k_delta = 1; // every second subcarrier
    _phy_sch_dmrs_time_domain_allocation(m_dmrs_symbols);
    m_dmrs_sequences.clear();
    symbols_t& sequences = m_dmrs_sequences[k_low_papr_group];
    const auto length = static_cast<std::uint32_t>(_dmrs_per_rb() * m_rb_list.size());
    // One of a pair of symbols.
    for (std::size_t i = 0; i < m_dmrs_symbols.size(); i += _is_double_symbol() ? 2 : 1) {
        const unsigned int symbol = m_dmrs_symbols[i];
        const unsigned int before = m_symbol_per_slot * slot;
        const auto [group_hop, number] =
            m_rules.pick(lib_nr_deviation_t::low_papr_symbol, _low_papr_hop(before + _symbol_in_hop(symbol), length),
                         _low_papr_hop(before + symbol, length));
        const unsigned int group = get_sequence_group(m_n_rs_id, group_hop);
        lib_nr_low_papr_sequence1::generate_low_papr_sequence_1({group, number, 0.0, k_delta, length}, sequences);
        if (m_explanation) {
            m_explanation->u.push_back(group);
            m_explanation->v.push_back(number);
        }
    }
}

/// The number of a DMRS symbol by the own rule: those of a hop count from its start, but for the second hop's first.
unsigned int lib_nr_ul_phy_pusch_process_t::_symbol_in_hop(unsigned int symbol) const
{
    if (_is_double_symbol() || !_hops_in_slot())
        return symbol;
    return symbol - (symbol > _hop_boundary() ? _hop_boundary() : m_first_symbol);
}

/// f_gh and v of a DMRS sequence, by its place among the symbols of the frame.
std::pair<unsigned int, unsigned int> lib_nr_ul_phy_pusch_process_t::_low_papr_hop(unsigned int place,
                                                                                   std::uint32_t length) const
{
    constexpr unsigned int k_least_hopping_length = 72;
    if (m_dmrs_hopping == LIB_NR_SCH_DMRS_HOPPING_GROUP)
        return {get_group_hop(m_n_rs_id / k_low_papr_groups, place), 0};
    if (m_dmrs_hopping == LIB_NR_SCH_DMRS_HOPPING_SEQUENCE && 2 * length / 12 * 6 >= k_least_hopping_length)
        return {0, get_sequence_number(m_n_rs_id, place)};
    return {0, 0};
}

/// With transform precoding the places of the samples, which are the same for every port.
bool lib_nr_ul_phy_pusch_process_t::_phy_sch_ptrs_re_index_generation(unsigned int port,
                                                                      std::vector<unsigned int>& subcarriers)
{
    if (!m_enable_transfer_precoding)
        return lib_nr_phy_sch_process_t::_phy_sch_ptrs_re_index_generation(port, subcarriers);
    subcarriers.clear();
    m_ptrs_samples.clear();
    if (!m_enable_ptrs || m_rb_list.empty())
        return false;
    m_ptrs_samples = get_ptrs_sample_positions(m_ptrs_groups, m_ptrs_samples_per_group,
                                               static_cast<std::uint32_t>(m_rb_list.size()) * k_subcarriers_per_rb);
    for (const unsigned int position : m_ptrs_samples)
        subcarriers.push_back(m_rb_list.front() * k_subcarriers_per_rb + position);
    return true;
}

/// TS 38.211 clause 6.4.1.2.1.2: the same samples in every PTRS symbol.
void lib_nr_ul_phy_pusch_process_t::_phy_sch_ptrs_generation(unsigned int port, unsigned int slot)
{
    symbols_t& stream = m_ptrs_streams[place_of(m_dmrs_port, port)];
    stream.clear();
    _get_ptrs_symbol_position(m_dmrs_symbols, m_ptrs_symbols);
    if (m_ptrs_symbols.empty())
        return;
    std::vector<unsigned int> subcarriers;
    _phy_sch_ptrs_re_index_generation(port, subcarriers);
    symbols_t w;
    _ul_phy_pusch_ptrs_w(w);
    bits_t bits;
    lib_nr_sequence_generator_t::generate_pseudo_random_sequence(
        lib_nr_dmrs_initial_value(m_symbol_per_slot * slot + m_ptrs_symbols.front(), m_n_ptrs_id),
        static_cast<unsigned int>(m_ptrs_samples.size()), bits);
    symbols_t samples;
    lib_nr_modulator_t(LIB_NR_MODULATION_BPSK).deal_nr_modulation(bits, samples);
    for (std::size_t m = 0; m < samples.size(); ++m) {
        const std::complex<double> turn = m_ptrs_samples[m] % 2 == 1 ? std::complex<double>{0.0, 1.0} : 1.0;
        samples[m] *= turn * w[m % w.size()];
    }
    for (std::size_t i = 0; i < m_ptrs_symbols.size(); ++i)
        stream.insert(stream.end(), samples.begin(), samples.end());
}

/// TS 38.211 Table 6.4.1.2.1.2-1.
void lib_nr_ul_phy_pusch_process_t::_ul_phy_pusch_ptrs_w(symbols_t& w) const
{
    if (m_ptrs_samples_per_group == 2) {
        w = {1.0, m_rnti % 2 == 0 ? 1.0 : -1.0};
        return;
    }
    constexpr std::array<std::array<double, 4>, 4> k_rows = {
        {{1.0, 1.0, 1.0, 1.0}, {1.0, -1.0, 1.0, -1.0}, {1.0, 1.0, -1.0, -1.0}, {1.0, -1.0, -1.0, 1.0}}};
    const auto& row = k_rows[m_rnti % k_rows.size()];
    w.assign(row.begin(), row.end());
}

/// Fills the streams of the reference signals and counts the bits that fit beside them.
void lib_nr_ul_phy_pusch_process_t::_phy_sch_rs_encode_re_map(unsigned int slot, const rb_list_t& rb_list)
{
    _list_cells(slot, rb_list);
    m_dmrs_streams.assign(m_dmrs_port.size(), {});
    for (std::size_t layer = 0; layer < m_dmrs_port.size(); ++layer) {
        _gather_dmrs(m_dmrs_port[layer], slot, m_dmrs_streams[layer]);
        if (!m_enable_transfer_precoding)
            _gather_ptrs(m_dmrs_port[layer], slot, m_ptrs_streams[layer]);
    }
    _phy_sch_caculate_g(m_dmrs_port.front(), slot);
}

/// The sequence of a DMRS symbol, by its place in the list of those.
lib_nr_ul_phy_pusch_process_t::sequence_t lib_nr_ul_phy_pusch_process_t::_dmrs_sequence_of(unsigned int port,
                                                                                           std::size_t place) const
{
    const auto entry = m_dmrs_sequences.find(m_enable_transfer_precoding ? k_low_papr_group : _cdm_group_of(port));
    if (entry == m_dmrs_sequences.end() || m_dmrs_symbols.empty())
        return {};
    const std::size_t symbols_of_one = m_enable_transfer_precoding && _is_double_symbol() ? 2 : 1;
    const std::size_t length = entry->second.size() / (m_dmrs_symbols.size() / symbols_of_one);
    return {entry->second.data() + place / symbols_of_one * length, static_cast<std::int64_t>(length)};
}

/// The DMRS of a port on all cells that carry no data, zeros on those of other CDM groups.
void lib_nr_ul_phy_pusch_process_t::_gather_dmrs(unsigned int port, unsigned int slot, symbols_t& stream) const
{
    for (unsigned int symbol = m_first_symbol; symbol < m_first_symbol + m_symbol_num; ++symbol) {
        const std::size_t place = place_of(m_dmrs_symbols, symbol);
        if (place == m_dmrs_symbols.size())
            continue;
        const sequence_t sequence = _dmrs_sequence_of(port, place);
        // A low-PAPR sequence begins with the allocation and moves with it; any other one lies in the grid.
        const std::int64_t origin =
            m_enable_transfer_precoding ? -std::int64_t{m_rb_list.front()} : std::int64_t{_hop_shift(symbol, slot)};
        for (const lib_nr_resource_run_t& run : m_rb_runs) {
            const std::int64_t rb = run.first_subcarrier / static_cast<std::int32_t>(k_subcarriers_per_rb) + origin;
            symbols_t values(run.count / k_subcarriers_per_rb * _dmrs_per_rb());
            for (std::size_t i = 0; i < values.size(); ++i)
                values[i] = sequence.at(rb * _dmrs_per_rb() + static_cast<std::int64_t>(i));
            _append_dmrs_among_zeros(port, place, values, stream);
        }
    }
}

/// Gives the DMRS of one symbol their cover codes and amplitude, and puts them where their CDM group lies among the
/// groups without data.
void lib_nr_ul_phy_pusch_process_t::_append_dmrs_among_zeros(unsigned int port, std::size_t place,
                                                             const symbols_t& values, symbols_t& stream) const
{
    const dmrs_comb_t comb = _dmrs_comb();
    const std::size_t own = std::size_t{_cdm_group_of(port)} * comb.width;
    const std::size_t begin = stream.size();
    stream.resize(begin + values.size() / comb.width * _subcarriers_without_data());
    if (own >= _subcarriers_without_data())
        return;
    symbols_t covered;
    covered.reserve(values.size());
    _append_covered_dmrs(port, place, values.data(), values.size(), covered);
    const double amplitude = _amplitude_of(m_dmrs_power);
    for (std::size_t i = 0; i < covered.size(); ++i)
        stream[begin + i / comb.width * _subcarriers_without_data() + own + i % comb.width] = amplitude * covered[i];
}

/// The PTRS of a port on all cells that have some, zeros on those of other ports. A hop takes the values of its first
/// DMRS symbol.
void lib_nr_ul_phy_pusch_process_t::_gather_ptrs(unsigned int port, unsigned int slot, symbols_t& stream)
{
    std::vector<unsigned int> own;
    if (contains(m_ptrs_port, port))
        _phy_sch_ptrs_re_index_generation(port, own);
    const double amplitude = _amplitude_of(m_ptrs_power);
    const std::size_t boundary = place_of(m_dmrs_symbols, _hop_boundary());
    const bool has_second = _hops_in_slot() && boundary < m_dmrs_symbols.size();
    const sequence_t first_hop = _dmrs_sequence_of(port, 0);
    const sequence_t second_hop = _dmrs_sequence_of(port, has_second ? boundary : 0);
    stream.clear();
    for (const lib_nr_resource_run_t& cell : m_cells.ptrs) {
        const unsigned int symbol = cell.symbol - slot * m_symbol_per_slot;
        const auto subcarrier = static_cast<std::uint32_t>(cell.first_subcarrier);
        const std::uint32_t unmoved = subcarrier - _hop_shift_in_subcarriers(symbol, slot);
        const bool is_own = std::binary_search(own.begin(), own.end(), unmoved);
        const sequence_t& sequence = symbol < _hop_boundary() ? first_hop : second_hop;
        stream.push_back(is_own ? amplitude * sequence.at(_dmrs_index_of(subcarrier)) : 0.0);
    }
}

} // namespace vek::nr_mod_lib

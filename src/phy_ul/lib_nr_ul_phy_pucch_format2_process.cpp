#include "phy_ul/lib_nr_ul_phy_pucch_format2_process.h"

#include "manager/lib_nr_carrier_configure_manager.h"
#include "phy_common/lib_nr_pn_payload.h"
#include "phy_common/lib_nr_polar_coding.h"
#include "phy_common/lib_nr_polar_rate_match.h"
#include "phy_common/lib_nr_reference_signal.h"
#include "phy_common/lib_nr_sequence_generator.h"
#include "phy_common/lib_nr_small_block_channel_coding.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iostream>
#include <numeric>
#include <stdexcept>

namespace vek::nr_mod_lib
{

namespace
{

constexpr std::uint32_t k_all_ones = 0xFFFFFFFFu;
constexpr unsigned int k_data_per_rb = 8;
constexpr unsigned int k_dmrs_per_rb = 4;
constexpr unsigned int k_uci_n_max = 10;
constexpr unsigned char k_repeat_preceding = 254; // the placeholder y of TS 38.212 clause 5.3.3

/// TS 38.211 Tables 6.3.2.5A-1 and 6.3.2.5A-2: the rows of a Hadamard matrix.
double spreading_factor(unsigned int length, unsigned int row, unsigned int element)
{
    if (length != LIB_NR_UL_PUCCH_OCC_LENGTH_2 && length != LIB_NR_UL_PUCCH_OCC_LENGTH_4)
        throw std::out_of_range("PUCCH format 2 has no orthogonal sequence of this length");
    return std::popcount(row & element) % 2 == 0 ? 1.0 : -1.0;
}

/// Three cells of a resource block, of which the middle one is the DMRS's. Ends where either source does.
void merge_rb_cells(const std::vector<std::complex<double>>& data, const std::vector<std::complex<double>>& dmrs,
                    std::vector<std::complex<double>>& row)
{
    const std::size_t triples = std::min(data.size() / 2, dmrs.size());
    row.resize(3 * triples);
    for (std::size_t i = 0; i < triples; ++i) {
        row[3 * i] = data[2 * i];
        row[3 * i + 1] = dmrs[i];
        row[3 * i + 2] = data[2 * i + 1];
    }
}

} // namespace

bool lib_nr_ul_phy_pucch_format2_process_t::deal_pucch_process(const lib_nr_carrier_configure_manager_t& carrier,
                                                               unsigned int pucch_index, payload_grid_t& grid)
{
    _set_pucch(carrier, pucch_index);
    slots_t slots;
    _generate_multi_slot_sequence(slots);
    _deal_physical_resource_mapping(slots, grid);
    return true;
}

void lib_nr_ul_phy_pucch_format2_process_t::_reset_pn_seed()
{
    m_harq_ack_seed = m_sr_seed = m_csi1_seed = m_csi2_seed = m_payload_seed = k_all_ones;
}

void lib_nr_ul_phy_pucch_format2_process_t::_generate_multi_slot_sequence(slots_t& slots)
{
    _reset_pn_seed();
    slots.clear();
    for (const unsigned int slot : m_pucch->get_allocated_slots())
        _generate_one_slot_sequence(slots.emplace_back(), slot);
}

void lib_nr_ul_phy_pucch_format2_process_t::_generate_one_slot_sequence(slot_rows_t& rows, unsigned int slot)
{
    slot_rows_t data;
    slot_rows_t dmrs;
    _generate_uci_data(data, slot);
    _generate_dmrs_data(dmrs, slot);
    rows.resize(data.size());
    for (std::size_t l = 0; l < rows.size(); ++l) {
        if (_get_occ() != 1)
            _deal_spreading(data[l], dmrs[l]);
        merge_rb_cells(data[l], dmrs[l], rows[l]);
    }
}

unsigned int lib_nr_ul_phy_pucch_format2_process_t::_get_e_total(unsigned int /*qm*/) const
{
    return 2 * k_data_per_rb * m_pucch->get_symbol_num() * _get_rb_num() / _get_occ();
}

unsigned int lib_nr_ul_phy_pucch_format2_process_t::_get_modulation_order() const { return 2; }

void lib_nr_ul_phy_pucch_format2_process_t::_deal_modulation(const bits_t& bits, slot_rows_t& rows) const
{
    _modulate(LIB_NR_MODULATION_QPSK, bits, m_pucch->get_symbol_num(), rows);
}

void lib_nr_ul_phy_pucch_format2_process_t::_modulate(lib_nr_modulation_type_t type, const bits_t& bits,
                                                      unsigned int row_number, slot_rows_t& rows)
{
    symbol_row_t symbols;
    lib_nr_modulator_t(type).deal_nr_modulation(bits, symbols);
    const auto row_length = static_cast<std::ptrdiff_t>(symbols.size() / row_number);
    rows.clear();
    for (auto first = symbols.begin(); rows.size() < row_number; first += row_length)
        rows.emplace_back(first, first + row_length);
}

void lib_nr_ul_phy_pucch_format2_process_t::_generate_uci_data(slot_rows_t& rows, unsigned int slot)
{
    std::vector<bits_t> parts;
    _get_uci_bits(parts, slot);
    lib_nr_explanation_t* const explanation = _explanation_of(slot);
    if (explanation)
        _explain(parts, *explanation);
    bits_t coded;
    if (m_pucch->get_channel_coding())
        for (std::size_t i = 0; i < parts.size(); ++i)
            _deal_coding(parts[i], coded, i == 1, _get_modulation_order(), explanation);
    else
        coded = parts.front();
    if (parts.size() == 2)
        _deal_multiplexing(coded, _get_e_uci(false, _get_modulation_order()));
    bits_t scrambled;
    _deal_scrambling(coded, scrambled);
    if (explanation) {
        if (m_pucch->get_channel_coding())
            explanation->add_stage("rate_matched", coded);
        explanation->add_stage("scrambled", scrambled);
    }
    _deal_modulation(scrambled, rows);
}

/// What there is to tell ahead of the coding.
void lib_nr_ul_phy_pucch_format2_process_t::_explain(const std::vector<bits_t>& parts,
                                                     lib_nr_explanation_t& explanation) const
{
    std::size_t tbs = 0;
    for (const bits_t& part : parts) {
        explanation.add_stage("payload", part);
        tbs += part.size();
    }
    if (m_pucch->get_channel_coding()) {
        explanation.coding.emplace();
        explanation.coding->tbs = static_cast<unsigned int>(tbs);
        explanation.coding->code_blocks = 0;
        explanation.coding->g = _get_e_total(_get_modulation_order());
    }
    explanation.figures = {{"rnti", m_pucch->get_n_rnti()}, {"n_id", _id_or_cell_index(m_pucch->get_scrambling_id())}};
    if (m_pucch->get_scrambling_state())
        explanation.c_init = {_get_c_init()};
}

unsigned int lib_nr_ul_phy_pucch_format2_process_t::_get_c_init() const
{
    return (m_pucch->get_n_rnti() << 15) + _id_or_cell_index(m_pucch->get_scrambling_id());
}

void lib_nr_ul_phy_pucch_format2_process_t::_get_uci_bits(std::vector<bits_t>& parts, unsigned int slot)
{
    const unsigned int slot_index = _get_slot_index(slot);
    parts.assign(1, {});
    if (!m_pucch->get_channel_coding() || !m_pucch->get_uci_content()) {
        lib_nr_ul_pucch_payload_t payload = m_pucch->get_payload();
        if (!m_pucch->get_channel_coding())
            payload.size = _get_e_total(_get_modulation_order());
        _generate_payload_data(slot_index, m_payload_seed, payload, parts.front());
        return;
    }

    bits_t bits;
    const auto generate = [&](const lib_nr_ul_pucch_payload_t& field, std::uint32_t& seed, std::size_t part) {
        if (!field.enable || field.size == 0)
            return;
        _generate_payload_data(slot_index, seed, field, bits);
        parts.resize(part + 1);
        parts[part].insert(parts[part].end(), bits.begin(), bits.end());
    };
    generate(m_pucch->get_harq_ack(), m_harq_ack_seed, 0);
    generate(m_pucch->get_sr(), m_sr_seed, 0);
    generate(m_pucch->get_csi1(), m_csi1_seed, 0);
    generate(m_pucch->get_csi2(), m_csi2_seed, parts.front().empty() ? 0 : 1);
}

void lib_nr_ul_phy_pucch_format2_process_t::_generate_payload_data(unsigned int slot_index, std::uint32_t& seed,
                                                                   const lib_nr_ul_pucch_payload_t& field, bits_t& out)
{
    lib_nr_pn_payload_t stream(field.data, field.user_bits);
    stream.set_seed(seed);
    if (!stream.generate_repeated(field.size, std::uint64_t{field.size} * slot_index, out))
        std::cout << "lib_nr_dl_phy_pdcch_process_t::_dl_phy_pdcch_data_generation : Error PN code!" << std::endl;
    seed = stream.get_seed();
}

unsigned int lib_nr_ul_phy_pucch_format2_process_t::_get_e_uci(bool second_part, unsigned int qm) const
{
    const lib_nr_uci_split_t split = _split(_get_e_total(qm), qm);
    return second_part ? split.e_uci2 : split.e_uci1;
}

void lib_nr_ul_phy_pucch_format2_process_t::_deal_coding(const bits_t& bits, bits_t& coded, bool second_part,
                                                         unsigned int qm, lib_nr_explanation_t* explanation) const
{
    const unsigned int e = _get_e_uci(second_part, qm);
    const lib_nr_uci_layout_t layout = get_uci_layout(bits.size(), e);
    if (explanation) {
        explanation->coding->code_blocks += layout.segment_number;
        explanation->coding->e.insert(explanation->coding->e.end(), layout.segment_number,
                                      layout.is_polar ? layout.e : e);
    }
    if (!layout.is_polar) {
        _deal_small_block_coding(bits, coded, e, qm);
        return;
    }
    std::vector<bits_t> blocks;
    _deal_polar_code_block(bits, blocks, layout.segment_number == 2, layout.crc_type);
    for (const bits_t& block : blocks) {
        if (explanation)
            explanation->add_stage("crc", block);
        _deal_polar_coding(block, coded, layout);
    }
    coded.insert(coded.end(), e % layout.segment_number, 0);
}

void lib_nr_ul_phy_pucch_format2_process_t::_deal_small_block_coding(const bits_t& bits, bits_t& coded, unsigned int e,
                                                                     unsigned int qm)
{
    lib_nr_small_block_channel_coding_t coder;
    coder.set_modulation_order(qm);
    bits_t word;
    if (!coder.deal_small_block_channel_coding(bits, word))
        return;
    for (std::size_t i = 0; i < e; ++i)
        coded.push_back(word[i % word.size()]);
}

/// TS 38.212 clause 5.2.1: an odd number of bits in two blocks gets a zero in front.
void lib_nr_ul_phy_pucch_format2_process_t::_deal_polar_code_block(const bits_t& bits, std::vector<bits_t>& blocks,
                                                                   bool segmented, lib_nr_crc_type_t crc_type)
{
    blocks.assign(1, bits);
    if (segmented) {
        const auto middle = bits.begin() + static_cast<std::ptrdiff_t>(bits.size() / 2);
        blocks.front().assign(bits.size() % 2, 0);
        blocks.front().insert(blocks.front().end(), bits.begin(), middle);
        blocks.emplace_back(middle, bits.end());
    }
    lib_nr_crc_calculator_t crc;
    crc.set_crc_type(crc_type);
    for (bits_t& block : blocks)
        crc.deal_crc_attachment(block, block);
}

void lib_nr_ul_phy_pucch_format2_process_t::_deal_polar_coding(const bits_t& block, bits_t& coded,
                                                               const lib_nr_uci_layout_t& layout)
{
    lib_nr_polar_coding_t coder;
    coder.set_n_max(k_uci_n_max);
    coder.set_i_il(0);
    coder.set_n_pc(layout.n_pc);
    coder.set_n_pc_wm(layout.n_pc_wm);
    coder.set_rate_matching_output_length(layout.e);
    bits_t word;
    coder.deal_polar_coding(block, word);

    lib_nr_polar_rate_match_t rate_match;
    rate_match.set_i_bil(1);
    rate_match.set_polar_coding_input_lentgh(static_cast<unsigned int>(block.size()));
    rate_match.set_rate_match_output_length(layout.e);
    rate_match.deal_rate_matching(word, word);
    coded.insert(coded.end(), word.begin(), word.end());
}

void lib_nr_ul_phy_pucch_format2_process_t::_deal_scrambling(const bits_t& in, bits_t& out) const
{
    bits_t sequence(in.size(), 0);
    if (m_pucch->get_scrambling_state())
        lib_nr_sequence_generator_t::generate_pseudo_random_sequence(_get_c_init(),
                                                                     static_cast<unsigned int>(in.size()), sequence);
    out.clear();
    out.reserve(in.size());
    unsigned char bit = 0;
    for (std::size_t i = 0; i < in.size(); ++i) {
        if (in[i] != k_repeat_preceding)
            bit = (in[i] ^ sequence[i]) & 1u;
        out.push_back(bit);
    }
}

void lib_nr_ul_phy_pucch_format2_process_t::_generate_dmrs_data(slot_rows_t& rows, unsigned int slot) const
{
    const unsigned int n_id = _id_or_cell_index(m_pucch->get_scrambling_id0());
    const unsigned int first_symbol = _get_slot_symbols() * slot + m_pucch->get_first_symbol();
    const std::size_t per_rb = k_dmrs_per_rb / _get_occ();
    const double amplitude = _get_dmrs_amplitude();
    rows.assign(m_pucch->get_symbol_num(), {});
    symbol_row_t sequence;
    for (unsigned int l = 0; l < rows.size(); ++l) {
        const std::vector<unsigned short> rbs = _get_dmrs_rbs(l);
        const unsigned int c_init = lib_nr_dmrs_initial_value(first_symbol + l, n_id);
        sequence.clear();
        lib_nr_append_reference_signal(c_init, per_rb * (*std::max_element(rbs.begin(), rbs.end()) + std::size_t{1}),
                                       sequence);
        if (lib_nr_explanation_t* const explanation = _explanation_of(slot)) {
            explanation->dmrs_symbols.push_back(m_pucch->get_first_symbol() + l);
            explanation->dmrs_c_init.push_back(c_init);
        }
        for (const unsigned short rb : rbs)
            for (std::size_t i = rb * per_rb; i < (rb + std::size_t{1}) * per_rb; ++i)
                rows[l].push_back(amplitude * sequence[i]);
    }
}

/// The RBs of a symbol as the DMRS sequence counts them.
std::vector<unsigned short> lib_nr_ul_phy_pucch_format2_process_t::_get_dmrs_rbs(unsigned int row) const
{
    std::vector<unsigned short> rbs;
    _get_interlace_position(rbs);
    if (!rbs.empty())
        return rbs;
    const bool is_second = _is_second_hop(row, m_pucch->get_symbol_num());
    const unsigned int in_bwp = is_second ? m_pucch->get_second_hop_prb() : m_pucch->get_rb_offset();
    const unsigned int first =
        m_rules.pick(lib_nr_deviation_t::dmrs_reference, in_bwp, _bwp().get_rb_offset() + in_bwp);
    rbs.resize(m_pucch->get_rb_num());
    std::iota(rbs.begin(), rbs.end(), static_cast<unsigned short>(first));
    return rbs;
}

void lib_nr_ul_phy_pucch_format2_process_t::_deal_spreading(symbol_row_t& data_row, symbol_row_t& dmrs_row) const
{
    const unsigned int length = m_pucch->get_occ_length();
    symbol_row_t spread;
    _deal_spreading(data_row, spread, k_data_per_rb / length);
    data_row.swap(spread);
    _deal_spreading(dmrs_row, spread, k_dmrs_per_rb / length);
    dmrs_row.swap(spread);
}

/// TS 38.211 clause 6.3.2.5.2A, a block of values for each RB.
void lib_nr_ul_phy_pucch_format2_process_t::_deal_spreading(const symbol_row_t& in, symbol_row_t& out,
                                                            unsigned int block) const
{
    const unsigned int length = m_pucch->get_occ_length();
    std::vector<unsigned short> positions;
    _get_interlace_position(positions);
    out.clear();
    out.reserve(in.size() * length);
    unsigned int row = 0;
    for (std::size_t i = 0; i < in.size(); ++i) {
        if (i % block == 0)
            row = _get_spreading_row(positions.at(i / block));
        for (unsigned int m = 0; m < length; ++m)
            out.push_back(spreading_factor(length, row, m) * in[i]);
    }
}

/// The orthogonal sequence of an RB: n of TS 38.211 clause 6.3.2.5A goes by the number of the RB in its interlace, by
/// the own rule by that in the grid.
unsigned int lib_nr_ul_phy_pucch_format2_process_t::_get_spreading_row(unsigned int rb) const
{
    const unsigned int index = m_pucch->get_occ_index();
    const unsigned int length = m_pucch->get_occ_length();
    return m_rules.pick(lib_nr_deviation_t::interlaces, (rb + index) % length,
                        (_get_number_in_interlace(rb) + index) % length);
}

} // namespace vek::nr_mod_lib

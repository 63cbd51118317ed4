#include "phy_dl/lib_nr_dl_phy_ssb_process.h"

#include "common/lib_bounded_cast.h"
#include "common/lib_common_math.h"
#include "manager/lib_nr_carrier_configure_manager.h"
#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_modulator.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_pn_payload.h"
#include "phy_common/lib_nr_polar_rate_match.h"
#include "phy_common/lib_nr_sequence_generator.h"
#include "phy_common/tables/lib_nr_pbch_interleaver_pattern.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <iostream>
#include <string_view>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_block_rb_number = lib_nr_dl_ssb_configure_manager_t::k_rb_number;
constexpr unsigned int k_block_subcarriers = k_block_rb_number * k_subcarriers_per_rb;

constexpr unsigned int k_sequence_length = 127;          // PSS and SSS
constexpr unsigned int k_first_sequence_subcarrier = 56; // of both, in the block
constexpr unsigned int k_first_sss_subcarrier = 48;      // that the PBCH leaves to the SSS and its guard
constexpr unsigned int k_sss_subcarriers = 144;
constexpr double k_beyond_any_grid = 1e9; // in subcarriers

constexpr unsigned int k_mib_bits = 24;
constexpr unsigned int k_payload_bits = 32;
constexpr unsigned int k_checked_bits = k_payload_bits + 24;
constexpr unsigned int k_coded_bits = 864;
constexpr unsigned int k_dmrs_symbols = 144;
constexpr unsigned int k_pbch_symbols = k_coded_bits / 2;

using m_sequence_t = std::array<unsigned char, k_sequence_length>;

/// The m-sequence x(i + 7) = x(i + tap) + x(i) of degree 7 that starts with `state`, x(0) first.
constexpr m_sequence_t make_m_sequence(unsigned int tap, const std::array<unsigned char, 7>& state)
{
    m_sequence_t x = {};
    for (std::size_t i = 0; i < k_sequence_length; ++i)
        x[i] = i < 7 ? state[i] : x[i - 7 + tap] ^ x[i - 7];
    return x;
}

// TS 38.211 clauses 7.4.2.2.1 and 7.4.2.3.1.
constexpr m_sequence_t k_pss_sequence = make_m_sequence(4, {0, 1, 1, 0, 1, 1, 1});
constexpr m_sequence_t k_sss_sequence_0 = make_m_sequence(4, {1, 0, 0, 0, 0, 0, 0});
constexpr m_sequence_t k_sss_sequence_1 = make_m_sequence(1, {1, 0, 0, 0, 0, 0, 0});

int get_sign(const m_sequence_t& sequence, unsigned int index) { return 1 - 2 * sequence[index % k_sequence_length]; }

/// Each first symbol in every period that is listed.
std::vector<unsigned int> make_symbol_list(std::initializer_list<unsigned int> first_symbols, unsigned int period,
                                           unsigned int period_number,
                                           std::initializer_list<unsigned int> left_out = {})
{
    std::vector<unsigned int> symbols;
    for (unsigned int n = 0; n < period_number; ++n) {
        if (std::find(left_out.begin(), left_out.end(), n) != left_out.end())
            continue;
        for (const unsigned int symbol : first_symbols)
            symbols.push_back(symbol + period * n);
    }
    return symbols;
}

/// TS 38.213 clause 4.1; empty for a case that doesn't exist.
const std::vector<unsigned int>& get_symbol_list(lib_nr_ssb_case_t pattern, bool is_low_band)
{
    static const std::vector<unsigned int> low_band_a_c = make_symbol_list({2, 8}, 14, 2);
    static const std::vector<unsigned int> high_band_a_c = make_symbol_list({2, 8}, 14, 4);
    static const std::vector<unsigned int> low_band_b = make_symbol_list({4, 8, 16, 20}, 28, 1);
    static const std::vector<unsigned int> high_band_b = make_symbol_list({4, 8, 16, 20}, 28, 2);
    static const std::vector<unsigned int> case_d = make_symbol_list({4, 8, 16, 20}, 28, 19, {4, 9, 14});
    static const std::vector<unsigned int> case_e = make_symbol_list({8, 12, 16, 20, 32, 36, 40, 44}, 56, 9, {4});
    static const std::vector<unsigned int> case_f_g = make_symbol_list({2, 9}, 14, 32);
    static const std::vector<unsigned int> none;

    switch (pattern) {
    case NR_SSB_CASE_A:
    case NR_SSB_CASE_C:
        return is_low_band ? low_band_a_c : high_band_a_c;
    case NR_SSB_CASE_B:
        return is_low_band ? low_band_b : high_band_b;
    case NR_SSB_CASE_D:
        return case_d;
    case NR_SSB_CASE_E:
        return case_e;
    case NR_SSB_CASE_F:
    case NR_SSB_CASE_G:
        return case_f_g;
    default:
        return none;
    }
}

/// Writes `count` bits of `value`, the most significant first, and returns the place behind them.
std::vector<unsigned char>::iterator put_bits(std::vector<unsigned char>::iterator place, unsigned int value,
                                              unsigned int count)
{
    while (count-- > 0)
        *place++ = static_cast<unsigned char>(value >> count & 1u);
    return place;
}

} // namespace

// TS 38.211 Table 7.4.3.1-1. The SSS stands between the two parts of the PBCH in the third symbol.
const std::vector<lib_nr_dl_phy_ssb_process_t::row_t> lib_nr_dl_phy_ssb_process_t::s_pss_rows = {
    {0, 0, k_block_subcarriers}};
const std::vector<lib_nr_dl_phy_ssb_process_t::row_t> lib_nr_dl_phy_ssb_process_t::s_sss_rows = {
    {2, k_first_sss_subcarrier, k_sss_subcarriers}};
const std::vector<lib_nr_dl_phy_ssb_process_t::row_t> lib_nr_dl_phy_ssb_process_t::s_pbch_and_dmrs_rows = {
    {1, 0, k_block_subcarriers}, {2, 0, 48}, {2, 192, 48}, {3, 0, k_block_subcarriers}};

lib_nr_dl_phy_ssb_process_t::lib_nr_dl_phy_ssb_process_t()
{
    m_polar_coding.set_i_il(1);
    m_polar_coding.set_n_max(9);
    m_polar_coding.set_n_pc(0);
    m_polar_coding.set_n_pc_wm(0);
    m_polar_coding.set_rate_matching_output_length(k_coded_bits);
}

void lib_nr_dl_phy_ssb_process_t::set_waveform_config(unsigned int carrier_index, unsigned int system_frame,
                                                      unsigned int half_frame, unsigned int numerology_index,
                                                      const lib_nr_waveform_configure_manager_t& waveform)
{
    const lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(carrier_index);
    const lib_nr_dl_ssb_configure_manager_t& ssb = carrier.get_dl_ssb();
    const lib_nr_phy_numerology_configure_manager_t& numerology = carrier.get_numerology_manager(numerology_index);

    set_standard_rules(waveform.get_standard_rules());
    set_system_frame(system_frame);
    set_half_frame_idx(half_frame);
    set_pci(carrier.get_cell_index());
    set_center_frequency(waveform.get_radio_frequency() + carrier.get_frequency_offset_hz());
    set_ssb_pattern(ssb.get_ssb_pattern());
    set_lmax(ssb.get_lmax());
    set_pwr_boosting(ssb.get_power_boosting());
    set_pss_pwr_boosting(ssb.get_pss_power_boosting());
    set_rb_offset(ssb.get_rb_offset());
    set_kssb(ssb.get_kssb());
    set_coding(ssb.get_coding());
    set_numerology(numerology.get_numerolgy(), numerology.get_rb_size(), numerology.get_rb_start(),
                   numerology.get_k0());
    set_ssb_numerology(ssb.get_numerology());
    set_mib_data_type(ssb.get_auto_cofig_mib(), ssb.get_data_source(), ssb.get_data_source_custom_config());
    set_subcarrier_spacing_common(ssb.get_numerology());
    set_ssb_subcarrier_offset(ssb.get_ssb_subcarrier_offset());
    set_dmrs_typeA_position(ssb.get_dmrs_typeA_position());
    set_pdcch_config_sib1(ssb.get_pdcch_config_sib1());
    set_cell_barred(ssb.get_cell_barred());
    set_intra_freq_reselection(ssb.get_intra_freq_reselection());
    set_channel_bandwidth(carrier.get_bandwidth());
}

void lib_nr_dl_phy_ssb_process_t::set_numerology(lib_nr_numerology_type_t numerology, unsigned int rb_size,
                                                 unsigned int rb_start, unsigned int k0)
{
    m_numerology = numerology;
    m_rb_size = rb_size;
    m_rb_start = rb_start;
    m_k0 = k0;
    m_scs_hz = lib_nr_phy_common_t::get_scs_hz_value(numerology);
}

void lib_nr_dl_phy_ssb_process_t::set_mib_data_type(bool auto_cofig_mib, lib_nr_pn_seq_t data_source,
                                                    const std::vector<unsigned char>& custom)
{
    m_auto_cofig_mib = auto_cofig_mib;
    m_data_source = data_source;
    m_data_source_custom = custom;
}

bool lib_nr_dl_phy_ssb_process_t::ssb_encode_process(unsigned int block_index)
{
    _init();
    _init_ssb_symbol();
    bool succeeded = true;
    if (_is_exist_ssb(block_index)) {
        _nr_dl_pss_generation();
        _nr_dl_sss_generation();
        _nr_dl_pbch_dmrs_generation(block_index);
        succeeded = _dl_phy_pbch_process(block_index);
        if (succeeded)
            _map(block_index, LIB_NR_REMAPP_MODE_ENCODE_MAP);
        if (succeeded && m_explanation)
            _explain(block_index);
    }
    _clear();
    return succeeded;
}

lib_nr_dl_phy_ssb_process_t::work_t::work_t()
    : kept_position{}, mib_data(k_mib_bits), payload(k_payload_bits), scrambled(k_payload_bits)
{}

void lib_nr_dl_phy_ssb_process_t::_init() { m_work.emplace(); }

void lib_nr_dl_phy_ssb_process_t::_clear() { m_work.reset(); }

/// Fills the list of the candidates' first symbols in a half frame; empty, and a line, for a case that doesn't exist.
void lib_nr_dl_phy_ssb_process_t::_init_ssb_symbol()
{
    m_ssb_symbol_list = get_symbol_list(m_ssb_pattern, lib_nr_phy_common_t::is_up_to_3_ghz(m_center_frequency));
    if (m_ssb_symbol_list.empty())
        std::cout << "_init_ssb_symbol: default configuration ! ssb_pattern invalid" << std::endl;
}

// TS 38.211 clause 7.4.2.2.1
void lib_nr_dl_phy_ssb_process_t::_nr_dl_pss_generation()
{
    const unsigned int shift = 43 * (m_pci % 3);
    m_work->pss.resize(k_sequence_length);
    for (unsigned int n = 0; n < k_sequence_length; ++n)
        m_work->pss[n] = get_sign(k_pss_sequence, n + shift);
}

// TS 38.211 clause 7.4.2.3.1
void lib_nr_dl_phy_ssb_process_t::_nr_dl_sss_generation()
{
    const unsigned int n_id_1 = m_pci / 3;
    const unsigned int n_id_2 = m_pci % 3;
    const unsigned int m_0 = 15 * (n_id_1 / 112) + 5 * n_id_2;
    const unsigned int m_1 = n_id_1 % 112;
    m_work->sss.resize(k_sequence_length);
    for (unsigned int n = 0; n < k_sequence_length; ++n)
        m_work->sss[n] = get_sign(k_sss_sequence_0, n + m_0) * get_sign(k_sss_sequence_1, n + m_1);
}

// TS 38.211 clause 7.4.1.4.1
void lib_nr_dl_phy_ssb_process_t::_nr_dl_pbch_dmrs_generation(unsigned int block_index)
{
    const unsigned int i = _get_v_from_block(block_index);
    const unsigned int c_init = (((m_pci >> 2) + 1) * (i + 1) * 32 + (i + 1)) * 64 + (m_pci & 3);
    if (m_explanation)
        m_explanation->dmrs_c_init = {c_init};
    lib_nr_sequence_generator_t::generate_pseudo_random_sequence(c_init, 2 * k_dmrs_symbols, m_work->sequence);
    lib_nr_modulator_t(LIB_NR_MODULATION_QPSK).deal_nr_modulation(m_work->sequence, m_work->dmrs);
}

bool lib_nr_dl_phy_ssb_process_t::_dl_phy_pbch_process(unsigned int block_index)
{
    _nr_dl_mib_data_source_generation();
    _dl_phy_pbch_payload_generation(block_index);
    _explain_stage("payload", m_work->payload);
    _dl_phy_pbch_interleave();
    _dl_phy_pbch_scrambling(0, block_index, m_work->scrambled);
    if (!_dl_phy_pbch_coding())
        return false;
    if (m_coding) {
        _explain_stage("crc", m_work->crc);
        _explain_stage("rate_matched", m_work->coded);
    }
    _dl_phy_pbch_scrambling(1, block_index, m_work->coded);
    _explain_stage("scrambled", m_work->coded);
    lib_nr_modulator_t(LIB_NR_MODULATION_QPSK).deal_nr_modulation(m_work->coded, m_work->pbch);
    return true;
}

void lib_nr_dl_phy_ssb_process_t::_explain_stage(std::string_view name, const bits_t& bits) const
{
    if (m_explanation)
        m_explanation->add_stage(name, bits);
}

/// The first cells are those of the PBCH.
void lib_nr_dl_phy_ssb_process_t::_explain(unsigned int block_index)
{
    const unsigned int slot_symbols = lib_nr_phy_common_t::get_symbol_number_in_slot(m_numerology, LIB_NR_NORMAL_CP);
    const unsigned int first_symbol = _list_runs(block_index, s_pss_rows).front().symbol;
    const unsigned int slot_begin = first_symbol / slot_symbols * slot_symbols;
    m_explanation->index = block_index;
    m_explanation->slot = first_symbol / slot_symbols;
    m_explanation->add_runs(m_runs, slot_begin);
    const std::vector<lib_nr_resource_run_t>& pbch = _list_runs(block_index, s_pbch_and_dmrs_rows);
    m_explanation->add_runs(pbch, slot_begin);
    for (std::int32_t k = 0, dmrs = static_cast<std::int32_t>(m_pci % 4); k < 5; ++k)
        if (k != dmrs)
            m_explanation->add_cells({{pbch.front().symbol, pbch.front().first_subcarrier + k, 1}}, slot_begin);
    for (const unsigned int symbol : {1u, 2u, 3u})
        m_explanation->dmrs_symbols.push_back(first_symbol - slot_begin + symbol);
    m_explanation->c_init = {m_pci};
    m_explanation->figures = {{"n_cell_id", m_pci}, {"half_frame", m_half_frame_idx}, {"system_frame", m_system_frame}};
    if (m_coding)
        m_explanation->coding = {k_payload_bits, {}, {}, 1, {k_coded_bits}, k_coded_bits, {}};
}

void lib_nr_dl_phy_ssb_process_t::_nr_dl_mib_data_source_generation()
{
    if (m_auto_cofig_mib) {
        // The MIB of TS 38.331 clause 6.2.2, behind the bit that selects it in the BCCH-BCH message.
        const lib_nr_numerology_type_t wide_spacing = m_lmax == LIB_NR_LMAX_64 ? LIB_NR_SCS_120K : LIB_NR_SCS_30K;
        auto place = put_bits(m_work->mib_data.begin(), 0, 1);
        place = put_bits(place, m_system_frame >> 4, 6);
        place = put_bits(place, m_subcarrier_spacing_common == wide_spacing, 1);
        place = put_bits(place, m_ssb_subcarrier_offset, 4);
        place = put_bits(place, m_dmrs_typea_position == 3, 1);
        place = put_bits(place, m_pdcch_config_sib1, 8);
        for (const bool flag : {m_cell_barred, m_intra_frequency_reselection})
            place = put_bits(place, m_rules.pick(lib_nr_deviation_t::mib_flags, flag, !flag), 1);
        put_bits(place, 0, 1);
        std::reverse(m_work->mib_data.begin(), m_work->mib_data.end());
        return;
    }

    if (!lib_nr_pn_payload_t(m_data_source, m_data_source_custom).generate(k_mib_bits, m_work->mib_data)) {
        std::cout << "_nr_dl_mib_data_source_generation : Error PN code!" << std::endl;
        m_work->mib_data.assign(k_mib_bits, 0);
    }
}

// TS 38.212 clause 7.1.1
void lib_nr_dl_phy_ssb_process_t::_dl_phy_pbch_payload_generation(unsigned int block_index)
{
    auto place = std::reverse_copy(m_work->mib_data.begin(), m_work->mib_data.end(), m_work->payload.begin());
    place = put_bits(place, m_system_frame, 4);
    place = put_bits(place, m_half_frame_idx, 1);
    if (m_lmax == LIB_NR_LMAX_64) {
        put_bits(place, block_index >> 3, 3);
    }
    else {
        place = put_bits(place, m_kssb >> 4, 1);
        put_bits(place, 0, 2);
    }
}

// TS 38.212 clause 7.1.1: each kind of bit takes its own run of the pattern.
void lib_nr_dl_phy_ssb_process_t::_dl_phy_pbch_interleave()
{
    const auto& pattern = get_pbch_interleaver_pattern();
    std::size_t frame_number_bit = 0;
    std::size_t block_bit = 11;
    std::size_t other_bit = 14;
    for (std::size_t i = 0; i < k_payload_bits; ++i) {
        std::size_t j;
        if ((i >= 1 && i <= 6) || (i >= 24 && i <= 27))
            j = frame_number_bit++;
        else if (i == 28)
            j = 10;
        else if (i > 28)
            j = block_bit++;
        else
            j = other_bit++;
        m_work->scrambled[pattern[j]] = m_work->payload[i];
        if (i >= k_mib_bits) {
            m_work->kept_position[i - k_mib_bits] = static_cast<std::uint8_t>(pattern[j]);
        }
    }
}

/// The third and second least significant bit of the frame number.
unsigned int lib_nr_dl_phy_ssb_process_t::_get_v_from_frame() const { return m_system_frame >> 1 & 3u; }

/// Which of eight sequences the block's DMRS takes, TS 38.211 clause 7.4.1.4.1.
unsigned int lib_nr_dl_phy_ssb_process_t::_get_v_from_block(unsigned int block_index) const
{
    return m_lmax == LIB_NR_LMAX_4 ? (block_index & 3u) + 4 * m_half_frame_idx : block_index & 7u;
}

/// Kind 0 is that of the payload, TS 38.212 clause 7.1.2, which leaves out what a receiver needs beforehand; kind 1
/// that of the coded bits, TS 38.211 clause 7.3.3.1.
void lib_nr_dl_phy_ssb_process_t::_dl_phy_pbch_scrambling(unsigned int kind, unsigned int block_index, bits_t& bits)
{
    if (kind == 1) {
        const unsigned int v = m_rules.pick(lib_nr_deviation_t::pbch_second_scrambling, _get_v_from_block(block_index),
                                            block_index & (m_lmax == LIB_NR_LMAX_4 ? 3u : 7u));
        const std::size_t offset = std::size_t{v} * k_coded_bits;
        lib_nr_sequence_generator_t::generate_pseudo_random_sequence(
            m_pci, static_cast<unsigned int>(offset + bits.size()), m_work->sequence);
        for (std::size_t i = 0; i < bits.size(); ++i)
            bits[i] ^= m_work->sequence[offset + i];
        return;
    }
    if (kind != 0) {
        std::cout << "no scrambling" << std::endl;
        return;
    }

    const bool is_lmax_64 = m_lmax == LIB_NR_LMAX_64;
    const bool is_lmax_known = is_lmax_64 || m_lmax == LIB_NR_LMAX_4 || m_lmax == LIB_NR_LMAX_8;
    const unsigned int m = !is_lmax_known ? 0 : is_lmax_64 ? 26 : 29;
    std::array<bool, k_payload_bits> is_kept = {};
    for (const std::size_t i : {1U, 2U, 4U})
        is_kept[static_cast<std::size_t>(m_work->kept_position[i])] = true;
    if (is_lmax_64)
        for (const std::size_t i : {5U, 6U, 7U})
            is_kept[static_cast<std::size_t>(m_work->kept_position[i])] = true;

    const unsigned int offset = _get_v_from_frame() * m;
    lib_nr_sequence_generator_t::generate_pseudo_random_sequence(m_pci, offset + k_payload_bits, m_work->sequence);
    std::size_t j = offset;
    for (std::size_t i = 0; i < k_payload_bits; ++i)
        if (!is_kept[i])
            bits[i] ^= m_work->sequence[j++];
}

// TS 38.212 clauses 7.1.3 to 7.1.5
bool lib_nr_dl_phy_ssb_process_t::_dl_phy_pbch_coding()
{
    if (!m_coding) {
        m_work->coded.assign(k_coded_bits, 0);
        std::copy(m_work->scrambled.begin(), m_work->scrambled.end(), m_work->coded.begin());
        return true;
    }

    lib_nr_crc_calculator_t crc;
    crc.set_crc_type(LIB_NR_CRC_TYPE_24C);
    crc.deal_crc_attachment(m_work->scrambled, m_work->crc);

    lib_nr_polar_rate_match_t rate_match;
    rate_match.set_i_bil(0);
    rate_match.set_polar_coding_input_lentgh(k_checked_bits);
    rate_match.set_rate_match_output_length(k_coded_bits);
    if (!m_polar_coding.deal_polar_coding(m_work->crc, m_work->sequence) ||
        !rate_match.deal_rate_matching(m_work->sequence, m_work->coded))
    {
        std::cout << "error!!!pdcch polor fail" << std::endl;
        return false;
    }
    return true;
}

void lib_nr_dl_phy_ssb_process_t::_cal_rboffset_position()
{
    const double reference_spacing = lib_nr_phy_common_t::get_reference_scs_hz(m_bandwidth);
    if (lib_nr_phy_common_t::get_freq_range_type(m_bandwidth) != NR_FR1)
        std::cout << "bw is FR2 type!" << std::endl;

    const double k = m_kssb * reference_spacing / m_scs_hz;
    double irb = m_rb_offset;
    const unsigned int full_width = lib_nr_phy_common_t::get_max_transmit_rb_num(m_numerology, m_bandwidth);
    if (full_width >= k_block_rb_number && m_rb_offset == full_width - k_block_rb_number) {
        const double spare = static_cast<double>(m_rb_size) * k_subcarriers_per_rb - k_block_subcarriers;
        irb = (spare * 0.5 / k_subcarriers_per_rb + m_rb_start) * m_scs_hz / reference_spacing;
        std::array<char, 32> digits;
        const char* end =
            std::to_chars(digits.data(), digits.data() + digits.size(), irb, std::chars_format::fixed, 1).ptr;
        std::cout << "_cal_rboffset_position, rb_offset " << m_rb_offset << " is default,irb_offset = "
                  << std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())) << ".\n"
                  << std::endl;
    }

    const double offset = irb * k_subcarriers_per_rb * (reference_spacing / m_scs_hz) + k;
    m_fills_rbs = std::fmod(offset, k_subcarriers_per_rb) == 0.0;
    // Taken in 32 bits; where the resource blocks don't start at 0 it wraps, and means a negative number.
    const std::uint32_t grid_shift = 2 * m_k0 - k_subcarriers_per_rb * m_rb_start;
    m_first_subcarrier = common_lib::bounded_cast<std::int32_t>(
        std::clamp(std::floor(offset + static_cast<std::int32_t>(grid_shift)), -k_beyond_any_grid, k_beyond_any_grid));
}

bool lib_nr_dl_phy_ssb_process_t::_is_exist_ssb(unsigned int block_index) const
{
    return m_numerology == m_ssb_numerology && m_half_frame_idx < 2 && block_index < m_ssb_symbol_list.size();
}

double lib_nr_dl_phy_ssb_process_t::_get_amplitude(unsigned int block_index, double boosting) const
{
    const double power = block_index < m_power_boosting.size() ? m_power_boosting[block_index] : 0.0;
    return common_lib::lib_common_math_t::db_value_to_amplitude_ratio(power + boosting);
}

/// The one source of the block's cells, for the view and for the payload.
const std::vector<lib_nr_resource_run_t>& lib_nr_dl_phy_ssb_process_t::_list_runs(unsigned int block_index,
                                                                                  const std::vector<row_t>& rows)
{
    const auto half_frame_symbols = static_cast<std::uint32_t>(m_scs_hz / 15000.0) * 70;
    const std::uint32_t first_symbol = half_frame_symbols * m_half_frame_idx + m_ssb_symbol_list[block_index];
    m_runs.clear();
    for (const row_t& row : rows)
        m_runs.push_back({first_symbol + row.symbol,
                          m_first_subcarrier + static_cast<std::int32_t>(row.first_subcarrier), row.subcarrier_number});
    return m_runs;
}

/// The view shows whole resource blocks in the symbols that the block fills from end to end: those that hold a part of
/// it before its place is rounded down to a subcarrier.
bool lib_nr_dl_phy_ssb_process_t::_mark(unsigned int block_index, const std::vector<row_t>& rows)
{
    _list_runs(block_index, rows);
    constexpr auto k_rb = static_cast<std::int32_t>(k_subcarriers_per_rb);
    for (lib_nr_resource_run_t& run : m_runs) {
        if (run.count != k_block_subcarriers)
            continue;
        run.first_subcarrier -= (run.first_subcarrier % k_rb + k_rb) % k_rb;
        if (!m_fills_rbs)
            run.count += k_subcarriers_per_rb;
    }
    return lib_nr_channel_resource_manager_t::get_inst().mark_runs(m_runs, LIB_NR_RESOURCE_MAPPING_SSB);
}

/// Writes `m_symbols`, row by row.
void lib_nr_dl_phy_ssb_process_t::_write(unsigned int block_index, const std::vector<row_t>& rows, double amplitude)
{
    const std::complex<double>* values = m_symbols.data();
    for (const lib_nr_resource_run_t& run : _list_runs(block_index, rows)) {
        lib_nr_channel_resource_manager_t::get_inst().write_run(run, values, amplitude);
        values += run.count;
    }
}

bool lib_nr_dl_phy_ssb_process_t::_dl_phy_ssb_remap(unsigned int block_index, lib_nr_remap_mode_t mode)
{
    if (mode != LIB_NR_REMAPP_MODE_UI_VIEW_MAP && mode != LIB_NR_REMAPP_MODE_ENCODE_MAP) {
        std::cout << "lib_nr_dl_phy_ssb_process_t::_dl_phy_ssb_remap : Error RE map mode!" << std::endl;
        return false;
    }
    _init_ssb_symbol();
    if (!_is_exist_ssb(block_index) || (mode == LIB_NR_REMAPP_MODE_ENCODE_MAP && !m_work))
        return true;
    return _map(block_index, mode);
}

bool lib_nr_dl_phy_ssb_process_t::_map(unsigned int block_index, lib_nr_remap_mode_t mode)
{
    _cal_rboffset_position();
    bool is_mapped = _dl_phy_ssb_pss_remap(block_index, mode);
    is_mapped &= _dl_phy_ssb_sss_remap(block_index, mode);
    is_mapped &= _dl_phy_ssb_pbch_and_dmrs_remap(block_index, mode);
    return is_mapped;
}

bool lib_nr_dl_phy_ssb_process_t::_dl_phy_ssb_pss_remap(unsigned int block_index, lib_nr_remap_mode_t mode)
{
    if (mode == LIB_NR_REMAPP_MODE_UI_VIEW_MAP)
        return _mark(block_index, s_pss_rows);

    m_symbols.assign(k_block_subcarriers, 0.0);
    std::copy(m_work->pss.begin(), m_work->pss.end(), m_symbols.begin() + k_first_sequence_subcarrier);
    _write(block_index, s_pss_rows, _get_amplitude(block_index, m_pss_power_boosting));
    return true;
}

bool lib_nr_dl_phy_ssb_process_t::_dl_phy_ssb_sss_remap(unsigned int block_index, lib_nr_remap_mode_t mode)
{
    if (mode == LIB_NR_REMAPP_MODE_UI_VIEW_MAP)
        return _mark(block_index, s_sss_rows);

    m_symbols.assign(k_sss_subcarriers, 0.0);
    std::copy(m_work->sss.begin(), m_work->sss.end(),
              m_symbols.begin() + (k_first_sequence_subcarrier - k_first_sss_subcarrier));
    _write(block_index, s_sss_rows, _get_amplitude(block_index, 0.0));
    return true;
}

bool lib_nr_dl_phy_ssb_process_t::_dl_phy_ssb_pbch_and_dmrs_remap(unsigned int block_index, lib_nr_remap_mode_t mode)
{
    if (mode == LIB_NR_REMAPP_MODE_UI_VIEW_MAP)
        return _mark(block_index, s_pbch_and_dmrs_rows);

    // Every row begins at a multiple of four, so every fourth cell of the rows is a DMRS cell.
    const unsigned int dmrs_place = m_pci % 4;
    m_symbols.resize(k_dmrs_symbols + k_pbch_symbols);
    auto dmrs = m_work->dmrs.begin();
    auto pbch = m_work->pbch.begin();
    for (std::size_t i = 0; i < m_symbols.size(); ++i)
        m_symbols[i] = i % 4 == dmrs_place ? *dmrs++ : *pbch++;
    _write(block_index, s_pbch_and_dmrs_rows, _get_amplitude(block_index, 0.0));
    for (const lib_nr_resource_run_t& run : m_runs)
        lib_nr_channel_resource_manager_t::get_inst().note_part(
            {run.symbol, run.first_subcarrier + static_cast<std::int32_t>(dmrs_place), run.count / 4, 4},
            LIB_NR_CELL_DMRS);
    return true;
}

} // namespace vek::nr_mod_lib

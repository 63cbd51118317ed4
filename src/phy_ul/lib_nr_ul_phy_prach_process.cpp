#include "phy_ul/lib_nr_ul_phy_prach_process.h"

#include "common/lib_bounded_cast.h"
#include "common/lib_common_math.h"
#include "common/lib_fft_plan.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <numbers>

namespace vek::nr_mod_lib
{

namespace
{

using common_t = lib_nr_phy_common_t;

constexpr double k_reference_rate_hz = 30.72e6;

// Times in sixty-fourths of a sample at 30.72 MHz, whole numbers for every spacing.
constexpr std::uint64_t k_half_subframe = 15360ull * 64;
constexpr std::uint64_t k_symbol = 2192ull * 64;
constexpr std::uint64_t k_long_prefix_extra = 16ull * 64;

lib_nr_prach_resource_manager_t& grid() { return lib_nr_prach_resource_manager_t::get_inst(); }

/// Start of a symbol of 15 kHz times 2^u within its subframe.
std::uint64_t start_of_symbol(std::uint64_t symbol, unsigned int u)
{
    const std::uint64_t longer = symbol == 0 ? 0 : symbol <= 7ull << u ? 1 : 2;
    return symbol * (k_symbol >> u) + longer * k_long_prefix_extra;
}

} // namespace

bool lib_nr_ul_phy_prach_process_t::set_waveform_config(unsigned int carrier, unsigned int numerology,
                                                        unsigned int burst,
                                                        const lib_nr_waveform_configure_manager_t& waveform)
{
    const lib_nr_carrier_configure_manager_t& configuration = waveform.get_carrier(carrier);
    const lib_nr_ul_prach_configure_manager_t& prach = configuration.get_ul_prach(burst);
    set_standard_rules(waveform.get_standard_rules());
    m_numerology = configuration.get_numerology_manager(numerology).get_numerolgy();
    m_bandwidth = configuration.get_bandwidth();
    m_point_a_hz = configuration.get_frequency_offset_of_point_a();
    m_carrier_scs_hz = common_t::get_scs_hz_value(m_numerology);
    m_max_rb_number = common_t::get_max_transmit_rb_num(m_numerology, m_bandwidth);
    m_slot_symbols = common_t::get_symbol_number_in_slot(
        m_numerology, m_numerology == LIB_NR_SCS_60K ? configuration.get_ul_bwp(0).get_cp_type() : LIB_NR_NORMAL_CP);
    m_sample_rate_hz = waveform.get_waveform_sample_rate_hz();
    m_power_boosting = prach.get_power_boosting();
    m_preamble = {prach.get_Format(),         prach.get_lra(),
                  prach.get_restrictedset(),  prach.get_ZeroCorrelationZone(),
                  prach.get_sequence_index(), prach.get_premable_index()};
    m_configuration_table = prach.get_configuration_table();
    m_configuration_idx = prach.get_configuration_idx();
    m_prach_scs = prach.get_prach_scs();
    m_rb_offset = prach.get_rb_offset();
    m_n_RA_start = prach.get_n_RA_start();
    m_n_RA_f = prach.get_n_RA_f();
    m_n_RA_t = prach.get_n_RA_t();
    m_n_RA_slot = prach.get_n_RA_slot();
    m_slot_index = prach.get_slot_index();
    return true;
}

bool lib_nr_ul_phy_prach_process_t::prach_process()
{
    common_t::check_scs_and_fr(m_prach_scs, m_bandwidth);
    common_t::check_ci_and_fr_and_duplex_mode(m_configuration_idx, m_configuration_table);
    common_t::check_scs_and_format(m_prach_scs, m_preamble.format);
    common_t::check_restricted_set_and_format(m_preamble.restricted_set, m_preamble.format,
                                              m_preamble.zero_correlation_zone);
    common_t::validate_prach_and_carrier(m_numerology, m_prach_scs, m_preamble.lra);
    common_t::check_aps_and_scs_and_ci(m_configuration_table, m_prach_scs, m_configuration_idx, m_n_RA_slot);

    if (!_nr_ul_phy_prach_sequence_gen()) {
        std::cout << "prach_process:_nr_dl_phy_prach_sequence_gen return error.\n" << std::endl;
        return false;
    }
    _nr_ul_phy_prach_encode_map();
    if (m_explanation)
        _explain();
    return true;
}

/// The RBs of the carrier that the preamble touches.
void lib_nr_ul_phy_prach_process_t::_explain() const
{
    const double rb_hz = static_cast<double>(m_carrier_scs_hz) * k_subcarriers_per_rb;
    const double first_hz = _get_first_subcarrier() * _get_scs_hz();
    const double end_hz = first_hz + static_cast<double>(m_preamble.lra) * _get_scs_hz();
    for (double rb = std::floor(first_hz / rb_hz); rb * rb_hz < end_hz; ++rb)
        m_explanation->rbs.push_back(static_cast<std::int32_t>(rb));
    m_explanation->figures = {{"length", m_preamble.lra},
                              {"preamble", m_preamble.preamble_index},
                              {"root_index", m_preamble.sequence_index},
                              {"zero_correlation_zone", m_preamble.zero_correlation_zone}};
}

// TS 38.211 clause 6.3.3.1
bool lib_nr_ul_phy_prach_process_t::_nr_ul_phy_prach_sequence_gen()
{
    const prach_preamble_t preamble = lib_nr_prach_preamble_t::get_preamble(m_preamble);
    if (!preamble.is_found)
        return false;
    if (m_explanation)
        m_explanation->burst = {preamble.u, preamble.cyclic_shift, 0};
    const std::uint64_t length = m_preamble.lra;
    m_sequence.resize(length);
    for (std::uint64_t n = 0; n < length; ++n) {
        // u i (i + 1) half turns over L_RA; whole turns are taken out in whole numbers.
        const std::uint64_t i = (n + preamble.cyclic_shift) % length;
        const auto half_turns = static_cast<double>(preamble.u * i * (i + 1) % (2 * length));
        const double angle = -std::numbers::pi * half_turns / static_cast<double>(length);
        m_sequence[n] = {std::cos(angle), std::sin(angle)};
    }
    common_lib::lib_fft_plan_t::get(length, common_lib::LIB_FFT_FORWARD).execute(m_sequence.data(), m_sequence.data());
    return true;
}

void lib_nr_ul_phy_prach_process_t::_nr_ul_phy_prach_encode_map()
{
    auto& rows = grid().get_prach_payload_mapping();
    const double amplitude = common_lib::lib_common_math_t::db_value_to_amplitude_ratio(m_power_boosting);
    const std::size_t first_row =
        common_t::get_prach_first_row(m_preamble.format, m_configuration_table, m_configuration_idx, m_n_RA_t);
    const std::size_t row_number =
        common_t::get_num_ofdm_symbols(m_preamble.format, m_configuration_table, m_configuration_idx);
    const std::size_t first_column = _get_first_column();
    lib_nr_cell_count_t written;
    for (std::size_t row = first_row; row < std::min(first_row + row_number, rows.size()); ++row) {
        const std::size_t room = rows[row].size() - std::min(rows[row].size(), first_column);
        const std::size_t inside = std::min(room, m_sequence.size());
        for (std::size_t i = 0; i < inside; ++i)
            rows[row][first_column + i] = amplitude * m_sequence[i];
        written.inside += inside;
        written.outside += m_sequence.size() - inside;
    }
    grid().set_written_cells(written);
    _get_prach_general_ofdm_info(grid().get_prach_ofdm_info());
}

bool lib_nr_ul_phy_prach_process_t::nr_ul_phy_prach_re_map(lib_nr_remap_mode_t mode)
{
    if (mode == LIB_NR_REMAPP_MODE_UI_VIEW_MAP)
        _nr_ul_phy_prach_freq_map();
    return true;
}

void lib_nr_ul_phy_prach_process_t::_nr_ul_phy_prach_freq_map()
{
    _get_prach_general_ofdm_info(grid().get_prach_ofdm_info());
    const double first = _get_first_subcarrier();
    const double last = first + static_cast<double>(m_preamble.lra);
    grid().set_resource_freq_param({first * _get_scs_hz() + m_point_a_hz, last * _get_scs_hz() + m_point_a_hz});
}

double lib_nr_ul_phy_prach_process_t::_get_scs_hz() const { return static_cast<double>(m_prach_scs); }

/// Of the preamble, from the grid's lower edge in PRACH subcarriers, K k_1 + k-bar of TS 38.211 clause 5.3.2. By the
/// own rule a preamble of a wider spacing than the carrier's stands at k-bar, wherever its first RB lies.
double lib_nr_ul_phy_prach_process_t::_get_first_subcarrier() const
{
    unsigned int rb_number = 0;
    unsigned int k_bar = 0;
    common_t::get_prach_carrier_combination(m_preamble.lra, m_prach_scs, m_numerology, rb_number, k_bar);
    const bool is_wide_in_fr1 = (m_preamble.lra == PRACH_LRA_571 || m_preamble.lra == PRACH_LRA_1151) &&
                                common_t::get_freq_range_type(m_bandwidth) == NR_FR1;
    const std::int64_t occasion = is_wide_in_fr1 ? 0 : std::int64_t{m_n_RA_f} * rb_number;
    const std::int64_t rb = std::int64_t{m_n_RA_start} + m_rb_offset + occasion;
    const std::int64_t own = k_bar + rb * (m_carrier_scs_hz / m_prach_scs) * k_subcarriers_per_rb;
    const unsigned int standard_k_bar = common_t::get_standard_k_bar(m_preamble.lra, m_prach_scs, m_numerology, k_bar);
    const double standard =
        standard_k_bar + static_cast<double>(rb * k_subcarriers_per_rb * m_carrier_scs_hz) / _get_scs_hz();
    return m_rules.pick(lib_nr_deviation_t::prach_place, static_cast<double>(own), standard);
}

/// By which the modulator has to move a row whose columns lie round its middle: an odd number of them, and by the
/// standard a place between two, do not fall on its own subcarriers.
double lib_nr_ul_phy_prach_process_t::_get_frequency_shift(unsigned int columns) const
{
    const unsigned int columns_per_subcarrier = m_carrier_scs_hz / m_prach_scs;
    const double beyond =
        columns + 1.0 - static_cast<double>(m_max_rb_number * columns_per_subcarrier * k_subcarriers_per_rb);
    const double own = columns % 2 == 0 ? 0.0 : std::trunc(beyond * _get_scs_hz() * 0.5);
    const double middle = 0.5 * m_max_rb_number * k_subcarriers_per_rb * m_carrier_scs_hz / _get_scs_hz();
    const double place = _get_first_subcarrier();
    const unsigned int columns_below = (columns + 1) / 2;
    const double standard = (place - std::floor(place) + columns_below - middle) * _get_scs_hz();
    return m_rules.pick(lib_nr_deviation_t::prach_place, own, standard);
}

unsigned int lib_nr_ul_phy_prach_process_t::_scaled(double samples) const
{
    return common_lib::bounded_cast<unsigned int>(samples * (m_sample_rate_hz / k_reference_rate_hz));
}

void lib_nr_ul_phy_prach_process_t::_get_prach_general_ofdm_info(prach_ofdm_info_param_t& info) const
{
    unsigned int columns = 0;
    unsigned int rows = 0;
    common_t::get_gridsize(m_max_rb_number, m_carrier_scs_hz, m_prach_scs, m_preamble.format, columns, rows);
    info.format = m_preamble.format;
    info.scs_hz = m_prach_scs;
    info.sample_rate_hz = m_sample_rate_hz;
    info.fft_length = common_lib::bounded_cast<unsigned int>(m_sample_rate_hz / _get_scs_hz());

    info.cp_lengths.clear();
    for (const double samples : _get_prefixes(rows))
        info.cp_lengths.push_back(_scaled(samples));
    info.frequency_shift_hz = _get_frequency_shift(columns);
    info.frequency_shift_from = 0;
    if (info.frequency_shift_hz != 0.0)
        info.frequency_shift_from = m_rules.pick(lib_nr_deviation_t::prach_place, 0u, _scaled(_get_prefix(m_n_RA_t)));
}

/// Samples at 30.72 MHz in front of each row of the grid.
std::vector<double> lib_nr_ul_phy_prach_process_t::_get_prefixes(unsigned int rows) const
{
    std::vector<double> prefixes(rows);
    const prach_format_t format = m_preamble.format;
    if (is_long_prach_format(format)) {
        prefixes.front() = _get_prefix(0);
        return prefixes;
    }
    const double useful = k_reference_rate_hz / _get_scs_hz();
    configuration_table_t row;
    common_t::get_variables_from_configTable(m_configuration_table, m_configuration_idx, row, m_n_RA_t);
    for (unsigned int occasion = 0; occasion < std::max(row.occasions_per_slot, m_n_RA_t + 1); ++occasion) {
        const unsigned int first =
            common_t::get_prach_first_row(format, m_configuration_table, m_configuration_idx, occasion);
        if (first >= rows)
            break;
        double prefix = _get_prefix(occasion);
        // C2 has a prefix as long as a row: the grid's extra row is the greater part of it.
        if (format == prach_format_C2 && prefix >= useful)
            prefix -= useful;
        prefixes[first] = prefix;
    }
    return prefixes;
}

/// N_CP of an occasion, in samples at 30.72 MHz, which the own rule cuts to whole ones.
double lib_nr_ul_phy_prach_process_t::_get_prefix(unsigned int occasion) const
{
    const double kappas = common_t::get_prach_prefix(m_preamble.format);
    if (is_long_prach_format(m_preamble.format))
        return kappas;
    const double exact = kappas / 2048.0 * (k_reference_rate_hz / _get_scs_hz());
    return m_rules.pick(lib_nr_deviation_t::prach_place, std::floor(exact), exact) +
           16 * _get_half_subframes_within(occasion);
}

/// How often a subframe's start or middle falls into an occasion, each of which adds 16 samples to its prefix.
unsigned int lib_nr_ul_phy_prach_process_t::_get_half_subframes_within(unsigned int occasion) const
{
    const unsigned int u = common_t::get_u_from_prach_scs(m_prach_scs);
    std::uint64_t symbol = std::uint64_t{m_slot_symbols} * m_n_RA_slot +
                           common_t::get_prach_first_symbol(m_configuration_table, m_configuration_idx, occasion);
    if (u >= 2)
        symbol += std::uint64_t{m_slot_index & 3u} * m_slot_symbols << (u - 2);
    const std::uint64_t begin = start_of_symbol(symbol, u);
    const std::uint64_t length = ((common_t::get_prach_prefix(m_preamble.format) +
                                   std::uint64_t{2048} * common_t::get_prach_repetitions(m_preamble.format))
                                  << 6) >>
                                 u;
    const std::uint64_t boundaries_before = (begin + k_half_subframe - 1) / k_half_subframe;
    const std::uint64_t boundaries_until = (begin + length + k_half_subframe - 1) / k_half_subframe;
    return static_cast<unsigned int>(boundaries_until - boundaries_before);
}

} // namespace vek::nr_mod_lib

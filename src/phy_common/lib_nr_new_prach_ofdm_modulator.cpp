#include "phy_common/lib_nr_new_prach_ofdm_modulator.h"

#include "common/lib_bounded_cast.h"
#include "common/lib_common_math.h"
#include "common/lib_common_signal_process.h"
#include "common/lib_fft_plan.h"
#include "common/lib_signal_power.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <numbers>

namespace vek::nr_mod_lib
{

namespace
{

constexpr double k_reference_rate_hz = 30.72e6;
constexpr std::uint64_t k_subframe_samples = 30720;
constexpr std::uint64_t k_symbol_samples = 2192; // a symbol of 15 kHz with its short prefix

/// Adds a piece of a frame, from `begin` on and round its end, to as many samples of the frame as there are.
void add_circularly(const std::vector<std::complex<double>>& piece, std::size_t begin, std::size_t frame_length,
                    std::complex<double>* frame, std::size_t available)
{
    const auto add = [&](std::size_t place, std::size_t first, std::size_t last) {
        for (std::size_t i = first; i < last && place < available; ++i, ++place)
            frame[place] += piece[i];
    };
    const std::size_t ahead = std::min(piece.size(), frame_length - begin);
    add(begin, 0, ahead);
    add(0, ahead, piece.size());
}

} // namespace

void lib_nr_new_prach_ofdm_modulator_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    if (!lib_nr_phy_common_t::has_extended_prefix(m_numerology))
        m_cp_type = LIB_NR_NORMAL_CP;
    m_numerology = numerology;
}

void lib_nr_new_prach_ofdm_modulator_t::set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    m_bandwidth = bandwidth;
}

bool lib_nr_new_prach_ofdm_modulator_t::set_cyclic_prefix_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    if (cp_type == LIB_NR_EXTEND_CP && !lib_nr_phy_common_t::has_extended_prefix(m_numerology)) {
        std::cout << "lib_nr_dl_resource_manager_t::set_cyclic_prefix_type Report : "
                     "Extende CP is supported only with 60kHz SCS!"
                  << std::endl;
        return false;
    }
    m_cp_type = cp_type;
    return true;
}

bool lib_nr_new_prach_ofdm_modulator_t::set_target_sample_rate(double sample_rate_hz)
{
    if (!(sample_rate_hz > 0.0)) {
        std::cout << "lib_nr_new_prach_ofdm_modulator_t::set_target_sample_rate Report : "
                     "Sample Rate Should be a positive value!"
                  << std::endl;
        return false;
    }
    const double protocol_rate_hz =
        static_cast<double>(get_protocol_defined_fft_length()) * lib_nr_phy_common_t::get_scs_hz_value(m_numerology);
    return set_oversamping_ratio(common_lib::bounded_cast<unsigned int>(std::ceil(sample_rate_hz / protocol_rate_hz)));
}

bool lib_nr_new_prach_ofdm_modulator_t::set_oversamping_ratio(unsigned int ratio)
{
    if (ratio == 0) {
        std::cout << "lib_nr_new_prach_ofdm_modulator_t::set_oversamping_ratio Report : "
                     "Oversampling Ratio Must NOT be zero!"
                  << std::endl;
        return false;
    }
    m_oversampling_ratio = ratio;
    return true;
}

void lib_nr_new_prach_ofdm_modulator_t::cal_start_symbol(prach_config_table_type_t table, unsigned int index,
                                                         unsigned int n_RA_slot, unsigned int n_RA_t,
                                                         prach_format_t format)
{
    m_start_symbol = lib_nr_phy_common_t::get_symbol_number_in_slot(m_numerology, m_cp_type) * n_RA_slot +
                     lib_nr_phy_common_t::get_prach_first_symbol(table, index, n_RA_t);
    m_first_row = lib_nr_phy_common_t::get_prach_first_row(format, table, index, n_RA_t);
}

void lib_nr_new_prach_ofdm_modulator_t::cal_current_start_locate(prach_scs_type_t scs, unsigned int /*n_RA_slot*/,
                                                                 unsigned int subframe, unsigned int slot)
{
    const unsigned int u = lib_nr_phy_common_t::get_u_from_prach_scs(scs);
    std::uint64_t symbol = m_start_symbol;
    std::uint64_t start_subframe = subframe;
    if (u >= 2) { // the table counts slots of 60 kHz, four a subframe
        const std::uint64_t slot_symbols = lib_nr_phy_common_t::get_symbol_number_in_slot(m_numerology, m_cp_type);
        symbol += (slot & 3u) * slot_symbols << (u - 2);
        start_subframe = slot / 4;
    }
    // The first symbol of each half subframe has 16 samples more, TS 38.211 clause 5.3.1.
    const std::uint64_t extra = symbol == 0 ? 0 : symbol <= 7u << u ? 16 : 32;
    const std::uint64_t start = start_subframe * k_subframe_samples + extra;
    const double symbols_before = static_cast<double>(symbol * k_symbol_samples) / (1u << u);
    m_start_position = static_cast<double>(start) + m_rules.pick(lib_nr_deviation_t::prach_place,
                                                                 static_cast<double>(symbol * (k_symbol_samples >> u)),
                                                                 symbols_before);
}

std::int64_t lib_nr_new_prach_ofdm_modulator_t::get_start_sample() const
{
    return static_cast<std::int64_t>(std::floor(m_start_position * m_info.sample_rate_hz / k_reference_rate_hz));
}

prach_resource_time_param_t lib_nr_new_prach_ofdm_modulator_t::nr_ul_phy_prach_time_map() const
{
    prach_resource_time_param_t time;
    time.start_position = m_start_position;
    time.first_row = m_first_row;
    time.n_u = static_cast<unsigned int>(k_reference_rate_hz / m_info.scs_hz);
    time.cp_lengths = m_info.cp_lengths;
    time.sample_rate_hz = m_info.sample_rate_hz;
    time.format = m_info.format;
    return time;
}

bool lib_nr_new_prach_ofdm_modulator_t::deal_frame_ofdm_modulation(const grid_t& grid, signal_t& main, signal_t& head,
                                                                   signal_t& tail) const
{
    if (grid.empty())
        return false;
    head.clear();
    tail.clear();
    std::fill(main.begin(), main.end(), 0.0);
    return add_frame(grid, 0, main.size(), main.data(), main.size());
}

std::size_t lib_nr_new_prach_ofdm_modulator_t::get_first_sample(std::int64_t shift, std::size_t length) const
{
    const std::int64_t turned =
        (get_start_sample() + shift % static_cast<std::int64_t>(length)) % static_cast<std::int64_t>(length);
    return static_cast<std::size_t>(turned) + (turned < 0 ? length : 0);
}

bool lib_nr_new_prach_ofdm_modulator_t::add_frame(const grid_t& grid, std::int64_t shift, std::size_t length,
                                                  std::complex<double>* frame, std::size_t available) const
{
    if (grid.empty())
        return false;
    if (m_info.cp_lengths.size() != grid.size())
        std::cout << "cp_Lengths size " << m_info.cp_lengths.size() << "are not equal symbols" << grid.size()
                  << std::endl;
    const std::size_t useful = m_info.fft_length;
    if (length == 0 || useful == 0)
        return true;

    const std::size_t begin = get_first_sample(shift, length);

    // The rows behind the first, up to a frame of them; those without a preamble take their time alone.
    std::size_t since = 0;
    const std::vector<std::complex<double>>* transformed = nullptr;
    signal_t samples(useful);
    signal_t piece;
    for (std::size_t row = m_first_row; row < grid.size() && since < length; ++row) {
        const std::size_t prefix =
            row < m_info.cp_lengths.size() ? std::min<std::size_t>(m_info.cp_lengths[row], useful) : 0;
        const std::size_t count = prefix + useful;
        if (!common_lib::is_silent(grid[row])) {
            if (!transformed || *transformed != grid[row])
                _transform(grid[row], samples);
            transformed = &grid[row];
            piece.assign(samples.end() - static_cast<std::ptrdiff_t>(prefix), samples.end());
            piece.insert(piece.end(), samples.begin(), samples.end());
            if (m_info.frequency_shift_hz != 0.0) {
                const double turns = m_info.frequency_shift_hz / m_info.sample_rate_hz;
                const double from = static_cast<double>(since) - m_info.frequency_shift_from;
                common_lib::lib_common_signal_process_t::deal_mixer(
                    piece, turns, 2.0 * std::numbers::pi * std::fmod(turns * from, 1.0));
            }
            piece.resize(std::min(piece.size(), length - since));
            add_circularly(piece, (begin + since) % length, length, frame, available);
        }
        since += count;
    }
    return true;
}

/// Puts the row's middle on 0 Hz; what a row of samples has no room for is cut at both edges.
void lib_nr_new_prach_ofdm_modulator_t::_transform(const std::vector<std::complex<double>>& row,
                                                   signal_t& samples) const
{
    const auto useful = static_cast<std::int64_t>(m_info.fft_length);
    const auto columns = static_cast<std::int64_t>(row.size());
    const std::int64_t ahead = useful >= columns ? (useful - columns) / 2 : -((columns - useful) / 2);
    const double scale = 1.0 / std::sqrt(static_cast<double>(useful));
    std::fill(samples.begin(), samples.end(), 0.0);
    for (std::int64_t column = std::max<std::int64_t>(-ahead, 0); column < columns && column + ahead < useful; ++column)
    {
        const std::int64_t bin = column + ahead - useful / 2;
        samples[static_cast<std::size_t>(bin < 0 ? bin + useful : bin)] = scale * row[static_cast<std::size_t>(column)];
    }
    common_lib::lib_fft_plan_t::get(samples.size(), common_lib::LIB_FFT_INVERSE)
        .execute(samples.data(), samples.data());
}

unsigned int lib_nr_new_prach_ofdm_modulator_t::get_protocol_defined_fft_length() const
{
    return common_lib::lib_common_math_t::get_min_pow_of_2(
        lib_nr_phy_common_t::get_subcarrier_total_number(m_numerology, m_bandwidth), 4);
}

unsigned int lib_nr_new_prach_ofdm_modulator_t::get_actual_fft_length() const
{
    return get_protocol_defined_fft_length() * m_oversampling_ratio;
}

} // namespace vek::nr_mod_lib

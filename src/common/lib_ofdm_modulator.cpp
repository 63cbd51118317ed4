#include "common/lib_ofdm_modulator.h"

#include "common/lib_complex_product.h"
#include "common/lib_fft_plan.h"
#include "common/lib_signal_power.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <numbers>

namespace vek::common_lib
{

namespace
{

using complex_t = std::complex<double>;
using row_t = std::vector<complex_t>;

// Where a symbol lies in the frame, and the edge of the transition into it, which falls into its prefix.
struct symbol_layout_t
{
    std::size_t begin;
    std::size_t prefix;
    std::size_t suffix;
    const std::vector<double>* rise;
};

// Subcarriers below the centre go to the end of the transform's input, the others to its start. Rows of one frame are
// of one length as a rule, and what lies between stays zero.
class subcarrier_mapper_t
{
public:
    explicit subcarrier_mapper_t(std::size_t useful_length)
        : m_bins(useful_length), m_scale(1.0 / std::sqrt(static_cast<double>(useful_length)))
    {}

    const complex_t* map(const row_t& row, double turns)
    {
        if (row.size() != m_row_length)
            std::fill(m_bins.begin(), m_bins.end(), complex_t());
        m_row_length = row.size();

        const double angle = std::isfinite(turns) ? 2.0 * std::numbers::pi * (turns - std::floor(turns)) : 0.0;
        const complex_t factor(m_scale * std::cos(angle), m_scale * std::sin(angle));
        const std::size_t below = row.size() / 2;
        multiply(row.data(), below, factor, m_bins.data() + (m_bins.size() - below));
        multiply(row.data() + below, row.size() - below, factor, m_bins.data());
        return m_bins.data();
    }

private:
    row_t m_bins;
    double m_scale;
    std::size_t m_row_length = 0;
};

// Adds the prefix to what the symbol before left there, and writes the suffix and the fading end, which lies behind it
// or, of the last symbol, behind the frame.
void extend_symbol(const symbol_layout_t& symbol, const std::vector<double>& next_rise, std::size_t useful_length,
                   complex_t* frame, complex_t* fading)
{
    complex_t* const prefix = frame + symbol.begin;
    const complex_t* const useful = prefix + symbol.prefix;
    const complex_t* const prefix_source = useful + (useful_length - symbol.prefix);
    const std::vector<double>& rise = *symbol.rise;
    for (std::size_t i = 0; i < rise.size(); ++i)
        prefix[i] += rise[i] * prefix_source[i];
    std::copy(prefix_source + rise.size(), prefix_source + symbol.prefix, prefix + rise.size());

    complex_t* const suffix = prefix + symbol.prefix + useful_length;
    std::copy_n(useful, symbol.suffix, suffix);
    const std::size_t length = next_rise.size();
    for (std::size_t i = 0; i < length; ++i)
        fading[i] = next_rise[length - 1 - i] * useful[(symbol.suffix + i) % useful_length];
}

void fill_silent_symbol(const symbol_layout_t& symbol, const std::vector<double>& next_rise, std::size_t useful_length,
                        complex_t* frame, complex_t* fading)
{
    std::fill(frame + symbol.begin + symbol.rise->size(),
              frame + symbol.begin + symbol.prefix + useful_length + symbol.suffix, complex_t());
    std::fill_n(fading, next_rise.size(), complex_t());
}

} // namespace

void lib_ofdm_modulator_t::set_fft_length(unsigned int fft_length) { m_fft_length = fft_length; }

void lib_ofdm_modulator_t::set_symbol_number(unsigned int symbol_number) { m_symbol_number = symbol_number; }

void lib_ofdm_modulator_t::set_oversampling_ratio(unsigned int oversampling_ratio)
{
    m_oversampling_ratio = std::max(oversampling_ratio, 1U);
}

void lib_ofdm_modulator_t::set_cyclic_prefix_config(const lib_ofdm_cyclic_config_t& config)
{
    m_cyclic_prefix_config = config;
}

void lib_ofdm_modulator_t::set_cyclic_suffix_config(const lib_ofdm_cyclic_config_t& config)
{
    m_cyclic_suffix_config = config;
}

void lib_ofdm_modulator_t::set_frame_idle_length(unsigned int frame_idle_length)
{
    m_frame_idle_length = frame_idle_length;
}

void lib_ofdm_modulator_t::set_window_beta(double window_beta)
{
    if (!std::isnan(window_beta))
        m_window_beta = std::max(window_beta, 0.0);
}

void lib_ofdm_modulator_t::set_windowing_method(lib_ofdm_windowing_method_type_t method)
{
    m_windowing_method = method;
}

void lib_ofdm_modulator_t::set_symbol_phase_turns(const std::vector<double>& symbol_phase_turns)
{
    m_symbol_phase_turns = symbol_phase_turns;
}

struct lib_ofdm_modulator_t::frame_layout_t
{
    std::map<unsigned int, std::vector<double>> rises; // by length
    std::vector<symbol_layout_t> symbols;
    std::size_t symbols_end = 0;
};

bool lib_ofdm_modulator_t::_is_modulable(const std::vector<std::vector<std::complex<double>>>& payload) const
{
    const std::uint64_t useful_length = std::uint64_t{m_fft_length} * m_oversampling_ratio;
    if (useful_length == 0 || useful_length > std::numeric_limits<unsigned int>::max())
        return false;
    if (payload.empty() || payload.size() != m_symbol_number)
        return false;
    return std::all_of(payload.begin(), payload.end(),
                       [useful_length](const row_t& row) { return row.size() <= useful_length; });
}

unsigned int lib_ofdm_modulator_t::_get_transition_length(unsigned int prefix) const
{
    const double wanted = m_window_beta * static_cast<double>(_get_useful_length());
    return static_cast<unsigned int>(std::round(std::min(wanted, static_cast<double>(prefix))));
}

lib_ofdm_modulator_t::frame_layout_t lib_ofdm_modulator_t::_lay_out_frame() const
{
    frame_layout_t frame;
    frame.symbols.reserve(m_symbol_number);
    const unsigned int useful_length = _get_useful_length();
    for (unsigned int l = 0; l < m_symbol_number; ++l) {
        const unsigned int prefix = m_cyclic_prefix_config.get_cyclic_length(l, useful_length);
        const unsigned int suffix = m_cyclic_suffix_config.get_cyclic_length(l, useful_length);
        const unsigned int transition = _get_transition_length(prefix);
        const auto [rise, is_new] = frame.rises.try_emplace(transition);
        if (is_new)
            rise->second = lib_ofdm_windowing_method_t::get_rising_edge(m_windowing_method, transition);
        frame.symbols.push_back({frame.symbols_end, prefix, suffix, &rise->second});
        frame.symbols_end += std::size_t{prefix} + useful_length + suffix;
    }
    return frame;
}

bool lib_ofdm_modulator_t::deal_ofdm_modulation(const std::vector<std::vector<std::complex<double>>>& payload,
                                                std::vector<std::complex<double>>& main,
                                                std::vector<std::complex<double>>& head,
                                                std::vector<std::complex<double>>& tail)
{
    if (!_is_modulable(payload)) {
        main.clear();
        return false;
    }
    const frame_layout_t layout = _lay_out_frame();
    main.resize(layout.symbols_end);
    _modulate({payload}, layout, main.data(), tail);
    main.insert(main.end(), tail.begin(), tail.end());
    head.clear();
    tail.clear();
    return true;
}

bool lib_ofdm_modulator_t::modulate_frame(const lib_ofdm_payload_t& payload, std::complex<double>* frame,
                                          std::size_t length, std::vector<std::complex<double>>& tail)
{
    if (!_is_modulable(payload.rows))
        return false;
    const frame_layout_t layout = _lay_out_frame();
    if (layout.symbols_end != length)
        return false;
    _modulate(payload, layout, frame, tail);
    return true;
}

void lib_ofdm_modulator_t::_modulate(const lib_ofdm_payload_t& payload, const frame_layout_t& layout,
                                     std::complex<double>* frame, std::vector<std::complex<double>>& tail) const
{
    const std::size_t useful_length = _get_useful_length();
    const std::size_t first_transition = layout.symbols.front().rise->size();
    tail.assign(std::max<std::size_t>(m_frame_idle_length, first_transition), complex_t());

    // What fades into the first prefix belongs to the frame before. All else is written below, symbol by symbol.
    std::fill_n(frame, first_transition, complex_t());
    subcarrier_mapper_t mapper(useful_length);
    const lib_fft_plan_t& inverse_fft = lib_fft_plan_t::get(useful_length, LIB_FFT_INVERSE);
    const std::size_t symbols = layout.symbols.size();
    for (std::size_t l = 0; l < symbols; ++l) {
        const symbol_layout_t& symbol = layout.symbols[l];
        const std::vector<double>& next_rise = *layout.symbols[(l + 1) % symbols].rise;
        complex_t* const fading = l + 1 == symbols ? tail.data() : frame + layout.symbols[l + 1].begin;
        if (!payload.may_sound(l) || is_silent(payload.rows[l])) {
            fill_silent_symbol(symbol, next_rise, useful_length, frame, fading);
            continue;
        }
        const double turns = l < m_symbol_phase_turns.size() ? m_symbol_phase_turns[l] : 0.0;
        inverse_fft.execute(mapper.map(payload.rows[l], turns), frame + symbol.begin + symbol.prefix);
        extend_symbol(symbol, next_rise, useful_length, frame, fading);
    }
}

} // namespace vek::common_lib

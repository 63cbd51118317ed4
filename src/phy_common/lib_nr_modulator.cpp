#include "phy_common/lib_nr_modulator.h"

#include "common/lib_bit_packing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

using point_t = std::complex<double>;

// Bits per symbol by type.
constexpr std::array<unsigned int, 7> k_modulation_order = {1, 1, 2, 4, 6, 8, 10};

// One axis of a square constellation, TS 38.211 clauses 5.1.3 to 5.1.7: the bits of this axis, first bit highest, to
// the amplitude (1-2b0)(2^(n-1) - (1-2b2)(2^(n-2) - ...)).
constexpr double axis_amplitude(unsigned int bits, unsigned int count)
{
    double amplitude = 1.0;
    for (unsigned int i = 0; i < count; ++i) {
        const double sign = ((bits >> i) & 1u) != 0 ? -1.0 : 1.0;
        amplitude = i == 0 ? sign : sign * (static_cast<double>(1u << i) - amplitude);
    }
    return amplitude;
}

// The even bits of a symbol give its real part, the odd ones its imaginary part.
template <unsigned int order>
constexpr std::array<point_t, 1u << order> make_square_constellation(double divisor)
{
    std::array<point_t, 1u << order> points{};
    for (unsigned int symbol = 0; symbol < points.size(); ++symbol) {
        unsigned int real_bits = 0;
        unsigned int imaginary_bits = 0;
        for (unsigned int bit = 0; bit < order; bit += 2) {
            real_bits = (real_bits << 1) | ((symbol >> (order - 1 - bit)) & 1u);
            imaginary_bits = (imaginary_bits << 1) | ((symbol >> (order - 2 - bit)) & 1u);
        }
        points[symbol] = point_t(axis_amplitude(real_bits, order / 2) / divisor,
                                 axis_amplitude(imaginary_bits, order / 2) / divisor);
    }
    return points;
}

constexpr double k_bpsk_amplitude = 0.7071067811865476;
constexpr std::array<point_t, 2> k_bpsk = {point_t(k_bpsk_amplitude, k_bpsk_amplitude),
                                           point_t(-k_bpsk_amplitude, -k_bpsk_amplitude)};
constexpr auto k_qpsk = make_square_constellation<2>(1.4142135623730951);
constexpr auto k_16qam = make_square_constellation<4>(3.1622776601683795);
constexpr auto k_64qam = make_square_constellation<6>(6.48074069840786);
constexpr auto k_256qam = make_square_constellation<8>(13.038404810405298);
constexpr auto k_1024qam = make_square_constellation<10>(26.115129714401192);

// The value of the symbol that begins at `bits`, first bit highest. Reads 8 bytes for the orders 4 to 8.
template <unsigned int order>
unsigned int symbol_value(const unsigned char* bits)
{
    if constexpr (order == 1)
        return bits[0] & 1u;
    else if constexpr (order == 2)
        return (bits[0] & 1u) << 1 | (bits[1] & 1u);
    else if constexpr (order <= 8)
        return static_cast<unsigned int>(common_lib::pack_8_bits_first_highest(bits) >> (8 - order));
    else
        return static_cast<unsigned int>(common_lib::pack_8_bits_first_highest(bits) << 2) | (bits[8] & 1u) << 1 |
               (bits[9] & 1u);
}

template <unsigned int order>
void map_symbols(const point_t* points, const unsigned char* bits, std::size_t symbol_count, point_t* symbols)
{
    constexpr bool reads_past_last = order == 4 || order == 6;
    const std::size_t direct = reads_past_last && symbol_count > 0 ? symbol_count - 1 : symbol_count;
    for (std::size_t i = 0; i < direct; ++i)
        symbols[i] = points[symbol_value<order>(bits + i * order)];
    if constexpr (reads_past_last)
        if (direct < symbol_count) {
            std::array<unsigned char, 8> last{};
            std::copy_n(bits + direct * order, order, last.begin());
            symbols[direct] = points[symbol_value<order>(last.data())];
        }
}

} // namespace

lib_nr_modulator_t::lib_nr_modulator_t(lib_nr_modulation_type_t type) : m_modulation_type(type)
{
    _init_constellation_map(type);
}

void lib_nr_modulator_t::set_modulation_type(lib_nr_modulation_type_t type)
{
    _init_constellation_map(type);
    m_modulation_type = type;
}

unsigned int lib_nr_modulator_t::get_modulation_order(lib_nr_modulation_type_t type)
{
    if (type >= k_modulation_order.size()) {
        std::cout << "lib_nr_modulator_t::get_modulation_order Report : Undefined Modulation Scheme!" << std::endl;
        return 0;
    }
    return k_modulation_order[type];
}

std::map<unsigned int, std::complex<double>> lib_nr_modulator_t::get_constellation_map() const
{
    std::map<unsigned int, std::complex<double>> map;
    for (unsigned int symbol = 0; m_constellation_order > 0 && symbol < 1u << m_constellation_order; ++symbol)
        map.emplace_hint(map.end(), symbol, m_constellation_map[symbol]);
    return map;
}

std::vector<std::complex<double>> lib_nr_modulator_t::get_points(double amplitude) const
{
    std::vector<std::complex<double>> points(m_constellation_order > 0 ? std::size_t{1} << m_constellation_order : 0);
    for (std::size_t symbol = 0; symbol < points.size(); ++symbol) {
        std::size_t first_highest = 0;
        for (unsigned int bit = 0; bit < m_constellation_order; ++bit)
            first_highest = first_highest << 1 | (symbol >> bit & 1u);
        points[symbol] = amplitude * m_constellation_map[first_highest];
    }
    if (m_modulation_type == LIB_NR_MODULATION_HALF_PI_BPSK)
        for (std::size_t symbol = 0; symbol < 2; ++symbol)
            points.emplace_back(-points[symbol].imag(), points[symbol].real());
    return points;
}

void lib_nr_modulator_t::deal_nr_modulation(const std::vector<unsigned char>& bits,
                                            std::vector<std::complex<double>>& symbols) const
{
    _deal_digital_modulation(bits, symbols);
    _deal_half_pi_phase_offset(symbols);
}

void lib_nr_modulator_t::_init_constellation_map(lib_nr_modulation_type_t type)
{
    switch (type) {
    case LIB_NR_MODULATION_HALF_PI_BPSK:
    case LIB_NR_MODULATION_BPSK:
        return _init_constellation_map_bpsk();
    case LIB_NR_MODULATION_QPSK:
        return _init_constellation_map_qpsk();
    case LIB_NR_MODULATION_16QAM:
        return _init_constellation_map_16qam();
    case LIB_NR_MODULATION_64QAM:
        return _init_constellation_map_64qam();
    case LIB_NR_MODULATION_256QAM:
        return _init_constellation_map_256qam();
    case LIB_NR_MODULATION_1024QAM:
        return _init_constellation_map_1024qam();
    }
    std::cout << "lib_nr_common_modulator_t::_init_constellation_map Report : Unexpected Modulation Type!" << std::endl;
}

// clang-format off
void lib_nr_modulator_t::_init_constellation_map_bpsk()    { m_constellation_map = k_bpsk.data();    m_constellation_order = 1; }
void lib_nr_modulator_t::_init_constellation_map_qpsk()    { m_constellation_map = k_qpsk.data();    m_constellation_order = 2; }
void lib_nr_modulator_t::_init_constellation_map_16qam()   { m_constellation_map = k_16qam.data();   m_constellation_order = 4; }
void lib_nr_modulator_t::_init_constellation_map_64qam()   { m_constellation_map = k_64qam.data();   m_constellation_order = 6; }
void lib_nr_modulator_t::_init_constellation_map_256qam()  { m_constellation_map = k_256qam.data();  m_constellation_order = 8; }
void lib_nr_modulator_t::_init_constellation_map_1024qam() { m_constellation_map = k_1024qam.data(); m_constellation_order = 10; }
// clang-format on

void lib_nr_modulator_t::_deal_digital_modulation(const std::vector<unsigned char>& bits,
                                                  std::vector<std::complex<double>>& symbols) const
{
    const unsigned int order = m_constellation_order;
    const std::size_t symbol_count = order == 0 ? 0 : bits.size() / order;
    if (symbol_count * order != bits.size())
        std::cout << "lib_nr_common_modulator_t::_deal_digital_modulation Report : Bit data is NOT enough!"
                  << std::endl;
    symbols.resize(symbol_count);
    switch (order) {
    case 1:
        return map_symbols<1>(m_constellation_map, bits.data(), symbol_count, symbols.data());
    case 2:
        return map_symbols<2>(m_constellation_map, bits.data(), symbol_count, symbols.data());
    case 4:
        return map_symbols<4>(m_constellation_map, bits.data(), symbol_count, symbols.data());
    case 6:
        return map_symbols<6>(m_constellation_map, bits.data(), symbol_count, symbols.data());
    case 8:
        return map_symbols<8>(m_constellation_map, bits.data(), symbol_count, symbols.data());
    case 10:
        return map_symbols<10>(m_constellation_map, bits.data(), symbol_count, symbols.data());
    default:
        return;
    }
}

void lib_nr_modulator_t::_deal_half_pi_phase_offset(std::vector<std::complex<double>>& symbols) const
{
    if (m_modulation_type != LIB_NR_MODULATION_HALF_PI_BPSK)
        return;
    // A quarter turn is exact without sine and cosine.
    for (std::size_t i = 1; i < symbols.size(); i += 2)
        symbols[i] = {-symbols[i].imag(), symbols[i].real()};
}

} // namespace vek::nr_mod_lib

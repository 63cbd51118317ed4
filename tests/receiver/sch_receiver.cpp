#include "receiver/sch_receiver.h"

#include "phy_common/tables/lib_nr_mcs_table.h"
#include "receiver/gold_sequence.h"
#include "receiver/low_papr.h"
#include "receiver/tables/dmrs_positions.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

namespace nr_test
{

namespace
{

using namespace vek::nr_mod_lib;
using complex_t = std::complex<double>;
using cells_t = std::map<unsigned int, complex_t>; // by subcarrier

bool is_type_2(const sch_channel_t& channel)
{
    return channel.settings.get_dmrs_configuration_type() == LIB_NR_DMRS_CFG_TYPE2;
}

unsigned int port_of(const sch_channel_t& channel) { return channel.settings.get_dmrs_port_v()[channel.layer]; }

bool is_in(const std::vector<unsigned int>& list, unsigned int value)
{
    return std::find(list.begin(), list.end(), value) != list.end();
}

int shift_of(const sch_channel_t& channel, unsigned int symbol)
{
    return channel.shifts.empty() ? 0 : 12 * channel.shifts[symbol];
}

struct mcs_t
{
    unsigned int order; // Q_m
    double rate;
};

/// TS 38.214 clause 6.1.4.1: rows of one bit are for pi/2-BPSK, and carry half the rate in QPSK.
mcs_t mcs_of(const sch_channel_t& channel)
{
    const auto& row = lib_nr_mcs_table(channel.settings.get_mcs_table())[channel.settings.get_mcs()];
    const unsigned int q = row.qm == 1 && channel.settings.get_modulation() == LIB_NR_MODULATION_QPSK ? 2 : 1;
    return {row.qm * q, row.code_rate_x1024 / 1024.0 / q};
}

unsigned int order_of(const sch_channel_t& channel) { return mcs_of(channel).order; }

double amplitude_of(const sch_channel_t& channel, double power)
{
    return std::pow(10.0, (channel.settings.get_power_boosting() + power) / 20.0);
}

/// The subcarriers of a symbol that the channel's RBs hold, in the order of the mapping.
std::vector<unsigned int> subcarriers_of(const sch_channel_t& channel, unsigned int symbol)
{
    std::vector<unsigned int> list;
    for (const unsigned int rb : channel.rbs)
        for (unsigned int k = 0; k < 12; ++k)
            list.push_back(12 * rb + k + static_cast<unsigned int>(shift_of(channel, symbol)));
    return list;
}

/// TS 38.211 clause 7.4.1.1: DMRS as they would stand in a symbol of the slot, of unit power. Without cover they are
/// those of PTRS.
cells_t dmrs_of(const sch_channel_t& channel, unsigned int slot, unsigned int symbol, unsigned int l_prime,
                bool with_cover)
{
    const auto& settings = channel.settings;
    const bool type_2 = is_type_2(channel);
    const unsigned int port = port_of(channel);
    const unsigned int lambda = type_2 ? port % 6 / 2 : port / 2 % 2;
    const bool by_group = settings.get_enable_dmrs_downlink_r16();
    const unsigned int n_scid = by_group && lambda == 1 ? 1 - settings.get_nscid() : settings.get_nscid();
    const std::uint64_t n_id =
        sch_identity(n_scid == 1 ? settings.get_nid1() : settings.get_nid0(), channel.cell, channel.standard_rules);
    const std::uint64_t count = std::uint64_t{channel.symbols_in_slot} * slot + symbol + 1;
    const std::uint64_t term = by_group ? lambda / 2 : 0;
    const std::uint64_t c_init = (count * (2 * n_id + 1) << 17) + (term << 17) + 2 * n_id + n_scid;
    const auto subcarriers = subcarriers_of(channel, symbol);
    const unsigned int rbs = *std::max_element(subcarriers.begin(), subcarriers.end()) / 12 + 1;
    const auto c = gold_sequence(static_cast<std::uint32_t>(c_init % (std::uint64_t{1} << 31)), 0, 12 * rbs);
    const bool turns_in_time = port >= (type_2 ? 6u : 4u) && l_prime == 1;
    cells_t values;
    const unsigned int reference = channel.dmrs_reference_rb * (type_2 ? 2 : 3);
    for (unsigned int n = reference; n < rbs * (type_2 ? 2 : 3); ++n)
        for (unsigned int k_prime = 0; k_prime < 2; ++k_prime) {
            const unsigned int k = type_2 ? 6 * n + k_prime + 2 * lambda : 4 * n + 2 * k_prime + lambda;
            const unsigned int i = 2 * (n - reference) + k_prime;
            const double weight = with_cover && (port % 2 * k_prime != 0) != turns_in_time ? -1.0 : 1.0;
            values[k] = weight * std::sqrt(0.5) * complex_t(1 - 2 * c[2 * i], 1 - 2 * c[2 * i + 1]);
        }
    return values;
}

/// The subcarriers with PTRS of a port, TS 38.211 clause 7.4.1.2.2. RBs are counted within the allocation.
std::vector<unsigned int> ptrs_subcarriers_of(const sch_channel_t& channel, unsigned int port, unsigned int symbol)
{
    constexpr unsigned int k_comb[] = {0, 2, 6, 8};
    constexpr unsigned int k_pairs[] = {0, 1, 6, 7};
    const unsigned int offset = channel.settings.get_ptrs_re_offset();
    const unsigned int k_re =
        is_type_2(channel) ? port / 2 * 2 + k_pairs[(offset + port % 2) % 4] : port / 2 + k_comb[offset] + port % 2 * 2;
    const unsigned int K = 2u << channel.settings.get_ptrs_freqency_density();
    const unsigned int rnti = channel.settings.get_rnti();
    auto rbs = channel.rbs;
    std::sort(rbs.begin(), rbs.end());
    const auto n = static_cast<unsigned int>(rbs.size());
    std::vector<unsigned int> list;
    for (unsigned int rb = n % K == 0 ? rnti % K : rnti % (n % K); rb < n; rb += K)
        list.push_back(12 * rbs[rb] + k_re + static_cast<unsigned int>(shift_of(channel, symbol)));
    return list;
}

/// TS 38.211 clause 5.1: the bits of one axis, and how far the value lies from the point.
double demap_axis(double value, unsigned int bits, unsigned char* out)
{
    for (unsigned int i = 0; i < bits; ++i) {
        out[2 * i] = value < 0 ? 1 : 0;
        value = i + 1 < bits ? static_cast<double>(1u << (bits - 1 - i)) - std::abs(value) : std::abs(value) - 1.0;
    }
    return value;
}

double demap(complex_t value, unsigned int order, bits_t& bits)
{
    if (order == 1) { // pi/2-BPSK
        const complex_t turned = value * (bits.size() % 2 == 0 ? 1.0 : complex_t(0.0, -1.0));
        bits.push_back(turned.real() < 0 ? 1 : 0);
        return std::abs(turned - (1.0 - 2.0 * bits.back()) * std::sqrt(0.5) * complex_t(1.0, 1.0));
    }
    const unsigned int axis = order / 2;
    const double scale = std::sqrt(2.0 * (std::pow(4.0, axis) - 1.0) / 3.0);
    bits.resize(bits.size() + order);
    unsigned char* out = &bits[bits.size() - order];
    const double real = demap_axis(scale * value.real(), axis, out);
    return std::hypot(real, demap_axis(scale * value.imag(), axis, out + 1)) / scale;
}

/// TS 38.211 clause 6.4.1.1.1.2; by the own rules the symbols of a hop count from its start, but for the first of the
/// second.
cells_t low_papr_dmrs_of(const sch_channel_t& channel, unsigned int slot, unsigned int symbol)
{
    const auto& settings = *channel.precoded;
    const bool is_double = settings.get_dmrs_length() == LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL;
    const auto& symbols = channel.dmrs_symbols;
    const auto place = static_cast<std::size_t>(std::find(symbols.begin(), symbols.end(), symbol) - symbols.begin());
    unsigned int l = is_double ? symbols[place / 2 * 2] : symbol;
    if (channel.second_hop != sch_channel_t::k_no_hop && !channel.standard_rules)
        l -= symbol > channel.second_hop ? channel.second_hop : settings.get_first_symbol();
    const std::size_t count = std::size_t{channel.symbols_in_slot} * slot + l;
    const unsigned int id = sch_identity(settings.get_n_rs_id(), channel.cell, channel.standard_rules);
    const unsigned int per_rb = is_type_2(channel) ? 4 : 6;
    const auto length = static_cast<unsigned int>(per_rb * channel.rbs.size());
    const auto hopping = settings.get_dmrs_hopping();
    const unsigned int f = hopping == LIB_NR_SCH_DMRS_HOPPING_GROUP ? hopping_number(id / 30, 8 * count, 8) : 0;
    const bool has_number = hopping == LIB_NR_SCH_DMRS_HOPPING_SEQUENCE && length >= 72;
    const signal_t sequence = low_papr_type_1((f + id) % 30, has_number ? hopping_number(id, count, 1) : 0, length);
    const unsigned int port = port_of(channel);
    const bool turns_in_time = is_double && port >= (is_type_2(channel) ? 6u : 4u) && place % 2 == 1;
    cells_t values;
    for (unsigned int i = 0; i < sequence.size(); ++i) {
        const unsigned int k = is_type_2(channel) ? i / 2 * 6 + i % 2 + port % 6 / 2 * 2 : 2 * i + port / 2 % 2;
        values[12 * channel.rbs[0] + static_cast<unsigned int>(shift_of(channel, symbol)) + k] =
            (port % 2 * (i % 2) != 0) != turns_in_time ? -sequence[i] : sequence[i];
    }
    return values;
}

/// The samples of a transform-precoded PTRS symbol by their position, TS 38.211 clauses 6.4.1.2.1.2 and 6.4.1.2.2.2.
cells_t ptrs_samples_of(const sch_channel_t& channel, unsigned int slot, unsigned int first_symbol)
{
    const auto& settings = *channel.precoded;
    const auto length = static_cast<unsigned int>(12 * channel.rbs.size());
    const unsigned int groups = 2u << settings.get_n_ptrs_group();
    const unsigned int samples = 2u << settings.get_n_ptrs_group_sample();
    const std::uint64_t id = settings.get_n_ptrs_id();
    const std::uint64_t count = std::uint64_t{channel.symbols_in_slot} * slot + first_symbol + 1;
    const std::uint64_t c_init = ((count * (2 * id + 1) << 17) + 2 * id) % (std::uint64_t{1} << 31);
    const auto c = gold_sequence(static_cast<std::uint32_t>(c_init), 0, groups * samples);
    cells_t values;
    for (unsigned int i = 0; i < groups * samples; ++i) {
        const unsigned int s = i / samples;
        const unsigned int k = i % samples;
        const unsigned int m = samples == 2     ? (2 * s + 1) * length / (2 * groups) - 1 + k
                               : s == 0         ? k
                               : s + 1 < groups ? s * length / groups + length / (2 * groups) - 2 + k
                                                : length - 4 + k;
        const unsigned int common = settings.get_rnti() % samples & k; // w is a row of a Hadamard matrix
        const double sign = ((common ^ common >> 1) & 1u) != c[i] ? -1.0 : 1.0;
        values[m] = sign * std::sqrt(0.5) * complex_t(1.0, 1.0) * (m % 2 == 0 ? 1.0 : complex_t(0.0, 1.0));
    }
    return values;
}

/// TS 38.211 clause 7.4.1.2.2: every so many symbols from the last DMRS on.
bool is_ptrs_symbol(const sch_channel_t& channel, unsigned int symbol)
{
    const auto& settings = channel.settings;
    unsigned int reference = settings.get_first_symbol();
    for (const unsigned int dmrs : channel.dmrs_symbols)
        reference = dmrs <= symbol ? std::max(reference, dmrs) : reference;
    return settings.get_enable_ptrs() && !channel.dmrs_symbols.empty() && !is_in(channel.dmrs_symbols, symbol) &&
           (symbol - reference) % (1u << settings.get_ptrs_time_density()) == 0;
}

/// The cells of a symbol that carry no data: DMRS, zeros beside them, PTRS.
cells_t known_cells_of(const sch_channel_t& channel, unsigned int slot, unsigned int symbol)
{
    const auto& settings = channel.settings;
    const auto& dmrs_symbols = channel.dmrs_symbols;
    const unsigned int groups = settings.get_cdm_groups_without_data_num();
    const unsigned int port = port_of(channel);
    cells_t cells;
    if (const auto dmrs = std::find(dmrs_symbols.begin(), dmrs_symbols.end(), symbol); dmrs != dmrs_symbols.end()) {
        const bool is_double = settings.get_dmrs_length() == LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL;
        const auto place = static_cast<unsigned int>(dmrs - dmrs_symbols.begin());
        const auto values = channel.precoded ? low_papr_dmrs_of(channel, slot, symbol)
                                             : dmrs_of(channel, slot, symbol, is_double ? place % 2 : 0, true);
        for (const unsigned int k : subcarriers_of(channel, symbol))
            if (is_type_2(channel) ? k % 6 < 2 * groups : k % 2 < groups)
                cells[k] = values.count(k) != 0 ? amplitude_of(channel, settings.get_dmrs_power()) * values.at(k) : 0.0;
    }
    else if (is_ptrs_symbol(channel, symbol) && !channel.precoded) {
        const auto ports = channel.ptrs_ports.empty() ? std::vector{port} : channel.ptrs_ports;
        const unsigned int first_dmrs = symbol < channel.second_hop ? dmrs_symbols.front() : channel.second_hop;
        for (const unsigned int other : ports)
            for (const unsigned int k : ptrs_subcarriers_of(channel, other, symbol))
                cells[k] = 0.0;
        const auto values = dmrs_of(channel, slot, first_dmrs, 0, false);
        if (is_in(ports, port))
            for (const unsigned int k : ptrs_subcarriers_of(channel, port, symbol))
                cells[k] = amplitude_of(channel, settings.get_ptrs_power()) * values.at(k);
    }
    return cells;
}

/// What the transform made a symbol of, TS 38.211 clause 6.3.1.4.
void undo_transform(signal_t& symbol)
{
    fft(symbol, 1);
    for (complex_t& value : symbol)
        value /= std::sqrt(static_cast<double>(symbol.size()));
}

} // namespace

sch_slot_t receive_sch_layer(const sch_channel_t& channel, const rows_t& rows, unsigned int slot,
                             const std::function<bool(unsigned int, unsigned int)>& is_taken)
{
    const unsigned int first = channel.settings.get_first_symbol();
    const unsigned int end = first + channel.settings.get_symbol_num();
    sch_slot_t received;
    std::vector<cells_t> known(end);
    complex_t product;
    double power = 0.0;
    for (unsigned int symbol = first; symbol < end; ++symbol) {
        const unsigned int row = slot * channel.symbols_in_slot + symbol;
        known[symbol] = known_cells_of(channel, slot, symbol);
        for (const auto& [k, value] : known[symbol]) {
            const double weight = is_taken(row, k) ? 0.0 : 1.0;
            product += weight * rows[row][k] * std::conj(value);
            power += weight * std::norm(value);
        }
    }
    const complex_t gain = product / power;
    unsigned int first_ptrs = first;
    while (first_ptrs < end && !is_ptrs_symbol(channel, first_ptrs))
        ++first_ptrs;
    const bool has_room = channel.rbs.size() > 2; // for the samples of a precoded symbol
    for (unsigned int symbol = first; symbol < end; ++symbol) {
        const unsigned int row = slot * channel.symbols_in_slot + symbol;
        auto places = subcarriers_of(channel, symbol);
        signal_t values;
        for (const unsigned int k : places)
            values.push_back(rows[row][k] / gain);
        if (channel.precoded && !is_in(channel.dmrs_symbols, symbol)) {
            undo_transform(values);
            std::iota(places.begin(), places.end(), 0u);
            if (is_ptrs_symbol(channel, symbol))
                for (const auto& [place, value] : ptrs_samples_of(channel, slot, first_ptrs))
                    if (place < values.size())
                        known[symbol][place] =
                            has_room ? amplitude_of(channel, channel.settings.get_ptrs_power()) * value : values[place];
        }
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (is_taken(row, places[i]))
                continue;
            ++received.cells;
            const auto cell = known[symbol].find(places[i]);
            const double error = cell != known[symbol].end()
                                     ? std::abs(values[i] - cell->second)
                                     : demap(values[i] / amplitude_of(channel, 0.0), order_of(channel), received.bits);
            received.error = std::isnan(error) ? error : std::max(received.error, error);
        }
    }
    return received;
}

void descramble(const sch_channel_t& channel, bits_t& bits)
{
    const auto c = gold_sequence(channel.c_init, 0, bits.size());
    for (std::size_t i = 0; i < c.size(); ++i)
        bits[i] ^= c[i];
}

sch_slot_t receive_sch_slot(const sch_channel_t& channel, const rows_t& rows, unsigned int slot,
                            const std::function<bool(unsigned int, unsigned int)>& is_taken)
{
    sch_slot_t received = receive_sch_layer(channel, rows, slot, is_taken);
    descramble(channel, received.bits);
    return received;
}

unsigned int sch_identity(int identity, unsigned int cell, bool standard_rules)
{
    return identity > 0 || (identity == 0 && standard_rules) ? static_cast<unsigned int>(identity) : cell;
}

std::vector<unsigned int> sch_dmrs_symbols(const lib_nr_sch_configure_manager_t& sch,
                                           const lib_nr_ul_sch_configure_manager_t* uplink, bool standard_rules)
{
    const bool is_double = sch.get_dmrs_length() == LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL;
    const bool is_type_b = sch.get_mapping_type() == LIB_NR_DMRS_MAPPING_TYPEB;
    const unsigned int additional = sch.get_dmrs_additional_position();
    const unsigned int start = is_type_b ? sch.get_first_symbol() : 0;
    const unsigned int l0 = is_type_b ? 0 : sch.get_l0();
    const unsigned int length = sch.get_first_symbol() + sch.get_symbol_num() - start;
    std::vector<unsigned int> symbols;
    const auto add = [&](const std::vector<unsigned int>& positions, unsigned int origin) {
        for (const unsigned int position : positions)
            for (unsigned int second = 0; second < (is_double ? 2u : 1u); ++second)
                symbols.push_back(origin + position + second);
    };
    if (uplink != nullptr && !is_double && uplink->get_hopping_mode() == LIB_NR_SCH_HOPPING_MODE_INTRA) {
        const unsigned int hop = sch.get_symbol_num() / 2;
        if (!is_type_b && hop < 4) // other than the standard, none in the second hop either
            return {};
        const unsigned int first = sch.get_first_symbol();
        add(dmrs_positions_of_hop(is_type_b, additional == 1, 0, hop, l0), first);
        add(dmrs_positions_of_hop(is_type_b, additional == 1, 1, sch.get_symbol_num() - hop, l0), first + hop);
    }
    else if (uplink == nullptr || is_double || standard_rules || length != (is_type_b ? 1 : 4))
        add(dmrs_positions(uplink != nullptr, is_double, is_type_b, additional, length, l0), start);
    return symbols;
}

std::size_t transport_block_size(std::uint64_t n_info, bool low_rate)
{
    // TS 38.214 Table 5.1.3.2-1 from 24 on: steps, and where each ends.
    constexpr unsigned int k_steps[][2] = {{8, 192},    {16, 384},   {24, 576},   {32, 768},   {40, 928},
                                           {56, 984},   {48, 1032},  {32, 1064},  {64, 1128},  {32, 1352},
                                           {64, 1928},  {96, 2024},  {64, 2280},  {128, 2408}, {64, 2856},
                                           {120, 2976}, {128, 3104}, {136, 3240}, {128, 3752}, {72, 3824}};
    constexpr std::uint64_t k_unit = k_n_info_unit;
    if (n_info <= 3824 * k_unit) {
        std::uint64_t step = 8; // at least, and more from 64 steps on
        while (n_info >= 128 * step * k_unit)
            step *= 2;
        const std::uint64_t quantised = std::max<std::uint64_t>(24, n_info / (step * k_unit) * step);
        std::size_t size = 24;
        for (const auto& run : k_steps)
            while (size < quantised && size < run[1])
                size += run[0];
        return size;
    }
    n_info -= 24 * k_unit;
    std::uint64_t step = 1;
    while (n_info >= 64 * step * k_unit)
        step *= 2;
    const std::uint64_t rounded = (n_info + step * k_unit / 2) / (step * k_unit) * step;
    const std::uint64_t quantised = std::max<std::uint64_t>(3840, rounded);
    std::uint64_t blocks = 1;
    while ((low_rate || quantised > 8424) && quantised + 24 > blocks * (low_rate ? 3816 : 8424))
        ++blocks;
    std::size_t size = quantised; // the least that fills the code blocks with whole bytes
    while ((size + 24) % (8 * blocks) != 0)
        ++size;
    return size;
}

std::size_t transport_block_size(const sch_channel_t& channel)
{
    const auto& settings = channel.settings;
    const auto [order, rate] = mcs_of(channel);
    const std::size_t dmrs = channel.dmrs_symbols.size() * settings.get_cdm_groups_without_data_num();
    const std::size_t all = std::size_t{12} * settings.get_symbol_num();
    const std::size_t left_out = 6 * settings.get_x_overhead() + dmrs * (is_type_2(channel) ? 4 : 6);
    const std::size_t per_rb = std::min<std::size_t>(156, all - std::min(all, left_out));
    const double per_cell =
        static_cast<double>(settings.get_dmrs_port_v().size() * order * k_n_info_unit) * rate * channel.scaling;
    return transport_block_size(per_rb * channel.rbs.size() * static_cast<std::uint64_t>(std::llround(per_cell)),
                                rate <= 0.25);
}

std::optional<bits_t> decode_sch(const std::vector<sch_channel_t>& channels, const std::vector<sch_slot_t>& slots)
{
    const std::size_t size = transport_block_size(channels.front());
    const double rate = mcs_of(channels.front()).rate;
    ldpc_receiver_t receiver(size <= 292 || (size <= 3824 && rate <= 0.67) || rate <= 0.25 ? 2 : 1, size);
    for (std::size_t i = 0; i < slots.size(); ++i) {
        std::vector<double> soft_bits;
        for (const unsigned char bit : slots[i].bits)
            soft_bits.push_back(bit == 0 ? 1.0 : -1.0);
        const auto& settings = channels[i].settings;
        const auto layers = static_cast<unsigned int>(settings.get_dmrs_port_v().size());
        if (!receiver.add({soft_bits.size(), order_of(channels[i]), layers, settings.get_rv()}, soft_bits))
            return std::nullopt;
    }
    return receiver.decode();
}

} // namespace nr_test

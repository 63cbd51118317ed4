#include "receiver/sch_receiver.h"

#include "phy_common/tables/lib_nr_tbs_for_n_info_table.h"
#include "receiver/gold_sequence.h"

#include <algorithm>
#include <cmath>
#include <map>

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

unsigned int port_of(const sch_channel_t& channel) { return channel.settings.get_dmrs_port_v().front(); }

unsigned int order_of(const sch_channel_t& channel)
{
    return lib_nr_modulator_t::get_modulation_order(channel.settings.get_modulation());
}

double amplitude_of(const sch_channel_t& channel, double power)
{
    return std::pow(10.0, (channel.settings.get_power_boosting() + power) / 20.0);
}

/// The subcarriers of a symbol that the channel's RBs hold, in the order of the mapping.
std::vector<unsigned int> subcarriers_of(const sch_channel_t& channel)
{
    std::vector<unsigned int> list;
    for (const unsigned int rb : channel.rbs)
        for (unsigned int k = 0; k < 12; ++k)
            list.push_back(12 * rb + k);
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
    const std::uint64_t n_id = sch_identity(n_scid == 1 ? settings.get_nid1() : settings.get_nid0(), channel.cell);
    const std::uint64_t count = std::uint64_t{channel.symbols_in_slot} * slot + symbol + 1;
    const std::uint64_t term = by_group ? lambda / 2 : 0;
    const std::uint64_t c_init = (count * (2 * n_id + 1) << 17) + (term << 17) + 2 * n_id + n_scid;
    const unsigned int rbs = *std::max_element(channel.rbs.begin(), channel.rbs.end()) + 1;
    const auto c = gold_sequence(static_cast<std::uint32_t>(c_init % (std::uint64_t{1} << 31)), 0, 12 * rbs);
    const bool turns_in_time = port >= (type_2 ? 6u : 4u) && l_prime == 1;
    cells_t values;
    for (unsigned int n = 0; n < rbs * (type_2 ? 2 : 3); ++n)
        for (unsigned int k_prime = 0; k_prime < 2; ++k_prime) {
            const unsigned int k = type_2 ? 6 * n + k_prime + 2 * lambda : 4 * n + 2 * k_prime + lambda;
            const unsigned int i = 2 * n + k_prime;
            const double weight = with_cover && (port % 2 * k_prime != 0) != turns_in_time ? -1.0 : 1.0;
            values[k] = weight * std::sqrt(0.5) * complex_t(1 - 2 * c[2 * i], 1 - 2 * c[2 * i + 1]);
        }
    return values;
}

/// The subcarriers with PTRS, TS 38.211 clause 7.4.1.2.2. RBs are counted within the allocation.
std::vector<unsigned int> ptrs_subcarriers_of(const sch_channel_t& channel)
{
    constexpr unsigned int k_comb[] = {0, 2, 6, 8};
    constexpr unsigned int k_pairs[] = {0, 1, 6, 7};
    const unsigned int port = port_of(channel);
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
        list.push_back(12 * rbs[rb] + k_re);
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
    const unsigned int axis = order / 2;
    const double scale = std::sqrt(2.0 * (std::pow(4.0, axis) - 1.0) / 3.0);
    bits.resize(bits.size() + order);
    unsigned char* out = &bits[bits.size() - order];
    const double real = demap_axis(scale * value.real(), axis, out);
    return std::hypot(real, demap_axis(scale * value.imag(), axis, out + 1)) / scale;
}

/// The cells of a symbol that carry no data: DMRS, zeros beside them, PTRS.
cells_t known_cells_of(const sch_channel_t& channel, unsigned int slot, unsigned int symbol)
{
    const auto& settings = channel.settings;
    const auto& dmrs_symbols = channel.dmrs_symbols;
    const unsigned int groups = settings.get_cdm_groups_without_data_num();
    const auto next = std::upper_bound(dmrs_symbols.begin(), dmrs_symbols.end(), symbol);
    const bool is_behind = next != dmrs_symbols.begin();
    const unsigned int reference = is_behind ? *(next - 1) : settings.get_first_symbol();
    cells_t cells;
    if (is_behind && reference == symbol) {
        const bool is_double = settings.get_dmrs_length() == LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL;
        const auto place = static_cast<unsigned int>(next - dmrs_symbols.begin() - 1);
        const auto dmrs = dmrs_of(channel, slot, symbol, is_double ? place % 2 : 0, true);
        for (const unsigned int k : subcarriers_of(channel))
            if (is_type_2(channel) ? k % 6 < 2 * groups : k % 2 < groups)
                cells[k] = dmrs.count(k) != 0 ? amplitude_of(channel, settings.get_dmrs_power()) * dmrs.at(k) : 0.0;
    }
    else if (settings.get_enable_ptrs() && !dmrs_symbols.empty() &&
             (symbol - reference) % (1u << settings.get_ptrs_time_density()) == 0)
    {
        const auto values = dmrs_of(channel, slot, dmrs_symbols.front(), 0, false);
        for (const unsigned int k : ptrs_subcarriers_of(channel))
            cells[k] = amplitude_of(channel, settings.get_ptrs_power()) * values.at(k);
    }
    return cells;
}

} // namespace

sch_slot_t receive_sch_slot(const sch_channel_t& channel, const rows_t& rows, unsigned int slot,
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
    for (unsigned int symbol = first; symbol < end; ++symbol) {
        const unsigned int row = slot * channel.symbols_in_slot + symbol;
        for (const unsigned int k : subcarriers_of(channel)) {
            if (is_taken(row, k))
                continue;
            ++received.cells;
            const complex_t value = rows[row][k] / gain;
            const auto cell = known[symbol].find(k);
            const double error = cell != known[symbol].end()
                                     ? std::abs(value - cell->second)
                                     : demap(value / amplitude_of(channel, 0.0), order_of(channel), received.bits);
            received.error = std::isnan(error) ? error : std::max(received.error, error);
        }
    }
    const auto c = gold_sequence(channel.c_init, 0, received.bits.size());
    for (std::size_t i = 0; i < c.size(); ++i)
        received.bits[i] ^= c[i];
    return received;
}

unsigned int sch_identity(int identity, unsigned int cell)
{
    return identity > 0 ? static_cast<unsigned int>(identity) : cell;
}

std::size_t transport_block_size(std::uint64_t n_info, bool low_rate)
{
    constexpr std::uint64_t k_unit = k_n_info_unit;
    if (n_info <= 3824 * k_unit) {
        std::uint64_t step = 8; // at least, and more from 64 steps on
        while (n_info >= 128 * step * k_unit)
            step *= 2;
        const std::uint64_t quantised = std::max<std::uint64_t>(24, n_info / (step * k_unit) * step);
        const auto& sizes = lib_nr_tbs_for_n_info_table();
        return *std::find_if(sizes.begin(), sizes.end(), [=](std::uint64_t size) { return size >= quantised; });
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
    const double rate = settings.get_target_code_rate();
    const std::size_t dmrs = channel.dmrs_symbols.size() * settings.get_cdm_groups_without_data_num();
    const std::size_t all = std::size_t{12} * settings.get_symbol_num();
    const std::size_t left_out = 6 * settings.get_x_overhead() + dmrs * (is_type_2(channel) ? 4 : 6);
    const std::size_t per_rb = std::min<std::size_t>(156, all - std::min(all, left_out));
    const double per_cell = order_of(channel) * rate * channel.scaling * static_cast<double>(k_n_info_unit);
    return transport_block_size(per_rb * channel.rbs.size() * static_cast<std::uint64_t>(std::llround(per_cell)),
                                rate <= 0.25);
}

std::optional<bits_t> decode_sch(const std::vector<sch_channel_t>& channels, const std::vector<sch_slot_t>& slots)
{
    const std::size_t size = transport_block_size(channels.front());
    const double rate = channels.front().settings.get_target_code_rate();
    ldpc_receiver_t receiver(size <= 292 || (size <= 3824 && rate <= 0.67) || rate <= 0.25 ? 2 : 1, size);
    for (std::size_t i = 0; i < slots.size(); ++i) {
        std::vector<double> soft_bits;
        for (const unsigned char bit : slots[i].bits)
            soft_bits.push_back(bit == 0 ? 1.0 : -1.0);
        if (!receiver.add({soft_bits.size(), order_of(channels[i]), 1, channels[i].settings.get_rv()}, soft_bits))
            return std::nullopt;
    }
    return receiver.decode();
}

} // namespace nr_test

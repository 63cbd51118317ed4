#include "phy_common/lib_nr_enumerator.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/tables/lib_nr_prach_carrier_combination_table.h"
#include "phy_common/tables/lib_nr_prach_configuration_table.h"
#include "phy_common/tables/lib_nr_prach_cyclic_shift_table.h"
#include "phy_common/tables/lib_nr_prach_root_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <iostream>

// The random access side of the reference figures: tables, and the checks that keep table, format, spacing, length and
// carrier together.

namespace vek::nr_mod_lib
{

namespace
{

unsigned int carrier_khz_of(lib_nr_numerology_type_t numerology)
{
    return 15u << lib_nr_phy_common_t::get_u_from_scs(numerology);
}

constexpr unsigned int k_subframes_per_frame = 10;
constexpr unsigned int k_60khz_slots_per_frame = 40;

constexpr std::array<const char*, 13> k_format_names = {"0",  "1",  "2",  "3",  "A1", "A2", "A3",
                                                        "B1", "B2", "B3", "B4", "C0", "C2"};

/// TS 38.211 Tables 6.3.3.1-1 and 6.3.3.1-2, by format; N_u is that of one repetition.
struct format_row_t
{
    unsigned int n_u;
    unsigned int n_cp;
    unsigned int repetitions;
};
constexpr std::array<format_row_t, 13> k_formats = {{{24576, 3168, 1},
                                                     {24576, 21024, 2},
                                                     {24576, 4688, 4},
                                                     {6144, 3168, 4},
                                                     {2048, 288, 2},
                                                     {2048, 576, 4},
                                                     {2048, 864, 6},
                                                     {2048, 216, 2},
                                                     {2048, 360, 4},
                                                     {2048, 504, 6},
                                                     {2048, 936, 12},
                                                     {2048, 1240, 1},
                                                     {2048, 2048, 4}}};

bool is_one_of(unsigned int value, std::initializer_list<unsigned int> values)
{
    return std::find(values.begin(), values.end(), value) != values.end();
}

const lib_nr_prach_configuration_row_t& configuration_row(prach_config_table_type_t table, unsigned int index)
{
    const auto row_of = [&](const auto& rows) -> const lib_nr_prach_configuration_row_t& {
        return rows[std::min<std::size_t>(index, rows.size() - 1)];
    };
    switch (table) {
    case FR1_FDD_SUL:
        return row_of(lib_nr_prach_configuration_fr1_paired_table());
    case FR1_TDD:
        return row_of(lib_nr_prach_configuration_fr1_unpaired_table());
    default:
        return row_of(lib_nr_prach_configuration_fr2_table());
    }
}

unsigned int occasions_of(const lib_nr_prach_configuration_row_t& row)
{
    return row.occasions_per_slot == k_prach_no_value ? 1 : row.occasions_per_slot;
}

unsigned int duration_of(const lib_nr_prach_configuration_row_t& row, prach_format_t format)
{
    if (is_long_prach_format(format))
        return lib_nr_phy_common_t::get_symbol_size(format);
    return format == prach_format_C0 ? row.duration / 2u : row.duration;
}

/// How a table counts a frame: in subframes of 15 kHz or in slots of 60 kHz.
struct reference_t
{
    unsigned int per_frame;
    unsigned int spacing_khz;
};

reference_t reference_of(prach_config_table_type_t table)
{
    if (table == FR1_FDD_SUL || table == FR1_TDD)
        return {k_subframes_per_frame, 15};
    return {k_60khz_slots_per_frame, 60};
}

void print_no_format()
{
    std::cout << "lib_nr_phy_common_t::get_variables_from_table6331x:not find valid record! modify params.\n"
              << std::endl;
}

/// Index of a format's name among those of `first` to `last`, or one past `last`.
std::size_t find_format(const std::string& name, std::size_t first, std::size_t last)
{
    while (first <= last && k_format_names[first] != name)
        ++first;
    return first;
}

} // namespace

void lib_nr_phy_common_t::get_variables_from_configTable(prach_config_table_type_t table, unsigned int index,
                                                         configuration_table_t& row, unsigned int occasion)
{
    const lib_nr_prach_configuration_row_t& stored = configuration_row(table, index);
    const unsigned int occasions = occasions_of(stored);
    const prach_format_t format = stored.formats[occasions - 1 == occasion ? 1 : 0];

    row.index = index;
    row.format.assign(1, k_format_names[format]);
    row.x = stored.x;
    row.y.assign(1, stored.y[0]);
    if (stored.y[1] != k_prach_no_value)
        row.y.push_back(stored.y[1]);
    row.subframe_or_slot.clear();
    for (unsigned int i = 0; i < k_60khz_slots_per_frame; ++i)
        if (stored.subframes_or_slots >> i & 1)
            row.subframe_or_slot.push_back(i);
    row.starting_symbol = stored.starting_symbol;
    row.slots_per_subframe_or_60khz_slot = stored.slots_per_subframe_or_60khz_slot;
    row.occasions_per_slot = occasions;
    row.duration = duration_of(stored, format);
}

void lib_nr_phy_common_t::get_variables_from_table63311(const std::string& format, long_preamble_formats_t& record)
{
    const std::size_t found = find_format(format, prach_format_0, prach_format_3);
    if (found > prach_format_3) {
        print_no_format();
        return;
    }
    record = {format, 839, found == prach_format_3 ? 5.0 : 1.25, k_formats[found].n_u, k_formats[found].n_cp,
              true,   true};
}

void lib_nr_phy_common_t::get_variables_from_table63312(const std::string& format, short_preamble_formats_t& record)
{
    const std::size_t found = find_format(format, prach_format_A1, prach_format_C2);
    if (found > prach_format_C2) {
        print_no_format();
        return;
    }
    record = {format, {139, 1151, 571}, 15, k_formats[found].n_u, k_formats[found].n_cp};
}

prach_format_t lib_nr_phy_common_t::prach_string_map_index(const std::string& format)
{
    const std::size_t found = find_format(format, prach_format_0, prach_format_C2);
    if (found <= prach_format_C2)
        return static_cast<prach_format_t>(found);
    std::cout << "prach_string_map_index:prach invalid format and reset to A1.\n" << std::endl;
    return prach_format_A1;
}

unsigned int lib_nr_phy_common_t::get_prach_root(prach_lra_type_t lra, unsigned int logical_index)
{
    if (lra == PRACH_LRA_839)
        return lib_nr_prach_root_839_table()[logical_index];
    // TS 38.211 Tables 6.3.3.1-4 to 6.3.3.1-4B: 1, L - 1, 2, L - 2, ...
    const unsigned int length = lra == PRACH_LRA_139 || lra == PRACH_LRA_1151 ? lra : PRACH_LRA_571;
    const unsigned int pair = logical_index / 2 + 1;
    return logical_index % 2 == 0 ? pair : length - pair;
}

int lib_nr_phy_common_t::get_prach_ncs(prach_format_t format, prach_lra_type_t lra,
                                       prach_restricted_set_type_t restricted_set, unsigned int zero_correlation_zone)
{
    const std::size_t zone = std::min(zero_correlation_zone, 15u);
    const std::size_t set = known_or_first(restricted_set, RESTRICTED_TYPE_B);
    if (format == prach_format_3)
        return lib_nr_prach_cyclic_shift_format_3_table()[zone][set];
    if (is_long_prach_format(format))
        return lib_nr_prach_cyclic_shift_formats_0_1_2_table()[zone][set];
    const std::size_t length = lra == PRACH_LRA_139 ? 0 : lra == PRACH_LRA_571 ? 1 : 2;
    return lib_nr_prach_cyclic_shift_short_table()[zone][length];
}

bool lib_nr_phy_common_t::get_prach_carrier_combination(prach_lra_type_t lra, prach_scs_type_t scs,
                                                        lib_nr_numerology_type_t numerology, unsigned int& rb_number,
                                                        unsigned int& k_bar)
{
    const unsigned int carrier_khz = carrier_khz_of(numerology);
    for (const lib_nr_prach_carrier_combination_t& row : lib_nr_prach_carrier_combination_table())
        if (row.lra == lra && row.prach_scs == scs && row.carrier_scs_khz == carrier_khz) {
            rb_number = row.rb_number;
            k_bar = row.k_bar;
            return true;
        }
    return false;
}

unsigned int lib_nr_phy_common_t::get_standard_k_bar(prach_lra_type_t lra, prach_scs_type_t scs,
                                                     lib_nr_numerology_type_t numerology, unsigned int k_bar)
{
    const bool differs = lra == PRACH_LRA_571 && scs == PRACH_SCS_480K && carrier_khz_of(numerology) == 480;
    return differs ? 2 : k_bar;
}

void lib_nr_phy_common_t::check_scs_and_fr(prach_scs_type_t& scs, lib_nr_channel_bw_type_t bandwidth)
{
    if (get_freq_range_type(bandwidth) == NR_FR1) {
        if (scs > PRACH_SCS_30K) {
            std::cout << "check_scs_and_fr:InvalidSCSForFR1.\n" << std::endl;
            scs = PRACH_SCS_15K;
        }
    }
    else if (scs < PRACH_SCS_60K) {
        std::cout << "check_scs_and_fr:InvalidSCSForFR2.\n" << std::endl;
        scs = PRACH_SCS_60K;
    }
}

void lib_nr_phy_common_t::check_ci_and_fr_and_duplex_mode(unsigned int& index, prach_config_table_type_t table)
{
    if ((table == FR1_FDD_SUL || table == FR2_TDD) && index >= 256) {
        std::cout << "check_ci_and_fr_and_duplex_mode,reset configuration_idx to 255.\n" << std::endl;
        index = 255;
    }
}

void lib_nr_phy_common_t::check_scs_and_format(prach_scs_type_t& scs, prach_format_t format)
{
    if (format == prach_format_3)
        scs = PRACH_SCS_5K;
    else if (is_long_prach_format(format))
        scs = PRACH_SCS_1P25K;
    else if (format > prach_format_C2)
        std::cout << "check_scs_and_format:Invalid Format!\n" << std::endl;
    else if (!is_one_of(scs,
                        {PRACH_SCS_15K, PRACH_SCS_30K, PRACH_SCS_60K, PRACH_SCS_120K, PRACH_SCS_480K, PRACH_SCS_960K}))
    {
        std::cout << "check_scs_and_format:InvalidSCSForFormatshort.\n" << std::endl;
        scs = PRACH_SCS_15K;
    }
}

void lib_nr_phy_common_t::check_restricted_set_and_format(prach_restricted_set_type_t& restricted_set,
                                                          prach_format_t format, unsigned int& zero_correlation_zone)
{
    if (!is_long_prach_format(format)) {
        if (restricted_set != UNRESTRICTED) {
            std::cout << "check_restricted_set_and_format:Short preamble only support unrestricted,reset to "
                         "unrestricted.\n"
                      << std::endl;
            restricted_set = UNRESTRICTED;
        }
        return;
    }
    const bool is_format_3 = format == prach_format_3;
    const auto limit = [&](unsigned int most, unsigned int value, const char* text) {
        if (zero_correlation_zone > most) {
            std::cout << "check_restricted_set_and_format:" << text << ".\n" << std::endl;
            zero_correlation_zone = value;
        }
    };
    if (restricted_set == RESTRICTED_TYPE_A && !is_format_3)
        limit(13, 14, "InvalidZeroCorrelationZone012A");
    else if (restricted_set == RESTRICTED_TYPE_B && !is_format_3)
        limit(12, 12, "InvalidZeroCorrelationZone012B");
    else if (restricted_set == RESTRICTED_TYPE_B)
        limit(12, 13, "InvalidZeroCorrelationZone3B");
    else
        limit(14, 15, "ZeroCorrelationZone over range reset to 15");
}

void lib_nr_phy_common_t::check_aps_and_scs_and_ci(prach_config_table_type_t table, prach_scs_type_t scs,
                                                   unsigned int index, unsigned int& n_RA_slot)
{
    unsigned int last_slot = 0;
    switch (scs) {
    case PRACH_SCS_1P25K:
    case PRACH_SCS_5K:
    case PRACH_SCS_15K:
    case PRACH_SCS_60K:
        n_RA_slot = 0;
        return;
    case PRACH_SCS_30K:
    case PRACH_SCS_120K:
        last_slot = 1;
        break;
    case PRACH_SCS_480K:
        last_slot = 7;
        break;
    case PRACH_SCS_960K:
        last_slot = 15;
        break;
    default:
        std::cout << "check_aps_and_scs_and_ci,unvalid prach scs!\n" << std::endl;
        return;
    }
    if (configuration_row(table, index).slots_per_subframe_or_60khz_slot == 1)
        n_RA_slot = last_slot;
}

void lib_nr_phy_common_t::validate_prach_and_carrier(lib_nr_numerology_type_t numerology, prach_scs_type_t& scs,
                                                     prach_lra_type_t& lra)
{
    const unsigned int carrier_khz = carrier_khz_of(numerology);
    const lib_nr_prach_carrier_combination_t* fallback = nullptr;
    for (const lib_nr_prach_carrier_combination_t& row : lib_nr_prach_carrier_combination_table()) {
        if (row.carrier_scs_khz != carrier_khz)
            continue;
        if (row.lra == lra && row.prach_scs == scs)
            return;
        if (!fallback)
            fallback = &row;
    }
    if (!fallback)
        return;
    std::cout << "validate_prach_and_carrier:not find valid record! modify params.\n" << std::endl;
    lra = fallback->lra;
    scs = fallback->prach_scs;
}

void lib_nr_phy_common_t::check_lra(prach_format_t format, prach_config_table_type_t table, prach_scs_type_t& scs,
                                    unsigned int& index, unsigned int& n_RA_t, prach_lra_type_t& lra)
{
    check_scs_and_format(scs, format);
    if (is_long_prach_format(format)) {
        if (lra != PRACH_LRA_839) {
            std::cout << "check_lra::short format only support 839!\n" << std::endl;
            lra = PRACH_LRA_839;
        }
        n_RA_t = 0;
        return;
    }
    if (format > prach_format_C2) {
        check_ci_and_fr_and_duplex_mode(index, table);
        std::cout << "check_lra::format error!m_LRA is default value!\n" << std::endl;
        return;
    }

    const auto support = [&](std::initializer_list<unsigned int> lengths, const char* text) {
        if (!is_one_of(lra, lengths)) {
            std::cout << "check_lra::" << text << "\n" << std::endl;
            lra = PRACH_LRA_139;
        }
    };
    switch (scs) {
    case PRACH_SCS_15K:
        support({139, 1151}, " Error configuration only support 139 or 1151!");
        break;
    case PRACH_SCS_30K:
        support({139, 571}, " : Error configuration only support 139 or 571!");
        break;
    case PRACH_SCS_60K:
    case PRACH_SCS_960K:
        support({139}, " Error configuration only support 139!");
        break;
    case PRACH_SCS_120K:
        support({139, 571, 1151}, " Error configuration ,not support 839!");
        break;
    case PRACH_SCS_480K:
        support({139, 571}, " Error configuration only support 139 or 571!");
        break;
    default:
        std::cout << "check_lra::prach_scs error!m_LRA is default value.\n" << std::endl;
        check_scs_and_format(scs, format);
    }
}

unsigned int lib_nr_phy_common_t::get_symbol_size(prach_format_t format)
{
    switch (format) {
    case prach_format_0:
        return 1;
    case prach_format_1:
        return 2;
    case prach_format_2:
    case prach_format_3:
        return 4;
    case prach_format_C0:
        return 7;
    default:
        return 14;
    }
}

unsigned int lib_nr_phy_common_t::get_prach_prefix(prach_format_t format)
{
    return format < k_formats.size() ? k_formats[format].n_cp : 0;
}

unsigned int lib_nr_phy_common_t::get_prach_repetitions(prach_format_t format)
{
    return format < k_formats.size() ? k_formats[format].repetitions : 1;
}

void lib_nr_phy_common_t::get_gridsize(unsigned int rb, unsigned int scs, prach_scs_type_t scs_ra,
                                       prach_format_t format, unsigned int& columns, unsigned int& rows)
{
    columns = static_cast<unsigned int>(std::floor(rb * (static_cast<double>(scs) / static_cast<double>(scs_ra)) * 12));
    rows = get_symbol_size(format);
}

unsigned int lib_nr_phy_common_t::get_u_from_prach_scs(prach_scs_type_t scs)
{
    switch (scs) {
    case PRACH_SCS_1P25K:
    case PRACH_SCS_5K:
    case PRACH_SCS_15K:
        return 0;
    case PRACH_SCS_30K:
        return 1;
    case PRACH_SCS_60K:
        return 2;
    case PRACH_SCS_120K:
        return 3;
    case PRACH_SCS_480K:
        return 5;
    case PRACH_SCS_960K:
        return 6;
    }
    std::cout << "lib_nr_phy_common_t::get_u_from_prach_scs Report: scs error.." << std::endl;
    return 0;
}

unsigned int lib_nr_phy_common_t::get_num_ofdm_symbols(prach_format_t format, prach_config_table_type_t table,
                                                       unsigned int index)
{
    const unsigned int duration = duration_of(configuration_row(table, index), format);
    std::cout << "lib_nr_phy_common_t::get_num_ofdm_symbols L = " << duration << std::endl;
    return format == prach_format_C2 ? duration - 1 : duration;
}

unsigned int lib_nr_phy_common_t::get_prach_first_row(prach_format_t format, prach_config_table_type_t table,
                                                      unsigned int index, unsigned int n_RA_t)
{
    if (is_long_prach_format(format))
        return 0;
    const lib_nr_prach_configuration_row_t& row = configuration_row(table, index);
    const unsigned int start = format == prach_format_C0 ? row.starting_symbol / 2u : row.starting_symbol;
    return start + n_RA_t * duration_of(row, format);
}

unsigned int lib_nr_phy_common_t::get_prach_first_symbol(prach_config_table_type_t table, unsigned int index,
                                                         unsigned int n_RA_t)
{
    const lib_nr_prach_configuration_row_t& row = configuration_row(table, index);
    return row.starting_symbol + n_RA_t * row.duration;
}

unsigned int lib_nr_phy_common_t::cal_prach_current_slot(unsigned int frame, unsigned int scs_khz, prach_lra_type_t lra,
                                                         prach_config_table_type_t table, unsigned int /*index*/,
                                                         unsigned int n_RA_slot, unsigned int subframe_or_slot)
{
    const reference_t reference = reference_of(table);
    const std::uint64_t count = subframe_or_slot + std::uint64_t{reference.per_frame} * frame;
    if (lra == PRACH_LRA_839)
        return static_cast<unsigned int>(count * 15 / reference.spacing_khz);
    return static_cast<unsigned int>(count * scs_khz / reference.spacing_khz + n_RA_slot);
}

bool lib_nr_phy_common_t::is_prach_active(unsigned int frame, unsigned int scs_khz, prach_lra_type_t lra,
                                          prach_config_table_type_t table, unsigned int index, unsigned int slot,
                                          prach_format_t /*format*/, unsigned int n_RA_slot, unsigned int y)
{
    const reference_t reference = reference_of(table);
    const bool is_long = lra == PRACH_LRA_839;
    if (is_long)
        n_RA_slot = 0;

    // The slot as the table counts, from the start of the frame.
    const std::int64_t spacing_khz = is_long ? 15 : std::max(scs_khz, 1u);
    const std::int64_t since = (std::int64_t{slot} - n_RA_slot) * reference.spacing_khz / spacing_khz -
                               std::int64_t{reference.per_frame} * frame;
    if (since < 0)
        return false;
    const auto relative_slot = static_cast<unsigned int>(since % reference.per_frame);
    const auto relative_frame = static_cast<unsigned int>((since / reference.per_frame & 1023) + frame);

    const lib_nr_prach_configuration_row_t& row = configuration_row(table, index);
    if (relative_frame % row.x != y || (row.subframes_or_slots >> relative_slot & 1) == 0)
        return false;
    if (!is_one_of(scs_khz, {30, 120, 480, 960}))
        return true;
    // A spacing below the table's reference has no slots inside it.
    return slot % std::max(scs_khz / reference.spacing_khz, 1u) == n_RA_slot;
}

} // namespace vek::nr_mod_lib

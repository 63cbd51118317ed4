#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_common/lib_nr_prach_type.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// SRS bandwidth configuration, TS 38.211 Table 6.4.1.4.3-1: B_SRS (0 to 3) to the 64 values of m_SRS,b and of N_b by
/// C_SRS.
struct srs_bw_t
{
    std::map<unsigned char, std::vector<std::uint16_t>> m_srs;
    std::map<unsigned char, std::vector<std::uint8_t>> n;
};

/// One row of a random access configuration table, TS 38.211 Tables 6.3.3.2-2 to 6.3.3.2-4, as it is handed out.
struct configuration_table_t
{
    unsigned int index = 0;
    std::vector<std::string> format = {"0"};
    unsigned int x = 0;
    std::vector<unsigned int> y = {0};
    /// Subframes of the frame, or slots of 60 kHz in FR2.
    std::vector<unsigned int> subframe_or_slot = {0};
    unsigned int starting_symbol = 0;
    unsigned int slots_per_subframe_or_60khz_slot = 1;
    /// N_t, occasions in time within a PRACH slot.
    unsigned int occasions_per_slot = 1;
    /// Rows of the PRACH grid that an occasion takes: symbols, but for C0, whose rows are two symbols long.
    unsigned int duration = 1;
};

/// TS 38.211 Table 6.3.3.1-1, in units of 1 / 30.72 MHz; N_u is that of one repetition.
struct long_preamble_formats_t
{
    std::string format;
    unsigned int lra = 839;
    double delta_f_ra_khz = 1.25;
    unsigned int n_u = 0;
    unsigned int n_cp = 0;
    bool restricted_type_a = true;
    bool restricted_type_b = true;
};

/// TS 38.211 Table 6.3.3.1-2, in units of 2^-mu / 30.72 MHz; N_u is that of one repetition.
struct short_preamble_formats_t
{
    std::string format;
    std::vector<unsigned int> lra = {139, 1151, 571};
    /// To be multiplied by 2^mu.
    unsigned int delta_f_ra_khz = 15;
    unsigned int n_u = 2048;
    unsigned int n_cp = 0;
};

/// The book of NR reference figures: what a spacing is worth, how many slots, symbols and resource blocks there are,
/// and which spacing and bandwidth go together. Static operations, no state. Nothing throws: an operation that cannot
/// answer prints one line and returns the fallback told beside it.
class NR_MOD_LIB_EXPORT lib_nr_phy_common_t
{
public:
    /// Spacing in hertz; 30000 for an unknown spacing.
    static unsigned int get_scs_hz_value(lib_nr_numerology_type_t numerology);
    /// mu, 0 to 6; 0 for an unknown spacing.
    static unsigned int get_u_from_scs(lib_nr_numerology_type_t numerology);
    /// The spacing in hertz in which offsets to the SS/PBCH block are counted (TS 38.211 clause 7.4.3.1): 15000 in FR1,
    /// 60000 in FR2.
    static unsigned int get_reference_scs_hz(lib_nr_channel_bw_type_t bandwidth)
    {
        return get_freq_range_type(bandwidth) == NR_FR1 ? 15000 : 60000;
    }
    /// Whether a frequency in hertz is one of up to 3 GHz, where an SS/PBCH burst has four candidates (TS 38.213 clause
    /// 4.1).
    static bool is_up_to_3_ghz(double frequency) { return frequency <= 3e9; }
    /// Whether a spacing has the extended cyclic prefix beside the normal one (TS 38.211 Table 4.2-1).
    static bool has_extended_prefix(lib_nr_numerology_type_t numerology) { return numerology == LIB_NR_SCS_60K; }
    /// Whether channels are sent at a spacing: at 240 kHz only SS/PBCH blocks are (TS 38.211 Table 4.2-1).
    static bool carries_channels(lib_nr_numerology_type_t numerology) { return numerology != LIB_NR_SCS_240K; }
    /// `NR_FR1` for an unknown bandwidth.
    static lib_nr_freq_range_type_t get_freq_range_type(lib_nr_channel_bw_type_t bandwidth);
    /// Whether a carrier of this bandwidth may have this spacing (TS 38.104 clause 5.3.5). Narrower in FR2-2 than the
    /// table of resource blocks. An unknown bandwidth is judged as FR1: true for 15, 30 and 60 kHz.
    static bool check_numerology_bandwidth_valid(lib_nr_numerology_type_t numerology,
                                                 lib_nr_channel_bw_type_t bandwidth);
    /// Slots in a 10 ms frame; those of 15 kHz for an unknown spacing.
    static unsigned int get_slot_in_frame(lib_nr_numerology_type_t numerology);
    /// 12 for the extended prefix, else 14, whatever the spacing.
    static unsigned int get_symbol_number_in_slot(lib_nr_cyclic_prefix_type_t cp_type);
    static unsigned int get_symbol_number_in_slot(lib_nr_numerology_type_t numerology,
                                                  lib_nr_cyclic_prefix_type_t cp_type);
    static unsigned int get_symbol_number_in_frame(lib_nr_numerology_type_t numerology,
                                                   lib_nr_cyclic_prefix_type_t cp_type);
    /// Largest transmission bandwidth in resource blocks (TS 38.104 clause 5.3.2); 0 and a printed line where the pair
    /// has none.
    static unsigned int get_max_transmit_rb_num(lib_nr_numerology_type_t numerology,
                                                lib_nr_channel_bw_type_t bandwidth);
    /// 12 times `get_max_transmit_rb_num`, with the same line.
    static unsigned int get_subcarrier_total_number(lib_nr_numerology_type_t numerology,
                                                    lib_nr_channel_bw_type_t bandwidth);
    /// The power of two, at least 4, that holds them: length of the symbols' transform without oversampling.
    static unsigned int get_fft_length(lib_nr_numerology_type_t numerology, lib_nr_channel_bw_type_t bandwidth);
    /// All bandwidths of a range; `LIB_NR_CHANNEL_FR1_100M` alone for an unknown range.
    static std::vector<lib_nr_channel_bw_type_t> get_valid_bandwidth_list(lib_nr_freq_range_type_t freq_range);
    /// The bandwidths of a range that go with a spacing. 240 kHz gives those of both FR2 ranges; 960 kHz leaves 400 MHz
    /// out, though the pair is valid. Never empty.
    static std::vector<lib_nr_channel_bw_type_t> get_valid_bandwidth_list(lib_nr_numerology_type_t numerology,
                                                                          lib_nr_freq_range_type_t freq_range);
    /// The bandwidths of a range for non-terrestrial networks; `LIB_NR_CHANNEL_FR1_30M` alone for a range without.
    static std::vector<lib_nr_channel_bw_type_t> get_ntn_valid_bandwidth_list(lib_nr_freq_range_type_t freq_range);
    static std::vector<lib_nr_channel_bw_type_t> get_ntn_valid_bandwidth_list(lib_nr_numerology_type_t numerology,
                                                                              lib_nr_freq_range_type_t freq_range);
    /// All bandwidths that a carrier may have, in or outside non-terrestrial networks, range by range.
    static std::vector<lib_nr_channel_bw_type_t> get_carrier_bandwidth_list(bool ntn);
    static bool is_ntn_bandwidth(lib_nr_channel_bw_type_t bandwidth);
    /// The spacings that a carrier of this bandwidth may have, ascending.
    static std::vector<lib_nr_numerology_type_t> get_valid_numerology_list(lib_nr_channel_bw_type_t bandwidth);
    /// Clears both maps and fills them with TS 38.211 Table 6.4.1.4.3-1.
    static void _srs_bw_config_init(srs_bw_t& table);

    // Random access. A check corrects what it is given and prints a line where it did, but for the silent rules.

    /// Row of a configuration table; an index past its end reads the last row. Where the row has two formats, the
    /// format is the second for the last occasion of a slot, else the first.
    static void get_variables_from_configTable(prach_config_table_type_t table, unsigned int index,
                                               configuration_table_t& row, unsigned int occasion);
    /// A long format by its name; a printed line, and the record stays, for any other.
    static void get_variables_from_table63311(const std::string& format, long_preamble_formats_t& record);
    /// A short format by its name; a printed line, and the record stays, for any other.
    static void get_variables_from_table63312(const std::string& format, short_preamble_formats_t& record);
    /// The format of a name; A1 and a printed line for a name that is none.
    static prach_format_t prach_string_map_index(const std::string& format);
    /// The root u of a logical index, TS 38.211 Tables 6.3.3.1-3 to 6.3.3.1-4B; a length that is none of the first
    /// three counts as 571. The index must lie below the length - 1.
    static unsigned int get_prach_root(prach_lra_type_t lra, unsigned int logical_index);
    /// N_CS of TS 38.211 Tables 6.3.3.1-5 to 6.3.3.1-7; -1 where the standard has none. Zones above 15 read as 15.
    static int get_prach_ncs(prach_format_t format, prach_lra_type_t lra, prach_restricted_set_type_t restricted_set,
                             unsigned int zero_correlation_zone);
    /// N_RB_RA and k-bar of TS 38.211 Table 6.3.3.2-1 by the own rule; false where the table has no such row.
    static bool get_prach_carrier_combination(prach_lra_type_t lra, prach_scs_type_t scs,
                                              lib_nr_numerology_type_t numerology, unsigned int& rb_number,
                                              unsigned int& k_bar);
    /// The k-bar of the standard for a row whose own one is `k_bar`.
    static unsigned int get_standard_k_bar(prach_lra_type_t lra, prach_scs_type_t scs,
                                           lib_nr_numerology_type_t numerology, unsigned int k_bar);

    /// FR1 takes at most 30 kHz, else 15 kHz; FR2 at least 60 kHz, else 60 kHz.
    static void check_scs_and_fr(prach_scs_type_t& scs, lib_nr_channel_bw_type_t bandwidth);
    /// The tables FR1_FDD_SUL and FR2_TDD end at 255.
    static void check_ci_and_fr_and_duplex_mode(unsigned int& index, prach_config_table_type_t table);
    /// Formats 0 to 2 have 1.25 kHz and format 3 has 5 kHz, silently; the short ones 15 kHz for what is none of theirs.
    static void check_scs_and_format(prach_scs_type_t& scs, prach_format_t format);
    /// The zones that a restricted set has on a long format; short formats are unrestricted.
    static void check_restricted_set_and_format(prach_restricted_set_type_t& restricted_set, prach_format_t format,
                                                unsigned int& zero_correlation_zone);
    /// The PRACH slots within a subframe or 60 kHz slot: 0 at 1.25, 5, 15 and 60 kHz; the last one where the row has
    /// one alone.
    static void check_aps_and_scs_and_ci(prach_config_table_type_t table, prach_scs_type_t scs, unsigned int index,
                                         unsigned int& n_RA_slot);
    /// What length and spacing a carrier's spacing takes, TS 38.211 Table 6.3.3.2-1: what it has no row for becomes its
    /// first row. 240 kHz has none, and nothing changes.
    static void validate_prach_and_carrier(lib_nr_numerology_type_t numerology, prach_scs_type_t& scs,
                                           prach_lra_type_t& lra);
    /// The lengths of a format and spacing. Corrects the spacing by `check_scs_and_format` first and, for a format that
    /// is none, the index by `check_ci_and_fr_and_duplex_mode`; the long formats have one occasion, `n_RA_t` 0.
    static void check_lra(prach_format_t format, prach_config_table_type_t table, prach_scs_type_t& scs,
                          unsigned int& index, unsigned int& n_RA_t, prach_lra_type_t& lra);

    /// Rows of the PRACH grid: the repetitions of a long format, 14 for a short one, 7 for C0.
    static unsigned int get_symbol_size(prach_format_t format);
    /// N_CP in samples at 30.72 MHz, for a short format at 15 kHz.
    static unsigned int get_prach_prefix(prach_format_t format);
    /// Times that a preamble repeats its sequence.
    static unsigned int get_prach_repetitions(prach_format_t format);
    /// Columns, PRACH subcarriers in `rb` resource blocks of the carrier, and rows of the PRACH grid; spacings in
    /// hertz.
    static void get_gridsize(unsigned int rb, unsigned int scs, prach_scs_type_t scs_ra, prach_format_t format,
                             unsigned int& columns, unsigned int& rows);
    /// mu of a preamble's spacing, 0 for the spacings of the long formats; a printed line and 0 for any other.
    static unsigned int get_u_from_prach_scs(prach_scs_type_t scs);
    /// Rows that a preamble fills. Prints the row's duration.
    static unsigned int get_num_ofdm_symbols(prach_format_t format, prach_config_table_type_t table,
                                             unsigned int index);

    /// Row of the PRACH grid that an occasion in time begins in: 0 for a long format, else its symbol in the slot, or
    /// its pair of symbols for C0.
    static unsigned int get_prach_first_row(prach_format_t format, prach_config_table_type_t table, unsigned int index,
                                            unsigned int n_RA_t);
    /// Symbol of the preamble's spacing, from the start of its PRACH slot, at which an occasion begins.
    static unsigned int get_prach_first_symbol(prach_config_table_type_t table, unsigned int index,
                                               unsigned int n_RA_t);

    /// The absolute slot, in slots of the preamble's spacing, that a burst is configured for in a frame.
    /// `subframe_or_slot` is the subframe for the FR1 tables and the 60 kHz slot for the FR2 one. The row itself does
    /// not matter.
    static unsigned int cal_prach_current_slot(unsigned int frame, unsigned int scs_khz, prach_lra_type_t lra,
                                               prach_config_table_type_t table, unsigned int index,
                                               unsigned int n_RA_slot, unsigned int subframe_or_slot);
    /// Whether a burst sends in a frame: the row's period and offset y hold, its list has the subframe or slot, and the
    /// slot falls on `n_RA_slot`. The length tells what of the format matters.
    static bool is_prach_active(unsigned int frame, unsigned int scs_khz, prach_lra_type_t lra,
                                prach_config_table_type_t table, unsigned int index, unsigned int slot,
                                prach_format_t format, unsigned int n_RA_slot, unsigned int y);
};

} // namespace vek::nr_mod_lib

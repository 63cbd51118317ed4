#pragma once

#include "common/nr_mod_lib_export.h"

#include <cstdint>
#include <map>
#include <vector>

namespace vek::nr_mod_lib
{

/// Subcarrier spacing; the value is the numerology mu of TS 38.211 clause 4.2.
enum lib_nr_numerology_type_t : std::uint32_t
{
    LIB_NR_SCS_15K = 0,
    LIB_NR_SCS_30K = 1,
    LIB_NR_SCS_60K = 2,
    LIB_NR_SCS_120K = 3,
    LIB_NR_SCS_240K = 4,
    LIB_NR_SCS_480K = 5,
    LIB_NR_SCS_960K = 6,
};

/// Frequency ranges of TS 38.104 clause 5.1.
enum lib_nr_freq_range_type_t : std::uint32_t
{
    NR_FR1 = 0,
    NR_FR2_1 = 1,
    NR_FR2_2 = 2,
};

enum lib_nr_cyclic_prefix_type_t : std::uint32_t
{
    LIB_NR_NORMAL_CP = 0,
    LIB_NR_EXTEND_CP = 1,
};

/// Channel bandwidths, one value for each bandwidth and frequency range.
enum lib_nr_channel_bw_type_t : std::uint32_t
{
    LIB_NR_CHANNEL_FR1_5M = 0,
    LIB_NR_CHANNEL_FR1_10M = 1,
    LIB_NR_CHANNEL_FR1_15M = 2,
    LIB_NR_CHANNEL_FR1_20M = 3,
    LIB_NR_CHANNEL_FR1_25M = 4,
    LIB_NR_CHANNEL_FR1_30M = 5,
    LIB_NR_CHANNEL_FR1_35M = 6,
    LIB_NR_CHANNEL_FR1_40M = 7,
    LIB_NR_CHANNEL_FR1_45M = 8,
    LIB_NR_CHANNEL_FR1_50M = 9,
    LIB_NR_CHANNEL_FR1_60M = 10,
    LIB_NR_CHANNEL_FR1_70M = 11,
    LIB_NR_CHANNEL_FR1_80M = 12,
    LIB_NR_CHANNEL_FR1_90M = 13,
    LIB_NR_CHANNEL_FR1_100M = 14,
    LIB_NR_CHANNEL_FR2_1_50M = 15,
    LIB_NR_CHANNEL_FR2_1_100M = 16,
    LIB_NR_CHANNEL_FR2_1_200M = 17,
    LIB_NR_CHANNEL_FR2_1_400M = 18,
    LIB_NR_CHANNEL_FR2_2_100M = 19,
    LIB_NR_CHANNEL_FR2_2_400M = 20,
    LIB_NR_CHANNEL_FR2_2_800M = 21,
    LIB_NR_CHANNEL_FR2_2_1600M = 22,
    LIB_NR_CHANNEL_FR2_2_2000M = 23,
};

/// SRS bandwidth configuration, TS 38.211 Table 6.4.1.4.3-1: B_SRS (0 to 3) to the 64 values of m_SRS,b and of N_b by
/// C_SRS.
struct srs_bw_t
{
    std::map<unsigned char, std::vector<std::uint16_t>> m_srs;
    std::map<unsigned char, std::vector<std::uint8_t>> n;
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
    /// `NR_FR1` for an unknown bandwidth.
    static lib_nr_freq_range_type_t get_freq_range_type(lib_nr_channel_bw_type_t bandwidth);
    /// Whether a carrier of this bandwidth may have this spacing (TS 38.104 clause 5.3.5). Narrower in FR2-2 than the
    /// table of resource blocks. An unknown bandwidth is judged as FR1: true for 15, 30 and 60 kHz.
    static bool check_numerology_bandwidth_valid(lib_nr_numerology_type_t numerology,
                                                 lib_nr_channel_bw_type_t bandwidth);
    /// Slots in a 10 ms frame; those of 15 kHz for an unknown spacing.
    static unsigned int get_slot_in_frame(lib_nr_numerology_type_t numerology);
    /// 12 for the extended prefix, else 14, whatever the spacing.
    static unsigned int get_symbol_number_in_slot(lib_nr_numerology_type_t numerology,
                                                  lib_nr_cyclic_prefix_type_t cp_type);
    static unsigned int get_symbol_number_in_frame(lib_nr_numerology_type_t numerology,
                                                   lib_nr_cyclic_prefix_type_t cp_type);
    /// Largest transmission bandwidth in resource blocks (TS 38.104 clause 5.3.2); 0 and a line where the pair has
    /// none.
    static unsigned int get_max_transmit_rb_num(lib_nr_numerology_type_t numerology,
                                                lib_nr_channel_bw_type_t bandwidth);
    /// 12 times `get_max_transmit_rb_num`, with the same line.
    static unsigned int get_subcarrier_total_number(lib_nr_numerology_type_t numerology,
                                                    lib_nr_channel_bw_type_t bandwidth);
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
    /// The spacings that a carrier of this bandwidth may have, ascending.
    static std::vector<lib_nr_numerology_type_t> get_valid_numerology_list(lib_nr_channel_bw_type_t bandwidth);
    /// Clears both maps and fills them with TS 38.211 Table 6.4.1.4.3-1.
    static void _srs_bw_config_init(srs_bw_t& table);
};

} // namespace vek::nr_mod_lib

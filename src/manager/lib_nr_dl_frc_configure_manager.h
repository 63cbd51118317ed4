#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_preset_configure_manager.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Downlink fixed reference channels of TS 38.101-1 and TS 38.101-2 annex A.3, and those of TS 38.101-5 annex A.3.2 for
/// non-terrestrial networks.
enum lib_nr_dl_fixed_reference_channels_t : std::uint32_t
{
    LIB_NR_DL_FRC_FR1_QPSK = 0,
    LIB_NR_DL_FRC_FR1_64QAM = 1,
    LIB_NR_DL_FRC_FR1_256QAM = 2,
    LIB_NR_DL_FRC_FR1_1024QAM = 3,
    LIB_NR_DL_FRC_FR2_QPSK = 4,
    LIB_NR_DL_FRC_FR2_64QAM = 5,
    LIB_NR_DL_FRC_FR2_256QAM = 6,
    LIB_NR_NTN_FRC_FR1_A_3_2_1_1_1_QPSK = 7,
    LIB_NR_NTN_FRC_FR1_A_3_2_1_1_2_16QAM = 8,
    LIB_NR_NTN_FRC_FR2_A_3_2_1_2_1_QPSK = 9,
    LIB_NR_NTN_FRC_FR2_A_3_2_1_2_2_16QAM = 10,
    LIB_NR_NTN_FRC_FR2_A_3_2_1_2_3_64QAM = 11,
    LIB_NR_NTN_FRC_FR2_A_3_2_1_3_1_QPSK = 12,
    LIB_NR_NTN_FRC_FR2_A_3_2_1_3_2_16QAM = 13,
    LIB_NR_NTN_FRC_FR2_A_3_2_1_3_3_QPSK = 14,
    LIB_NR_NTN_FRC_FR2_A_3_2_1_3_4_16QAM = 15,
    LIB_NR_NTN_FRC_FR2_A_3_2_1_3_5_64QAM = 16,
};

/// The choice of a downlink fixed reference channel for a carrier. The rules are told in its façade, `cfg_nr_dl_frc_t`.
class NR_MOD_LIB_EXPORT lib_nr_dl_frc_configure_manager_t final : public lib_nr_preset_configure_manager_t
{
public:
    lib_nr_dl_frc_configure_manager_t() { init(); }

    /// Everything but the NTN flag back to its default.
    void init() override;

    bool set_fixed_reference_channels(lib_nr_dl_fixed_reference_channels_t channel);
    lib_nr_dl_fixed_reference_channels_t get_fixed_reference_channels() const { return m_fixed_reference_channels; }
    std::vector<lib_nr_dl_fixed_reference_channels_t> get_valid_frc_list() const;
    bool set_numerolgy(lib_nr_numerology_type_t numerology);
    lib_nr_numerology_type_t get_numerolgy() const { return m_numerolgy; }
    std::vector<lib_nr_numerology_type_t> get_valid_numerology_list() const;
    bool set_bandwidth(lib_nr_channel_bw_type_t bandwidth);
    std::vector<lib_nr_channel_bw_type_t> get_valid_bandwidth_list() const;
    bool set_duplex_type(lib_nr_duplex_type_t duplex_type);
    std::vector<lib_nr_duplex_type_t> get_valid_duplex_type_list() const;

private:
    lib_nr_freq_range_type_t _get_freq_range_type() const;

    lib_nr_dl_fixed_reference_channels_t m_fixed_reference_channels = LIB_NR_DL_FRC_FR1_QPSK;
    lib_nr_numerology_type_t m_numerolgy = LIB_NR_SCS_30K;
};

} // namespace vek::nr_mod_lib

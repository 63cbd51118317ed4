#pragma once

#include "common/lib_fir_filter_design.h"
#include "common/lib_ofdm_modulator.h"
#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// The low-pass filter of a carrier. Designed anew for every frame: its passband reaches from the centre to the
/// outermost occupied subcarrier of the frame, on the wider side, and beyond it by the minimum guard band of
/// TS 38.104 clause 5.3.3, at least a resource block. Order 1024 whatever the oversampling.
class NR_MOD_LIB_EXPORT lib_nr_baseband_filter_t
{
public:
    using sample_t = std::complex<double>;

    lib_nr_baseband_filter_t();

    /// Samples that a filtered signal is longer by.
    static constexpr std::size_t k_growth = 1024;

    void set_baseband_filter_enable(bool enable);
    /// Ratio of the signal's rate to the rate of the numerology's own FFT. 0 prints a line, keeps the former value and
    /// returns false.
    bool set_oversampling_ratio(unsigned int oversampling_ratio);
    void set_numerology(lib_nr_numerology_type_t numerology);
    void set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth);

    /// Filters a frame's signal in place, the passband taken from the rows of subcarriers that it was made from. The
    /// signal grows by 1024 samples, the first 512 of which lie ahead of its former start. Nothing when disabled. Rows
    /// that are missing or of unequal length print a line and count as occupied throughout; a pair of numerology and
    /// bandwidth without a minimum guard band prints a line on standard error.
    void deal_baseband_filter(const std::vector<std::vector<sample_t>>& payload, std::vector<sample_t>& signal);
    /// The same for a frame where it lies and the samples behind it, which stand in the tail: what the filter spreads
    /// ahead of the frame becomes the head, and the tail grows.
    void filter_frame(const common_lib::lib_ofdm_payload_t& payload, sample_t* frame, std::size_t count,
                      std::vector<sample_t>& head, std::vector<sample_t>& tail);
    /// The same for a signal made from a single row.
    void deal_prach_baseband_filter(const std::vector<sample_t>& payload, std::vector<sample_t>& signal);

private:
    friend struct vek::test_peer_t<lib_nr_baseband_filter_t>;

    void _search_guard_subcarrier_number(const common_lib::lib_ofdm_payload_t& payload);
    void _search_prach_guard_subcarrier_number(const std::vector<sample_t>& payload);
    static float _get_minimum_guardband(lib_nr_numerology_type_t numerology, lib_nr_channel_bw_type_t bandwidth);
    void _generate_baseband_filter();
    void _apply_filter(std::vector<sample_t>& signal) const;

    bool m_enable = false;
    std::uint32_t m_oversampling_ratio = 1;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_15K;
    lib_nr_channel_bw_type_t m_channel_bandwidth = LIB_NR_CHANNEL_FR1_5M;
    std::uint32_t m_low_guard_count = 0;
    std::uint32_t m_high_guard_count = 0;
    std::vector<sample_t> m_coefficients;
    common_lib::lib_fir_filter_design_t m_filter_design;
};

} // namespace vek::nr_mod_lib

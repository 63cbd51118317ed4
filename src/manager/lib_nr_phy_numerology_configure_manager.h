#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_ul_guard_band_configure_manager.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// One numerology of a carrier: its spacing, the resource blocks it occupies and its uplink guard bands.
///
/// With M the most resource blocks that spacing and bandwidth allow, 6 <= rb_size and rb_start + rb_size <= M hold
/// after every operation. Setters return true when the stored value changed.
class NR_MOD_LIB_EXPORT lib_nr_phy_numerology_configure_manager_t
{
public:
    bool set_enable(bool enable);
    bool get_enable() const { return m_enable; }

    /// Takes spacing and bandwidth. Where one of them is new the numerology gets its full width, from block 0. Returns
    /// whether the pair is valid, not whether it is new; an invalid pair, an unknown bandwidth included, changes
    /// nothing.
    bool set_numerology(lib_nr_numerology_type_t numerology, lib_nr_channel_bw_type_t bandwidth);
    lib_nr_numerology_type_t get_numerolgy() const { return m_numerology; }
    lib_nr_channel_bw_type_t get_bandwidth() const { return m_bandwidth; }

    /// Width in resource blocks, limited to 6 to M; what passes the upper end from the present start is cut.
    bool set_rb_size(unsigned int rb_size);
    unsigned int get_rb_size() const { return m_rb_size; }

    /// First resource block, at most M - 6. The start wins against the width: what passes the upper end is cut.
    bool set_rb_start(unsigned int rb_start);
    unsigned int get_rb_start() const { return m_rb_start; }

    /// Offset of the centre of the resource blocks from the carrier centre, in subcarriers: always 0.
    unsigned int get_k0() const { return m_k0; }

    /// Full width, from block 0.
    void init_resource_occupation();

    /// Twice the distance of the outermost occupied subcarrier from the carrier centre, in hertz.
    unsigned int get_occupied_bandwidth() const;

    /// The cyclic prefixes to choose from: the extended one goes with 60 kHz alone (TS 38.211 clause 4.2).
    std::vector<lib_nr_cyclic_prefix_type_t> get_cp_type_list() const;

    lib_nr_ul_guard_band_configure_manager_t& get_ul_guard_band() { return m_ul_guard_band; }
    const lib_nr_ul_guard_band_configure_manager_t& get_ul_guard_band() const { return m_ul_guard_band; }

private:
    std::uint32_t _max_rb_number() const;

    bool m_enable = false;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_channel_bw_type_t m_bandwidth = LIB_NR_CHANNEL_FR1_100M;
    std::uint32_t m_rb_size = 273;
    std::uint32_t m_rb_start = 0;
    std::uint32_t m_k0 = 0;
    lib_nr_ul_guard_band_configure_manager_t m_ul_guard_band;
};

} // namespace vek::nr_mod_lib

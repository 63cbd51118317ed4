#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_duplex_type.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// What the choices of a carrier's presets have in common. A choice is kept consistent by its setters and reaches the
/// carrier when the preset is applied, not before. Setters return true when the stored value changed.
class NR_MOD_LIB_EXPORT lib_nr_preset_configure_manager_t
{
public:
    /// Everything but the NTN flag back to its default, as far as the family does not tell otherwise.
    virtual void init() = 0;
    /// Stores the flag and starts from its defaults. True where the flag changed.
    bool set_nr_ntn(bool ntn);

    bool set_enable(bool enable);
    bool get_enable() const { return m_enable; }
    bool set_phase_compensation_state(bool state);
    bool get_phase_compensation_state() const { return m_phase_compensation_state; }
    bool set_radio_frequency(double radio_frequency);
    double get_radio_frequency() const { return m_radio_frequency; }
    lib_nr_channel_bw_type_t get_bandwidth() const { return m_bandwidth; }
    lib_nr_duplex_type_t get_duplex_type() const { return m_duplex_type; }
    lib_nr_freq_range_type_t get_frequency_range() const { return m_frequency_range; }
    /// Resource blocks of the bandwidth; 0 and a printed line where the pair has none.
    unsigned int get_rb_number_of(lib_nr_numerology_type_t numerology) const;

protected:
    lib_nr_preset_configure_manager_t() = default;
    ~lib_nr_preset_configure_manager_t() = default;
    lib_nr_preset_configure_manager_t(const lib_nr_preset_configure_manager_t&) = default;
    lib_nr_preset_configure_manager_t& operator=(const lib_nr_preset_configure_manager_t&) = default;

    /// What all families have, but for enable and the flag, back to its default; non-terrestrial carriers are FDD.
    void _init_common(lib_nr_channel_bw_type_t bandwidth);
    /// The spacings of the bandwidth but for 240 kHz, which has no data channels.
    std::vector<lib_nr_numerology_type_t> _data_spacings() const;

    bool m_enable = false;
    bool m_nr_ntn = false;
    lib_nr_channel_bw_type_t m_bandwidth = LIB_NR_CHANNEL_FR1_100M;
    lib_nr_duplex_type_t m_duplex_type = LIB_NR_DUPLEX_TYPE_TDD;
    bool m_phase_compensation_state = true;
    double m_radio_frequency = 1e9;
    lib_nr_freq_range_type_t m_frequency_range = NR_FR1;
};

} // namespace vek::nr_mod_lib

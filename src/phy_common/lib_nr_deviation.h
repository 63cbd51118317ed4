#pragma once

#include "common/nr_mod_lib_export.h"

#include <cstdint>
#include <vector>

// Where this library's own rules prescribe another signal than TS 38.211 to 38.214, and the switch between the two.
namespace vek::nr_mod_lib
{

/// The places where the own rule and the standard differ, in the order of docs/deviations.md.
enum class lib_nr_deviation_t : std::uint8_t
{
    carrier_phase,
    pbch_second_scrambling,
    mib_flags,
    pdsch_beside_block,
    pdcch_hash,
    dmrs_reference,
    sch_identity_zero,
    csirs_place,
    csirs_zero_power,
    prs_sequence,
    prs_occasions,
    pusch_short_dmrs,
    low_papr_symbol,
    dft_ptrs_power,
    codebook,
    interlaces,
    pucch1_dmrs_cover,
    pucch1_scheduling_request,
    pucch_slot_hopping,
    uci_split,
    uci_multiplexing,
    srs_place,
    prach_place,
};

/// What there is to say of a deviation.
struct lib_nr_deviation_row_t
{
    lib_nr_deviation_t deviation;
    const char* name;     ///< as the enumerator
    const char* clause;   ///< of the standard
    const char* own;      ///< what this library does by itself
    const char* standard; ///< what the standard says
    const char* noticed;  ///< by whom, where the own rule is in force
};

/// All deviations, in the order of the enumeration.
NR_MOD_LIB_EXPORT const std::vector<lib_nr_deviation_row_t>& lib_nr_deviation_rows();
/// The row of a deviation; the last one for a value that is none.
NR_MOD_LIB_EXPORT const lib_nr_deviation_row_t& lib_nr_deviation_row(lib_nr_deviation_t deviation);

/// Which side is in force where the own rule and the standard differ: a snapshot of the root setting `standard_rules`,
/// taken by a process or modulator when it is bound. Also notes which deviations it met. All branches between the two
/// sides go through `pick`, so that a search for an enumerator finds code, test and page.
class NR_MOD_LIB_EXPORT lib_nr_rules_t
{
public:
    explicit lib_nr_rules_t(bool standard_rules = false) : m_standard_rules(standard_rules) {}

    /// The side in force. Notes the deviation where the own side is in force and the sides differ.
    template <class value_t>
    value_t pick(lib_nr_deviation_t deviation, value_t own, value_t standard) const
    {
        if (m_standard_rules)
            return standard;
        if (!(own == standard))
            m_met |= 1U << static_cast<unsigned int>(deviation);
        return own;
    }

    bool is_standard() const { return m_standard_rules; }
    bool has_met() const { return m_met != 0; }
    /// The deviations noted since the snapshot was taken, in the order of the enumeration.
    std::vector<lib_nr_deviation_t> get_met() const;
    /// Notes what another one has noted, as that of a step that was handed the rules.
    void add_met(const lib_nr_rules_t& other) { m_met |= other.m_met; }

private:
    bool m_standard_rules;
    /// One bit a deviation; a note that a pick leaves behind, not a part of what the object stands for.
    mutable std::uint32_t m_met = 0;
};

/// What each process and modulator has that branches between the two sides.
class lib_nr_ruled_t
{
public:
    /// Takes the rules in force, when it is bound to an entry; nothing is noted so far.
    void set_standard_rules(bool standard_rules) { m_rules = lib_nr_rules_t(standard_rules); }
    /// With the deviations met since then.
    const lib_nr_rules_t& get_rules() const { return m_rules; }

protected:
    lib_nr_ruled_t() = default;

    lib_nr_rules_t m_rules;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

enum lib_nr_tdd_slot_t : std::uint32_t
{
    LIB_NR_TDD_DOWNLINK_SLOT = 0,
    LIB_NR_TDD_UPLINK_SLOT = 1,
    LIB_NR_TDD_SPECIAL_SLOT = 2,
};

/// The value of an enumerator is the period in microseconds.
enum lib_nr_tdd_transmission_periodicity_t : std::uint32_t
{
    LIB_NR_TDD_TRANSMISSION_PERIODICITY_500_US = 500,
    LIB_NR_TDD_TRANSMISSION_PERIODICITY_625_US = 625,
    LIB_NR_TDD_TRANSMISSION_PERIODICITY_1000_US = 1000,
    LIB_NR_TDD_TRANSMISSION_PERIODICITY_1250_US = 1250,
    LIB_NR_TDD_TRANSMISSION_PERIODICITY_2000_US = 2000,
    LIB_NR_TDD_TRANSMISSION_PERIODICITY_2500_US = 2500,
    LIB_NR_TDD_TRANSMISSION_PERIODICITY_5000_US = 5000,
    LIB_NR_TDD_TRANSMISSION_PERIODICITY_10000_US = 10000,
};

/// A TDD pattern of one transmission period (TS 38.213 clause 11.1): the number of downlink, special and uplink slots,
/// and the slots one by one. Whatever is changed, the counts add up to the slots of the period; a change of spacing or
/// period keeps as many uplink slots as fit, a change of a count that count, and the special slots give way first.
/// Nothing is printed.
class NR_MOD_LIB_EXPORT lib_nr_tdd_slot_allocation_t
{
public:
    lib_nr_tdd_slot_allocation_t();
    /// Back to 30 kHz, 5 ms, 7 downlink, 1 special and 2 uplink slots.
    void init();

    /// The periodicity stays even where the new spacing does not offer it.
    void set_numerology_type(lib_nr_numerology_type_t numerology);
    /// A periodicity that is not in the range is ignored.
    void set_transmission_periodicity(lib_nr_tdd_transmission_periodicity_t periodicity);
    /// At most the slots of the period.
    void set_number_of_downlink_slots(unsigned int slots);
    /// At most the slots of the period.
    void set_number_of_uplink_slots(unsigned int slots);
    /// Slots in any order, cut or filled with special slots to the period; the order stays until a count, the period or
    /// the spacing changes.
    void set_tdd_slot_allocation(const std::vector<lib_nr_tdd_slot_t>& slots);

    /// What the spacing offers, ascending.
    const std::vector<lib_nr_tdd_transmission_periodicity_t>& get_transmission_periodicity_range() const
    {
        return m_transmission_periodicity_range;
    }
    lib_nr_tdd_transmission_periodicity_t get_transmission_periodicity() const { return m_transmission_periodicity; }
    unsigned int get_number_of_downlink_slots() const { return m_number_of_downlink_slots; }
    unsigned int get_number_of_uplink_slots() const { return m_number_of_uplink_slots; }
    unsigned int get_number_of_special_slots() const { return m_number_of_special_slots; }
    const std::vector<lib_nr_tdd_slot_t>& get_tdd_slot_allocation() const { return m_slot_allocation; }

    /// Counts the slots of each kind anew.
    void updata_slot_num();
    /// Makes counts and slots agree with the period; the count of this kind of slot, downlink or uplink, has priority.
    void updata_slot_allocation(lib_nr_tdd_slot_t priority);
    /// Lists anew what the spacing offers.
    void updata_optional_period();

private:
    unsigned int _slots_in_period() const;

    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_tdd_transmission_periodicity_t m_transmission_periodicity = LIB_NR_TDD_TRANSMISSION_PERIODICITY_5000_US;
    std::uint32_t m_number_of_downlink_slots = 7;
    std::uint32_t m_number_of_uplink_slots = 2;
    std::uint32_t m_number_of_special_slots = 1;
    std::vector<lib_nr_tdd_slot_t> m_slot_allocation;
    std::vector<lib_nr_tdd_transmission_periodicity_t> m_transmission_periodicity_range;
};

} // namespace vek::nr_mod_lib

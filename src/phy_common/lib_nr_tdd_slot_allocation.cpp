#include "phy_common/lib_nr_tdd_slot_allocation.h"

#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_frame_us = 10000;

} // namespace

lib_nr_tdd_slot_allocation_t::lib_nr_tdd_slot_allocation_t()
{
    updata_slot_allocation(LIB_NR_TDD_UPLINK_SLOT);
    updata_optional_period();
}

void lib_nr_tdd_slot_allocation_t::init() { *this = lib_nr_tdd_slot_allocation_t(); }

void lib_nr_tdd_slot_allocation_t::set_numerology_type(lib_nr_numerology_type_t numerology)
{
    if (numerology == m_numerology)
        return;
    m_numerology = numerology;
    updata_slot_allocation(LIB_NR_TDD_UPLINK_SLOT);
    updata_optional_period();
}

void lib_nr_tdd_slot_allocation_t::set_transmission_periodicity(lib_nr_tdd_transmission_periodicity_t periodicity)
{
    const auto& range = m_transmission_periodicity_range;
    if (std::find(range.begin(), range.end(), periodicity) == range.end())
        return;
    m_transmission_periodicity = periodicity;
    updata_slot_allocation(LIB_NR_TDD_UPLINK_SLOT);
}

void lib_nr_tdd_slot_allocation_t::set_number_of_downlink_slots(unsigned int slots)
{
    if (slots == m_number_of_downlink_slots)
        return;
    m_number_of_downlink_slots = slots;
    updata_slot_allocation(LIB_NR_TDD_DOWNLINK_SLOT);
}

void lib_nr_tdd_slot_allocation_t::set_number_of_uplink_slots(unsigned int slots)
{
    if (slots == m_number_of_uplink_slots)
        return;
    m_number_of_uplink_slots = slots;
    updata_slot_allocation(LIB_NR_TDD_UPLINK_SLOT);
}

void lib_nr_tdd_slot_allocation_t::set_tdd_slot_allocation(const std::vector<lib_nr_tdd_slot_t>& slots)
{
    if (slots == m_slot_allocation)
        return;
    m_slot_allocation = slots;
    m_slot_allocation.resize(_slots_in_period(), LIB_NR_TDD_SPECIAL_SLOT);
    updata_slot_num();
}

void lib_nr_tdd_slot_allocation_t::updata_slot_num()
{
    const auto count = [this](lib_nr_tdd_slot_t kind) {
        return static_cast<std::uint32_t>(std::count(m_slot_allocation.begin(), m_slot_allocation.end(), kind));
    };
    m_number_of_downlink_slots = count(LIB_NR_TDD_DOWNLINK_SLOT);
    m_number_of_uplink_slots = count(LIB_NR_TDD_UPLINK_SLOT);
    m_number_of_special_slots = count(LIB_NR_TDD_SPECIAL_SLOT);
}

void lib_nr_tdd_slot_allocation_t::updata_slot_allocation(lib_nr_tdd_slot_t priority)
{
    const std::uint64_t total = _slots_in_period();
    // In 64 bits, since a count may be any number until it is cut here.
    const std::uint64_t both = std::uint64_t{m_number_of_downlink_slots} + m_number_of_uplink_slots;
    if (both + m_number_of_special_slots == total && m_slot_allocation.size() == total)
        return;
    const bool is_downlink_first = priority == LIB_NR_TDD_DOWNLINK_SLOT;
    std::uint32_t& first = is_downlink_first ? m_number_of_downlink_slots : m_number_of_uplink_slots;
    std::uint32_t& second = is_downlink_first ? m_number_of_uplink_slots : m_number_of_downlink_slots;
    first = static_cast<std::uint32_t>(std::min<std::uint64_t>(first, total));
    second = static_cast<std::uint32_t>(std::min<std::uint64_t>(second, total - first));
    m_number_of_special_slots = static_cast<std::uint32_t>(total - first - second);

    m_slot_allocation.assign(m_number_of_downlink_slots, LIB_NR_TDD_DOWNLINK_SLOT);
    m_slot_allocation.resize(total - m_number_of_uplink_slots, LIB_NR_TDD_SPECIAL_SLOT);
    m_slot_allocation.resize(total, LIB_NR_TDD_UPLINK_SLOT);
}

void lib_nr_tdd_slot_allocation_t::updata_optional_period()
{
    auto& range = m_transmission_periodicity_range;
    range = {LIB_NR_TDD_TRANSMISSION_PERIODICITY_1000_US, LIB_NR_TDD_TRANSMISSION_PERIODICITY_2000_US,
             LIB_NR_TDD_TRANSMISSION_PERIODICITY_5000_US, LIB_NR_TDD_TRANSMISSION_PERIODICITY_10000_US};
    if (m_numerology >= LIB_NR_SCS_30K)
        range.insert(range.end(),
                     {LIB_NR_TDD_TRANSMISSION_PERIODICITY_500_US, LIB_NR_TDD_TRANSMISSION_PERIODICITY_2500_US});
    if (m_numerology > LIB_NR_SCS_60K)
        range.push_back(LIB_NR_TDD_TRANSMISSION_PERIODICITY_1250_US);
    if (m_numerology == LIB_NR_SCS_120K)
        range.push_back(LIB_NR_TDD_TRANSMISSION_PERIODICITY_625_US);
    std::sort(range.begin(), range.end());
}

unsigned int lib_nr_tdd_slot_allocation_t::_slots_in_period() const
{
    return lib_nr_phy_common_t::get_slot_in_frame(m_numerology) * m_transmission_periodicity / k_frame_us;
}

} // namespace vek::nr_mod_lib

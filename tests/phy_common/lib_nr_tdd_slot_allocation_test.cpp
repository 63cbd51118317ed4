#include "phy_common/lib_nr_tdd_slot_allocation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;

TEST(lib_nr_tdd_slot_allocation, counts_give_way_in_their_order_and_add_up_to_the_period)
{
    constexpr lib_nr_tdd_slot_t k_slots[] = {LIB_NR_TDD_UPLINK_SLOT, LIB_NR_TDD_DOWNLINK_SLOT};
    // Steps: d and u are counts, n a spacing, p a period, l a list of that many slots. Slots and number of periods.
    struct row_t
    {
        std::vector<std::pair<char, unsigned int>> steps;
        std::string slots;
        std::size_t periods = 6;
    };
    const row_t rows[] = {
        {{}, "DDDDDDDSUU"},
        {{{'d', 9}}, "DDDDDDDDDU"},
        {{{'d', 3}}, "DDDSSSSSUU"},
        {{{'d', 0xFFFFFFFF}}, "DDDDDDDDDD"},
        {{{'u', 1}}, "DDDDDDDSSU"},
        {{{'u', 20}}, "UUUUUUUUUU"},
        {{{'p', 1000}}, "UU"},
        {{{'p', 625}}, "DDDDDDDSUU"}, // not offered at 30 kHz
        {{{'n', LIB_NR_SCS_15K}, {'p', 10000}}, "DDDSSSSSUU", 4},
        {{{'n', LIB_NR_SCS_120K}, {'p', 625}}, "DDDUU", 8},
        {{{'n', LIB_NR_SCS_120K}, {'p', 625}, {'n', LIB_NR_SCS_15K}}, "", 4},
        {{{'n', LIB_NR_SCS_480K}, {'p', 500}}, "DDDDDDDSSSSSSSUU", 7},
        {{{'l', 2}}, "UDSSSSSSSS"},
        {{{'l', 11}}, "UDUDUDUDUD"},
        {{{'l', 2}, {'u', 2}}, "DSSSSSSSUU"},
    };
    for (const row_t& row : rows) {
        lib_nr_tdd_slot_allocation_t pattern;
        for (const auto& [step, value] : row.steps) {
            std::vector<lib_nr_tdd_slot_t> list;
            for (unsigned int i = 0; step == 'l' && i < value; ++i)
                list.push_back(k_slots[i % 2]);
            step == 'd'   ? pattern.set_number_of_downlink_slots(value)
            : step == 'u' ? pattern.set_number_of_uplink_slots(value)
            : step == 'n' ? pattern.set_numerology_type(static_cast<lib_nr_numerology_type_t>(value))
            : step == 'p'
                ? pattern.set_transmission_periodicity(static_cast<lib_nr_tdd_transmission_periodicity_t>(value))
                : pattern.set_tdd_slot_allocation(list);
        }
        std::string slots;
        for (const lib_nr_tdd_slot_t slot : pattern.get_tdd_slot_allocation())
            slots += "DUS"[slot];
        EXPECT_EQ(slots, row.slots);
        EXPECT_EQ(std::count(slots.begin(), slots.end(), 'D'), pattern.get_number_of_downlink_slots()) << slots;
        EXPECT_EQ(std::count(slots.begin(), slots.end(), 'U'), pattern.get_number_of_uplink_slots()) << slots;
        EXPECT_EQ(std::count(slots.begin(), slots.end(), 'S'), pattern.get_number_of_special_slots()) << slots;
        const auto& periods = pattern.get_transmission_periodicity_range();
        EXPECT_EQ(periods.size(), row.periods);
        EXPECT_TRUE(std::is_sorted(periods.begin(), periods.end()));
    }
}

} // namespace

#include "config/leaves/cfg_nr_leaf_rows.h"

#include <gtest/gtest.h>

// What holds of rows at compile time, and their order of recall.

namespace
{

using namespace vek::nr_mod_lib;

struct child_t
{
    bool set_own(unsigned int value) { return std::exchange(m_own, value) != value; }
    unsigned int get_own() const { return m_own; }

    unsigned int m_own = 3;
};

struct parent_t
{
    unsigned int get_child_number() const { return 1; }
    child_t& get_child(int) { return m_child; }

    child_t m_child;
};

using child_row = rows_of_t<child_t>;
using parent_row = rows_of_t<parent_t>;
constexpr auto k_child_leaves = child_row::leaves(child_row::leaf<&child_t::get_own, &child_t::set_own>("own", ""));

template <class table_t>
constexpr bool takes = requires(const table_t& table)
{
    parent_row::list<&parent_t::get_child_number, &parent_t::get_child>("child", table, "");
};
static_assert(takes<cfg_nr_table_of_t<child_t>> && !takes<cfg_nr_table_of_t<parent_t>> &&
              !takes<cfg_nr_facade_table_t>);

/// The order of recall for rows a, b, c, d that move ahead of the ones named.
std::string order(const std::array<const char*, 4>& followers)
{
    std::array<cfg_nr_leaf_row_t<child_t>, 4> rows{};
    const char* names[] = {"a", "b", "c", "d"};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i].leaf.name = names[i];
        rows[i].follower = followers[i];
    }
    const cfg_nr_leaves_of_t<child_t, 4> leaves(rows);
    std::string text;
    for (const unsigned short place : leaves.recall_order)
        text += leaves.leaves[place].name;
    return text;
}

TEST(cfg_nr_leaf_rows, move_ahead_of_the_setting_that_they_name)
{
    EXPECT_EQ(order({}), "abcd");
    EXPECT_EQ(order({nullptr, nullptr, "a", "a"}), "cdab");
    EXPECT_EQ(order({nullptr, "a", "b", nullptr}), "cbad");
    EXPECT_EQ(order({"b", nullptr, nullptr, "c"}), "abdc");
    EXPECT_EQ(order({"c", "d", nullptr, "a"}), "bdac");
    EXPECT_THROW(order({nullptr, "lmx", nullptr, nullptr}), std::invalid_argument);
    EXPECT_THROW(order({"b", "a", nullptr, nullptr}), std::invalid_argument);
    EXPECT_THROW(k_child_leaves.recalled_first({"own", "own"}), std::invalid_argument);
    EXPECT_THROW(k_child_leaves.recalled_first({"lmx"}), std::invalid_argument);
}

} // namespace

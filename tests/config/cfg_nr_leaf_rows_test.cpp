#include "config/cfg_nr_leaf_rows.h"

#include <gtest/gtest.h>

// The shapes of rows, on façades made for it.

namespace
{

using namespace vek::nr_mod_lib;

/// What two façades share. Its address differs from theirs, so an operation on a wrong cast reads something else.
struct base_t
{
    bool set_shared(unsigned int value) { return std::exchange(m_shared, value) != value; }
    unsigned int get_shared() const { return m_shared; }
    bool set_first(unsigned short value) { return std::exchange(m_first, value) != value; }
    unsigned short get_first() const { return m_first; }

    unsigned int m_shared = 1;
    unsigned short m_first = 2;
};

struct before_base_t
{
    virtual ~before_base_t() = default;
    unsigned int m_other = 99;
};

struct child_t : before_base_t, base_t
{
    void set_own(int value) { m_own = value; }
    int get_own() const { return m_own; }
    std::vector<int> get_own_list() const { return {3, -4}; }

    int m_own = 3;
    unsigned int m_id = 0;
};

struct parent_t : before_base_t, base_t
{
    unsigned int get_child_number() const { return 2; }
    unsigned int get_first_child_index() const { return 1; }
    child_t& get_child(int id)
    {
        m_child.m_id = static_cast<unsigned int>(id);
        return m_child;
    }
    unsigned short get_number() const { return static_cast<unsigned short>(m_values.size()); }
    unsigned short get_start(unsigned short index) const { return m_values.at(index); }
    bool set_start(unsigned short value, unsigned short index)
    {
        return std::exchange(m_values.at(index), value) != value;
    }
    void add() { m_values.push_back(100); }
    bool remove(unsigned short index)
    {
        return index < m_values.size() && (m_values.erase(m_values.begin() + index), true);
    }
    std::map<unsigned short, std::pair<unsigned short, unsigned short>> get_ranges() const
    {
        return {{0, {0, 99}}, {1, {105, 272}}};
    }

    std::vector<unsigned short> m_values;
    child_t m_child;
};

template <class row>
constexpr std::array k_shared = {
    row::template leaf<&row::facade_type::get_shared, &row::facade_type::set_shared>("shared", "0 to 9"),
    row::template leaf<&row::facade_type::get_first, &row::facade_type::set_first>("first", "recalled first"),
};

using child_row = rows_of_t<child_t>;
constexpr auto k_child_leaves = child_row::leaves(
    child_row::leaf<&child_t::get_own, &child_t::set_own, &child_t::get_own_list>("own", ""), k_shared<child_row>);
constexpr auto k_child_table = child_row::table("child", k_child_leaves);

using parent_row = rows_of_t<parent_t>;
constexpr auto k_leaves =
    parent_row::leaves(
        parent_row::indexed<&parent_t::get_number, &parent_t::get_start, &parent_t::set_start>("start", ""),
        k_shared<parent_row>)
        .recalled_first({"first", "shared"});
constexpr auto k_figures = parent_row::rows(parent_row::figure<&parent_t::get_ranges>("ranges", ""));
constexpr auto k_verbs = parent_row::rows(parent_row::verb<&parent_t::add>("add", "").ends_steps(),
                                          parent_row::verb<&parent_t::remove>("remove", ""));
constexpr auto k_branches =
    parent_row::rows(parent_row::list<&parent_t::get_child_number, &parent_t::get_child>("child", k_child_table, "")
                         .first_index<&parent_t::get_first_child_index>());
constexpr auto k_parent_table = parent_row::table("parent", k_branches, k_leaves, k_figures, k_verbs);

template <class table_t>
constexpr bool takes = requires(const table_t& table)
{
    parent_row::list<&parent_t::get_child_number, &parent_t::get_child>("child", table, "");
};
static_assert(takes<cfg_nr_table_of_t<child_t>> && !takes<cfg_nr_table_of_t<parent_t>> &&
              !takes<cfg_nr_facade_table_t>);

TEST(leaf_rows, reach_inherited_operations_lists_values_and_verbs)
{
    parent_t parent;
    void* facade = &parent;
    EXPECT_EQ(k_parent_table.leaves_in_recall_order().front()->name, std::string("first"));
    EXPECT_EQ(find_row(k_parent_table.leaves, "shared")->write(facade, "7"), true);
    EXPECT_EQ(find_row(k_parent_table.leaves, "first")->write(facade, "70000"), true);
    EXPECT_TRUE(parent.m_other == 99 && parent.m_shared == 7 && parent.m_first == 65535);

    const cfg_nr_leaf_t& start = *find_row(k_parent_table.leaves, "start");
    EXPECT_TRUE(find_row(k_parent_table.verbs, "add")->run(facade, 0));
    EXPECT_TRUE(find_row(k_parent_table.verbs, "add")->run(facade, 0));
    EXPECT_EQ(start.write(facade, "42", 1), true);
    EXPECT_EQ(start.write(facade, "1.5", 1), std::nullopt);
    EXPECT_TRUE(find_row(k_parent_table.verbs, "remove")->run(facade, 0));
    EXPECT_EQ(start.count(facade), 1u);
    EXPECT_EQ(start.read(facade, 0), "42");
    EXPECT_EQ(k_parent_table.figures.begin()->read(facade), "0:99,105:272");

    const cfg_nr_branch_t& list = *k_parent_table.branches.begin();
    void* child = list.enter_place(facade, 1);
    EXPECT_EQ(static_cast<child_t*>(child)->m_id, 2u);
    EXPECT_TRUE(list.holds(facade, 2) && !list.holds(facade, 0) && !list.holds(facade, 3));
    EXPECT_EQ(find_row(list.facade->leaves, "shared")->read(child), "1");
    EXPECT_EQ(find_row(list.facade->leaves, "own")->on_offer(child), (std::vector<std::string>{"3", "-4"}));
    EXPECT_FALSE(list.add(facade) || list.copy(facade, 1) || list.remove(facade, 1));
}

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

TEST(leaf_rows, move_ahead_of_the_setting_that_they_name)
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

#pragma once

#include "config/leaves/cfg_nr_leaf.h"
#include "config/leaves/cfg_nr_leaf_text.h"

#include <initializer_list>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <type_traits>

// How the rows of the leaf tables are made from the operations of a façade. For the tables' sources alone: a host reads
// the rows through cfg_nr_leaf.h.

namespace vek::nr_mod_lib
{

namespace cfg_nr_leaf_detail
{

template <class member_t>
struct member_traits_t;

template <class owner_t, class result_t, class... arguments_t>
struct member_traits_t<result_t (owner_t::*)(arguments_t...)>
{
    using owner_type = owner_t;
    using result_type = result_t;
    using arguments_type = std::tuple<arguments_t...>;
};

template <class owner_t, class result_t, class... arguments_t>
struct member_traits_t<result_t (owner_t::*)(arguments_t...) const>
    : member_traits_t<result_t (owner_t::*)(arguments_t...)>
{
};

template <auto member>
using traits_of = member_traits_t<std::remove_const_t<decltype(member)>>;
template <auto member>
using result_of = std::decay_t<typename traits_of<member>::result_type>;
template <auto member>
using argument_of = std::decay_t<std::tuple_element_t<0, typename traits_of<member>::arguments_type>>;
template <auto member>
constexpr std::size_t arguments_of = std::tuple_size_v<typename traits_of<member>::arguments_type>;
template <auto member>
constexpr bool is_given = !std::is_null_pointer_v<std::remove_const_t<decltype(member)>>;

/// The façade that an accessor hands out, by pointer or by reference.
template <auto enter>
using child_of = std::remove_pointer_t<result_of<enter>>;

/// An operation of a façade, inherited ones too: the object is the façade itself, never its base.
template <class facade_t, auto operation, class... arguments_t>
decltype(auto) call(void* object, arguments_t&&... arguments)
{
    typename traits_of<operation>::owner_type& owner = *static_cast<facade_t*>(object);
    return (owner.*operation)(std::forward<arguments_t>(arguments)...);
}

/// The result of an operation that may have none.
template <class facade_t, auto operation, class... arguments_t>
bool succeeds(void* object, arguments_t&&... arguments)
{
    if constexpr (std::is_void_v<typename traits_of<operation>::result_type>) {
        call<facade_t, operation>(object, std::forward<arguments_t>(arguments)...);
        return true;
    }
    else
        return static_cast<bool>(call<facade_t, operation>(object, std::forward<arguments_t>(arguments)...));
}

template <class facade_t, auto enter, class... index_t>
void* child_at(void* object, index_t... index)
{
    if constexpr (std::is_pointer_v<typename traits_of<enter>::result_type>)
        return call<facade_t, enter>(object, index...);
    else
        return &call<facade_t, enter>(object, index...);
}

/// The type of one item of a setting: of the list's items where the value is a list, else of the value.
template <class value_t>
struct item_type_t
{
    using type = value_t;
};
template <class value_t>
struct item_type_t<std::vector<value_t>>
{
    using type = value_t;
};

template <class value_t, class list_t>
std::vector<std::string> texts_of(const list_t& list)
{
    using item_t = typename item_type_t<value_t>::type;
    std::vector<std::string> texts;
    for (const auto& item : list)
        texts.push_back(cfg_nr_leaf_text_t<item_t>::to_text(static_cast<item_t>(item)));
    return texts;
}

/// Rows of one kind that belong to one façade.
template <class facade_t, class row_t, std::size_t count>
struct rows_t
{
    std::array<row_t, count> rows;
};

} // namespace cfg_nr_leaf_detail

/// A setting of one façade while its table is made.
template <class facade_t>
struct cfg_nr_leaf_row_t
{
    cfg_nr_leaf_t leaf;
    const char* follower = nullptr;

    /// A recall takes this setting directly ahead of another, wherever it stands in the file. Several ahead of the same
    /// one keep their order.
    constexpr cfg_nr_leaf_row_t before(const char* name) const
    {
        cfg_nr_leaf_row_t row = *this;
        row.follower = name;
        return row;
    }
    /// Some values are reached by way of other settings alone; the function gives them for the value that stands now.
    template <auto detour>
    constexpr cfg_nr_leaf_row_t by_way_of() const
    {
        cfg_nr_leaf_row_t row = *this;
        row.leaf.calls.detour = [](void* facade) { return detour(*static_cast<const facade_t*>(facade)); };
        return row;
    }
    /// The settings tree does not hold it.
    constexpr cfg_nr_leaf_row_t outside_tree() const
    {
        cfg_nr_leaf_row_t row = *this;
        row.leaf.in_tree = false;
        return row;
    }
};

/// The settings of one façade, with the order in which a recall takes them.
template <class facade_t, std::size_t count>
class cfg_nr_leaves_of_t
{
public:
    /// Throws where a row moves ahead of a setting that is not there, or of itself, or where a name stands twice: a
    /// table with such a row does not compile.
    constexpr explicit cfg_nr_leaves_of_t(const std::array<cfg_nr_leaf_row_t<facade_t>, count>& rows)
    {
        for (std::size_t i = 0; i < count; ++i) {
            leaves[i] = rows[i].leaf;
            for (std::size_t k = 0; k < i; ++k)
                if (std::string_view(leaves[k].name) == leaves[i].name)
                    throw std::invalid_argument(leaves[i].name);
        }
        std::size_t placed = 0;
        for (std::size_t i = 0; i < count; ++i)
            if (!rows[i].follower)
                recall_order[placed++] = static_cast<unsigned short>(i);
        // What moves ahead of a row that moves itself waits until that one has its place.
        for (std::array<bool, count> moved{}; placed < count;) {
            const std::size_t before = placed;
            for (std::size_t i = 0; i < count; ++i)
                if (rows[i].follower && !moved[i])
                    if (const std::size_t at = _place_of(rows[i].follower, placed); at < placed) {
                        _insert(at, i, placed++);
                        moved[i] = true;
                    }
            if (placed == before)
                throw std::invalid_argument("a setting is recalled before one that is not there");
        }
    }

    /// The same, with these settings recalled first, in the order given. For runs of rows that façades share but take
    /// in an order of their own.
    constexpr cfg_nr_leaves_of_t recalled_first(std::initializer_list<const char*> names) const
    {
        cfg_nr_leaves_of_t leaves_of = *this;
        std::size_t first = 0;
        for (const char* name : names) {
            const std::size_t at = leaves_of._place_of(name, count);
            if (at < first || at == count)
                throw std::invalid_argument(name);
            const unsigned short leaf = leaves_of.recall_order[at];
            for (std::size_t i = at; i > first; --i)
                leaves_of.recall_order[i] = leaves_of.recall_order[i - 1];
            leaves_of.recall_order[first++] = leaf;
        }
        return leaves_of;
    }

    std::array<cfg_nr_leaf_t, count> leaves{};
    std::array<unsigned short, count> recall_order{};

private:
    constexpr std::size_t _place_of(std::string_view name, std::size_t placed) const
    {
        std::size_t at = 0;
        while (at < placed && name != leaves[recall_order[at]].name)
            ++at;
        return at;
    }
    constexpr void _insert(std::size_t at, std::size_t leaf, std::size_t placed)
    {
        for (std::size_t i = placed; i > at; --i)
            recall_order[i] = recall_order[i - 1];
        recall_order[at] = static_cast<unsigned short>(leaf);
    }
};

/// The table of one façade. A branch takes only that of the façade that its accessor hands out.
template <class facade_t>
class cfg_nr_table_of_t : public cfg_nr_facade_table_t
{
public:
    /// Settings, figures, verbs and branches, in any order; what a façade has none of is left out.
    template <class... parts_t>
    constexpr explicit cfg_nr_table_of_t(const char* block, const parts_t&... parts)
    {
        element = block;
        (_take(parts), ...);
    }

private:
    template <std::size_t count>
    constexpr void _take(const cfg_nr_leaves_of_t<facade_t, count>& part)
    {
        leaves = part.leaves;
        recall_order = part.recall_order;
    }
    template <std::size_t count>
    constexpr void _take(const cfg_nr_leaf_detail::rows_t<facade_t, cfg_nr_figure_t, count>& part)
    {
        figures = part.rows;
    }
    template <std::size_t count>
    constexpr void _take(const cfg_nr_leaf_detail::rows_t<facade_t, cfg_nr_verb_t, count>& part)
    {
        verbs = part.rows;
    }
    template <std::size_t count>
    constexpr void _take(const cfg_nr_leaf_detail::rows_t<facade_t, cfg_nr_branch_t, count>& part)
    {
        branches = part.rows;
    }
};

/// A figure, verb or branch of one façade while its table is made.
template <class facade_t, class row_t>
struct cfg_nr_row_of_t : row_t
{
    /// A branch whose blocks the settings tree does not hold.
    constexpr cfg_nr_row_of_t outside_tree() const
    {
        cfg_nr_row_of_t row = *this;
        row.in_tree = false;
        return row;
    }
    /// A branch of which a recall applies one setting once more to every entry when all are done.
    constexpr cfg_nr_row_of_t recalled_twice(const char* leaf) const
    {
        cfg_nr_row_of_t row = *this;
        row.row_t::recalled_twice = leaf;
        return row;
    }
    /// A list whose first index is not 0.
    template <auto first>
    constexpr cfg_nr_row_of_t first_index() const
    {
        cfg_nr_row_of_t row = *this;
        row.calls.first = [](void* parent) -> unsigned int {
            return cfg_nr_leaf_detail::call<facade_t, first>(parent);
        };
        return row;
    }
    /// A verb that acts on something below the façade: its path goes on with this name, and with the index if it takes
    /// one.
    constexpr cfg_nr_row_of_t of(const char* acted_on) const
    {
        cfg_nr_row_of_t row = *this;
        row.row_t::object = acted_on;
        return row;
    }
    /// A verb that drops edits that are not confirmed.
    constexpr cfg_nr_row_of_t drops_edits() const
    {
        cfg_nr_row_of_t row = *this;
        row.row_t::drops_edits = true;
        return row;
    }
    /// A verb that is done, but not in full, where it returns false.
    constexpr cfg_nr_row_of_t shortfall(const char* missing) const
    {
        cfg_nr_row_of_t row = *this;
        row.row_t::shortfall = missing;
        return row;
    }
    /// A verb with which the steps that bring a façade to its settings end.
    constexpr cfg_nr_row_of_t ends_steps() const
    {
        cfg_nr_row_of_t row = *this;
        row.row_t::ends_steps = true;
        return row;
    }
};

/// Makes the rows of one façade. Its operations may be inherited.
template <class facade_t>
struct rows_of_t
{
    using facade_type = facade_t;
    using leaf_row_t = cfg_nr_leaf_row_t<facade_t>;

    /// A setting. Text is written as the setter takes it and read as the getter gives it; `on_offer` is the getter of
    /// the list of what may be set at the moment, if there is one.
    template <auto get, auto set, auto on_offer = nullptr>
    static constexpr leaf_row_t leaf(const char* name, const char* help)
    {
        namespace detail = cfg_nr_leaf_detail;
        using read_t = cfg_nr_leaf_text_t<detail::result_of<get>>;
        using write_t = cfg_nr_leaf_text_t<detail::argument_of<set>>;
        leaf_row_t row{{name, help, write_t::form, true, {}}};
        row.leaf.calls.read = [](void* facade, unsigned int) {
            return read_t::to_text(detail::call<facade_t, get>(facade));
        };
        row.leaf.calls.write = [](void* facade, unsigned int, const std::string& text) -> std::optional<bool> {
            const auto value = write_t::from_text(text);
            if (!value)
                return std::nullopt;
            return detail::succeeds<facade_t, set>(facade, *value);
        };
        using item_t = typename detail::item_type_t<detail::argument_of<set>>::type;
        if constexpr (std::is_enum_v<item_t>)
            row.leaf.calls.write_number = [](void* facade, std::uint32_t number) {
                return detail::succeeds<facade_t, set>(facade, detail::argument_of<set>{static_cast<item_t>(number)});
            };
        row.leaf.calls.save = [](void* facade, pugi::xml_node& block, const char* element) {
            read_t::save(block, element, detail::call<facade_t, get>(facade));
        };
        row.leaf.calls.recall = [](void* facade, const pugi::xml_node& block, const char* element) {
            detail::succeeds<facade_t, set>(facade, write_t::recall(block, element));
        };
        row.leaf.calls.enumerators = &write_t::enumerators;
        if constexpr (detail::is_given<on_offer>)
            row.leaf.calls.on_offer = [](void* facade) {
                return detail::texts_of<detail::argument_of<set>>(detail::call<facade_t, on_offer>(facade));
            };
        return row;
    }

    /// A setting with several values: get(index), set(value, index). The settings tree holds none.
    template <auto count, auto get, auto set>
    static constexpr leaf_row_t indexed(const char* name, const char* help)
    {
        namespace detail = cfg_nr_leaf_detail;
        using text_t = cfg_nr_leaf_text_t<detail::argument_of<set>>;
        using index_t = detail::argument_of<get>;
        leaf_row_t row{{name, help, text_t::form, false, {}}};
        row.leaf.calls.count = [](void* facade) -> unsigned int { return detail::call<facade_t, count>(facade); };
        row.leaf.calls.read = [](void* facade, unsigned int index) {
            return text_t::to_text(detail::call<facade_t, get>(facade, static_cast<index_t>(index)));
        };
        row.leaf.calls.write = [](void* facade, unsigned int index, const std::string& text) -> std::optional<bool> {
            const auto value = text_t::from_text(text);
            if (!value)
                return std::nullopt;
            return detail::succeeds<facade_t, set>(facade, *value, static_cast<index_t>(index));
        };
        row.leaf.calls.enumerators = &text_t::enumerators;
        return row;
    }

    /// A figure or list without a setter.
    template <auto get>
    static constexpr cfg_nr_row_of_t<facade_t, cfg_nr_figure_t> figure(const char* name, const char* help)
    {
        namespace detail = cfg_nr_leaf_detail;
        return {{name, help, [](void* facade) {
                     return cfg_nr_leaf_text_t<detail::result_of<get>>::to_text(detail::call<facade_t, get>(facade));
                 }}};
    }

    /// An operation without a value, or with the index of one of the indexed settings' values.
    template <auto operation>
    static constexpr cfg_nr_row_of_t<facade_t, cfg_nr_verb_t> verb(const char* name, const char* help)
    {
        namespace detail = cfg_nr_leaf_detail;
        constexpr bool takes_index = detail::arguments_of<operation> == 1;
        cfg_nr_row_of_t<facade_t, cfg_nr_verb_t> row{{name, help, takes_index}};
        row.run = [](void* facade, [[maybe_unused]] unsigned int index) {
            if constexpr (takes_index)
                return detail::succeeds<facade_t, operation>(facade,
                                                             static_cast<detail::argument_of<operation>>(index));
            else
                return detail::succeeds<facade_t, operation>(facade);
        };
        return row;
    }

    /// A façade of which there is exactly one. Where the accessor does not place its cursor, `place` of the child does,
    /// at what `own_index` of this façade gives.
    template <auto enter, auto own_index = nullptr, auto place = nullptr>
    static constexpr cfg_nr_row_of_t<facade_t, cfg_nr_branch_t>
    single(const char* name, const cfg_nr_table_of_t<cfg_nr_leaf_detail::child_of<enter>>& table, const char* help)
    {
        namespace detail = cfg_nr_leaf_detail;
        cfg_nr_row_of_t<facade_t, cfg_nr_branch_t> row{{name, help, &table, true, nullptr, {}}};
        row.calls.enter = [](void* parent, unsigned int) {
            void* child = detail::child_at<facade_t, enter>(parent);
            if constexpr (detail::is_given<place>)
                detail::call<detail::child_of<enter>, place>(child, detail::call<facade_t, own_index>(parent));
            return child;
        };
        return row;
    }

    /// A list of façades: its count, the accessor by index, and its operations as far as it has them.
    template <auto count, auto enter, auto add = nullptr, auto copy = nullptr, auto remove = nullptr>
    static constexpr cfg_nr_row_of_t<facade_t, cfg_nr_branch_t>
    list(const char* name, const cfg_nr_table_of_t<cfg_nr_leaf_detail::child_of<enter>>& table, const char* help)
    {
        namespace detail = cfg_nr_leaf_detail;
        cfg_nr_row_of_t<facade_t, cfg_nr_branch_t> row{{name, help, &table, true, nullptr, {}}};
        row.calls.count = [](void* parent) -> unsigned int { return detail::call<facade_t, count>(parent); };
        row.calls.enter = [](void* parent, unsigned int index) {
            return detail::child_at<facade_t, enter>(parent, static_cast<detail::argument_of<enter>>(index));
        };
        if constexpr (detail::is_given<add>)
            row.calls.add = [](void* parent) { return detail::succeeds<facade_t, add>(parent); };
        if constexpr (detail::is_given<copy>)
            row.calls.copy = [](void* parent, unsigned int index) {
                return detail::succeeds<facade_t, copy>(parent, index);
            };
        if constexpr (detail::is_given<remove>)
            row.calls.remove = [](void* parent, unsigned int index) {
                return detail::succeeds<facade_t, remove>(parent, index);
            };
        return row;
    }

    /// The settings in the order of the file: rows, and arrays of rows that façades share.
    template <class... parts_t>
    static constexpr auto leaves(const parts_t&... parts)
    {
        constexpr std::size_t count = (_length(static_cast<const parts_t*>(nullptr)) + ... + 0);
        std::array<leaf_row_t, count> rows{};
        std::size_t filled = 0;
        (_append(rows, filled, parts), ...);
        return cfg_nr_leaves_of_t<facade_t, count>(rows);
    }

    /// Figures, verbs or branches, in the order of the file.
    template <class row_t, class... rows_t>
    static constexpr auto rows(const cfg_nr_row_of_t<facade_t, row_t>& first, const rows_t&... others)
    {
        return cfg_nr_leaf_detail::rows_t<facade_t, row_t, 1 + sizeof...(rows_t)>{{first, others...}};
    }

    /// The table: the block's element in the settings tree, and the parts that the façade has.
    template <class... parts_t>
    static constexpr cfg_nr_table_of_t<facade_t> table(const char* element, const parts_t&... parts)
    {
        return cfg_nr_table_of_t<facade_t>(element, parts...);
    }

private:
    static constexpr std::size_t _length(const leaf_row_t*) { return 1; }
    template <std::size_t count>
    static constexpr std::size_t _length(const std::array<leaf_row_t, count>*)
    {
        return count;
    }
    template <std::size_t count>
    static constexpr void _append(std::array<leaf_row_t, count>& rows, std::size_t& filled, const leaf_row_t& row)
    {
        rows[filled++] = row;
    }
    template <std::size_t count, std::size_t shared>
    static constexpr void _append(std::array<leaf_row_t, count>& rows, std::size_t& filled,
                                  const std::array<leaf_row_t, shared>& run)
    {
        for (const leaf_row_t& row : run)
            rows[filled++] = row;
    }
};

} // namespace vek::nr_mod_lib

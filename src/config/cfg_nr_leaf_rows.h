#pragma once

#include "config/cfg_nr_leaf.h"
#include "config/cfg_nr_leaf_text.h"

#include <tuple>
#include <type_traits>

// How the rows of the leaf tables are made from pairs of façade operations. For the tables' sources alone: a host reads
// the rows through cfg_nr_leaf.h.

namespace vek::nr_mod_lib
{

namespace cfg_nr_leaf_detail
{

template <class member_t>
struct member_traits_t;

template <class facade_t, class result_t, class... arguments_t>
struct member_traits_t<result_t (facade_t::*)(arguments_t...)>
{
    using facade_type = facade_t;
    using result_type = result_t;
    using arguments_type = std::tuple<arguments_t...>;
};

template <class facade_t, class result_t, class... arguments_t>
struct member_traits_t<result_t (facade_t::*)(arguments_t...) const>
    : member_traits_t<result_t (facade_t::*)(arguments_t...)>
{
};

template <auto member>
using facade_of = typename member_traits_t<decltype(member)>::facade_type;
template <auto member>
using value_of = std::decay_t<typename member_traits_t<decltype(member)>::result_type>;

template <auto member>
using argument_of = std::decay_t<std::tuple_element_t<0, typename member_traits_t<decltype(member)>::arguments_type>>;

template <auto member>
facade_of<member>& facade_at(void* object)
{
    return *static_cast<facade_of<member>*>(object);
}

/// Façades hand their children out by pointer or by reference.
template <class child_t>
void* address_of(child_t&& child)
{
    if constexpr (std::is_pointer_v<std::decay_t<child_t>>)
        return child;
    else
        return &child;
}

/// The result of an operation that may have none.
template <auto operation, class... arguments_t>
bool succeeds(void* object, arguments_t... arguments)
{
    auto& facade = facade_at<operation>(object);
    if constexpr (std::is_void_v<typename member_traits_t<decltype(operation)>::result_type>) {
        (facade.*operation)(arguments...);
        return true;
    }
    else
        return (facade.*operation)(arguments...);
}

} // namespace cfg_nr_leaf_detail

/// The place of settings that the settings tree does not hold.
enum class cfg_nr_leaf_place_t
{
    tree,
    outside_tree,
};

/// The row of one setting; façade and form follow from the getter. The step orders the settings of a façade.
template <auto get, auto set>
constexpr cfg_nr_leaf_t leaf(const char* name, int step, cfg_nr_leaf_place_t place = cfg_nr_leaf_place_t::tree)
{
    namespace detail = cfg_nr_leaf_detail;
    using value_t = detail::value_of<get>;
    using text_t = cfg_nr_leaf_text_t<value_t>;

    cfg_nr_leaf_t row{};
    row.name = name;
    row.form = text_t::form;
    row.step = step;
    row.in_tree = place == cfg_nr_leaf_place_t::tree;
    row.read = [](void* facade) { return text_t::to_text((detail::facade_at<get>(facade).*get)()); };
    row.write = [](void* facade, const std::string& text) -> std::optional<bool> {
        const std::optional<value_t> value = text_t::from_text(text);
        if (!value)
            return std::nullopt;
        return detail::succeeds<set>(facade, *value);
    };
    row.save = [](void* facade, pugi::xml_node& block, const char* element) {
        text_t::save(block, element, (detail::facade_at<get>(facade).*get)());
    };
    row.recall = [](void* facade, const pugi::xml_node& block, const char* element) {
        detail::succeeds<set>(facade, text_t::recall(block, element));
    };
    row.enumerators = &text_t::enumerators;
    return row;
}

/// The row of a figure without a setter.
template <auto get>
constexpr cfg_nr_figure_t figure(const char* name)
{
    namespace detail = cfg_nr_leaf_detail;
    return {name, [](void* facade) {
                return cfg_nr_leaf_text_t<detail::value_of<get>>::to_text((detail::facade_at<get>(facade).*get)());
            }};
}

/// The row of a façade of which the parent has exactly one.
template <auto enter>
constexpr cfg_nr_branch_t single(const char* accessor, const cfg_nr_facade_table_t& facade)
{
    namespace detail = cfg_nr_leaf_detail;
    cfg_nr_branch_t row{};
    row.accessor = accessor;
    row.facade = &facade;
    row.in_tree = true;
    row.enter = [](void* parent, unsigned int) {
        return detail::address_of((detail::facade_at<enter>(parent).*enter)());
    };
    return row;
}

/// The operations of a list; `nullptr` where the façade has none.
template <auto count, auto enter, auto add, auto copy, auto remove>
constexpr cfg_nr_branch_t list(const char* accessor, const cfg_nr_facade_table_t& facade,
                               cfg_nr_leaf_place_t place = cfg_nr_leaf_place_t::tree,
                               const char* applied_twice = nullptr)
{
    namespace detail = cfg_nr_leaf_detail;
    cfg_nr_branch_t row{};
    row.accessor = accessor;
    row.facade = &facade;
    row.in_tree = place == cfg_nr_leaf_place_t::tree;
    row.applied_twice = applied_twice;
    row.count = [](void* parent) -> unsigned int { return (detail::facade_at<count>(parent).*count)(); };
    row.enter = [](void* parent, unsigned int index) {
        return detail::address_of(
            (detail::facade_at<enter>(parent).*enter)(static_cast<detail::argument_of<enter>>(index)));
    };
    if constexpr (!std::is_null_pointer_v<decltype(add)>)
        row.add = [](void* parent) { return detail::succeeds<add>(parent); };
    if constexpr (!std::is_null_pointer_v<decltype(copy)>)
        row.copy = [](void* parent, unsigned int index) { return detail::succeeds<copy>(parent, index); };
    if constexpr (!std::is_null_pointer_v<decltype(remove)>)
        row.remove = [](void* parent, unsigned int index) { return detail::succeeds<remove>(parent, index); };
    return row;
}

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What can be set, read and done at each façade, as tables: save and recall, the tool's paths and help, the manual, the
// tests' random walks and bindings to other languages all walk them. Nothing else lists settings.

namespace vek::nr_mod_lib
{

/// What kind of value a setting holds, and so how its text reads.
enum class cfg_nr_leaf_form_t
{
    boolean,          ///< true or false
    integer,          ///< whole number of 32 bits with a sign
    unsigned_integer, ///< whole number of 32 bits
    unsigned_short,   ///< whole number from 0 to 65535
    unsigned_byte,    ///< whole number from 0 to 255
    unsigned_long,    ///< whole number of 64 bits
    real,             ///< number with a fraction
    text,             ///< text as the setter takes it: a list of indices, bits, powers
    enumerator,       ///< the name of one enumerator
    enumerator_list,  ///< names separated by commas
    pair_list,        ///< pairs f:v separated by commas
};

/// One setting of a façade. All operations act on the façade where its cursor stands; an indexed setting has several
/// values, of which they take one, any other ignores the index.
struct cfg_nr_leaf_t
{
    /// The setter's name without set_, which is also the element's name in the settings tree.
    const char* name = nullptr;
    /// Meaning, unit and range, in one line.
    const char* help = nullptr;
    cfg_nr_leaf_form_t form{};
    /// Whether the settings tree holds the setting.
    bool in_tree = true;

    struct calls_t
    {
        std::string (*read)(void*, unsigned int) = nullptr;
        std::optional<bool> (*write)(void*, unsigned int, const std::string&) = nullptr;
        bool (*write_number)(void*, std::uint32_t) = nullptr;
        void (*save)(void*, pugi::xml_node&, const char*) = nullptr;
        void (*recall)(void*, const pugi::xml_node&, const char*) = nullptr;
        std::vector<std::string> (*enumerators)() = nullptr;
        std::vector<std::string> (*on_offer)(void*) = nullptr;
        unsigned int (*count)(void*) = nullptr;
        std::vector<std::pair<std::string, std::string>> (*detour)(void*) = nullptr;
    };
    calls_t calls;

    /// The value as text. A number reads back as the same number, whatever the locale.
    std::string read(void* facade, unsigned int index = 0) const { return calls.read(facade, index); }
    /// Hands a text to the setter: its result, or nothing, and no call, where the text is not of the form (rubbish, a
    /// fraction for a whole number, nan, an unknown enumerator). A whole number outside its type's range saturates.
    std::optional<bool> write(void* facade, const std::string& text, unsigned int index = 0) const
    {
        return calls.write(facade, index, text);
    }
    /// Whether the setting is an enumeration, or a list of its values, and so may be written by number.
    bool takes_number() const { return calls.write_number != nullptr; }
    /// Hands the setter the enumerator of a number, also of one that no name stands for, as a host's cast would; a list
    /// gets it as its one item. For what takes numbers alone.
    bool write_number(void* facade, std::uint32_t number) const { return calls.write_number(facade, number); }
    /// Appends the element to the block of its façade. An enumerator outside its table throws std::out_of_range.
    void save(void* facade, pugi::xml_node& block) const { calls.save(facade, block, name); }
    /// Hands the element's value to the setter: 0, false, the empty text or the first enumerator where it is missing.
    void recall(void* facade, const pugi::xml_node& block) const { calls.recall(facade, block, name); }
    /// The names that an enumeration knows, by rising value; empty for other forms.
    std::vector<std::string> enumerators() const { return calls.enumerators(); }
    /// Whether a list says what may be set at the moment.
    bool has_offer() const { return calls.on_offer != nullptr; }
    /// That list, as texts; for a list of enumerators the values that its items may take. Empty where nothing is on
    /// offer at the moment.
    std::vector<std::string> on_offer(void* facade) const
    {
        return has_offer() ? calls.on_offer(facade) : std::vector<std::string>{};
    }
    /// Where the setter does not take the value that stands now: names and values of settings of the same façade that
    /// lead to it, one after the other.
    std::vector<std::pair<std::string, std::string>> detour(void* facade) const
    {
        return calls.detour ? calls.detour(facade) : std::vector<std::pair<std::string, std::string>>{};
    }
    bool is_indexed() const { return calls.count != nullptr; }
    /// Number of values: 1 but for an indexed setting.
    unsigned int count(void* facade) const { return is_indexed() ? calls.count(facade) : 1; }
};

/// A figure or a list of a façade that follows from its settings and has no setter.
struct cfg_nr_figure_t
{
    const char* name = nullptr;
    const char* help = nullptr;
    std::string (*read)(void* facade) = nullptr;
};

/// What a façade does when told: confirm an edit, apply a preset, add and remove what indexed settings hold.
struct cfg_nr_verb_t
{
    const char* name = nullptr;
    const char* help = nullptr;
    /// Whether it acts on one of the values of the indexed settings.
    bool takes_index = false;
    /// What it acts on, a name behind the façade's path; null where it is the façade as a whole.
    const char* object = nullptr;
    /// Whether the steps that bring a façade to its settings end with it, as the confirmation of an edit does.
    bool ends_steps = false;
    /// Whether it drops edits that are not confirmed: those are no settings to save.
    bool drops_edits = false;
    /// What is missing of what it did where it returns false; null where false tells that the library refused.
    const char* shortfall = nullptr;
    /// The index is read only where the verb takes one.
    bool (*run)(void* facade, unsigned int index) = nullptr;
};

/// Rows of a table that lives as long as the program.
template <class row_t>
class cfg_nr_rows_t
{
public:
    constexpr cfg_nr_rows_t() = default;
    template <std::size_t count>
    constexpr cfg_nr_rows_t(const std::array<row_t, count>& rows) : m_begin(rows.data()), m_size(count)
    {}
    constexpr const row_t* begin() const { return m_begin; }
    constexpr const row_t* end() const { return m_begin + m_size; }
    constexpr std::size_t size() const { return m_size; }
    constexpr bool empty() const { return m_size == 0; }

private:
    const row_t* m_begin = nullptr;
    std::size_t m_size = 0;
};

struct cfg_nr_branch_t;

/// All that can be set, read, done and entered at one façade.
struct cfg_nr_facade_table_t
{
    /// The block's element in the settings tree.
    const char* element = nullptr;
    /// In the order of the file.
    cfg_nr_rows_t<cfg_nr_leaf_t> leaves;
    /// Places of the leaves in the order in which a recall, a listing or a manual takes them.
    cfg_nr_rows_t<unsigned short> recall_order;
    /// In the order of the file, which is that of the recall, behind the leaves.
    cfg_nr_rows_t<cfg_nr_branch_t> branches;
    cfg_nr_rows_t<cfg_nr_figure_t> figures;
    cfg_nr_rows_t<cfg_nr_verb_t> verbs;

    NR_MOD_LIB_EXPORT std::vector<const cfg_nr_leaf_t*> leaves_in_recall_order() const;
};

/// A façade below a façade: a single one, or one entry of a list.
struct cfg_nr_branch_t
{
    /// The accessor's name without get_.
    const char* name = nullptr;
    const char* help = nullptr;
    const cfg_nr_facade_table_t* facade = nullptr;
    /// Whether the settings tree holds the block.
    bool in_tree = true;
    /// The leaf that a recall applies once more to every entry when all are done; null where there is none.
    const char* recalled_twice = nullptr;

    struct calls_t
    {
        unsigned int (*count)(void*) = nullptr;
        unsigned int (*first)(void*) = nullptr;
        void* (*enter)(void*, unsigned int) = nullptr;
        bool (*add)(void*) = nullptr;
        bool (*copy)(void*, unsigned int) = nullptr;
        bool (*remove)(void*, unsigned int) = nullptr;
    };
    calls_t calls;

    bool is_list() const { return calls.count != nullptr; }
    /// Number of entries; 1 for a single façade.
    unsigned int count(void* parent) const { return is_list() ? calls.count(parent) : 1; }
    /// The index of the first entry, as the accessor takes it; those of the others follow.
    unsigned int first(void* parent) const { return calls.first ? calls.first(parent) : 0; }
    /// Whether an entry has this index.
    bool holds(void* parent, unsigned int index) const
    {
        return index >= first(parent) && index - first(parent) < count(parent);
    }
    /// Moves the cursor to an entry and gives its façade; a single façade ignores the index.
    void* enter(void* parent, unsigned int index) const { return calls.enter(parent, index); }
    /// The entry at a place, which counts from 0 in every list.
    void* enter_place(void* parent, unsigned int place) const { return enter(parent, first(parent) + place); }

    bool can_add() const { return calls.add != nullptr; }
    bool can_copy() const { return calls.copy != nullptr; }
    bool can_remove() const { return calls.remove != nullptr; }
    /// False where the list has no such operation or the library refuses.
    bool add(void* parent) const { return can_add() && calls.add(parent); }
    bool copy(void* parent, unsigned int index) const { return can_copy() && calls.copy(parent, index); }
    bool remove(void* parent, unsigned int index) const { return can_remove() && calls.remove(parent, index); }
};

/// The root of all tables; its façade is a cfg_nr_waveform_t.
NR_MOD_LIB_EXPORT extern const cfg_nr_facade_table_t g_cfg_nr_waveform_table;

/// The row of a name; null where the table has none.
template <class row_t>
const row_t* find_row(const cfg_nr_rows_t<row_t>& rows, std::string_view name)
{
    for (const row_t& row : rows)
        if (name == row.name)
            return &row;
    return nullptr;
}

} // namespace vek::nr_mod_lib

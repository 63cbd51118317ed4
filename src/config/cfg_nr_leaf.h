#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstddef>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// What kind of value a setting holds, and so how its text reads.
enum class cfg_nr_leaf_form_t
{
    boolean,          ///< true or false
    integer,          ///< whole number of 32 bits with a sign
    unsigned_integer, ///< whole number of 32 bits
    unsigned_byte,    ///< whole number from 0 to 255
    unsigned_long,    ///< whole number of 64 bits
    real,             ///< number with a fraction
    text,             ///< text as the setter takes it: a list of indices, bits, powers
    enumerator,       ///< the name of one enumerator
    enumerator_list,  ///< names separated by commas
    pair_list,        ///< pairs f:v separated by commas
};

/// One setting of a façade: a row of plain functions, each on the façade where its cursor stands.
struct cfg_nr_leaf_t
{
    /// The setter's name without set_, which is also the element's name in the settings tree.
    const char* name;
    cfg_nr_leaf_form_t form;
    /// Place in the order in which a recall, a listing or a walk applies the settings of one façade.
    int step;
    /// Whether the settings tree holds the setting.
    bool in_tree;

    /// The value as text. A number reads back as the same number, whatever the locale.
    std::string (*read)(void* facade);
    /// Hands a text to the setter: its result, or nothing, and no call, where the text is not of the form (rubbish, a
    /// fraction for a whole number, nan, an unknown enumerator). A whole number outside its type's range saturates.
    std::optional<bool> (*write)(void* facade, const std::string& text);
    /// Appends the element to the block of its façade. An enumerator outside its table throws std::out_of_range.
    void (*save)(void* facade, pugi::xml_node& block, const char* element);
    /// Hands the element's value to the setter: 0, false, the empty text or the first enumerator where it is missing.
    void (*recall)(void* facade, const pugi::xml_node& block, const char* element);
    /// The names that an enumeration knows, by rising value; empty for other forms.
    std::vector<std::string> (*enumerators)();
};

/// A figure of a façade that follows from its settings and has no setter.
struct cfg_nr_figure_t
{
    const char* name;
    std::string (*read)(void* facade);
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

private:
    const row_t* m_begin = nullptr;
    std::size_t m_size = 0;
};

struct cfg_nr_branch_t;

/// All that can be set, read and entered at one façade.
struct cfg_nr_facade_table_t
{
    /// The block's element in the settings tree.
    const char* element;
    /// In the order of the file.
    cfg_nr_rows_t<cfg_nr_leaf_t> leaves;
    /// In the order of the file, which is that of the recall, behind the leaves.
    cfg_nr_rows_t<cfg_nr_branch_t> branches;
    cfg_nr_rows_t<cfg_nr_figure_t> figures;

    /// The leaves by rising step.
    NR_MOD_LIB_EXPORT std::vector<const cfg_nr_leaf_t*> leaves_by_step() const;
};

/// A façade below a façade: a single one, or one entry of a list.
struct cfg_nr_branch_t
{
    /// The accessor's name without get_.
    const char* accessor;
    const cfg_nr_facade_table_t* facade;
    /// Whether the settings tree holds the block.
    bool in_tree;
    /// The leaf that a recall applies once more to every entry when all are done; null where there is none.
    const char* applied_twice;

    /// Number of entries; null for a single façade.
    unsigned int (*count)(void* parent);
    /// Moves the cursor to an entry below the count and gives its façade; a single façade ignores the index.
    void* (*enter)(void* parent, unsigned int index);
    /// List operations, each null where the list has none; false where the library refuses.
    bool (*add)(void* parent);
    bool (*copy)(void* parent, unsigned int index);
    bool (*remove)(void* parent, unsigned int index);

    bool is_list() const { return count != nullptr; }
    unsigned int entries(void* parent) const { return is_list() ? count(parent) : 1; }
};

/// The root of all tables; its façade is a cfg_nr_waveform_t.
NR_MOD_LIB_EXPORT extern const cfg_nr_facade_table_t g_cfg_nr_waveform_table;

} // namespace vek::nr_mod_lib

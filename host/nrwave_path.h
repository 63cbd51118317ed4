#pragma once

#include "config/cfg_nr_waveform.h"
#include "config/leaves/cfg_nr_leaf.h"

#include <optional>
#include <string>
#include <utility>

namespace nrwave
{

/// What a path names. The façades are cursors: a target is good until the next path is resolved.
struct target_t
{
    /// The façade that the path ends at, or that its last name belongs to.
    void* facade = nullptr;
    const vek::nr_mod_lib::cfg_nr_facade_table_t* table = nullptr;
    /// Where the last name is a setting, a figure, or a list without (all of it) or with an index (one entry). A
    /// setting with several values has an index too.
    const vek::nr_mod_lib::cfg_nr_leaf_t* leaf = nullptr;
    const vek::nr_mod_lib::cfg_nr_figure_t* figure = nullptr;
    const vek::nr_mod_lib::cfg_nr_branch_t* list = nullptr;
    void* list_parent = nullptr;
    std::optional<unsigned int> index;
};

/// Which of a setting and a list of one name a path without an index means: carrier[0].numerology is both.
enum class reading_t
{
    setting_first,
    list_first,
    /// As a setting; [i] is the first entry of a list.
    any_entry,
};

/// Follows a path such as carrier[0].dl_ssb.active_idx; the empty path is the waveform. An unknown name, a missing or
/// needless index and an index past the end are failures that say so.
target_t resolve(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path,
                 reading_t reading = reading_t::setting_first);

/// The value of a setting, or nothing where its path leads nowhere.
std::optional<std::string> value_at(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path);

/// Whether a path ended at a façade, not at a value or a list as a whole.
bool is_facade(const target_t& target);

/// The target of the same path in a fresh waveform, where every list begins with the entry that an added one equals.
target_t resolve_first(vek::nr_mod_lib::cfg_nr_waveform_t& fresh, std::string path);

/// A verb of the façade at a path, or of what it acts on there, with the index behind the path where it takes one.
struct verb_target_t
{
    void* facade = nullptr;
    const vek::nr_mod_lib::cfg_nr_verb_t* verb = nullptr;
    unsigned int index = 0;
};

/// No verb where there is none of the name for what the path names.
verb_target_t resolve_verb(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& verb,
                           const std::string& path);

/// The part of a path above its last name, and that name.
std::pair<std::string, std::string> split_last(const std::string& path);
/// Joins a path and a name below it.
std::string below(const std::string& path, const std::string& name);
/// The path of an entry of a list.
std::string entry(const std::string& list, unsigned int index);

} // namespace nrwave

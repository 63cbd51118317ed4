#pragma once

#include "config/leaves/cfg_nr_leaf.h"

#include <string>
#include <vector>

namespace nrwave
{

/// The path of a setting, of one of its values where it has several.
std::string setting_path(const std::string& facade, const vek::nr_mod_lib::cfg_nr_leaf_t& leaf, unsigned int index = 0);
/// The step that gives a setting of a façade the value that it has there.
std::string setting_step(const std::string& path, const vek::nr_mod_lib::cfg_nr_leaf_t& leaf, void* facade,
                         unsigned int index = 0);
/// Appends the steps that lead to that value where it stands now: mostly that one alone.
void append_steps_to(std::vector<std::string>& steps, const std::string& path,
                     const vek::nr_mod_lib::cfg_nr_leaf_t& leaf, void* facade, unsigned int index = 0);
/// The step that runs a verb of a façade, without an index.
std::string verb_step(const vek::nr_mod_lib::cfg_nr_verb_t& verb, const std::string& facade);

/// What was edited but not confirmed is not written down.
void drop_edits(const vek::nr_mod_lib::cfg_nr_facade_table_t& table, void* facade);
/// Number of values of a façade's indexed settings, which its verb `add` makes more; 0 where it has none.
unsigned int indexed_values(const vek::nr_mod_lib::cfg_nr_facade_table_t& table, void* facade);

} // namespace nrwave

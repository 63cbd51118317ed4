#pragma once

#include "config/cfg_nr_waveform.h"
#include "config/leaves/cfg_nr_leaf.h"

#include <random>
#include <string>
#include <vector>

namespace nr_test
{

/// A random walk over everything that the leaf tables offer: settings of any value in any order, list operations
/// between. The same seed walks the same way.
class leaf_walk_t
{
public:
    leaf_walk_t(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, unsigned int seed);

    /// A step that comes to settings takes several of them in a row, all of the same façade.
    void take_steps(unsigned int count, unsigned int settings = 1);
    /// Sets settings of the façade at a path alone.
    void take_steps_at(const std::string& path, unsigned int count);
    /// What was done so far, for the report of a failure.
    const std::string& history() const { return m_history; }

private:
    void _take_step(unsigned int settings);
    void _change_list(void* parent, const vek::nr_mod_lib::cfg_nr_branch_t& branch, const std::string& path);
    void _run(void* facade, const vek::nr_mod_lib::cfg_nr_verb_t& verb, const std::string& path);
    void _set(void* facade, const vek::nr_mod_lib::cfg_nr_leaf_t& leaf, const std::string& path);
    std::string _value(void* facade, const vek::nr_mod_lib::cfg_nr_leaf_t& leaf);
    std::string _whole_number();
    std::string _real();
    std::string _text();
    unsigned int _below(unsigned int limit)
    {
        return std::uniform_int_distribution<unsigned int>(0, limit - 1)(m_random);
    }

    vek::nr_mod_lib::cfg_nr_waveform_t& m_waveform;
    std::mt19937 m_random;
    std::string m_history;
};

/// A setting whose value differs between two waveforms.
struct difference_t
{
    std::string path;
    std::string first;
    std::string second;
};

/// All settings that hold what their list does not offer at the moment.
std::vector<difference_t> not_on_offer(vek::nr_mod_lib::cfg_nr_waveform_t& waveform);

/// Which settings count: those that the settings tree holds, or those from which an enabled channel's signal is made.
enum class scope_t
{
    in_the_tree,
    read_by_a_signal,
};

/// All settings that differ, and lists of unequal length, but for the channels and BWPs of a direction that a carrier
/// does not send.
std::vector<difference_t> differences(vek::nr_mod_lib::cfg_nr_waveform_t& first,
                                      vek::nr_mod_lib::cfg_nr_waveform_t& second, scope_t scope);

} // namespace nr_test

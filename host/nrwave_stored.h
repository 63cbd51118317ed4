#pragma once

#include "config/cfg_nr_waveform.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace nrwave
{

/// What steps have stored: a setting that a later step resets by the way is told at the end.
class stored_t
{
public:
    explicit stored_t(vek::nr_mod_lib::cfg_nr_waveform_t& waveform) : m_waveform(waveform) {}

    void remember(const std::string& path, const std::string& value) { m_values[path] = value; }
    void forget_all() { m_values.clear(); }
    /// An entry has left a list: what was stored in it goes, what was stored in the entries behind moves down.
    void remove_entry(const std::string& list, unsigned int index);
    /// What an operation rewrites is meant to be so and forgotten.
    void forget_rewritten(const std::function<void()>& operation);

    /// A line for each setting that no longer holds what its step stored.
    std::vector<std::string> resets() const;

private:
    vek::nr_mod_lib::cfg_nr_waveform_t& m_waveform;
    std::map<std::string, std::string> m_values;
};

} // namespace nrwave

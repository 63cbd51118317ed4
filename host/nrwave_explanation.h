#pragma once

#include "config/cfg_nr_waveform.h"
#include "phy/lib_nr_phy_observer.h"

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

namespace nrwave
{

/// Which slots are to be explained; what is not given is all of them.
struct explained_part_t
{
    std::optional<unsigned int> carrier;
    std::optional<std::string> channel; ///< a path, with or without the carrier and the index at its end
    std::optional<unsigned int> frame;  ///< of the waveform
    std::optional<unsigned int> slot;   ///< of the frame
};

/// Indices past the end are failures.
void check_part(const explained_part_t& part, vek::nr_mod_lib::cfg_nr_waveform_t& waveform);

/// A slot of an entry as it was made, or why it was left out.
struct explained_slot_t
{
    vek::nr_mod_lib::lib_nr_explanation_t explanation;
    std::string reason; ///< empty where it was sent
};

/// Keeps what an engine tells of a part of the waveform.
class explanations_t : public vek::nr_mod_lib::lib_nr_phy_observer_t
{
public:
    explicit explanations_t(const explained_part_t& part) : m_part(part) {}

    void note(const vek::nr_mod_lib::lib_nr_explanation_t& explanation) override;
    /// The slots that were sent, and where the part names a slot those that were not, in the order of the record's
    /// entries, then of time. A part whose channel is nowhere enabled is a failure.
    std::vector<explained_slot_t> take(const vek::nr_mod_lib::lib_nr_phy_record_t& record, unsigned int frames);

private:
    bool _is_asked_for(const vek::nr_mod_lib::lib_nr_channel_entry_t& entry) const;
    std::vector<explained_slot_t> _slots_of(const vek::nr_mod_lib::lib_nr_entry_record_t& entry, unsigned int frames);

    explained_part_t m_part;
    std::vector<vek::nr_mod_lib::lib_nr_explanation_t> m_noted;
};

/// A paragraph for each slot.
std::string text_of(const std::vector<explained_slot_t>& slots);
/// An object for each slot, under fixed names.
nlohmann::ordered_json json_of(const std::vector<explained_slot_t>& slots);

} // namespace nrwave

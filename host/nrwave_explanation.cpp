#include "host/nrwave_explanation.h"

#include "host/nrwave_digits.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_record.h"
#include "host/nrwave_value.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace nrwave
{

using namespace vek::nr_mod_lib;
using nlohmann::ordered_json;

namespace
{

std::string past_the_end(const char* what, unsigned int index, unsigned int number)
{
    return std::string(what) + ' ' + std::to_string(index) + " is past the end: there are " + std::to_string(number);
}

/// The most slots that a frame of a carrier has.
unsigned int slots_of_frame(cfg_nr_carrier_t& carrier)
{
    unsigned int most = 0;
    for (int n = 0; n < static_cast<int>(carrier.get_numerology_number()); ++n)
        most = std::max(most, lib_nr_phy_common_t::get_slot_in_frame(carrier.get_numerology(n)->get_scs()));
    return most;
}

bool is_path_of(const std::string& path, const std::string& asked)
{
    const std::string within_carrier = path.substr(path.find('.') + 1);
    const auto without_index = [](const std::string& text) {
        return text.ends_with(']') ? text.substr(0, text.rfind('[')) : text;
    };
    return asked == path || asked == within_carrier || asked == without_index(path) ||
           asked == without_index(within_carrier);
}

/// Numbers as a list of runs, in their order.
template <class number_t>
std::string runs_text(const std::vector<number_t>& numbers)
{
    std::string text;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::size_t first = i;
        while (i + 1 < numbers.size() && numbers[i + 1] == numbers[i] + 1)
            ++i;
        text += text.empty() ? "" : ",";
        text += std::to_string(numbers[first]);
        if (i > first)
            text.append(1, ':').append(std::to_string(numbers[i]));
    }
    return text;
}

template <class number_t>
std::string list_text(const std::vector<number_t>& numbers)
{
    std::string text;
    for (const number_t number : numbers) {
        text += text.empty() ? "" : ",";
        text += std::to_string(number);
    }
    return text;
}

class paragraph_t
{
public:
    explicit paragraph_t(std::string head) : m_text(std::move(head) + '\n') {}

    /// Nothing where there is no value.
    void add(const std::string& name, const std::string& value)
    {
        constexpr std::size_t k_width = 22;
        if (!value.empty())
            m_text += "  " + name + std::string(name.size() < k_width ? k_width - name.size() : 1, ' ') + value + '\n';
    }
    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

std::string text_of(const lib_nr_explained_coding_t& coding)
{
    std::string text = std::to_string(coding.tbs) + " bits";
    if (coding.base_graph)
        text += ", base graph " + std::to_string(*coding.base_graph) + ", Z " + std::to_string(*coding.lifting);
    text += ", " + std::to_string(coding.code_blocks) + (coding.code_blocks == 1 ? " code block" : " code blocks") +
            ", E " + list_text(coding.e) + ", G " + std::to_string(coding.g);
    return coding.k0 ? text + ", k0 " + std::to_string(*coding.k0) : text;
}

std::string text_of(const lib_nr_explained_stage_t& stage)
{
    return std::to_string(stage.bits) + " bits, " + stage.first +
           (stage.bits > stage.first.size() ? " ... " + stage.last : "");
}

std::string text_of(const lib_nr_explained_cell_t& cell)
{
    const std::string imaginary = fixed(cell.value.imag(), 6);
    return "symbol " + std::to_string(cell.symbol) + ", subcarrier " + std::to_string(cell.subcarrier) + ": " +
           fixed(cell.value.real(), 6) + (imaginary.front() == '-' ? "" : "+") + imaginary + 'j';
}

std::string text_of(const explained_slot_t& slot)
{
    const lib_nr_explanation_t& told = slot.explanation;
    paragraph_t paragraph(path_of(told) + ", frame " + std::to_string(told.frame) + ", slot " +
                          std::to_string(told.slot) + (slot.reason.empty() ? "" : ": not sent: " + slot.reason));
    if (told.index)
        paragraph.add("block", std::to_string(*told.index));
    paragraph.add("symbols", runs_text(told.symbols));
    paragraph.add("RBs", runs_text(told.rbs));
    paragraph.add("second hop", runs_text(told.second_hop_rbs));
    paragraph.add("CCEs", runs_text(told.cces));
    for (const lib_nr_explained_figure_t& figure : told.figures)
        paragraph.add(std::string(figure.name), std::to_string(figure.value));
    if (told.burst) {
        paragraph.add("root", std::to_string(told.burst->root));
        paragraph.add("cyclic shift", std::to_string(told.burst->cyclic_shift));
        paragraph.add("start sample", std::to_string(told.burst->start_sample));
    }
    paragraph.add("c_init", list_text(told.c_init));
    paragraph.add("DMRS symbols", runs_text(told.dmrs_symbols));
    paragraph.add("DMRS c_init", list_text(told.dmrs_c_init));
    paragraph.add("u", list_text(told.u));
    paragraph.add("v", list_text(told.v));
    if (told.coding)
        paragraph.add("coding", text_of(*told.coding));
    for (const lib_nr_explained_stage_t& stage : told.stages)
        paragraph.add(std::string(stage.name), text_of(stage));
    for (const lib_nr_explained_cell_t& cell : told.cells)
        paragraph.add("cell", text_of(cell));
    return paragraph.text();
}

ordered_json or_null(const std::optional<unsigned int>& number)
{
    return number ? ordered_json(*number) : ordered_json();
}

void add_coding(const lib_nr_explained_coding_t& coding, ordered_json& json)
{
    json["tbs"] = coding.tbs;
    json["base_graph"] = or_null(coding.base_graph);
    json["lifting"] = or_null(coding.lifting);
    json["code_blocks"] = coding.code_blocks;
    json["e"] = coding.e;
    json["g"] = coding.g;
    json["k0"] = or_null(coding.k0);
}

/// What some channels alone have.
void add_own(const lib_nr_explanation_t& told, ordered_json& json)
{
    if (!told.cces.empty())
        json["cces"] = told.cces;
    if (told.channel == "PUCCH" && told.dmrs_symbols.empty() && !told.u.empty()) { // format 0
        json["u"] = told.u;
        json["v"] = told.v;
    }
    if (told.index)
        json["index"] = *told.index;
    if (told.burst) {
        json["root"] = told.burst->root;
        json["cyclic_shift"] = told.burst->cyclic_shift;
        json["start_sample"] = told.burst->start_sample;
    }
}

ordered_json json_of(const explained_slot_t& slot)
{
    const lib_nr_explanation_t& told = slot.explanation;
    ordered_json json = {{"path", path_of(told)},
                         {"frame", told.frame},
                         {"slot", told.slot},
                         {"sent", slot.reason.empty()},
                         {"reason", slot.reason.empty() ? ordered_json() : ordered_json(slot.reason)},
                         {"symbols", told.symbols},
                         {"rbs", told.rbs}};
    if (!told.second_hop_rbs.empty())
        json["second_hop_rbs"] = told.second_hop_rbs;
    const bool is_list = told.channel == "CSI-RS" || told.channel == "PRS";
    json["c_init"] = is_list               ? ordered_json(told.c_init)
                     : told.c_init.empty() ? ordered_json()
                                           : ordered_json(told.c_init.front());
    json["dmrs_symbols"] = told.dmrs_symbols;
    json["dmrs_c_init"] = told.dmrs_c_init;
    if (told.coding)
        add_coding(*told.coding, json);
    if (!told.stages.empty()) {
        ordered_json& stages = json["stages"] = ordered_json::array();
        for (const lib_nr_explained_stage_t& stage : told.stages)
            stages.push_back(
                {{"name", stage.name}, {"bits", stage.bits}, {"first", stage.first}, {"last", stage.last}});
    }
    add_own(told, json);
    return json;
}

} // namespace

void check_part(const explained_part_t& part, cfg_nr_waveform_t& waveform)
{
    const unsigned int carriers = waveform.get_carrier_number();
    const unsigned int frames = waveform.get_frame_number();
    if (part.carrier && *part.carrier >= carriers)
        throw failure_t(past_the_end("carrier", *part.carrier, carriers));
    if (part.frame && *part.frame >= frames)
        throw failure_t(past_the_end("frame", *part.frame, frames));
    unsigned int slots = 0;
    for (unsigned int c = 0; c < carriers; ++c)
        if (part.carrier.value_or(c) == c)
            slots = std::max(slots, slots_of_frame(*waveform.get_carrier(c)));
    if (part.slot && *part.slot >= slots)
        throw failure_t(past_the_end("slot", *part.slot, slots));
}

bool explanations_t::_is_asked_for(const lib_nr_channel_entry_t& entry) const
{
    return m_part.carrier.value_or(entry.carrier) == entry.carrier &&
           (!m_part.channel || is_path_of(path_of(entry), *m_part.channel));
}

void explanations_t::note(const lib_nr_explanation_t& explanation)
{
    if (_is_asked_for(explanation) && m_part.frame.value_or(explanation.frame) == explanation.frame &&
        m_part.slot.value_or(explanation.slot) == explanation.slot)
        m_noted.push_back(explanation);
}

std::vector<explained_slot_t> explanations_t::take(const lib_nr_phy_record_t& record, unsigned int frames)
{
    std::vector<explained_slot_t> slots;
    bool is_enabled = !m_part.channel;
    for (const lib_nr_entry_record_t& entry : record.entries) {
        if (!_is_asked_for(entry))
            continue;
        is_enabled = true;
        for (explained_slot_t& slot : _slots_of(entry, frames))
            slots.push_back(std::move(slot));
    }
    m_noted.clear();
    if (!is_enabled)
        throw failure_t("no enabled channel is " + shortened(*m_part.channel));
    return slots;
}

/// What no process was run for in a slot that was asked for is left out for what the entry lacks as a whole.
std::vector<explained_slot_t> explanations_t::_slots_of(const lib_nr_entry_record_t& entry, unsigned int frames)
{
    std::vector<explained_slot_t> slots;
    const auto add = [&](const lib_nr_explanation_t& told, lib_nr_silence_t silence) {
        if (silence == LIB_NR_SILENCE_NONE)
            slots.push_back({told, {}});
        else if (m_part.slot)
            slots.push_back({told, reason_of_slot(entry, silence)});
    };
    for (unsigned int frame = 0; frame < frames; ++frame) {
        const std::size_t before = slots.size();
        for (const lib_nr_explanation_t& told : m_noted)
            if (told.frame == frame && told.channel == entry.channel && told.carrier == entry.carrier &&
                told.entry == entry.entry)
                add(told, told.silence);
        if (slots.size() == before && m_part.slot && m_part.frame.value_or(frame) == frame) {
            lib_nr_explanation_t left_out;
            static_cast<lib_nr_channel_entry_t&>(left_out) = entry;
            left_out.frame = frame;
            left_out.slot = *m_part.slot;
            const unsigned int in_frame = lib_nr_phy_common_t::get_slot_in_frame(entry.spacing);
            if (entry.silence != LIB_NR_SILENCE_NONE)
                add(left_out, entry.silence);
            else if (entry.channel != "PRACH" && left_out.slot >= in_frame)
                slots.push_back({left_out, "a frame has " + std::to_string(in_frame) + " slots of its spacing"});
            else
                add(left_out, LIB_NR_SILENCE_SLOT);
        }
        std::stable_sort(slots.begin() + static_cast<std::ptrdiff_t>(before), slots.end(),
                         [](const explained_slot_t& a, const explained_slot_t& b) {
                             return a.explanation.slot < b.explanation.slot;
                         });
    }
    return slots;
}

std::string text_of(const std::vector<explained_slot_t>& slots)
{
    std::string text;
    for (const explained_slot_t& slot : slots) {
        text += text.empty() ? "" : "\n";
        text += text_of(slot);
    }
    return text;
}

ordered_json json_of(const std::vector<explained_slot_t>& slots)
{
    ordered_json json = ordered_json::array();
    for (const explained_slot_t& slot : slots)
        json.push_back(json_of(slot));
    return json;
}

} // namespace nrwave

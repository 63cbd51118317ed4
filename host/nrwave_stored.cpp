#include "host/nrwave_stored.h"

#include "host/nrwave_path.h"
#include "host/nrwave_value.h"

#include <charconv>
#include <optional>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

bool still_holds(cfg_nr_waveform_t& waveform, const std::string& path, const std::string& stored,
                 const std::optional<std::string>& now)
{
    return now && (*now == stored || same_value(resolve(waveform, path).leaf->form, stored, *now));
}

} // namespace

void stored_t::remove_entry(const std::string& list, unsigned int index)
{
    const std::string front = list + '[';
    std::map<std::string, std::string> left;
    for (const auto& [path, value] : m_values) {
        unsigned int place = 0;
        const char* digits = path.data() + std::min(front.size(), path.size());
        const auto [behind, error] = std::from_chars(digits, path.data() + path.size(), place);
        if (path.rfind(front, 0) != 0 || error != std::errc{} || place < index)
            left[path] = value;
        else if (place > index)
            left[front + std::to_string(place - 1) + path.substr(static_cast<std::size_t>(behind - path.data()))] =
                value;
    }
    m_values.swap(left);
}

void stored_t::forget_rewritten(const std::function<void()>& operation)
{
    std::map<std::string, std::optional<std::string>> before;
    for (const auto& [path, value] : m_values)
        before[path] = value_at(m_waveform, path);
    operation();
    for (const auto& [path, value] : before)
        if (value_at(m_waveform, path) != value)
            m_values.erase(path);
}

std::vector<std::string> stored_t::resets() const
{
    std::vector<std::string> lines;
    for (const auto& [path, value] : m_values) {
        const std::optional<std::string> now = value_at(m_waveform, path);
        if (!still_holds(m_waveform, path, value, now))
            lines.push_back(path + ": stored " + shortened(value) +
                            (now ? ", reset to " + shortened(*now) : std::string(", taken away")) + " by a later step");
    }
    return lines;
}

} // namespace nrwave

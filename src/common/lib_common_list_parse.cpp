#include "common/lib_common_list_parse.h"

#include "common/lib_number_text.h"
#include "common/lib_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <limits>
#include <optional>
#include <string_view>

namespace vek::common_lib
{

namespace
{

constexpr std::size_t k_longest_list = 65536;
bool is_blank(char character) { return k_blanks.find(character) != std::string_view::npos; }

/// One entry of an index list; an index alone is a range of one.
struct index_range_t
{
    std::int64_t first;
    std::int64_t step;
    std::int64_t last;
};

std::optional<index_range_t> read_index_range(std::string_view entry)
{
    const std::vector<std::string_view> fields = split(entry, ":");
    if (fields.size() > 3)
        return std::nullopt;
    const auto first = read_whole_number(fields.front());
    const auto step = fields.size() == 3 ? read_whole_number(fields[1]) : 1;
    const auto last = read_whole_number(fields.back());
    if (!first || !step || !last || *step < 1 || *last < *first)
        return std::nullopt;
    return index_range_t{*first, *step, *last};
}

/// Indices from `lowest` to `highest` in the order in which they come, each once.
template <class index_t>
class index_collector_t
{
public:
    index_collector_t(std::int64_t lowest, std::int64_t highest)
        : m_lowest(lowest),
          m_highest(std::min(highest, lowest + static_cast<std::int64_t>(k_longest_list) - 1)),
          m_taken(m_highest < m_lowest ? 0 : static_cast<std::size_t>(m_highest - m_lowest + 1))
    {}

    /// Whether every index of the range was new and inside.
    bool add(const index_range_t& range)
    {
        const std::int64_t skipped =
            range.first < m_lowest ? (m_lowest - range.first + range.step - 1) / range.step : 0;
        const std::int64_t last = range.last - (range.last - range.first) % range.step;
        bool complete = skipped == 0 && last <= m_highest;
        for (std::int64_t i = range.first + skipped * range.step; i <= std::min(last, m_highest); i += range.step) {
            auto taken = m_taken[static_cast<std::size_t>(i - m_lowest)];
            if (taken)
                complete = false;
            else
                m_list.push_back(static_cast<index_t>(i));
            taken = true;
        }
        return complete;
    }

    std::vector<index_t>& list() { return m_list; }

private:
    std::int64_t m_lowest;
    std::int64_t m_highest;
    std::vector<bool> m_taken;
    std::vector<index_t> m_list;
};

template <class index_t>
std::string write_index_list(const std::vector<index_t>& list)
{
    std::string text;
    for (std::size_t begin = 0; begin < list.size();) {
        std::size_t end = begin + 1;
        while (end < list.size() && std::int64_t{list[end]} == std::int64_t{list[end - 1]} + 1)
            ++end;
        const bool is_run = end - begin > 2;
        if (!text.empty())
            text += ',';
        text += std::to_string(list[begin]);
        if (is_run)
            text += ':' + std::to_string(list[end - 1]);
        begin = is_run ? end : begin + 1;
    }
    return text;
}

template <class index_t>
bool read_index_list(const std::string& text, std::vector<index_t>& list, std::string& stored_text, std::int64_t first,
                     std::int64_t last)
{
    const std::int64_t lowest = std::is_signed_v<index_t> ? first : std::max<std::int64_t>(first, 0);
    index_collector_t<index_t> collector(lowest, last);
    bool complete = true;
    for (const std::string_view entry : split(text, ",")) {
        const auto range = read_index_range(entry);
        complete = range && collector.add(*range) && complete;
    }
    list = std::move(collector.list());
    if (complete) {
        std::string kept = text;
        kept.erase(std::remove_if(kept.begin(), kept.end(), is_blank), kept.end());
        stored_text = std::move(kept);
    }
    else {
        stored_text = write_index_list(list);
    }
    return !list.empty();
}

/// Appends the values of one entry, a number or `first:step:count`; false for any other form.
bool append_floats(std::string_view entry, std::vector<double>& list)
{
    const std::vector<std::string_view> fields = split(entry, ":");
    double first = 0.0;
    if ((fields.size() != 1 && fields.size() != 3) || !lib_number_text_t::text_to_double(fields.front(), first))
        return false;
    double step = 0.0;
    double count = 1.0;
    if (fields.size() == 3) {
        if (!lib_number_text_t::text_to_double(fields[1], step) || !lib_number_text_t::text_to_double(fields[2], count))
            return false;
        if (count < 0.0 || count != std::floor(count))
            return false;
        count = std::min(count, static_cast<double>(k_longest_list));
        if (!std::isfinite(first + step * count))
            return false;
    }
    for (std::size_t i = 0; i < static_cast<std::size_t>(count) && list.size() < k_longest_list; ++i)
        list.push_back(first + step * static_cast<double>(i));
    return true;
}

} // namespace

void lib_common_list_parse_t::split_str(const std::string& text, std::vector<std::string>& parts,
                                        const std::string& separator)
{
    std::vector<std::string> found;
    if (separator.empty() && !text.empty())
        found.push_back(text);
    else if (!text.empty())
        for (const std::string_view part : split(text, separator))
            found.emplace_back(part);
    parts = std::move(found);
}

std::string lib_common_list_parse_t::combine_str(const std::vector<std::string>& parts, const std::string& separator)
{
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i)
        text += i == 0 ? parts[i] : separator + parts[i];
    return text;
}

bool lib_common_list_parse_t::str_to_int(const std::string& text, int& value)
{
    const auto number = read_whole_number(text);
    if (!number || *number < std::numeric_limits<int>::min() || *number > std::numeric_limits<int>::max())
        return false;
    value = static_cast<int>(*number);
    return true;
}

unsigned int lib_common_list_parse_t::_count_character_in_str(const std::string& text, char character)
{
    return static_cast<unsigned int>(std::count(text.begin(), text.end(), character));
}

bool lib_common_list_parse_t::string_to_bit_list(const std::string& text, std::vector<unsigned char>& bits)
{
    bits.clear();
    for (const char character : text) {
        if (character == '0' || character == '1') {
            bits.push_back(character == '1');
        }
        else if (character != ',' && !is_blank(character)) {
            bits.clear();
            return false;
        }
    }
    return !bits.empty();
}

std::string lib_common_list_parse_t::bit_list_to_string(const std::vector<unsigned char>& bits)
{
    std::string text(bits.size(), '0');
    for (std::size_t i = 0; i < bits.size(); ++i)
        if (bits[i] != 0)
            text[i] = '1';
    return text;
}

bool lib_common_list_parse_t::string_to_index_list(const std::string& text, std::vector<int>& list,
                                                   std::string& stored_text)
{
    return read_index_list(text, list, stored_text, 0, k_longest_list - 1);
}

bool lib_common_list_parse_t::string_to_index_list(const std::string& text, std::vector<unsigned int>& list,
                                                   std::string& stored_text)
{
    return read_index_list(text, list, stored_text, 0, k_longest_list - 1);
}

bool lib_common_list_parse_t::string_to_index_list_in_range(const std::string& text, std::vector<int>& list,
                                                            std::string& stored_text, int first, int last)
{
    return read_index_list(text, list, stored_text, first, last);
}

bool lib_common_list_parse_t::string_to_index_list_in_range(const std::string& text, std::vector<unsigned int>& list,
                                                            std::string& stored_text, int first, int last)
{
    return read_index_list(text, list, stored_text, first, last);
}

std::string lib_common_list_parse_t::index_list_to_string(const std::vector<int>& list)
{
    return write_index_list(list);
}

std::string lib_common_list_parse_t::index_list_to_string(const std::vector<unsigned int>& list)
{
    return write_index_list(list);
}

bool lib_common_list_parse_t::check_valid_content(const std::string& text)
{
    constexpr std::string_view digits = "0123456789";
    constexpr std::string_view allowed = "0123456789,:- \t\n\v\f\r";
    return text.find_first_of(digits) != std::string::npos && text.find_first_not_of(allowed) == std::string::npos;
}

bool lib_common_list_parse_t::string_to_float_list(const std::string& text, std::vector<double>& list)
{
    list.clear();
    if (trimmed(text).empty())
        return false;
    for (const std::string_view entry : split(text, ","))
        if (!append_floats(entry, list))
            std::cout << "cfg_custom_ofdm_common_t::_get_float_list Report : Unknown Data List String Format!"
                      << std::endl;
    return !list.empty();
}

std::string lib_common_list_parse_t::float_list_to_string(const std::vector<double>& list)
{
    std::string text;
    for (const double value : list) {
        char buffer[32];
        const auto written = std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::general, 6);
        if (!text.empty())
            text += ',';
        text.append(buffer, written.ptr);
    }
    return text;
}

} // namespace vek::common_lib

#include "host/nrwave_nearest.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nrwave
{

namespace
{

char lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

bool same_letter(char left, char right) { return lower(left) == lower(right); }

} // namespace

bool same_in_any_case(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), same_letter);
}

bool contains_in_any_case(std::string_view text, std::string_view word)
{
    return word.empty() || std::search(text.begin(), text.end(), word.begin(), word.end(), same_letter) != text.end();
}

unsigned int distance_between(std::string_view left, std::string_view right)
{
    // What lies behind makes no name nearer than another, but long words slow.
    constexpr std::size_t k_longest = 100;
    left = left.substr(0, k_longest);
    std::array<std::vector<unsigned int>, 3> rows; // for the letters of the left so far, one less, two less
    rows.fill(std::vector<unsigned int>(right.size() + 1));
    for (unsigned int j = 0; j <= right.size(); ++j)
        rows[0][j] = j;
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::rotate(rows.begin(), rows.end() - 1, rows.end());
        rows[0][0] = static_cast<unsigned int>(i);
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const auto same = [&](std::size_t a, std::size_t b) { return same_letter(left[a - 1], right[b - 1]); };
            rows[0][j] = std::min({rows[1][j] + 1, rows[0][j - 1] + 1, rows[1][j - 1] + (same(i, j) ? 0 : 1)});
            if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j))
                rows[0][j] = std::min(rows[0][j], rows[2][j - 2] + 1);
        }
    }
    return rows[0][right.size()];
}

std::string nearest_to(std::string_view word, const std::vector<std::string>& names)
{
    return nearest_by([&](const std::string& name) { return distance_between(word, name); }, names);
}

std::string nearest_by(const std::function<unsigned int(const std::string&)>& distance,
                       const std::vector<std::string>& names)
{
    constexpr std::size_t k_most = 3;
    std::vector<std::pair<unsigned int, const std::string*>> ordered;
    for (const std::string& name : names)
        ordered.emplace_back(distance(name), &name);
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    ordered.resize(std::min(ordered.size(), k_most));
    std::string text;
    for (const auto& [ignored, name] : ordered)
        text += (text.empty() ? "; nearest " : ", ") + *name;
    return text;
}

} // namespace nrwave

#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace nrwave
{

/// Whether two texts are the same but for the case of their letters.
bool same_in_any_case(std::string_view left, std::string_view right);

bool contains_in_any_case(std::string_view text, std::string_view word);

/// How many letters to put in, take out, change or swap with their neighbour make one word of the other, in any case.
unsigned int distance_between(std::string_view left, std::string_view right);

/// The end of a line on a name that is not known: "; nearest a, b, c", at most three names, the nearest first. Empty
/// without names.
std::string nearest_to(std::string_view word, const std::vector<std::string>& names);
/// The same by another distance.
std::string nearest_by(const std::function<unsigned int(const std::string&)>& distance,
                       const std::vector<std::string>& names);

} // namespace nrwave

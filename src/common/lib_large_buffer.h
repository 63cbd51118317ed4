#pragma once

#include <cstddef>
#include <vector>

namespace vek::common_lib
{

/// Tells the system that a range will be touched from end to end, so that it may lay it into huge pages: first touch
/// then costs a fault every 2 MB in place of one every 4 KB. Ranges below a few of those, and systems without, are left
/// alone.
void ask_for_huge_pages(void* begin, std::size_t bytes);

/// Makes room for a buffer of the length of a waveform or a frame. Storage that is too small is given back before the
/// new is taken, with its values; storage that is large enough stays as it is.
template <class value_t>
void make_room(std::vector<value_t>& buffer, std::size_t count)
{
    if (buffer.capacity() >= count)
        return;
    std::vector<value_t>().swap(buffer);
    buffer.reserve(count);
    ask_for_huge_pages(buffer.data(), buffer.capacity() * sizeof(value_t));
}

/// A buffer of `count` zeros.
template <class value_t>
void make_silent(std::vector<value_t>& buffer, std::size_t count)
{
    make_room(buffer, count);
    buffer.assign(count, value_t());
}

} // namespace vek::common_lib

#include "common/lib_large_buffer.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace vek::common_lib
{

void ask_for_huge_pages([[maybe_unused]] void* begin, [[maybe_unused]] std::size_t bytes)
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr std::uintptr_t k_page = std::uintptr_t{2} << 20U;
    const auto place = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = (place + k_page - 1) / k_page * k_page;
    const std::uintptr_t end = (place + bytes) / k_page * k_page;
    // A wish: a system that refuses it leaves everything right, only slower.
    if (first < end)
        static_cast<void>(madvise(static_cast<char*>(begin) + (first - place), end - first, MADV_HUGEPAGE));
#endif
}

} // namespace vek::common_lib

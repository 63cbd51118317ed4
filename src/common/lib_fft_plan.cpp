#include "common/lib_fft_plan.h"

#include "common/lib_fft_method.h"

#include <array>
#include <atomic>
#include <utility>

namespace vek::common_lib
{

namespace
{

std::shared_ptr<const detail::fft_method_t> make_method(std::size_t length)
{
    return length == 0 ? nullptr : detail::make_fft_method(length);
}

} // namespace

// The process's plans. Threads look and add without a lock: entries are only ever put in front of a list, and stay.
class lib_fft_plan_t::store_t
{
public:
    ~store_t()
    {
        for (std::atomic<entry_t*>& list : m_lists)
            for (entry_t* entry = list; entry != nullptr;)
                delete std::exchange(entry, entry->next);
    }

    const lib_fft_plan_t& get(std::size_t length, lib_fft_direction_t direction)
    {
        std::atomic<entry_t*>& list = m_lists[length % m_lists.size()];
        entry_t* first = list.load(std::memory_order_acquire);
        entry_t* found = find(first, length);
        if (found == nullptr) {
            auto made = std::make_unique<entry_t>(length);
            do {
                // Another thread may have been quicker.
                found = find(first, length);
                made->next = first;
            } while (found == nullptr && !list.compare_exchange_weak(first, made.get(), std::memory_order_release,
                                                                     std::memory_order_acquire));
            if (found == nullptr)
                found = made.release();
        }
        return direction == LIB_FFT_INVERSE ? found->inverse : found->forward;
    }

private:
    struct entry_t
    {
        explicit entry_t(std::size_t length) : entry_t(length, make_method(length)) {}
        entry_t(std::size_t length, const std::shared_ptr<const detail::fft_method_t>& method)
            : forward(length, LIB_FFT_FORWARD, method), inverse(length, LIB_FFT_INVERSE, method)
        {}

        lib_fft_plan_t forward;
        lib_fft_plan_t inverse;
        entry_t* next = nullptr;
    };

    static entry_t* find(entry_t* entry, std::size_t length)
    {
        while (entry != nullptr && entry->forward.get_length() != length)
            entry = entry->next;
        return entry;
    }

    // A prime number, for lengths are mostly multiples of powers of two.
    std::array<std::atomic<entry_t*>, 61> m_lists{};
};

std::atomic<void (*)(std::size_t, lib_fft_direction_t)> lib_fft_plan_t::s_observer = nullptr;

lib_fft_plan_t::lib_fft_plan_t(std::size_t length, lib_fft_direction_t direction)
    : lib_fft_plan_t(length, direction, make_method(length))
{}

lib_fft_plan_t::lib_fft_plan_t(std::size_t length, lib_fft_direction_t direction,
                               std::shared_ptr<const detail::fft_method_t> method)
    : m_length(length),
      m_direction(direction == LIB_FFT_INVERSE ? LIB_FFT_INVERSE : LIB_FFT_FORWARD),
      m_method(std::move(method))
{}

lib_fft_plan_t::~lib_fft_plan_t() = default;

const lib_fft_plan_t& lib_fft_plan_t::get(std::size_t length, lib_fft_direction_t direction)
{
    static store_t store;
    return store.get(length, direction);
}

void lib_fft_plan_t::execute(const std::complex<double>* in, std::complex<double>* out) const
{
    if (m_method == nullptr)
        return;
    if (auto* const observer = s_observer.load(std::memory_order_relaxed))
        observer(m_length, m_direction);
    m_method->execute(m_direction, in, out);
}

} // namespace vek::common_lib

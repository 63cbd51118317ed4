#pragma once

#include <atomic>
#include <memory>

namespace vek::common_lib
{

/// A value that is made when it is first asked for. Any number of threads may ask at once and none waits for another:
/// where several make it, the first to be done is kept. Where making it throws, nothing is kept and the next call tries
/// again. A copy begins without the value; a move takes it along.
template <class value_t>
class lib_made_on_demand_t
{
public:
    lib_made_on_demand_t() = default;
    lib_made_on_demand_t(const lib_made_on_demand_t&) noexcept {}
    lib_made_on_demand_t(lib_made_on_demand_t&& other) noexcept : m_value(other.m_value.exchange(nullptr)) {}
    lib_made_on_demand_t& operator=(const lib_made_on_demand_t& other) noexcept
    {
        if (this != &other)
            clear();
        return *this;
    }
    lib_made_on_demand_t& operator=(lib_made_on_demand_t&& other) noexcept
    {
        if (this != &other)
            _keep(other.m_value.exchange(nullptr));
        return *this;
    }
    ~lib_made_on_demand_t() { clear(); }

    /// Not while another thread asks.
    void clear() noexcept { _keep(nullptr); }

    /// The value, by a call of `make` where there is none yet. The reference holds until the value is cleared.
    template <class make_t>
    const value_t& get(make_t make) const
    {
        const value_t* found = m_value.load(std::memory_order_acquire);
        if (found != nullptr)
            return *found;
        auto made = std::make_unique<const value_t>(make());
        if (m_value.compare_exchange_strong(found, made.get(), std::memory_order_acq_rel, std::memory_order_acquire))
            found = made.release();
        return *found;
    }

private:
    void _keep(const value_t* value) noexcept { std::unique_ptr<const value_t>(m_value.exchange(value)); }

    mutable std::atomic<const value_t*> m_value = nullptr;
};

} // namespace vek::common_lib

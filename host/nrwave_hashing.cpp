#include "host/nrwave_hashing.h"

#include "host/nrwave_signals.h"

#include <utility>

namespace nrwave
{

hashing_t::hashing_t() : m_worker(without_signals([this] { return std::thread([this] { _work(); }); })) {}

hashing_t::~hashing_t() { _end(); }

void hashing_t::add(std::string& bytes)
{
    constexpr std::size_t k_most_waiting = 8;

    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_waiting.size() < k_most_waiting; });
    std::string room;
    if (!m_rooms.empty()) {
        room = std::move(m_rooms.front());
        m_rooms.pop_front();
    }
    m_waiting.push_back(std::exchange(bytes, std::move(room)));
    m_changed.notify_all();
}

std::string hashing_t::digest()
{
    _end();
    if (m_failure)
        std::rethrow_exception(m_failure);
    return m_hash.digest();
}

void hashing_t::_work()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [&] { return m_is_ended || !m_waiting.empty(); });
        if (m_waiting.empty())
            return;
        lock.unlock();
        try {
            m_hash.add(m_waiting.front()); // whose place nobody else touches, and no other block moves
        } catch (...) {
            m_failure = std::current_exception();
        }
        lock.lock();
        m_rooms.push_back(std::move(m_waiting.front()));
        m_waiting.pop_front();
        m_changed.notify_all();
    }
}

void hashing_t::_end()
{
    {
        const std::lock_guard lock(m_mutex);
        m_is_ended = true;
    }
    m_changed.notify_all();
    if (m_worker.joinable())
        m_worker.join();
}

} // namespace nrwave

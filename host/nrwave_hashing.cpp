#include "host/nrwave_hashing.h"

#include "host/nrwave_signals.h"

namespace nrwave
{

hashing_t::hashing_t() : m_worker(without_signals([this] { return std::thread([this] { _work(); }); })) {}

hashing_t::~hashing_t() { _end(); }

void hashing_t::add(std::string& bytes)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_given - m_taken < m_blocks.size(); });
    m_blocks[m_given % m_blocks.size()].swap(bytes);
    ++m_given;
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
        m_changed.wait(lock, [&] { return m_is_ended || m_taken < m_given; });
        if (m_taken == m_given)
            return;
        lock.unlock();
        try {
            m_hash.add(m_blocks[m_taken % m_blocks.size()]); // m_taken is changed by this thread alone
        } catch (...) {
            m_failure = std::current_exception();
        }
        lock.lock();
        ++m_taken;
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

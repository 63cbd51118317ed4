#include "host/nrwave_progress.h"

#include "host/nrwave_signals.h"

#include <chrono>
#include <string>
#include <unistd.h>

namespace nrwave
{

namespace
{

void put(const std::string& text) { (void)!::write(STDERR_FILENO, text.data(), text.size()); }

} // namespace

progress_t::progress_t(const char* work)
{
    if (::isatty(STDERR_FILENO) == 0)
        return;
    m_teller = without_signals([&] { return std::thread([this, work] { _tell(work); }); });
}

progress_t::~progress_t()
{
    if (!m_teller.joinable())
        return;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_is_done = true;
    }
    m_done.notify_one();
    m_teller.join();
}

void progress_t::_tell(const char* work)
{
    using namespace std::chrono_literals;

    const auto start = std::chrono::steady_clock::now();
    std::unique_lock<std::mutex> lock(m_mutex);
    bool has_told = false;
    for (auto wait = 2000ms; !m_done.wait_for(lock, wait, [this] { return m_is_done; }); wait = 1000ms) {
        const auto taken = std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start);
        put('\r' + std::string(work) + ", " + std::to_string(taken.count()) + " s");
        has_told = true;
    }
    if (has_told)
        put("\r\x1b[K");
}

} // namespace nrwave

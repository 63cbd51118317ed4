#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

namespace nrwave
{

/// While it lives and takes more than two seconds, a line on the terminal tells how long the work has taken. Where
/// standard error is no terminal it does nothing.
class progress_t
{
public:
    explicit progress_t(const char* work);
    ~progress_t();
    progress_t(const progress_t&) = delete;
    progress_t& operator=(const progress_t&) = delete;

private:
    void _tell(const char* work);

    std::mutex m_mutex;
    std::condition_variable m_done;
    bool m_is_done = false;
    std::thread m_teller;
};

} // namespace nrwave

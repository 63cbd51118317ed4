#include "host/nrwave_jobs.h"

#include "host/nrwave_failure.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <map>
#include <string_view>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace nrwave
{

namespace
{

using steady_clock_t = std::chrono::steady_clock;

/// What a process prints, in memory.
class printed_t
{
public:
    printed_t() : m_file(::memfd_create("nrwave", MFD_CLOEXEC))
    {
        if (m_file < 0)
            throw failure_t("cannot start a process: " + std::system_category().message(errno));
    }
    ~printed_t()
    {
        if (m_file >= 0)
            ::close(m_file);
    }
    printed_t(printed_t&& other) noexcept : m_file(std::exchange(other.m_file, -1)) {}
    printed_t& operator=(printed_t&&) = delete;
    printed_t(const printed_t&) = delete;
    printed_t& operator=(const printed_t&) = delete;

    int file() const { return m_file; }

    /// Its beginning: more than any line or summary needs, less than samples that went astray.
    std::string text() const
    {
        std::string text(std::size_t{1} << 20, '\0');
        const ssize_t size = ::pread(m_file, text.data(), text.size(), 0);
        text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        return text;
    }

private:
    int m_file;
};

struct process_t
{
    job_t* job = nullptr;
    steady_clock_t::time_point begin;
    printed_t out;
    printed_t err;
};

/// Waits for the signals that it holds back while it lives: the end of a process, and what asks the program to end.
class waited_signals_t
{
public:
    waited_signals_t()
    {
        m_child_before = std::signal(SIGCHLD, SIG_DFL); // where it is ignored no process can be waited for
        sigemptyset(&m_waited);
        sigaddset(&m_waited, SIGCHLD);
        for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
            struct sigaction present = {};
            sigaction(signal, nullptr, &present);
            if (present.sa_handler != SIG_IGN) // as in the background of a script
                sigaddset(&m_waited, signal);
        }
        sigprocmask(SIG_BLOCK, &m_waited, &m_before);
    }
    ~waited_signals_t()
    {
        sigprocmask(SIG_SETMASK, &m_before, nullptr);
        std::signal(SIGCHLD, m_child_before);
    }
    waited_signals_t(const waited_signals_t&) = delete;
    waited_signals_t& operator=(const waited_signals_t&) = delete;

    int wait() const { return ::sigwaitinfo(&m_waited, nullptr); }
    const sigset_t& before() const { return m_before; }

private:
    void (*m_child_before)(int) = SIG_DFL;
    sigset_t m_waited{};
    sigset_t m_before{};
};

/// The child's part: the program anew, with nothing to read. Only what is safe behind a fork.
[[noreturn]] void become(char** words, const process_t& process, pid_t parent, const sigset_t& signals)
{
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent)
        ::_exit(1);
    ::dup2(::open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    ::dup2(process.out.file(), STDOUT_FILENO);
    ::dup2(process.err.file(), STDERR_FILENO);
    sigprocmask(SIG_SETMASK, &signals, nullptr);
    ::execv("/proc/self/exe", words);
    constexpr std::string_view k_line = "nrwave: cannot start itself anew\n";
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, k_line.data(), k_line.size());
    ::_exit(1);
}

class jobs_t
{
public:
    jobs_t(std::vector<job_t>& jobs, const std::function<void(job_t&)>& on_end) : m_jobs(jobs), m_on_end(on_end) {}
    ~jobs_t() { _stop(); }
    jobs_t(const jobs_t&) = delete;
    jobs_t& operator=(const jobs_t&) = delete;

    void run(unsigned int together)
    {
        for (auto next = m_jobs.begin(); next != m_jobs.end() || !m_running.empty();) {
            while (next != m_jobs.end() && m_running.size() < together)
                _start(*next++);
            const int signal = m_signals.wait();
            if (signal == SIGCHLD)
                _take_ended();
            else if (signal > 0) {
                m_ending = signal;
                return _stop();
            }
        }
    }

    /// The signal that asked the program to end, 0 where none did.
    int ending() const { return m_ending; }

private:
    void _start(job_t& job)
    {
        std::string name = "nrwave";
        std::vector<char*> words{name.data()};
        for (std::string& word : job.words)
            words.push_back(word.data());
        words.push_back(nullptr);

        process_t process{&job, steady_clock_t::now(), {}, {}};
        const pid_t parent = ::getpid();
        const pid_t child = ::fork();
        if (child == 0)
            become(words.data(), process, parent, m_signals.before());
        if (child < 0)
            throw failure_t("cannot start a process: " + std::system_category().message(errno));
        m_running.emplace(child, std::move(process));
    }

    void _take_ended()
    {
        int status = 0;
        for (pid_t child = ::waitpid(-1, &status, WNOHANG); child > 0; child = ::waitpid(-1, &status, WNOHANG)) {
            const auto ended = m_running.find(child);
            if (ended == m_running.end())
                continue;
            job_t& job = *ended->second.job;
            job.seconds = std::chrono::duration<double>(steady_clock_t::now() - ended->second.begin).count();
            job.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
            job.out = ended->second.out.text();
            job.err = ended->second.err.text();
            m_running.erase(ended);
            m_on_end(job);
        }
    }

    /// Ends what still runs, and waits until it has taken back what it left unfinished.
    void _stop()
    {
        for (const auto& [child, process] : m_running)
            ::kill(child, SIGTERM);
        for (const auto& [child, process] : m_running)
            ::waitpid(child, nullptr, 0);
        m_running.clear();
    }

    std::vector<job_t>& m_jobs;
    const std::function<void(job_t&)>& m_on_end;
    const waited_signals_t m_signals;
    std::map<pid_t, process_t> m_running;
    int m_ending = 0;
};

} // namespace

void run_jobs(std::vector<job_t>& jobs, unsigned int together, const std::function<void(job_t&)>& on_end)
{
    int ending = 0;
    {
        jobs_t running(jobs, on_end);
        running.run(together);
        ending = running.ending();
    }
    if (ending != 0) {
        ::raise(ending);
        throw failure_t("ended by a signal");
    }
}

} // namespace nrwave

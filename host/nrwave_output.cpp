#include "host/nrwave_output.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_value.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace nrwave
{

namespace fs = std::filesystem;

namespace
{

constexpr std::array k_ending_signals = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGXCPU, SIGABRT};

/// Files and folders that go unless the run ends well, in the order in which they came. Changed only while the signals
/// are held, since their handler reads it.
std::vector<std::string> g_unfinished;

void remove_unfinished()
{
    for (auto path = g_unfinished.rbegin(); path != g_unfinished.rend(); ++path)
        if (::unlink(path->c_str()) != 0)
            ::rmdir(path->c_str());
}

/// Holds the ending signals back while it lives.
class held_signals_t
{
public:
    held_signals_t()
    {
        sigset_t held;
        sigemptyset(&held);
        for (const int signal : k_ending_signals)
            sigaddset(&held, signal);
        sigprocmask(SIG_BLOCK, &held, &m_before);
    }
    ~held_signals_t() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }
    held_signals_t(const held_signals_t&) = delete;
    held_signals_t& operator=(const held_signals_t&) = delete;

private:
    sigset_t m_before;
};

/// The open file that a link such as /proc/self/fd/1 stands for.
std::optional<int> descriptor_of(const fs::path& link)
{
    std::error_code error;
    if (fs::canonical(link.parent_path(), error) != fs::canonical("/proc/self/fd", error) || error)
        return std::nullopt;
    const std::string name = link.filename().string();
    int descriptor = 0;
    const auto [end, failed] = std::from_chars(name.data(), name.data() + name.size(), descriptor);
    if (failed != std::errc{} || end != name.data() + name.size())
        return std::nullopt;
    return descriptor;
}

/// Where a place leads through links, with a target or without, up to one that stands for an open file.
fs::path followed(fs::path place)
{
    constexpr int k_most_links = 40;
    std::error_code error;
    for (int i = 0; i < k_most_links && fs::is_symlink(place, error) && !descriptor_of(place); ++i)
        place = place.parent_path() / fs::read_symlink(place, error);
    return place;
}

mode_t mode_of_new_files()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

bool is_written_through(const fs::path& place)
{
    const fs::path target = followed(place);
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    return descriptor_of(target) || (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status));
}

bool is_standard_output(const fs::path& place) { return descriptor_of(followed(place)) == STDOUT_FILENO; }

output_t::output_t(const fs::path& place, const inputs_t& inputs) : m_name(place.string()), m_place(followed(place))
{
    if (!place.has_filename())
        throw failure_t("cannot write " + shortened(m_name) + ": no name of a file");
    if (is_written_through(m_place))
        return;
    struct stat present = {};
    const bool exists = ::stat(m_place.c_str(), &present) == 0;
    if (!exists && errno != ENOENT) // links in a ring, a name that is too long
        _fail(errno);
    if (exists && S_ISDIR(present.st_mode))
        throw failure_t("cannot write " + shortened(m_name) + ": it is a folder");
    if (exists && inputs.contain(present))
        throw failure_t("cannot write " + shortened(m_name) + ": it is one of the inputs");
    if (exists && ::access(m_place.c_str(), W_OK) != 0)
        _fail(errno);

    // Made now, so that an unwritable place is found out at once rather than after a long run.
    _make_beside(exists ? present.st_mode & 0777 : mode_of_new_files());
}

/// A file without a name where the file system has such, else one with a name of its own.
void output_t::_make_beside(mode_t mode)
{
    const fs::path folder = m_place.has_parent_path() ? m_place.parent_path() : fs::path(".");
    m_file = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    m_is_unnamed = m_file >= 0;
    if (!m_is_unnamed) {
        m_beside = (folder / ".nrwave-XXXXXX").string();
        const held_signals_t held;
        m_file = ::mkostemp(m_beside.data(), O_CLOEXEC);
        if (m_file < 0)
            _fail(errno);
        g_unfinished.push_back(m_beside);
    }
    ::fchmod(m_file, mode);
}

output_t::~output_t()
{
    if (m_file >= 0)
        ::close(m_file);
}

void output_t::reserve(std::uint64_t bytes) const
{
    if (m_file >= 0 && bytes > 0)
        (void)::fallocate(m_file, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(bytes)); // `write` tells what fails
}

void output_t::write(std::string_view bytes)
{
    if (m_file < 0)
        _open();
    while (!bytes.empty()) {
        const ssize_t written = ::write(m_file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            _fail(errno);
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// Opens a place that is written through. An open file goes on where it stands; a reader that leaves is a failure.
void output_t::_open()
{
    std::signal(SIGPIPE, SIG_IGN);
    const auto descriptor = descriptor_of(m_place);
    m_file = descriptor ? ::fcntl(*descriptor, F_DUPFD_CLOEXEC, 0) : ::open(m_place.c_str(), O_WRONLY | O_CLOEXEC);
    if (m_file < 0)
        _fail(errno);
}

/// Gives a file without a name one of its own, from which it is moved to its place.
void output_t::_name()
{
    if (!m_is_unnamed)
        return;
    const std::string file = "/proc/self/fd/" + std::to_string(m_file);
    std::string name = (m_place.parent_path() / ".nrwave-XXXXXX").string();
    const int reserved = ::mkostemp(name.data(), O_CLOEXEC); // finds a name that is free; a link replaces no file
    if (reserved < 0)
        _fail(errno);
    ::close(reserved);
    ::unlink(name.c_str());
    if (::linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) != 0)
        _fail(errno);
    m_beside = name;
    g_unfinished.push_back(m_beside);
}

void output_t::_close()
{
    if (m_file >= 0 && ::close(std::exchange(m_file, -1)) != 0)
        _fail(errno);
}

void output_t::_move() const
{
    if (!m_beside.empty() && ::rename(m_beside.c_str(), m_place.c_str()) != 0)
        _fail(errno);
}

void output_t::_fail(int error) const
{
    throw failure_t("cannot write " + shortened(m_name) + ": " + std::system_category().message(error));
}

outputs_t::~outputs_t()
{
    const held_signals_t held;
    remove_unfinished();
    g_unfinished.clear();
}

output_t& outputs_t::add(const fs::path& place)
{
    make_folder(followed(place).parent_path());
    return m_outputs.emplace_back(place, m_inputs);
}

void outputs_t::make_folder(const fs::path& folder)
{
    std::error_code ignored;
    if (folder.empty() || fs::exists(folder, ignored))
        return;
    make_folder(folder.parent_path());
    const held_signals_t held;
    if (::mkdir(folder.c_str(), 0777) == 0)
        g_unfinished.push_back(folder.string());
    else if (errno != EEXIST)
        throw failure_t("cannot make the folder " + shortened(folder.string()) + ": " +
                        std::system_category().message(errno));
}

std::vector<std::string> outputs_t::names() const
{
    std::vector<std::string> names;
    for (const output_t& output : m_outputs)
        names.push_back(output.m_name);
    return names;
}

void outputs_t::keep()
{
    const held_signals_t held;
    for (output_t& output : m_outputs) {
        output._name();
        output._close();
    }
    for (const output_t& output : m_outputs) {
        output._move();
        // Until all have moved, it is the moved file that a failure takes back.
        for (std::string& path : g_unfinished)
            if (path == output.m_beside)
                path = output.m_place.string();
    }
    g_unfinished.clear();
}

void write_text(const fs::path& place, const std::string& text, const inputs_t& inputs)
{
    outputs_t outputs(inputs);
    outputs.add(place).write(text);
    outputs.keep();
}

void guard_outputs()
{
    // Reading from standard input, or writing to the others, fails as it does where they are closed.
    for (int stream = 0; stream <= 2; ++stream)
        if (::fcntl(stream, F_GETFD) < 0)
            (void)::open("/dev/null", stream == 0 ? O_WRONLY : O_RDONLY);

    struct sigaction action = {};
    action.sa_handler = [](int signal) {
        remove_unfinished();
        ::raise(signal);
    };
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigfillset(&action.sa_mask);
    for (const int signal : k_ending_signals) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN)
            sigaction(signal, &action, nullptr);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace nrwave

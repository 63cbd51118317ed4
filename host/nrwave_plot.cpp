#include "host/nrwave_plot.h"

#include "host/nrwave_failure.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <locale>
#include <memory>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

extern char** environ;

namespace nrwave
{

namespace
{

/// A file without a name that holds a text and is read from its beginning.
std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_with(const std::string& text)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), &std::fclose);
    if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() || std::fflush(file.get()) != 0)
        throw failure_t("cannot write a temporary file: " + std::system_category().message(errno));
    std::rewind(file.get());
    return file;
}

std::string read_to_end(int pipe)
{
    std::string text;
    std::array<char, 1 << 16> block;
    for (;;) {
        const ssize_t count = ::read(pipe, block.data(), block.size());
        if (count > 0)
            text.append(block.data(), static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return text;
    }
}

bool is_whole(picture_format_t format, std::string_view bytes)
{
    constexpr std::string_view k_png("\x89PNG\r\n\x1a\n", 8);
    constexpr std::string_view k_png_end("\0\0\0\0IEND\xae\x42\x60\x82", 12);
    return format == picture_format_t::png ? bytes.starts_with(k_png) && bytes.ends_with(k_png_end)
                                           : bytes.starts_with("<?xml") && bytes.ends_with("</svg>\n\n");
}

const char* terminal_of(picture_format_t format) { return format == picture_format_t::png ? "pngcairo" : "svg"; }

} // namespace

plot_t::plot_t(unsigned int width, unsigned int height) : m_width(width), m_height(height)
{
    m_script.imbue(std::locale::classic());
    m_script.precision(10);
    m_script << "set border lw 1 lc rgb '#404040'\nset tics nomirror\nset grid lc rgb '#d8dde2' lw 1 lt 1\n";
}

std::string plot_t::drawn(picture_format_t format) const
{
    const auto script =
        file_with(std::string("set terminal ") + terminal_of(format) + " size " + std::to_string(m_width) + ',' +
                  std::to_string(m_height) + " font 'sans,11' background '#ffffff'\n" + m_script.str());
    std::array<int, 2> pipe = {-1, -1};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0)
        throw failure_t("cannot start gnuplot: " + std::system_category().message(errno));

    // The user's own settings of the plotter would change the picture.
    const std::array<const char*, 3> words = {"gnuplot", "--default-settings", nullptr};
    posix_spawn_file_actions_t streams;
    ::posix_spawn_file_actions_init(&streams);
    ::posix_spawn_file_actions_adddup2(&streams, ::fileno(script.get()), STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&streams, pipe[1], STDOUT_FILENO);
    ::posix_spawn_file_actions_addopen(&streams, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t plotter = 0;
    const int error = ::posix_spawnp(&plotter, words[0], &streams, nullptr, const_cast<char**>(words.data()), environ);
    ::posix_spawn_file_actions_destroy(&streams);
    ::close(pipe[1]);

    std::string picture = error == 0 ? read_to_end(pipe[0]) : std::string{};
    ::close(pipe[0]);
    if (error != 0)
        throw failure_t("cannot start gnuplot, which draws the pictures: " + std::system_category().message(error));
    int status = 0;
    while (::waitpid(plotter, &status, 0) < 0 && errno == EINTR) {
    }
    if (status != 0 || !is_whole(format, picture))
        throw failure_t("gnuplot, which draws the pictures, failed");
    return picture;
}

} // namespace nrwave

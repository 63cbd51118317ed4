#pragma once

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <stdexcept>
#include <string>

#include <unistd.h>
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace nr_test
{

/// A locale that writes decimals with a comma, set for the whole process, C and C++ alike, while this object lives. It
/// is compiled on the spot from the system's locale sources, for no such locale need be installed.
class comma_locale_t
{
public:
    comma_locale_t()
        : m_folder(std::filesystem::temp_directory_path() / ("comma_locale_" + std::to_string(::getpid()))),
          m_original(std::locale())
    {
        std::filesystem::create_directories(m_folder);
        const std::string compile = "localedef -i de_DE -f UTF-8 '" + (m_folder / "de_DE.UTF-8").string() + "'";
        const bool is_compiled = std::system(compile.c_str()) == 0;
#ifdef __SANITIZE_ADDRESS__
        const __lsan::ScopedDisabler c_library_loses_its_copy_of_the_path;
#endif
        ::setenv("LOCPATH", m_folder.c_str(), 1);
        if (is_compiled && std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr)
            std::locale::global(std::locale("de_DE.UTF-8"));
        if (*std::localeconv()->decimal_point != ',') {
            _restore();
            throw std::runtime_error("no comma locale: install the package 'locales'");
        }
    }
    ~comma_locale_t() { _restore(); }
    comma_locale_t(const comma_locale_t&) = delete;
    comma_locale_t& operator=(const comma_locale_t&) = delete;

private:
    void _restore()
    {
        std::setlocale(LC_ALL, "C");
        std::locale::global(m_original);
        ::unsetenv("LOCPATH");
        std::filesystem::remove_all(m_folder);
    }

    std::filesystem::path m_folder;
    std::locale m_original;
};

} // namespace nr_test

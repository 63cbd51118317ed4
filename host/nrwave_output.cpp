#include "host/nrwave_output.h"

#include "host/nrwave_failure.h"

#include <fstream>
#include <system_error>
#include <unistd.h>

namespace nrwave
{

output_file_t::output_file_t(std::filesystem::path place)
    : m_place(std::move(place)), m_beside(m_place.string() + '.' + std::to_string(::getpid()) + ".part")
{
    // Found out now rather than after a long run; a folder in the file's place could not be replaced.
    std::error_code ignored;
    if (std::filesystem::is_directory(m_place, ignored) || !std::ofstream(m_beside, std::ios::binary))
        throw failure_t("cannot write " + m_place.string());
}

output_file_t::~output_file_t()
{
    std::error_code ignored;
    std::filesystem::remove(m_beside, ignored);
}

void output_file_t::keep()
{
    std::error_code error;
    std::filesystem::rename(m_beside, m_place, error);
    if (error)
        throw failure_t("cannot write " + m_place.string());
}

void output_file_t::discard()
{
    std::error_code ignored;
    std::filesystem::remove(m_place, ignored);
}

void write_text(const std::filesystem::path& place, const std::string& text)
{
    output_file_t file(place);
    std::ofstream stream(file.beside(), std::ios::binary);
    stream << text;
    stream.close();
    if (!stream)
        throw failure_t("cannot write " + place.string());
    file.keep();
}

} // namespace nrwave

#include "host/nrwave_input.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <fstream>

namespace nrwave
{

std::string inputs_t::read(const std::filesystem::path& file)
{
    // Some hundred times the largest settings file: a wrong device is found out before memory is full of it.
    constexpr std::size_t k_most = std::size_t{256} << 20;

    struct stat info = {};
    std::ifstream stream;
    if (::stat(file.c_str(), &info) == 0) {
        if (S_ISDIR(info.st_mode))
            throw failure_t("cannot read " + shortened(file.string()) + ": it is a folder");
        stream.open(file, std::ios::binary);
    }
    if (!stream.is_open())
        throw failure_t("cannot read " + shortened(file.string()));
    m_read.push_back(info);

    std::string text;
    std::string block(1 << 16, '\0');
    while (stream) {
        stream.read(block.data(), static_cast<std::streamsize>(block.size()));
        text.append(block, 0, static_cast<std::size_t>(stream.gcount()));
        if (text.size() > k_most)
            throw failure_t("cannot read " + shortened(file.string()) + ": it is too long");
    }
    if (stream.bad())
        throw failure_t("cannot read " + shortened(file.string()));

    constexpr const char* k_mark = "\xEF\xBB\xBF";
    if (text.rfind(k_mark, 0) == 0)
        text.erase(0, 3);
    return text;
}

bool inputs_t::contain(const struct stat& file) const
{
    return S_ISREG(file.st_mode) && std::any_of(m_read.begin(), m_read.end(), [&](const struct stat& input) {
               return input.st_dev == file.st_dev && input.st_ino == file.st_ino;
           });
}

} // namespace nrwave

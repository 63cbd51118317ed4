#pragma once

#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace nrwave
{

/// The files that a run has read; none of them is written by it.
class inputs_t
{
public:
    /// The content of a recipe or settings file, without a byte order mark. A folder, and what never ends, is a
    /// failure.
    std::string read(const std::filesystem::path& file);

    /// Whether a regular file is one of them, by whatever name.
    bool contain(const struct stat& file) const;

private:
    std::vector<struct stat> m_read;
};

} // namespace nrwave

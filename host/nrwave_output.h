#pragma once

#include <filesystem>
#include <string>

namespace nrwave
{

/// A file that appears whole or not at all: it is written beside its place and moved there by `keep`. What was not kept
/// is removed.
class output_file_t
{
public:
    explicit output_file_t(std::filesystem::path place);
    ~output_file_t();
    output_file_t(const output_file_t&) = delete;
    output_file_t& operator=(const output_file_t&) = delete;

    /// Where to write.
    const std::filesystem::path& beside() const { return m_beside; }
    const std::filesystem::path& place() const { return m_place; }
    /// Moves the file to its place.
    void keep();
    /// Takes a kept file back.
    void discard();

private:
    std::filesystem::path m_place;
    std::filesystem::path m_beside;
};

/// Writes a text to a file, whole or not at all.
void write_text(const std::filesystem::path& place, const std::string& text);

} // namespace nrwave

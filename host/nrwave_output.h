#pragma once

#include "host/nrwave_input.h"

#include <cstdint>
#include <filesystem>
#include <list>
#include <string>
#include <string_view>
#include <vector>

namespace nrwave
{

/// Whether a place is written to as it stands and never replaced: a device, a FIFO, a socket, an open file such as
/// /dev/stdout.
bool is_written_through(const std::filesystem::path& place);

/// Whether a place leads to the standard output of the program.
bool is_standard_output(const std::filesystem::path& place);

/// One file of a run. It is written beside its place, or through to it.
class output_t
{
public:
    /// A place that is one of the inputs or cannot be written is a failure.
    output_t(const std::filesystem::path& place, const inputs_t& inputs);
    ~output_t();
    output_t(const output_t&) = delete;
    output_t& operator=(const output_t&) = delete;

    /// Asks the file system for the room of all bytes to come, where it can: a file that has its room replaces another
    /// without being forced onto the disk at that moment.
    void reserve(std::uint64_t bytes) const;
    /// Appends. A place that takes no more, such as a full disk, is a failure.
    void write(std::string_view bytes);

private:
    friend class outputs_t;

    void _make_beside(mode_t mode);
    void _open();
    void _name();
    void _close();
    void _move() const;
    [[noreturn]] void _fail(int error) const;

    std::string m_name;
    /// Where the name leads through links.
    std::filesystem::path m_place;
    /// Empty where the place is written through, and where the file has no name yet.
    std::string m_beside;
    bool m_is_unnamed = false;
    int m_file = -1;
};

/// The files of a run: they appear whole and all together, or not at all, whatever ends the run: a failure, a full disk
/// or a signal. Only what has been written through stays written. Where the file system has files without a name,
/// nothing is in the folders before all is written, so that even a killed run leaves none. One object at a time.
class outputs_t
{
public:
    explicit outputs_t(const inputs_t& inputs) : m_inputs(inputs) {}
    /// Removes what was not kept, and the folders made for it.
    ~outputs_t();
    outputs_t(const outputs_t&) = delete;
    outputs_t& operator=(const outputs_t&) = delete;

    /// A file to come, in a folder that is made where it is missing.
    output_t& add(const std::filesystem::path& place);
    void make_folder(const std::filesystem::path& folder);

    /// The places of all files, as they were named.
    std::vector<std::string> names() const;
    /// Moves all files to their places.
    void keep();

private:
    const inputs_t& m_inputs;
    std::list<output_t> m_outputs;
};

/// Writes one file from a text.
void write_text(const std::filesystem::path& place, const std::string& text, const inputs_t& inputs);

/// From now on, a signal that ends the program removes first what is unfinished; a file beyond its size limit is a
/// failure to write; and no file that is opened takes the place of a closed standard stream.
void guard_outputs();

} // namespace nrwave

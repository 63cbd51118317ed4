#pragma once

#include "host/nrwave_trace.h"

#include <CLI/CLI.hpp>

namespace nrwave
{

/// A command of the tool: its name, help, options and work, all in one file. nrwave_commands.h lists them.
class command_t
{
public:
    command_t(const char* name, const char* help) : m_name(name), m_help(help) {}
    virtual ~command_t() = default;
    command_t(const command_t&) = delete;
    command_t& operator=(const command_t&) = delete;

    const char* name() const { return m_name; }
    const char* help() const { return m_help; }

    /// Declares the options. What they are given lands in the command.
    virtual void declare(CLI::App& app) = 0;
    /// Does the work, when the options have been read. What cannot be done is a failure_t.
    virtual void run(trace_t& trace) = 0;

private:
    const char* m_name;
    const char* m_help;
};

} // namespace nrwave

#pragma once

#include "host/nrwave_failure.h"

#include <iostream>
#include <streambuf>

namespace nrwave
{

/// While it lives, what the library prints goes nowhere, or to standard error; the tool's own lines go through `out`
/// and `err`, which keep their places.
class trace_t
{
public:
    explicit trace_t(bool shown)
        : out(std::cout.rdbuf()),
          err(std::cerr.rdbuf()),
          m_cout(std::cout.rdbuf(shown ? std::cerr.rdbuf() : &m_nowhere)),
          m_cerr(shown ? std::cerr.rdbuf() : std::cerr.rdbuf(&m_nowhere))
    {}
    ~trace_t()
    {
        std::cout.rdbuf(m_cout);
        std::cerr.rdbuf(m_cerr);
    }
    /// What is still on its way to standard output; one that takes no more is a failure.
    void flush_out()
    {
        out.flush();
        if (!out)
            throw failure_t("cannot write to standard output");
    }
    trace_t(const trace_t&) = delete;
    trace_t& operator=(const trace_t&) = delete;

    std::ostream out;
    std::ostream err;

private:
    struct nowhere_t : std::streambuf
    {
        int_type overflow(int_type c) override { return traits_type::not_eof(c); }
        std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
    };

    nowhere_t m_nowhere;
    std::streambuf* m_cout;
    std::streambuf* m_cerr;
};

} // namespace nrwave

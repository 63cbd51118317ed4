#pragma once

#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>

namespace nr_test
{

/// Keeps what is written to std::cout while it lives, and gives the stream back when it dies.
class captured_output_t
{
public:
    captured_output_t() : m_original(std::cout.rdbuf(m_text.rdbuf())) {}
    ~captured_output_t() { std::cout.rdbuf(m_original); }
    captured_output_t(const captured_output_t&) = delete;
    captured_output_t& operator=(const captured_output_t&) = delete;

    std::string text() const { return m_text.str(); }
    /// Forgets what was written so far.
    void clear() { m_text.str({}); }

private:
    std::ostringstream m_text;
    std::streambuf* m_original;
};

/// What an action prints.
template <class action_t>
std::string printed_by(action_t action)
{
    const captured_output_t output;
    action();
    return output.text();
}

} // namespace nr_test

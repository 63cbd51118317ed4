#pragma once

#include <string_view>

namespace vek::nr_mod_lib
{

/// What each process has that tells why it failed.
class lib_nr_failing_t
{
public:
    /// The first reason since the process was bound, a literal; empty where nothing failed.
    std::string_view get_failure() const { return m_failure; }

protected:
    lib_nr_failing_t() = default;

    void _forget_failure() { m_failure = {}; }
    /// Notes why a step fails; false, for the step to return.
    bool _fails(std::string_view reason) const
    {
        if (m_failure.empty())
            m_failure = reason;
        return false;
    }

private:
    /// A note that a step leaves behind, not a part of what the process stands for.
    mutable std::string_view m_failure;
};

} // namespace vek::nr_mod_lib

#pragma once

#include <stdexcept>

namespace nrwave
{

/// What ends a run: the text is the one line that the user sees.
class failure_t : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace nrwave

#pragma once

#include "common/lib_fft_direction.h"
#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>
#include <memory>

namespace vek::common_lib::detail
{

/// A way to transform values of one length, in both directions. What `lib_fft_plan_t` promises, each must hold.
class NR_MOD_LIB_EXPORT fft_method_t
{
public:
    virtual ~fft_method_t() = default;
    virtual void execute(lib_fft_direction_t direction, const std::complex<double>* in,
                         std::complex<double>* out) const = 0;
};

/// The backend's quickest for a length of at least 1.
std::shared_ptr<const fft_method_t> make_fft_method(std::size_t length);

} // namespace vek::common_lib::detail

#pragma once

#include "common/lib_fft_direction.h"
#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"

#include <atomic>
#include <complex>
#include <cstddef>
#include <memory>

namespace vek::common_lib
{

namespace detail
{
class fft_method_t;
}

/// A discrete Fourier transform of one length and direction, without scaling: forward sums x(n) exp(-j 2 pi k n / N),
/// inverse X(k) exp(j 2 pi k n / N). Any length is fast, primes included; the quickest are products of 2, 3 and 5. The
/// backend chosen at build time stands behind it and nothing else knows it. Results do not depend on where the buffers
/// lie in memory, and with the library's own backend not on the machine and the compiler either.
///
/// The library's own backend, the default, has nothing but tables that never change: plans may be made, asked for and
/// executed by any number of threads at once. A thread that transforms keeps a buffer of at most 2.2 MB until it ends.
///
/// With FFTW behind it, one call at a time is meant for the process, and a host that uses FFTW in the same process
/// shares two things with the library. The planner: plans of either must not be made while the other makes or destroys
/// one, so a host plans outside the library's calls, or in the same thread; `fftw_cleanup` destroys the library's plans
/// too and must not be called. And wisdom: the library estimates its plans, which enter the process's wisdom, and takes
/// what measured wisdom the host has gathered for the same lengths, whereupon the last bits of results may differ.
class NR_MOD_LIB_EXPORT lib_fft_plan_t
{
public:
    /// A plan of its own, for a length met once, such as that of a whole waveform; its tables go with it. A length of
    /// 0 transforms nothing.
    lib_fft_plan_t(std::size_t length, lib_fft_direction_t direction);
    ~lib_fft_plan_t();
    lib_fft_plan_t(const lib_fft_plan_t&) = delete;
    lib_fft_plan_t& operator=(const lib_fft_plan_t&) = delete;

    /// The process's plan for a length that comes again and again; made at the first call and kept.
    static const lib_fft_plan_t& get(std::size_t length, lib_fft_direction_t direction);

    /// Reads and writes `get_length()` values. In place (`in == out`) or between buffers that do not overlap; then `in`
    /// keeps its values. Throws `std::bad_alloc` where the backend may not find the memory it needs, as do the
    /// constructor and `get`; nothing is lost then, and a later call may succeed.
    void execute(const std::complex<double>* in, std::complex<double>* out) const;
    std::size_t get_length() const { return m_length; }

private:
    friend struct vek::test_peer_t<lib_fft_plan_t>;
    class store_t;

    lib_fft_plan_t(std::size_t length, lib_fft_direction_t direction,
                   std::shared_ptr<const detail::fft_method_t> method);

    /// Called ahead of every transform, none by default; benchmarks count by it.
    static std::atomic<void (*)(std::size_t length, lib_fft_direction_t direction)> s_observer;

    std::size_t m_length;
    lib_fft_direction_t m_direction;
    std::shared_ptr<const detail::fft_method_t> m_method;
};

} // namespace vek::common_lib

#pragma once

#include <complex>
#include <cstddef>
#include <vector>

namespace vek::common_lib
{

/// Samples that lie elsewhere, one behind the other: a whole vector or a part of one.
struct lib_signal_view_t
{
    lib_signal_view_t(const std::complex<double>* first, std::size_t count) : m_first(first), m_count(count) {}
    // A vector is a signal wherever one is asked for.
    lib_signal_view_t(const std::vector<std::complex<double>>& signal) : m_first(signal.data()), m_count(signal.size())
    {}

    const std::complex<double>* data() const { return m_first; }
    std::size_t size() const { return m_count; }
    bool empty() const { return m_count == 0; }
    const std::complex<double>& operator[](std::size_t index) const { return m_first[index]; }
    const std::complex<double>* begin() const { return m_first; }
    const std::complex<double>* end() const { return m_first + m_count; }

private:
    const std::complex<double>* m_first;
    std::size_t m_count;
};

} // namespace vek::common_lib

#pragma once

#include <complex>
#include <cstddef>
#include <vector>

namespace vek::common_lib::detail
{

/// exp(-j 2 pi k / length), for k below length: each part within 0.6 units of its last place, and the same bits on
/// every machine, since nothing of a mathematical library that chooses by the machine takes part.
std::complex<double> root_of_unity(std::size_t k, std::size_t length);
/// Those of all k.
std::vector<std::complex<double>> make_roots_of_unity(std::size_t length);

} // namespace vek::common_lib::detail

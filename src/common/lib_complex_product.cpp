#include "common/lib_complex_product.h"

#include "common/lib_target_clones.h"

namespace vek::common_lib
{

NR_MOD_LIB_PRODUCT_CLONES
void multiply(const std::complex<double>* source, std::size_t count, const std::complex<double>& factor,
              std::complex<double>* target)
{
    const std::complex<double> kept = factor; // it may lie in the target
    for (std::size_t i = 0; i < count; ++i)
        target[i] = product(source[i], kept);
}

NR_MOD_LIB_PRODUCT_CLONES
void multiply_each(std::complex<double>* values, std::size_t count, const std::complex<double>* factors)
{
    for (std::size_t i = 0; i < count; ++i)
        values[i] = product(values[i], factors[i]);
}

} // namespace vek::common_lib

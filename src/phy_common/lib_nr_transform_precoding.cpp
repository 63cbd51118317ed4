#include "phy_common/lib_nr_transform_precoding.h"

#include "common/lib_fft_plan.h"

#include <cmath>

namespace vek::nr_mod_lib
{

void deal_transform_precoding(std::complex<double>* symbol, std::size_t length)
{
    common_lib::lib_fft_plan_t::get(length, common_lib::LIB_FFT_FORWARD).execute(symbol, symbol);
    const double scale = 1.0 / std::sqrt(static_cast<double>(length));
    for (std::size_t i = 0; i < length; ++i)
        symbol[i] *= scale;
}

} // namespace vek::nr_mod_lib

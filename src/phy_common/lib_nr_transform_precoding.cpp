#include "phy_common/lib_nr_transform_precoding.h"

#include "common/lib_fft_plan.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int rb_num_list[] = {1,   2,   3,   4,   5,   6,   8,   9,   10,  12,  15,  16,  18,  20,
                                        24,  25,  27,  30,  32,  36,  40,  45,  48,  50,  54,  60,  64,  72,
                                        75,  80,  81,  90,  96,  100, 108, 120, 125, 128, 135, 144, 150, 160,
                                        162, 180, 192, 200, 216, 225, 240, 243, 250, 256, 270};

} // namespace

void deal_transform_precoding(std::complex<double>* symbol, std::size_t length)
{
    common_lib::lib_fft_plan_t::get(length, common_lib::LIB_FFT_FORWARD).execute(symbol, symbol);
    const double scale = 1.0 / std::sqrt(static_cast<double>(length));
    for (std::size_t i = 0; i < length; ++i)
        symbol[i] *= scale;
}

unsigned int largest_transform_precoded_rb_num(unsigned int rb_num)
{
    const auto above = std::upper_bound(std::begin(rb_num_list), std::end(rb_num_list), rb_num);
    return above == std::begin(rb_num_list) ? *above : *(above - 1);
}

unsigned int fit_transform_precoded_rb_num(unsigned int rb_num, unsigned int room)
{
    const auto next = std::lower_bound(std::begin(rb_num_list), std::end(rb_num_list) - 1, rb_num);
    return std::min(*next, largest_transform_precoded_rb_num(room));
}

} // namespace vek::nr_mod_lib

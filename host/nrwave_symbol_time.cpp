#include "host/nrwave_symbol_time.h"

namespace nrwave
{

namespace
{

constexpr double k_unit_s = 1.0 / 30.72e6;

} // namespace

double start_of(unsigned int slot, unsigned int symbol, bool is_extended, unsigned int slots_in_subframe)
{
    constexpr double k_subframe_s = 0.001;
    const unsigned int symbols = is_extended ? 12 : 14;
    const unsigned int subframe = slot / slots_in_subframe;
    const unsigned int in_subframe = slot % slots_in_subframe * symbols + symbol;
    const double length = (is_extended ? 2560.0 : 2192.0) / slots_in_subframe;
    const double longer =
        is_extended ? 0.0 : 16.0 * ((in_subframe > 0 ? 1 : 0) + (in_subframe > 7 * slots_in_subframe ? 1 : 0));
    return subframe * k_subframe_s + (in_subframe * length + longer) * k_unit_s;
}

double useful_length_of(unsigned int slots_in_subframe) { return 2048.0 / slots_in_subframe * k_unit_s; }

} // namespace nrwave

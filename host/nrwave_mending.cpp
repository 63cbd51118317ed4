#include "host/nrwave_mending.h"

#include "host/nrwave_detour.h"
#include "host/nrwave_guest.h"
#include "host/nrwave_single_steps.h"
#include "host/nrwave_uci_bits.h"

namespace nrwave
{

std::vector<std::string> mending_steps(vek::nr_mod_lib::cfg_nr_waveform_t& original,
                                       vek::nr_mod_lib::cfg_nr_waveform_t& copy)
{
    std::vector<std::string> steps;
    take_preset_of_a_guest(original, copy, steps);
    mend_in_rounds(original, copy, steps);
    take_detours(original, copy, steps);
    take_width_of_a_guest(original, copy, steps);
    mend_uci_bits(original, copy, steps);
    return steps;
}

} // namespace nrwave

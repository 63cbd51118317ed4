#include "config/cfg_nr_pucch_test_model.h"

namespace vek::nr_mod_lib
{

cfg_nr_pucch_test_model_t::cfg_nr_pucch_test_model_t(lib_nr_waveform_configure_manager_t& waveform)
    : cfg_nr_ul_pucch_t(waveform)
{}

bool cfg_nr_pucch_test_model_t::set_current_carrier_index(unsigned int carrier)
{
    return set_current_pucch_index(carrier, 0);
}

} // namespace vek::nr_mod_lib

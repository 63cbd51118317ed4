#include "config/cfg_nr_dl_dci.h"

#include "phy_common/lib_nr_phy_common.h"

namespace vek::nr_mod_lib
{

bool cfg_nr_dl_dci_t::set_start_symbol_within_slot(unsigned int symbol)
{
    return _target().set_start_symbol_within_slot(
        symbol, lib_nr_phy_common_t::get_symbol_number_in_slot(_bwp().get_numerology(), _bwp().get_cp_type()),
        _coreset().get_duration());
}

} // namespace vek::nr_mod_lib

#include "config/cfg_nr_dl_tm.h"

#include "phy_common/lib_nr_phy_common.h"

namespace vek::nr_mod_lib
{

std::vector<lib_nr_channel_bw_type_t> cfg_nr_dl_tm_t::get_valid_bandwidth_list() const
{
    return lib_nr_phy_common_t::get_carrier_bandwidth_list(_carrier().get_nr_ntn());
}

} // namespace vek::nr_mod_lib

#include "phy_dl/lib_nr_phy_sch_process.h"

namespace vek::nr_mod_lib
{

bool lib_nr_phy_sch_process_t::sch_encode_process(unsigned int /*slot*/) { return true; }

bool lib_nr_phy_sch_process_t::phy_sch_remap(unsigned int /*slot*/, lib_nr_remap_mode_t /*mode*/) { return true; }

bool lib_nr_phy_sch_process_t::_bind(unsigned int carrier, unsigned int numerology)
{
    m_carrier_index = carrier;
    m_numerology_index = numerology;
    m_pn_seed = std::numeric_limits<unsigned int>::max();
    return true;
}

} // namespace vek::nr_mod_lib

#include "phy/lib_nr_prach_resource_manager.h"

#include "common/lib_bounded_cast.h"

#include <cstdint>

namespace vek::nr_mod_lib
{

lib_nr_prach_resource_manager_t& lib_nr_prach_resource_manager_t::get_inst()
{
    static lib_nr_prach_resource_manager_t instance;
    return instance;
}

void lib_nr_prach_resource_manager_t::init_resource_mapping()
{
    _update_numbers();
    m_resource_mapping = {};
}

void lib_nr_prach_resource_manager_t::init_payload_mapping()
{
    _update_numbers();
    const auto columns = common_lib::bounded_cast<std::uint32_t>(m_param.subcarrier_total_number * m_param.ratio);
    m_payload_mapping.assign(m_param.row_number, std::vector<std::complex<double>>(columns));
}

void lib_nr_prach_resource_manager_t::_update_numbers()
{
    m_param.max_rb_number = lib_nr_phy_common_t::get_max_transmit_rb_num(m_param.numerology, m_param.bandwidth);
    m_param.subcarrier_total_number = k_subcarriers_per_rb * m_param.max_rb_number;
}

} // namespace vek::nr_mod_lib

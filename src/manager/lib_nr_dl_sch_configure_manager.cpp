#include "manager/lib_nr_dl_sch_configure_manager.h"

#include "manager/lib_nr_dl_bwp_configure_manager.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

lib_nr_dl_sch_configure_manager_t::lib_nr_dl_sch_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_dl_sch_configure_manager_t::init(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    *this = lib_nr_dl_sch_configure_manager_t();
    m_bwp_id = bwp.get_bwp_id();
    update_by_dl_bwp(bwp);
}

void lib_nr_dl_sch_configure_manager_t::update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    const lib_nr_cyclic_prefix_type_t cp_type = bwp.get_cp_type();
    const unsigned int size = bwp.get_bwp_rb_size();
    set_enable(get_enable(), bwp.get_numerology());
    set_slot_allocation(get_slot_allocation(), bwp.get_numerology());
    set_mapping_type(get_mapping_type(), cp_type);
    set_dmrs_type_a_position(get_dmrs_type_a_position(), get_l0(), cp_type);
    set_dmrs_length(get_dmrs_length(), cp_type);
    set_dmrs_configuration_type(get_dmrs_configuration_type());
    set_rb_offset(get_rb_offset(), size);
    set_rbg_size(get_rbg_size(), size, bwp.get_bwp_rb_start());
}

bool lib_nr_dl_sch_configure_manager_t::set_dmrs_port(const std::string& text) { return _set_dmrs_ports(text, 1); }

// TS 38.214 Table 5.1.2.1-1. Type A starts at its DMRS at the latest, type B leaves room for its shortest length.
bool lib_nr_dl_sch_configure_manager_t::set_first_symbol(unsigned int symbol, lib_nr_cyclic_prefix_type_t cp_type)
{
    const unsigned int last = _is_mapping_type_b()
                                  ? lib_nr_phy_common_t::get_symbol_number_in_slot(cp_type) - _shortest_type_b(cp_type)
                                  : get_l0();
    const bool changed = assign(m_first_symbol, std::min(symbol, last));
    set_symbol_num(m_symbol_num, cp_type);
    return changed;
}

bool lib_nr_dl_sch_configure_manager_t::set_symbol_num(unsigned int number, lib_nr_cyclic_prefix_type_t cp_type)
{
    return assign(m_symbol_num, _is_mapping_type_b() ? _fit_type_b(number, cp_type) : _fit_type_a(number, cp_type));
}

unsigned int lib_nr_dl_sch_configure_manager_t::_fit_type_a(unsigned int number,
                                                            lib_nr_cyclic_prefix_type_t cp_type) const
{
    const unsigned int least = get_l0() == 2 ? 3 : 4;
    return std::max(least, std::min(number, _symbols_left(cp_type)));
}

// 2, 4 or 7 symbols in release 15, up to 13 later; with the extended prefix 2, 4 or 6.
unsigned int lib_nr_dl_sch_configure_manager_t::_fit_type_b(unsigned int number,
                                                            lib_nr_cyclic_prefix_type_t cp_type) const
{
    const bool extended = cp_type == LIB_NR_EXTEND_CP;
    const unsigned int most = std::min(_symbols_left(cp_type), extended ? 6U : 13U);
    const unsigned int fitted = std::max(_shortest_type_b(cp_type), std::min(number, most));
    return extended ? fitted / 2 * 2 : fitted;
}

unsigned int lib_nr_dl_sch_configure_manager_t::_shortest_type_b(lib_nr_cyclic_prefix_type_t cp_type) const
{
    if (!_is_double_symbol())
        return 2;
    return cp_type == LIB_NR_EXTEND_CP ? 6 : 5;
}

std::vector<lib_nr_sch_ra_type_t> lib_nr_dl_sch_configure_manager_t::get_ra_type_list() const
{
    return {LIB_NR_SCH_RA_TYPE0, LIB_NR_SCH_RA_TYPE1};
}

std::vector<mcs_table_t> lib_nr_dl_sch_configure_manager_t::get_mcs_table_list() const
{
    return {TABLE_5_1_3_1_1, TABLE_5_1_3_1_2, TABLE_5_1_3_1_3, TABLE_5_1_3_1_4};
}

bool lib_nr_dl_sch_configure_manager_t::set_vrb2prb_interleaver(lib_nr_sch_interleave_t interleaver)
{
    return assign(m_vrb2prb_interleaver, interleaver);
}

bool lib_nr_dl_sch_configure_manager_t::set_vrb_bundle_size(lib_nr_sch_vrb_bundle_size_t size)
{
    return assign(m_vrb_bundle_size, size);
}

bool lib_nr_dl_sch_configure_manager_t::set_tb_scaling(lib_nr_sch_tb_scaling_t scaling)
{
    return assign(m_tb_scaling, scaling);
}

} // namespace vek::nr_mod_lib

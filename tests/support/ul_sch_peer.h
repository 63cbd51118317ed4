#pragma once

#include "common/lib_test_peer.h"
#include "manager/lib_nr_ul_sch_configure_manager.h"

namespace vek
{

template <>
struct test_peer_t<nr_mod_lib::lib_nr_ul_sch_configure_manager_t>
{
    static const auto& rb_sets(const nr_mod_lib::lib_nr_ul_sch_configure_manager_t& sch) { return sch.m_rb_set_map; }
    static bool full(const nr_mod_lib::lib_nr_ul_sch_configure_manager_t& sch) { return sch.m_full_bandwidth; }
};

} // namespace vek

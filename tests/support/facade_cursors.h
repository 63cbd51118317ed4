#pragma once

#include "common/lib_test_peer.h"
#include "config/cfg_nr_carrier.h"

#include <utility>

namespace nr_test
{

/// Where a façade stands: carrier and entry.
using cursor_t = std::pair<unsigned int, unsigned int>;

template <class facade_t>
cursor_t cursor_of(const facade_t* facade)
{
    return vek::test_peer_t<facade_t>::cursor(*facade);
}

} // namespace nr_test

namespace vek
{

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_dl_bwp_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_dl_bwp_t& bwp)
    {
        return {bwp.m_carrier_index, bwp.m_bwp_index};
    }
};

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_dl_dci_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_dl_dci_t& dci)
    {
        return {dci.m_carrier_index, dci.m_dci_index};
    }
};

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_dl_sch_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_dl_sch_t& sch)
    {
        return {sch.m_carrier_index, sch.m_sch_index};
    }
};

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_dl_csirs_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_dl_csirs_t& csirs)
    {
        return {csirs.m_carrier_index, csirs.m_csirs_index};
    }
};

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_dl_prs_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_dl_prs_t& prs)
    {
        return {prs.m_carrier_index, prs.m_prs_index};
    }
};

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_ul_bwp_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_ul_bwp_t& bwp)
    {
        return {bwp.m_carrier_index, bwp.m_bwp_index};
    }
};

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_ul_pucch_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_ul_pucch_t& pucch)
    {
        return {pucch.m_carrier_index, pucch.m_pucch_index};
    }
};

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_ul_sch_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_ul_sch_t& sch)
    {
        return {sch.m_carrier_index, sch.m_sch_index};
    }
};

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_ul_srs_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_ul_srs_t& srs)
    {
        return {srs.m_carrier_index, srs.m_srs_index};
    }
};

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_prach_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_prach_t& prach)
    {
        return {prach.m_carrier_index, prach.m_prach_index};
    }
};

template <>
struct test_peer_t<nr_mod_lib::cfg_nr_ul_guard_band_t>
{
    static nr_test::cursor_t cursor(const nr_mod_lib::cfg_nr_ul_guard_band_t& guard_band)
    {
        return {guard_band.m_carrier_index, guard_band.m_numerology_index};
    }
};

} // namespace vek

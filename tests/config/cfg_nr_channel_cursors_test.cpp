// The façades of the channels that are to come are cursors and little else: where each may stand, and what it says.
#include "config/cfg_nr_dl_bwp.h"
#include "config/cfg_nr_dl_csirs.h"
#include "config/cfg_nr_dl_dci.h"
#include "config/cfg_nr_dl_frc.h"
#include "config/cfg_nr_dl_prs.h"
#include "config/cfg_nr_dl_sch.h"
#include "config/cfg_nr_dl_tm.h"
#include "config/cfg_nr_prach.h"
#include "config/cfg_nr_pucch_test_model.h"
#include "config/cfg_nr_ul_bwp.h"
#include "config/cfg_nr_ul_frc.h"
#include "config/cfg_nr_ul_guard_band.h"
#include "config/cfg_nr_ul_pucch.h"
#include "config/cfg_nr_ul_rmc.h"
#include "config/cfg_nr_ul_sch.h"
#include "config/cfg_nr_ul_srs.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "support/captured_output.h"
#include "support/facade_cursors.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace vek::nr_mod_lib;

/// Two carriers; the second has two numerologies, and one entry more in each list than a fresh one.
class cfg_nr_channel_cursors : public testing::Test
{
protected:
    cfg_nr_channel_cursors()
    {
        m_waveform.add_carrier();
        lib_nr_carrier_configure_manager_t& carrier = m_waveform.get_carrier(1);
        carrier.set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_MULTIPLE);
        carrier.add_dl_bwp();
        carrier.add_dl_dci();
        carrier.add_dl_sch();
        carrier.add_dl_csirs();
        carrier.add_dl_prs();
        carrier.add_ul_bwp();
        carrier.add_ul_pucch();
        carrier.add_ul_sch();
        carrier.add_ul_srs();
        carrier.add_ul_prach();
        m_output.clear();
    }

    template <class entry_t, class facade_t>
    void _expect_cursor(bool (facade_t::*set_current)(unsigned int, unsigned int))
    {
        facade_t facade(m_waveform);
        const auto target = [&]() -> const void* { return &nr_test::target_of(facade); };
        const auto wanted = [&](unsigned int carrier, unsigned int index) -> const void* {
            return &m_waveform.get_carrier(carrier).template get_entry<entry_t>(index);
        };
        EXPECT_EQ(target(), wanted(0, 0));
        EXPECT_FALSE((facade.*set_current)(0, 50));
        EXPECT_FALSE((facade.*set_current)(2, 0));
        EXPECT_EQ(target(), wanted(0, 0)) << "a refused index moves nothing";
        EXPECT_TRUE((facade.*set_current)(1, 1));
        EXPECT_EQ(target(), wanted(1, 1));
        EXPECT_FALSE((facade.*set_current)(2, 0));
        EXPECT_EQ(target(), wanted(1, 1));
        facade.init();
        EXPECT_EQ(target(), wanted(0, 0));
        EXPECT_EQ(m_output.text(), "") << "without a word";
    }

    lib_nr_waveform_configure_manager_t m_waveform;
    nr_test::captured_output_t m_output;
};

TEST_F(cfg_nr_channel_cursors, lists)
{
    _expect_cursor<lib_nr_dl_bwp_configure_manager_t>(&cfg_nr_dl_bwp_t::set_current_dl_bwp_index);
    _expect_cursor<lib_nr_dl_dci_configure_manager_t>(&cfg_nr_dl_dci_t::set_current_dci_index);
    _expect_cursor<lib_nr_dl_sch_configure_manager_t>(&cfg_nr_dl_sch_t::set_current_sch_index);
    _expect_cursor<lib_nr_dl_csirs_configure_manager_t>(&cfg_nr_dl_csirs_t::set_current_csirs_index);
    _expect_cursor<lib_nr_dl_prs_configure_manager_t>(&cfg_nr_dl_prs_t::set_current_prs_index);
    _expect_cursor<lib_nr_ul_bwp_configure_manager_t>(&cfg_nr_ul_bwp_t::set_current_bwp_index);
    _expect_cursor<lib_nr_ul_pucch_configure_manager_t>(&cfg_nr_ul_pucch_t::set_current_pucch_index);
    _expect_cursor<lib_nr_ul_sch_configure_manager_t>(&cfg_nr_ul_sch_t::set_current_sch_index);
    _expect_cursor<lib_nr_ul_srs_configure_manager_t>(&cfg_nr_ul_srs_t::set_current_srs_index);
    _expect_cursor<lib_nr_ul_prach_configure_manager_t>(&cfg_nr_prach_t::set_current_prach_index);
    _expect_cursor<lib_nr_phy_numerology_configure_manager_t>(&cfg_nr_ul_guard_band_t::set_current_guard_band_index);
}

TEST_F(cfg_nr_channel_cursors, a_bwp_brings_its_first_coreset)
{
    cfg_nr_dl_bwp_t bwp(m_waveform);
    m_waveform.get_carrier(1).set_coreset_number(2, 2);
    const auto target = [](const cfg_nr_dl_coreset_t* coreset) -> const void* { return &nr_test::target_of(*coreset); };
    const auto wanted = [&](unsigned int carrier, unsigned int index, unsigned int coreset) -> const void* {
        return &m_waveform.get_carrier(carrier).get_dl_bwp(index).get_coreset(coreset);
    };
    EXPECT_EQ(target(bwp.get_coreset(9)), wanted(0, 0, 0));
    EXPECT_TRUE(bwp.set_current_dl_bwp_index(1, 2));
    EXPECT_EQ(target(bwp.get_coreset(0)), wanted(1, 2, 1)) << "0 belongs to the initial BWP alone";
    EXPECT_EQ(target(bwp.get_coreset(2)), wanted(1, 2, 2));
    EXPECT_TRUE(bwp.set_current_dl_bwp_index(1, 2));
    EXPECT_EQ(target(bwp.get_coreset(3)), wanted(1, 2, 2)) << "neither moves it: current already, and not counted";
    EXPECT_FALSE(bwp.get_coreset(1)->set_current_coreset_index(1, 3, 1));
    EXPECT_FALSE(bwp.get_coreset(1)->set_current_coreset_index(2, 0, 0));
    EXPECT_EQ(target(bwp.get_coreset(1)), wanted(1, 2, 1));
}

template <class facade_t>
void expect_carrier_cursor(lib_nr_waveform_configure_manager_t& waveform, const std::string& name)
{
    facade_t facade(waveform);
    const nr_test::captured_output_t output;
    EXPECT_TRUE(facade.set_current_carrier_index(1));
    EXPECT_EQ(output.text(), "");
    EXPECT_FALSE(facade.set_current_carrier_index(2));
    EXPECT_EQ(output.text(),
              name.empty() ? "" : name + "::set_current_carrier_index Report : Carrier index out of range!\n");
    EXPECT_FALSE(facade.get_enable());
}

TEST_F(cfg_nr_channel_cursors, presets)
{
    expect_carrier_cursor<cfg_nr_dl_tm_t>(m_waveform, "cfg_nr_dl_tm_t");
    expect_carrier_cursor<cfg_nr_dl_frc_t>(m_waveform, "cfg_nr_dl_frc_t");
    expect_carrier_cursor<cfg_nr_ul_frc_t>(m_waveform, "cfg_nr_ul_frc_t");
    expect_carrier_cursor<cfg_nr_ul_rmc_t>(m_waveform, "cfg_nr_ul_rmc_t");
    expect_carrier_cursor<cfg_nr_pucch_test_model_t>(m_waveform, "");
}

} // namespace

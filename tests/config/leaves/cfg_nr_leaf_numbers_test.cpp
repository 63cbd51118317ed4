#include "config/leaves/cfg_nr_leaf.h"
#include "host/nrwave_path.h"
#include "phy/lib_nr_phy.h"
#include "support/captured_output.h"
#include "support/settings.h"

#include <algorithm>
#include <complex>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// Numbers that no enumerator has, cast into every enumeration.

namespace
{

using namespace vek::nr_mod_lib;

constexpr std::uint32_t k_foreign[] = {0xFFFFFFFFu, 31, 40, 255, 0x80000000u};

using samples_t = std::vector<std::complex<double>>;

/// A narrow carrier that sends every channel of its direction.
std::vector<std::string> steps_for(const std::string& path)
{
    std::vector<std::string> steps = {"carrier_type=LIB_NR_DOWNLINK", "channel_bandwidth=LIB_NR_CHANNEL_FR1_10M",
                                      "baseband_filter=false"};
    if (path.find(".ul_prach") != std::string::npos || path.find(".prach_cp") != std::string::npos) {
        steps[0] = "carrier_type=LIB_NR_PRACH";
        steps.insert(steps.end(), {"ul_prach[0].configuration_idx=87", "ul_prach[0].enable=true"});
    }
    else if (path.find(".ul_") != std::string::npos) {
        steps[0] = "carrier_type=LIB_NR_UPLINK";
        steps.insert(steps.end(), {"ul_pucch[0].enable=true", "ul_pusch[0].slot_allocation=1", "ul_pusch[0].rb_num=20",
                                   "ul_pusch[0].enable_transfer_precoding=true", "ul_pusch[0].enable_ptrs=true",
                                   "ul_pusch[0].enable=true", "ul_srs[0].slot_allocation=2", "ul_srs[0].enable=true"});
    }
    else {
        steps.insert(steps.end(),
                     {"dl_bwp[1].coreset[1].cce2reg_mapping_type=LIB_NR_CORSET_INTERLEAVE",
                      "dl_dci[0].slot_allocation=3", "dl_dci[0].enable=true", "dl_pdsch[0].slot_allocation=1",
                      "dl_pdsch[0].vrb2prb_interleaver=LIB_NR_SCH_INTERLEAVE", "dl_pdsch[0].enable_ptrs=true",
                      "dl_pdsch[0].mcs=5", "dl_pdsch[0].enable=true", "dl_csirs[0].slot_allocation=2",
                      "dl_csirs[0].table_idx=2", "dl_csirs[0].density=0.5", "dl_csirs[0].enable=true",
                      "dl_prs[0].slot_offset=4", "dl_prs[0].rb_number=24", "dl_prs[0].enable=true"});
    }
    for (std::string& step : steps)
        step.insert(0, "carrier[0].");
    return steps;
}

void list_enumerations(void* facade, const cfg_nr_facade_table_t& table, const std::string& path,
                       std::vector<std::string>& paths)
{
    for (const cfg_nr_leaf_t& leaf : table.leaves)
        if (leaf.takes_number())
            paths.push_back(path + leaf.name);
    for (const cfg_nr_branch_t& branch : table.branches) {
        const unsigned int first = branch.first(facade);
        const std::string index = branch.is_list() ? '[' + std::to_string(first) + ']' : "";
        list_enumerations(branch.enter(facade, first), *branch.facade, path + branch.name + index + '.', paths);
    }
}

/// What is sent after a step on the leaf at a path.
template <class step_t>
samples_t generate_after(const std::string& path, step_t step)
{
    const nr_test::captured_output_t silence;
    nr_test::waveform_of_t waveform(steps_for(path));
    const nrwave::target_t target = nrwave::resolve(waveform, path);
    step(target);
    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    engine.nr_phy_process();
    return engine.get_baseband_signal_data();
}

TEST(cfg_nr_leaf_numbers, a_number_without_a_name_is_sent_as_one_that_has_a_name)
{
    cfg_nr_waveform_t fresh;
    std::vector<std::string> paths;
    list_enumerations(&fresh, g_cfg_nr_waveform_table, "", paths);
    EXPECT_GT(paths.size(), 90U);
    for (const std::string& path : paths) {
        std::vector<samples_t> known;
        for (const std::string& name : nrwave::resolve(fresh, path).leaf->enumerators())
            known.push_back(
                generate_after(path, [&](const nrwave::target_t& target) { target.leaf->write(target.facade, name); }));
        for (const std::uint32_t number : k_foreign) {
            const samples_t sent = generate_after(
                path, [&](const nrwave::target_t& target) { target.leaf->write_number(target.facade, number); });
            // 8 groups stay there beside 2 samples, which no two settings give.
            const bool is_mixture = path == "carrier[0].ul_pusch[0].n_ptrs_group";
            EXPECT_TRUE(is_mixture || std::find(known.begin(), known.end(), sent) != known.end())
                << path << ' ' << number;
        }
    }
}

} // namespace

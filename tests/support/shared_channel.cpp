#include "support/shared_channel.h"

#include "host/nrwave_path.h"
#include "support/settings.h"

#include <map>
#include <set>
#include <utility>

namespace nr_test
{

void draw_shared_channel(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path, std::mt19937& random)
{
    using namespace vek::nr_mod_lib;
    const std::map<std::string, std::pair<int, int>> ranges = {{"rnti", {0, 65535}},
                                                               {"nid", {-1, 1023}},
                                                               {"nid0", {-1, 65535}},
                                                               {"nid1", {-1, 1}},
                                                               {"dmrs_port", {0, 11}},
                                                               {"rbg_bitmap", {1, 1}},
                                                               {"mcs", {0, 28}},
                                                               {"first_symbol", {0, 5}},
                                                               {"symbol_num", {2, 14}},
                                                               {"ptrs_re_offset", {0, 3}},
                                                               {"nscid", {0, 1}},
                                                               {"rb_offset", {0, 20}},
                                                               {"rb_num", {0, 51}},
                                                               {"power_boosting", {-3, 3}},
                                                               {"dmrs_power", {-3, 3}},
                                                               {"ptrs_power", {-3, 3}},
                                                               {"cdm_groups_without_data_num", {1, 3}},
                                                               {"rapid", {-2, 63}},
                                                               {"interlace_index", {0, 9}},
                                                               {"rb_set_start", {0, 1}},
                                                               {"rb_set_number", {1, 2}},
                                                               {"unused_rb", {0, 5}},
                                                               {"hopping_rb_offset", {0, 60}},
                                                               {"n_rs_id", {-1, 40}},
                                                               {"n_ptrs_id", {0, 65535}}};
    const std::set<std::string> kept = {"bwp_id", "antenna_port", "one_frame_period", "enable_codebook"};
    const auto target = nrwave::resolve(waveform, path);
    for (unsigned int round = 0; round < 2; ++round)
        for (const cfg_nr_leaf_t& leaf : target.table->leaves) {
            const std::string name = leaf.name;
            std::vector<std::string> values = leaf.enumerators();
            if (leaf.form == cfg_nr_leaf_form_t::boolean)
                values = {"true", "false"};
            else if (const auto range = ranges.find(name); range != ranges.end())
                values = {
                    std::to_string(std::uniform_int_distribution(range->second.first, range->second.second)(random))};
            if (name == "rbg_bitmap")
                for (unsigned int i = 0; i < 26; ++i)
                    values[0] += random() % 2 == 0 ? '0' : '1';
            if (!values.empty() && kept.count(name) == 0)
                leaf.write(target.facade, values[random() % values.size()]);
        }
    take(waveform, {path + ".enable=true"});
}

} // namespace nr_test

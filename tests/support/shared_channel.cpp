#include "support/shared_channel.h"

#include "host/nrwave_path.h"
#include "support/settings.h"

#include <map>
#include <set>
#include <utility>

namespace nr_test
{

using namespace vek::nr_mod_lib;

namespace
{

/// TS 38.214 clause 6.1.2.2: RB by RB. By the own rules interlaces count from each set's first RB, one behind the
/// other, and do not hold a set's last RB by its first number.
std::vector<unsigned int> rbs_of(const lib_nr_carrier_configure_manager_t& carrier,
                                 const lib_nr_ul_sch_configure_manager_t& sch, bool standard_rules)
{
    const lib_nr_ul_bwp_configure_manager_t& bwp = carrier.get_ul_bwp(sch.get_bwp_id());
    const unsigned int start = bwp.get_rb_offset();
    const unsigned int end = start + bwp.get_rb_number();
    std::vector<unsigned int> rbs;
    if (sch.get_ra_type() == LIB_NR_SCH_RA_TYPE1)
        for (unsigned int i = 0; i < sch.get_rb_num(); ++i)
            rbs.push_back(start + sch.get_rb_offset() + i);
    const unsigned int P = 2u << sch.get_rbg_size();
    if (sch.get_ra_type() == LIB_NR_SCH_RA_TYPE0)
        for (unsigned int rb = start; rb < end; ++rb)
            if (sch.get_rbg_bitmap_v().at(rb / P - start / P) != 0)
                rbs.push_back(rb);
    if (sch.get_ra_type() != LIB_NR_SCH_RA_TYPE2)
        return rbs;
    const unsigned int step = bwp.get_numerology() == LIB_NR_SCS_15K ? 10 : 5;
    const auto sets = carrier.get_numerology_manager(0U).get_ul_guard_band().get_rb_set_info();
    const auto first_set = static_cast<std::uint16_t>(sch.get_rb_set_start());
    const auto last_set = static_cast<std::uint16_t>(first_set + sch.get_rb_set_number() - 1);
    for (unsigned int rb = start; standard_rules && rb < end; ++rb)
        for (const unsigned int interlace : sch.get_interlace_index_v())
            if (rb % step == interlace && rb >= sets.at(first_set).first &&
                rb + sch.get_unused_rb() <= sets.at(last_set).second)
                rbs.push_back(rb);
    if (standard_rules)
        return rbs;
    for (const unsigned int interlace : sch.get_interlace_index_v())
        for (unsigned int i = 0; i < sch.get_rb_set_number(); ++i) {
            const auto [first, last] = sets.at(static_cast<std::uint16_t>(sch.get_rb_set_start() + i));
            for (unsigned int rb = first; rb + sch.get_unused_rb() <= last; ++rb)
                if ((rb - first) % step == interlace && (interlace != 0 || rb != last))
                    rbs.push_back(rb);
        }
    return rbs;
}

} // namespace

sch_channel_t pusch_channel_of(const lib_nr_carrier_configure_manager_t& carrier, unsigned int index, unsigned int slot,
                               bool standard_rules)
{
    const lib_nr_ul_sch_configure_manager_t& sch = carrier.get_ul_sch(index);
    const lib_nr_ul_bwp_configure_manager_t& bwp = carrier.get_ul_bwp(sch.get_bwp_id());
    const unsigned int cell = carrier.get_cell_index();
    const unsigned int nid = sch_identity(sch.get_nid(), cell, standard_rules);
    const unsigned int rapid = static_cast<unsigned int>(sch.get_rapid()) << 10;
    sch_channel_t channel{sch,
                          cell,
                          bwp.get_cp_type() == LIB_NR_EXTEND_CP ? 12u : 14u,
                          rbs_of(carrier, sch, standard_rules),
                          sch_dmrs_symbols(sch, &sch, standard_rules),
                          sch.get_rapid() < 0 ? (sch.get_rnti() << 15) + nid : (sch.get_rnti() << 16) + rapid + nid};
    const bool in_slot = sch.get_hopping_mode() == LIB_NR_SCH_HOPPING_MODE_INTRA;
    if (in_slot)
        channel.second_hop = sch.get_first_symbol() + sch.get_symbol_num() / 2;
    const auto size = static_cast<int>(bwp.get_rb_number());
    const auto offset = static_cast<int>(sch.get_hopping_rb_offset());
    const auto end = static_cast<int>(sch.get_rb_offset() + sch.get_rb_num()) + offset;
    for (unsigned int symbol = 0; symbol < channel.symbols_in_slot; ++symbol)
        channel.shifts.push_back(symbol >= channel.second_hop ||
                                         (slot % 2 == 1 && sch.get_hopping_mode() == LIB_NR_SCH_HOPPING_MODE_INTER)
                                     ? offset - (end > size ? size : 0)
                                     : 0);
    channel.standard_rules = standard_rules;
    channel.ptrs_ports = sch.get_ptrs_port_v();
    channel.precoded = sch.get_enable_transfer_precoding() ? &sch : nullptr;
    return channel;
}

void draw_shared_channel(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path, std::mt19937& random)
{
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

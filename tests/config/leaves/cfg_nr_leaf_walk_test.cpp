#include "common/lib_common_list_parse.h"
#include "config/cfg_nr_enum_name_maps.h"
#include "config/cfg_nr_waveform.h"
#include "phy/lib_nr_phy.h"
#include "phy_common/lib_nr_phy_common.h"
#include "support/captured_output.h"
#include "support/leaf_walk.h"
#include "support/settings_text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <tuple>
#include <utility>

// Whatever is set, in whatever order: the configuration stays valid, a settings file brings it back, and it generates.

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::difference_t;
using nr_test::recall;
using nr_test::saved;

constexpr unsigned int k_walks = 1000;
constexpr unsigned int k_steps = 40;
constexpr unsigned int k_generate_each = 20;
constexpr unsigned long long k_most_samples = 5000000;

/// Each getter lies within what its list offers, or within the limits of its setting.
void expect_valid(cfg_nr_waveform_t& waveform)
{
    EXPECT_GE(waveform.get_frame_number(), 1u);
    EXPECT_LE(waveform.get_frame_number(), 4u);
    EXPECT_EQ(waveform.get_subframes_number(), 10u);
    ASSERT_GE(waveform.get_carrier_number(), 1u);
    // A carrier starts at 100 MHz in NTN mode too, where a setter would not take it, and a test model at 256QAM; a test
    // model takes 240 kHz, which it does not offer.
    for (const difference_t& value : nr_test::not_on_offer(waveform))
        EXPECT_TRUE(value.first == "LIB_NR_CHANNEL_FR1_100M" || value.first == "LIB_NR_SCS_240K" ||
                    value.first == "LIB_NR_MODULATION_256QAM")
            << value.path << " is " << value.first << ", not on offer";
    for (unsigned int c = 0; c < waveform.get_carrier_number(); ++c) {
        cfg_nr_carrier_t& carrier = *waveform.get_carrier(c);
        EXPECT_LE(std::abs(carrier.get_frequency_offset()), 400000000);
        EXPECT_GE(carrier.get_timing_offset(), 0.0);
        EXPECT_LE(carrier.get_timing_offset(), 0.01);
        EXPECT_LE(std::abs(carrier.get_power_boosting()), 40.0);
        EXPECT_LE(carrier.get_init_phase(), 360u);
        EXPECT_LE(carrier.get_ncell_id(), 1007u);
        EXPECT_LE(carrier.get_windowing_beta(), 0.5);

        const auto enabled = carrier.get_enable_numerology_list();
        EXPECT_FALSE(enabled.empty());
        for (unsigned int n = 0; n < carrier.get_numerology_number(); ++n) {
            cfg_nr_phy_numerology_t& numerology = *carrier.get_numerology(static_cast<int>(n));
            const unsigned int most =
                lib_nr_phy_common_t::get_max_transmit_rb_num(numerology.get_scs(), carrier.get_channel_bandwidth());
            EXPECT_GE(numerology.get_rb_size(), 6u);
            EXPECT_LE(numerology.get_rb_start() + numerology.get_rb_size(), most);
        }

        cfg_nr_dl_ssb_t& ssb = *carrier.get_dl_ssb();
        EXPECT_NE(std::find(enabled.begin(), enabled.end(), ssb.get_numerology()), enabled.end());
        EXPECT_FALSE(ssb.get_enable() && ssb.get_numerology() == LIB_NR_SCS_60K);
        // At 60 kHz, where the block has no place, it follows kssb without a limit; at 480 and 960 kHz that stays.
        EXPECT_TRUE(ssb.get_ssb_subcarrier_offset() <= 31u || ssb.get_numerology() == LIB_NR_SCS_60K ||
                    ssb.get_numerology() >= LIB_NR_SCS_480K);
        EXPECT_LE(ssb.get_pdcch_config_sib1(), 255u);
    }
}

bool ends_with(const std::string& text, const std::string& ending)
{
    return text.size() >= ending.size() && text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

/// The index in a list of a carrier, as in "dl_prs[2]", where the path leads through it.
std::optional<unsigned int> entry_of(const std::string& path, const std::string& list)
{
    const std::size_t place = path.find('.' + list + '[');
    if (place == std::string::npos)
        return std::nullopt;
    return static_cast<unsigned int>(std::stoul(path.substr(place + list.size() + 2)));
}

/// What a recall cannot bring back of a CSI-RS: ports beyond those of row 4, with which a fresh one starts, an
/// allocation of resource blocks that the density no longer has, slots that the spacing no longer has, and the place in
/// a BWP that does not follow its carrier's numerologies.
bool is_known_of_csirs(const difference_t& difference, lib_nr_carrier_configure_manager_t carrier, unsigned int frames)
{
    const auto entry = entry_of(difference.path, "dl_csirs");
    if (!entry)
        return false;
    const lib_nr_dl_csirs_configure_manager_t& stored = carrier.get_dl_csirs(*entry);
    carrier.set_dl_bwp_numerology(stored.get_bwp_id(), carrier.get_dl_bwp(stored.get_bwp_id()).get_numerology());
    const lib_nr_numerology_type_t numerology = carrier.get_dl_bwp(stored.get_bwp_id()).get_numerology();
    lib_nr_dl_csirs_configure_manager_t fresh(carrier.get_dl_bwp(1));
    fresh.set_antenna_port(stored.get_antenna_port(), 1);
    fresh.set_csirs_port(stored.get_csirs_feedback_port());
    fresh.set_one_frame_period(stored.get_one_frame_period(), frames, numerology);
    fresh.set_slot_allocation(stored.get_slot_allocation_feedback(), numerology);
    const std::map<std::string, std::string> values = {
        {"antenna_port", g_csirs_antenna_port_t_name_map.at(fresh.get_antenna_port().front())},
        {"csirs_port", fresh.get_csirs_feedback_port()},
        {"density_prb_allocation", stored.get_density() == 0.5 ? difference.first : "EVEN_PRBS"},
        {"slot_allocation", fresh.get_slot_allocation_feedback()},
        {"rb_offset", std::to_string(stored.get_rb_offset())},
        {"rb_num", std::to_string(stored.get_rb_num())}};
    const auto value = values.find(difference.path.substr(difference.path.rfind('.') + 1));
    return value != values.end() && value->second == difference.second;
}

/// What a recall cannot bring back of a PRS: values that its own setters would not take any more, since spacing, comb
/// or prefix came later or its numerology is narrow, and an enable that a fresh one at the carrier's spacing refuses.
bool is_known_of_prs(const difference_t& difference, const lib_nr_carrier_configure_manager_t& carrier)
{
    const auto entry = entry_of(difference.path, "dl_prs");
    if (!entry)
        return false;
    const std::string setting = difference.path.substr(difference.path.rfind('.') + 1);
    if (setting == "enable") {
        lib_nr_carrier_configure_manager_t fresh; // its one PRS is narrow after a narrow bandwidth, others are not yet
        fresh.set_bandwidth(carrier.get_bandwidth());
        fresh.set_numerology_mode(carrier.get_numerology_mode());
        fresh.set_numerology(carrier.get_numerology());
        lib_nr_dl_prs_configure_manager_t added(carrier.get_first_enable_numerology_manager());
        return difference.first == "true" && !(*entry == 0 ? fresh.get_dl_prs(0) : added).set_enable(true);
    }
    auto again = carrier.get_dl_prs(*entry);
    again.set_rb_number(again.get_rb_number());
    again.set_rb_offset(again.get_rb_offset());
    again.set_periodicity(again.get_periodicity());
    again.set_symbol_number(again.get_symbol_number());
    again.set_symbol_offset(again.get_symbol_offset());
    const std::map<std::string, std::string> values = {
        {"rb_number", std::to_string(again.get_rb_number())},
        {"rb_offset", std::to_string(again.get_rb_offset())},
        {"periodicity", std::to_string(again.get_periodicity())},
        {"set_slot_offset", std::to_string(again.get_set_slot_offset())},
        {"slot_offset", std::to_string(again.get_slot_offset())},
        {"symbol_number", g_lib_nr_prs_symbol_number_name_map.at(again.get_symbol_number())},
        {"symbol_offset", std::to_string(again.get_symbol_offset())}};
    const auto value = values.find(setting);
    return value != values.end() && value->second == difference.second;
}

/// What a recall cannot bring back of downlink BWPs: where the carrier sends none they do not follow its numerologies,
/// until they are set anew; and a prefix is set for all of them, the last time by the last.
bool is_known_of_dl_bwp(const difference_t& difference, lib_nr_carrier_configure_manager_t carrier)
{
    const auto entry = entry_of(difference.path, "dl_bwp");
    if (!entry)
        return false;
    for (unsigned int i = 0; i < carrier.get_dl_bwp_number(); ++i) {
        carrier.set_dl_bwp_numerology(i, carrier.get_dl_bwp(i).get_numerology());
        carrier.set_dl_bwp_cp_type(i, carrier.get_dl_bwp(carrier.get_dl_bwp_number() - 1).get_cp_type());
    }
    const lib_nr_dl_bwp_configure_manager_t& again = carrier.get_dl_bwp(*entry);
    const std::map<std::string, std::string> values = {
        {"bwp_rb_size", std::to_string(again.get_bwp_rb_size())},
        {"bwp_rb_start", std::to_string(again.get_bwp_rb_start())},
        {"scs", g_lib_nr_numerology_type_t_name_map.at(again.get_numerology())},
        {"cp_type", g_lib_nr_cyclic_prefix_type_t_name_map.at(again.get_cp_type())}};
    const std::string setting = difference.path.substr(difference.path.rfind('.') + 1);
    const auto value = values.find(setting);
    const std::size_t groups = again.get_bwp_rb_size() / 6;
    return value != values.end()
               ? value->second == difference.second
               : setting == "fd_resources" && difference.first.size() != groups && difference.second.size() == groups;
}

/// What a recall cannot bring back of an uplink BWP: what its numerology no longer has room for, since only uplink and
/// PRACH carriers let it follow, and a normal prefix at 60 kHz ahead of an extended one, which is set for all BWPs.
bool is_known_of_ul_bwp(const difference_t& difference, lib_nr_carrier_configure_manager_t carrier)
{
    const auto entry = entry_of(difference.path, "ul_bwp");
    if (!entry)
        return false;
    const unsigned int index = *entry;
    bool extended_later = false;
    for (unsigned int i = index + 1; i < carrier.get_ul_bwp_number(); ++i)
        extended_later |= carrier.get_ul_bwp(i).get_cp_type() == LIB_NR_EXTEND_CP;
    if (ends_with(difference.path, ".cp_type") && extended_later)
        return difference.first == "LIB_NR_NORMAL_CP";
    const auto state = [&] {
        const auto& bwp = std::as_const(carrier).get_ul_bwp(index);
        return std::tuple(bwp.get_numerology(), bwp.get_rb_offset(), bwp.get_rb_number());
    };
    const auto before = state();
    carrier.set_ul_bwp_numerology(index, std::get<0>(before));
    return carrier.get_carrier_type() == LIB_NR_DOWNLINK && state() != before;
}

/// What a recall cannot bring back of a DCI: it takes candidate, search space and level while the DCI is in the CORESET
/// that a fresh one comes to and has one candidate, and no value any more that something set later would refuse.
bool is_known_of_dci(const difference_t& difference, const lib_nr_carrier_configure_manager_t& was,
                     const lib_nr_carrier_configure_manager_t& came_back)
{
    const std::size_t place = difference.path.find("dl_dci[");
    if (place == std::string::npos)
        return false;
    const auto& dci = was.get_dl_dci(static_cast<unsigned int>(std::stoul(difference.path.substr(place + 7))));
    const auto& bwp = came_back.get_dl_bwp(dci.get_bwp_id());
    lib_nr_dl_dci_configure_manager_t again(came_back.get_dl_bwp(1));
    again.update_by_dl_bwp(bwp);
    const auto& bitmap = bwp.get_coreset(again.get_coreset_id()).get_fd_resources_for_lib();
    again.set_enable(dci.get_enable(), bwp.get_numerology());
    again.set_search_space_type(dci.get_search_space_type(), bitmap);
    again.set_aggregation_level(dci.get_aggregation_level(), bitmap);
    again.set_slot_allocation(dci.get_slot_allocation(), bwp.get_numerology());
    again.set_data_block_size(dci.get_data_block_size());
    again.set_start_symbol_within_slot(
        dci.get_start_symbol_within_slot(),
        lib_nr_phy_common_t::get_symbol_number_in_slot(bwp.get_numerology(), bwp.get_cp_type()),
        bwp.get_coreset(dci.get_coreset_id()).get_duration());
    const std::map<std::string, std::string> values = {
        {"enable", again.get_enable() ? "true" : "false"},
        {"search_space_type", g_lib_nr_dl_dci_search_space_type_t_name_map.at(again.get_search_space_type())},
        {"aggregation_level", g_lib_nr_dl_dci_aggregation_level_t_name_map.at(again.get_aggregation_level())},
        {"allocated_candidate", "0"},
        {"slot_allocation", again.get_slot_allocation()},
        {"data_block_size", std::to_string(again.get_data_block_size())},
        {"start_symbol_within_slot", std::to_string(again.get_start_symbol_within_slot())}};
    const auto value = values.find(difference.path.substr(difference.path.rfind('.') + 1));
    return value != values.end() && value->second == difference.second;
}

/// What a recall cannot bring back of a PUCCH: values that its own setters would not take any more, since what limits
/// them came later; what format or spacing has no use for; an OCC index, which a file has ahead of its length; what
/// hangs on guard bands; and a power that is all but 0.
bool is_known_of_pucch(const difference_t& difference, lib_nr_carrier_configure_manager_t carrier)
{
    const std::size_t place = difference.path.find("ul_pucch[");
    if (place == std::string::npos)
        return false;
    if (ends_with(difference.path, "power"))
        return std::abs(std::stod(difference.first)) <= 1e-12 && difference.second == "0";
    auto& again = carrier.get_ul_pucch(static_cast<unsigned int>(std::stoul(difference.path.substr(place + 9))));
    const lib_nr_ul_bwp_configure_manager_t& bwp = carrier.get_ul_bwp(again.get_bwp_id());
    carrier.set_ul_bwp_numerology(again.get_bwp_id(), bwp.get_numerology());
    const auto slots = again.get_allocated_slots();
    const unsigned int frame = lib_nr_phy_common_t::get_slot_in_frame(bwp.get_numerology());
    if (std::all_of(slots.begin(), slots.end(), [frame](unsigned int slot) { return slot >= frame; }))
        again.set_allocated_slots("0", bwp.get_numerology());
    again.set_symbol_num(again.get_symbol_num(), bwp.get_cp_type());
    again.set_rb_offset(again.get_rb_offset(), bwp.get_rb_number());
    again.set_rb_num(again.get_rb_num(), bwp.get_rb_number());
    again.set_inter_slot_frequency_hopping(again.get_inter_slot_frequency_hopping());
    again.set_number_of_slots_for_pucch_repetition(again.get_number_of_slots_for_pucch_repetition());
    again.set_occ_index(again.get_occ_index());
    again.set_uci_format(again.get_uci_format());
    const lib_nr_ul_pucch_format_t format = again.get_pucch_format();
    unsigned int occ_index = again.get_occ_index();
    if (format != LIB_NR_UL_PUCCH_FORMAT_1)
        occ_index = std::min(occ_index, format == LIB_NR_UL_PUCCH_FORMAT_4 ? 1u : 0u);
    const bool has_uci_format = format <= LIB_NR_UL_PUCCH_FORMAT_1;
    std::map<std::string, std::string> values = {
        {"allocated_slots", again.get_allocated_slots_feedback()},
        {"symbol_num", std::to_string(again.get_symbol_num())},
        {"rb_offset", std::to_string(again.get_rb_offset())},
        {"rb_num", std::to_string(again.get_rb_num())},
        {"second_hop_prb", std::to_string(again.get_second_hop_prb())},
        {"inter_slot_frequency_hopping", again.get_inter_slot_frequency_hopping() ? "true" : "false"},
        {"number_of_slots_for_pucch_repetition", std::to_string(again.get_number_of_slots_for_pucch_repetition())},
        {"occ_index", std::to_string(occ_index)},
        {"uci_format", g_lib_nr_ul_uci_content_t_name_map.at(has_uci_format ? again.get_uci_format()
                                                                            : LIB_NR_UL_UCI_SR_AND_HARQ_ACK)},
        {"rb_set_index", "0"}};
    if (bwp.get_numerology() > LIB_NR_SCS_30K)
        values.insert({{"interlace0", "0"}, {"interlace1", "-1"}});
    const auto value = values.find(difference.path.substr(difference.path.rfind('.') + 1));
    return value != values.end() && value->second == difference.second;
}

/// What a recall cannot bring back of a PDSCH: what the BWP has no room for that came back, slots that no frame of its
/// spacing has, and a first symbol that waits for the MIB of the block, which comes later.
bool is_known_of_pdsch(const difference_t& difference, const lib_nr_carrier_configure_manager_t& was,
                       const lib_nr_carrier_configure_manager_t& came_back, unsigned int frames)
{
    const std::size_t place = difference.path.find("dl_pdsch[");
    if (place == std::string::npos)
        return false;
    auto again = was.get_dl_sch(static_cast<unsigned int>(std::stoul(difference.path.substr(place + 9))));
    const auto& bwp = came_back.get_dl_bwp(again.get_bwp_id());
    again.update_by_dl_bwp(bwp);
    if (again.get_dmrs_type_a_position() == LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB)
        again.set_dmrs_type_a_position(LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB, 2, bwp.get_cp_type());
    lib_nr_dl_sch_configure_manager_t fresh(bwp);
    fresh.set_one_frame_period(again.get_one_frame_period(), frames, bwp.get_numerology());
    fresh.set_slot_allocation(again.get_slot_allocation(), bwp.get_numerology());
    const std::map<std::string, std::string> values = {
        {"enable", again.get_enable() ? "true" : "false"},
        {"slot_allocation", fresh.get_slot_allocation()},
        {"first_symbol", std::to_string(again.get_first_symbol())},
        {"symbol_num", std::to_string(again.get_symbol_num())},
        {"rbg_size", g_lib_nr_sch_rbg_size_t_name_map.at(again.get_rbg_size())},
        {"rbg_bitmap", again.get_rbg_bitmap()},
        {"rb_offset", std::to_string(again.get_rb_offset())},
        {"rb_num", std::to_string(again.get_rb_num())}};
    const auto value = values.find(difference.path.substr(difference.path.rfind('.') + 1));
    return value != values.end() && value->second == difference.second;
}

/// What a recall cannot bring back of a PUSCH: what its BWP has no room for that came back, and what a file holds ahead
/// of the setting that it hangs on. Guard bands are in no file, so there is one RB set.
bool is_known_of_pusch(const difference_t& difference, const lib_nr_carrier_configure_manager_t& was,
                       const lib_nr_carrier_configure_manager_t& came_back, unsigned int frames)
{
    const std::size_t place = difference.path.find("ul_pusch[");
    if (place == std::string::npos)
        return false;
    const auto index = static_cast<unsigned int>(std::stoul(difference.path.substr(place + 9)));
    const lib_nr_ul_sch_configure_manager_t& sch = was.get_ul_sch(index);
    const auto& bwp = came_back.get_ul_bwp(came_back.get_ul_sch(index).get_bwp_id());
    const auto& numerology = came_back.get_numerology_manager(bwp.get_numerology());
    lib_nr_ul_sch_configure_manager_t again = sch;
    again.update_by_ul_bwp(bwp, numerology, came_back.get_bandwidth());
    lib_nr_ul_sch_configure_manager_t fresh(bwp, numerology, came_back.get_bandwidth());
    fresh.set_ra_type(sch.get_ra_type());
    fresh.set_enable_transfer_precoding(sch.get_enable_transfer_precoding());
    fresh.set_enable_codebook(sch.get_enable_codebook());
    fresh.set_antenna_port_number(sch.get_antenna_port_number());
    fresh.set_tpmi(sch.get_tpmi()); // one layer
    fresh.set_interlace_index(sch.get_interlace_index());
    fresh.set_unused_rb(sch.get_unused_rb());
    fresh.set_hopping_rb_offset(sch.get_hopping_rb_offset(), bwp.get_rb_number()); // all resource blocks
    fresh.set_ptrs_port(sch.get_ptrs_port());                                      // DMRS port 0
    fresh.set_dmrs_port(sch.get_dmrs_port());
    fresh.set_one_frame_period(sch.get_one_frame_period(), frames, bwp.get_numerology());
    fresh.set_slot_allocation(sch.get_slot_allocation(), bwp.get_numerology());
    fresh.set_rb_offset(sch.get_rb_offset(), bwp.get_rb_number());
    fresh.set_rb_num(sch.get_rb_num(), bwp.get_rb_number());
    const std::map<std::string, std::string> values = {
        {"enable", again.get_enable() ? "true" : "false"},
        {"first_symbol", std::to_string(again.get_first_symbol())},
        {"symbol_num", std::to_string(again.get_symbol_num())},
        {"rbg_size", g_lib_nr_sch_rbg_size_t_name_map.at(again.get_rbg_size())},
        {"rbg_bitmap", again.get_rbg_bitmap()},
        {"ra_type", g_lib_nr_sch_ra_type_t_name_map.at(fresh.get_ra_type())},
        {"tpmi", std::to_string(fresh.get_tpmi())},
        {"rb_set_start", "0"},
        {"rb_set_number", "1"},
        {"interlace_index", fresh.get_interlace_index()},
        {"unused_rb", std::to_string(fresh.get_unused_rb())},
        {"hopping_rb_offset", std::to_string(fresh.get_hopping_rb_offset())},
        {"ptrs_port", fresh.get_ptrs_port()},
        {"slot_allocation", fresh.get_slot_allocation()},
        {"rb_offset", std::to_string(fresh.get_rb_offset())},
        {"rb_num", std::to_string(fresh.get_rb_num())}};
    const auto value = values.find(difference.path.substr(difference.path.rfind('.') + 1));
    return value != values.end() && value->second == difference.second;
}

/// What a recall cannot bring back of a test model: layers that were set for another one, and the modulation that a
/// fresh one has.
bool is_known_of_dl_tm(const difference_t& difference, const lib_nr_carrier_configure_manager_t& was)
{
    lib_nr_dl_tm_configure_manager_t again = was.get_dl_tm();
    again.set_test_model(again.get_test_model());
    again.set_layers(again.get_layers());
    if (ends_with(difference.path, "dl_tm[0].layers"))
        return difference.second == std::to_string(again.get_layers());
    return ends_with(difference.path, "dl_tm[0].modulation") &&
           difference.second == g_lib_nr_modulation_type_t_name_map.at(again.get_modulation());
}

/// What a recall cannot bring back, and why.
bool is_known(const difference_t& difference, cfg_nr_waveform_t& waveform, cfg_nr_waveform_t& came_back)
{
    // The block size is recalled before the carriers, so it is limited to the samples of one default carrier, and then,
    // as it is at every change of the sample rate, to those of the carriers so far.
    if (difference.path == "cfr_block_size") {
        cfg_nr_waveform_t fresh;
        fresh.set_frame_number(waveform.get_frame_number());
        unsigned long long limit = std::min(std::stoull(difference.first), fresh.get_waveform_sample_points());
        lib_nr_waveform_configure_manager_t so_far = waveform.get_waveform_manager();
        do
            limit = std::min(limit, so_far.get_waveform_sample_points());
        while (so_far.remove_carrier(so_far.get_carrier_number() - 1));
        return std::stoull(difference.second) <= limit; // on its way a carrier may be narrower yet
    }
    // Presets give a waveform more antennas than a recall does, which leaves the ports of the first, if it has one.
    if (difference.path == "antennas_number")
        return difference.second == "1";
    if (ends_with(difference.path, ".antenna_port") && waveform.get_antennas_number() > 1)
        return difference.first.rfind(difference.second, 0) == 0 || ends_with(difference.second, "PORT_0");
    const std::string carrier = "carrier[";
    if (difference.path.rfind(carrier, 0) != 0)
        return false;
    const auto index = static_cast<unsigned int>(std::stoul(difference.path.substr(carrier.size())));
    const lib_nr_carrier_configure_manager_t& manager = waveform.get_waveform_manager().get_carrier(index);
    const lib_nr_carrier_configure_manager_t& again = came_back.get_waveform_manager().get_carrier(index);
    if (is_known_of_prs(difference, manager) || is_known_of_dl_bwp(difference, manager) ||
        is_known_of_ul_bwp(difference, manager) || is_known_of_pucch(difference, manager) ||
        is_known_of_csirs(difference, manager, waveform.get_frame_number()) ||
        is_known_of_dci(difference, manager, again) || is_known_of_dl_tm(difference, manager) ||
        is_known_of_pdsch(difference, manager, again, waveform.get_frame_number()) ||
        is_known_of_pusch(difference, manager, again, waveform.get_frame_number()))
        return true;
    cfg_nr_dl_ssb_t& ssb = *waveform.get_carrier(index)->get_dl_ssb();
    // At 60 kHz the block has no case: it keeps the one it had, with the number of its candidates, and takes none. Its
    // subcarrier offset follows kssb without a limit.
    if (ssb.get_numerology() == LIB_NR_SCS_60K)
        for (const char* setting : {"dl_ssb[0].ssb_pattern", "dl_ssb[0].lmax", "dl_ssb[0].active_idx",
                                    "dl_ssb[0].power_boosting", "dl_ssb[0].ssb_subcarrier_offset"})
            if (ends_with(difference.path, setting))
                return true;
    // While the MIB is automatic its data source cannot be set.
    if (ends_with(difference.path, "dl_ssb[0].data_source"))
        return ssb.get_auto_cofig_mib();
    // Powers of inactive indices cannot be set; those of active ones come back to their two decimals.
    if (ends_with(difference.path, "dl_ssb[0].power_boosting")) {
        using parse_t = vek::common_lib::lib_common_list_parse_t;
        std::vector<unsigned int> active;
        std::string stored;
        std::vector<std::string> powers;
        std::vector<std::string> recalled;
        parse_t::string_to_index_list(ssb.get_active_idx(), active, stored);
        parse_t::split_str(difference.first, powers, ",");
        parse_t::split_str(difference.second, recalled, ",");
        return std::all_of(active.begin(), active.end(), [&](auto i) { return powers.at(i) == recalled.at(i); });
    }
    // At 480 and 960 kHz the subcarrier offsets of the block stay what they were at another spacing.
    if (ends_with(difference.path, "dl_ssb[0].kssb") || ends_with(difference.path, "dl_ssb[0].ssb_subcarrier_offset"))
        return ssb.get_numerology() >= LIB_NR_SCS_480K;
    return false;
}

TEST(cfg_nr_leaf_walk, any_settings_in_any_order_stay_valid_and_come_back_from_a_file)
{
    for (unsigned int seed = 0; seed < k_walks; ++seed) {
        nr_test::captured_output_t silence;
        cfg_nr_waveform_t waveform;
        nr_test::leaf_walk_t walk(waveform, seed);
        walk.take_steps(k_steps);
        SCOPED_TRACE("walk " + std::to_string(seed) + ":\n" + walk.history());

        expect_valid(waveform);

        const std::string first = saved(waveform);
        cfg_nr_waveform_t recalled;
        ASSERT_TRUE(recall(recalled, first));
        if (saved(recalled) != first) {
            for (const difference_t& difference : nr_test::differences(waveform, recalled))
                EXPECT_TRUE(is_known(difference, waveform, recalled))
                    << difference.path << " was " << difference.first << ", came back as " << difference.second;
        }

        if (seed % k_generate_each == 0 && waveform.get_waveform_sample_points() <= k_most_samples) {
            lib_nr_phy_t engine;
            engine.waveform_config(waveform.get_waveform_manager());
            if (engine.nr_phy_process()) {
                EXPECT_EQ(engine.get_baseband_signal_data().size(), waveform.get_waveform_sample_points());
            }
            else {
                EXPECT_NE(silence.text().find("Resource Mapping Conflict!"), std::string::npos);
            }
        }
        if (HasFailure())
            return;
    }
}

} // namespace

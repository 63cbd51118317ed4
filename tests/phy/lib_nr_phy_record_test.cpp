#include "phy/lib_nr_phy.h"
#include "receiver/ofdm_receiver.h"
#include "support/captured_output.h"
#include "support/engine_peer.h"
#include "support/settings.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

// What a run tells of the entries of its channels.

namespace
{

using namespace vek::nr_mod_lib;
using steps_t = std::vector<std::string>;

const std::string k_narrow = ".channel_bandwidth=LIB_NR_CHANNEL_FR1_20M";
const std::string k_block = ".dl_ssb.enable=true";
const std::string k_pusch = ".ul_pusch[0].enable=true";
const std::string k_srs = ".ul_srs[0].enable=true";
const std::string k_uplink = ".carrier_type=LIB_NR_UPLINK";

/// The record of a run with the steps, each of them of carrier 0 where it begins with a dot; and, beside it, the cells
/// and slots that the payload maps hold.
struct recorded_t
{
    explicit recorded_t(const steps_t& steps, unsigned int subframes = 10, unsigned int carrier = 0)
    {
        steps_t whole(carrier, "add carrier");
        for (const std::string& step : steps)
            whole.push_back(step.front() == '.' ? "carrier[" + std::to_string(carrier) + ']' + step : step);
        const nr_test::waveform_of_t waveform(whole);
        const nr_test::captured_output_t silence;
        lib_nr_phy_t engine;
        nr_test::engine_peer_t::after_channel_steps(engine, [&](unsigned int of, unsigned int, unsigned int frame) {
            const auto& rows = lib_nr_channel_resource_manager_t::get_inst().get_payload_mapping();
            if (of == carrier && frame == 0)
                first_frame = rows;
            const auto slots = static_cast<std::uint32_t>(rows.size() / 14);
            for (std::size_t symbol = 0; symbol < rows.size(); ++symbol)
                for (const std::complex<double>& cell : rows[symbol])
                    if (cell != 0.0) {
                        ++payload_cells;
                        payload_slots.insert(frame * slots + static_cast<std::uint32_t>(symbol / 14));
                    }
        });
        lib_nr_waveform_configure_manager_t manager = waveform.get_waveform_manager();
        manager.set_subframes_number(subframes);
        engine.waveform_config(manager);
        succeeded = engine.nr_phy_process();
        record = engine.get_record();
    }

    bool succeeded = false;
    lib_nr_phy_record_t record;
    std::uint64_t payload_cells = 0;
    nr_test::rows_t first_frame; ///< of the carrier that the steps are for
    std::set<std::uint32_t> payload_slots;
};

TEST(lib_nr_phy_record, counts_the_cells_and_slots_that_the_payload_map_holds)
{
    constexpr unsigned int k_zeros = 130; // that an SS/PBCH block has beside PSS and SSS
    struct row_t
    {
        const char* channel;
        unsigned int blocks;
        steps_t steps;
    };
    const std::vector<row_t> rows = {
        {"SS/PBCH", 6, {k_narrow, "frame_number=3", ".dl_ssb.half_frame_idx=1", ".dl_ssb.active_idx=0,3", k_block}},
        {"CSI-RS", 0, {k_narrow, ".dl_csirs[0].slot_allocation=3,1", ".dl_csirs[0].enable=true"}},
        {"PRS", 0, {k_narrow, ".dl_prs[0].enable=true"}},
        {"PDCCH", 0, {k_narrow, "frame_number=2", ".dl_dci[0].enable=true"}},
        {"PDSCH", 4, {k_narrow, k_block, ".dl_pdsch[0].slot_allocation=0:2", ".dl_pdsch[0].enable=true"}},
        {"PUCCH", 0, {k_uplink, k_narrow, ".ul_pucch[0].allocated_slots=2,5", ".ul_pucch[0].enable=true"}},
        {"PUSCH", 0, {k_uplink, k_narrow, ".ul_pusch[0].slot_allocation=4", k_pusch}},
        {"SRS", 0, {k_uplink, "frame_number=2", ".ul_srs[0].c_srs=63", ".ul_srs[0].n_shift=20", k_srs}},
    };
    for (const row_t& row : rows) {
        SCOPED_TRACE(row.channel);
        const recorded_t run(row.steps);
        ASSERT_TRUE(run.succeeded);
        std::uint64_t cells = 0;
        std::set<std::uint32_t> slots;
        for (const lib_nr_entry_record_t& entry : run.record.entries) {
            cells += entry.cells;
            slots.insert(entry.slots.begin(), entry.slots.end());
            EXPECT_EQ(entry.silence, LIB_NR_SILENCE_NONE);
        }
        EXPECT_EQ(run.record.entries.back().channel, row.channel);
        EXPECT_EQ(cells, run.payload_cells + row.blocks * k_zeros);
        EXPECT_EQ(slots, run.payload_slots);
    }
}

TEST(lib_nr_phy_record, tells_why_an_entry_is_silent)
{
    const std::string prach = ".carrier_type=LIB_NR_PRACH";
    const std::string extended = ".ul_bwp[0].cp_type=LIB_NR_EXTEND_CP";
    const std::string wide = ".numerology=LIB_NR_SCS_60K";
    const std::vector<std::pair<lib_nr_silence_t, steps_t>> rows = {
        {LIB_NR_SILENCE_PREFIX, {k_uplink, wide, extended, k_srs}},
        {LIB_NR_SILENCE_PREFIX, {wide, ".dl_prs[0].cp_type=LIB_NR_EXTEND_CP", ".dl_prs[0].enable=true"}},
        {LIB_NR_SILENCE_SLOT, {".dl_prs[0].periodicity=640", ".dl_prs[0].slot_offset=30", ".dl_prs[0].enable=true"}},
        {LIB_NR_SILENCE_TAKEN,
         {".dl_prs[0].periodicity=640", ".dl_prs[0].symbol_offset=4", ".dl_prs[0].enable=true", k_block}},
        {LIB_NR_SILENCE_RB,
         {".dl_pdsch[0].ra_type=LIB_NR_SCH_RA_TYPE0", ".dl_pdsch[0].rbg_bitmap=0", ".dl_pdsch[0].enable=true"}},
        {LIB_NR_SILENCE_GRID, {k_uplink, k_narrow, ".ul_srs[0].n_shift=60", k_srs}},
        {LIB_NR_SILENCE_GRID, {prach, ".channel_bandwidth=LIB_NR_CHANNEL_FR1_5M", ".ul_prach[0].n_RA_start=11"}},
        {LIB_NR_SILENCE_GRID,
         {k_uplink, wide, ".dl_bwp[0].scs=LIB_NR_SCS_60K", ".dl_bwp[0].cp_type=LIB_NR_EXTEND_CP", extended,
          ".ul_srs[0].l_offset=13", k_srs}},
        {LIB_NR_SILENCE_SLOT, {prach, ".ul_prach[0].configuration_idx=13"}},
        {LIB_NR_SILENCE_STOPPED, {prach, "add carrier[0].ul_prach", ".ul_prach[0].enable=false"}},
    };
    for (const auto& [silence, steps] : rows) {
        SCOPED_TRACE(steps.back());
        const recorded_t run(steps);
        ASSERT_TRUE(run.succeeded);
        ASSERT_FALSE(run.record.entries.empty());
        EXPECT_EQ(run.record.entries.back().silence, silence);
        EXPECT_TRUE(run.record.entries.back().slots.empty());
    }
    for (const steps_t& steps : {steps_t{prach}, {k_uplink, ".ul_pusch[0].slot_allocation=6", k_pusch}}) {
        const recorded_t run(steps, 1);
        EXPECT_EQ(run.record.entries.back().silence, LIB_NR_SILENCE_SLOT) << "behind the waveform's end";
        EXPECT_TRUE(run.record.entries.back().slots.empty());
    }
}

TEST(lib_nr_phy_record, tells_what_is_cut_and_who_meets_whom)
{
    const recorded_t cut({k_uplink, ".ul_srs[0].c_srs=63", ".ul_srs[0].n_shift=20",
                          ".ul_srs[0].Ktc_number="
                          "LIB_NR_K_TC_VALUE_4",
                          k_srs});
    ASSERT_EQ(cut.record.entries.size(), 1u);
    const lib_nr_entry_record_t& srs = cut.record.entries.front();
    EXPECT_EQ(std::pair(srs.rbs_outside, srs.rbs), std::pair(19u, 272u));
    EXPECT_EQ(srs.cells_outside, srs.slots.size() * 19 * 3);

    const recorded_t met({k_narrow, "frame_number=2", ".dl_dci[0].start_symbol_within_slot=2",
                          ".dl_dci[0].slot_allocation=3", ".dl_dci[0].enable=true", "add carrier[0].dl_pdsch",
                          ".dl_pdsch[1].one_frame_period=false", ".dl_pdsch[1].slot_allocation=3",
                          ".dl_pdsch[1].rb_num=12", ".dl_pdsch[1].enable=true"});
    EXPECT_FALSE(met.succeeded);
    ASSERT_EQ(met.record.conflicts.size(), 1u);
    const lib_nr_entry_conflict_t& conflict = met.record.conflicts.front();
    EXPECT_EQ(conflict.newcomer.channel, "PDSCH");
    EXPECT_EQ(conflict.newcomer.entry, 1u);
    EXPECT_EQ(conflict.owner.channel, "PDCCH");
    EXPECT_EQ(std::tuple(conflict.frame, conflict.slot, conflict.symbol, conflict.rb), std::tuple(0u, 3u, 2u, 0u));
    EXPECT_EQ(conflict.cells, 12u * 12);
}

TEST(lib_nr_phy_record, names_the_deviations_that_a_run_met)
{
    using d = lib_nr_deviation_t;
    const std::string bwp = ".dl_bwp[1].bwp_rb_start=3";
    const std::string csirs = ".dl_csirs[0].enable=true";
    const std::string dci = ".dl_dci[0].enable=true";
    const std::string pdsch = ".dl_pdsch[0].enable=true";
    const std::string prs = ".dl_prs[0].enable=true";
    const std::string precoded = ".ul_pusch[0].enable_transfer_precoding=true";
    const std::string pucch = ".ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_";
    const std::string enabled_pucch = ".ul_pucch[0].enable=true";
    const std::vector<std::pair<std::vector<d>, steps_t>> rows = {
        {{d::carrier_phase}, {".frequency_offset=5000000"}},
        {{}, {".frequency_offset=5000000", "phase_compensation=false", csirs, pdsch}},
        {{d::pbch_second_scrambling, d::mib_flags}, {".dl_ssb.half_frame_idx=1", k_block}},
        {{d::mib_flags, d::pdsch_beside_block}, {k_block, pdsch}},
        {{d::pdcch_hash}, {".dl_dci[0].rnti=1", dci}},
        {{d::dmrs_reference}, {bwp, dci}},
        {{d::dmrs_reference},
         {bwp, ".dl_pdsch[0].bwp_id=1", ".dl_pdsch[0].dmrs_mapping_ref=LIB_NR_DMRS_MAPPING_REF_PRB", pdsch}},
        {{d::sch_identity_zero}, {".ncell_id=7", ".dl_pdsch[0].nid=0", pdsch}},
        {{d::csirs_place}, {bwp, csirs}},
        {{d::csirs_zero_power}, {".dl_csirs[0].zero_power=true", csirs}},
        {{d::prs_sequence}, {prs}},
        {{d::prs_sequence, d::prs_occasions},
         {".dl_prs[0].slot_offset=7", "frame_number=2", ".dl_prs[0].periodicity=16", prs}},
        {{d::pusch_short_dmrs}, {k_uplink, ".ul_pusch[0].symbol_num=4", k_pusch}},
        {{d::low_papr_symbol},
         {k_uplink, precoded, ".ul_pusch[0].hopping_mode=LIB_NR_SCH_HOPPING_MODE_INTRA",
          ".ul_pusch[0].dmrs_additional_position=LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1",
          ".ul_pusch[0].dmrs_hopping=LIB_NR_SCH_DMRS_HOPPING_GROUP", k_pusch}},
        {{d::dft_ptrs_power},
         {k_uplink, precoded, ".ul_pusch[0].enable_ptrs=true", ".ul_pusch[0].power_boosting=3", k_pusch}},
        {{d::codebook},
         {k_uplink, ".ul_pusch[0].enable_codebook=true", "antennas_number=4",
          ".ul_pusch[0].antenna_port_number=LIB_NR_ANTENNA_PORT_NUMBER_4", ".ul_pusch[0].tpmi=10", k_pusch}},
        {{d::interlaces}, {k_uplink, k_narrow, ".ul_pusch[0].ra_type=LIB_NR_SCH_RA_TYPE2", k_pusch}},
        {{d::dmrs_reference}, {k_uplink, ".ul_bwp[0].rb_offset=3", pucch + "2", enabled_pucch}},
        {{d::pucch1_dmrs_cover},
         {k_uplink, pucch + "1", ".ul_pucch[0].first_symbol=0", ".ul_pucch[0].symbol_num=14",
          ".ul_pucch[0].intra_slot_frequency_hopping=true", ".ul_pucch[0].occ_index=1", enabled_pucch}},
        {{d::pucch1_scheduling_request},
         {k_uplink, pucch + "1", ".ul_pucch[0].uci_format=LIB_NR_UL_UCI_SR_ONLY", enabled_pucch}},
        {{d::pucch_slot_hopping},
         {k_uplink, pucch + "1", ".ul_pucch[0].allocated_slots=0,1", ".ul_pucch[0].inter_slot_frequency_hopping=true",
          enabled_pucch}},
        {{d::uci_split, d::uci_multiplexing},
         {k_uplink, pucch + "3", ".ul_pucch[0].uci_content=true", ".ul_pucch[0].harq_ack_payload_size=3",
          ".ul_pucch[0].first_symbol=0", ".ul_pucch[0].symbol_num=14", enabled_pucch}},
        {{d::srs_place},
         {k_uplink, ".ul_srs[0].srs_periodity=LIB_NR_SRS_40MS_PERIODICITY", ".ul_srs[0].t_offset=23", "frame_number=2",
          k_srs}},
        {{d::prach_place},
         {".carrier_type=LIB_NR_PRACH", k_narrow, ".numerology=LIB_NR_SCS_15K", ".ul_bwp[0].rb_offset=4",
          ".ul_prach[0].configuration_idx=198", ".ul_prach[0].prach_scs=PRACH_SCS_30K"}},
    };
    for (const auto& [deviations, steps] : rows)
        for (const std::string rules : {"standard_rules=true", "standard_rules=false"}) {
            steps_t all = {k_narrow, rules};
            all.insert(all.end(), steps.begin(), steps.end());
            SCOPED_TRACE(testing::PrintToString(all));
            const recorded_t run(all);
            ASSERT_TRUE(run.succeeded);
            std::vector<d> met;
            for (const lib_nr_met_deviation_t& one : run.record.deviations)
                met.push_back(one.deviation);
            EXPECT_EQ(met, rules == "standard_rules=true" ? std::vector<d>() : deviations);
            // The same as the second carrier, and with frames behind it.
            all.push_back("frame_number=3");
            EXPECT_EQ(recorded_t(all, 10, 1).first_frame, run.first_frame);
        }
}

} // namespace

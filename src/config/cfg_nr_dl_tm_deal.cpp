#include "config/cfg_nr_preset_deal.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <vector>

// The downlink test models of TS 38.141-1 and TS 38.141-2 clause 4.9.2.

namespace vek::nr_mod_lib
{

namespace
{

/// One PDSCH of a test model.
struct pdsch_t
{
    std::string slots;
    unsigned int rnti;
    unsigned int first_symbol;
    unsigned int symbols;
    unsigned int rb_offset = 0;
    unsigned int rb_number = 0;
    /// Resource block groups of BWP 2; where there are none, the resource blocks above, of BWP 1.
    std::string groups = {};
    double power = 0.0;
    /// Where it is not the model's.
    std::optional<lib_nr_modulation_type_t> modulation = std::nullopt;
};

using pdschs_t = std::vector<pdsch_t>;

constexpr unsigned int k_narrow_rbs = 3;
constexpr unsigned int k_symbols = 14;

/// Where a row of a table holds: 60 kHz has a row of its own in FR1.
enum class range_t
{
    any,
    fr1,
    fr2
};

/// The TDD pattern of a spacing: slots with a PDCCH, slots that are all downlink, and special ones with the symbols of
/// their downlink part.
struct tdd_pattern_t
{
    lib_nr_numerology_type_t numerology;
    range_t range;
    const char* pdcch;
    const char* full;
    const char* special;
    unsigned int special_symbols;
};

constexpr tdd_pattern_t k_tdd_patterns[] = {
    {LIB_NR_SCS_15K, range_t::any, "0:3,5:8", "0:2,5:7", "3,8", 10},
    {LIB_NR_SCS_30K, range_t::any, "0:7,10:17", "0:6,10:16", "7,17", 6},
    {LIB_NR_SCS_60K, range_t::fr1, "0:14,20:34", "0:13,20:33", "14,34", 12},
    {LIB_NR_SCS_60K, range_t::fr2, "0:3,5:8,10:13,15:18,20:23,25:28,30:33,35:38",
     "0:2,5:7,10:12,15:17,20:22,25:27,30:32,35:37", "3,8,13,18,23,28,33,38", 10},
    {LIB_NR_SCS_120K, range_t::any, "0:7,10:17,20:27,30:37,40:47,50:57,60:67,70:77",
     "0:6,10:16,20:26,30:36,40:46,50:56,60:66,70:76", "7,17,27,37,47,57,67,77", 6},
    {LIB_NR_SCS_480K, range_t::any, "0:29,40:69,80:109,120:149,160:189,200:229,240:269,280:309",
     "0:28,40:68,80:108,120:148,160:188,200:228,240:268,280:308", "29,69,109,149,189,229,269,309", 10},
    {LIB_NR_SCS_960K, range_t::any, "0:59,80:139,160:219,240:299,320:379,400:459,480:539,560:619",
     "0:58,80:138,160:218,240:298,320:378,400:458,480:538,560:618", "59,139,219,299,379,459,539,619", 6},
};

/// Where the one resource block of a model of the TM2 family lies.
enum class place_t
{
    low,
    middle,
    high
};

/// One PDSCH of the TM2 family in TDD.
struct single_rb_row_t
{
    lib_nr_numerology_type_t numerology;
    place_t place;
    unsigned int symbols;
    const char* slots;
};

constexpr single_rb_row_t k_fr1_single_rb[] = {
    {LIB_NR_SCS_15K, place_t::low, 12, "0,6"},
    {LIB_NR_SCS_15K, place_t::middle, 12, "1,7"},
    {LIB_NR_SCS_15K, place_t::high, 12, "2,5"},
    {LIB_NR_SCS_15K, place_t::low, 8, "3"},
    {LIB_NR_SCS_15K, place_t::high, 8, "8"},
    {LIB_NR_SCS_30K, place_t::low, 12, "0,3,6,12,15"},
    {LIB_NR_SCS_30K, place_t::middle, 12, "1,4,10,13,16"},
    {LIB_NR_SCS_30K, place_t::high, 12, "2,5,11,14"},
    {LIB_NR_SCS_30K, place_t::middle, 4, "7"},
    {LIB_NR_SCS_30K, place_t::high, 4, "17"},
    {LIB_NR_SCS_60K, place_t::low, 12, "0,3,6,9,12,21,24,27,30,33"},
    {LIB_NR_SCS_60K, place_t::middle, 12, "1,4,7,10,13,22,25,28,31"},
    {LIB_NR_SCS_60K, place_t::high, 12, "2,5,8,11,20,23,26,29,32"},
    {LIB_NR_SCS_60K, place_t::middle, 10, "34"},
    {LIB_NR_SCS_60K, place_t::high, 10, "14"},
};

// At 480 kHz the first and the second of eight groups of slots rotate from different offsets, so that in slots 120 to
// 147, 200 to 227 and 280 to 307 two resource blocks are sent in every third slot and none in the one behind.
constexpr single_rb_row_t k_fr2_single_rb[] = {
    {LIB_NR_SCS_60K, place_t::low, 12, "0,6,12,15,21,27,30,36"},
    {LIB_NR_SCS_60K, place_t::middle, 12, "1,7,10,16,22,25,31,37"},
    {LIB_NR_SCS_60K, place_t::high, 12, "2,5,11,17,20,26,32,35"},
    {LIB_NR_SCS_60K, place_t::low, 8, "3,18,33"},
    {LIB_NR_SCS_60K, place_t::middle, 8, "13,28"},
    {LIB_NR_SCS_60K, place_t::high, 8, "8,23,38"},
    {LIB_NR_SCS_120K, place_t::low, 12, "0,3,6,12,15,21,24,30,33,36,42,45,51,54,60,63,66,72,75"},
    {LIB_NR_SCS_120K, place_t::middle, 12, "1,4,10,13,16,22,25,31,34,40,43,46,52,55,61,64,70,73,76"},
    {LIB_NR_SCS_120K, place_t::high, 12, "2,5,11,14,20,23,26,32,35,41,44,50,53,56,62,65,71,74"},
    {LIB_NR_SCS_120K, place_t::low, 4, "27,57"},
    {LIB_NR_SCS_120K, place_t::middle, 4, "7,37,67"},
    {LIB_NR_SCS_120K, place_t::high, 4, "17,47,77"},
    {LIB_NR_SCS_480K, place_t::low, 12, "0:3:27,42:3:66,80:3:108,122:3:146,160:3:187,202:3:228,240:3:267,282:3:306"},
    {LIB_NR_SCS_480K, place_t::middle, 12, "1:3:28,40:3:67,81:3:108,120:3:147,161:3:188,200:3:227,241:3:268,280:3:307"},
    {LIB_NR_SCS_480K, place_t::high, 12, "2:3:26,41:3:68,82:3:106,120:3:148,162:3:186,200:3:228,242:3:266,280:3:308"},
    {LIB_NR_SCS_480K, place_t::low, 8, "69,149,229,309"},
    {LIB_NR_SCS_480K, place_t::high, 8, "29,109,189,269"},
    {LIB_NR_SCS_960K, place_t::low, 12, "0:3:58,80:3:138,160:3:218,240:3:298,320:3:378,400:3:458,480:3:538,560:3:618"},
    {LIB_NR_SCS_960K, place_t::middle, 12,
     "1:3:58,81:3:138,161:3:218,241:3:298,321:3:378,401:3:458,481:3:538,561:3:618"},
    {LIB_NR_SCS_960K, place_t::high, 12, "2:3:58,82:3:138,162:3:218,242:3:298,322:3:378,402:3:458,482:3:538,562:3:618"},
    {LIB_NR_SCS_960K, place_t::high, 4, "59,139,219,299,379,459,539,619"},
};

/// How TM1.2 and TM3.x divide the band above the first resource blocks: the part of it that set A takes at most, the
/// power of set A, and what is sent there.
struct split_t
{
    lib_nr_test_mode_t model;
    double part;
    double power;
    double power_ratio;
    lib_nr_modulation_type_t modulation;
    unsigned int rnti_a;
    unsigned int rnti_b;
};

constexpr split_t k_splits[] = {
    {LIB_NR_FR1_TM1_2, 0.4, 3.0, 1.9952623149688795, LIB_NR_MODULATION_QPSK, 0, 1},
    {LIB_NR_FR1_TM3_2, 0.6, -3.0, 0.5011872336272722, LIB_NR_MODULATION_16QAM, 1, 0},
    {LIB_NR_FR1_TM3_3, 0.5, -6.0, 0.251188643150958, LIB_NR_MODULATION_QPSK, 1, 0},
};

/// Slots in which a PDSCH has so many symbols.
struct slot_list_t
{
    std::string slots;
    unsigned int symbols;
};
using slot_lists_t = std::vector<slot_list_t>;

void tell_numerology_error(const char* operation)
{
    std::cout << "cfg_nr_carrier_t::" << operation << " : Error numerology!" << std::endl;
}

/// The last slot of a frame, as text.
std::string last_slot(lib_nr_numerology_type_t numerology)
{
    return std::to_string(lib_nr_phy_common_t::get_slot_in_frame(numerology) - 1);
}

const tdd_pattern_t* tdd_pattern_of(const lib_nr_dl_tm_configure_manager_t& model)
{
    const range_t wanted = model.get_frequency_range() == NR_FR1 ? range_t::fr1 : range_t::fr2;
    for (const tdd_pattern_t& row : k_tdd_patterns)
        if (row.numerology == model.get_numerology() && (row.range == range_t::any || row.range == wanted))
            return &row;
    return nullptr;
}

/// Every slot in FDD; full and special ones in TDD. Without a pattern the texts are empty, which leaves a channel its
/// slots.
slot_lists_t slots_of(const lib_nr_dl_tm_configure_manager_t& model)
{
    if (model.get_duplex_type() == LIB_NR_DUPLEX_TYPE_FDD)
        return {{"0:" + last_slot(model.get_numerology()), k_symbols}};
    if (const tdd_pattern_t* pattern = tdd_pattern_of(model))
        return {{pattern->full, k_symbols}, {pattern->special, pattern->special_symbols}};
    tell_numerology_error("_test_model_pdsch_slot_allocationx_1");
    return {{"", k_symbols}, {"", k_symbols}};
}

pdsch_t single_rb(const std::string& slots, place_t place, unsigned int symbols, unsigned int rb_number)
{
    const unsigned int rb_offset = place == place_t::low ? 0 : place == place_t::middle ? rb_number / 2 : rb_number - 1;
    return {slots, 2, 2, symbols, rb_offset, 1};
}

constexpr place_t k_places[] = {place_t::low, place_t::middle, place_t::high};

/// The offsets take turns, slot by slot.
pdschs_t single_rbs(const lib_nr_dl_tm_configure_manager_t& model, unsigned int rb_number)
{
    pdschs_t pdschs;
    if (model.get_duplex_type() == LIB_NR_DUPLEX_TYPE_FDD) {
        for (const place_t place : k_places) {
            const std::string first = std::to_string(static_cast<int>(place));
            pdschs.push_back(single_rb(first + ":3:" + last_slot(model.get_numerology()), place, 12, rb_number));
        }
        return pdschs;
    }
    const bool fr1 = model.get_frequency_range() == NR_FR1;
    for (const single_rb_row_t& row : fr1 ? std::span<const single_rb_row_t>(k_fr1_single_rb) : k_fr2_single_rb)
        if (row.numerology == model.get_numerology())
            pdschs.push_back(single_rb(row.slots, row.place, row.symbols, rb_number));
    if (!pdschs.empty())
        return pdschs;
    for (const place_t place : k_places) {
        tell_numerology_error("_test_model_pdsch_fr2_tm2x_tdd");
        pdschs.push_back(single_rb("", place, 12, rb_number));
    }
    return pdschs;
}

bool has_single_rb(lib_nr_test_mode_t model)
{
    return (model >= LIB_NR_FR1_TM2 && model <= LIB_NR_FR1_TM2b) || model == LIB_NR_FR2_TM2 || model == LIB_NR_FR2_TM2a;
}

/// The narrow PDSCH ahead of the band, two symbols behind the wide ones.
pdsch_t narrow(const slot_list_t& list) { return {list.slots, 2, 2, list.symbols - 2, 0, k_narrow_rbs}; }

pdschs_t full_band(const slot_lists_t& lists, unsigned int rb_number)
{
    pdschs_t pdschs;
    for (const slot_list_t& list : lists) {
        pdschs.push_back({list.slots, 0, 0, list.symbols, k_narrow_rbs, rb_number - k_narrow_rbs});
        pdschs.push_back(narrow(list));
    }
    return pdschs;
}

/// The two sets of resource block groups of a split band, and the power of the second.
struct split_band_t
{
    std::string set_a;
    std::string set_b;
    double power_b;
};

/// The band of BWP 2, which lies above the first resource blocks, in groups of p. Set A has x groups: the last full one
/// and every second from 1 on.
split_band_t split_band(const split_t& split, int rb_number, int p, const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    constexpr int k_first = static_cast<int>(k_narrow_rbs);
    const auto bwp_start = static_cast<int>(bwp.get_bwp_rb_start());
    const auto bwp_size = static_cast<int>(bwp.get_bwp_rb_size());
    const int wide = rb_number - k_first;
    const int a = (rb_number + k_first % p - p - k_first) / p;
    const int pairs = (a - a % 2) / 2;
    const double most = std::min(pairs + 1.0, std::floor(split.part * wide) / p);
    const int x = static_cast<int>(std::floor(most));
    const int c = (rb_number + k_first % p - k_first) / p - 1;
    const int groups = (bwp_size + bwp_start % p + p - 1) / p;

    split_band_t band{"", "", 10 * std::log10((wide - p * x * split.power_ratio) / (wide - p * x))};
    for (int group = 0; group < groups; ++group) {
        const bool is_a = group == c || (group % 2 == 1 && group <= 2 * x - 3);
        band.set_a += is_a ? '1' : '0';
        band.set_b += is_a ? '0' : '1';
    }
    return band;
}

pdschs_t rbg_split(const slot_lists_t& lists, const split_t& split, const split_band_t& band)
{
    pdschs_t pdschs;
    for (const slot_list_t& list : lists) {
        pdschs.push_back({list.slots, split.rnti_a, 0, list.symbols, 0, 0, band.set_a, split.power, split.modulation});
        pdschs.push_back({list.slots, split.rnti_b, 0, list.symbols, 0, 0, band.set_b, band.power_b});
        pdschs.push_back(narrow(list));
    }
    return pdschs;
}

const split_t* split_of(lib_nr_test_mode_t model)
{
    for (const split_t& split : k_splits)
        if (split.model == model)
            return &split;
    return nullptr;
}

void lay_pdsch(cfg_nr_dl_sch_t& sch, const pdsch_t& pdsch)
{
    sch.set_slot_allocation(pdsch.slots);
    sch.set_bwp_id(pdsch.groups.empty() ? 1 : 2);
    sch.set_rnti(pdsch.rnti);
    sch.set_first_symbol(pdsch.first_symbol);
    sch.set_symbol_num(pdsch.symbols);
    if (pdsch.groups.empty()) {
        sch.set_ra_type(LIB_NR_SCH_RA_TYPE1);
        sch.set_rb_offset(pdsch.rb_offset);
        sch.set_rb_num(pdsch.rb_number);
        return;
    }
    sch.set_ra_type(LIB_NR_SCH_RA_TYPE0);
    sch.set_rbg_size(sch.get_rbg_size_list().front());
    sch.set_rbg_bitmap(pdsch.groups);
    sch.set_power_boosting(pdsch.power);
}

/// What interleaving would use.
void set_plain_bundles(cfg_nr_dl_coreset_t& coreset)
{
    coreset.set_reg_bundle_size(LIB_NR_DCI_REG_BUNDLE_SIZE_6);
    coreset.set_interleaver_size(LIB_NR_DCI_INTERLEAVER_SIZE_2);
    coreset.set_shift_idx(0);
}

} // namespace

bool cfg_nr_carrier_t::deal_test_model()
{
    const test_model_t model = _target().get_dl_tm();
    const lib_nr_numerology_type_t numerology = model.get_numerology();
    const unsigned int frames = model.get_duplex_type() == LIB_NR_DUPLEX_TYPE_FDD ? 1 : 2;
    const unsigned int rb_number = model.get_rb_number_of(numerology);
    _lay_preset_carrier(model, {LIB_NR_DOWNLINK, numerology, frames, model.get_layers(), model.get_n_id()});

    lay_preset_dl_bwp(*this, numerology, rb_number);
    set_plain_bundles(*get_dl_bwp(1)->get_coreset(1));
    if (split_of(model.get_test_model())) {
        add_dl_bwp();
        cfg_nr_dl_bwp_t& bwp = *get_dl_bwp(2);
        bwp.set_bwp_rb_start(k_narrow_rbs);
        bwp.set_bwp_rb_size(rb_number - k_narrow_rbs);
        bwp.set_coreset_number(2);
        lay_preset_coreset(*bwp.get_coreset(1), "1,0,0,0,0,0,0");
        set_plain_bundles(*bwp.get_coreset(1));
    }
    _test_model_pdcch_cfg(model);
    return _test_model_pdsch_cfg(model);
}

void cfg_nr_carrier_t::_test_model_pdcch_cfg(const test_model_t& model)
{
    cfg_nr_dl_dci_t& dci = *get_dl_dci(0);
    dci.set_enable(true);
    dci.set_pwr_boosting(0.0);
    dci.set_dmrs_pwr_boosting(0.0);
    dci.set_scrambling_id(static_cast<int>(model.get_n_id()));
    dci.set_rnti(0);
    dci.set_crnti(0);
    dci.set_allocated_candidate(0);
    dci.set_coding(false);
    dci.set_aggregation_level(LIB_NR_DCI_AGGREGATION_LEVEL_1);
    dci.set_data_block_size(108);
    dci.set_data_source(LIB_NR_PN23);
    dci.set_bwp_id(1);
    dci.set_coreset_id(1);
    dci.set_search_space_type(LIB_NR_DCI_USS);
    dci.set_start_symbol_within_slot(0);
    dci.set_candidates_num(LIB_NR_DCI_CANDIDATE_4);

    if (model.get_duplex_type() == LIB_NR_DUPLEX_TYPE_FDD)
        dci.set_slot_allocation("0:" + last_slot(model.get_numerology()));
    else if (const tdd_pattern_t* pattern = tdd_pattern_of(model))
        dci.set_slot_allocation(pattern->pdcch);
    else
        tell_numerology_error("deal_test_model");
}

bool cfg_nr_carrier_t::_test_model_pdsch_cfg(const test_model_t& model)
{
    const bool fdd = model.get_duplex_type() == LIB_NR_DUPLEX_TYPE_FDD;
    if (model.get_test_model() > (fdd ? LIB_NR_FR1_TM3_3 : LIB_NR_FR2_TM3_1a)) {
        std::cout << "cfg_nr_carrier_t::_test_model_pdsch_cfg : Error test model in " << (fdd ? "FDD!" : "TDD!")
                  << std::endl;
        return false;
    }
    const unsigned int rb_number = model.get_rb_number_of(model.get_numerology());
    pdschs_t pdschs;
    if (const split_t* split = split_of(model.get_test_model())) {
        const lib_nr_dl_bwp_configure_manager_t& bwp = _target().get_dl_bwp(2);
        const auto p = 2 << _target().get_dl_sch(0).get_rbg_size_list(bwp.get_bwp_rb_size()).front();
        pdschs = rbg_split(slots_of(model), *split, split_band(*split, static_cast<int>(rb_number), p, bwp));
    }
    else if (has_single_rb(model.get_test_model()))
        pdschs = single_rbs(model, rb_number);
    else
        pdschs = full_band(slots_of(model), rb_number);

    for (std::size_t i = 0; i < pdschs.size(); ++i) {
        if (i > 0)
            add_dl_sch();
        cfg_nr_dl_sch_t& sch = *get_dl_pdsch(static_cast<int>(i));
        _test_model_pdsch_ref_cfg(sch, model);
        lay_pdsch(sch, pdschs[i]);
        if (pdschs[i].modulation)
            _test_model_pdsch_set_modulation(sch, *pdschs[i].modulation);
        else
            _test_model_pdsch_set_modulation(sch, model);
    }
    return true;
}

void cfg_nr_carrier_t::_test_model_pdsch_ref_cfg(cfg_nr_dl_sch_t& sch, const test_model_t& model)
{
    const bool fr1 = model.get_frequency_range() == NR_FR1;
    const preset_sch_t preset = {fr1 ? LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1 : LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0,
                                 -1, !fr1};
    begin_preset_sch(sch, preset);
    set_preset_ports(sch, model.get_layers(), 1);
    sch.set_slot_allocation("0");
    sch.set_first_symbol(0);
    sch.set_symbol_num(k_symbols);
    sch.set_bwp_id(1);
    sch.set_ra_type(LIB_NR_SCH_RA_TYPE1);
    sch.set_rbg_size(LIB_NR_SCH_RBG_SIZE_16);
    sch.set_rbg_bitmap("0,0,1,0,1,1,1,1,1,1,1,1,0");
    sch.set_rb_offset(0);
    sch.set_rb_num(100);
    sch.set_vrb2prb_interleaver(LIB_NR_SCH_NO_INTERLEAVE);
    sch.set_vrb_bundle_size(LIB_NR_SCH_VRB_BUNDLE_SIZE_4);
    sch.set_enable_coding(false);
    sch.set_mcs_table(TABLE_5_1_3_1_4);
    sch.set_mcs(12);
    sch.set_x_overhead(LIB_NR_SCH_X_OVERHEAD_0);
    sch.set_tb_scaling(LIB_NR_SCH_TB_SCALING_1);
    sch.set_data_source(LIB_NR_PN23);
    sch.set_data_source_custom("0");
    end_preset_sch(sch, preset);
    sch.set_ptrs_power(0.0);
    sch.set_ptrs_freqency_density(LIB_NR_SCH_PTRS_FREQUENCY_DENSITYE_2);
    sch.set_ptrs_time_density(LIB_NR_SCH_PTRS_TIME_DENSITYE_4);
    sch.set_ptrs_re_offset(0);
}

/// The modulation of the model: the one that it has, or the chosen one.
void cfg_nr_carrier_t::_test_model_pdsch_set_modulation(cfg_nr_dl_sch_t& sch, const test_model_t& model)
{
    const std::vector<lib_nr_modulation_type_t> offered = model.get_valid_modulation_list();
    _test_model_pdsch_set_modulation(sch, offered.size() == 1 ? offered.front() : model.get_modulation());
}

void cfg_nr_carrier_t::_test_model_pdsch_set_modulation(cfg_nr_dl_sch_t& sch, lib_nr_modulation_type_t modulation)
{
    const auto set = [&sch](mcs_table_t table, unsigned int mcs) {
        sch.set_mcs_table(table);
        sch.set_mcs(mcs);
    };
    switch (modulation) {
    case LIB_NR_MODULATION_QPSK:
        return set(TABLE_5_1_3_1_1, 4);
    case LIB_NR_MODULATION_16QAM:
        return set(TABLE_5_1_3_1_1, 16);
    case LIB_NR_MODULATION_64QAM:
        return set(TABLE_5_1_3_1_1, 20);
    case LIB_NR_MODULATION_256QAM:
        return set(TABLE_5_1_3_1_2, 20);
    case LIB_NR_MODULATION_1024QAM:
        return set(TABLE_5_1_3_1_4, 23);
    default:
        std::cout << "cfg_nr_carrier_t::_test_model_pdsch_set_modulation : Error modulation!" << std::endl;
    }
}

} // namespace vek::nr_mod_lib

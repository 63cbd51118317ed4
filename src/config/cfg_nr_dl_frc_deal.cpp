#include "common/lib_common_list_parse.h"
#include "config/cfg_nr_preset_deal.h"
#include "phy_common/lib_nr_phy_common.h"

#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

// The downlink fixed reference channels of TS 38.101-1, -2 and -5 annex A.3.

namespace vek::nr_mod_lib
{

namespace
{

/// What decides the slots of a PDSCH, beside the spacing.
enum class frame_t
{
    ntn,
    fdd,
    tdd_fr1,
    tdd_fr2
};

struct slots_row_t
{
    frame_t frame;
    lib_nr_numerology_type_t numerology;
    const char* slots;
};

/// Of two frames, slot 0 excepted, those whose number modulo 5 is 0, 1 or 2.
constexpr const char* k_three_of_five = nullptr;
constexpr const char* k_all_slots_120k = "1:159";

constexpr slots_row_t k_slots[] = {
    {frame_t::ntn, LIB_NR_SCS_15K, "1:19"},
    {frame_t::ntn, LIB_NR_SCS_60K, k_three_of_five},
    {frame_t::ntn, LIB_NR_SCS_120K, k_three_of_five},
    {frame_t::fdd, LIB_NR_SCS_15K, "2:9"},
    {frame_t::fdd, LIB_NR_SCS_30K, "3:19"},
    {frame_t::fdd, LIB_NR_SCS_60K, "4:39"},
    {frame_t::tdd_fr1, LIB_NR_SCS_15K, "2,5,6,7"},
    {frame_t::tdd_fr1, LIB_NR_SCS_30K, "3:6,10:16"},
    {frame_t::tdd_fr1, LIB_NR_SCS_60K, "4:13,20:33"},
    {frame_t::tdd_fr2, LIB_NR_SCS_60K, k_three_of_five},
    {frame_t::tdd_fr2, LIB_NR_SCS_120K, k_three_of_five},
};

/// MCS by channel, of the tables of TS 38.214 clause 5.1.3.1.
struct mcs_row_t
{
    mcs_table_t table;
    unsigned int mcs;
};
constexpr mcs_row_t k_qpsk = {TABLE_5_1_3_1_1, 4};
constexpr mcs_row_t k_16qam = {TABLE_5_1_3_1_1, 13};
constexpr mcs_row_t k_64qam_fr1 = {TABLE_5_1_3_1_1, 24};
constexpr mcs_row_t k_64qam_fr2 = {TABLE_5_1_3_1_1, 19};
constexpr mcs_row_t k_256qam = {TABLE_5_1_3_1_2, 23};
constexpr mcs_row_t k_1024qam = {TABLE_5_1_3_1_4, 23};
constexpr mcs_row_t k_mcs[] = {k_qpsk,   k_64qam_fr1, k_256qam, k_1024qam, k_qpsk,     k_64qam_fr2,
                               k_256qam, k_qpsk,      k_16qam,  k_qpsk,    k_16qam,    k_64qam_fr2,
                               k_qpsk,   k_16qam,     k_qpsk,   k_16qam,   k_64qam_fr2};

constexpr const char* k_csirs_bitmaps[] = {"0,0,0,1", "0,0,1,0", "0,1,0,0", "1,0,0,0"};

using dl_frc_t = lib_nr_dl_frc_configure_manager_t;

void tell_error(const char* builder, const char* error)
{
    std::cout << "cfg_nr_carrier_t::_frc_pdsch_" << builder << " : " << error << std::endl;
}

std::string three_of_five(lib_nr_numerology_type_t numerology)
{
    std::vector<unsigned int> slots;
    for (unsigned int slot = 1; slot < 2 * lib_nr_phy_common_t::get_slot_in_frame(numerology); ++slot)
        if (slot % 5 < 3)
            slots.push_back(slot);
    return common_lib::lib_common_list_parse_t::index_list_to_string(slots);
}

/// Empty, with a printed line, where a channel has no slots.
std::string pdsch_slots(const dl_frc_t& frc, bool ntn)
{
    constexpr const char* k_builder = "set_allocation";
    const lib_nr_freq_range_type_t range = frc.get_frequency_range();
    const bool fdd = frc.get_duplex_type() == LIB_NR_DUPLEX_TYPE_FDD;
    frame_t frame = frame_t::ntn;
    if (!ntn) {
        if (fdd && range != NR_FR1) {
            tell_error(k_builder, "Error! Not suppoort FDD besides NR_FR1!");
            return {};
        }
        if (range != NR_FR1 && range != NR_FR2_1) {
            tell_error(k_builder, "Error! Not suppoort FDD besides NR_FR1 and NR_FR2-1!");
            return {};
        }
        frame = fdd ? frame_t::fdd : range == NR_FR1 ? frame_t::tdd_fr1 : frame_t::tdd_fr2;
    }
    const lib_nr_dl_fixed_reference_channels_t channel = frc.get_fixed_reference_channels();
    const bool all_slots =
        channel == LIB_NR_NTN_FRC_FR2_A_3_2_1_3_3_QPSK || channel == LIB_NR_NTN_FRC_FR2_A_3_2_1_3_4_16QAM;
    if (ntn && all_slots)
        return k_all_slots_120k;
    for (const slots_row_t& row : k_slots)
        if (row.frame == frame && row.numerology == frc.get_numerolgy())
            return row.slots ? row.slots : three_of_five(row.numerology);
    tell_error(k_builder, "Error SCS");
    return {};
}

/// The slot, of two frames, of the first two CSI-RS; the other two follow in the next. Nothing where the spacing has
/// none.
std::optional<unsigned int> csirs_slot(const dl_frc_t& frc, bool ntn)
{
    const bool fr1 = frc.get_frequency_range() == NR_FR1;
    if (ntn)
        return fr1 ? 10 : 80;
    switch (frc.get_numerolgy()) {
    case LIB_NR_SCS_15K:
        return fr1 ? std::optional(0U) : std::nullopt;
    case LIB_NR_SCS_30K:
        return fr1 ? std::optional(1U) : std::nullopt;
    case LIB_NR_SCS_60K:
        return fr1 ? 2 : 40;
    case LIB_NR_SCS_120K:
        return fr1 ? std::nullopt : std::optional(80U);
    default:
        return std::nullopt;
    }
}

/// Centred in the band, in resource blocks and subcarriers of 15 kHz in FR1, of 60 kHz in FR2.
void place_ssb(cfg_nr_dl_ssb_t& ssb, const dl_frc_t& frc, unsigned int rb_number)
{
    const unsigned int mu = lib_nr_phy_common_t::get_u_from_scs(frc.get_numerolgy());
    const unsigned int place = (mu + 1 - (frc.get_frequency_range() == NR_FR1 ? 0 : 2)) * (rb_number - 20);
    ssb.set_rb_offset(place / 2);
    ssb.set_kssb(place % 2 == 1 ? 6 : 0);
}

void lay_ssb(cfg_nr_dl_ssb_t& ssb, const dl_frc_t& frc, bool ntn, unsigned int rb_number)
{
    ssb.set_enable(true);
    ssb.set_numerology(frc.get_numerolgy());
    ssb.set_ssb_pattern(NR_SSB_CASE_B);
    ssb.set_lmax(LIB_NR_LMAX_4);
    ssb.set_active_idx("0");
    ssb.set_power_boosting("0,0");
    ssb.set_pss_power_boosting(0.0);
    ssb.set_periodicity(ntn ? LIB_NR_SSB_20MS_PERIODICITY : LIB_NR_SSB_10MS_PERIODICITY);
    place_ssb(ssb, frc, rb_number);
    ssb.set_coding(true);
    ssb.set_auto_cofig_mib(true);
    ssb.set_data_source(LIB_NR_USER_CFG);
    ssb.set_data_source_custom("0");
    ssb.set_ssb_subcarrier_offset(0);
    ssb.set_dmrs_typea_position(2);
    ssb.set_pdcch_config_sib1(0);
    ssb.set_cell_barred(false);
    ssb.set_intra_frequency_reselection(false);
}

} // namespace

void cfg_nr_carrier_t::deal_dl_fixed_reference_channels()
{
    const dl_frc_t frc = _target().get_dl_frc();
    const lib_nr_numerology_type_t numerology = frc.get_numerolgy();
    const unsigned int rb_number = frc.get_rb_number_of(numerology);
    constexpr unsigned int k_cell = 0;
    _lay_preset_carrier(frc, {LIB_NR_DOWNLINK, numerology, 2, 1, k_cell});

    lay_preset_dl_bwp(*this, numerology, rb_number);
    if (rb_number > 23)
        lay_ssb(m_dl_ssb, frc, _target().get_nr_ntn(), rb_number);

    cfg_nr_dl_sch_t& sch = *get_dl_pdsch(0);
    const preset_sch_t preset = {LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_2, k_cell};
    begin_preset_sch(sch, preset);
    set_preset_ports(sch, 1, 2);
    _frc_pdsch_set_allocation(sch, frc);
    sch.set_first_symbol(2);
    sch.set_symbol_num(12);
    sch.set_bwp_id(1);
    sch.set_ra_type(LIB_NR_SCH_RA_TYPE1);
    sch.set_rb_offset(0);
    sch.set_rb_num(rb_number);
    sch.set_vrb2prb_interleaver(LIB_NR_SCH_NO_INTERLEAVE);
    sch.set_enable_coding(true);
    _frc_pdsch_set_modulation(sch, frc);
    sch.set_x_overhead(LIB_NR_SCH_X_OVERHEAD_0);
    sch.set_data_source(LIB_NR_PN9);
    end_preset_sch(sch, preset);
    _frc_pdsch_set_csirs(frc);
}

void cfg_nr_carrier_t::_frc_pdsch_set_allocation(cfg_nr_dl_sch_t& sch, const dl_frc_t& frc)
{
    const bool ntn = _target().get_nr_ntn();
    sch.set_one_frame_period(!ntn);
    sch.set_slot_allocation(pdsch_slots(frc, ntn));
    std::cout << "test : ok " << std::endl;
}

void cfg_nr_carrier_t::_frc_pdsch_set_modulation(cfg_nr_dl_sch_t& sch, const dl_frc_t& frc)
{
    sch.set_mcs_table(TABLE_5_1_3_1_1);
    const lib_nr_dl_fixed_reference_channels_t channel = frc.get_fixed_reference_channels();
    if (channel >= std::size(k_mcs)) {
        tell_error("set_modulation", "Error fixed reference channels");
        return;
    }
    sch.set_mcs_table(k_mcs[channel].table);
    sch.set_mcs(k_mcs[channel].mcs);
}

void cfg_nr_carrier_t::_frc_pdsch_set_csirs(const dl_frc_t& frc)
{
    const unsigned int number = frc.get_frequency_range() == NR_FR1 || _target().get_nr_ntn() ? 4 : 2;
    for (unsigned int i = 0; i < number; ++i) {
        if (i > 0)
            add_dl_csirs();
        _frc_pdsch_set_csirs(*get_dl_csirs(static_cast<int>(i)), i, frc);
    }
}

void cfg_nr_carrier_t::_frc_pdsch_set_csirs(cfg_nr_dl_csirs_t& csirs, unsigned int index, const dl_frc_t& frc)
{
    const bool ntn = _target().get_nr_ntn();
    csirs.set_enable(true);
    csirs.set_bwp_id(1);
    csirs.set_nid(0);
    csirs.set_one_frame_period(false);
    if (const std::optional<unsigned int> slot = csirs_slot(frc, ntn))
        csirs.set_slot_allocation(std::to_string(*slot + index / 2));
    csirs.set_rb_offset(0);
    csirs.set_rb_num(frc.get_rb_number_of(frc.get_numerolgy()));
    csirs.set_table_idx(1);
    csirs.set_csirs_port("1");
    csirs.set_l0((index % 2 == 0 ? 6 : 10) + (ntn || frc.get_frequency_range() == NR_FR1 ? 0 : 2));
    csirs.set_frequency_domain_bitmap(k_csirs_bitmaps[index]);
    csirs.set_density(3.0);
}

} // namespace vek::nr_mod_lib

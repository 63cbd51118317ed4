#include "phy_common/lib_nr_deviation.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

namespace
{

using deviation_t = lib_nr_deviation_t;

constexpr const char* k_undecoded = "a receiver does not decode it";
constexpr const char* k_level = "level alone";

} // namespace

const std::vector<lib_nr_deviation_row_t>& lib_nr_deviation_rows()
{
    static const std::vector<lib_nr_deviation_row_t> rows = {
        {deviation_t::carrier_phase, "carrier_phase", "TS 38.211 clause 5.4",
         "the phase terms of a symbol go by the waveform's radio frequency",
         "they go by the carrier's own frequency, radio frequency plus offset",
         "a receiver that takes the carrier at its own frequency sees its symbols turned against each other"},
        {deviation_t::pbch_second_scrambling, "pbch_second_scrambling", "TS 38.211 clause 7.3.3.1",
         "with four candidates v is the index plus four times the half frame", "v is the two bits of the index",
         "a receiver does not decode the PBCH of the second half frame"},
        {deviation_t::mib_flags, "mib_flags", "TS 38.331 clause 6.2.2",
         "cell_barred and intra_frequency_reselection are the bits of the MIB",
         "a barred cell and an allowed reselection are the value 0, so the bits are the settings turned",
         "a phone's cell selection"},
        {deviation_t::pdsch_beside_block, "pdsch_beside_block", "TS 38.214 clause 5.1.4",
         "beside the third symbol of an SS/PBCH block a PDSCH begins where the block's subcarriers end, inside an RB",
         "a PDSCH leaves out all RBs that a block touches, in all four symbols", k_undecoded},
        {deviation_t::pdcch_hash, "pdcch_hash", "TS 38.213 clause 10.1",
         "Y of a UE-specific search space begins with n_RNTI where it is sent, with the RNTI in the view",
         "Y begins with the C-RNTI, or the RNTI where that is 0, in both", "a receiver finds no candidate there"},
        {deviation_t::dmrs_reference, "dmrs_reference", "TS 38.211 clauses 7.4.1.1.2, 7.4.1.3.2 and 6.4.1.3.2.2",
         "the DMRS of a PDSCH counts from CRB 0 whatever dmrs_mapping_ref says, that of PDCCH and PUCCH format 2 from "
         "the BWP",
         "LIB_NR_DMRS_MAPPING_REF_PRB counts from the first RB of the BWP; a PDCCH counts from CRB 0, CORESET 0 from "
         "its lowest RB; PUCCH format 2 from CRB 0",
         k_undecoded},
        {deviation_t::sch_identity_zero, "sch_identity_zero",
         "TS 38.211 clauses 6.3.1.1, 6.4.1.1.1, 7.3.1.1, 7.4.1.1.1",
         "an identity of 0 (nid, nid0, nid1, n_rs_id) stands for that of the cell, as -1 does",
         "0 is the identity 0, -1 alone stands for the cell", k_undecoded},
        {deviation_t::csirs_place, "csirs_place", "TS 38.211 clause 7.4.1.5.3, TS 38.214 clause 5.2.2.3.1",
         "subcarriers count from the start of the BWP, and the number of RBs is a multiple of four, at least 24",
         "subcarriers count from CRB 0, and the RBs reach to the end of the BWP", k_undecoded},
        {deviation_t::csirs_zero_power, "csirs_zero_power", "TS 38.214 clause 5.1.4.2",
         "a zero-power CSI-RS is sent as any other", "it sends nothing; a PDSCH steps round its cells all the same",
         "a measurement of interference"},
        {deviation_t::prs_sequence, "prs_sequence", "TS 38.211 clause 7.4.1.7.2",
         "the sequence counts the symbol within its slot", "it counts the slots of the frame too", k_undecoded},
        {deviation_t::prs_occasions, "prs_occasions", "TS 38.211 clause 7.4.1.7.4, TS 38.214 clause 5.1.6.5",
         "slots between two repetitions are sent as well, none below the offset, each frame counts anew; muting option "
         "1 goes by slots, and where it is set option 2 is not looked at",
         "the repetitions alone are sent, slots count through the waveform; option 1 goes by occasions, and both "
         "options must allow a slot",
         "a receiver looks for other slots"},
        {deviation_t::pusch_short_dmrs, "pusch_short_dmrs", "TS 38.211 Table 6.4.1.1.3-3",
         "a PUSCH of type A that ends with the fourth symbol, or of type B with one symbol, has no DMRS",
         "it has one at l0", k_undecoded},
        {deviation_t::low_papr_symbol, "low_papr_symbol", "TS 38.211 clause 6.4.1.1.1.2",
         "with hopping within the slot, group and sequence hopping of a transform-precoded PUSCH's DMRS count symbols "
         "from the start of the hop",
         "they count the symbols of the slot", k_undecoded},
        {deviation_t::dft_ptrs_power, "dft_ptrs_power", "TS 38.211 clause 6.3.1.4",
         "the boosting of a transform-precoded PUSCH is applied before the transform to PTRS samples, behind it to the "
         "rest",
         "one amplitude serves the whole symbol, and ptrs_power alone lies before the transform", k_level},
        {deviation_t::codebook, "codebook", "TS 38.211 Tables 6.3.1.5-1 to 6.3.1.5-7",
         "TPMI 1 and 2 of two layers on two antennas, 14 to 21 of two layers and 3 to 6 of three layers on four "
         "have amplitudes of their own; TPMI 10 and 11 of one layer on four are exchanged",
         "all are as in the tables, with 1/2, 1/sqrt 8 and 1/sqrt 12", "level and phase between ports"},
        {deviation_t::interlaces, "interlaces", "TS 38.211 clauses 4.4.4.6 and 6.3.2.2.2, TS 38.214 clause 6.1.2.2.3",
         "an interlace counts from the first RB of each RB set; a PUSCH leaves out guard bands between its sets "
         "and its last RB; interlaces follow each other; the cyclic shifts of a PUCCH go by the place in that "
         "list, its cover codes by the number in the grid; two interlaces of format 3 keep the DMRS shift of an "
         "orthogonal sequence",
         "an interlace is the RBs whose number in the grid has its index modulo M, guard bands between the sets "
         "included, all RBs ascending; shifts and codes go by the RB's number within its interlace, and two interlaces "
         "have neither code nor its shift",
         k_undecoded},
        {deviation_t::pucch1_dmrs_cover, "pucch1_dmrs_cover", "TS 38.211 Table 6.4.1.3.1.1-1",
         "with hopping within the slot the first hop's DMRS code has half of all DMRS symbols",
         "it has those DMRS symbols that lie in the first hop", k_undecoded},
        {deviation_t::pucch1_scheduling_request, "pucch1_scheduling_request", "TS 38.213 clauses 9.2.4 and 9.2.5.1",
         "a positive scheduling request is the symbol of a bit 1, beside HARQ-ACK too",
         "it is the symbol of a bit 0, beside HARQ-ACK that of HARQ-ACK's bits", "a receiver that reads the bit"},
        {deviation_t::pucch_slot_hopping, "pucch_slot_hopping", "TS 38.213 clause 9.2.6",
         "hopping between slots goes by the slot's number in the map and by its place in the list in the signal",
         "it goes by the slots since the first of each repetition, gaps counted; without repetition all slots stay "
         "on the first hop",
         k_undecoded},
        {deviation_t::uci_split, "uci_split", "TS 38.212 clause 6.3.1.2.1",
         "6 CRC bits are reckoned with at 11 bits of the first part", "there are none below 12 bits", k_undecoded},
        {deviation_t::uci_multiplexing, "uci_multiplexing", "TS 38.212 clause 6.3.1.6",
         "the second part of the UCI of formats 3 and 4 follows behind the first",
         "the first part lies in the symbols nearest to a DMRS, spread evenly over the last of them", k_undecoded},
        {deviation_t::srs_place, "srs_place", "TS 38.211 clauses 6.4.1.4.2 to 6.4.1.4.4",
         "the slots of the list alone are sent; sequence hopping goes by the length before partial sounding; the place "
         "counts from the grid; the amplitude is multiplied with the root of the ports",
         "every slot of the period is sent; hopping goes by the length that is sent; the place counts from the BWP "
         "where n_shift lies below its start; the amplitude is divided by the root of the ports",
         k_undecoded},
        {deviation_t::prach_place, "prach_place", "TS 38.211 clause 5.3.2 and Table 6.3.3.2-1",
         "k-bar of length 571 at 480 kHz on a carrier of 480 kHz is 0; a burst of a wider spacing than the "
         "carrier's stands at k-bar; at 480 and 960 kHz symbols and prefixes are whole samples of 30.72 MHz; a burst "
         "that passes its frame's end comes back at the beginning of that frame",
         "k-bar is 2; K k_1 + k-bar with K a fraction; symbols have 68.5 and 34.25 samples, prefixes their length; the "
         "burst goes on in the next frame",
         k_undecoded},
    };
    return rows;
}

const lib_nr_deviation_row_t& lib_nr_deviation_row(lib_nr_deviation_t deviation)
{
    const std::vector<lib_nr_deviation_row_t>& rows = lib_nr_deviation_rows();
    return rows[std::min(static_cast<std::size_t>(deviation), rows.size() - 1)];
}

std::vector<lib_nr_deviation_t> lib_nr_rules_t::get_met() const
{
    std::vector<lib_nr_deviation_t> met;
    for (const lib_nr_deviation_row_t& row : lib_nr_deviation_rows())
        if ((m_met >> static_cast<unsigned int>(row.deviation) & 1U) != 0)
            met.push_back(row.deviation);
    return met;
}

} // namespace vek::nr_mod_lib

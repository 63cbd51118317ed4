#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' DCIs. Each is a block of test bits that goes through the coding of TS 38.212 clause 7.3
/// and the PDCCH of TS 38.211 clause 7.3.2, on one candidate of a search space (TS 38.213 clause 10.1) of a CORESET, in
/// chosen slots of every frame. Setters return true when the stored value changed.
class NR_MOD_LIB_EXPORT cfg_nr_dl_dci_t : public cfg_nr_list_cursor_t<lib_nr_dl_dci_configure_manager_t>
{
public:
    explicit cfg_nr_dl_dci_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_dci_index(unsigned int carrier, unsigned int dci) { return set_current_index(carrier, dci); }

    /// Stays off at 240 kHz.
    bool set_enable(bool enable) { return _target().set_enable(enable, _bwp().get_numerology()); }
    bool get_enable() const { return _target().get_enable(); }
    /// dB, limited to -40 to 40, of all its elements.
    bool set_pwr_boosting(double power) { return _target().set_pwr_boosting(power); }
    double get_pwr_boosting() const { return _target().get_pwr_boosting(); }
    /// dB above `pwr_boosting`, limited to -40 to 40, of its DMRS.
    bool set_dmrs_pwr_boosting(double power) { return _target().set_dmrs_pwr_boosting(power); }
    double get_dmrs_pwr_boosting() const { return _target().get_dmrs_pwr_boosting(); }
    /// pdcch-DMRS-ScramblingID, at most 65535. A negative value becomes -1: the cell identity, and n_RNTI 0.
    bool set_scrambling_id(int scrambling_id) { return _target().set_scrambling_id(scrambling_id); }
    int get_scrambling_id() const { return _target().get_scrambling_id(); }
    /// At most 65535; masks the CRC. A resource map view places the candidates by it, unless by
    /// `standard_rules`.
    bool set_rnti(unsigned int rnti) { return _target().set_rnti(rnti); }
    unsigned int get_rnti() const { return _target().get_rnti(); }
    /// At most 65535; n_RNTI of scrambling and candidates in a UE-specific search space with a scrambling identity.
    /// `standard_rules` places the candidates by it in any case, or by the RNTI where it is 0.
    bool set_crnti(unsigned int crnti) { return _target().set_crnti(crnti); }
    unsigned int get_crnti() const { return _target().get_crnti(); }
    /// CCEs. Limited by the groups of 6 resource blocks of its CORESET: 1 for one of them; 1 or 2 below 4, 1, 2 or 4
    /// below 16. What is higher becomes the highest, which is 2 also without any group.
    bool set_aggregation_level(lib_nr_dl_dci_aggregation_level_t level)
    {
        return _target().set_aggregation_level(level, _bitmap());
    }
    lib_nr_dl_dci_aggregation_level_t get_aggregation_level() const { return _target().get_aggregation_level(); }
    /// The levels of the search space that fit the CORESET at 1 symbol, 4 and up in a common one. More than the setter
    /// takes: it stores 4 for 8 below 16 groups.
    std::vector<lib_nr_dl_dci_aggregation_level_t> get_aggregation_level_list() const
    {
        return _target().get_aggregation_level_list(_bitmap());
    }
    /// Candidate of the search space that is sent, below `candidates_num`.
    bool set_allocated_candidate(unsigned int candidate) { return _target().set_allocated_candidate(candidate); }
    unsigned int get_allocated_candidate() const { return _target().get_allocated_candidate(); }
    /// Slots of a frame, such as "0:2,5"; those past the frame are dropped, and a text without any changes nothing.
    bool set_slot_allocation(const std::string& text)
    {
        return _target().set_slot_allocation(text, _bwp().get_numerology());
    }
    std::string get_slot_allocation() const { return _target().get_slot_allocation(); }
    /// Whether CRC, polar coding and rate matching are applied; else the bits stand bare, zeros behind.
    bool set_coding(bool coding) { return _target().set_coding(coding); }
    bool get_coding() const { return _target().get_coding(); }
    /// Bits from a PN source, limited to 1 to 108 times the level minus 24 and to 488.
    bool set_data_block_size(unsigned int bits) { return _target().set_data_block_size(bits); }
    unsigned int get_data_block_size() const { return _target().get_data_block_size(); }
    /// A PN source runs on from slot to slot of a frame.
    bool set_data_source(lib_nr_pn_seq_t source) { return _target().set_data_source(source); }
    lib_nr_pn_seq_t get_data_source() const { return _target().get_data_source(); }
    /// Bits of the user, such as "1011", padded with 0 to 12, the same in each slot. The text is kept as it stands; one
    /// without bits leaves the bits as they were.
    bool set_data_source_custom(const std::string& text) { return _target().set_data_source_custom(text); }
    std::string get_data_source_custom() const { return _target().get_data_source_custom_string(); }
    /// CORESET of the BWP: one of the three ids that it has, whether they count or not, else the first.
    bool set_coreset_id(unsigned int id) { return _target().set_coreset_id(id); }
    unsigned int get_coreset_id() const { return _target().get_coreset_id(); }
    /// BWP; one past the list becomes 0, with a printed line. CORESET, slots, start symbol, level and enable follow it.
    bool set_bwp_id(unsigned int id) { return _carrier().set_dl_dci_bwp_id(_index(), id); }
    unsigned int get_bwp_id() const { return _target().get_bwp_id(); }
    /// A common search space needs 4 groups of 6 resource blocks in the CORESET; with fewer nothing changes.
    bool set_search_space_type(lib_nr_dl_dci_search_space_type_t type)
    {
        return _target().set_search_space_type(type, _bitmap());
    }
    lib_nr_dl_dci_search_space_type_t get_search_space_type() const { return _target().get_search_space_type(); }
    /// First symbol of the CORESET within the slot, limited so that all its symbols lie within it.
    bool set_start_symbol_within_slot(unsigned int symbol);
    unsigned int get_start_symbol_within_slot() const { return _target().get_start_symbol_within_slot(); }
    /// Candidates of the search space at this level; limits `allocated_candidate`.
    bool set_candidates_num(lib_nr_dl_dci_candidates_number_t number) { return _target().set_candidates_num(number); }
    lib_nr_dl_dci_candidates_number_t get_candidates_num() const { return _target().get_candidates_num(); }

private:
    const lib_nr_dl_bwp_configure_manager_t& _bwp() const { return _carrier().get_dl_bwp(_target().get_bwp_id()); }
    const lib_nr_dl_coreset_configure_manager_t& _coreset() const
    {
        return _bwp().get_coreset(_target().get_coreset_id());
    }
    const std::vector<int>& _bitmap() const { return _coreset().get_fd_resources_for_lib(); }
};

} // namespace vek::nr_mod_lib

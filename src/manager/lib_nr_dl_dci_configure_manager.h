#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_dl_coreset_configure_manager.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_common/lib_nr_pn_seq.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_dl_bwp_configure_manager_t;

/// The value is the level: the CCEs that a PDCCH takes.
enum lib_nr_dl_dci_aggregation_level_t : std::uint32_t
{
    LIB_NR_DCI_AGGREGATION_LEVEL_1 = 1,
    LIB_NR_DCI_AGGREGATION_LEVEL_2 = 2,
    LIB_NR_DCI_AGGREGATION_LEVEL_4 = 4,
    LIB_NR_DCI_AGGREGATION_LEVEL_8 = 8,
    LIB_NR_DCI_AGGREGATION_LEVEL_16 = 16,
};
inline constexpr std::array k_dci_aggregation_levels = {LIB_NR_DCI_AGGREGATION_LEVEL_1, LIB_NR_DCI_AGGREGATION_LEVEL_2,
                                                        LIB_NR_DCI_AGGREGATION_LEVEL_4, LIB_NR_DCI_AGGREGATION_LEVEL_8,
                                                        LIB_NR_DCI_AGGREGATION_LEVEL_16};

/// UE-specific or common search space.
enum lib_nr_dl_dci_search_space_type_t : std::uint32_t
{
    LIB_NR_DCI_USS = 0,
    LIB_NR_DCI_CSS = 1,
};

/// The value is the number of candidates.
enum lib_nr_dl_dci_candidates_number_t : std::uint32_t
{
    LIB_NR_DCI_CANDIDATE_1 = 1,
    LIB_NR_DCI_CANDIDATE_2 = 2,
    LIB_NR_DCI_CANDIDATE_3 = 3,
    LIB_NR_DCI_CANDIDATE_4 = 4,
    LIB_NR_DCI_CANDIDATE_5 = 5,
    LIB_NR_DCI_CANDIDATE_6 = 6,
    LIB_NR_DCI_CANDIDATE_8 = 8,
};
inline constexpr std::array k_dci_candidates_numbers = {
    LIB_NR_DCI_CANDIDATE_1, LIB_NR_DCI_CANDIDATE_2, LIB_NR_DCI_CANDIDATE_3, LIB_NR_DCI_CANDIDATE_4,
    LIB_NR_DCI_CANDIDATE_5, LIB_NR_DCI_CANDIDATE_6, LIB_NR_DCI_CANDIDATE_8};

/// One DCI of a carrier: a block of test bits on one PDCCH candidate of a CORESET of a downlink BWP. The façade tells
/// the rules; where a rule needs something of the BWP or the CORESET, it is an argument here.
class NR_MOD_LIB_EXPORT lib_nr_dl_dci_configure_manager_t
{
public:
    explicit lib_nr_dl_dci_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp);

    /// Defaults for a BWP; enable, search space, start symbol, level and slots keep what they were.
    void init(const lib_nr_dl_bwp_configure_manager_t& bwp);
    /// Brings the DCI in line with a changed BWP: off at 240 kHz, a CORESET that the BWP does not have gives way to its
    /// first, the slots are parsed again, start symbol and level are limited.
    void update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp);

    bool set_enable(bool enable, lib_nr_numerology_type_t bwp_numerology);
    bool get_enable() const { return m_enable; }
    bool set_pwr_boosting(double power);
    double get_pwr_boosting() const { return m_pwr_boosting; }
    bool set_dmrs_pwr_boosting(double power);
    double get_dmrs_pwr_boosting() const { return m_dmrs_pwr_boosting; }
    bool set_scrambling_id(int scrambling_id);
    int get_scrambling_id() const { return m_scrambling_id; }
    bool set_rnti(unsigned int rnti);
    unsigned int get_rnti() const { return m_rnti; }
    bool set_crnti(unsigned int crnti);
    unsigned int get_crnti() const { return m_crnti; }
    bool set_coreset_id(unsigned int id);
    unsigned int get_coreset_id() const { return m_coreset_id; }
    /// Stores the id alone: the carrier moves a DCI to another BWP.
    bool set_bwp_id(unsigned int id);
    unsigned int get_bwp_id() const { return m_bwp_id; }
    bool set_search_space_type(lib_nr_dl_dci_search_space_type_t type, const std::vector<int>& coreset_bitmap);
    lib_nr_dl_dci_search_space_type_t get_search_space_type() const { return m_search_space_type; }
    bool set_start_symbol_within_slot(unsigned int symbol, unsigned int symbols_in_slot, unsigned int coreset_duration);
    unsigned int get_start_symbol_within_slot() const { return m_start_symbol; }
    bool set_candidates_num(lib_nr_dl_dci_candidates_number_t number);
    lib_nr_dl_dci_candidates_number_t get_candidates_num() const { return m_candidates_num; }
    bool set_aggregation_level(lib_nr_dl_dci_aggregation_level_t level, const std::vector<int>& coreset_bitmap);
    lib_nr_dl_dci_aggregation_level_t get_aggregation_level() const { return m_aggregation_level; }
    /// The levels on offer, by search space and the groups of RBs of the CORESET. Wider than what the setter takes.
    std::vector<lib_nr_dl_dci_aggregation_level_t>
    get_aggregation_level_list(const std::vector<int>& coreset_bitmap) const;
    bool set_allocated_candidate(unsigned int candidate);
    unsigned int get_allocated_candidate() const { return m_allocated_candidate; }
    bool set_slot_allocation(const std::string& text, lib_nr_numerology_type_t bwp_numerology);
    const std::string& get_slot_allocation() const { return m_slot_allocation_text; }
    const std::vector<int>& get_slot_allocation_for_lib() const { return m_slot_allocation; }
    bool set_coding(bool coding);
    bool get_coding() const { return m_coding; }
    bool set_data_block_size(unsigned int bits);
    unsigned int get_data_block_size() const { return m_data_block_size; }
    bool set_data_source(lib_nr_pn_seq_t source);
    lib_nr_pn_seq_t get_data_source() const { return m_data_source; }
    bool set_data_source_custom(const std::string& text);
    const std::string& get_data_source_custom_string() const { return m_data_source_custom_text; }
    const std::vector<unsigned char>& get_data_source_custom() const { return m_data_source_custom; }

private:
    bool m_enable = false;
    double m_pwr_boosting = 0.0;
    double m_dmrs_pwr_boosting = 0.0;
    int m_scrambling_id = -1;
    unsigned int m_rnti = 0;
    unsigned int m_crnti = 0;
    unsigned int m_coreset_id = 0;
    unsigned int m_bwp_id = 0;
    lib_nr_dl_dci_search_space_type_t m_search_space_type = LIB_NR_DCI_USS;
    unsigned int m_start_symbol = 0;
    lib_nr_dl_dci_candidates_number_t m_candidates_num = LIB_NR_DCI_CANDIDATE_1;
    lib_nr_dl_dci_aggregation_level_t m_aggregation_level = LIB_NR_DCI_AGGREGATION_LEVEL_4;
    unsigned int m_allocated_candidate = 0;
    std::vector<int> m_slot_allocation{0};
    bool m_coding = false;
    unsigned int m_data_block_size = 20;
    lib_nr_pn_seq_t m_data_source = LIB_NR_PN9_ITU;
    std::vector<unsigned char> m_data_source_custom{0};
    std::string m_data_source_custom_text = "0";
    std::string m_slot_allocation_text = "0";
    unsigned int m_first_coreset_index = 0;
};

} // namespace vek::nr_mod_lib

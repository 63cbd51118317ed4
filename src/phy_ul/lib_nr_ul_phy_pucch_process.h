#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_ul/lib_nr_ul_phy_pucch_base.h"
#include "phy_ul/lib_nr_ul_phy_pucch_format0_process.h"
#include "phy_ul/lib_nr_ul_phy_pucch_format1_process.h"
#include "phy_ul/lib_nr_ul_phy_pucch_format2_process.h"
#include "phy_ul/lib_nr_ul_phy_pucch_format3_process.h"
#include "phy_ul/lib_nr_ul_phy_pucch_format4_process.h"

#include <optional>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Walks a carrier's PUCCHs: marks them in the resource map, then, if all of them fitted there, writes them into the
/// payload map. A PUCCH is sent in each frame, in the pass of its BWP's spacing; there, std::out_of_range where the BWP
/// has not as many symbols in a slot as the grid, whose prefix is that of downlink BWP 0.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pucch_process_t : public lib_nr_ul_phy_pucch_base_t
{
public:
    /// Marks the cells of all PUCCHs, also behind one that failed. True for a carrier that is no uplink.
    bool deal_ul_pucch_resource_mapping(const lib_nr_waveform_configure_manager_t& waveform, unsigned int carrier,
                                        unsigned int numerology);
    /// Writes the symbols of all PUCCHs, in the order of the list. False and a printed line where the marking before it
    /// failed. True for a carrier that is no uplink.
    bool deal_ul_pucch_link_process(const lib_nr_waveform_configure_manager_t& waveform, unsigned int carrier,
                                    unsigned int numerology);

    /// Place in the list of the first PUCCH that the last call failed or threw at.
    const std::optional<unsigned int>& get_failed_entry() const { return m_failed_entry; }
    /// The rules in force for each PUCCH of the list that the last call came to, with the deviations it met.
    const std::vector<lib_nr_rules_t>& get_rules_of_entries() const { return m_rules_of_entries; }

private:
    template <class call_t>
    bool _run(const lib_nr_carrier_configure_manager_t& carrier, unsigned int numerology, unsigned int pucch_index,
              call_t call);
    void _begin(const lib_nr_waveform_configure_manager_t& waveform);
    bool _is_sent_in_pass(unsigned int numerology) const;
    template <class process_t>
    bool _deal_format(process_t& process, const lib_nr_carrier_configure_manager_t& carrier, unsigned int pucch_index);
    bool _deal_pucch_process(const lib_nr_carrier_configure_manager_t& carrier, unsigned int pucch_index);

    bool m_is_resource_mapping_passed = false;
    lib_nr_ul_phy_pucch_format0_process_t m_format0_process;
    lib_nr_ul_phy_pucch_format1_process_t m_format1_process;
    lib_nr_ul_phy_pucch_format2_process_t m_format2_process;
    lib_nr_ul_phy_pucch_format3_process_t m_format3_process;
    lib_nr_ul_phy_pucch_format4_process_t m_format4_process;
    std::optional<unsigned int> m_failed_entry;
    std::vector<lib_nr_rules_t> m_rules_of_entries;
};

} // namespace vek::nr_mod_lib

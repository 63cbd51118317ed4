#include "phy_ul/lib_nr_ul_phy_pucch_process.h"

#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy/lib_nr_resource_manager.h"

#include <iostream>
#include <stdexcept>
#include <utility>

namespace vek::nr_mod_lib
{

namespace
{

lib_nr_channel_resource_manager_t& grid() { return lib_nr_channel_resource_manager_t::get_inst(); }

} // namespace

bool lib_nr_ul_phy_pucch_process_t::deal_ul_pucch_resource_mapping(const lib_nr_waveform_configure_manager_t& waveform,
                                                                   unsigned int carrier, unsigned int numerology)
{
    m_is_resource_mapping_passed = false;
    _begin(waveform);
    const lib_nr_carrier_configure_manager_t& configuration = waveform.get_carrier(carrier);
    if (configuration.get_carrier_type() != LIB_NR_UPLINK)
        return true;
    m_is_resource_mapping_passed = true;
    for (unsigned int i = 0; i < configuration.get_ul_pucch_number(); ++i)
        m_is_resource_mapping_passed &=
            _run(configuration, numerology, i, [&] { return _deal_physical_resource_mapping_for_ui(grid()); });
    return m_is_resource_mapping_passed;
}

bool lib_nr_ul_phy_pucch_process_t::deal_ul_pucch_link_process(const lib_nr_waveform_configure_manager_t& waveform,
                                                               unsigned int carrier, unsigned int numerology)
{
    const lib_nr_carrier_configure_manager_t& configuration = waveform.get_carrier(carrier);
    if (configuration.get_carrier_type() != LIB_NR_UPLINK)
        return true;
    if (!m_is_resource_mapping_passed) {
        std::cerr << " error : The current resource conflicts. Data processing can be performed only after the "
                     "resource mapping passes "
                  << std::endl;
        return false;
    }
    _begin(waveform);
    for (unsigned int i = 0; i < configuration.get_ul_pucch_number(); ++i)
        if (!_run(configuration, numerology, i, [&] { return _deal_pucch_process(configuration, i); })) {
            std::cout << " error : ul_phy_pucch_process fail " << std::endl;
            return false;
        }
    return true;
}

void lib_nr_ul_phy_pucch_process_t::_begin(const lib_nr_waveform_configure_manager_t& waveform)
{
    set_standard_rules(waveform.get_standard_rules());
    m_failed_entry.reset();
    _forget_failure();
    m_rules_of_entries.clear();
}

/// Calls for an entry that is sent in the pass. The first one whose call returns false or throws is kept.
template <class call_t>
bool lib_nr_ul_phy_pucch_process_t::_run(const lib_nr_carrier_configure_manager_t& carrier, unsigned int numerology,
                                         unsigned int pucch_index, call_t call)
{
    const std::optional<unsigned int> failed_before = m_failed_entry;
    m_failed_entry = failed_before.value_or(pucch_index);
    _set_pucch(carrier, pucch_index);
    set_standard_rules(m_rules.is_standard());
    grid().set_entry_at_work(pucch_index);
    const bool succeeded = !_is_sent_in_pass(numerology) || call();
    if (succeeded)
        m_failed_entry = failed_before;
    m_rules_of_entries.push_back(m_rules);
    return succeeded;
}

bool lib_nr_ul_phy_pucch_process_t::_is_sent_in_pass(unsigned int numerology) const
{
    const lib_nr_ul_bwp_configure_manager_t& bwp = _bwp();
    if (!m_pucch->get_enable() || bwp.get_numerology() != m_carrier->get_numerology_manager(numerology).get_numerolgy())
        return false;
    if (!grid().is_pass_of(bwp.get_numerology(), bwp.get_cp_type()))
        throw std::out_of_range("the cyclic prefix of the PUCCH's BWP is not that of downlink BWP 0");
    return true;
}

template <class process_t>
bool lib_nr_ul_phy_pucch_process_t::_deal_format(process_t& process, const lib_nr_carrier_configure_manager_t& carrier,
                                                 unsigned int pucch_index)
{
    process.set_standard_rules(m_rules.is_standard());
    std::vector<lib_nr_explanation_t> explanations;
    const lib_nr_explained_call_t explaining(process, m_explanations ? &explanations : nullptr);
    const bool succeeded = process.deal_pucch_process(carrier, pucch_index, grid().get_payload_of_streams());
    m_rules.add_met(process.get_rules());
    for (lib_nr_explanation_t& explanation : explanations) {
        explanation.entry = pucch_index;
        m_explanations->push_back(std::move(explanation));
    }
    return succeeded;
}

bool lib_nr_ul_phy_pucch_process_t::_deal_pucch_process(const lib_nr_carrier_configure_manager_t& carrier,
                                                        unsigned int pucch_index)
{
    switch (m_pucch->get_pucch_format()) {
    case LIB_NR_UL_PUCCH_FORMAT_0:
        return _deal_format(m_format0_process, carrier, pucch_index);
    case LIB_NR_UL_PUCCH_FORMAT_1:
        return _deal_format(m_format1_process, carrier, pucch_index);
    case LIB_NR_UL_PUCCH_FORMAT_2:
        return _deal_format(m_format2_process, carrier, pucch_index);
    case LIB_NR_UL_PUCCH_FORMAT_3:
        return _deal_format(m_format3_process, carrier, pucch_index);
    case LIB_NR_UL_PUCCH_FORMAT_4:
        return _deal_format(m_format4_process, carrier, pucch_index);
    default:
        return false;
    }
}

} // namespace vek::nr_mod_lib

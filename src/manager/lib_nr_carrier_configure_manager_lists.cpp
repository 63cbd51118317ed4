#include "manager/lib_nr_carrier_configure_manager.h"
#include "manager/lib_nr_setting.h"

#include <iostream>
#include <string>

// The carrier's bandwidth parts and channels: lists, references between them, and the updates that a change brings.

namespace vek::nr_mod_lib
{

namespace
{

// The BWPs that an added channel starts in.
constexpr unsigned int k_first_dl_bwp = 1;
constexpr unsigned int k_first_ul_bwp = 0;

void append_dl_bwp(std::vector<lib_nr_dl_bwp_configure_manager_t>& bwps,
                   const lib_nr_phy_numerology_configure_manager_t& numerology, bool initial)
{
    const auto id = static_cast<unsigned int>(bwps.size());
    bwps.emplace_back(numerology, id, initial).init(numerology, id);
}

template <class bwp_t>
void number_anew(std::vector<bwp_t>& bwps)
{
    for (unsigned int i = 0; i < bwps.size(); ++i)
        bwps[i].set_bwp_id(i);
}

/// Calls the step with the place of each channel whose BWP is not there any more.
template <class channel_t, class step_t>
void for_each_lost(const std::vector<channel_t>& channels, std::size_t bwp_number, step_t step)
{
    for (unsigned int i = 0; i < channels.size(); ++i)
        if (channels[i].get_bwp_id() >= bwp_number)
            step(i);
}

/// The id, or 0 and a line for one past the end.
unsigned int existing_bwp_id(unsigned int bwp_id, std::size_t bwp_number, std::string_view operation)
{
    if (bwp_id < bwp_number)
        return bwp_id;
    std::cout << "lib_nr_carrier_configure_manager_t::" << operation << " : Error bwp id" << std::endl;
    return 0;
}

template <class channel_t>
bool move_to_dl_bwp(channel_t& channel, unsigned int bwp_id, const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    const bool changed = channel.set_bwp_id(bwp_id);
    channel.update_by_dl_bwp(bwp);
    return changed;
}

lib_nr_bwp_run_t one_bwp(unsigned int index) { return {index, index + 1}; }

/// Calls the step with each channel that lies in one of the BWPs, and the number of that one.
template <class channel_t, class step_t>
void for_each_in(lib_nr_bwp_run_t bwps, std::vector<channel_t>& channels, step_t step)
{
    for (channel_t& channel : channels)
        if (channel.get_bwp_id() >= bwps.first && channel.get_bwp_id() < bwps.end)
            step(channel, channel.get_bwp_id());
}

/// Gives a channel one port for each antenna: those that it has, none on the others.
template <class channel_t>
void fit_antennas(channel_t& channel, unsigned int antennas)
{
    const auto ports = channel.get_antenna_port(); // a copy: the setter takes its list by reference
    channel.set_antenna_port(ports, antennas);
}

template <class channel_t>
void fit_all_antennas(std::vector<channel_t>& channels, unsigned int antennas)
{
    for (channel_t& channel : channels)
        fit_antennas(channel, antennas);
}

/// Brings the channels that take the first DMRS symbol from the MIB in line with it.
template <class channel_t, class bwp_t>
void follow_mib_position(std::vector<channel_t>& channels, const std::vector<bwp_t>& bwps, unsigned int position)
{
    for (channel_t& channel : channels)
        if (channel.get_dmrs_type_a_position() == LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB)
            channel.set_dmrs_type_a_position(LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB, position,
                                             entry_or_last(bwps, channel.get_bwp_id()).get_cp_type());
}

} // namespace

void lib_nr_carrier_configure_manager_t::set_antennas_number(unsigned int antennas_number)
{
    m_antennas_number = antennas_number;
    fit_all_antennas(m_dl_schs, antennas_number);
    fit_all_antennas(m_ul_schs, antennas_number);
    fit_all_antennas(m_dl_csirss, antennas_number);
    fit_all_antennas(m_ul_srss, antennas_number);
}

// Following a downlink BWP

template <class channel_t>
void lib_nr_carrier_configure_manager_t::_update_dl_channels(std::vector<channel_t>& channels, lib_nr_bwp_run_t bwps)
{
    for_each_in(bwps, channels,
                [this](channel_t& channel, unsigned int bwp_id) { channel.update_by_dl_bwp(m_dl_bwps[bwp_id]); });
}

void lib_nr_carrier_configure_manager_t::_update_all_dl_channels(lib_nr_bwp_run_t bwps)
{
    _update_dl_channels(m_dl_dcis, bwps);
    _update_dl_channels(m_dl_schs, bwps);
    _update_dl_channels(m_dl_csirss, bwps);
}

// Following an uplink BWP

void lib_nr_carrier_configure_manager_t::_follow_ul_bwp(lib_nr_ul_pucch_configure_manager_t& pucch,
                                                        unsigned int bwp_id) const
{
    // A PUCCH takes the number of its BWP from it, and a copied BWP has that of its source.
    lib_nr_ul_bwp_configure_manager_t bwp = m_ul_bwps[bwp_id];
    bwp.set_bwp_id(bwp_id);
    pucch.updata_param_when_bwp_change(bwp);
}

void lib_nr_carrier_configure_manager_t::_follow_ul_bwp(lib_nr_ul_sch_configure_manager_t& sch,
                                                        unsigned int bwp_id) const
{
    const lib_nr_ul_bwp_configure_manager_t& bwp = m_ul_bwps[bwp_id];
    sch.update_by_ul_bwp(bwp, get_numerology_manager(bwp.get_numerology()), m_bandwidth);
}

void lib_nr_carrier_configure_manager_t::_follow_ul_bwp(lib_nr_ul_srs_configure_manager_t& srs,
                                                        unsigned int bwp_id) const
{
    srs.update_by_ul_bwp(m_ul_bwps[bwp_id]);
}

void lib_nr_carrier_configure_manager_t::_follow_ul_bwp(lib_nr_ul_prach_configure_manager_t& prach,
                                                        unsigned int bwp_id) const
{
    prach.update_by_ul_bwp(m_ul_bwps[bwp_id]);
}

template <class channel_t>
void lib_nr_carrier_configure_manager_t::_update_ul_channels(std::vector<channel_t>& channels,
                                                             lib_nr_bwp_run_t bwps) const
{
    for_each_in(bwps, channels, [this](channel_t& channel, unsigned int bwp_id) { _follow_ul_bwp(channel, bwp_id); });
}

void lib_nr_carrier_configure_manager_t::_update_all_ul_channels(lib_nr_bwp_run_t bwps)
{
    _update_ul_channels(m_ul_pucchs, bwps);
    _update_ul_channels_but_pucchs(bwps);
}

void lib_nr_carrier_configure_manager_t::_update_ul_channels_but_pucchs(lib_nr_bwp_run_t bwps)
{
    _update_ul_channels(m_ul_schs, bwps);
    _update_ul_channels(m_ul_srss, bwps);
    if (_is_single_numerology())
        _update_ul_channels(m_ul_prachs, bwps);
}

void lib_nr_carrier_configure_manager_t::_tell_of_prachs(std::string_view operation) const
{
    if (!_is_single_numerology())
        std::cout << operation << ": It is not applicable for PRACH carrier.\n " << std::endl;
}

// Add, copy, remove

void lib_nr_carrier_configure_manager_t::add_dl_bwp()
{
    append_dl_bwp(m_dl_bwps, _first_enabled_numerology(), false);
    // The BWPs of the carrier's direction follow its numerologies at all times: their channels alone are brought in
    // line.
    if (m_carrier_type == LIB_NR_DOWNLINK)
        _update_all_dl_channels(_all_dl_bwps());
    else
        _follow_ul_numerologies();
    _update_downlink_bwp_reference();
}

bool lib_nr_carrier_configure_manager_t::copy_dl_bwp(unsigned int index)
{
    if (index == 0 || !append_copy(m_dl_bwps, index))
        return false;
    _update_downlink_bwp_reference();
    return true;
}

bool lib_nr_carrier_configure_manager_t::remove_dl_bwp(unsigned int index)
{
    if (index == 0 || !remove_entry(m_dl_bwps, index, 2))
        return false;
    number_anew(m_dl_bwps);
    _update_downlink_bwp_reference();
    // What moved down is another BWP to the channels that keep its number.
    _update_all_dl_channels({index, get_dl_bwp_number()});
    return true;
}

void lib_nr_carrier_configure_manager_t::add_dl_dci() { append_entry(m_dl_dcis, get_dl_bwp(k_first_dl_bwp)); }
bool lib_nr_carrier_configure_manager_t::copy_dl_dci(unsigned int index) { return append_copy(m_dl_dcis, index); }
bool lib_nr_carrier_configure_manager_t::remove_dl_dci(unsigned int index) { return remove_entry(m_dl_dcis, index); }

void lib_nr_carrier_configure_manager_t::add_dl_sch()
{
    fit_antennas(append_entry(m_dl_schs, get_dl_bwp(k_first_dl_bwp)), m_antennas_number);
}
bool lib_nr_carrier_configure_manager_t::copy_dl_sch(unsigned int index) { return append_copy(m_dl_schs, index); }
bool lib_nr_carrier_configure_manager_t::remove_dl_sch(unsigned int index) { return remove_entry(m_dl_schs, index); }

void lib_nr_carrier_configure_manager_t::add_dl_csirs()
{
    fit_antennas(append_entry(m_dl_csirss, get_dl_bwp(k_first_dl_bwp)), m_antennas_number);
}
bool lib_nr_carrier_configure_manager_t::copy_dl_csirs(unsigned int index) { return append_copy(m_dl_csirss, index); }
bool lib_nr_carrier_configure_manager_t::remove_dl_csirs(unsigned int index)
{
    return remove_entry(m_dl_csirss, index);
}

void lib_nr_carrier_configure_manager_t::add_dl_prs() { append_entry(m_dl_prss, _first_enabled_numerology()); }
bool lib_nr_carrier_configure_manager_t::copy_dl_prs(unsigned int index) { return append_copy(m_dl_prss, index); }
bool lib_nr_carrier_configure_manager_t::remove_dl_prs(unsigned int index) { return remove_entry(m_dl_prss, index); }

void lib_nr_carrier_configure_manager_t::add_ul_bwp()
{
    const auto id = static_cast<unsigned int>(m_ul_bwps.size());
    append_entry(m_ul_bwps, _first_enabled_numerology(), id).set_bwp_name("BWP" + std::to_string(id + 1));
}

bool lib_nr_carrier_configure_manager_t::copy_ul_bwp(unsigned int index)
{
    if (!append_copy(m_ul_bwps, index))
        return false;
    lib_nr_ul_bwp_configure_manager_t& copy = m_ul_bwps.back();
    copy.set_bwp_name(copy.get_bwp_name() + "_copy");
    return true;
}

bool lib_nr_carrier_configure_manager_t::remove_ul_bwp(unsigned int index)
{
    if (!remove_entry(m_ul_bwps, index))
        return false;
    number_anew(m_ul_bwps);
    _update_uplink_bwp_reference();
    _update_all_ul_channels({index, get_ul_bwp_number()});
    return true;
}

void lib_nr_carrier_configure_manager_t::add_ul_pucch()
{
    append_entry(m_ul_pucchs, get_ul_bwp(k_first_ul_bwp)).set_name("UCI" + std::to_string(m_ul_pucchs.size()));
}

bool lib_nr_carrier_configure_manager_t::copy_ul_pucch(unsigned int index)
{
    if (!append_copy(m_ul_pucchs, index))
        return false;
    append_copy(m_ul_pucchs, index);
    lib_nr_ul_pucch_configure_manager_t& second = m_ul_pucchs.back();
    second.set_name(second.get_name() + "_copy");
    return true;
}

bool lib_nr_carrier_configure_manager_t::remove_ul_pucch(unsigned int index)
{
    return remove_entry(m_ul_pucchs, index);
}

void lib_nr_carrier_configure_manager_t::add_ul_sch()
{
    const lib_nr_ul_bwp_configure_manager_t& bwp = get_ul_bwp(k_first_ul_bwp);
    fit_antennas(append_entry(m_ul_schs, bwp, get_numerology_manager(bwp.get_numerology()), m_bandwidth),
                 m_antennas_number);
}

bool lib_nr_carrier_configure_manager_t::copy_ul_sch(unsigned int index) { return append_copy(m_ul_schs, index); }
bool lib_nr_carrier_configure_manager_t::remove_ul_sch(unsigned int index) { return remove_entry(m_ul_schs, index); }

void lib_nr_carrier_configure_manager_t::add_ul_srs()
{
    fit_antennas(append_entry(m_ul_srss, get_ul_bwp(k_first_ul_bwp)), m_antennas_number);
}
bool lib_nr_carrier_configure_manager_t::copy_ul_srs(unsigned int index) { return append_copy(m_ul_srss, index); }
bool lib_nr_carrier_configure_manager_t::remove_ul_srs(unsigned int index) { return remove_entry(m_ul_srss, index); }

void lib_nr_carrier_configure_manager_t::add_ul_prach() { append_entry(m_ul_prachs, get_ul_bwp(k_first_ul_bwp)); }
bool lib_nr_carrier_configure_manager_t::copy_ul_prach(unsigned int index) { return append_copy(m_ul_prachs, index); }
bool lib_nr_carrier_configure_manager_t::remove_ul_prach(unsigned int index)
{
    return remove_entry(m_ul_prachs, index);
}

// Changes of a bandwidth part

bool lib_nr_carrier_configure_manager_t::set_dl_bwp_numerology(unsigned int index, lib_nr_numerology_type_t numerology)
{
    lib_nr_dl_bwp_configure_manager_t& bwp = m_dl_bwps.at(index);
    const lib_nr_numerology_type_t numerology_before = bwp.get_numerology();
    bwp.set_numerology(_enabled_numerology(numerology));
    bwp.update_coresets();
    _update_all_dl_channels(one_bwp(index));
    return bwp.get_numerology() != numerology_before;
}

bool lib_nr_carrier_configure_manager_t::set_dl_bwp_rb_size(unsigned int index, unsigned int rb_size)
{
    lib_nr_dl_bwp_configure_manager_t& bwp = m_dl_bwps.at(index);
    const lib_nr_phy_numerology_configure_manager_t& limits = _dl_bwp_limits(bwp, "set_dl_bwp_rb_size");
    const bool changed = bwp.set_bwp_rb_size(rb_size, limits.get_rb_start(), limits.get_rb_size());
    bwp.update_coresets();
    _update_dl_channels(m_dl_schs, one_bwp(index));
    _update_dl_channels(m_dl_csirss, one_bwp(index));
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_dl_bwp_rb_start(unsigned int index, unsigned int rb_start)
{
    lib_nr_dl_bwp_configure_manager_t& bwp = m_dl_bwps.at(index);
    const lib_nr_phy_numerology_configure_manager_t& limits = _dl_bwp_limits(bwp, "set_dl_bwp_rb_start");
    const bool changed = bwp.set_bwp_rb_start(rb_start, limits.get_rb_start(), limits.get_rb_size());
    bwp.update_coresets();
    _update_dl_channels(m_dl_schs, one_bwp(index));
    _update_dl_channels(m_dl_csirss, one_bwp(index));
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_dl_bwp_cp_type(unsigned int index, lib_nr_cyclic_prefix_type_t cp_type)
{
    const bool changed = m_dl_bwps.at(index).set_cp_type(cp_type);
    _update_dl_channels(m_dl_dcis, one_bwp(index));
    _update_dl_channels(m_dl_schs, one_bwp(index));
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_all_dl_bwps_cp_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    bool changed = false;
    for (lib_nr_dl_bwp_configure_manager_t& bwp : m_dl_bwps)
        changed = bwp.set_cp_type(cp_type) || changed;
    _update_dl_channels(m_dl_dcis, _all_dl_bwps());
    _update_dl_channels(m_dl_schs, _all_dl_bwps());
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_coreset_number(unsigned int bwp_index, unsigned int coreset_number)
{
    if (bwp_index >= m_dl_bwps.size())
        return false;
    m_dl_bwps[bwp_index].set_coreset_number(coreset_number);
    m_dl_bwps[bwp_index].update_coresets();
    _update_coreset_reference();
    return true;
}

bool lib_nr_carrier_configure_manager_t::set_dl_coreset_duration(unsigned int bwp_index, unsigned int coreset_index,
                                                                 unsigned int duration)
{
    const bool changed = m_dl_bwps.at(bwp_index).get_coreset(coreset_index).set_duration(duration);
    _update_dl_channels(m_dl_dcis, one_bwp(bwp_index));
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_ul_bwp_numerology(unsigned int index, lib_nr_numerology_type_t numerology)
{
    lib_nr_ul_bwp_configure_manager_t& bwp = m_ul_bwps.at(index);
    const lib_nr_numerology_type_t numerology_before = bwp.get_numerology();
    bwp.set_numerology(_enabled_numerology(numerology));
    _update_all_ul_channels(one_bwp(index));
    _tell_of_prachs("set_ul_bwp_numerology");
    return bwp.get_numerology() != numerology_before;
}

bool lib_nr_carrier_configure_manager_t::set_ul_bwp_cp_type(unsigned int index, lib_nr_cyclic_prefix_type_t cp_type)
{
    const bool changed = m_ul_bwps.at(index).set_cp_type(cp_type);
    _update_all_ul_channels(one_bwp(index));
    _tell_of_prachs("set_ul_bwp_cp_type");
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_all_ul_bwps_cp_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    bool changed = false;
    for (lib_nr_ul_bwp_configure_manager_t& bwp : m_ul_bwps) {
        changed = bwp.set_cp_type(cp_type) || changed;
        _tell_of_prachs("set_ul_bwp_cp_type");
    }
    _update_all_ul_channels(_all_ul_bwps());
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_ul_bwp_rb_number(unsigned int index, unsigned int rb_number,
                                                              unsigned int rb_start, unsigned int rb_size)
{
    const bool changed = m_ul_bwps.at(index).set_rb_number(rb_number, rb_start, rb_size);
    _update_all_ul_channels(one_bwp(index));
    _tell_of_prachs("set_ul_bwp_rb_number");
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_ul_bwp_rb_offset(unsigned int index, unsigned int rb_offset,
                                                              unsigned int rb_start, unsigned int rb_size)
{
    const bool changed = m_ul_bwps.at(index).set_rb_offset(rb_offset, rb_start, rb_size);
    _update_ul_channels_but_pucchs(one_bwp(index));
    _tell_of_prachs("set_ul_bwp_rb_offset");
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_numerology_guard_band(unsigned int index)
{
    lib_nr_phy_numerology_configure_manager_t& numerology = m_numerologies.at(index);
    if (!numerology.get_ul_guard_band().confirm_configuration())
        return false;
    for (unsigned int i = 0; i < m_ul_bwps.size(); ++i)
        if (m_ul_bwps[i].get_numerology() == numerology.get_numerolgy())
            _update_ul_channels(m_ul_schs, one_bwp(i));
    return true;
}

// Where a channel stands

bool lib_nr_carrier_configure_manager_t::set_dl_dci_bwp_id(unsigned int index, unsigned int bwp_id)
{
    lib_nr_dl_dci_configure_manager_t& dci = m_dl_dcis.at(index);
    const unsigned int id = existing_bwp_id(bwp_id, m_dl_bwps.size(), "set_dl_dci_bwp_id");
    return move_to_dl_bwp(dci, id, m_dl_bwps[id]);
}

bool lib_nr_carrier_configure_manager_t::set_dl_sch_bwp_id(unsigned int index, unsigned int bwp_id)
{
    lib_nr_dl_sch_configure_manager_t& sch = m_dl_schs.at(index);
    const unsigned int id = existing_bwp_id(bwp_id, m_dl_bwps.size(), "set_dl_sch_bwp_id");
    return move_to_dl_bwp(sch, id, m_dl_bwps[id]);
}

bool lib_nr_carrier_configure_manager_t::set_dl_csirs_bwp_id(unsigned int index, unsigned int bwp_id)
{
    lib_nr_dl_csirs_configure_manager_t& csirs = m_dl_csirss.at(index);
    const unsigned int id = existing_bwp_id(bwp_id, m_dl_bwps.size(), "set_dl_csirs_bwp_id");
    return move_to_dl_bwp(csirs, id, m_dl_bwps[id]);
}

bool lib_nr_carrier_configure_manager_t::set_dl_ssb_numerology(lib_nr_numerology_type_t numerology)
{
    const lib_nr_numerology_type_t numerology_before = m_dl_ssb.get_numerology();
    m_dl_ssb.update_by_numerology(_enabled_numerology(numerology));
    return m_dl_ssb.get_numerology() != numerology_before;
}

bool lib_nr_carrier_configure_manager_t::set_dl_ssb_dmrs_typea_position(unsigned int position)
{
    const bool changed = m_dl_ssb.set_dmrs_typea_position(position);
    follow_mib_position(m_dl_schs, m_dl_bwps, m_dl_ssb.get_dmrs_typeA_position());
    follow_mib_position(m_ul_schs, m_ul_bwps, m_dl_ssb.get_dmrs_typeA_position());
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_dl_prs_numerology(unsigned int index, lib_nr_numerology_type_t numerology)
{
    lib_nr_dl_prs_configure_manager_t& prs = m_dl_prss.at(index);
    const lib_nr_numerology_type_t numerology_before = prs.get_numerology();
    prs.update_by_numerology(_enabled_numerology(numerology));
    return prs.get_numerology() != numerology_before;
}

bool lib_nr_carrier_configure_manager_t::set_ul_pucch_bwp_id(unsigned int index, unsigned int bwp_id)
{
    lib_nr_ul_pucch_configure_manager_t& pucch = m_ul_pucchs.at(index);
    const unsigned int id_before = pucch.get_bwp_id();
    const unsigned int id = existing_bwp_id(bwp_id, m_ul_bwps.size(), "set_ul_pucch_bwp_id");
    _follow_ul_bwp(pucch, id);
    return pucch.get_bwp_id() != id_before;
}

bool lib_nr_carrier_configure_manager_t::set_ul_sch_bwp_id(unsigned int index, unsigned int bwp_id)
{
    lib_nr_ul_sch_configure_manager_t& sch = m_ul_schs.at(index);
    const unsigned int id = existing_bwp_id(bwp_id, m_ul_bwps.size(), "set_ul_sch_bwp_id");
    const bool changed = sch.set_bwp_id(id);
    _follow_ul_bwp(sch, id);
    return changed;
}

bool lib_nr_carrier_configure_manager_t::set_ul_srs_bwp_id(unsigned int index, unsigned int bwp_id)
{
    lib_nr_ul_srs_configure_manager_t& srs = m_ul_srss.at(index);
    const unsigned int id = existing_bwp_id(bwp_id, m_ul_bwps.size(), "set_ul_srs_bwp_id");
    const bool changed = srs.set_bwp_id(id);
    _follow_ul_bwp(srs, id);
    return changed;
}

void lib_nr_carrier_configure_manager_t::set_ul_prach_bwp_id(unsigned int index, unsigned int bwp_id)
{
    lib_nr_ul_prach_configure_manager_t& prach = m_ul_prachs.at(index);
    _follow_ul_bwp(prach, existing_bwp_id(bwp_id, m_ul_bwps.size(), "set_ul_prach_bwp_id"));
}

// Starting lists

void lib_nr_carrier_configure_manager_t::_clear_lists()
{
    m_numerologies.clear();
    m_dl_bwps.clear();
    m_dl_dcis.clear();
    m_dl_schs.clear();
    m_dl_csirss.clear();
    m_dl_prss.clear();
    m_ul_bwps.clear();
    m_ul_pucchs.clear();
    m_ul_schs.clear();
    m_ul_srss.clear();
    m_ul_prachs.clear();
}

void lib_nr_carrier_configure_manager_t::_init_bwp_list()
{
    if (m_numerologies.empty()) {
        std::cout << "lib_nr_carrier_configure_manager_t::_init_bwp_list Report: Numerology list must NOT be emtpy!"
                  << std::endl;
        return;
    }
    m_dl_bwps.clear();
    m_ul_bwps.clear();
    append_dl_bwp(m_dl_bwps, _first_enabled_numerology(), true);
    append_dl_bwp(m_dl_bwps, _first_enabled_numerology(), false);
    append_entry(m_ul_bwps, _first_enabled_numerology(), 0U);
    _update_bwp_list();
    _update_downlink_bwp_reference();
    _update_uplink_bwp_reference();
}

void lib_nr_carrier_configure_manager_t::_init_downlink_lists()
{
    add_dl_dci();
    add_dl_sch();
    add_dl_csirs();
    add_dl_prs();
}

void lib_nr_carrier_configure_manager_t::_init_uplink_lists()
{
    add_ul_pucch();
    add_ul_sch();
    add_ul_srs();
    add_ul_prach();
}

// References

void lib_nr_carrier_configure_manager_t::_update_bwp_list()
{
    if (m_carrier_type == LIB_NR_DOWNLINK)
        _follow_dl_numerologies();
    else
        _follow_ul_numerologies();
}

void lib_nr_carrier_configure_manager_t::_follow_dl_numerologies()
{
    for (lib_nr_dl_bwp_configure_manager_t& bwp : m_dl_bwps) {
        bwp.set_numerology(_enabled_numerology(bwp.get_numerology()));
        bwp.update_coresets();
    }
    _update_all_dl_channels(_all_dl_bwps());
}

void lib_nr_carrier_configure_manager_t::_follow_ul_numerologies()
{
    for (lib_nr_ul_bwp_configure_manager_t& bwp : m_ul_bwps) {
        bwp.set_numerology(_enabled_numerology(bwp.get_numerology()));
        _tell_of_prachs("set_ul_bwp_numerology");
    }
    _update_all_ul_channels(_all_ul_bwps());
}

void lib_nr_carrier_configure_manager_t::_update_downlink_bwp_reference()
{
    for_each_lost(m_dl_csirss, m_dl_bwps.size(), [this](unsigned int i) { set_dl_csirs_bwp_id(i, 0); });
    for_each_lost(m_dl_dcis, m_dl_bwps.size(), [this](unsigned int i) {
        set_dl_dci_bwp_id(i, 0);
        m_dl_dcis[i].set_coreset_id(0);
    });
    for_each_lost(m_dl_schs, m_dl_bwps.size(), [this](unsigned int i) { set_dl_sch_bwp_id(i, 0); });
    _update_coreset_reference();
}

void lib_nr_carrier_configure_manager_t::_update_coreset_reference()
{
    for (lib_nr_dl_dci_configure_manager_t& dci : m_dl_dcis) {
        if (dci.get_bwp_id() >= m_dl_bwps.size()) {
            dci.set_bwp_id(0);
            dci.set_coreset_id(0);
        }
        const lib_nr_dl_bwp_configure_manager_t& bwp = m_dl_bwps[dci.get_bwp_id()];
        if (!bwp.check_coreset_index_valid(dci.get_coreset_id()))
            dci.set_coreset_id(bwp.get_first_coreset_index());
    }
}

void lib_nr_carrier_configure_manager_t::_update_uplink_bwp_reference()
{
    for_each_lost(m_ul_schs, m_ul_bwps.size(), [this](unsigned int i) { set_ul_sch_bwp_id(i, 0); });
    for_each_lost(m_ul_pucchs, m_ul_bwps.size(), [this](unsigned int i) { set_ul_pucch_bwp_id(i, 0); });
    for_each_lost(m_ul_srss, m_ul_bwps.size(), [this](unsigned int i) { set_ul_srs_bwp_id(i, 0); });
    for_each_lost(m_ul_prachs, m_ul_bwps.size(), [this](unsigned int i) { set_ul_prach_bwp_id(i, 0); });
}

const lib_nr_phy_numerology_configure_manager_t&
lib_nr_carrier_configure_manager_t::_dl_bwp_limits(const lib_nr_dl_bwp_configure_manager_t& bwp,
                                                   std::string_view operation) const
{
    const lib_nr_phy_numerology_configure_manager_t& limits = get_numerology_manager(bwp.get_numerology());
    if (!limits.get_enable())
        std::cout << "lib_nr_carrier_configure_manager_t::" << operation << " : Error! numerology of bwp not enable"
                  << std::endl;
    return limits;
}

} // namespace vek::nr_mod_lib

#include "phy/lib_nr_phy.h"
#include "phy/lib_nr_phy_steps.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>

// The engine's downlink steps: which entries, frames and slots each channel's process is run for.

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned char k_both_half_frames = 255;

unsigned int slots_per_frame_of(const lib_nr_carrier_configure_manager_t& carrier, unsigned int bwp_id)
{
    return lib_nr_phy_common_t::get_slot_in_frame(carrier.get_dl_bwp(bwp_id).get_numerology());
}

} // namespace

template <class call_t>
bool lib_nr_phy_t::_for_each_ssb(unsigned int frame, unsigned int carrier, unsigned int numerology,
                                 lib_nr_remap_mode_t mode, call_t call)
{
    const lib_nr_dl_ssb_configure_manager_t& ssb = m_waveform.get_carrier(carrier).get_dl_ssb();
    const unsigned char half_frame = ssb.get_half_frame_idx();
    const unsigned int first = half_frame == k_both_half_frames ? 0 : half_frame;
    const unsigned int last = half_frame == k_both_half_frames ? 1 : half_frame;
    for (unsigned int half = first; half <= last; ++half) {
        m_ssb_process.set_waveform_config(carrier, frame, half, numerology, m_waveform);
        for (const int active : ssb.get_active_idx()) {
            const auto index = static_cast<unsigned int>(active);
            if (index >= static_cast<unsigned int>(ssb.get_lmax())) {
                std::cout << "lib_nr_dl_phy_t::_nr_dl_ssb_link_process: ssb slot active idx error." << std::endl;
                return false;
            }
            if (!_call(index, std::nullopt, mode, [&] { return call(index); }))
                return false;
        }
    }
    return true;
}

bool lib_nr_phy_t::_nr_dl_ssb_link_process(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_dl_ssb_link_process", carrier);
    const lib_nr_dl_ssb_configure_manager_t& ssb = m_waveform.get_carrier(carrier).get_dl_ssb();
    if (frame * 10 % ssb.get_periodicity() != 0)
        return true;
    if (!ssb.get_enable()) {
        std::cout << "_nr_dl_ssb_link_process : ssb is not enable.\n" << std::endl;
        return true;
    }
    return _for_each_ssb(frame, carrier, numerology, LIB_NR_REMAPP_MODE_ENCODE_MAP,
                         [&](unsigned int index) { return m_ssb_process.ssb_encode_process(index); });
}

bool lib_nr_phy_t::_nr_dl_ssb_re_map(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_dl_ssb_re_map", carrier);
    const lib_nr_dl_ssb_configure_manager_t& ssb = m_waveform.get_carrier(carrier).get_dl_ssb();
    if (frame * 10 % ssb.get_periodicity() != 0)
        return true;
    if (!ssb.get_enable()) {
        std::cout << "_nr_dl_ssb_re_map : ssb is not enable.\n" << std::endl;
        return true;
    }
    return _for_each_ssb(frame, carrier, numerology, LIB_NR_REMAPP_MODE_UI_VIEW_MAP, [&](unsigned int index) {
        m_ssb_process._dl_phy_ssb_remap(index, LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
        return true;
    });
}

template <class call_t>
bool lib_nr_phy_t::_for_each_csirs_slot(unsigned int frame, unsigned int carrier, unsigned int numerology,
                                        lib_nr_remap_mode_t mode, call_t call)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    for (unsigned int i = 0; i < configuration.get_dl_csirs_number(); ++i) {
        const lib_nr_dl_csirs_configure_manager_t& csirs = configuration.get_dl_csirs(i);
        if (!csirs.get_enable() || !is_pass_of(configuration.get_dl_bwp(csirs.get_bwp_id())))
            continue;
        m_csirs_process.set_waveform_config(carrier, numerology, i, m_waveform);
        const unsigned int slots = slots_per_frame_of(configuration, csirs.get_bwp_id());
        for (const int allocated : csirs.get_slot_allocation())
            if (const auto slot = slot_in_frame(allocated, csirs.get_one_frame_period(), slots, frame))
                if (!_call(i, slot, mode, [&] { return call(*slot); }))
                    return false;
    }
    return true;
}

bool lib_nr_phy_t::_nr_dl_csirs_link_process(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_dl_csirs_link_process", carrier);
    return _for_each_csirs_slot(frame, carrier, numerology, LIB_NR_REMAPP_MODE_ENCODE_MAP,
                                [&](unsigned int slot) { return m_csirs_process.csirs_process(slot); });
}

bool lib_nr_phy_t::_nr_dl_csirs_re_map(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_dl_csirs_re_map", carrier);
    return _for_each_csirs_slot(frame, carrier, numerology, LIB_NR_REMAPP_MODE_UI_VIEW_MAP, [&](unsigned int slot) {
        m_csirs_process.nr_dl_phy_csirs_re_map(slot, LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
        return true;
    });
}

// A PRS counts the slots of each frame anew.
template <class call_t>
bool lib_nr_phy_t::_for_each_prs_slot(unsigned int carrier, unsigned int numerology, lib_nr_remap_mode_t mode,
                                      call_t call)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    for (unsigned int i = 0; i < configuration.get_dl_prs_number(); ++i) {
        const lib_nr_dl_prs_configure_manager_t& prs = configuration.get_dl_prs(i);
        if (!prs.get_enable() || !is_pass_of(prs))
            continue;
        m_prs_process.set_waveform_config(carrier, numerology, i, m_waveform);
        const unsigned int slots = lib_nr_phy_common_t::get_slot_in_frame(prs.get_numerology());
        for (unsigned int slot = 0; slot < slots; ++slot)
            if (!_call(i, slot, mode, [&] { return call(slot); }))
                return false;
    }
    return true;
}

bool lib_nr_phy_t::_nr_dl_prs_link_process(unsigned int, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_dl_prs_link_process", carrier);
    return _for_each_prs_slot(carrier, numerology, LIB_NR_REMAPP_MODE_ENCODE_MAP,
                              [&](unsigned int slot) { return m_prs_process.prs_encode_process(slot); });
}

bool lib_nr_phy_t::_nr_dl_prs_re_map(unsigned int, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_dl_prs_re_map", carrier);
    return _for_each_prs_slot(carrier, numerology, LIB_NR_REMAPP_MODE_UI_VIEW_MAP, [&](unsigned int slot) {
        m_prs_process.dl_phy_prs_remap(slot, LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
        return true;
    });
}

template <class call_t>
bool lib_nr_phy_t::_for_each_pdcch_slot(unsigned int carrier, unsigned int numerology, lib_nr_remap_mode_t mode,
                                        call_t call)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    for (unsigned int i = 0; i < configuration.get_dl_dci_number(); ++i) {
        const lib_nr_dl_dci_configure_manager_t& dci = configuration.get_dl_dci(i);
        if (!dci.get_enable() || !is_pass_of(configuration.get_dl_bwp(dci.get_bwp_id())))
            continue;
        m_pdcch_process.set_waveform_config(carrier, numerology, i, m_waveform);
        for (const int allocated : dci.get_slot_allocation_for_lib()) {
            const auto slot = static_cast<unsigned int>(allocated);
            if (!_call(i, slot, mode, [&] { return call(slot); }))
                return false;
        }
    }
    return true;
}

bool lib_nr_phy_t::_nr_dl_pdcch_link_process(unsigned int, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_dl_pdcch_link_process", carrier);
    return _for_each_pdcch_slot(carrier, numerology, LIB_NR_REMAPP_MODE_ENCODE_MAP,
                                [&](unsigned int slot) { return m_pdcch_process.pdcch_encode_process(slot); });
}

bool lib_nr_phy_t::_nr_dl_pdcch_re_map(unsigned int, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_dl_pdcch_re_map", carrier);
    return _for_each_pdcch_slot(carrier, numerology, LIB_NR_REMAPP_MODE_UI_VIEW_MAP, [&](unsigned int slot) {
        m_pdcch_process.dl_phy_pdcch_remap(slot, LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
        return true;
    });
}

template <class call_t>
bool lib_nr_phy_t::_for_each_pdsch_slot(unsigned int frame, unsigned int carrier, unsigned int numerology,
                                        lib_nr_remap_mode_t mode, call_t call)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    for (unsigned int i = 0; i < configuration.get_dl_sch_number(); ++i) {
        const lib_nr_dl_sch_configure_manager_t& sch = configuration.get_dl_sch(i);
        if (!sch.get_enable() || !is_pass_of(configuration.get_dl_bwp(sch.get_bwp_id())))
            continue;
        m_pdsch_process.set_waveform_config(carrier, numerology, i, m_waveform);
        const unsigned int slots = slots_per_frame_of(configuration, sch.get_bwp_id());
        for (const unsigned int allocated : sch.get_slot_allocation_v())
            if (const auto slot = slot_in_frame(allocated, sch.get_one_frame_period(), slots, frame))
                if (!_call(i, slot, mode, [&] { return call(*slot); }))
                    return false;
    }
    return true;
}

bool lib_nr_phy_t::_nr_dl_pdsch_link_process(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_dl_pdsch_link_process", carrier);
    if (m_waveform.get_carrier(carrier).get_dl_tm().get_duplex_type() == LIB_NR_DUPLEX_TYPE_TDD)
        return _nr_dl_pdsch_tdd_link_process(frame, carrier, numerology);
    return _for_each_pdsch_slot(frame, carrier, numerology, LIB_NR_REMAPP_MODE_ENCODE_MAP,
                                [&](unsigned int slot) { return m_pdsch_process.sch_encode_process(slot); });
}

// All channels of one RNTI draw one continuous payload sequence, in the order of the frame's slots; each frame begins
// it anew.
bool lib_nr_phy_t::_nr_dl_pdsch_tdd_link_process(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    std::vector<std::array<unsigned int, 3>> transmissions; // slot, RNTI, channel
    for (unsigned int i = 0; i < configuration.get_dl_sch_number(); ++i) {
        const lib_nr_dl_sch_configure_manager_t& sch = configuration.get_dl_sch(i);
        if (!sch.get_enable() || !is_pass_of(configuration.get_dl_bwp(sch.get_bwp_id())))
            continue;
        const unsigned int slots = slots_per_frame_of(configuration, sch.get_bwp_id());
        for (const unsigned int allocated : sch.get_slot_allocation_v())
            if (const auto slot = slot_in_frame(allocated, sch.get_one_frame_period(), slots, frame))
                transmissions.push_back({*slot, sch.get_rnti(), i});
    }
    std::sort(transmissions.begin(), transmissions.end());

    std::map<unsigned int, unsigned int> seeds;
    for (const auto& transmission : transmissions) {
        const auto [slot, rnti, channel] = transmission;
        unsigned int& seed = seeds.emplace(rnti, std::numeric_limits<unsigned int>::max()).first->second;
        m_pdsch_process.set_waveform_config(carrier, numerology, channel, m_waveform);
        m_pdsch_process.set_pn_seed(seed);
        const auto encode = [&, slot = slot] { return m_pdsch_process.sch_encode_process(slot); };
        if (!_call(channel, slot, LIB_NR_REMAPP_MODE_ENCODE_MAP, encode))
            return false;
        seed = m_pdsch_process.get_pn_seed();
    }
    return true;
}

bool lib_nr_phy_t::_nr_dl_pdsch_re_map(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_dl_pdsch_re_map", carrier);
    return _for_each_pdsch_slot(frame, carrier, numerology, LIB_NR_REMAPP_MODE_UI_VIEW_MAP, [&](unsigned int slot) {
        m_pdsch_process.phy_sch_remap(slot, LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
        return true;
    });
}

} // namespace vek::nr_mod_lib

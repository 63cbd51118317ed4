#include "common/lib_common_container.h"
#include "phy/lib_nr_phy.h"
#include "phy/lib_nr_phy_steps.h"
#include "phy/lib_nr_prach_resource_manager.h"

#include <algorithm>
#include <cmath>

// The engine's uplink steps, and the road of its own that a PRACH carrier takes.

namespace vek::nr_mod_lib
{

namespace
{

lib_nr_prach_resource_manager_t& prach_grid() { return lib_nr_prach_resource_manager_t::get_inst(); }

constexpr const char* k_prach = "PRACH";

/// PRACH counts its time in slots of uplink BWP 0.
bool is_prach_pass(const lib_nr_carrier_configure_manager_t& carrier, unsigned int numerology)
{
    return carrier.get_ul_bwp(0).get_numerology() == carrier.get_numerology_manager(numerology).get_numerolgy();
}

void print_skipped_slot(const char* step, int slot)
{
    std::cout << step << "islot does not satisfy condition!islot = " << slot << " \n" << std::endl;
}

} // namespace

bool lib_nr_phy_t::_nr_ul_pucch_link_process(unsigned int, unsigned int carrier, unsigned int numerology)
{
    return m_pucch_process.deal_ul_pucch_link_process(m_waveform, carrier, numerology);
}

bool lib_nr_phy_t::_nr_ul_pucch_re_map(unsigned int, unsigned int carrier, unsigned int numerology)
{
    return m_pucch_process.deal_ul_pucch_resource_mapping(m_waveform, carrier, numerology);
}

template <class call_t>
bool lib_nr_phy_t::_for_each_pusch_slot(unsigned int frame, unsigned int carrier, unsigned int numerology,
                                        lib_nr_remap_mode_t mode, call_t call)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    for (unsigned int i = 0; i < configuration.get_ul_sch_number(); ++i) {
        const lib_nr_ul_sch_configure_manager_t& sch = configuration.get_ul_sch(i);
        if (!sch.get_enable() || !is_pass_of(configuration.get_ul_bwp(sch.get_bwp_id())))
            continue;
        m_pusch_process.set_waveform_config(carrier, numerology, i, m_waveform);
        const unsigned int slots =
            lib_nr_phy_common_t::get_slot_in_frame(configuration.get_ul_bwp(sch.get_bwp_id()).get_numerology());
        for (const unsigned int allocated : sch.get_slot_allocation_v())
            if (const auto slot = slot_in_frame(allocated, sch.get_one_frame_period(), slots, frame))
                if (!_call(i, slot, mode, [&] { return call(*slot); }))
                    return false;
    }
    return true;
}

bool lib_nr_phy_t::_nr_ul_pusch_link_process(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_ul_pusch_link_process", carrier);
    return _for_each_pusch_slot(frame, carrier, numerology, LIB_NR_REMAPP_MODE_ENCODE_MAP,
                                [&](unsigned int slot) { return m_pusch_process.sch_encode_process(slot); });
}

bool lib_nr_phy_t::_nr_ul_pusch_re_map(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_ul_pusch_re_map", carrier);
    return _for_each_pusch_slot(frame, carrier, numerology, LIB_NR_REMAPP_MODE_UI_VIEW_MAP, [&](unsigned int slot) {
        m_pusch_process.phy_sch_remap(slot, LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
        return true;
    });
}

bool lib_nr_phy_t::_nr_ul_srs_link_process(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_ul_srs_link_process", carrier);
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    const unsigned int slots =
        lib_nr_phy_common_t::get_slot_in_frame(configuration.get_numerology_manager(numerology).get_numerolgy());
    for (unsigned int i = 0; i < configuration.get_ul_srs_number(); ++i) {
        const lib_nr_ul_srs_configure_manager_t& srs = configuration.get_ul_srs(i);
        if (!srs.get_enable() || !is_pass_of(configuration.get_ul_bwp(srs.get_bwp_id())))
            continue;
        m_srs_process.set_waveform_config(carrier, frame, numerology, i, m_waveform);
        const auto period = static_cast<int>(srs.get_srs_periodity());
        for (const int slot : srs.get_slot_allocation()) {
            // Slots since the offset, as a 32-bit number with a sign.
            const auto since = static_cast<int>(slots * frame - srs.get_t_offset() + static_cast<unsigned int>(slot));
            if (period != 0 && (since < 0 || since % period != 0)) {
                print_skipped_slot("_nr_ul_srs_link_process", slot);
                continue;
            }
            const auto encode = [&] { return m_srs_process.srs_process(static_cast<unsigned int>(slot)); };
            if (!_call(i, static_cast<unsigned int>(slot), LIB_NR_REMAPP_MODE_ENCODE_MAP, encode)) {
                std::cout << "_nr_ul_srs_link_process::srs_process return false!" << std::endl;
                return false;
            }
        }
    }
    return true;
}

bool lib_nr_phy_t::_nr_ul_srs_re_map(unsigned int frame, unsigned int carrier, unsigned int numerology)
{
    print_step("_nr_ul_srs_re_map", carrier);
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    std::cout << "carrier enable : " << configuration.get_enable() << std::endl;
    const unsigned int slots =
        lib_nr_phy_common_t::get_slot_in_frame(configuration.get_numerology_manager(numerology).get_numerolgy());
    for (unsigned int i = 0; i < configuration.get_ul_srs_number(); ++i) {
        const lib_nr_ul_srs_configure_manager_t& srs = configuration.get_ul_srs(i);
        if (!srs.get_enable() || !is_pass_of(configuration.get_ul_bwp(srs.get_bwp_id())))
            continue;
        m_srs_process.set_waveform_config(carrier, frame, numerology, i, m_waveform);
        const auto period = static_cast<unsigned int>(srs.get_srs_periodity());
        for (const int slot : srs.get_slot_allocation()) {
            const unsigned int since = slots * frame - srs.get_t_offset() + static_cast<unsigned int>(slot);
            if (period != 0 && since % period != 0) {
                print_skipped_slot("", slot);
                continue;
            }
            std::cout << "srs slot : " << slot << std::endl;
            _call(i, static_cast<unsigned int>(slot), LIB_NR_REMAPP_MODE_UI_VIEW_MAP, [&] {
                return m_srs_process.nr_ul_phy_srs_re_map(static_cast<unsigned int>(slot),
                                                          LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
            });
        }
    }
    return true;
}

bool lib_nr_phy_t::deal_prach_resource_mapping(unsigned int carrier, unsigned int numerology, unsigned int frame,
                                               const lib_nr_waveform_configure_manager_t& waveform)
{
    m_first_failed_step.reset();
    return _map_prach_frame(carrier, numerology, frame, waveform);
}

bool lib_nr_phy_t::_map_prach_frame(unsigned int carrier, unsigned int numerology, unsigned int frame,
                                    const lib_nr_waveform_configure_manager_t& waveform)
{
    const lib_nr_carrier_configure_manager_t& configuration = waveform.get_carrier(carrier);
    m_step = lib_nr_channel_step_t{k_prach, carrier, numerology, frame, {}, {}};
    print_step("deal_prach_resource_mapping", carrier);
    std::cout << configuration.get_numerology_manager(numerology).get_numerolgy() << std::endl;
    prach_grid().init_resource_mapping();
    const unsigned int bursts = is_prach_pass(configuration, numerology) ? configuration.get_ul_prach_number() : 0;
    for (unsigned int b = 0; b < bursts; ++b) {
        if (!configuration.get_ul_prach(b).get_enable()) {
            std::cout << "_nr_ul_prach_freq_remap: prach_brust " << b << " is disable .\n" << std::endl;
            continue;
        }
        _update_prach_ofdm_config(carrier, numerology, b);
        m_prach_process.set_waveform_config(carrier, numerology, b, 0, waveform);
        _call(b, std::nullopt, LIB_NR_REMAPP_MODE_UI_VIEW_MAP,
              [&] { return m_prach_process.nr_ul_phy_prach_re_map(LIB_NR_REMAPP_MODE_UI_VIEW_MAP); });
    }
    std::cout << "lib_nr_phy_t::deal_prach_resource_mapping end" << std::endl;
    return true;
}

bool lib_nr_phy_t::_deal_prach_payload_mapping(unsigned int carrier, unsigned int numerology, unsigned int,
                                               unsigned int burst)
{
    prach_grid().init_payload_mapping();
    if (!_nr_ul_prach_link_process(carrier, numerology, burst, 0)) {
        std::cout << "error!!!_nr_ul_prach_link_process fail" << std::endl;
        return false;
    }
    return true;
}

bool lib_nr_phy_t::_nr_ul_prach_link_process(unsigned int carrier, unsigned int numerology, unsigned int burst,
                                             unsigned int slot)
{
    print_step("_nr_ul_prach_link_process", carrier);
    if (!m_waveform.get_carrier(carrier).get_ul_prach(burst).get_enable()) {
        std::cout << "nr_ul_prach_link_process:prach_brust " << burst << " is disable .\n" << std::endl;
        return false;
    }
    m_prach_process.set_waveform_config(carrier, numerology, burst, slot, m_waveform);
    if (!_call(burst, slot, LIB_NR_REMAPP_MODE_ENCODE_MAP, [&] { return m_prach_process.prach_process(); })) {
        _keep_first_failed_step();
        std::cout << "nr_ul_prach_link_process :prach_process return false.\n" << std::endl;
        return false;
    }
    return true;
}

bool lib_nr_phy_t::_fill_prach_frame_data(unsigned int carrier, unsigned int numerology, unsigned int frame,
                                          signal_t& buffer)
{
    if (buffer.size() != _get_sample_points()) {
        std::cout << "lib_nr_dl_phy_t::_fill_prach_frame_data Report : Carrier Data Length Error!" << std::endl;
        return false;
    }
    m_step = lib_nr_channel_step_t{k_prach, carrier, numerology, frame, {}, {}};
    const std::uint64_t frame_points = m_waveform.get_frame_sample_points();
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    const unsigned int bursts = is_prach_pass(configuration, numerology) ? configuration.get_ul_prach_number() : 0;
    for (unsigned int b = 0; b < bursts; ++b) {
        if (!_deal_prach_payload_mapping(carrier, numerology, frame, b)) {
            std::cout << "lib_nr_dl_phy_t::_deal_prach_payload_mapping Report Error!\n" << std::endl;
            return false;
        }
        m_main.assign(frame_points, 0.0);
        _update_prach_ofdm_config(carrier, numerology, b);
        m_prach_ofdm_modulator.deal_frame_ofdm_modulation(prach_grid().get_prach_payload_mapping(), m_main, m_head,
                                                          m_tail);
        _deal_prach_timing_offset(carrier, b, m_main);
        common_lib::lib_common_container_t::deal_data_addition(m_main, buffer, frame * frame_points);
    }
    return true;
}

void lib_nr_phy_t::_update_prach_ofdm_config(unsigned int carrier, unsigned int numerology, unsigned int)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    m_prach_ofdm_modulator.set_cyclic_prefix_type(LIB_NR_NORMAL_CP); // a pass before may have left the extended one
    m_prach_ofdm_modulator.set_numerology(configuration.get_numerology_manager(numerology).get_numerolgy());
    m_prach_ofdm_modulator.set_channel_bandwidth(configuration.get_bandwidth());
    m_prach_ofdm_modulator.set_cyclic_prefix_type(configuration.get_ul_bwp(0).get_cp_type());
    m_prach_ofdm_modulator.set_target_sample_rate(m_waveform.get_waveform_sample_rate_hz());
}

void lib_nr_phy_t::_deal_prach_timing_offset(unsigned int carrier, unsigned int burst, signal_t& data)
{
    const double offset = m_waveform.get_carrier(carrier).get_ul_prach(burst).get_timeoffset();
    const int shift = samples_of(m_waveform.get_waveform_sample_rate_hz(), offset);
    if (shift != 0)
        common_lib::lib_common_container_t::deal_cyclic_shift(shift, data);
}

} // namespace vek::nr_mod_lib

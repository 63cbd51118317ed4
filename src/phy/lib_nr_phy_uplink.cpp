#include "phy/lib_nr_phy.h"
#include "phy/lib_nr_phy_steps.h"
#include "phy_common/lib_nr_phy_common.h"

// The engine's uplink steps.

namespace vek::nr_mod_lib
{

namespace
{

void print_skipped_slot(const char* step, int slot)
{
    std::cout << step << "islot does not satisfy condition!islot = " << slot << " \n" << std::endl;
}

/// The PUCCH process walks the list itself: brings the entry that it failed or threw at into the step at hand.
class failed_entry_note_t
{
public:
    failed_entry_note_t(const lib_nr_ul_phy_pucch_process_t& process, lib_nr_channel_step_t& step)
        : m_process(process), m_step(step)
    {}
    ~failed_entry_note_t() { m_step.entry = m_process.get_failed_entry(); }
    failed_entry_note_t(const failed_entry_note_t&) = delete;
    failed_entry_note_t& operator=(const failed_entry_note_t&) = delete;

private:
    const lib_nr_ul_phy_pucch_process_t& m_process;
    lib_nr_channel_step_t& m_step;
};

} // namespace

bool lib_nr_phy_t::_nr_ul_pucch_link_process(unsigned int, unsigned int carrier, unsigned int numerology)
{
    const failed_entry_note_t note(m_pucch_process, *m_step);
    return m_pucch_process.deal_ul_pucch_link_process(m_waveform, carrier, numerology);
}

bool lib_nr_phy_t::_nr_ul_pucch_re_map(unsigned int, unsigned int carrier, unsigned int numerology)
{
    const failed_entry_note_t note(m_pucch_process, *m_step);
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
        m_srs_process.write_trace_file();
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

} // namespace vek::nr_mod_lib

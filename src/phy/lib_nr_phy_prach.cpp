#include "phy/lib_nr_phy.h"
#include "phy/lib_nr_phy_steps.h"
#include "phy/lib_nr_prach_resource_manager.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <cmath>

// The road of its own that a PRACH carrier takes through the engine: bursts instead of slots.

namespace vek::nr_mod_lib
{

namespace
{

constexpr const char* k_prach = "PRACH";
constexpr double k_frame_ms = 10.0;

lib_nr_prach_resource_manager_t& prach_grid() { return lib_nr_prach_resource_manager_t::get_inst(); }

/// PRACH counts its time in slots of uplink BWP 0.
bool is_prach_pass(const lib_nr_carrier_configure_manager_t& carrier, unsigned int numerology)
{
    return carrier.get_ul_bwp(0).get_numerology() == carrier.get_numerology_manager(numerology).get_numerolgy();
}

/// The time offset of a burst. Whole seconds are whole frames, and taken out exactly; minus infinity counts as none.
double get_time_offset_s(const lib_nr_ul_prach_configure_manager_t& prach)
{
    const double offset = prach.get_timeoffset();
    return std::isfinite(offset) ? std::fmod(offset, 1.0) : 0.0;
}

/// The frame gate of a burst.
bool is_active(const lib_nr_ul_prach_configure_manager_t& prach, unsigned int frame)
{
    const prach_config_table_type_t table = prach.get_configuration_table();
    const unsigned int scs_khz = prach.get_prach_scs() / 1000;
    const unsigned int slot = lib_nr_phy_common_t::cal_prach_current_slot(
        frame, scs_khz, prach.get_lra(), table, prach.get_configuration_idx(), prach.get_n_RA_slot(),
        table == FR2_TDD ? prach.get_slot_index() : prach.get_subframe_index());
    return lib_nr_phy_common_t::is_prach_active(frame, scs_khz, prach.get_lra(), table, prach.get_configuration_idx(),
                                                slot, prach.get_Format(), prach.get_n_RA_slot(),
                                                prach.get_frame_offset());
}

} // namespace

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
    m_step = lib_nr_channel_step_t{k_prach, carrier, numerology, frame, {}, {}, {}};
    print_step("deal_prach_resource_mapping", carrier);
    std::cout << configuration.get_numerology_manager(numerology).get_numerolgy() << std::endl;
    prach_grid().init_resource_mapping();
    const unsigned int bursts = is_prach_pass(configuration, numerology) ? configuration.get_ul_prach_number() : 0;
    for (unsigned int b = 0; b < bursts; ++b) {
        const lib_nr_ul_prach_configure_manager_t& prach = configuration.get_ul_prach(b);
        if (!prach.get_enable()) {
            std::cout << "_nr_ul_prach_freq_remap: prach_brust " << b << " is disable .\n" << std::endl;
            continue;
        }
        if (!is_active(prach, frame)) {
            std::cout << "_nr_ul_prach_freq_remap:prach does not satisfy frame period!\n" << std::endl;
            return false;
        }
        _set_prach_resource_param(configuration, numerology, prach);
        _update_prach_ofdm_config(configuration, numerology);
        m_prach_process.set_waveform_config(carrier, numerology, b, waveform);
        _call(b, std::nullopt, LIB_NR_REMAPP_MODE_UI_VIEW_MAP,
              [&] { return m_prach_process.nr_ul_phy_prach_re_map(LIB_NR_REMAPP_MODE_UI_VIEW_MAP); });
        _locate_prach(prach);
        m_prach_ofdm_modulator.set_prach_ofdm_info(prach_grid().get_prach_ofdm_info());
        prach_resource_time_param_t time = m_prach_ofdm_modulator.nr_ul_phy_prach_time_map();
        time.time_offset_ms = get_time_offset_s(prach) * 1000.0;
        prach_grid().set_resource_time_param(time);
    }
    std::cout << "lib_nr_phy_t::deal_prach_resource_mapping end" << std::endl;
    return true;
}

bool lib_nr_phy_t::_deal_prach_payload_mapping(unsigned int carrier, unsigned int numerology, unsigned int frame,
                                               unsigned int burst)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    const lib_nr_ul_prach_configure_manager_t& prach = configuration.get_ul_prach(burst);
    if (!is_active(prach, frame)) {
        std::cout << "_deal_prach_payload_mapping:prach does not satisfy frame period!\n" << std::endl;
        return false;
    }
    _locate_prach(prach);
    _set_prach_resource_param(configuration, numerology, prach);
    prach_grid().init_payload_mapping();
    if (!_nr_ul_prach_link_process(carrier, numerology, burst)) {
        std::cout << "error!!!_nr_ul_prach_link_process fail" << std::endl;
        return false;
    }
    return true;
}

bool lib_nr_phy_t::_nr_ul_prach_link_process(unsigned int carrier, unsigned int numerology, unsigned int burst)
{
    print_step("_nr_ul_prach_link_process", carrier);
    if (!m_waveform.get_carrier(carrier).get_ul_prach(burst).get_enable()) {
        std::cout << "nr_ul_prach_link_process:prach_brust " << burst << " is disable .\n" << std::endl;
        return false;
    }
    m_prach_process.set_waveform_config(carrier, numerology, burst, m_waveform);
    if (!_call(burst, std::nullopt, LIB_NR_REMAPP_MODE_ENCODE_MAP, [&] { return m_prach_process.prach_process(); })) {
        _keep_first_failed_step();
        std::cout << "nr_ul_prach_link_process :prach_process return false.\n" << std::endl;
        return false;
    }
    return true;
}

// A burst that does not send keeps those behind it out of the frame.
bool lib_nr_phy_t::_fill_prach_frame_data(unsigned int carrier, unsigned int numerology, unsigned int frame,
                                          signal_t& buffer)
{
    if (buffer.size() != _get_sample_points()) {
        std::cout << "lib_nr_dl_phy_t::_fill_prach_frame_data Report : Carrier Data Length Error!" << std::endl;
        return false;
    }
    m_step = lib_nr_channel_step_t{k_prach, carrier, numerology, frame, {}, {}, {}};
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    const unsigned int bursts = is_prach_pass(configuration, numerology) ? configuration.get_ul_prach_number() : 0;
    _note_prach_pass(carrier, numerology);
    unsigned int sent = 0;
    for (; sent < bursts; ++sent) {
        lib_nr_explanation_t explanation;
        const lib_nr_explained_call_t explaining(m_prach_process, m_observer ? &explanation : nullptr);
        _update_prach_ofdm_config(configuration, numerology);
        if (!_deal_prach_payload_mapping(carrier, numerology, frame, sent)) {
            std::cout << "lib_nr_dl_phy_t::_deal_prach_payload_mapping Report Error!\n" << std::endl;
            break;
        }
        m_prach_ofdm_modulator.set_prach_ofdm_info(prach_grid().get_prach_ofdm_info());
        _show_burst(carrier, numerology, frame, sent);
        const prach_turn_t turn = _get_prach_turn(configuration, frame, sent);
        const std::uint64_t first = std::min<std::uint64_t>(turn.first, buffer.size());
        m_prach_ofdm_modulator.add_frame(prach_grid().get_prach_payload_mapping(), turn.shift, turn.length,
                                         buffer.data() + first, buffer.size() - first);
        if (m_observer)
            _tell_burst(carrier, frame, sent, turn, explanation);
        std::vector<std::uint32_t> frames;
        if (_is_burst_within_waveform(frame, sent))
            frames.push_back(frame);
        m_recorder.note_written({k_prach, carrier, sent},
                                configuration.get_numerology_manager(numerology).get_numerolgy(),
                                {prach_grid().get_written_cells(), frames, {}});
        m_recorder.note_met({k_prach, carrier, sent}, m_prach_process.get_rules());
        m_recorder.note_met({k_prach, carrier, sent}, m_prach_ofdm_modulator.get_rules());
    }
    for (unsigned int stopped = sent + 1; stopped < bursts; ++stopped)
        m_recorder.note_stop({k_prach, carrier, stopped}, sent);
    return sent == bursts;
}

/// Slot and symbols are those of uplink BWP 0.
void lib_nr_phy_t::_tell_burst(unsigned int carrier, unsigned int frame, unsigned int burst, const prach_turn_t& turn,
                               lib_nr_explanation_t& explanation) const
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    static_cast<lib_nr_channel_entry_t&>(explanation) = {k_prach, carrier, burst};
    explanation.frame = frame;
    explanation.burst->start_sample = _get_burst_start(configuration, turn);
    explanation.silence = !_is_burst_within_waveform(frame, burst)       ? LIB_NR_SILENCE_SLOT
                          : prach_grid().get_written_cells().inside != 0 ? LIB_NR_SILENCE_NONE
                                                                         : LIB_NR_SILENCE_GRID;
    constexpr double k_part_of_symbol = 0.1; // prefixes differ by less
    const lib_nr_ul_bwp_configure_manager_t& bwp = configuration.get_ul_bwp(0);
    const unsigned int symbols =
        lib_nr_phy_common_t::get_symbol_number_in_slot(bwp.get_numerology(), bwp.get_cp_type());
    const double symbols_per_ms = symbols * lib_nr_phy_common_t::get_slot_in_frame(bwp.get_numerology()) / k_frame_ms;
    const lib_nr_prach_resource_mapping_t& view = prach_grid().get_resource_mapping();
    const double begin = view.start_times_ms.at(burst);
    const double end = view.end_times_ms.at(burst) + (view.end_times_ms.at(burst) < begin ? k_frame_ms : 0.0);
    const auto first = static_cast<unsigned int>(begin * symbols_per_ms + k_part_of_symbol);
    explanation.slot = first / symbols;
    for (unsigned int l = first; l / symbols == explanation.slot && l + k_part_of_symbol < end * symbols_per_ms; ++l)
        explanation.symbols.push_back(l % symbols);
    m_observer->note(explanation);
}

/// The stretch of the waveform that a burst is turned round in: its frame, where the standard has it run on into the
/// next one. The two are alike where all frames have the burst.
lib_nr_phy_t::prach_turn_t lib_nr_phy_t::_get_prach_turn(const lib_nr_carrier_configure_manager_t& carrier,
                                                         unsigned int frame, unsigned int burst) const
{
    const auto frame_points = static_cast<std::int64_t>(m_waveform.get_frame_sample_points());
    const std::int64_t begin = frame * frame_points;
    const std::int64_t shift = _get_prach_shift(carrier.get_ul_prach(burst));
    const prach_turn_t own = {static_cast<std::uint64_t>(begin), static_cast<std::uint64_t>(frame_points), shift};
    bool is_in_all_frames = true; // none ahead stops it
    for (unsigned int b = 0; b <= burst; ++b)
        is_in_all_frames = is_in_all_frames && carrier.get_ul_prach(b).get_frame_period() == 1;
    const lib_nr_prach_resource_mapping_t& view = prach_grid().get_resource_mapping();
    const std::int64_t start = m_prach_ofdm_modulator.get_start_sample() + shift;
    const bool is_within_frame =
        start >= 0 && start < frame_points && view.end_times_ms.at(burst) >= view.start_times_ms.at(burst);
    if (is_in_all_frames || is_within_frame)
        return own;
    return m_prach_ofdm_modulator.get_rules().pick(lib_nr_deviation_t::prach_place, own,
                                                   prach_turn_t{0, _get_sample_points(), begin + shift});
}

/// The sample of the waveform that a burst begins with.
std::uint64_t lib_nr_phy_t::_get_burst_start(const lib_nr_carrier_configure_manager_t& carrier,
                                             const prach_turn_t& turn) const
{
    const auto points = static_cast<std::int64_t>(_get_sample_points());
    const auto in_waveform =
        static_cast<std::int64_t>(turn.first + m_prach_ofdm_modulator.get_first_sample(turn.shift, turn.length));
    const std::int64_t delay = samples_of(m_waveform.get_waveform_sample_rate_hz(), carrier.get_timing_offset_s());
    const std::int64_t start = (in_waveform + delay) % points;
    return static_cast<std::uint64_t>(start < 0 ? start + points : start);
}

void lib_nr_phy_t::_show_burst(unsigned int carrier, unsigned int numerology, unsigned int frame, unsigned int burst)
{
    if (!m_cell_observer)
        return;
    const auto& rows = prach_grid().get_prach_payload_mapping();
    m_cells = {carrier, numerology, frame, {}, &rows, &prach_grid().get_prach_ofdm_info(), 0};
    m_cells.start = m_prach_ofdm_modulator.get_start_sample() +
                    _get_prach_shift(m_waveform.get_carrier(carrier).get_ul_prach(burst));
    for (std::uint32_t row = m_prach_ofdm_modulator.nr_ul_phy_prach_time_map().first_row; row < rows.size(); ++row)
        m_cells.runs.push_back(
            {{burst, LIB_NR_CELL_DATA, false, {row, 0, static_cast<std::uint32_t>(rows[row].size())}}, k_prach});
    m_cell_observer(m_cells);
}

/// By the view, which has the bursts ahead of one that is sent. A burst that passes its frame's end is never beyond the
/// waveform's.
bool lib_nr_phy_t::_is_burst_within_waveform(unsigned int frame, unsigned int burst) const
{
    const lib_nr_prach_resource_mapping_t& view = prach_grid().get_resource_mapping();
    const double begin = view.start_times_ms.at(burst);
    return view.end_times_ms.at(burst) < begin || _is_within_waveform(frame, begin / k_frame_ms);
}

/// Samples that a burst is delayed by.
std::int64_t lib_nr_phy_t::_get_prach_shift(const lib_nr_ul_prach_configure_manager_t& prach) const
{
    return std::llround(get_time_offset_s(prach) * m_waveform.get_waveform_sample_rate_hz());
}

/// All bursts stand in uplink BWP 0.
void lib_nr_phy_t::_note_prach_pass(unsigned int carrier, unsigned int numerology)
{
    const lib_nr_carrier_configure_manager_t& configuration = m_waveform.get_carrier(carrier);
    const bool is_own = is_prach_pass(configuration, numerology);
    for (unsigned int b = 0; b < configuration.get_ul_prach_number(); ++b)
        if (configuration.get_ul_prach(b).get_enable())
            m_recorder.note_pass({k_prach, carrier, b}, is_own, is_own);
}

void lib_nr_phy_t::_set_prach_resource_param(const lib_nr_carrier_configure_manager_t& carrier, unsigned int numerology,
                                             const lib_nr_ul_prach_configure_manager_t& prach)
{
    prach_resource_param_t param;
    param.numerology = carrier.get_numerology_manager(numerology).get_numerolgy();
    param.bandwidth = carrier.get_bandwidth();
    param.row_number = lib_nr_phy_common_t::get_symbol_size(prach.get_Format());
    param.ratio = static_cast<double>(lib_nr_phy_common_t::get_scs_hz_value(param.numerology)) /
                  static_cast<double>(prach.get_prach_scs());
    prach_grid().set_resource_param(param);
}

void lib_nr_phy_t::_locate_prach(const lib_nr_ul_prach_configure_manager_t& prach)
{
    m_prach_ofdm_modulator.cal_start_symbol(prach.get_configuration_table(), prach.get_configuration_idx(),
                                            prach.get_n_RA_slot(), prach.get_n_RA_t(), prach.get_Format());
    m_prach_ofdm_modulator.cal_current_start_locate(prach.get_prach_scs(), prach.get_n_RA_slot(),
                                                    prach.get_subframe_index(), prach.get_slot_index());
}

void lib_nr_phy_t::_update_prach_ofdm_config(const lib_nr_carrier_configure_manager_t& carrier, unsigned int numerology)
{
    m_prach_ofdm_modulator.set_standard_rules(m_waveform.get_standard_rules());
    m_prach_ofdm_modulator.set_cyclic_prefix_type(LIB_NR_NORMAL_CP); // a pass before may have left the extended one
    m_prach_ofdm_modulator.set_numerology(carrier.get_numerology_manager(numerology).get_numerolgy());
    m_prach_ofdm_modulator.set_channel_bandwidth(carrier.get_bandwidth());
    m_prach_ofdm_modulator.set_cyclic_prefix_type(carrier.get_ul_bwp(0).get_cp_type());
    m_prach_ofdm_modulator.set_target_sample_rate(m_waveform.get_waveform_sample_rate_hz());
}

} // namespace vek::nr_mod_lib

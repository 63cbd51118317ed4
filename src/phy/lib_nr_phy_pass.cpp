#include "phy/lib_nr_phy.h"
#include "phy/lib_nr_phy_steps.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <limits>
#include <map>
#include <type_traits>

// The engine's channel steps: which entries, frames and slots each channel's process is run for.

namespace vek::nr_mod_lib
{

namespace
{

using carrier_t = lib_nr_carrier_configure_manager_t;

constexpr lib_nr_remap_mode_t k_view = LIB_NR_REMAPP_MODE_UI_VIEW_MAP;
constexpr lib_nr_remap_mode_t k_encode = LIB_NR_REMAPP_MODE_ENCODE_MAP;

lib_nr_channel_resource_manager_t& grid() { return lib_nr_channel_resource_manager_t::get_inst(); }

/// Where an entry lies, which says its spacing and prefix: in the uplink or downlink BWP of its id.
template <class entry_t>
const auto& place_of(const carrier_t& carrier, const entry_t& entry)
{
    if constexpr (std::is_same_v<entry_t, lib_nr_dl_prs_configure_manager_t>)
        return entry;
    else if constexpr (std::is_same_v<entry_t, lib_nr_ul_pucch_configure_manager_t> ||
                       std::is_same_v<entry_t, lib_nr_ul_sch_configure_manager_t> ||
                       std::is_same_v<entry_t, lib_nr_ul_srs_configure_manager_t>)
        return carrier.get_ul_bwp(entry.get_bwp_id());
    else
        return carrier.get_dl_bwp(entry.get_bwp_id());
}

/// A PRS is run for every slot, and has occasions of its own.
template <class process_t>
bool has_occasion(const process_t& process, unsigned int slot)
{
    if constexpr (std::is_same_v<process_t, lib_nr_dl_phy_prs_process_t>)
        return process._is_exist_prs(slot);
    else
        return true;
}

/// Whether the slot that was encoded has the DMRS that it should have.
template <class process_t>
bool has_dmrs(const process_t& process)
{
    if constexpr (std::is_base_of_v<lib_nr_phy_sch_process_t, process_t>)
        return process.has_dmrs();
    else
        return true;
}

/// The PUCCH process walks the list itself: brings the entry that it failed or threw at, and why, into the step at
/// hand.
class failed_entry_note_t
{
public:
    failed_entry_note_t(const lib_nr_ul_phy_pucch_process_t& process, lib_nr_channel_step_t& step)
        : m_process(process), m_step(step)
    {}
    ~failed_entry_note_t()
    {
        m_step.entry = m_process.get_failed_entry();
        m_step.reason = m_process.get_failure();
    }
    failed_entry_note_t(const failed_entry_note_t&) = delete;
    failed_entry_note_t& operator=(const failed_entry_note_t&) = delete;

private:
    const lib_nr_ul_phy_pucch_process_t& m_process;
    lib_nr_channel_step_t& m_step;
};

} // namespace

/// The channels of one frame in the pass of a numerology, all in one of the modes.
class lib_nr_phy_t::pass_t
{
public:
    pass_t(lib_nr_phy_t& engine, unsigned int carrier, unsigned int numerology, unsigned int frame,
           lib_nr_remap_mode_t mode)
        : m_engine(engine),
          m_configuration(engine.m_waveform.get_carrier(carrier)),
          m_carrier(carrier),
          m_numerology(numerology),
          m_frame(frame),
          m_mode(mode),
          m_spacing(m_configuration.get_numerology_manager(numerology).get_numerolgy()),
          m_slots_per_frame(lib_nr_phy_common_t::get_slot_in_frame(m_spacing))
    {}

    /// Marking runs all steps; false where one failed.
    bool map()
    {
        bool result = true;
        for (const channel_t& channel : _channels())
            result &= _run(channel);
        for (const lib_nr_resource_cut_t& cut : grid().get_cuts())
            m_engine.m_recorder.note_cut(_entry_of(cut.owner, cut.entry), cut.rbs, cut.rbs_outside);
        return result;
    }

    /// Encoding ends with the first step that fails.
    bool link()
    {
        for (const channel_t& channel : _channels())
            if (!_run(channel)) {
                if (*channel.failure != '\0')
                    std::cout << channel.failure << std::endl;
                return false;
            }
        return true;
    }

    /// Notes the conflicts of the marks.
    void note_conflicts()
    {
        const unsigned int slot_symbols = grid().get_mapped_symbol_number() / m_slots_per_frame;
        for (const lib_nr_resource_conflict_t& conflict : grid().get_conflicts())
            m_engine.m_recorder.note_conflict({_entry_of(conflict.owner, conflict.owner_entry),
                                               _entry_of(conflict.newcomer, conflict.newcomer_entry), m_numerology,
                                               m_frame, conflict.symbol / slot_symbols, conflict.symbol % slot_symbols,
                                               conflict.subcarrier / k_subcarriers_per_rb, conflict.cells});
    }

private:
    struct channel_t
    {
        const char* name;
        lib_nr_channel_resource_mapping_type_t owner; ///< of its cells in the grid
        const char* re_map; ///< names of the step in both modes, for the line that opens it; none where empty
        const char* link;
        bool (pass_t::*run)();
        const char* failure; ///< line for symbols that failed, none where empty
        // Why a slot that its process was run for has no cells, the grid standing also for a port without a signal.
        lib_nr_silence_t without_rbs;
        lib_nr_silence_t with_rbs_inside;
    };

    /// In the order of priority: later channels see in the grid what earlier ones took.
    const std::vector<channel_t>& _channels() const
    {
        static const std::vector<channel_t> downlink = {
            {"SS/PBCH", LIB_NR_RESOURCE_MAPPING_SSB, "_nr_dl_ssb_re_map", "_nr_dl_ssb_link_process", &pass_t::_ssb,
             "error!!!SSB process fail", LIB_NR_SILENCE_SLOT, LIB_NR_SILENCE_GRID},
            {"CSI-RS", LIB_NR_RESOURCE_MAPPING_CSIRS, "_nr_dl_csirs_re_map", "_nr_dl_csirs_link_process",
             &pass_t::_csirs, "error!!!CSIRS process fail", LIB_NR_SILENCE_GRID, LIB_NR_SILENCE_GRID},
            {"PRS", LIB_NR_RESOURCE_MAPPING_PRS, "_nr_dl_prs_re_map", "_nr_dl_prs_link_process", &pass_t::_prs,
             "error!!!PRS process fail", LIB_NR_SILENCE_TAKEN, LIB_NR_SILENCE_GRID},
            {"PDCCH", LIB_NR_RESOURCE_MAPPING_PDCCH, "_nr_dl_pdcch_re_map", "_nr_dl_pdcch_link_process",
             &pass_t::_pdcch, "error!!!PDCCH process fail", LIB_NR_SILENCE_GRID, LIB_NR_SILENCE_GRID},
            {"PDSCH", LIB_NR_RESOURCE_MAPPING_PDSCH, "_nr_dl_pdsch_re_map", "_nr_dl_pdsch_link_process",
             &pass_t::_pdsch, "error!!!PDSCH process fail", LIB_NR_SILENCE_RB, LIB_NR_SILENCE_TAKEN},
        };
        static const std::vector<channel_t> uplink = {
            {"PUCCH", LIB_NR_RESOURCE_MAPPING_PUCCH, "", "", &pass_t::_pucch, "", LIB_NR_SILENCE_RB,
             LIB_NR_SILENCE_GRID},
            {"PUSCH", LIB_NR_RESOURCE_MAPPING_PUSCH, "_nr_ul_pusch_re_map", "_nr_ul_pusch_link_process",
             &pass_t::_pusch, "error!!!PUSCH process fail", LIB_NR_SILENCE_RB, LIB_NR_SILENCE_PORT},
            {"SRS", LIB_NR_RESOURCE_MAPPING_SRS, "_nr_ul_srs_re_map", "_nr_ul_srs_link_process", &pass_t::_srs,
             "_deal_payload_mapping::_nr_ul_srs_link_process return  false!", LIB_NR_SILENCE_GRID, LIB_NR_SILENCE_GRID},
        };
        static const std::vector<channel_t> none;
        const lib_carrier_type_t type = m_configuration.get_carrier_type();
        return type == LIB_NR_DOWNLINK ? downlink : type == LIB_NR_UPLINK || m_mode == k_view ? uplink : none;
    }

    bool _run(const channel_t& channel)
    {
        m_engine.m_step = lib_nr_channel_step_t{channel.name, m_carrier, m_numerology, m_frame, {}, {}, {}};
        m_channel = &channel;
        try {
            if (const char* step = m_mode == k_view ? channel.re_map : channel.link; *step != '\0')
                print_step(step, m_carrier);
            const bool succeeded = (this->*channel.run)();
            _note_written();
            if (!succeeded)
                m_engine._keep_first_failed_step();
            m_engine.m_step = lib_nr_channel_step_t{{}, m_carrier, m_numerology, m_frame, {}, {}, {}};
            return succeeded;
        } catch (...) {
            m_engine._keep_first_failed_step();
            throw;
        }
    }

    /// What came of marking is seen in the grid.
    template <class process_t, class call_t>
    bool _call(unsigned int entry, std::optional<unsigned int> slot, process_t& process, call_t call)
    {
        const unsigned int place = m_channel->owner == LIB_NR_RESOURCE_MAPPING_SSB ? 0 : entry;
        grid().set_entry_at_work(place);
        const std::size_t marks = grid().get_mark_number();
        const bool explains = m_engine.m_observer && m_mode == k_encode && (!slot || has_occasion(process, *slot));
        const auto run = [&] { return m_engine._call(entry, slot, m_mode, call); };
        const bool succeeded = explains ? _explained(place, slot, process, run) : run();
        if constexpr (std::is_base_of_v<lib_nr_failing_t, process_t>)
            m_engine.m_step->reason = process.get_failure();
        if (grid().get_mark_number() != marks)
            m_engine.m_recorder.note_marks(_entry(place));
        m_engine.m_recorder.note_met(_entry(place), process.get_rules());
        return succeeded || m_mode == k_view;
    }

    template <class process_t, class call_t>
    bool _run_slot(unsigned int entry, unsigned int slot, process_t& process, call_t call)
    {
        if (m_mode == k_encode && has_occasion(process, slot))
            m_engine.m_recorder.note_call(_entry(entry));
        const bool succeeded = _call(entry, slot, process, call);
        if (m_mode == k_encode && !has_dmrs(process))
            m_engine.m_recorder.note_missing_dmrs(_entry(entry));
        return succeeded;
    }

    // What the observer is told

    /// A call with an explanation to be filled in.
    template <class process_t, class call_t>
    bool _explained(unsigned int entry, std::optional<unsigned int> slot, process_t& process, call_t call)
    {
        lib_nr_explanation_t explanation;
        static_cast<lib_nr_channel_entry_t&>(explanation) = _entry(entry);
        explanation.frame = m_frame;
        explanation.slot = slot.value_or(0);
        bool succeeded = false;
        {
            const lib_nr_explained_call_t explaining(process, &explanation);
            succeeded = call();
        }
        explanation.silence = succeeded ? _silence_of(explanation) : LIB_NR_SILENCE_FAILED;
        m_engine.m_observer->note(explanation);
        return succeeded;
    }

    /// Of a slot that a process was run for. One that has cells in the grid tells the first of them.
    lib_nr_silence_t _silence_of(const lib_nr_explanation_t& explanation) const
    {
        if (!m_engine._is_within_waveform(m_frame, static_cast<double>(explanation.slot) / m_slots_per_frame))
            return LIB_NR_SILENCE_SLOT;
        if (!explanation.cells.empty())
            return LIB_NR_SILENCE_NONE;
        const bool is_inside = std::any_of(explanation.rbs.begin(), explanation.rbs.end(), [](std::int32_t rb) {
            return rb >= 0 &&
                   static_cast<unsigned int>(rb) * k_subcarriers_per_rb < grid().get_mapped_subcarrier_number();
        });
        const lib_nr_silence_t silence = explanation.rbs.empty() ? m_channel->without_rbs
                                         : is_inside             ? m_channel->with_rbs_inside
                                                                 : LIB_NR_SILENCE_GRID;
        return silence == LIB_NR_SILENCE_GRID && explanation.figures.empty() ? LIB_NR_SILENCE_PORT : silence;
    }

    // The record

    lib_nr_channel_entry_t _entry(unsigned int entry) const { return {m_channel->name, m_carrier, entry}; }

    lib_nr_channel_entry_t _entry_of(lib_nr_channel_resource_mapping_type_t owner, unsigned int entry) const
    {
        for (const channel_t& channel : _channels())
            if (channel.owner == owner)
                return {channel.name, m_carrier, entry};
        return {{}, m_carrier, entry};
    }

    void _note_written()
    {
        for (const lib_nr_written_run_t& run : grid().take_run_notes())
            m_engine.m_cells.runs.push_back({run, m_channel->name});
        const auto centre = static_cast<std::int32_t>(grid().get_mapped_subcarrier_number() / 2);
        for (const auto& [entry, written] : grid().take_written()) {
            lib_nr_resource_written_t within{written.cells, {}, {}};
            for (std::size_t i = 0; i < written.slots.size(); ++i) {
                const std::uint32_t slot = written.slots[i];
                if (!m_engine._is_within_waveform(m_frame, static_cast<double>(slot) / m_slots_per_frame))
                    continue;
                within.slots.push_back(m_frame * m_slots_per_frame + slot);
                within.extents.push_back(written.extents[i]);
                within.extents.back().first_subcarrier -= centre;
                within.extents.back().subcarrier_end -= centre;
            }
            m_engine.m_recorder.note_written(_entry(entry), m_spacing, within);
        }
    }

    /// Whether the pass is that of an enabled entry.
    template <class place_t>
    bool _is_pass_of(unsigned int entry, const place_t& place)
    {
        const bool is_own = grid().is_pass_of(place.get_numerology(), place.get_cp_type());
        m_engine.m_recorder.note_pass(_entry(entry), place.get_numerology() == m_spacing, is_own);
        return is_own;
    }

    // The walk through a list

    template <class entry_t>
    using list_t = const entry_t& (carrier_t::*)(unsigned int) const;

    /// Each enabled entry whose spacing and symbols per slot are the pass's is bound, and called for each of its slots,
    /// until a call returns false.
    template <class entry_t, class bind_t, class call_t>
    bool _walk(unsigned int number, list_t<entry_t> list, bind_t bind, call_t call)
    {
        for (unsigned int i = 0; i < number; ++i) {
            const entry_t& entry = (m_configuration.*list)(i);
            if (!entry.get_enable() || !_is_pass_of(i, place_of(m_configuration, entry)))
                continue;
            bind(i);
            if (!_visit_slots(entry, [&](unsigned int slot) { return call(i, slot); }))
                return false;
        }
        return true;
    }

    template <class entry_t, class process_t, class view_t, class encode_t>
    bool _run_list(unsigned int number, list_t<entry_t> list, process_t& process, view_t view, encode_t encode)
    {
        return _walk(
            number, list, [&](unsigned int i) { _bind(process, i); },
            [&](unsigned int i, unsigned int slot) {
                return _run_slot(i, slot, process, [&] {
                    return m_mode == k_view ? (process.*view)(slot, m_mode) : (process.*encode)(slot);
                });
            });
    }

    template <class process_t>
    void _bind(process_t& process, unsigned int entry)
    {
        if constexpr (std::is_same_v<process_t, lib_nr_dl_phy_prs_process_t>)
            process.set_frame(m_frame);
        if constexpr (std::is_same_v<process_t, lib_nr_ul_phy_srs_process_t>) {
            process.set_waveform_config(m_carrier, m_frame, m_numerology, entry, m_engine.m_waveform);
            m_engine.m_recorder.note_met(_entry(entry), process.get_rules()); // also where it has no slot
        }
        else
            process.set_waveform_config(m_carrier, m_numerology, entry, m_engine.m_waveform);
    }

    // The slots of an entry in the frame, until a visit returns false

    /// An allocation of one frame repeats in every frame, a longer one counts its slots from the start of the waveform.
    template <class slot_t, class visit_t>
    bool _visit_span(const std::vector<slot_t>& allocation, bool one_frame_period, visit_t visit) const
    {
        const unsigned int first = one_frame_period ? 0 : m_frame * m_slots_per_frame;
        return std::all_of(allocation.begin(), allocation.end(), [&](slot_t allocated) {
            const auto slot = static_cast<unsigned int>(allocated);
            return slot < first || slot - first >= m_slots_per_frame || visit(slot - first);
        });
    }

    template <class visit_t>
    bool _visit_slots(const lib_nr_sch_configure_manager_t& sch, visit_t visit) const
    {
        return _visit_span(sch.get_slot_allocation_v(), sch.get_one_frame_period(), visit);
    }

    template <class visit_t>
    bool _visit_slots(const lib_nr_dl_csirs_configure_manager_t& csirs, visit_t visit) const
    {
        return _visit_span(csirs.get_slot_allocation(), csirs.get_one_frame_period(), visit);
    }

    template <class visit_t>
    bool _visit_slots(const lib_nr_dl_dci_configure_manager_t& dci, visit_t visit) const
    {
        const std::vector<int>& slots = dci.get_slot_allocation_for_lib();
        return std::all_of(slots.begin(), slots.end(),
                           [&](int slot) { return visit(static_cast<unsigned int>(slot)); });
    }

    /// A PRS counts the slots of each frame anew.
    template <class visit_t>
    bool _visit_slots(const lib_nr_dl_prs_configure_manager_t&, visit_t visit) const
    {
        unsigned int slot = 0;
        while (slot < m_slots_per_frame && visit(slot))
            ++slot;
        return slot == m_slots_per_frame;
    }

    template <class visit_t>
    bool _visit_slots(const lib_nr_ul_srs_configure_manager_t& srs, visit_t visit) const
    {
        const std::vector<unsigned int>& sent = m_engine.m_srs_process.get_slots();
        for (const int slot : srs.get_slot_allocation())
            if (std::find(sent.begin(), sent.end(), static_cast<unsigned int>(slot)) == sent.end())
                std::cout << (m_mode == k_view ? "" : "_nr_ul_srs_link_process")
                          << "islot does not satisfy condition!islot = " << slot << " \n"
                          << std::endl;
        for (const unsigned int slot : sent) {
            if (m_mode == k_view)
                std::cout << "srs slot : " << slot << std::endl;
            if (!visit(slot))
                return false;
        }
        if (m_mode == k_encode && m_engine.m_has_trace_file)
            m_engine.m_srs_process.write_trace_file();
        return true;
    }

    // The channels

    bool _ssb()
    {
        const lib_nr_dl_ssb_configure_manager_t& ssb = m_configuration.get_dl_ssb();
        if (m_frame * 10 % ssb.get_periodicity() != 0)
            return true;
        if (!ssb.get_enable()) {
            std::cout << (m_mode == k_view ? "_nr_dl_ssb_re_map" : "_nr_dl_ssb_link_process")
                      << " : ssb is not enable.\n"
                      << std::endl;
            return true;
        }
        const bool is_own = ssb.get_numerology() == m_spacing;
        m_engine.m_recorder.note_pass(_entry(0), is_own, is_own);
        const unsigned char half_frame = ssb.get_half_frame_idx();
        return half_frame == lib_nr_dl_ssb_configure_manager_t::k_both_half_frames
                   ? _half_frame(ssb, 0) && _half_frame(ssb, 1)
                   : _half_frame(ssb, half_frame);
    }

    bool _half_frame(const lib_nr_dl_ssb_configure_manager_t& ssb, unsigned int half)
    {
        lib_nr_dl_phy_ssb_process_t& process = m_engine.m_ssb_process;
        process.set_waveform_config(m_carrier, m_frame, half, m_numerology, m_engine.m_waveform);
        for (const int active : ssb.get_active_idx()) {
            const auto index = static_cast<unsigned int>(active);
            if (index >= static_cast<unsigned int>(ssb.get_lmax())) {
                std::cout << "lib_nr_dl_phy_t::_nr_dl_ssb_link_process: ssb slot active idx error." << std::endl;
                return false;
            }
            m_engine.m_recorder.note_call(_entry(0));
            if (!_call(index, std::nullopt, process, [&] {
                    return m_mode == k_view ? process._dl_phy_ssb_remap(index, m_mode)
                                            : process.ssb_encode_process(index);
                }))
                return false;
        }
        return true;
    }

    bool _csirs()
    {
        using process_t = lib_nr_dl_phy_csirs_process_t;
        return _run_list<lib_nr_dl_csirs_configure_manager_t>(
            m_configuration.get_dl_csirs_number(), &carrier_t::get_dl_csirs, m_engine.m_csirs_process,
            &process_t::nr_dl_phy_csirs_re_map, &process_t::csirs_process);
    }

    bool _prs()
    {
        using process_t = lib_nr_dl_phy_prs_process_t;
        return _run_list<lib_nr_dl_prs_configure_manager_t>(m_configuration.get_dl_prs_number(), &carrier_t::get_dl_prs,
                                                            m_engine.m_prs_process, &process_t::dl_phy_prs_remap,
                                                            &process_t::prs_encode_process);
    }

    bool _pdcch()
    {
        using process_t = lib_nr_dl_phy_pdcch_process_t;
        return _run_list<lib_nr_dl_dci_configure_manager_t>(m_configuration.get_dl_dci_number(), &carrier_t::get_dl_dci,
                                                            m_engine.m_pdcch_process, &process_t::dl_phy_pdcch_remap,
                                                            &process_t::pdcch_encode_process);
    }

    bool _pdsch()
    {
        if (m_mode == k_encode && m_configuration.get_dl_tm().get_duplex_type() == LIB_NR_DUPLEX_TYPE_TDD)
            return _pdsch_in_order_of_slots();
        using process_t = lib_nr_dl_phy_pdsch_process_t;
        return _run_list<lib_nr_dl_sch_configure_manager_t>(m_configuration.get_dl_sch_number(), &carrier_t::get_dl_sch,
                                                            m_engine.m_pdsch_process, &process_t::phy_sch_remap,
                                                            &process_t::sch_encode_process);
    }

    /// All channels of one RNTI draw one continuous payload sequence, in the order of the frame's slots; each frame
    /// begins it anew.
    bool _pdsch_in_order_of_slots()
    {
        std::vector<std::array<unsigned int, 3>> transmissions; // slot, RNTI, channel
        _walk<lib_nr_dl_sch_configure_manager_t>(
            m_configuration.get_dl_sch_number(), &carrier_t::get_dl_sch, [](unsigned int) {},
            [&](unsigned int channel, unsigned int slot) {
                transmissions.push_back({slot, m_configuration.get_dl_sch(channel).get_rnti(), channel});
                return true;
            });
        std::sort(transmissions.begin(), transmissions.end());

        lib_nr_dl_phy_pdsch_process_t& process = m_engine.m_pdsch_process;
        std::map<unsigned int, unsigned int> seeds;
        std::optional<unsigned int> bound;
        for (const auto& transmission : transmissions) {
            const auto [slot, rnti, channel] = transmission;
            unsigned int& seed = seeds.emplace(rnti, std::numeric_limits<unsigned int>::max()).first->second;
            if (bound != channel)
                _bind(process, channel);
            bound = channel;
            process.set_pn_seed(seed);
            if (!_run_slot(channel, slot, process, [&, slot = slot] { return process.sch_encode_process(slot); }))
                return false;
            seed = process.get_pn_seed();
        }
        return true;
    }

    bool _pucch()
    {
        lib_nr_ul_phy_pucch_process_t& process = m_engine.m_pucch_process;
        for (unsigned int i = 0; i < m_configuration.get_ul_pucch_number(); ++i)
            if (const auto& pucch = m_configuration.get_ul_pucch(i); pucch.get_enable() &&
                                                                     _is_pass_of(i, place_of(m_configuration, pucch)) &&
                                                                     !pucch.get_allocated_slots().empty())
                m_engine.m_recorder.note_call(_entry(i));
        const failed_entry_note_t note(process, *m_engine.m_step);
        std::vector<lib_nr_explanation_t> explanations;
        const lib_nr_explained_call_t explaining(process,
                                                 m_engine.m_observer && m_mode == k_encode ? &explanations : nullptr);
        const bool succeeded =
            m_mode == k_view ? process.deal_ul_pucch_resource_mapping(m_engine.m_waveform, m_carrier, m_numerology)
                             : process.deal_ul_pucch_link_process(m_engine.m_waveform, m_carrier, m_numerology);
        _tell_pucchs(explanations);
        for (unsigned int i = 0; i < process.get_rules_of_entries().size(); ++i)
            m_engine.m_recorder.note_met(_entry(i), process.get_rules_of_entries()[i]);
        return succeeded;
    }

    /// Cells outside the grid are a failure of the run, so that a slot that is left out has no resource blocks.
    void _tell_pucchs(std::vector<lib_nr_explanation_t>& explanations) const
    {
        for (lib_nr_explanation_t& explanation : explanations) {
            static_cast<lib_nr_channel_entry_t&>(explanation) = _entry(explanation.entry);
            explanation.frame = m_frame;
            explanation.silence = _silence_of(explanation);
            m_engine.m_observer->note(explanation);
        }
    }

    bool _pusch()
    {
        using process_t = lib_nr_ul_phy_pusch_process_t;
        return _run_list<lib_nr_ul_sch_configure_manager_t>(m_configuration.get_ul_sch_number(), &carrier_t::get_ul_sch,
                                                            m_engine.m_pusch_process, &process_t::phy_sch_remap,
                                                            &process_t::sch_encode_process);
    }

    bool _srs()
    {
        if (m_mode == k_view)
            std::cout << "carrier enable : " << m_configuration.get_enable() << std::endl;
        using process_t = lib_nr_ul_phy_srs_process_t;
        if (_run_list<lib_nr_ul_srs_configure_manager_t>(m_configuration.get_ul_srs_number(), &carrier_t::get_ul_srs,
                                                         m_engine.m_srs_process, &process_t::nr_ul_phy_srs_re_map,
                                                         &process_t::srs_process))
            return true;
        std::cout << "_nr_ul_srs_link_process::srs_process return false!" << std::endl;
        return false;
    }

    lib_nr_phy_t& m_engine;
    const carrier_t& m_configuration;
    unsigned int m_carrier;
    unsigned int m_numerology;
    unsigned int m_frame;
    lib_nr_remap_mode_t m_mode;
    lib_nr_numerology_type_t m_spacing;
    unsigned int m_slots_per_frame;
    const channel_t* m_channel = nullptr; ///< whose step runs
};

bool lib_nr_phy_t::_map_channels(unsigned int carrier, unsigned int numerology, unsigned int frame)
{
    return pass_t(*this, carrier, numerology, frame, k_view).map();
}

void lib_nr_phy_t::_note_conflicts(unsigned int carrier, unsigned int numerology, unsigned int frame)
{
    pass_t(*this, carrier, numerology, frame, k_view).note_conflicts();
}

bool lib_nr_phy_t::_link_channels(unsigned int carrier, unsigned int numerology, unsigned int frame)
{
    return pass_t(*this, carrier, numerology, frame, k_encode).link();
}

} // namespace vek::nr_mod_lib

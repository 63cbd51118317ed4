#pragma once

#include "common/lib_ccdf_calculator.h"
#include "common/lib_made_on_demand.h"
#include "common/lib_signal_power.h"
#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy/lib_nr_circular_addition.h"
#include "phy/lib_nr_phy_observer.h"
#include "phy/lib_nr_phy_record.h"
#include "phy/lib_nr_phy_recorder.h"
#include "phy_common/lib_nr_new_prach_ofdm_modulator.h"
#include "phy_common/lib_nr_ofdm_modulator.h"
#include "phy_dl/lib_nr_dl_phy_csirs_process.h"
#include "phy_dl/lib_nr_dl_phy_pdcch_process.h"
#include "phy_dl/lib_nr_dl_phy_pdsch_process.h"
#include "phy_dl/lib_nr_dl_phy_prs_process.h"
#include "phy_dl/lib_nr_dl_phy_ssb_process.h"
#include "phy_ul/lib_nr_ul_phy_prach_process.h"
#include "phy_ul/lib_nr_ul_phy_pucch_process.h"
#include "phy_ul/lib_nr_ul_phy_pusch_process.h"
#include "phy_ul/lib_nr_ul_phy_srs_process.h"

#include <complex>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace vek::nr_mod_lib
{

/// A step of a channel in a run or a view: which, and where.
struct lib_nr_channel_step_t
{
    std::string_view channel;      ///< as "PDSCH"; empty outside the channels' steps
    unsigned int carrier = 0;      ///< place in the waveform's list
    unsigned int numerology = 0;   ///< place in the carrier's list
    unsigned int frame = 0;        ///< of the waveform
    std::optional<unsigned> entry; ///< place in the carrier's list of that channel, the index of an SS/PBCH block
    std::optional<unsigned> slot;  ///< in the frame
    std::string_view reason;       ///< why a step failed, where its process tells it; a literal
};

/// The engine: walks the carriers, numerologies and frames of a waveform, lets every channel map its symbols, modulates
/// each frame, applies the carriers' offsets, sums all into one circular buffer and finishes it.
///
/// Calling order: `waveform_config`, `nr_phy_process`, then the getters; results stay until the next run starts. Blocks
/// until done. The grids are shared by all engines of the process: one run or view at a time is meant for the process,
/// whatever the engine or thread. A host that uses FFTW itself shares its planner and wisdom with the library
/// (`lib_fft_plan_t` tells what follows).
///
/// A run gives the samples. Spectrum, curves and markers are made from them when they are first asked for, and kept: a
/// host that takes the samples alone does not pay for them. They may throw `std::bad_alloc` then, which leaves the
/// engine as it was. Any number of threads may call the getters of a finished engine at once, also while another engine
/// runs; with FFTW behind the transforms, the first call for the spectrum stands alone as a run does. A reference holds
/// until the next run of its engine, or until that is assigned to or moved from. A copy of an engine has its samples
/// and makes its own results of them; one that throws leaves the target as it was.
class NR_MOD_LIB_EXPORT lib_nr_phy_t
{
public:
    using signal_t = std::vector<std::complex<double>>;

    lib_nr_phy_t();
    lib_nr_phy_t(const lib_nr_phy_t&) = default;
    lib_nr_phy_t(lib_nr_phy_t&&) = default;
    lib_nr_phy_t& operator=(const lib_nr_phy_t& other);
    lib_nr_phy_t& operator=(lib_nr_phy_t&&) = default;
    ~lib_nr_phy_t() = default;

    /// Takes a deep copy of the whole configuration; later edits reach the engine only through a further copy.
    void waveform_config(const lib_nr_waveform_configure_manager_t& waveform);
    /// Brings the engine's own configuration back to defaults; always true.
    bool waveform_init();

    /// Generates. True when the run reached its end, also for a silent waveform. False and a printed line without
    /// carriers (results as before) and on a resource conflict (results empty; the record tells between whom). A
    /// channel that fails leaves its frame silent and the run goes on, as does a numerology that does not fill its
    /// channel bandwidth, whose frames the modulator refuses; `get_first_failed_step` names the first. An exception
    /// passes to the caller; the results are empty then, and the engine can be used on.
    bool nr_phy_process();
    /// Whether each SRS that a run sends leaves the library's one trace file, "../srs_result.csv", as
    /// `lib_nr_ul_phy_srs_process_t` tells; it does until a host says otherwise.
    void set_trace_file_enable(bool enable) { m_has_trace_file = enable; }
    /// Whom runs tell how each slot is made, null for nobody, as it is by default; it must outlive the runs.
    void set_observer(lib_nr_phy_observer_t* observer) { m_observer = observer; }

    /// The first channel step that failed or threw in the last run or view; nothing where none did. `channel` is empty
    /// where a frame's modulation threw or was refused. Reset when the next run or view starts.
    const std::optional<lib_nr_channel_step_t>& get_first_failed_step() const { return m_first_failed_step; }

    /// What the last run did with each enabled entry of its channels, as far as it came; and the conflicts that ended
    /// it.
    const lib_nr_phy_record_t& get_record() const { return m_recorder.get_record(); }

    /// Hands over what a run maps, frame by frame and burst by burst, before it is modulated; nobody by default, which
    /// costs nothing. An empty function takes the observer away. It must not call the engine.
    using cell_observer_t = std::function<void(const lib_nr_mapped_cells_t&)>;
    void set_cell_observer(cell_observer_t observer) { m_cell_observer = std::move(observer); }

    /// Where the last run went by own rules that the standard says otherwise, by carrier and entry; none under
    /// `standard_rules`. `lib_nr_deviation_row` tells what each means.
    const std::vector<lib_nr_met_deviation_t>& get_met_deviations() const { return get_record().deviations; }

    /// Marks the allocation of one frame in the resource map of the grid, for viewing; the configuration must be the
    /// one that the engine was given. Indices count from 0, the numerology's is its place in the carrier's list. False
    /// where a channel could not be mapped.
    bool deal_resource_mapping(unsigned int carrier, unsigned int numerology, unsigned int frame,
                               const lib_nr_waveform_configure_manager_t& waveform);
    /// Behind it: writes the symbols of the frame into the payload map, for the observer of cells alone. False where a
    /// channel fails.
    bool deal_payload_mapping(unsigned int carrier, unsigned int numerology, unsigned int frame);
    /// The same as `deal_resource_mapping` for a PRACH carrier, in the PRACH grid.
    bool deal_prach_resource_mapping(unsigned int carrier, unsigned int numerology, unsigned int frame,
                                     const lib_nr_waveform_configure_manager_t& waveform);

    /// The waveform, the largest of |I| and |Q| being 1; `get_waveform_sample_points()` samples.
    const signal_t& get_baseband_signal_data() const { return m_baseband_signal; }
    /// Magnitudes as real numbers, the largest being 1, 0 Hz in the middle: the sum of the spectra of equal blocks of
    /// the first frame.
    const signal_t& get_frequency_spectrum_data() const;
    /// CCDF of the first frame and of its burst, and their markers, as `lib_ccdf_calculator_t` tells.
    const std::vector<double>& get_waveform_ccdf_cruve_data() const { return _get_ccdfs().first.curve; }
    const std::vector<double>& get_waveform_ccdf_marker_data() const { return _get_ccdfs().first.markers; }
    const std::vector<double>& get_burst_ccdf_cruve_data() const { return _get_ccdfs().second.curve; }
    const std::vector<double>& get_burst_ccdf_marker_data() const { return _get_ccdfs().second.markers; }

private:
    friend struct vek::test_peer_t<lib_nr_phy_t>;

    class pass_t;
    using ccdfs_t = std::pair<common_lib::lib_ccdf_t, common_lib::lib_ccdf_t>; // of the first frame and its burst

    /// What the analysis of a run's samples needs beside them.
    struct finish_t
    {
        bool is_silent;
        std::size_t first_frame;              ///< samples
        unsigned int blocks;                  ///< of the spectrum
        common_lib::lib_power_pieces_t power; ///< of the first frame
    };

    void _clear_data();
    std::uint32_t _get_sample_points() const;

    bool _generate();
    bool _generate_pair(unsigned int carrier, unsigned int numerology, signal_t& buffer);
    bool _map_frame(unsigned int carrier, unsigned int numerology, unsigned int frame,
                    const lib_nr_waveform_configure_manager_t& waveform);
    bool _map_prach_frame(unsigned int carrier, unsigned int numerology, unsigned int frame,
                          const lib_nr_waveform_configure_manager_t& waveform);
    void _set_up_grid(const lib_nr_carrier_configure_manager_t& carrier, unsigned int numerology);
    bool _map_channels(unsigned int carrier, unsigned int numerology, unsigned int frame);
    void _note_conflicts(unsigned int carrier, unsigned int numerology, unsigned int frame);
    bool _link_channels(unsigned int carrier, unsigned int numerology, unsigned int frame);
    void _keep_first_failed_step();
    bool _is_within_waveform(unsigned int frame, double fraction) const;
    template <class call_t>
    bool _call(unsigned int entry, std::optional<unsigned int> slot, lib_nr_remap_mode_t mode, call_t call)
    {
        m_step->entry = entry;
        m_step->slot = slot;
        return m_instead_of_calls ? m_instead_of_calls(*m_step, mode) : call();
    }

    void _show_cells();
    bool _deal_payload_mapping(unsigned int carrier, unsigned int numerology, unsigned int frame);
    bool _fill_frame_data(unsigned int carrier, unsigned int numerology, unsigned int frame, signal_t& buffer);
    void _update_ofdm_config(unsigned int carrier, unsigned int numerology);
    double _get_phase_frequency(unsigned int carrier);
    void _open_frames(unsigned int carrier, unsigned int numerology, signal_t& buffer);
    bool _modulate_frame(unsigned int carrier, unsigned int numerology, std::complex<double>* place, std::size_t count);
    void _close_frames(signal_t& buffer);

    bool _deal_prach_payload_mapping(unsigned int carrier, unsigned int numerology, unsigned int frame,
                                     unsigned int burst);
    bool _fill_prach_frame_data(unsigned int carrier, unsigned int numerology, unsigned int frame, signal_t& buffer);
    /// Samples of the waveform that a burst is turned round in, and by how many.
    struct prach_turn_t
    {
        std::uint64_t first;
        std::uint64_t length;
        std::int64_t shift;
        bool operator==(const prach_turn_t& other) const
        {
            return first == other.first && length == other.length && shift == other.shift;
        }
    };
    prach_turn_t _get_prach_turn(const lib_nr_carrier_configure_manager_t& carrier, unsigned int frame,
                                 unsigned int burst) const;
    void _tell_burst(unsigned int carrier, unsigned int frame, unsigned int burst, const prach_turn_t& turn,
                     lib_nr_explanation_t& explanation) const;
    std::uint64_t _get_burst_start(const lib_nr_carrier_configure_manager_t& carrier, const prach_turn_t& turn) const;
    bool _is_burst_within_waveform(unsigned int frame, unsigned int burst) const;
    void _show_burst(unsigned int carrier, unsigned int numerology, unsigned int frame, unsigned int burst);
    void _note_prach_pass(unsigned int carrier, unsigned int numerology);
    std::int64_t _get_prach_shift(const lib_nr_ul_prach_configure_manager_t& prach) const;
    bool _nr_ul_prach_link_process(unsigned int carrier, unsigned int numerology, unsigned int burst);
    static void _set_prach_resource_param(const lib_nr_carrier_configure_manager_t& carrier, unsigned int numerology,
                                          const lib_nr_ul_prach_configure_manager_t& prach);
    void _locate_prach(const lib_nr_ul_prach_configure_manager_t& prach);
    void _update_prach_ofdm_config(const lib_nr_carrier_configure_manager_t& carrier, unsigned int numerology);

    void _deal_carrier_process(unsigned int carrier, signal_t& buffer);
    void _deal_carrier_timing_offset(unsigned int carrier, signal_t& buffer);
    void _deal_carrier_frequency_offset(unsigned int carrier, signal_t& buffer);
    void _deal_carrier_phase_offset(unsigned int carrier, signal_t& buffer);
    void _deal_carrier_power_offset(unsigned int carrier, signal_t& buffer);

    void _deal_baseband_process();
    void _deal_crest_factor_reduction();
    void _deal_normalize(double largest_component);
    common_lib::lib_signal_view_t _get_first_frame() const;
    const ccdfs_t& _get_ccdfs() const;
    signal_t _deal_frequency_spectrum_calculation() const;
    ccdfs_t _deal_ccdf_calculation() const;

    lib_nr_waveform_configure_manager_t m_waveform;
    bool m_has_trace_file = true;
    lib_nr_phy_observer_t* m_observer = nullptr;
    lib_nr_dl_phy_ssb_process_t m_ssb_process;
    lib_nr_dl_phy_csirs_process_t m_csirs_process;
    lib_nr_dl_phy_prs_process_t m_prs_process;
    lib_nr_dl_phy_pdcch_process_t m_pdcch_process;
    lib_nr_dl_phy_pdsch_process_t m_pdsch_process;
    lib_nr_ul_phy_pucch_process_t m_pucch_process;
    lib_nr_ul_phy_pusch_process_t m_pusch_process;
    lib_nr_ul_phy_prach_process_t m_prach_process;
    lib_nr_ul_phy_srs_process_t m_srs_process;
    lib_nr_ofdm_modulator_t m_ofdm_modulator;
    lib_nr_new_prach_ofdm_modulator_t m_prach_ofdm_modulator;
    signal_t m_baseband_signal;
    std::optional<finish_t> m_finish; ///< none without a run's samples
    common_lib::lib_made_on_demand_t<signal_t> m_frequency_spectrum;
    common_lib::lib_made_on_demand_t<ccdfs_t> m_ccdfs;

    // What a frame spreads ahead of itself and behind, and where that stays until its neighbours are written.
    signal_t m_head;
    signal_t m_tail;
    frame_seams_t m_seams;
    /// The frames of a pair whose rate is not the waveform's; empty for all others.
    signal_t m_own_rate_signal;
    std::optional<lib_nr_channel_step_t> m_step; ///< that is running; the channel is empty between a frame's steps
    std::optional<lib_nr_channel_step_t> m_first_failed_step;
    lib_nr_phy_recorder_t m_recorder;

    /// Stands in for the calls of the channels' processes, which are bound by then; tests log the calls, and let some
    /// fail.
    std::function<bool(const lib_nr_channel_step_t&, lib_nr_remap_mode_t)> m_instead_of_calls;
    /// Runs behind the channel steps of a frame, on the finished payload map (carrier, numerology, frame); tests put
    /// their own symbols there.
    std::function<void(unsigned int, unsigned int, unsigned int)> m_after_channel_steps;

    cell_observer_t m_cell_observer;
    lib_nr_mapped_cells_t m_cells; ///< of the frame at work, for the observer
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/lib_ofdm_windowing_method.h"
#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_dl_bwp_configure_manager.h"
#include "manager/lib_nr_dl_csirs_configure_manager.h"
#include "manager/lib_nr_dl_dci_configure_manager.h"
#include "manager/lib_nr_dl_frc_configure_manager.h"
#include "manager/lib_nr_dl_prs_configure_manager.h"
#include "manager/lib_nr_dl_sch_configure_manager.h"
#include "manager/lib_nr_dl_ssb_configure_manager.h"
#include "manager/lib_nr_dl_tm_configure_manager.h"
#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_ul_bwp_configure_manager.h"
#include "manager/lib_nr_ul_frc_configure_manager.h"
#include "manager/lib_nr_ul_prach_configure_manager.h"
#include "manager/lib_nr_ul_pucch_configure_manager.h"
#include "manager/lib_nr_ul_rmc_configure_manager.h"
#include "manager/lib_nr_ul_sch_configure_manager.h"
#include "manager/lib_nr_ul_srs_configure_manager.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

namespace vek::nr_mod_lib
{

/// What a carrier transmits.
enum lib_carrier_type_t : std::uint32_t
{
    LIB_NR_DOWNLINK = 0,
    LIB_NR_UPLINK = 1,
    LIB_NR_PRACH = 2,
};

/// Whether a carrier has one numerology, or one for each spacing that its bandwidth allows.
enum lib_nr_numerology_mode_t : std::uint32_t
{
    LIB_NR_NUMBEROLOGY_MODE_SINGLE = 0,
    LIB_NR_NUMBEROLOGY_MODE_MULTIPLE = 1,
};

/// What is chosen for a carrier in each family of presets.
using lib_nr_preset_choices_t = std::tuple<lib_nr_dl_tm_configure_manager_t, lib_nr_dl_frc_configure_manager_t,
                                           lib_nr_ul_frc_configure_manager_t, lib_nr_ul_rmc_configure_manager_t>;

/// Bandwidth parts that stand together in their list.
struct lib_nr_bwp_run_t
{
    unsigned int first;
    unsigned int end; ///< behind the last
};

/// One radio channel of the waveform: its bandwidth, numerologies, bandwidth parts and the channels in them, and the
/// rules that keep these consistent.
///
/// A carrier holds a full set of channels in both directions, the type decides which are generated. The configuration
/// is valid after every operation: setters limit or replace what does not fit and bring along what depends on it; they
/// return true when the stored value changed. Lists never become empty. A list getter returns the last entry for an
/// index past the end; an operation that changes an entry throws `std::out_of_range` for it. The settings' rules are
/// told in their façades, `cfg_nr_carrier_t` and `cfg_nr_phy_numerology_t`, here only what these do not show.
///
/// Bandwidth parts refer to a numerology by its spacing, channels to a bandwidth part by its place in the list.
class NR_MOD_LIB_EXPORT lib_nr_carrier_configure_manager_t
{
public:
    /// A carrier as `init` leaves it, without timing offset, outside NTN mode.
    lib_nr_carrier_configure_manager_t();

    /// Back to a 100 MHz downlink carrier with one numerology of 30 kHz at full width and one channel of each kind.
    /// Timing offset, NTN flag and the waveform's radio frequency stay.
    void init();

    /// Switches non-terrestrial mode, which narrows bandwidths and presets; a change is followed by `init`.
    bool set_nr_ntn(bool nr_ntn);
    bool get_nr_ntn() const { return m_nr_ntn; }

    bool set_enable(bool enable);
    bool get_enable() const { return m_enable; }

    /// The waveform's radio frequency in hertz, at first 1 GHz; the SS/PBCH block takes its sum with the offset.
    void set_radio_frequency(double radio_frequency);
    /// The waveform's number of antennas, at first 1: each PDSCH, PUSCH, CSI-RS and SRS has a port, or none, for each
    /// of them, those added later too.
    void set_antennas_number(unsigned int antennas_number);

    /// Offset of the carrier centre from the waveform's, in hertz, limited to 400 MHz either way. The SS/PBCH block
    /// takes the sum with the radio frequency given.
    bool set_frequency_offset_hz(double radio_frequency, double frequency_offset);
    double get_frequency_offset_hz() const { return m_frequency_offset_hz; }

    bool set_timing_offset_s(double timing_offset);
    double get_timing_offset_s() const { return m_timing_offset_s; }

    bool set_power_boosting(double power_boosting);
    double get_power_boosting() const { return m_power_boosting; }

    bool set_init_phase(unsigned int init_phase);
    unsigned int get_init_phase() const { return m_init_phase; }

    double get_windowing_beta_min() const { return m_windowing_beta_min; }
    double get_windowing_beta_max() const { return m_windowing_beta_max; }
    void set_windowing_beta(double windowing_beta);
    double get_windowing_beta() const { return m_windowing_beta; }

    void set_windowing_method(common_lib::lib_ofdm_windowing_method_type_t windowing_method);
    common_lib::lib_ofdm_windowing_method_type_t get_windowing_method() const { return m_windowing_method; }

    bool set_baseband_filter_enable(bool enable);
    bool is_baseband_filter_enable() const { return m_baseband_filter_enable; }

    /// A new type is preceded by `init`.
    bool set_carrier_type(lib_carrier_type_t carrier_type);
    lib_carrier_type_t get_carrier_type() const { return m_carrier_type; }

    bool set_cell_index(unsigned int cell_index);
    unsigned int get_cell_index() const { return m_cell_index; }

    /// Rebuilds the numerologies: single keeps the first one's spacing, multiple enables the first alone.
    bool set_numerology_mode(lib_nr_numerology_mode_t numerology_mode);
    lib_nr_numerology_mode_t get_numerology_mode() const { return m_numerology_mode; }

    /// Rebuilds the numerologies at full width, and what stands in them follows. Outside the bandwidths of TS 38.104 it
    /// changes nothing; in NTN mode what is no NTN bandwidth becomes 30 MHz. In multiple mode the PRACHs do not follow
    /// and a printed line tells so.
    bool set_bandwidth(lib_nr_channel_bw_type_t bandwidth);
    lib_nr_channel_bw_type_t get_bandwidth() const { return m_bandwidth; }

    // Numerologies

    /// Spacing of a single-numerology carrier; a new one comes at full width. In multiple mode, and for a spacing that
    /// does not go with the bandwidth, nothing happens.
    bool set_numerology(lib_nr_numerology_type_t numerology);
    /// Spacing of the first numerology.
    lib_nr_numerology_type_t get_numerology() const { return m_numerologies.front().get_numerolgy(); }
    /// The one numerology of single mode and the last enabled one of multiple mode cannot be switched off.
    bool set_numerology_enable(unsigned int index, bool enable);
    /// Width and start in resource blocks. The bandwidth parts of the numerology follow with their channels, and the
    /// SS/PBCH block moves to the numerology if it is enabled.
    bool set_numerology_rb_size(unsigned int index, unsigned int rb_size);
    bool set_numerology_rb_start(unsigned int index, unsigned int rb_start);
    /// Confirms the edited guard bands of a numerology, and the PUSCHs in it follow. False where they are not valid.
    bool set_numerology_guard_band(unsigned int index);

    unsigned int get_numerology_number() const { return static_cast<unsigned int>(m_numerologies.size()); }
    lib_nr_phy_numerology_configure_manager_t& get_numerology_manager(unsigned int index)
    {
        return _at(m_numerologies, index);
    }
    const lib_nr_phy_numerology_configure_manager_t& get_numerology_manager(unsigned int index) const
    {
        return _at(m_numerologies, index);
    }
    /// The numerology of a spacing; without one a printed line and the last numerology.
    lib_nr_phy_numerology_configure_manager_t& get_numerology_manager(lib_nr_numerology_type_t numerology);
    const lib_nr_phy_numerology_configure_manager_t& get_numerology_manager(lib_nr_numerology_type_t numerology) const;
    /// A copy of the first numerology that is enabled.
    lib_nr_phy_numerology_configure_manager_t get_first_enable_numerology_manager() const;
    /// The spacings enabled, in list order.
    std::vector<lib_nr_numerology_type_t> get_enable_numerology_list() const;
    /// Place of a spacing among those enabled; 0 where it is not.
    unsigned int get_numerology_manager_index_by_bwp(lib_nr_numerology_type_t numerology) const;

    /// Occupied bandwidth in hertz of the last enabled numerology.
    unsigned int get_configured_bandwidth() const;
    /// Sample rate in hertz that the widest numerology needs: its spacing times a power of two, a quarter more than the
    /// width at least. Prints trace lines.
    double get_base_sample_rate() const;
    /// Point A of the widest numerology (TS 38.211 clause 4.4.4.2) against the carrier centre, in hertz. Prints trace
    /// lines.
    double get_frequency_offset_of_point_a() const;

    // Single entries

    lib_nr_dl_ssb_configure_manager_t& get_dl_ssb() { return m_dl_ssb; }
    const lib_nr_dl_ssb_configure_manager_t& get_dl_ssb() const { return m_dl_ssb; }

    lib_nr_dl_tm_configure_manager_t& get_dl_tm() { return get_preset<lib_nr_dl_tm_configure_manager_t>(); }
    const lib_nr_dl_tm_configure_manager_t& get_dl_tm() const { return get_preset<lib_nr_dl_tm_configure_manager_t>(); }
    lib_nr_dl_frc_configure_manager_t& get_dl_frc() { return get_preset<lib_nr_dl_frc_configure_manager_t>(); }
    const lib_nr_dl_frc_configure_manager_t& get_dl_frc() const
    {
        return get_preset<lib_nr_dl_frc_configure_manager_t>();
    }
    lib_nr_ul_frc_configure_manager_t& get_ul_frc() { return get_preset<lib_nr_ul_frc_configure_manager_t>(); }
    const lib_nr_ul_frc_configure_manager_t& get_ul_frc() const
    {
        return get_preset<lib_nr_ul_frc_configure_manager_t>();
    }
    lib_nr_ul_rmc_configure_manager_t& get_ul_rmc() { return get_preset<lib_nr_ul_rmc_configure_manager_t>(); }
    const lib_nr_ul_rmc_configure_manager_t& get_ul_rmc() const
    {
        return get_preset<lib_nr_ul_rmc_configure_manager_t>();
    }
    /// The choice of a family of presets.
    template <class choice_t>
    choice_t& get_preset()
    {
        return std::get<choice_t>(m_presets);
    }
    template <class choice_t>
    const choice_t& get_preset() const
    {
        return std::get<choice_t>(m_presets);
    }
    /// All choices at once: applying a preset resets the carrier, and gives them back.
    const lib_nr_preset_choices_t& get_presets() const { return m_presets; }
    void set_presets(const lib_nr_preset_choices_t& presets) { m_presets = presets; }

    // Lists. An added entry starts from downlink BWP 1, uplink BWP 0 or the first enabled numerology. A copy and a
    // removal return false for an index past the end, a removal also where the list would fall below its smallest size.

    unsigned int get_dl_bwp_number() const { return static_cast<unsigned int>(m_dl_bwps.size()); }
    unsigned int get_dl_dci_number() const { return static_cast<unsigned int>(m_dl_dcis.size()); }
    unsigned int get_dl_sch_number() const { return static_cast<unsigned int>(m_dl_schs.size()); }
    unsigned int get_dl_csirs_number() const { return static_cast<unsigned int>(m_dl_csirss.size()); }
    unsigned int get_dl_prs_number() const { return static_cast<unsigned int>(m_dl_prss.size()); }
    unsigned int get_ul_bwp_number() const { return static_cast<unsigned int>(m_ul_bwps.size()); }
    unsigned int get_ul_pucch_number() const { return static_cast<unsigned int>(m_ul_pucchs.size()); }
    unsigned int get_ul_sch_number() const { return static_cast<unsigned int>(m_ul_schs.size()); }
    unsigned int get_ul_srs_number() const { return static_cast<unsigned int>(m_ul_srss.size()); }
    unsigned int get_ul_prach_number() const { return static_cast<unsigned int>(m_ul_prachs.size()); }

    lib_nr_dl_bwp_configure_manager_t& get_dl_bwp(unsigned int index) { return _at(m_dl_bwps, index); }
    const lib_nr_dl_bwp_configure_manager_t& get_dl_bwp(unsigned int index) const { return _at(m_dl_bwps, index); }
    lib_nr_dl_dci_configure_manager_t& get_dl_dci(unsigned int index) { return _at(m_dl_dcis, index); }
    const lib_nr_dl_dci_configure_manager_t& get_dl_dci(unsigned int index) const { return _at(m_dl_dcis, index); }
    lib_nr_dl_sch_configure_manager_t& get_dl_sch(unsigned int index) { return _at(m_dl_schs, index); }
    const lib_nr_dl_sch_configure_manager_t& get_dl_sch(unsigned int index) const { return _at(m_dl_schs, index); }
    lib_nr_dl_csirs_configure_manager_t& get_dl_csirs(unsigned int index) { return _at(m_dl_csirss, index); }
    const lib_nr_dl_csirs_configure_manager_t& get_dl_csirs(unsigned int index) const
    {
        return _at(m_dl_csirss, index);
    }
    lib_nr_dl_prs_configure_manager_t& get_dl_prs(unsigned int index) { return _at(m_dl_prss, index); }
    const lib_nr_dl_prs_configure_manager_t& get_dl_prs(unsigned int index) const { return _at(m_dl_prss, index); }
    lib_nr_ul_bwp_configure_manager_t& get_ul_bwp(unsigned int index) { return _at(m_ul_bwps, index); }
    const lib_nr_ul_bwp_configure_manager_t& get_ul_bwp(unsigned int index) const { return _at(m_ul_bwps, index); }
    lib_nr_ul_pucch_configure_manager_t& get_ul_pucch(unsigned int index) { return _at(m_ul_pucchs, index); }
    const lib_nr_ul_pucch_configure_manager_t& get_ul_pucch(unsigned int index) const
    {
        return _at(m_ul_pucchs, index);
    }
    lib_nr_ul_sch_configure_manager_t& get_ul_sch(unsigned int index) { return _at(m_ul_schs, index); }
    const lib_nr_ul_sch_configure_manager_t& get_ul_sch(unsigned int index) const { return _at(m_ul_schs, index); }
    lib_nr_ul_srs_configure_manager_t& get_ul_srs(unsigned int index) { return _at(m_ul_srss, index); }
    const lib_nr_ul_srs_configure_manager_t& get_ul_srs(unsigned int index) const { return _at(m_ul_srss, index); }
    lib_nr_ul_prach_configure_manager_t& get_ul_prach(unsigned int index) { return _at(m_ul_prachs, index); }
    const lib_nr_ul_prach_configure_manager_t& get_ul_prach(unsigned int index) const
    {
        return _at(m_ul_prachs, index);
    }

    /// The list of the entries of a type, numerologies included, for what goes over all kinds of them alike.
    template <class entry_t>
    unsigned int get_entry_number() const
    {
        return static_cast<unsigned int>(_list_of<entry_t>(*this).size());
    }
    template <class entry_t>
    entry_t& get_entry(unsigned int index)
    {
        return _at(_list_of<entry_t>(*this), index);
    }
    template <class entry_t>
    const entry_t& get_entry(unsigned int index) const
    {
        return _at(_list_of<entry_t>(*this), index);
    }

    /// The initial BWP, entry 0, is neither copied nor removed, and entry 1 always exists. A removal numbers the BWPs
    /// anew; channels keep their number and follow what stands there now, and one past the end becomes 0. A copy keeps
    /// the id of its source.
    void add_dl_bwp();
    bool copy_dl_bwp(unsigned int index);
    bool remove_dl_bwp(unsigned int index);

    void add_dl_dci();
    bool copy_dl_dci(unsigned int index);
    bool remove_dl_dci(unsigned int index);

    void add_dl_sch();
    bool copy_dl_sch(unsigned int index);
    bool remove_dl_sch(unsigned int index);

    void add_dl_csirs();
    bool copy_dl_csirs(unsigned int index);
    bool remove_dl_csirs(unsigned int index);

    void add_dl_prs();
    bool copy_dl_prs(unsigned int index);
    bool remove_dl_prs(unsigned int index);

    /// As for the downlink, but without an initial BWP; PRACHs follow in single mode alone. The name of a copy gets
    /// "_copy" behind it.
    void add_ul_bwp();
    bool copy_ul_bwp(unsigned int index);
    bool remove_ul_bwp(unsigned int index);

    /// A copy appends two entries, the second with "_copy" behind its name.
    void add_ul_pucch();
    bool copy_ul_pucch(unsigned int index);
    bool remove_ul_pucch(unsigned int index);

    void add_ul_sch();
    bool copy_ul_sch(unsigned int index);
    bool remove_ul_sch(unsigned int index);

    void add_ul_srs();
    bool copy_ul_srs(unsigned int index);
    bool remove_ul_srs(unsigned int index);

    void add_ul_prach();
    bool copy_ul_prach(unsigned int index);
    bool remove_ul_prach(unsigned int index);

    // Bandwidth parts: each change is taken along by the channels in the BWP, one of an uplink BWP's offset by all of
    // them but the PUCCHs. A spacing that is not enabled becomes the first enabled one. The limits of an uplink BWP are
    // the caller's: first and number of resource blocks. In multiple mode the PRACHs do not follow an uplink BWP, and a
    // printed line tells so.

    bool set_dl_bwp_numerology(unsigned int index, lib_nr_numerology_type_t numerology);
    bool set_dl_bwp_rb_size(unsigned int index, unsigned int rb_size);
    bool set_dl_bwp_rb_start(unsigned int index, unsigned int rb_start);
    bool set_dl_bwp_cp_type(unsigned int index, lib_nr_cyclic_prefix_type_t cp_type);
    bool set_all_dl_bwps_cp_type(lib_nr_cyclic_prefix_type_t cp_type);
    /// False for a BWP past the end; DCIs leave a CORESET that is no longer there for the first one.
    bool set_coreset_number(unsigned int bwp_index, unsigned int coreset_number);
    bool set_dl_coreset_duration(unsigned int bwp_index, unsigned int coreset_index, unsigned int duration);
    bool set_ul_bwp_numerology(unsigned int index, lib_nr_numerology_type_t numerology);
    bool set_ul_bwp_cp_type(unsigned int index, lib_nr_cyclic_prefix_type_t cp_type);
    bool set_all_ul_bwps_cp_type(lib_nr_cyclic_prefix_type_t cp_type);
    bool set_ul_bwp_rb_number(unsigned int index, unsigned int rb_number, unsigned int rb_start, unsigned int rb_size);
    bool set_ul_bwp_rb_offset(unsigned int index, unsigned int rb_offset, unsigned int rb_start, unsigned int rb_size);

    // Where a channel stands: a BWP past the end becomes BWP 0, with a printed line; a spacing that is not enabled
    // becomes the first enabled one. A PRACH keeps its own id and only takes over the BWP's figures.

    bool set_dl_dci_bwp_id(unsigned int index, unsigned int bwp_id);
    bool set_dl_sch_bwp_id(unsigned int index, unsigned int bwp_id);
    bool set_dl_csirs_bwp_id(unsigned int index, unsigned int bwp_id);
    bool set_dl_ssb_numerology(lib_nr_numerology_type_t numerology);
    /// First DMRS symbol that the MIB tells, 2 or 3; the PDSCHs and PUSCHs that take theirs from the MIB follow.
    bool set_dl_ssb_dmrs_typea_position(unsigned int position);
    bool set_dl_prs_numerology(unsigned int index, lib_nr_numerology_type_t numerology);
    bool set_ul_pucch_bwp_id(unsigned int index, unsigned int bwp_id);
    bool set_ul_sch_bwp_id(unsigned int index, unsigned int bwp_id);
    bool set_ul_srs_bwp_id(unsigned int index, unsigned int bwp_id);
    void set_ul_prach_bwp_id(unsigned int index, unsigned int bwp_id);

private:
    friend struct vek::test_peer_t<lib_nr_carrier_configure_manager_t>;

    /// The last entry for an index past the end.
    template <class list_t>
    static auto _at(list_t& list, std::size_t index) -> decltype(list[index])
    {
        return list[std::min(index, list.size() - 1)];
    }
    template <class entry_t, class carrier_t>
    static auto& _list_of(carrier_t& carrier)
    {
        using list_t = std::conditional_t<std::is_const_v<carrier_t>, const std::vector<entry_t>, std::vector<entry_t>>;
        return std::get<list_t&>(std::tie(carrier.m_numerologies, carrier.m_dl_bwps, carrier.m_dl_dcis,
                                          carrier.m_dl_schs, carrier.m_dl_csirss, carrier.m_dl_prss, carrier.m_ul_bwps,
                                          carrier.m_ul_pucchs, carrier.m_ul_schs, carrier.m_ul_srss,
                                          carrier.m_ul_prachs));
    }

    bool _is_single_numerology() const { return m_numerology_mode != LIB_NR_NUMBEROLOGY_MODE_MULTIPLE; }
    void _init_numerology_list();
    void _update_numerology_list();
    void _update_carrier_bandwidth();
    void _update_ssb_and_prs_numerology();
    void _update_prs_numerology();
    void _move_to_numerology(lib_nr_numerology_type_t numerology);
    std::size_t _numerology_index(lib_nr_numerology_type_t numerology) const;
    const lib_nr_phy_numerology_configure_manager_t& _first_enabled_numerology() const;
    /// The numerology of the spacing wanted, or the first enabled one where that spacing is not.
    const lib_nr_phy_numerology_configure_manager_t& _enabled_numerology(lib_nr_numerology_type_t wanted) const;

    void _clear_lists();
    void _init_bwp_list();
    void _init_downlink_lists();
    void _init_uplink_lists();
    /// Re-evaluates the bandwidth parts of the carrier's direction: each stays where it is while its spacing is
    /// enabled.
    void _update_bwp_list();
    void _follow_dl_numerologies();
    void _follow_ul_numerologies();
    void _update_downlink_bwp_reference();
    void _update_coreset_reference();
    void _update_uplink_bwp_reference();

    /// The numerology in which a bandwidth part lies; a printed line where it is not enabled.
    const lib_nr_phy_numerology_configure_manager_t& _dl_bwp_limits(const lib_nr_dl_bwp_configure_manager_t& bwp,
                                                                    std::string_view operation) const;
    lib_nr_bwp_run_t _all_dl_bwps() const { return {0, get_dl_bwp_number()}; }
    lib_nr_bwp_run_t _all_ul_bwps() const { return {0, get_ul_bwp_number()}; }
    template <class channel_t>
    void _update_dl_channels(std::vector<channel_t>& channels, lib_nr_bwp_run_t bwps);
    void _update_all_dl_channels(lib_nr_bwp_run_t bwps);
    void _follow_ul_bwp(lib_nr_ul_pucch_configure_manager_t& pucch, unsigned int bwp_id) const;
    void _follow_ul_bwp(lib_nr_ul_sch_configure_manager_t& sch, unsigned int bwp_id) const;
    void _follow_ul_bwp(lib_nr_ul_srs_configure_manager_t& srs, unsigned int bwp_id) const;
    void _follow_ul_bwp(lib_nr_ul_prach_configure_manager_t& prach, unsigned int bwp_id) const;
    template <class channel_t>
    void _update_ul_channels(std::vector<channel_t>& channels, lib_nr_bwp_run_t bwps) const;
    /// The PRACHs in single mode alone.
    void _update_all_ul_channels(lib_nr_bwp_run_t bwps);
    void _update_ul_channels_but_pucchs(lib_nr_bwp_run_t bwps);
    /// A line in multiple mode, where the PRACHs do not follow.
    void _tell_of_prachs(std::string_view operation) const;

    bool m_nr_ntn = false;
    bool m_enable = true;
    double m_radio_frequency = 1e9;
    std::uint32_t m_antennas_number = 1;
    double m_frequency_offset_hz = 0.0;
    double m_timing_offset_s = 0.0;
    double m_power_boosting = 0.0;
    std::uint32_t m_init_phase = 0;
    double m_windowing_beta_min = 0.0;
    double m_windowing_beta_max = 0.5;
    double m_windowing_beta = 0.01;
    common_lib::lib_ofdm_windowing_method_type_t m_windowing_method = common_lib::LIB_OFDM_WINDOWING_RAISED_COSINE;
    bool m_baseband_filter_enable = true;
    lib_carrier_type_t m_carrier_type = LIB_NR_DOWNLINK;
    std::uint32_t m_cell_index = 0;
    lib_nr_numerology_mode_t m_numerology_mode = LIB_NR_NUMBEROLOGY_MODE_SINGLE;
    lib_nr_channel_bw_type_t m_bandwidth = LIB_NR_CHANNEL_FR1_100M;
    std::vector<lib_nr_phy_numerology_configure_manager_t> m_numerologies;
    std::vector<lib_nr_dl_bwp_configure_manager_t> m_dl_bwps;
    lib_nr_preset_choices_t m_presets;
    lib_nr_dl_ssb_configure_manager_t m_dl_ssb;
    std::vector<lib_nr_dl_dci_configure_manager_t> m_dl_dcis;
    std::vector<lib_nr_dl_sch_configure_manager_t> m_dl_schs;
    std::vector<lib_nr_dl_csirs_configure_manager_t> m_dl_csirss;
    std::vector<lib_nr_dl_prs_configure_manager_t> m_dl_prss;
    std::vector<lib_nr_ul_bwp_configure_manager_t> m_ul_bwps;
    std::vector<lib_nr_ul_pucch_configure_manager_t> m_ul_pucchs;
    std::vector<lib_nr_ul_sch_configure_manager_t> m_ul_schs;
    std::vector<lib_nr_ul_srs_configure_manager_t> m_ul_srss;
    std::vector<lib_nr_ul_prach_configure_manager_t> m_ul_prachs;
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/lib_ofdm_windowing_method.h"
#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"
#include "config/cfg_nr_dl_bwp.h"
#include "config/cfg_nr_dl_csirs.h"
#include "config/cfg_nr_dl_dci.h"
#include "config/cfg_nr_dl_frc.h"
#include "config/cfg_nr_dl_prs.h"
#include "config/cfg_nr_dl_sch.h"
#include "config/cfg_nr_dl_ssb.h"
#include "config/cfg_nr_dl_tm.h"
#include "config/cfg_nr_phy_numerology.h"
#include "config/cfg_nr_prach.h"
#include "config/cfg_nr_pucch_test_model.h"
#include "config/cfg_nr_ul_bwp.h"
#include "config/cfg_nr_ul_frc.h"
#include "config/cfg_nr_ul_pucch.h"
#include "config/cfg_nr_ul_rmc.h"
#include "config/cfg_nr_ul_sch.h"
#include "config/cfg_nr_ul_srs.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the waveform's carriers, with one façade for each kind of entry that a carrier holds.
///
/// There is one façade of each kind: `get_dl_bwp(2)` moves it and returns it, and `get_dl_bwp(0)` moves the same one.
/// An index past the end leaves it where it stands. Setters return true when the stored value changed.
class NR_MOD_LIB_EXPORT cfg_nr_carrier_t : public cfg_nr_cursor_t
{
public:
    explicit cfg_nr_carrier_t(lib_nr_waveform_configure_manager_t& waveform);

    /// Puts this cursor and all below it on the first entry.
    void init();

    /// Moves the cursor, and those below it, but that of the SRS, to their first entry in the carrier. A printed line,
    /// false and no move past the end of the carriers; the current index moves nothing.
    bool set_current_carrier_index(unsigned int carrier);
    unsigned int get_current_carrier_id() const { return m_carrier_index; }

    /// Whether the carrier is sent and counts for the sample rate.
    bool set_enable(bool enable) { return _target().set_enable(enable); }
    bool get_enable() const { return _target().get_enable(); }
    /// Offset of the carrier centre from the waveform's, in hertz, limited to 400 MHz either way. Its half widths,
    /// times the rate that the widest carrier up to this one needs, add to the sample rate. Phase terms do not follow
    /// it.
    bool set_frequency_offset(int frequency_offset);
    int get_frequency_offset() const;
    /// Delay in seconds, limited to 0 to 10 ms.
    bool set_timing_offset(double seconds) { return _target().set_timing_offset_s(seconds); }
    double get_timing_offset() const { return _target().get_timing_offset_s(); }
    /// dB, limited to -40 to 40.
    bool set_power_boosting(double boosting) { return _target().set_power_boosting(boosting); }
    double get_power_boosting() const { return _target().get_power_boosting(); }
    /// Degrees, at most 360.
    bool set_init_phase(unsigned int init_phase) { return _target().set_init_phase(init_phase); }
    unsigned int get_init_phase() const { return _target().get_init_phase(); }
    /// Whether a low-pass filter cuts what modulation spreads outside the channel.
    bool set_baseband_filter(bool enable) { return _target().set_baseband_filter_enable(enable); }
    bool get_baseband_filter() const { return _target().is_baseband_filter_enable(); }
    /// A new type brings the carrier back to its defaults, but for timing offset, NTN mode and radio frequency.
    bool set_carrier_type(lib_carrier_type_t type) { return _target().set_carrier_type(type); }
    lib_carrier_type_t get_carrier_type() const { return _target().get_carrier_type(); }
    /// Physical cell identity of TS 38.211 clause 7.4.2.1, at most 1007.
    bool set_ncell_id(unsigned int ncell_id) { return _target().set_cell_index(ncell_id); }
    unsigned int get_ncell_id() const { return _target().get_cell_index(); }
    /// Rebuilds the numerologies at full width. In NTN mode what is no NTN bandwidth becomes 30 MHz. Asking for the
    /// stored bandwidth changes nothing, even where it is none of the mode's.
    bool set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth);
    lib_nr_channel_bw_type_t get_channel_bandwidth() const { return _target().get_bandwidth(); }
    /// Length of the transition between symbols as a fraction of the useful symbol, limited to 0 to 0.5.
    void set_windowing_beta(double beta) { _target().set_windowing_beta(beta); }
    double get_windowing_beta() const { return _target().get_windowing_beta(); }
    /// Form of that transition.
    void set_windowing_method(common_lib::lib_ofdm_windowing_method_type_t method)
    {
        _target().set_windowing_method(method);
    }
    common_lib::lib_ofdm_windowing_method_type_t get_windowing_method() const
    {
        return _target().get_windowing_method();
    }
    /// Rebuilds the numerologies: one alone, or one for each spacing, of which the first is enabled.
    bool set_numerology_mode(lib_nr_numerology_mode_t mode) { return _target().set_numerology_mode(mode); }
    lib_nr_numerology_mode_t get_numerology_mode() const { return _target().get_numerology_mode(); }
    /// Spacing of a carrier with one numerology; in multiple mode nothing happens.
    bool set_numerology(lib_nr_numerology_type_t numerology);
    lib_nr_numerology_type_t get_numerology() const { return _target().get_numerology(); }
    /// The spacings that go with the bandwidth.
    std::vector<lib_nr_numerology_type_t> get_numerology_list() const;
    std::vector<lib_nr_numerology_type_t> get_enable_numerology_list() const
    {
        return _target().get_enable_numerology_list();
    }
    lib_nr_freq_range_type_t get_frequency_range() const;
    std::vector<lib_nr_channel_bw_type_t> get_valid_bandwidth_list() const;
    /// Hertz: what this carrier alone needs.
    unsigned long long get_sample_rate() const;
    /// Occupied bandwidth in hertz.
    unsigned int get_bandwidth() const { return _target().get_configured_bandwidth(); }
    /// Point A against the carrier centre, in hertz.
    double get_point_a() const { return _target().get_frequency_offset_of_point_a(); }
    /// Cyclic prefix of all uplink BWPs; read from the first. Always true.
    bool set_prach_cp_type(lib_nr_cyclic_prefix_type_t cp_type);
    lib_nr_cyclic_prefix_type_t get_prach_cp_type() const { return _target().get_ul_bwp(0).get_cp_type(); }

    // The façades below. Those without an index belong to the carrier as a whole.

    cfg_nr_phy_numerology_t* get_numerology(int index) { return _moved(m_numerology, index); }
    cfg_nr_dl_bwp_t* get_dl_bwp(int index) { return _moved(m_dl_bwp, index); }
    cfg_nr_dl_tm_t* get_dl_tm() { return &m_dl_tm; }
    cfg_nr_dl_frc_t* get_dl_frc() { return &m_dl_frc; }
    cfg_nr_dl_ssb_t* get_dl_ssb() { return &m_dl_ssb; }
    cfg_nr_dl_dci_t* get_dl_dci(int index) { return _moved(m_dl_dci, index); }
    cfg_nr_dl_sch_t* get_dl_pdsch(int index) { return _moved(m_dl_sch, index); }
    cfg_nr_dl_csirs_t* get_dl_csirs(int index) { return _moved(m_dl_csirs, index); }
    cfg_nr_dl_prs_t* get_dl_prs(int index) { return _moved(m_dl_prs, index); }
    cfg_nr_ul_bwp_t* get_ul_bwp(int index) { return _moved(m_ul_bwp, index); }
    cfg_nr_ul_sch_t* get_ul_pusch(int index) { return _moved(m_ul_sch, index); }
    cfg_nr_ul_frc_t* get_ul_frc() { return &m_ul_frc; }
    cfg_nr_ul_rmc_t* get_ul_rmc() { return &m_ul_rmc; }
    cfg_nr_ul_pucch_t* get_ul_pucch(unsigned int index) { return _moved(m_ul_pucch, index); }
    cfg_nr_pucch_test_model_t* get_pucch_test_model() { return _moved(m_pucch_test_model, 0); }
    cfg_nr_ul_srs_t* get_ul_srs(unsigned int index) { return _moved(m_ul_srs, index); }
    cfg_nr_prach_t* get_ul_prach(unsigned int index) { return _moved(m_prach, index); }

    unsigned int get_numerology_number() const { return _target().get_numerology_number(); }
    unsigned int get_dl_bwp_number() const { return _target().get_dl_bwp_number(); }
    unsigned int get_dl_dci_number() const { return _target().get_dl_dci_number(); }
    unsigned int get_dl_pdsch_number() const { return _target().get_dl_sch_number(); }
    unsigned int get_dl_csirs_number() const { return _target().get_dl_csirs_number(); }
    unsigned int get_dl_prs_number() const { return _target().get_dl_prs_number(); }
    unsigned int get_ul_bwp_number() const { return _target().get_ul_bwp_number(); }
    unsigned int get_ul_pusch_number() const { return _target().get_ul_sch_number(); }
    unsigned int get_ul_pucch_number() const { return _target().get_ul_pucch_number(); }
    unsigned int get_ul_srs_number() const { return _target().get_ul_srs_number(); }
    unsigned int get_ul_prach_number() const { return _target().get_ul_prach_number(); }

    // Lists. Adding moves the façade of the kind to the new entry and removing moves it to the first, whether or not
    // anything was removed; those of the PUCCH stay. Copying moves nothing. A copy and a removal return false for an
    // index past the end, a removal also where the list would fall below its smallest size. The initial BWP, downlink
    // BWP 0, is neither copied nor removed.

    void add_dl_bwp() { _add(&carrier_t::add_dl_bwp, get_dl_bwp_number(), m_dl_bwp); }
    bool delete_dl_bwp(unsigned int index) { return _remove(&carrier_t::remove_dl_bwp, index, m_dl_bwp); }
    bool copy_dl_bwp(unsigned int index) { return _target().copy_dl_bwp(index); }
    void add_dl_dci() { _add(&carrier_t::add_dl_dci, get_dl_dci_number(), m_dl_dci); }
    bool delete_dl_dci(unsigned int index) { return _remove(&carrier_t::remove_dl_dci, index, m_dl_dci); }
    bool copy_dl_dci(unsigned int index) { return _target().copy_dl_dci(index); }
    void add_dl_sch() { _add(&carrier_t::add_dl_sch, get_dl_pdsch_number(), m_dl_sch); }
    bool delete_dl_sch(unsigned int index) { return _remove(&carrier_t::remove_dl_sch, index, m_dl_sch); }
    bool copy_dl_sch(unsigned int index) { return _target().copy_dl_sch(index); }
    void add_dl_csirs() { _add(&carrier_t::add_dl_csirs, get_dl_csirs_number(), m_dl_csirs); }
    bool delete_dl_csirs(unsigned int index) { return _remove(&carrier_t::remove_dl_csirs, index, m_dl_csirs); }
    bool copy_dl_csirs(unsigned int index) { return _target().copy_dl_csirs(index); }
    void add_dl_prs() { _add(&carrier_t::add_dl_prs, get_dl_prs_number(), m_dl_prs); }
    bool delete_dl_prs(unsigned int index) { return _remove(&carrier_t::remove_dl_prs, index, m_dl_prs); }
    bool copy_dl_prs(unsigned int index) { return _target().copy_dl_prs(index); }
    void add_ul_bwp() { _add(&carrier_t::add_ul_bwp, get_ul_bwp_number(), m_ul_bwp); }
    bool delete_ul_bwp(unsigned int index) { return _remove(&carrier_t::remove_ul_bwp, index, m_ul_bwp); }
    bool copy_ul_bwp(unsigned int index) { return _target().copy_ul_bwp(index); }
    void add_ul_sch() { _add(&carrier_t::add_ul_sch, get_ul_pusch_number(), m_ul_sch); }
    bool delete_ul_sch(unsigned int index) { return _remove(&carrier_t::remove_ul_sch, index, m_ul_sch); }
    bool copy_ul_sch(unsigned int index) { return _target().copy_ul_sch(index); }
    void add_ul_srs() { _add(&carrier_t::add_ul_srs, get_ul_srs_number(), m_ul_srs); }
    bool remove_ul_srs(unsigned int index) { return _remove(&carrier_t::remove_ul_srs, index, m_ul_srs); }
    bool copy_ul_srs(unsigned int index) { return _target().copy_ul_srs(index); }
    void add_ul_prach() { _add(&carrier_t::add_ul_prach, get_ul_prach_number(), m_prach); }
    bool remove_ul_prach(unsigned int index) { return _remove(&carrier_t::remove_ul_prach, index, m_prach); }
    bool copy_ul_prach(unsigned int index) { return _target().copy_ul_prach(index); }
    void add_ul_pucch() { _target().add_ul_pucch(); }
    bool remove_ul_pucch(unsigned int index) { return _target().remove_ul_pucch(index); }
    /// Appends two entries, the second with "_copy" behind its name.
    bool copy_ul_pucch(unsigned int index) { return _target().copy_ul_pucch(index); }

    // Presets. Each rewrites the carrier, and frames, radio frequency and antennas of the waveform, from what is chosen
    // in its family; the choices of all families stay. Afterwards the carrier is an ordinary configuration. What a
    // preset does not set keeps its value, told beside it; PRS entries are never touched, so that one which is on may
    // conflict.

    /// Back to the smallest lists, all channels but the PRS off; the settings of what is left stay as they are.
    void clear_carrier();
    /// Lays the downlink test model chosen in `get_dl_tm` on the carrier: two frames in TDD, else one, a PDCCH and
    /// uncoded PDSCHs of PN23. False where there is no such model, FR2 in FDD: then the PDCCH stands alone. 240 kHz has
    /// no slots: printed lines, and nothing can be sent. Of the PDSCH that is left by `clear_carrier`,
    /// `one_frame_period` and `dmrs_power` stand, of the DCI its level as far as the CORESET allows.
    bool deal_test_model();
    /// Lays the downlink fixed reference channel chosen in `get_dl_frc` on the carrier, for two frames and cell 0: a
    /// coded PDSCH over the whole band, CSI-RS, and an SS/PBCH block where there are 24 resource blocks and the spacing
    /// is not 60 kHz. Of the PDSCH, size and bitmap of resource block groups, bundle size, scaling and all of the PTRS
    /// but that it is off stand, as do what interleaving uses of the CORESET, the slots of the first CSI-RS in NTN mode
    /// at 60 kHz, its ports, power, second symbol and flags, and the settings of the DCI, which is off.
    void deal_dl_fixed_reference_channels();
    /// Lays the uplink fixed reference channel chosen in `get_ul_frc` on the carrier: a coded PUSCH of PN9 with the
    /// cell's identity 0 in all slots, or in TDD those of the uplink; an antenna for each layer. Of the PUSCH that is
    /// left by `clear_carrier`, `dmrs_power`, `one_frame_period` and what its type of allocation does not use stand,
    /// and so do the guard bands of the spacing, on which interlaces hang. Transform precoding is refused where the
    /// PUSCH had another allocation than type 1: then a second call brings it.
    void deal_ul_fixed_reference_channels();
    /// The same with the uplink reference measurement channel chosen in `get_ul_rmc`, as many layers as the channel in
    /// `get_ul_frc` has, and TDD slots of its own.
    void deal_ul_reference_measurement_channels();

private:
    using carrier_t = lib_nr_carrier_configure_manager_t;

    carrier_t& _target() { return _carrier(); }
    const carrier_t& _target() const { return _carrier(); }

    /// A list's façade, moved to an entry; a negative index lies past the end as well.
    template <class facade_t, class index_t>
    facade_t* _moved(facade_t& facade, index_t index)
    {
        facade.set_current_index(m_carrier_index, static_cast<unsigned int>(index));
        return &facade;
    }
    template <class facade_t>
    void _add(void (carrier_t::*add)(), unsigned int number_before, facade_t& facade)
    {
        (_target().*add)();
        _moved(facade, number_before);
    }
    template <class facade_t>
    bool _remove(bool (carrier_t::*remove)(unsigned int), unsigned int index, facade_t& facade)
    {
        const bool removed = (_target().*remove)(index);
        _moved(facade, 0);
        return removed;
    }

    /// What a preset gives its carrier, beside what every choice has.
    struct preset_carrier_t
    {
        lib_carrier_type_t type;
        lib_nr_numerology_type_t numerology;
        unsigned int frames;
        unsigned int antennas;
        unsigned int ncell_id;
    };
    /// The waveform, and the emptied carrier with one numerology over its bandwidth. The choice is a copy, since a new
    /// carrier type resets those of the carrier; all of them come back.
    void _lay_preset_carrier(const lib_nr_preset_configure_manager_t& choice, const preset_carrier_t& preset);

    using test_model_t = lib_nr_dl_tm_configure_manager_t;
    void _test_model_pdcch_cfg(const test_model_t& model);
    bool _test_model_pdsch_cfg(const test_model_t& model);
    void _test_model_pdsch_ref_cfg(cfg_nr_dl_sch_t& sch, const test_model_t& model);
    void _test_model_pdsch_set_modulation(cfg_nr_dl_sch_t& sch, const test_model_t& model);
    void _test_model_pdsch_set_modulation(cfg_nr_dl_sch_t& sch, lib_nr_modulation_type_t modulation);

    using dl_frc_t = lib_nr_dl_frc_configure_manager_t;
    void _frc_pdsch_set_allocation(cfg_nr_dl_sch_t& sch, const dl_frc_t& frc);
    void _frc_pdsch_set_modulation(cfg_nr_dl_sch_t& sch, const dl_frc_t& frc);
    void _frc_pdsch_set_csirs(const dl_frc_t& frc);
    void _frc_pdsch_set_csirs(cfg_nr_dl_csirs_t& csirs, unsigned int index, const dl_frc_t& frc);
    void _frc_pusch_set_modulation(cfg_nr_ul_sch_t& channel);
    void _rmc_pusch_set_modulation(cfg_nr_ul_sch_t& channel);

    cfg_nr_phy_numerology_t m_numerology;
    cfg_nr_dl_bwp_t m_dl_bwp;
    cfg_nr_dl_tm_t m_dl_tm;
    cfg_nr_dl_frc_t m_dl_frc;
    cfg_nr_dl_ssb_t m_dl_ssb;
    cfg_nr_dl_dci_t m_dl_dci;
    cfg_nr_dl_sch_t m_dl_sch;
    cfg_nr_dl_csirs_t m_dl_csirs;
    cfg_nr_dl_prs_t m_dl_prs;
    cfg_nr_ul_bwp_t m_ul_bwp;
    cfg_nr_ul_sch_t m_ul_sch;
    cfg_nr_ul_frc_t m_ul_frc;
    cfg_nr_ul_rmc_t m_ul_rmc;
    cfg_nr_ul_pucch_t m_ul_pucch;
    cfg_nr_pucch_test_model_t m_pucch_test_model;
    cfg_nr_ul_srs_t m_ul_srs;
    cfg_nr_prach_t m_prach;
};

} // namespace vek::nr_mod_lib

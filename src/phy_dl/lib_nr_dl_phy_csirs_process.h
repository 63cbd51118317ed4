#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_dl_csirs_configure_manager.h"
#include "phy/lib_nr_phy_observer.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_deviation.h"

#include <array>
#include <complex>
#include <cstddef>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;
struct csirs_wf_wt_t;
struct lib_nr_csirs_location_row_t;

/// Generates a CSI-RS resource, TS 38.211 clause 7.4.1.5. It sends one port, the first of the list, or nothing where
/// that is none; the view marks the cells of all ports. Two rules of its own: a symbol past the end of the slot is that
/// of the next one, and a density that the row has not is generated as its first. Where `standard_rules` is off,
/// resource blocks are counted from the start of the BWP, but placed from the start of the grid, while the sequence
/// counts those of the grid; and zero power is sent as any other. With it zero power fills its cells with zeros.
class NR_MOD_LIB_EXPORT lib_nr_dl_phy_csirs_process_t : public lib_nr_ruled_t, public lib_nr_explaining_t
{
public:
    /// Takes an entry of a carrier's list, for the pass of a numerology. Always true.
    bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int csirs,
                             const lib_nr_waveform_configure_manager_t& waveform);
    /// Writes one slot of the frame. False where the resource is disabled, and as the mapping.
    bool csirs_process(unsigned int slot);
    /// Marks or writes a slot of the frame; what lies outside the grid is left out, and the view prints the grid's line
    /// for it. False where a marked cell was taken or lay outside, and, with a printed line and nothing mapped, for an
    /// unknown mode, row or CDM type. A range below 24 resource blocks and below the BWP prints a line and becomes 24.
    bool nr_dl_phy_csirs_re_map(unsigned int slot, lib_nr_remap_mode_t mode);

    // The fields of the snapshot one by one. They store what they are given.
    void set_enable(bool enable) { m_enable = enable; }
    /// In dB.
    void set_power_bosting(double power);
    void set_zero_power(bool zero_power) { m_is_zero_power = zero_power; }
    void set_antenna_port(const std::vector<csirs_antenna_port_t>& ports);
    void set_nid(unsigned int nid) { m_nid = nid; }
    void set_csirs_type(csirs_cdm_type_t type) { m_csirs_type = type; }
    void set_rb_offset(unsigned int rb_offset) { m_rb_offset = rb_offset; }
    void set_rb_num(unsigned int rb_num) { m_rb_num = rb_num; }
    void set_table_idx(unsigned int table_idx) { m_table_idx = table_idx; }
    void set_l0(unsigned int l0) { m_first_symbols[0] = l0; }
    void set_l1(unsigned int l1) { m_first_symbols[1] = l1; }
    void set_freq_domain_bitmap(const std::vector<int>& bitmap) { m_bitmap = bitmap; }
    void set_density(double density) { m_density = density; }
    void set_density_prb_allocation(density_prb_allocation_t allocation) { m_density_prb_allocation = allocation; }
    void set_bwp_rb_start(unsigned int rb_start) { m_bwp_rb_start = rb_start; }
    void set_bwp_rb_size(unsigned int rb_size) { m_bwp_rb_size = rb_size; }
    /// The grid knows where the frame ends: the number is not kept.
    void set_slot_per_frame(unsigned int) {}
    void set_symbol_per_slot(unsigned int symbols) { m_symbol_per_slot = symbols; }

private:
    /// First subcarrier and symbol of a CDM group.
    struct place_t
    {
        unsigned int k;
        unsigned int l;
    };

    bool _prepare();
    bool _get_fi_from_bitmap();
    void _get_ki();
    void _csirs_location_table_init();
    bool _csirs_wt_wf_init();
    void _get_csirs_rb_position();
    std::size_t _nr_dl_phy_csirs_cal_mp() const;
    std::size_t _m_of_rb(unsigned int rb) const;
    std::size_t _m_of_place(const place_t& place) const;
    void _nr_dl_phy_csirs_sequence_gen(unsigned int symbol_in_frame);
    void _list_runs(unsigned int slot);
    void _write(unsigned int slot);
    void _explain(const std::vector<lib_nr_resource_run_t>& runs, unsigned int slot) const;

    // The resource and its BWP, plain values.
    bool m_enable = false;
    double m_amplitude = 1.0;
    bool m_is_zero_power = false;
    csirs_antenna_port_t m_antenna_port = CSIRS_ANTENNA_NONE; ///< the first of the list
    unsigned int m_nid = 0;
    csirs_cdm_type_t m_csirs_type = NO_CDM;
    unsigned int m_rb_offset = 0;
    unsigned int m_rb_num = 0;
    unsigned int m_table_idx = 1;
    std::array<unsigned int, 2> m_first_symbols{}; ///< l0 and l1
    std::vector<int> m_bitmap;
    double m_density = 1.0;
    density_prb_allocation_t m_density_prb_allocation = EVEN_PRBS;
    unsigned int m_bwp_rb_start = 0;
    unsigned int m_bwp_rb_size = 0;
    unsigned int m_symbol_per_slot = 14;

    // What a slot is made of.
    const lib_nr_csirs_location_row_t* m_row = nullptr;
    std::vector<unsigned int> m_f;
    std::vector<unsigned int> m_k;
    std::vector<place_t> m_places; ///< in the order of the row
    const csirs_wf_wt_t* m_weights = nullptr;
    double m_row_density = 1.0; ///< of the row's
    unsigned int m_first_rb = 0;
    unsigned int m_rb_count = 0; ///< those between them included that the density leaves out
    unsigned int m_rb_step = 1;
    double m_alpha = 1.0; ///< of clause 7.4.1.5.3
    std::vector<lib_nr_resource_run_t> m_runs;
    std::array<std::vector<std::complex<double>>, 4> m_sequences; ///< by l'
    std::vector<std::complex<double>> m_values;
};

} // namespace vek::nr_mod_lib

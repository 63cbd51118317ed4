#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' CSI-RS resources, TS 38.211 clause 7.4.1.5. A resource stands in a downlink BWP and is
/// sent in the pass of its spacing. It sends one port, the first of its list, and marks the cells of all ports of its
/// row in the resource map; where the list begins with `CSIRS_ANTENNA_NONE`, it marks them and sends nothing. Shared
/// channels leave out the marked cells.
class NR_MOD_LIB_EXPORT cfg_nr_dl_csirs_t : public cfg_nr_list_cursor_t<lib_nr_dl_csirs_configure_manager_t>
{
public:
    explicit cfg_nr_dl_csirs_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_csirs_index(unsigned int carrier, unsigned int csirs) { return set_current_index(carrier, csirs); }

    /// Stays off at 240 kHz.
    bool set_enable(bool enable) { return _target().set_enable(enable, _bwp().get_numerology()); }
    bool get_enable() const { return _target().get_enable(); }
    /// dB, limited to -40 to 40.
    bool set_power_bosting(double power) { return _target().set_power_bosting(power); }
    double get_power_bosting() const { return _target().get_power_bosting(); }
    /// One entry for each antenna of the waveform; the first is sent. What the row has not becomes
    /// `CSIRS_ANTENNA_NONE`, and a list of nothing else begins with port 0.
    bool set_antenna_port(const std::vector<csirs_antenna_port_t>& ports)
    {
        return _target().set_antenna_port(ports, m_waveform.get_antennas_number());
    }
    std::vector<csirs_antenna_port_t> get_antenna_port() const { return _target().get_antenna_port(); }
    /// What an antenna may take: 0 for none and n + 1 for each port n of the row.
    std::vector<unsigned int> get_available_port_number() const { return _target().get_available_port_number(); }
    /// Kept for the host: an index list over `get_available_port_number`; a text without any of them changes nothing.
    bool set_csirs_port(const std::string& text) { return _target().set_csirs_port(text); }
    std::vector<csirs_antenna_port_t> get_csirs_port() const { return _target().get_csirs_port(); }
    std::string get_csirs_feedback_port() const { return _target().get_csirs_feedback_port(); }
    /// Sequence identity of clause 7.4.1.5.2, at most 65535.
    bool set_nid(unsigned int nid) { return _target().set_nid(nid); }
    unsigned int get_nid() const { return _target().get_nid(); }
    /// Downlink BWP; one past the end becomes BWP 0, with a printed line. Enable and resource blocks follow it.
    bool set_bwp_id(unsigned int id) { return _carrier().set_dl_csirs_bwp_id(_index(), id); }
    unsigned int get_bwp_id() const { return _target().get_bwp_id(); }
    /// Whether the slots repeat in each frame or count from the start of the waveform. Takes the slots anew; where the
    /// earliest lies behind the first frame they become slot 0.
    bool set_one_frame_period(bool one_frame_period)
    {
        return _target().set_one_frame_period(one_frame_period, m_waveform.get_frame_number(), _bwp().get_numerology());
    }
    bool get_one_frame_period() const { return _target().get_one_frame_period(); }
    /// Slots, such as "0:4,7", of a frame or of the waveform; a text without any of them changes nothing.
    bool set_slot_allocation(const std::string& text)
    {
        return _target().set_slot_allocation(text, _bwp().get_numerology());
    }
    std::string get_slot_allocation() const { return _target().get_slot_allocation_feedback(); }
    /// First resource block, where it lies above the start of the BWP: a multiple of 4, at least 4 below the BWP's end.
    bool set_rb_offset(unsigned int rb_offset)
    {
        return _target().set_rb_offset(rb_offset, _bwp().get_bwp_rb_start(), _bwp().get_bwp_rb_size());
    }
    unsigned int get_rb_offset() const { return _target().get_rb_offset(); }
    /// Resource blocks, a multiple of 4 that the BWP holds, and at least 24, or the whole BWP where it is smaller.
    bool set_rb_num(unsigned int rb_num) { return _target().set_rb_num(rb_num, _bwp().get_bwp_rb_size()); }
    unsigned int get_rb_num() const { return _target().get_rb_num(); }
    /// Row of Table 7.4.1.5.3-1, limited to 1 to 18. Takes the row's first density, limits l0 and l1, fits the bitmap,
    /// and a port that the row has not becomes port 0.
    bool set_table_idx(unsigned int table_idx) { return _target().set_table_idx(table_idx); }
    unsigned int get_table_idx() const { return _target().get_table_idx(); }
    /// CDM type of the row.
    csirs_cdm_type_t get_csirs_type() const { return _target().get_csirs_type(); }
    /// First symbol, so that a CDM group fits: at most 13, 12 or 10. In rows with groups in the next symbol 13 is
    /// taken, and that symbol lies in the next slot.
    bool set_l0(unsigned int l0) { return _target().set_l0(l0); }
    unsigned int get_l0() const { return _target().get_l0(); }
    /// Symbol of the second half of the groups in rows 13, 14, 16 and 17, limited to 2 to 12; 2 in the others.
    bool set_l1(unsigned int l1) { return _target().set_l1(l1); }
    unsigned int get_l1() const { return _target().get_l1(); }
    /// Bits of the places in frequency, lowest subcarriers first, cut or padded with 0 to `get_available_csirs_bitmap`.
    /// Where the row needs more ones, that many of the last bits are set. A text without bits changes nothing.
    bool set_frequency_domain_bitmap(const std::string& text)
    {
        return _target().set_frequency_domain_bitmap(text, _target().get_table_idx());
    }
    std::string get_frequency_domain_bitmap() const { return _target().get_frequency_domain_bitmap(); }
    unsigned int get_available_csirs_bitmap() const { return _target().get_available_csirs_bitmap(); }
    /// Cells in each resource block and port. A row of one density keeps it. The others take any value, and one that
    /// is not of theirs is generated as 1. NaN changes nothing.
    bool set_density(double density) { return _target().set_density(density); }
    double get_density() const { return _target().get_density(); }
    std::vector<double> get_available_density() const { return _target().get_density_feedback(); }
    /// Even or odd resource blocks; taken at density 0.5 alone.
    bool set_density_prb_allocation(density_prb_allocation_t allocation)
    {
        return _target().set_density_prb_allocation(allocation);
    }
    density_prb_allocation_t get_density_prb_allocation() const { return _target().get_density_prb_allocation(); }
    /// What the row offers; empty where it has one density.
    std::vector<density_prb_allocation_t> get_density_prb_allocation_feedback() const
    {
        return _target().get_density_prb_allocation_feedback();
    }
    /// Kept for the host: it changes neither waveform nor resource map.
    bool set_reused_for_pdsch(bool reused) { return _target().set_reused_for_pdsch(reused); }
    bool get_reused_for_pdsch() const { return _target().get_reused_for_pdsch(); }
    /// Under `standard_rules` the cells are held and stay silent; without, it is kept for the host alone.
    bool set_zero_power(bool zero_power) { return _target().set_zero_power(zero_power); }
    bool get_zero_power() const { return _target().get_zero_power(); }

private:
    const lib_nr_dl_bwp_configure_manager_t& _bwp() const { return _carrier().get_dl_bwp(_target().get_bwp_id()); }
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' sounding reference signals, TS 38.211 clause 6.4.1.4. One lies in an uplink BWP, whose
/// spacing and prefix it has; its subcarriers count from the grid's lowest. What passes the slot or the grid is not
/// sent. Setters return true when the stored value changed; an enumerator that the list of a setting does not have
/// becomes the list's first.
class NR_MOD_LIB_EXPORT cfg_nr_ul_srs_t : public cfg_nr_list_cursor_t<lib_nr_ul_srs_configure_manager_t>
{
public:
    explicit cfg_nr_ul_srs_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_srs_index(unsigned int carrier, unsigned int srs) { return set_current_index(carrier, srs); }
    /// The entry under the cursor.
    lib_nr_ul_srs_configure_manager_t& get_srs_manager() { return _target(); }

    /// Stays off at 240 kHz.
    bool set_enable(bool enable) { return _target().set_enable(enable, _numerology()); }
    bool get_enable() const { return _target().get_enable(); }
    /// dB, limited to -40 to 40.
    bool set_power_bosting(double power) { return _target().set_power_bosting(power); }
    double get_power_bosting() const { return _target().get_power_bosting(); }
    /// Ports of the SRS, N_ap. An antenna's port that there is not any more becomes port 0. The amplitude rises with
    /// the square root of the number.
    bool set_port_number(srs_port_number_t number) { return _target().set_port_number(number); }
    srs_port_number_t get_port_number() const { return _target().get_port_number(); }
    /// The port sent on each antenna, as many as the waveform has antennas; a port that there is not becomes none, and
    /// port 0 is the first where all would be none. The first one is sent, and nothing where it is none.
    bool set_antenna_port(const std::vector<srs_antenna_port_t>& ports)
    {
        return _target().set_antenna_port(ports, m_waveform.get_antennas_number());
    }
    const std::vector<srs_antenna_port_t>& get_antenna_port() const { return _target().get_antenna_port(); }
    /// Text of ports, from 0 to the number of ports - 1; one without any is not taken. Kept, without effect on the
    /// signal.
    bool set_srs_port(const std::string& text) { return _target().set_srs_port(text); }
    const std::string& get_srs_port() const { return _target().get_srs_feedback_port(); }
    /// Whether it is an SRS for positioning, whose comb offset changes from symbol to symbol (Table 6.4.1.4.3-2).
    bool set_pos_resource(bool pos_resource) { return _target().set_pos_resource(pos_resource); }
    bool get_pos_resource() const { return _target().get_pos_resource(); }

    /// Period in slots; none makes it aperiodic, with offset 0, in the slots of the list in every frame. Another one
    /// limits the offset and makes the list.
    bool set_srs_periodity(srs_periodity_type_t periodicity)
    {
        return _target().set_srs_periodity(periodicity, _numerology());
    }
    srs_periodity_type_t get_srs_periodity() const { return _target().get_srs_periodity(); }
    /// Slots, below the period; makes the list anew.
    bool set_t_offset(unsigned int offset) { return _target().set_t_offset(offset, _numerology()); }
    unsigned int get_t_offset() const { return _target().get_t_offset(); }
    /// Text of slots of a frame; one without any is not taken. With a period the list holds the slots that it gives in
    /// the first frame, whatever the text, and an SRS is sent where both the list and, counted from the first frame,
    /// the period have the slot; under `standard_rules` where the period has it.
    bool set_slot_allocation(const std::string& text) { return _target().set_slot_allocation(text, _numerology()); }
    const std::vector<int>& get_slot_allocation() const { return _target().get_slot_allocation(); }
    const std::string& get_slot_allocation_feedback() const { return _target().get_slot_allocation_feedback(); }

    /// Symbols in a slot, N. Raises the offset, and takes the repetition factor along.
    bool set_N_symb_srs(srs_N_symb_srs_value_t number) { return _target().set_N_symb_srs(number); }
    srs_N_symb_srs_value_t get_N_symb_srs() const { return _target().get_N_symb_srs(); }
    /// The first symbol, counted back from the slot's last: N - 1 to 13.
    bool set_l_offset(unsigned char offset) { return _target().set_l_offset(offset); }
    unsigned char get_l_offset() const { return _target().get_l_offset(); }
    /// Symbols, R, that stay at a frequency; what does not divide N becomes N.
    bool set_srs_repetition_factor(srs_repetition_factor_value_t factor)
    {
        return _target().set_srs_repetition_factor(factor);
    }
    srs_repetition_factor_value_t get_srs_repetition_factor() const { return _target().get_srs_repetition_factor(); }
    /// Comb, K_TC. Limits its offset and the cyclic shift, and P_F is 1 where the sequence's length would be no
    /// multiple of 6.
    bool set_Ktc_number(srs_K_TC_value_t comb) { return _target().set_Ktc_number(comb); }
    srs_K_TC_value_t get_Ktc_number() const { return _target().get_Ktc_number(); }
    /// Subcarriers, below the comb.
    bool set_ktc_offset(unsigned char offset) { return _target().set_ktc_offset(offset); }
    unsigned char get_ktc_offset() const { return _target().get_ktc_offset(); }
    /// B_SRS, 0 to 3, and C_SRS, 0 to 63: column and row of Table 6.4.1.4.3-1. P_F is 1 as for the comb.
    bool set_b_srs(unsigned char b_srs) { return _target().set_b_srs(b_srs); }
    unsigned char get_b_srs() const { return _target().get_b_srs(); }
    /// Row of that table.
    bool set_c_srs(unsigned char c_srs) { return _target().set_c_srs(c_srs); }
    unsigned char get_c_srs() const { return _target().get_c_srs(); }
    /// 0 to 3; it hops where this is below B_SRS.
    bool set_b_hop(unsigned char b_hop) { return _target().set_b_hop(b_hop); }
    unsigned char get_b_hop() const { return _target().get_b_hop(); }
    /// Resource blocks from the grid's first subcarrier, 0 to 268; under `standard_rules` from the BWP's where that
    /// begins above so many.
    bool set_n_shift(unsigned short n_shift) { return _target().set_n_shift(n_shift); }
    unsigned short get_n_shift() const { return _target().get_n_shift(); }
    /// Frequency position in steps of 4 resource blocks, 0 to 67.
    bool set_n_RRC(unsigned char n_RRC) { return _target().set_n_RRC(n_RRC); }
    unsigned char get_n_RRC() const { return _target().get_n_RRC(); }
    /// 0 neither, 1 group hopping, 2 sequence hopping; more is 2.
    bool set_GroupOrSeqHop(unsigned char hopping) { return _target().set_GroupOrSeqHop(hopping); }
    unsigned char get_GroupOrSeqHop() const { return _target().get_GroupOrSeqHop(); }
    /// Cyclic shift: 0 to 7 at comb 2, to 11 at comb 4, to 5 at comb 8.
    bool set_n_SRS_cs(unsigned char shift) { return _target().set_n_SRS_cs(shift); }
    unsigned char get_n_SRS_cs() const { return _target().get_n_SRS_cs(); }
    /// Sequence identity, 0 to 65535.
    bool set_n_ID_SRS(unsigned int identity) { return _target().set_n_ID_SRS(identity); }
    unsigned int get_n_ID_SRS() const { return _target().get_n_ID_SRS(); }
    /// Partial sounding: one P_F-th of the band, where the comb leaves a multiple of 6 values, else 1.
    bool set_p_f(T_SRS_PF_TYPE p_f) { return _target().set_p_f(p_f); }
    T_SRS_PF_TYPE get_p_f() const { return _target().get_p_f(); }
    /// Which of these parts, below P_F.
    bool set_k_f(unsigned char k_f) { return _target().set_k_f(k_f); }
    unsigned char get_k_f() const { return _target().get_k_f(); }
    /// Uplink BWP; one that the carrier has not is 0, with a printed line. Its spacing may switch the SRS off and cut
    /// the slots.
    bool set_bwp_id(unsigned int id) { return _carrier().set_ul_srs_bwp_id(_index(), id); }
    unsigned int get_bwp_id() const { return _target().get_bwp_id(); }

    // What a user interface may offer.

    std::vector<srs_port_number_t> get_port_number_for_ui() const { return _target().get_port_number_for_ui(); }
    std::vector<srs_periodity_type_t> get_srs_periodity_for_ui() const { return _target().get_srs_periodity_for_ui(); }
    std::vector<srs_N_symb_srs_value_t> get_N_symb_srs_for_ui() const { return _target().get_N_symb_srs_for_ui(); }
    std::vector<srs_repetition_factor_value_t> get_srs_repetition_factor_for_ui() const
    {
        return _target().get_srs_repetition_factor_for_ui();
    }
    std::vector<srs_K_TC_value_t> get_Ktc_number_for_ui() const { return _target().get_Ktc_number_for_ui(); }
    std::vector<T_SRS_PF_TYPE> get_p_f_for_ui() const { return _target().get_p_f_for_ui(); }
    std::vector<srs_antenna_port_t> get_available_port_for_ui() const { return _target().get_available_port_for_ui(); }

private:
    /// Of the BWP that it lies in.
    lib_nr_numerology_type_t _numerology() const
    {
        return _carrier().get_ul_bwp(_target().get_bwp_id()).get_numerology();
    }
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_sch.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' PUSCHs, TS 38.211 clause 6.3.1: up to four layers, without UCI. What the base leaves to
/// the direction:
///
/// - DMRS ports: with transform precoding the first alone. The PTRS ports, the antenna ports and the TPMI follow.
/// - Symbols: mapping type A starts at 0 and has at least 4 symbols, 5 where l0 is 3 and 8 with hopping in the slot;
///   type B starts up to symbol 13, 12 with hopping in the slot, 9 with double-symbol DMRS (two less with the extended
///   prefix) and has, beyond its start, at least 1, 2 or 5 symbols. The end of the slot wins.
/// - Allocation type 2, interlaces, is taken at 15 and 30 kHz, where the BWP spans all that the channel bandwidth has;
///   else the type stays. A type other than 1 ends transform precoding.
/// - Resource blocks of a transform-precoded channel are a product of powers of 2, 3 and 5: the next one up that the
///   BWP has room for. The hop follows.
/// - With transform precoding no CDM group carries data, and PTRS in every fourth symbol become PTRS in every second.
/// - With hopping in the slot the DMRS are of single symbols, with additional position 0 or 1.
class NR_MOD_LIB_EXPORT cfg_nr_ul_sch_t final : public cfg_nr_sch_t
{
public:
    explicit cfg_nr_ul_sch_t(lib_nr_waveform_configure_manager_t& waveform);

    bool set_current_sch_index(unsigned int carrier, unsigned int index) override;
    bool set_bwp_id(unsigned int id) override;
    std::vector<lib_nr_sch_ptrs_time_density_t> get_ptrs_time_density_list() const
    {
        return _get_pusch_manager().get_ptrs_time_density_list();
    }

    /// Transform precoding (clause 6.3.1.4), with allocation type 1 alone. Applies the DMRS ports, the MCS table, the
    /// resource blocks and the CDM groups again.
    bool set_enable_transfer_precoding(bool enable) { return _target().set_enable_transfer_precoding(enable); }
    bool get_enable_transfer_precoding() const { return _target().get_enable_transfer_precoding(); }
    /// n_RAPID of the scrambling, of msgA (clause 6.3.1.1), 0 to 63; -1, as any other value, for none.
    bool set_rapid(int rapid) { return _target().set_rapid(rapid); }
    int get_rapid() const { return _target().get_rapid(); }
    /// Precoding by a codebook (clause 6.3.1.5). Without one there is an antenna port for each layer.
    bool set_enable_codebook(bool enable) { return _target().set_enable_codebook(enable); }
    bool get_enable_codebook() const { return _target().get_enable_codebook(); }
    /// Antenna ports of the codebook; what the list has not becomes its first. Applies the antenna ports and the TPMI
    /// again.
    bool set_antenna_port_number(lib_nr_antenna_port_number_t number)
    {
        return _target().set_antenna_port_number(number);
    }
    std::vector<lib_nr_antenna_port_number_t> get_antenna_port_number_list() const
    {
        return _target().get_antenna_port_number_list();
    }
    /// Row of the codebook's table, by layers and antenna ports up to 0 to 27; a larger value becomes 0.
    bool set_tpmi(unsigned int tpmi) { return _target().set_tpmi(tpmi); }
    unsigned int get_tpmi() const { return _target().get_tpmi(); }

    /// First RB set between the confirmed guard bands, for interlaces, at most the last; cuts the number.
    bool set_rb_set_start(unsigned int rb_set) { return _target().set_rb_set_start(rb_set); }
    unsigned int get_rb_set_start() const { return _target().get_rb_set_start(); }
    /// RB sets, at least 1. More than one use all of their resource blocks.
    bool set_rb_set_number(unsigned int number) { return _target().set_rb_set_number(number); }
    unsigned int get_rb_set_number() const { return _target().get_rb_set_number(); }
    /// Interlaces, such as "0,2:3": below 10 at 15 kHz, else below 5, and below the resource blocks in use. Others are
    /// left out, and interlace 0 stands in for none.
    bool set_interlace_index(const std::string& text) { return _target().set_interlace_index(text); }
    std::string get_interlace_index() const { return _target().get_interlace_index(); }
    /// Resource blocks at the end of a single RB set that are not used, up to all but one; applies the interlaces
    /// again.
    bool set_unused_rb(unsigned int rb_num) { return _target().set_unused_rb(rb_num); }
    unsigned int get_unused_rb() const { return _target().get_unused_rb(); }

    /// Frequency hopping within the slot or from slot to slot (TS 38.214 clause 6.3). Applies the length of the DMRS
    /// again.
    bool set_hopping_mode(lib_nr_sch_hopping_mode_t mode)
    {
        return _target().set_hopping_mode(mode, _get_bwp().cp_type);
    }
    lib_nr_sch_hopping_mode_t get_hopping_mode() const { return _target().get_hopping_mode(); }
    /// Resource blocks from the first to the second hop. Up to where the second hop ends with the BWP, or from the
    /// number of the BWP's resource blocks behind rb_offset up to its size - 1, where it wraps; any other value becomes
    /// the former limit.
    bool set_hopping_rb_offset(unsigned int rb_offset)
    {
        return _target().set_hopping_rb_offset(rb_offset, _get_bwp().rb_size);
    }
    unsigned int get_hopping_rb_offset() const { return _target().get_hopping_rb_offset(); }

    /// pi/2-BPSK or QPSK, where the MCS leaves it open; any other value becomes pi/2-BPSK. Elsewhere nothing happens,
    /// and the MCS gives the modulation.
    bool set_modulation(lib_nr_modulation_type_t modulation) { return _target().set_modulation(modulation); }
    std::vector<lib_nr_modulation_type_t> get_modulation_list() const { return _target().get_modulation_list(); }
    /// Limited buffer rate matching (TS 38.212 clause 5.4.2.1). The limit is above every code word: the bits are the
    /// same.
    bool set_enable_lbrm(bool enable) { return _target().set_enable_lbrm(enable); }
    bool get_enable_lbrm() const { return _target().get_enable_lbrm(); }

    /// Hopping of the sequences of transform-precoded DMRS, by group or within it (clause 6.4.1.1.1.2).
    bool set_dmrs_hopping(lib_nr_sch_dmrs_hopping_t hopping) { return _target().set_dmrs_hopping(hopping); }
    lib_nr_sch_dmrs_hopping_t get_dmrs_hopping() const { return _target().get_dmrs_hopping(); }
    /// n_ID^RS of those sequences, -1 to 65535; -1, without `standard_rules` 0 too, stands for the cell's identity.
    bool set_n_rs_id(int id) { return _target().set_n_rs_id(id); }
    int get_n_rs_id() const { return _target().get_n_rs_id(); }

    /// DMRS ports that have PTRS, such as "0,2". Others are left out, and the first DMRS port stands in for none.
    bool set_ptrs_port(const std::string& text) { return _target().set_ptrs_port(text); }
    std::string get_ptrs_port() const { return _target().get_ptrs_port(); }
    /// Samples of a PTRS group in a transform-precoded symbol (clause 6.4.1.2.2.2); eight groups have four.
    bool set_n_ptrs_group_sample(lib_nr_sch_ptrs_group_sample_t samples)
    {
        return _target().set_n_ptrs_group_sample(samples);
    }
    lib_nr_sch_ptrs_group_sample_t get_n_ptrs_group_sample() const { return _target().get_n_ptrs_group_sample(); }
    /// PTRS groups of such a symbol.
    bool set_n_ptrs_group(lib_nr_sch_ptrs_group_t groups) { return _target().set_n_ptrs_group(groups); }
    lib_nr_sch_ptrs_group_t get_n_ptrs_group() const { return _target().get_n_ptrs_group(); }
    /// n_ID of those samples, at most 65535.
    bool set_n_ptrs_id(unsigned int id) { return _target().set_n_ptrs_id(id); }
    unsigned int get_n_ptrs_id() const { return _target().get_n_ptrs_id(); }

private:
    template <class tested_t>
    friend struct vek::test_peer_t;

    lib_nr_sch_configure_manager_t& _get_sch_manager() const override;
    bwp_t _get_bwp() const override;
    lib_nr_ul_sch_configure_manager_t& _get_pusch_manager() const;
    lib_nr_ul_sch_configure_manager_t& _target() { return _get_pusch_manager(); }
    const lib_nr_ul_sch_configure_manager_t& _target() const { return _get_pusch_manager(); }
};

} // namespace vek::nr_mod_lib

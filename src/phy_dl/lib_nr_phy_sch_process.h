#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_phy_observer.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_deviation.h"
#include "phy_common/lib_nr_ldpc_coding.h"
#include "phy_common/lib_nr_mcs_table_type.h"
#include "phy_common/lib_nr_modulator.h"
#include "phy_common/lib_nr_packed_code_word.h"
#include "phy_common/lib_nr_pn_seq.h"
#include "phy_common/lib_nr_sch_type.h"

#include <array>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_sch_configure_manager_t;
class lib_nr_waveform_configure_manager_t;
struct lib_nr_dmrs_position_row_t;
struct lib_nr_mcs_t;

/// What the cells of a shared channel carry, as runs; those of the data in the order of the mapping.
struct lib_nr_sch_cells_t
{
    std::vector<lib_nr_resource_run_t> data;
    std::vector<lib_nr_resource_run_t> dmrs;
    std::vector<lib_nr_resource_run_t> silent; ///< kept free for DMRS of other ports
    std::vector<lib_nr_resource_run_t> ptrs;   ///< one cell each

    void clear();
};

/// The common body of PDSCH and PUSCH generation. For one slot it turns settings into modulation symbols (TS 38.212
/// clauses 7.2 and 6.2, TS 38.211 clauses 7.3.1 and 6.3.1) and the DMRS and PTRS beside them; a derived class says
/// which resource elements the channel has and writes them.
///
/// One object serves many channels: `set_waveform_config` binds it to one, then it runs slot by slot. Beside the
/// settings only the state of the payload's PN sequence outlives a slot.
class NR_MOD_LIB_EXPORT lib_nr_phy_sch_process_t : public lib_nr_ruled_t, public lib_nr_explaining_t
{
public:
    using bits_t = std::vector<unsigned char>;
    using rb_list_t = std::vector<unsigned int>;
    using symbols_t = std::vector<std::complex<double>>;
    using layers_t = std::vector<symbols_t>;

    virtual ~lib_nr_phy_sch_process_t() = default;

    /// Takes an entry of a carrier's list, for the pass of a numerology, and starts the PN sequence anew. Always true.
    virtual bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int channel,
                                     const lib_nr_waveform_configure_manager_t& waveform) = 0;
    /// The settings that both directions have: the managers' values, an identity that none is set for as the carrier's
    /// cell index, the BWP of the carrier's direction. Always true.
    bool set_waveform_config_sch(unsigned int carrier, unsigned int numerology,
                                 const lib_nr_sch_configure_manager_t& channel,
                                 const lib_nr_waveform_configure_manager_t& waveform);
    /// Number of layers from the ports; bits per symbol, code rate and modulation from the MCS. A table that is none of
    /// the downlink's four prints a line and `TABLE_5_1_3_1_1` stands in; a row without a modulation prints a line and
    /// gives QPSK.
    virtual void update_read_only_parament();

    /// Generates a slot of the frame and writes it. Reads the marks of the view, so it comes behind that. Always true.
    bool sch_encode_process(unsigned int slot);
    /// Marks the channel's cells in a slot of the frame, or writes symbols on the resource blocks found by the last
    /// mark. True but for a mode that is none, which prints a line.
    bool phy_sch_remap(unsigned int slot, lib_nr_remap_mode_t mode);

    /// State of the payload's PN generator, all ones at the start of a sequence.
    void set_pn_seed(unsigned int seed) { m_pn_seed = seed; }
    unsigned int get_pn_seed() const { return m_pn_seed; }
    unsigned int get_layers_num() const { return m_layers; }
    double get_target_code_rate() const { return m_target_code_rate; }
    lib_nr_modulation_type_t get_modulation() const { return m_modulation; }
    double get_dmrs_power() const { return m_dmrs_power; }
    /// Whether the last slot that was generated has symbols for DMRS.
    bool has_dmrs() const { return !m_dmrs_symbols.empty(); }

    // The settings one by one, within the limits that the managers keep to; stored as they are, but for a value that is
    // none of its enumeration's, which counts as the first where nothing else is told. An identity is the one in use.

    void set_power_boosting(double power) { m_power_boosting = power; }
    void set_rnti(unsigned int rnti) { m_rnti = rnti; }
    void set_nid(unsigned int nid) { m_nid = nid; }
    /// One entry per layer; none counts as port 0.
    void set_dmrs_port(const std::vector<unsigned int>& ports)
    {
        m_dmrs_port = ports.empty() ? std::vector<unsigned int>{0} : ports;
    }
    /// The first of the ports counts. None, as any value that is no port, prints a line and counts as port 0.
    void set_antenna_port(const std::vector<lib_nr_antenna_port_t>& ports);
    void set_cdm_groups_without_data_num(unsigned int number) { m_cdm_groups_without_data_num = number; }
    void set_first_symbol(unsigned int symbol) { m_first_symbol = symbol; }
    void set_symbol_num(unsigned int number) { m_symbol_num = number; }
    void set_bwp_id(unsigned int id) { m_bwp_id = id; }
    void set_ra_type(lib_nr_sch_ra_type_t type) { m_ra_type = type; }
    void set_rbg_size(lib_nr_sch_rbg_size_t size) { m_rbg_size = number_of(size); }
    void set_rbg_bitmap(const std::vector<unsigned int>& bitmap) { m_rbg_bitmap = bitmap; }
    void set_rb_offset(unsigned int rb_offset) { m_rb_offset = rb_offset; }
    void set_rb_num(unsigned int rb_num) { m_rb_num = rb_num; }
    void set_enable_coding(bool enable) { m_enable_coding = enable; }
    void set_mcs_table(mcs_table_t table) { m_mcs_table = table; }
    void set_mcs(unsigned int mcs) { m_mcs = mcs; }
    void set_x_overhead(lib_nr_sch_x_overhead_t overhead) { m_x_overhead = number_of(overhead); }
    void set_data_source(lib_nr_pn_seq_t source) { m_data_source = source; }
    /// The eight low bits of each entry count.
    void set_data_source_custom(const std::vector<unsigned int>& bits)
    {
        m_data_source_custom = {bits.begin(), bits.end()};
    }
    void set_rv(unsigned int rv) { m_rv = rv; }
    void set_enable_dmrs_downlink_r16(bool enable) { m_enable_dmrs_downlink_r16 = enable; }
    void set_nscid(unsigned int nscid) { m_nscid = nscid; }
    void set_nid0(unsigned int nid) { m_nid0 = nid; }
    void set_nid1(unsigned int nid) { m_nid1 = nid; }
    void set_dmrs_power(double power) { m_dmrs_power = power; }
    void set_dmrs_configuration_type(lib_nr_sch_dmrs_configuration_type_t type) { m_dmrs_configuration_type = type; }
    void set_dmrs_length(lib_nr_sch_dmrs_length_t length) { m_dmrs_length = length; }
    void set_dmrs_additional_position(lib_nr_sch_dmrs_additional_position_t position)
    {
        m_dmrs_additional_position = position;
    }
    void set_mapping_type(lib_nr_sch_dmrs_mapping_type_t type) { m_mapping_type = type; }
    /// `l0` counts where the position is that of the MIB. A position that is none prints a line and changes nothing.
    void set_dmrs_type_a_position(lib_nr_sch_dmrs_type_a_position_t position, unsigned int l0);
    /// By the own rules it changes only how much of the DMRS sequence is generated, which is indexed from the grid's
    /// first resource block; by the standard's that of a PDSCH counts from the BWP's where the reference is the PRB.
    void set_dmrs_mapping_ref(lib_nr_sch_dmrs_mapping_ref_t reference) { m_dmrs_mapping_ref = reference; }
    void set_enable_ptrs(bool enable) { m_enable_ptrs = enable; }
    void set_ptrs_power(double power) { m_ptrs_power = power; }
    void set_ptrs_freqency_density(lib_nr_sch_ptrs_frequency_density_size_t density)
    {
        m_ptrs_frequency_density = number_of(density);
    }
    void set_ptrs_time_density(lib_nr_sch_ptrs_time_density_t density) { m_ptrs_time_density = number_of(density); }
    /// At most 3.
    void set_ptrs_re_offset(unsigned int offset) { m_ptrs_re_offset = offset < 3 ? offset : 3; }
    void set_symbol_per_slot(unsigned int symbols) { m_symbol_per_slot = symbols; }
    void set_bwp_rb_start(unsigned int rb_start) { m_bwp_rb_start = rb_start; }
    void set_bwp_rb_num(unsigned int rb_num) { m_bwp_rb_num = rb_num; }

protected:
    lib_nr_phy_sch_process_t() = default;
    lib_nr_phy_sch_process_t(const lib_nr_phy_sch_process_t&) = default;
    lib_nr_phy_sch_process_t& operator=(const lib_nr_phy_sch_process_t&) = default;

    // The steps that the directions do differently.

    /// The DMRS sequences of a port's CDM group, all DMRS symbols of the slot one after the other, unless the slot has
    /// them already (TS 38.211 clause 7.4.1.1.1).
    virtual void _phy_sch_rs_generation(unsigned int port, unsigned int slot);
    /// Counts the bits G that the slot's cells hold.
    virtual void _phy_sch_caculate_g(unsigned int port, unsigned int slot) = 0;
    virtual void _phy_sch_channel_coding_rate_match();
    /// False and a printed line where there are no bits; `out` stays.
    virtual bool _phy_sch_scrambling(const bits_t& in, bits_t& out, unsigned int codeword);
    virtual void _phy_sch_precoding(const layers_t& in, layers_t& out);
    virtual void _phy_sch_view_re_map(unsigned int slot, const rb_list_t& rb_list) = 0;
    virtual void _phy_sch_encode_re_map(unsigned int port, unsigned int slot, const rb_list_t& rb_list) = 0;
    /// Symbols of the slot that hold DMRS (TS 38.211 clause 7.4.1.1.2).
    virtual void _phy_sch_dmrs_time_domain_allocation(std::vector<unsigned int>& symbols);
    /// Lists the RBs, counted from the grid's first, in the order of the mapping.
    virtual void _phy_sch_rb_index() = 0;
    /// Subcarriers of the grid that hold PTRS of a port, ascending (TS 38.211 clause 7.4.1.2.2). False and none where
    /// the port has no PTRS.
    virtual bool _phy_sch_ptrs_re_index_generation(unsigned int port, std::vector<unsigned int>& subcarriers);

    // The chain from payload to symbols.

    /// A code word from its payload to its symbols, in packed words.
    void _phy_sch_codeword(unsigned int codeword);
    /// The same by the operations on one bit per byte, one after the other, which the packed words stand in for.
    void _phy_sch_codeword_by_bytes(unsigned int codeword);
    /// Tells of the code word that was made of the packed payload, by what its symbols hold.
    void _explain_codeword(unsigned int payload_bits, const lib_nr_packed_code_word_t::settings_t& settings,
                           const std::vector<std::uint16_t>& symbols);
    /// Tells the numbers that the channel goes by.
    void _explain_figures();
    /// Without resource blocks nothing is sent, and nothing is told of it.
    bool _explains() const { return m_explanation && !m_rb_list.empty(); }
    /// The points of a code word's symbols, times an amplitude.
    std::vector<std::complex<double>> _points(double amplitude) const;
    /// Initial value of the scrambling sequence.
    virtual unsigned int _scrambling_c_init(unsigned int codeword) const;
    /// An overhead above the resource elements that there are counts as all of them.
    void _phy_sch_tbs();
    void _phy_sch_payload_generation(unsigned int length);
    template <class generate_t>
    void _draw_payload(generate_t generate);
    void _phy_sch_ldpc_base_graph_selection();
    void _phy_sch_block_segmentation_and_crc();
    /// Codes the code blocks and matches them to G bits.
    void _code_and_match(unsigned int i_lbrm);
    void _phy_sch_layer_mapping();
    static unsigned int _get_codewords_from_layer(unsigned int layers) { return layers > 4 ? 2 : 1; }
    /// Forgets what the slot's symbols were made of.
    void _clear_slot();
    void _apply_mcs(const lib_nr_mcs_t& mcs);
    /// An identity as it is set, or the cell's where none is: -1, by the own rules 0 too.
    unsigned int _identity_in_use(int identity, unsigned int cell) const;
    static bool _scramble(unsigned int c_init, const bits_t& in, bits_t& out);

    // Reference signals.

    bool _is_type_1() const { return m_dmrs_configuration_type != LIB_NR_DMRS_CFG_TYPE2; }
    bool _is_double_symbol() const { return m_dmrs_length == LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL; }
    /// Values of a DMRS sequence in one RB of one symbol.
    unsigned int _dmrs_per_rb() const { return _is_type_1() ? 6 : 4; }
    unsigned int _cdm_group_of(unsigned int port) const { return _is_type_1() ? port / 2 % 2 : port % 6 / 2; }
    /// Length of the DMRS sequence of one symbol.
    unsigned int _dmrs_sequence_length() const;
    /// The value in a DMRS sequence that belongs to a subcarrier of the grid, and by which a PTRS goes too.
    unsigned int _dmrs_index_of(unsigned int subcarrier) const;
    /// The symbols of a row of the position tables; none for no row.
    void _list_dmrs_symbols(const lib_nr_dmrs_position_row_t* row, std::vector<unsigned int>& symbols) const;
    /// Symbols of the slot that hold PTRS, given those that hold DMRS (TS 38.211 clause 7.4.1.2.2).
    void _get_ptrs_symbol_position(const std::vector<unsigned int>& dmrs_symbols,
                                   std::vector<unsigned int>& symbols) const;
    /// Appends values of a DMRS sequence times the cover codes of a port, TS 38.211 Tables 7.4.1.1.2-1 and 7.4.1.1.2-2:
    /// those of one symbol, by its position in the list of DMRS symbols.
    void _append_covered_dmrs(unsigned int port, std::size_t position, const std::complex<double>* sequence,
                              std::size_t length, symbols_t& values) const;

    // Resource elements.

    /// Amplitude of what is sent with a power of its own, in dB beside that of the channel.
    double _amplitude_of(double power) const;
    /// RBs of resource allocation type 0, TS 38.214 clause 5.1.2.2.1: the bitmap's RBGs, which count from multiples of
    /// their size.
    void _phy_sch_rb_index_type_0();
    /// Appends the RBs of a list in one symbol of the frame, moved by `shift` RBs, as runs of neighbours.
    static void _append_rb_runs(const rb_list_t& rb_list, unsigned int symbol, int shift,
                                std::vector<lib_nr_resource_run_t>& runs);
    /// How the CDM groups lie: each has `width` of every `period` subcarriers, one group after the other.
    struct dmrs_comb_t
    {
        unsigned int period;
        unsigned int width;
    };
    dmrs_comb_t _dmrs_comb() const { return _is_type_1() ? dmrs_comb_t{2, 1} : dmrs_comb_t{6, 2}; }
    /// Subcarriers of a period that carry no data in a DMRS symbol.
    unsigned int _subcarriers_without_data() const;
    /// Appends the cells of a run of whole RBs that stand at `first` to `end` - 1 of a period.
    void _append_comb_part(const lib_nr_resource_run_t& rbs, unsigned int first, unsigned int end,
                           std::vector<lib_nr_resource_run_t>& runs) const;
    /// Divides a run of whole RBs in a DMRS symbol by what its cells carry, the DMRS being those of a CDM group.
    void _split_dmrs_symbol(const lib_nr_resource_run_t& rbs, unsigned int group, lib_nr_sch_cells_t& cells) const;
    /// Divides a run of whole RBs in a PTRS symbol, given the ascending subcarriers that hold PTRS.
    static void _split_ptrs_symbol(const lib_nr_resource_run_t& rbs, const std::vector<unsigned int>& ptrs_subcarriers,
                                   lib_nr_sch_cells_t& cells);

    // Settings, plain values.
    double m_power_boosting = 0.0;
    unsigned int m_rnti = 1;
    unsigned int m_nid = 0;
    std::vector<unsigned int> m_dmrs_port{0};
    unsigned int m_layers = 1; ///< read-only
    unsigned int m_antenna_port = 0;
    unsigned int m_cdm_groups_without_data_num = 1;
    unsigned int m_first_symbol = 0;
    unsigned int m_symbol_num = 14;
    unsigned int m_bwp_id = 0;
    lib_nr_sch_ra_type_t m_ra_type = LIB_NR_SCH_RA_TYPE1;
    unsigned int m_rbg_size = 16; ///< in RBs
    std::vector<unsigned int> m_rbg_bitmap;
    unsigned int m_rb_offset = 0;
    unsigned int m_rb_num = 1;
    bool m_enable_coding = true;
    mcs_table_t m_mcs_table = TABLE_5_1_3_1_1;
    unsigned int m_mcs = 0;
    unsigned int m_x_overhead = 0; ///< resource elements of an RB
    double m_tb_scaling = 1.0;
    double m_target_code_rate = 0.0;                                ///< read-only
    lib_nr_modulation_type_t m_modulation = LIB_NR_MODULATION_QPSK; ///< read-only
    lib_nr_pn_seq_t m_data_source = LIB_NR_PN9;
    bits_t m_data_source_custom;
    unsigned int m_rv = 0;
    bool m_enable_dmrs_downlink_r16 = false;
    unsigned int m_nscid = 0;
    unsigned int m_nid0 = 0;
    unsigned int m_nid1 = 0;
    double m_dmrs_power = 0.0;
    lib_nr_sch_dmrs_configuration_type_t m_dmrs_configuration_type = LIB_NR_DMRS_CFG_TYPE1;
    lib_nr_sch_dmrs_length_t m_dmrs_length = LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL;
    lib_nr_sch_dmrs_additional_position_t m_dmrs_additional_position = LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0;
    lib_nr_sch_dmrs_mapping_type_t m_mapping_type = LIB_NR_DMRS_MAPPING_TYPEA;
    unsigned int m_l0 = 2;
    lib_nr_sch_dmrs_mapping_ref_t m_dmrs_mapping_ref = LIB_NR_DMRS_MAPPING_REF_CRB;
    bool m_enable_ptrs = false;
    double m_ptrs_power = 0.0;
    unsigned int m_ptrs_frequency_density = 2; ///< K
    unsigned int m_ptrs_time_density = 1;      ///< L
    unsigned int m_ptrs_re_offset = 0;
    unsigned int m_symbol_per_slot = 14;
    unsigned int m_bwp_rb_start = 0;
    unsigned int m_bwp_rb_num = 273;
    unsigned int m_dmrs_reference_rb = 0; ///< of the grid, that the DMRS sequence counts from

    // The slot in work.
    std::map<unsigned int, symbols_t> m_dmrs_sequences; ///< by CDM group
    lib_nr_packed_code_word_t m_code_word;
    std::vector<std::uint64_t> m_packed_payload;
    std::array<std::vector<std::uint16_t>, 2> m_codeword_numbers; ///< symbols as numbers, by code word
    bits_t m_payload;
    lib_nr_ldpc_base_graph_type_t m_base_graph = LIB_NR_LDPC_BASE_GRAPH_1;
    std::vector<bits_t> m_code_blocks;
    std::vector<bits_t> m_encoded_blocks;
    std::vector<bits_t> m_rate_matched_blocks;
    bits_t m_coded_bits;
    bits_t m_scrambled_bits;
    layers_t m_codeword_symbols{2};
    layers_t m_layer_symbols;
    layers_t m_precoded_symbols;
    unsigned int m_q_m = 2;
    unsigned int m_tbs = 0;
    unsigned int m_g = 0;
    unsigned int m_pn_seed = std::numeric_limits<unsigned int>::max();
    std::vector<unsigned int> m_dmrs_symbols;
    rb_list_t m_rb_list;
};

} // namespace vek::nr_mod_lib

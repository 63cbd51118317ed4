#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_phy_observer.h"
#include "phy_common/lib_nr_deviation.h"
#include "phy_common/lib_nr_failing.h"
#include "phy_common/lib_nr_uci_layout.h"

#include <array>
#include <complex>
#include <cstdint>
#include <memory>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_carrier_configure_manager_t;
class lib_nr_channel_resource_manager_t;
struct lib_nr_resource_run_t;
class lib_nr_ul_bwp_configure_manager_t;
class lib_nr_ul_pucch_configure_manager_t;

/// What the PUCCH formats share, TS 38.211 clause 6.3.2: sequence groups and cyclic shifts, the size of the resource
/// and whether the UCI fits, interlaces, and the places of the symbols in the frame. Everything reads the PUCCH that
/// the two pointers show; the configuration must outlive the call.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pucch_base_t : public lib_nr_ruled_t, public lib_nr_failing_t
{
public:
    /// Values of a symbol: RB by RB, of an interlaced PUCCH in the order of its position list.
    using symbol_row_t = std::vector<std::complex<double>>;
    /// Symbols of a slot, the PUCCH's first one first.
    using slot_rows_t = std::vector<symbol_row_t>;
    /// The allocated slots, in the order of their list.
    using slots_t = std::vector<slot_rows_t>;
    /// The payload map: a row per symbol of the frame, a value per subcarrier.
    using payload_grid_t = std::vector<std::vector<std::complex<double>>>;

    /// What the sequences of one slot are made from.
    struct lib_nr_pucch_low_papr_seq_param_t
    {
        std::array<unsigned int, 2> u{}; ///< sequence group of each hop
        std::array<unsigned int, 2> v{}; ///< sequence number of each hop
        std::array<double, 14> alpha{};  ///< cyclic shift in radians, by symbol of the slot
        unsigned int delta = 0;
    };

    virtual ~lib_nr_ul_phy_pucch_base_t() = default;

    /// Sequence groups, numbers and cyclic shifts of a slot of the frame, clause 6.3.2.2.
    lib_nr_pucch_low_papr_seq_param_t get_basic_sequence_param(unsigned int slot, unsigned int m_cs, unsigned int m0,
                                                               unsigned int m_int) const;
    /// Where the slots that are made next are told, each in an explanation of its own; null for nowhere, as it is by
    /// default.
    void set_explanation(std::vector<lib_nr_explanation_t>* explanations) { m_explanations = explanations; }
    /// E in bits, as the check of the payload counts it: pi/2-BPSK halves it for format 2 too.
    unsigned int get_total_length_after_rate_matching() const;

protected:
    /// Sizes in bits of the UCI parts, of which `second` is CSI part 2.
    struct uci_size_t
    {
        std::uint64_t first = 0;
        std::uint64_t second = 0;
    };

    void _set_pucch(const lib_nr_carrier_configure_manager_t& carrier, unsigned int pucch_index);
    const lib_nr_ul_bwp_configure_manager_t& _bwp() const;
    unsigned int _get_slot_symbols() const;
    /// Place of a slot in the list of the allocated ones; 0 for one that is not there.
    unsigned int _get_slot_index(unsigned int slot) const;
    /// An identifier of the PUCCH, the carrier's cell index for -1.
    unsigned int _id_or_cell_index(int id) const;
    double _get_dmrs_amplitude() const;
    /// Whether a row belongs to the second hop of its slot.
    bool _is_second_hop(unsigned int row, unsigned int row_count) const;

    /// The explanation of a slot in work; null where nobody asks.
    lib_nr_explanation_t* _explanation_of(unsigned int slot) const;

    // Sequences.

    std::array<unsigned int, 2> _get_group_hopping_value(unsigned int n_id, unsigned int slot) const;
    std::array<unsigned int, 2> _get_v_value(unsigned int n_id, unsigned int slot) const;
    /// As many values as the slot has symbols.
    std::vector<unsigned int> _get_ncs_value(unsigned int n_id, unsigned int slot) const;

    // Interlaces.

    /// The RBs of the carrier, the last one included, in which interlaces lie: the RB set, or the BWP where the
    /// numerology has no guard bands. False and a printed line for an RB set outside the BWP; std::out_of_range for one
    /// that is gone.
    bool _get_interlace_range(unsigned int& first, unsigned int& last) const;
    /// The RBs of the carrier that an interlaced PUCCH takes, none for another. False and a printed line where there
    /// are too few, or both interlaces are the same.
    bool _get_interlace_position(std::vector<unsigned short>& out) const;
    /// n_IRB, the number of an RB within its interlace, which counts from the start of the BWP.
    unsigned int _get_number_in_interlace(unsigned int rb) const;
    /// RBs of the resource; where an interlace fails, a printed line and those of a PUCCH without one.
    unsigned int _get_rb_num() const;

    // Sizes, and their check.

    /// DMRS symbols of format 3 or 4, counted from the first of the PUCCH.
    const std::vector<unsigned int>& _get_dmrs_symbol_postion() const;
    unsigned int _get_dmrs_symbol_num() const;
    /// How much an orthogonal cover code spreads a symbol of formats 2 to 4: always format 4, others on one interlace.
    unsigned int _get_occ() const;

    /// Sizes of HARQ-ACK, SR and CSI part 1 together, and of CSI part 2; a field that is switched off has none.
    uci_size_t _get_uci_size() const;
    /// Shares of E of the UCI parts. All is the first's where there is one part only.
    lib_nr_uci_split_t _split(unsigned int e_total, unsigned int qm) const;
    /// The same as the check of the payload counts them.
    void _get_uci_info(unsigned int& e_total, unsigned int& e_uci1, unsigned int& e_uci2) const;
    /// Whether `e` coded bits can carry `a` bits. Prints the sizes of a polar code, and why not.
    bool _is_valid_uci(unsigned int a, unsigned int e) const;
    /// Whether the resource can carry the payload; always for formats 0 and 1 and without channel coding. A part of
    /// more than 2026 bits, the most that two code blocks hold, never fits.
    bool _check_payload_setting() const;

    // Where the symbols go.

    /// Whether all of a row is DMRS, TS 38.211 clauses 6.4.1.3.1 and 6.4.1.3.3; format 2 has its between
    /// the data.
    bool _is_dmrs_row(unsigned int row) const;
    /// Adds the slots, times the power, into the payload map; std::out_of_range where cells lie outside, behind those
    /// inside.
    bool _deal_physical_resource_mapping(const slots_t& slots, payload_grid_t& grid) const;
    /// Marks the cells of all slots in the resource map. False and printed lines where the payload does not fit, and
    /// for cells that are taken or outside.
    bool _deal_physical_resource_mapping_for_ui(lib_nr_channel_resource_manager_t& grid) const;

    const lib_nr_carrier_configure_manager_t* m_carrier = nullptr;
    const lib_nr_ul_pucch_configure_manager_t* m_pucch = nullptr;
    std::vector<lib_nr_explanation_t>* m_explanations = nullptr;

private:
    unsigned int _get_checked_modulation_order() const;
    bool _append_interlace(unsigned int interlace, unsigned int rb_number_setting, unsigned int first,
                           unsigned int last, std::vector<unsigned short>& out) const;
    unsigned int _get_first_rb(bool is_second_hop) const;
    bool _is_slot_moved(std::size_t place, bool own) const;
    std::vector<lib_nr_resource_run_t> _list_runs(unsigned int slot, unsigned int row, bool is_slot_moved,
                                                  const std::vector<unsigned short>& positions) const;
    void _explain_row(unsigned int row, const std::vector<lib_nr_resource_run_t>& runs,
                      lib_nr_explanation_t& explanation) const;
    bool _mark(const std::vector<unsigned int>& slots, unsigned int first_row, unsigned int row_count,
               bool is_second_hop, const char* conflict_line, lib_nr_channel_resource_manager_t& grid) const;
    bool _mark_interlaced(const std::vector<unsigned int>& slots, lib_nr_channel_resource_manager_t& grid) const;

    std::shared_ptr<lib_nr_ul_pucch_configure_manager_t> m_pucch_of_known_length;
};

} // namespace vek::nr_mod_lib

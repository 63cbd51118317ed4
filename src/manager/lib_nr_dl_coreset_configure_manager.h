#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

enum lib_nr_dl_dci_cce2reg_mapping_type_t : std::uint32_t
{
    LIB_NR_CORSET_INTERLEAVE = 0,
    LIB_NR_CORSET_NO_INTERLEAVE = 1,
};

/// The value is the size.
enum lib_nr_dl_dci_reg_bundle_size_t : std::uint32_t
{
    LIB_NR_DCI_REG_BUNDLE_SIZE_2 = 2,
    LIB_NR_DCI_REG_BUNDLE_SIZE_3 = 3,
    LIB_NR_DCI_REG_BUNDLE_SIZE_6 = 6,
};
inline constexpr std::array k_dci_reg_bundle_sizes = {LIB_NR_DCI_REG_BUNDLE_SIZE_2, LIB_NR_DCI_REG_BUNDLE_SIZE_3,
                                                      LIB_NR_DCI_REG_BUNDLE_SIZE_6};

/// The value is the size.
enum lib_nr_dl_dci_interleaver_size_t : std::uint32_t
{
    LIB_NR_DCI_INTERLEAVER_SIZE_2 = 2,
    LIB_NR_DCI_INTERLEAVER_SIZE_3 = 3,
    LIB_NR_DCI_INTERLEAVER_SIZE_6 = 6,
};
inline constexpr std::array k_dci_interleaver_sizes = {LIB_NR_DCI_INTERLEAVER_SIZE_2, LIB_NR_DCI_INTERLEAVER_SIZE_3,
                                                       LIB_NR_DCI_INTERLEAVER_SIZE_6};

enum lib_nr_coreset_precoder_granularity_t : std::uint32_t
{
    REG_BUNDLE_SIZE = 0,
    CORESET_SIZE = 1,
};

/// One control resource set of a downlink BWP (TS 38.211 clause 7.3.2.2): which groups of 6 RBs it takes, how many
/// symbols it lasts and how its CCEs map to REGs, kept in a state that the PDCCH can be mapped to. With interleaving
/// the number of its RBs is a multiple of bundle size times interleaver size.
class NR_MOD_LIB_EXPORT lib_nr_dl_coreset_configure_manager_t
{
public:
    lib_nr_dl_coreset_configure_manager_t(unsigned int bwp_rb_size, unsigned int id);

    /// Everything but the id back to its default: all groups of the BWP, one symbol, no interleaving.
    void init(unsigned int bwp_rb_size);

    /// 1 to 11, clamped.
    bool set_current_coreset_id(unsigned int id);
    unsigned int get_current_coreset_id() const { return m_coreset_id; }
    /// Clamped to -1 to 5.
    bool set_rb_offset(int rb_offset);
    int get_rb_offset() const { return m_rb_offset; }

    /// A bit per group of 6 RBs, the lowest first, as "110100"; cut or padded with 0 to the groups of the BWP. Without
    /// any 1 the first group is taken. A bitmap that interleaving cannot use gives way to the one before, and if that
    /// does not fit either, to the shortest that does. An empty text empties the bitmap.
    bool set_fd_resources(const std::string& text, unsigned int bwp_rb_size);
    const std::string& get_fd_resources() const { return m_fd_resources_text; }
    const std::vector<int>& get_fd_resources_for_lib() const { return m_fd_resources; }

    /// Symbols, clamped to 1 to 3; a bundle size of 3 needs 3 symbols and becomes 2 otherwise.
    bool set_duration(unsigned int duration);
    unsigned int get_duration() const { return m_duration; }
    bool set_cce2reg_mapping_type(lib_nr_dl_dci_cce2reg_mapping_type_t type);
    lib_nr_dl_dci_cce2reg_mapping_type_t get_cce2reg_mapping_type() const { return m_cce2reg_mapping_type; }
    /// 3 becomes 2 unless the CORESET lasts 3 symbols.
    bool set_reg_bundle_size(lib_nr_dl_dci_reg_bundle_size_t size);
    lib_nr_dl_dci_reg_bundle_size_t get_reg_bundle_size() const { return m_reg_bundle_size; }
    std::vector<lib_nr_dl_dci_reg_bundle_size_t> get_available_reg_bundle_size() const;
    bool set_interleaver_size(lib_nr_dl_dci_interleaver_size_t size);
    lib_nr_dl_dci_interleaver_size_t get_interleaver_size() const { return m_interleaver_size; }
    /// At most 274.
    bool set_shift_idx(unsigned int shift_idx);
    unsigned int get_shift_idx() const { return m_shift_idx; }
    /// A plain setting: with one antenna port the signal does not depend on it.
    bool set_precoder_granularity(lib_nr_coreset_precoder_granularity_t granularity);
    lib_nr_coreset_precoder_granularity_t get_precoder_granularity() const { return m_precoder_granularity; }

private:
    bool _is_fd_resource_valid(const std::vector<int>& bitmap) const;
    std::vector<int> _shortest_valid_bitmap(std::size_t groups) const;
    unsigned int _get_reg_bundle_size() const;
    unsigned int _get_interleaver_size() const;
    void _drop_bundle_of_three();
    void _apply_bitmap_again();
    static unsigned int _gcd(unsigned int a, unsigned int b);
    static unsigned int _lcm(unsigned int a, unsigned int b);

    unsigned int m_coreset_id;
    int m_rb_offset = 0;
    std::vector<int> m_fd_resources;
    unsigned int m_duration = 1;
    lib_nr_dl_dci_cce2reg_mapping_type_t m_cce2reg_mapping_type = LIB_NR_CORSET_NO_INTERLEAVE;
    lib_nr_dl_dci_reg_bundle_size_t m_reg_bundle_size = LIB_NR_DCI_REG_BUNDLE_SIZE_6;
    lib_nr_dl_dci_interleaver_size_t m_interleaver_size = LIB_NR_DCI_INTERLEAVER_SIZE_2;
    unsigned int m_shift_idx = 0;
    lib_nr_coreset_precoder_granularity_t m_precoder_granularity = REG_BUNDLE_SIZE;
    std::string m_fd_resources_text;
    unsigned int m_bwp_rb_size = 0;
};

} // namespace vek::nr_mod_lib

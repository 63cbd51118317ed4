#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_prach_type.h"

namespace vek::nr_mod_lib
{

/// What decides which sequence and cyclic shift a preamble index means.
struct prach_preamble_setting_t
{
    prach_format_t format = prach_format_0;
    prach_lra_type_t lra = PRACH_LRA_839;
    prach_restricted_set_type_t restricted_set = UNRESTRICTED;
    unsigned int zero_correlation_zone = 0;
    /// Logical root sequence index that the first preamble starts from, below L_RA - 1.
    unsigned int sequence_index = 0;
    /// 0 to 63.
    unsigned int preamble_index = 0;
};

/// Root and cyclic shift of a preamble.
struct prach_preamble_t
{
    /// Logical index of the root sequence.
    unsigned int logical_index = 0;
    /// The root u.
    unsigned int u = 0;
    /// C_v, in samples of the sequence.
    unsigned int cyclic_shift = 0;
    /// False where no root of the whole table gives room for the preamble; the fields are then those of the last root.
    bool is_found = false;
};

/// Parameters of a restricted set for one root; -1 where d_u lies in no range that has any.
struct prach_restricted_parameters_t
{
    int n_shift = -1;
    int d_start = -1;
    int n_group = -1;
    int n_bar = -1;
    int d_start_2 = -1;
    int d_start_3 = -1;
    int n_shift_2 = -1;
    int n_shift_3 = -1;

    bool is_valid() const { return n_shift != -1 || d_start != -1 || n_group != -1 || n_bar != -1; }
};

/// From preamble index to root sequence and cyclic shift, TS 38.211 clause 6.3.3.1: preambles are numbered by rising
/// cyclic shift of a root, then by rising logical index of the root.
class NR_MOD_LIB_EXPORT lib_nr_prach_preamble_t
{
public:
    /// Walks the roots from the sequence index on, at most once round the table; a printed line where no root has room
    /// left.
    static prach_preamble_t get_preamble(const prach_preamble_setting_t& setting);

    /// d_u: with q the inverse of u modulo L_RA, q itself or L_RA - q, whichever is the smaller. 0 < u < L_RA.
    static unsigned int get_restrictedset_cyclic_shift(prach_lra_type_t lra, unsigned int u);
    /// A printed line and all -1 for N_CS -1; all -1 for N_CS 0 and where d_u lies in no range.
    static prach_restricted_parameters_t get_restricted_cyclic_shift_parameters(prach_lra_type_t lra,
                                                                                prach_restricted_set_type_t set,
                                                                                int ncs, unsigned int d_u);
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_deviation.h"

#include <complex>
#include <vector>

namespace vek::nr_mod_lib
{

/// Codebook precoder of the PUSCH, TS 38.211 clause 6.3.1.5: makes one stream per antenna port out of those of the
/// layers.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pre_coding_t : public lib_nr_ruled_t
{
public:
    using streams_t = std::vector<std::vector<std::complex<double>>>;

    void set_antenna_number(unsigned int number) { m_antenna_number = number; }
    /// Row of the table; one past its end counts as 0.
    void set_tpmi_index(unsigned int index) { m_tpmi_index = index; }
    void set_transfer_precoding(bool enable) { m_transfer_precoding = enable; }

    /// Picks the matrix for a number of layers. It stays as it was, and a line is printed, where the layers are not 1
    /// to 4 and where the antennas are not 2 or 4, or not 4 for three and four layers.
    void _updata_precoding_matrix(unsigned int layers);
    /// Replaces `out` by a stream per antenna, each as long as the first of `in`. A matrix that stayed and is too small
    /// leaves antennas silent, and so does a layer that ends early.
    void _ul_phy_pusch_pre_coding(const streams_t& in, streams_t& out);

private:
    unsigned int m_antenna_number = 4;
    unsigned int m_tpmi_index = 0;
    bool m_transfer_precoding = false;
    std::vector<std::complex<double>> m_matrix;
};

} // namespace vek::nr_mod_lib

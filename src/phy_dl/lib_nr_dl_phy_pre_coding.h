#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <vector>

namespace vek::nr_mod_lib
{

/// The downlink's precoder: each layer is an antenna port of its own, TS 38.211 clause 7.3.1.4.
class NR_MOD_LIB_EXPORT lib_nr_dl_phy_pre_coding_t
{
public:
    void set_port_number(unsigned int ports) { m_port_number = ports; }

    /// `out` becomes a copy of `in`, whatever the number of ports.
    void _dl_phy_pdsch_pre_coding(const std::vector<std::vector<std::complex<double>>>& in,
                                  std::vector<std::vector<std::complex<double>>>& out) const
    {
        out = in;
    }

private:
    unsigned int m_port_number = 1;
};

} // namespace vek::nr_mod_lib

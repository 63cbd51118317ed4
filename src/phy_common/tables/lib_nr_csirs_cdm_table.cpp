// TS 38.211 Tables 7.4.1.5.3-2 to 7.4.1.5.3-5, CSI-RS sequences of a CDM group: 15 rows.
#include "phy_common/tables/lib_nr_csirs_cdm_table.h"

namespace vek::nr_mod_lib
{

namespace
{

constexpr std::array<csirs_wf_wt_t, 4> csirs_cdm_tables = {{
    {{{{1, 0}}}, {{{1, 0, 0, 0}}}},
    {{{{1, 1}, {1, -1}}}, {{{1, 0, 0, 0}, {1, 0, 0, 0}}}},
    {{{{1, 1}, {1, -1}, {1, 1}, {1, -1}}}, {{{1, 1, 0, 0}, {1, 1, 0, 0}, {1, -1, 0, 0}, {1, -1, 0, 0}}}},
    {{{{1, 1}, {1, -1}, {1, 1}, {1, -1}, {1, 1}, {1, -1}, {1, 1}, {1, -1}}},
     {{{1, 1, 1, 1},
       {1, 1, 1, 1},
       {1, -1, 1, -1},
       {1, -1, 1, -1},
       {1, 1, -1, -1},
       {1, 1, -1, -1},
       {1, -1, -1, 1},
       {1, -1, -1, 1}}}},
}};

} // namespace

const csirs_wf_wt_t* get_csirs_cdm_table(csirs_cdm_type_t type)
{
    return type < csirs_cdm_tables.size() ? &csirs_cdm_tables[type] : nullptr;
}

} // namespace vek::nr_mod_lib

#include "phy_common/lib_nr_mcs.h"

#include "phy_common/tables/lib_nr_mcs_table.h"

#include <array>
#include <cstddef>

namespace vek::nr_mod_lib
{

namespace
{

constexpr double k_code_rate_unit = 1.0 / 1024;

/// By half of the bits per symbol.
constexpr std::array<lib_nr_modulation_type_t, 6> k_modulations = {
    LIB_NR_MODULATION_HALF_PI_BPSK, LIB_NR_MODULATION_QPSK,   LIB_NR_MODULATION_16QAM,
    LIB_NR_MODULATION_64QAM,        LIB_NR_MODULATION_256QAM, LIB_NR_MODULATION_1024QAM};

} // namespace

unsigned int get_last_mcs(mcs_table_t table)
{
    const lib_nr_mcs_table_t& rows = lib_nr_mcs_table(table);
    std::size_t last = rows.size() - 1;
    while (rows[last].qm == 0)
        --last;
    return static_cast<unsigned int>(last);
}

lib_nr_mcs_t read_mcs(mcs_table_t table, unsigned int index)
{
    const lib_nr_mcs_table_t& rows = lib_nr_mcs_table(table);
    if (index >= rows.size() || rows[index].qm == 0)
        return {2, 0.0, LIB_NR_MODULATION_QPSK, false, true};
    const lib_nr_mcs_row_t& row = rows[index];
    return {row.qm, row.code_rate_x1024 * k_code_rate_unit, k_modulations[row.qm / 2], row.qm == 1, false};
}

lib_nr_mcs_t read_mcs(mcs_table_t table, unsigned int index, lib_nr_modulation_type_t chosen)
{
    const lib_nr_mcs_t mcs = read_mcs(table, index);
    if (!mcs.is_open || chosen == mcs.modulation)
        return mcs;
    return {2, mcs.code_rate / 2.0, LIB_NR_MODULATION_QPSK, true, false};
}

} // namespace vek::nr_mod_lib

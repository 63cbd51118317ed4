// TS 38.211 Table 7.4.1.5.3-1, CSI-RS locations within a slot: 18 rows.
#include "phy_common/tables/lib_nr_csirs_location_table.h"

namespace vek::nr_mod_lib
{

namespace
{

using start_t = lib_nr_csirs_start_t;

constexpr start_t k0{0, 0}, k1{1, 0}, k2{2, 0}, k3{3, 0}, k4{4, 0}, k5{5, 0};
constexpr start_t l0{0, 0}, l1{1, 0};

// clang-format off
constexpr std::array<lib_nr_csirs_location_row_t, 18> csirs_location_rows = {{
    // Ports, density, cdm-Type, k-bar, l-bar, number of k', number of l', bits of the bitmap, k_i over f(i).
    { 1, {3},      NO_CDM,       {k0, k0+4, k0+8},         {l0},                 1, 1,  4, 1}, //  1
    { 1, {1, 0.5}, NO_CDM,       {k0},                     {l0},                 1, 1, 12, 1}, //  2
    { 2, {1, 0.5}, FD_CDM2,      {k0},                     {l0},                 2, 1,  6, 2}, //  3
    { 4, {1},      FD_CDM2,      {k0, k0+2},               {l0},                 2, 1,  3, 4}, //  4
    { 4, {1},      FD_CDM2,      {k0},                     {l0, l0+1},           2, 1,  6, 2}, //  5
    { 8, {1},      FD_CDM2,      {k0, k1, k2, k3},         {l0},                 2, 1,  6, 2}, //  6
    { 8, {1},      FD_CDM2,      {k0, k1},                 {l0, l0+1},           2, 1,  6, 2}, //  7
    { 8, {1},      CDM4_FD2_TD2, {k0, k1},                 {l0},                 2, 2,  6, 2}, //  8
    {12, {1},      FD_CDM2,      {k0, k1, k2, k3, k4, k5}, {l0},                 2, 1,  6, 2}, //  9
    {12, {1},      CDM4_FD2_TD2, {k0, k1, k2},             {l0},                 2, 2,  6, 2}, // 10
    {16, {1, 0.5}, FD_CDM2,      {k0, k1, k2, k3},         {l0, l0+1},           2, 1,  6, 2}, // 11
    {16, {1, 0.5}, CDM4_FD2_TD2, {k0, k1, k2, k3},         {l0},                 2, 2,  6, 2}, // 12
    {24, {1, 0.5}, FD_CDM2,      {k0, k1, k2},             {l0, l0+1, l1, l1+1}, 2, 1,  6, 2}, // 13
    {24, {1, 0.5}, CDM4_FD2_TD2, {k0, k1, k2},             {l0, l1},             2, 2,  6, 2}, // 14
    {24, {1, 0.5}, CDM8_FD2_TD4, {k0, k1, k2},             {l0},                 2, 4,  6, 2}, // 15
    {32, {1, 0.5}, FD_CDM2,      {k0, k1, k2, k3},         {l0, l0+1, l1, l1+1}, 2, 1,  6, 2}, // 16
    {32, {1, 0.5}, CDM4_FD2_TD2, {k0, k1, k2, k3},         {l0, l1},             2, 2,  6, 2}, // 17
    {32, {1, 0.5}, CDM8_FD2_TD4, {k0, k1, k2, k3},         {l0},                 2, 4,  6, 2}, // 18
}};
// clang-format on

} // namespace

const lib_nr_csirs_location_row_t* get_csirs_location_row(unsigned int row)
{
    return row >= 1 && row <= csirs_location_rows.size() ? &csirs_location_rows[row - 1] : nullptr;
}

} // namespace vek::nr_mod_lib

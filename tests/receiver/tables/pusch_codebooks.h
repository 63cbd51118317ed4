// TS 38.211 Tables 6.3.1.5-1 to -7 as this system has them by its own rules, where TPMI 10 and 11 of one layer on four
// antennas have changed places: a matrix a word, layers parted by slashes, an antenna port
// a character: 0, + (1), - (-1), j, J (-j).
#pragma once

#include <string_view>
#include <vector>

namespace nr_test
{

/// Matrices of one amplitude, by TPMI from the least on.
struct codebook_part_t
{
    unsigned int antennas;
    unsigned int layers;
    bool is_transform_precoded;
    unsigned int first_tpmi;
    double power;          ///< of an entry
    double standard_power; ///< the same as the standard has it
    std::string_view matrices;
};

// clang-format off
inline const std::vector<codebook_part_t> k_pusch_codebooks = {
    {2, 1, false, 0, 1.0 / 2, 1.0 / 2,
     "+0 0+ ++ +- +j +J"},
    {4, 1, true, 0, 1.0 / 4, 1.0 / 4,
     "+000 0+00 00+0 000+ +0+0 +0-0 +0j0 +0J0 0+0+ 0+0- 0+0J 0+0j +++- ++jj ++-+ ++JJ +j+j "
     "+jj+ +j-J +jJ- +-++ +-jJ +--- +-Jj +J+J +Jj- +J-j +JJ+"},
    {4, 1, false, 0, 1.0 / 4, 1.0 / 4,
     "+000 0+00 00+0 000+ +0+0 +0-0 +0j0 +0J0 0+0+ 0+0- 0+0J 0+0j ++++ ++jj ++-- ++JJ +j+j "
     "+jj- +j-J +jJ+ +-+- +-jJ +--+ +-Jj +J+J +Jj+ +J-j +JJ-"},
    {2, 2, false, 0, 1.0 / 2, 1.0 / 2,
     "+0/0+"},
    {2, 2, false, 1, 1.0 / 2, 1.0 / 4,
     "++/+- +j/+J"},
    {4, 2, false, 0, 1.0 / 4, 1.0 / 4,
     "+000/0+00 +000/00+0 +000/000+ 0+00/00+0 0+00/000+ 00+0/000+ +0+0/0+0J +0+0/0+0j "
     "+0J0/0+0+ +0J0/0+0- +0-0/0+0J +0-0/0+0j +0j0/0+0+ +0j0/0+0-"},
    {4, 2, false, 14, 1.0 / 2, 1.0 / 8,
     "++++/++-- ++jj/++JJ +j+j/+j-J +jj-/+jJ+ +-+-/+--+ +-jJ/+-Jj +J+J/+J-j +Jj+/+JJ-"},
    {4, 3, false, 0, 1.0 / 4, 1.0 / 4,
     "+000/0+00/00+0 +0+0/0+00/000+ +0-0/0+00/000+"},
    {4, 3, false, 3, 1.0 / 8, 1.0 / 12,
     "++++/+-+-/++-- ++jj/+-jJ/++JJ +-+-/++++/+--+ +-jJ/++jj/+-Jj"},
    {4, 4, false, 0, 1.0 / 4, 1.0 / 4,
     "+000/0+00/00+0/000+"},
    {4, 4, false, 1, 1.0 / 8, 1.0 / 8,
     "+0+0/+0-0/0+0+/0+0- +0j0/+0J0/0+0j/0+0J"},
    {4, 4, false, 3, 1.0 / 16, 1.0 / 16,
     "++++/+-+-/++--/+--+ ++jj/+-jJ/++JJ/+-Jj"},
};
// clang-format on

} // namespace nr_test

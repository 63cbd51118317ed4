// TS 38.211 Tables 6.3.1.5-1 to 6.3.1.5-7, PUSCH precoding matrices: 6, 28, 28, 3, 22, 7 and 5 rows.
#include "phy_common/tables/lib_nr_ul_precoding_matrix_table.h"

#include <cmath>
#include <initializer_list>
#include <string_view>

namespace vek::nr_mod_lib
{

namespace
{

constexpr double k_1_sqrt2 = 0.7071067811865475;
constexpr double k_1_2 = 0.5;
constexpr double k_1_sqrt8 = 0.35355339059327373;
constexpr double k_1_4 = 0.25;

std::complex<double> entry(char sign, double amplitude)
{
    switch (sign) {
    case '+':
        return amplitude;
    case '-':
        return -amplitude;
    case 'j':
        return {0.0, amplitude};
    case 'J':
        return {0.0, -amplitude};
    default:
        return 0.0;
    }
}

/// Rows of one amplitude. A character is an antenna port: 0, + (1), - (-1), j, J (-j); blanks part the layers.
struct rows_t
{
    double amplitude;
    std::initializer_list<std::string_view> signs;
};

lib_nr_precoding_table_t table(std::initializer_list<rows_t> parts)
{
    lib_nr_precoding_table_t matrices;
    for (const rows_t& part : parts)
        for (const std::string_view signs : part.signs) {
            matrices.emplace_back();
            for (const char sign : signs)
                if (sign != ' ')
                    matrices.back().push_back(entry(sign, part.amplitude));
        }
    return matrices;
}

} // namespace

const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_1()
{
    static const lib_nr_precoding_table_t k_table = table({{k_1_sqrt2, {"+0", "0+", "++", "+-", "+j", "+J"}}});
    return k_table;
}

const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_2()
{
    static const lib_nr_precoding_table_t k_table =
        table({{k_1_2, {"+000", "0+00", "00+0", "000+", "+0+0", "+0-0", "+0j0", "+0J0", "0+0+", "0+0-",
                        "0+0J", "0+0j", "+++-", "++jj", "++-+", "++JJ", "+j+j", "+jj+", "+j-J", "+jJ-",
                        "+-++", "+-jJ", "+---", "+-Jj", "+J+J", "+Jj-", "+J-j", "+JJ+"}}});
    return k_table;
}

const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_3()
{
    static const lib_nr_precoding_table_t k_table =
        table({{k_1_2, {"+000", "0+00", "00+0", "000+", "+0+0", "+0-0", "+0j0", "+0J0", "0+0+", "0+0-",
                        "0+0J", "0+0j", "++++", "++jj", "++--", "++JJ", "+j+j", "+jj-", "+j-J", "+jJ+",
                        "+-+-", "+-jJ", "+--+", "+-Jj", "+J+J", "+Jj+", "+J-j", "+JJ-"}}});
    return k_table;
}

const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_4()
{
    static const lib_nr_precoding_table_t k_table = table({{k_1_sqrt2, {"+0 0+", "++ +-", "+j +J"}}});
    return k_table;
}

const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_5()
{
    static const lib_nr_precoding_table_t k_table = table(
        {{k_1_2,
          {"+000 0+00", "+000 00+0", "+000 000+", "0+00 00+0", "0+00 000+", "00+0 000+", "+0+0 0+0J", "+0+0 0+0j",
           "+0J0 0+0+", "+0J0 0+0-", "+0-0 0+0J", "+0-0 0+0j", "+0j0 0+0+", "+0j0 0+0-"}},
         {k_1_sqrt2,
          {"++++ ++--", "++jj ++JJ", "+j+j +j-J", "+jj- +jJ+", "+-+- +--+", "+-jJ +-Jj", "+J+J +J-j", "+Jj+ +JJ-"}}});
    return k_table;
}

const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_6()
{
    static const lib_nr_precoding_table_t k_table =
        table({{k_1_2, {"+000 0+00 00+0", "+0+0 0+00 000+", "+0-0 0+00 000+"}},
               {k_1_sqrt8, {"++++ +-+- ++--", "++jj +-jJ ++JJ", "+-+- ++++ +--+", "+-jJ ++jj +-Jj"}}});
    return k_table;
}

const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_7()
{
    static const lib_nr_precoding_table_t k_table = table({{k_1_2, {"+000 0+00 00+0 000+"}},
                                                           {k_1_sqrt8, {"+0+0 +0-0 0+0+ 0+0-", "+0j0 +0J0 0+0j 0+0J"}},
                                                           {k_1_4, {"++++ +-+- ++-- +--+", "++jj +-jJ ++JJ +-Jj"}}});
    return k_table;
}

std::vector<std::complex<double>> standard_precoding_matrix(const lib_nr_precoding_table_t& table, std::size_t tpmi)
{
    constexpr std::size_t k_rows_of_one_layer = 28;
    const bool is_exchanged = table.size() == k_rows_of_one_layer && (tpmi == 10 || tpmi == 11);
    std::vector<std::complex<double>> matrix = table[is_exchanged ? 21 - tpmi : tpmi];
    // No matrix of the standard gives all layers together more power than 1: where the own one does, it is scaled.
    double power = 0.0;
    for (const std::complex<double>& weight : matrix)
        power += std::norm(weight);
    if (power > 1.0 + 1e-9)
        for (std::complex<double>& weight : matrix)
            weight /= std::sqrt(power);
    return matrix;
}

} // namespace vek::nr_mod_lib

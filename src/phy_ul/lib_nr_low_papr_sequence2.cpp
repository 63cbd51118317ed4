#include "phy_ul/lib_nr_low_papr_sequence2.h"

#include "phy_common/lib_nr_modulator.h"
#include "phy_common/lib_nr_sequence_generator.h"
#include "phy_common/lib_nr_transform_precoding.h"
#include "phy_common/tables/lib_nr_low_papr_type2_table.h"
#include "phy_ul/lib_nr_low_papr_sequence1.h"

#include <array>
#include <cmath>
#include <numbers>

namespace vek::nr_mod_lib
{

namespace
{

template <std::size_t count>
std::vector<std::uint8_t> bits_of(const std::array<std::array<std::uint8_t, count>, 30>& table, std::uint32_t u)
{
    return {table.at(u).begin(), table.at(u).end()};
}

std::vector<std::uint8_t> get_bits(const low_papr_seq_2_param_t& param, std::uint32_t base_length)
{
    if (base_length > 29) {
        std::vector<std::uint8_t> bits;
        lib_nr_sequence_generator_t::generate_pseudo_random_sequence(param.c_init, base_length, bits);
        return bits;
    }
    switch (base_length) {
    case 12:
        return bits_of(lib_nr_low_papr_type2_table_12(), param.u);
    case 18:
        return bits_of(lib_nr_low_papr_type2_table_18(), param.u);
    default:
        return bits_of(lib_nr_low_papr_type2_table_24(), param.u);
    }
}

} // namespace

void lib_nr_low_papr_sequence2::generate_low_papr_sequence_2(const low_papr_seq_2_param_t& param,
                                                             std::vector<std::complex<double>>& out)
{
    std::vector<std::complex<double>> values;
    const std::uint32_t base_length = get_low_papr_base_length(param.m, param.delta);
    if (base_length == 0)
        return;
    if (base_length == 6) {
        for (const std::int8_t phase : lib_nr_low_papr_type2_table_6().at(param.u))
            values.push_back({std::cos(phase * std::numbers::pi / 8.0), std::sin(phase * std::numbers::pi / 8.0)});
    }
    else
        lib_nr_modulator_t(LIB_NR_MODULATION_HALF_PI_BPSK).deal_nr_modulation(get_bits(param, base_length), values);
    deal_transform_precoding(values.data(), values.size());
    out.insert(out.end(), values.begin(), values.end());
}

} // namespace vek::nr_mod_lib

#include "phy_common/lib_nr_new_prach_ofdm_modulator.h"

#include "common/lib_bounded_cast.h"
#include "common/lib_common_math.h"

#include <algorithm>
#include <cmath>
#include <iostream>

namespace vek::nr_mod_lib
{

void lib_nr_new_prach_ofdm_modulator_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    if (!lib_nr_phy_common_t::has_extended_prefix(m_numerology))
        m_cp_type = LIB_NR_NORMAL_CP;
    m_numerology = numerology;
}

void lib_nr_new_prach_ofdm_modulator_t::set_channel_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    m_bandwidth = bandwidth;
}

bool lib_nr_new_prach_ofdm_modulator_t::set_cyclic_prefix_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    if (cp_type == LIB_NR_EXTEND_CP && !lib_nr_phy_common_t::has_extended_prefix(m_numerology)) {
        std::cout << "lib_nr_dl_resource_manager_t::set_cyclic_prefix_type Report : "
                     "Extende CP is supported only with 60kHz SCS!"
                  << std::endl;
        return false;
    }
    m_cp_type = cp_type;
    return true;
}

bool lib_nr_new_prach_ofdm_modulator_t::set_target_sample_rate(double sample_rate_hz)
{
    if (!(sample_rate_hz > 0.0)) {
        std::cout << "lib_nr_new_prach_ofdm_modulator_t::set_target_sample_rate Report : "
                     "Sample Rate Should be a positive value!"
                  << std::endl;
        return false;
    }
    const double protocol_rate_hz =
        static_cast<double>(get_protocol_defined_fft_length()) * lib_nr_phy_common_t::get_scs_hz_value(m_numerology);
    return set_oversamping_ratio(common_lib::bounded_cast<unsigned int>(std::ceil(sample_rate_hz / protocol_rate_hz)));
}

bool lib_nr_new_prach_ofdm_modulator_t::set_oversamping_ratio(unsigned int ratio)
{
    if (ratio == 0) {
        std::cout << "lib_nr_new_prach_ofdm_modulator_t::set_oversamping_ratio Report : "
                     "Oversampling Ratio Must NOT be zero!"
                  << std::endl;
        return false;
    }
    m_oversampling_ratio = ratio;
    return true;
}

void lib_nr_new_prach_ofdm_modulator_t::set_prach_ofdm_info(const prach_ofdm_info_param_t& info) { m_info = info; }

bool lib_nr_new_prach_ofdm_modulator_t::deal_frame_ofdm_modulation(
    const std::vector<std::vector<std::complex<double>>>& grid, std::vector<std::complex<double>>& main,
    std::vector<std::complex<double>>& head, std::vector<std::complex<double>>& tail) const
{
    if (grid.empty())
        return false;
    head.clear();
    tail.clear();
    std::fill(main.begin(), main.end(), 0.0);
    return true;
}

unsigned int lib_nr_new_prach_ofdm_modulator_t::get_protocol_defined_fft_length() const
{
    return common_lib::lib_common_math_t::get_min_pow_of_2(
        lib_nr_phy_common_t::get_subcarrier_total_number(m_numerology, m_bandwidth), 4);
}

unsigned int lib_nr_new_prach_ofdm_modulator_t::get_actual_fft_length() const
{
    return get_protocol_defined_fft_length() * m_oversampling_ratio;
}

} // namespace vek::nr_mod_lib

#include "manager/lib_nr_dl_tm_configure_manager.h"

#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <iostream>

namespace vek::nr_mod_lib
{

void lib_nr_dl_tm_configure_manager_t::init()
{
    _init_common(m_nr_ntn ? LIB_NR_CHANNEL_FR1_5M : LIB_NR_CHANNEL_FR1_100M);
    m_test_model = LIB_NR_FR1_TM1_1;
    m_numerology = LIB_NR_SCS_30K;
    m_n_id = 1;
    m_layers = 1;
    m_modulation = LIB_NR_MODULATION_256QAM;
}

bool lib_nr_dl_tm_configure_manager_t::set_test_model(lib_nr_test_mode_t test_model)
{
    const bool changed = assign(m_test_model, offered_or_first(test_model, get_valid_test_model_list()));
    set_modulation(m_modulation);
    return changed;
}

std::vector<lib_nr_test_mode_t> lib_nr_dl_tm_configure_manager_t::get_valid_test_model_list() const
{
    std::cout << "test : m_nr_ntn " << m_nr_ntn << std::endl;
    if (m_nr_ntn) {
        if (m_frequency_range == NR_FR1)
            return {LIB_NR_FR1_TM1_1, LIB_NR_FR1_TM1_2, LIB_NR_FR1_TM2,
                    LIB_NR_FR1_TM3_1, LIB_NR_FR1_TM3_2, LIB_NR_FR1_TM3_3};
        return {LIB_NR_FR2_TM1_1, LIB_NR_FR2_TM2, LIB_NR_FR2_TM3_1};
    }
    if (m_frequency_range == NR_FR1)
        return {LIB_NR_FR1_TM1_1, LIB_NR_FR1_TM1_2,  LIB_NR_FR1_TM2,    LIB_NR_FR1_TM2a,  LIB_NR_FR1_TM2b,
                LIB_NR_FR1_TM3_1, LIB_NR_FR1_TM3_1a, LIB_NR_FR1_TM3_1b, LIB_NR_FR1_TM3_2, LIB_NR_FR1_TM3_3};
    return {LIB_NR_FR2_TM1_1, LIB_NR_FR2_TM2, LIB_NR_FR2_TM2a, LIB_NR_FR2_TM3_1, LIB_NR_FR2_TM3_1a};
}

bool lib_nr_dl_tm_configure_manager_t::set_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    if (m_nr_ntn && !lib_nr_phy_common_t::is_ntn_bandwidth(bandwidth))
        bandwidth = LIB_NR_CHANNEL_FR1_30M;
    const bool changed = assign(m_bandwidth, bandwidth);
    m_frequency_range = lib_nr_phy_common_t::get_freq_range_type(m_bandwidth);
    set_test_model(m_test_model);
    set_numerology(m_numerology);
    set_duplex_type(m_duplex_type);
    return changed;
}

bool lib_nr_dl_tm_configure_manager_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    if (!lib_nr_phy_common_t::check_numerology_bandwidth_valid(numerology, m_bandwidth))
        numerology = get_valid_numerology_list().front();
    return assign(m_numerology, numerology);
}

bool lib_nr_dl_tm_configure_manager_t::set_duplex_type(lib_nr_duplex_type_t duplex_type)
{
    return assign(m_duplex_type, offered_or_first(duplex_type, get_valid_duplex_type_list()));
}

std::vector<lib_nr_duplex_type_t> lib_nr_dl_tm_configure_manager_t::get_valid_duplex_type_list() const
{
    if (m_nr_ntn)
        return {LIB_NR_DUPLEX_TYPE_FDD};
    switch (m_frequency_range) {
    case NR_FR1:
        return {LIB_NR_DUPLEX_TYPE_TDD, LIB_NR_DUPLEX_TYPE_FDD};
    case NR_FR2_1:
    case NR_FR2_2:
        return {LIB_NR_DUPLEX_TYPE_TDD};
    }
    std::cout << "lib_nr_dl_tm_configure_manager_t::get_valid_duplex_type_list : Not support the frequency range!"
              << std::endl;
    return {LIB_NR_DUPLEX_TYPE_TDD};
}

bool lib_nr_dl_tm_configure_manager_t::set_n_id(unsigned int n_id) { return assign(m_n_id, n_id); }

bool lib_nr_dl_tm_configure_manager_t::set_layers(unsigned int layers)
{
    const bool taken = layers == 1 || layers == 2 || m_test_model == LIB_NR_FR1_TM1_1;
    return assign(m_layers, taken ? layers : 1);
}

bool lib_nr_dl_tm_configure_manager_t::set_modulation(lib_nr_modulation_type_t modulation)
{
    return assign(m_modulation, offered_or_first(modulation, get_valid_modulation_list()));
}

std::vector<lib_nr_modulation_type_t> lib_nr_dl_tm_configure_manager_t::get_valid_modulation_list() const
{
    switch (m_test_model) {
    case LIB_NR_FR1_TM1_1:
    case LIB_NR_FR1_TM1_2:
    case LIB_NR_FR1_TM3_2:
    case LIB_NR_FR1_TM3_3:
    case LIB_NR_FR2_TM1_1:
        return {LIB_NR_MODULATION_QPSK};
    case LIB_NR_FR1_TM2:
    case LIB_NR_FR1_TM3_1:
        return {LIB_NR_MODULATION_64QAM};
    case LIB_NR_FR1_TM2a:
    case LIB_NR_FR1_TM3_1a:
    case LIB_NR_FR2_TM2a:
    case LIB_NR_FR2_TM3_1a:
        return {LIB_NR_MODULATION_256QAM};
    case LIB_NR_FR1_TM2b:
    case LIB_NR_FR1_TM3_1b:
        return {LIB_NR_MODULATION_1024QAM};
    case LIB_NR_FR2_TM2:
    case LIB_NR_FR2_TM3_1:
        return {LIB_NR_MODULATION_QPSK, LIB_NR_MODULATION_16QAM, LIB_NR_MODULATION_64QAM};
    }
    std::cout << "lib_nr_dl_tm_configure_manager_t::get_valid_modulation_list : Error modulation!" << std::endl;
    return {LIB_NR_MODULATION_QPSK};
}

} // namespace vek::nr_mod_lib

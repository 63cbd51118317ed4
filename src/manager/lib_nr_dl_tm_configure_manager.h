#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_preset_configure_manager.h"
#include "phy_common/lib_nr_modulator.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Downlink test models of TS 38.141-1 and TS 38.141-2 clause 4.9.2.
enum lib_nr_test_mode_t : std::uint32_t
{
    LIB_NR_FR1_TM1_1 = 0,
    LIB_NR_FR1_TM1_2 = 1,
    LIB_NR_FR1_TM2 = 2,
    LIB_NR_FR1_TM2a = 3,
    LIB_NR_FR1_TM2b = 4,
    LIB_NR_FR1_TM3_1 = 5,
    LIB_NR_FR1_TM3_1a = 6,
    LIB_NR_FR1_TM3_1b = 7,
    LIB_NR_FR1_TM3_2 = 8,
    LIB_NR_FR1_TM3_3 = 9,
    LIB_NR_FR2_TM1_1 = 10,
    LIB_NR_FR2_TM2 = 11,
    LIB_NR_FR2_TM2a = 12,
    LIB_NR_FR2_TM3_1 = 13,
    LIB_NR_FR2_TM3_1a = 14,
};

/// The choice of a downlink test model for a carrier. The rules are told in its façade, `cfg_nr_dl_tm_t`.
class NR_MOD_LIB_EXPORT lib_nr_dl_tm_configure_manager_t final : public lib_nr_preset_configure_manager_t
{
public:
    lib_nr_dl_tm_configure_manager_t() { init(); }

    /// Everything but enable and the NTN flag back to its default.
    void init() override;

    bool set_test_model(lib_nr_test_mode_t test_model);
    lib_nr_test_mode_t get_test_model() const { return m_test_model; }
    std::vector<lib_nr_test_mode_t> get_valid_test_model_list() const;
    bool set_bandwidth(lib_nr_channel_bw_type_t bandwidth);
    bool set_numerology(lib_nr_numerology_type_t numerology);
    lib_nr_numerology_type_t get_numerology() const { return m_numerology; }
    std::vector<lib_nr_numerology_type_t> get_valid_numerology_list() const { return _data_spacings(); }
    bool set_duplex_type(lib_nr_duplex_type_t duplex_type);
    std::vector<lib_nr_duplex_type_t> get_valid_duplex_type_list() const;
    bool set_n_id(unsigned int n_id);
    unsigned int get_n_id() const { return m_n_id; }
    bool set_layers(unsigned int layers);
    unsigned int get_layers() const { return m_layers; }
    bool set_modulation(lib_nr_modulation_type_t modulation);
    lib_nr_modulation_type_t get_modulation() const { return m_modulation; }
    std::vector<lib_nr_modulation_type_t> get_valid_modulation_list() const;

private:
    lib_nr_test_mode_t m_test_model = LIB_NR_FR1_TM1_1;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    unsigned int m_n_id = 1;
    unsigned int m_layers = 1;
    lib_nr_modulation_type_t m_modulation = LIB_NR_MODULATION_256QAM;
};

} // namespace vek::nr_mod_lib

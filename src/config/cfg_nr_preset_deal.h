#pragma once

#include "config/cfg_nr_carrier.h"

// What the presets' builders have in common. They call the façades as a host would, so that every rule of these holds.

namespace vek::nr_mod_lib
{

/// What a preset gives a shared channel of its own; the rest all of them have.
struct preset_sch_t
{
    lib_nr_sch_dmrs_additional_position_t additional_position;
    /// Of scrambling and DMRS.
    int nid;
    bool ptrs = false;
    lib_nr_sch_dmrs_mapping_type_t mapping_type = LIB_NR_DMRS_MAPPING_TYPEA;
    lib_nr_sch_dmrs_type_a_position_t type_a_position = LIB_NR_SCH_DMRS_TYPEA_POSITION_2;
};

/// The first settings: DMRS of type 1 with a single symbol, on, 0 dB, RNTI 0.
void begin_preset_sch(cfg_nr_sch_t& sch, const preset_sch_t& preset);
/// DMRS and antenna ports: 0 for one layer, 0 and 1 for any other number; and the CDM groups that carry no data.
void set_preset_ports(cfg_nr_sch_t& sch, unsigned int layers, unsigned int cdm_groups_without_data);
/// The last settings: redundancy version 0, identities of the DMRS, whether there is a PTRS.
void end_preset_sch(cfg_nr_sch_t& sch, const preset_sch_t& preset);

/// What a preset gives a PUSCH of its own; n_RAPID and n_ID^RS are those of scrambling and DMRS.
struct preset_pusch_t
{
    preset_sch_t sch;
    bool transform_precoding = false;
    unsigned int layers = 1;
};

/// Cell identity of the uplink's presets.
inline constexpr unsigned int k_preset_ul_cell = 0;

/// The first settings of a PUSCH, with its waveform and its ports; no hopping and no codebook.
void begin_preset_pusch(cfg_nr_ul_sch_t& sch, const preset_pusch_t& preset);
/// The last settings of a PUSCH: data of PN9, no hopping of the DMRS and no PTRS.
void end_preset_pusch(cfg_nr_ul_sch_t& sch, const preset_pusch_t& preset);
/// Uplink BWP 0 over the whole carrier.
void lay_preset_ul_bwp(cfg_nr_carrier_t& carrier, lib_nr_numerology_type_t numerology, unsigned int rb_number);

/// Downlink BWP 1 over the whole carrier, with one CORESET.
void lay_preset_dl_bwp(cfg_nr_carrier_t& carrier, lib_nr_numerology_type_t numerology, unsigned int rb_number);
/// Two symbols in the groups of the bitmap, not interleaved.
void lay_preset_coreset(cfg_nr_dl_coreset_t& coreset, const char* bitmap);

} // namespace vek::nr_mod_lib

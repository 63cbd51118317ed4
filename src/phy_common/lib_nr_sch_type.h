#pragma once

#include "phy_common/lib_nr_enumerator.h"

#include <cstdint>

// The choices that the settings of a shared channel, PDSCH or PUSCH, offer.

namespace vek::nr_mod_lib
{

/// Frequency domain resource allocation of TS 38.214 clauses 5.1.2.2 and 6.1.2.2: a bitmap of resource block groups,
/// a run of resource blocks, or, for the uplink, interlaces.
enum lib_nr_sch_ra_type_t : std::uint32_t
{
    LIB_NR_SCH_RA_TYPE0 = 0,
    LIB_NR_SCH_RA_TYPE1 = 1,
    LIB_NR_SCH_RA_TYPE2 = 2,
};

/// Whether virtual resource blocks are interleaved, TS 38.211 clause 7.3.1.6.
enum lib_nr_sch_interleave_t : std::uint32_t
{
    LIB_NR_SCH_INTERLEAVE = 0,
    LIB_NR_SCH_NO_INTERLEAVE = 1,
};

/// DMRS configuration type, TS 38.211 clauses 7.4.1.1.2 and 6.4.1.1.3: every second subcarrier, or two of every six.
enum lib_nr_sch_dmrs_configuration_type_t : std::uint32_t
{
    LIB_NR_DMRS_CFG_TYPE1 = 1,
    LIB_NR_DMRS_CFG_TYPE2 = 2,
};

/// Mapping type: the first DMRS symbol counts from the slot's start (A) or from the allocation's (B).
enum lib_nr_sch_dmrs_mapping_type_t : std::uint32_t
{
    LIB_NR_DMRS_MAPPING_TYPEA = 0,
    LIB_NR_DMRS_MAPPING_TYPEB = 1,
};

/// First DMRS symbol l0 of mapping type A, given or as the MIB tells it (dmrs-TypeA-Position, TS 38.331).
enum lib_nr_sch_dmrs_type_a_position_t : std::uint32_t
{
    LIB_NR_SCH_DMRS_TYPEA_POSITION_2 = 2,
    LIB_NR_SCH_DMRS_TYPEA_POSITION_3 = 3,
    LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB = 4,
};

/// Additional DMRS positions (dmrs-AdditionalPosition, TS 38.331).
enum lib_nr_sch_dmrs_additional_position_t : std::uint32_t
{
    LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0 = 0,
    LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1 = 1,
    LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_2 = 2,
    LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_3 = 3,
};

/// Symbols of one DMRS position.
enum lib_nr_sch_dmrs_length_t : std::uint32_t
{
    LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL = 0,
    LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL = 1,
};

/// Resource block from which the DMRS subcarriers count: common resource block 0, or the first of the BWP or CORESET.
enum lib_nr_sch_dmrs_mapping_ref_t : std::uint32_t
{
    LIB_NR_DMRS_MAPPING_REF_CRB = 0,
    LIB_NR_DMRS_MAPPING_REF_PRB = 1,
};

/// Resource blocks of an interleaved bundle.
enum lib_nr_sch_vrb_bundle_size_t : std::uint32_t
{
    LIB_NR_SCH_VRB_BUNDLE_SIZE_2 = 0,
    LIB_NR_SCH_VRB_BUNDLE_SIZE_4 = 1,
};

/// xOverhead of TS 38.214 clause 5.1.3.2, resource elements of a resource block.
enum lib_nr_sch_x_overhead_t : std::uint32_t
{
    LIB_NR_SCH_X_OVERHEAD_0 = 0,
    LIB_NR_SCH_X_OVERHEAD_6 = 1,
    LIB_NR_SCH_X_OVERHEAD_12 = 2,
    LIB_NR_SCH_X_OVERHEAD_18 = 3,
};

/// Scaling of the transport block size, TS 38.214 Table 5.1.3.2-2.
enum lib_nr_sch_tb_scaling_t : std::uint32_t
{
    LIB_NR_SCH_TB_SCALING_1 = 0,
    LIB_NR_SCH_TB_SCALING_0_5 = 1,
    LIB_NR_SCH_TB_SCALING_0_25 = 2,
};

/// Resource blocks from one PTRS subcarrier to the next.
enum lib_nr_sch_ptrs_frequency_density_size_t : std::uint32_t
{
    LIB_NR_SCH_PTRS_FREQUENCY_DENSITYE_2 = 0,
    LIB_NR_SCH_PTRS_FREQUENCY_DENSITYE_4 = 1,
};

/// Symbols from one PTRS symbol to the next.
enum lib_nr_sch_ptrs_time_density_t : std::uint32_t
{
    LIB_NR_SCH_PTRS_TIME_DENSITYE_1 = 0,
    LIB_NR_SCH_PTRS_TIME_DENSITYE_2 = 1,
    LIB_NR_SCH_PTRS_TIME_DENSITYE_4 = 2,
};

/// Resource blocks of a group, TS 38.214 clause 5.1.2.2.1.
enum lib_nr_sch_rbg_size_t : std::uint32_t
{
    LIB_NR_SCH_RBG_SIZE_2 = 0,
    LIB_NR_SCH_RBG_SIZE_4 = 1,
    LIB_NR_SCH_RBG_SIZE_8 = 2,
    LIB_NR_SCH_RBG_SIZE_16 = 3,
};

/// Antenna port of a shared channel: 0 for none, n + 1 for port n.
enum lib_nr_antenna_port_t : std::uint32_t
{
    LIB_NR_ANTENNA_PORT_NONE = 0,
    LIB_NR_ANTENNA_PORT_0 = 1,
    LIB_NR_ANTENNA_PORT_1 = 2,
    LIB_NR_ANTENNA_PORT_2 = 3,
    LIB_NR_ANTENNA_PORT_3 = 4,
};

/// Frequency hopping, TS 38.214 clause 6.3.
enum lib_nr_sch_hopping_mode_t : std::uint32_t
{
    LIB_NR_SCH_HOPPING_MODE_DISABLE = 0,
    LIB_NR_SCH_HOPPING_MODE_INTRA = 1, ///< within the slot
    LIB_NR_SCH_HOPPING_MODE_INTER = 2, ///< from slot to slot
};

/// Hopping of the low-PAPR DMRS sequences, TS 38.211 clause 6.4.1.1.1.2.
enum lib_nr_sch_dmrs_hopping_t : std::uint32_t
{
    LIB_NR_SCH_DMRS_HOPPING_DISABLE = 0,
    LIB_NR_SCH_DMRS_HOPPING_GROUP = 1,
    LIB_NR_SCH_DMRS_HOPPING_SEQUENCE = 2,
};

/// Samples of a PTRS group in a transform-precoded symbol.
enum lib_nr_sch_ptrs_group_sample_t : std::uint32_t
{
    LIB_NR_PTRS_GROUP_SAMPLE_2 = 0,
    LIB_NR_PTRS_GROUP_SAMPLE_4 = 1,
};

/// PTRS groups of a transform-precoded symbol.
enum lib_nr_sch_ptrs_group_t : std::uint32_t
{
    LIB_NR_PTRS_GROUP_2 = 0,
    LIB_NR_PTRS_GROUP_4 = 1,
    LIB_NR_PTRS_GROUP_8 = 2,
};

/// Antenna ports that a PUSCH is precoded for; the value is their number.
enum lib_nr_antenna_port_number_t : std::uint32_t
{
    LIB_NR_ANTENNA_PORT_NUMBER_1 = 1,
    LIB_NR_ANTENNA_PORT_NUMBER_2 = 2,
    LIB_NR_ANTENNA_PORT_NUMBER_3 = 3,
    LIB_NR_ANTENNA_PORT_NUMBER_4 = 4,
};

// The numbers that enumerators stand for; a value that is none of them stands for that of the first.

constexpr std::uint32_t number_of(lib_nr_sch_vrb_bundle_size_t size)
{
    return 2u << known_or_first(size, LIB_NR_SCH_VRB_BUNDLE_SIZE_4);
}
constexpr std::uint32_t number_of(lib_nr_sch_x_overhead_t overhead)
{
    return 6u * known_or_first(overhead, LIB_NR_SCH_X_OVERHEAD_18);
}
constexpr double number_of(lib_nr_sch_tb_scaling_t scaling)
{
    return 1.0 / (1u << known_or_first(scaling, LIB_NR_SCH_TB_SCALING_0_25));
}
constexpr std::uint32_t number_of(lib_nr_sch_ptrs_frequency_density_size_t density)
{
    return 2u << known_or_first(density, LIB_NR_SCH_PTRS_FREQUENCY_DENSITYE_4);
}
constexpr std::uint32_t number_of(lib_nr_sch_ptrs_time_density_t density)
{
    return 1u << known_or_first(density, LIB_NR_SCH_PTRS_TIME_DENSITYE_4);
}
constexpr std::uint32_t number_of(lib_nr_sch_rbg_size_t size)
{
    return 2u << known_or_first(size, LIB_NR_SCH_RBG_SIZE_16);
}

} // namespace vek::nr_mod_lib

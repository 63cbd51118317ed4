#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstdint>
#include <map>
#include <vector>

namespace vek::nr_mod_lib
{

/// Modulation schemes of TS 38.211 clause 5.1.
enum lib_nr_modulation_type_t : std::uint32_t
{
    LIB_NR_MODULATION_HALF_PI_BPSK = 0,
    LIB_NR_MODULATION_BPSK = 1,
    LIB_NR_MODULATION_QPSK = 2,
    LIB_NR_MODULATION_16QAM = 3,
    LIB_NR_MODULATION_64QAM = 4,
    LIB_NR_MODULATION_256QAM = 5,
    LIB_NR_MODULATION_1024QAM = 6,
};

/// Maps bits (one per byte) to complex symbols of unit mean power, TS 38.211 clause 5.1. The points live in tables
/// shared by all objects, so a modulator costs nothing to build.
class NR_MOD_LIB_EXPORT lib_nr_modulator_t
{
public:
    /// An unknown type prints a line and leaves the modulator without a constellation.
    explicit lib_nr_modulator_t(lib_nr_modulation_type_t type);

    /// An unknown type is stored all the same and prints a line; the constellation stays the old one.
    void set_modulation_type(lib_nr_modulation_type_t type);
    /// Bits per symbol Qm; 0 and a printed line for an unknown type.
    static unsigned int get_modulation_order(lib_nr_modulation_type_t type);
    /// The points by symbol value, the first bit of a symbol highest; 2^Qm entries, none without a constellation.
    /// Built at each call.
    std::map<unsigned int, std::complex<double>> get_constellation_map() const;
    /// The points by symbol, the first bit lowest, times an amplitude. pi/2-BPSK has four: the bit above the symbol's
    /// says whether its place in the stream is odd. None without a constellation.
    std::vector<std::complex<double>> get_points(double amplitude) const;
    /// `symbols` becomes one point for each Qm bits. Bits that don't fill a last symbol are ignored and a line is
    /// printed; so are all bits where the modulator has no constellation. pi/2-BPSK turns every second symbol,
    /// counted from the first of this call.
    void deal_nr_modulation(const std::vector<unsigned char>& bits, std::vector<std::complex<double>>& symbols) const;

private:
    void _init_constellation_map(lib_nr_modulation_type_t type);
    void _init_constellation_map_bpsk();
    void _init_constellation_map_qpsk();
    void _init_constellation_map_16qam();
    void _init_constellation_map_64qam();
    void _init_constellation_map_256qam();
    void _init_constellation_map_1024qam();
    void _deal_digital_modulation(const std::vector<unsigned char>& bits,
                                  std::vector<std::complex<double>>& symbols) const;
    void _deal_half_pi_phase_offset(std::vector<std::complex<double>>& symbols) const;

    lib_nr_modulation_type_t m_modulation_type;
    // The constellation map: the shared table of its points and their logarithmic number, Qm.
    const std::complex<double>* m_constellation_map = nullptr;
    unsigned int m_constellation_order = 0;
};

} // namespace vek::nr_mod_lib

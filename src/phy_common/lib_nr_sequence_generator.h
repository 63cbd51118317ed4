#pragma once

#include "common/nr_mod_lib_export.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// The length-31 Gold sequence of TS 38.211 clause 5.2.1, from which scramblers and reference signals draw.
class NR_MOD_LIB_EXPORT lib_nr_sequence_generator_t
{
public:
    /// `out` becomes c(0) to c(length - 1), one bit per byte. Of `c_init` the 31 low bits count. No state survives a
    /// call.
    static void generate_pseudo_random_sequence(unsigned int c_init, unsigned int length,
                                                std::vector<unsigned char>& out);
    /// The same bits 64 to a word, the first lowest: writes c(0) to c(64 word_count - 1).
    static void generate_pseudo_random_words(unsigned int c_init, std::size_t word_count, std::uint64_t* out);
    /// Adds them modulo 2 to bits in words, which scrambles and descrambles.
    static void add_pseudo_random_words(unsigned int c_init, std::size_t word_count, std::uint64_t* bits);
    /// The same with one bit per byte, of which the lowest counts; both may be the same memory.
    static void add_pseudo_random_bits(unsigned int c_init, std::size_t length, const unsigned char* in,
                                       unsigned char* out);
};

} // namespace vek::nr_mod_lib

#pragma once

#include "common/lib_test_peer.h"
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_modulator.h"
#include "phy_common/lib_nr_polar_code_block_segmentation.h"
#include "phy_common/lib_nr_polar_coding.h"
#include "phy_common/lib_nr_polar_rate_match.h"
#include "receiver/bits.h"
#include "support/noise.h"

#include <vector>

template <>
struct vek::test_peer_t<vek::nr_mod_lib::lib_nr_crc_calculator_t>
{
    static void set_length(nr_mod_lib::lib_nr_crc_calculator_t& crc, unsigned int length) { crc.m_crc_length = length; }
    static unsigned int type(const nr_mod_lib::lib_nr_crc_calculator_t& crc) { return crc.m_crc_type; }
};

template <>
struct vek::test_peer_t<vek::nr_mod_lib::lib_nr_polar_coding_t>
{
    using coder_t = nr_mod_lib::lib_nr_polar_coding_t;
    using bits_t = nr_test::bits_t;

    static const std::vector<unsigned int>& non_frozen(const coder_t& coder) { return coder.m_non_frozen_list; }
    static const std::vector<unsigned int>& parity(const coder_t& coder) { return coder.m_parity_list; }
    static bool interleave(const coder_t& coder, const bits_t& in, bits_t& out)
    {
        return coder._deal_interleaving(in, out);
    }
    static bool multiply(const bits_t& u, bits_t& out) { return coder_t::_deal_coding_matrix_multiply(u, out); }
};

template <>
struct vek::test_peer_t<vek::nr_mod_lib::lib_nr_polar_rate_match_t>
{
    static bool interleave(const nr_mod_lib::lib_nr_polar_rate_match_t& rate_match, const nr_test::bits_t& in,
                           nr_test::bits_t& out)
    {
        return rate_match._deal_coded_bit_interleaving(in, out);
    }
};

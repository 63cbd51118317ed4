#include "phy_common/lib_nr_pn_payload.h"

#include "common/lib_bit_packing.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_all_ones = 0xFFFFFFFFu;

/// Exponents of the characteristic polynomials, in the order of the enumerators: those of ITU-T O.150, but for
/// `LIB_NR_PN9`, which is its 511-bit sequence backwards.
constexpr std::array<std::array<unsigned int, 2>, 5> k_taps = {{{9, 4}, {9, 5}, {11, 2}, {15, 14}, {23, 5}}};

} // namespace

lib_nr_pn_payload_t::lib_nr_pn_payload_t(lib_nr_pn_seq_t source, std::vector<unsigned char> user_bits)
    : m_source(source), m_user_bits(std::move(user_bits)), m_seed(k_all_ones)
{}

bool lib_nr_pn_payload_t::generate(unsigned int n, std::vector<unsigned char>& bits)
{
    if (m_source != LIB_NR_USER_CFG)
        return _run_sequence(n, bits);
    bits.assign(n, 0);
    std::copy_n(m_user_bits.begin(), std::min<std::size_t>(n, m_user_bits.size()), bits.begin());
    return true;
}

bool lib_nr_pn_payload_t::generate_repeated(unsigned int n, std::uint64_t position, std::vector<unsigned char>& bits)
{
    if (m_source != LIB_NR_USER_CFG)
        return _run_sequence(n, bits);
    bits.assign(n, 0);
    if (!m_user_bits.empty())
        for (std::size_t i = 0; i < n; ++i)
            bits[i] = m_user_bits[(position + i) % m_user_bits.size()];
    return true;
}

bool lib_nr_pn_payload_t::generate_words(unsigned int n, std::vector<std::uint64_t>& words)
{
    if (m_source != LIB_NR_USER_CFG) {
        common_lib::lib_prbs_code_t prbs;
        const bool is_known = _set_up(prbs);
        m_seed = prbs.generate_prbs_words(n, words);
        return is_known;
    }
    words.assign(std::size_t{n} / 64 + 2, 0);
    common_lib::pack_bits(m_user_bits.data(), std::min<std::size_t>(n, m_user_bits.size()), words.data());
    return true;
}

bool lib_nr_pn_payload_t::_set_up(common_lib::lib_prbs_code_t& prbs) const
{
    const bool is_known = m_source < k_taps.size();
    const std::array<unsigned int, 2>& taps = k_taps[is_known ? m_source : LIB_NR_PN9_ITU];
    prbs.set_custom_primitive_polynomial_enable(true);
    prbs.set_prbs_primitive_polynomial({taps.begin(), taps.end()});
    prbs.set_prbs_seed(m_seed);
    return is_known;
}

bool lib_nr_pn_payload_t::_run_sequence(unsigned int n, std::vector<unsigned char>& bits)
{
    common_lib::lib_prbs_code_t prbs;
    const bool is_known = _set_up(prbs);
    m_seed = prbs.generate_prbs_code(n, bits);
    return is_known;
}

} // namespace vek::nr_mod_lib

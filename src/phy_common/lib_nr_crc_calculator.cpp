#include "phy_common/lib_nr_crc_calculator.h"

#include "common/lib_bit_packing.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <iostream>

#if defined(__x86_64__) && defined(__GNUC__)
#define NR_MOD_LIB_X86_VECTORS
#include <wmmintrin.h>
#endif

namespace vek::nr_mod_lib
{

namespace
{

struct crc_row_t
{
    std::uint32_t length;
    std::uint32_t polynomial; // with the term x^L
};

// By type.
constexpr std::array<crc_row_t, 6> k_crc_rows = {{
    {24, 0x1864CFB},
    {24, 0x1800063},
    {24, 0x1B2B117},
    {16, 0x11021},
    {11, 0xE21},
    {6, 0x61},
}};

// The words that longer messages are folded into.
constexpr std::size_t k_folded_words = 8;
using folded_t = std::array<std::uint64_t, k_folded_words>;

// remainder[k][b]: remainder of the byte b (first bit lowest) followed by k zero bytes. Remainders are kept with the
// highest power in bit 0, as the packed message has its first bit there.
struct crc_tables_t
{
    std::array<std::array<std::uint32_t, 256>, 8> remainder{};
    // x^(n + 64) and x^n modulo the polynomial, n being 1 less than the bits that are folded at a time, for a product
    // of words with the highest power in bit 0 comes out one place too low. Kept as such words, the powers from 63 on.
    std::array<std::uint64_t, 2> folding{};
};

constexpr crc_tables_t make_crc_tables(const crc_row_t& row)
{
    std::uint32_t mirrored = 0;
    for (std::uint32_t i = 0; i < row.length; ++i)
        mirrored |= ((row.polynomial >> i) & 1u) << (row.length - 1 - i);

    crc_tables_t tables;
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t remainder = byte;
        for (int bit = 0; bit < 8; ++bit)
            remainder = (remainder >> 1) ^ ((remainder & 1u) != 0 ? mirrored : 0u);
        tables.remainder[0][byte] = remainder;
    }
    for (std::size_t k = 1; k < 8; ++k)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t before = tables.remainder[k - 1][byte];
            tables.remainder[k][byte] = (before >> 8) ^ tables.remainder[0][before & 0xFFu];
        }
    std::uint32_t power = std::uint32_t{1} << (row.length - 1); // x^0
    for (std::size_t n = 0; n < 64 * (k_folded_words + 1); ++n) {
        if (n == 64 * k_folded_words - 1)
            tables.folding[1] = std::uint64_t{power} << (64 - row.length);
        if (n == 64 * k_folded_words + 63)
            tables.folding[0] = std::uint64_t{power} << (64 - row.length);
        power = (power >> 1) ^ ((power & 1u) != 0 ? mirrored : 0u);
    }
    return tables;
}

template <std::size_t index>
constexpr crc_tables_t k_crc_tables = make_crc_tables(k_crc_rows[index]);

constexpr std::array<const crc_tables_t*, 6> k_tables_by_row = {
    &k_crc_tables<0>, &k_crc_tables<1>, &k_crc_tables<2>, &k_crc_tables<3>, &k_crc_tables<4>, &k_crc_tables<5>,
};

const crc_tables_t& tables_of(std::uint32_t polynomial)
{
    std::size_t row = 0;
    while (row + 1 < k_crc_rows.size() && k_crc_rows[row].polynomial != polynomial)
        ++row;
    return *k_tables_by_row[row];
}

// The remainder of the words so far times x^L, the highest power in bit 0.
class remainder_t
{
public:
    explicit remainder_t(const crc_tables_t& tables) : m_remainder(tables.remainder) {}

    // The state reaches the low four bytes only; the high ones are summed ahead, off the chain from word to word.
    void take(std::uint64_t word)
    {
        const std::uint32_t high = (m_remainder[3][(word >> 32) & 0xFFu] ^ m_remainder[2][(word >> 40) & 0xFFu]) ^
                                   (m_remainder[1][(word >> 48) & 0xFFu] ^ m_remainder[0][word >> 56]);
        const std::uint32_t low = static_cast<std::uint32_t>(word) ^ m_state;
        m_state = ((m_remainder[7][low & 0xFFu] ^ m_remainder[6][(low >> 8) & 0xFFu]) ^
                   (m_remainder[5][(low >> 16) & 0xFFu] ^ m_remainder[4][low >> 24])) ^
                  high;
    }

    std::uint32_t get() const { return m_state; }

private:
    const std::array<std::array<std::uint32_t, 256>, 8>& m_remainder;
    std::uint32_t m_state = 0;
};

// Folds what comes behind some words into them: their remainder becomes that of the whole. Again and again they are
// multiplied by their distance from the next ones, modulo the polynomial, and added to these. Gives the place up to
// which it has come: the end, or, on a machine without such products, where it began.
#ifdef NR_MOD_LIB_X86_VECTORS
template <class read_t>
__attribute__((target("pclmul"))) std::size_t fold_by_products(const crc_tables_t& tables, std::size_t place,
                                                               std::size_t end, read_t read, folded_t& words)
{
    const auto pair_of = [](std::uint64_t first, std::uint64_t second) {
        return _mm_set_epi64x(static_cast<long long>(second), static_cast<long long>(first));
    };
    const __m128i factors = pair_of(tables.folding[0], tables.folding[1]);
    __m128i pairs[k_folded_words / 2];
    std::memcpy(&pairs, &words, sizeof(pairs));
    while (place < end)
        for (__m128i& pair : pairs) {
            const __m128i moved =
                _mm_xor_si128(_mm_clmulepi64_si128(pair, factors, 0x00), _mm_clmulepi64_si128(pair, factors, 0x11));
            pair = _mm_xor_si128(moved, pair_of(read(place, 64), read(place + 64, 64)));
            place += 128;
        }
    std::memcpy(&words, &pairs, sizeof(pairs));
    return place;
}
#endif

template <class read_t>
std::size_t fold([[maybe_unused]] const crc_tables_t& tables, std::size_t place, [[maybe_unused]] std::size_t end,
                 [[maybe_unused]] read_t read, [[maybe_unused]] folded_t& words)
{
#ifdef NR_MOD_LIB_X86_VECTORS
    if (__builtin_cpu_supports("pclmul"))
        return fold_by_products(tables, place, end, read, words);
#endif
    return place;
}

// The remainder of `count` bits; `read(place, n)` gives the n bits from a place on as a word. Zeros ahead of a message
// don't change its remainder, so what doesn't fill all words that are folded comes first, with zeros ahead.
template <class read_t>
std::uint32_t crc_remainder(const crc_tables_t& tables, std::size_t count, read_t read)
{
    folded_t words{};
    const std::size_t head = count % (64 * k_folded_words);
    std::size_t first = k_folded_words - (head + 63) / 64;
    std::size_t place = head % 64;
    std::size_t filled = first;
    if (place != 0)
        words[filled++] = read(0, place) << (64 - place);
    for (; place < head; place += 64)
        words[filled++] = read(place, 64);
    if (place < count) {
        place = fold(tables, place, count, read, words);
        first = 0;
    }
    remainder_t remainder(tables);
    for (; first < words.size(); ++first)
        remainder.take(words[first]);
    for (; place < count; place += 64)
        remainder.take(read(place, 64));
    return remainder.get();
}

} // namespace

void lib_nr_crc_calculator_t::set_crc_type(lib_nr_crc_type_t type)
{
    m_crc_type = type;
    _update_crc_length();
    _update_crc_polynomial();
}

unsigned int lib_nr_crc_calculator_t::get_crc_length() const { return m_crc_length; }

unsigned int lib_nr_crc_calculator_t::get_crc_length(lib_nr_crc_type_t type)
{
    return k_crc_rows[type < k_crc_rows.size() ? type : LIB_NR_CRC_TYPE_24A].length;
}

bool lib_nr_crc_calculator_t::deal_crc_attachment(const std::vector<unsigned char>& in, std::vector<unsigned char>& out)
{
    if (m_crc_length + 1 > 32) {
        std::cout << "lib_nr_crc_calculator_t::deal_crc_attachment Report : Calculation Length out of range!"
                  << std::endl;
        return false;
    }
    const std::uint32_t remainder =
        crc_remainder(tables_of(m_crc_polynomial), in.size(), [&](std::size_t place, std::size_t bits) {
            return bits < 64 ? common_lib::pack_word(&in[place], bits) : common_lib::pack_word(&in[place]);
        });
    std::array<unsigned char, 32> parity{};
    common_lib::unpack_word(remainder, m_crc_length, parity.data());

    if (&out != &in) {
        out.clear();
        out.reserve(in.size() + m_crc_length);
        out.insert(out.end(), in.begin(), in.end());
    }
    out.insert(out.end(), parity.begin(), parity.begin() + m_crc_length);
    return true;
}

std::uint32_t lib_nr_crc_calculator_t::get_parity(lib_nr_crc_type_t type, const std::uint64_t* words,
                                                  std::size_t first_bit, std::size_t count)
{
    const std::size_t row = type < k_crc_rows.size() ? type : LIB_NR_CRC_TYPE_24A;
    return crc_remainder(*k_tables_by_row[row], count, [=](std::size_t place, std::size_t) {
        return common_lib::read_packed_bits(words, first_bit + place);
    });
}

void lib_nr_crc_calculator_t::_update_crc_length()
{
    if (m_crc_type >= k_crc_rows.size()) {
        std::cout << "lib_nr_crc_calculator_t::_get_crc_length Report : Unknown CRC Type!" << std::endl;
        return;
    }
    m_crc_length = k_crc_rows[m_crc_type].length;
}

void lib_nr_crc_calculator_t::_update_crc_polynomial()
{
    if (m_crc_type >= k_crc_rows.size()) {
        std::cout << "lib_nr_crc_calculator_t::_update_crc_polynomial Report : Unknown CRC Type!" << std::endl;
        return;
    }
    m_crc_polynomial = k_crc_rows[m_crc_type].polynomial;
}

} // namespace vek::nr_mod_lib

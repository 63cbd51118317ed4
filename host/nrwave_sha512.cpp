#include "host/nrwave_sha512.h"

#include <array>
#include <new>
#include <openssl/crypto.h>
#include <openssl/evp.h>

namespace nrwave
{

namespace
{

/// Of all that these calls may fail for, memory alone is left here.
void expect(int success)
{
    if (success != 1)
        throw std::bad_alloc();
}

} // namespace

sha512_t::sha512_t() : m_context(EVP_MD_CTX_new(), EVP_MD_CTX_free)
{
    OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr); // a machine's own settings are not for this
    expect(m_context ? EVP_DigestInit_ex(m_context.get(), EVP_sha512(), nullptr) : 0);
}

void sha512_t::add(std::string_view bytes) { expect(EVP_DigestUpdate(m_context.get(), bytes.data(), bytes.size())); }

std::string sha512_t::digest()
{
    constexpr std::string_view k_digits = "0123456789abcdef";
    std::array<unsigned char, 64> bytes{};
    expect(EVP_DigestFinal_ex(m_context.get(), bytes.data(), nullptr));
    std::string text;
    for (const unsigned char byte : bytes) {
        text += k_digits[byte >> 4U];
        text += k_digits[byte & 15U];
    }
    return text;
}

} // namespace nrwave

#pragma once

#include <memory>
#include <string>
#include <string_view>

struct evp_md_ctx_st;

namespace nrwave
{

/// The hash SHA-512 of FIPS 180-4 of bytes that come piece by piece. `std::bad_alloc` where memory is short.
class sha512_t
{
public:
    sha512_t();

    void add(std::string_view bytes);
    /// In 128 small hexadecimal digits; nothing may be added behind it.
    std::string digest();

private:
    std::unique_ptr<evp_md_ctx_st, void (*)(evp_md_ctx_st*)> m_context;
};

} // namespace nrwave

#pragma once

#include "host/nrwave_sha512.h"

#include <array>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <string>
#include <thread>

namespace nrwave
{

/// The hash of bytes that a second thread takes, while the first goes on. Of large files the hash is the dearest step,
/// and it cannot be parted.
class hashing_t
{
public:
    hashing_t();
    ~hashing_t();
    hashing_t(const hashing_t&) = delete;
    hashing_t& operator=(const hashing_t&) = delete;

    /// Takes the bytes over, and gives room for the next in their place. Waits where too many wait already.
    void add(std::string& bytes);
    /// As `sha512_t`, of all bytes; nothing may be added behind it.
    std::string digest();

private:
    void _work();
    void _end();

    sha512_t m_hash;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::array<std::string, 8> m_blocks; ///< a ring: those that are taken leave their room to later ones
    std::size_t m_given = 0;
    std::size_t m_taken = 0;
    std::exception_ptr m_failure;
    bool m_is_ended = false;
    std::thread m_worker;
};

} // namespace nrwave

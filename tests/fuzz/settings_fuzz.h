#pragma once

#include <cstddef>
#include <cstdint>

/// What a fuzzer calls with each of its inputs.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

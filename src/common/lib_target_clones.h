#pragma once

/// Before a function with a hot loop: the compiler builds it for wider vector units too, and the loader picks what the
/// machine has. Contraction to fused multiply-add is off in the whole build, so every version gives the same bits.
/// Loops over complex products take NR_MOD_LIB_PRODUCT_CLONES, without the widest unit: there the compiler fuses their
/// multiplications and additions all the same. A test looks for fused instructions in the library.
/// Sanitizers cannot run the loader's choice so early in a process; there the plain version stands alone.
#if defined(__x86_64__) && defined(__linux__) && defined(__GNUC__) && !defined(__clang__) &&                           \
    !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define NR_MOD_LIB_TARGET_CLONES __attribute__((target_clones("avx512f", "avx2", "default")))
#define NR_MOD_LIB_PRODUCT_CLONES __attribute__((target_clones("avx2", "default")))
#else
#define NR_MOD_LIB_TARGET_CLONES
#define NR_MOD_LIB_PRODUCT_CLONES
#endif

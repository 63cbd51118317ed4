#pragma once

#include "common/nr_mod_lib_export.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vek::common_lib
{

/// Shape of the transition from one OFDM symbol to the next.
enum lib_ofdm_windowing_method_type_t : std::uint32_t
{
    LIB_OFDM_WINDOWING_RAISED_COSINE = 0,
};

/// The methods by name.
NR_MOD_LIB_EXPORT const std::map<lib_ofdm_windowing_method_type_t, std::string>&
    enum_name_map(lib_ofdm_windowing_method_type_t);

/// The edges of the window that OFDM symbols wear.
class NR_MOD_LIB_EXPORT lib_ofdm_windowing_method_t
{
public:
    /// Weights of a symbol that fades in over `length` samples. The same weights backwards fade out, and both add up to
    /// 1 at each sample. An unknown method is the raised cosine.
    static std::vector<double> get_rising_edge(lib_ofdm_windowing_method_type_t method, unsigned int length);
};

} // namespace vek::common_lib

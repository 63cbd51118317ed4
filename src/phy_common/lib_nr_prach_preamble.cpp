#include "phy_common/lib_nr_prach_preamble.h"

#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace vek::nr_mod_lib
{

namespace
{

/// Shifts that a root has: in the first run v = 0 to first - 1, then those of the two further runs of type B.
unsigned int first_run(const prach_restricted_parameters_t& p)
{
    return static_cast<unsigned int>(std::max(p.n_shift * p.n_group + p.n_bar, 0));
}

unsigned int number_of_shifts(const prach_restricted_parameters_t& p)
{
    return first_run(p) + static_cast<unsigned int>(std::max(p.n_shift_2, 0) + std::max(p.n_shift_3, 0));
}

unsigned int shift_of(const prach_restricted_parameters_t& p, int ncs, unsigned int v)
{
    const unsigned int first = first_run(p);
    if (v < first) {
        const auto place = static_cast<int>(v);
        return static_cast<unsigned int>(p.d_start * (place / p.n_shift) + place % p.n_shift * ncs);
    }
    const auto beyond = static_cast<int>(v - first);
    if (beyond < p.n_shift_2)
        return static_cast<unsigned int>(p.d_start_2 + beyond * ncs);
    return static_cast<unsigned int>(p.d_start_3 + (beyond - std::max(p.n_shift_2, 0)) * ncs);
}

unsigned int number_of_unrestricted_shifts(unsigned int length, int ncs)
{
    return ncs <= 0 ? 1 : length / static_cast<unsigned int>(ncs);
}

prach_restricted_parameters_t parameters_of_type_a(int length, int ncs, int d_u)
{
    prach_restricted_parameters_t p;
    p.n_shift_2 = p.n_shift_3 = p.d_start_2 = p.d_start_3 = 0;
    if (ncs <= d_u && 3 * d_u < length) {
        p.n_shift = d_u / ncs;
        p.d_start = 2 * d_u + p.n_shift * ncs;
        p.n_group = length / p.d_start;
        p.n_bar = std::max((length - 2 * d_u - p.n_group * p.d_start) / ncs, 0);
        return p;
    }
    if (length <= 3 * d_u && 2 * d_u <= length - ncs) {
        p.n_shift = (length - 2 * d_u) / ncs;
        p.d_start = length - 2 * d_u + p.n_shift * ncs;
        p.n_group = d_u / p.d_start;
        p.n_bar = std::min(std::max((d_u - p.n_group * p.d_start) / ncs, 0), p.n_shift);
        return p;
    }
    return {};
}

prach_restricted_parameters_t parameters_of_type_b(int length, int ncs, int d_u)
{
    prach_restricted_parameters_t p;
    p.n_shift_2 = p.n_shift_3 = p.d_start_2 = p.d_start_3 = 0;
    if (ncs <= d_u && 5 * d_u < length) {
        p.n_shift = d_u / ncs;
        p.d_start = 4 * d_u + p.n_shift * ncs;
        p.n_group = length / p.d_start;
        p.n_bar = std::max((length - 4 * d_u - p.n_group * p.d_start) / ncs, 0);
        return p;
    }
    if (length <= 5 * d_u && 4 * d_u <= length - ncs) {
        p.n_shift = (length - 4 * d_u) / ncs;
        p.d_start = length - 4 * d_u + p.n_shift * ncs;
        p.n_group = d_u / p.d_start;
        p.n_bar = std::min(std::max((d_u - p.n_group * p.d_start) / ncs, 0), p.n_shift);
        return p;
    }
    if (length + ncs <= 4 * d_u && 7 * d_u < 2 * length) {
        p.n_shift = (4 * d_u - length) / ncs;
        p.d_start = 4 * d_u - length + p.n_shift * ncs;
        p.n_group = d_u / p.d_start;
        p.n_bar = std::max((length - 3 * d_u - p.n_group * p.d_start) / ncs, 0);
        const int left_of_group = d_u - p.n_group * p.d_start;
        const int left_of_shift = 4 * d_u - length - p.n_bar * ncs;
        p.n_shift_2 = std::min(left_of_group, left_of_shift) / ncs;
        p.n_shift_3 = (p.n_bar == 0 ? left_of_group : left_of_shift) / ncs - p.n_shift_2;
        p.d_start_2 = length - 3 * d_u + p.n_group * p.d_start + p.n_bar * ncs;
        p.d_start_3 = length - 2 * d_u + p.n_group * p.d_start + p.n_shift_2 * ncs;
        return p;
    }
    if (2 * length <= 7 * d_u && 3 * d_u <= length - ncs) {
        p.n_shift = (length - 3 * d_u) / ncs;
        p.d_start = length - 3 * d_u + p.n_shift * ncs;
        p.n_group = d_u / p.d_start;
        p.n_bar = std::max((4 * d_u - length - p.n_group * p.d_start) / ncs, 0);
        p.n_shift_2 = std::min(d_u - p.n_group * p.d_start, length - 3 * d_u - p.n_bar * ncs) / ncs;
        p.d_start_2 = d_u + p.n_group * p.d_start + p.n_bar * ncs;
        return p;
    }
    if (length + ncs <= 3 * d_u && 5 * d_u < 2 * length) {
        p.n_shift = (3 * d_u - length) / ncs;
        p.d_start = 3 * d_u - length + p.n_shift * ncs;
        p.n_group = d_u / p.d_start;
        p.n_bar = std::max((length - 2 * d_u - p.n_group * p.d_start) / ncs, 0);
        return p;
    }
    if (2 * length <= 5 * d_u && 2 * d_u <= length - ncs) {
        p.n_shift = (length - 2 * d_u) / ncs;
        p.d_start = 2 * (length - 2 * d_u) + p.n_shift * ncs;
        p.n_group = (length - d_u) / p.d_start;
        p.n_bar = std::max((3 * d_u - length - p.n_group * p.d_start) / ncs, 0);
        return p;
    }
    return {};
}

} // namespace

unsigned int lib_nr_prach_preamble_t::get_restrictedset_cyclic_shift(prach_lra_type_t lra, unsigned int u)
{
    // The extended Euclidean algorithm: inverse keeps u * inverse = rest modulo L_RA.
    const auto length = static_cast<int>(lra);
    int rest = length;
    int next_rest = static_cast<int>(u);
    int inverse = 0;
    int next_inverse = 1;
    while (next_rest > 1) {
        const int quotient = rest / next_rest;
        rest = std::exchange(next_rest, rest - quotient * next_rest);
        inverse = std::exchange(next_inverse, inverse - quotient * next_inverse);
    }
    const int q = next_inverse < 0 ? next_inverse + length : next_inverse;
    return static_cast<unsigned int>(2 * q < length ? q : length - q);
}

prach_restricted_parameters_t
lib_nr_prach_preamble_t::get_restricted_cyclic_shift_parameters(prach_lra_type_t lra, prach_restricted_set_type_t set,
                                                                int ncs, unsigned int d_u)
{
    if (ncs == -1) {
        std::cout << "lib_nr_ul_prach_configure_manager_t::get_restricted_cyclic_shift_parameters error!\n"
                  << std::endl;
        return {};
    }
    if (ncs <= 0)
        return {};
    const auto length = static_cast<int>(lra);
    const auto distance = static_cast<int>(d_u);
    return set == RESTRICTED_TYPE_A ? parameters_of_type_a(length, ncs, distance)
                                    : parameters_of_type_b(length, ncs, distance);
}

prach_preamble_t lib_nr_prach_preamble_t::get_preamble(const prach_preamble_setting_t& setting)
{
    const int ncs = lib_nr_phy_common_t::get_prach_ncs(setting.format, setting.lra, setting.restricted_set,
                                                       setting.zero_correlation_zone);
    const unsigned int root_number = setting.lra - 1;
    prach_preamble_t preamble;
    unsigned int before = 0; // preambles of the roots so far
    for (unsigned int i = 0; i < root_number; ++i) {
        preamble.logical_index = (setting.sequence_index + i) % root_number;
        preamble.u = lib_nr_phy_common_t::get_prach_root(setting.lra, preamble.logical_index);
        const unsigned int v = setting.preamble_index - before;
        if (!is_restricted(setting.restricted_set)) {
            const unsigned int number = number_of_unrestricted_shifts(setting.lra, ncs);
            before += number;
            if (v < number) {
                preamble.cyclic_shift = v * static_cast<unsigned int>(std::max(ncs, 0));
                preamble.is_found = true;
                return preamble;
            }
            continue;
        }
        const unsigned int d_u = get_restrictedset_cyclic_shift(setting.lra, preamble.u);
        const prach_restricted_parameters_t p =
            get_restricted_cyclic_shift_parameters(setting.lra, setting.restricted_set, ncs, d_u);
        if (!p.is_valid() || number_of_shifts(p) == 0) {
            if (!p.is_valid())
                std::cout << "get_restricted_cyclic_shift_parameters return error.\n" << std::endl;
            std::cout << "invalid configuration ,Move to the next sequence index.\n" << std::endl;
            continue;
        }
        before += number_of_shifts(p);
        if (v < number_of_shifts(p)) {
            preamble.cyclic_shift = shift_of(p, ncs, v);
            preamble.is_found = true;
            return preamble;
        }
    }
    std::cout << "lib_nr_prach_preamble_t::get_preamble Report : no root sequence has room for preamble index "
              << setting.preamble_index << "!" << std::endl;
    return preamble;
}

} // namespace vek::nr_mod_lib

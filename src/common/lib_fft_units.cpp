#include "common/lib_fft_units.h"

#include "common/lib_fft_passes.h"

#include <utility>

namespace vek::common_lib::detail
{

namespace
{

// Each compiles the passes for its own vector unit.

struct plain_t
{
    template <class pass_t>
    static void run(const fft_sweep_t& sweep, const double* roots, const double* in, double* out)
    {
        pass_t::run(sweep, roots, in, out);
    }
};

#if defined(__x86_64__) && defined(__GNUC__)
#define NR_MOD_LIB_X86_VECTORS

struct avx2_t
{
    template <class pass_t>
    __attribute__((target("avx2"))) static void run(const fft_sweep_t& sweep, const double* roots, const double* in,
                                                    double* out)
    {
        pass_t::run(sweep, roots, in, out);
    }
};

struct avx512_t
{
    template <class pass_t>
    __attribute__((target("avx512f"))) static void run(const fft_sweep_t& sweep, const double* roots, const double* in,
                                                       double* out)
    {
        pass_t::run(sweep, roots, in, out);
    }
};

#endif

template <std::size_t... radix>
using radices_t = std::index_sequence<radix...>;

// What get_fft_radices in lib_fft_direct.cpp draws from.
using whole_radices_t = radices_t<1, 2, 3, 4, 5, 6, 8, 9, 10, 12, 15, 20>;
using first_in_blocks_t = radices_t<8>;
using later_in_blocks_t = radices_t<2, 3, 4, 5, 6, 8, 9, 10, 12, 15>;
using first_in_planes_t = radices_t<5, 9, 10, 12, 15, 20>;
using later_in_planes_t = radices_t<2, 3, 5, 6, 9, 15>;

template <class machine_t, std::size_t width, template <std::size_t> class layout_t>
struct maker_t
{
    using layout = layout_t<width>;

    template <std::size_t... radix>
    static void add_first(fft_unit_t& unit, radices_t<radix...>)
    {
        const auto add = [&](auto r) {
            if constexpr (r >= width) {
                unit.first[0][r] = machine_t::template run<fft_first_pass_t<width, r, layout, false, false>>;
                unit.first[1][r] = machine_t::template run<fft_first_pass_t<width, r, layout, true, false>>;
                unit.first_in_tiles[0][r] = machine_t::template run<fft_first_pass_t<width, r, layout, false, true>>;
                unit.first_in_tiles[1][r] = machine_t::template run<fft_first_pass_t<width, r, layout, true, true>>;
            }
        };
        (add(std::integral_constant<std::size_t, radix>()), ...);
    }

    template <std::size_t... radix>
    static void add_middle(fft_unit_t& unit, radices_t<radix...>)
    {
        ((unit.middle[radix] = machine_t::template run<fft_middle_pass_t<width, radix, layout>>), ...);
    }

    template <std::size_t... radix>
    static void add_last(fft_unit_t& unit, radices_t<radix...>)
    {
        ((unit.last[0][radix] = machine_t::template run<fft_last_pass_t<width, radix, layout, false>>), ...);
        ((unit.last[1][radix] = machine_t::template run<fft_last_pass_t<width, radix, layout, true>>), ...);
    }

    template <class first_t, class later_t>
    static fft_unit_t make(first_t first, later_t later)
    {
        fft_unit_t unit;
        unit.width = width;
        unit.is_in_planes = layout::is_plane;
        add_first(unit, first);
        add_middle(unit, later);
        add_last(unit, later);
        return unit;
    }
};

template <class machine_t, std::size_t width>
void add_units(std::vector<fft_unit_t>& units)
{
    units.push_back(maker_t<machine_t, width, fft_planes_t>::make(first_in_planes_t(), later_in_planes_t()));
    units.push_back(maker_t<machine_t, width, fft_blocks_t>::make(first_in_blocks_t(), later_in_blocks_t()));
}

} // namespace

bool fft_unit_t::can_run(const std::vector<std::size_t>& radices, std::size_t length) const
{
    bool can =
        length / radices.front() >= width && first[0][radices.front()] != nullptr && last[0][radices.back()] != nullptr;
    for (std::size_t i = 1; i + 1 < radices.size(); ++i)
        can = can && middle[radices[i]] != nullptr;
    return can;
}

const std::vector<fft_unit_t>& get_fft_units()
{
    static const std::vector<fft_unit_t> units = [] {
        // A length that is a radix is one pass of single values and one that does nothing.
        std::vector<fft_unit_t> found = {maker_t<plain_t, 1, fft_blocks_t>::make(whole_radices_t(), radices_t<1>())};
        add_units<plain_t, 2>(found);
#ifdef NR_MOD_LIB_X86_VECTORS
        if (__builtin_cpu_supports("avx2"))
            add_units<avx2_t, 4>(found);
        if (__builtin_cpu_supports("avx512f"))
            add_units<avx512_t, 8>(found);
#endif
        return found;
    }();
    return units;
}

} // namespace vek::common_lib::detail

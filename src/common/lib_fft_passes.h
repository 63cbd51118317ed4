#pragma once

#include "common/lib_fft_sweep.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

// The passes of a transform whose length is a product of small radices, in vectors of any width. Every lane does the
// same operations in the same order whatever the width, so the results have equal bits.
//
// A pass of radix R takes N = stride R rest values from x to y (Stockham's order: the result needs no reversal of
// digits). With i and k from 0 to R - 1, q below the stride and p below the rest,
//   y[q + stride (R p + k)] = w^(p k) sum over i of x[q + stride (p + rest i)] exp(-j 2 pi i k / R),
// w being the first root of unity of order R rest. Only the forward transform is built: with real and imaginary parts
// exchanged at both ends it is the inverse one.
namespace vek::common_lib::detail
{

template <std::size_t width>
struct fft_lanes_t
{
    typedef double type __attribute__((vector_size(width * sizeof(double))));
};
template <>
struct fft_lanes_t<1>
{
    using type = double;
};

template <std::size_t width>
struct fft_values_t
{
    typename fft_lanes_t<width>::type re;
    typename fft_lanes_t<width>::type im;
};

/// Vectors of real and imaginary parts come out of interleaved samples, and go back, in this order at the least cost.
constexpr std::size_t place_of_lane(std::size_t lane, std::size_t width) { return lane / 2 + lane % 2 * (width / 2); }

/// Between the passes the values lie in blocks of one vector of real and one of imaginary parts, the lanes of a block
/// in the order of place_of_lane. Strides are multiples of the width.
template <std::size_t width>
struct fft_blocks_t
{
    static constexpr bool is_plane = false;
    static constexpr std::size_t place(std::size_t index) { return 2 * index; }
    static constexpr std::size_t distance_of_parts(std::size_t) { return width; }
};

/// Or all real parts lie ahead of all imaginary parts: for strides that are no multiples of the width, but no smaller.
/// The last vector of a run then overlaps the one before it, and does some of its work again.
template <std::size_t width>
struct fft_planes_t
{
    static constexpr bool is_plane = true;
    static constexpr std::size_t place(std::size_t index) { return index; }
    static constexpr std::size_t distance_of_parts(std::size_t length) { return length; }
};

/// Samples at either end of a transform.
struct fft_samples_t
{
    static constexpr std::size_t place(std::size_t index) { return 2 * index; }
};

#define NR_MOD_LIB_INLINE __attribute__((always_inline)) inline
#define NR_MOD_LIB_INLINE_LAMBDA __attribute__((always_inline))

template <class body_t, std::size_t... i>
NR_MOD_LIB_INLINE void repeat(const body_t& body, std::index_sequence<i...>)
{
    (body(std::integral_constant<std::size_t, i>()), ...);
}

/// body(0) to body(count - 1), the index being a constant: arrays indexed by it stay in registers.
template <std::size_t count, class body_t>
NR_MOD_LIB_INLINE void repeat(const body_t& body)
{
    repeat(body, std::make_index_sequence<count>());
}

template <std::size_t w>
NR_MOD_LIB_INLINE fft_values_t<w> operator+(const fft_values_t<w>& a, const fft_values_t<w>& b)
{
    return {a.re + b.re, a.im + b.im};
}

template <std::size_t w>
NR_MOD_LIB_INLINE fft_values_t<w> operator-(const fft_values_t<w>& a, const fft_values_t<w>& b)
{
    return {a.re - b.re, a.im - b.im};
}

template <std::size_t w>
NR_MOD_LIB_INLINE fft_values_t<w> operator*(const fft_values_t<w>& a, double factor)
{
    return {a.re * factor, a.im * factor};
}

/// A root as two numbers or as two vectors.
template <std::size_t w, class part_t>
NR_MOD_LIB_INLINE fft_values_t<w> turned(const fft_values_t<w>& a, const part_t& re, const part_t& im)
{
    return {a.re * re - a.im * im, a.re * im + a.im * re};
}

/// a + j b
template <std::size_t w>
NR_MOD_LIB_INLINE fft_values_t<w> plus_j(const fft_values_t<w>& a, const fft_values_t<w>& b)
{
    return {a.re - b.im, a.im + b.re};
}

/// a - j b
template <std::size_t w>
NR_MOD_LIB_INLINE fft_values_t<w> minus_j(const fft_values_t<w>& a, const fft_values_t<w>& b)
{
    return {a.re + b.im, a.im - b.re};
}

template <std::size_t w, bool wanted>
NR_MOD_LIB_INLINE fft_values_t<w> exchanged_if(const fft_values_t<w>& a)
{
    return wanted ? fft_values_t<w>{a.im, a.re} : a;
}

// The transforms of one radix each, in place.

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&)[1])
{}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[2])
{
    const auto difference = a[0] - a[1];
    a[0] = a[0] + a[1];
    a[1] = difference;
}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[3])
{
    constexpr double k_sine_60 = 0.86602540378443864676;
    const auto sum = a[1] + a[2];
    const auto side = (a[1] - a[2]) * k_sine_60;
    const auto middle = a[0] - sum * 0.5;
    a[0] = a[0] + sum;
    a[1] = minus_j(middle, side);
    a[2] = plus_j(middle, side);
}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[4])
{
    const auto sum_02 = a[0] + a[2];
    const auto difference_02 = a[0] - a[2];
    const auto sum_13 = a[1] + a[3];
    const auto difference_13 = a[1] - a[3];
    a[0] = sum_02 + sum_13;
    a[1] = minus_j(difference_02, difference_13);
    a[2] = sum_02 - sum_13;
    a[3] = plus_j(difference_02, difference_13);
}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[5])
{
    constexpr double k_cosine_72 = 0.30901699437494742410;
    constexpr double k_cosine_36 = 0.80901699437494742410;
    constexpr double k_sine_72 = 0.95105651629515357212;
    constexpr double k_sine_36 = 0.58778525229247312917;
    const auto sum_14 = a[1] + a[4];
    const auto difference_14 = a[1] - a[4];
    const auto sum_23 = a[2] + a[3];
    const auto difference_23 = a[2] - a[3];
    const auto middle_14 = (a[0] + sum_14 * k_cosine_72) - sum_23 * k_cosine_36;
    const auto middle_23 = (a[0] - sum_14 * k_cosine_36) + sum_23 * k_cosine_72;
    const auto side_14 = difference_14 * k_sine_72 + difference_23 * k_sine_36;
    const auto side_23 = difference_14 * k_sine_36 - difference_23 * k_sine_72;
    a[0] = (a[0] + sum_14) + sum_23;
    a[1] = minus_j(middle_14, side_14);
    a[4] = plus_j(middle_14, side_14);
    a[2] = minus_j(middle_23, side_23);
    a[3] = plus_j(middle_23, side_23);
}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[8])
{
    constexpr double k_cosine_45 = 0.70710678118654752440;
    fft_values_t<w> even[4] = {a[0] + a[4], a[1] + a[5], a[2] + a[6], a[3] + a[7]};
    combine(even);
    const auto difference_04 = a[0] - a[4];
    const auto difference_15 = a[1] - a[5];
    const auto difference_26 = a[2] - a[6];
    const auto difference_37 = a[3] - a[7];
    const auto odd_1 = minus_j(difference_04, difference_26);
    const auto odd_3 = plus_j(difference_04, difference_26);
    const auto x = minus_j(difference_15, difference_37);
    const auto y = plus_j(difference_15, difference_37);
    // Back by an eighth of a turn and by three eighths; the latter with the sign of its imaginary part changed.
    const auto x_turned = fft_values_t<w>{x.re + x.im, x.im - x.re} * k_cosine_45;
    const auto y_turned = fft_values_t<w>{y.im - y.re, y.re + y.im} * k_cosine_45;
    a[0] = even[0];
    a[1] = odd_1 + x_turned;
    a[2] = even[1];
    a[3] = {odd_3.re + y_turned.re, odd_3.im - y_turned.im};
    a[4] = even[2];
    a[5] = odd_1 - x_turned;
    a[6] = even[3];
    a[7] = {odd_3.re - y_turned.re, odd_3.im + y_turned.im};
}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[9])
{
    constexpr double k_cosine_40 = 0.76604444311897803520;
    constexpr double k_sine_40 = 0.64278760968653932632;
    constexpr double k_cosine_80 = 0.17364817766693034885;
    constexpr double k_sine_80 = 0.98480775301220805937;
    constexpr double k_cosine_160 = -0.93969262078590838405;
    constexpr double k_sine_160 = 0.34202014332566873304;
    fft_values_t<w> rows[3][3] = {{a[0], a[3], a[6]}, {a[1], a[4], a[7]}, {a[2], a[5], a[8]}};
    repeat<3>([&](auto i) NR_MOD_LIB_INLINE_LAMBDA { combine(rows[i]); });
    rows[1][1] = turned(rows[1][1], k_cosine_40, -k_sine_40);
    rows[1][2] = turned(rows[1][2], k_cosine_80, -k_sine_80);
    rows[2][1] = turned(rows[2][1], k_cosine_80, -k_sine_80);
    rows[2][2] = turned(rows[2][2], k_cosine_160, -k_sine_160);
    repeat<3>([&](auto k) NR_MOD_LIB_INLINE_LAMBDA {
        fft_values_t<w> column[3] = {rows[0][k], rows[1][k], rows[2][k]};
        combine(column);
        repeat<3>([&](auto i) NR_MOD_LIB_INLINE_LAMBDA { a[k + 3 * i] = column[i]; });
    });
}

constexpr std::size_t inverse_modulo(std::size_t number, std::size_t modulus)
{
    std::size_t inverse = 1;
    while (number * inverse % modulus != 1)
        ++inverse;
    return inverse;
}

/// A radix that is the product of two without a common factor: columns, then rows, without roots in between (the order
/// of Good).
template <std::size_t rows, std::size_t columns, std::size_t w>
NR_MOD_LIB_INLINE void combine_product(fft_values_t<w> (&a)[rows * columns])
{
    constexpr std::size_t radix = rows * columns;
    constexpr std::size_t row_step = columns * inverse_modulo(columns, rows);
    constexpr std::size_t column_step = rows * inverse_modulo(rows, columns);
    fft_values_t<w> b[columns][rows];
    repeat<columns>([&](auto c) NR_MOD_LIB_INLINE_LAMBDA {
        repeat<rows>([&](auto r) NR_MOD_LIB_INLINE_LAMBDA { b[c][r] = a[(r * columns + c * rows) % radix]; });
        combine(b[c]);
    });
    repeat<rows>([&](auto r) NR_MOD_LIB_INLINE_LAMBDA {
        fft_values_t<w> row[columns];
        repeat<columns>([&](auto c) NR_MOD_LIB_INLINE_LAMBDA { row[c] = b[c][r]; });
        combine(row);
        repeat<columns>([&](auto c) NR_MOD_LIB_INLINE_LAMBDA { a[(r * row_step + c * column_step) % radix] = row[c]; });
    });
}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[6])
{
    combine_product<2, 3>(a);
}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[10])
{
    combine_product<2, 5>(a);
}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[12])
{
    combine_product<4, 3>(a);
}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[15])
{
    combine_product<3, 5>(a);
}

template <std::size_t w>
NR_MOD_LIB_INLINE void combine(fft_values_t<w> (&a)[20])
{
    combine_product<4, 5>(a);
}

template <std::size_t w>
NR_MOD_LIB_INLINE fft_values_t<w> load(const double* re, std::size_t distance_of_parts)
{
    fft_values_t<w> value;
    std::memcpy(&value.re, re, sizeof(value.re));
    std::memcpy(&value.im, re + distance_of_parts, sizeof(value.im));
    return value;
}

template <std::size_t w>
NR_MOD_LIB_INLINE void store(const fft_values_t<w>& value, double* re, std::size_t distance_of_parts)
{
    std::memcpy(re, &value.re, sizeof(value.re));
    std::memcpy(re + distance_of_parts, &value.im, sizeof(value.im));
}

/// Of two vectors as rows in squares of 2 by 2 pieces of so many lanes, exchanges the pieces off the diagonals.
template <std::size_t piece, class vector_t, std::size_t... l>
NR_MOD_LIB_INLINE void exchange(vector_t& a, vector_t& b, std::index_sequence<l...>)
{
    constexpr std::size_t w = sizeof...(l);
    const vector_t lower = __builtin_shufflevector(a, b, ((l & piece) != 0 ? w + l - piece : l)...);
    const vector_t upper = __builtin_shufflevector(a, b, ((l & piece) != 0 ? w + l : l + piece)...);
    a = lower;
    b = upper;
}

/// Between a pair of vectors of interleaved samples and one of real and one of imaginary parts, both ways.
template <std::size_t w>
NR_MOD_LIB_INLINE void interleave(fft_values_t<w>& value)
{
    if constexpr (w > 1)
        exchange<1>(value.re, value.im, std::make_index_sequence<w>());
}

/// From the order of place_of_lane to that of the samples; of vectors that interleave() has paired.
template <std::size_t w, std::size_t piece = 2>
NR_MOD_LIB_INLINE void put_in_order(fft_values_t<w>& value)
{
    if constexpr (piece < w) {
        exchange<piece>(value.re, value.im, std::make_index_sequence<w>());
        put_in_order<w, 2 * piece>(value);
    }
}

/// Turns rows into columns.
template <std::size_t w, std::size_t piece = 1>
NR_MOD_LIB_INLINE void transpose(fft_values_t<w> (&rows)[w])
{
    if constexpr (piece < w) {
        repeat<w>([&](auto i) NR_MOD_LIB_INLINE_LAMBDA {
            if constexpr ((i & piece) == 0) {
                exchange<piece>(rows[i].re, rows[i + piece].re, std::make_index_sequence<w>());
                exchange<piece>(rows[i].im, rows[i + piece].im, std::make_index_sequence<w>());
            }
        });
        transpose<w, 2 * piece>(rows);
    }
}

/// Where the values of one radix lie: at 0, 1 ... radix - 1 times a distance from a place that moves.
template <std::size_t radix>
class fft_spread_t
{
public:
    NR_MOD_LIB_INLINE explicit fft_spread_t(std::size_t numbers)
    {
        repeat<(radix + 1) / 2>([&](auto i) NR_MOD_LIB_INLINE_LAMBDA {
            m_odd_multiples[i] = static_cast<std::ptrdiff_t>((2 * i + 1) * numbers * sizeof(double));
            hide(m_odd_multiples[i]);
        });
    }

    /// By a register with an odd multiple, scaled by a power of two.
    template <class number_t, std::size_t i>
    NR_MOD_LIB_INLINE number_t* at(number_t* place, std::integral_constant<std::size_t, i>) const
    {
        using byte_t = std::conditional_t<std::is_const_v<number_t>, const char, char>;
        number_t* result = place;
        if constexpr (i > 0) {
            constexpr std::size_t power = i & (~i + 1);
            const std::ptrdiff_t bytes = m_odd_multiples[i / power / 2] * static_cast<std::ptrdiff_t>(power);
            result = reinterpret_cast<number_t*>(reinterpret_cast<byte_t*>(place) + bytes);
            hide(result);
        }
        return result;
    }

private:
    /// Keeps the compiler from seeing how the value was made. It would otherwise keep a pointer or a sum for each
    /// place, more than there are registers, and the loops would spend as long on addresses as on the transform.
    template <class value_t>
    NR_MOD_LIB_INLINE static void hide(value_t& value)
    {
        __asm__("" : "+r"(value));
    }

    std::ptrdiff_t m_odd_multiples[(radix + 1) / 2];
};

/// The first pass, of stride 1, with lanes over p: a step is a vector of them. Reads samples. Its roots come in
/// vectors, or with tiles as the products of numbers and vectors.
template <std::size_t w, std::size_t radix, class layout_t, bool is_inverse, bool has_tiles>
struct fft_first_pass_t
{
    NR_MOD_LIB_INLINE static void run(const fft_sweep_t& sweep, const double* roots, const double* in, double* out)
    {
        const fft_spread_t<radix> from(fft_samples_t::place(sweep.in_distance));
        for (std::size_t step = 0; step < sweep.count; ++step) {
            const double* const x = in + fft_samples_t::place(step * sweep.in_step);
            fft_values_t<w> a[radix];
            repeat<radix>([&](auto i) NR_MOD_LIB_INLINE_LAMBDA {
                a[i] = load<w>(from.at(x, i), w);
                interleave(a[i]);
                a[i] = exchanged_if<w, is_inverse>(a[i]);
            });
            combine(a);
            repeat<radix - 1>([&](auto i) NR_MOD_LIB_INLINE_LAMBDA {
                fft_values_t<w> root;
                if constexpr (has_tiles)
                    root = turned(load<w>(sweep.roots_in_run + 2 * w * i, w), roots[2 * i], roots[2 * i + 1]);
                else
                    root = load<w>(roots + 2 * w * i, w);
                a[i + 1] = turned(a[i + 1], root.re, root.im);
            });
            store_columns(a, out + layout_t::place(step * sweep.out_step), sweep.out_length);
            roots += sweep.root_step;
        }
    }

private:
    /// For each p the values of all k, one behind the other. The last piece of w of them may overlap the one before.
    NR_MOD_LIB_INLINE static void store_columns(const fft_values_t<w> (&a)[radix], double* out, std::size_t length)
    {
        repeat<(radix + w - 1) / w>([&](auto piece) NR_MOD_LIB_INLINE_LAMBDA {
            constexpr std::size_t first = std::min(piece * w, radix - w);
            fft_values_t<w> rows[w];
            repeat<w>([&](auto l) NR_MOD_LIB_INLINE_LAMBDA {
                rows[l] = a[first + (layout_t::is_plane ? l : place_of_lane(l, w))];
            });
            transpose<w>(rows);
            repeat<w>([&](auto l) NR_MOD_LIB_INLINE_LAMBDA {
                store<w>(rows[l], out + layout_t::place(radix * place_of_lane(l, w) + first),
                         layout_t::distance_of_parts(length));
            });
        });
    }
};

/// Calls body(roots, x, y) for each vector of the runs of all steps.
template <std::size_t w, class from_t, class to_t, class body_t>
NR_MOD_LIB_INLINE void walk(const fft_sweep_t& sweep, const double* roots, const double* x, double* y,
                            const body_t& body)
{
    std::size_t left = sweep.run;
    // One loop and not two, for the inner one would often be of a single turn.
    for (std::size_t n = sweep.count * ((sweep.run + w - 1) / w); n > 0; --n) {
        if constexpr (from_t::is_plane) {
            if (left < w) {
                x -= from_t::place(w - left);
                y -= to_t::place(w - left);
                left = w;
            }
        }
        body(roots, x, y);
        x += from_t::place(w);
        y += to_t::place(w);
        left -= w;
        if (left == 0) {
            left = sweep.run;
            x += from_t::place(sweep.in_step - sweep.run);
            y += to_t::place(sweep.out_step - sweep.run);
            roots += sweep.root_step;
        }
    }
}

template <std::size_t w, std::size_t radix>
NR_MOD_LIB_INLINE void load_and_combine(fft_values_t<w> (&a)[radix], const fft_spread_t<radix>& from, const double* x,
                                        std::size_t distance_of_parts)
{
    repeat<radix>([&](auto i) NR_MOD_LIB_INLINE_LAMBDA { a[i] = load<w>(from.at(x, i), distance_of_parts); });
    combine(a);
}

/// A pass between the first and the last, with lanes over q.
template <std::size_t w, std::size_t radix, class layout_t>
struct fft_middle_pass_t
{
    NR_MOD_LIB_INLINE static void run(const fft_sweep_t& sweep, const double* roots, const double* in, double* out)
    {
        const std::size_t in_parts = layout_t::distance_of_parts(sweep.in_length);
        const std::size_t out_parts = layout_t::distance_of_parts(sweep.out_length);
        const fft_spread_t<radix> from(layout_t::place(sweep.in_distance));
        const fft_spread_t<radix> to(layout_t::place(sweep.out_distance));
        const auto body = [&](const double* root, const double* x, double* y) NR_MOD_LIB_INLINE_LAMBDA {
            fft_values_t<w> a[radix];
            load_and_combine(a, from, x, in_parts);
            store<w>(a[0], y, out_parts);
            repeat<radix - 1>([&](auto i) NR_MOD_LIB_INLINE_LAMBDA {
                constexpr std::integral_constant<std::size_t, i + 1> k;
                store<w>(turned(a[k], root[2 * i], root[2 * i + 1]), to.at(y, k), out_parts);
            });
        };
        walk<w, layout_t, layout_t>(sweep, roots, in, out, body);
    }
};

/// The last pass, of rest 1 and so without roots, with lanes over q. Writes samples.
template <std::size_t w, std::size_t radix, class layout_t, bool is_inverse>
struct fft_last_pass_t
{
    NR_MOD_LIB_INLINE static void run(const fft_sweep_t& sweep, const double* roots, const double* in, double* out)
    {
        const std::size_t in_parts = layout_t::distance_of_parts(sweep.in_length);
        const fft_spread_t<radix> from(layout_t::place(sweep.in_distance));
        const fft_spread_t<radix> to(fft_samples_t::place(sweep.out_distance));
        const auto body = [&](const double*, const double* x, double* y) NR_MOD_LIB_INLINE_LAMBDA {
            fft_values_t<w> a[radix];
            load_and_combine(a, from, x, in_parts);
            repeat<radix>([&](auto k) NR_MOD_LIB_INLINE_LAMBDA {
                fft_values_t<w> value = exchanged_if<w, is_inverse>(a[k]);
                interleave(value);
                if constexpr (layout_t::is_plane)
                    put_in_order(value);
                store<w>(value, to.at(y, k), w);
            });
        };
        walk<w, layout_t, fft_samples_t>(sweep, roots, in, out, body);
    }
};

#undef NR_MOD_LIB_INLINE
#undef NR_MOD_LIB_INLINE_LAMBDA

} // namespace vek::common_lib::detail

#include "common/lib_fft_direct.h"

#include "common/lib_fft_passes.h"
#include "common/lib_fft_roots.h"

#include <algorithm>

namespace vek::common_lib::detail
{

namespace
{

// Values that a pair of passes takes at a time out of every one of its rows: whole cache lines.
constexpr std::size_t k_tile_run = 8;
constexpr std::size_t k_tile_numbers = 2 * k_tile_run * 20 * 15;

// Where a last tile that overlaps the one before does not cost more than all save.
bool is_good_for_tiles(std::size_t count) { return count % k_tile_run == 0 || count >= 8 * k_tile_run; }

std::size_t take_out(std::size_t factor, std::size_t& length)
{
    std::size_t exponent = 0;
    for (; length % factor == 0; length /= factor)
        ++exponent;
    return exponent;
}

void append(std::vector<std::size_t>& radices, std::size_t count, std::size_t radix)
{
    radices.insert(radices.end(), count, radix);
}

// Multiples of 8: the first radix is 8.
std::vector<std::size_t> radices_in_blocks(std::size_t twos, std::size_t threes, std::size_t fives)
{
    std::size_t eights = (twos - 3) / 3;
    std::size_t fours = 0;
    std::vector<std::size_t> mixed;
    if (twos % 3 == 2)
        fours = 1;
    else if (twos % 3 == 1) {
        if (threes % 2 == 1)
            mixed.push_back(6), --threes;
        else if (fives > 0)
            mixed.push_back(10), --fives;
        else if (eights > 0)
            fours = 2, --eights;
        else
            mixed.push_back(2);
    }
    if (fours > 0 && threes % 2 == 1)
        mixed.push_back(12), --threes, --fours;

    std::vector<std::size_t> radices = {8};
    append(radices, fours, 4);
    radices.insert(radices.end(), mixed.begin(), mixed.end());
    append(radices, threes % 2, 3);
    append(radices, fives, 5);
    append(radices, threes / 2, 9);
    append(radices, eights, 8);
    return radices;
}

// All others. The first radix is the largest that there is, so that many vectors fit into the strides behind it.
std::vector<std::size_t> radices_in_planes(std::size_t twos, std::size_t threes, std::size_t fives)
{
    std::vector<std::size_t> radices;
    std::size_t last = 1;
    if (twos == 2 && fives > 0)
        radices.push_back(20), --fives;
    else if (twos == 2 && threes > 0)
        radices.push_back(12), --threes;
    else if (twos == 2)
        radices.push_back(4);
    else if (twos == 1 && fives > 0)
        radices.push_back(10), --fives;
    else if (twos == 1 && threes % 2 == 1)
        last = 6, --threes;
    else if (twos == 1)
        last = 2;
    if (threes % 2 == 1 && fives > 0)
        radices.push_back(15), --threes, --fives;
    append(radices, threes / 2, 9);
    append(radices, fives, 5);
    append(radices, threes % 2, 3);
    append(radices, last == 1 ? 0 : 1, last);
    return radices;
}

const fft_unit_t& widest_unit_for(std::size_t length)
{
    const std::vector<std::size_t> radices = fft_direct_t::get_radices(length);
    const std::vector<fft_unit_t>& units = get_fft_units();
    return *std::find_if(units.rbegin(), units.rend(),
                         [&](const fft_unit_t& unit) { return unit.can_run(radices, length); });
}

} // namespace

std::vector<std::size_t> fft_direct_t::get_radices(std::size_t length)
{
    const std::size_t twos = take_out(2, length);
    const std::size_t threes = take_out(3, length);
    const std::size_t fives = take_out(5, length);
    std::vector<std::size_t> radices =
        twos >= 3 ? radices_in_blocks(twos, threes, fives) : radices_in_planes(twos, threes, fives);
    if (radices.size() < 2)
        radices.resize(2, 1);
    return radices;
}

fft_direct_t::numbers_t fft_direct_t::_make_numbers(std::size_t count)
{
    return numbers_t(static_cast<double*>(::operator new[](count * sizeof(double), k_alignment)));
}

fft_direct_t::fft_direct_t(std::size_t length) : fft_direct_t(length, widest_unit_for(length)) {}

fft_direct_t::fft_direct_t(std::size_t length, const fft_unit_t& unit)
    : m_length(length), m_width(unit.width), m_is_in_planes(unit.is_in_planes)
{
    const std::vector<std::size_t> radices = get_radices(length);
    for (std::size_t i = 0; i < radices.size(); ++i)
        _add_pass(unit, radices[i], i + 1 == radices.size());
    for (std::size_t i = 0; i < m_passes.size(); i += m_stages.back().is_pair ? 2 : 1)
        m_stages.push_back({i, _can_pair(i)});

    const std::vector<std::complex<double>> all_roots = make_roots_of_unity(length);
    _fill_roots_of_first(all_roots);
    for (std::size_t i = 1; i + 1 < m_passes.size(); ++i)
        _fill_roots(m_passes[i], all_roots);
}

void fft_direct_t::_add_pass(const fft_unit_t& unit, std::size_t radix, bool is_last)
{
    pass_t pass{};
    pass.radix = radix;
    pass.stride = m_passes.empty() ? 1 : m_passes.back().stride * m_passes.back().radix;
    pass.rest = m_length / pass.stride / radix;
    for (const std::size_t inverse : {0U, 1U})
        pass.run[inverse] = m_passes.empty() ? unit.first[inverse][radix]
                            : is_last        ? unit.last[inverse][radix]
                                             : unit.middle[radix];
    m_passes.push_back(std::move(pass));
}

void fft_direct_t::_fill_roots_of_first(const std::vector<std::complex<double>>& all_roots)
{
    pass_t& pass = m_passes.front();
    std::vector<std::size_t> begins; // the first p of each vector
    if (m_stages.front().is_pair) {
        const std::size_t rest = m_passes[1].rest;
        for (std::size_t p = 0; p < rest; p += k_tile_run)
            for (std::size_t lane = 0; lane < k_tile_run; lane += m_width)
                for (std::size_t i = 0; i < m_passes[1].radix; ++i)
                    begins.push_back(std::min(p, rest - k_tile_run) + lane + rest * i);
    }
    else
        for (std::size_t p = 0; p < pass.rest; p += m_width)
            begins.push_back(std::min(p, pass.rest - m_width));

    pass.root_step = 2 * m_width * (pass.radix - 1);
    pass.roots = _make_numbers(begins.size() * pass.root_step);
    double* root = pass.roots.get();
    for (const std::size_t begin : begins)
        for (std::size_t k = 1; k < pass.radix; ++k, root += 2 * m_width)
            for (std::size_t lane = 0; lane < m_width; ++lane) {
                const std::size_t p = begin + (m_width == 1 ? 0 : lane / 2 + (lane % 2) * (m_width / 2));
                root[lane] = all_roots[p * k].real();
                root[m_width + lane] = all_roots[p * k].imag();
            }
}

void fft_direct_t::_fill_roots(pass_t& pass, const std::vector<std::complex<double>>& all_roots) const
{
    pass.root_step = 2 * (pass.radix - 1);
    pass.roots = _make_numbers(pass.rest * pass.root_step);
    double* root = pass.roots.get();
    for (std::size_t p = 0; p < pass.rest; ++p)
        for (std::size_t k = 1; k < pass.radix; ++k) {
            const std::complex<double>& value = all_roots[p * k * pass.stride];
            *root++ = value.real();
            *root++ = value.imag();
        }
}

bool fft_direct_t::_can_pair(std::size_t first_pass) const
{
    return first_pass + 1 < m_passes.size() &&
           is_good_for_tiles(first_pass == 0 ? m_passes[1].rest : m_passes[first_pass].stride);
}

std::size_t fft_direct_t::_place(std::size_t index) const { return (m_is_in_planes ? 1 : 2) * index; }

// Passes go back and forth between the result and one more buffer, that of the thread, so that the last one ends in the
// result.
void fft_direct_t::execute(lib_fft_direction_t direction, const std::complex<double>* in,
                           std::complex<double>* out) const
{
    thread_local numbers_t work;
    thread_local std::size_t work_size = 0;
    if (work_size < 2 * m_length) {
        work.reset();
        work_size = 0;
        work = _make_numbers(2 * m_length);
        work_size = 2 * m_length;
    }
    const auto* source = reinterpret_cast<const double*>(in);
    auto* const result = reinterpret_cast<double*>(out);
    if (in == out && m_stages.size() % 2 == 1) {
        std::copy_n(source, 2 * m_length, work.get());
        source = work.get();
    }
    for (std::size_t i = 0; i < m_stages.size(); ++i) {
        double* const target = (m_stages.size() - i) % 2 == 1 ? result : work.get();
        _run_stage(m_stages[i], direction, source, target);
        source = target;
    }
}

void fft_direct_t::_run_stage(const stage_t& stage, lib_fft_direction_t direction, const double* in, double* out) const
{
    const pass_t& first = m_passes[stage.first_pass];
    if (!stage.is_pair)
        _run_pass(first, direction, in, out);
    else if (stage.first_pass == 0)
        _run_first_pair(first, m_passes[1], direction, in, out);
    else
        _run_pair(first, m_passes[stage.first_pass + 1], direction, in, out);
}

void fft_direct_t::_run_pass(const pass_t& pass, lib_fft_direction_t direction, const double* in, double* out) const
{
    fft_sweep_t sweep;
    sweep.in_length = m_length;
    sweep.out_length = m_length;
    sweep.roots = pass.roots.get();
    sweep.root_step = pass.root_step;
    sweep.in_distance = pass.stride * pass.rest;
    sweep.out_distance = pass.stride;
    if (&pass != m_passes.data()) {
        sweep.count = pass.rest;
        sweep.run = pass.stride;
        sweep.in_step = pass.stride;
        sweep.out_step = pass.stride * pass.radix;
        pass.run[direction](sweep, in, out);
        return;
    }
    sweep.count = pass.rest / m_width;
    sweep.in_step = m_width;
    sweep.out_step = m_width * pass.radix;
    pass.run[direction](sweep, in, out);
    if (pass.rest % m_width == 0)
        return;
    // A last vector overlaps the one before it.
    const std::size_t p = pass.rest - m_width;
    sweep.roots += sweep.count * sweep.root_step;
    sweep.count = 1;
    pass.run[direction](sweep, in + 2 * p, out + _place(pass.radix * p));
}

// With i' and k' for the second pass, its input places p' + rest' i' are those p of the first that differ by multiples
// of rest': all of them for some neighbouring p' make a tile, by i', then p', then k.
void fft_direct_t::_run_first_pair(const pass_t& first, const pass_t& second, lib_fft_direction_t direction,
                                   const double* in, double* out) const
{
    alignas(64) double tile[k_tile_numbers];
    fft_sweep_t into_tile;
    into_tile.in_length = m_length;
    into_tile.out_length = k_tile_run * first.radix * second.radix;
    into_tile.count = second.radix;
    into_tile.in_step = second.rest;
    into_tile.in_distance = first.rest;
    into_tile.out_step = k_tile_run * first.radix;
    into_tile.roots = first.roots.get();
    into_tile.root_step = first.root_step;
    fft_sweep_t from_tile;
    from_tile.in_length = into_tile.out_length;
    from_tile.out_length = m_length;
    from_tile.count = k_tile_run;
    from_tile.run = first.radix;
    from_tile.in_step = first.radix;
    from_tile.in_distance = k_tile_run * first.radix;
    from_tile.out_step = first.radix * second.radix;
    from_tile.out_distance = first.radix;
    from_tile.root_step = second.root_step;
    for (std::size_t begin = 0; begin < second.rest; begin += k_tile_run) {
        const std::size_t p = std::min(begin, second.rest - k_tile_run); // the last tile may overlap the one before
        for (std::size_t lane = 0; lane < k_tile_run; lane += m_width) {
            first.run[direction](into_tile, in + 2 * (p + lane), tile + _place(lane * first.radix));
            into_tile.roots += second.radix * first.root_step;
        }
        from_tile.roots = second.roots.get() + p * second.root_step;
        second.run[direction](from_tile, tile, out + _place(first.radix * second.radix * p));
    }
}

// Likewise, with one p' and some neighbouring q for a tile, by i', then k, then q.
void fft_direct_t::_run_pair(const pass_t& first, const pass_t& second, lib_fft_direction_t direction, const double* in,
                             double* out) const
{
    alignas(64) double tile[k_tile_numbers];
    fft_sweep_t into_tile;
    into_tile.in_length = m_length;
    into_tile.out_length = k_tile_run * first.radix * second.radix;
    into_tile.count = second.radix;
    into_tile.run = k_tile_run;
    into_tile.in_step = first.stride * second.rest;
    into_tile.in_distance = first.stride * first.rest;
    into_tile.out_step = first.radix * k_tile_run;
    into_tile.out_distance = k_tile_run;
    into_tile.roots = first.roots.get();
    into_tile.root_step = second.rest * first.root_step;
    fft_sweep_t from_tile;
    from_tile.in_length = into_tile.out_length;
    from_tile.out_length = m_length;
    from_tile.count = first.radix;
    from_tile.run = k_tile_run;
    from_tile.in_step = k_tile_run;
    from_tile.in_distance = first.radix * k_tile_run;
    from_tile.out_step = first.stride;
    from_tile.out_distance = second.stride;
    from_tile.roots = second.roots.get();
    const std::size_t numbers_of_result = second.rest == 1 ? 2 : _place(1); // samples from the last pass
    for (std::size_t p = 0; p < second.rest; ++p) {
        const double* const x = in + _place(first.stride * p);
        double* const y = out + numbers_of_result * second.stride * second.radix * p;
        for (std::size_t begin = 0; begin < first.stride; begin += k_tile_run) {
            const std::size_t q = std::min(begin, first.stride - k_tile_run); // likewise
            first.run[direction](into_tile, x + _place(q), tile);
            second.run[direction](from_tile, tile, y + numbers_of_result * q);
        }
        into_tile.roots += first.root_step;
        from_tile.roots += second.root_step;
    }
}

} // namespace vek::common_lib::detail

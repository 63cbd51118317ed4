#include "common/lib_fft_direct.h"

#include "common/lib_fft_passes.h"
#include "common/lib_fft_roots.h"

#include <algorithm>
#include <limits>
#include <span>

namespace vek::common_lib::detail
{

namespace
{

// Neighbouring values in a tile: whole cache lines.
constexpr std::size_t k_tile_run = 8;

// Whether a last tile that overlaps the one before costs less than all of them save.
bool is_good_for_tiles(std::size_t count) { return count % k_tile_run == 0 || count >= 8 * k_tile_run; }

// Whether the values are too many for a core's own caches. Then two stages are best, however many passes each has;
// where blocks of 8 do not fit and lines are read in parts, from more values on.
bool is_long(std::size_t length) { return length > (length % 8 == 0 ? 65536 : 100000); }

struct radix_cost_t
{
    std::size_t radix;
    double cost; ///< of its pass, for a value: operations, and 8 for the way there and back; more where registers spill
};

// Lengths of whole blocks begin with a radix of 8.
constexpr radix_cost_t k_later_in_blocks[] = {{15, 34.0}, {12, 24.0}, {10, 26.5}, {9, 27.0}, {8, 20.0},
                                              {6, 20.5},  {5, 23.0},  {4, 16.5},  {3, 17.0}, {2, 18.0}};
constexpr radix_cost_t k_later_in_planes[] = {{15, 34.0}, {9, 27.0}, {6, 20.5}, {5, 23.0}, {3, 17.0}, {2, 18.0}};
// With what the pass behind it loses, whose runs are as long as the radix and seldom whole vectors.
constexpr radix_cost_t k_first_in_planes[] = {{20, 40.0}, {15, 35.5}, {12, 31.0}, {10, 38.5}, {9, 42.5}, {5, 60.0}};
// In long lengths, whose tiles pass the nearest cache, a 15 loses more than the others.
constexpr radix_cost_t k_first_in_long_planes[] = {{20, 40.0}, {15, 43.5}, {12, 31.0}, {10, 38.5}, {9, 42.5}};

/// The cheapest way to take a number apart.
class radix_search_t
{
public:
    explicit radix_search_t(std::span<const radix_cost_t> offered) : m_offered(offered) {}

    void take_apart(std::size_t number, std::size_t first_offer = 0)
    {
        if (number == 1 && m_cost < m_best_cost) {
            m_best_cost = m_cost;
            m_best = m_radices;
        }
        for (std::size_t i = first_offer; i < m_offered.size() && number > 1; ++i)
            if (number % m_offered[i].radix == 0)
                add_and_take_apart(m_offered[i], number, i);
    }

    void add_and_take_apart(const radix_cost_t& offer, std::size_t number, std::size_t first_offer)
    {
        m_radices.push_back(offer.radix);
        m_cost += offer.cost;
        take_apart(number / offer.radix, first_offer);
        m_cost -= offer.cost;
        m_radices.pop_back();
    }

    const std::vector<std::size_t>& get_best() const { return m_best; }

private:
    std::span<const radix_cost_t> m_offered;
    std::vector<std::size_t> m_radices;
    std::vector<std::size_t> m_best;
    double m_cost = 0.0;
    double m_best_cost = std::numeric_limits<double>::infinity();
};

// Of two stages, the one whose tiles are larger: of a product of radices, and of the rest.
std::size_t larger_of(std::size_t product, std::size_t length) { return std::max(product, length / product); }

/// Brings radices behind the first one ahead of the others so that the tiles of two stages come out alike.
void balance(std::vector<std::size_t>& radices, std::size_t length)
{
    std::vector<std::size_t> best;
    std::size_t best_size = length;
    for (std::size_t set = 1; set < std::size_t{1} << radices.size(); set += 2) {
        std::vector<std::size_t> order;
        std::size_t product = 1;
        for (const std::size_t wanted : {1U, 0U})
            for (std::size_t i = 0; i < radices.size(); ++i)
                if (((set >> i) & 1U) == wanted) {
                    order.push_back(radices[i]);
                    product *= wanted == 1 ? radices[i] : 1;
                }
        // Of two as good, that of the smaller first tiles.
        const std::size_t size = larger_of(product, length);
        if (size < best_size || (size == best_size && product < size)) {
            best_size = size;
            best = order;
        }
    }
    radices = best;
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
    const bool is_in_blocks = length % 8 == 0;
    radix_search_t search(is_in_blocks ? std::span<const radix_cost_t>(k_later_in_blocks) : k_later_in_planes);
    if (is_in_blocks)
        search.add_and_take_apart({8, 0.0}, length, 0);
    else
        for (const radix_cost_t& first :
             is_long(length) ? std::span<const radix_cost_t>(k_first_in_long_planes) : k_first_in_planes)
            if (length % first.radix == 0)
                search.add_and_take_apart(first, length, 0);
    std::vector<std::size_t> radices = search.get_best();
    if (radices.size() < 2)
        return {length, 1};
    // Small ones ahead, but eights last.
    const auto is_ahead = [](std::size_t a, std::size_t b) { return a != 8 && (b == 8 || a < b); };
    std::sort(radices.begin() + 1, radices.end(), is_ahead);
    if (is_long(length))
        balance(radices, length);
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
    for (const std::size_t radix : get_radices(length))
        _add_pass(radix);
    _add_stages();
    _choose_runs(unit);

    const std::vector<std::complex<double>> all_roots = make_roots_of_unity(length);
    _fill_roots_of_first(all_roots);
    for (std::size_t i = 1; i + 1 < m_passes.size(); ++i) {
        pass_t& pass = m_passes[i];
        pass.root_step = 2 * (pass.radix - 1);
        pass.roots = _make_numbers(pass.rest * pass.root_step);
        for (std::size_t p = 0; p < pass.rest; ++p)
            _fill_root_numbers(pass, all_roots, p, pass.roots.get() + p * pass.root_step);
    }
    for (const stage_t& stage : m_stages)
        _lay_out(stage);
}

void fft_direct_t::_add_pass(std::size_t radix)
{
    pass_t pass{};
    pass.radix = radix;
    pass.stride = m_passes.empty() ? 1 : m_passes.back().stride * m_passes.back().radix;
    pass.rest = m_length / pass.stride / radix;
    m_passes.push_back(std::move(pass));
}

bool fft_direct_t::_can_pair(std::size_t first_pass) const
{
    return first_pass + 1 < m_passes.size() &&
           is_good_for_tiles(first_pass == 0 ? m_passes[1].rest : m_passes[first_pass].stride);
}

std::size_t fft_direct_t::_product_of_radices(std::size_t begin, std::size_t end) const
{
    std::size_t product = 1;
    for (std::size_t i = begin; i < end; ++i)
        product *= m_passes[i].radix;
    return product;
}

void fft_direct_t::_add_stages()
{
    const std::size_t passes = m_passes.size();
    if (is_long(m_length)) {
        std::size_t split = 1;
        for (std::size_t i = 2; i < passes; ++i)
            if (larger_of(m_passes[i].stride, m_length) < larger_of(m_passes[split].stride, m_length))
                split = i;
        m_stages = {{0, split}, {split, passes - split}};
    }
    else {
        for (std::size_t i = 0; i < passes; i += m_stages.back().passes)
            m_stages.push_back({i, _can_pair(i) ? 2U : 1U});
    }
    for (const stage_t& stage : m_stages)
        m_tile_numbers = std::max(
            m_tile_numbers, 2 * k_tile_run * _product_of_radices(stage.first_pass, stage.first_pass + stage.passes));
    // Runs of whole tiles are written where they were read.
    const stage_t& last = m_stages.back();
    m_last_may_stay =
        m_stages.size() > 1 && last.passes > 1 && !m_is_in_planes && m_passes[last.first_pass].stride % k_tile_run == 0;
}

void fft_direct_t::_choose_runs(const fft_unit_t& unit)
{
    for (const std::size_t inverse : {0U, 1U}) {
        for (pass_t& pass : m_passes)
            pass.run[inverse] = unit.middle[pass.radix];
        m_passes.front().run[inverse] =
            (m_stages.front().passes > 1 ? unit.first_in_tiles : unit.first)[inverse][m_passes.front().radix];
        m_passes.back().run[inverse] = unit.last[inverse][m_passes.back().radix];
    }
}

void fft_direct_t::_fill_roots_of_first(const std::vector<std::complex<double>>& all_roots)
{
    pass_t& pass = m_passes.front();
    const std::size_t passes = m_stages.front().passes;
    if (passes == 1) {
        pass.root_step = 2 * m_width * (pass.radix - 1);
        pass.roots = _make_numbers((pass.rest + m_width - 1) / m_width * pass.root_step);
        for (std::size_t p = 0; p < pass.rest; p += m_width)
            _fill_root_vectors(pass, all_roots, std::min(p, pass.rest - m_width),
                               pass.roots.get() + p / m_width * pass.root_step);
        return;
    }
    // Of the p of a tile, the root is the product of that of the first p of their run and that of the place in the run:
    // else the roots would take as much of the caches as the values.
    const std::size_t rest = m_passes[passes - 1].rest;
    const std::size_t runs = pass.rest / rest;
    pass.root_step = 2 * (pass.radix - 1);
    pass.roots = _make_numbers((rest + k_tile_run - 1) / k_tile_run * runs * pass.root_step);
    double* root = pass.roots.get();
    for (std::size_t p = 0; p < rest; p += k_tile_run)
        for (std::size_t i = 0; i < runs; ++i, root += pass.root_step)
            _fill_root_numbers(pass, all_roots, std::min(p, rest - k_tile_run) + rest * i, root);
    m_roots_in_run = _make_numbers(k_tile_run * pass.root_step);
    for (std::size_t p = 0; p < k_tile_run; p += m_width)
        _fill_root_vectors(pass, all_roots, p, m_roots_in_run.get() + p * pass.root_step);
}

// Of p and the places behind it, as one vector for each k.
void fft_direct_t::_fill_root_vectors(const pass_t& pass, const std::vector<std::complex<double>>& all_roots,
                                      std::size_t p, double* roots) const
{
    for (std::size_t k = 1; k < pass.radix; ++k, roots += 2 * m_width)
        for (std::size_t lane = 0; lane < m_width; ++lane) {
            const std::complex<double>& value = all_roots[(p + place_of_lane(lane, m_width)) * k];
            roots[lane] = value.real();
            roots[m_width + lane] = value.imag();
        }
}

void fft_direct_t::_fill_root_numbers(const pass_t& pass, const std::vector<std::complex<double>>& all_roots,
                                      std::size_t p, double* roots)
{
    for (std::size_t k = 1; k < pass.radix; ++k) {
        const std::complex<double>& value = all_roots[p * k * pass.stride];
        *roots++ = value.real();
        *roots++ = value.imag();
    }
}

std::size_t fft_direct_t::_place(std::size_t index) const { return (m_is_in_planes ? 1 : 2) * index; }

// How the sweeps of a stage step. Where a tile lies, and the roots of its places, are left to the run.
void fft_direct_t::_lay_out(const stage_t& stage)
{
    const std::size_t end = stage.first_pass + stage.passes;
    const std::size_t in_tile = k_tile_run * _product_of_radices(stage.first_pass, end);
    const std::size_t rest = m_passes[end - 1].rest;
    for (std::size_t i = stage.first_pass; i < end; ++i) {
        pass_t& pass = m_passes[i];
        const bool is_first = i == stage.first_pass;
        const bool is_last = i + 1 == end;
        const std::size_t ahead = _product_of_radices(stage.first_pass, i);
        const std::size_t behind = _product_of_radices(i + 1, end);
        fft_sweep_t& sweep = pass.sweep;
        sweep.in_length = is_first ? m_length : in_tile;
        sweep.out_length = is_last ? m_length : in_tile;
        sweep.root_step = pass.root_step;
        if (stage.passes == 1) {
            sweep.count = i == 0 ? pass.rest / m_width : pass.rest;
            sweep.run = pass.stride;
            sweep.in_step = i == 0 ? m_width : pass.stride;
            sweep.out_step = sweep.in_step * pass.radix;
            sweep.in_distance = pass.stride * pass.rest;
            sweep.out_distance = pass.stride;
        }
        else if (stage.first_pass == 0) {
            // By i', then p', then k.
            sweep.count = is_first ? behind : k_tile_run;
            sweep.run = ahead;
            sweep.in_step = is_first ? rest : ahead;
            sweep.out_step = (is_first ? k_tile_run : ahead) * pass.radix;
            sweep.in_distance = is_first ? pass.rest : k_tile_run * ahead * behind;
            sweep.out_distance = ahead;
        }
        else {
            // By i', then k, then q.
            sweep.count = is_last ? ahead : behind;
            sweep.run = is_first || is_last ? k_tile_run : k_tile_run * ahead;
            sweep.in_step = is_first ? pass.stride * rest : sweep.run;
            sweep.in_distance = is_first ? pass.stride * pass.rest : k_tile_run * ahead * behind;
            sweep.out_step = is_last ? m_passes[stage.first_pass].stride : sweep.run * pass.radix;
            sweep.out_distance = is_last ? pass.stride : sweep.run;
            sweep.root_step *= is_last ? 0 : rest;
        }
    }
}

// Stages go back and forth between the result and one more buffer, that of the thread, so that the last one ends in the
// result. It may also begin there where its tiles are read and written in the same places: less for the caches to hold.
void fft_direct_t::execute(lib_fft_direction_t direction, const std::complex<double>* in,
                           std::complex<double>* out) const
{
    const auto* source = reinterpret_cast<const double*>(in);
    auto* const result = reinterpret_cast<double*>(out);
    std::size_t moves = m_stages.size();
    if (m_last_may_stay && (in != out || moves % 2 == 1))
        --moves;
    thread_local numbers_t buffer;
    thread_local std::size_t buffer_size = 0;
    const bool is_copied = in == out && moves % 2 == 1;
    const std::size_t size = 2 * m_tile_numbers + (moves > 1 || is_copied ? 2 * m_length : 0);
    if (buffer_size < size) {
        buffer.reset();
        buffer_size = 0;
        buffer = _make_numbers(size);
        buffer_size = size;
    }
    double* const work = buffer.get() + 2 * m_tile_numbers;
    if (is_copied) {
        std::copy_n(source, 2 * m_length, work);
        source = work;
    }
    for (const stage_t& stage : m_stages) {
        double* const target = moves % 2 == 1 || moves == 0 ? result : work;
        moves -= moves > 0;
        _run_stage(stage, direction, source, target, buffer.get());
        source = target;
    }
}

void fft_direct_t::_run_stage(const stage_t& stage, lib_fft_direction_t direction, const double* in, double* out,
                              double* tiles) const
{
    if (stage.passes == 1)
        _run_pass(m_passes[stage.first_pass], direction, in, out);
    else if (stage.first_pass == 0)
        _run_first_tiles(stage, direction, in, out, tiles);
    else
        _run_tiles(stage, direction, in, out, tiles);
}

void fft_direct_t::_run_pass(const pass_t& pass, lib_fft_direction_t direction, const double* in, double* out) const
{
    pass.run[direction](pass.sweep, pass.roots.get(), in, out);
    if (&pass != m_passes.data() || pass.rest % m_width == 0)
        return;
    // A last vector overlaps the one before it.
    fft_sweep_t sweep = pass.sweep;
    const std::size_t p = pass.rest - m_width;
    const double* const roots = pass.roots.get() + sweep.count * sweep.root_step;
    sweep.count = 1;
    pass.run[direction](sweep, roots, in + 2 * p, out + _place(pass.radix * p));
}

// With i' for the passes behind the first, whose input places p' + rest' i' are those p of the first that differ by
// multiples of rest': all of them for some neighbouring p' make a tile.
void fft_direct_t::_run_first_tiles(const stage_t& stage, lib_fft_direction_t direction, const double* in, double* out,
                                    double* tiles) const
{
    const std::size_t rest = m_passes[stage.passes - 1].rest;
    const std::size_t product = m_length / rest;
    const pass_t& first = m_passes.front();
    fft_sweep_t sweep = first.sweep;
    const double* roots = first.roots.get();
    for (std::size_t begin = 0; begin < rest; begin += k_tile_run) {
        const std::size_t p = std::min(begin, rest - k_tile_run); // the last tile may overlap the one before
        for (std::size_t i = 0; i < k_tile_run; i += m_width) {
            sweep.roots_in_run = m_roots_in_run.get() + i * first.root_step;
            first.run[direction](sweep, roots, in + 2 * (p + i), tiles + _place(i * first.radix));
        }
        roots += sweep.count * first.root_step;
        const double* source = tiles;
        for (std::size_t j = 1; j < stage.passes; ++j) {
            const pass_t& pass = m_passes[j];
            double* const target = j + 1 == stage.passes ? out + _place(product * p) : tiles + j % 2 * m_tile_numbers;
            const std::size_t step = _place(k_tile_run * pass.stride);
            for (std::size_t i = 0; i < pass.rest / rest; ++i)
                pass.run[direction](pass.sweep, pass.roots.get() + (p + rest * i) * pass.root_step, source + i * step,
                                    target + i * step * pass.radix);
            source = target;
        }
    }
}

// Likewise, with one p' and some neighbouring q for a tile.
void fft_direct_t::_run_tiles(const stage_t& stage, lib_fft_direction_t direction, const double* in, double* out,
                              double* tiles) const
{
    const pass_t* const passes = &m_passes[stage.first_pass];
    const std::size_t stride = passes[0].stride;
    const pass_t& last = passes[stage.passes - 1];
    const std::size_t numbers_of_result = last.rest == 1 ? 2 : _place(1); // samples from the last pass
    const auto run = [&](const pass_t& pass, std::size_t p, const double* from, double* to) {
        pass.run[direction](pass.sweep, pass.roots.get() + p * pass.root_step, from, to);
    };
    for (std::size_t p = 0; p < last.rest; ++p) {
        const double* const x = in + _place(stride * p);
        double* const y = out + numbers_of_result * last.stride * last.radix * p;
        for (std::size_t begin = 0; begin < stride; begin += k_tile_run) {
            const std::size_t q = std::min(begin, stride - k_tile_run); // likewise
            const double* source = x + _place(q);
            for (std::size_t j = 0; j + 1 < stage.passes; ++j) {
                double* const tile = tiles + j % 2 * m_tile_numbers;
                run(passes[j], p, source, tile);
                source = tile;
            }
            run(last, p, source, y + numbers_of_result * q);
        }
    }
}

} // namespace vek::common_lib::detail

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

// Neighbouring values in a tile of a pair of passes: whole cache lines.
constexpr std::size_t k_tile_run = 8;
constexpr std::size_t k_tile_numbers = 2 * k_tile_run * 20 * 15; // the largest radices that make a pair

// Whether a last tile that overlaps the one before costs less than all of them save.
bool is_good_for_tiles(std::size_t count) { return count % k_tile_run == 0 || count >= 8 * k_tile_run; }

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
        for (const radix_cost_t& first : k_first_in_planes)
            if (length % first.radix == 0)
                search.add_and_take_apart(first, length, 0);
    std::vector<std::size_t> radices = search.get_best();
    if (radices.size() < 2)
        return {length, 1};
    // Small ones ahead, but eights last.
    std::sort(radices.begin() + 1, radices.end(),
              [](std::size_t a, std::size_t b) { return a != 8 && (b == 8 || a < b); });
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
    for (const std::size_t radix : radices)
        _add_pass(radix);
    for (std::size_t i = 0; i < m_passes.size(); i += m_stages.back().is_pair ? 2 : 1)
        m_stages.push_back({i, _can_pair(i)});
    for (const std::size_t inverse : {0U, 1U}) {
        for (pass_t& pass : m_passes)
            pass.run[inverse] = unit.middle[pass.radix];
        m_passes.front().run[inverse] =
            (m_stages.front().is_pair ? unit.first_in_tiles : unit.first)[inverse][radices.front()];
        m_passes.back().run[inverse] = unit.last[inverse][radices.back()];
    }

    const std::vector<std::complex<double>> all_roots = make_roots_of_unity(length);
    _fill_roots_of_first(all_roots);
    for (std::size_t i = 1; i + 1 < m_passes.size(); ++i) {
        pass_t& pass = m_passes[i];
        pass.root_step = 2 * (pass.radix - 1);
        pass.roots = _make_numbers(pass.rest * pass.root_step);
        for (std::size_t p = 0; p < pass.rest; ++p)
            _fill_root_numbers(pass, all_roots, p, pass.roots.get() + p * pass.root_step);
    }
}

void fft_direct_t::_add_pass(std::size_t radix)
{
    pass_t pass{};
    pass.radix = radix;
    pass.stride = m_passes.empty() ? 1 : m_passes.back().stride * m_passes.back().radix;
    pass.rest = m_length / pass.stride / radix;
    m_passes.push_back(std::move(pass));
}

void fft_direct_t::_fill_roots_of_first(const std::vector<std::complex<double>>& all_roots)
{
    pass_t& pass = m_passes.front();
    if (!m_stages.front().is_pair) {
        pass.root_step = 2 * m_width * (pass.radix - 1);
        pass.roots = _make_numbers((pass.rest + m_width - 1) / m_width * pass.root_step);
        for (std::size_t p = 0; p < pass.rest; p += m_width)
            _fill_root_vectors(pass, all_roots, std::min(p, pass.rest - m_width),
                               pass.roots.get() + p / m_width * pass.root_step);
        return;
    }
    // Of the p of a tile, the root is the product of that of the first p of their run and that of the place in the run:
    // else the roots would take as much of the caches as the values.
    const std::size_t rest = m_passes[1].rest;
    pass.root_step = 2 * (pass.radix - 1);
    pass.roots = _make_numbers((rest + k_tile_run - 1) / k_tile_run * m_passes[1].radix * pass.root_step);
    double* root = pass.roots.get();
    for (std::size_t p = 0; p < rest; p += k_tile_run)
        for (std::size_t i = 0; i < m_passes[1].radix; ++i, root += pass.root_step)
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
        for (std::size_t i = 0; i < k_tile_run; i += m_width) {
            into_tile.roots_in_run = m_roots_in_run.get() + i * first.root_step;
            first.run[direction](into_tile, in + 2 * (p + i), tile + _place(i * first.radix));
        }
        into_tile.roots += second.radix * first.root_step;
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

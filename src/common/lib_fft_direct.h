#pragma once

#include "common/lib_fft_method.h"
#include "common/lib_fft_units.h"
#include "common/nr_mod_lib_export.h"

#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace vek::common_lib::detail
{

/// A transform by passes of small radices, for lengths without prime factors but 2, 3 and 5. The result has the same
/// bits whatever the unit.
class NR_MOD_LIB_EXPORT fft_direct_t : public fft_method_t
{
public:
    /// By the widest unit that can run the length.
    explicit fft_direct_t(std::size_t length);
    fft_direct_t(std::size_t length, const fft_unit_t& unit);

    void execute(lib_fft_direction_t direction, const std::complex<double>* in,
                 std::complex<double>* out) const override;

    /// The radices of a length in the order of the passes, at least two; the cheapest. They depend on no unit.
    static std::vector<std::size_t> get_radices(std::size_t length);

private:
    struct aligned_delete_t
    {
        void operator()(double* numbers) const { ::operator delete[](numbers, k_alignment); }
    };
    static constexpr std::align_val_t k_alignment{64};
    using numbers_t = std::unique_ptr<double[], aligned_delete_t>;
    static numbers_t _make_numbers(std::size_t count);

    struct pass_t
    {
        std::size_t radix;
        std::size_t stride;
        std::size_t rest;
        fft_pass_t run[2];     ///< forward and inverse
        std::size_t root_step; ///< numbers for one p; in a first pass without tiles, for one vector of them
        numbers_t roots;       ///< by p; in a first pass with tiles, those of the runs in the order of their reading
        fft_sweep_t sweep;     ///< over all values, or over those of a tile
    };
    /// One pass, or several that are done tile by tile, each following while the values of the one before are in a near
    /// cache.
    struct stage_t
    {
        std::size_t first_pass;
        std::size_t passes;
    };

    void _add_pass(std::size_t radix);
    void _add_stages();
    void _choose_runs(const fft_unit_t& unit);
    void _fill_roots_of_first(const std::vector<std::complex<double>>& all_roots);
    void _fill_root_vectors(const pass_t& pass, const std::vector<std::complex<double>>& all_roots, std::size_t p,
                            double* roots) const;
    static void _fill_root_numbers(const pass_t& pass, const std::vector<std::complex<double>>& all_roots,
                                   std::size_t p, double* roots);
    void _lay_out(const stage_t& stage);
    bool _can_pair(std::size_t first_pass) const;
    /// Of the passes from one to another.
    std::size_t _product_of_radices(std::size_t begin, std::size_t end) const;
    /// Of a value between the passes, in numbers.
    std::size_t _place(std::size_t index) const;
    void _run_stage(const stage_t& stage, lib_fft_direction_t direction, const double* in, double* out,
                    double* tiles) const;
    void _run_pass(const pass_t& pass, lib_fft_direction_t direction, const double* in, double* out) const;
    void _run_first_tiles(const stage_t& stage, lib_fft_direction_t direction, const double* in, double* out,
                          double* tiles) const;
    void _run_tiles(const stage_t& stage, lib_fft_direction_t direction, const double* in, double* out,
                    double* tiles) const;

    std::size_t m_length;
    std::size_t m_width;
    bool m_is_in_planes;
    std::vector<pass_t> m_passes;
    std::vector<stage_t> m_stages;
    numbers_t m_roots_in_run; ///< for the first pass with tiles
    std::size_t m_tile_numbers = 0;
    bool m_last_may_stay = false; ///< whether the last stage may read and write the same buffer
};

} // namespace vek::common_lib::detail

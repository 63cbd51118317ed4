// Whole SS/PBCH blocks as the engine makes them: snapshot of the settings, all sequences, PBCH coding, mapping.
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_dl/lib_nr_dl_phy_ssb_process.h"

#include <benchmark/benchmark.h>

#include <iostream>
#include <streambuf>

namespace
{

using namespace vek::nr_mod_lib;

/// Takes what is printed and drops it, flushes included.
class silent_output_t : std::streambuf
{
public:
    silent_output_t() : m_original(std::cout.rdbuf(this)) {}
    ~silent_output_t() override { std::cout.rdbuf(m_original); }

private:
    int overflow(int character) override { return traits_type::not_eof(character); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }

    std::streambuf* m_original;
};

void ssb_block(benchmark::State& state)
{
    const silent_output_t silence;
    lib_nr_waveform_configure_manager_t waveform;
    waveform.set_radio_frequency(3.5e9);
    lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(0);
    carrier.get_dl_ssb().set_enable(true, carrier.get_numerology_manager(0).get_rb_size());
    carrier.get_dl_ssb().set_active_idx("0:7");

    lib_nr_channel_resource_manager_t& grid = lib_nr_channel_resource_manager_t::get_inst();
    grid.set_numerology(LIB_NR_SCS_30K);
    grid.set_rb_number(273);
    grid.set_channel_bandwidth(carrier.get_bandwidth());
    grid.set_cyclic_prefix_type(LIB_NR_NORMAL_CP);
    grid.init_payload_mapping();

    lib_nr_dl_phy_ssb_process_t process;
    unsigned int block = 0;
    for (auto _ : state) {
        process.set_waveform_config(0, block / 8 % 4, block % 2, 0, waveform);
        benchmark::DoNotOptimize(process.ssb_encode_process(block % 8));
        ++block;
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(ssb_block);

} // namespace

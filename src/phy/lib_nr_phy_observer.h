#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_phy_record.h"
#include "phy/lib_nr_resource_type.h"

#include <algorithm>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What a process tells of a slot while it makes it: the finer grain of the record. Nobody asks for it by default, and
// then nothing of it is made.
namespace vek::nr_mod_lib
{

/// Bits at a stage of the coding.
struct lib_nr_explained_stage_t
{
    std::string_view name; ///< "payload", "crc", "rate_matched" or "scrambled"
    std::size_t bits = 0;
    std::string first; ///< the first 32 at most, as 0 and 1
    std::string last;  ///< the last 32 at most
};

/// How a block of bits was coded.
struct lib_nr_explained_coding_t
{
    unsigned int tbs = 0;                   ///< bits ahead of the check
    std::optional<unsigned int> base_graph; ///< 1 or 2; LDPC alone has it, and the next and k_0
    std::optional<unsigned int> lifting;    ///< Z
    unsigned int code_blocks = 1;
    std::vector<std::uint32_t> e; ///< bits sent of each code block
    unsigned int g = 0;           ///< bits that the cells hold
    std::optional<unsigned int> k0;
};

/// A number that a sequence or a place goes by.
struct lib_nr_explained_figure_t
{
    std::string_view name;
    std::uint64_t value = 0;
};

/// A cell of the carrier's grid as it was sent.
struct lib_nr_explained_cell_t
{
    unsigned int symbol = 0; ///< of the slot
    std::int32_t subcarrier = 0;
    std::complex<double> value;
};

/// Where a PRACH burst stands, and its sequence.
struct lib_nr_explained_burst_t
{
    unsigned int root = 0;          ///< u
    unsigned int cyclic_shift = 0;  ///< C_v
    std::uint64_t start_sample = 0; ///< of the prefix, in the waveform
};

/// A slot of an entry, a block of SS/PBCH or a burst of PRACH: what was sent, from what it was made. What a channel
/// does not have is empty. Numbers of RBs are those of the carrier's grid, in the order in which they are filled; with
/// hopping within the slot those of the second hop stand apart.
struct lib_nr_explanation_t : lib_nr_channel_entry_t
{
    unsigned int frame = 0;                         ///< of the waveform
    unsigned int slot = 0;                          ///< of the frame
    lib_nr_silence_t silence = LIB_NR_SILENCE_NONE; ///< why the slot was left out
    std::vector<unsigned int> symbols;              ///< of the slot
    std::vector<std::int32_t> rbs;
    std::vector<std::int32_t> second_hop_rbs;
    std::vector<lib_nr_explained_figure_t> figures;
    std::vector<std::uint32_t> c_init;      ///< of the scrambling; of CSI-RS and PRS one for each symbol
    std::vector<unsigned int> dmrs_symbols; ///< of the slot
    std::vector<std::uint32_t> dmrs_c_init; ///< one each, SS/PBCH one; none of low-PAPR sequences
    std::vector<unsigned int> u;            ///< groups of low-PAPR sequences, symbol by symbol
    std::vector<unsigned int> v;            ///< their numbers
    std::optional<lib_nr_explained_coding_t> coding;
    std::vector<lib_nr_explained_stage_t> stages;
    std::vector<unsigned int> cces;
    std::optional<unsigned int> index; ///< of an SS/PBCH block
    std::optional<lib_nr_explained_burst_t> burst;
    std::vector<lib_nr_explained_cell_t> cells; ///< the first four that carry data, or else the signal itself

    /// Adds a stage by a function of the place that gives a bit.
    template <class bit_at_t>
    void add_stage(std::string_view name, std::size_t bits, bit_at_t bit_at)
    {
        constexpr std::size_t k_most = 32;
        stages.push_back({name, bits, {}, {}});
        const std::size_t shown = std::min(bits, k_most);
        for (std::size_t i = 0; i < shown; ++i) {
            stages.back().first += bit_at(i) != 0 ? '1' : '0';
            stages.back().last += bit_at(bits - shown + i) != 0 ? '1' : '0';
        }
    }
    /// The same of one bit per byte.
    void add_stage(std::string_view name, const std::vector<unsigned char>& bits)
    {
        add_stage(name, bits.size(), [&bits](std::size_t i) { return bits[i]; });
    }
    /// Takes symbols and RBs from runs of the grid, each once, in their order; further runs add to those before. Where
    /// `is_second_hop` holds, the RBs are the second hop's.
    NR_MOD_LIB_EXPORT void add_runs(const std::vector<lib_nr_resource_run_t>& runs, unsigned int first_symbol_of_slot,
                                    bool is_second_hop = false);
    /// Reads the first cells of runs from the grid, once they are written; up to four in all.
    NR_MOD_LIB_EXPORT void add_cells(const std::vector<lib_nr_resource_run_t>& runs, unsigned int first_symbol_of_slot);
};

/// Whom the engine tells of each slot of each entry that it runs a process for, in the order of the run. A slot that no
/// process is run for is told of in the record alone.
class lib_nr_phy_observer_t
{
public:
    virtual ~lib_nr_phy_observer_t() = default;
    virtual void note(const lib_nr_explanation_t& explanation) = 0;
};

/// What each process has that explains itself.
class lib_nr_explaining_t
{
public:
    /// Where what is made next is told, null for nowhere, as it is by default.
    void set_explanation(lib_nr_explanation_t* explanation) { m_explanation = explanation; }

protected:
    lib_nr_explaining_t() = default;

    lib_nr_explanation_t* m_explanation = nullptr;
};

/// Lets a process explain what it makes, where somebody asks, until the call is over, however that ends. What is told
/// is one explanation, or as many as a PUCCH has slots.
template <class process_t, class told_t>
class lib_nr_explained_call_t
{
public:
    lib_nr_explained_call_t(process_t& process, told_t* told) : m_process(process) { m_process.set_explanation(told); }
    ~lib_nr_explained_call_t() { m_process.set_explanation(nullptr); }
    lib_nr_explained_call_t(const lib_nr_explained_call_t&) = delete;
    lib_nr_explained_call_t& operator=(const lib_nr_explained_call_t&) = delete;

private:
    process_t& m_process;
};

} // namespace vek::nr_mod_lib

#include "phy_dl/lib_nr_dl_phy_pdcch_process.h"

#include "receiver/bits.h"
#include "receiver/gold_sequence.h"
#include "receiver/polar_decoder.h"
#include "support/generated.h"
#include "support/settings.h"
#include "support/test_grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;

/// A DCI with its CORESET and BWP in a carrier of 50 MHz, at random but for what is given.
struct pdcch_case_t
{
    pdcch_case_t(unsigned int level, unsigned int duration, bool is_common, bool is_interleaved, std::mt19937& random)
        : common(is_common), interleaved(is_interleaved), standard_rules(random() % 2 == 0)
    {
        const auto below = [&](unsigned int limit) { return static_cast<int>(random() % limit); };
        const bool extended = level <= 4 && below(4) == 0; // and at 60 kHz
        symbols = extended ? 12 : 14;
        slots = {random() % 7, 7 + random() % 6, 13 + random() % 7};
        const int bwp_id = below(2);
        const std::string bwp = "carrier[0].dl_bwp[" + std::to_string(bwp_id) + "].";
        const std::string coreset_id = std::to_string(bwp_id + below(3));
        const std::string coreset = bwp + "coreset[" + coreset_id + "].";
        steps = {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_50M", "carrier[0].baseband_filter=false",
                 extended ? "carrier[0].numerology=LIB_NR_SCS_60K" : "carrier[0].numerology=LIB_NR_SCS_30K",
                 extended ? bwp + "cp_type=LIB_NR_EXTEND_CP" : bwp + "cp_type=LIB_NR_NORMAL_CP",
                 bwp + "coreset_number=3"};
        set("carrier[0].ncell_id", below(1008));
        set(bwp + "bwp_rb_start", below(extended ? 13 : 21));
        set(bwp + "bwp_rb_size", extended ? 48 : 108);
        set(coreset + "rb_offset", below(7) - 1);
        set(coreset + "duration", static_cast<int>(duration));
        steps.push_back(coreset + "cce2reg_mapping_type=LIB_NR_CORSET_" + (interleaved ? "" : "NO_") + "INTERLEAVE");
        set(coreset + "reg_bundle_size", below(2) == 0 ? 6 : duration == 3 ? 3 : 2, "LIB_NR_DCI_REG_BUNDLE_SIZE_");
        set(coreset + "interleaver_size", std::vector{2, 3, 6}[random() % 3], "LIB_NR_DCI_INTERLEAVER_SIZE_");
        set(coreset + "shift_idx", below(275));
        const unsigned int row = interleaved ? (*this)["reg_bundle_size"] * (*this)["interleaver_size"] : 1;
        do {
            bitmap.clear();
            for (unsigned int i = 0; i < (*this)["bwp_rb_size"] / 6; ++i)
                bitmap += below(level > 4 ? 10 : 2) > 0 ? '1' : '0';
        } while (groups() * duration < level ||
                 groups() < (level > 4 ? 16
                             : common  ? 4
                                       : level) ||
                 6 * groups() % row != 0);
        steps.push_back(coreset + "fd_resources=" + bitmap);
        set(dci + "bwp_id", bwp_id);
        set(dci + "coreset_id", std::stoi(coreset_id));
        steps.push_back(dci + "search_space_type=LIB_NR_DCI_" + (common ? "CSS" : "USS"));
        set(dci + "aggregation_level", static_cast<int>(level), "LIB_NR_DCI_AGGREGATION_LEVEL_");
        set(dci + "candidates_num", std::vector{1, 2, 3, 4, 5, 6, 8}[random() % 7], "LIB_NR_DCI_CANDIDATE_");
        set(dci + "allocated_candidate", below((*this)["candidates_num"]));
        set(dci + "scrambling_id", below(4) == 0 ? -1 : below(65536));
        set(dci + "rnti", below(65536));
        set(dci + "crnti", std::vector{0, value("rnti"), below(65536)}[random() % 3]);
        steps.push_back(dci + "slot_allocation=" + std::to_string(slots[0]) + "," + std::to_string(slots[1]) + "," +
                        std::to_string(slots[2]));
        set(dci + "start_symbol_within_slot", below(symbols - duration + 1));
        set(dci + "pwr_boosting", below(13) - 6);
        set(dci + "dmrs_pwr_boosting", below(13) - 6);
        set(dci + "data_block_size", 1 + below(std::min(108 * level - 24, 140u)));
        steps.insert(steps.end(), {dci + "coding=true", dci + "enable=true",
                                   std::string("standard_rules=") + (standard_rules ? "true" : "false")});
    }

    void set(const std::string& path, int number, const char* enumerator = "")
    {
        m_values[path.substr(path.rfind('.') + 1)] = number;
        steps.push_back(path + "=" + enumerator + std::to_string(number));
    }
    int value(const std::string& setting) const { return m_values.at(setting); }
    unsigned int operator[](const std::string& setting) const { return static_cast<unsigned int>(value(setting)); }
    unsigned int n_id() const { return value("scrambling_id") < 0 ? (*this)["ncell_id"] : (*this)["scrambling_id"]; }
    unsigned int n_rnti() const { return value("scrambling_id") < 0 || common ? 0 : (*this)["crnti"]; }
    unsigned int groups() const { return static_cast<unsigned int>(std::count(bitmap.begin(), bitmap.end(), '1')); }
    unsigned int first_symbol(std::size_t slot) const
    {
        return static_cast<unsigned int>(slot) * symbols + (*this)["start_symbol_within_slot"];
    }

    const std::string dci = "carrier[0].dl_dci[0].";
    bool common;
    bool interleaved;
    bool standard_rules;
    unsigned int symbols; // of a slot
    std::vector<std::size_t> slots;
    std::string bitmap;
    std::vector<std::string> steps;

private:
    std::map<std::string, int> m_values;
};

/// The CORESET's resource blocks, counted from the BWP's first.
std::vector<unsigned int> rbs_of(const pdcch_case_t& c)
{
    unsigned int offset = c.value("rb_offset") < 0 ? 0 : c["rb_offset"];
    while (c.value("rb_offset") < 0 && (c["bwp_rb_start"] + offset) % 6 != 0)
        ++offset;
    std::vector<unsigned int> rbs;
    for (unsigned int rb = 0; rb < 6 * c.bitmap.size(); ++rb)
        if (c.bitmap[rb / 6] == '1')
            rbs.push_back(rb + offset);
    return rbs;
}

/// Symbol of the CORESET and resource block of the BWP of each REG of the candidate, in the order of mapping: TS 38.213
/// clause 10.1 and TS 38.211 clause 7.3.2.2, REG by REG. `y` is where the hash begins by the own rules.
std::set<std::pair<unsigned int, unsigned int>> regs_of(const pdcch_case_t& c, std::size_t slot, std::uint64_t y)
{
    if (c.standard_rules)
        y = c[c.value("crnti") != 0 ? "crnti" : "rnti"];
    const std::vector<unsigned int> rbs = rbs_of(c);
    const unsigned int level = c["aggregation_level"];
    const unsigned int cces = c.groups() * c["duration"];
    const unsigned int bundle = c.interleaved ? c["reg_bundle_size"] : 6;
    const unsigned int bundles = 6 * cces / bundle;
    const unsigned int rows = c["interleaver_size"];
    for (unsigned int s = 0; s <= slot; ++s)
        y = c.common ? 0 : y * std::vector{39827u, 39829u, 39839u}[c["coreset_id"] % 3] % 65537;
    y = (c["allocated_candidate"] * cces / (level * c["candidates_num"]) + y) % (cces / level);
    std::set<std::pair<unsigned int, unsigned int>> regs;
    for (unsigned int x = 0; x < bundles; ++x)
        if (x * bundle / 6 / level == y) {
            const unsigned int f = (x % rows * (bundles / rows) + x / rows + c["shift_idx"]) % bundles;
            const unsigned int first = (c.interleaved ? f : x) * bundle;
            for (unsigned int reg = first; reg < first + bundle; ++reg)
                regs.emplace(reg % c["duration"], rbs[reg / c["duration"]]);
        }
    return regs;
}

std::complex<double> qpsk(unsigned char first, unsigned char second)
{
    return std::sqrt(0.5) * std::complex<double>(1 - 2 * first, 1 - 2 * second);
}

/// Descrambled bits of one slot. Takes the cells it finds out of the rows.
bits_t receive(const pdcch_case_t& c, std::size_t slot, nr_test::rows_t& rows)
{
    const unsigned int first = c.first_symbol(slot);
    nr_test::signal_t data, dmrs, expected_dmrs, decided;
    const unsigned int bwp = c["bwp_rb_start"];
    const unsigned int reference = !c.standard_rules ? bwp : c.value("coreset_id") == 0 ? bwp + rbs_of(c).front() : 0;
    for (const auto& [d, rb] : regs_of(c, slot, c.n_rnti())) {
        const std::uint64_t c_init = ((first + d + 1) * (2ull * c.n_id() + 1) << 17) + 2 * c.n_id();
        const bits_t gold = nr_test::gold_sequence(c_init & 0x7FFFFFFFu, 6 * (bwp + rb - reference), 6);
        for (unsigned int k = 0; k < 12; ++k)
            (k % 4 == 1 ? dmrs : data).push_back(std::exchange(rows[first + d][12 * (bwp + rb) + k], 0.0));
        for (unsigned int j = 0; j < 6; j += 2)
            expected_dmrs.push_back(qpsk(gold[j], gold[j + 1]));
    }
    bits_t bits = nr_test::gold_sequence((c.n_rnti() << 16) + c.n_id(), 0, 2 * data.size());
    const auto gain = nr_test::fitted_gain({dmrs}, {expected_dmrs});
    for (std::size_t i = 0; i < data.size(); ++i) {
        const std::complex<double> value = data[i] / gain;
        decided.push_back(qpsk(value.real() < 0, value.imag() < 0));
        bits[2 * i] ^= value.real() < 0;
        bits[2 * i + 1] ^= value.imag() < 0;
    }
    EXPECT_LT(nr_test::error_vector_magnitude({dmrs}, {expected_dmrs}), 1e-6);
    EXPECT_LT(nr_test::error_vector_magnitude({data}, {decided}), 1e-6);
    EXPECT_NEAR(20 * std::log10(std::abs(gain / nr_test::fitted_gain({data}, {decided}))), c.value("dmrs_pwr_boosting"),
                1e-6);
    return bits;
}

/// The DCI, whose check must match the RNTI.
bits_t decode(const pdcch_case_t& c, const bits_t& coded)
{
    std::vector<double> soft_bits;
    for (const unsigned char bit : coded)
        soft_bits.push_back(1.0 - 2.0 * bit);
    const unsigned int data = c["data_block_size"];
    bits_t bits = nr_test::polar_decode({data + 24, 108 * c["aggregation_level"]}, soft_bits);
    bits_t checked(24, 1); // TS 38.212 clause 7.3.2: ones ahead, the RNTI over the last bits
    checked.insert(checked.end(), bits.begin(), bits.end());
    const bits_t rnti = nr_test::bits_of(c["rnti"], 16);
    std::transform(rnti.begin(), rnti.end(), checked.end() - 16, checked.end() - 16, std::bit_xor<>());
    EXPECT_TRUE(nr_test::passes_crc(checked, 0x1B2B117, 24));
    bits.resize(data);
    return bits;
}

// The bits come back with their check, the sequence runs on from slot to slot, nothing else is sent, and the view shows
// the candidate of the RNTI. A user's bits come in every slot, padded to 12; bare ones have zeros behind them.
TEST(lib_nr_dl_phy_pdcch_process, comes_back_from_its_candidate)
{
    std::mt19937 random(1);
    auto& grid = lib_nr_channel_resource_manager_t::get_inst();
    for (unsigned int i = 0; i < 120 && !HasFailure(); ++i) {
        pdcch_case_t c(1u << i / 24, 1 + i % 3, i % 2 == 0, i % 4 < 2, random);
        const bool is_user = i % 9 > 6;
        const bool is_coded = i % 9 != 8;
        if (is_user) {
            c.set(c.dci + "data_block_size", 12);
            c.steps.insert(c.steps.end(), {c.dci + "data_source=LIB_NR_USER_CFG", c.dci + "data_source_custom=10110",
                                           c.dci + "coding=" + (is_coded ? "true" : "false")});
        }
        SCOPED_TRACE(testing::PrintToString(c.steps));
        const nr_test::generated_t generated = nr_test::generate(nr_test::waveform_of_t(c.steps));
        const unsigned int subcarriers = grid.get_mapped_subcarrier_number();
        auto rows = nr_test::demodulate_frame(generated.samples, generated.setup, subcarriers, 0.0, 0);
        nr_test::data_source_t source(LIB_NR_PN9_ITU);
        std::set<std::pair<unsigned int, unsigned int>> marked, wanted;
        for (const std::size_t slot : c.slots) {
            const bits_t coded = receive(c, slot, rows);
            const bits_t bits = is_coded ? decode(c, coded) : coded;
            bits_t expected = source.take(c["data_block_size"]);
            if (is_user) {
                expected = {1, 0, 1, 1};
                expected.resize(bits.size());
            }
            EXPECT_EQ(bits, expected) << "slot " << slot;
            const auto [first_d, first_rb] = *regs_of(c, slot, c.n_rnti()).begin();
            const auto& row = grid.get_payload_mapping()[c.first_symbol(slot) + first_d];
            EXPECT_NEAR(20 * std::log10(std::abs(row[12 * (c["bwp_rb_start"] + first_rb)])), c.value("pwr_boosting"),
                        1e-9);
            for (const auto& [d, rb] : regs_of(c, slot, c["rnti"]))
                for (unsigned int k = 0; k < 12; ++k)
                    wanted.emplace(c.first_symbol(slot) + d, 12 * (c["bwp_rb_start"] + rb) + k);
        }
        double rest = 0.0;
        for (unsigned int l = 0; l < rows.size(); ++l)
            for (unsigned int k = 0; k < subcarriers; ++k) {
                rest = std::max(rest, std::abs(rows[l][k]));
                if (grid.get_owner(l, k) == LIB_NR_RESOURCE_MAPPING_PDCCH)
                    marked.emplace(l, k);
            }
        EXPECT_LT(rest, 1e-9);
        EXPECT_EQ(marked, wanted);
    }
}

TEST(lib_nr_dl_phy_pdcch_process, what_does_not_fit_is_told)
{
    const std::string dci = "carrier[0].dl_dci[0].";
    const std::string groups = "carrier[0].dl_bwp[1].coreset[1].fd_resources=";
    const std::string level = dci + "aggregation_level=LIB_NR_DCI_AGGREGATION_LEVEL_";
    struct row_t
    {
        std::vector<std::string> steps;
        const char* printed;
        const char* reason;
    };
    const row_t rows[] = {
        {{level + "16", groups + "11"},
         "pdcch error!!! agregation level exeed available cce.\npdcch error!!!_dci_interleaver fail\n"
         "error!!!pdcch remap fail\nerror!!!PDCCH process fail\n",
         "its aggregation level takes more CCEs than its CORESET has"},
        {{level + "8", dci + "data_block_size=141", dci + "coding=true"},
         "pdcch error!!!pdcch polor fail\nerror!!!PDCCH process fail\n",
         "its bits and their CRC are more than the polar code takes at its aggregation level"},
        {{level + "8", dci + "data_block_size=109", level + "1"},
         "pdcch error!!!pdcch no coding payload generation fail\nerror!!!PDCCH process fail\n",
         "its bits are more than its aggregation level carries"},
        {{groups}, "pdcch error!!!_deal_dci_para_conflict fail\n", ""},
    };
    for (const row_t& row : rows) {
        nr_test::waveform_of_t waveform(row.steps);
        waveform.get_carrier(0)->get_dl_dci(0)->set_enable(true);
        const nr_test::captured_output_t output;
        lib_nr_phy_t engine;
        engine.waveform_config(waveform.get_waveform_manager());
        EXPECT_EQ(engine.nr_phy_process(), row.steps.front() != groups) << "only a CORESET without groups conflicts";
        EXPECT_NE(output.text().find(row.printed), std::string::npos) << output.text();
        const auto& failed = engine.get_first_failed_step();
        EXPECT_EQ(failed ? failed->reason : "", row.reason);
    }
    lib_nr_dl_phy_pdcch_process_t process;
    process.set_fd_resources(std::vector<int>(4, 1));
    process.set_aggregation_level(static_cast<lib_nr_dl_dci_aggregation_level_t>(0x80000000u));
    process.set_candidates_num(static_cast<lib_nr_dl_dci_candidates_number_t>(0));
    process.set_cce2reg_mapping_type(LIB_NR_CORSET_INTERLEAVE);
    process.set_reg_bundle_size(static_cast<lib_nr_dl_dci_reg_bundle_size_t>(31));
    process.set_interleaver_size(static_cast<lib_nr_dl_dci_interleaver_size_t>(0));
    process.set_coreset_symbol_number(0);
    nr_test::test_grid_t grid(LIB_NR_SCS_30K, 24, LIB_NR_CHANNEL_FR1_10M);
    EXPECT_TRUE(process.pdcch_encode_process(0) && grid.count_symbols() == 6 * 12) << "level 1";
    process.set_coding(true);
    process.set_data_source(static_cast<lib_nr_pn_seq_t>(9));
    EXPECT_EQ(nr_test::printed_by([&] { EXPECT_FALSE(process.pdcch_encode_process(0)); }),
              "lib_nr_dl_phy_pdcch_process_t::_dl_phy_pdcch_data_generation : Error PN code!\n"
              "pdcch error!!!pdcch crc bit insert fail\n");
}

} // namespace

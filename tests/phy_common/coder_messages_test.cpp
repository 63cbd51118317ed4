#include "support/captured_output.h"
#include "support/coder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;
using vek::test_peer_t;

struct message_row_t
{
    std::string text;          // lines without the last end of line
    std::function<bool()> run; // whether the result is the one expected
};

const bits_t k_left_over = {1, 1, 1};

bool polar_refuses(unsigned int i_il, unsigned int n_pc, unsigned int output_length, std::size_t input_length)
{
    lib_nr_polar_coding_t coder;
    coder.set_i_il(i_il);
    coder.set_n_pc(n_pc);
    coder.set_rate_matching_output_length(output_length);
    bits_t out = k_left_over;
    return !coder.deal_polar_coding(bits_t(input_length), out) && out.empty();
}

bool rate_match_refuses(unsigned int K, unsigned int E, std::size_t input_length)
{
    lib_nr_polar_rate_match_t rate_match;
    rate_match.set_polar_coding_input_lentgh(K);
    rate_match.set_rate_match_output_length(E);
    bits_t out = k_left_over;
    return !rate_match.deal_rate_matching(bits_t(input_length), out) && out.empty();
}

bool matrix_refused(std::size_t rows, std::size_t columns)
{
    std::map<unsigned int, lib_nr_packed_matrix_t> store;
    return !deal_matrix_transform(std::vector<bits_t>(rows, bits_t(columns)), store) && store.empty();
}

const std::vector<message_row_t>& every_message()
{
    static const auto unknown_modulation = static_cast<lib_nr_modulation_type_t>(7);
    static const std::vector<message_row_t> rows = {
        {"lib_nr_crc_calculator_t::_get_crc_length Report : Unknown CRC Type!\n"
         "lib_nr_crc_calculator_t::_update_crc_polynomial Report : Unknown CRC Type!",
         [] {
             lib_nr_crc_calculator_t crc;
             crc.set_crc_type(static_cast<lib_nr_crc_type_t>(6));
             return crc.get_crc_length() == 24;
         }},
        {"lib_nr_crc_calculator_t::deal_crc_attachment Report : Calculation Length out of range!",
         [] {
             lib_nr_crc_calculator_t crc;
             test_peer_t<lib_nr_crc_calculator_t>::set_length(crc, 32);
             bits_t out = k_left_over;
             return !crc.deal_crc_attachment({1}, out) && out == k_left_over;
         }},
        {"lib_nr_modulator_t::get_modulation_order Report : Undefined Modulation Scheme!",
         [] { return lib_nr_modulator_t::get_modulation_order(unknown_modulation) == 0; }},
        {"lib_nr_common_modulator_t::_init_constellation_map Report : Unexpected Modulation Type!",
         [] { return lib_nr_modulator_t(unknown_modulation).get_constellation_map().empty(); }},
        {"lib_nr_common_modulator_t::_init_constellation_map Report : Unexpected Modulation Type!",
         [] {
             lib_nr_modulator_t modulator(LIB_NR_MODULATION_QPSK);
             modulator.set_modulation_type(unknown_modulation);
             return modulator.get_constellation_map().size() == 4;
         }},
        {"lib_nr_common_modulator_t::_deal_digital_modulation Report : Bit data is NOT enough!",
         [] {
             std::vector<std::complex<double>> symbols;
             lib_nr_modulator_t(LIB_NR_MODULATION_QPSK).deal_nr_modulation({0, 1, 1}, symbols);
             return symbols.size() == 1 && symbols[0].real() > 0 && symbols[0].imag() < 0;
         }},
        {"lib_nr_polar_coding_t::_check_input_data_length Report : Output Sequence is Overlength!",
         [] { return polar_refuses(1, 0, 31, 32); }},
        {"lib_nr_polar_coding_t::_check_input_data_length Report : Output Sequence is Overlength!",
         [] { return polar_refuses(0, 3, 34, 32); }},
        {"lib_nr_polar_coding_t::_check_input_data_length Report : Output Sequence is Overlength!",
         [] { return polar_refuses(0, ~0u, ~0u, 32); }},
        {"lib_nr_polar_coding_t::_check_input_data_length Report : Input Sequence For Interleaving is Overlength!",
         [] { return polar_refuses(1, 0, 864, 165); }},
        {"lib_nr_polar_coding_t::_deal_interleaving Report : Input Data is Too Long for Polar Coding with "
         "Interleaving!",
         [] {
             bits_t out;
             return !test_peer_t<lib_nr_polar_coding_t>::interleave({}, bits_t(165), out);
         }},
        {"lib_nr_polar_coding_t::_deal_coding_matrix_multiply Report : Unexpected Input Sequence Length!",
         [] {
             bits_t out;
             return !test_peer_t<lib_nr_polar_coding_t>::multiply(bits_t(16), out);
         }},
        {"lib_nr_polar_coding_t::_deal_coding_matrix_multiply Report : Unexpected Input Sequence Length!",
         [] {
             bits_t out;
             return !test_peer_t<lib_nr_polar_coding_t>::multiply(bits_t(2048), out);
         }},
        {"lib_nr_polar_coding.cpp::deal_matrix_transform Report : Input Matrix shold be Square Matrix!",
         [] { return matrix_refused(32, 64); }},
        {"lib_nr_polar_coding.cpp::deal_matrix_transform Report : Unexpected Input Matrix Order!",
         [] { return matrix_refused(16, 16); }},
        {"lib_nr_polar_coding.cpp::deal_matrix_transform Report : Unexpected Input Matrix Order!",
         [] { return matrix_refused(33, 33); }},
        {"lib_nr_polar_code_block_segmentation_t::deal_code_block_segementation Report : input data length out of "
         "range!",
         [] {
             lib_nr_polar_code_block_segmentation_t segmentation;
             std::vector<bits_t> out(2);
             return !segmentation.deal_code_block_segementation(bits_t(177), out) && out.empty();
         }},
        {"lib_nr_polar_rate_match_t::set_rate_match_output_length Report: Input Parameter Out of Range!",
         [] {
             lib_nr_polar_rate_match_t rate_match;
             bits_t out;
             return !rate_match.set_rate_match_output_length(8193) && rate_match.deal_rate_matching(bits_t(512), out) &&
                    out.size() == 864;
         }},
        {"lib_nr_dl_phy_polor_rate_match_t::deal_rate_matching Report: Rate Matching Output Length is Too Short!",
         [] { return rate_match_refuses(101, 100, 128); }},
        {"lib_nr_dl_phy_polor_rate_match_t::deal_rate_matching Report: Unexpected Input Bit Sequence Length!",
         [] { return rate_match_refuses(10, 100, 16); }},
        {"lib_nr_dl_phy_polor_rate_match_t::deal_rate_matching Report: Unexpected Input Bit Sequence Length!",
         [] { return rate_match_refuses(10, 100, 96); }},
        {"lib_nr_polar_rate_match_t::_deal_coded_bit_interleaving Report : Unexpected Input Sequence Length!",
         [] {
             bits_t out;
             return !test_peer_t<lib_nr_polar_rate_match_t>::interleave({}, bits_t(863), out);
         }},
    };
    return rows;
}

TEST(coder_messages, every_refusal_has_its_line_and_result)
{
    for (std::size_t i = 0; i < every_message().size(); ++i) {
        const message_row_t& row = every_message()[i];
        bool as_expected = false;
        const std::string printed = nr_test::printed_by([&] { as_expected = row.run(); });
        EXPECT_EQ(printed, row.text + "\n") << "row " << i;
        EXPECT_TRUE(as_expected) << "row " << i << ": " << row.text;
    }
}

TEST(coder_messages, none_for_an_empty_input)
{
    const nr_test::captured_output_t output;
    std::vector<std::complex<double>> symbols(1);
    lib_nr_modulator_t(LIB_NR_MODULATION_256QAM).deal_nr_modulation({}, symbols);
    EXPECT_TRUE(symbols.empty());
    bits_t out;
    EXPECT_TRUE(lib_nr_crc_calculator_t().deal_crc_attachment({}, out));
    EXPECT_EQ(out, bits_t(24));
    EXPECT_TRUE(lib_nr_polar_coding_t().deal_polar_coding({}, out));
    EXPECT_EQ(out, bits_t(32));
    EXPECT_EQ(output.text(), "");
}

} // namespace

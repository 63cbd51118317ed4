#include "fuzz/settings_fuzz.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <pugixml.hpp>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace
{

#ifdef __SANITIZE_ADDRESS__
constexpr double k_most_seconds = 20.0;
#else
constexpr double k_most_seconds = 2.0;
#endif

/// Damages a file as an editor, a disk or a villain would: numbers, names, elements that go, move or come twice, bytes.
std::string mutated(const std::string& text, std::mt19937& random)
{
    static const char* const k_words[] = {
        "4294967295",    "-1",   "99999999999999999999", "1e400", "nan", "LIB_NR_SCS_960K",
        "LIB_NR_UPLINK", "true", "0:1:4294967295",       "",      "7",   "LIB_NR_SCS_60K"};
    pugi::xml_document document;
    document.load_buffer(text.data(), text.size());
    for (std::size_t i = 1 + random() % 20; i > 0; --i) {
        const pugi::xpath_node_set elements = document.select_nodes("/*//*");
        if (elements.empty())
            break;
        const auto drawn = [&] { return elements[random() % elements.size()].node(); };
        pugi::xml_node element = drawn();
        switch (random() % 4) {
        case 0:
            element.set_name(drawn().name());
            break;
        case 1:
            element.parent().insert_copy_after(drawn(), element);
            break;
        case 2:
            element.parent().remove_child(element);
            break;
        default:
            element.text().set(random() % 2 ? drawn().text().as_string() : k_words[random() % std::size(k_words)]);
        }
    }
    std::ostringstream damaged;
    document.save(damaged, "", pugi::format_raw);
    std::string bytes = damaged.str();
    bytes.resize(std::min<std::size_t>(bytes.size(), 200000)); // cut where copies have made more of it
    if (random() % 8 == 0 && !bytes.empty())
        bytes[random() % bytes.size()] = static_cast<char>(random());
    return bytes;
}

void expect_soon_done(const std::string& text, const std::string& name)
{
    const std::clock_t start = std::clock();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, k_most_seconds) << name;
}

// NR_TEST_MUTATIONS asks for another number of damaged files.
TEST(settings_fuzz, ends_soon_with_every_file_of_the_corpus_and_with_damaged_ones)
{
    std::vector<std::string> corpus;
    for (const char* folder : {"/tests/fuzz/corpus", "/tests/host/files"})
        for (const auto& file : std::filesystem::directory_iterator(NR_MOD_LIB_SOURCE_DIR + std::string(folder))) {
            std::ifstream stream(file.path(), std::ios::binary);
            corpus.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
            expect_soon_done(corpus.back(), file.path().string());
        }
    ASSERT_GE(corpus.size(), 14U);
    const char* asked = std::getenv("NR_TEST_MUTATIONS");
    std::mt19937 random(1);
    for (int i = asked ? std::atoi(asked) : 1000; i > 0; --i)
        expect_soon_done(mutated(corpus[random() % corpus.size()], random), std::to_string(i));

    // What grows with the square of a list's length shows in long ones.
    const auto list = [](const std::string& entry, unsigned int entries) {
        std::string text;
        for (unsigned int i = 0; i < entries; ++i)
            text += entry;
        return text;
    };
    const std::string front = "<r ProtocolType='NR'><cfg_nr_waveform><cfg_nr_carrier>";
    const std::string behind = "</cfg_nr_carrier></cfg_nr_waveform></r>";
    expect_soon_done(front + list("<cfg_nr_carrier/>", 1000) + behind, "carriers");
    for (const char* name : {"cfg_nr_dl_bwp", "cfg_nr_ul_bwp", "cfg_nr_dl_sch", "cfg_nr_ul_sch", "cfg_nr_ul_pucch"}) {
        const std::string element = name;
        expect_soon_done(front + "<cfg_nr_carrier><" + element + '>' + list('<' + element + "/>", 11000) + "</" +
                             element + "></cfg_nr_carrier>" + behind,
                         name);
    }
}

} // namespace

#include "fuzz/settings_fuzz.h"

#include "config/cfg_nr_waveform.h"
#include "support/captured_output.h"

#include <pugixml.hpp>
#include <string>

// A settings tree of any bytes is refused, or leaves a configuration that saves and recalls. Built alone, this is the
// target of a fuzzer:
//   clang++ -std=c++20 -g -fsanitize=fuzzer,address,undefined -Isrc -Itests -Ibuild/asan/include
//           tests/fuzz/settings_fuzz.cpp -Lbuild/asan/src -lnr_mod_lib -lpugixml

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using vek::nr_mod_lib::cfg_nr_waveform_t;
    const nr_test::captured_output_t silence;
    pugi::xml_document document;
    cfg_nr_waveform_t waveform;
    if (!document.load_buffer(bytes, size) || !waveform.recall_setting(document.document_element()))
        return 0;
    pugi::xml_document saved;
    pugi::xml_node root = saved.append_child("settings");
    if (!waveform.save_setting(root) || !waveform.recall_setting(root))
        __builtin_trap();
    return 0;
}

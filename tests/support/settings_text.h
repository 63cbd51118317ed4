#pragma once

#include "config/cfg_nr_waveform.h"

#include <pugixml.hpp>
#include <sstream>
#include <string>

namespace nr_test
{

/// A waveform's settings tree as text, below a root of its own, without white space.
inline std::string saved(vek::nr_mod_lib::cfg_nr_waveform_t& waveform)
{
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("settings");
    if (!waveform.save_setting(root))
        return {};
    std::ostringstream text;
    document.save(text, "", pugi::format_raw);
    return text.str();
}

/// Recalls such a text; false where the text is no document or the library refuses it.
inline bool recall(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& text)
{
    pugi::xml_document document;
    return document.load_string(text.c_str()) && waveform.recall_setting(document.document_element());
}

/// Chooses each carrier's test model anew: a fresh one holds a modulation that none of its own setters gives.
inline void choose_test_models_anew(vek::nr_mod_lib::cfg_nr_waveform_t& waveform)
{
    for (unsigned int c = 0; c < waveform.get_carrier_number(); ++c)
        waveform.get_carrier(c)->get_dl_tm()->set_test_model(waveform.get_carrier(c)->get_dl_tm()->get_test_model());
}

} // namespace nr_test

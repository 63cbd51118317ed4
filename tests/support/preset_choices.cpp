#include "support/preset_choices.h"

#include "host/nrwave_path.h"
#include "support/captured_output.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

namespace nr_test
{

using namespace vek::nr_mod_lib;

namespace
{

void add_choices(const preset_family_t& family, const nrwave::target_t& facade, const steps_t& chosen,
                 std::vector<steps_t>& choices)
{
    if (chosen.size() == family.settings.size())
        return choices.push_back(chosen);
    const auto& [name, wanted] = family.settings[chosen.size()];
    const cfg_nr_leaf_t& leaf = *find_row(facade.table->leaves, name);
    const steps_t offered = leaf.has_offer() ? leaf.on_offer(facade.facade) : leaf.enumerators();
    for (const std::string& value : wanted.empty() ? offered : wanted) {
        for (std::size_t i = 0; i < chosen.size(); ++i) // a later setting may have moved an earlier one
            find_row(facade.table->leaves, family.settings[i].first)
                ->write(facade.facade, chosen[i].substr(chosen[i].find('=') + 1));
        leaf.write(facade.facade, value);
        EXPECT_TRUE(!wanted.empty() || leaf.read(facade.facade) == value) << name << ' ' << value << " is on offer";
        steps_t longer = chosen;
        longer.push_back(std::string(name) + '=' + value);
        add_choices(family, facade, longer, choices);
    }
}

} // namespace

steps_t preset_steps(const std::string& family, const steps_t& settings, bool ntn)
{
    const std::string path = "carrier[0]." + family;
    steps_t steps = {ntn ? "nr_ntn=true" : "nr_ntn=false"};
    for (const std::string& setting : settings)
        steps.push_back(path + '.' + setting);
    steps.push_back("apply " + path);
    return steps;
}

std::string unexpected_of_presets(const std::string& output, bool ntn)
{
    constexpr const char* k_beginnings[] = {"test : ",
                                            "--------get_carrier_sample_rate()",
                                            "ibandwith_tmp:",
                                            "update_by_numerology:60khz invalid",
                                            "ssb-rb_offset reach limitation",
                                            "current frequency range within FR2",
                                            "check_lra:",
                                            "check_scs_and_format:",
                                            "validate_prach_and_carrier:"};
    std::string unexpected;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty() && !(ntn && line == "cfg_nr_carrier_t::_test_model_pdsch_cfg : Error test model in FDD!") &&
            std::none_of(std::begin(k_beginnings), std::end(k_beginnings),
                         [&](const char* beginning) { return line.rfind(beginning, 0) == 0; }))
            unexpected += line + '\n';
    return unexpected;
}

std::vector<steps_t> every_choice(const preset_family_t& family, bool ntn)
{
    const captured_output_t silence;
    cfg_nr_waveform_t waveform;
    waveform.set_nr_ntn(ntn);
    std::vector<steps_t> choices;
    add_choices(family, nrwave::resolve(waveform, std::string("carrier[0].") + family.facade), {}, choices);
    for (steps_t& choice : choices)
        choice = preset_steps(family.facade, choice, ntn);
    return choices;
}

} // namespace nr_test

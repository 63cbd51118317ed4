#include "support/settings.h"

#include "host/nrwave_path.h"
#include "host/nrwave_steps.h"
#include "support/captured_output.h"

#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>

namespace nr_test
{

using vek::nr_mod_lib::cfg_nr_waveform_t;

std::string take(cfg_nr_waveform_t& waveform, const std::vector<std::string>& steps)
{
    const captured_output_t output;
    nrwave::stepper_t stepper(waveform, [](const std::string&) {});
    for (const std::string& step : steps)
        stepper.apply(step);
    return output.text();
}

std::vector<std::string> load(cfg_nr_waveform_t& waveform, const std::string& content)
{
    const captured_output_t silence;
    std::vector<std::string> told;
    nrwave::stepper_t(waveform, [&](const std::string& line) { told.push_back(line); }).load_text("file", content);
    return told;
}

std::string value_of(cfg_nr_waveform_t& waveform, const std::string& path)
{
    const nrwave::target_t target = nrwave::resolve(waveform, path);
    if (!target.leaf && !target.figure)
        throw std::invalid_argument(path + " has no value");
    return target.leaf ? target.leaf->read(target.facade) : target.figure->read(target.facade);
}

void run_rows(cfg_nr_waveform_t& waveform, const std::vector<setting_row_t>& rows, const std::string& facade)
{
    for (const setting_row_t& row : rows) {
        std::string path = row.path;
        if (!facade.empty() && path.find_first_of(".[= ") == std::string::npos)
            path.insert(0, facade + '.');
        SCOPED_TRACE(path + (row.asked ? std::string(" = ") + row.asked : std::string()));
        if (!row.stored) {
            take(waveform, {path});
            continue;
        }
        const captured_output_t output;
        if (row.asked) {
            const nrwave::target_t target = nrwave::resolve(waveform, path);
            ASSERT_NE(target.leaf, nullptr);
            EXPECT_EQ(target.leaf->write(target.facade, row.asked), std::optional(row.changed));
            if (row.printed) {
                EXPECT_EQ(output.text(), row.printed);
            }
        }
        EXPECT_EQ(value_of(waveform, path), row.stored);
    }
}

} // namespace nr_test

#pragma once

#include "host/analysis/nrwave_level.h"
#include "phy/lib_nr_phy_record.h"

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

namespace nrwave
{

/// What a run has written: figures of the samples as they stand in the file.
struct summary_t
{
    std::vector<std::string> files;
    std::string format;     ///< empty where no samples are written
    std::uint64_t rate = 0; ///< hertz
    level_t level;
    std::uint64_t clipped = 0; ///< samples that the format holds at full scale
    /// From the standard; none where they are not known, as of a file that is read back.
    std::optional<std::vector<vek::nr_mod_lib::lib_nr_met_deviation_t>> deviations = {};

    double seconds() const
    {
        return rate == 0 ? 0.0 : static_cast<double>(level.samples()) / static_cast<double>(rate);
    }
};

/// A line each: files, rate, length, peak, RMS, PAPR, clip count; and one for each deviation from the standard.
std::string text_of(const summary_t& summary);

/// The same under the names that these figures have wherever they stand in JSON; null where silence has none.
nlohmann::ordered_json json_of(const summary_t& summary);

nlohmann::ordered_json or_null(const std::optional<double>& level);

/// JSON as a text. Of a file's name that is not UTF-8 what is foreign is replaced.
std::string written(const nlohmann::ordered_json& json);

} // namespace nrwave

#pragma once

#include "host/analysis/nrwave_ccdf.h"
#include "host/analysis/nrwave_level.h"
#include "host/analysis/nrwave_signal.h"
#include "host/analysis/nrwave_spectrum.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace nrwave
{

/// A limit of the standard, and where it stands.
struct limit_t
{
    double value;
    const char* source;
};

/// What holds for base stations in FR1 is asked of every carrier: a waveform has to be better than what sends it.
constexpr limit_t k_least_aclr_db = {45.0, "TS 38.104 Release 17, clause 6.6.3.2"};
/// The share of the power within the occupied bandwidth, which may be as wide as the channel.
constexpr limit_t k_occupied_share = {0.99, "TS 38.104 Release 17, clause 6.6.2"};
/// Where the limits of the error vector magnitude stand, each of its modulation.
constexpr const char* k_evm_source = "TS 38.104 Release 17, clause 6.5.2";

/// Where a carrier stands in the spectrum, in hertz from the waveform's centre.
struct channel_t
{
    std::size_t index = 0; ///< in the waveform's list
    std::string path;
    band_t edges;         ///< of the channel
    band_t transmission;  ///< what its numerologies may occupy
    bool is_sent = false; ///< whether anything is sent in it
};

/// How far the power in the channel beside lies below that in the channel, both in the transmission bandwidth.
struct aclr_t
{
    band_t band;              ///< one channel off; what the rate holds of it counts
    std::optional<double> db; ///< nothing where the rate holds none of the band
    bool is_shared = false;   ///< whether another carrier sends there: then there is no limit
};

/// The figures of a carrier; one in which nothing is sent has none.
struct carrier_measurement_t
{
    channel_t channel;
    std::optional<double> power_dbfs; ///< between the edges
    std::optional<band_t> occupied;   ///< between the middles of the gaps to its neighbours
    std::array<aclr_t, 2> aclr;       ///< below and above
    std::optional<double> evm_percent = {};

    bool is_occupied_exceeded() const { return occupied && occupied->width_hz() > channel.edges.width_hz(); }
};

inline bool is_exceeded(const aclr_t& aclr) { return aclr.db && !aclr.is_shared && *aclr.db < k_least_aclr_db.value; }

/// The error vector magnitude of an entry of a channel, and what it may be.
struct channel_evm_t
{
    std::string path;
    std::optional<double> percent;
    std::optional<double> limit_percent;

    bool is_exceeded() const { return percent && limit_percent && *percent > *limit_percent; }
};

/// What can be reckoned from samples, and what is expected of them.
struct measurement_t
{
    std::uint64_t samples = 0; ///< all repetitions
    double seconds = 0.0;
    std::uint64_t rate = 0;
    level_t level; ///< of one period, as all that follows
    double resolution_hz = 0.0;
    ccdf_t waveform;
    ccdf_t burst; ///< of what lies between gaps at either end
    ccdf_markers_t gaussian;
    std::vector<carrier_measurement_t> carriers;
    std::vector<channel_evm_t> channels = {}; ///< those that are sent

    /// The peak of a Gaussian signal of this length over its mean.
    const std::optional<double>& expected_papr_db() const { return gaussian.back(); }
    /// What passes its limit, by path and figure.
    std::vector<std::string> exceeded() const;
};

/// Measures a signal, whose spectrum is given.
measurement_t measured(const signal_t& signal, const spectrum_t& spectrum, const std::vector<channel_t>& channels);

} // namespace nrwave

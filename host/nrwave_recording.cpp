#include "host/nrwave_recording.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_input.h"
#include "host/nrwave_value.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace nrwave
{

namespace
{

namespace fs = std::filesystem;

std::string with_suffix(const std::string& file, const std::string& suffix)
{
    return fs::path(file).replace_extension(suffix).string();
}

/// The format of samples by the end of their name.
std::optional<sample_format_t> format_by_suffix(const std::string& suffix)
{
    for (const std::string& name : sample_format_names())
        if (suffix == suffix_of(sample_format_of(name)))
            return sample_format_of(name);
    return std::nullopt;
}

/// Hands a regular file over, piece by piece.
void read_file(const std::string& file, const std::function<void(std::string_view)>& take)
{
    const auto fail = [&](int error) {
        throw failure_t("cannot read " + shortened(file) + ": " + std::system_category().message(error));
    };
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        fail(errno);
    struct closer_t
    {
        int descriptor;
        ~closer_t() { ::close(descriptor); }
    } const closer{descriptor};
    struct stat info = {};
    if (::fstat(descriptor, &info) != 0)
        fail(errno);
    if (!S_ISREG(info.st_mode))
        throw failure_t("cannot read " + shortened(file) + ": it is no regular file");
    std::string block(std::size_t{1} << 18, '\0');
    for (ssize_t count = 1; count > 0;) {
        count = ::read(descriptor, block.data(), block.size());
        if (count < 0)
            fail(errno);
        take(std::string_view(block).substr(0, static_cast<std::size_t>(count)));
    }
}

} // namespace

bool is_recording(const std::string& file)
{
    const std::string suffix = fs::path(file).extension().string();
    return suffix == ".sigmf-meta" || suffix == ".json" || format_by_suffix(suffix);
}

recording_t recording_of(const std::string& file)
{
    const std::string suffix = fs::path(file).extension().string();
    recording_t recording;
    recording.is_sigmf = suffix == ".sigmf-data" || suffix == ".sigmf-meta";
    std::error_code ignored;
    if (!fs::exists(file, ignored))
        throw failure_t("there is no file " + shortened(file));
    if (!is_recording(file))
        throw failure_t(shortened(file) + " is neither a file of samples nor one that tells of them: formats are " +
                        joined(sample_format_names()));
    inputs_t inputs;
    recording.meta = with_suffix(file, recording.is_sigmf ? ".sigmf-meta" : ".json");
    const std::string content = inputs.read(recording.meta);
    recording.claim =
        recording.is_sigmf ? claim_of_sigmf(recording.meta, content) : claim_of_sidecar(recording.meta, content);
    const char* data_suffix = recording.is_sigmf ? ".sigmf-data" : suffix_of(recording.claim.format);
    if (suffix != ".json" && !recording.is_sigmf && suffix != data_suffix)
        throw failure_t(recording.meta + " tells of " + name_of(recording.claim.format) + " samples, not of " +
                        shortened(file));
    recording.data = with_suffix(file, data_suffix);
    return recording;
}

recording_t bare_recording_of(const std::string& file)
{
    const auto format = format_by_suffix(fs::path(file).extension().string());
    if (!format || *format == sample_format_t::sigmf)
        throw failure_t("the name of " + shortened(file) + " tells no format of bare samples");
    recording_t recording;
    recording.data = file;
    recording.claim.format = *format;
    return recording;
}

void read_samples(const recording_t& recording, sample_decoder_t& decoder,
                  const std::function<void(std::string_view)>& take)
{
    try {
        read_file(recording.data, [&](std::string_view bytes) {
            if (take)
                take(bytes);
            decoder.add(bytes);
        });
        decoder.finish();
    } catch (const failure_t& failure) {
        const std::string text = failure.what();
        throw failure_t(text.starts_with("cannot") ? text : shortened(recording.data) + ": " + text);
    }
}

} // namespace nrwave

#ifndef VELTRANE_HOST_FILE_IDENTITY_H
#define VELTRANE_HOST_FILE_IDENTITY_H

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace veltrane::host {

/// What tells an ordinary file apart from all others, whatever the names that lead to it. Devices and pipes have none:
/// one of them may well be read and written at a time.
class FileIdentity {
public:
    /// Of the file behind a path, links followed; none where there is no ordinary file. `-` is standard input.
    static std::optional<FileIdentity> OfInput(const std::string& path);

    /// The same where `-` is standard output.
    static std::optional<FileIdentity> OfOutput(const std::string& path);

    bool operator==(const FileIdentity&) const = default;

private:
    FileIdentity(dev_t device, ino_t number) : fDevice(device), fNumber(number) {}
    static std::optional<FileIdentity> Of(const std::string& path, int standardFile);

    dev_t fDevice;
    ino_t fNumber;
};

/// Keeps an output from being written over what is still to be read, or read while it grows.
/// @param output a path, `-` for standard output
/// @param inputs paths, `-` for standard input
/// @throws UsageFailure when the output is the same file as one of the inputs
void RefuseOutputOnInput(const std::string& output, const std::vector<std::string>& inputs);

} // namespace veltrane::host

#endif

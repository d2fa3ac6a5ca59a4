#include "files/file_identity.h"

#include "files/failure.h"

#include <fmt/format.h>

#include <sys/stat.h>
#include <unistd.h>

namespace veltrane::host {
namespace {

std::string ShownName(const std::string& path, const char* standardFile) {
    return path == "-" ? standardFile : path;
}

} // namespace

std::optional<FileIdentity> FileIdentity::Of(const std::string& path, int standardFile) {
    struct stat status {};
    const int failed = path == "-" ? ::fstat(standardFile, &status) : ::stat(path.c_str(), &status);
    if (failed != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return FileIdentity(status.st_dev, status.st_ino);
}

std::optional<FileIdentity> FileIdentity::OfInput(const std::string& path) {
    return Of(path, STDIN_FILENO);
}

std::optional<FileIdentity> FileIdentity::OfOutput(const std::string& path) {
    return Of(path, STDOUT_FILENO);
}

void RefuseOutputOnInput(const std::string& output, const std::vector<std::string>& inputs) {
    const std::optional<FileIdentity> identity = FileIdentity::OfOutput(output);
    if (!identity) {
        return;
    }
    for (const std::string& input : inputs) {
        if (FileIdentity::OfInput(input) == identity) {
            throw UsageFailure(fmt::format("{}: the output is the same file as the input {}; write to another one",
                                           ShownName(output, "standard output"), ShownName(input, "standard input")));
        }
    }
}

} // namespace veltrane::host

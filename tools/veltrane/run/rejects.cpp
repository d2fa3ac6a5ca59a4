#include "run/rejects.h"

#include "files/failure.h"
#include "files/file_identity.h"
#include "run/options.h"

#include <filesystem>

namespace veltrane::host {
namespace {

std::filesystem::path FullPath(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::weakly_canonical(std::filesystem::absolute(path, ignored), ignored);
}

/// Whether two outputs go to the same place, be it a file that is not there yet.
bool AreSame(const std::string& rejects, const std::string& output) {
    if (rejects == kStandardStream || output == kStandardStream) {
        return rejects == output;
    }
    if (const auto identity = FileIdentity::OfOutput(rejects)) {
        return identity == FileIdentity::OfOutput(output);
    }
    return FullPath(rejects) == FullPath(output);
}

} // namespace

Rejects::Rejects(const std::string& name, char delimiter) : fOutput(name), fWriter(fOutput.Sink(), delimiter) {
    for (const char* column : {"row", "field", "value", "reason"}) {
        fWriter.Text(column);
    }
    fWriter.EndRow();
}

void Rejects::Add(std::uint64_t row, std::string_view field, std::string_view value, std::string_view reason) {
    fWriter.Text(std::to_string(row));
    fWriter.Text(field);
    fWriter.Text(value);
    fWriter.Text(reason);
    fWriter.EndRow();
}

void Rejects::SetBar(ProgressBar* bar) {
    fOutput.SetBar(bar);
}

void Rejects::Finish() {
    fWriter.Flush();
    fOutput.Finish();
}

void Rejects::Commit() {
    fOutput.Commit();
}

void RefuseRejectsOn(const std::string& rejects, const std::string& output, const std::vector<std::string>& inputs) {
    RefuseOutputOnInput(rejects, inputs);
    if (AreSame(rejects, output)) {
        throw UsageFailure("--rejects and -o go to the same file; write one of them to another one");
    }
}

} // namespace veltrane::host

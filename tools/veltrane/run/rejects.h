#ifndef VELTRANE_HOST_REJECTS_H
#define VELTRANE_HOST_REJECTS_H

#include "files/csv_writer.h"
#include "run/case_output.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// The file of everything that could not be read or scored, as CSV with the columns row, field, value and reason. It
/// appears whole or not at all.
class Rejects {
public:
    /// @param name      of the file; `-` is standard output
    /// @param delimiter that of the cases
    Rejects(const std::string& name, char delimiter);

    /// @param bar as in `CaseOutput`
    void SetBar(ProgressBar* bar);

    /// @param row   counted from 1 below the header; 0 is the header
    /// @param field empty where none is to blame, like the value
    void Add(std::uint64_t row, std::string_view field, std::string_view value, std::string_view reason);

    /// Writes what is still held.
    void Finish();

    /// Completes the file, which is finished.
    void Commit();

private:
    CaseOutput fOutput;
    CsvWriter fWriter;
};

/// Keeps the file of rejects from being written over an input or mixed with the output.
/// @throws UsageFailure when it is the same file as one of them
void RefuseRejectsOn(const std::string& rejects, const std::string& output, const std::vector<std::string>& inputs);

} // namespace veltrane::host

#endif

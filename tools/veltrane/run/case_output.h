#ifndef VELTRANE_HOST_CASE_OUTPUT_H
#define VELTRANE_HOST_CASE_OUTPUT_H

#include "files/atomic_file.h"
#include "files/byte_stream.h"
#include "files/packing.h"
#include "run/progress_bar.h"

#include <memory>
#include <optional>
#include <string>

namespace veltrane::host {

/// Where the results of a run go: standard output, or a file that appears whole or not at all, packed where its name
/// ends in `.gz` or `.zst`.
class CaseOutput {
public:
    /// @param name `-` is standard output
    explicit CaseOutput(const std::string& name);

    /// The bar that is taken off the terminal first where standard output is on it too.
    /// @param bar borrowed; null for none
    void SetBar(ProgressBar* bar);

    ByteSink& Sink();

    /// Writes the end of an archive.
    void Finish();

    /// Completes the output, which is finished. Without it no file appears.
    void Commit();

private:
    class StandardOutput : public ByteSink {
    public:
        void Write(std::string_view bytes) override;

        ProgressBar* bar = nullptr;
    };

    StandardOutput fStandardOutput;
    std::optional<AtomicFile> fFile; ///< none for standard output
    std::unique_ptr<PackedSink> fPacked;
};

} // namespace veltrane::host

#endif

#include "run/case_output.h"

#include "run/options.h"

#include <unistd.h>

namespace veltrane::host {

void CaseOutput::StandardOutput::Write(std::string_view bytes) {
    if (bar) {
        bar->Hide();
    }
    DescriptorSink(STDOUT_FILENO, "standard output").Write(bytes);
}

CaseOutput::CaseOutput(const std::string& name) {
    if (name == kStandardStream) {
        return;
    }
    fFile.emplace(name);
    fPacked = MakePackedSink(name, *fFile);
}

void CaseOutput::SetBar(ProgressBar* bar) {
    fStandardOutput.bar = ::isatty(STDOUT_FILENO) ? bar : nullptr;
}

ByteSink& CaseOutput::Sink() {
    if (fPacked) {
        return *fPacked;
    }
    return fFile ? static_cast<ByteSink&>(*fFile) : fStandardOutput;
}

void CaseOutput::Finish() {
    if (fPacked) {
        fPacked->Finish();
    }
}

void CaseOutput::Commit() {
    if (fFile) {
        fFile->Commit();
    }
}

} // namespace veltrane::host

#include "diagnostics/trace.h"
#include "platform/platform.h"

#include <MCVeltrane_900/VTDynamicLoadedLibrary.h>

#include <algorithm>

namespace MCVeltrane_900 {

namespace {

char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr const char* kTraceName = "MCVeltrane_900::VTDynamicLoadedLibrary::GetSymbolAddress";

bool EndsWithIgnoringCase(const std::string& text, const std::string& ending) {
    return text.size() >= ending.size() && std::equal(ending.rbegin(), ending.rend(), text.rbegin(),
                                                      [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

} // namespace

VTDynamicLoadedLibrary::VTDynamicLoadedLibrary(const std::string& fileName) : fFileName(fileName) {}

VTDynamicLoadedLibrary::~VTDynamicLoadedLibrary() = default;

int VTDynamicLoadedLibrary::Load() {
    fErrorText.clear();
    if (fModule != nullptr) {
        return 0;
    }
    int error = 0;
    fModule = veltrane::platform::OpenSharedLibrary(fFileName, error, fErrorText);
    return error;
}

void* VTDynamicLoadedLibrary::GetSymbolAddress(const std::string& symbol) {
    using veltrane::diagnostics::TRACE_PROGRESS;
    veltrane::diagnostics::Trace(TRACE_PROGRESS, "Enter:%s", kTraceName);
    fErrorText.clear();
    void* address = nullptr;
    if (Load() == 0 && fModule != nullptr) {
        address = veltrane::platform::FindSymbol(fModule, symbol, fErrorText);
    }
    veltrane::diagnostics::Trace(TRACE_PROGRESS, "Exit:%s", kTraceName);
    return address;
}

std::string VTDynamicLoadedLibrary::MakeLibraryFileName(const std::string& name) {
    const std::string suffix = veltrane::platform::kSharedLibrarySuffix;
    return name.size() > suffix.size() && EndsWithIgnoringCase(name, suffix) ? name : name + suffix;
}

} // namespace MCVeltrane_900

#include "files/packing.h"

#include "files/packed_formats.h"

#include <algorithm>
#include <string_view>

namespace veltrane::host {
namespace {

bool EndsWith(std::string_view name, std::string_view suffix) {
    const auto isSame = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; };
    return name.size() > suffix.size() && std::equal(suffix.begin(), suffix.end(), name.end() - suffix.size(),
                                                     name.end(), [&](char b, char a) { return isSame(a, b); });
}

} // namespace

std::unique_ptr<PackedSink> MakePackedSink(const std::string& name, ByteSink& sink) {
    if (EndsWith(name, ".gz")) {
        return MakeGzipSink(sink);
    }
    if (EndsWith(name, ".zst")) {
        return MakeZstdSink(sink);
    }
    return nullptr;
}

} // namespace veltrane::host

// Any bytes as derived fields of every kind, with the meaning of the standard: in columns they are what they are case
// by case, bit for bit.
#include "roads.h"
#include "run.h"
#include "standard_document.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace veltrane::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    constexpr std::size_t kMostBytes = 96; // documents of this size are read some hundred times a second
    const Bytes bytes{data, data + std::min(size, kMostBytes)};
    MayFail([&] { RequireSameTransformations(MakeStandardDocument(bytes)); });
    return 0;
}

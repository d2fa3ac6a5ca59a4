#include "transform/function_table.h"

namespace veltrane::transform {

namespace {

constexpr std::string_view First(std::string_view word) {
    return word;
}
template <typename... More>
constexpr std::string_view First(std::string_view word, More...) {
    return word;
}

constexpr std::array kWords{
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, ...) First names,
#include <MCVeltrane_900/TransformFunctions.def>
};

constexpr bool IsPinnedInOrder() {
    for (std::size_t row = 0; row < kPinnedFunctions; ++row) {
        if (kFunctionNumbers[row] != static_cast<int>(row)) {
            return false;
        }
    }
    return true;
}

constexpr bool AreOwnInOrder() {
    int last = kFirstOwnFunction - 1;
    for (std::size_t row = kPinnedFunctions; row < kFunctionCount; ++row) {
        if (kFunctionNumbers[row] <= last) {
            return false;
        }
        last = kFunctionNumbers[row];
    }
    return true;
}

static_assert(TransformationDictionary::TF_NONE == 79, "plug-ins know this number as none");
static_assert(kFunctionCount >= kPinnedFunctions && IsPinnedInOrder(),
              "the table starts with 0 to TF_NONE - 1 in order");
static_assert(AreOwnInOrder(), "the library's own functions have ascending numbers from 1,000 on");

} // namespace

std::string_view FunctionWord(TransformationDictionary::TransformFunction function) {
    const std::size_t row = RowOf(function);
    return row < kFunctionCount ? kWords[row] : std::string_view();
}

} // namespace veltrane::transform

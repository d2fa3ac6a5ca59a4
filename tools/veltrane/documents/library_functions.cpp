#include "documents/library_functions.h"

#include <fmt/format.h>

#include <string_view>

namespace veltrane::host {
namespace {

/// Some functions have two names.
struct Names {
    std::string_view first;
    std::string_view second;
};

constexpr Names MakeNames(std::string_view first, std::string_view second = {}) {
    return {first, second};
}

constexpr Names kFunctions[] = {
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, evaluation, arguments, families, summary, missing)      \
    MakeNames names,
#include <MCVeltrane_900/TransformFunctions.def>
};

} // namespace

std::string_view LibraryFunctionIn(const std::string& message) {
    for (const Names& names : kFunctions) {
        for (const std::string_view name : {names.first, names.second}) {
            if (!name.empty() &&
                message.find(fmt::format("'{}' of attribute 'function' in 'Apply'", name)) != std::string::npos) {
                return name;
            }
        }
    }
    return {};
}

} // namespace veltrane::host

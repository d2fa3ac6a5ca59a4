#include <MCVeltrane_900/PMMLTranslator.h>

#include <initializer_list>
#include <map>
#include <string>

namespace MCVeltrane_900 {

namespace {

using FunctionMap = std::map<std::string, TransformationDictionary::TransformFunction>;

FunctionMap AllFunctions() {
    FunctionMap functions;
#define VELTRANE_NAMES(...)                                                                                            \
    { __VA_ARGS__ }
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, ...)                                                    \
    for (const char* name : std::initializer_list<const char*> VELTRANE_NAMES names) {                                 \
        functions.emplace(name, TransformationDictionary::enumerator);                                                 \
    }
#include <MCVeltrane_900/TransformFunctions.def>
#undef VELTRANE_NAMES
    return functions;
}

} // namespace

void PMMLTranslator::InitFunctionMap() {
    static const FunctionMap functions = AllFunctions();
    if (fFunctionMap.empty()) {
        fFunctionMap = functions; // every translator of a document needs them, and a copy of a map is cheap
    } else {
        fFunctionMap.insert(functions.begin(), functions.end());
    }
}

} // namespace MCVeltrane_900

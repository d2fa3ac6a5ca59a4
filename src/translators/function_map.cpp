#include <MCVeltrane_900/PMMLTranslator.h>

#include <initializer_list>

namespace MCVeltrane_900 {

void PMMLTranslator::InitFunctionMap() {
#define VELTRANE_NAMES(...)                                                                                            \
    { __VA_ARGS__ }
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, literals, ...)                                                 \
    for (const char* name : std::initializer_list<const char*> VELTRANE_NAMES literals) {                              \
        fFunctionMap.emplace(name, TransformationDictionary::enumerator);                                              \
    }
#include <MCVeltrane_900/TransformFunctions.def>
#undef VELTRANE_NAMES
}

} // namespace MCVeltrane_900

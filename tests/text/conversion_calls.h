#ifndef VELTRANE_TESTS_TEXT_CONVERSION_CALLS_H
#define VELTRANE_TESTS_TEXT_CONVERSION_CALLS_H

#include "text/guarded_units.h"

#include <MCXML_900/KORDMBConverter.h>
#include <MCXML_900/KORDMBTranscode.h>

#include <unicode/ucnv.h>

#include <memory>
#include <string>
#include <string_view>

namespace veltrane::tests {

struct CloseConverter {
    void operator()(void* converter) const { ucnv_close(static_cast<UConverter*>(converter)); }
};
/// A converter of the test's own; null, which is the default one, for a null name.
using Converter = std::unique_ptr<void, CloseConverter>;

inline Converter MakeConverter(const char* name) {
    return Converter(name != nullptr ? MCXML_900::KORDMBConverterNew_C(name) : nullptr);
}

/// What a conversion on buffers leaves: the whole field, '#' where it wasn't touched.
template <class Unit>
struct Filled {
    std::basic_string<Unit> field;
    int written;
    int status;
    bool operator==(const Filled&) const = default;
};

/// The conversions on buffers that have a converter, and those that don't.
template <class Target, class Source>
using WithConverter = int (*)(void*, Target*, int, const Source*, int, int*);
template <class Target, class Source>
using WithoutConverter = int (*)(Target*, int, const Source*, int, int*);

/// Calls a conversion on a field and a text that end at guards.
template <class Target, class Source, class Call>
Filled<Target> FillField(std::basic_string_view<Source> text, bool terminated, int size, Call call) {
    static GuardedUnits<Target> targets;
    static GuardedUnits<Source> sources;
    constexpr int kNoStatus = -77;
    const auto units = static_cast<std::size_t>(size > 0 ? size : 0);
    Target* const target = targets.Room(units, '#');
    int status = kNoStatus;
    const int written =
        call(target, size, sources.Put(text, terminated), terminated ? -1 : static_cast<int>(text.size()), &status);
    return {std::basic_string<Target>(target, units), written, status};
}

template <class Target, class Source>
Filled<Target> FillField(WithConverter<Target, Source> convert, void* converter, std::basic_string_view<Source> text,
                         bool terminated, int size) {
    return FillField<Target>(text, terminated, size,
                             [=](auto... arguments) { return convert(converter, arguments...); });
}

template <class Target, class Source>
Filled<Target> FillField(WithoutConverter<Target, Source> convert, std::basic_string_view<Source> text, bool terminated,
                         int size) {
    return FillField<Target>(text, terminated, size, convert);
}

} // namespace veltrane::tests

#endif

#include "text/conversion/fixed_field.h"
#include "text/conversion/raw_conversion.h"
#include "text/converters/converter_clone.h"

#include <MCXML_900/KORDMBTranscode.h>

#include <optional>

namespace MCXML_900 {

namespace {

using namespace veltrane::text;

/// The caller's converter, or a clone of the default one for this call.
class CodePage {
public:
    explicit CodePage(void* given) : fConverter(static_cast<UConverter*>(given)) {
        if (fConverter == nullptr) {
            fConverter = fClone.emplace().Get();
        }
    }
    UConverter* Get() const { return fConverter; }

private:
    std::optional<ConverterClone> fClone;
    UConverter* fConverter;
};

template <class Target, class Source>
using CodePageConversion = Converted (*)(UConverter*, Room<Target>, Text<Source>);

template <class Target, class Source>
int FillByCodePage(void* converter, const FixedField<Target, Source>& field,
                   CodePageConversion<Target, Source> convert) {
    const CodePage codePage(converter);
    return Fill(field,
                [&](Room<Target> target, Text<Source> source) { return convert(codePage.Get(), target, source); });
}

} // namespace

int KORDMB8toCodePage(void* converter, char* target, int targetSize, const char* source, int sourceLength,
                      int* status) {
    return FillByCodePage<char, char>(converter, {target, targetSize, source, sourceLength, status}, FromUtf8);
}

int KORDMBCodePageto8(void* converter, char* target, int targetSize, const char* source, int sourceLength,
                      int* status) {
    return FillByCodePage<char, char>(converter, {target, targetSize, source, sourceLength, status}, ToUtf8);
}

int KORDMB16toCodePage(void* converter, char* target, int targetSize, const char16_t* source, int sourceLength,
                       int* status) {
    return FillByCodePage<char, char16_t>(converter, {target, targetSize, source, sourceLength, status}, FromUtf16);
}

int KORDMBCodePageto16(void* converter, char16_t* target, int targetSize, const char* source, int sourceLength,
                       int* status) {
    return FillByCodePage<char16_t, char>(converter, {target, targetSize, source, sourceLength, status}, ToUtf16);
}

int KORDMB16to8(char* target, int targetSize, const char16_t* source, int sourceLength, int* status) {
    return Fill(FixedField<char, char16_t>{target, targetSize, source, sourceLength, status}, Utf16ToUtf8);
}

int KORDMB8to16(char16_t* target, int targetSize, const char* source, int sourceLength, int* status) {
    return Fill(FixedField<char16_t, char>{target, targetSize, source, sourceLength, status}, Utf8ToUtf16);
}

} // namespace MCXML_900

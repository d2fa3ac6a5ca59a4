#ifndef VELTRANE_TEXT_CONVERTER_CLONE_H
#define VELTRANE_TEXT_CONVERTER_CLONE_H

#include <MCXML_900/KORDMBConverter.h>

#include <unicode/ucnv.h>

#include <cstddef>

namespace veltrane::text {

/// A private copy of a shared converter for one call, in the buffer of this object, so that it takes no memory; ICU
/// takes some only for the few stateful encodings that need more room.
class ConverterClone {
public:
    /// @param source null gives no clone
    explicit ConverterClone(const UConverter* source) : fClone(source != nullptr ? Clone(source) : nullptr) {}
    /// A clone of the default converter.
    ConverterClone() : ConverterClone(MCXML_900::KORDMBGetDefaultConverter()) {}
    ~ConverterClone() { ucnv_close(fClone); }
    ConverterClone(const ConverterClone&) = delete;
    ConverterClone& operator=(const ConverterClone&) = delete;

    /// Null when ICU couldn't clone.
    UConverter* Get() const { return fClone; }

private:
    static constexpr int kRequest = 1040;

    UConverter* Clone(const UConverter* source) {
        UErrorCode error = U_ZERO_ERROR;
        std::int32_t size = kRequest;
// ICU recommends the form that always takes memory; this one takes none.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
        UConverter* clone = ucnv_safeClone(source, fBuffer, &size, &error);
#pragma GCC diagnostic pop
        return U_SUCCESS(error) ? clone : nullptr;
    }

    alignas(std::max_align_t) std::byte fBuffer[kRequest];
    UConverter* fClone;
};

} // namespace veltrane::text

#endif

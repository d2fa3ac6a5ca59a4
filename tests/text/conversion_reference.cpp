#include "text/conversion_reference.h"

#include <unicode/uchar.h>
#include <unicode/ucnv.h>

#include <stdexcept>

namespace veltrane::tests {

namespace {

/// How many bytes a lead announces, and which second bytes may follow it.
struct Lead {
    int first, last; // lead bytes
    int length;
    int lowest, highest; // second byte
};
constexpr Lead kLeads[] = {
    {0x00, 0x7F, 1, 0, 0},       {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF},
    {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF},
    {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

int Byte(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

/// Takes one character, or what is bad of one, from the start.
char32_t TakeUtf8(std::string_view& text) {
    constexpr int kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    const int first = Byte(text, 0);
    const auto* lead = std::find_if(std::begin(kLeads), std::end(kLeads),
                                    [=](const Lead& row) { return first >= row.first && first <= row.last; });
    if (lead == std::end(kLeads)) {
        text.remove_prefix(1);
        return kBad;
    }
    char32_t character = static_cast<char32_t>(first & kLeadBits[lead->length]);
    int taken = 1;
    while (taken < lead->length && static_cast<std::size_t>(taken) < text.size()) {
        const int trail = Byte(text, static_cast<std::size_t>(taken));
        const bool second = taken == 1;
        if (trail < (second ? lead->lowest : 0x80) || trail > (second ? lead->highest : 0xBF)) {
            break;
        }
        character = character * 64 + static_cast<char32_t>(trail & 0x3F);
        ++taken;
    }
    text.remove_prefix(static_cast<std::size_t>(taken));
    return taken == lead->length ? character : kBad;
}

bool IsLead(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsTrail(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

UConverter* ConverterOf(void* converter) {
    return static_cast<UConverter*>(converter);
}

} // namespace

std::vector<char32_t> Characters(std::string_view utf8) {
    std::vector<char32_t> characters;
    while (!utf8.empty()) {
        characters.push_back(TakeUtf8(utf8));
    }
    return characters;
}

std::vector<char32_t> Characters(std::u16string_view utf16) {
    std::vector<char32_t> characters;
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const char16_t unit = utf16[i];
        if (IsLead(unit) && i + 1 < utf16.size() && IsTrail(utf16[i + 1])) {
            characters.push_back(0x10000 + (unit - 0xD800U) * 0x400 + (utf16[i + 1] - 0xDC00U));
            ++i;
        } else {
            characters.push_back(IsLead(unit) || IsTrail(unit) ? kBad : unit);
        }
    }
    return characters;
}

std::string InUtf8(char32_t character) {
    const auto byte = [](char32_t value) { return static_cast<char>(value); };
    if (character < 0x80) {
        return {byte(character)};
    }
    if (character < 0x800) {
        return {byte(0xC0 + character / 0x40), byte(0x80 + character % 0x40)};
    }
    if (character < 0x10000) {
        return {byte(0xE0 + character / 0x1000), byte(0x80 + character / 0x40 % 0x40), byte(0x80 + character % 0x40)};
    }
    return {byte(0xF0 + character / 0x40000), byte(0x80 + character / 0x1000 % 0x40),
            byte(0x80 + character / 0x40 % 0x40), byte(0x80 + character % 0x40)};
}

std::u16string InUtf16(char32_t character) {
    if (character < 0x10000) {
        return {static_cast<char16_t>(character)};
    }
    return {static_cast<char16_t>(0xD800 + (character - 0x10000) / 0x400),
            static_cast<char16_t>(0xDC00 + (character - 0x10000) % 0x400)};
}

CodePageTable::CodePageTable(const char* name) : fKnown(0x110000) {
    UErrorCode error = U_ZERO_ERROR;
    fConverter = ucnv_open(name, &error);
    ucnv_setToUCallBack(ConverterOf(fConverter), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    ucnv_setFromUCallBack(ConverterOf(fConverter), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    if (U_FAILURE(error)) {
        throw std::runtime_error(name);
    }
}

CodePageTable::~CodePageTable() {
    ucnv_close(ConverterOf(fConverter));
}

std::optional<std::string> CodePageTable::Bytes(char32_t character) {
    auto& known = fKnown[character];
    if (!known) {
        const std::u16string units = InUtf16(character);
        char bytes[16];
        UErrorCode error = U_ZERO_ERROR;
        const int length = ucnv_fromUChars(ConverterOf(fConverter), bytes, sizeof bytes, units.data(),
                                           static_cast<int>(units.size()), &error);
        known.emplace();
        // ICU leaves out what it doesn't have and what stands for nothing visible, without a word.
        if (U_SUCCESS(error) && length > 0) {
            known->emplace(bytes, static_cast<std::size_t>(length));
        }
    }
    return *known;
}

std::vector<char32_t> CodePageTable::Characters(std::string_view bytes) {
    std::vector<char32_t> characters;
    ucnv_resetToUnicode(ConverterOf(fConverter));
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    while (true) {
        UErrorCode error = U_ZERO_ERROR;
        const UChar32 character = ucnv_getNextUChar(ConverterOf(fConverter), &at, end, &error);
        if (error == U_INDEX_OUTOFBOUNDS_ERROR) {
            return characters;
        }
        characters.push_back(U_SUCCESS(error) ? static_cast<char32_t>(character) : kBad);
    }
}

bool IsInvisible(char32_t character) {
    return u_hasBinaryProperty(static_cast<UChar32>(character), UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0;
}

} // namespace veltrane::tests

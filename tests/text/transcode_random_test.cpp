// A million random texts through every conversion on buffers, by several code pages where there is one, on fields of
// random size that end at a guard, against the plain reference.
#include "text/conversion_calls.h"
#include "text/conversion_reference.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;

constexpr int kTexts = 1000000;
constexpr const char* kCodePages[] = {nullptr, "windows-1252", "Shift_JIS"}; // null for the default
constexpr int kTextsOfACodePage = kTexts / static_cast<int>(std::size(kCodePages)) + 1;
constexpr int kLongest = 40;

/// Texts that are neither all good nor all bad.
class RandomTexts {
public:
    int Below(int end) { return static_cast<int>(fRandom() % static_cast<unsigned>(end)); }

    /// Whole characters of UTF-8, then some bytes changed; or any bytes at all.
    std::string Utf8() {
        std::string text;
        const int kind = Below(5);
        const int length = Below(kLongest);
        while (static_cast<int>(text.size()) < length) {
            text += kind == 0   ? std::string(1, static_cast<char>(Below(256)))
                    : kind == 2 ? InUtf8(MostlyAscii())
                                : InUtf8(Character());
        }
        return kind == 1 ? Changed(text) : text;
    }

    std::u16string Utf16() {
        std::u16string text;
        const int kind = Below(5);
        const int length = Below(kLongest);
        while (static_cast<int>(text.size()) < length) {
            // Half of the lone units are surrogates.
            const int unit = Below(2) == 0 ? Below(0x10000) : 0xD800 + Below(0x800);
            text += kind == 0   ? std::u16string(1, static_cast<char16_t>(unit))
                    : kind == 2 ? InUtf16(MostlyAscii())
                                : InUtf16(Character());
        }
        return text;
    }

    /// Whole characters of a code page, with some bytes changed now and then; or any bytes.
    std::string InCodePage(CodePageTable& table) {
        std::string text;
        const int kind = Below(4);
        const int length = Below(kLongest);
        while (static_cast<int>(text.size()) < length) {
            text += kind == 0 ? std::string(1, static_cast<char>(Below(256))) : table.Bytes(Character()).value_or("?");
        }
        return kind == 1 ? Changed(text) : text;
    }

private:
    char32_t MostlyAscii() { return Below(20) == 0 ? Character() : static_cast<char32_t>(Below(0x80)); }

    char32_t Character() {
        switch (Below(8)) {
        case 0:
        case 1:
        case 2:
            return static_cast<char32_t>(0x20 + Below(0x60));
        case 3:
            return static_cast<char32_t>(0x80 + Below(0x780));
        case 4:
        case 5:
            return static_cast<char32_t>(0x4E00 + Below(0x5200));
        case 6: {
            const auto character = static_cast<char32_t>(Below(0x10000));
            return character >= 0xD800 && character <= 0xDFFF ? 'x' : character;
        }
        default:
            return static_cast<char32_t>(0x10000 + Below(0x100000));
        }
    }

    std::string Changed(std::string text) {
        for (int i = Below(3); i >= 0 && !text.empty(); --i) {
            const auto at = static_cast<std::size_t>(Below(static_cast<int>(text.size())));
            if (Below(2) == 0) {
                text.erase(at, 1);
            } else {
                text[at] = static_cast<char>(Below(256));
            }
        }
        return text;
    }

    std::mt19937 fRandom{20240917};
};

/// A NUL ends a text that has no length.
template <class Unit>
void EndAtNul(std::basic_string<Unit>& text) {
    text.resize(std::min(text.find(Unit(0)), text.size()));
}

/// Converts texts into fields until one comes out otherwise than the reference has it.
/// @param texts   how many
/// @param make    () to a text
/// @param convert as FillField takes it
/// @param expect  from a text to its Pieces
template <class Target, class Source, class Make, class Convert, class Expect>
void Compare(RandomTexts& random, int texts, Make make, Convert convert, Expect expect) {
    for (int i = 0; i < texts; ++i) {
        std::basic_string<Source> text = make();
        const bool terminated = random.Below(2) == 0;
        if (terminated) {
            EndAtNul(text);
        }
        const Pieces<Target> pieces = expect(text);
        const int whole = static_cast<int>(pieces.Whole().size());
        const int size = std::max(0, whole - 4 + random.Below(8));
        const Filled<Target> found = FillField<Target, Source>(text, terminated, size, convert);
        const Field<Target> expected = Put(pieces, terminated, size);
        if (found != Filled<Target>{expected.field, expected.written, expected.status}) {
            EXPECT_EQ(found.field, expected.field) << testing::PrintToString(text) << " size " << size;
            EXPECT_EQ(found.written, expected.written) << testing::PrintToString(text) << " size " << size;
            EXPECT_EQ(found.status, expected.status) << testing::PrintToString(text) << " size " << size;
            FAIL() << "text " << i << (terminated ? ", terminated" : ", by length");
        }
    }
}

Pieces<char16_t> AsUtf16(const std::vector<char32_t>& characters) {
    Pieces<char16_t> pieces;
    for (const char32_t character : characters) {
        pieces.Add(character == kBad ? std::nullopt : std::optional(InUtf16(character)));
    }
    return pieces;
}

Pieces<char> AsUtf8(const std::vector<char32_t>& characters) {
    Pieces<char> pieces;
    for (const char32_t character : characters) {
        pieces.Add(character == kBad ? std::nullopt : std::optional(InUtf8(character)));
    }
    return pieces;
}

Pieces<char> AsCodePage(CodePageTable& table, const std::vector<char32_t>& characters) {
    Pieces<char> pieces;
    for (const char32_t character : characters) {
        if (character == kBad) {
            pieces.Add(std::nullopt);
            pieces.failed = true;
        } else {
            pieces.Add(table.Bytes(character), IsInvisible(character));
        }
    }
    return pieces;
}

TEST(TranscodeRandom, Utf8ToUtf16) {
    RandomTexts random;
    Compare<char16_t, char>(
        random, kTexts, [&] { return random.Utf8(); }, KORDMB8to16,
        [](std::string_view text) { return AsUtf16(Characters(text)); });
}

TEST(TranscodeRandom, Utf16ToUtf8) {
    RandomTexts random;
    Compare<char, char16_t>(
        random, kTexts, [&] { return random.Utf16(); }, KORDMB16to8,
        [](std::u16string_view text) { return AsUtf8(Characters(text)); });
}

/// One of the code pages, null for the default.
class TranscodeRandomCodePage : public testing::TestWithParam<const char*> {
protected:
    const Converter fConverter = MakeConverter(GetParam());
    CodePageTable fTable{GetParam() != nullptr ? GetParam() : "UTF-8"};
    RandomTexts fRandom;
};

TEST_P(TranscodeRandomCodePage, FromUtf8) {
    Compare<char, char>(
        fRandom, kTextsOfACodePage, [&] { return fRandom.Utf8(); },
        [&](auto... arguments) { return KORDMB8toCodePage(fConverter.get(), arguments...); },
        [&](std::string_view text) { return AsCodePage(fTable, Characters(text)); });
}

TEST_P(TranscodeRandomCodePage, FromUtf16) {
    Compare<char, char16_t>(
        fRandom, kTextsOfACodePage, [&] { return fRandom.Utf16(); },
        [&](auto... arguments) { return KORDMB16toCodePage(fConverter.get(), arguments...); },
        [&](std::u16string_view text) { return AsCodePage(fTable, Characters(text)); });
}

TEST_P(TranscodeRandomCodePage, ToUtf8) {
    Compare<char, char>(
        fRandom, kTextsOfACodePage, [&] { return fRandom.InCodePage(fTable); },
        [&](auto... arguments) { return KORDMBCodePageto8(fConverter.get(), arguments...); },
        [&](std::string_view text) { return AsUtf8(fTable.Characters(text)); });
}

TEST_P(TranscodeRandomCodePage, ToUtf16) {
    Compare<char16_t, char>(
        fRandom, kTextsOfACodePage, [&] { return fRandom.InCodePage(fTable); },
        [&](auto... arguments) { return KORDMBCodePageto16(fConverter.get(), arguments...); },
        [&](std::string_view text) { return AsUtf16(fTable.Characters(text)); });
}

INSTANTIATE_TEST_SUITE_P(All, TranscodeRandomCodePage, testing::ValuesIn(kCodePages), [](const auto& info) {
    return info.param == nullptr ? "Default" : std::string(info.param) == "Shift_JIS" ? "ShiftJis" : "Cp1252";
});

} // namespace

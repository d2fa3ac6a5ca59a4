// Every assigned character through every conversion on strings, there and back, by every code page.
#include "text/conversion_calls.h"
#include "text/conversion_reference.h"

#include <MCXML_900/KORDMBString.h>

#include <gtest/gtest.h>
#include <unicode/uchar.h>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;

/// One text in all forms.
struct Forms {
    std::string utf8;
    std::u16string utf16;
    std::string codePage;
    std::size_t characters = 0;

    void Add(char32_t character, const std::string& bytes) {
        utf8 += InUtf8(character);
        utf16 += InUtf16(character);
        codePage += bytes;
        ++characters;
    }
};

template <class Out, class In>
void ExpectText(int (*convert)(void*, Out&, const In&), void* converter, const In& in, const Out& expected,
                int status) {
    Out out;
    EXPECT_EQ(convert(converter, out, in), status);
    EXPECT_EQ(out, expected);
}

/// Each conversion of the table, in both modes of the generic form.
void ExpectRoundTrips(void* converter, const Forms& forms) {
    ExpectText(KORDMBU8ToCodePage, converter, forms.utf8, forms.codePage, 0);
    ExpectText(KORDMBCodePageToU8, converter, forms.codePage, forms.utf8, 0);
    ExpectText(KORDMBU16ToCodePage, converter, forms.utf16, forms.codePage, 0);
    ExpectText(KORDMBCodePageToU16, converter, forms.codePage, forms.utf16, 0);
    ExpectText<std::string, std::u16string>(KORDMBU16ToU8, converter, forms.utf16, forms.utf8, 0);
    ExpectText<std::u16string, std::string>(KORDMBU8ToU16, converter, forms.utf8, forms.utf16, 0);
    for (const int mode : {0, 1}) {
        SetUTF8mode(mode);
        const std::string& generic = mode != 0 ? forms.utf8 : forms.codePage;
        ExpectText<std::string, std::string>(KORDMBGenericToCodePage, converter, generic, forms.codePage, 0);
        ExpectText<std::string, std::string>(KORDMBCodePageToGeneric, converter, forms.codePage, generic, 0);
        ExpectText<std::string, std::string>(KORDMBU8ToGeneric, converter, forms.utf8, generic, 0);
        ExpectText<std::string, std::string>(KORDMBGenericToU8, converter, generic, forms.utf8, 0);
        ExpectText<std::string, std::u16string>(KORDMBU16ToGeneric, converter, forms.utf16, generic, 0);
        ExpectText<std::u16string, std::string>(KORDMBGenericToU16, converter, generic, forms.utf16, 0);
    }
}

/// Characters that come back, that have bytes which come back as others, and that have none.
struct Sorted {
    std::vector<Forms> there{1}, oneWay{1}, missing{1};
    std::size_t countThere = 0;

    static void Add(std::vector<Forms>& texts, char32_t character, const std::string& bytes) {
        constexpr std::size_t kCharactersOfAText = 64;
        if (texts.back().characters == kCharactersOfAText) {
            texts.emplace_back();
        }
        texts.back().Add(character, bytes);
    }
};

Sorted SortAssigned(CodePageTable& table) {
    Sorted sorted;
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        const auto point = static_cast<UChar32>(character);
        if (!u_isdefined(point) || U_IS_SURROGATE(point)) {
            continue;
        }
        const std::optional<std::string> bytes = table.Bytes(character);
        if (!bytes) {
            Sorted::Add(sorted.missing, character, IsInvisible(character) ? "" : "?");
        } else if (table.Characters(*bytes) == std::vector<char32_t>{character}) {
            Sorted::Add(sorted.there, character, *bytes);
            ++sorted.countThere;
        } else {
            Sorted::Add(sorted.oneWay, character, *bytes);
        }
    }
    return sorted;
}

struct CodePage {
    const char* name;   // null for the default
    std::size_t fewest; ///< characters that come back
};

void PrintTo(const CodePage& page, std::ostream* out) {
    *out << (page.name != nullptr ? page.name : "default");
}

class TranscodeRoundTrip : public testing::TestWithParam<CodePage> {
protected:
    void TearDown() override { SetUTF8mode(1); }
};

TEST_P(TranscodeRoundTrip, EveryAssignedCharacter) {
    const Converter converter = MakeConverter(GetParam().name);
    UErrorCode error = U_ZERO_ERROR;
    const auto* description = static_cast<const UConverter*>(converter.get());
    CodePageTable table(ucnv_getName(description != nullptr ? description : KORDMBGetDefaultConverter(), &error));
    const Sorted sorted = SortAssigned(table);
    EXPECT_GE(sorted.countThere, GetParam().fewest);
    for (const Forms& forms : sorted.there) {
        ExpectRoundTrips(converter.get(), forms);
    }
    for (const Forms& forms : sorted.oneWay) {
        ExpectText(KORDMBU8ToCodePage, converter.get(), forms.utf8, forms.codePage, 0);
        ExpectText(KORDMBU16ToCodePage, converter.get(), forms.utf16, forms.codePage, 0);
    }
    for (const Forms& forms : sorted.missing) {
        const int status = forms.characters != 0 ? 3 : 0;
        ExpectText(KORDMBU8ToCodePage, converter.get(), forms.utf8, forms.codePage, status);
        ExpectText(KORDMBU16ToCodePage, converter.get(), forms.utf16, forms.codePage, status);
    }
}

constexpr CodePage kCodePages[] = {
    {nullptr, 280000}, {"932", 9000}, {"936", 24000}, {"949", 8500},     {"950", 19000}, {"1250", 245},
    {"1251", 245},     {"1252", 245}, {"1253", 245},  {"1254", 245},     {"1255", 245},  {"1256", 245},
    {"1257", 245},     {"1258", 245}, {"28591", 256}, {"65001", 280000},
};
INSTANTIATE_TEST_SUITE_P(All, TranscodeRoundTrip, testing::ValuesIn(kCodePages), [](const auto& info) {
    return info.param.name != nullptr ? "CodePage" + std::string(info.param.name) : std::string("Default");
});

} // namespace

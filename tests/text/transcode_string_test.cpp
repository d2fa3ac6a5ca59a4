// The conversions on strings, in both modes of the generic form, and those into new memory.
#include "text/conversion_calls.h"

#include <MCXML_900/KORDMBString.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <sys/resource.h>
#include <thread>
#include <vector>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;
using namespace std::string_literals;

// One text in three forms.
const std::string kUtf8 = "a\xC3\xA9\xE2\x82\xAC\xE6\x97\xA5\xF0\x9F\x98\x80";
const std::u16string kUtf16 = u"a\u00e9\u20ac\u65e5\U0001F600";
const std::string kGb18030 = "a\xA8\xA6\xA2\xE3\xC8\xD5\x94\x39\xFC\x36";

/// Sets the mode for a test.
class Mode {
public:
    explicit Mode(int mode) { SetUTF8mode(mode); }
    ~Mode() { SetUTF8mode(1); }
    Mode(const Mode&) = delete;
    Mode& operator=(const Mode&) = delete;
};

/// What a conversion on strings gives.
template <class Unit>
struct Text {
    std::basic_string<Unit> text;
    int status;
    bool operator==(const Text&) const = default;
};

template <class Unit, class... Arguments>
Text<Unit> Convert(int (*convert)(void*, std::basic_string<Unit>&, Arguments...), void* converter, Arguments... in) {
    Text<Unit> result{{'o', 'l', 'd'}, -77};
    result.status = convert(converter, result.text, in...);
    return result;
}

template <class Unit, class... Arguments>
Text<Unit> Convert(int (*convert)(std::basic_string<Unit>&, Arguments...), Arguments... in) {
    Text<Unit> result{{'o', 'l', 'd'}, -77};
    result.status = convert(result.text, in...);
    return result;
}

using Bytes = const std::string&;
using Units = const std::u16string&;
const std::string kEmpty;

TEST(TranscodeStrings, EveryPairOfForms) {
    const Converter gb = MakeConverter("GB18030");
    EXPECT_EQ((Convert<char, Bytes>(KORDMBCodePageToU8, gb.get(), kGb18030)), (Text<char>{kUtf8, 0}));
    EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBCodePageToU16, gb.get(), kGb18030)), (Text<char16_t>{kUtf16, 0}));
    EXPECT_EQ((Convert<char, Units>(KORDMBU16ToCodePage, gb.get(), kUtf16)), (Text<char>{kGb18030, 0}));
    EXPECT_EQ((Convert<char, Bytes>(KORDMBU8ToCodePage, gb.get(), kUtf8)), (Text<char>{kGb18030, 0}));
    EXPECT_EQ((Convert<char, Units>(KORDMBU16ToU8, kUtf16)), (Text<char>{kUtf8, 0}));
    EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBU8ToU16, kUtf8)), (Text<char16_t>{kUtf16, 0}));
    EXPECT_EQ((Convert<char, Units>(KORDMBU16ToU8, gb.get(), kUtf16)), (Text<char>{kUtf8, 0}));
    EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBU8ToU16, nullptr, kUtf8)), (Text<char16_t>{kUtf16, 0}));
}

TEST(TranscodeStrings, DefaultCodePageIsUtf8) {
    EXPECT_EQ((Convert<char, Bytes>(KORDMBU8ToCodePage, nullptr, kUtf8)), (Text<char>{kUtf8, 0}));
    EXPECT_EQ((Convert<char, Bytes>(KORDMBCodePageToU8, nullptr, kUtf8)), (Text<char>{kUtf8, 0}));
    EXPECT_EQ((Convert<char, Units>(KORDMBU16ToCodePage, nullptr, kUtf16)), (Text<char>{kUtf8, 0}));
    EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBCodePageToU16, nullptr, kUtf8)), (Text<char16_t>{kUtf16, 0}));
}

TEST(TranscodeStrings, GenericFormInUtf8Mode) {
    const Mode mode(1);
    const Converter gb = MakeConverter("GB18030");
    EXPECT_EQ((Convert<char, Bytes>(KORDMBGenericToCodePage, gb.get(), kUtf8)), (Text<char>{kGb18030, 0}));
    EXPECT_EQ((Convert<char, Bytes>(KORDMBCodePageToGeneric, gb.get(), kGb18030)), (Text<char>{kUtf8, 0}));
    EXPECT_EQ((Convert<char, Bytes>(KORDMBU8ToGeneric, gb.get(), "\xFF"s)), (Text<char>{"\xFF", 0})) << "a copy";
    EXPECT_EQ((Convert<char, Bytes>(KORDMBGenericToU8, gb.get(), "\xFF"s)), (Text<char>{"\xFF", 0})) << "a copy";
    EXPECT_EQ((Convert<char, Units>(KORDMBU16ToGeneric, gb.get(), kUtf16)), (Text<char>{kUtf8, 0}));
    EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBGenericToU16, gb.get(), kUtf8)), (Text<char16_t>{kUtf16, 0}));
}

TEST(TranscodeStrings, GenericFormInCodePageMode) {
    const Mode mode(0);
    const Converter gb = MakeConverter("GB18030");
    EXPECT_EQ((Convert<char, Bytes>(KORDMBGenericToCodePage, gb.get(), "\xFF"s)), (Text<char>{"\xFF", 0})) << "a copy";
    EXPECT_EQ((Convert<char, Bytes>(KORDMBCodePageToGeneric, gb.get(), "\xFF"s)), (Text<char>{"\xFF", 0})) << "a copy";
    EXPECT_EQ((Convert<char, Bytes>(KORDMBU8ToGeneric, gb.get(), kUtf8)), (Text<char>{kGb18030, 0}));
    EXPECT_EQ((Convert<char, Bytes>(KORDMBGenericToU8, gb.get(), kGb18030)), (Text<char>{kUtf8, 0}));
    EXPECT_EQ((Convert<char, Units>(KORDMBU16ToGeneric, gb.get(), kUtf16)), (Text<char>{kGb18030, 0}));
    EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBGenericToU16, gb.get(), kGb18030)), (Text<char16_t>{kUtf16, 0}));
}

TEST(TranscodeStrings, GenericFormWithoutAConverter) {
    for (const int setting : {0, 1}) {
        const Mode mode(setting);
        EXPECT_EQ((Convert<char, Bytes>(KORDMBU8ToGeneric, kUtf8)), (Text<char>{kUtf8, 0}));
        EXPECT_EQ((Convert<char, Bytes>(KORDMBGenericToU8, kUtf8)), (Text<char>{kUtf8, 0}));
        EXPECT_EQ((Convert<char, Units>(KORDMBU16ToGeneric, kUtf16)), (Text<char>{kUtf8, 0}));
        EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBGenericToU16, kUtf8)), (Text<char16_t>{kUtf16, 0}));
    }
    const Mode mode(0);
    EXPECT_EQ((Convert<char, Bytes>(KORDMBU8ToGeneric, "\xFF"s)), (Text<char>{"?", 3})) << "the default code page";
}

TEST(TranscodeStrings, GenericFormOnBuffers) {
    const Converter gb = MakeConverter("GB18030");
    const std::string_view u8 = kUtf8, codePage = kGb18030;
    const std::u16string_view u16 = kUtf16;
    const auto size = [](const auto& text) { return static_cast<int>(text.size()); };
    for (const int setting : {0, 1}) {
        const Mode mode(setting);
        const std::string_view generic = setting != 0 ? u8 : codePage;
        const Filled<char> asUtf8{kUtf8, size(u8), 0}, asCodePage{kGb18030, size(codePage), 0};
        const Filled<char> asGeneric{std::string(generic), size(generic), 0};
        const Filled<char16_t> asUtf16{kUtf16, size(u16), 0};
        EXPECT_EQ((FillField<char, char>(KORDMBGenerictoCodePage, gb.get(), generic, false, size(codePage))),
                  asCodePage);
        EXPECT_EQ((FillField<char, char>(KORDMBCodePagetoGeneric, gb.get(), codePage, false, size(generic))),
                  asGeneric);
        EXPECT_EQ((FillField<char, char>(KORDMB8toGeneric, gb.get(), u8, false, size(generic))), asGeneric);
        EXPECT_EQ((FillField<char, char>(KORDMBGenericto8, gb.get(), generic, false, size(u8))), asUtf8);
        EXPECT_EQ((FillField<char, char16_t>(KORDMB16toGeneric, gb.get(), u16, false, size(generic))), asGeneric);
        EXPECT_EQ((FillField<char16_t, char>(KORDMBGenericto16, gb.get(), generic, false, size(u16))), asUtf16);
    }
}

TEST(KeptGenericCopy, CutsAnywhereWithoutAStatus) {
    const Mode mode(1);
    for (const auto copy : {KORDMB8toGeneric, KORDMBGenericto8}) {
        EXPECT_EQ((FillField<char, char>(copy, nullptr, "\xE6\x97\xA5", false, 2)), (Filled<char>{"\xE6\x97", 2, 0}));
        EXPECT_EQ((FillField<char, char>(copy, nullptr, "abc", true, 2)), (Filled<char>{"ab", 2, 0}));
        EXPECT_EQ((FillField<char, char>(copy, nullptr, "abc", true, 3)), (Filled<char>{"abc", 3, 0}));
        EXPECT_EQ((FillField<char, char>(copy, nullptr, "abc", true, 5)), (Filled<char>{"abc\0#"s, 3, 0}));
        EXPECT_EQ((FillField<char, char>(copy, nullptr, "abc", false, 5)), (Filled<char>{"abc##", 3, 0}));
        EXPECT_EQ((FillField<char, char>(copy, nullptr, "abc", false, 0)), (Filled<char>{"", 0, 0}));
        EXPECT_EQ((FillField<char, char>(copy, nullptr, "abc", true, -1)), (Filled<char>{"", 0, 0}));
        EXPECT_EQ((FillField<char, char>(copy, nullptr, "", true, 1)), (Filled<char>{"\0"s, 0, 0}));
        int status = -77;
        char bytes[2] = {'#', '#'};
        EXPECT_EQ(copy(nullptr, bytes, 2, nullptr, -1, &status), 0);
        EXPECT_EQ(status, 3);
        EXPECT_EQ(bytes[0], 0);
    }
}

TEST(TranscodeStrings, EmptyTexts) {
    EXPECT_EQ((Convert<char, Bytes>(KORDMBU8ToCodePage, nullptr, kEmpty)), (Text<char>{"", 0}));
    EXPECT_EQ((Convert<char, Bytes>(KORDMBCodePageToU8, nullptr, kEmpty)), (Text<char>{"", 0}));
    EXPECT_EQ((Convert<char, Units>(KORDMBU16ToCodePage, nullptr, {})), (Text<char>{"", 0}));
    EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBCodePageToU16, nullptr, kEmpty)), (Text<char16_t>{u"", 0}));
    EXPECT_EQ((Convert<char, Units>(KORDMBU16ToU8, {})), (Text<char>{"", 0}));
    EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBU8ToU16, kEmpty)), (Text<char16_t>{u"", 0}));
}

TEST(TranscodeStrings, AroundTheSizeOfTheStackBuffers) {
    for (const std::size_t length : {1023U, 1024U, 1025U, 1026U, 3072U, 4096U, 4097U, 100000U}) {
        const std::string bytes(length, 'a');
        const std::u16string units(length, u'a');
        EXPECT_EQ((Convert<char, Bytes>(KORDMBU8ToCodePage, nullptr, bytes)), (Text<char>{bytes, 0}));
        EXPECT_EQ((Convert<char, Bytes>(KORDMBCodePageToU8, nullptr, bytes)), (Text<char>{bytes, 0}));
        EXPECT_EQ((Convert<char, Units>(KORDMBU16ToCodePage, nullptr, units)), (Text<char>{bytes, 0}));
        EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBCodePageToU16, nullptr, bytes)), (Text<char16_t>{units, 0}));
        EXPECT_EQ((Convert<char, Units>(KORDMBU16ToU8, units)), (Text<char>{bytes, 0}));
        EXPECT_EQ((Convert<char16_t, Bytes>(KORDMBU8ToU16, bytes)), (Text<char16_t>{units, 0}));
    }
}

TEST(TranscodeStrings, TargetMayBeTheSource) {
    std::string text = "a\xE9";
    const Converter latin = MakeConverter("1252");
    EXPECT_EQ(KORDMBCodePageToU8(latin.get(), text, text), 0);
    EXPECT_EQ(text, "a\xC3\xA9");
    EXPECT_EQ(KORDMBU8ToCodePage(latin.get(), text, text), 0);
    EXPECT_EQ(text, "a\xE9");
}

// The buffer has as many bytes as the text has in UTF-8, and some encodings need more.
TEST(KeptCodePageWiderThanUtf8, IsCutOnStrings) {
    const Converter gb = MakeConverter("GB18030");
    EXPECT_EQ((Convert<char, Bytes>(KORDMBU8ToCodePage, gb.get(), "\xC2\x80"s)), (Text<char>{"", 1}));
    const Converter utf16 = MakeConverter("UTF-16LE");
    EXPECT_EQ((Convert<char, Bytes>(KORDMBU8ToCodePage, utf16.get(), "abc"s)), (Text<char>{"a\0b\0"s, 1}));
    EXPECT_EQ((Convert<char, Units>(KORDMBU16ToCodePage, utf16.get(), u"abc"s)), (Text<char>{"a\0b\0c\0"s, 0}));
}

TEST(TranscodeStrings, LosesNothingWhereNoSizeIsGiven) {
    const Converter japanese = MakeConverter("ISO-2022-JP");
    std::u16string text;
    for (int i = 0; i < 2000; ++i) {
        text += i % 2 == 0 ? u"\u65e5" : u"a"; // every character changes the state
    }
    std::string bytes;
    EXPECT_EQ(KORDMBU16ToCodePage(japanese.get(), bytes, text), 0);
    std::u16string back;
    EXPECT_EQ(KORDMBCodePageToU16(japanese.get(), back, bytes), 0);
    EXPECT_EQ(back, text);
}

#ifndef VELTRANE_SANITIZED // a sanitizer needs more address space than the test leaves
/// Runs a conversion in a process of its own that has almost no memory left.
class OutOfMemoryDeathTest : public testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static void LeaveNoMemory() {
        const rlimit limit{1, 1};
        setrlimit(RLIMIT_AS, &limit);
    }

    static constexpr std::size_t kLength = 10000000;
};

TEST_F(OutOfMemoryDeathTest, StringIsClearedAndTheStatusSaysSo) {
    EXPECT_EXIT(
        {
            const std::string bytes(kLength, 'a');
            const std::u16string units(kLength, u'a');
            std::string out = "old";
            std::u16string outUnits = u"old";
            KORDMBGetDefaultConverter();
            KORDMBU8ToCodePage(nullptr, out, "warm"); // the converters are there
            LeaveNoMemory();
            const bool right = (out = "old", KORDMBU8ToCodePage(nullptr, out, bytes) == 2) && out.empty() &&
                               (out = "old", KORDMBCodePageToU8(nullptr, out, bytes) == 2) && out.empty() &&
                               (out = "old", KORDMBU16ToCodePage(nullptr, out, units) == 2) && out.empty() &&
                               (out = "old", KORDMBU16ToU8(out, units) == 2) && out.empty() &&
                               (out = "old", KORDMBU8ToGeneric(out, bytes) == 2) && out.empty() &&
                               (outUnits = u"old", KORDMBCodePageToU16(nullptr, outUnits, bytes) == 2) &&
                               outUnits.empty() && (outUnits = u"old", KORDMBU8ToU16(outUnits, bytes) == 2) &&
                               outUnits.empty() && KORDMBTranscodeU8(units.c_str()) == nullptr &&
                               KORDMBTranscodeU8(bytes.c_str()) == nullptr &&
                               KORDMBTranscodeCodePage(units.c_str()) == nullptr;
            std::_Exit(right ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}
#endif

// Into new memory.

template <class Unit>
std::basic_string<Unit> Taken(Unit* text) {
    const std::unique_ptr<Unit[]> owned(text);
    return text != nullptr ? std::basic_string<Unit>(text) : std::basic_string<Unit>{'n', 'u', 'l', 'l'};
}

TEST(TranscodeIntoNewMemory, EveryPairOfForms) {
    for (const int setting : {0, 1}) {
        const Mode mode(setting);
        EXPECT_EQ(Taken(KORDMBTranscodeU8(kUtf16.c_str())), kUtf8);
        EXPECT_EQ(Taken(KORDMBTranscodeU8(kUtf8.c_str())), kUtf16);
        EXPECT_EQ(Taken(KORDMBTranscodeCodePage(kUtf16.c_str())), kUtf8);
        EXPECT_EQ(Taken(KORDMBTranscodeCodePage(kUtf8.c_str())), kUtf16);
        EXPECT_EQ(Taken(KORDMBTranscodeGeneric(kUtf16.c_str())), kUtf8);
        EXPECT_EQ(Taken(KORDMBTranscodeGeneric(kUtf8.c_str())), kUtf16);
    }
}

TEST(TranscodeIntoNewMemory, EmptyNullAndBadTexts) {
    EXPECT_EQ(Taken(KORDMBTranscodeU8(u"")), "");
    EXPECT_EQ(Taken(KORDMBTranscodeU8("")), u"");
    EXPECT_EQ(Taken(KORDMBTranscodeCodePage(u"")), "");
    EXPECT_EQ(Taken(KORDMBTranscodeCodePage("")), u"");
    const char* const noBytes = nullptr;
    const char16_t* const noUnits = nullptr;
    EXPECT_EQ(KORDMBTranscodeU8(noBytes), nullptr);
    EXPECT_EQ(KORDMBTranscodeU8(noUnits), nullptr);
    EXPECT_EQ(KORDMBTranscodeCodePage(noBytes), nullptr);
    EXPECT_EQ(KORDMBTranscodeCodePage(noUnits), nullptr);
    EXPECT_EQ(KORDMBTranscodeGeneric(noBytes), nullptr);
    EXPECT_EQ(KORDMBTranscodeGeneric(noUnits), nullptr);
    EXPECT_EQ(Taken(KORDMBTranscodeU8("a\xFFz")), u"a?z");
    EXPECT_EQ(Taken(KORDMBTranscodeU8(std::u16string(1, u'\xD800').c_str())), "?");
    EXPECT_EQ(Taken(KORDMBTranscodeCodePage("a\xFFz")), u"a?z");
}

TEST(TranscodeThreads, AllMayConvertByTheDefaultAtOnce) {
    std::vector<std::thread> threads;
    std::vector<int> failures(8, -1);
    for (int& failed : failures) {
        threads.emplace_back([&failed] {
            failed = 0;
            for (int i = 0; i < 500; ++i) {
                std::string bytes;
                std::u16string units;
                failed += KORDMBU8ToCodePage(nullptr, bytes, kUtf8) + (bytes != kUtf8);
                failed += KORDMBCodePageToU16(nullptr, units, bytes) + (units != kUtf16);
                failed += KORDMBU8ToCodePage(nullptr, bytes, "\xFF") != 3;
                failed += KORDMBU16ToU8(bytes, units) + (bytes != kUtf8);
                failed += KORDMBU8ToCodePage(MakeConverter("932").get(), bytes, "\xE6\x97\xA5") + (bytes != "\x93\xFA");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(failures, std::vector<int>(8, 0));
}

} // namespace

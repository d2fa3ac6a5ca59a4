// An ordinary name is converted without taking memory.
#include "support/allocations.h"
#include "text/conversion_calls.h"
#include "text/malloc_counter.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;

constexpr int kSize = 64;
const std::string kName = "Jahres\u00FCberschu\u00DF"; // in UTF-8
const std::u16string kNameUnits = u"Jahres\u00fcberschu\u00df";

template <class Action>
void ExpectNoAllocation(const char* what, Action action) {
    action(); // the first use makes the default converter
    EXPECT_EQ(AllocationsOf(action), 0U) << what;
    EXPECT_EQ(MallocsOf(action), 0U) << what;
}

class TranscodeAllocation : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override { ASSERT_TRUE(GetParam() == nullptr || fConverter != nullptr); }
    const Converter fConverter = MakeConverter(GetParam());
};

TEST_P(TranscodeAllocation, BuffersTakeNoMemory) {
    void* const converter = fConverter.get();
    char bytes[kSize];
    char16_t units[kSize];
    int status = 0;
    const char* const name = kName.c_str();
    const char16_t* const nameUnits = kNameUnits.c_str();
    ExpectNoAllocation("UTF-8 to code page", [&] { KORDMB8toCodePage(converter, bytes, kSize, name, -1, &status); });
    ExpectNoAllocation("code page to UTF-8",
                       [&] { KORDMBCodePageto8(converter, bytes, kSize, "a\x81z", -1, &status); });
    ExpectNoAllocation("UTF-16 to code page",
                       [&] { KORDMB16toCodePage(converter, bytes, kSize, nameUnits, -1, &status); });
    ExpectNoAllocation("code page to UTF-16",
                       [&] { KORDMBCodePageto16(converter, units, kSize, "a\x81z", -1, &status); });
    ExpectNoAllocation("UTF-16 to UTF-8", [&] { KORDMB16to8(bytes, kSize, nameUnits, -1, &status); });
    ExpectNoAllocation("UTF-8 to UTF-16", [&] { KORDMB8to16(units, kSize, name, -1, &status); });
    ExpectNoAllocation("generic to code page",
                       [&] { KORDMBGenerictoCodePage(converter, bytes, kSize, name, -1, &status); });
    ExpectNoAllocation("a cut", [&] { KORDMB8toCodePage(converter, bytes, 8, name, -1, &status); });
}

TEST_P(TranscodeAllocation, StringsWithRoomTakeNoMemory) {
    void* const converter = fConverter.get();
    std::string bytes(kSize, ' ');
    std::u16string units(kSize, u' ');
    ExpectNoAllocation("UTF-8 to code page", [&] { KORDMBU8ToCodePage(converter, bytes, kName); });
    ExpectNoAllocation("UTF-16 to code page", [&] { KORDMBU16ToCodePage(converter, bytes, kNameUnits); });
    ExpectNoAllocation("UTF-8 to UTF-16", [&] { KORDMBU8ToU16(units, kName); });
    ExpectNoAllocation("UTF-16 to UTF-8", [&] { KORDMBU16ToU8(bytes, kNameUnits); });
}

INSTANTIATE_TEST_SUITE_P(All, TranscodeAllocation,
                         testing::Values(nullptr, "932", "936", "949", "950", "1252", "28591", "65001"),
                         [](const auto& info) {
                             return info.param != nullptr ? "CodePage" + std::string(info.param)
                                                          : std::string("Default");
                         });

#ifndef VELTRANE_SANITIZED // a sanitizer has an allocator of its own, which is not counted
/// Whether each conversion of a text of so many units takes memory beyond its target's.
template <class Out, class In>
std::vector<std::size_t> MallocsOfStrings(int (*convert)(void*, Out&, const In&), std::initializer_list<int> lengths) {
    Out out(8192, ' ');
    std::vector<std::size_t> mallocs;
    for (const int length : lengths) {
        const In text(static_cast<std::size_t>(length), 'a');
        convert(nullptr, out, text);
        mallocs.push_back(MallocsOf([&] { convert(nullptr, out, text); }));
    }
    return mallocs;
}

TEST(TranscodeStackBuffer, ServesTextsOf1024UnitsAndNoLongerOnes) {
    using Mallocs = std::vector<std::size_t>;
    using ToBytes = int (*)(void*, std::string&, const std::u16string&);
    using ToUnits = int (*)(void*, std::u16string&, const std::string&);
    EXPECT_EQ(MallocsOfStrings(KORDMBU8ToCodePage, {1023, 1024, 1025}), (Mallocs{0, 0, 1}));
    EXPECT_EQ(MallocsOfStrings(KORDMBGenericToCodePage, {1023, 1024, 1025}), (Mallocs{0, 0, 1}));
    EXPECT_EQ(MallocsOfStrings(KORDMBCodePageToU8, {1023, 1024, 1025}), (Mallocs{0, 0, 1}));
    EXPECT_EQ(MallocsOfStrings(KORDMBCodePageToGeneric, {1023, 1024, 1025}), (Mallocs{0, 0, 1}));
    EXPECT_EQ(MallocsOfStrings<std::string>(ToBytes(KORDMBU16ToU8), {1023, 1024, 1025}), (Mallocs{0, 0, 1}));
    EXPECT_EQ(MallocsOfStrings<std::u16string>(ToUnits(KORDMBU8ToU16), {1023, 1024, 1025}), (Mallocs{0, 0, 1}));
}

TEST(MallocCounter, SeesWhatIcuTakes) {
    EXPECT_GT(MallocsOf([] { MakeConverter("1252"); }), 0U);
}
#endif

} // namespace

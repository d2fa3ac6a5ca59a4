#include <MCXML_900/KORDMBConverter.h>
#include <MCXML_900/KORDMBString.h>

#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace MCXML_900;

struct Close {
    void operator()(void* converter) const { ucnv_close(static_cast<UConverter*>(converter)); }
};
using Converter = std::unique_ptr<void, Close>;

/// ICU's own name of a converter, "(null)" for none.
std::string NameOf(const void* converter) {
    UErrorCode error = U_ZERO_ERROR;
    return converter != nullptr ? ucnv_getName(static_cast<const UConverter*>(converter), &error) : "(null)";
}

std::string Opened(const char* name) {
    return NameOf(Converter(KORDMBConverterNew_C(name)).get());
}

std::string OpenedByIcu(const char* name) {
    UErrorCode error = U_ZERO_ERROR;
    return NameOf(Converter(ucnv_open(name, &error)).get());
}

TEST(Converter, NumberOfACodePageOpensTheSameAsItsName) {
    EXPECT_EQ(Opened("1252"), Opened("cp1252"));
    EXPECT_EQ(Opened("1252"), OpenedByIcu("windows-1252"));
}

TEST(Converter, NumberKnownToNoTableGivesNull) {
    EXPECT_EQ(Opened("99998"), "(null)");
}

TEST(Converter, Windows28591OpensIso8859_1) {
    EXPECT_EQ(Opened("windows-28591"), OpenedByIcu("ISO-8859-1"));
    EXPECT_EQ(Opened("WINDOWS-28591"), OpenedByIcu("ISO-8859-1"));
    EXPECT_EQ(Opened("windows-28593x"), "(null)");
}

TEST(Converter, NumbersOfTheTable) {
    struct Row {
        const char* number;
        const char* standard; // the name that stands for the number in the registry of encodings
    };
    constexpr Row kRows[] = {
        {"932", "Shift_JIS"},     {"936", "GBK"},           {"950", "Big5"},          {"1250", "windows-1250"},
        {"1251", "windows-1251"}, {"1252", "windows-1252"}, {"1253", "windows-1253"}, {"1254", "windows-1254"},
        {"1255", "windows-1255"}, {"1256", "windows-1256"}, {"1257", "windows-1257"}, {"1258", "windows-1258"},
        {"28591", "ISO-8859-1"},  {"65001", "UTF-8"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(Opened(row.number), OpenedByIcu(row.standard)) << row.number;
    }
}

// The registry's name of the Korean code page is shared with its smaller ancestor, which comes first.
TEST(KeptCodePage949, OpensTheRegisteredAncestor) {
    EXPECT_EQ(Opened("949"), OpenedByIcu("EUC-KR"));
    EXPECT_NE(Opened("949"), Opened("KS_C_5601-1987"));
}

TEST(Converter, OtherNumbersAreTriedAsWindowsAndCpNames) {
    EXPECT_EQ(Opened("874"), OpenedByIcu("windows-874"));
    EXPECT_EQ(Opened("437"), OpenedByIcu("cp437"));
    EXPECT_EQ(Opened("37"), OpenedByIcu("cp037"));
    EXPECT_EQ(Opened("1363"), OpenedByIcu("windows-949")) << "by its registered name, which that one has, too";
}

TEST(Converter, OnlyAWholeDecimalNumberIsANumber) {
    for (const char* name :
         {"", "0", "-1", "100000", "99999999999999999999", "-18446744073709550364", "1252x", "0x4E4", "12 52"}) {
        EXPECT_EQ(Opened(name), OpenedByIcu(name)) << name;
    }
    EXPECT_EQ(Opened("01252"), Opened("1252"));
}

TEST(Converter, UnknownNamesGiveNull) {
    for (const std::string& name : {std::string("no such encoding"), std::string(), std::string(100000, 'x'),
                                    std::string("\xFF\xFE"), std::string("%s%n")}) {
        EXPECT_EQ(Opened(name.c_str()), "(null)") << name.substr(0, 20);
    }
}

TEST(Converter, EncodingWithoutAQuestionMarkGivesNull) {
    EXPECT_EQ(Opened("ibm-971"), "(null)");
}

std::string OpenedByUtf8(const std::string& name) {
    return NameOf(Converter(KORDMBConverterNew_8(name.c_str())).get());
}

TEST(Converter, NameInUtf8) {
    EXPECT_EQ(OpenedByUtf8("1252"), Opened("1252"));
    EXPECT_EQ(OpenedByUtf8("windows-28591"), OpenedByIcu("ISO-8859-1"));
    EXPECT_EQ(OpenedByUtf8("\xE6\x97\xA5"), "(null)");
    EXPECT_EQ(OpenedByUtf8("cp1252\xFF"), "(null)") << "a name that can't be converted";
    EXPECT_EQ(NameOf(Converter(KORDMBConverterNew_8(nullptr)).get()), Opened(nullptr));
}

TEST(Converter, LongNameInUtf8IsCutToWholeCharactersAndFilledWithBlanks) {
    const std::string name = "cp1252";
    const auto blanks = [&](std::size_t length) { return name + std::string(length - name.size(), ' '); };
    EXPECT_EQ(OpenedByUtf8(blanks(59)), Opened("cp1252"));
    EXPECT_EQ(OpenedByUtf8(blanks(100)), Opened("cp1252")) << "cut at 59 bytes";
    EXPECT_EQ(Opened(blanks(100).c_str()), "(null)") << "too long for ICU";
    EXPECT_EQ(OpenedByUtf8(blanks(58) + "\xE6\x97\xA5"), Opened("cp1252")) << "cut before a character of 3 bytes";
    EXPECT_EQ(OpenedByUtf8(blanks(58) + "x"), "(null)") << "which fits";
    EXPECT_EQ(OpenedByUtf8(blanks(59) + "x"), Opened("cp1252")) << "cut before it";
}

TEST(Converter, NameGoesByTheMode) {
    const std::string name = "cp1252" + std::string(100, ' ');
    EXPECT_EQ(NameOf(Converter(KORDMBConverterNew_A(name.c_str())).get()), Opened("cp1252"));
    SetUTF8mode(0);
    EXPECT_EQ(NameOf(Converter(KORDMBConverterNew_A(name.c_str())).get()), "(null)");
    EXPECT_EQ(NameOf(Converter(KORDMBConverterNew_A("1252")).get()), Opened("1252"));
    SetUTF8mode(1);
}

TEST(Converter, NullNameOpensOneLikeTheDefault) {
    const int number = KORDMBDefaultConverterID();
    const std::string before = Opened(nullptr);
    EXPECT_EQ(KORDMBDefaultConverterID(), number) << "a converter for the caller isn't the default one";
    EXPECT_EQ(before, NameOf(KORDMBGetDefaultConverter()));
    EXPECT_EQ(Opened(nullptr), before);
    EXPECT_EQ(KORDMBDefaultConverterID(), 1);
}

TEST(DefaultConverter, IsMadeOnceAndRaisesItsNumber) {
    EXPECT_LE(KORDMBDefaultConverterID(), 1);
    const UConverter* converter = KORDMBGetDefaultConverter();
    EXPECT_EQ(NameOf(converter), "UTF-8");
    EXPECT_EQ(KORDMBDefaultConverterID(), 1);
    EXPECT_EQ(KORDMBGetDefaultConverter(), converter);
    EXPECT_EQ(KORDMBDefaultConverterID(), 1);
}

TEST(DefaultConverterDeathTest, NumberIsZeroUntilItIsNeeded) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process of its own
    EXPECT_EXIT(
        {
            bool right = KORDMBDefaultConverterID() == 0;
            const Converter like(KORDMBConverterNew_C(nullptr));
            const Converter named(KORDMBConverterNew_C("1252"));
            right = right && like != nullptr && named != nullptr && KORDMBDefaultConverterID() == 0;
            KORDMBGetDefaultConverter();
            std::_Exit(right && KORDMBDefaultConverterID() == 1 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(DefaultConverter, FirstUseOfManyThreadsMakesOneThreads) {
    std::vector<const UConverter*> seen(8);
    std::vector<std::thread> threads;
    for (const UConverter*& place : seen) {
        threads.emplace_back([&place] { place = KORDMBGetDefaultConverter(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(seen, std::vector<const UConverter*>(8, KORDMBGetDefaultConverter()));
    EXPECT_EQ(KORDMBDefaultConverterID(), 1);
}

} // namespace

#include "text/locale_folder.h"

#include <MCXML_900/ExtNameStr.h>
#include <MCXML_900/KORDMBConverter.h>
#include <MCXML_900/SystemEncoding.h>

#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <clocale>
#include <cstdlib>
#include <iostream>

namespace {

using namespace MCXML_900;
using testing::ExitedWithCode;
using veltrane::tests::LocaleFolder;

/// Ends the process with what it found: encoding, locale and LC_ALL.
[[noreturn]] void Tell() {
    const std::string& encoding = SystemEncoding();
    const char* all = std::getenv("LC_ALL");
    std::cerr << encoding << " " << std::setlocale(LC_CTYPE, nullptr) << " " << (all != nullptr ? all : "unset")
              << std::endl;
    std::exit(0);
}

/// Both functions work once in a process: each test has one of its own.
class SystemEncodingDeathTest : public testing::Test {
protected:
    void SetUp() override {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        unsetenv("LC_ALL");
    }
    LocaleFolder fLocales;
};

TEST_F(SystemEncodingDeathTest, BareUsEnglishGivesCp1252) {
    fLocales.Add("en_US", "en_US", "ISO-8859-1");
    EXPECT_EXIT(Tell(), ExitedWithCode(0), "^CP1252 en_US en_US\n$");
}

TEST_F(SystemEncodingDeathTest, UsEnglishWithItsEncodingWhereTheBareNameIsNotInstalled) {
    fLocales.Add("en_US.UTF-8", "en_US", "UTF-8");
    EXPECT_EXIT(Tell(), ExitedWithCode(0), "^UTF-8 en_US.UTF-8 en_US.UTF-8\n$");
}

TEST_F(SystemEncodingDeathTest, NeutralLocaleWhereNoUsEnglishIsInstalled) {
    EXPECT_EXIT(Tell(), ExitedWithCode(0), "^UTF-8 C.UTF-8 C.UTF-8\n$");
}

TEST_F(SystemEncodingDeathTest, LocaleOfTheProcessStays) {
    fLocales.Add("de_DE", "de_DE", "ISO-8859-1").Add("de_DE.UTF-8", "de_DE", "UTF-8");
    EXPECT_EXIT(
        {
            std::setlocale(LC_ALL, "de_DE.UTF-8");
            Tell();
        },
        ExitedWithCode(0), "^UTF-8 de_DE.UTF-8 unset\n$");
    EXPECT_EXIT(
        {
            std::setlocale(LC_ALL, "de_DE");
            Tell();
        },
        ExitedWithCode(0), "^CP1252 de_DE unset\n$");
}

TEST_F(SystemEncodingDeathTest, EncodingIsEverythingBehindTheFirstDot) {
    fLocales.Add("de_DE.iso885915@euro", "de_DE@euro", "ISO-8859-15");
    EXPECT_EXIT(
        {
            std::setlocale(LC_ALL, "de_DE.ISO-8859-15@euro");
            Tell();
        },
        ExitedWithCode(0), "^ISO-8859-15@euro de_DE.ISO-8859-15@euro unset\n$");
}

TEST_F(SystemEncodingDeathTest, LocaleIsSetOnceAndTheEncodingKept) {
    EXPECT_EXIT(
        {
            EnableLocale();
            std::setlocale(LC_ALL, "C");
            EnableLocale();
            const std::string first = SystemEncoding();
            std::setlocale(LC_ALL, "C.UTF-8");
            std::cerr << first << " ";
            Tell();
        },
        ExitedWithCode(0), "^CP1252 CP1252 C.UTF-8 C.UTF-8\n$")
        << "an encoding that was found stays";
}

TEST_F(SystemEncodingDeathTest, DefaultConverterIsOfTheLocaleThatIsSet) {
    fLocales.Add("ja_JP", "ja_JP", "EUC-JP");
    const auto tellDefault = [](const char* locale) {
        std::setlocale(LC_ALL, locale);
        UErrorCode error = U_ZERO_ERROR;
        std::cerr << ucnv_getName(KORDMBGetDefaultConverter(), &error) << std::endl;
        std::exit(0);
    };
    EXPECT_EXIT(tellDefault("ja_JP"), ExitedWithCode(0), "^euc-jp-2007\n$");
    EXPECT_EXIT(tellDefault("C.UTF-8"), ExitedWithCode(0), "^UTF-8\n$");
    EXPECT_EXIT(tellDefault("C"), ExitedWithCode(0), "^UTF-8\n$");
}

TEST_F(SystemEncodingDeathTest, NameHasTheBytesOfTheSystem) {
    fLocales.Add("en_US", "en_US", "ISO-8859-1");
    EXPECT_EXIT(
        {
            ExtNameStr name;
            name.SetU8("\xC3\xA9\xE2\x82\xAC"); // e with acute, euro sign
            std::exit(name.GetSystem() == "\xE9\x80" && name.ErrorCode() == 0 ? 0 : 1);
        },
        ExitedWithCode(0), "");
    EXPECT_EXIT(
        {
            ExtNameStr name;
            name.SetSystem("\xE9\x80");
            std::exit(name.GetU8() == "\xC3\xA9\xE2\x82\xAC" && name.GetU16() == u"\u00e9\u20ac" &&
                              name.GetSystem() == "\xE9\x80" && name.GetCP() == "\xC3\xA9\xE2\x82\xAC" &&
                              name.ErrorCode() == 0
                          ? 0
                          : 1);
        },
        ExitedWithCode(0), "");
    EXPECT_EXIT(
        {
            ExtNameStr name;
            name.SetU8("\xE4\xB8\x80"); // no character of the system's encoding
            std::exit(name.GetSystem() == "?" && name.GetCP() == "\xE4\xB8\x80" && name.ErrorCode() == 3 ? 0 : 1);
        },
        ExitedWithCode(0), "");
}

// In GB18030 the character has more bytes than in UTF-8, so it is cut: status 1. The system's encoding doesn't have it:
// status 3.
TEST_F(SystemEncodingDeathTest, ErrorOfTheCodePageComesBeforeThatOfTheSystem) {
    fLocales.Add("zh_CN.gb18030", "zh_CN", "GB18030").Add("en_US", "en_US", "ISO-8859-1");
    EXPECT_EXIT(
        {
            std::setlocale(LC_ALL, "zh_CN.GB18030");
            KORDMBGetDefaultConverter();
            std::setlocale(LC_ALL, "en_US");
            ExtNameStr name;
            name.SetU8("\u0400");
            bool right = name.ErrorCode() == 1 && name.GetCP() == "" && name.GetSystem() == "?";
            name.SetU16(std::u16string{0x400, 0xD800});
            right = right && name.ErrorCode() == 3 && name.GetU8() == "\u0400?";
            std::exit(right ? 0 : 1);
        },
        ExitedWithCode(0), "")
        << "and that of the form that was set before both";
}

} // namespace

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <cctype>
#include <clocale>
#include <string>
#include <vector>

namespace {

using MCVeltrane_900::gErrorFormater;

std::string Missing(const std::string& name) {
    return "Missing node: '" + name + "'.";
}

/// Those of the tried locales that are installed; "C" always is.
std::vector<std::string> InstalledLocales() {
    std::vector<std::string> installed;
    for (const char* name : {"C", "C.UTF-8", "en_US.UTF-8", "en_US.ISO-8859-1"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            installed.emplace_back(name);
        }
    }
    std::setlocale(LC_ALL, "C");
    return installed;
}

/// Message texts under a locale. Each test runs in a process of its own, so the locale is set before ICU is used.
class MessageBytes : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override { ASSERT_NE(std::setlocale(LC_ALL, GetParam().c_str()), nullptr); }
    void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_P(MessageBytes, Utf8NameKeepsItsBytes) {
    for (const char* name :
         {"M\xC3\xBCnchen", "\xE5\xB9\xB4\xE9\xBD\xA2", "\xF0\x9F\x98\x80", "\xEF\xBB\xBF\xEF\xBF\xBF"}) {
        EXPECT_EQ(gErrorFormater.Format(260114, {name}), Missing(name));
    }
}

TEST_P(MessageBytes, Utf8NameKeepsItsBytesInAnException) {
    MCVeltrane_900::VTException failure;
    failure.PutErrorMessage(260120, "stra\u00DFe", "\xE5\xB9\xB4");
    EXPECT_EQ(failure.GetErrorMessage(), "Missing the attribute 'stra\u00DFe' of '\xE5\xB9\xB4'.");
}

TEST_P(MessageBytes, CodePageNameKeepsItsBytes) {
    EXPECT_EQ(gErrorFormater.Format(260114, {"M\xFCnchen"}), Missing("M\xFCnchen"));
}

TEST_P(MessageBytes, BytesThatAreNotUtf8StayAsTheyAre) {
    for (const char* name : {"\xFF\xFE", "cut\xE5\xB9", "\xC0\xAF", "\xED\xA0\x80\xED\xB0\x80", "\xED\xB2\x80",
                             "\xF4\x90\x80\x80", "\x80\xF0\x9F\x98\x80\x80"}) {
        EXPECT_EQ(gErrorFormater.Format(260114, {name}), Missing(name));
    }
}

TEST_P(MessageBytes, EveryPairOfBytesStaysAsItIs) {
    for (int first = 1; first < 256; ++first) {
        std::string name;
        for (int second = 1; second < 256; ++second) {
            name += static_cast<char>(first);
            name += static_cast<char>(second);
        }
        EXPECT_EQ(gErrorFormater.Format(260114, {name}), Missing(name)) << "first byte " << first;
    }
}

TEST_P(MessageBytes, PatternKeepsItsBytes) {
    ScoreContext::MessageItem items[] = {{1, const_cast<char*>("M\xC3\xBC\xFF {0}")}};
    ScoreContext::VTErrorFormater formater(1, items);
    EXPECT_EQ(formater.Format(1, {}), "M\xC3\xBC\xFF {0}");
    EXPECT_EQ(formater.Format(1, {"\xC3\xA9"}), "M\xC3\xBC\xFF \xC3\xA9");
}

std::string NameOf(const testing::TestParamInfo<std::string>& locale) {
    std::string name = locale.param;
    std::erase_if(name, [](unsigned char letter) { return std::isalnum(letter) == 0; });
    return name;
}

INSTANTIATE_TEST_SUITE_P(Locales, MessageBytes, testing::ValuesIn(InstalledLocales()), NameOf);

} // namespace

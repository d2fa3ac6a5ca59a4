#include <MCXML_900/ExtNameStr.h>
#include <MCXML_900/KORDMBConverter.h>
#include <MCXML_900/KORDMBString.h>

#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <clocale>
#include <cstring>
#include <memory>
#include <string>

namespace {

using namespace MCXML_900;

static_assert(sizeof(ExtNameStr) == sizeof(void*), "a name is one pointer");

// A text in the forms that are UTF-8 here, the default code page included, and in UTF-16.
const std::string kBytes = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
const std::u16string kUnits = u"a\u00e9\u20ac\U0001F600";

struct CloseConverter {
    void operator()(void* converter) const { ucnv_close(static_cast<UConverter*>(converter)); }
};
using Converter = std::unique_ptr<void, CloseConverter>;

/// In UTF-8 mode, which other tests may have left, and under a locale of UTF-8: the first name of the process that is
/// asked for its form of the system decides the system's encoding for good.
class ExtNameStrTest : public testing::Test {
protected:
    void SetUp() override {
        SetUTF8mode(1);
        ASSERT_NE(std::setlocale(LC_ALL, "C.UTF-8"), nullptr);
    }
    void TearDown() override {
        SetUTF8mode(1);
        std::setlocale(LC_ALL, fLocale.c_str());
    }
    const std::string fLocale = std::setlocale(LC_ALL, nullptr);
    const Converter fCp1252{KORDMBConverterNew_C("1252")};
};

void ExpectAllForms(const ExtNameStr& name, const std::string& bytes, const std::u16string& units) {
    EXPECT_EQ(name.GetU8(), bytes);
    EXPECT_EQ(name.GetU16(), units);
    EXPECT_EQ(name.GetCP(), bytes);
    EXPECT_EQ(name.GetGeneric(), bytes);
    EXPECT_EQ(name.GetSystem(), bytes);
    EXPECT_STREQ(name.GetU8Z(), bytes.c_str());
    EXPECT_EQ(std::u16string(name.GetU16Z()), units);
    EXPECT_STREQ(name.GetCPZ(), bytes.c_str());
    EXPECT_STREQ(name.GetGenericZ(), bytes.c_str());
    EXPECT_STREQ(name.GetSystemZ(), bytes.c_str());
    EXPECT_EQ(name.Empty(), bytes.empty());
}

TEST_F(ExtNameStrTest, SetU8ThenGetU16) {
    ExtNameStr name;
    name.SetU8("x");
    EXPECT_EQ(name.GetU16(), u"x");
}

TEST_F(ExtNameStrTest, NewNameIsEmpty) {
    const ExtNameStr name;
    ExpectAllForms(name, "", u"");
    EXPECT_EQ(name.ErrorCode(), 0);
}

TEST_F(ExtNameStrTest, EverySetterGivesEveryForm) {
    ExtNameStr name;
    name.SetU8(kBytes);
    ExpectAllForms(name, kBytes, kUnits);
    name.Clear();
    name.SetU16(kUnits);
    ExpectAllForms(name, kBytes, kUnits);
    name.Clear();
    name.SetGeneric(kBytes);
    ExpectAllForms(name, kBytes, kUnits);
    name.Clear();
    name.SetCP(kBytes);
    ExpectAllForms(name, kBytes, kUnits);
    name.Clear();
    name.SetSystem(kBytes);
    ExpectAllForms(name, kBytes, kUnits);
    EXPECT_EQ(name.ErrorCode(), 0);
}

TEST_F(ExtNameStrTest, GenericIsTheCodePageOutOfUtf8Mode) {
    SetUTF8mode(0);
    ExtNameStr name;
    name.SetGeneric(kBytes);
    ExpectAllForms(name, kBytes, kUnits);
    EXPECT_EQ(&name.GetGeneric(), &name.GetCP());
    SetUTF8mode(1);
    EXPECT_EQ(&name.GetGeneric(), &name.GetU8());
}

TEST_F(ExtNameStrTest, ClearEmptiesEveryForm) {
    ExtNameStr name;
    name.SetU8("a\xFF");
    EXPECT_EQ(name.ErrorCode(), 3);
    name.Clear();
    ExpectAllForms(name, "", u"");
    EXPECT_EQ(name.ErrorCode(), 0);
}

TEST_F(ExtNameStrTest, TextInACodePageOfItsOwn) {
    ExtNameStr name;
    name.SetCP("\xE9\x80", fCp1252.get());
    ExpectAllForms(name, "\xC3\xA9\xE2\x82\xAC", u"\u00e9\u20ac");
    EXPECT_EQ(name.ErrorCode(), 0);
}

TEST_F(ExtNameStrTest, ReadingInACodePageLeavesTheCache) {
    ExtNameStr name;
    name.SetU8("\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(name.GetCP(fCp1252.get()), "\xE9\x80");
    EXPECT_EQ(name.ErrorCode(), 0);
    ExpectAllForms(name, "\xC3\xA9\xE2\x82\xAC", u"\u00e9\u20ac");
    EXPECT_EQ(name.GetCP(nullptr), "\xC3\xA9\xE2\x82\xAC");
}

TEST_F(ExtNameStrTest, ReadingInACodePageSetsTheErrorCodeEitherWay) {
    ExtNameStr name;
    name.SetU8("\xE4\xB8\x80");
    EXPECT_EQ(name.GetCP(fCp1252.get()), "?");
    EXPECT_EQ(name.ErrorCode(), 3);
    name.GetCP(nullptr);
    EXPECT_EQ(name.ErrorCode(), 0);
}

TEST_F(ExtNameStrTest, FailureOfASetterStaysThroughTheRefresh) {
    ExtNameStr name;
    name.SetU16(std::u16string(1, u'\xD800'));
    ExpectAllForms(name, "?", u"?");
    EXPECT_EQ(name.ErrorCode(), 3);
    name.SetCP("\x81\x30", Converter(KORDMBConverterNew_C("932")).get());
    EXPECT_EQ(name.GetU8(), "?0");
    EXPECT_EQ(name.ErrorCode(), 3);
    name.SetU8("x");
    EXPECT_EQ(name.ErrorCode(), 0);
    name.SetSystem("\xFF");
    EXPECT_EQ(name.ErrorCode(), 3);
    EXPECT_EQ(name.GetSystem(), "\xFF");
    EXPECT_EQ(name.GetCP(), "?");
}

TEST_F(ExtNameStrTest, MasterKeepsItsBytesWhateverTheyAre) {
    ExtNameStr name;
    name.SetU8("a\xFFz");
    EXPECT_EQ(name.GetU8(), "a\xFFz");
    EXPECT_EQ(name.GetU16(), u"a?z");
    EXPECT_EQ(name.GetCP(), "a?z");
    EXPECT_EQ(name.GetSystem(), "a?z");
    EXPECT_EQ(name.ErrorCode(), 3);
}

TEST_F(ExtNameStrTest, CopiesAreTheirOwn) {
    ExtNameStr name;
    name.SetU8(kBytes);
    ExtNameStr copy(name);
    name.SetU8("other");
    ExpectAllForms(copy, kBytes, kUnits);
    copy = name;
    ExpectAllForms(copy, "other", u"other");
    name.Clear();
    ExpectAllForms(copy, "other", u"other");
    const ExtNameStr& same = copy;
    copy = same;
    ExpectAllForms(copy, "other", u"other");
}

TEST_F(ExtNameStrTest, FormsOfTheNameItselfAreSafeArguments) {
    ExtNameStr name;
    name.SetU8(kBytes);
    name.SetU8(name.GetU8());
    name.SetU16(name.GetU16());
    name.SetCP(name.GetCP());
    name.SetGeneric(name.GetGeneric());
    name.SetSystem(name.GetSystem());
    ExpectAllForms(name, kBytes, kUnits);
}

TEST_F(ExtNameStrTest, TextsMayHoldNul) {
    ExtNameStr name;
    name.SetU8(std::string("a\0b", 3));
    EXPECT_EQ(name.GetU16(), std::u16string(u"a\0b", 3));
    EXPECT_EQ(name.GetCP(), std::string("a\0b", 3));
}

TEST_F(ExtNameStrTest, CodePageIsMadeWithTheFirstDefaultConverter) {
    const ExtNameStr name;
    EXPECT_EQ(name.GetCP(), "");
    EXPECT_EQ(KORDMBDefaultConverterID(), 1);
}

} // namespace

// The functions of the code page in a process that is told to have single bytes only: what their twins of the C library
// do on bytes.
#include "page.h"
#include "support/byte_text.h"

#include <MCXML_900/KORDMBString.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;

class SingleByteFlag : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(gSingleByteCodePage, 0);
        gSingleByteCodePage = 1;
    }
    void TearDown() override { gSingleByteCodePage = 0; }

    // A text of the page whose characters have two bytes, where it has such.
    std::string text = "a" + Bytes(CurrentPage().IsDoubleByte() ? CurrentPage().wide : CurrentPage().upper) + "b";
    const char* s = text.c_str();
};

TEST_F(SingleByteFlag, NoByteIsALead) {
    for (int value = 0; value < 256; ++value) {
        EXPECT_FALSE(KORDMBIsLeadByte_C(static_cast<unsigned char>(value))) << value;
    }
}

TEST_F(SingleByteFlag, StepsGoByteByByte) {
    EXPECT_EQ(KORDMBmbclen_C(s + 1), 1);
    EXPECT_EQ(KORDMBstrinc_C(s + 1), s + 2);
    EXPECT_EQ(KORDMBFindStart_C(s, 2), 2);
    EXPECT_EQ(KORDMBFindStart_C(s, 9), static_cast<int>(text.size()));
    EXPECT_EQ(KORDMBAnsiPrev_C(s, s + 3), s + 2);
}

TEST_F(SingleByteFlag, CopyIsStrncpy) {
    for (std::size_t n = 1; n < 7; ++n) {
        std::string target(n, 'x');
        std::string expected(n, 'x');
        std::strncpy(expected.data(), s, n);
        KORDMBstrncpy_C(target.data(), s, static_cast<int>(n));
        EXPECT_EQ(Hexadecimal(target), Hexadecimal(expected)) << n;
    }
}

TEST_F(SingleByteFlag, SearchesAreStrchrAndStrrchr) {
    for (int value = 0; value < 256; ++value) {
        EXPECT_EQ(KORDMBstrchr_C(s, static_cast<unsigned int>(value)), std::strchr(s, value)) << value;
        EXPECT_EQ(KORDMBstrrchr_C(s, static_cast<unsigned int>(value)), std::strrchr(s, value)) << value;
    }
}

TEST_F(SingleByteFlag, SpanIsStrcspn) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string reject(1, text[i]);
        EXPECT_EQ(KORDMBstrcspn_C(s, reject.c_str()), std::strcspn(s, reject.c_str())) << i;
    }
}

TEST_F(SingleByteFlag, ComparisonIsThatOfBytes) {
    int status = -1;
    EXPECT_EQ(KORDMBstrnicmp_C("aBc", "AbD", 2), 0);
    EXPECT_EQ(KORDMBstrnicmp_C("aBc", "AbD", 3), -1);
    EXPECT_EQ(KORDMBstrnicmp_C("aBd", "AbC", -1), 1);
    EXPECT_EQ(KORDMBstrnicmp_C("ab", "AB", -1), 0);
    EXPECT_EQ(KORDMBqstricmp_C("a\x82", -1, "A\x82", -1, &status), 1);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(KORDMBqstricmp_C("ab", -1, "abc", -1, nullptr), 0);
}

} // namespace

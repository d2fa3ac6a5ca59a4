#include "page.h"
#include "support/byte_text.h"
#include "support/rows.h"

#include <MCXML_900/KORDMBString.h>

#include <gtest/gtest.h>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;

/// What the functions make of a sequence that stands alone.
struct Row {
    int page;
    const char* name;
    const char* bytes;      ///< hexadecimal
    const char* walk;       ///< the lengths of the steps through it
    int mblen;              ///< of the first character, by the C library
    int decoded;            ///< bytes of the first character that is decoded, -1 for none
    unsigned int codePoint; ///< of that
    const char* kept;       ///< what a copy keeps, hexadecimal
    int status;             ///< of a comparison with itself
};

// clang-format off
const Row kRows[] = {
    // page  name                     bytes          walk  mblen decoded codePoint kept         status
    {  932, "Ascii",                  "41",          "1",     1,   1,    0x0041,  "41",            0},
    {  932, "Backslash",              "5C",          "1",     1,   1,    0x005C,  "5C",            0},
    {  932, "HalfWidthKatakana",      "B1",          "1",     1,   1,    0xFF71,  "B1",            0},
    {  932, "FirstOfTwoBytes",        "81 40",       "2",     2,   2,    0x3000,  "81 40",         0},
    {  932, "Hiragana",               "82 A0",       "2",     2,   2,    0x3042,  "82 A0",         0},
    {  932, "BackslashIsItsTrail",    "83 5C",       "2",     2,   2,    0x30BD,  "83 5C",         0},
    {  932, "LeadIsItsTrail",         "88 EA",       "2",     2,   2,    0x4E00,  "88 EA",         0},
    {  932, "Extension",              "87 40",       "2",     2,   2,    0x2460,  "87 40",         0},
    {  932, "LastExtension",          "FB FC",       "2",     2,   2,    0x9AD9,  "FB FC",         0},
    {  932, "Mixed",                  "41 83 5C B1", "1 2 1", 1,   1,    0x0041,  "41 83 5C B1",   0},
    {  932, "OneOfTwo",               "82",          "1",    -1,  -1,    0,       "",              3},
    {  932, "OneOfTwoBehindAnother",  "82 A0 82",    "2 1",   2,   2,    0x3042,  "82 A0",         3},
    {  932, "TrailIsABlank",          "82 20",       "2",    -1,  -1,    0,       "",              3},
    {  932, "TrailIsDelete",          "82 7F",       "2",    -1,  -1,    0,       "",              3},
    {  932, "TrailIsTooHigh",         "82 FD",       "2",    -1,  -1,    0,       "",              3},
    {  932, "UnassignedPair",         "85 40",       "2",    -1,  -1,    0,       "",              3},

    {  936, "Ascii",                  "41",          "1",     1,   1,    0x0041,  "41",            0},
    {  936, "FirstOfTwoBytes",        "81 40",       "2",     2,   2,    0x4E02,  "81 40",         0},
    {  936, "Ideograph",              "D6 D0",       "2",     2,   2,    0x4E2D,  "D6 D0",         0},
    {  936, "LetterIsItsTrail",       "D4 53",       "2",     2,   2,    0x8A31,  "D4 53",         0},
    {  936, "Mixed",                  "61 D6 D0 62", "1 2 1", 1,   1,    0x0061,  "61 D6 D0 62",   0},
    {  936, "OneOfTwo",               "D6",          "1",    -1,  -1,    0,       "",              3},
    {  936, "OneOfTwoBehindAnother",  "D6 D0 D6",    "2 1",   2,   2,    0x4E2D,  "D6 D0",         3},
    {  936, "TrailIsABlank",          "D6 20",       "2",    -1,  -1,    0,       "",              3},
    {  936, "TrailIsDelete",          "D6 7F",       "2",    -1,  -1,    0,       "",              3},
    {  936, "TrailIsTooHigh",         "D6 FF",       "2",    -1,  -1,    0,       "",              3},
    {  936, "ByteOfTheVendor",        "FF",          "1",    -1,   1,    0xF8F5,  "",              0},

    {  949, "Ascii",                  "41",          "1",     1,   1,    0x0041,  "41",            0},
    {  949, "Hangul",                 "B0 A1",       "2",     2,   2,    0xAC00,  "B0 A1",         0},
    {  949, "ExtendedHangul",         "8C 63",       "2",     2,   2,    0xB620,  "8C 63",         0},
    {  949, "LastExtendedHangul",     "C6 52",       "2",     2,   2,    0xD7A3,  "C6 52",         0},
    {  949, "Ideograph",              "F1 E9",       "2",     2,   2,    0x4E2D,  "F1 E9",         0},
    {  949, "Euro",                   "A2 E6",       "2",     2,   2,    0x20AC,  "A2 E6",         0},
    {  949, "Mixed",                  "61 8C 63 62", "1 2 1", 1,   1,    0x0061,  "61 8C 63 62",   0},
    {  949, "OneOfTwo",               "B0",          "1",    -1,  -1,    0,       "",              3},
    {  949, "OneOfTwoBehindAnother",  "B0 A1 B0",    "2 1",   2,   2,    0xAC00,  "B0 A1",         3},
    {  949, "TrailIsABlank",          "B0 20",       "2",    -1,  -1,    0,       "",              3},
    {  949, "TrailIsTooHigh",         "B0 FF",       "2",    -1,  -1,    0,       "",              3},

    {  950, "Ascii",                  "41",          "1",     1,   1,    0x0041,  "41",            0},
    {  950, "FirstOfTwoBytes",        "A1 40",       "2",     2,   2,    0x3000,  "A1 40",         0},
    {  950, "Ideograph",              "A4 A4",       "2",     2,   2,    0x4E2D,  "A4 A4",         0},
    {  950, "BackslashIsItsTrail",    "A5 5C",       "2",     2,   2,    0x529F,  "A5 5C",         0},
    {  950, "LetterIsItsTrail",       "A4 40",       "2",     2,   2,    0x4E00,  "A4 40",         0},
    {  950, "Mixed",                  "61 A5 5C 62", "1 2 1", 1,   1,    0x0061,  "61 A5 5C 62",   0},
    {  950, "OneOfTwo",               "A4",          "1",    -1,  -1,    0,       "",              3},
    {  950, "OneOfTwoBehindAnother",  "A4 A4 A4",    "2 1",   2,   2,    0x4E2D,  "A4 A4",         3},
    {  950, "TrailIsABlank",          "A4 20",       "2",    -1,  -1,    0,       "",              3},
    {  950, "TrailIsDelete",          "A4 7F",       "2",    -1,  -1,    0,       "",              3},
    {  950, "TrailIsTooHigh",         "A4 FF",       "2",    -1,  -1,    0,       "",              3},

    { 1252, "Ascii",                  "41",          "1",     1,   1,    0x0041,  "41",            0},
    { 1252, "Umlaut",                 "C4",          "1",     1,   1,    0x00C4,  "C4",            0},
    { 1252, "Euro",                   "80",          "1",     1,   1,    0x20AC,  "80",            0},
    { 1252, "Mixed",                  "41 C4 42",    "1 1 1", 1,   1,    0x0041,  "41 C4 42",      0},

    {65001, "Ascii",                  "41",          "1",     1,   1,    0x0041,  "41",            0},
    {65001, "TwoBytes",               "C3 84",       "2",     2,   2,    0x00C4,  "C3 84",         0},
    {65001, "OneOfTwo",               "C3",          "1",    -1,  -1,    0,       "",              3},
    {65001, "TwoOfThree",             "E2 82",       "2",    -1,  -1,    0,       "",              3},
    {65001, "TrailIsAscii",           "C3 41",       "2",    -1,  -1,    0,       "",              3},
};

// No character of the code page is longer than 2 bytes to the family: where the locale has longer ones, it steps into
// them, and a copy leaves out their last byte.
const Row kLongRows[] = {
    {65001, "ThreeBytes",             "E2 82 AC",    "2 1",   3,   3,    0x20AC,  "E2 82",         0},
    {65001, "FourBytes",              "F0 9F 98 80", "2 1 1", 4,   4,    0x1F600, "F0 9F 98",      0},
    {65001, "ThreeBytesAndAscii",     "E2 82 AC 41", "2 1 1", 3,   3,    0x20AC,  "E2 82 AC 41",   0},
};
// clang-format on

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.page << " " << row.name;
}

class CodePageRow : public testing::TestWithParam<Row> {
protected:
    std::string bytes = Bytes(GetParam().bytes);
    int length = static_cast<int>(bytes.size());
    GuardedBuffer source;
    GuardedBuffer target;

    void ExpectWalk() {
        const char* text = source.Put(bytes);
        std::string walk;
        for (const char* at = text; *at != '\0'; at = KORDMBstrinc_C(at)) {
            walk += (walk.empty() ? "" : " ") + std::to_string(KORDMBmbclen_C(at));
        }
        EXPECT_EQ(walk, GetParam().walk);
        EXPECT_EQ(KORDMBmblen_C(text, length), GetParam().mblen);
        EXPECT_EQ(KORDMBmblen_C(text, -1), GetParam().mblen);
    }
    void ExpectCodePoint() {
        unsigned int value = 1;
        EXPECT_EQ(KORDMBU32Get_C(&value, source.Put(bytes), 0, -1), GetParam().decoded);
        EXPECT_EQ(value, GetParam().codePoint);
    }
    void ExpectCopy() {
        char* room = target.Room(bytes.size() + 2);
        EXPECT_EQ(KORDMBstrncpy_C(room, source.Put(bytes), length + 2), room);
        std::string kept = Bytes(GetParam().kept);
        kept.resize(bytes.size() + 2, '\0');
        EXPECT_EQ(Hexadecimal({room, bytes.size() + 2}), Hexadecimal(kept));
    }
    void ExpectStatus() {
        int status = -1;
        EXPECT_EQ(KORDMBqstricmp_C(source.Put(bytes), -1, target.Put(bytes), length, &status), 1);
        EXPECT_EQ(status, GetParam().status);
    }
};

using KeptLongCodePageRow = CodePageRow;

TEST_P(CodePageRow, IsSteppedThrough) {
    ExpectWalk();
}

TEST_P(CodePageRow, IsDecoded) {
    ExpectCodePoint();
}

TEST_P(CodePageRow, IsCopied) {
    ExpectCopy();
}

TEST_P(CodePageRow, EqualsItselfWithItsStatus) {
    ExpectStatus();
}

TEST_P(KeptLongCodePageRow, IsSteppedIntoAndCopiedInPart) {
    ExpectWalk();
    ExpectCodePoint();
    ExpectCopy();
    ExpectStatus();
}

INSTANTIATE_TEST_SUITE_P(Rows, CodePageRow, testing::ValuesIn(RowsOfPage(kRows)), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Rows, KeptLongCodePageRow, testing::ValuesIn(RowsOfPage(kLongRows)), NameOfRow());
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(KeptLongCodePageRow);

} // namespace

#include "support/byte_text.h"
#include "support/rows.h"

#include <MCXML_900/KORDMBString.h>

#include <gtest/gtest.h>

namespace {

using namespace MCXML_900;
using veltrane::tests::Bytes;
using veltrane::tests::GuardedBuffer;
using veltrane::tests::Hexadecimal;

/// What the functions make of one sequence that stands alone.
struct Row {
    const char* name;
    const char* bytes; ///< hexadecimal
    int mblen;         ///< strict length, -1 for none
    int mbclen;        ///< length by the lead alone
    int previous;      ///< index of the character before the end
    const char* kept;  ///< what a copy keeps, hexadecimal
    int status;        ///< of a comparison with itself
};

// clang-format off
const Row kRows[] = {
    // name                     bytes                  mblen mbclen previous kept            status
    {"AsciiFirst",              "01",                     1,   1,   0, "01",                   0},
    {"AsciiLetter",             "41",                     1,   1,   0, "41",                   0},
    {"AsciiLast",               "7F",                     1,   1,   0, "7F",                   0},
    {"TwoBytesFirst",           "C2 80",                  2,   2,   0, "C2 80",                0},
    {"TwoBytesUmlaut",          "C3 84",                  2,   2,   0, "C3 84",                0},
    {"TwoBytesLast",            "DF BF",                  2,   2,   0, "DF BF",                0},
    {"ThreeBytesFirst",         "E0 A0 80",               3,   3,   0, "E0 A0 80",             0},
    {"ThreeBytesLastOfE0",      "E0 BF BF",               3,   3,   0, "E0 BF BF",             0},
    {"ThreeBytesFirstOfE1",     "E1 80 80",               3,   3,   0, "E1 80 80",             0},
    {"ThreeBytesEuro",          "E2 82 AC",               3,   3,   0, "E2 82 AC",             0},
    {"ThreeBytesLastOfEC",      "EC BF BF",               3,   3,   0, "EC BF BF",             0},
    {"ThreeBytesLastOfED",      "ED 9F BF",               3,   3,   0, "ED 9F BF",             0},
    {"ThreeBytesPrivate",       "EE 80 80",               3,   3,   0, "EE 80 80",             0},
    {"ThreeBytesReplacement",   "EF BF BD",               3,   3,   0, "EF BF BD",             0},
    {"FourBytesFirst",          "F0 90 80 80",            4,   4,   0, "F0 90 80 80",          0},
    {"FourBytesFace",           "F0 9F 98 80",            4,   4,   0, "F0 9F 98 80",          0},
    {"FourBytesOfF1",           "F1 80 80 80",            4,   4,   0, "F1 80 80 80",          0},
    {"FourBytesOfF3",           "F3 BF BF BD",            4,   4,   0, "F3 BF BF BD",          0},
    {"FourBytesLast",           "F4 8F BF BD",            4,   4,   0, "F4 8F BF BD",          0},

    // Each truncation of a character.
    {"OneOfTwo",                "C3",                    -1,   1,   0, "",                     3},
    {"OneOfThree",              "E2",                    -1,   1,   0, "",                     3},
    {"TwoOfThree",              "E2 82",                 -1,   2,   1, "",                     3},
    {"OneOfThreeE0",            "E0",                    -1,   1,   0, "",                     3},
    {"TwoOfThreeE0",            "E0 A0",                 -1,   2,   1, "",                     3},
    {"OneOfThreeED",            "ED",                    -1,   1,   0, "",                     3},
    {"TwoOfThreeED",            "ED 9F",                 -1,   2,   1, "",                     3},
    {"OneOfFour",               "F0",                    -1,   1,   0, "",                     3},
    {"TwoOfFour",               "F0 9F",                 -1,   2,   1, "",                     3},
    {"ThreeOfFour",             "F0 9F 98",              -1,   3,   2, "",                     3},
    {"OneOfFourF4",             "F4",                    -1,   1,   0, "",                     3},
    {"TwoOfFourF4",             "F4 8F",                 -1,   2,   1, "",                     3},
    {"ThreeOfFourF4",           "F4 8F BF",              -1,   3,   2, "",                     3},

    // Each kind of invalid sequence.
    {"TrailFirst",              "80",                    -1,   1,   0, "",                     3},
    {"TrailLast",               "BF",                    -1,   1,   0, "",                     3},
    {"TrailsInARow",            "80 80 80 80 80",        -1,   1,   4, "",                     3},
    {"OverlongTwoC0",           "C0 80",                 -1,   2,   1, "",                     3},
    {"OverlongTwoC1",           "C1 BF",                 -1,   2,   1, "",                     3},
    {"OverlongThreeFirst",      "E0 80 80",              -1,   3,   2, "",                     3},
    {"OverlongThreeLast",       "E0 9F BF",              -1,   3,   2, "",                     3},
    {"OverlongFourFirst",       "F0 80 80 80",           -1,   4,   3, "",                     3},
    {"OverlongFourLast",        "F0 8F BF BF",           -1,   4,   3, "",                     3},
    {"AboveUnicodeFirst",       "F4 90 80 80",           -1,   4,   3, "",                     3},
    {"AboveUnicodeF5",          "F5 80 80 80",           -1,   4,   3, "",                     3},
    {"AboveUnicodeF7",          "F7 BF BF BF",           -1,   4,   3, "",                     3},
    {"FiveBytes",               "F8 88 80 80 80",        -1,   1,   4, "",                     3},
    {"SixBytes",                "FC 84 80 80 80 80",     -1,   1,   5, "",                     3},
    {"ByteFE",                  "FE",                    -1,   1,   0, "",                     3},
    {"ByteFF",                  "FF",                    -1,   1,   0, "",                     3},
    {"SecondOfTwoIsAscii",      "C3 41",                 -1,   2,   1, "C3 41",                3},
    {"SecondOfTwoIsALead",      "C3 C3",                 -1,   2,   1, "",                     3},
    {"SecondOfThreeIsAscii",    "E2 41 AC",              -1,   3,   2, "E2 41",                3},
    {"ThirdOfThreeIsAscii",     "E2 82 41",              -1,   3,   2, "E2 82 41",             3},
    {"ThirdOfThreeIsALead",     "E2 82 C3",              -1,   3,   2, "",                     3},
    {"SecondOfFourIsAscii",     "F0 41 98 80",           -1,   4,   3, "F0 41",                3},
    {"ThirdOfFourIsAscii",      "F0 9F 41 80",           -1,   4,   3, "F0 9F 41",             3},
    {"FourthOfFourIsAscii",     "F0 9F 98 41",           -1,   4,   3, "F0 9F 98 41",          3},

    // Noncharacters: strictly none, but of the shape of one.
    {"NoncharacterFDD0",        "EF B7 90",              -1,   3,   2, "",                     0},
    {"NoncharacterFDEF",        "EF B7 AF",              -1,   3,   2, "",                     0},
    {"BesideNoncharacters",     "EF B7 B0",               3,   3,   0, "EF B7 B0",             0},
    {"NoncharacterFFFE",        "EF BF BE",              -1,   3,   2, "",                     0},
    {"NoncharacterFFFF",        "EF BF BF",              -1,   3,   2, "",                     0},
    {"Noncharacter1FFFE",       "F0 9F BF BE",           -1,   4,   3, "",                     0},
    {"Noncharacter10FFFF",      "F4 8F BF BF",           -1,   4,   3, "",                     0},
};
// clang-format on

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

class Utf8Row : public testing::TestWithParam<Row> {
protected:
    std::string bytes = Bytes(GetParam().bytes);
    int length = static_cast<int>(bytes.size());
    GuardedBuffer source;
    GuardedBuffer target;
};

TEST_P(Utf8Row, HasItsLengths) {
    const char* text = source.Put(bytes);
    EXPECT_EQ(KORDMBmblen_8(text, length), GetParam().mblen);
    EXPECT_EQ(KORDMBmblen_8(text, -1), GetParam().mblen);
    EXPECT_EQ(KORDMBmbclen_8(text), GetParam().mbclen);
    EXPECT_EQ(KORDMBstrinc_8(text), text + GetParam().mbclen);
}

TEST_P(Utf8Row, IsSteppedOverBackwards) {
    const char* text = source.Put(bytes);
    EXPECT_EQ(KORDMBPreviousIndex_8(text, length), GetParam().previous);
    EXPECT_EQ(KORDMBAnsiPrev_8(text, text + length), text + GetParam().previous);
}

TEST_P(Utf8Row, IsCopiedWholeOrNotAtAll) {
    char* room = target.Room(bytes.size() + 3);
    EXPECT_EQ(KORDMBstrncpy_8(room, source.Put(bytes), length + 3), room);
    std::string kept = Bytes(GetParam().kept);
    kept.resize(bytes.size() + 3, '\0');
    EXPECT_EQ(Hexadecimal({room, bytes.size() + 3}), Hexadecimal(kept));
}

TEST_P(Utf8Row, EqualsItselfWithItsStatus) {
    GuardedBuffer other;
    int status = -1;
    EXPECT_EQ(KORDMBqstricmp_8(source.Put(bytes), -1, other.Put(bytes), length, &status), 1);
    EXPECT_EQ(status, GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(Rows, Utf8Row, testing::ValuesIn(kRows), veltrane::tests::NameOfRow());

// What has the shape of a character passes in comparisons and searches; a strict step refuses it.
using KeptUtf8Surrogate = testing::TestWithParam<const char*>;

TEST_P(KeptUtf8Surrogate, ComparesAsACharacterAndIsNoneForAStep) {
    const std::string bytes = Bytes(GetParam());
    int status = -1;
    EXPECT_EQ(KORDMBqstricmp_8(bytes.c_str(), -1, bytes.c_str(), -1, &status), 1);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(KORDMBmblen_8(bytes.c_str(), -1), -1);
    EXPECT_EQ(KORDMBPreviousIndex_8(bytes.c_str(), 3), 2);
}

INSTANTIATE_TEST_SUITE_P(Surrogates, KeptUtf8Surrogate,
                         testing::Values("ED A0 80", "ED AF BF", "ED B0 80", "ED BF BF"));

} // namespace

#include "cases/date_text.h"
#include "support/numbers.h"
#include "support/rows.h"

#include <gtest/gtest.h>

namespace veltrane::host {
namespace {

using namespace veltrane::tests;

struct FormCase {
    const char* name;
    const char* text;
    DateForm form;
    bool has;
};

void PrintTo(const FormCase& c, std::ostream* out) {
    *out << c.name;
}

class DateForms : public testing::TestWithParam<FormCase> {};

TEST_P(DateForms, AreRecognised) {
    EXPECT_EQ(HasDateForm(GetParam().text, GetParam().form), GetParam().has);
}

INSTANTIATE_TEST_SUITE_P(
    All, DateForms,
    testing::Values(
        FormCase{"Date", "2024-02-29", DateForm::DATE, true}, FormCase{"ShortGroups", "24-2-9", DateForm::DATE, true},
        FormCase{"TwoGroups", "2024-02", DateForm::DATE, false},
        FormCase{"FourGroups", "2024-02-29-1", DateForm::DATE, false},
        FormCase{"LongYear", "20245-02-29", DateForm::DATE, false},
        FormCase{"LongDay", "2024-02-029", DateForm::DATE, false},
        FormCase{"LetterBehind", "2024-02-2x", DateForm::DATE, false},
        FormCase{"EmptyGroup", "2024--29", DateForm::DATE, false},
        FormCase{"NegativeYear", "-2024-02-29", DateForm::DATE, false},
        FormCase{"Slashes", "2024/02/29", DateForm::DATE, false}, FormCase{"Empty", "", DateForm::DATE, false},
        FormCase{"TimeIsNoDate", "12:30:00", DateForm::DATE, false},
        FormCase{"DateTimeIsNoDate", "2024-02-29T00:00:00", DateForm::DATE, false},
        FormCase{"Time", "23:59:58", DateForm::TIME, true}, FormCase{"ShortTime", "1:2:3", DateForm::TIME, true},
        FormCase{"TimeWithoutSeconds", "12:30", DateForm::TIME, false},
        FormCase{"TimeWithFraction", "12:30:00.5", DateForm::TIME, true},
        FormCase{"TimeWithLongFraction", "12:30:00.12345678901234567890", DateForm::TIME, true},
        FormCase{"TimeWithPoint", "12:30:00.", DateForm::TIME, false},
        FormCase{"TimeWithComma", "12:30:00,5", DateForm::TIME, false},
        FormCase{"TimeWithTwoFractions", "12:30:00.5.5", DateForm::TIME, false},
        FormCase{"TimeWithExponent", "12:30:00.5e1", DateForm::TIME, false},
        FormCase{"MinutesWithFraction", "12:30.5", DateForm::TIME, false},
        FormCase{"DateWithFraction", "2024-02-29.5", DateForm::DATE, false},
        FormCase{"DateTimeWithFraction", "2024-02-29T23:59:58.000001", DateForm::DATE_TIME, true},
        FormCase{"FractionAndZone", "2024-02-29T23:59:58.5Z", DateForm::DATE_TIME, false},
        FormCase{"TimeWithZone", "12:30:00Z", DateForm::TIME, false},
        FormCase{"DateTime", "2024-02-29T23:59:58", DateForm::DATE_TIME, true},
        FormCase{"DateTimeWithBlank", "2024-02-29 23:59:58", DateForm::DATE_TIME, true},
        FormCase{"DateTimeWithoutTime", "2024-02-29", DateForm::DATE_TIME, false},
        FormCase{"DateTimeWithSmallT", "2024-02-29t23:59:58", DateForm::DATE_TIME, false},
        FormCase{"DateTimeWithoutSeconds", "2024-02-29T23:59", DateForm::DATE_TIME, false}),
    veltrane::tests::NameOfRow());

struct TextCase {
    const char* name;
    double seconds;
    DateForm form;
    const char* text;
};

void PrintTo(const TextCase& c, std::ostream* out) {
    *out << c.name;
}

class DateTexts : public testing::TestWithParam<TextCase> {};

TEST_P(DateTexts, AreWritten) {
    std::string text = ">";
    AppendDate(text, GetParam().seconds, GetParam().form);
    EXPECT_EQ(text, std::string(">") + GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    All, DateTexts,
    testing::Values(TextCase{"Epoch", 0, DateForm::DATE, "1970-01-01"},
                    TextCase{"LeapDay", 1709164800, DateForm::DATE, "2024-02-29"},
                    TextCase{"DateDropsTheTimeOfDay", 1709164800 + 86399, DateForm::DATE, "2024-02-29"},
                    TextCase{"BeforeTheEpoch", -1, DateForm::DATE, "1969-12-31"},
                    TextCase{"Midnight", 0, DateForm::TIME, "00:00:00"},
                    TextCase{"LastSecond", 86399, DateForm::TIME, "23:59:59"},
                    TextCase{"TimeOfADayAndMore", 86400, DateForm::TIME, "86400"},
                    TextCase{"NegativeTime", -1, DateForm::TIME, "-1"},
                    TextCase{"DateTime", 1709164800 + 45296, DateForm::DATE_TIME, "2024-02-29T12:34:56"},
                    TextCase{"SecondBeforeTheEpoch", -1, DateForm::DATE_TIME, "1969-12-31T23:59:59"},
                    TextCase{"Fraction", 1.25, DateForm::DATE_TIME, "1970-01-01T00:00:01.25"},
                    TextCase{"FractionBeforeTheEpoch", -0.25, DateForm::DATE_TIME, "1969-12-31T23:59:59.75"},
                    TextCase{"Tenth", 946684800.1, DateForm::DATE_TIME, "2000-01-01T00:00:00.1"},
                    TextCase{"FractionThatRoundsUp", 59.9999999, DateForm::TIME, "00:01:00"},
                    TextCase{"TimeThatRoundsToADay", 86399.9999999, DateForm::TIME, "86399.9999999"},
                    TextCase{"FractionThatRoundsToAYear", 946684799.9999999, DateForm::DATE_TIME,
                             "2000-01-01T00:00:00"},
                    TextCase{"FarFraction", 253402300799.5, DateForm::DATE_TIME, "9999-12-31T23:59:59.5"},
                    TextCase{"HalfAMicrosecond", 0.0078125, DateForm::TIME, "00:00:00.007813"},
                    TextCase{"YearZero", -62167219200.0, DateForm::DATE, "0000-01-01"},
                    TextCase{"BeforeYearZero", -62167219201.0, DateForm::DATE, "-62167219201"},
                    TextCase{"LastYear", 253402300799.0, DateForm::DATE_TIME, "9999-12-31T23:59:59"},
                    TextCase{"BehindTheLastYear", 253402300800.0, DateForm::DATE_TIME, "253402300800"},
                    TextCase{"Infinity", kInfinity, DateForm::DATE_TIME, "inf"}),
    veltrane::tests::NameOfRow());

} // namespace
} // namespace veltrane::host

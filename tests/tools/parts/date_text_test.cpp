#include "cases/date_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace veltrane::host {
namespace {

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
        FormCase{"Date", "2024-02-29", DateForm::kDate, true}, FormCase{"ShortGroups", "24-2-9", DateForm::kDate, true},
        FormCase{"TwoGroups", "2024-02", DateForm::kDate, false},
        FormCase{"FourGroups", "2024-02-29-1", DateForm::kDate, false},
        FormCase{"LongYear", "20245-02-29", DateForm::kDate, false},
        FormCase{"LongDay", "2024-02-029", DateForm::kDate, false},
        FormCase{"LetterBehind", "2024-02-2x", DateForm::kDate, false},
        FormCase{"EmptyGroup", "2024--29", DateForm::kDate, false},
        FormCase{"NegativeYear", "-2024-02-29", DateForm::kDate, false},
        FormCase{"Slashes", "2024/02/29", DateForm::kDate, false}, FormCase{"Empty", "", DateForm::kDate, false},
        FormCase{"TimeIsNoDate", "12:30:00", DateForm::kDate, false},
        FormCase{"DateTimeIsNoDate", "2024-02-29T00:00:00", DateForm::kDate, false},
        FormCase{"Time", "23:59:58", DateForm::kTime, true}, FormCase{"ShortTime", "1:2:3", DateForm::kTime, true},
        FormCase{"TimeWithoutSeconds", "12:30", DateForm::kTime, false},
        FormCase{"TimeWithFraction", "12:30:00.5", DateForm::kTime, false},
        FormCase{"TimeWithZone", "12:30:00Z", DateForm::kTime, false},
        FormCase{"DateTime", "2024-02-29T23:59:58", DateForm::kDateTime, true},
        FormCase{"DateTimeWithBlank", "2024-02-29 23:59:58", DateForm::kDateTime, true},
        FormCase{"DateTimeWithoutTime", "2024-02-29", DateForm::kDateTime, false},
        FormCase{"DateTimeWithSmallT", "2024-02-29t23:59:58", DateForm::kDateTime, false},
        FormCase{"DateTimeWithoutSeconds", "2024-02-29T23:59", DateForm::kDateTime, false}),
    [](const auto& info) { return info.param.name; });

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
    testing::Values(TextCase{"Epoch", 0, DateForm::kDate, "1970-01-01"},
                    TextCase{"LeapDay", 1709164800, DateForm::kDate, "2024-02-29"},
                    TextCase{"DateDropsTheTimeOfDay", 1709164800 + 86399, DateForm::kDate, "2024-02-29"},
                    TextCase{"BeforeTheEpoch", -1, DateForm::kDate, "1969-12-31"},
                    TextCase{"Midnight", 0, DateForm::kTime, "00:00:00"},
                    TextCase{"LastSecond", 86399, DateForm::kTime, "23:59:59"},
                    TextCase{"TimeOfADayAndMore", 86400, DateForm::kTime, "86400"},
                    TextCase{"NegativeTime", -1, DateForm::kTime, "-1"},
                    TextCase{"DateTime", 1709164800 + 45296, DateForm::kDateTime, "2024-02-29T12:34:56"},
                    TextCase{"SecondBeforeTheEpoch", -1, DateForm::kDateTime, "1969-12-31T23:59:59"},
                    TextCase{"Fraction", 1.25, DateForm::kDateTime, "1970-01-01T00:00:01.25"},
                    TextCase{"FractionBeforeTheEpoch", -0.25, DateForm::kDateTime, "1969-12-31T23:59:59.75"},
                    TextCase{"Tenth", 946684800.1, DateForm::kDateTime, "2000-01-01T00:00:00.1"},
                    TextCase{"FractionThatRoundsUp", 59.9999999, DateForm::kTime, "00:01:00"},
                    TextCase{"TimeThatRoundsToADay", 86399.9999999, DateForm::kTime, "86399.9999999"},
                    TextCase{"YearZero", -62167219200.0, DateForm::kDate, "0000-01-01"},
                    TextCase{"BeforeYearZero", -62167219201.0, DateForm::kDate, "-62167219201"},
                    TextCase{"LastYear", 253402300799.0, DateForm::kDateTime, "9999-12-31T23:59:59"},
                    TextCase{"BehindTheLastYear", 253402300800.0, DateForm::kDateTime, "253402300800"},
                    TextCase{"Infinity", std::numeric_limits<double>::infinity(), DateForm::kDateTime, "inf"}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace veltrane::host

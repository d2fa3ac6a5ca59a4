#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

#include <string>

// Input that nobody would write on purpose: texts that are no UTF-8, expressions that take for ever, and very many
// arguments. s and t are texts, x and y numbers.

using namespace veltrane::tests;

namespace {

const char* const kFfd = "\xEF\xBF\xBD"; // the replacement character

const std::string kT = "<FieldRef field='t'/>";
const std::string kS = "<FieldRef field='s'/>";

/// What a case may hold instead of UTF-8, and what the functions that count characters make of it.
struct Malformed {
    const char* name;
    std::string bytes;
    std::string decoded;
};

std::string Times(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += kFfd;
    }
    return text;
}

const Malformed kMalformed[] = {
    {"LoneContinuation", "\x80", Times(1)},   {"NoUtf8Byte", "\xFF", Times(1)},
    {"CutOffTwo", "\xC3", Times(1)},          {"CutOffThree", "\xE2\x82", Times(1)},
    {"CutOffFour", "\xF0\x9F\x98", Times(1)}, {"OverlongSlash", "\xC0\xAF", Times(2)},
    {"Surrogate", "\xED\xA0\x80", Times(3)},  {"BeyondUnicode", "\xF5\x80\x80\x80", Times(4)},
};

class MalformedText : public testing::TestWithParam<Malformed> {
protected:
    std::string Text(const std::string& apply, const std::string& t, const std::string& s = "") {
        DerivedFields fields(TextField(apply));
        const std::string first = fields.Score("z", {{"t", t}, {"s", s}});
        EXPECT_EQ(fields.Score("z", {{"t", t}, {"s", s}}), first);
        return first;
    }

    std::string Number(const std::string& apply, const std::string& t, const std::string& s = "") {
        DerivedFields fields(NumericField(apply));
        const std::string first = fields.Score("z", {{"t", t}, {"s", s}});
        EXPECT_EQ(fields.Score("z", {{"t", t}, {"s", s}}), first);
        return first;
    }

    const std::string bytes = GetParam().bytes;
    const std::string decoded = GetParam().decoded;
};

TEST_P(MalformedText, PassesThroughTheFunctionsOfBytes) {
    const std::string text = "Ab" + bytes + "Yz";
    EXPECT_EQ(Text(Apply("uppercase", kT), text), "'AB" + bytes + "YZ'");
    EXPECT_EQ(Text(Apply("lowercase", kT), text), "'ab" + bytes + "yz'");
    EXPECT_EQ(Text(Apply("lower", kT), text), "'ab" + bytes + "yz'");
    EXPECT_EQ(Text(Apply("ltrim", kT), " \t" + text), "'" + text + "'");
    EXPECT_EQ(Text(Apply("rtrim", kT), text + bytes + "  "), "'" + text + bytes + "'");
    EXPECT_EQ(Text(Apply("substr", kT + "<Constant>3</Constant>"), text), "'" + bytes + "Yz'");
    EXPECT_EQ(Text(Apply("value", kT), text), "'" + text + "'");
    EXPECT_EQ(Text(Apply("if", "<Constant>1</Constant>" + kT), text), "'" + text + "'");
}

TEST_P(MalformedText, IsCutAndFilledAsBytes) {
    DerivedFields fields(DerivedField("w", "optype='categorical' dataType='string'",
                                      "<Extension name='width' value='6'/><FieldRef field='t'/>") +
                         TextField(Apply("concat", "<FieldRef field='w'/><Constant>|</Constant>")));
    std::string filled = "a" + bytes;
    filled.resize(6, ' ');
    EXPECT_EQ(fields.Score("z", {{"t", "a" + bytes}}), "'" + filled + "|'");
}

TEST_P(MalformedText, CountsAsReplacementCharactersInASubstring) {
    const std::string two = "<Constant>2</Constant>";
    const std::string many = "<Constant>99</Constant>";
    EXPECT_EQ(Text(Apply("substring", kT + two + many), "a" + bytes + "z"), "'" + decoded + "z'");
    EXPECT_EQ(Text(Apply("substring", kT + two + "<Constant>1</Constant>"), "a" + bytes + "z"),
              "'" + std::string(kFfd) + "'");
}

TEST_P(MalformedText, MatchesAsReplacementCharacters) {
    EXPECT_EQ(Number(Apply("matches", kT + "<Constant>^a\\x{FFFD}+z$</Constant>"), "a" + bytes + "z"), "1");
    EXPECT_EQ(Number(Apply("matches", kT + "<Constant>[b-y]</Constant>"), "a" + bytes + "z"), "0");
}

TEST_P(MalformedText, MayBeTheExpression) {
    EXPECT_EQ(Number(Apply("matches", kT + kS), "a" + decoded, "a" + bytes), "1");
    EXPECT_EQ(Number(Apply("matches", kT + kS), "ab", "a" + bytes), "0");
    EXPECT_EQ(Number(Apply("matches", kT + kS), "ab", "(" + bytes), "0");
}

TEST_P(MalformedText, IsReplacedBehindTheSubjectThatKeepsItsBytes) {
    const std::string text = "a" + bytes;
    EXPECT_EQ(Text(Apply("replace", kT + "<Constant>a</Constant><Constant>b</Constant>"), text),
              "'" + text + "b" + decoded + "'");
    EXPECT_EQ(Text(Apply("replace", kT + "<Constant>a</Constant>" + kS), "a", bytes), "'a" + decoded + "'");
}

TEST_P(MalformedText, IsEqualToItselfOnly) {
    EXPECT_EQ(Number(Apply("equal", kT + kS), bytes, bytes), "1");
    EXPECT_EQ(Number(Apply("equal", kT + kS), bytes, decoded), "0");
    EXPECT_EQ(Number(Apply("isIn", kT + kS), "a" + bytes, "a" + bytes), "1");
}

TEST_P(MalformedText, IsNoNumber) {
    EXPECT_EQ(Number(Apply("isMissing", kT), bytes), "0");
    EXPECT_EQ(Number(Apply("length", kT), bytes), "-1");
}

INSTANTIATE_TEST_SUITE_P(Texts, MalformedText, testing::ValuesIn(kMalformed), NameOfRow());

} // namespace

TEST(SlowExpression, CountsAsNoMatch) {
    DerivedFields fields(NumericField(Apply("matches", kT + "<Constant>^(a+)+$</Constant>")));
    EXPECT_EQ(fields.Score("z", {{"t", std::string(60, 'a') + "!"}}), "0");
}

TEST(SlowExpression, ReplacesNothing) {
    DerivedFields fields(TextField(Apply("replace", kT + "<Constant>^(a+)+$</Constant><Constant>x</Constant>")));
    const std::string subject = std::string(60, 'a') + "!";
    EXPECT_EQ(fields.Score("z", {{"t", subject}}), "'" + subject + "'");
    EXPECT_EQ(fields.Score("z", {{"t", "aa"}}), "'aax'");
}

// Each match stays below the bound, all of them together do not.
TEST(SlowExpression, ReplacesNothingWhenItsMatchesAreSlowTogether) {
    DerivedFields fields(TextField(Apply("replace", kT + "<Constant>(a|aa)+c|b</Constant><Constant>x</Constant>")));
    std::string subject;
    for (int i = 0; i < 20000; ++i) {
        subject += std::string(16, 'a') + "b";
    }
    EXPECT_EQ(fields.Score("z", {{"t", subject}}), "'" + subject + "'");
}

namespace {

/// A function with a hundred thousand arguments.
struct ManyArguments {
    const char* name;
    const char* function;
    const char* expected;
};

class HundredThousandArguments : public testing::TestWithParam<ManyArguments> {
protected:
    static std::string Apply() {
        std::string apply = std::string("<Apply function='") + GetParam().function + "'><FieldRef field='x'/>";
        for (int i = 1; i < 100000; ++i) {
            apply += "<Constant>1</Constant>";
        }
        return apply + "</Apply>";
    }
};

class AcceptedManyArguments : public HundredThousandArguments {};

TEST_P(AcceptedManyArguments, AreAllUsed) {
    DerivedFields fields(NumericField(Apply()));
    EXPECT_EQ(fields.Score("z", {{"x", "2"}}), GetParam().expected);
    EXPECT_EQ(fields.Score("z", {{"x", "2"}}), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Functions, AcceptedManyArguments,
    testing::Values(ManyArguments{"Sum", "sum", "100001"}, ManyArguments{"Product", "product", "2"},
                    ManyArguments{"Min", "min", "1"}, ManyArguments{"Max", "max", "2"},
                    ManyArguments{"Mean", "mean", "1.00001"}, ManyArguments{"Median", "median", "1"},
                    ManyArguments{"And", "and", "1"}, ManyArguments{"Or", "or", "1"}, ManyArguments{"Not", "not", "0"},
                    ManyArguments{"Equal", "equal", "0"}, ManyArguments{"NotEqual", "notEqual", "1"},
                    ManyArguments{"LessThan", "lessThan", "0"}, ManyArguments{"IsIn", "isIn", "0"},
                    ManyArguments{"IsNotIn", "isNotIn", "1"}, ManyArguments{"IsMissing", "isMissing", "0"},
                    ManyArguments{"If", "if", "1"}, ManyArguments{"Floor", "floor", "2"},
                    ManyArguments{"Threshold", "threshold", "0"}),
    NameOfRow());

class RefusedManyArguments : public HundredThousandArguments {};

TEST_P(RefusedManyArguments, EndInTheStatedMessage) {
    ExpectReadFailure(NumericField(Apply()), {MCVeltrane_900::Message::REQUIRES_PARAMETERS, GetParam().expected});
}

INSTANTIATE_TEST_SUITE_P(Functions, RefusedManyArguments,
                         testing::Values(ManyArguments{"Plus", "+", "2"}, ManyArguments{"Abs", "abs", "1"},
                                         ManyArguments{"Normal", "normalCDF", "3"},
                                         ManyArguments{"Outlier", "outlierHandle", "6"}),
                         NameOfRow());

} // namespace

TEST(HundredThousandTexts, AreJoined) {
    std::string apply = "<Apply function='concat'>";
    for (int i = 0; i < 100000; ++i) {
        apply += "<Constant>ab</Constant>";
    }
    DerivedFields fields(TextField(apply + "</Apply>"));
    const std::string joined = fields.Score("z", {});
    EXPECT_EQ(joined.size(), 200002U);
    EXPECT_EQ(joined.substr(0, 6), "'ababa");
}

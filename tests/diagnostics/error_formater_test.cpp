#include "support/vtable_slot.h"

#include <MCVeltrane_900/ErrorFormater.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using MCVeltrane_900::gErrorFormater;
using ScoreContext::IErrorFormater;
using ScoreContext::MessageItem;
using ScoreContext::VTErrorFormater;

char* Text(const char* text) {
    return const_cast<char*>(text);
}

/// The last operation with a variable-argument list can only be called from one.
std::string CallVFormatN(IErrorFormater& formater, int id, int count, ...) {
    va_list arguments;
    va_start(arguments, count);
    std::string text = formater.VFormatN(id, count, arguments);
    va_end(arguments);
    return text;
}

VTErrorFormater MakeFormater(const char* pattern) {
    MessageItem items[] = {{1, Text(pattern)}};
    return VTErrorFormater(1, items);
}

TEST(ErrorFormater, OperationsStandInOrder) {
    using veltrane::tests::VtableSlot;
    EXPECT_EQ(VtableSlot(&IErrorFormater::FormatV), 0U);
    EXPECT_EQ(VtableSlot(&IErrorFormater::VFormatN), 1U);
    EXPECT_EQ(VtableSlot(&IErrorFormater::FormatN), 2U);
    EXPECT_EQ(VtableSlot(&IErrorFormater::Format), 3U);
    EXPECT_EQ(VtableSlot(&IErrorFormater::GetParameterNumber), 4U);
    EXPECT_EQ(VtableSlot(&IErrorFormater::LoadMessages), 5U);
}

TEST(ErrorFormater, HasNoVirtualDestructor) {
    EXPECT_FALSE(std::has_virtual_destructor_v<IErrorFormater>);
    EXPECT_FALSE(std::has_virtual_destructor_v<VTErrorFormater>);
}

TEST(ErrorFormater, FormatFillsThePlaceholders) {
    EXPECT_EQ(gErrorFormater.Format(260120, {"a", "b"}), "Missing the attribute 'a' of 'b'.");
}

TEST(ErrorFormater, FormatWithTooFewParametersLeavesTheOthers) {
    EXPECT_EQ(gErrorFormater.Format(260120, {"a"}), "Missing the attribute 'a' of '{1}'.");
}

TEST(ErrorFormater, FormatWithTooManyParametersDropsTheOthers) {
    EXPECT_EQ(gErrorFormater.Format(260114, {"a", "b"}), "Missing node: 'a'.");
}

TEST(ErrorFormater, FormatOfAnUnknownIdIsEmpty) {
    EXPECT_EQ(gErrorFormater.Format(1, {}), "");
    EXPECT_EQ(gErrorFormater.Format(1, {"a"}), "");
}

TEST(ErrorFormater, FormatEndsAtANul) {
    EXPECT_EQ(gErrorFormater.Format(260114, {std::string("a\0b", 3)}), "Missing node: 'a");
}

TEST(ErrorFormater, FormatVReadsAsManyAsThePatternHas) {
    EXPECT_EQ(gErrorFormater.FormatV(260120, "a", "b", "c"), "Missing the attribute 'a' of 'b'.");
    EXPECT_EQ(gErrorFormater.FormatV(260101), "Unexpected error.");
    EXPECT_EQ(gErrorFormater.FormatV(1), "");
}

TEST(ErrorFormater, FormatNReadsTheCount) {
    EXPECT_EQ(gErrorFormater.FormatN(260120, 2, "a", "b"), "Missing the attribute 'a' of 'b'.");
    EXPECT_EQ(gErrorFormater.FormatN(260120, 1, "a", "b"), "Missing the attribute 'a' of '{1}'.");
}

TEST(ErrorFormater, VFormatNReadsTheCount) {
    EXPECT_EQ(CallVFormatN(gErrorFormater, 260120, 2, "a", "b"), "Missing the attribute 'a' of 'b'.");
    EXPECT_EQ(CallVFormatN(gErrorFormater, 260120, 1, "a", "b"), "Missing the attribute 'a' of '{1}'.");
}

TEST(ErrorFormater, NullEndsTheArguments) {
    EXPECT_EQ(gErrorFormater.FormatN(260120, 2, "a", nullptr), "Missing the attribute 'a' of '{1}'.");
    EXPECT_EQ(gErrorFormater.FormatV(260120, "a", nullptr), "Missing the attribute 'a' of '{1}'.");
}

TEST(ErrorFormater, CountBelowOneGivesTheRawPattern) {
    EXPECT_EQ(gErrorFormater.FormatN(260120, 0), "Missing the attribute ''{0}'' of ''{1}''.");
    EXPECT_EQ(gErrorFormater.FormatN(260120, -1, "a"), "Missing the attribute ''{0}'' of ''{1}''.");
    EXPECT_EQ(CallVFormatN(gErrorFormater, 260120, 0, "a"), "Missing the attribute ''{0}'' of ''{1}''.");
}

TEST(ErrorFormater, ParameterNumberCountsThePlaceholders) {
    EXPECT_EQ(gErrorFormater.GetParameterNumber(260101), 0);
    EXPECT_EQ(gErrorFormater.GetParameterNumber(260120), 2);
    EXPECT_EQ(gErrorFormater.GetParameterNumber(260251), 6);
    EXPECT_EQ(MakeFormater("{0} {0}").GetParameterNumber(1), 2);
}

TEST(ErrorFormater, ParameterNumberOfAnUnknownIdIsZero) {
    EXPECT_EQ(gErrorFormater.GetParameterNumber(1), 0);
}

TEST(ErrorFormater, ParameterNumberOfABadPatternCountsItsPlaceholdersToo) {
    EXPECT_EQ(MakeFormater("{0,nonsense}").GetParameterNumber(1), 1);
}

TEST(ErrorFormater, ParameterNumberCountsOutermostPlaceholdersOnly) {
    EXPECT_EQ(MakeFormater("{0,choice,0#none {1}|1#one {2}} of {3}").GetParameterNumber(1), 2);
    EXPECT_EQ(MakeFormater("it''s '{0}' {1}").GetParameterNumber(1), 1);
    EXPECT_EQ(MakeFormater("").GetParameterNumber(1), 0);
}

class RefusedPattern : public testing::TestWithParam<const char*> {};

TEST_P(RefusedPattern, HasNoParametersAndStandsRaw) {
    VTErrorFormater formater = MakeFormater(GetParam());
    EXPECT_EQ(formater.GetParameterNumber(1), 0);
    EXPECT_EQ(formater.FormatV(1, "a", "b"), GetParam());
    EXPECT_EQ(formater.Format(1, {"a", "b"}), GetParam());
    MCVeltrane_900::VTException failure(&formater);
    EXPECT_TRUE(failure.PutErrorMessage(1, "a", nullptr));
    EXPECT_EQ(failure.ConstructMessage(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(ErrorFormater, RefusedPattern,
                         testing::Values("expected {", "50% of {x", "{0} and {", "{0} and {1", "{0,choice,0#{1}",
                                         "{0} {-1}", "{0 x}", "{}"));

/// A selection within a selection, this often, with or without its ends.
std::string Nested(int levels, bool isClosed) {
    std::string pattern = "}";
    for (int i = 0; i < levels; ++i) {
        pattern += "{0,select,other{";
    }
    for (int i = 0; isClosed && i < levels; ++i) {
        pattern += "}}";
    }
    return pattern;
}

// Both the reading and the filling of a pattern take stack for each level.
TEST(ErrorFormater, PatternThatIsNestedTooDeeplyStandsRaw) {
    for (const bool isClosed : {false, true}) {
        const std::string pattern = Nested(100000, isClosed);
        VTErrorFormater formater = MakeFormater(pattern.c_str());
        EXPECT_EQ(formater.GetParameterNumber(1), 0);
        EXPECT_EQ(formater.Format(1, {"a"}), pattern);
    }
    EXPECT_EQ(MakeFormater(Nested(50, true).c_str()).GetParameterNumber(1), 1);
    EXPECT_EQ(MakeFormater(Nested(50, true).c_str()).Format(1, {"a"}), "}");
    EXPECT_EQ(MakeFormater(Nested(51, true).c_str()).GetParameterNumber(1), 0);
}

TEST(ErrorFormater, QuotedBracesAreNoLevels) {
    std::string pattern;
    for (int i = 0; i < 200; ++i) {
        pattern += "''{0}'{' ";
    }
    EXPECT_EQ(MakeFormater(pattern.c_str()).GetParameterNumber(1), 200);
    EXPECT_EQ(MakeFormater(pattern.c_str()).Format(1, {"a"}).substr(0, 12), "'a{ 'a{ 'a{ ");
}

TEST(ErrorFormater, BadPatternStandsRaw) {
    EXPECT_EQ(MakeFormater("''{0}'' {").Format(1, {"a"}), "''{0}'' {");
    EXPECT_EQ(MakeFormater("{0,number}").Format(1, {"a"}), "{0,number}");
}

TEST(ErrorFormater, EmptyResultLeavesTheRawPattern) {
    EXPECT_EQ(MakeFormater("{0}").Format(1, {""}), "{0}");
}

TEST(ErrorFormater, LoadMessagesTakesTheTable) {
    MessageItem items[] = {{1, Text("one {0}")}, {2, Text("two")}};
    VTErrorFormater formater(0, items);
    EXPECT_EQ(formater.Format(1, {}), "");
    EXPECT_TRUE(formater.LoadMessages(2, items));
    EXPECT_EQ(formater.Format(1, {"a"}), "one a");
    EXPECT_EQ(formater.Format(2, {}), "two");
}

TEST(ErrorFormater, LoadMessagesDoesNotCopyTheTexts) {
    char text[] = "before";
    MessageItem items[] = {{1, text}};
    VTErrorFormater formater(1, items);
    text[0] = 'B';
    EXPECT_EQ(formater.Format(1, {}), "Before");
}

TEST(ErrorFormater, SecondTableWithAKnownFirstIdChangesNothing) {
    MessageItem first[] = {{1, Text("one")}};
    VTErrorFormater formater(1, first);
    MessageItem second[] = {{1, Text("uno")}, {2, Text("due")}};
    EXPECT_FALSE(formater.LoadMessages(2, second));
    EXPECT_EQ(formater.Format(1, {}), "one");
    EXPECT_EQ(formater.Format(2, {}), "");
}

TEST(ErrorFormater, SecondTableWithANewFirstIdReplacesTheOthers) {
    MessageItem first[] = {{1, Text("one")}};
    VTErrorFormater formater(1, first);
    MessageItem second[] = {{2, Text("due")}, {1, Text("uno")}};
    EXPECT_TRUE(formater.LoadMessages(2, second));
    EXPECT_EQ(formater.Format(1, {}), "uno");
    EXPECT_EQ(formater.Format(2, {}), "due");
}

TEST(ErrorFormater, LookUpOfAnUnknownIdDoesNotCountAsLoaded) {
    MessageItem items[] = {{1, Text("one")}};
    VTErrorFormater formater(0, items);
    EXPECT_EQ(formater.Format(1, {}), "");
    EXPECT_TRUE(formater.LoadMessages(1, items));
    EXPECT_EQ(formater.Format(1, {}), "one");
}

TEST(ErrorFormater, CountBelowOneLooksAtTheFirstIdOnly) {
    MessageItem items[] = {{1, Text("one")}};
    VTErrorFormater formater(0, items);
    EXPECT_TRUE(formater.LoadMessages(0, items));
    EXPECT_TRUE(formater.LoadMessages(-1, items));
    EXPECT_TRUE(formater.LoadMessages(1, items));
    EXPECT_FALSE(formater.LoadMessages(0, items));
}

TEST(ErrorFormater, TextsMayBeAbsent) {
    MessageItem items[] = {{1, nullptr}};
    VTErrorFormater formater(1, items);
    EXPECT_EQ(formater.Format(1, {"a"}), "");
    EXPECT_EQ(formater.GetParameterNumber(1), 0);
    EXPECT_TRUE(formater.LoadMessages(1, items));
    EXPECT_FALSE(formater.LoadMessages(1, nullptr));
}

TEST(ErrorFormater, CopiesHaveMapsOfTheirOwn) {
    VTErrorFormater source = MakeFormater("one");
    VTErrorFormater copy(source);
    VTErrorFormater assigned = MakeFormater("other");
    assigned = source;
    MessageItem more[] = {{2, Text("two")}};
    source.LoadMessages(1, more);
    EXPECT_EQ(copy.Format(1, {}), "one");
    EXPECT_EQ(copy.Format(2, {}), "");
    EXPECT_EQ(assigned.Format(1, {}), "one");
    EXPECT_EQ(assigned.Format(2, {}), "");
}

TEST(ErrorFormater, AssignmentForgetsWhatWasThere) {
    MessageItem items[] = {{2, Text("two")}};
    VTErrorFormater target(1, items);
    target = MakeFormater("one");
    EXPECT_EQ(target.Format(2, {}), "");
}

TEST(KeptMessages, WithoutParametersThePatternIsReturnedAsStored) {
    EXPECT_EQ(gErrorFormater.Format(260114, {}), "Missing node: ''{0}''.");
}

} // namespace

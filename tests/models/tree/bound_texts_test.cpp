// Bounds of comparisons in every way in which documents write numbers are those that the reader of numbers reads, to
// the last bit.
#include "kit/values/values.h"
#include "models/kit/scoring.h"
#include "models/plans/plan_reading.h"
#include "models/tree/small_tree.h"
#include "support/rows.h"
#include "tree/tree_scorer.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

using namespace veltrane::tests;

namespace {

/// A tree with a node for each bound of a field.
std::string BoundsDocument(const std::vector<std::string>& bounds, const std::string& field) {
    std::string nodes;
    for (const std::string& bound : bounds) {
        nodes += "<Node score='yes'><SimplePredicate field='" + field + "' operator='lessThan' value='" + bound +
                 "'/></Node>";
    }
    return Replaced(ConditionDocument("<False/>"), "<Node score='no'>", nodes + "<Node score='no'>");
}

void ExpectBoundsRead(const std::vector<std::string>& bounds, const std::string& field) {
    PlanReader reader(BoundsDocument(bounds, field));
    const auto plan = reader.Read(u"TreeModel", veltrane_tree::MakeTreeScorer);
    const auto& tree = dynamic_cast<const veltrane_tree::TreeScorer&>(plan->GetScorer()).GetTree();
    ASSERT_EQ(tree.nodes.size(), bounds.size() + 3);
    for (std::size_t i = 0; i < bounds.size(); ++i) {
        // The first child is the node that holds for no case.
        const double number = tree.nodes[i + 2].condition.number;
        const double expected = veltrane_kit::NumberIn(bounds[i]).value_or(veltrane_kit::kMissing);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(number), std::bit_cast<std::uint64_t>(expected)) << bounds[i];
    }
}

const std::vector<std::string> kWays = {"0",
                                        "-0",
                                        "0.0",
                                        "-0.0",
                                        "00",
                                        "007",
                                        "-007.50",
                                        "5.",
                                        "-5.",
                                        ".5",
                                        "-.5",
                                        "+5",
                                        "+.5",
                                        " 1.5 ",
                                        "1e3",
                                        "1E-3",
                                        "-1.5e+300",
                                        "1e-400",
                                        "0.1",
                                        "0.30000000000000004",
                                        "2.2250738585072011e-308",
                                        "9007199254740993",
                                        "179769313486231570000000000000000",
                                        "0.000000000000000000000000000001",
                                        "-0.00000000000000000000000000000001",
                                        "123456789012345678901234567890.5",
                                        "1234567890123456789012345678901.5",
                                        "12345678901234567890123456789012345678"};

TEST(BoundTexts, AreReadAsTheReaderOfNumbersDoes) {
    for (const char* field : {"x", "k", "half"}) {
        ExpectBoundsRead(kWays, field);
    }
}

TEST(BoundTexts, OfAnyDigitsAreReadAsTheReaderOfNumbersDoes) {
    std::mt19937 random(7);
    std::vector<std::string> bounds;
    for (int i = 0; i < 20000; ++i) {
        std::string text = random() % 2 == 0 ? "-" : "";
        const std::size_t digits = 1 + random() % 34;
        const std::size_t point = 1 + random() % 40;
        for (std::size_t place = 0; place < digits; ++place) {
            text += place == point ? "." : "";
            text += static_cast<char>('0' + random() % 10);
        }
        bounds.push_back(text);
    }
    ExpectBoundsRead(bounds, "x");
}

struct WrongBound {
    const char* name;
    const char* text;
};

void PrintTo(const WrongBound& row, std::ostream* out) {
    *out << row.name;
}

class BoundTextsRefused : public testing::TestWithParam<WrongBound> {};

TEST_P(BoundTextsRefused, AreNoNumbers) {
    const std::string text = GetParam().text;
    PlanReader reader(BoundsDocument({"1", "2", text}, "x"));
    try {
        reader.Read(u"TreeModel", veltrane_tree::MakeTreeScorer);
        ADD_FAILURE() << "read";
    } catch (const MCVeltrane_900::VTException& failure) {
        EXPECT_EQ(failure.GetErrorCode(), 260153);
        EXPECT_NE(failure.GetErrorMessage().find(text), std::string::npos);
    }
}

const WrongBound kWrongBounds[] = {{"Empty", ""},           {"Minus", "-"},         {"Point", "."},
                                   {"MinusAndPoint", "-."}, {"TwoPoints", "1.2.3"}, {"TwoSigns", "--1"},
                                   {"SignBehind", "1-"},    {"Letter", "12a"},      {"Hexadecimal", "0x1"},
                                   {"Nan", "NaN"},          {"Comma", "1,5"},       {"Wide", "\uFF11"}};

INSTANTIATE_TEST_SUITE_P(Rows, BoundTextsRefused, testing::ValuesIn(kWrongBounds), NameOfRow());

} // namespace

#include "calls.h"
#include "kit/functions/text_index.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace veltrane::tests;
using veltrane_kit::TextIndex;
using Weight = TextIndex::Weight;
using Settings = TextIndex::Settings;
using veltrane::Value;

namespace {

std::string Index(const Settings& settings, std::string_view text, std::string_view term) {
    return WriteCell(TextIndex(settings, "UTF-8").Evaluate(Text(text), Text(term)));
}

struct Row {
    const char* name;
    void (*change)(Settings& settings);
    const char* text;
    const char* term;
    const char* result;
};

class TextIndexGives : public testing::TestWithParam<Row> {};

TEST_P(TextIndexGives, TheWeightOfATerm) {
    Settings settings;
    GetParam().change(settings);
    EXPECT_EQ(Index(settings, GetParam().text, GetParam().term), GetParam().result);
}

void Nothing(Settings& /*settings*/) {}

void AddTable(Settings& settings, TextIndex::Replacement row, bool isRecursive = false, int mostDistance = 0) {
    TextIndex::Normalization table;
    table.rows.push_back(std::move(row));
    table.isRecursive = isRecursive;
    table.comparison.mostDistance = mostDistance;
    settings.normalizations.push_back(std::move(table));
}

const Row kRows[] = {
    {"Count", Nothing, "Test this test, please", "test", "integer:2"},
    {"CountsLetters", [](Settings& s) { s.comparison.isCaseSensitive = true; }, "Test this test, please", "test",
     "integer:1"},
    {"NoPartOfAWord", Nothing, "testing", "test", "integer:0"},
    {"TwoWords", Nothing, "very user friendly and user  friendly", "user friendly", "integer:2"},
    {"OverlappingRuns", Nothing, "a a a", "a a", "integer:2"},
    {"TermLongerThanText", Nothing, "a", "a b", "integer:0"},
    {"EmptyTerm", Nothing, "a b", " . ", "integer:0"},
    {"EmptyText", Nothing, "", "a", "integer:0"},
    {"Punctuation", Nothing, "(a) 'a' a!? b", "a", "integer:3"},
    {"LettersBeyondAscii", Nothing, "ÄPFEL Äpfel äpfel", "äpfel", "integer:3"},
    {"WhiteSpaceBeyondAscii", Nothing, "a\u00a0a\u2003a\na", "a", "integer:4"},
    {"Binary", [](Settings& s) { s.weight = Weight::BINARY; }, "a b a", "a", "integer:1"},
    {"BinaryWithout", [](Settings& s) { s.weight = Weight::BINARY; }, "a b a", "c", "integer:0"},
    {"Logarithmic", [](Settings& s) { s.weight = Weight::LOGARITHMIC; }, "a a a a a a a a a", "a", "double:1"},
    {"LogarithmicWithout", [](Settings& s) { s.weight = Weight::LOGARITHMIC; }, "b", "a", "double:0"},
    {"Augmented", [](Settings& s) { s.weight = Weight::AUGMENTED; }, "a b b", "a", "double:0.75"},
    {"AugmentedWithout", [](Settings& s) { s.weight = Weight::AUGMENTED; }, "b", "a", "double:0"},
    {"Near", [](Settings& s) { s.comparison.mostDistance = 1; }, "tests tent rest best", "test", "integer:4"},
    {"NearEnough", [](Settings& s) { s.comparison.mostDistance = 1; }, "tests tents", "test", "integer:1"},
    {"NearByCharacters", [](Settings& s) { s.comparison.mostDistance = 1; }, "a😀b ab", "aéb", "integer:2"},
    {"NearSummed", [](Settings& s) { s.comparison.mostDistance = 2; }, "usr frendly usr frndly", "user friendly",
     "integer:1"},
    {"Best",
     [](Settings& s) {
         s.comparison.mostDistance = 1;
         s.countsBestHits = true;
     },
     "tent test tests test tent", "test", "integer:2"},
    {"BestThatAreFar",
     [](Settings& s) {
         s.comparison.mostDistance = 3;
         s.countsBestHits = true;
     },
     "tents tent", "test", "integer:1"},
    {"Separator", [](Settings& s) { s.comparison.separator = "-"; }, "a-b-b c", "b", "integer:1"},
    {"SeparatorLikeTheUsualOne", [](Settings& s) { s.comparison.separator = "[\\s]+"; }, " a\u00a0a\u2003a\na ", "a",
     "integer:4"},
    {"SeparatorWithGroups", [](Settings& s) { s.comparison.separator = "(-)|(x)"; }, "a-bxa", "a", "integer:2"},
    {"NoTokens", [](Settings& s) { s.comparison.isCutIntoTokens = false; }, "A b", "a b", "integer:1"},
    {"NoTokensNoPart", [](Settings& s) { s.comparison.isCutIntoTokens = false; }, "a b", "a", "integer:0"},
    {"Stems",
     [](Settings& s) {
         AddTable(s, {"tests?", "exam", true});
     },
     "test exam tests", "exam", "integer:3"},
    {"StemOfTheTerm",
     [](Settings& s) {
         AddTable(s, {"tests?", "exam", true});
     },
     "exam", "Tests", "integer:1"},
    {"Group",
     [](Settings& s) {
         AddTable(s, {"(un)(\\w+)", "$1 $2", true});
     },
     "unhappy", "happy", "integer:1"},
    {"Literal",
     [](Settings& s) {
         AddTable(s, {"C++ (new)", "$1", false});
     },
     "use c++ (New). or xc++ (new)", "$1", "integer:1"},
    {"LiteralNoPart",
     [](Settings& s) {
         AddTable(s, {"ab", "x", false});
     },
     "abc cab ab", "x", "integer:1"},
    {"InOrder",
     [](Settings& s) {
         AddTable(s, {"a", "b", true});
         AddTable(s, {"b", "c", true});
     },
     "a b", "c", "integer:2"},
    {"Recursive",
     [](Settings& s) {
         AddTable(s, {"xx", "x", true}, true);
     },
     "xxxxxxxx", "x", "integer:1"},
    {"NotRecursive",
     [](Settings& s) {
         AddTable(s, {"xx", "x", true});
     },
     "xxxx", "xx", "integer:0"},
    {"ByDistance",
     [](Settings& s) {
         AddTable(s, {"well designed", "good", false}, false, 2);
     },
     "it is wel desined, so wel desinde", "good", "integer:1"},
    {"EndlessRecursion",
     [](Settings& s) {
         AddTable(s, {"^", "a", true}, true);
     },
     "b", "a", "missing"},
    {"Cycle",
     [](Settings& s) {
         AddTable(s, {"a", "b", true}, true);
         s.normalizations[0].rows.push_back({"b", "bb", true});
     },
     "a", "b", "missing"},
    {"NoExpression",
     [](Settings& s) {
         AddTable(s, {"(", "b", true});
     },
     "a", "a", "missing"},
    {"NoSeparator", [](Settings& s) { s.comparison.separator = "["; }, "a", "a", "missing"},
    {"CostlyExpression",
     [](Settings& s) {
         AddTable(s, {"(a+)+b", "b", true});
     },
     "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", "a", "missing"},
};

INSTANTIATE_TEST_SUITE_P(Rows, TextIndexGives, testing::ValuesIn(kRows), NameOfRow());

TEST(TextIndex, IsMissingWithoutATextOrATerm) {
    const TextIndex index({}, "UTF-8");
    EXPECT_EQ(WriteCell(index.Evaluate({}, Text("a"))), "missing");
    EXPECT_EQ(WriteCell(index.Evaluate(Text("a"), {})), "missing");
    EXPECT_EQ(WriteCell(index.Evaluate(Integer(12), Text("12"))), "integer:1");
}

TEST(TextIndex, TakesTextsOfOtherEncodings) {
    Settings settings;
    AddTable(settings, {"gr\xfcn", "\xe4", false});
    const TextIndex index(settings, "ISO-8859-1");
    EXPECT_EQ(WriteCell(index.Evaluate(Text("GR\xdcN \xc4"), Text("\xe4"))), "integer:2");
}

/// By the definition, over all ways.
int PlainDistance(const std::u32string& left, const std::u32string& right) {
    if (left.empty() || right.empty()) {
        return static_cast<int>(left.size() + right.size());
    }
    const int exchanged = PlainDistance(left.substr(1), right.substr(1)) + (left[0] == right[0] ? 0 : 1);
    return std::min({exchanged, PlainDistance(left.substr(1), right) + 1, PlainDistance(left, right.substr(1)) + 1});
}

TEST(TextIndex, GoesByTheDistanceOfLevenshtein) {
    std::mt19937 draw(1);
    const auto word = [&draw] {
        std::string text;
        for (std::size_t left = 1 + draw() % 5; left > 0; --left) {
            text += "abc"[draw() % 3];
        }
        return text;
    };
    for (int i = 0; i < 300; ++i) {
        const std::string text = word();
        const std::string term = word();
        const int distance = PlainDistance({text.begin(), text.end()}, {term.begin(), term.end()});
        for (const int most : {0, 1, 2, 3, 4, 5, 1 << 30}) {
            Settings settings;
            settings.comparison.mostDistance = most;
            EXPECT_EQ(Index(settings, text, term), distance <= most ? "integer:1" : "integer:0")
                << text << " " << term << " " << most;
        }
    }
}

TEST(TextIndex, TakesAnySettings) {
    const std::string words[] = {"",   "a",  "a b", "test, tests", "ß😀",  "(a+)+b",
                                 "[",  "^",  "x*",  "\\s",         "$1$9", "aaaaaaaaaaaaaaaaaaaaaaaaaaac",
                                 "\\", ".*", "|"};
    std::mt19937 draw(2);
    const auto word = [&] { return words[draw() % std::size(words)]; };
    const auto comparison = [&] {
        return TextIndex::Comparison{draw() % 2 == 0, static_cast<int>(draw() % 6) - 1,
                                     draw() % 2 == 0 ? "\\s+" : word(), draw() % 4 != 0};
    };
    int found = 0;
    for (int i = 0; i < 1000; ++i) {
        Settings settings{static_cast<Weight>(draw() % 4), comparison(), draw() % 2 == 0, {}};
        for (std::size_t tables = draw() % 3; tables > 0; --tables) {
            settings.normalizations.push_back({{{word(), word(), draw() % 2 == 0}}, comparison(), draw() % 3 == 0});
        }
        const Value value = TextIndex(settings, "UTF-8").Evaluate(Text(word()), Text(word()));
        EXPECT_TRUE(value.isMissing || value.number >= 0.0) << i;
        found += !value.isMissing && value.number > 0.0 ? 1 : 0;
    }
    EXPECT_GT(found, 50);
}

TEST(TextIndex, BoundsWhatLongTokensCost) {
    Settings settings;
    settings.comparison.mostDistance = 1 << 30;
    const std::string text(100000, 'a');
    EXPECT_EQ(Index(settings, text, std::string(90000, 'b')), "missing");
    EXPECT_EQ(Index(settings, text, "b"), "integer:1");
}

TEST(TextIndex, BoundsTextsThatGrow) {
    Settings settings;
    for (int i = 0; i < 30; ++i) {
        AddTable(settings, {"a", "aa", true});
    }
    EXPECT_EQ(Index(settings, "a", "a"), "missing");
}

TEST(TextIndex, TakesLongTexts) {
    std::string text;
    for (int i = 0; i < 200000; ++i) {
        text += i % 10 == 0 ? "needle " : "hay ";
    }
    Settings settings;
    settings.comparison.mostDistance = 1;
    for (int i = 0; i < 20; ++i) {
        AddTable(settings, {"hay" + std::to_string(i), "x", false});
    }
    EXPECT_EQ(Index(settings, text, "needle"), "integer:20000");
}

} // namespace

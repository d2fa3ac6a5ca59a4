// Every operator over every list of up to four results, in both forms, with the children that must not be evaluated
// watched.
#include "conditions.h"

#include <MCVeltrane_900/CompoundPredicate.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <utility>

using namespace veltrane::tests;

namespace {

/// Results by letter: true, false, unknown, surrogate true.
constexpr char kLetters[] = "TFUS";

ScorePredicate::PredicateResult ResultOf(char letter) {
    return static_cast<ScorePredicate::PredicateResult>(std::string(kLetters).find(letter));
}

struct Outcome {
    char result;
    std::size_t evaluated; ///< how many children, from the first on

    bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << outcome.result << " after " << outcome.evaluated;
}

constexpr char kNames[] = "abcd";

/// A compound with a watched child for each letter.
class WatchedCompound {
public:
    WatchedCompound(int boolOperator, const std::string& results)
        : fCompound(static_cast<ScorePredicate::CompoundBoolOperator>(boolOperator)) {
        for (std::size_t i = 0; i < results.size(); ++i) {
            fCompound.AddPredicate(new WatchedPredicate(kNames[i], ResultOf(results[i]), fWatch));
        }
    }

    Outcome OfRecords() { return Read(fCompound.Evaluate(nullptr, nullptr), 0); }
    Outcome OfNumbers() { return Read(fCompound.Evaluate({}), 0); }
    Outcome SurrogateFrom(int start) { return Read(fCompound.EvaluateSurrogate({}, start), start); }

private:
    Outcome Read(ScorePredicate::PredicateResult result, int start) {
        const std::string evaluated = std::exchange(fWatch.evaluated, "");
        EXPECT_EQ(evaluated, std::string(kNames).substr(start, evaluated.size()));
        return {kLetters[result], evaluated.size()};
    }

    Watch fWatch;
    CompoundPredicate fCompound;
};

/// All lists of results of a length.
std::vector<std::string> ListsOf(std::size_t length) {
    std::vector<std::string> lists{""};
    for (std::size_t i = 0; i < length; ++i) {
        std::vector<std::string> longer;
        for (const std::string& list : lists) {
            for (const char letter : std::string(kLetters)) {
                longer.push_back(list + letter);
            }
        }
        lists = longer;
    }
    return lists;
}

bool Has(const std::string& results, char letter) {
    return results.find(letter) != std::string::npos;
}

/// How many children are evaluated when the first one with the letter ends the walk.
std::size_t UpTo(char letter, const std::string& results) {
    const std::size_t place = results.find(letter);
    return place == std::string::npos ? results.size() : place + 1;
}

Outcome Or(const std::string& results) {
    return {Has(results, 'T') ? 'T' : Has(results, 'U') ? 'U' : 'F', UpTo('T', results)};
}

Outcome And(const std::string& results) {
    return {Has(results, 'F') ? 'F' : Has(results, 'U') ? 'U' : 'T', UpTo('F', results)};
}

Outcome Xor(const std::string& results) {
    const bool isOdd = std::count(results.begin(), results.end(), 'T') % 2 == 1;
    return {Has(results, 'U') ? 'U' : isOdd ? 'T' : 'F', UpTo('U', results)};
}

Outcome Surrogate(const std::string& results) {
    const std::size_t place = results.find_first_not_of('U');
    if (place == std::string::npos) {
        return {'U', results.size()};
    }
    return {results[place] == 'T' && place > 0 ? 'S' : results[place], place + 1};
}

Outcome None(const std::string&) {
    return {'U', 0};
}

struct OperatorRow {
    const char* name;
    int number;
    Outcome (*expected)(const std::string&);
};

class CrossedTruthTable : public testing::TestWithParam<std::tuple<OperatorRow, std::size_t>> {};

} // namespace

TEST_P(CrossedTruthTable, BothForms) {
    const auto& [row, length] = GetParam();
    for (const std::string& results : ListsOf(length)) {
        WatchedCompound compound(row.number, results);
        EXPECT_EQ(compound.OfNumbers(), row.expected(results)) << results;
        EXPECT_EQ(compound.OfRecords(), row.expected(results)) << results;
    }
}

INSTANTIATE_TEST_SUITE_P(CompoundPredicate, CrossedTruthTable,
                         testing::Combine(testing::Values(OperatorRow{"Or", 0, Or}, OperatorRow{"And", 1, And},
                                                          OperatorRow{"Xor", 2, Xor},
                                                          OperatorRow{"Surrogate", 3, Surrogate},
                                                          OperatorRow{"Four", 4, None}, OperatorRow{"Minus", -1, None}),
                                          testing::Range<std::size_t>(0, 5)),
                         [](const auto& row) {
                             return std::get<0>(row.param).name + std::string("Of") +
                                    std::to_string(std::get<1>(row.param));
                         });

namespace {

/// The table of two children, as it stands in the documentation.
struct PairRow {
    const char* children;
    Outcome orResult;
    Outcome andResult;
    Outcome xorResult;
};

const PairRow kPairs[] = {
    {"TT", {'T', 1}, {'T', 2}, {'F', 2}}, {"TF", {'T', 1}, {'F', 2}, {'T', 2}}, {"TU", {'T', 1}, {'U', 2}, {'U', 2}},
    {"FT", {'T', 2}, {'F', 1}, {'T', 2}}, {"FF", {'F', 2}, {'F', 1}, {'F', 2}}, {"FU", {'U', 2}, {'F', 1}, {'U', 2}},
    {"UT", {'T', 2}, {'U', 2}, {'U', 1}}, {"UF", {'U', 2}, {'F', 2}, {'U', 1}}, {"UU", {'U', 2}, {'U', 2}, {'U', 1}},
};

class PairOfChildren : public testing::TestWithParam<PairRow> {};

} // namespace

TEST_P(PairOfChildren, Or) {
    EXPECT_EQ(WatchedCompound(0, GetParam().children).OfNumbers(), GetParam().orResult);
}

TEST_P(PairOfChildren, And) {
    EXPECT_EQ(WatchedCompound(1, GetParam().children).OfNumbers(), GetParam().andResult);
}

TEST_P(PairOfChildren, Xor) {
    EXPECT_EQ(WatchedCompound(2, GetParam().children).OfNumbers(), GetParam().xorResult);
}

INSTANTIATE_TEST_SUITE_P(CompoundPredicate, PairOfChildren, testing::ValuesIn(kPairs),
                         [](const auto& row) { return std::string(row.param.children); });

TEST(CompoundTruth, WithoutChildren) {
    EXPECT_EQ(WatchedCompound(0, "").OfNumbers(), (Outcome{'F', 0}));
    EXPECT_EQ(WatchedCompound(1, "").OfNumbers(), (Outcome{'T', 0}));
    EXPECT_EQ(WatchedCompound(2, "").OfNumbers(), (Outcome{'F', 0}));
    EXPECT_EQ(WatchedCompound(3, "").OfNumbers(), (Outcome{'U', 0}));
    EXPECT_EQ(WatchedCompound(7, "").OfNumbers(), (Outcome{'U', 0}));
}

TEST(CompoundTruth, XorCountsTrueChildren) {
    EXPECT_EQ(WatchedCompound(2, "TTT").OfNumbers(), (Outcome{'T', 3}));
    EXPECT_EQ(WatchedCompound(2, "TT").OfNumbers(), (Outcome{'F', 2}));
}

TEST(CompoundTruth, AnOperatorOfAnotherNumberEvaluatesNoChild) {
    EXPECT_EQ(WatchedCompound(4, "TT").OfNumbers(), (Outcome{'U', 0}));
    EXPECT_EQ(WatchedCompound(4, "TT").OfRecords(), (Outcome{'U', 0}));
}

TEST(SurrogateWalk, FirstChildTrueStaysTrue) {
    EXPECT_EQ(WatchedCompound(3, "TF").OfNumbers(), (Outcome{'T', 1}));
}

TEST(SurrogateWalk, SecondChildTrueIsSurrogateTrue) {
    EXPECT_EQ(WatchedCompound(3, "UT").OfNumbers(), (Outcome{'S', 2}));
}

TEST(SurrogateWalk, SecondChildFalseIsFalse) {
    EXPECT_EQ(WatchedCompound(3, "UF").OfNumbers(), (Outcome{'F', 2}));
}

TEST(SurrogateWalk, AllUnknown) {
    EXPECT_EQ(WatchedCompound(3, "UUU").OfNumbers(), (Outcome{'U', 3}));
}

// A child that was true through a surrogate counts for nothing in the other walks.
TEST(KeptSurrogateTrue, UnderOrNeitherEndsNorIsRemembered) {
    EXPECT_EQ(WatchedCompound(0, "S").OfNumbers(), (Outcome{'F', 1}));
    EXPECT_EQ(WatchedCompound(0, "ST").OfNumbers(), (Outcome{'T', 2}));
    EXPECT_EQ(WatchedCompound(0, "SU").OfRecords(), (Outcome{'U', 2}));
}

TEST(KeptSurrogateTrue, UnderAndPassesLikeATrueChild) {
    EXPECT_EQ(WatchedCompound(1, "S").OfNumbers(), (Outcome{'T', 1}));
    EXPECT_EQ(WatchedCompound(1, "SF").OfRecords(), (Outcome{'F', 2}));
}

TEST(KeptSurrogateTrue, UnderXorIsNotCounted) {
    EXPECT_EQ(WatchedCompound(2, "S").OfNumbers(), (Outcome{'F', 1}));
    EXPECT_EQ(WatchedCompound(2, "ST").OfRecords(), (Outcome{'T', 2}));
}

TEST(SurrogateFromChild, EveryListAndEveryStart) {
    for (std::size_t length = 1; length <= 4; ++length) {
        for (const std::string& results : ListsOf(length)) {
            WatchedCompound compound(3, results);
            for (std::size_t start = 0; start < length; ++start) {
                EXPECT_EQ(compound.SurrogateFrom(static_cast<int>(start)), Surrogate(results.substr(start)))
                    << results << " from " << start;
            }
        }
    }
}

TEST(SurrogateFromChild, TheTruthOfTheStartIsTrue) {
    EXPECT_EQ(WatchedCompound(3, "UT").SurrogateFrom(1), (Outcome{'T', 1}));
    EXPECT_EQ(WatchedCompound(3, "FUT").SurrogateFrom(1), (Outcome{'S', 2}));
    EXPECT_EQ(WatchedCompound(3, "FU").SurrogateFrom(1), (Outcome{'U', 1}));
    EXPECT_EQ(WatchedCompound(3, "U").SurrogateFrom(0), (Outcome{'U', 1}));
}

TEST(KeptEvaluateSurrogate, AStartThatIsNotThereIsFalse) {
    for (const int start : {-1, 2, 3, 1000000}) {
        EXPECT_EQ(CompoundPredicate().EvaluateSurrogate({}, start), kFalse);
        Watch watch;
        CompoundPredicate compound(ScorePredicate::BOOL_SURROGATE);
        compound.AddPredicate(new WatchedPredicate('a', kTrue, watch));
        compound.AddPredicate(new WatchedPredicate('b', kTrue, watch));
        EXPECT_EQ(compound.EvaluateSurrogate({}, start), kFalse);
        EXPECT_EQ(watch.evaluated, "");
    }
}

TEST(KeptEvaluateSurrogate, AnotherOperatorIsFalse) {
    for (const int number : {0, 1, 2, 7}) {
        Watch watch;
        CompoundPredicate compound(static_cast<ScorePredicate::CompoundBoolOperator>(number));
        compound.AddPredicate(new WatchedPredicate('a', kTrue, watch));
        EXPECT_EQ(compound.EvaluateSurrogate({}, 0), kFalse);
        EXPECT_EQ(watch.evaluated, "");
    }
}

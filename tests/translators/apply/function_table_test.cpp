#include "support/faults/failure.h"
#include "support/function_numbers.h"
#include "support/rows.h"
#include "translators/apply/function_list.h"
#include "translators/frame/test_translator.h"

#include <MCVeltrane_900/PMMLModelTags.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace veltrane::tests {
namespace {

using Function = TransformationDictionary::TransformFunction;

/// All numbers of functions, 79 for none, and some beyond either end.
constexpr int kFirst = -2;
constexpr int kLast = 90;

class FunctionNames : public testing::Test {
protected:
    TestTranslator translator;
};

TEST_F(FunctionNames, AreThoseOfTheTable) {
    std::size_t names = 0;
    for (const ListedFunction& function : ListedFunctions()) {
        names += function.names.size();
    }
    translator.InitFunctionMap();
    EXPECT_EQ(translator.fFunctionMap.size(), names);
}

TEST_F(FunctionNames, EightyOneOfSeventyNineFunctionsArePinned) {
    translator.InitFunctionMap();
    const auto isPinned = [](const auto& entry) { return entry.second < TransformationDictionary::TF_NONE; };
    EXPECT_EQ(std::count_if(translator.fFunctionMap.begin(), translator.fFunctionMap.end(), isPinned), 81);
    EXPECT_EQ(PinnedFunctions().size(), kPinnedCount);
}

TEST_F(FunctionNames, GiveTheirNumbers) {
    translator.InitFunctionMap();
    for (const ListedFunction& function : ListedFunctions()) {
        for (const std::string& name : function.names) {
            EXPECT_EQ(translator.GetTransFunction(name), function.number) << name;
        }
    }
}

TEST_F(FunctionNames, AreComparedExactly) {
    translator.InitFunctionMap();
    for (const char* name : {"", "plus", "ABS", "Abs", " abs", "abs ", "isnotmissing", "<not defined>"}) {
        EXPECT_EQ(translator.GetTransFunction(name), 79) << name;
    }
}

TEST_F(FunctionNames, AreUnknownBeforeTheMapIsFilled) {
    for (const ListedFunction& function : ListedFunctions()) {
        EXPECT_EQ(translator.GetTransFunction(function.names.front()), 79);
    }
}

TEST_F(FunctionNames, FillingTheMapAgainChangesNothing) {
    translator.InitFunctionMap();
    translator.fFunctionMap["abs"] = TransformationDictionary::TF_EXP;
    const auto before = translator.fFunctionMap;
    translator.InitFunctionMap();
    EXPECT_EQ(translator.fFunctionMap, before);
}

TEST_F(FunctionNames, TravelWithACopyOfTheTranslator) {
    translator.InitFunctionMap();
    const TestTranslator copy(translator);
    EXPECT_EQ(copy.GetTransFunction("trimend"), 60);
}

/// The literals of the vocabulary whose names speak of a function.
std::set<std::string> VocabularyOfFunctions() {
    std::set<std::string> literals;
#define VELTRANE_TAG(name, literal)                                                                                    \
    if (std::string(#name).find("_TRANFUNC_") != std::string::npos)                                                    \
        literals.insert(literal);
#include <MCVeltrane_900/PMMLModelTags.def>
    return literals;
}

/// The vocabulary is as fixed as the pinned functions.
TEST_F(FunctionNames, PinnedOnesAreTheVocabularyButForReorder) {
    std::set<std::string> names = {"reorder"};
    for (const ListedFunction& function : PinnedFunctions()) {
        names.insert(function.names.begin(), function.names.end());
    }
    EXPECT_EQ(VocabularyOfFunctions(), names);
}

TEST_F(FunctionNames, ReorderIsNoFunction) {
    translator.InitFunctionMap();
    EXPECT_EQ(translator.GetTransFunction(PMMLModelTags::XML_KORD_TRANFUNC_REORDER), 79);
}

// Some functions have no word of their own in messages, and readers of messages know them so.
TEST(KeptFunctionWords, StandForEveryNumber) {
    for (int number = kFirst; number <= kLast; ++number) {
        EXPECT_EQ(PMMLTranslator::ToString(static_cast<Function>(number)), ListedWord(number)) << number;
    }
}

TEST(KeptFunctionWords, AreNotDefinedForTheLibrarysOwnFunctions) {
    for (const int number : {999, 1000, 1001, 5000}) {
        EXPECT_EQ(PMMLTranslator::ToString(static_cast<Function>(number)), "<not defined>") << number;
    }
}

TEST(KeptFunctionWords, AreNotDefinedForSome) {
    std::vector<int> undefined;
    for (int number = 0; number <= 79; ++number) {
        if (PMMLTranslator::ToString(static_cast<Function>(number)) == "<not defined>") {
            undefined.push_back(number);
        }
    }
    EXPECT_EQ(undefined, std::vector<int>({20, 21, 32, 33, 72, 73, 74, 75, 76, 77, 78, 79}));
}

TEST(MeasureLevelWords, StandForEveryNumber) {
    const std::vector<std::string> words = {"", "continuous", "ordinal", "categorical", "", ""};
    for (int level = -1; level <= 4; ++level) {
        EXPECT_EQ(PMMLTranslator::ToString(static_cast<ScoreDictVar::MeasureLevel>(level)),
                  words[static_cast<std::size_t>(level + 1)])
            << level;
    }
}

struct FamilyRow {
    const char* name;
    bool (*isMember)(Function);
    std::vector<NumberRange> members;
};

void PrintTo(const FamilyRow& row, std::ostream* out) {
    *out << row.name;
}

class FunctionFamilies : public testing::TestWithParam<FamilyRow> {};

TEST_P(FunctionFamilies, HasItsMembers) {
    for (int number = kFirst; number <= kLast; ++number) {
        EXPECT_EQ(GetParam().isMember(static_cast<Function>(number)), IsIn(GetParam().members, number)) << number;
    }
}

using T = PMMLTranslator;

INSTANTIATE_TEST_SUITE_P(
    Rows, FunctionFamilies,
    testing::Values(FamilyRow{"Arithmetic", T::IsArithmeticFunction, {{0, 3}}},
                    FamilyRow{"Mathematics", T::IsMathematicsFunction, {{4, 15}, {66, 67}}},
                    FamilyRow{"Statistic", T::IsStatisticFunction, {{16, 27}, {72, 78}}},
                    FamilyRow{"DateTime", T::IsDateTimeFunction, {{28, 39}}},
                    FamilyRow{"Logic", T::IsLogicFunction, {{40, 46}, {48, 53}}},
                    FamilyRow{"String", T::IsStringFunction, {{54, 61}}},
                    FamilyRow{"MixOutput", T::IsMixOutputFunction, {{64, 65}}},
                    FamilyRow{"Numeric", T::IsNumericFunction, {{0, 39}, {66, 67}, {70, 78}}},
                    FamilyRow{"InputNumeric", T::IsInputNumericFunction, {{0, 39}, {66, 67}, {70, 78}}},
                    FamilyRow{
                        "OutputNumeric", T::IsOutputNumericFunction, {{0, 46}, {48, 53}, {63, 63}, {66, 67}, {70, 78}}},
                    FamilyRow{"OutputString", T::IsOutputStringFunction, {{54, 61}}},
                    FamilyRow{"InputString", T::IsInputStringFunction, {{54, 61}, {63, 63}}},
                    FamilyRow{"MixInput", T::IsMixInputFunction, {{40, 46}, {48, 53}, {64, 65}, {68, 69}}}),
    NameOfRow());

// "greaterOrEqual" and "substring" were left out of every family, which decides where they may be nested.
TEST(KeptFunctionFamilies, TwoFunctionsBelongToNone) {
    for (const int number : {47, 62}) {
        for (const auto isMember :
             {T::IsArithmeticFunction, T::IsMathematicsFunction, T::IsStatisticFunction, T::IsDateTimeFunction,
              T::IsLogicFunction, T::IsStringFunction, T::IsMixOutputFunction, T::IsNumericFunction,
              T::IsInputNumericFunction, T::IsOutputNumericFunction, T::IsOutputStringFunction,
              T::IsInputStringFunction, T::IsMixInputFunction}) {
            EXPECT_FALSE(isMember(static_cast<Function>(number))) << number;
        }
    }
}

TEST(NestedFunctions, EveryPairOfNumbers) {
    TestTranslator translator;
    for (int parent = kFirst; parent <= kLast; ++parent) {
        for (int child = kFirst; child <= kLast; ++child) {
            SCOPED_TRACE(testing::Message() << parent << " of " << child);
            const auto verify = [&] {
                translator.VerifyParentAndChildFunction(static_cast<Function>(parent), static_cast<Function>(child));
            };
            if (MayNest(parent, child)) {
                EXPECT_NO_THROW(verify());
            } else {
                ExpectFailure(verify,
                              {Message::FUNCTION_TYPE_MISMATCH, ListedWord(parent).c_str(), ListedWord(child).c_str()});
            }
        }
    }
}

} // namespace
} // namespace veltrane::tests

#include "support/faults/failure.h"
#include "support/rows.h"

#include <veltrane/functions.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace veltrane::tests;
using veltrane::Function;
using veltrane::FunctionCall;
using veltrane::FunctionLibrary;
using veltrane::Value;
using enum MCVeltrane_900::Message;

namespace {

double Half(double x) {
    return x / 2.0;
}

double Difference(double x, double y) {
    return x - y;
}

double Count(const double* /*numbers*/, std::size_t count) {
    return static_cast<double>(count);
}

Value First(FunctionCall& call) {
    return call.arguments[0];
}

void HalfColumn(const double* const* columns, std::size_t /*count*/, std::size_t rows, double* results) {
    for (std::size_t row = 0; row < rows; ++row) {
        results[row] = Half(columns[0][row]);
    }
}

Function OfOne(const std::string& name) {
    Function function;
    function.name = name;
    function.ofOne = Half;
    return function;
}

Function OfTwo() {
    Function function;
    function.name = "difference";
    function.fewest = 2;
    function.most = 2;
    function.ofTwo = Difference;
    return function;
}

Function OfMany() {
    Function function;
    function.name = "count";
    function.most = Function::kAny;
    function.missing = Function::Missing::IS_SKIPPED;
    function.ofMany = Count;
    return function;
}

Function OfValues() {
    Function function;
    function.name = "first";
    function.fewest = 0;
    function.missing = Function::Missing::IS_PASSED;
    function.ofValues = First;
    return function;
}

TEST(FunctionLibrary, GivesNumbersInTheOrderOfAddition) {
    FunctionLibrary library;
    EXPECT_EQ(library.Add(OfOne("half")), 1000);
    EXPECT_EQ(library.Add(OfTwo()), 1001);
    EXPECT_EQ(library.Add(OfMany()), 1002);
    EXPECT_EQ(library.Add(OfValues()), 1003);
    std::vector<std::string> names;
    for (const Function& function : library.All()) {
        names.push_back(std::to_string(function.number) + " " + function.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"1000 half", "1001 difference", "1002 count", "1003 first"}));
}

TEST(FunctionLibrary, FindsByExactNameAndByNumber) {
    FunctionLibrary library;
    library.Add(OfOne("half"));
    library.Add(OfTwo());
    const Function* const found = library.Find("difference");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->ofTwo(5.0, 3.0), 2.0);
    EXPECT_EQ(library.Find(1001), found);
    EXPECT_EQ(library.Find("Half"), nullptr);
    EXPECT_EQ(library.Find(""), nullptr);
    for (const int number : {-1, 0, 999, 1002}) {
        EXPECT_EQ(library.Find(number), nullptr) << number;
    }
}

double Celsius(double fahrenheit) {
    return (fahrenheit - 32.0) / 1.8;
}

TEST(FunctionLibrary, TakesAFunctionWithNoMoreThanItsNameAndKernel) {
    FunctionLibrary library;
    Function function;
    function.name = "celsius";
    function.ofOne = Celsius;
    library.Add(std::move(function));
    const Function& added = *library.Find("celsius");
    EXPECT_EQ(added.ofOne(212.0), 100.0);
    EXPECT_EQ(added.fewest, 1U);
    EXPECT_EQ(added.most, 1U);
    EXPECT_EQ(added.result, Function::Result::REAL);
    EXPECT_EQ(added.missing, Function::Missing::GIVES_MISSING);
}

TEST(FunctionLibrary, LeavesFunctionsInTheirPlaceWhenOthersCome) {
    FunctionLibrary library;
    library.Add(OfOne("half"));
    const Function* const first = library.Find("half");
    for (int i = 0; i < 1000; ++i) {
        library.Add(OfOne("half" + std::to_string(i)));
    }
    EXPECT_EQ(library.Find("half"), first);
    EXPECT_EQ(library.Find("half999"), &library.All().back());
}

TEST(FunctionLibrary, LooksAtNoNumberThatIsGiven) {
    FunctionLibrary library;
    Function function = OfOne("half");
    function.number = 7;
    EXPECT_EQ(library.Add(function), 1000);
    EXPECT_EQ(library.Find("half")->number, 1000);
}

TEST(FunctionLibrary, RefusesANameThatIsThere) {
    FunctionLibrary library;
    library.Add(OfOne("half"));
    ExpectFailure([&] { library.Add(OfOne("half")); }, {DUPLICATE_VARIABLE_IN, "half", "FunctionLibrary"});
    EXPECT_EQ(library.All().size(), 1U);
}

struct Refused {
    const char* name;
    void (*change)(Function& function);
    Failure failure;
};

class FunctionLibraryRefuses : public testing::TestWithParam<Refused> {};

TEST_P(FunctionLibraryRefuses, AFunctionThatCantBeCalled) {
    FunctionLibrary library;
    Function function = OfOne("f");
    GetParam().change(function);
    ExpectFailure([&] { library.Add(function); }, GetParam().failure);
    EXPECT_TRUE(library.All().empty());
    EXPECT_EQ(library.Find("f"), nullptr);
}

const Refused kRefused[] = {
    {"NoName", [](Function& f) { f.name.clear(); }, {INVALID_ATTRIBUTE_VALUE_IN, "", "name", "Function"}},
    {"NoEvaluation",
     [](Function& f) { f.ofOne = nullptr; },
     {INVALID_ATTRIBUTE_VALUE_IN, "0", "ofOne, ofTwo, ofMany, ofValues", "f"}},
    {"TwoEvaluations",
     [](Function& f) { f.ofValues = First; },
     {INVALID_ATTRIBUTE_VALUE_IN, "2", "ofOne, ofTwo, ofMany, ofValues", "f"}},
    {"ColumnsOfValues",
     [](Function& f) {
         f.ofOne = nullptr;
         f.ofValues = First;
         f.ofColumns = HalfColumn;
     },
     {INVALID_ATTRIBUTE_VALUE_IN, "ofValues", "ofColumns", "f"}},
    {"KernelOfOneForNone", [](Function& f) { f.fewest = 0; }, {INVALID_ATTRIBUTE_VALUE_IN, "0", "fewest", "f"}},
    {"KernelOfOneForMore",
     [](Function& f) { f.most = Function::kAny; },
     {INVALID_ATTRIBUTE_VALUE_IN, "any", "most", "f"}},
    {"KernelOfTwoForOne",
     [](Function& f) {
         f.ofOne = nullptr;
         f.ofTwo = Difference;
     },
     {INVALID_ATTRIBUTE_VALUE_IN, "1", "fewest", "f"}},
    {"BoundsWithoutANumber",
     [](Function& f) {
         f.ofOne = nullptr;
         f.ofMany = Count;
         f.fewest = 3;
         f.most = 2;
     },
     {INVALID_ATTRIBUTE_VALUE_IN, "2", "most", "f"}},
    {"NoLowerBound",
     [](Function& f) {
         f.ofOne = nullptr;
         f.ofMany = Count;
         f.fewest = Function::kAny;
         f.most = Function::kAny;
     },
     {INVALID_ATTRIBUTE_VALUE_IN, "any", "fewest", "f"}},
    {"MissingNumbersForAKernel",
     [](Function& f) { f.missing = Function::Missing::IS_PASSED; },
     {INVALID_ATTRIBUTE_VALUE_IN, "IS_PASSED", "missing", "f"}},
    {"FewerNumbersForAKernelOfOne",
     [](Function& f) { f.missing = Function::Missing::IS_SKIPPED; },
     {INVALID_ATTRIBUTE_VALUE_IN, "IS_SKIPPED", "missing", "f"}},
};

INSTANTIATE_TEST_SUITE_P(Rows, FunctionLibraryRefuses, testing::ValuesIn(kRefused), NameOfRow());

TEST(FunctionLibrary, OfTheHostIsOneForTheProcess) {
    EXPECT_EQ(&FunctionLibrary::OfHost(), &FunctionLibrary::OfHost());
    EXPECT_EQ(FunctionLibrary::OfHost().Find("half"), nullptr);
}

TEST(FunctionLibraryThreads, ReadSideBySide) {
    FunctionLibrary library;
    for (int i = 0; i < 100; ++i) {
        library.Add(OfOne("half" + std::to_string(i)));
    }
    std::vector<int> found(4);
    std::vector<std::thread> threads;
    threads.reserve(found.size());
    for (int& each : found) {
        threads.emplace_back([&each, &library] {
            for (int i = 0; i < 1000; ++i) {
                const Function* const function = library.Find("half" + std::to_string(i % 100));
                each += function != nullptr && library.Find(1000 + i % 100) == function ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(found, (std::vector<int>(4, 1000)));
}

} // namespace

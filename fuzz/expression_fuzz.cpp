// Any bytes as an expression tree of numeric functions: the document that says it, its evaluation by the walk and by
// the plan, and the evaluation of a clone agree with direct calls of the functions. With the meaning of the standard it
// gives the same in columns as case by case.
#include "roads.h"
#include "run.h"
#include "transform/numbers/kernels.h"

#include <veltrane.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::fuzz;
using namespace veltrane::functions;
using TD = TransformationDictionary;

namespace {

constexpr int kDeepest = 12;
constexpr int kFieldCount = 4;
constexpr int kCaseCount = 3;

/// The value of a node in each case, by direct calls.
using Values = std::array<double, kCaseCount>;

using Arguments = std::vector<double>;

/// A function of the table by direct calls; null where it gives no number, or not from numbers alone.
using Call = double (*)(const Arguments&);

struct Function {
    const char* name;
    int least;
    int most;
    Call call;
};

template <auto F>
double Fold(const Arguments& a) {
    if constexpr (std::is_invocable_v<decltype(F), double, double>) {
        double result = a.size() == 1 ? F(a[0], 0.0) : a[0];
        for (std::size_t i = 1; i < a.size(); ++i) {
            result = F(result, a[i]);
        }
        return result;
    } else {
        double result = F(a[0]);
        for (std::size_t i = 2; i < a.size(); ++i) {
            result = F(result);
        }
        return result;
    }
}

template <bool Answer>
double Compare(const Arguments& a) {
    const bool isEqual = a.size() == 2 && NumericValue::IsEqual(a[0], a[1]);
    return isEqual == Answer ? 1.0 : 0.0;
}

template <bool Answer>
double Member(const Arguments& a) {
    const bool isFound = std::any_of(a.begin() + 1, a.end(), [&a](double x) { return NumericValue::IsEqual(a[0], x); });
    return isFound == Answer ? 1.0 : 0.0;
}

double Choose(const Arguments& a) {
    const std::size_t outcome = NumericValue::IsEqual(a[0], 1.0) ? 1 : 2;
    return outcome < a.size() ? a[outcome] : 0.0;
}

/// The numbers of arguments that a document may give.
struct Counts {
    int least;
    int most;
};

constexpr int ANY = -1;
constexpr Counts UNCHECKED{1, 4};
constexpr Counts NUMBERS(int count) {
    return count == ANY ? UNCHECKED : Counts{count, count};
}

// Whatever takes anything but numbers isn't called.
constexpr Counts MEANS_AND_VARIANCES{};
constexpr Counts TARGET_FIELD{};
constexpr Counts NUMERIC_FIELD{};
constexpr Counts METHOD_SECOND(int) {
    return {};
}
constexpr Counts TEXTS(int) {
    return {};
}
constexpr Counts TEXT_CONSTANTS(int) {
    return {};
}
constexpr Counts TEXT_THEN_NUMBERS(int) {
    return {};
}
constexpr Counts ANYTHING(int) {
    return {};
}

#define VELTRANE_CALL_FOLD(function) Fold<function>
#define VELTRANE_CALL_ACCUMULATE(function) function
#define VELTRANE_CALL_PAIR(function, kernel) function
#define VELTRANE_CALL_ARRAY(function, kernel) function
#define VELTRANE_CALL_COMPARE(answer) Compare<answer>
#define VELTRANE_CALL_MEMBER(answer) Member<answer>
#define VELTRANE_CALL_BRANCH Choose
#define VELTRANE_CALL_NUMBER nullptr
#define VELTRANE_CALL_ANY_VALUE nullptr
#define VELTRANE_CALL_RULE(function, steps) VELTRANE_CALL_##steps
#define VELTRANE_CALL_DATE_TIME(function) nullptr
#define VELTRANE_CALL_ONE_TEXT(function) nullptr
#define VELTRANE_CALL_MISSING(answer) nullptr

/// Those that may stand anywhere in a tree: one of no family can't be the argument of another.
std::vector<Function> MakeFunctions() {
    std::vector<Function> functions;
    const auto add = [&functions](const char* name, Call call, Counts counts, bool hasFamily) {
        if (call != nullptr && counts.most > 0 && hasFamily) {
            functions.push_back({name, counts.least, counts.most, call});
        }
    };
#define VELTRANE_FIRST(name, ...) name
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, evaluation, arguments, families, ...)                   \
    add(VELTRANE_FIRST names, VELTRANE_CALL_##evaluation, arguments, std::string(#families) != "NO_FAMILY");
#include <MCVeltrane_900/TransformFunctions.def>
    return functions;
}

const std::vector<Function>& Functions() {
    static const std::vector<Function> functions = MakeFunctions();
    return functions;
}

/// The cases take different branches of a tree.
double FieldValue(int row, int field) {
    static const double kValues[kCaseCount][kFieldCount] = {{1.25, -3.5, 0.0, NumericValue::GetSysmisValue()},
                                                            {1.0, 0.0, 1.0, 2.0},
                                                            {0.0, NumericValue::GetSysmisValue(), 1.0, 1.25}};
    return kValues[row][field];
}

Values FieldValues(int field) {
    Values values{};
    for (int row = 0; row < kCaseCount; ++row) {
        values[static_cast<std::size_t>(row)] = FieldValue(row, field);
    }
    return values;
}

Values MakeLeaf(Bytes& bytes, std::string& xml) {
    const int choice = bytes.Take();
    char text[64];
    if (choice < 128) {
        const int field = choice % kFieldCount;
        std::snprintf(text, sizeof text, "<FieldRef field=\"x%d\"/>", field);
        xml += text;
        return FieldValues(field);
    }
    const double number = static_cast<std::int8_t>(bytes.Take()) / 8.0;
    std::snprintf(text, sizeof text, "<Constant dataType=\"double\">%.6f</Constant>", number);
    xml += text;
    return {number, number, number};
}

/// Appends to the document what the next node says.
Values MakeNode(Bytes& bytes, int depth, std::string& xml) {
    const int choice = bytes.Take();
    if (depth > 0 && (depth >= kDeepest || choice >= 160 || bytes.next == bytes.end)) {
        return MakeLeaf(bytes, xml);
    }
    const Function& function = Functions()[static_cast<std::size_t>(choice) % Functions().size()];
    const int spread = function.most - function.least + 1;
    const int count = function.least + bytes.Take() % spread;
    xml.append("<Apply function=\"").append(function.name).append("\">");
    std::array<Arguments, kCaseCount> arguments;
    for (Arguments& row : arguments) {
        row.reserve(static_cast<std::size_t>(count));
    }
    for (int i = 0; i < count; ++i) {
        const Values child = MakeNode(bytes, depth + 1, xml);
        for (std::size_t row = 0; row < kCaseCount; ++row) {
            arguments[row].push_back(child[row]);
        }
    }
    xml += "</Apply>";
    Values values{};
    for (std::size_t row = 0; row < kCaseCount; ++row) {
        values[row] = function.call(arguments[row]);
    }
    return values;
}

void RequireSame(double found, double expected) {
    const bool same = found == expected || (std::isnan(found) && std::isnan(expected));
    if (!same) {
        std::fprintf(stderr, "found %.17g, expected %.17g\n", found, expected);
        __builtin_trap();
    }
}

/// What stands in front of the expression.
std::string Head() {
    std::string head = "<PMML version=\"4.1\"><DataDictionary numberOfFields=\"" + std::to_string(kFieldCount) + "\">";
    for (int i = 0; i < kFieldCount; ++i) {
        head += "<DataField name=\"x" + std::to_string(i) + "\" optype=\"continuous\" dataType=\"double\"/>";
    }
    return head + "</DataDictionary><TransformationDictionary><DerivedField name=\"d\" optype=\"continuous\" "
                  "dataType=\"double\">";
}

struct Expression {
    std::string document;
    Values expected;
};

Expression MakeExpression(Bytes bytes) {
    static const std::string kHead = Head();
    constexpr std::size_t kUsualSize = 4096;
    Expression made;
    made.document.reserve(kUsualSize);
    made.document = kHead;
    made.expected = MakeNode(bytes, 0, made.document);
    made.document += "</DerivedField></TransformationDictionary></PMML>";
    return made;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    if (size < 2) {
        return 0;
    }
    constexpr std::size_t kMostBytes = 32; // trees of this size are read a thousand times a second
    const Expression made = MakeExpression({data, data + std::min(size, kMostBytes)});
    std::istringstream in(made.document);
    ScoreDictionary* fields = nullptr;
    std::unique_ptr<TransformationDictionary> derived(
        ModelFactory::GetTransformationDictionaryFromXML(in, fields, "UTF-8"));
    const std::unique_ptr<ScoreDictionary> owner(fields);
    CaseRecord record;
    for (int i = 0; i < kFieldCount; ++i) {
        record.Add("x" + std::to_string(i), new NumericValue);
    }
    const auto takeCase = [&record](int round) {
        for (int i = 0; i < kFieldCount; ++i) {
            record.SetValue(i, FieldValue(round % kCaseCount, i));
        }
    };
    const auto expected = [&made](int round) { return made.expected[static_cast<std::size_t>(round % kCaseCount)]; };
    // The first round of the cases resolves the leaves of all branches, the second one goes by the plan.
    for (int round = 0; round < 2 * kCaseCount; ++round) {
        takeCase(round);
        RequireSame(derived->GetValuesForDerivedVars(&record, fields)->Get("d")->GetDouble(), expected(round));
    }
    const std::unique_ptr<ScoreDictVar> clone(derived->GetVar("d")->Clone());
    derived.reset();
    auto& var = static_cast<TransformVar&>(*clone);
    for (int round = 0; round < 2 * kCaseCount; ++round) {
        takeCase(round);
        RequireSame(var.GetTransformedValue(&record, fields, nullptr)->GetDouble(), expected(round));
    }
    // With the meaning of the standard, for which some of the functions have other names or arguments.
    MayFail([&] { RequireSameTransformations(made.document); });
    return 0;
}

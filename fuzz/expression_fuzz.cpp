// Any bytes as an expression tree of numeric functions: the document that says
// it, its evaluation by the walk and by the plan, and the evaluation of a clone
// agree with direct calls of the functions.
#include "run.h"

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
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::fuzz;
using Functions = TransformationDictionary;

namespace {

constexpr int kDeepest = 12;
constexpr int kFieldCount = 4;
constexpr int kCaseCount = 3;

/// What one node says in the document, and its value in each case by direct
/// calls.
struct Node {
    std::string xml;
    std::array<double, kCaseCount> values;
};

using Arguments = std::vector<double>;

struct Function {
    const char* name;
    int least;
    int most;
    double (*call)(const Arguments&);
};

template <double (*F)(double)>
double One(const Arguments& a) {
    return F(a[0]);
}

template <double (*F)(double, double)>
double Two(const Arguments& a) {
    return F(a[0], a[1]);
}

double Power(const Arguments& a) {
    const double missing = NumericValue::GetSysmisValue();
    return a[0] == missing || a[1] == missing ? missing : std::pow(a[0], a[1]);
}

double Choose(const Arguments& a) {
    return NumericValue::IsEqual(a[0], 1.0) ? a[1] : a[2];
}

double Equal(const Arguments& a) {
    return NumericValue::IsEqual(a[0], a[1]) ? 1.0 : 0.0;
}

double NotEqual(const Arguments& a) {
    return 1.0 - Equal(a);
}

double IsIn(const Arguments& a) {
    const bool isFound = std::any_of(a.begin() + 1, a.end(), [&a](double x) { return NumericValue::IsEqual(a[0], x); });
    return isFound ? 1.0 : 0.0;
}

double IsNotIn(const Arguments& a) {
    return 1.0 - IsIn(a);
}

// Logic functions take any child; the rest only children that give numbers,
// which all of these but greaterOrEqual do.
const Function kFunctions[] = {
    {"+", 2, 2, Two<Functions::Plus>},
    {"-", 2, 2, Functions::Minus},
    {"*", 2, 2, Functions::Multiply},
    {"/", 2, 2, Functions::Divided},
    {"pow", 2, 2, Power},
    {"abs", 1, 1, One<Functions::Abs>},
    {"exp", 1, 1, One<Functions::Exp>},
    {"log10", 1, 1, One<Functions::Log10>},
    {"ln", 1, 1, One<Functions::Ln>},
    {"mod", 2, 2, Two<Functions::Mod>},
    {"round", 1, 1, One<Functions::Rnd>},
    {"sqrt", 1, 1, One<Functions::Sqrt>},
    {"trunc", 1, 1, One<Functions::Trunc>},
    {"floor", 1, 1, One<Functions::Floor>},
    {"ceil", 1, 1, One<Functions::Ceil>},
    {"product", 1, 4, Functions::ProductOperator},
    {"min", 1, 4, Functions::Min},
    {"max", 1, 4, Functions::Max},
    {"mean", 1, 4, Functions::Mean},
    {"median", 1, 4, Functions::MedianOperator},
    {"sum", 1, 4, Functions::Sum},
    {"sd", 1, 4, Functions::Sd},
    {"variance", 1, 4, Functions::Variance},
    {"cdf.normal", 3, 3, Functions::CdfNormal},
    {"pdf.normal", 3, 3, Functions::PdfNormal},
    {"idf.normal", 3, 3, Functions::IdfNormal},
    {"cdfnorm", 1, 1, One<Functions::CdfNorm>},
    {"stdNormalPDF", 1, 1, Functions::stdNormalPDF},
    {"erf", 1, 1, Functions::Erf},
    {"lessThan", 2, 2, Functions::lessThan},
    {"greaterThan", 2, 2, Functions::greaterThan},
    {"and", 1, 4, Functions::AndOperator},
    {"or", 1, 4, Functions::OrOperator},
    {"not", 1, 1, Functions::NotOperator},
    {"threshold", 2, 2, Two<Functions::Threshold>},
    {"if", 3, 3, Choose},
    {"equal", 2, 2, Equal},
    {"notEqual", 2, 2, NotEqual},
    {"isIn", 2, 4, IsIn},
    {"isNotIn", 2, 4, IsNotIn},
};

/// The cases take different branches of a tree.
double FieldValue(int row, int field) {
    static const double kValues[kCaseCount][kFieldCount] = {{1.25, -3.5, 0.0, NumericValue::GetSysmisValue()},
                                                            {1.0, 0.0, 1.0, 2.0},
                                                            {0.0, NumericValue::GetSysmisValue(), 1.0, 1.25}};
    return kValues[row][field];
}

std::array<double, kCaseCount> FieldValues(int field) {
    std::array<double, kCaseCount> values{};
    for (int row = 0; row < kCaseCount; ++row) {
        values[static_cast<std::size_t>(row)] = FieldValue(row, field);
    }
    return values;
}

Node MakeLeaf(Bytes& bytes) {
    const int choice = bytes.Take();
    if (choice < 128) {
        const int field = choice % kFieldCount;
        return {"<FieldRef field=\"x" + std::to_string(field) + "\"/>", FieldValues(field)};
    }
    const double number = static_cast<std::int8_t>(bytes.Take()) / 8.0;
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", number);
    return {std::string("<Constant dataType=\"double\">") + text + "</Constant>", {number, number, number}};
}

Node MakeNode(Bytes& bytes, int depth) {
    const int choice = bytes.Take();
    if (depth > 0 && (depth >= kDeepest || choice >= 160 || bytes.next == bytes.end)) {
        return MakeLeaf(bytes);
    }
    const Function& function = kFunctions[static_cast<std::size_t>(choice) % std::size(kFunctions)];
    const int spread = function.most - function.least + 1;
    const int count = function.least + bytes.Take() % spread;
    Node node{std::string("<Apply function=\"") + function.name + "\">", {}};
    std::array<Arguments, kCaseCount> arguments;
    for (int i = 0; i < count; ++i) {
        const Node child = MakeNode(bytes, depth + 1);
        node.xml += child.xml;
        for (std::size_t row = 0; row < kCaseCount; ++row) {
            arguments[row].push_back(child.values[row]);
        }
    }
    node.xml += "</Apply>";
    for (std::size_t row = 0; row < kCaseCount; ++row) {
        node.values[row] = function.call(arguments[row]);
    }
    return node;
}

void RequireSame(double found, double expected) {
    const bool same = found == expected || (std::isnan(found) && std::isnan(expected));
    if (!same) {
        std::fprintf(stderr, "found %.17g, expected %.17g\n", found, expected);
        __builtin_trap();
    }
}

std::string Document(const std::string& expression) {
    std::string fields;
    for (int i = 0; i < kFieldCount; ++i) {
        fields += "<DataField name=\"x" + std::to_string(i) + "\" optype=\"continuous\" dataType=\"double\"/>";
    }
    return "<PMML version=\"4.1\"><DataDictionary numberOfFields=\"" + std::to_string(kFieldCount) + "\">" + fields +
           "</DataDictionary><TransformationDictionary><DerivedField name=\"d\" "
           "optype=\"continuous\" "
           "dataType=\"double\">" +
           expression + "</DerivedField></TransformationDictionary></PMML>";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    if (size < 2) {
        return 0;
    }
    constexpr std::size_t kMostBytes = 32; // trees of this size are read a thousand times a second
    Bytes bytes{data, data + std::min(size, kMostBytes)};
    const Node root = MakeNode(bytes, 0);
    std::istringstream in(Document(root.xml));
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
    const auto expected = [&root](int round) { return root.values[static_cast<std::size_t>(round % kCaseCount)]; };
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
    return 0;
}

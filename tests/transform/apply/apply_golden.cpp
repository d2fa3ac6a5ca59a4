#include "apply_golden.h"

#include "support/dom.h"
#include "transform/numbers/kernels.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <optional>
#include <ostream>
#include <type_traits>

using namespace MCVeltrane_900;

namespace veltrane::tests {

const GoldenFolder& BuiltInTables() {
    static const GoldenFolder tables("transform/golden");
    return tables;
}

namespace {

template <auto Function>
double Folded(const std::vector<double>& arguments) {
    if constexpr (std::is_invocable_v<decltype(Function), double, double>) {
        return Function(arguments.at(0), arguments.size() > 1 ? arguments[1] : 0.0);
    } else {
        return Function(arguments.at(0));
    }
}

double HandledOutlier(const std::vector<double>& a) {
    return TransformationDictionary::OutlierHandle(a.at(0), static_cast<int>(a.at(1)), a.at(2), a.at(3), a.at(4),
                                                   a.at(5));
}

std::string TableOf(const std::string& enumerator) {
    std::string table = enumerator.substr(std::string("TF_").size());
    std::transform(table.begin(), table.end(), table.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return table;
}

/// What a function of numbers or dates is called by directly, if there is something; nothing for one that gives a text,
/// passes a field on or asks what kind of field it is.
using Direct = double (*)(const std::vector<double>&);
using FoundDirect = std::optional<Direct>;

FoundDirect DirectRule(const std::string& function) {
    return function == "HandleOutlier" ? FoundDirect(HandledOutlier) : std::nullopt;
}

} // namespace

#define VELTRANE_LIST(...) __VA_ARGS__
#define VELTRANE_DIRECT_FOLD(function) FoundDirect(Folded<function>)
#define VELTRANE_DIRECT_ACCUMULATE(function) FoundDirect(function)
#define VELTRANE_DIRECT_PAIR(function, kernel) FoundDirect(function)
#define VELTRANE_DIRECT_ARRAY(function, kernel) FoundDirect(function)
#define VELTRANE_DIRECT_DATE_TIME(function) FoundDirect(nullptr)
#define VELTRANE_DIRECT_ONE_TEXT(function) FoundDirect()
#define VELTRANE_DIRECT_COMPARE(answer) FoundDirect(nullptr)
#define VELTRANE_DIRECT_MEMBER(answer) FoundDirect(nullptr)
#define VELTRANE_DIRECT_MISSING(answer) FoundDirect()
#define VELTRANE_DIRECT_RULE(function, steps) DirectRule(#function)

const std::vector<BuiltIn>& NumericBuiltIns() {
    using namespace functions;
    using TD = TransformationDictionary;
    static const std::vector<BuiltIn> listed = [] {
        std::vector<BuiltIn> all;
        const auto add = [&all](const std::string& table, const std::vector<std::string>& names, FoundDirect direct) {
            if (direct.has_value()) {
                all.push_back({table, names.front(), *direct});
            }
        };
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, evaluation, ...)                                        \
    add(TableOf(#enumerator), {VELTRANE_LIST names}, VELTRANE_DIRECT_##evaluation);
#include <MCVeltrane_900/TransformFunctions.def>
        return all;
    }();
    return listed;
}

void PrintTo(const BuiltIn& function, std::ostream* out) {
    *out << function.literal;
}

/// One document, its fields and the case that it is evaluated on.
class AppliedToFields::Document {
public:
    Document(const std::string& literal, std::size_t count)
        : fTranslator("UTF-8"), fParsed(ParseXml(Text(literal, count))),
          fDictionary(fTranslator.ParseDictionary(fParsed.Find("DataDictionary"), false)),
          fDerived(
              fTranslator.HandleTransformationDictionary(fParsed.Find("TransformationDictionary"), fDictionary.get())) {
        fDerived->SetUpDerivedCaseRecord();
        for (std::size_t i = 0; i < count; ++i) {
            fArguments.push_back(IsOfDates(literal) ? new DateTimeValue(0.0, DateTimeValue::VAL_DATETIME)
                                                    : new NumericValue(0.0));
            fRecord.Add(Name(i), fArguments.back());
        }
        Value();
    }

    void Set(const std::vector<double>& arguments) {
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            fArguments[i]->SetDoubleValue(arguments[i]);
        }
    }

    double Value() { return fDerived->GetValuesForDerivedVars(&fRecord, fDictionary.get())->Get("z")->GetDouble(); }

    double FirstValue() {
        const std::unique_ptr<ScoreDictVar> copy(fDerived->GetVar("z")->Clone());
        auto& field = dynamic_cast<TransformVar&>(*copy);
        return field.GetTransformedValue(&fRecord, fDictionary.get(), fDerived.get())->GetDouble();
    }

private:
    static bool IsOfDates(const std::string& literal) {
        return literal.find("date") != std::string::npos || literal.find("time") != std::string::npos;
    }

    static std::string Name(std::size_t i) { return "x" + std::to_string(i); }

    static std::string Text(const std::string& literal, std::size_t count) {
        const std::string type = IsOfDates(literal) ? "dateTimeSecondsSince[1970]" : "double";
        std::string fields, arguments;
        for (std::size_t i = 0; i < count; ++i) {
            fields += "<DataField name='" + Name(i) + "' optype='continuous' dataType='" + type + "'/>";
            arguments += "<FieldRef field='" + Name(i) + "'/>";
        }
        return "<PMML version='4.1'><DataDictionary numberOfFields='" + std::to_string(count) + "'>" + fields +
               "</DataDictionary><TransformationDictionary><DerivedField name='z' optype='continuous' "
               "dataType='double'><Apply function='" +
               literal + "'>" + arguments + "</Apply></DerivedField></TransformationDictionary></PMML>";
    }

    PMMLTranslator fTranslator;
    ParsedXml fParsed;
    std::unique_ptr<ScoreDictionary> fDictionary;
    std::unique_ptr<TransformationDictionary> fDerived;
    std::vector<NumericValue*> fArguments; ///< owned by the record
    CaseRecord fRecord;
};

AppliedToFields::AppliedToFields(const BuiltIn& function) : fLiteral(function.literal) {}
AppliedToFields::~AppliedToFields() = default;

AppliedToFields::Document& AppliedToFields::WithArguments(const std::vector<double>& arguments) {
    std::unique_ptr<Document>& document = fDocuments[arguments.size()];
    if (document == nullptr) {
        document = std::make_unique<Document>(fLiteral, arguments.size());
    }
    document->Set(arguments);
    return *document;
}

double AppliedToFields::Value(const std::vector<double>& arguments) {
    return WithArguments(arguments).Value();
}

double AppliedToFields::FirstValue(const std::vector<double>& arguments) {
    return WithArguments(arguments).FirstValue();
}

} // namespace veltrane::tests

#include "fields.h"

#include "support/numbers.h"

#include <sstream>

namespace veltrane::tests {

namespace {

std::string Digits(double number) {
    if (number == kMissing) {
        return "SYSMIS";
    }
    std::ostringstream out;
    out.precision(17);
    out << number;
    return out.str();
}

} // namespace

std::string Shown(const TransformVar& field) {
    std::ostringstream out;
    field.Display(out);
    return out.str();
}

std::string Written(const ScoreValue* value) {
    if (value == nullptr) {
        return "null";
    }
    switch (value->GetType()) {
    case ScoreValue::NUMERIC_VALUE:
        return "number " + Digits(value->GetDouble());
    case ScoreValue::DATETIME_VALUE: {
        const auto& date = static_cast<const DateTimeValue&>(*value);
        return "kind " + std::to_string(date.GetDateTimeType()) + " " + date.GetNumericString();
    }
    default:
        return "text '" + value->GetString() + "'";
    }
}

DictVar& DerivedFields::Input(const std::string& name, ScoreDictVar::VariableType type, ScoreValue* value) {
    auto* var = new DictVar(name, type);
    dictionary.AddVar(name, var);
    if (value != nullptr) {
        record.Add(name, value);
    }
    return *var;
}

void DerivedFields::MakeMissing(DictVar& var, double number) {
    auto* missing = new MissingValueSet;
    missing->Add(new Range(new NumericValue(number)));
    var.SetMissingValues(missing);
}

void DerivedFields::MakeMissing(DictVar& var, const std::string& text) {
    auto* missing = new MissingValueSet;
    missing->Add(new Range(new StringValue(text)));
    var.SetMissingValues(missing);
}

TransformVar& DerivedFields::Derived(const std::string& name, ScoreDictVar::VariableType type,
                                     const std::string& source, TD::TransExpression kind) {
    auto* var = new TransformVar(name, type);
    var->AddFieldNameAndTransExpression(source, kind);
    derived.AddVar(name, var);
    derived.AddDerievedVarName(name);
    return *var;
}

} // namespace veltrane::tests

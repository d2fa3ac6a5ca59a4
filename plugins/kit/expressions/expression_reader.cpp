#include "kit/expressions/expression_reader.h"

#include "kit/document/raise.h"
#include "kit/expressions/leaves.h"
#include "kit/expressions/numbers.h"
#include "kit/functions/standard_functions.h"

#include <algorithm>
#include <utility>

namespace veltrane_kit {

namespace {

using veltrane::Function;
using veltrane::FunctionLibrary;

enum class Kind {
    CONSTANT,
    FIELD_REF,
    NORM_CONTINUOUS,
    NORM_DISCRETE,
    DISCRETIZE,
    MAP_VALUES,
    TEXT_INDEX,
    APPLY,
    AGGREGATE,
    LAG
};

constexpr Word<Kind> kKinds[] = {
    {u"Constant", Kind::CONSTANT},
    {u"FieldRef", Kind::FIELD_REF},
    {u"NormContinuous", Kind::NORM_CONTINUOUS},
    {u"NormDiscrete", Kind::NORM_DISCRETE},
    {u"Discretize", Kind::DISCRETIZE},
    {u"MapValues", Kind::MAP_VALUES},
    {u"TextIndex", Kind::TEXT_INDEX},
    {u"Apply", Kind::APPLY},
    {u"Aggregate", Kind::AGGREGATE},
    {u"Lag", Kind::LAG},
};

enum class Treatment { RETURN_INVALID, AS_IS, AS_MISSING };

constexpr Word<Treatment> kTreatments[] = {
    {u"returnInvalid", Treatment::RETURN_INVALID},
    {u"asIs", Treatment::AS_IS},
    {u"asMissing", Treatment::AS_MISSING},
};

const Word<Kind>* KindOf(const Element& element) {
    for (const Word<Kind>& kind : kKinds) {
        if (element.Is(kind.text)) {
            return &kind;
        }
    }
    return nullptr;
}

const Function* FindFunction(std::string_view name) {
    const Function* function = StandardFunctions().Find(name);
    return function != nullptr ? function : FunctionLibrary::OfHost().Find(name);
}

/// What a replacement of a function's result is read as: its own type, where that isn't left to the arguments.
std::optional<DataType> TypeOfReplacement(const Function& function) {
    return function.result == Function::Result::TEXT ? std::optional<DataType>(DataType::STRING) : std::nullopt;
}

/// The parameters of a function that the document defines: nothing else is known inside it.
class ParameterScope : public FieldScope {
public:
    void Add(const std::string& name, const DefinedFunction::Parameter& parameter) {
        fParameters.insert_or_assign(name, Found{parameter.slot, parameter.type});
    }

    Found Require(const Element& element, const XMLCh* attribute) override {
        const auto found = fParameters.find(element.Text(attribute));
        if (found == fParameters.end()) {
            Raise<Message::MISSING_VARIABLE>(element.Text(attribute), "DefineFunction");
        }
        return found->second;
    }

private:
    std::map<std::string, Found> fParameters;
};

/// For as long as a function is read, another scope and no expressions that were counted before.
template <typename T>
class Exchanged {
public:
    Exchanged(T& variable, T value) : fVariable(variable), fOld(std::exchange(variable, value)) {}
    ~Exchanged() { fVariable = fOld; }
    Exchanged(const Exchanged&) = delete;
    Exchanged& operator=(const Exchanged&) = delete;

private:
    T& fVariable;
    T fOld;
};

} // namespace

Value TextType::Read(std::string_view text) const {
    if (stated) {
        return ReadValue(text, *stated);
    }
    const Value value = wanted ? ReadValue(text, *wanted) : Value();
    return value.isMissing ? ReadUntyped(text) : value;
}

void DefinedFunctions::Add(const Element& parent) {
    if (!parent) {
        return;
    }
    for (const Element child : parent.Children()) {
        if (!child.Is(u"DefineFunction")) {
            continue;
        }
        const std::string name = child.Text(u"name");
        Entry entry;
        entry.element = child;
        if (FindFunction(name) != nullptr || !fEntries.emplace(name, std::move(entry)).second) {
            Raise<Message::DUPLICATE_DEFINITION>("DefineFunction", name, parent.Tag());
        }
    }
}

bool ExpressionReader::IsExpression(const Element& element) {
    return KindOf(element) != nullptr;
}

ExpressionPtr ExpressionReader::ReadOnly(const Element& parent, std::optional<DataType> type) {
    const Exchanged<std::size_t> evaluations(fEvaluations, 0);
    const Exchanged<std::size_t> level(fLevel, 0);
    const Exchanged<std::size_t> lowest(fLowest, 0);
    return ReadAmong(parent, type);
}

ExpressionPtr ExpressionReader::ReadAmong(const Element& parent, std::optional<DataType> type) {
    Element found;
    for (const Element child : parent.Children()) {
        if (!IsExpression(child)) {
            continue;
        }
        if (found) {
            Raise<Message::MORE_THAN_ONE_EXPRESSION>(parent.Tag());
        }
        found = child;
    }
    if (!found) {
        Raise<Message::MISSING_NODE_IN>("EXPRESSION", parent.Tag());
    }
    return Read(found, type);
}

ExpressionPtr ExpressionReader::Read(const Element& element, std::optional<DataType> type) {
    const Word<Kind>* kind = KindOf(element);
    if (kind == nullptr) {
        element.RaiseMisplaced();
    }
    const Exchanged<std::size_t> level(fLevel, fLevel + 1);
    const Exchanged<std::size_t> depth(fFunctions.fDepth, fFunctions.fDepth + 1);
    Count(element, 1, 0);
    switch (kind->meaning) {
    case Kind::CONSTANT:
        return ReadConstant(element, type);
    case Kind::FIELD_REF:
        return ReadFieldRef(element);
    case Kind::NORM_CONTINUOUS:
        return ReadNormContinuous(element);
    case Kind::NORM_DISCRETE:
        return ReadNormDiscrete(element);
    case Kind::DISCRETIZE:
        return ReadDiscretize(element, type);
    case Kind::MAP_VALUES:
        return ReadMapValues(element, type);
    case Kind::TEXT_INDEX:
        return ReadTextIndex(element);
    case Kind::AGGREGATE:
        return ReadAggregate(element);
    case Kind::LAG:
        return ReadLag(element);
    default:
        return ReadApply(element);
    }
}

/// @param levels below the one that is being read
void ExpressionReader::Count(const Element& element, std::size_t evaluations, std::size_t levels) {
    fEvaluations += evaluations;
    fLowest = std::max(fLowest, fLevel + levels);
    if (fEvaluations > kMostEvaluations || fLowest > kDeepest || fFunctions.fDepth > kDeepest) {
        Raise<Message::PROCESSING_VARIABLE_FAILED>(element.Tag(), element.TextOr(u"function", ""));
    }
}

ExpressionPtr ExpressionReader::ReadConstant(const Element& element, std::optional<DataType> type) {
    if (element.FlagOr(u"missing", false)) {
        return std::make_unique<ConstantExpression>(MakeNumber(kMissing, DataType::DOUBLE));
    }
    const std::string text = element.Content();
    const Value value = TextType{ReadDataType(element, u"dataType"), type}.Read(text);
    if (value.isMissing) {
        Raise<Message::INVALID_CONTENT>(text, element.Tag());
    }
    return std::make_unique<ConstantExpression>(value);
}

ExpressionPtr ExpressionReader::ReadField(const Element& element, const XMLCh* attribute) {
    const FieldScope::Found found = fScope->Require(element, attribute);
    return std::make_unique<FieldExpression>(found.slot, found.type);
}

/// A text of an attribute as a value of a type, or of the type that it writes.
/// @param text keeps the value's text
/// @return a missing value where the attribute is absent
Value ExpressionReader::ReadText(const Element& element, const XMLCh* attribute, const TextType& type,
                                 std::string& text) {
    if (!element.Has(attribute)) {
        return {};
    }
    text = element.AnyText(attribute);
    const Value value = type.Read(text);
    if (value.isMissing) {
        element.RaiseInvalid(attribute);
    }
    return value;
}

double ExpressionReader::NumberOrMissing(const Element& element, const XMLCh* attribute) {
    std::string text;
    return ReadText(element, attribute, {DataType::DOUBLE, {}}, text).number;
}

ExpressionPtr ExpressionReader::ReadFieldRef(const Element& element) {
    ExpressionPtr field = ReadField(element, u"field");
    std::string text;
    const Value replacement = ReadText(element, u"mapMissingTo", {field->Type(), {}}, text);
    return replacement.isMissing ? std::move(field)
                                 : std::make_unique<DefaultExpression>(std::move(field), replacement);
}

ExpressionPtr ExpressionReader::ReadApply(const Element& element) {
    Expressions arguments;
    for (const Element child : element.Children()) {
        arguments.push_back(Read(child, std::nullopt));
    }
    element.OneOfOr(u"invalidValueTreatment", kTreatments, Treatment::RETURN_INVALID);
    ExpressionPtr call = ReadCall(element, std::move(arguments));
    const Function* function = FindFunction(element.Text(u"function"));
    std::string text;
    const Value replacement = ReadText(element, u"defaultValue",
                                       {function == nullptr ? std::nullopt : TypeOfReplacement(*function), {}}, text);
    return replacement.isMissing ? std::move(call) : std::make_unique<DefaultExpression>(std::move(call), replacement);
}

ExpressionPtr ExpressionReader::ReadCall(const Element& element, Expressions arguments) {
    const std::string name = element.Text(u"function");
    if (const auto defined = fFunctions.fEntries.find(name); defined != fFunctions.fEntries.end()) {
        return ReadDefinedCall(element, defined->second, std::move(arguments));
    }
    const Function* function = FindFunction(name);
    if (function == nullptr) {
        element.RaiseInvalid(u"function");
    }
    if (arguments.size() < function->fewest || arguments.size() > function->most) {
        RaiseArguments(element, arguments.size());
    }
    std::string text;
    const Value mapMissingTo = ReadText(element, u"mapMissingTo", {TypeOfReplacement(*function), {}}, text);
    if (!mapMissingTo.isMissing) {
        return std::make_unique<CallExpression>(*function, std::move(arguments), &mapMissingTo, fLayout);
    }
    if (ExpressionPtr made = MakeNumberExpression(name, arguments)) {
        return made;
    }
    if (ExpressionPtr made = MakeKernelExpression(*function, arguments)) {
        return made;
    }
    return std::make_unique<CallExpression>(*function, std::move(arguments), nullptr, fLayout);
}

void ExpressionReader::RaiseArguments(const Element& element, std::size_t count) {
    Raise<Message::ELEMENT_NUMBER_MISMATCH>(element.Text(u"function"), "function", std::to_string(count), "EXPRESSION",
                                            element.Tag());
}

ExpressionPtr ExpressionReader::ReadDefinedCall(const Element& element, DefinedFunctions::Entry& entry,
                                                Expressions arguments) {
    if (entry.state == DefinedFunctions::State::BEING_READ) {
        element.RaiseInvalid(u"function");
    }
    if (entry.state == DefinedFunctions::State::UNREAD) {
        ReadDefined(entry);
    }
    const DefinedFunction& function = entry.function;
    if (arguments.size() != function.parameters.size()) {
        RaiseArguments(element, arguments.size());
    }
    Count(element, function.cost, function.depth);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        arguments[i] = AsType(std::move(arguments[i]), function.parameters[i].type, fLayout);
    }
    std::string text;
    const Value mapMissingTo = ReadText(element, u"mapMissingTo", {function.body->Type(), {}}, text);
    return std::make_unique<DefinedCallExpression>(function, std::move(arguments),
                                                   mapMissingTo.isMissing ? nullptr : &mapMissingTo, fLayout);
}

void ExpressionReader::ReadDefined(DefinedFunctions::Entry& entry) {
    entry.state = DefinedFunctions::State::BEING_READ;
    ParameterScope scope;
    for (const Element child : entry.element.Children()) {
        if (child.Is(u"ParameterField")) {
            const DefinedFunction::Parameter parameter{fLayout.AddField(), ReadDataType(child, u"dataType")};
            scope.Add(child.Text(u"name"), parameter);
            entry.function.parameters.push_back(parameter);
        }
    }
    const Exchanged<FieldScope*> inside(fScope, &scope);
    const Exchanged<std::size_t> evaluations(fEvaluations, 0);
    const Exchanged<std::size_t> level(fLevel, 0);
    const Exchanged<std::size_t> lowest(fLowest, 0);
    const std::optional<DataType> type = ReadDataType(entry.element, u"dataType");
    entry.function.body = AsType(ReadAmong(entry.element, type), type, fLayout);
    entry.function.cost = fEvaluations;
    entry.function.depth = fLowest;
    entry.state = DefinedFunctions::State::READ;
}

} // namespace veltrane_kit

#include "kit/expressions/expression_reader.h"

#include "kit/document/raise.h"
#include "kit/expressions/leaves.h"
#include "kit/expressions/numbers.h"
#include "kit/functions/standard_functions.h"

#include <algorithm>
#include <iterator>
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

bool IsMissingConstant(const Expression& expression) {
    const Value* constant = expression.Constant();
    return constant != nullptr && constant->isMissing;
}

/// What a replacement of a function's result is read as: its type. Where that is an argument's, and arguments of
/// several types or missing constants alone don't tell it, it is the one that the result is wanted for.
std::optional<DataType> TypeOfReplacement(const Function& function, const Expressions& arguments,
                                          std::optional<DataType> wanted) {
    const std::optional<DataType> type = ResultType(function, arguments);
    if (function.result != Function::Result::ARGUMENT) {
        return type;
    }
    const std::ptrdiff_t first = function.name == "if" ? 1 : 0;
    const bool isTold = type && std::any_of(arguments.begin() + first, arguments.end(),
                                            [](const auto& argument) { return !IsMissingConstant(*argument); });
    return isTold ? type : wanted;
}

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

/// The parameters of a function that the document defines: nothing else is known inside it.
class ExpressionReader::ParameterScope : public FieldScope {
public:
    void Add(const std::string& name, const DefinedFunction::Parameter& parameter) {
        fParameters.insert_or_assign(name, Found{parameter.slot, parameter.type, nullptr});
    }

    Found Require(const Element& element, const XMLCh* attribute) override {
        const auto found = fParameters.find(element.Text(attribute));
        if (found == fParameters.end()) {
            RaiseAt<Message::MISSING_VARIABLE>(element.Tag(), Narrow(attribute).c_str(), element.Text(attribute),
                                               "DefineFunction");
        }
        return found->second;
    }

private:
    std::map<std::string, Found> fParameters;
};

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
        const auto [place, isNew] = fEntries.emplace(name, std::move(entry));
        if (!isNew || FindFunction(name) != nullptr) {
            Raise<Message::DUPLICATE_DEFINITION>("DefineFunction", name, parent.Tag());
        }
        fInOrder.push_back(&place->second);
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

void ExpressionReader::CheckUncalled(DefinedFunctions& functions, const std::string& encoding) {
    using Entry = DefinedFunctions::Entry;
    std::vector<Entry*> unread;
    std::copy_if(functions.fInOrder.begin(), functions.fInOrder.end(), std::back_inserter(unread),
                 [](const Entry* entry) { return entry->state == DefinedFunctions::State::UNREAD; });
    FrameLayout layout;
    layout.encoding = encoding;
    ParameterScope none;
    ExpressionReader reader(layout, none, functions);
    for (Entry* entry : unread) {
        if (entry->state == DefinedFunctions::State::UNREAD) {
            reader.ReadDefined(*entry);
        }
    }
    for (Entry* entry : unread) {
        entry->state = DefinedFunctions::State::UNREAD;
        entry->function = DefinedFunction();
    }
}

/// The only expression among the children of an element. Here and below, what reading calls itself through keeps little
/// on the stack: its own data and that of the steps that don't lead further down are apart.
Element ExpressionReader::FindAmong(const Element& parent) {
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
    return found;
}

ExpressionPtr ExpressionReader::ReadAmong(const Element& parent, std::optional<DataType> type) {
    return Read(FindAmong(parent), type);
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
        return ReadApply(element, type);
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
    return std::make_unique<FieldExpression>(found.slot, found.type, found.order);
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

ExpressionPtr ExpressionReader::ReadApply(const Element& element, std::optional<DataType> type) {
    Expressions arguments;
    for (const Element child : element.Children()) {
        arguments.push_back(Read(child, std::nullopt));
    }
    element.OneOfOr(u"invalidValueTreatment", kTreatments, Treatment::RETURN_INVALID);
    TextType ofReplacement{{}, type};
    return WithDefault(element, ReadCall(element, std::move(arguments), ofReplacement), ofReplacement);
}

ExpressionPtr ExpressionReader::WithDefault(const Element& element, ExpressionPtr call, const TextType& ofReplacement) {
    std::string text;
    const Value replacement = ReadText(element, u"defaultValue", ofReplacement, text);
    return replacement.isMissing ? std::move(call) : std::make_unique<DefaultExpression>(std::move(call), replacement);
}

/// @param ofReplacement with what its value is wanted for; becomes what a value that stands in for the result is read
/// as
ExpressionPtr ExpressionReader::ReadCall(const Element& element, Expressions arguments, TextType& ofReplacement) {
    DefinedFunctions::Entry* const defined = FindDefined(element);
    if (defined == nullptr) {
        return ReadBuiltInCall(element, std::move(arguments), ofReplacement);
    }
    if (defined->state == DefinedFunctions::State::BEING_READ) {
        element.RaiseInvalid(u"function");
    }
    if (defined->state == DefinedFunctions::State::UNREAD) {
        ReadDefined(*defined);
    }
    return MakeDefinedCall(element, defined->function, std::move(arguments), ofReplacement);
}

DefinedFunctions::Entry* ExpressionReader::FindDefined(const Element& element) {
    const auto found = fFunctions.fEntries.find(element.Text(u"function"));
    return found == fFunctions.fEntries.end() ? nullptr : &found->second;
}

ExpressionPtr ExpressionReader::ReadBuiltInCall(const Element& element, Expressions arguments,
                                                TextType& ofReplacement) {
    const std::string name = element.Text(u"function");
    const Function* function = FindFunction(name);
    if (function == nullptr) {
        element.RaiseInvalid(u"function");
    }
    if (arguments.size() < function->fewest || arguments.size() > function->most) {
        RaiseArguments(element, arguments.size());
    }
    ComparePlaces(name, arguments, fLayout);
    if (name == "if") {
        TypeMissingBranch(arguments);
    }
    ofReplacement.wanted = TypeOfReplacement(*function, arguments, ofReplacement.wanted);
    std::string text;
    const Value mapMissingTo = ReadText(element, u"mapMissingTo", ofReplacement, text);
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

/// A missing constant has no type of its own, so that it doesn't take the other branch's away.
void ExpressionReader::TypeMissingBranch(Expressions& arguments) {
    for (std::size_t i = 1; arguments.size() == 3 && i < 3; ++i) {
        if (IsMissingConstant(*arguments[i])) {
            arguments[i] = AsType(std::move(arguments[i]), arguments[3 - i]->Type(), fLayout);
        }
    }
}

void ExpressionReader::RaiseArguments(const Element& element, std::size_t count) {
    Raise<Message::ELEMENT_NUMBER_MISMATCH>(element.Text(u"function"), "function", std::to_string(count), "EXPRESSION",
                                            element.Tag());
}

ExpressionPtr ExpressionReader::MakeDefinedCall(const Element& element, const DefinedFunction& function,
                                                Expressions arguments, TextType& ofReplacement) {
    if (arguments.size() != function.parameters.size()) {
        RaiseArguments(element, arguments.size());
    }
    Count(element, function.cost, function.depth);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        arguments[i] = AsType(std::move(arguments[i]), function.parameters[i].type, fLayout);
    }
    ofReplacement.stated = function.body->Type();
    std::string text;
    const Value mapMissingTo = ReadText(element, u"mapMissingTo", ofReplacement, text);
    return std::make_unique<DefinedCallExpression>(function, std::move(arguments),
                                                   mapMissingTo.isMissing ? nullptr : &mapMissingTo, fLayout);
}

void ExpressionReader::ReadParameters(DefinedFunctions::Entry& entry, ParameterScope& scope) {
    for (const Element child : entry.element.Children()) {
        if (child.Is(u"ParameterField")) {
            const DefinedFunction::Parameter parameter{fLayout.AddField(), ReadDataType(child, u"dataType")};
            scope.Add(child.Text(u"name"), parameter);
            entry.function.parameters.push_back(parameter);
        }
    }
}

void ExpressionReader::ReadDefined(DefinedFunctions::Entry& entry) {
    entry.state = DefinedFunctions::State::BEING_READ;
    ParameterScope scope;
    ReadParameters(entry, scope);
    const Exchanged<FieldScope*> inside(fScope, &scope);
    const Exchanged<bool> inFunction(fIsInFunction, true);
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

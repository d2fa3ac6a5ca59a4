#include "condition_reader.h"

#include "kit/document/raise.h"
#include "kit/inputs/dictionary_completion.h"

#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <charconv>
#include <memory>
#include <utility>

namespace veltrane_tree {

using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using veltrane_kit::Categories;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Raise;
using veltrane_kit::TruthOf;
using veltrane_kit::Word;

namespace {

constexpr const XMLCh* kOperator = u"operator";
constexpr const XMLCh* kBooleanOperator = u"booleanOperator";
constexpr const XMLCh* kValue = u"value";

constexpr Word<Test> kOperators[] = {
    {u"equal", Test::EQUAL},          {u"notEqual", Test::NOT_EQUAL},
    {u"lessThan", Test::LESS},        {u"lessOrEqual", Test::LESS_OR_EQUAL},
    {u"greaterThan", Test::GREATER},  {u"greaterOrEqual", Test::GREATER_OR_EQUAL},
    {u"isMissing", Test::IS_MISSING}, {u"isNotMissing", Test::IS_NOT_MISSING},
};

constexpr Word<bool> kSetOperators[] = {{u"isIn", true}, {u"isNotIn", false}};

constexpr Word<Test> kCompoundOperators[] = {
    {u"and", Test::AND},
    {u"or", Test::OR},
    {u"xor", Test::XOR},
    {u"surrogate", Test::SURROGATE},
};

/// The comparison of places in an order that stands for one of numbers.
Test OfPlaces(Test test) {
    const int distance = static_cast<int>(Test::PLACE_LESS) - static_cast<int>(Test::LESS);
    return static_cast<Test>(static_cast<int>(test) + distance);
}

/// Whether a field has an order of its own: that of the values that it lists.
bool HasOrder(const ScoreDictVar& var) {
    return var.GetMLevel() == ScoreDictVar::LEVEL_ORDINAL && var.GetVarType() != ScoreDictVar::DATETIME_VAR &&
           var.GetNumberOfCats() > 0;
}

/// The text of a listed value, with all its digits.
std::string ListedText(const ScoreValue& value) {
    if (value.GetType() == ScoreValue::STRING_VALUE) {
        return value.GetString();
    }
    char digits[32];
    return std::string(digits, std::to_chars(digits, digits + sizeof(digits), value.GetDouble()).ptr);
}

bool Holds(Test test, double x, double operand) {
    switch (test) {
    case Test::LESS:
        return x < operand;
    case Test::LESS_OR_EQUAL:
        return x <= operand;
    case Test::GREATER:
        return x > operand;
    default:
        return x >= operand;
    }
}

Condition OnSlot(Test test, int slot) {
    Condition condition;
    condition.test = test;
    condition.slot = slot;
    return condition;
}

} // namespace

bool ConditionReader::IsPredicate(const Element& element) {
    for (const XMLCh* tag : {u"SimplePredicate", u"CompoundPredicate", u"SimpleSetPredicate", u"True", u"False"}) {
        if (element.Is(tag)) {
            return true;
        }
    }
    return false;
}

Condition ConditionReader::Read(const Element& element) {
    if (element.Is(u"SimplePredicate")) {
        return ReadSimple(element);
    }
    if (element.Is(u"SimpleSetPredicate")) {
        return ReadSet(element);
    }
    if (element.Is(u"CompoundPredicate")) {
        return ReadCompound(element);
    }
    return OnSlot(element.Is(u"True") ? Test::ALWAYS : Test::NEVER, 0);
}

Condition ConditionReader::ReadSimple(const Element& element) {
    const int slot = RequireSlot(element);
    const Test test = element.OneOf(kOperator, kOperators);
    if (test == Test::IS_MISSING || test == Test::IS_NOT_MISSING) {
        if (element.Has(kValue)) {
            Raise<Message::CONFLICTING_ATTRIBUTES>(veltrane_kit::Narrow(kValue), element.Text(kOperator));
        }
        return OnSlot(test, slot);
    }
    const bool isOrder = test != Test::EQUAL && test != Test::NOT_EQUAL;
    if (isOrder && fInputs.IsBoolean(slot) && !TruthTexts(slot).empty()) {
        return CompareTruth(element, slot, test);
    }
    if (isOrder && HasOrder(fInputs.Var(slot))) {
        return ComparePlace(element, slot, test);
    }
    if (fInputs.IsNumeric(slot)) {
        return CompareNumber(element, slot, test);
    }
    if (isOrder) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(kOperator), veltrane_kit::Narrow(kOperator), element.Tag(),
                                             "equal, notEqual, isMissing, isNotMissing");
    }
    Condition condition = OnSlot(test == Test::EQUAL ? Test::IS_CATEGORY : Test::IS_NOT_CATEGORY, slot);
    condition.category = fInputs.CategoryOf(slot, element, kValue);
    return condition;
}

/// The slot of the field. One with an order gets its codes before a condition mentions a single value.
int ConditionReader::RequireSlot(const Element& element) {
    const int slot = fInputs.RequireSlot(element, u"field");
    if (HasOrder(fInputs.Var(slot)) && fListed.count(slot) == 0) {
        fListed.emplace(slot, LearnListed(slot));
    }
    return slot;
}

Condition ConditionReader::CompareNumber(const Element& element, int slot, Test test) {
    Condition condition = OnSlot(test, slot);
    condition.number = ReadNumber(element, slot);
    return condition;
}

/// The order of truth values: false is below true, and a number lies where 0 and 1 put it. It holds for the texts of
/// the field that it holds for as numbers; other texts are neither below nor above.
Condition ConditionReader::CompareTruth(const Element& element, int slot, Test test) {
    double operand = 0.0;
    if (const auto truth = TruthOf(element.AnyText(kValue))) {
        operand = *truth;
    } else if (!veltrane_kit::ReadNumber(element.Raw(kValue), operand)) {
        element.RaiseInvalid(kValue);
    }
    std::vector<int> codes;
    for (const std::string& text : TruthTexts(slot)) {
        if (Holds(test, *TruthOf(text), operand)) {
            codes.push_back(fInputs.CategoryOf(slot, text));
        }
    }
    Condition condition = OnSlot(test, slot);
    fConditions.SetCategories(condition, codes, true);
    return condition;
}

/// The spellings of a truth value that a boolean field can hold: those that it lists, or all where it lists nothing.
std::vector<std::string> ConditionReader::TruthTexts(int slot) const {
    const auto* labels = fInputs.Var(slot).GetValueLabels();
    if (labels == nullptr || labels->Size() == 0) {
        return {"true", "false", "TRUE", "FALSE", "True", "False", "1", "0"};
    }
    std::vector<std::string> texts;
    for (const auto* label : labels->GetAllValueLabels()) {
        const std::string text = label->GetValue()->GetString();
        if (TruthOf(text)) {
            texts.push_back(text);
        }
    }
    return texts;
}

/// @throws VTException 260153 for a value that the field doesn't list: it has no place in the order
Condition ConditionReader::ComparePlace(const Element& element, int slot, Test test) {
    const int listed = fListed.at(slot);
    Condition condition = OnSlot(OfPlaces(test), slot);
    condition.place = {fInputs.CategoryOf(slot, element, kValue), listed};
    if (condition.place.code >= listed) {
        element.RaiseInvalid(kValue);
    }
    return condition;
}

double ConditionReader::ReadNumber(const Element& element, int slot) {
    double number = 0.0;
    if (fInputs.Var(slot).GetVarType() == ScoreDictVar::kNUMERIC_VAR &&
        veltrane_kit::ReadNumber(element.Raw(kValue), number)) {
        return number;
    }
    if (!NumberOf(slot, element.AnyText(kValue), number)) {
        element.RaiseInvalid(kValue);
    }
    return number;
}

/// What a document writes for a number or a date-time; a boolean is 1 or 0.
bool ConditionReader::NumberOf(int slot, const std::string& text, double& number) const {
    const ScoreDictVar& var = fInputs.Var(slot);
    const std::unique_ptr<ScoreValue> value(veltrane_kit::MakeValue(var, text));
    if (value != nullptr) {
        number = value->GetDouble();
        return true;
    }
    number = text == "true" ? 1.0 : 0.0;
    return var.GetVarType() == ScoreDictVar::kNUMERIC_VAR && (text == "true" || text == "false");
}

/// Gives the values that a field lists the first codes, in their order.
/// @return how many there are
int ConditionReader::LearnListed(int slot) {
    const auto* labels = fInputs.Var(slot).GetValueLabels();
    int listed = 0;
    for (const auto* label : labels->GetAllValueLabels()) {
        const int code = fInputs.CategoryOf(slot, ListedText(*label->GetValue()));
        listed = code >= listed ? code + 1 : listed;
    }
    return listed;
}

Condition ConditionReader::ReadSet(const Element& element) {
    const int slot = RequireSlot(element);
    const bool isIn = element.OneOf(kBooleanOperator, kSetOperators);
    const Element array = element.RequireChild(u"Array");
    const bool isNumeric = fInputs.IsNumeric(slot);
    std::vector<double> numbers;
    std::vector<int> codes;
    for (const std::string& item : fTranslator.GetArrayElements(array.Dom(), array.Raw(u"type"), nullptr)) {
        double number = 0.0;
        const int code = isNumeric ? Categories::kUnknown : fInputs.CategoryOf(slot, item);
        if (isNumeric ? !NumberOf(slot, item, number) : code == Categories::kUnknown) {
            Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(item, array.Tag(), element.Tag());
        }
        numbers.push_back(number);
        codes.push_back(code);
    }
    if (isNumeric) {
        Condition condition = OnSlot(isIn ? Test::IN_NUMBERS : Test::NOT_IN_NUMBERS, slot);
        condition.span = fConditions.AddNumbers(std::move(numbers));
        return condition;
    }
    Condition condition = OnSlot(Test::IN_CATEGORIES, slot);
    fConditions.SetCategories(condition, codes, isIn);
    return condition;
}

Condition ConditionReader::ReadCompound(const Element& element) {
    Condition condition = OnSlot(element.OneOf(kBooleanOperator, kCompoundOperators), 0);
    int count = 0;
    for (const Element child : element.Children()) {
        if (IsPredicate(child)) {
            ++count;
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    if (count == 0) {
        Raise<Message::NO_CHILD_ELEMENT>(element.Tag());
    }
    condition.span = fConditions.AddParts(count);
    int part = condition.span.first;
    for (const Element child : element.Children()) {
        if (IsPredicate(child)) {
            fConditions.SetPart(part++, Read(child));
        }
    }
    return condition;
}

} // namespace veltrane_tree

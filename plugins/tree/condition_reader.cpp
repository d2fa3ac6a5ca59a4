#include "condition_reader.h"

#include "kit/document/array_words.h"
#include "kit/document/raise.h"

#include <utility>

namespace veltrane_tree {

using veltrane_kit::DataType;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Raise;
using veltrane_kit::Value;
using veltrane_kit::ValueCodes;
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
    if (isOrder && HasOrder(slot)) {
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
    if (HasOrder(slot) && fListed.count(slot) == 0) {
        fListed.emplace(slot, LearnListed(slot));
    }
    return slot;
}

Condition ConditionReader::CompareNumber(const Element& element, int slot, Test test) {
    Condition condition = OnSlot(test, slot);
    condition.number = ReadNumber(element, slot);
    return condition;
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
    if (!NumberOf(slot, element.AnyText(kValue), number)) {
        element.RaiseInvalid(kValue);
    }
    return number;
}

/// What a document writes for a value of the field. Numbers lie anywhere, also between those of an integer field and
/// between false and true.
bool ConditionReader::NumberOf(int slot, const std::string& text, double& number) const {
    const DataType type = fInputs.Type(slot);
    Value value = veltrane_kit::IsNumber(type) ? Value() : fInputs.ValueIn(slot, text);
    if (value.isMissing && !veltrane_kit::IsMoment(type)) {
        value = veltrane_kit::ReadValue(text, DataType::DOUBLE);
    }
    number = value.number;
    return !value.isMissing;
}

/// Whether a field has an order of its own: that of the values that it lists.
bool ConditionReader::HasOrder(int slot) {
    return !fInputs.Listed(slot).empty();
}

/// Gives the values that a field lists the first codes, in their order.
/// @return how many there are
int ConditionReader::LearnListed(int slot) {
    int listed = 0;
    for (const Value& value : fInputs.Listed(slot)) {
        const int code = fInputs.CategoryOf(slot, value);
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
    for (const std::string& item : veltrane_kit::ArrayWords(array)) {
        double number = 0.0;
        const int code = isNumeric ? ValueCodes::kUnknown : fInputs.CategoryOf(slot, item);
        if (isNumeric ? !NumberOf(slot, item, number) : code == ValueCodes::kUnknown) {
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

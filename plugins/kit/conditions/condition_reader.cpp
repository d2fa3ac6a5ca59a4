#include "kit/conditions/condition_reader.h"

#include "kit/document/array_words.h"
#include "kit/document/raise.h"
#include "kit/values/single_precision.h"

#include <charconv>
#include <limits>
#include <utility>

namespace veltrane_kit {

namespace {

constexpr const XMLCh* kField = u"field";
constexpr const XMLCh* kOperator = u"operator";
constexpr const XMLCh* kBooleanOperator = u"booleanOperator";
constexpr const XMLCh* kValue = u"value";
constexpr float kInfinite = std::numeric_limits<float>::infinity();

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

Condition WithNumber(int slot, Test test, double number) {
    Condition condition = OnSlot(test, slot);
    condition.number = number;
    return condition;
}

/// Reads a number as nearly all are written: digits with a minus and a point at most. What these say doesn't depend on
/// who reads them.
/// @return false, and the number untouched, for any other text
bool ReadPlainNumber(const XMLCh* text, double& number) {
    constexpr std::size_t kMost = 32;
    char digits[kMost];
    std::size_t length = 0;
    for (; text[length] != 0; ++length) {
        const XMLCh unit = text[length];
        const bool isPlain = (unit >= u'0' && unit <= u'9') || unit == u'.' || (unit == u'-' && length == 0);
        if (!isPlain || length == kMost) {
            return false;
        }
        digits[length] = static_cast<char>(unit);
    }
    const std::size_t first = length > 0 && digits[0] == '-' ? 1 : 0;
    if (first == length || digits[first] == '.') {
        return false;
    }
    double read = 0.0;
    const auto [end, error] = std::from_chars(digits, digits + length, read);
    if (error != std::errc() || end != digits + length) {
        return false;
    }
    number = read;
    return true;
}

/// The infinite numbers in the words of XML Schema, and in those of producers in Java.
bool ReadInfinite(const std::string& text, double& number) {
    const bool isNegative = !text.empty() && text.front() == '-';
    const std::string word = text.substr(isNegative ? 1 : 0);
    number = isNegative ? -kInfinite : kInfinite;
    return word == "INF" || word == "Infinity";
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

Element ConditionReader::RequirePredicate(const Element& parent) {
    Element predicate;
    for (const Element child : parent.Children()) {
        if (!IsPredicate(child)) {
            continue;
        }
        if (predicate) {
            Raise<Message::MORE_THAN_ONE>("predicate", parent.Tag());
        }
        predicate = child;
    }
    if (!predicate) {
        Raise<Message::MISSING_NODE_IN>("predicate", parent.Tag());
    }
    return predicate;
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
    const Field field = RequireField(element);
    const int slot = field.slot;
    const Test test = ReadOperator(element);
    if (test == Test::IS_MISSING || test == Test::IS_NOT_MISSING) {
        if (element.Has(kValue)) {
            RaiseAt<Message::CONFLICTING_ATTRIBUTES>(element.Tag(), "operator", Narrow(kValue),
                                                     element.Text(kOperator));
        }
        return OnSlot(test, slot);
    }
    const bool isOrder = test != Test::EQUAL && test != Test::NOT_EQUAL;
    if (isOrder && field.hasOrder) {
        return ComparePlace(element, slot, test);
    }
    if (field.isNumeric) {
        return CompareNumber(element, field, test);
    }
    if (isOrder) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(kOperator), Narrow(kOperator), element.Tag(),
                                             "equal, notEqual, isMissing, isNotMissing");
    }
    Condition condition = OnSlot(test == Test::EQUAL ? Test::IS_CATEGORY : Test::IS_NOT_CATEGORY, slot);
    condition.category = fInputs.CategoryOf(slot, element, kValue);
    return condition;
}

ConditionReader::Field ConditionReader::RequireField(const Element& element) {
    if (element.Record() == nullptr) {
        return LookUpField(element);
    }
    const XMLCh* const name = element.Raw(kField);
    const Field* const known = fFields.Find(name);
    return known != nullptr ? *known : fFields.Keep(name, LookUpField(element));
}

/// A field with an order gets its codes before a condition mentions a single value.
ConditionReader::Field ConditionReader::LookUpField(const Element& element) {
    Field field;
    field.slot = fInputs.RequireSlot(element, kField);
    field.type = fInputs.Type(field.slot);
    field.isNumeric = fInputs.IsNumeric(field.slot);
    field.hasOrder = !fInputs.Listed(field.slot).empty();
    if (field.hasOrder && fListed.count(field.slot) == 0) {
        fListed.emplace(field.slot, LearnListed(field.slot));
    }
    return field;
}

Test ConditionReader::ReadOperator(const Element& element) {
    if (element.Record() == nullptr) {
        return element.OneOf(kOperator, kOperators);
    }
    const XMLCh* const word = element.Raw(kOperator);
    const Test* const known = fOperators.Find(word);
    return known != nullptr ? *known : fOperators.Keep(word, element.OneOf(kOperator, kOperators));
}

Condition ConditionReader::CompareNumber(const Element& element, const Field& field, Test test) {
    const double number = ReadNumber(element, field);
    return field.type == DataType::FLOAT ? CompareSingle(field.slot, test, NearestSingle(number))
                                         : WithNumber(field.slot, test, number);
}

/// What a comparison of the field's value, rounded to single precision, says, by comparisons of the value as it is.
Condition ConditionReader::CompareSingle(int slot, Test test, float bound) {
    switch (test) {
    case Test::LESS:
    case Test::GREATER_OR_EQUAL:
        return WithNumber(slot, test, bound == -kInfinite ? -kInfinite : LeastRoundedTo(bound));
    case Test::LESS_OR_EQUAL:
    case Test::GREATER:
        if (bound == kInfinite) {
            return WithNumber(slot, test, kInfinite);
        }
        return WithNumber(slot, test == Test::GREATER ? Test::GREATER_OR_EQUAL : Test::LESS,
                          LeastRoundedTo(NextSingle(bound)));
    default:
        break;
    }
    const bool isEqual = test == Test::EQUAL;
    Condition condition = OnSlot(isEqual ? Test::AND : Test::OR, 0);
    condition.span = fConditions.AddParts(2);
    const int part = condition.span.first;
    fConditions.SetPart(part, CompareSingle(slot, isEqual ? Test::GREATER_OR_EQUAL : Test::LESS, bound));
    fConditions.SetPart(part + 1, CompareSingle(slot, isEqual ? Test::LESS_OR_EQUAL : Test::GREATER, bound));
    return condition;
}

/// A set of a field of the type float: the value equals one of the numbers, or differs from all.
Condition ConditionReader::IsAmongSingles(int slot, const std::vector<double>& numbers, bool isIn) {
    Condition condition = OnSlot(isIn ? Test::OR : Test::AND, 0);
    condition.span = fConditions.AddParts(static_cast<int>(numbers.size()));
    int part = condition.span.first;
    for (const double number : numbers) {
        fConditions.SetPart(part++, CompareSingle(slot, isIn ? Test::EQUAL : Test::NOT_EQUAL, NearestSingle(number)));
    }
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

double ConditionReader::ReadNumber(const Element& element, const Field& field) {
    double number = 0.0;
    if (IsNumber(field.type) && KeepsDigits(element) && ReadPlainNumber(element.Raw(kValue), number)) {
        return number;
    }
    if (!NumberOf(field, element.AnyText(kValue), number)) {
        element.RaiseInvalid(kValue);
    }
    return number;
}

bool ConditionReader::KeepsDigits(const Element& element) {
    if (!fKeepsDigits) {
        fKeepsDigits = element.Reader()(u"-.0123456789") == "-.0123456789";
    }
    return *fKeepsDigits;
}

/// What a document writes for a value of the field. Numbers lie anywhere, also between those of an integer field and
/// between false and true; infinite ones part what is missing from all that isn't.
bool ConditionReader::NumberOf(const Field& field, const std::string& text, double& number) const {
    if (IsNumber(field.type) && ReadInfinite(text, number)) {
        return true;
    }
    Value value = IsNumber(field.type) ? Value() : fInputs.ValueIn(field.slot, text);
    if (value.isMissing && !IsMoment(field.type)) {
        value = ReadValue(text, DataType::DOUBLE);
    }
    number = value.number;
    return !value.isMissing;
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
    const Field field = RequireField(element);
    const int slot = field.slot;
    const bool isIn = element.OneOf(kBooleanOperator, kSetOperators);
    const Element array = element.RequireChild(u"Array");
    const std::vector<std::string> items = ArrayWords(array);
    std::vector<double> numbers;
    std::vector<int> codes;
    numbers.reserve(field.isNumeric ? items.size() : 0);
    codes.reserve(field.isNumeric ? 0 : items.size());
    for (const std::string& item : items) {
        if (field.isNumeric ? !NumberOf(field, item, numbers.emplace_back())
                            : codes.emplace_back(fInputs.CategoryOf(slot, item)) == ValueCodes::kUnknown) {
            Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(item, array.Tag(), element.Tag());
        }
    }
    if (field.isNumeric && field.type == DataType::FLOAT && !numbers.empty()) {
        return IsAmongSingles(slot, numbers, isIn);
    }
    if (field.isNumeric) {
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

} // namespace veltrane_kit

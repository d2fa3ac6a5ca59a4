#include "kit/expressions/derived_fields.h"

#include "kit/document/raise.h"
#include "kit/expressions/leaves.h"

#include <algorithm>
#include <set>

namespace veltrane_kit {

/// What the expression of one derived field can refer to; takes note of what it does.
class DerivedFields::Scope : public FieldScope {
public:
    Scope(DerivedFields& fields, Field& field) : fFields(fields), fField(field) {}

    Found Require(const Element& element, const XMLCh* attribute) override {
        const std::string name = element.Text(attribute);
        const std::optional<Found> found = Find(element, attribute, name);
        if (found) {
            fField.slots.push_back(found->slot);
            return *found;
        }
        if (!fFields.fData.IsClosed(name)) {
            RaiseAt<Message::MISSING_VARIABLE_IN_BOTH>(element.Tag(), Narrow(attribute).c_str(), name, "DataDictionary",
                                                       "TransformationDictionary");
        }
        if (fField.closed.name.empty()) {
            fField.closed = {name, element.Tag(), Narrow(attribute)};
        }
        return {fFields.fLayout.AddField(), std::nullopt, nullptr};
    }

private:
    /// Within itself the name of a derived field is that of a data field.
    std::optional<Found> Find(const Element& element, const XMLCh* attribute, const std::string& name) {
        if (name == fField.name) {
            const std::optional<Found> data = fFields.fData.FindData(name);
            if (!data) {
                RaiseAt<Message::SOURCE_IS_DESTINATION>(element.Tag(), Narrow(attribute).c_str(), name, "DerivedField");
            }
            return data;
        }
        Field* other = fFields.FieldOf(name);
        if (other == nullptr) {
            return fFields.fData.FindData(name);
        }
        if (other->state == State::BEING_READ) {
            RaiseAt<Message::SOURCE_IS_DESTINATION>(element.Tag(), Narrow(attribute).c_str(), name, "DerivedField");
        }
        fFields.ReadField(*other);
        return Found{other->slot, other->type, other->order};
    }

    DerivedFields& fFields;
    Field& fField;
};

void DerivedFields::Add(const Element& parent) {
    fFunctions->Add(parent);
    if (!parent) {
        return;
    }
    for (const Element child : parent.Children()) {
        if (!child.Is(u"DerivedField")) {
            continue;
        }
        const std::string name = child.Text(u"name");
        if (!fNames.emplace(name, fFields.size()).second) {
            Raise<Message::DUPLICATE_DEFINITION>("DerivedField", name, parent.Tag());
        }
        Field field;
        field.name = name;
        field.element = child;
        field.type = ReadDataType(child, u"dataType");
        field.slot = fLayout.AddField();
        fPlaces.emplace(field.slot, fFields.size());
        fFields.push_back(std::make_unique<Field>(std::move(field)));
    }
}

int DerivedFields::AddUnnamed(const Element& parent, DataType type) {
    Field& field = *fFields.emplace_back(std::make_unique<Field>());
    field.element = parent;
    field.type = type;
    field.slot = fLayout.AddField();
    fPlaces.emplace(field.slot, fFields.size() - 1);
    ReadField(field);
    Need(field.slot);
    return field.slot;
}

void DerivedFields::Read() {
    for (const std::unique_ptr<Field>& field : fFields) {
        ReadField(*field);
    }
    if (fFunctions == &fOwnFunctions) {
        ExpressionReader::CheckUncalled(fOwnFunctions, fLayout.encoding);
    }
}

void DerivedFields::ReadField(Field& field) {
    if (field.state == State::READ) {
        return;
    }
    field.state = State::BEING_READ;
    Scope scope(*this, field);
    field.expression = AsType(ReadExpression(scope, field.element, field.type), field.type, fLayout);
    if (!field.type) {
        field.type = field.expression->Type();
    }
    ReadListed(field);
    field.order = MakeOrder(field.type, ListedOf(field.slot));
    field.state = State::READ;
    fOrder.push_back(&field);
}

ExpressionPtr DerivedFields::ReadExpression(FieldScope& scope, const Element& parent, std::optional<DataType> type) {
    return ExpressionReader(fLayout, scope, *fFunctions).ReadOnly(parent, type);
}

DerivedFields::Field* DerivedFields::FieldOf(const std::string& name) {
    const auto found = fNames.find(name);
    return found == fNames.end() ? nullptr : fFields[found->second].get();
}

std::optional<FieldScope::Found> DerivedFields::FindDerived(const std::string& name) {
    const Field* field = FieldOf(name);
    return field == nullptr ? std::nullopt : std::optional(FieldScope::Found{field->slot, field->type, field->order});
}

std::optional<FieldScope::Found> DerivedFields::Find(const std::string& name) {
    const std::optional<FieldScope::Found> derived = FindDerived(name);
    return derived ? derived : fData.FindData(name);
}

FieldScope::Found DerivedFields::Require(const Element& element, const XMLCh* attribute) {
    const std::string name = element.Text(attribute);
    const std::optional<FieldScope::Found> found = Find(name);
    if (!found && fData.IsClosed(name)) {
        RaiseAt<Message::NO_PREDICTOR>(element.Tag(), Narrow(attribute).c_str(), name);
    }
    if (!found) {
        RaiseAt<Message::MISSING_VARIABLE_IN_BOTH>(element.Tag(), Narrow(attribute).c_str(), name, "DataDictionary",
                                                   "TransformationDictionary");
    }
    return *found;
}

void DerivedFields::Need(int slot) {
    std::vector<int> pending{slot};
    while (!pending.empty()) {
        const int next = pending.back();
        pending.pop_back();
        const auto place = fPlaces.find(next);
        if (place == fPlaces.end()) {
            fData.NeedData(next);
            continue;
        }
        if (fFields[place->second]->isNeeded) {
            continue;
        }
        Field& field = *fFields[place->second];
        if (!field.closed.name.empty()) {
            RaiseAt<Message::NO_PREDICTOR>(field.closed.element, field.closed.attribute.c_str(), field.closed.name);
        }
        field.isNeeded = true;
        pending.insert(pending.end(), field.slots.begin(), field.slots.end());
    }
}

void DerivedFields::Settle() {
    fNeeded.clear();
    std::copy_if(fOrder.begin(), fOrder.end(), std::back_inserter(fNeeded),
                 [](const Field* field) { return field->isNeeded; });
}

void DerivedFields::NeedAll() {
    for (const std::unique_ptr<Field>& field : fFields) {
        Need(field->slot);
    }
}

std::vector<std::string> DerivedFields::Names() const {
    std::vector<std::string> names;
    names.reserve(fFields.size());
    for (const std::unique_ptr<Field>& field : fFields) {
        if (!field->name.empty()) {
            names.push_back(field->name);
        }
    }
    return names;
}

std::vector<int> DerivedFields::Slots() const {
    std::vector<int> slots;
    slots.reserve(fFields.size());
    for (const std::unique_ptr<Field>& field : fFields) {
        if (!field->name.empty()) {
            slots.push_back(field->slot);
        }
    }
    return slots;
}

std::vector<Value> DerivedFields::ListedOf(int slot) const {
    std::vector<Value> listed;
    listed.reserve(FieldAt(slot).listed.size());
    for (const OwnedValue& value : FieldAt(slot).listed) {
        listed.push_back(value.value);
    }
    return listed;
}

/// The values of an ordinal derived field, in their order.
void DerivedFields::ReadListed(Field& field) {
    if (!Same(field.element.Raw(u"optype"), u"ordinal")) {
        return;
    }
    for (const Element child : field.element.Children()) {
        if (!child.Is(u"Value")) {
            continue;
        }
        const std::string text = child.AnyText(u"value");
        const Value value = field.type ? ReadValue(text, *field.type) : ReadUntyped(text);
        if (value.isMissing) {
            child.RaiseInvalid(u"value");
        }
        field.listed.emplace_back().Keep(value);
    }
}

std::vector<int> DerivedFields::DataSlotsOf(int slot) const {
    std::vector<int> found;
    std::set<int> known{slot};
    std::vector<int> pending{slot};
    while (!pending.empty()) {
        const int next = pending.back();
        pending.pop_back();
        const auto place = fPlaces.find(next);
        if (place == fPlaces.end()) {
            found.push_back(next);
            continue;
        }
        const std::vector<int>& slots = fFields[place->second]->slots;
        std::for_each(slots.rbegin(), slots.rend(), [&](int each) {
            if (known.insert(each).second) {
                pending.push_back(each);
            }
        });
    }
    return found;
}

void DerivedFields::Compute(Frame& frame) const {
    for (const Field* field : fNeeded) {
        FieldValue& value = frame.Field(field->slot);
        const Expression& expression = *field->expression;
        if (expression.KeepsNumbers() && !expression.PassesFieldOn()) {
            static_cast<Value&>(value) = MakeNumber(expression.Number(frame), *expression.Type());
        } else {
            static_cast<Value&>(value) = expression.Evaluate(frame);
        }
    }
}

} // namespace veltrane_kit

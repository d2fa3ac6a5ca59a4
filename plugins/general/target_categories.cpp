#include "target_categories.h"

#include "kit/document/raise.h"

#include <algorithm>

namespace veltrane_general {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::ModelParts;
using veltrane_kit::Narrow;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;

namespace {

constexpr const XMLCh* kReference = u"targetReferenceCategory";
constexpr const XMLCh* kTarget = u"targetCategory";
constexpr const XMLCh* kType = u"modelType";

int FindReference(const Element& element, const EquationReader& reader, const std::vector<int>& categories) {
    std::vector<int> unnamed;
    std::copy_if(categories.begin(), categories.end(), std::back_inserter(unnamed),
                 [&](int category) { return reader.Named().count(category) == 0; });
    if (unnamed.empty()) {
        reader.Named().at(categories.back()).RaiseInvalid(kTarget);
    }
    const bool areTwo = categories.size() == 2;
    if (unnamed.size() > 1 && !areTwo) {
        Raise<Message::MISSING_ATTRIBUTE_OF>(Narrow(kReference), element.Tag());
    }
    return unnamed.front();
}

void CheckCount(const Element& element, ModelType type, const ModelParts& parts) {
    const int count = parts.target->CategoryCount();
    if (count < 2) {
        RaiseAt<Message::MISSING_VALUE_LIST>(element.Tag(), nullptr, parts.target->Name());
    }
    if (type == ModelType::GENERALIZED && count > 2) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(kType), Narrow(kType), element.Tag(),
                                             "multinomialLogistic, ordinalMultinomial");
    }
}

} // namespace

std::vector<int> OrderCategories(const Element& element, ModelType type, const EquationReader& reader,
                                 ModelParts& parts) {
    const bool isStated = element.Has(kReference);
    const int stated = isStated ? parts.target->CategoryOf(element, kReference) : veltrane_kit::Prediction::kNoCategory;
    CheckCount(element, type, parts);
    std::vector<int> categories;
    categories.reserve(static_cast<std::size_t>(parts.target->CategoryCount()));
    for (int code = 0; code < parts.target->CategoryCount(); ++code) {
        categories.push_back(code);
    }
    const int reference = isStated ? stated : FindReference(element, reader, categories);
    categories.erase(std::find(categories.begin(), categories.end(), reference));
    for (const int category : categories) {
        const bool hasOwn = reader.Named().count(category) > 0;
        const bool needsOwn = type == ModelType::ORDINAL || !reader.HasCommon() || categories.size() > 1;
        if (needsOwn && !hasOwn) {
            Raise<Message::MISSING_ELEMENT_WITH_VALUE>(parts.target->Category(category).GetString(), Narrow(kTarget),
                                                       "ParamMatrix");
        }
    }
    if (const auto cell = reader.Named().find(reference); cell != reader.Named().end()) {
        cell->second.RaiseInvalid(kTarget);
    }
    categories.push_back(reference);
    return categories;
}

} // namespace veltrane_general

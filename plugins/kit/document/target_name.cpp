#include "kit/document/target_name.h"

namespace veltrane_kit {

std::string FirstTargetName(const Element& model) {
    if (const std::string named = model.TextOr(u"targetFieldName", ""); !named.empty()) {
        return named;
    }
    const Element schema = model.Child(u"MiningSchema");
    if (!schema) {
        return {};
    }
    for (const Element field : schema.Children()) {
        const XMLCh* usage = field.Is(u"MiningField") ? field.Raw(u"usageType") : nullptr;
        if (Same(usage, u"predicted") || Same(usage, u"target")) {
            return field.TextOr(u"name", "");
        }
    }
    return {};
}

} // namespace veltrane_kit

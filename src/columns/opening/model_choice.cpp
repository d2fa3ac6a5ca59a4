#include "columns/opening/model_choice.h"

#include "diagnostics/raise.h"
#include "factory/documents/xml_text.h"
#include "translators/frame/element_walk.h"

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace veltrane::columns {

namespace {

using diagnostics::Message;
using diagnostics::Raise;
using xercesc::DOMElement;

constexpr std::u16string_view kNoModels[] = {u"Header", u"MiningBuildTask", u"DataDictionary",
                                             u"TransformationDictionary", u"Extension"};

bool IsModel(const DOMElement& element) {
    return std::find(std::begin(kNoModels), std::end(kNoModels), element.getTagName()) == std::end(kNoModels);
}

std::string KindOf(const DOMElement& model) {
    return factory::ToUtf8(model.getTagName());
}

bool IsScorable(const DOMElement& model) {
    const std::u16string_view text = model.getAttribute(u"isScorable");
    return text != u"false" && text != u"0";
}

/// @return null for no model or for more than one
DOMElement* ModelOfName(const std::vector<DOMElement*>& models, const std::string& name) {
    DOMElement* found = nullptr;
    for (DOMElement* model : models) {
        if (factory::ToUtf8(model->getAttribute(u"modelName")) != name) {
            continue;
        }
        if (found != nullptr) {
            Raise<Message::NO_SUCH_MODEL>(name);
        }
        found = model;
    }
    return found;
}

DOMElement* ModelOfNumber(const std::vector<DOMElement*>& models, const std::string& text) {
    std::size_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const bool isNumber = error == std::errc() && stop == end;
    return isNumber && number >= 1 && number <= models.size() ? models[number - 1] : nullptr;
}

DOMElement& WantedModel(const std::vector<DOMElement*>& models, const std::string& wanted) {
    DOMElement* model = ModelOfName(models, wanted);
    if (model == nullptr) {
        model = ModelOfNumber(models, wanted);
    }
    if (model == nullptr) {
        Raise<Message::NO_SUCH_MODEL>(wanted);
    }
    return *model;
}

} // namespace

std::vector<DOMElement*> ModelsOf(const DOMElement& root) {
    std::vector<DOMElement*> models;
    for (DOMElement* child : translators::ChildElements(&root)) {
        if (IsModel(*child)) {
            models.push_back(child);
        }
    }
    return models;
}

DOMElement& ChooseModel(const std::vector<DOMElement*>& models, const std::vector<std::string>& names,
                        const std::string& wanted) {
    const auto hasPlugin = [&names](const DOMElement* model) {
        return std::find(names.begin(), names.end(), KindOf(*model)) != names.end();
    };
    if (!wanted.empty()) {
        DOMElement& model = WantedModel(models, wanted);
        if (!hasPlugin(&model)) {
            Raise<Message::UNSUPPORTED_MODEL>(KindOf(model));
        }
        return model;
    }
    auto found = std::find_if(models.begin(), models.end(),
                              [&hasPlugin](const DOMElement* model) { return IsScorable(*model) && hasPlugin(model); });
    if (found == models.end()) { // its plug-in tells why not
        found = std::find_if(models.begin(), models.end(), hasPlugin);
    }
    if (found == models.end()) {
        Raise<Message::UNSUPPORTED_MODEL>(KindOf(*models.front()));
    }
    return **found;
}

} // namespace veltrane::columns

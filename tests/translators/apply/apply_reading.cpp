#include "translators/apply/apply_reading.h"

#include "translators/derived/derived_fields.h"

namespace veltrane::tests {

ApplyReading::ApplyReading() {
    const ParsedXml xml =
        ParseXml("<DataDictionary numberOfFields='7'>" + std::string(kInputFields) + "</DataDictionary>");
    dictionary.reset(translator.ParseDictionary(xml.Root(), false));
    translator.InitFunctionMap();
}

FunctionTree* ApplyReading::Handle(const xercesc::DOMElement* apply, FunctionTree* parent) {
    return translator.HandleApply(const_cast<xercesc::DOMElement*>(apply), &target, parent, dictionary.get(), nullptr);
}

const FunctionTree& ApplyReading::Tree(const std::string& apply) {
    const ParsedXml xml = ParseXml(apply);
    fTrees.emplace_back(Handle(xml.Root()));
    return *fTrees.back();
}

} // namespace veltrane::tests

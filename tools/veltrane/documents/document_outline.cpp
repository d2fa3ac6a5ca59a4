#include "documents/document_outline.h"

#include "documents/bounded_reader.h"

#include <xercesc/sax2/Attributes.hpp>

#include <algorithm>
#include <string_view>

namespace veltrane::host {
namespace {

constexpr std::u16string_view kNoModels[] = {u"Header", u"MiningBuildTask", u"DataDictionary",
                                             u"TransformationDictionary", u"Extension"};

class OutlineHandlers : public BoundedHandlers {
public:
    DocumentOutline TakeOutline() { return std::move(fOutline); }

protected:
    void OnElement(const XMLCh* name, const xercesc::Attributes& attributes) override {
        if (Depth() == 1) {
            fOutline.root = Utf8(name);
        } else if (fNames.find(std::u16string_view(name)) == fNames.end()) {
            fNames.emplace(name);
        }
        if (Depth() == 2 && fOutline.IsPmml() && IsModelElement(name)) {
            fOutline.models.push_back({Utf8(name), Utf8(attributes.getValue(u"modelName")), IsScorable(attributes)});
        }
    }

    void OnEnd(const std::optional<DocumentFault>& fault) override {
        for (const std::u16string& name : fNames) {
            fOutline.elements.insert(Utf8(name));
        }
        fOutline.fault = fault;
    }

private:
    static bool IsScorable(const xercesc::Attributes& attributes) {
        const std::string text = Utf8(attributes.getValue(u"isScorable"));
        return text != "false" && text != "0";
    }

    std::set<std::u16string, std::less<>> fNames;
    DocumentOutline fOutline;
};

} // namespace

bool IsModelElement(std::u16string_view element) {
    return std::find(std::begin(kNoModels), std::end(kNoModels), element) == std::end(kNoModels);
}

DocumentOutline ReadOutline(std::istream& in) {
    OutlineHandlers handlers;
    handlers.Read(in);
    return handlers.TakeOutline();
}

} // namespace veltrane::host

#include "documents/document_outline.h"

#include "documents/bounded_reader.h"
#include "files/encoding.h"
#include "files/tag_scanner.h"

#include <xercesc/sax2/Attributes.hpp>

#include <algorithm>
#include <string_view>

namespace veltrane::host {
namespace {

constexpr std::string_view kNoModels[] = {"Header", "MiningBuildTask", "DataDictionary", "TransformationDictionary",
                                          "Extension"};

/// What an outline takes from the upper levels of a document.
class UpperLevels {
public:
    static constexpr std::size_t kDeepest = 4; ///< PMML, DataDictionary, DataField, Value

    explicit UpperLevels(DocumentOutline& outline) : fOutline(outline) {}

    /// @param depth     of the element, kDeepest at most
    /// @param attribute gives the text of an attribute by its name; empty for one that is absent
    template <typename Attribute>
    void Take(std::size_t depth, const std::string& name, const Attribute& attribute) {
        if (depth == 1) {
            fOutline.root = name;
        }
        if (!fOutline.IsPmml()) {
            return;
        }
        if (depth == 2 && IsModel(name)) {
            const std::string scorable = attribute("isScorable");
            fOutline.models.push_back({name, attribute("modelName"), scorable != "false" && scorable != "0"});
        }
        NoteMissingText(depth, name, attribute);
    }

private:
    static bool IsModel(std::string_view name) {
        return std::find(std::begin(kNoModels), std::end(kNoModels), name) == std::end(kNoModels);
    }

    template <typename Attribute>
    void NoteMissingText(std::size_t depth, std::string_view name, const Attribute& attribute) {
        if (depth == 2) {
            fIsInDictionary = name == "DataDictionary";
        } else if (depth == 3) {
            fDataField.reset();
            if (fIsInDictionary && name == "DataField") {
                fDataField = attribute("name");
            }
        } else if (depth == kDeepest && fDataField && name == "Value" && attribute("property") == "missing") {
            fOutline.missingTexts[*fDataField].push_back(attribute("value"));
        }
    }

    DocumentOutline& fOutline;
    bool fIsInDictionary = false;
    std::optional<std::string> fDataField; ///< on the way down to the element at hand
};

class OutlineHandlers : public BoundedHandlers {
public:
    DocumentOutline TakeOutline() { return std::move(fOutline); }

protected:
    void OnElement(const XMLCh* name, const xercesc::Attributes& attributes) override {
        fOutline.hasPrefixes = fOutline.hasPrefixes || WithoutPrefix(name) != name;
        if (Depth() > 1 && fNames.find(std::u16string_view(name)) == fNames.end()) {
            fNames.emplace(name);
        }
        if (Depth() <= UpperLevels::kDeepest) {
            fUpper.Take(Depth(), Utf8(name), [&](std::string_view attribute) {
                return Utf8(attributes.getValue(std::u16string(attribute.begin(), attribute.end()).c_str()));
            });
        }
    }

    void OnEnd(const std::optional<DocumentFault>& fault) override {
        for (const std::u16string& name : fNames) {
            fOutline.elements.insert(Utf8(name));
        }
        fOutline.fault = fault;
    }

private:
    std::set<std::u16string, std::less<>> fNames;
    DocumentOutline fOutline;
    UpperLevels fUpper{fOutline};
};

} // namespace

bool IsModelElement(std::u16string_view element) {
    return std::none_of(std::begin(kNoModels), std::end(kNoModels), [=](std::string_view other) {
        return std::equal(element.begin(), element.end(), other.begin(), other.end());
    });
}

DocumentOutline ReadOutline(std::istream& in) {
    OutlineHandlers handlers;
    handlers.Read(in);
    return handlers.TakeOutline();
}

std::optional<DocumentOutline> GlanceAtOutline(std::string_view bytes) {
    DocumentOutline outline;
    UpperLevels upper(outline);
    TagScanner tags(bytes);
    while (tags.Next()) {
        if (tags.Depth() <= UpperLevels::kDeepest) {
            upper.Take(tags.Depth(), std::string(tags.Name()),
                       [&](std::string_view attribute) { return std::string(tags.Attribute(attribute).value_or("")); });
        }
    }
    return tags.IsInDoubt() ? std::nullopt : std::optional<DocumentOutline>(std::move(outline));
}

MissingTexts MissingTextsIn(const std::string& encoding, const DocumentOutline& outline) {
    MissingTexts converted;
    const Encoding texts(encoding);
    for (const auto& [field, words] : outline.missingTexts) {
        std::vector<std::string>& list = converted[texts.FromUtf8(field)];
        for (const std::string& word : words) {
            list.push_back(texts.FromUtf8(word));
        }
    }
    return converted;
}

} // namespace veltrane::host

#include "kit/model/transformations.h"

#include "kit/document/checks/document_check.h"
#include "kit/document/parsed_document.h"
#include "kit/inputs/dictionary_completion.h"

#include <MCVeltrane_900/PMMLTranslator.h>

#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

/// Reads a data dictionary as the library has it.
class DictionaryReader : public PMMLTranslator {
public:
    using PMMLTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMDocument*, const std::string&) override { return nullptr; }

    std::unique_ptr<ScoreDictionary> Read(const Element& dictionary, const std::string& encoding) {
        CreateTranscoder(encoding);
        return std::unique_ptr<ScoreDictionary>(ParseDictionary(dictionary.Dom(), false));
    }
};

} // namespace

Transformations::Transformations(const std::string& encoding) : fDerived(fLayout, *this) {
    fLayout.encoding = encoding;
}

Transformations::~Transformations() = default;

std::unique_ptr<Transformations> Transformations::Read(std::istream& in, const std::string& encoding) {
    const ParsedDocument document(in, encoding);
    const Element root = document.Root();
    if (!root || !root.Is(u"PMML")) {
        return nullptr;
    }
    CheckDocument(root, nullptr);
    const Element dictionary = root.RequireChild(u"DataDictionary");
    std::unique_ptr<Transformations> read(new Transformations(encoding));
    read->fFields = ReadDataFields(dictionary);
    CompleteDictionary(dictionary);
    read->fDictionary = DictionaryReader().Read(dictionary, encoding);
    read->fDerived.Add(root.Child(u"TransformationDictionary"));
    read->fDerived.Read();
    read->fDerived.NeedAll();
    read->fDerived.Settle();
    read->fFrame = std::make_unique<Frame>(read->fLayout);
    return read;
}

std::optional<FieldScope::Found> Transformations::FindData(const std::string& name) {
    const auto definition = fFields.find(name);
    if (definition == fFields.end()) {
        return std::nullopt;
    }
    const auto [known, isNew] = fPlaces.try_emplace(name, fSources.size());
    if (!isNew) {
        return FieldScope::Found{fSources[known->second].slot, definition->second.type, fSources[known->second].order};
    }
    Source source;
    source.name = name;
    source.field = std::make_unique<InputField>(definition->second, nullptr);
    source.slot = fLayout.AddField();
    source.order = MakeOrder(definition->second.type, definition->second.InOrder(definition->second.level));
    fSources.push_back(std::move(source));
    return FieldScope::Found{fSources.back().slot, definition->second.type, fSources.back().order};
}

std::vector<std::string> Transformations::NeededNames() const {
    std::vector<std::string> names;
    names.reserve(fSources.size());
    for (const Source& source : fSources) {
        names.push_back(source.name);
    }
    return names;
}

void Transformations::Compute(const ScoreCaseRecord& record) {
    for (Source& source : fSources) {
        if (!fHasCase) {
            source.position = record.GetIndex(source.name);
        }
        source.field->Read(source.position < 0 ? nullptr : record.Get(source.position), fFrame->Field(source.slot));
    }
    fHasCase = true;
    fDerived.Compute(*fFrame);
    fFrame->EndCase();
}

} // namespace veltrane_kit

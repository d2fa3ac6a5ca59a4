// Any bytes as a document with conditions: each ends in a catalogued failure or is read into a predicate that decides
// cases as records and as codes, is copied and displayed.
#include "documents.h"
#include "run.h"

#include <veltrane.h>

#include <sstream>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::fuzz;

namespace {

using Predicate = std::unique_ptr<ScorePredicate>;

/// The readers of one document.
class ConditionReader : public PMMLTranslator {
public:
    using PMMLTranslator::ParseFromTree;

    explicit ConditionReader(bool withEncoders) : fWithEncoders(withEncoders) {}

    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        xercesc::DOMElement* root = document->getDocumentElement();
        fRead.fields.reset(ParseDictionary(GetChildByTagForced(root, "DataDictionary"), fWithEncoders));
        fRead.derived.reset(HandleTransformationDictionary(root, fRead.fields.get()));
        if (fRead.derived) {
            fRead.derived->SetUpDerivedCaseRecord();
        }
        int index = 0;
        for (ScoreDictVar* field : fRead.fields->GetScoreDictVars()) {
            field->SetEncodedValueIndex(index++);
            if (fWithEncoders) {
                SetupCatEncoder(field);
            }
        }
        for (const char* tag : {"SimplePredicate", "SimpleSetPredicate", "CompoundPredicate"}) {
            ReadAll(document, tag);
        }
        return nullptr;
    }

private:
    /// Each by itself, so that one that fails hides no other; those within a compound are read with it.
    void ReadAll(xercesc::DOMDocument* document, const std::string& tag) {
        const xercesc::DOMNodeList* elements = GetElementsByTagName(document, tag);
        for (XMLSize_t i = 0; i < elements->getLength(); ++i) {
            xercesc::DOMNode* element = elements->item(i);
            if (IsEqual(element->getParentNode()->getNodeName(), "CompoundPredicate")) {
                continue;
            }
            for (const bool ordinalAsScale : {false, true}) {
                MayFail([&] { Use(Read(element, tag, ordinalAsScale)); });
            }
        }
    }

    Predicate Read(xercesc::DOMNode* element, const std::string& tag, bool ordinalAsScale) {
        const ScoreDictionary* fields = fRead.fields.get();
        const ScoreDictionary* derived = fRead.derived.get();
        if (tag == "SimplePredicate") {
            return Predicate(ParsePredicate(element, fields, derived, ordinalAsScale));
        }
        if (tag == "SimpleSetPredicate") {
            return Predicate(ParseSetPredicate(element, fields, derived));
        }
        return Predicate(ParseCompoundPredicate(element, fields, derived, ordinalAsScale));
    }

    void Use(Predicate predicate) const {
        if (predicate == nullptr) {
            return;
        }
        CaseRecord record;
        FillRecord(*fRead.fields, record);
        const ScoreCaseRecord* derived =
            fRead.derived != nullptr ? fRead.derived->GetValuesForDerivedVars(&record, fRead.fields.get()) : nullptr;
        const Predicate copy(predicate->Clone());
        std::ostringstream text;
        for (const ScorePredicate* each : {predicate.get(), copy.get()}) {
            each->Evaluate(&record, derived);
            each->Evaluate(&record, nullptr);
            each->Evaluate(std::vector<double>{0.0, -1.0, -2.0, 1.5});
            each->IsDerivedPredictor();
            each->Display(text);
            if (each->GetSplit() != nullptr) {
                each->GetSplit()->Display(text);
            }
        }
    }

    bool fWithEncoders;
    Dictionaries fRead;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    const Input input = InputOf(data, size);
    WithTree(input.document, [&](xercesc::DOMDocument& document) {
        MayFail([&] { ConditionReader(size % 2 == 0).ParseFromTree(&document, input.encoding); });
    });
    return 0;
}

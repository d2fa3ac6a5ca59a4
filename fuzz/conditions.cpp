#include "conditions.h"

#include <veltrane.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include <memory>
#include <sstream>
#include <vector>

using namespace MCVeltrane_900;

namespace veltrane::fuzz {
namespace {

constexpr XMLSize_t kMaxEntityExpansions = 1000;

using Predicate = std::unique_ptr<ScorePredicate>;

/// The readers of one document.
class ConditionReader : public PMMLTranslator {
public:
    using PMMLTranslator::ParseFromTree;

    ConditionReader(bool withEncoders) : fWithEncoders(withEncoders) {}

    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        xercesc::DOMElement* root = document->getDocumentElement();
        fFields.reset(ParseDictionary(GetChildByTagForced(root, "DataDictionary"), fWithEncoders));
        fDerived.reset(HandleTransformationDictionary(root, fFields.get()));
        if (fDerived) {
            fDerived->SetUpDerivedCaseRecord();
        }
        int index = 0;
        for (ScoreDictVar* field : fFields->GetScoreDictVars()) {
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
            try {
                for (const bool ordinalAsScale : {false, true}) {
                    Use(Read(element, tag, ordinalAsScale));
                }
            } catch (const VTException& failure) {
                if (failure.GetErrorMessage().empty()) {
                    __builtin_trap();
                }
            }
        }
    }

    Predicate Read(xercesc::DOMNode* element, const std::string& tag, bool ordinalAsScale) {
        if (tag == "SimplePredicate") {
            return Predicate(ParsePredicate(element, fFields.get(), fDerived.get(), ordinalAsScale));
        }
        if (tag == "SimpleSetPredicate") {
            return Predicate(ParseSetPredicate(element, fFields.get(), fDerived.get()));
        }
        return Predicate(ParseCompoundPredicate(element, fFields.get(), fDerived.get(), ordinalAsScale));
    }

    void Use(Predicate predicate) const {
        if (predicate == nullptr) {
            return;
        }
        CaseRecord record;
        FillRecord(*fFields, record);
        const ScoreCaseRecord* derived =
            fDerived != nullptr ? fDerived->GetValuesForDerivedVars(&record, fFields.get()) : nullptr;
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
    std::unique_ptr<ScoreDictionary> fFields;
    std::unique_ptr<TransformationDictionary> fDerived;
};

} // namespace

void FillRecord(const ScoreDictionary& fields, CaseRecord& record) {
    for (const ScoreDictVar* field : fields.GetScoreDictVars()) {
        switch (field->GetVarType()) {
        case ScoreDictVar::kNUMERIC_VAR:
            record.Add(field->GetName(), new NumericValue(1.5));
            break;
        case ScoreDictVar::DATETIME_VAR:
            record.Add(field->GetName(), new DateTimeValue(86400.0, field->GetDateTimeType()));
            break;
        default:
            record.Add(field->GetName(), new StringValue("red"));
        }
    }
}

void ReadConditions(const std::string& document, const char* encoding, bool withEncoders) {
    xercesc::SecurityManager security;
    security.setEntityExpansionLimit(kMaxEntityExpansions);
    xercesc::XercesDOMParser parser;
    parser.setSecurityManager(&security);
    parser.setLoadExternalDTD(false);
    parser.setDisableDefaultEntityResolution(true);
    try {
        parser.parse(
            xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(document.data()), document.size(), "document"));
    } catch (...) {
        return; // what the factory refuses or repairs is its own target
    }
    if (parser.getDocument() == nullptr || parser.getDocument()->getDocumentElement() == nullptr) {
        return;
    }
    ConditionReader(withEncoders).ParseFromTree(parser.getDocument(), encoding);
}

} // namespace veltrane::fuzz

// Any bytes as a document, whose elements go one by one to the readers that plug-ins call for them: arrays, outputs,
// targets, intervals, constants, recodes, bins, splits. Each ends in a catalogued failure or gives something that can
// be used and freed.
#include "documents.h"
#include "run.h"

#include <veltrane.h>

#include <cmath>
#include <sstream>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::fuzz;

namespace {

constexpr int kMostElements = 60;

class ElementReader : public PMMLTranslator {
public:
    using PMMLTranslator::ParseFromTree;

    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        InitFunctionMap();
        xercesc::DOMElement* root = document->getDocumentElement();
        fFields.reset(ParseDictionary(GetChildByTagForced(root, "DataDictionary"), false));
        const xercesc::DOMNodeList* elements = document->getElementsByTagName(u"*");
        for (int i = 0; i < kMostElements && elements->item(static_cast<XMLSize_t>(i)) != nullptr; ++i) {
            ReadOne(*static_cast<xercesc::DOMElement*>(elements->item(static_cast<XMLSize_t>(i))));
        }
        Search(*root);
        return nullptr;
    }

private:
    using Reader = void (ElementReader::*)(xercesc::DOMElement&);

    void ReadOne(xercesc::DOMElement& element) {
        struct {
            const char* tag;
            Reader read;
        } static const readers[] = {
            {"Array", &ElementReader::Array},
            {"x-BasisRow", &ElementReader::Array},
            {"X-BasisRow", &ElementReader::Array},
            {"Output", &ElementReader::Output},
            {"Targets", &ElementReader::Targets},
            {"Interval", &ElementReader::Interval},
            {"Constant", &ElementReader::Constant},
            {"Extension", &ElementReader::Extension},
            {"SimplePredicate", &ElementReader::Comparison},
            {"SimpleSetPredicate", &ElementReader::Set},
            {"Apply", &ElementReader::Tree},
            {"Discretize", &ElementReader::Expression},
            {"FieldRef", &ElementReader::Expression},
            {"Lag", &ElementReader::Expression},
            {"MapValues", &ElementReader::Expression},
            {"NormContinuous", &ElementReader::Expression},
            {"NormDiscrete", &ElementReader::Expression},
            {"DerivedField", &ElementReader::Labels},
            {"DataField", &ElementReader::Values},
        };
        for (const auto& reader : readers) {
            if (IsEqual(element.getTagName(), reader.tag)) {
                (this->*reader.read)(element);
            }
        }
    }

    void Search(xercesc::DOMElement& root) {
        DOMElemUtility search(this, GetTranscoder());
        for (const bool throwing : {false, true}) {
            MayFail([&] { search.GetNodeListLength(&root, "Value", throwing); });
            MayFail([&] { search.GetElemFromNodeList(&root, "Value", 1, throwing); });
            MayFail([&] { search.GetChildElemByName(&root, "DataDictionary", throwing); });
            MayFail([&] { search.GetAttributeToDouble(&root, "version", throwing); });
            MayFail([&] { search.GetAttributeToInt(&root, "version", throwing); });
            MayFail([&] { search.GetAttributeToString(&root, "version", throwing); });
        }
    }

    void Array(xercesc::DOMElement& element) {
        for (const XMLCh* type : {static_cast<const XMLCh*>(nullptr), u"int", u"real", u"string"}) {
            MayFail([&] { GetArrayElements(&element, type, nullptr); });
        }
        for (const ScoreDictVar* field : fFields->GetScoreDictVars()) {
            MayFail([&] { Remove(field, GetArrayElements(&element, nullptr, field)); });
        }
        MayFail([&] { ParseStrArray(&element); });
        MayFail([&] { GetArrayNode(element.getParentNode()); });
        for (const int count : {0, 3}) {
            MayFail([&] { VerifyIntArray(&element, count); });
            MayFail([&] { VerifyDoubleArray(&element, count); });
        }
    }

    void Output(xercesc::DOMElement& element) {
        MayFail([&] {
            const std::unique_ptr<ScoreDictionary> outputs(ParseResultDictionary(&element));
            if (outputs != nullptr) {
                Show(*outputs);
            }
        });
    }

    void Targets(xercesc::DOMElement& element) {
        MayFail([&] { HandleTargets(&element, fFields.get()); });
        Show(*fFields);
    }

    void Interval(xercesc::DOMElement& element) {
        MissingValueSet missing;
        MayFail([&] { handleInterval(nullptr, &element, &missing, 0); });
        MayFail([&] { handleTreeInterval(&element, &missing); });
        Show(missing);
        for (const int index : {0, 5}) {
            MayFail([&] { delete HandleDiscretizeBinInterVal(&element, index); });
        }
    }

    void Constant(xercesc::DOMElement& element) {
        MayFail([&] { delete HandelConstant(&element); });
        MayFail([&] { delete HandelConstantDefaultStringType(&element); });
        double number = 0.0;
        ScoreValue::ValueType type{};
        MayFail([&] { HandelConstant(&element, number, type); });
    }

    void Extension(xercesc::DOMElement& element) {
        TransformVar var("v", ScoreDictVar::kNUMERIC_VAR);
        MayFail([&] { HandleKORDExtensions(&element, &var); });
        MayFail([&] { handleDerivedVarMissingValue(&element, &var); });
        MayFail([&] { ParseUsageTypeExtension(&element, &var); });
        Show(var);
    }

    void Comparison(xercesc::DOMElement& element) {
        double low = 0.0;
        double high = 0.0;
        bool isIncluded = false;
        MayFail([&] {
            GetScaleSplitValue(element.getAttribute(u"value"), element.getAttribute(u"operator"), low, high,
                               isIncluded);
        });
        for (const ScoreDictVar* field : fFields->GetScoreDictVars()) {
            std::string op;
            std::string value;
            bool isMissing = false;
            int first = 0;
            int last = 0;
            MayFail([&] { Split(HandleNodeScaleSplit(&element, field, op, isMissing, value)); });
            MayFail([&] { Split(HandleNodeDiscreteSplit(&element, field, op, isMissing, value)); });
            MayFail([&] { HandleOrdinalVariable(&element, field, first, last); });
            MayFail([&] { IsValidScoreValue(field, ToString(element.getAttribute(u"value"))); });
        }
    }

    void Set(xercesc::DOMElement& element) {
        for (const ScoreDictVar* field : fFields->GetScoreDictVars()) {
            std::string op;
            std::vector<double> codes;
            MayFail([&] { Split(HandleArrayDiscreteSplit(&element, field, op, codes)); });
        }
    }

    void Tree(xercesc::DOMElement& element) {
        TransformVar var("v", ScoreDictVar::kNUMERIC_VAR);
        MayFail([&] {
            const std::unique_ptr<FunctionTree> tree(HandleApply(&element, &var, nullptr, fFields.get(), nullptr));
            std::ostringstream text;
            tree->Display(text);
        });
    }

    void Expression(xercesc::DOMElement& element) {
        for (const ScoreDictVar::VariableType type : {ScoreDictVar::kNUMERIC_VAR, ScoreDictVar::STRING_VAR}) {
            TransformVar var("v", type);
            MayFail([&] { ReadExpression(element, var); });
            Show(var);
        }
    }

    void ReadExpression(xercesc::DOMElement& element, TransformVar& var) {
        const ScoreDictionary* fields = fFields.get();
        const std::string tag = ToString(element.getTagName());
        if (tag == "Discretize") {
            HandleDiscritize(&element, &var, fields, nullptr);
        } else if (tag == "FieldRef") {
            HandleFieldRef(&element, fields, nullptr, &var);
        } else if (tag == "Lag") {
            HandleLag(&element, &var, fields, nullptr);
        } else if (tag == "MapValues") {
            HandleMapValues(&element, &var, fields, nullptr);
        } else if (tag == "NormContinuous") {
            HandleNormContinuous(&element, &var, fields, nullptr);
        } else {
            HandleNormDiscrete(&element, &var, fields, nullptr);
        }
    }

    void Labels(xercesc::DOMElement& element) {
        TransformVar var("v", ScoreDictVar::STRING_VAR);
        MayFail([&] { HandleValueList(&element, &var); });
        Show(var);
    }

    /// One field more, by itself; and what its type is called.
    void Values(xercesc::DOMElement& element) {
        ParseDateTimeType(element.getAttribute(u"dataType"));
        XStrEqualsUTF8Str(element.getAttribute(u"name"), "x");
        for (ScoreDictVar* field : fFields->GetScoreDictVars()) {
            MayFail([&] { GetIndexOfOrdinalValue(ToString(element.getAttribute(u"name")), field); });
            SetupCatEncoder(field);
        }
    }

    static void Split(ScoreSplitVar* made) {
        const std::unique_ptr<ScoreSplitVar> split(made);
        const NumericValue number(1.5);
        const StringValue word("red");
        split->GetSplitChildIndex(&number);
        split->GetSplitChildIndex(&word);
        const std::unique_ptr<ScoreSplitVar> copy(split->Clone());
        Show(*copy);
    }

    template <typename Shown>
    static void Show(const Shown& shown) {
        std::ostringstream text;
        shown.Display(text);
    }

    std::unique_ptr<ScoreDictionary> fFields;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    const Input input = InputOf(data, size);
    WithTree(input.document, [&](xercesc::DOMDocument& document) {
        MayFail([&] { ElementReader().ParseFromTree(&document, input.encoding); });
    });
    return 0;
}

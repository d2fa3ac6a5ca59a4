#include "translators/apply/apply_reader.h"

#include "diagnostics/raise.h"
#include "translators/apply/function_rules.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/VTException.h>

#include <xercesc/dom/DOMElement.hpp>

using namespace MCVeltrane_900;

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using Tags = PMMLModelTags;
using TD = TransformationDictionary;
using xercesc::DOMElement;

namespace {

/// Real expressions nest a few dozen functions; nothing that walks a tree has to survive more than this.
constexpr int kDeepestApply = 1000;

struct Word {
    const char* literal;
    int number;
};

constexpr Word kInvalidValueTreatments[] = {
    {Tags::XML_ATT_RETURNINVALID, ApplyNodeStats::IV_RETURN_INVALID},
    {Tags::XML_ATT_ASIS, ApplyNodeStats::IV_AS_IS},
    {Tags::XML_ATT_ASMISSING, ApplyNodeStats::IV_AS_MISSING},
};

constexpr Word kOutlierMethods[] = {
    {Tags::XML_VAL_MININGFIELD_OUTLIERS_ASMISS, ScoreDictVar::OUTLIER_AS_MISSING_VALUES},
    {Tags::XML_VAL_MININGFIELD_OUTLIERS_ASEXTREME, ScoreDictVar::OUTLIER_AS_EXTREME_VALUES},
    {Tags::XML_VAL_MININGFIELD_OUTLIERS_ASIS, ScoreDictVar::OUTLIER_AS_IS},
};

template <std::size_t Size>
const Word* FindWord(const Word (&words)[Size], const std::string& text) {
    for (const Word& word : words) {
        if (text == word.literal) {
            return &word;
        }
    }
    return nullptr;
}

const char* ConstantName(ScoreValue::ValueType type) {
    switch (type) {
    case ScoreValue::NUMERIC_VALUE:
        return "Constant_D_";
    case ScoreValue::DATETIME_VALUE:
        return "Constant_T_";
    default:
        return "Constant_S_";
    }
}

} // namespace

void InsertLeaf(FunctionTree& node, const ApplyNodeStats& stats, int index, std::shared_ptr<ScoreValue> value) {
    auto leaf = std::make_unique<FunctionTreeImp>(false);
    leaf->SetNodeStats(stats);
    if (value != nullptr) {
        leaf->Keep(std::move(value));
    }
    node.Insert(leaf.get(), index);
    // A node that allows no children leaves the leaf to us.
    if (leaf->GetParent() != nullptr) {
        static_cast<void>(leaf.release());
    }
}

ApplyReader::ApplyReader(PMMLTranslator& translator, const DocumentText& text, const ApplyScope& scope, int& counter,
                         int& depth)
    : fTranslator(translator), fText(text), fScope(scope), fCounter(counter), fDepth(depth), fFunction(TD::TF_NONE) {
    ++fDepth;
}

ApplyReader::~ApplyReader() {
    --fDepth;
}

FunctionTree* ApplyReader::Read(const DOMElement* apply, FunctionTree* parent) {
    ReadFunction(apply);
    ReadReplacements(apply);
    fStats.SetTransformFunction(fFunction);
    fStats.SetNodeID(std::to_string(fCounter++));
    auto owner = std::make_unique<FunctionTreeImp>(true);
    fNode = owner.get();
    fNode->SetNodeStats(fStats);
    for (auto& value : fReplacements) {
        fNode->Keep(std::move(value));
    }
    if (parent != nullptr) {
        parent->Add(fNode);
    }
    if (fNode->GetParent() != nullptr) {
        static_cast<void>(owner.release());
    }
    try {
        ReadChildren(apply);
        if (fStats.GetNumberOfArray() > 0) {
            fNode->SetNodeStats(fStats);
        }
        CheckImputation();
        fTranslator.VerifyApplyFunction(fNames, fKinds, fScope.dictionary, fScope.derived, fFunction, fChildFunctions,
                                        fScope.target);
    } catch (const VTException&) {
        fNode->RemoveAllChildren();
        throw;
    }
    static_cast<void>(owner.release());
    return fNode;
}

void ApplyReader::ReadFunction(const DOMElement* apply) {
    const std::string name = fText.Forced(apply, Tags::XML_ATT_APPLY_FUNCTION);
    fFunction = fTranslator.GetTransFunction(name);
    if (fFunction == TD::TF_NONE) {
        Raise<Message::UNSUPPORTED_VALUE>(name, Tags::XML_ATT_APPLY_FUNCTION);
    }
    if (fDepth > kDeepestApply) {
        Raise<Message::PROCESSING_FAILED>(name);
    }
}

/// Replacements take the type of the target, not of the function.
void ApplyReader::ReadReplacements(const DOMElement* apply) {
    if (auto missing = TargetValue(apply, Tags::XML_ATT_MISSREPVALUE)) {
        fStats.SetRecodeMissValueTo(missing.get());
        fReplacements.push_back(std::move(missing));
    }
    if (auto value = TargetValue(apply, Tags::XML_ATT_DEFAULTVALUE)) {
        fStats.SetDefaultValue(value.get());
        fReplacements.push_back(std::move(value));
    }
    const Word* treatment =
        FindWord(kInvalidValueTreatments, fText.Attribute(apply, Tags::XML_ATT_INVALIDVALUETREATMENT));
    if (treatment != nullptr) {
        fStats.SetInvalidValueTreatmentMethod(treatment->number);
    }
}

std::shared_ptr<ScoreValue> ApplyReader::TargetValue(const DOMElement* apply, const char* name) {
    const std::string text = fText.Attribute(apply, name);
    return text.empty() || fScope.target == nullptr
               ? nullptr
               : std::shared_ptr<ScoreValue>(fTranslator.CarefullyMakeVarValue(fScope.target, text));
}

void ApplyReader::ReadChildren(const DOMElement* apply) {
    struct Reader {
        const char* tag;
        void (ApplyReader::*read)(DOMElement*);
    };
    static constexpr Reader kReaders[] = {
        {Tags::XML_ELE_APPLY, &ApplyReader::ReadNested},
        {Tags::XML_ELE_FIELDREF, &ApplyReader::ReadField},
        {Tags::XML_ELE_CONSTANT, &ApplyReader::ReadConstant},
        {Tags::XML_ELE_EXTENSION, &ApplyReader::ReadArray},
    };
    for (DOMElement* child : ChildElements(apply)) {
        for (const Reader& reader : kReaders) {
            if (HasTag(child, reader.tag)) {
                (this->*reader.read)(child);
            }
        }
    }
}

void ApplyReader::ReadNested(DOMElement* child) {
    fTranslator.HandleApply(child, fScope.target, fNode, fScope.dictionary, fScope.derived);
    AddArgument("APPLY", NESTED, fTranslator.GetTransFunction(fText.Forced(child, Tags::XML_ATT_APPLY_FUNCTION)));
}

void ApplyReader::ReadField(DOMElement* child) {
    const std::string name = fTranslator.HandleFieldRef(child, fScope.dictionary, fScope.derived, nullptr);
    const ScoreDictVar* variable = FieldLookup(fScope.dictionary, fScope.derived).Find(name);
    const std::string missing = fText.Attribute(child, Tags::XML_ATT_MISSREPVALUE);
    ScoreValue* replacement =
        variable != nullptr && !missing.empty() ? fTranslator.CarefullyMakeVarValue(variable, missing) : nullptr;
    fTranslator.SetLeafNodeStats(name, fNode, fNode->GetChildCount(), false, replacement);
    ++fFieldCount;
    AddArgument(name, FIELD, TD::TF_NONE);
}

void ApplyReader::ReadConstant(DOMElement* child) {
    ScoreValue::ValueType type = ScoreValue::STRING_VALUE;
    std::shared_ptr<ScoreValue> value = MakeConstant(child, type);
    ApplyNodeStats stats;
    stats.SetNodeID(std::to_string(fCounter++));
    stats.SetConstNode(true);
    stats.SetValue(value.get());
    InsertLeaf(*fNode, stats, fNode->GetChildCount(), std::move(value));
    AddArgument(ConstantName(type), CONSTANT, TD::TF_NONE);
}

std::unique_ptr<ScoreValue> ApplyReader::MakeConstant(DOMElement* child, ScoreValue::ValueType& type) {
    const Arguments arguments = RulesOf(fFunction).arguments;
    if (arguments == Arguments::TEXT_CONSTANTS) {
        type = ScoreValue::STRING_VALUE;
        return std::unique_ptr<ScoreValue>(fTranslator.HandelConstantDefaultStringType(child));
    }
    double number = 0.0;
    const std::string text = fTranslator.HandelConstant(child, number, type);
    if (arguments == Arguments::METHOD_SECOND && type == ScoreValue::STRING_VALUE) {
        const Word* method = FindWord(kOutlierMethods, text);
        if (method == nullptr) {
            Raise<Message::UNSUPPORTED_VALUE>(text, Tags::XML_VAL_STRING);
        }
        return std::make_unique<NumericValue>(method->number);
    }
    return std::unique_ptr<ScoreValue>(fTranslator.HandelConstant(child));
}

void ApplyReader::ReadArray(DOMElement* child) {
    auto* array = static_cast<DOMElement*>(BaseTranslator::GetChildByTag(child, Tags::XML_ELE_ARRAY));
    fStats.AddArray(fTranslator.VerifyDoubleArray(array, 0));
}

void ApplyReader::CheckImputation() const {
    if (RulesOf(fFunction).arguments != Arguments::MEANS_AND_VARIANCES) {
        return;
    }
    if (fFieldCount != 2 || fStats.GetNumberOfArray() != 2 || fStats.GetArray(0).size() != fStats.GetArray(1).size()) {
        Raise<Message::PROCESSING_FAILED>(PMMLTranslator::ToString(fFunction));
    }
}

void ApplyReader::AddArgument(const std::string& name, int kind, TransformFunction childFunction) {
    fNames.push_back(name);
    fKinds.push_back(kind);
    fChildFunctions.push_back(childFunction);
}

} // namespace veltrane::translators

namespace MCVeltrane_900 {

using namespace veltrane::translators;

FunctionTree* PMMLTranslator::HandleApply(xercesc::DOMElement* apply, const ScoreDictVar* target, FunctionTree* parent,
                                          const ScoreDictionary* dictionary, const ScoreDictionary* derived) {
    ApplyReader reader(*this, DocumentText(*this, &PMMLTranslator::ToString), {target, dictionary, derived},
                       fNodeCounter, fApplyDepth);
    return reader.Read(apply, parent);
}

void PMMLTranslator::SetLeafNodeStats(const std::string& field, FunctionTree* node, int index, bool isConst,
                                      ScoreValue* fieldMissing) {
    std::shared_ptr<ScoreValue> missing(fieldMissing);
    ApplyNodeStats stats;
    stats.SetNodeID(std::to_string(fNodeCounter++));
    stats.SetParameterName(field);
    stats.SetConstNode(isConst);
    if (missing != nullptr) {
        stats.SetFieldrefRecodeMissValueTo(missing.get());
    }
    InsertLeaf(*node, stats, index, std::move(missing));
}

} // namespace MCVeltrane_900

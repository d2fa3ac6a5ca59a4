#include "translators/apply/apply_reader.h"
#include "translators/frame/document_text.h"

#include <MCVeltrane_900/PMMLTranslator.h>

#include <xercesc/dom/DOMElement.hpp>

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

#ifndef VELTRANE_TRANSLATORS_APPLY_READER_H
#define VELTRANE_TRANSLATORS_APPLY_READER_H

#include "translators/frame/document_text.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/FunctionTreeImp.h>
#include <MCVeltrane_900/PMMLTranslator.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrane::translators {

/// Makes a leaf of the stats and adds it to a node. The leaf keeps the value that hangs on them.
void InsertLeaf(MCVeltrane_900::FunctionTree& node, const MCVeltrane_900::ApplyNodeStats& stats, int index,
                std::shared_ptr<MCVeltrane_900::ScoreValue> value);

/// What an Apply is read for.
struct ApplyScope {
    const MCVeltrane_900::ScoreDictVar* target;
    const MCVeltrane_900::ScoreDictionary* dictionary;
    const MCVeltrane_900::ScoreDictionary* derived;
};

/// Reads one Apply into a node with its children, and verifies its arguments. Nested ones are verified first.
class ApplyReader {
public:
    /// @param counter the next node id
    /// @param depth   how many readers are at work below each other
    ApplyReader(MCVeltrane_900::PMMLTranslator& translator, const DocumentText& text, const ApplyScope& scope,
                int& counter, int& depth);
    ~ApplyReader();
    ApplyReader(const ApplyReader&) = delete;
    ApplyReader& operator=(const ApplyReader&) = delete;

    MCVeltrane_900::FunctionTree* Read(const xercesc::DOMElement* apply, MCVeltrane_900::FunctionTree* parent);

private:
    using TransformFunction = MCVeltrane_900::TransformationDictionary::TransformFunction;

    void ReadFunction(const xercesc::DOMElement* apply);
    void ReadReplacements(const xercesc::DOMElement* apply);
    void ReadChildren(const xercesc::DOMElement* apply);
    void ReadNested(xercesc::DOMElement* child);
    void ReadField(xercesc::DOMElement* child);
    void ReadConstant(xercesc::DOMElement* child);
    void ReadArray(xercesc::DOMElement* child);
    void CheckImputation() const;

    std::unique_ptr<MCVeltrane_900::ScoreValue> MakeConstant(xercesc::DOMElement* child,
                                                             MCVeltrane_900::ScoreValue::ValueType& type);
    std::shared_ptr<MCVeltrane_900::ScoreValue> TargetValue(const xercesc::DOMElement* apply, const char* name);
    void AddArgument(const std::string& name, int kind, TransformFunction childFunction);

    MCVeltrane_900::PMMLTranslator& fTranslator;
    const DocumentText fText;
    const ApplyScope fScope;
    int& fCounter;
    int& fDepth;

    MCVeltrane_900::FunctionTreeImp* fNode = nullptr;
    MCVeltrane_900::ApplyNodeStats fStats;
    TransformFunction fFunction;
    std::vector<std::shared_ptr<MCVeltrane_900::ScoreValue>> fReplacements;

    // The arguments so far, as VerifyApplyFunction takes them.
    std::vector<std::string> fNames;
    std::vector<int> fKinds;
    std::vector<TransformFunction> fChildFunctions;
    int fFieldCount = 0;
};

} // namespace veltrane::translators

#endif

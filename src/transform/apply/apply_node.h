#ifndef VELTRANE_TRANSFORM_APPLY_APPLY_NODE_H
#define VELTRANE_TRANSFORM_APPLY_APPLY_NODE_H

#include "transform/apply/apply_frame.h"
#include "transform/apply/function_dispatch.h"
#include "transform/derivation/derivation.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/FunctionTree.h>
#include <MCVeltrane_900/TransformVar.h>

#include <string>

namespace veltrane::transform {

/// The evaluation of one function of a tree: its children in order, each used up before the next one is evaluated,
/// since all nodes of a tree share the scratch values of their derived field.
class ApplyNode {
public:
    ApplyNode(MCVeltrane_900::TransformVar& var, MCVeltrane_900::FunctionTree& node, const ApplyCase& oneCase,
              int& status);
    ~ApplyNode();
    ApplyNode(const ApplyNode&) = delete;
    ApplyNode& operator=(const ApplyNode&) = delete;

    /// @return a scratch value of the field, a value of the record or a label's value
    const MCVeltrane_900::ScoreValue* Evaluate();

private:
    using Value = MCVeltrane_900::ScoreValue;

    // A non-null answer ends the evaluation with it.
    const Value* TakeFirst(const Value* value, const MCVeltrane_900::FunctionTree& child, int count);
    const Value* TakeLater(const Value* value, int position);
    const Value* Finish(const Value* last);

    void TakeFirstOfOwnRule(const Value* value);
    void TakeFirstText(const Value* value);
    void TakeFirstNumber(const Value* value, int count);
    const Value* TakeMissingTest(const Value* value, const MCVeltrane_900::FunctionTree& child);
    const Value* TakeBranch(const Value* value, int position);
    void TakeLaterText(const Value* value, int position);
    void TakeLaterNumber(const Value* value, int position);

    const Value* FinishOwnRule(const Value* last);
    const Value* FinishText();
    const Value* FinishNumber();
    const Value* PassOn(const Value& last);
    const Value* Impute();
    double HandleOutlier() const;
    bool AreTwoEqual() const;
    bool IsMember() const;

    const Value* NumberResult(double number);
    const Value* TextResult(const std::string& text, int length);

    MCVeltrane_900::TransformVar& fVar;
    MCVeltrane_900::FunctionTree& fNode;
    const ApplyCase& fCase;
    int& fStatus;
    const MCVeltrane_900::ApplyNodeStats& fStats;
    const MCVeltrane_900::TransformationDictionary::TransformFunction fFunction;
    const FunctionDispatch& fDispatch;
    ApplyFrame& fFrame;

    double fAccumulator = 0.0;
    double fNumber = 0.0;
    std::string fText;
    int fTextLength = 0;
    bool fCondition = false;
    int fMethod = 0;
    int fStart = 0;
    int fCount = 0;
};

} // namespace veltrane::transform

#endif

#ifndef VELTRANE_TRANSFORM_APPLY_APPLY_NODE_H
#define VELTRANE_TRANSFORM_APPLY_APPLY_NODE_H

#include "transform/apply/apply_frame.h"
#include "transform/apply/function_dispatch.h"
#include "transform/derivation/field_evaluation.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/FunctionTree.h>
#include <MCVeltrane_900/TransformVar.h>

#include <iterator>
#include <string>
#include <vector>

namespace veltrane::transform {

/// A child of a function and its value, which is good until the next child is evaluated.
struct Argument {
    int position;
    const MCVeltrane_900::FunctionTree* node;
    const MCVeltrane_900::ScoreValue* value;
};

/// The evaluation of one function of a tree, as the function sees it: its arguments, one after another, what it keeps
/// of them meanwhile, and the ways to give a result. What a function does stands with it, in `transform/functions/`.
class ApplyNode {
public:
    ApplyNode(MCVeltrane_900::TransformVar& var, MCVeltrane_900::FunctionTree& node, const ApplyCase& oneCase,
              int& status);
    ~ApplyNode();
    ApplyNode(const ApplyNode&) = delete;
    ApplyNode& operator=(const ApplyNode&) = delete;

    /// @return a scratch value of the field, a value of the record or a label's value
    const MCVeltrane_900::ScoreValue* Evaluate() { return fDispatch.evaluate(*this); }

    /// Evaluates the children in order, each when the loop comes to it: all nodes of a tree share the scratch values of
    /// their derived field, so a function uses up an argument before it goes on. A gap in the place of the first child
    /// is passed over, one further behind has no value.
    class Arguments {
    public:
        class Iterator {
        public:
            Iterator(ApplyNode& node, int count) : fNode(node), fCount(count) { Evaluate(); }
            const Argument& operator*() const { return fArgument; }
            Iterator& operator++() {
                if (++fArgument.position < fCount) {
                    Evaluate();
                }
                return *this;
            }
            bool operator!=(std::default_sentinel_t) const { return fArgument.position < fCount; }

        private:
            void Evaluate();

            ApplyNode& fNode;
            const int fCount;
            Argument fArgument{0, nullptr, nullptr};
        };

        Iterator begin() const { return {fNode, fCount}; }
        static std::default_sentinel_t end() { return {}; }
        int size() const { return fCount; }

    private:
        friend class ApplyNode;
        explicit Arguments(ApplyNode& node) : fNode(node), fCount(node.fNode.GetChildCount()) {}

        ApplyNode& fNode;
        const int fCount;
    };
    Arguments GetArguments() { return Arguments(*this); }

    // What is kept until the arguments are complete.
    std::vector<double>& Numbers() { return fFrame.numbers; }
    std::vector<std::string>& Texts() { return fFrame.texts; }
    std::vector<int>& Widths() { return fFrame.widths; }
    HeldValue& Kept() { return fFrame.kept; }
    ApplyFrame& Frame() { return fFrame; }

    const FunctionDispatch& Function() const { return fDispatch; }
    const MCVeltrane_900::ApplyNodeStats& Stats() const { return fStats; }
    const MCVeltrane_900::ScoreValueLabelSet* Labels() const { return fVar.GetValueLabels(); }

    // The function of the node, by the way that its arguments reach it.
    double Fold(double a, double b) const;
    double Accumulate() const;
    double OfDate(const MCVeltrane_900::ScoreValue* date, double b) const;

    /// A number, which passes by the replacements for missing and invalid results.
    const MCVeltrane_900::ScoreValue* Result(double number);

    // Results that go out as they are.
    const MCVeltrane_900::ScoreValue* PlainNumber(double number);
    const MCVeltrane_900::ScoreValue* Text(const std::string& text, int length);

private:
    MCVeltrane_900::TransformVar& fVar;
    FieldEvaluation& fField;
    MCVeltrane_900::FunctionTree& fNode;
    const ApplyCase& fCase;
    int& fStatus;
    const MCVeltrane_900::ApplyNodeStats& fStats;
    const MCVeltrane_900::TransformationDictionary::TransformFunction fFunction;
    const FunctionDispatch& fDispatch;
    ApplyFrame& fFrame;
};

} // namespace veltrane::transform

#endif

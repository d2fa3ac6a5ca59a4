#ifndef VELTRANE_TRANSFORM_APPLY_APPLY_PLAN_H
#define VELTRANE_TRANSFORM_APPLY_APPLY_PLAN_H

#include "transform/apply/apply_node.h"

#include <MCVeltrane_900/FunctionTree.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace veltrane::transform {

/// The numeric part of a tree as a flat list of steps, made once all its leaves have been resolved. It gives what the
/// walk over the tree gives, without the walk: constants and fields are pushed, functions take their arguments from
/// the stack. Whatever is no function of numbers stays with the walk, as one step.
///
/// A plan borrows the nodes of its tree, which does not change once it has been evaluated.
class ApplyPlan {
public:
    /// @return null for a tree whose root is no function of numbers, or that is too deep to bother
    static std::unique_ptr<ApplyPlan> Make(MCVeltrane_900::FunctionTree& root);

    /// @return the numeric scratch value of the field
    const MCVeltrane_900::ScoreValue* Evaluate(MCVeltrane_900::TransformVar& var, const ApplyCase& oneCase);

private:
    enum class Kind { CONSTANT, FIELD, WALK, FUNCTION };

    struct Step {
        Kind kind;
        double constant = 0.0;
        MCVeltrane_900::FunctionTree* node = nullptr;
        const MCVeltrane_900::ScoreDictVar* variable = nullptr;
        int position = -1; ///< of the field in the record
        bool isDerived = false;
        std::size_t arguments = 0;
        FunctionDispatch dispatch{Gathering::OWN, nullptr, nullptr};
        MCVeltrane_900::TransformationDictionary::TransformFunction function =
            MCVeltrane_900::TransformationDictionary::TF_NONE;
        bool treatsInvalid = false;
    };

    bool Add(MCVeltrane_900::FunctionTree& node, int depth);
    void AddLeaf(MCVeltrane_900::FunctionTree& leaf);
    double ReadField(const Step& step, MCVeltrane_900::TransformVar& var, const ApplyCase& oneCase) const;
    double Walk(const Step& step, MCVeltrane_900::TransformVar& var, const ApplyCase& oneCase) const;
    double Call(const Step& step, const double* arguments);
    double Treat(const Step& step, MCVeltrane_900::TransformVar& var, const double* arguments, double result);

    std::vector<Step> fSteps;
    std::vector<double> fStack;
    std::vector<double> fArguments; ///< of functions that take a vector
};

} // namespace veltrane::transform

#endif

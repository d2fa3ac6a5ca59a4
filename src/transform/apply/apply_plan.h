#ifndef VELTRANE_TRANSFORM_APPLY_APPLY_PLAN_H
#define VELTRANE_TRANSFORM_APPLY_APPLY_PLAN_H

#include "transform/apply/apply_node.h"
#include "transform/derivation/dictionary_evaluation.h"
#include "transform/trees/tree_node.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace veltrane::transform {

/// The numeric part of a tree as a flat list of steps, made once its leaves have been resolved. It gives what the walk
/// over the tree gives, without the walk: constants and fields are pushed, functions take their arguments from the
/// stack, a branch jumps over the steps that the walk would not reach. Whatever gives no number stays with the walk, as
/// one step.
///
/// A plan borrows the nodes of its tree, and the values that hang on them. It is good for as long as nobody changes the
/// tree, which the nodes of the library's own class tell it; nodes of other classes, and what is below them, are
/// walked.
class ApplyPlan {
public:
    /// @return null for a root of a host's class; a plan without steps for any other tree that has to be walked
    static std::unique_ptr<ApplyPlan> Make(MCVeltrane_900::FunctionTree& root);

    /// @return the numeric scratch value of the field; null when this case has to be walked, as one has to be whose
    ///         tree has changed
    const MCVeltrane_900::ScoreValue* Evaluate(MCVeltrane_900::TransformVar& var, const ApplyCase& oneCase);

    /// Whether the tree has changed, or leaves that no case had reached when the plan was made have been resolved
    /// since: a new plan can do more.
    bool IsOutdated();

private:
    enum class Kind { CONSTANT, FIELD, WALK, MISSING_TEST, KERNEL, FUNCTION, COMPARISON, BRANCH };

    /// What is known of the steps of a node: none because it lies too deep, or steps for a value of any kind, or for
    /// one that is a number in every case.
    enum class Added { NOTHING, VALUE, NUMBER };

    struct Step {
        Kind kind;
        const MCVeltrane_900::NumericValue* constant = nullptr; ///< of a kernel, its last argument; null for others
        MCVeltrane_900::FunctionTree* node = nullptr;
        const MCVeltrane_900::ScoreDictVar* variable = nullptr;
        int position = -1; ///< of the field in the record
        bool isDerived = false;
        int stored = -1;                 ///< position of a derived field in the derived record
        unsigned long long storedIn = 0; ///< revision of the derived fields that it is good for
        std::size_t count = 0;           ///< of the arguments of a function, of the steps of a branch's alternative
        const FunctionDispatch* dispatch = nullptr;
        MCVeltrane_900::TransformationDictionary::TransformFunction function =
            MCVeltrane_900::TransformationDictionary::TF_NONE;
        bool treatsInvalid = false;
    };

    explicit ApplyPlan(const MCVeltrane_900::FunctionTreeImp& tree) : fTree(tree), fChanges(TreeNode::Changes(tree)) {}
    bool HasChanged() const { return TreeNode::Changes(fTree) != fChanges; }
    static bool TellsChanges(const MCVeltrane_900::FunctionTree& node, const MCVeltrane_900::FunctionTree& child);
    static bool NamesField(const MCVeltrane_900::ApplyNodeStats& stats);

    Added Add(MCVeltrane_900::FunctionTree& node, int depth);
    Added AddChild(MCVeltrane_900::FunctionTree& node, MCVeltrane_900::FunctionTree& child, int depth);
    Added AddLeaf(MCVeltrane_900::FunctionTree& leaf);
    Added AddFunction(MCVeltrane_900::FunctionTree& node, int depth);
    Added AddComparison(MCVeltrane_900::FunctionTree& node, int depth);
    Added AddBranch(MCVeltrane_900::FunctionTree& node, int depth); ///< in functions/if.cpp
    Added AddMissingTest(MCVeltrane_900::FunctionTree& node);       ///< in functions/is_missing.cpp
    Added AddOperand(MCVeltrane_900::FunctionTree& node, int position, int depth);
    Added AddWalk(MCVeltrane_900::FunctionTree& node, bool givesNumber);
    Added WalkInstead(std::size_t first, MCVeltrane_900::FunctionTree& node, bool givesNumber);
    void AddCall(Kind kind, MCVeltrane_900::FunctionTree& node, int count);

    bool HoldsNumbers(const ApplyCase& oneCase);
    double Run(MCVeltrane_900::TransformVar& var, const ApplyCase& oneCase);
    double RunRare(const Step& step, MCVeltrane_900::TransformVar& var, const ApplyCase& oneCase,
                   const double* arguments);
    bool IsComputed(const Step& step) const;
    const MCVeltrane_900::ScoreValue* ReadComputed(Step& step);
    double ReadField(Step& step, MCVeltrane_900::TransformVar& var, const ApplyCase& oneCase);
    double Walk(const Step& step, MCVeltrane_900::TransformVar& var, const ApplyCase& oneCase) const;
    double TestMissing(const Step& step, MCVeltrane_900::TransformVar& var, const ApplyCase& oneCase) const;
    static double CallKernel(const Step& step, double* arguments);
    double Call(const Step& step, const double* arguments);
    double Accumulate(const Step& step, const double* arguments);
    double Compare(const Step& step, MCVeltrane_900::TransformVar& var, const double* arguments);
    double Treat(const Step& step, MCVeltrane_900::TransformVar& var, const double* arguments, double result);

    const MCVeltrane_900::FunctionTreeImp& fTree;
    const unsigned long long fChanges; ///< of the tree when the plan was made
    std::vector<Step> fSteps;
    std::vector<std::size_t> fOperands; ///< fields among the steps that have to hold a number, or the case is walked
    std::vector<const MCVeltrane_900::FunctionTree*> fUnresolved; ///< leaves that no case has reached yet
    bool fReadsDerived = false;
    const MCVeltrane_900::TransformationDictionary* fDerived = nullptr; ///< the derived fields of the case
    DictionaryEvaluation::StoredValues fStored;                         ///< and their values
    std::vector<double> fStack;
    std::vector<double> fArguments; ///< of functions that take a vector
};

} // namespace veltrane::transform

#endif

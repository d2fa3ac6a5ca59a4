#ifndef VELTRANE_PLUGINS_TREE_CONDITION_READER_H
#define VELTRANE_PLUGINS_TREE_CONDITION_READER_H

#include "condition.h"
#include "kit/document/element.h"

#include <map>
#include <string>
#include <vector>

namespace veltrane_tree {

/// Reads the predicates of a document. An operator means what PMML says on every kind of field: "notEqual" on a
/// category holds for all the others, and a set's complement holds for values that the document doesn't list.
class ConditionReader {
public:
    /// Both are borrowed.
    ConditionReader(Conditions& conditions, veltrane_kit::Inputs& inputs) : fConditions(conditions), fInputs(inputs) {}

    /// Whether an element is a predicate.
    static bool IsPredicate(const veltrane_kit::Element& element);

    /// Compounds nest at most as deep as the factory lets a document nest.
    /// @throws VTException 260120, 260285, 260125, 260161 for the field; 260120, 260153 for a value; 260179 for an
    ///         operator that the field doesn't have; 260212 for a value beside an operator that takes none; 260115,
    ///         260272 and what reading an array throws for a set; 260283 for a compound of nothing; 260159 for an
    ///         element that has no place in one
    Condition Read(const veltrane_kit::Element& element);

private:
    Condition ReadSimple(const veltrane_kit::Element& element);
    Condition ReadSet(const veltrane_kit::Element& element);
    Condition ReadCompound(const veltrane_kit::Element& element);
    int RequireSlot(const veltrane_kit::Element& element);
    Condition CompareNumber(const veltrane_kit::Element& element, int slot, Test test);
    Condition ComparePlace(const veltrane_kit::Element& element, int slot, Test test);
    double ReadNumber(const veltrane_kit::Element& element, int slot);
    bool NumberOf(int slot, const std::string& text, double& number) const;
    bool HasOrder(int slot);
    int LearnListed(int slot);

    Conditions& fConditions;
    veltrane_kit::Inputs& fInputs;
    std::map<int, int> fListed; ///< by the slots of fields with an order, how many values they list
};

} // namespace veltrane_tree

#endif

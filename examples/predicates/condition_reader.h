#ifndef VELTRANE_EXAMPLES_CONDITION_READER_H
#define VELTRANE_EXAMPLES_CONDITION_READER_H

#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScorePredicate.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <memory>
#include <string>
#include <vector>

/// The condition of one node of a tree, or of one rule.
struct Condition {
    std::string name; ///< the element's id, or its tag and number where it has none
    std::unique_ptr<MCVeltrane_900::ScorePredicate> predicate;
};

/// A translator that reads the conditions of a document and makes no model of them.
class ConditionReader : public MCVeltrane_900::PMMLTranslator {
public:
    using PMMLTranslator::ParseFromTree;

    /// Null: what was read is asked for below.
    MCVeltrane_900::ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override;

    const MCVeltrane_900::ScoreDictionary& Fields() const { return *fFields; }

    /// The derived fields of the document; null when it has none.
    MCVeltrane_900::TransformationDictionary* Derived() const { return fDerived.get(); }

    const std::vector<Condition>& Conditions() const { return fConditions; }

private:
    void ReadConditionsOf(xercesc::DOMDocument* document, const std::string& tag);
    std::unique_ptr<MCVeltrane_900::ScorePredicate> ReadConditionIn(xercesc::DOMNode* parent);
    std::unique_ptr<MCVeltrane_900::ScorePredicate> ReadCondition(xercesc::DOMNode* element);

    // The splits of the predicates refer to the fields, which go last.
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> fFields;
    std::unique_ptr<MCVeltrane_900::TransformationDictionary> fDerived;
    std::vector<Condition> fConditions;
};

#endif

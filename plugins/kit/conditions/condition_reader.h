#ifndef VELTRANE_PLUGINS_KIT_CONDITION_READER_H
#define VELTRANE_PLUGINS_KIT_CONDITION_READER_H

#include "kit/conditions/condition.h"
#include "kit/document/element.h"
#include "kit/document/known_texts.h"
#include "kit/inputs/inputs.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace veltrane_kit {

/// Reads the predicates of a document. An operator means what PMML says on every kind of field: "notEqual" on a
/// category holds for all the others, and a set's complement holds for values that the document doesn't list. Fields of
/// the type float are compared in single precision, as their producers do: the bounds of the conditions are moved so
/// that comparisons of doubles say the same.
class ConditionReader {
public:
    /// Both are borrowed.
    ConditionReader(Conditions& conditions, Inputs& inputs) : fConditions(conditions), fInputs(inputs) {}

    /// Whether an element is a predicate.
    static bool IsPredicate(const Element& element);

    /// The only predicate among an element's children.
    /// @throws VTException 260115 without one, 260272 for two of them
    static Element RequirePredicate(const Element& parent);

    /// Compounds nest at most as deep as the factory lets a document nest.
    /// @throws VTException 260120, 260285, 260125, 260161 for the field; 260120, 260153 for a value; 260179 for an
    ///         operator that the field doesn't have; 260212 for a value beside an operator that takes none; 260115,
    ///         260272 and what reading an array throws for a set; 260283 for a compound of nothing; 260159 for an
    ///         element that has no place in one
    Condition Read(const Element& element);

private:
    /// A field that conditions name.
    struct Field {
        int slot = 0;
        DataType type = DataType::STRING;
        bool isNumeric = false;
        bool hasOrder = false; ///< of its own
    };

    Condition ReadSimple(const Element& element);
    Condition ReadSet(const Element& element);
    Condition ReadCompound(const Element& element);
    Field RequireField(const Element& element);
    Field LookUpField(const Element& element);
    Test ReadOperator(const Element& element);
    Condition CompareNumber(const Element& element, const Field& field, Test test);
    Condition CompareSingle(int slot, Test test, float bound);
    Condition IsAmongSingles(int slot, const std::vector<double>& numbers, bool isIn);
    Condition ComparePlace(const Element& element, int slot, Test test);
    double ReadNumber(const Element& element, const Field& field);
    bool NumberOf(const Field& field, const std::string& text, double& number) const;
    bool KeepsDigits(const Element& element);
    int LearnListed(int slot);

    Conditions& fConditions;
    Inputs& fInputs;
    std::map<int, int> fListed; ///< by the slots of fields with an order, how many values they list
    KnownTexts<Field, 64> fFields;
    KnownTexts<Test, 16> fOperators;
    std::optional<bool> fKeepsDigits; ///< whether digits are ASCII in the encoding of the document's texts
};

} // namespace veltrane_kit

#endif

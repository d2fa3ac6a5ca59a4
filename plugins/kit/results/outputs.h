#ifndef VELTRANE_PLUGINS_KIT_OUTPUTS_H
#define VELTRANE_PLUGINS_KIT_OUTPUTS_H

#include "kit/document/element.h"
#include "kit/expressions/expression_reader.h"
#include "kit/inputs/inputs.h"
#include "kit/results/output_features.h"
#include "kit/results/prediction.h"
#include "kit/results/results.h"
#include "kit/results/target.h"

#include <MCVeltrane_900/BaseDictionary.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrane_kit {

/// The Output of a model: which values a result has beside the prediction, and how they come about.
class Outputs {
public:
    /// Reads the only Output among a model's children, when its categories are all known.
    /// @param classification whether the predicted value is a category
    /// @throws VTException 260272, 260120, 260285, 260153 for elements and attributes, a target that the document
    ///         doesn't have among them, 260203 for a name that comes twice, 260115 for a transformed value without an
    ///         expression, and what reading expressions throws
    Outputs(const Element& model, bool classification, Inputs& inputs, Target& target);

    /// The variables of the output fields, in the order of the document; null when there are none. The caller owns it.
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> MakeDictionary() const;

    /// What results have to provide for.
    std::vector<ResultLayout::Output> Layout() const;

    bool IsEmpty() const { return fFields.empty(); }

    /// Fills the output fields for one case.
    /// @param value the predicted value; null for none
    void Fill(const MCVeltrane_900::ScoreValue* value, const Prediction& prediction, const Inputs& inputs,
              const Target& target, OutputValues& outputs) const;

private:
    struct Field {
        std::string name;
        std::string label;
        OutputFeature feature;
        MCVeltrane_900::ScoreValue::ValueType kind;
        std::optional<DataType> type;
        MCVeltrane_900::ScoreDictVar::DateTimeType dateTimeType = MCVeltrane_900::ScoreDictVar::DT_NONE;
        MCVeltrane_900::ScoreDictVar::MeasureLevel level;
        int category = Prediction::kNoCategory; ///< whose probability or residual; the predicted one without it
        int rank = 1;                           ///< of the prediction; 1 for the predicted one
        bool isOfOthers = false;                ///< of a target or a segment that the model doesn't have
        bool isFinal = true;
        DataType valueType = DataType::DOUBLE; ///< of its value in the expressions of other output fields
        int slot = 0;                          ///< of that value
        ExpressionPtr expression;              ///< of a transformed value

        bool IsTransformed() const { return feature.expression != OutputFeature::Expression::NONE; }
    };

    Field ReadField(const Element& element, bool classification, Inputs& inputs, Target& target);
    static void ReadDestination(const Element& element, const Inputs& inputs, const Target& target, Field& field);
    void FillRanked(const Field& field, OutputCase scored, OutputValues& outputs, int position) const;
    void LearnActualCodes(Inputs& inputs, const Target& target);
    void FillFeature(const Field& field, const OutputCase& scored, OutputValues& outputs, int position) const;
    static void ReadExpression(const Element& element, Field& field, Inputs& inputs, FieldScope& scope);
    static void SetValue(const Value& value, int position, OutputValues& outputs);

    std::vector<Field> fFields;
    bool fIsClassification;
    int fTargetSlot = Inputs::kNoSlot;
    bool fTransforms = false;      ///< whether an expression may ask for the value of an output field
    std::vector<int> fActualCodes; ///< by category of the target, its code in that slot
};

} // namespace veltrane_kit

#endif

#ifndef VELTRANE_PLUGINS_KIT_OUTPUTS_H
#define VELTRANE_PLUGINS_KIT_OUTPUTS_H

#include "kit/document/element.h"
#include "kit/expressions/expression_reader.h"
#include "kit/inputs/inputs.h"
#include "kit/results/asked_entities.h"
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
    /// A value of a part that models see as a field.
    struct Told {
        std::string name;
        FieldScope::Found found;
        bool isAsked; ///< for an output field of the outer model, whose name that is
        bool isFinal;
        std::string label;
        MCVeltrane_900::ScoreResultField::ResultFeature feature;
        MCVeltrane_900::ScoreDictVar::MeasureLevel level;
    };

    /// A target of a model beside the first one.
    struct OtherTarget {
        std::shared_ptr<Target> target;
        bool isCategory; ///< whether its predicted value is one
    };

    /// What few kinds of model have.
    struct More {
        AskedEntities entities;           ///< that the scorer tells of
        std::vector<OtherTarget> targets; ///< in the order of Prediction::others
        bool namesClusters = false;       ///< whether the id of a cluster is the predicted value, not the entity
        bool haveEntities = false;        ///< whether each of them has an entity of its own
    };

    /// Reads the only Output among a model's children, when its categories are all known; there is none in no element.
    /// @param classification whether the predicted value is a category
    /// @param parts          the final output fields of the parts of a model that leaves the prediction to one of them:
    ///                       they stand behind its own, but those with the name of another
    /// @param asked          of a part of a model, the output fields of that which name this part; what they tell
    ///                       stands behind the part's own, for its outer model alone
    /// @param more           what few kinds of model have
    /// @throws VTException 260272, 260120, 260285, 260153 for elements and attributes, a target that the document
    ///         doesn't have among them, 260203 for a name that comes twice, 260115 for a transformed value without an
    ///         expression, and what reading expressions throws
    Outputs(const Element& model, bool classification, Inputs& inputs, Target& target, const std::vector<Told>& parts,
            const std::vector<Element>& asked, const More& more);
    Outputs(const Element& model, bool classification, Inputs& inputs, Target& target,
            const std::vector<Told>& parts = {}, const std::vector<Element>& asked = {})
        : Outputs(model, classification, inputs, target, parts, asked, More()) {}
    ~Outputs();

    /// The variables of the output fields, in the order of the document; null when there are none. The caller owns it.
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> MakeDictionary() const;

    /// What results have to provide for.
    std::vector<ResultLayout::Output> Layout() const;

    bool IsEmpty() const { return fFields.empty(); }

    /// All values in their order.
    std::vector<Told> AllTold() const;

    /// Has Fill() put all values into the frame from now on.
    void TellFields() { fTransforms = true; }

    /// Fills the output fields for one case.
    /// @param value  the predicted value; null for none
    /// @param fields of the case; values for the expressions of other output fields are put there
    void Fill(const MCVeltrane_900::ScoreValue* value, const Prediction& prediction, Frame& fields,
              const Target& target, OutputValues& outputs) const;

private:
    friend class OutputColumns;

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
        int named = AskedEntities::kNone;       ///< the entity whose affinity it is
        int other = kOwnTarget;                 ///< whose prediction it tells, among the further targets
        bool isOfOthers = false;                ///< of a target or a segment that the model doesn't have
        bool isFinal = true;
        bool isAsked = false;                  ///< by an output field of the outer model
        bool isVerified = false;               ///< for verification alone: no expression and no outer model sees it
        DataType valueType = DataType::DOUBLE; ///< of its value in the expressions of other output fields
        int slot = 0;                          ///< of that value
        ExpressionPtr expression;              ///< of a transformed value

        bool IsTransformed() const { return feature.expression != OutputFeature::Expression::NONE; }
    };

    static constexpr int kOwnTarget = -1;

    class OutputScope;

    void ReadFields(const Element& output, Inputs& inputs, Target& target, OutputScope& scope);
    void ReadResults(const Element& model, Inputs& inputs, Target& target, OutputScope& scope);
    void AddField(Field field, const Element& element, Inputs& inputs, OutputScope& scope);
    void AddTold(const Told& told, Inputs& inputs);
    void ReadAsked(const Element& element, Inputs& inputs, Target& target, OutputScope& scope);
    Field ReadField(const Element& element, bool classification, Inputs& inputs, Target& target);
    void ReadPredicted(const Element& element, bool classification, const Inputs& inputs, Target& target,
                       Field& field) const;
    static Field ReadAnswered(const Element& element, const FieldScope::Found& answer, Inputs& inputs);
    static void TakeExpression(const Element& element, ExpressionPtr expression, Inputs& inputs, Field& field);
    int OtherTargetOf(const Element& element, const OutputFeature& feature) const;
    void ReadDestination(const Element& element, const Inputs& inputs, const Target& target, Field& field) const;
    void FillOther(const Field& field, const OutputCase& scored, OutputValues& outputs, int position) const;
    void FillOwn(const Field& field, const OutputCase& scored, OutputValues& outputs, int position) const;
    void FillRanked(const Field& field, OutputCase scored, OutputValues& outputs, int position) const;
    void AddVerified(Inputs& inputs);
    void FillFeature(const Field& field, const OutputCase& scored, OutputValues& outputs, int position) const;
    static void ReadExpression(const Element& element, Field& field, Inputs& inputs, FieldScope& scope);
    static void SetValue(const Value& value, int position, OutputValues& outputs);

    std::vector<Field> fFields;
    bool fIsClassification;
    More fMore;
    /// Where a case has the own value of a target that output fields compare with.
    struct Actual {
        int slot = Inputs::kNoSlot;
        std::vector<int> codes; ///< by category of the target, its code in that slot

        void LearnCodes(Inputs& inputs, const Target& target);
    };
    Actual fActual;
    std::vector<Actual> fOtherActuals; ///< of the further targets
    bool fTransforms = false;          ///< whether an expression may ask for the value of an output field
};

} // namespace veltrane_kit

#endif

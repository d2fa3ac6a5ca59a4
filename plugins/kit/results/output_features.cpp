#include "kit/results/output_features.h"

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

using Kind = OutputFeature::Kind;
using OfCategory = OutputFeature::OfCategory;
using ByExpression = OutputFeature::Expression;
using RF = ScoreResultField;

void FillPredicted(const OutputCase& scored, int /*category*/, OutputValues& outputs, int position) {
    outputs.Set(position, scored.value);
}

void FillDisplayed(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    const bool isNumber = !scored.isClassification && scored.value != nullptr;
    const int shown = isNumber && scored.target.CategoryCount() > 0 ? scored.target.Find(*scored.value) : category;
    if (shown == Prediction::kNoCategory) {
        outputs.Set(position, scored.value);
    } else {
        outputs.SetText(position, scored.target.Label(shown));
    }
}

void FillProbability(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    outputs.SetNumber(position, scored.prediction.ProbabilityOf(category));
}

void FillConfidence(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    outputs.SetNumber(position, scored.prediction.ConfidenceOf(category));
}

/// Also of a feature of other kinds of model, and of a transformed value until its expression is evaluated.
void FillMissing(const OutputCase& /*scored*/, int /*category*/, OutputValues& outputs, int position) {
    outputs.SetMissing(position);
}

void FillEntity(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    if (scored.prediction.entityId == nullptr || scored.rank > 1) {
        FillMissing(scored, category, outputs, position);
    } else {
        outputs.SetText(position, *scored.prediction.entityId);
    }
}

/// The target's own value in the case less the predicted one.
double NumberResidual(const OutputCase& scored) {
    if (scored.targetSlot == Inputs::kNoSlot || scored.value == nullptr ||
        scored.value->GetType() == ScoreValue::STRING_VALUE) {
        return Prediction::kNone;
    }
    const FieldValue& actual = scored.inputs[scored.targetSlot];
    return actual.IsMissing() ? Prediction::kNone : actual.number - scored.value->GetDouble();
}

/// Whether the case has the category, 1 or 0, less the probability of it.
double CategoryResidual(const OutputCase& scored, int category) {
    const double probability = scored.prediction.ProbabilityOf(category);
    if (scored.targetSlot == Inputs::kNoSlot || scored.inputs[scored.targetSlot].IsMissing() ||
        probability == Prediction::kNone) {
        return Prediction::kNone;
    }
    const bool isActual =
        scored.inputs[scored.targetSlot].category == scored.actualCodes[static_cast<std::size_t>(category)];
    return (isActual ? 1.0 : 0.0) - probability;
}

void FillResidual(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    outputs.SetNumber(position, scored.isClassification ? CategoryResidual(scored, category) : NumberResidual(scored));
}

constexpr OutputFeature OfOtherModels(ScoreResultField::ResultFeature feature) {
    return {feature, Kind::STATED, FillMissing};
}
constexpr OutputFeature Transformed(ByExpression expression) {
    return {RF::RF_NONE, Kind::NUMBER, FillMissing, OfCategory::NEVER, false, expression};
}

constexpr OutputFeature kPredictedValue = {RF::RF_PREDICTED_VALUE, Kind::PREDICTED, FillPredicted};

constexpr Word<OutputFeature> kFeatures[] = {
    {u"predictedValue", kPredictedValue},
    {u"predictedDisplayValue", {RF::RF_PREDICTED_DISPLAY_VALUE, Kind::TEXT, FillDisplayed}},
    {u"probability", {RF::RF_PROBABILITY, Kind::NUMBER, FillProbability, OfCategory::ALWAYS}},
    {u"confidence", {RF::RF_NONE, Kind::NUMBER, FillConfidence, OfCategory::ALWAYS}},
    {u"entityId", {RF::RF_ENTITY_ID, Kind::TEXT, FillEntity}},
    {u"residual", {RF::RF_RESIDUAL, Kind::NUMBER, FillResidual, OfCategory::OF_CLASSIFICATION, true}},
    {u"transformedValue", Transformed(ByExpression::REQUIRED)},
    {u"decision", Transformed(ByExpression::OPTIONAL)},
    {u"standardError", OfOtherModels(RF::RF_STANDARD_ERROR)},
    {u"standardDeviation", OfOtherModels(RF::RF_STANDARD_DEVIATION)},
    {u"clusterId", OfOtherModels(RF::RF_CLUSTER_ID)},
    {u"clusterAffinity", OfOtherModels(RF::RF_CLUSTER_AFFINITY)},
    {u"affinity", OfOtherModels(RF::RF_CLUSTER_AFFINITY)},
    {u"entityAffinity", OfOtherModels(RF::RF_ENTITY_AFFINITY)},
    {u"warning", OfOtherModels(RF::RF_WARNING)},
    {u"ruleValue", OfOtherModels(RF::RF_RULE_VALUE)},
    {u"reasonCode", OfOtherModels(RF::RF_NONE)},
    {u"antecedent", OfOtherModels(RF::RF_NONE)},
    {u"consequent", OfOtherModels(RF::RF_NONE)},
    {u"rule", OfOtherModels(RF::RF_NONE)},
    {u"ruleId", OfOtherModels(RF::RF_NONE)},
    {u"support", OfOtherModels(RF::RF_NONE)},
    {u"lift", OfOtherModels(RF::RF_NONE)},
    {u"leverage", OfOtherModels(RF::RF_NONE)},
};

bool HasExpression(const Element& outputField) {
    for (const Element child : outputField.Children()) {
        if (!child.Is(u"Extension") && !child.Is(u"Decisions") && !child.Is(u"Value")) {
            return true;
        }
    }
    return false;
}

} // namespace

OutputFeature ReadOutputFeature(const Element& outputField) {
    OutputFeature feature = outputField.OneOfOr(u"feature", kFeatures, kPredictedValue);
    if (feature.expression == ByExpression::OPTIONAL) {
        feature = HasExpression(outputField) ? Transformed(ByExpression::REQUIRED) : OfOtherModels(RF::RF_NONE);
    }
    return feature;
}

} // namespace veltrane_kit

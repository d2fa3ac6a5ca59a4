#include "kit/results/output_features.h"

#include "kit/results/rule.h"

#include <algorithm>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

using Kind = OutputFeature::Kind;
using InRows = OutputFeature::InRows;
using OfCategory = OutputFeature::OfCategory;
using ByExpression = OutputFeature::Expression;
using RF = ScoreResultField;

void FillPredicted(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    if (scored.isClassification && scored.value != nullptr && category != Prediction::kNoCategory) {
        outputs.SetTyped(position, scored.target.CategoryValue(category), *scored.value);
    } else {
        outputs.Set(position, scored.value);
    }
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

/// The number of the category that is asked for, of each row's own where none is.
template <typename NumbersOf>
void FillOfCategory(const OutputRows& scored, int category, double* numbers, const NumbersOf& numbersOf) {
    const std::size_t rows = scored.block.Rows();
    if (scored.isClassification && scored.predictions.Categories() == 0) {
        std::fill_n(numbers, rows, Prediction::kNone);
        return;
    }
    if (category != Prediction::kNoCategory) {
        std::copy_n(numbersOf(static_cast<std::size_t>(category)), rows, numbers);
        return;
    }
    for (std::size_t row = 0; row < rows; ++row) {
        const int own = scored.predictions.categories[row];
        numbers[row] = own < 0 || scored.predictions.predicted[row] == 0
                           ? Prediction::kNone
                           : numbersOf(static_cast<std::size_t>(own))[row];
    }
}

void FillPredictedNumbers(const OutputRows& scored, int /*category*/, double* numbers) {
    std::copy_n(scored.predictions.numbers.data(), scored.block.Rows(), numbers);
}

void FillProbabilities(const OutputRows& scored, int category, double* numbers) {
    FillOfCategory(scored, scored.isClassification ? category : Prediction::kNoCategory, numbers,
                   [&](std::size_t of) { return scored.predictions.Probabilities(of); });
}

void FillConfidences(const OutputRows& scored, int category, double* numbers) {
    FillOfCategory(scored, scored.isClassification ? category : Prediction::kNoCategory, numbers,
                   [&](std::size_t of) { return scored.predictions.Confidences(of); });
}

/// Also of a feature of other kinds of model, and of a transformed value until its expression is evaluated.
void FillMissing(const OutputCase& /*scored*/, int /*category*/, OutputValues& outputs, int position) {
    outputs.SetMissing(position);
}

void FillStandardError(const OutputCase& scored, int /*category*/, OutputValues& outputs, int position) {
    outputs.SetNumber(position, scored.rank > 1 ? Prediction::kNone : scored.prediction.standardError);
}

void FillStandardErrors(const OutputRows& scored, int /*category*/, double* numbers) {
    const std::vector<double>& errors = scored.predictions.standardErrors;
    for (std::size_t row = 0; row < scored.block.Rows(); ++row) {
        numbers[row] = errors.empty() || scored.predictions.predicted[row] == 0 ? Prediction::kNone : errors[row];
    }
}

template <typename Ground>
const Ground* AtRank(const std::vector<const Ground*>& grounds, int rank) {
    const auto at = static_cast<std::size_t>(rank) - 1;
    return at < grounds.size() ? grounds[at] : nullptr;
}

const std::string* EntityIdAt(const Grounds& grounds, int rank) {
    const auto at = static_cast<std::size_t>(rank) - 1;
    return at < grounds.entities.size() ? grounds.entities[at].id : nullptr;
}

/// What decided; of a rank behind it the cluster or the instance at that place.
void FillEntity(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    const std::string* id =
        scored.rank > 1 ? EntityIdAt(scored.prediction.grounds, scored.rank) : scored.prediction.entityId;
    id == nullptr ? FillMissing(scored, category, outputs, position) : outputs.SetText(position, *id);
}

/// The same of clusters alone, which have an affinity.
void FillCluster(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    scored.prediction.affinity == Prediction::kNone ? FillMissing(scored, category, outputs, position)
                                                    : FillEntity(scored, category, outputs, position);
}

/// Of the entity that the field names, else of the one at its rank.
void FillAffinity(const OutputCase& scored, int /*category*/, OutputValues& outputs, int position) {
    const Prediction& prediction = scored.prediction;
    const auto named = static_cast<std::size_t>(scored.named);
    const auto at = static_cast<std::size_t>(scored.rank) - 1;
    const std::vector<Entity>& ranked = prediction.grounds.entities;
    double affinity = prediction.affinity;
    if (scored.named != AskedEntities::kNone) {
        affinity = named < prediction.affinities.size() ? prediction.affinities[named] : Prediction::kNone;
    } else if (at > 0) {
        affinity = at < ranked.size() ? ranked[at].affinity : Prediction::kNone;
    }
    outputs.SetNumber(position, affinity);
}

void FillAffinities(const OutputRows& scored, int /*category*/, double* numbers) {
    const PredictionBlock& predictions = scored.predictions;
    const auto named = static_cast<std::size_t>(scored.named);
    if (scored.named == AskedEntities::kNone) {
        std::copy_n(predictions.affinities.data(), scored.block.Rows(), numbers);
    } else if (named < predictions.NamedEntities()) {
        std::copy_n(predictions.Affinities(named), scored.block.Rows(), numbers);
    } else {
        std::fill_n(numbers, scored.block.Rows(), Prediction::kNone);
    }
}

/// A case has as many reasons as its model finds, and as many rules as hold; what is of a rank behind them is missing.
const std::string* ReasonAt(const Grounds& grounds, int rank) {
    return AtRank(grounds.reasons, rank);
}

const std::string* RuleIdAt(const Grounds& grounds, int rank) {
    const Rule* rule = AtRank(grounds.rules, rank);
    return rule == nullptr ? nullptr : &rule->id;
}

const std::string* ConsequentAt(const Grounds& grounds, int rank) {
    const Rule* rule = AtRank(grounds.rules, rank);
    return rule == nullptr ? nullptr : &rule->consequent;
}

template <OutputFeature::GroundText kTextAt>
void FillGround(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    const std::string* text = kTextAt(scored.prediction.grounds, scored.rank);
    text == nullptr ? FillMissing(scored, category, outputs, position) : outputs.SetText(position, *text);
}

const Rule* RuleOf(const OutputCase& scored) {
    return AtRank(scored.prediction.grounds.rules, scored.rank);
}

void FillAntecedent(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    const Rule* rule = RuleOf(scored);
    rule == nullptr ? FillMissing(scored, category, outputs, position) : outputs.SetText(position, rule->Antecedent());
}

void FillRule(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    const Rule* rule = RuleOf(scored);
    rule == nullptr ? FillMissing(scored, category, outputs, position)
                    : outputs.SetText(position, rule->Antecedent() + " -> " + rule->consequent);
}

void FillRuleConfidence(const OutputCase& scored, int /*category*/, OutputValues& outputs, int position) {
    const Rule* rule = RuleOf(scored);
    outputs.SetNumber(position, rule == nullptr ? Prediction::kNone : rule->confidence);
}

void FillRuleSupport(const OutputCase& scored, int /*category*/, OutputValues& outputs, int position) {
    const Rule* rule = RuleOf(scored);
    outputs.SetNumber(position, rule == nullptr ? Prediction::kNone : rule->support);
}

/// The target's own value in the case less the predicted one.
double NumberResidual(const OutputCase& scored) {
    if (scored.targetSlot == OutputCase::kNoSlot || scored.value == nullptr ||
        scored.value->GetType() == ScoreValue::STRING_VALUE) {
        return Prediction::kNone;
    }
    const FieldValue& actual = scored.fields[scored.targetSlot];
    return actual.IsMissing() ? Prediction::kNone : actual.number - scored.value->GetDouble();
}

/// Whether the case has the category, 1 or 0, less the probability of it.
double CategoryResidual(const OutputCase& scored, int category) {
    const double probability = scored.prediction.ProbabilityOf(category);
    if (scored.targetSlot == OutputCase::kNoSlot || scored.fields[scored.targetSlot].IsMissing() ||
        probability == Prediction::kNone) {
        return Prediction::kNone;
    }
    const bool isActual =
        scored.fields[scored.targetSlot].category == scored.actualCodes[static_cast<std::size_t>(category)];
    return (isActual ? 1.0 : 0.0) - probability;
}

void FillResidual(const OutputCase& scored, int category, OutputValues& outputs, int position) {
    outputs.SetNumber(position, scored.isClassification ? CategoryResidual(scored, category) : NumberResidual(scored));
}

void FillResiduals(const OutputRows& scored, int category, double* numbers) {
    if (scored.isClassification) {
        FillProbabilities(scored, category, numbers);
    }
    for (std::size_t row = 0; row < scored.block.Rows(); ++row) {
        const RowView fields(scored.block, row);
        if (scored.targetSlot == OutputCase::kNoSlot || fields.IsMissing(scored.targetSlot) ||
            scored.predictions.predicted[row] == 0 || (scored.isClassification && numbers[row] == Prediction::kNone)) {
            numbers[row] = Prediction::kNone;
        } else if (scored.isClassification) {
            const int of = category == Prediction::kNoCategory ? scored.predictions.categories[row] : category;
            const bool isActual =
                fields.Category(scored.targetSlot) == scored.actualCodes[static_cast<std::size_t>(of)];
            numbers[row] = (isActual ? 1.0 : 0.0) - numbers[row];
        } else {
            numbers[row] = fields.Number(scored.targetSlot) - scored.predictions.numbers[row];
        }
    }
}

constexpr OutputFeature OfOtherModels(ScoreResultField::ResultFeature feature) {
    return {feature, Kind::STATED, FillMissing, InRows::MISSING};
}
constexpr OutputFeature Transformed(ByExpression expression) {
    return {RF::RF_NONE, Kind::NUMBER, FillMissing, InRows::MISSING, nullptr, OfCategory::NEVER, false, expression};
}

template <OutputFeature::GroundText kTextAt>
constexpr OutputFeature OfGrounds(ScoreResultField::ResultFeature resultFeature) {
    OutputFeature feature{resultFeature, Kind::TEXT, FillGround<kTextAt>, InRows::GROUNDS};
    feature.groundText = kTextAt;
    return feature;
}
constexpr OutputFeature OfRules() {
    OutputFeature feature = OfGrounds<ConsequentAt>(RF::RF_RULE_VALUE);
    feature.isOfRule = true;
    return feature;
}

constexpr OutputFeature OfEntities(ScoreResultField::ResultFeature resultFeature, OutputFeature::Fill fill) {
    OutputFeature feature{resultFeature, Kind::TEXT, fill, InRows::ENTITY};
    feature.groundText = EntityIdAt;
    feature.isOfEntities = true;
    return feature;
}
constexpr OutputFeature OfAffinities(ScoreResultField::ResultFeature resultFeature) {
    OutputFeature feature{resultFeature, Kind::NUMBER, FillAffinity, InRows::NUMBERS, FillAffinities};
    feature.isOfEntities = true;
    return feature;
}

constexpr OutputFeature kPredictedValue = {RF::RF_PREDICTED_VALUE, Kind::PREDICTED, FillPredicted, InRows::OF_CATEGORY,
                                           FillPredictedNumbers};

constexpr Word<OutputFeature> kFeatures[] = {
    {u"predictedValue", kPredictedValue},
    {u"predictedDisplayValue", {RF::RF_PREDICTED_DISPLAY_VALUE, Kind::TEXT, FillDisplayed, InRows::OF_CATEGORY}},
    {u"probability",
     {RF::RF_PROBABILITY, Kind::NUMBER, FillProbability, InRows::NUMBERS, FillProbabilities, OfCategory::ALWAYS}},
    {u"confidence", {RF::RF_NONE, Kind::NUMBER, FillConfidence, InRows::NUMBERS, FillConfidences, OfCategory::ALWAYS}},
    {u"entityId", OfEntities(RF::RF_ENTITY_ID, FillEntity)},
    {u"residual",
     {RF::RF_RESIDUAL, Kind::NUMBER, FillResidual, InRows::NUMBERS, FillResiduals, OfCategory::OF_CLASSIFICATION,
      true}},
    {u"transformedValue", Transformed(ByExpression::REQUIRED)},
    {u"decision", Transformed(ByExpression::OPTIONAL)},
    {u"standardError", {RF::RF_STANDARD_ERROR, Kind::NUMBER, FillStandardError, InRows::NUMBERS, FillStandardErrors}},
    {u"standardDeviation", OfOtherModels(RF::RF_STANDARD_DEVIATION)},
    {u"clusterId", OfEntities(RF::RF_CLUSTER_ID, FillCluster)},
    {u"clusterAffinity", OfAffinities(RF::RF_CLUSTER_AFFINITY)},
    {u"affinity", OfAffinities(RF::RF_CLUSTER_AFFINITY)},
    {u"entityAffinity", OfAffinities(RF::RF_ENTITY_AFFINITY)},
    {u"warning", OfOtherModels(RF::RF_WARNING)},
    {u"ruleValue", OfRules()},
    {u"reasonCode", OfGrounds<ReasonAt>(RF::RF_NONE)},
    {u"antecedent", {RF::RF_NONE, Kind::TEXT, FillAntecedent}},
    {u"consequent", OfGrounds<ConsequentAt>(RF::RF_NONE)},
    {u"rule", {RF::RF_NONE, Kind::TEXT, FillRule}},
    {u"ruleId", OfGrounds<RuleIdAt>(RF::RF_NONE)},
    {u"support", {RF::RF_NONE, Kind::NUMBER, FillRuleSupport}},
    {u"lift", OfOtherModels(RF::RF_NONE)},
    {u"leverage", OfOtherModels(RF::RF_NONE)},
    {u"confidenceIntervalLower", OfOtherModels(RF::RF_NONE)},
    {u"confidenceIntervalUpper", OfOtherModels(RF::RF_NONE)},
};

/// What a field tells of a rule.
constexpr Word<OutputFeature> kRuleFeatures[] = {
    {u"antecedent", {RF::RF_RULE_VALUE, Kind::TEXT, FillAntecedent}},
    {u"consequent", OfGrounds<ConsequentAt>(RF::RF_RULE_VALUE)},
    {u"rule", {RF::RF_RULE_VALUE, Kind::TEXT, FillRule}},
    {u"ruleId", OfGrounds<RuleIdAt>(RF::RF_RULE_VALUE)},
    {u"confidence", {RF::RF_RULE_VALUE, Kind::NUMBER, FillRuleConfidence}},
    {u"support", {RF::RF_RULE_VALUE, Kind::NUMBER, FillRuleSupport}},
    {u"lift", OfOtherModels(RF::RF_RULE_VALUE)},
    {u"leverage", OfOtherModels(RF::RF_RULE_VALUE)},
    {u"affinity", OfOtherModels(RF::RF_RULE_VALUE)},
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

OutputFeature PredictedValue() {
    return kPredictedValue;
}

OutputFeature PredictedCluster() {
    OutputFeature feature = kPredictedValue;
    feature.resultFeature = RF::RF_CLUSTER_ID;
    return feature;
}

OutputFeature ReadOutputFeature(const Element& outputField) {
    OutputFeature feature = outputField.OneOfOr(u"feature", kFeatures, kPredictedValue);
    if (feature.isOfRule) {
        return outputField.OneOfOr(u"ruleFeature", kRuleFeatures, feature);
    }
    if (feature.expression == ByExpression::OPTIONAL) {
        feature = HasExpression(outputField) ? Transformed(ByExpression::REQUIRED) : OfOtherModels(RF::RF_NONE);
    }
    return feature;
}

} // namespace veltrane_kit

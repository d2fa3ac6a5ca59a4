#ifndef VELTRANE_PLUGINS_MINING_SEGMENTATION_H
#define VELTRANE_PLUGINS_MINING_SEGMENTATION_H

#include "kit/conditions/condition.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace veltrane_mining {

/// What becomes of the predictions of the segments.
enum class Method : std::uint8_t {
    MAJORITY_VOTE,
    WEIGHTED_MAJORITY_VOTE,
    AVERAGE,
    WEIGHTED_AVERAGE,
    MEDIAN,
    WEIGHTED_MEDIAN,
    MAX,
    SUM,
    WEIGHTED_SUM,
    // One segment has the prediction.
    SELECT_FIRST,
    SELECT_ALL,
    MODEL_CHAIN
};

inline constexpr veltrane_kit::Word<Method> kMethods[] = {
    {u"majorityVote", Method::MAJORITY_VOTE},
    {u"weightedMajorityVote", Method::WEIGHTED_MAJORITY_VOTE},
    {u"average", Method::AVERAGE},
    {u"weightedAverage", Method::WEIGHTED_AVERAGE},
    {u"median", Method::MEDIAN},
    {u"weightedMedian", Method::WEIGHTED_MEDIAN},
    {u"max", Method::MAX},
    {u"sum", Method::SUM},
    {u"weightedSum", Method::WEIGHTED_SUM},
    {u"selectFirst", Method::SELECT_FIRST},
    {u"selectAll", Method::SELECT_ALL},
    {u"modelChain", Method::MODEL_CHAIN},
    // As producers wrote them ahead of version 4.4.
    {u"x-weightedMedian", Method::WEIGHTED_MEDIAN},
    {u"x-weightedSum", Method::WEIGHTED_SUM},
};

constexpr bool IsVote(Method method) {
    return method == Method::MAJORITY_VOTE || method == Method::WEIGHTED_MAJORITY_VOTE;
}
constexpr bool IsWeighted(Method method) {
    return method == Method::WEIGHTED_MAJORITY_VOTE || method == Method::WEIGHTED_AVERAGE ||
           method == Method::WEIGHTED_MEDIAN || method == Method::WEIGHTED_SUM;
}

/// What becomes of a case when a segment that it belongs to has no prediction for it.
enum class MissingPrediction : std::uint8_t { CONTINUE, SKIP_SEGMENT, RETURN_MISSING };

/// A model for the cases for which a condition holds.
struct Segment {
    /// A value that the segment tells, and the field that others see it as.
    struct Told {
        int from;
        int to;
    };

    std::string id; ///< its place from 1 where the document has none
    double weight = 1.0;
    veltrane_kit::Condition condition;
    std::unique_ptr<const veltrane_kit::ModelPlan> plan;
    std::vector<std::size_t> categories; ///< by the code of a category of the plan, that of the whole model
    bool predictsTarget = true;          ///< whether its predictions are of the kind of the whole model's
    bool looksBack = false;              ///< whether it has to see each case
    std::vector<Told> told;              ///< empty where nobody asks
    std::vector<int> named; ///< of the entities that the whole model's output fields name, their places in the plan's
};

/// The segments of a model and how they work together.
struct Segmentation {
    Method method = Method::MAJORITY_VOTE;
    MissingPrediction missing = MissingPrediction::CONTINUE;
    double threshold = 1.0; ///< more than this share of missing predictions makes the whole missing
    bool isClassification = false;
    veltrane_kit::Conditions conditions;
    std::vector<Segment> segments;
    std::size_t ahead = 0; ///< how many of them only tell fields to the others

    double WeightOf(const Segment& segment) const { return IsWeighted(method) ? segment.weight : 1.0; }
};

} // namespace veltrane_mining

#endif

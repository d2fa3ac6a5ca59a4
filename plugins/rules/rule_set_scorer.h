#ifndef VELTRANE_PLUGINS_RULES_RULE_SET_SCORER_H
#define VELTRANE_PLUGINS_RULES_RULE_SET_SCORER_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "rule_set.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>

namespace veltrane_rules {

/// A RuleSetModel: of the rules that hold for a case the criterion chooses what is predicted.
class RuleSetScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException what RuleSetReader throws; 260115 and 260272 for a model that hasn't one RuleSet
    RuleSetScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveMore() const override { return true; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

private:
    struct Hits;
    class Blocks;

    template <typename View>
    bool PredictFrom(const View& fields, veltrane_kit::Prediction& prediction, Hits& hits) const;
    template <typename View>
    void FindHits(const View& fields, Hits& hits) const;
    template <typename View>
    int LackingSlot(const View& fields) const;
    bool Order(Hits& hits) const;
    void PredictDefault(veltrane_kit::Prediction& prediction) const;
    bool PredictCategory(const Hits& hits, veltrane_kit::Prediction& prediction) const;
    void SetConfidences(const Hits& hits, veltrane_kit::Prediction& prediction) const;
    void SetProbabilities(Distribution distribution, veltrane_kit::Prediction& prediction) const;
    bool AddProbabilities(const Hits& hits, veltrane_kit::Prediction& prediction) const;
    const RuleScore& At(std::int32_t rule) const { return fRules.rules[static_cast<std::size_t>(rule)]; }

    RuleSet fRules;
    bool fIsClassification;
    std::size_t fTold; ///< how many of the rules that hold output fields ask for, by their ranks
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeRuleSetScorer(const veltrane_kit::Element& element,
                                                              veltrane_kit::ModelParts& parts);

} // namespace veltrane_rules

#endif

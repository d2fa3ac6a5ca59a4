#include "scorecard_scorer.h"

#include "kit/conditions/decide.h"
#include "scorecard_reader.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <vector>

namespace veltrane_scorecard {

using veltrane_kit::Block;
using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::PredictionBlock;
using veltrane_kit::RowView;
using veltrane_kit::Target;
using veltrane_kit::Truth;

/// How far a case is from the baselines, by reason.
struct ScorecardScorer::Differences : State {
    explicit Differences(const Scorecard& card) : byReason(card.reasons.size()), isMet(card.reasons.size()) {
        met.reserve(card.reasons.size());
        ranked.reserve(card.reasons.size());
    }

    struct Reason {
        double difference;
        std::size_t place; ///< among those that were met
        std::int32_t code;
    };

    void Start() {
        for (const std::int32_t code : met) {
            byReason[static_cast<std::size_t>(code)] = 0.0;
            isMet[static_cast<std::size_t>(code)] = 0;
        }
        met.clear();
    }

    void Add(std::int32_t code, double difference) {
        std::uint8_t& isKnown = isMet[static_cast<std::size_t>(code)];
        if (isKnown == 0) {
            met.push_back(code);
        }
        isKnown = 1;
        byReason[static_cast<std::size_t>(code)] += difference;
    }

    std::vector<double> byReason;
    std::vector<std::uint8_t> isMet;
    std::vector<std::int32_t> met; ///< in the order of the characteristics
    std::vector<Reason> ranked;
};

ScorecardScorer::ScorecardScorer(const Element& element, ModelParts& parts) {
    ScorecardReader(fCard, parts).Read(element);
}

std::unique_ptr<veltrane_kit::Scorer::State> ScorecardScorer::NewState() const {
    return std::make_unique<Differences>(fCard);
}

bool ScorecardScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    return PredictFrom(fields, prediction, static_cast<Differences&>(state));
}

/// A characteristic without an attribute that holds leaves the score open, and so do points that can't be computed.
template <typename View>
bool ScorecardScorer::PredictFrom(const View& fields, Prediction& prediction, Differences& differences) const {
    differences.Start();
    double score = fCard.initialScore;
    for (const Characteristic& characteristic : fCard.characteristics) {
        const Attribute* attribute = Find(characteristic, fields);
        if (attribute == nullptr) {
            prediction.lacking = LackingSlot(characteristic, fields);
            return false;
        }
        double points = attribute->points;
        if (attribute->slot != Attribute::kNone) {
            if (fields.IsMissing(attribute->slot)) {
                prediction.lacking = attribute->slot;
                return false;
            }
            points = fields.Number(attribute->slot);
        }
        score += points;
        if (fCard.tellsReasons) {
            const double above = points - characteristic.baseline;
            differences.Add(attribute->reason, fCard.areReasonsAbove ? above : -above);
        }
    }
    prediction.number = score;
    return std::isfinite(score) && RankReasons(prediction, differences);
}

template <typename View>
const Attribute* ScorecardScorer::Find(const Characteristic& characteristic, const View& fields) const {
    const Attribute* attribute = fCard.attributes.data() + characteristic.first;
    for (const Attribute* const end = attribute + characteristic.count; attribute != end; ++attribute) {
        bool usedSurrogate = false;
        if (fCard.conditions.Decide(attribute->condition, fields, usedSurrogate) == Truth::YES) {
            return attribute;
        }
    }
    return nullptr;
}

/// The first missing value that keeps an attribute from being decided.
template <typename View>
int ScorecardScorer::LackingSlot(const Characteristic& characteristic, const View& fields) const {
    int slot = Prediction::kNoSlot;
    for (int i = 0; i < characteristic.count && slot == Prediction::kNoSlot; ++i) {
        const auto at = static_cast<std::size_t>(characteristic.first) + static_cast<std::size_t>(i);
        slot = fCard.conditions.LackingSlot(fCard.attributes[at].condition, fields);
    }
    return slot;
}

/// The greatest difference comes first, among equal ones that of the characteristic that stands first. A characteristic
/// that is on the other side of its baseline is no reason.
/// @return false where a difference is beyond all doubles, so that there is no order
bool ScorecardScorer::RankReasons(Prediction& prediction, Differences& differences) const {
    std::vector<Differences::Reason>& ranked = differences.ranked;
    ranked.clear();
    for (const std::int32_t code : differences.met) {
        const double difference = differences.byReason[static_cast<std::size_t>(code)];
        if (!std::isfinite(difference)) {
            return false;
        }
        if (difference >= 0.0) {
            ranked.push_back({difference, ranked.size(), code});
        }
    }
    std::sort(ranked.begin(), ranked.end(), [](const Differences::Reason& a, const Differences::Reason& b) {
        return a.difference > b.difference || (a.difference == b.difference && a.place < b.place);
    });
    for (const Differences::Reason& reason : ranked) {
        prediction.grounds.reasons.push_back(&fCard.reasons[static_cast<std::size_t>(reason.code)]);
    }
    return true;
}

class ScorecardScorer::Blocks : public veltrane_kit::BlockScorer {
public:
    explicit Blocks(const ScorecardScorer& scorer) : fScorer(scorer) {}

    void Predict(Block& block, PredictionBlock& predictions, State& state) const override {
        Prediction& prediction = predictions.scratch;
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            prediction.Clear(predictions.Categories());
            if (fScorer.PredictFrom(RowView(block, row), prediction, static_cast<Differences&>(state))) {
                predictions.Set(row, prediction, block.Arena());
            } else {
                predictions.predicted[row] = 0;
            }
        }
    }

private:
    const ScorecardScorer& fScorer;
};

std::unique_ptr<const veltrane_kit::BlockScorer> ScorecardScorer::MakeBlockScorer() const {
    return std::make_unique<const Blocks>(*this);
}

void ScorecardScorer::Display(std::ostream& out, const Target& /*target*/) const {
    out << "initial score: " << fCard.initialScore << "\n";
    out << "characteristics: " << fCard.characteristics.size() << ", attributes: " << fCard.attributes.size() << "\n";
    out << "reason codes: "
        << (!fCard.tellsReasons     ? "none"
            : fCard.areReasonsAbove ? "pointsAbove"
                                    : "pointsBelow")
        << "\n";
}

std::unique_ptr<const veltrane_kit::Scorer> MakeScorecardScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const ScorecardScorer>(element, parts);
}

} // namespace veltrane_scorecard

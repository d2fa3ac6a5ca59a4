#include "neighbours_scorer.h"

#include "clustering/comparison_reader.h"
#include "kit/document/common_elements.h"
#include "kit/document/raise.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace veltrane_neighbours {

using veltrane_clustering::ComparisonReader;
using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;
using veltrane_kit::RowView;
using veltrane_kit::Word;

namespace {

constexpr Word<ContinuousMethod> kContinuous[] = {
    {u"median", ContinuousMethod::MEDIAN},
    {u"average", ContinuousMethod::AVERAGE},
    {u"weightedAverage", ContinuousMethod::WEIGHTED_AVERAGE},
};
constexpr Word<CategoricalMethod> kCategorical[] = {
    {u"majorityVote", CategoricalMethod::MAJORITY_VOTE},
    {u"weightedMajorityVote", CategoricalMethod::WEIGHTED_MAJORITY_VOTE},
};

} // namespace

/// What a thread needs.
struct NeighboursScorer::Room : State {
    std::vector<double> point; ///< the case
    bool lacks = false;        ///< whether it lacks an input
    NearestPoints nearest;
    PointTree::Room tree;
    VoteRoom votes;
    Prediction prediction; ///< of one row
};

NeighboursScorer::NeighboursScorer(const Element& element, ModelParts& parts) : fIsClustering(parts.IsClustering()) {
    for (const Element child : element.Children()) {
        if (!child.Is(u"TrainingInstances") && !child.Is(u"ComparisonMeasure") && !child.Is(u"KNNInputs")) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    if (fIsClustering && !parts.schema.target.empty()) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(u"functionName"), "functionName", element.Tag(),
                                             "classification, regression, mixed");
    }
    ReadVoting(element);
    ComparisonReader comparison(element, parts);
    ReadInputs(element.RequireChild(u"KNNInputs"), comparison);
    fInstances = InstanceReader(element, comparison, parts).Read();
    fComparison = comparison.Take();
    fNeighbours = std::min(fNeighbours, fInstances.Size());
    for (std::size_t i = 0; fIsClustering && i < fInstances.Size(); ++i) {
        fCategories.push_back(parts.target->CategoryOf(std::string_view(fInstances.ids[i])));
    }
    const bool isComplete = std::none_of(fInstances.points.begin(), fInstances.points.end(),
                                         [](double value) { return std::isnan(value); });
    if (isComplete && PointTree::Suits(fComparison)) {
        fTree = std::make_unique<const PointTree>(fComparison, fInstances.points);
    }
    FindNamed(parts);
}

void NeighboursScorer::ReadVoting(const Element& element) {
    fNeighbours = static_cast<std::size_t>(std::max(element.IntegerOr(u"numberOfNeighbors", 1), 1));
    fVoting.continuous = element.OneOfOr(u"continuousScoringMethod", kContinuous, ContinuousMethod::AVERAGE);
    fVoting.categorical = element.OneOfOr(u"categoricalScoringMethod", kCategorical, CategoricalMethod::MAJORITY_VOTE);
    fVoting.threshold = element.NumberOr(u"threshold", fVoting.threshold);
    if (fVoting.threshold < 0.0) {
        element.RaiseInvalid(u"threshold");
    }
}

void NeighboursScorer::ReadInputs(const Element& element, ComparisonReader& comparison) {
    std::set<std::string> names;
    for (const Element child : element.Children()) {
        if (!child.Is(u"KNNInput")) {
            child.RaiseMisplaced();
        }
        if (!names.insert(child.Text(u"field")).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.Text(u"field"), element.Tag());
        }
        comparison.AddField(child);
    }
    if (names.empty()) {
        Raise<Message::MISSING_NODE_IN>("KNNInput", element.Tag());
    }
    fVoting.isDistance = comparison.Get().isDistance;
}

void NeighboursScorer::FindNamed(ModelParts& parts) {
    veltrane_kit::AskedEntities& asked = parts.more.entities;
    std::unordered_map<std::string_view, std::size_t> places;
    for (std::size_t i = 0; !asked.GetNamed().empty() && i < fInstances.Size(); ++i) {
        places.emplace(fInstances.ids[i], i);
    }
    asked.Resolve([&](const std::string& id) { return places.count(id) > 0; });
    for (const veltrane_kit::AskedEntities::Named& named : asked.GetNamed()) {
        fNamed.push_back(places.at(named.id));
    }
}

std::unique_ptr<veltrane_kit::Scorer::State> NeighboursScorer::NewState() const {
    auto room = std::make_unique<Room>();
    room->point.resize(fComparison.Size());
    return room;
}

bool NeighboursScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    return PredictFrom(fields, prediction, static_cast<Room&>(state));
}

template <typename View>
bool NeighboursScorer::PredictFrom(const View& fields, Prediction& prediction, Room& room) const {
    room.lacks = false;
    for (std::size_t i = 0; i < fComparison.Size(); ++i) {
        room.point[i] = fComparison.fields[i].ValueOf(fields);
        room.lacks = room.lacks || std::isnan(room.point[i]);
    }
    const std::vector<Neighbour>& neighbours = Search(room);
    if (!neighbours.empty() && Answer(neighbours, prediction, room)) {
        Tell(neighbours, room, prediction);
        return true;
    }
    for (const veltrane_clustering::ComparedField& field : fComparison.fields) {
        if (fields.IsMissing(field.slot)) {
            prediction.lacking = field.slot;
            break;
        }
    }
    return false;
}

const std::vector<Neighbour>& NeighboursScorer::Search(Room& room) const {
    room.nearest.Start(fNeighbours, fComparison.isDistance);
    if (fTree != nullptr && !room.lacks) {
        fTree->Search(room.point.data(), room.nearest, room.tree);
    } else {
        Scan(room);
    }
    return room.nearest.Sort();
}

/// What the tree is held against.
void NeighboursScorer::Scan(Room& room) const {
    for (std::size_t i = 0; i < fInstances.Size(); ++i) {
        const double affinity =
            fComparison.Between(room.point.data(), fInstances.points.data() + i * fComparison.Size());
        if (std::isfinite(affinity)) {
            room.nearest.Meet({static_cast<std::uint32_t>(i), affinity});
        }
    }
}

/// The neighbours by their ranks, and what output fields ask of instances by name.
void NeighboursScorer::Tell(const std::vector<Neighbour>& neighbours, const Room& room, Prediction& prediction) const {
    for (const Neighbour& neighbour : neighbours) {
        prediction.grounds.entities.push_back({&fInstances.ids[neighbour.point], neighbour.affinity});
    }
    prediction.entityId = prediction.grounds.entities.front().id;
    prediction.affinity = neighbours.front().affinity;
    for (const std::size_t instance : fNamed) {
        const double affinity =
            fComparison.Between(room.point.data(), fInstances.points.data() + instance * fComparison.Size());
        prediction.affinities.push_back(std::isfinite(affinity) ? affinity : Prediction::kNone);
    }
}

/// A further target may go without an answer; the first one may not.
bool NeighboursScorer::Answer(const std::vector<Neighbour>& neighbours, Prediction& prediction, Room& room) const {
    if (fIsClustering) {
        for (const Neighbour& neighbour : neighbours) {
            prediction.grounds.order.push_back(fCategories[neighbour.point]);
        }
        prediction.category = prediction.grounds.order.front();
        return true;
    }
    const std::vector<TargetColumn>& targets = fInstances.targets;
    prediction.others.resize(targets.size() - 1);
    for (std::size_t i = 1; i < targets.size(); ++i) {
        Prediction& other = prediction.others[i - 1];
        other.Clear(targets[i].isCategory ? targets[i].counts.size() : 0);
        if (Vote(fVoting, neighbours, targets[i], room.votes, other) && !targets[i].isCategory) {
            const double adjusted = targets[i].target->Adjust(other.number);
            other.number = std::isfinite(adjusted) ? adjusted : Prediction::kNone;
        }
    }
    return Vote(fVoting, neighbours, targets.front(), room.votes, prediction);
}

/// Row by row, without the values of other fields.
class NeighboursScorer::Blocks : public veltrane_kit::BlockScorer {
public:
    explicit Blocks(const NeighboursScorer& scorer) : fScorer(scorer) {}

    void Predict(veltrane_kit::Block& block, veltrane_kit::PredictionBlock& predictions, State& state) const override {
        auto& room = static_cast<Room&>(state);
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            room.prediction.Clear(predictions.Categories());
            predictions.predicted[row] = 0;
            if (!block.IsRefused(row) && fScorer.PredictFrom(RowView(block, row), room.prediction, room)) {
                predictions.Set(row, room.prediction, block.Arena());
            } else {
                predictions.SetOthers(row, room.prediction.others);
            }
        }
    }

private:
    const NeighboursScorer& fScorer;
};

std::unique_ptr<const veltrane_kit::BlockScorer> NeighboursScorer::MakeBlockScorer() const {
    return std::make_unique<const Blocks>(*this);
}

void NeighboursScorer::Display(std::ostream& out, const veltrane_kit::Target& /*target*/) const {
    out << "neighbours: " << fNeighbours << " of " << fInstances.Size() << ", inputs: " << fComparison.Size() << "\n";
}

std::unique_ptr<const veltrane_kit::Scorer> MakeNeighboursScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const NeighboursScorer>(element, parts);
}

} // namespace veltrane_neighbours

#include "flat_ensemble.h"

#include "tree/tree_scorer.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <string>
#include <utility>

namespace veltrane_mining {

using veltrane_forest::Forest;
using veltrane_kit::Block;
using veltrane_kit::CaseView;
using veltrane_kit::Inputs;
using veltrane_kit::ModelPlan;
using veltrane_kit::Prediction;
using veltrane_kit::Test;
using veltrane_tree::NodeScore;
using veltrane_tree::TreeScorer;

namespace {

/// The tree that a segment is; null for one that isn't asked for all cases, or does more than predict.
const TreeScorer* TreeOf(const Segment& segment) {
    const bool isPlain =
        segment.condition.test == Test::ALWAYS && segment.told.empty() && !segment.looksBack && segment.predictsTarget;
    const auto* tree = isPlain ? dynamic_cast<const TreeScorer*>(&segment.plan->GetScorer()) : nullptr;
    return tree != nullptr && tree->PredictsAlone() ? tree : nullptr;
}

/// What a segment predicts for cases that come to a node of its tree.
bool PredictAt(const ModelPlan& plan, int node, Prediction& prediction) {
    prediction.Clear(plan.Layout()->categories.size());
    if (!static_cast<const TreeScorer&>(plan.GetScorer()).PredictAt(node, prediction)) {
        return false;
    }
    if (plan.IsClassification()) {
        return prediction.category != Prediction::kNoCategory;
    }
    prediction.number = plan.GetTarget().Adjust(prediction.number);
    return std::isfinite(prediction.number);
}

} // namespace

/// Keeps shares that are the same in one place.
class FlatEnsemble::SharedShares {
public:
    explicit SharedShares(std::vector<double>& shares) : fShares(shares) {}

    /// @return the place of the first share
    std::uint32_t PlaceOf(const std::vector<double>& shares) {
        std::string bits(shares.size() * sizeof(double), '\0');
        std::memcpy(bits.data(), shares.data(), bits.size());
        const auto [known, isNew] = fPlaces.try_emplace(std::move(bits), static_cast<std::uint32_t>(fShares.size()));
        if (isNew) {
            fShares.insert(fShares.end(), shares.begin(), shares.end());
        }
        return known->second;
    }

private:
    std::vector<double>& fShares;
    std::map<std::string, std::uint32_t> fPlaces; ///< by their bits
};

std::unique_ptr<const FlatEnsemble> FlatEnsemble::Of(const Segmentation& segmentation, std::size_t categories,
                                                     Forest::Walk walk) {
    if (segmentation.method >= Method::SELECT_FIRST || segmentation.ahead > 0) {
        return nullptr;
    }
    std::vector<const TreeScorer*> trees;
    for (const Segment& segment : segmentation.segments) {
        trees.push_back(TreeOf(segment));
        if (trees.back() == nullptr) {
            return nullptr;
        }
    }
    std::unique_ptr<Forest> forest = Forest::Plant(trees, walk);
    if (forest == nullptr) {
        return nullptr;
    }
    std::unique_ptr<FlatEnsemble> ensemble(new FlatEnsemble(segmentation, categories));
    SharedShares shared(ensemble->fShares);
    for (std::size_t tree = 0; tree < trees.size(); ++tree) {
        if (!ensemble->AddLeaves(segmentation.segments[tree], forest->LeavesOf(tree), shared)) {
            return nullptr;
        }
    }
    ensemble->fNumbers.shrink_to_fit();
    ensemble->fPlaces.shrink_to_fit();
    ensemble->fShares.shrink_to_fit();
    ensemble->fIsNone.shrink_to_fit();
    forest->ForgetLeaves();
    ensemble->fForest = std::move(forest);
    return ensemble;
}

/// @return false for a leaf without a prediction
bool FlatEnsemble::AddLeaves(const Segment& segment, const std::vector<std::int32_t>& leaves, SharedShares& shared) {
    const bool hasNone = std::find(leaves.begin(), leaves.end(), NodeScore::kNone) != leaves.end();
    fTrees.push_back({std::max(fNumbers.size(), fPlaces.size()), fSegmentation.WeightOf(segment)});
    if (hasNone) {
        fPartial.push_back({fTrees.size() - 1, fIsNone.size()});
    }
    if (!segment.plan->GetInputs().PassesAllOn()) {
        fReaders.push_back(&segment.plan->GetInputs());
    }
    fCount += 1.0;
    fWeight += fTrees.back().weight;
    Prediction prediction;
    std::vector<double> shares(fCategories);
    for (const std::int32_t leaf : leaves) {
        const bool isLeaf = leaf != NodeScore::kNone;
        if (isLeaf && !PredictAt(*segment.plan, leaf, prediction)) {
            return false;
        }
        if (hasNone) {
            fIsNone.push_back(isLeaf ? 0 : 1);
        }
        if (fCategories == 0) {
            fNumbers.push_back(isLeaf ? prediction.number : 0.0);
        } else if (IsVote(fSegmentation.method)) {
            fPlaces.push_back(
                isLeaf ? static_cast<std::uint32_t>(segment.categories[static_cast<std::size_t>(prediction.category)])
                       : 0);
        } else {
            std::fill(shares.begin(), shares.end(), 0.0);
            if (isLeaf) {
                Combination::FindShares(segment, prediction, shares);
            }
            fPlaces.push_back(shared.PlaceOf(shares));
        }
    }
    return true;
}

void FlatEnsemble::Look(Block& block, Room& room) const {
    room.unplain.assign(block.MostRows(), 0);
    for (const Inputs* reader : fReaders) {
        reader->ReadPart(block, room.unplain.data());
    }
    fForest->Look(block, room);
}

bool FlatEnsemble::Combine(const CaseView& fields, Room& room, Combination& combination) const {
    for (const Inputs* reader : fReaders) {
        if (reader->ReadPart(*fields.Room()) != Inputs::kNoSlot) {
            return false;
        }
    }
    if (!fForest->FindLeaves(fields, room)) {
        return false;
    }
    const std::uint32_t* const leaves = room.leaves.data();
    for (const Partial& partial : fPartial) {
        if (fIsNone[partial.first + leaves[partial.tree]] != 0) {
            return false;
        }
    }
    if (fCategories == 0 && Combination::IsSum(fSegmentation.method)) {
        double total = 0.0;
        for (std::size_t tree = 0; tree < fTrees.size(); ++tree) {
            total += fTrees[tree].weight * fNumbers[fTrees[tree].first + leaves[tree]];
        }
        *combination.Totals(0) = total;
    } else {
        for (std::size_t tree = 0; tree < fTrees.size(); ++tree) {
            AddTree(fTrees[tree], 1, leaves + tree, combination);
        }
    }
    combination.CountAll(fCount, fWeight);
    return true;
}

void FlatEnsemble::Combine(std::size_t rows, Room& room, Combination& combination) const {
    auto partial = fPartial.begin();
    const auto add = [&](std::size_t tree, const auto* leaves) {
        if (partial != fPartial.end() && partial->tree == tree) {
            for (std::size_t row = 0; row < rows; ++row) {
                room.unplain[row] |= fIsNone[partial->first + leaves[row]];
            }
            ++partial;
        }
        AddTree(fTrees[tree], rows, leaves, combination);
    };
    for (std::size_t tree = 0; tree < fTrees.size(); ++tree) {
        if (fForest->FindLeaves(tree, rows, room)) {
            add(tree, room.shortLeaves.data());
        } else {
            add(tree, room.leaves.data());
        }
    }
    combination.CountAll(fCount, fWeight);
}

/// Adds what one tree predicts.
/// @param leaves of the rows
template <typename Leaf>
void FlatEnsemble::AddTree(const Tree& tree, std::size_t rows, const Leaf* leaves, Combination& combination) const {
    if (fCategories == 0) {
        AddNumbers(fNumbers.data() + tree.first, tree.weight, rows, leaves, combination);
    } else if (IsVote(fSegmentation.method)) {
        const std::uint32_t* const votes = fPlaces.data() + tree.first;
        double* const totals = combination.Totals(0);
        for (std::size_t row = 0; row < rows; ++row) {
            totals[votes[leaves[row]] * rows + row] += tree.weight;
        }
    } else {
        AddShares(fPlaces.data() + tree.first, tree.weight, rows, leaves, combination);
    }
}

template <typename Leaf>
void FlatEnsemble::AddNumbers(const double* numbers, double weight, std::size_t rows, const Leaf* leaves,
                              Combination& combination) const {
    if (Combination::IsSum(fSegmentation.method)) {
        double* const totals = combination.Totals(0);
        for (std::size_t row = 0; row < rows; ++row) {
            totals[row] += weight * numbers[leaves[row]];
        }
        return;
    }
    for (std::size_t row = 0; row < rows; ++row) {
        combination.AddShare(fSegmentation.method, 0, numbers[leaves[row]], weight, row);
        combination.Count(row);
    }
}

template <typename Leaf>
void FlatEnsemble::AddShares(const std::uint32_t* places, double weight, std::size_t rows, const Leaf* leaves,
                             Combination& combination) const {
    const bool isSum = Combination::IsSum(fSegmentation.method);
    for (std::size_t category = 0; isSum && category < fCategories; ++category) {
        double* const totals = combination.Totals(category);
        const double* const shares = fShares.data() + category;
        for (std::size_t row = 0; row < rows; ++row) {
            totals[row] += weight * shares[places[leaves[row]]];
        }
    }
    for (std::size_t row = 0; !isSum && row < rows; ++row) {
        for (std::size_t category = 0; category < fCategories; ++category) {
            const double share = fShares[places[leaves[row]] + category];
            combination.AddShare(fSegmentation.method, category, share, weight, row);
        }
        combination.Count(row);
    }
}

std::size_t FlatEnsemble::Bytes() const {
    return fForest->Bytes() + fTrees.capacity() * sizeof(Tree) + fPlaces.capacity() * sizeof(std::uint32_t) +
           (fNumbers.capacity() + fShares.capacity()) * sizeof(double) + fIsNone.capacity() +
           fPartial.capacity() * sizeof(Partial);
}

} // namespace veltrane_mining

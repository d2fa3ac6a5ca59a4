#ifndef VELTRANE_PLUGINS_MINING_FLAT_ENSEMBLE_H
#define VELTRANE_PLUGINS_MINING_FLAT_ENSEMBLE_H

#include "combination.h"
#include "forest/forest.h"
#include "segmentation.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace veltrane_mining {

/// The segments of an ensemble of trees as one forest, with what each leaf brings to the whole: the same numbers, added
/// up in the same order, as segment by segment.
class FlatEnsemble {
public:
    using Room = veltrane_forest::Forest::Room;

    /// @param segmentation borrowed for the life of this object
    /// @param categories   of the target; 0 for a regression
    /// @return null where a segment isn't a tree for all cases that stands on the fields of the whole model alone,
    /// tells
    ///         others something or looks back, and where the trees make no forest
    static std::unique_ptr<const FlatEnsemble> Of(const Segmentation& segmentation, std::size_t categories,
                                                  veltrane_forest::Forest::Walk walk);

    /// Combines the predictions of all segments for a case.
    /// @param combination started for one case
    /// @return false for a case that goes segment by segment
    bool Combine(const veltrane_kit::CaseView& fields, Room& room, Combination& combination) const;

    /// Looks at the fields of a block, which tell of most of the rows that go segment by segment; the room has them.
    void Look(veltrane_kit::Block& block, Room& room) const;
    /// Combines the predictions of all segments for the rows of a block, after Look(). The room has the rows that go
    /// segment by segment then: what is combined of them counts for nothing.
    /// @param combination started for these rows
    void Combine(std::size_t rows, Room& room, Combination& combination) const;

    const veltrane_forest::Forest& Trees() const { return *fForest; }
    std::size_t Bytes() const;

private:
    /// What the leaves of one tree bring, from `first` on.
    struct Tree {
        std::size_t first;
        double weight;
    };

    /// A tree with leaves of cases that go segment by segment; their flags, from `first` on.
    struct Partial {
        std::size_t tree;
        std::size_t first;
    };

    class SharedShares;

    FlatEnsemble(const Segmentation& segmentation, std::size_t categories)
        : fSegmentation(segmentation), fCategories(categories) {}

    bool AddLeaves(const Segment& segment, const std::vector<std::int32_t>& leaves, SharedShares& shared);
    template <typename Leaf>
    void AddTree(const Tree& tree, std::size_t rows, const Leaf* leaves, Combination& combination) const;
    template <typename Leaf>
    void AddNumbers(const double* numbers, double weight, std::size_t rows, const Leaf* leaves,
                    Combination& combination) const;
    template <typename Leaf>
    void AddShares(const std::uint32_t* places, double weight, std::size_t rows, const Leaf* leaves,
                   Combination& combination) const;

    const Segmentation& fSegmentation;
    std::size_t fCategories;
    std::unique_ptr<const veltrane_forest::Forest> fForest;
    std::vector<const veltrane_kit::Inputs*> fReaders; ///< of segments that have fields of their own
    std::vector<Tree> fTrees;
    std::vector<Partial> fPartial;
    std::vector<std::uint8_t> fIsNone; ///< by leaf of a partial tree, 1 for a leaf without a prediction
    // By leaf, what it brings: one of these.
    std::vector<double> fNumbers;
    std::vector<std::uint32_t> fPlaces; ///< of a vote the category, else the shares
    std::vector<double> fShares;        ///< of each category; those that are the same stand here once
    double fCount = 0.0;                ///< of the predictions of a case
    double fWeight = 0.0;               ///< of all of them
};

} // namespace veltrane_mining

#endif

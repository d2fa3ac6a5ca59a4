#ifndef VELTRANE_PLUGINS_NEIGHBOURS_POINT_TREE_H
#define VELTRANE_PLUGINS_NEIGHBOURS_POINT_TREE_H

#include "clustering/comparison.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_neighbours {

/// A point and how near it is.
struct Neighbour {
    std::uint32_t point; ///< its place in the order of the document
    double affinity;
};

/// The nearest points that were met, with the farthest of them at hand. Of equally near ones the first in the document
/// is nearer.
class NearestPoints {
public:
    /// @param count      how many to keep
    /// @param isDistance whether the lowest affinities are the nearest
    void Start(std::size_t count, bool isDistance) {
        fCount = count;
        fIsDistance = isDistance;
        fPoints.clear();
    }

    bool IsFull() const { return fPoints.size() == fCount; }
    const Neighbour& Farthest() const { return fPoints.front(); }

    /// @param neighbour with a finite affinity
    void Meet(const Neighbour& neighbour);

    /// The nearest first; nothing may be met any more.
    const std::vector<Neighbour>& Sort();

private:
    bool IsNearer(const Neighbour& a, const Neighbour& b) const {
        return a.affinity == b.affinity ? a.point < b.point
               : fIsDistance            ? a.affinity < b.affinity
                                        : a.affinity > b.affinity;
    }

    std::size_t fCount = 0;
    bool fIsDistance = true;
    std::vector<Neighbour> fPoints; ///< a heap
};

/// Points that are searched in boxes (a k-d tree, Friedman, Bentley and Finkel 1977), for distances that add up the
/// differences of numbers. It finds what a scan of all points finds, bit for bit: the steps are those of Comparison, in
/// the order of the fields, and the distance to a box, taken in the same steps, is never above that to a point in it,
/// since rounding keeps an order.
class PointTree {
public:
    /// What a search needs.
    struct Room {
        struct Branch {
            std::uint32_t node;
            double bound; ///< the sum that no point in it is below
        };
        std::vector<Branch> branches;
        std::vector<const double*> columns; ///< of a leaf
        std::vector<double> sums;           ///< of its points
        double limit = 0.0;                 ///< the sum above which no point is among the nearest
        std::size_t leaves = 0;             ///< that were compared with any case
    };

    /// @param comparison borrowed
    /// @param points     rows of numbers, which are all there
    PointTree(const veltrane_clustering::Comparison& comparison, const std::vector<double>& points);

    /// Whether points are found in boxes for a comparison.
    static bool Suits(const veltrane_clustering::Comparison& comparison);

    /// Meets the points that may be among the nearest.
    /// @param x a case that lacks nothing
    void Search(const double* x, NearestPoints& nearest, Room& room) const;

private:
    /// So many points are compared at once.
    static constexpr std::size_t kLeaf = 32;

    struct Node {
        std::size_t first; ///< of its points, in the order of the tree
        std::size_t count;
        std::uint32_t left; ///< 0 for a leaf
        std::uint32_t right;
    };

    std::uint32_t Build(std::size_t first, std::size_t count, const std::vector<double>& points);
    void AddBox(std::size_t first, std::size_t count, const std::vector<double>& points);
    std::size_t WidestField(std::uint32_t node) const;
    void LayOut(const std::vector<double>& points);
    double Bound(std::uint32_t node, const double* x) const;
    void Compare(const Node& leaf, const double* x, NearestPoints& nearest, Room& room) const;
    double LimitOf(const NearestPoints& nearest) const;

    const veltrane_clustering::Comparison& fComparison;
    std::size_t fFields;
    std::vector<Node> fNodes;
    std::vector<double> fBoxes;         ///< of each node the lowest numbers of the fields, then the highest
    std::vector<std::uint32_t> fPoints; ///< places in the document, in the order of the tree
    std::vector<double> fColumns;       ///< of each leaf the numbers of its points, field by field
};

} // namespace veltrane_neighbours

#endif

#include "point_tree.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace veltrane_neighbours {

using veltrane_clustering::ComparedField;
using veltrane_clustering::CompareFunction;
using veltrane_clustering::Comparison;
using veltrane_clustering::Measure;

namespace {

constexpr double kMostPower = 64.0;

/// Sums that differ by less may have one root, and powers may be off by their last digits; sums near the lowest numbers
/// have few.
constexpr double kSlack = 1e-12;
constexpr double kLowSlack = 1e-300;

/// Roots below this have few digits too, or none, and many sums have the same.
constexpr double kLowRoot = 1e-290;

double Joined(Measure measure, double sum, double part) {
    return measure == Measure::CHEBYCHEV ? std::max(sum, part) : sum + part;
}

} // namespace

void NearestPoints::Meet(const Neighbour& neighbour) {
    const auto isNearer = [this](const Neighbour& a, const Neighbour& b) { return IsNearer(a, b); };
    if (!IsFull()) {
        fPoints.push_back(neighbour);
        std::push_heap(fPoints.begin(), fPoints.end(), isNearer);
    } else if (IsNearer(neighbour, fPoints.front())) {
        std::pop_heap(fPoints.begin(), fPoints.end(), isNearer);
        fPoints.back() = neighbour;
        std::push_heap(fPoints.begin(), fPoints.end(), isNearer);
    }
}

const std::vector<Neighbour>& NearestPoints::Sort() {
    std::sort_heap(fPoints.begin(), fPoints.end(),
                   [this](const Neighbour& a, const Neighbour& b) { return IsNearer(a, b); });
    return fPoints;
}

PointTree::PointTree(const Comparison& comparison, const std::vector<double>& points)
    : fComparison(comparison), fFields(comparison.Size()), fPoints(points.size() / comparison.Size()) {
    std::iota(fPoints.begin(), fPoints.end(), 0U);
    if (!fPoints.empty()) {
        Build(0, fPoints.size(), points);
    }
    LayOut(points);
}

bool PointTree::Suits(const Comparison& comparison) {
    const bool adds = comparison.isDistance && !CountsBits(comparison.measure) &&
                      (comparison.measure != Measure::MINKOWSKI || comparison.power <= kMostPower);
    return adds && std::all_of(comparison.fields.begin(), comparison.fields.end(), [](const ComparedField& field) {
               return field.function == CompareFunction::ABS_DIFF && !field.isCode;
           });
}

/// Halves the points by the field in which they are widest apart; the depth is the logarithm of their number.
std::uint32_t PointTree::Build(std::size_t first, std::size_t count, const std::vector<double>& points) {
    const auto node = static_cast<std::uint32_t>(fNodes.size());
    fNodes.push_back({first, count, 0, 0});
    AddBox(first, count, points);
    if (count <= kLeaf) {
        return node;
    }
    // Whole leaves on the left.
    const std::size_t half = (count / 2 + kLeaf - 1) / kLeaf * kLeaf;
    const std::size_t field = WidestField(node);
    const auto begin = fPoints.begin() + static_cast<std::ptrdiff_t>(first);
    std::nth_element(
        begin, begin + static_cast<std::ptrdiff_t>(half), begin + static_cast<std::ptrdiff_t>(count),
        [&](std::uint32_t a, std::uint32_t b) { return points[a * fFields + field] < points[b * fFields + field]; });
    const std::uint32_t left = Build(first, half, points);
    const std::uint32_t right = Build(first + half, count - half, points);
    fNodes[node].left = left;
    fNodes[node].right = right;
    return node;
}

void PointTree::AddBox(std::size_t first, std::size_t count, const std::vector<double>& points) {
    const std::size_t at = fBoxes.size();
    const double* const start = points.data() + fPoints[first] * fFields;
    fBoxes.insert(fBoxes.end(), start, start + fFields);
    fBoxes.insert(fBoxes.end(), start, start + fFields);
    for (std::size_t i = first; i < first + count; ++i) {
        const double* const point = points.data() + fPoints[i] * fFields;
        for (std::size_t field = 0; field < fFields; ++field) {
            fBoxes[at + field] = std::min(fBoxes[at + field], point[field]);
            fBoxes[at + fFields + field] = std::max(fBoxes[at + fFields + field], point[field]);
        }
    }
}

std::size_t PointTree::WidestField(std::uint32_t node) const {
    const double* const box = fBoxes.data() + node * 2 * fFields;
    std::size_t widest = 0;
    double most = -1.0;
    for (std::size_t field = 0; field < fFields; ++field) {
        const double width = fComparison.Part(fComparison.fields[field], box[fFields + field] - box[field]);
        if (width > most) {
            most = width;
            widest = field;
        }
    }
    return widest;
}

void PointTree::LayOut(const std::vector<double>& points) {
    fColumns.resize(points.size());
    for (const Node& node : fNodes) {
        for (std::size_t i = 0; node.left == 0 && i < node.count; ++i) {
            for (std::size_t field = 0; field < fFields; ++field) {
                fColumns[node.first * fFields + field * node.count + i] =
                    points[fPoints[node.first + i] * fFields + field];
            }
        }
    }
}

/// The distance to a box before its root is taken.
double PointTree::Bound(std::uint32_t node, const double* x) const {
    const double* const low = fBoxes.data() + node * 2 * fFields;
    const double* const high = low + fFields;
    double sum = 0.0;
    for (std::size_t field = 0; field < fFields; ++field) {
        const double gap = std::max({low[field] - x[field], x[field] - high[field], 0.0});
        sum = Joined(fComparison.measure, sum, fComparison.Part(fComparison.fields[field], gap));
    }
    return sum;
}

/// The sum above which no point is among the nearest.
double PointTree::LimitOf(const NearestPoints& nearest) const {
    if (!nearest.IsFull()) {
        return HUGE_VAL;
    }
    double sum = nearest.Farthest().affinity;
    if (fComparison.measure == Measure::EUCLIDEAN) {
        sum *= sum;
    } else if (fComparison.measure == Measure::MINKOWSKI) {
        sum = std::pow(std::max(sum, kLowRoot), fComparison.power);
    }
    return sum * (1.0 + kSlack) + kLowSlack;
}

void PointTree::Search(const double* x, NearestPoints& nearest, Room& room) const {
    room.branches.clear();
    room.sums.resize(kLeaf);
    room.columns.resize(fFields);
    room.limit = HUGE_VAL;
    if (!fNodes.empty()) {
        room.branches.push_back({0, Bound(0, x)});
    }
    while (!room.branches.empty()) {
        const Room::Branch branch = room.branches.back();
        room.branches.pop_back();
        const Node& node = fNodes[branch.node];
        if (branch.bound > room.limit) {
            continue;
        }
        if (node.left == 0) {
            Compare(node, x, nearest, room);
            continue;
        }
        Room::Branch near{node.left, Bound(node.left, x)};
        Room::Branch far{node.right, Bound(node.right, x)};
        if (far.bound < near.bound) {
            std::swap(near, far);
        }
        room.branches.push_back(far);
        room.branches.push_back(near);
    }
}

/// The differences between a case and the points of a leaf have no sign, so the points can take the place of cases.
void PointTree::Compare(const Node& leaf, const double* x, NearestPoints& nearest, Room& room) const {
    for (std::size_t field = 0; field < fFields; ++field) {
        room.columns[field] = fColumns.data() + leaf.first * fFields + field * leaf.count;
    }
    fComparison.AddUp(room.columns.data(), leaf.count, x, room.sums.data());
    ++room.leaves;
    for (std::size_t i = 0; i < leaf.count; ++i) {
        if (!(room.sums[i] <= room.limit)) {
            continue;
        }
        const double affinity = fComparison.Finish(room.sums[i]);
        if (std::isfinite(affinity)) {
            nearest.Meet({fPoints[leaf.first + i], affinity});
            room.limit = LimitOf(nearest);
        }
    }
}

} // namespace veltrane_neighbours

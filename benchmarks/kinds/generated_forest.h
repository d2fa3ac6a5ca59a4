#ifndef VELTRANE_BENCHMARKS_GENERATED_FOREST_H
#define VELTRANE_BENCHMARKS_GENERATED_FOREST_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace veltrane::bench {

/// A forest of random trees, as a document and as what a program by hand would walk. Trees up to 8 deep are full; below
/// that six of ten nodes go on, so that 16 levels have some 400 leaves.
class GeneratedForest {
public:
    static constexpr std::size_t kFields = 20;

    /// A node; a leaf has no field.
    struct Node {
        static constexpr std::int32_t kLeaf = -1;

        std::int32_t field = kLeaf;
        std::int32_t left = 0; ///< the right one stands behind it
        double number = 0.0;   ///< bound of a node, score of a leaf
    };

    GeneratedForest(int trees, int depth);

    const std::string& Document() const { return fDocument; }
    const std::vector<std::vector<Node>>& Trees() const { return fTrees; }
    std::size_t Nodes() const;

    /// The sum of all trees for a case.
    double ByHand(const double* fields) const;

private:
    double Next();
    void Grow(std::vector<Node>& tree, std::size_t at, int level, int depth);
    void Write(const std::vector<Node>& tree, std::size_t at, const std::string& condition);

    std::uint64_t fSeed = 1;
    std::vector<std::vector<Node>> fTrees;
    std::string fDocument;
};

} // namespace veltrane::bench

#endif

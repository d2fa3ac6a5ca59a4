#ifndef VELTRANE_TESTS_MODELS_RANDOM_FOREST_H
#define VELTRANE_TESTS_MODELS_RANDOM_FOREST_H

#include <cstddef>
#include <random>
#include <string>
#include <vector>

/// Ensembles of random trees, with conditions of all kinds that ask for one field.
namespace veltrane::tests {

struct ForestOptions {
    bool isClassification = false;
    std::string method = "sum";
    std::string missingPrediction = "continue";
    std::string strategy = "none"; ///< for missing values
    std::string noTrueChild = "returnNullPrediction";
    bool hasShares = false; ///< of a classification: score distributions
    bool hasSets = true;
    bool isWide = false; ///< with a field of more categories than a node has bits for
    int moreFields = 0;  ///< n0 and so on: numbers that full trees ask for too
    int trees = 9;
    int depth = 5;
    std::size_t leaves = 6; ///< one of so many nodes above the deepest ones is a leaf
    bool isFull = false;    ///< whether all nodes have two children that cases come to, above the deepest ones
};

class RandomForest {
public:
    RandomForest(const ForestOptions& options, unsigned seed) : fOptions(options), fRandom(seed) {}

    /// y of x, z, numbers, f of single precision, k, integers, c, o and, in a wide one, w of texts.
    std::string Document();

    /// The values that conditions compare with.
    static const std::vector<double>& Numbers();
    static std::vector<std::string> Texts(char field);

private:
    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(fRandom() % bound); }
    bool Perhaps(std::size_t of) { return Below(of) == 0; }
    std::string Number();
    std::vector<std::string> NumberFields() const;
    std::string Schema() const;
    std::string FullTree();
    std::string Tree();
    /// Of the numbers that a case may have at a node, by their places.
    struct Range {
        std::string field;
        std::size_t low;
        std::size_t high;
    };
    std::string FullNode(const std::string& condition, int depth, std::vector<Range> ranges);
    std::string Node(const std::string& condition, int depth);
    std::string Shares();
    std::vector<std::string> Split();
    std::vector<std::string> SplitNumber();
    std::vector<std::string> SplitTexts();
    std::string Test(const std::string& field, const std::string& comparison, const std::string& value);
    std::string Set(const std::string& field, const std::string& isIn, const std::vector<std::string>& values);

    ForestOptions fOptions;
    std::mt19937 fRandom;
    int fNextId = 0;
};

} // namespace veltrane::tests

#endif

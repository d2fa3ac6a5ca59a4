#ifndef VELTRANE_TESTS_MODELS_RANDOM_SEGMENTS_H
#define VELTRANE_TESTS_MODELS_RANDOM_SEGMENTS_H

#include <cstddef>
#include <random>
#include <string>
#include <vector>

/// Random models of models: segments of several kinds, nested, with conditions, weights, targets and output fields,
/// which those behind them read.
namespace veltrane::tests {

class RandomSegments {
public:
    explicit RandomSegments(unsigned seed) : fRandom(seed) {}

    /// y, a category of a, b and c, or w, a number, of x and z, numbers, and k of u and v.
    std::string Document();

private:
    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(fRandom() % bound); }
    bool Perhaps(std::size_t of) { return Below(of) == 0; }
    std::string OneOf(const std::vector<std::string>& texts) { return texts[Below(texts.size())]; }
    std::string Whole(int from, int to);

    std::string Schema(const std::string& target);
    std::string Output(const std::vector<std::string>& segments);
    std::string OutputField(const std::string& name, const std::vector<std::string>& segments);
    std::string Targets(const std::string& target);
    std::string Predicate();
    std::string Mining(const std::string& head, int depth);
    std::string Model(int depth);
    std::string Tree(const std::string& head);
    std::string Regression(const std::string& head);
    std::string Number(const std::string& head);
    std::string Category(const std::string& head);

    std::mt19937 fRandom;
    bool fIsCategory = false;        ///< of the model at hand
    std::vector<std::string> fTold;  ///< numbers that segments before told
    std::vector<std::string> fNames; ///< of the output fields of the model at hand that are numbers
    int fNext = 0;
};

} // namespace veltrane::tests

#endif

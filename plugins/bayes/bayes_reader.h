#ifndef VELTRANE_PLUGINS_BAYES_BAYES_READER_H
#define VELTRANE_PLUGINS_BAYES_BAYES_READER_H

#include "bayes_input.h"
#include "density.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace veltrane_bayes {

/// What a NaiveBayesModel comes to.
struct BayesModel {
    std::vector<int> categories; ///< codes of the target's
    std::vector<double> logs;    ///< of how often the categories are, each
    std::vector<BayesInput> inputs;
};

/// Reads one.
class BayesReader {
public:
    /// How many logarithms a model may keep beyond kMostOfOne for each count and density that the document has: all
    /// inputs have some for all categories.
    static constexpr std::size_t kMostSpare = 1000000;
    static constexpr std::size_t kMostOfOne = 64;

    /// @param parts borrowed
    explicit BayesReader(veltrane_kit::ModelParts& parts) : fParts(parts) {}

    /// @throws VTException 260120, 260285, 260153 for attributes; 260125, 260161, 260187 for fields; 260203 for an
    /// input,
    ///         a value or a category that comes twice; 260321 for a uniform distribution; 260115, 260272, 260283,
    ///         260216 for elements that are absent, doubled or don't go together, 260159 for those that have no place;
    ///         260227 for counts that would take more memory than they are worth; what reading expressions throws
    BayesModel Read(const veltrane_kit::Element& element);

private:
    using Counts = std::map<std::size_t, double>; ///< by the place of the category

    void ReadThreshold(const veltrane_kit::Element& element);
    void ReadOutput(const veltrane_kit::Element& element);
    void ReadInputs(const veltrane_kit::Element& parent);
    void ReadInput(const veltrane_kit::Element& element);
    int ReadDerived(const veltrane_kit::Element& input, const veltrane_kit::Element& derived);
    BayesInput ReadStats(const veltrane_kit::Element& input, const veltrane_kit::Element& stats);
    Density ReadDensity(const veltrane_kit::Element& stat);
    BayesInput ReadPairs(const veltrane_kit::Element& input, int slot);
    BayesInput MakeCounted(int slot, const std::vector<std::pair<int, Counts>>& values,
                           const std::vector<double>& sums) const;
    Counts ReadCounts(const veltrane_kit::Element& parent, bool isOutput, std::vector<double>& sums);
    std::size_t PlaceOf(const veltrane_kit::Element& element);
    void CheckRoom(const veltrane_kit::Element& input, std::size_t values);

    veltrane_kit::ModelParts& fParts;
    BayesModel fModel;
    std::map<int, std::size_t> fPlaces; ///< of the categories, by code
    std::set<std::string> fNames;       ///< of inputs
    double fLogThreshold = kNever;
    Threshold fOfDensities;
    std::size_t fListed = 0; ///< counts and densities of the document so far
    std::size_t fKept = 0;   ///< logarithms
};

} // namespace veltrane_bayes

#endif

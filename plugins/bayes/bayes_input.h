#ifndef VELTRANE_PLUGINS_BAYES_BAYES_INPUT_H
#define VELTRANE_PLUGINS_BAYES_BAYES_INPUT_H

#include "density.h"
#include "kit/columns/block.h"
#include "kit/inputs/case_view.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_bayes {

/// What an input says of the categories of the target: for each the logarithm of how likely it makes a value. A value
/// that is missing, or that no counts are told of, says nothing: the input is left out, which is a logarithm of 0.
class BayesInput {
public:
    /// Of counted values.
    /// @param places by the code of a value its place, `values` for none
    /// @param logs   by category and in it by place, a 0 behind the last
    BayesInput(int slot, std::vector<std::uint32_t> places, std::size_t values, std::vector<double> logs)
        : fSlot(slot), fPlaces(std::move(places)), fValues(values), fLogs(std::move(logs)) {}

    /// Of numbers.
    /// @param densities by category
    BayesInput(int slot, std::vector<Density> densities, Threshold threshold);

    /// Adds its logarithms to those of all categories.
    void Add(const veltrane_kit::CaseView& fields, std::vector<double>& logs) const;

    /// The same for the rows of a block, bit for bit.
    /// @param logs a category behind the other, each with so many rows
    void Add(const veltrane_kit::Block& block, double* logs, std::size_t categories) const;

private:
    bool IsCounted() const { return fDensities.empty(); }
    std::size_t PlaceOf(int code) const;
    void AddCounted(const veltrane_kit::Block& block, double* logs, std::size_t categories) const;
    void AddNumbers(const veltrane_kit::Block& block, double* logs) const;
    void AddDensity(const Density& density, const double* numbers, const double* factorials, std::size_t rows,
                    double* logs) const;

    int fSlot;
    std::vector<std::uint32_t> fPlaces;
    std::size_t fValues = 0;
    std::vector<double> fLogs;
    std::vector<Density> fDensities;
    bool fNeedsFactorials = false;
    Threshold fThreshold;
};

} // namespace veltrane_bayes

#endif

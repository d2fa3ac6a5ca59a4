#ifndef VELTRANE_PLUGINS_VECTORS_VECTORS_STATE_H
#define VELTRANE_PLUGINS_VECTORS_VECTORS_STATE_H

#include "vectors_scorer.h"

namespace veltrane_vectors {

struct VectorsScorer::Sums : State {
    explicit Sums(const Machines& machines)
        : x(machines.fields.size()), kernels(machines.vectors.Count()), numbers(machines.machines.size()) {}

    std::vector<double> x;       ///< of a case, by field
    std::vector<double> kernels; ///< of a case, by vector
    std::vector<double> numbers; ///< of a case, by machine
    Vectors::Prepared prepared;
    std::vector<std::int32_t> votes; ///< by category
    std::vector<double> rowsOfX;     ///< the same for Vectors::kRows cases, made with the first block
    std::vector<double> rowsOfKernels;
    std::vector<double> rowsOfNumbers;
};

} // namespace veltrane_vectors

#endif

#ifndef VELTRANE_PLUGINS_VECTORS_MACHINES_H
#define VELTRANE_PLUGINS_VECTORS_MACHINES_H

#include "kernel.h"
#include "vectors.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace veltrane_vectors {

/// A place of the vectors: a number of the case, or what a category counts where the case has it.
struct VectorField {
    static constexpr int kNoCategory = -1;

    int slot = 0;
    int category = kNoCategory;      ///< none for a number
    double coefficient = 1.0;        ///< of a category
    std::optional<double> ifMissing; ///< what stands in for a missing number
};

/// A SupportVectorMachine: a weighted sum of the kernels of some vectors, or of the fields themselves.
struct Machine {
    static constexpr int kNoCategory = -1;

    int category = kNoCategory;
    int alternate = kNoCategory;
    double threshold = 0.0;
    double bias = 0.0;
    std::vector<std::uint32_t> places; ///< of vectors; without any, the coefficients are those of the fields
    std::vector<double> coefficients;
};

/// What the numbers of several machines say of the categories.
enum class Method { ONE_AGAINST_ALL, ONE_AGAINST_ONE };

/// A SupportVectorMachineModel as it is computed.
struct Machines {
    explicit Machines(std::size_t fields) : vectors(fields) {}

    Kernel kernel;
    std::vector<VectorField> fields;
    Vectors vectors;
    std::vector<std::uint32_t> used; ///< the vectors that some machine has, ascending
    bool areOfFields = false;        ///< whether coefficients are those of fields
    std::vector<Machine> machines;
    Method method = Method::ONE_AGAINST_ALL;
    bool maxWins = false;
};

} // namespace veltrane_vectors

#endif

#ifndef VELTRANE_PLUGINS_VECTORS_KERNEL_H
#define VELTRANE_PLUGINS_VECTORS_KERNEL_H

#include <cmath>

namespace veltrane_vectors {

/// How a case and a vector are compared; the element ...KernelType of the document.
///
///     linear        x.v
///     polynomial    (gamma x.v + coef0)^degree
///     radial basis  exp(-gamma |x - v|^2)
///     sigmoid       tanh(gamma x.v + coef0)
struct Kernel {
    enum class Type { LINEAR, POLYNOMIAL, RADIAL_BASIS, SIGMOID };

    Type type = Type::LINEAR;
    double gamma = 1.0;
    double coef0 = 1.0;
    double degree = 1.0;

    /// Whether it is one of the distance, not of the product.
    bool IsOfDistance() const { return type == Type::RADIAL_BASIS; }

    /// @param sum the product of case and vector, or the square of the distance between them
    double Of(double sum) const {
        switch (type) {
        case Type::POLYNOMIAL:
            return std::pow(gamma * sum + coef0, degree);
        case Type::RADIAL_BASIS:
            return std::exp(-gamma * sum);
        case Type::SIGMOID:
            return std::tanh(gamma * sum + coef0);
        default:
            return sum;
        }
    }
};

} // namespace veltrane_vectors

#endif

#ifndef VELTRANE_PLUGINS_NETWORK_ACTIVATION_H
#define VELTRANE_PLUGINS_NETWORK_ACTIVATION_H

#include <cmath>
#include <numbers>

namespace veltrane_network {

/// What a neuron makes of the sum of its connections; the activationFunction of the document.
enum class Activation {
    THRESHOLD,
    LOGISTIC,
    TANH,
    IDENTITY,
    EXPONENTIAL,
    RECIPROCAL,
    SQUARE,
    GAUSS,
    SINE,
    COSINE,
    ELLIOTT,
    ARCTAN,
    RECTIFIER,
    RADIAL_BASIS
};

/// Without the overflow of exp(-z) for z far below 0.
inline double Logistic(double z) {
    const double e = std::exp(-std::abs(z));
    return (z >= 0.0 ? 1.0 : e) / (1.0 + e);
}

/// Hands the function of a layer to `use`, which applies it to one sum or to those of many rows: a switch for all of
/// them, and the same bits.
///
///     threshold     1 above the threshold, else 0        Gauss      exp(-z^2)
///     logistic      1 / (1 + exp(-z))                    sine       sin(z)
///     tanh          tanh(z)                              cosine     cos(z)
///     identity      z                                    Elliott    z / (1 + |z|)
///     exponential   exp(z)                               arctan     2 arctan(z) / pi
///     reciprocal    1 / z                                rectifier  the larger of 0 and z
///     square        z^2
///
/// @param activation any but RADIAL_BASIS, which depends on the neuron
template <typename Use>
void WithActivation(Activation activation, double threshold, const Use& use) {
    switch (activation) {
    case Activation::THRESHOLD:
        return use([threshold](double z) { return z > threshold ? 1.0 : 0.0; });
    case Activation::LOGISTIC:
        return use([](double z) { return Logistic(z); });
    case Activation::TANH:
        return use([](double z) { return std::tanh(z); });
    case Activation::EXPONENTIAL:
        return use([](double z) { return std::exp(z); });
    case Activation::RECIPROCAL:
        return use([](double z) { return 1.0 / z; });
    case Activation::SQUARE:
        return use([](double z) { return z * z; });
    case Activation::GAUSS:
        return use([](double z) { return std::exp(-(z * z)); });
    case Activation::SINE:
        return use([](double z) { return std::sin(z); });
    case Activation::COSINE:
        return use([](double z) { return std::cos(z); });
    case Activation::ELLIOTT:
        return use([](double z) { return z / (1.0 + std::abs(z)); });
    case Activation::ARCTAN:
        return use([](double z) { return 2.0 * std::atan(z) / std::numbers::pi; });
    case Activation::RECTIFIER:
        return use([](double z) { return z > 0.0 ? z : 0.0; });
    default:
        return;
    }
}

} // namespace veltrane_network

#endif

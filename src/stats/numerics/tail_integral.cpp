#include "stats/numerics/tail_integral.h"

#include "stats/numerics/steps.h"

#include <cmath>
#include <initializer_list>

namespace veltrane::stats {

namespace {

/// Below this size the logarithm is summed as a series.
constexpr double kSmall = 0.2;

/// What the integrand has fallen by, on the logarithmic scale, where the integral ends.
constexpr double kDepth = 46;

/// Panels of the interval, each with the nodes and weights below.
constexpr int kPanels = 3;

/// The positive nodes of the Legendre polynomial of degree 16, on [-1, 1], with their weights; the negative ones mirror
/// them.
struct Node {
    double at, weight;
};

constexpr Node kNodes[] = {
    {0.9894009349916499326, 0.027152459411754094852}, {0.94457502307323257608, 0.062253523938647892863},
    {0.86563120238783174388, 0.09515851168249278481}, {0.7554044083550030339, 0.12462897125553387205},
    {0.61787624440264374845, 0.14959598881657673208}, {0.45801677765722738634, 0.16915651939500253819},
    {0.28160355077925891323, 0.18260341504492358887}, {0.095012509837637440185, 0.18945061045506849629},
};

} // namespace

double LogOfOnePlusLess(double v) {
    if (!(std::fabs(v) < kSmall)) {
        return std::log1p(v) - v;
    }
    // log1p(v) = 2 artanh(r) with r = v / (2 + v), whose first term is v - r v.
    const double r = v / (2 + v);
    const double square = r * r;
    double sum = 0;
    for (int k = 17; k >= 3; k -= 2) {
        sum = sum * square + 2.0 / k;
    }
    return r * (square * sum - v);
}

double TailIntegral(double slope, BellFactor first, BellFactor second) {
    const double curvature = first.Curvature() + second.Curvature();
    const double length = 2 * kDepth / (slope + std::sqrt(slope * slope + 2 * kDepth * curvature));
    const double half = length / (2 * kPanels);
    double sum = 0;
    for (int panel = 0; panel < kPanels; ++panel) {
        const double middle = (2 * panel + 1) * half;
        for (const Node& node : kNodes) {
            CountStep();
            for (const double s : {middle - half * node.at, middle + half * node.at}) {
                sum += node.weight * std::exp(first.Log(s) + second.Log(s) - slope * s);
            }
        }
    }
    return sum * half;
}

} // namespace veltrane::stats

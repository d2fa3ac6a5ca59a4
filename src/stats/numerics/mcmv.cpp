#include <MCCommon_900/MCMV.h>

#include <limits>

namespace MCCommon_900 {

namespace {
constexpr double kMissing = -std::numeric_limits<double>::max();
}

double MCMV::Missing() {
    return kMissing;
}

bool MCMV::IsMissing(double value) {
    return value == kMissing;
}

} // namespace MCCommon_900

#include "kit/functions/numbers/normal.h"

#include "kit/functions/numbers/arithmetic.h"

#include <MCMath_900/MCDistFun.h>

namespace veltrane_kit::standard {

namespace {

using MCMath_900::MCDistFun;

/// The deviate of x; not a number for a standard deviation that is none.
double Deviate(const double* numbers) {
    return numbers[2] > 0.0 ? (numbers[0] - numbers[1]) / numbers[2] : kUndefined;
}

} // namespace

double StandardNormalCdf(double x) {
    return std::isnan(x) ? kUndefined : MCDistFun::CdfStdNorm(x);
}

double StandardNormalPdf(double x) {
    return std::isnan(x) ? kUndefined : MCDistFun::PdfNormalStandard(x);
}

double StandardNormalIdf(double p) {
    return p > 0.0 && p < 1.0 ? MCDistFun::IdfStdNorm(p) : kUndefined;
}

double NormalCdf(const double* numbers, std::size_t /*count*/) {
    return StandardNormalCdf(Deviate(numbers));
}

double NormalPdf(const double* numbers, std::size_t /*count*/) {
    return StandardNormalPdf(Deviate(numbers)) / numbers[2];
}

double NormalIdf(const double* numbers, std::size_t /*count*/) {
    return numbers[2] > 0.0 ? numbers[1] + numbers[2] * StandardNormalIdf(numbers[0]) : kUndefined;
}

} // namespace veltrane_kit::standard

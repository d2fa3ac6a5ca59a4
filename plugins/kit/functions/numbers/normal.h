#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_NORMAL_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_NORMAL_H

#include <cstddef>

/// The normal family. A standard deviation has to be above 0, a probability between 0 and 1.
namespace veltrane_kit::standard {

double StandardNormalCdf(double x);
double StandardNormalPdf(double x);
double StandardNormalIdf(double p);

// Of a quantile or a probability, a mean and a standard deviation.
double NormalCdf(const double* numbers, std::size_t count);
double NormalPdf(const double* numbers, std::size_t count);
double NormalIdf(const double* numbers, std::size_t count);

} // namespace veltrane_kit::standard

#endif

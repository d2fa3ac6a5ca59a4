#ifndef VELTRANE_DATA_NUMBER_FORMAT_H
#define VELTRANE_DATA_NUMBER_FORMAT_H

#include <string>

namespace veltrane::data {

/// A number as a default output string stream writes it: general format, six significant digits, in the global locale.
std::string StreamText(double value);

/// A number as an output string stream in fixed notation writes it: six decimals, in the global locale.
std::string StreamFixedText(double value);

} // namespace veltrane::data

#endif

#ifndef VELTRANE_TEXT_STATUS_H
#define VELTRANE_TEXT_STATUS_H

namespace veltrane::text {

/// The statuses of the conversions.
constexpr int kConverted = 0;
constexpr int kCut = 1;
constexpr int kNoMemory = 2;
constexpr int kNotConverted = 3;

} // namespace veltrane::text

#endif

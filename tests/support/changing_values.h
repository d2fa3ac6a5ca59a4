#ifndef VELTRANE_TESTS_SUPPORT_CHANGING_VALUES_H
#define VELTRANE_TESTS_SUPPORT_CHANGING_VALUES_H

#include <MCVeltrane_900/ScoreValue.h>

#include <random>

namespace veltrane::tests {

/// A new value of any kind, close to the others that this gives.
MCVeltrane_900::ScoreValue* AnyValue(std::mt19937& random);

/// Changes a value as a host does that kept a pointer to it, by any operation of its class.
void ChangeAnyhow(MCVeltrane_900::ScoreValue& value, std::mt19937& random);

} // namespace veltrane::tests

#endif

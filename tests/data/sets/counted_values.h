#ifndef VELTRANE_TESTS_DATA_COUNTED_VALUES_H
#define VELTRANE_TESTS_DATA_COUNTED_VALUES_H

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <sstream>
#include <string>

namespace veltrane::tests {

/// A number that counts its own destruction. Its clones are plain numbers.
class CountedNumber : public MCVeltrane_900::NumericValue {
public:
    CountedNumber(double value, int& deleted) : NumericValue(value), fDeleted(deleted) {}
    CountedNumber(const CountedNumber&) = delete;
    ~CountedNumber() override { ++fDeleted; }

private:
    int& fDeleted;
};

/// A text that counts its own destruction. Its clones are plain texts.
class CountedText : public MCVeltrane_900::StringValue {
public:
    CountedText(const std::string& text, int& deleted) : StringValue(text), fDeleted(deleted) {}
    CountedText(const CountedText&) = delete;
    ~CountedText() override { ++fDeleted; }

private:
    int& fDeleted;
};

/// The whole text of an object's Display.
template <typename T>
std::string Dump(const T& object) {
    std::ostringstream out;
    object.Display(out);
    return out.str();
}

} // namespace veltrane::tests

#endif

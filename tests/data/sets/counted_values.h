#ifndef VELTRANE_TESTS_DATA_COUNTED_VALUES_H
#define VELTRANE_TESTS_DATA_COUNTED_VALUES_H

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

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

/// Expects of all six operators that the first two are equal and the third is greater.
template <typename T>
void ExpectOrder(const T& one, const T& uno, const T& two) {
    EXPECT_TRUE(one == uno);
    EXPECT_FALSE(one == two);
    EXPECT_TRUE(one < two);
    EXPECT_FALSE(two < one);
    EXPECT_TRUE(two > one);
    EXPECT_FALSE(one > two);
    EXPECT_TRUE(one <= uno);
    EXPECT_FALSE(two <= one);
    EXPECT_TRUE(one >= uno);
    EXPECT_FALSE(one >= two);
}

/// The whole text of an object's Display.
template <typename T>
std::string Dump(const T& object) {
    std::ostringstream out;
    object.Display(out);
    return out.str();
}

} // namespace veltrane::tests

#endif

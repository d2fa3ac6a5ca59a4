#ifndef VELTRANE_TRANSFORM_APPLY_APPLY_FRAME_H
#define VELTRANE_TRANSFORM_APPLY_APPLY_FRAME_H

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// What the evaluation of an Apply keeps while the arguments of a function are gathered. The objects stay with the
/// derived field from case to case, so that nothing is allocated once every node has been evaluated.
namespace veltrane::transform {

/// A copy of a value that has to outlive the evaluation of its neighbours. It holds a copy of any of the library's own
/// values without allocating, and a clone of another one.
class HeldValue {
public:
    HeldValue() : fText("") {}

    void Take(const MCVeltrane_900::ScoreValue& value);
    void Clear() { fCurrent = nullptr; }

    /// The copy; null when there is none.
    const MCVeltrane_900::ScoreValue* Get() const { return fCurrent; }

private:
    MCVeltrane_900::NumericValue fNumber;
    MCVeltrane_900::StringValue fText;
    MCVeltrane_900::DateTimeValue fDate;
    std::unique_ptr<MCVeltrane_900::ScoreValue> fOther;
    const MCVeltrane_900::ScoreValue* fCurrent = nullptr;
};

/// The arguments of one function, as far as they have been evaluated.
struct ApplyFrame {
    std::vector<double> numbers;
    std::vector<std::string> texts;
    std::vector<int> widths;
    std::vector<std::unique_ptr<HeldValue>> values;
    std::size_t valueCount = 0;
    HeldValue kept; ///< the first argument of functions that need it to the end

    void Clear();
    void HoldValue(const MCVeltrane_900::ScoreValue& value);
};

/// The frames of a derived field, one for each level of its tree that is being evaluated.
class ApplyFrames {
public:
    ApplyFrame& Enter();
    void Leave() { --fDepth; }

    /// How many levels are being evaluated.
    int Depth() const { return static_cast<int>(fDepth); }

private:
    std::vector<std::unique_ptr<ApplyFrame>> fFrames;
    std::size_t fDepth = 0;
};

} // namespace veltrane::transform

#endif

#ifndef MCVELTRANE_900_SCOREENCODER_H
#define MCVELTRANE_900_SCOREENCODER_H

#include <veltrane_export.h>

#include <ostream>
#include <string>
#include <vector>

namespace MCVeltrane_900 {

class ScoreValue;

/// Maps the values of one variable to small dense codes and back.
///
/// Encode may learn: an unknown category gets the next code and is kept, without a lock. EncodeConst is its read-only
/// twin: an unknown category gives -1. Only EncodeConst, Decode and DecodeNum may run on a shared encoder.
class VELTRANE_API ScoreEncoder {
public:
    enum EncoderType : int {
        ENCODER_BINNING = 1,
        ENCODER_CAT_NUMERIC = 2,
        ENCODER_CAT_STRING = 3,
    };

    virtual ~ScoreEncoder();

    virtual EncoderType GetEncoderType() const = 0;
    virtual int GetNumberOfCategories() const = 0;

    /// The code of a value, learned if need be.
    /// @param value must not be null
    virtual int Encode(const ScoreValue* value) = 0;
    virtual int Encode(const std::string& text) = 0;

    /// The code of a value, or -1 for an unknown one.
    virtual int EncodeConst(const std::string& text) const = 0;
    /// @param value must not be null
    virtual int EncodeConst(const ScoreValue* value) const = 0;

    /// The text of a code; the empty string when it has none.
    virtual std::string Decode(int code) const = 0;
    /// The number of a code; SYSMIS when it has none.
    virtual double DecodeNum(int code) const = 0;

    /// A copy without the labels, owned by the caller.
    virtual ScoreEncoder* Clone() const = 0;

    /// Replaces the display labels, which are indexed by code.
    virtual void SetValueLabels(const std::vector<std::string>& labels) = 0;
    /// Sets one display label; a code that isn't in use is ignored.
    virtual void SetValueLabel(int code, const std::string& label) = 0;
    /// The display labels, or null where the encoder keeps none.
    virtual const std::vector<std::string>* GetValueLabels() const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif

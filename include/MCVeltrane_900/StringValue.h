#ifndef MCVELTRANE_900_STRINGVALUE_H
#define MCVELTRANE_900_STRINGVALUE_H

#include <MCVeltrane_900/ChangeMark.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <veltrane_export.h>

#include <concepts>
#include <string>

namespace MCVeltrane_900 {

/// A text, in bytes of the document's encoding. It is never system-missing.
///
/// Comparison ignores blanks (0x20) at the end, and nothing else. The stored length is a number of its own: SetString,
/// SetValue and the comparisons neither read nor write it.
class VELTRANE_API StringValue : public ScoreValue {
public:
    static constexpr int MAX_STRING = 255;

    /// Holds MAX_STRING NUL characters, with length 0.
    StringValue();

    /// @param text NUL-terminated; null is taken as the empty text
    StringValue(const char* text);
    StringValue(const std::string& text);

    /// The other's text; the length is the size of that text, not the other's stored length.
    StringValue(const StringValue& other);

    /// Copies text and stored length.
    StringValue& operator=(const StringValue& other);
    ~StringValue() override;

    /// Takes the text of another STRING_VALUE; any other kind empties the text.
    /// @param other not null
    void SetValue(const ScoreValue* other) override;
    ScoreValue* GetValue() const override;
    ScoreValue* Clone() const override;

    /// Equality without trailing blanks; false for any other kind of value.
    bool operator==(const ScoreValue& rhs) const override;

    /// The same operator with the exact type of its right side, so that a comparison of two concrete classes isn't
    /// ambiguous with its own reversed form.
    template <std::derived_from<ScoreValue> T>
    bool operator==(const T& rhs) const {
        return *this == static_cast<const ScoreValue&>(rhs);
    }

    bool Equal(const ScoreValue* other, bool noSpaceTrim, bool emptyStringOK) const override;

    /// The ordering operators compare bytes and are false for any other kind of value. How they treat a side that is
    /// blank or ends in blanks differs by operator and by side.
    bool operator>(const ScoreValue& rhs) const override;
    bool operator<(const ScoreValue& rhs) const override;
    bool operator<=(const ScoreValue& rhs) const override;
    bool operator>=(const ScoreValue& rhs) const override;

    /// False.
    bool IsSystemMissingValue() const override;

    /// The integer that the text starts with, as atoi reads it; 0 when there is none.
    int GetInt() const override;

    /// The number that the text starts with, the point as decimal sign; 0.0 when there is none.
    double GetDouble() const override;
    std::string GetString() const override;
    ValueType GetType() const override;

    /// Replaces the text; the stored length stays.
    void SetString(const std::string& text);

    /// The text itself, without a copy. The reference lasts until the next change of the text.
    const std::string& GetText() const { return fText; }

    /// The stored length.
    int GetLength() const;
    void SetLength(int length);

private:
    friend struct veltrane::data::Marks;

    std::string fText;
    int fLength;
    ChangeMark fChanges;
};

} // namespace MCVeltrane_900

#endif

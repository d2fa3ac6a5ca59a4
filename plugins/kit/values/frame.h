#ifndef VELTRANE_PLUGINS_KIT_FRAME_H
#define VELTRANE_PLUGINS_KIT_FRAME_H

#include "kit/values/values.h"

#include <veltrane/functions.h>

#include <cstddef>
#include <deque>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veltrane_kit {

/// The value of a field in the case at hand, as models read it.
struct FieldValue : Value {
    static constexpr double kMissingNumber = -std::numeric_limits<double>::max();
    static constexpr int kUnknownCategory = -1;

    int category = kUnknownCategory; ///< code, in fields that the model asks codes of

    bool IsMissing() const { return isMissing; }
};

/// What expressions need while they are evaluated, beside what the document says: how much of it, and of what. It grows
/// while expressions are read.
struct FrameLayout {
    /// The value of a field in the cases before, for a Lag.
    struct History {
        int field;               ///< whose values are kept
        std::size_t length;      ///< how many cases
        std::vector<int> blocks; ///< fields whose change forgets the cases before
        bool isInFunction;       ///< whether the fields are parameters, which have a value only while one is called
    };

    std::size_t fields = 0;
    std::size_t texts = 0;
    std::size_t memories = 0;
    std::vector<History> histories;
    bool needsOrder = false;        ///< whether something else than a Lag may look back on the cases before
    std::string encoding = "UTF-8"; ///< of all texts

    int AddField() { return static_cast<int>(fields++); }
    std::size_t AddText() { return texts++; }
    std::size_t AddMemory() { return memories++; }
};

/// Whether two values are equal, or both missing.
bool AreSameOrMissing(const Value& left, const Value& right);

/// A value that stays when its text is gone.
struct OwnedValue {
    OwnedValue() = default;
    OwnedValue(OwnedValue&& other) noexcept : value(other.value), text(std::move(other.text)) { value.text = text; }
    OwnedValue& operator=(OwnedValue&& other) noexcept {
        value = other.value;
        text = std::move(other.text);
        value.text = text;
        return *this;
    }
    OwnedValue(const OwnedValue&) = delete;
    OwnedValue& operator=(const OwnedValue&) = delete;

    void Keep(const Value& from);

    Value value; ///< shows `text`
    std::string text;
};

/// The state of one thread in the expressions of one document: the values of the case at hand, and those of the cases
/// before it as far as a Lag looks back.
class Frame {
public:
    /// @param layout borrowed; complete
    explicit Frame(const FrameLayout& layout);

    FieldValue& Field(int slot) { return fFields[static_cast<std::size_t>(slot)]; }
    const FieldValue& Field(int slot) const { return fFields[static_cast<std::size_t>(slot)]; }

    /// All of them, by slot; null where there are none.
    const FieldValue* Fields() const { return fFields.data(); }

    /// A text that an expression makes; it stays until the same expression makes the next one.
    std::string& Text(std::size_t place) { return fTexts[place]; }
    std::unique_ptr<veltrane::FunctionCall::Memory>& Memory(std::size_t place) { return fMemories[place]; }
    const std::string& Encoding() const { return fLayout.encoding; }

    /// The values that a Lag looks back on.
    const std::deque<OwnedValue>& Past(std::size_t history) const;

    /// Takes the values of the case at hand for those of the last one.
    void EndCase();
    /// The same for one history.
    void EndCase(std::size_t history);

    /// What is kept of the cases before.
    struct History {
        std::deque<OwnedValue> values;  ///< the nearest first
        std::vector<OwnedValue> blocks; ///< of the nearest case
    };
    const History& Kept(std::size_t history) const { return fHistories[history]; }
    const FrameLayout& Layout() const { return fLayout; }

private:
    bool IsSameBlock(const FrameLayout::History& layout, const History& history) const;

    const FrameLayout& fLayout;
    std::vector<FieldValue> fFields;
    std::vector<std::string> fTexts;
    std::vector<std::unique_ptr<veltrane::FunctionCall::Memory>> fMemories;
    std::vector<History> fHistories;
};

} // namespace veltrane_kit

#endif

#ifndef VELTRANE_PLUGINS_KIT_CONDITION_H
#define VELTRANE_PLUGINS_KIT_CONDITION_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_kit {

/// The answer of a condition for one case. A missing value leaves most comparisons unknown.
enum class Truth : std::uint8_t { NO, YES, UNKNOWN };

/// What a condition does. Numbers and date-times are compared as numbers; texts, and ordinal fields that list their
/// values, by the code of their category.
enum class Test : std::uint8_t {
    ALWAYS,
    NEVER,
    IS_MISSING,
    IS_NOT_MISSING,
    EQUAL,
    NOT_EQUAL,
    LESS,
    LESS_OR_EQUAL,
    GREATER,
    GREATER_OR_EQUAL,
    IS_CATEGORY,
    IS_NOT_CATEGORY,
    PLACE_LESS,
    PLACE_LESS_OR_EQUAL,
    PLACE_GREATER,
    PLACE_GREATER_OR_EQUAL,
    IN_NUMBERS,
    NOT_IN_NUMBERS,
    IN_CATEGORIES,
    NOT_IN_CATEGORIES,
    IN_FIRST_CATEGORIES,
    NOT_IN_FIRST_CATEGORIES,
    IN_FEW_CATEGORIES,
    NOT_IN_FEW_CATEGORIES,
    AND,
    OR,
    XOR,
    SURROGATE
};

/// One condition of a node, as small as it gets: a tree of a million nodes holds a million of them.
struct Condition {
    /// A run of a pool of Conditions: the parts of a compound, the numbers or the words of bits of a set.
    struct Span {
        std::int32_t first;
        std::int32_t count;
    };
    /// The place of a category in the order of an ordinal field. Values that the field doesn't list have no place.
    struct Place {
        std::int32_t code;
        std::int32_t listed; ///< how many values the field lists
    };

    Test test = Test::ALWAYS;
    std::int32_t slot = 0; ///< of the field, in the model's inputs
    union {
        double number = 0.0;
        std::int32_t category;
        Place place;
        Span span;
        std::uint64_t bits; ///< of a set of the first categories, one for each code
    };
};

/// What the conditions of a model share, and how they are decided. A view of a case has the operations of CaseView that
/// tell of a slot whether it is missing, its number and its category; decide.h has what is done with it.
class Conditions {
public:
    static constexpr int kNoSlot = -1;

    /// Decides a condition for a case. It allocates nothing; compounds nest as deep as the document did.
    /// @param usedSurrogate set to true when a surrogate stood in for a missing value, else left alone
    template <typename View>
    Truth Decide(const Condition& condition, const View& fields, bool& usedSurrogate) const;

    /// The same, condition by condition as they stand.
    template <typename View>
    Truth DecideAny(const Condition& condition, const View& fields, bool& usedSurrogate) const;

    /// The slot whose missing value keeps a condition from being decided, the first of several.
    /// @return kNoSlot for a condition that is decided
    template <typename View>
    int LackingSlot(const Condition& condition, const View& fields) const;

    /// The first part of a compound.
    const Condition& FirstPart(const Condition& compound) const {
        return fParts[static_cast<std::size_t>(compound.span.first)];
    }

    // What a condition consists of, for whoever compiles conditions further.

    /// A part of a compound.
    const Condition& Part(const Condition& compound, int index) const {
        return fParts[static_cast<std::size_t>(compound.span.first) + static_cast<std::size_t>(index)];
    }
    /// The numbers of a set of numbers, sorted.
    std::vector<double> NumbersOf(const Condition& set) const;
    /// The codes of a set of categories, sorted.
    std::vector<int> CategoriesOf(const Condition& set) const;

    // For the reader of conditions.

    /// Keeps the numbers of a set, in any order.
    Condition::Span AddNumbers(std::vector<double> numbers);
    /// Keeps the codes of a set of categories, none of them negative, and sets the condition's test and what belongs to
    /// it: a bit for each code, in the condition itself where all are among the first 64, else up to the highest, or
    /// the codes themselves where they are few among many, so that the memory of sets grows with their size alone.
    void SetCategories(Condition& condition, const std::vector<int>& codes, bool isIn);
    /// Keeps room for the parts of a compound.
    Condition::Span AddParts(int count);
    void SetPart(int index, const Condition& part) { fParts[static_cast<std::size_t>(index)] = part; }

    /// Gives back the room that wasn't needed.
    void Settle();

    /// The memory that is taken, in bytes.
    std::size_t Bytes() const;

private:
    template <typename View>
    Truth DecideValue(const Condition& condition, const View& fields) const;
    template <typename View>
    Truth DecideParts(const Condition& condition, const View& fields, bool& usedSurrogate) const;
    template <typename View>
    int FirstMissing(const Condition& condition, const View& fields) const;
    static bool HasBit(std::uint64_t bits, int code) {
        return code >= 0 && code < kWordBits && (bits >> static_cast<unsigned>(code) & 1U) != 0;
    }
    bool HasNumber(Condition::Span set, double number) const;
    bool HasCategory(Condition::Span set, int code) const;

    static constexpr int kWordBits = 64;

    std::vector<Condition> fParts;
    std::vector<double> fNumbers;      ///< of numbers, and of the codes of few categories; each set sorted
    std::vector<std::uint64_t> fWords; ///< a bit for each category code
};

} // namespace veltrane_kit

#endif

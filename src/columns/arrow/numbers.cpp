#include "columns/arrow/numbers.h"

#include "columns/fields/field_types.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veltrane::columns {

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

/// A float16: a sign, 5 bits of exponent, 10 of fraction.
struct Half {
    std::uint16_t bits;

    explicit operator double() const {
        constexpr int kFractionBits = 10;
        constexpr int kExponentMask = 0x1F;
        constexpr int kFractionMask = 0x3FF;
        constexpr int kBias = 15;
        const int exponent = bits >> kFractionBits & kExponentMask;
        const int fraction = bits & kFractionMask;
        double number = 0;
        if (exponent == kExponentMask) {
            number = fraction == 0 ? std::numeric_limits<double>::infinity() : kMissing;
        } else if (exponent == 0) {
            number = std::ldexp(fraction, 1 - kBias - kFractionBits);
        } else {
            number = std::ldexp(fraction + kFractionMask + 1, exponent - kBias - kFractionBits);
        }
        return (bits & 0x8000U) != 0 ? -number : number;
    }
};

/// Calls `use` with a whole number of the storage's type.
template <typename Use>
void WithIndexOf(Storage storage, Use use) {
    // NOLINTBEGIN(bugprone-branch-clone): each branch has a type of its own
    switch (storage) {
    case Storage::INT8:
        return use(std::int8_t());
    case Storage::UINT8:
        return use(std::uint8_t());
    case Storage::INT16:
        return use(std::int16_t());
    case Storage::UINT16:
        return use(std::uint16_t());
    case Storage::INT32:
        return use(std::int32_t());
    case Storage::UINT32:
        return use(std::uint32_t());
    case Storage::INT64:
        return use(std::int64_t());
    case Storage::UINT64:
        return use(std::uint64_t());
    default: // no other storage holds whole numbers
        return;
    }
    // NOLINTEND(bugprone-branch-clone)
}

/// The same with a number of any kind.
template <typename Use>
void WithNumberOf(Storage storage, Use use) {
    // NOLINTBEGIN(bugprone-branch-clone): as above
    switch (storage) {
    case Storage::FLOAT16:
        return use(Half{});
    case Storage::FLOAT32:
        return use(float());
    case Storage::FLOAT64:
        return use(double());
    default:
        return WithIndexOf(storage, use);
    }
    // NOLINTEND(bugprone-branch-clone)
}

struct Split {
    std::int64_t whole;
    std::int64_t rest; ///< from 0 on
};

Split Divide(std::int64_t number, std::int64_t divisor) {
    Split split{number / divisor, number % divisor};
    if (split.rest < 0) {
        --split.whole;
        split.rest += divisor;
    }
    return split;
}

/// From days or parts of seconds to what a type keeps. What lies within a day is no part of a date.
class MomentReader {
public:
    MomentReader(const ColumnFormat& format, DataType type)
        : fFormat(format), fDays(DaysTo1970(type)), fKeepsDays(type == DataType::DATE || CountsDays(type)) {}

    double operator()(std::int64_t number) const {
        const Split split = Divide(number, fFormat.unitsPerSecond);
        if (fFormat.family == Family::DATE) {
            return fKeepsDays ? DayOf(split.whole) : DayOf(split.whole) * kSecondsOfDay;
        }
        if (fKeepsDays) {
            return DayOf(Divide(split.whole, static_cast<std::int64_t>(kSecondsOfDay)).whole);
        }
        const double seconds = static_cast<double>(split.whole) + fDays * kSecondsOfDay;
        return seconds + static_cast<double>(split.rest) / static_cast<double>(fFormat.unitsPerSecond);
    }

private:
    double DayOf(std::int64_t day) const { return static_cast<double>(day) + fDays; }

    ColumnFormat fFormat;
    double fDays; ///< from the type's first day to 1970
    bool fKeepsDays;
};

template <typename Convert>
void ReadMoments(const Cells& cells, std::size_t row, std::size_t count, double* numbers, Convert convert) {
    for (std::size_t at = 0; at < count; ++at) {
        numbers[at] = convert(cells.format.storage == Storage::INT32 ? std::int64_t{cells.At<std::int32_t>(row + at)}
                                                                     : cells.At<std::int64_t>(row + at));
    }
}

void ReadValues(const Cells& cells, DataType type, std::size_t row, std::size_t count, double* numbers) {
    switch (cells.format.family) {
    case Family::BOOLEAN:
        for (std::size_t at = 0; at < count; ++at) {
            numbers[at] = cells.BitAt(row + at) ? 1.0 : 0.0;
        }
        return;
    case Family::DATE:
    case Family::TIME:
    case Family::TIMESTAMP:
        return ReadMoments(cells, row, count, numbers, MomentReader(cells.format, type));
    default:
        WithNumberOf(cells.format.storage, [&](auto kind) {
            for (std::size_t at = 0; at < count; ++at) {
                numbers[at] = static_cast<double>(cells.At<decltype(kind)>(row + at));
            }
        });
    }
}

/// Makes numbers missing where a bit says so. Most bytes of bits have no null.
void TakeOutNulls(const Validity& validity, std::size_t row, std::size_t count, double* numbers) {
    constexpr std::size_t kBitsOfByte = 8;
    constexpr std::uint8_t kAllThere = 0xFF;
    if (validity.bits == nullptr) {
        return;
    }
    for (std::size_t at = 0; at < count;) {
        const std::size_t place = validity.first + row + at;
        const bool isWholeByte = place % kBitsOfByte == 0 && at + kBitsOfByte <= count;
        if (isWholeByte && validity.bits[place / kBitsOfByte] == kAllThere) {
            at += kBitsOfByte;
            continue;
        }
        numbers[at] = validity.Has(row + at) ? numbers[at] : kMissing;
        ++at;
    }
}

/// Whether numbers of a storage can be used where they stand.
template <typename Number>
const Number* InPlace(const Cells& cells, Storage storage) {
    const bool isAligned = reinterpret_cast<std::uintptr_t>(cells.values) % alignof(Number) == 0;
    const bool isThere = cells.format.storage == storage && !cells.HasNulls() && cells.values != nullptr && isAligned;
    return isThere ? static_cast<const Number*>(cells.values) + cells.first : nullptr;
}

} // namespace

const double* NumbersInPlace(const Cells& cells) {
    return InPlace<double>(cells, Storage::FLOAT64);
}

const std::int32_t* CodesInPlace(const Cells& cells) {
    return InPlace<std::int32_t>(cells, Storage::INT32);
}

void ReadNumbers(const Cells& cells, DataType type, std::size_t row, std::size_t count, double* numbers) {
    if (cells.format.family == Family::NULLS) {
        std::fill_n(numbers, count, kMissing);
        return;
    }
    ReadValues(cells, type, row, count, numbers);
    TakeOutNulls(cells.own, row, count, numbers);
    TakeOutNulls(cells.ofRows, row, count, numbers);
}

std::size_t FindBadIndex(const Cells& cells, std::int64_t size) {
    std::size_t bad = cells.rows;
    WithIndexOf(cells.format.storage, [&](auto kind) {
        using Index = decltype(kind);
        for (std::size_t row = 0; row < cells.rows && bad == cells.rows; ++row) {
            const Index index = cells.At<Index>(row);
            if ((std::cmp_less(index, 0) || std::cmp_greater_equal(index, size)) && !cells.IsNull(row)) {
                bad = row;
            }
        }
    });
    return bad;
}

std::string IndexText(const Cells& cells, std::size_t row) {
    std::string text;
    WithIndexOf(cells.format.storage, [&](auto kind) { text = std::to_string(cells.At<decltype(kind)>(row)); });
    return text;
}

template <typename Value>
void LookUp(const Cells& cells, std::size_t row, std::size_t count, const Value* looked, Value nothing, Value* found) {
    WithIndexOf(cells.format.storage, [&](auto kind) {
        using Index = decltype(kind);
        if (!cells.HasNulls()) {
            for (std::size_t at = 0; at < count; ++at) {
                found[at] = looked[cells.At<Index>(row + at)];
            }
            return;
        }
        for (std::size_t at = 0; at < count; ++at) {
            found[at] = cells.IsNull(row + at) ? nothing : looked[cells.At<Index>(row + at)];
        }
    });
}

template void LookUp(const Cells&, std::size_t, std::size_t, const double*, double, double*);
template void LookUp(const Cells&, std::size_t, std::size_t, const std::int32_t*, std::int32_t, std::int32_t*);

} // namespace veltrane::columns

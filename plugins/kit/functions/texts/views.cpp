#include "kit/functions/texts/views.h"

#include "kit/functions/texts/bounds.h"
#include "kit/functions/texts/bytes.h"
#include "kit/functions/texts/characters.h"
#include "kit/functions/texts/patterns.h"
#include "kit/functions/texts/plain_pattern.h"
#include "kit/functions/texts/utf8.h"
#include "kit/values/values.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veltrane_kit::standard {

namespace {

/// A text of each row, or one for all of them.
class TextsOf {
public:
    TextsOf() = default;
    explicit TextsOf(const Column& column)
        : fFirst(column.texts), fSame(column.texts == nullptr ? column.TextAt(0) : std::string_view()) {}

    std::string_view operator[](std::size_t row) const { return fFirst == nullptr ? fSame : fFirst[row]; }

private:
    const std::string_view* fFirst = nullptr;
    std::string_view fSame;
};

/// The same of numbers.
class NumbersOf {
public:
    explicit NumbersOf(const Column& column) : fFirst(column.numbers), fSame(column.same.number) {}

    double operator[](std::size_t row) const { return fFirst == nullptr ? fSame : fFirst[row]; }

private:
    const double* fFirst;
    double fSame;
};

/// Calls an operation for each row with a text.
/// @param operation gives the result of a text; false for one that is left
template <typename Result, typename Operation>
std::size_t ForTexts(const Column& column, std::size_t from, std::size_t rows, Result* results,
                     const Operation& operation) {
    const TextsOf texts(column);
    for (std::size_t row = from; row < rows; ++row) {
        const std::string_view text = texts[row];
        if (text.data() == nullptr || !operation(text, row, results[row])) {
            return row;
        }
    }
    return rows;
}

template <char kFirst>
class Turned final : public ViewFunction {
public:
    Turned() : ViewFunction(DataType::STRING) {}

    std::size_t Compute(const std::vector<Column>& arguments, std::size_t from, std::size_t rows, TextArena& arena,
                        const Results& results) const override {
        return ForTexts(arguments[0], from, rows, results.texts,
                        [&arena](std::string_view text, std::size_t /*row*/, std::string_view& result) {
                            char* const bytes = arena.Take(text.size() + 1);
                            result = {bytes, bytes == nullptr ? 0 : text.size()};
                            return bytes == nullptr ? IsAsciiText(text) : TurnText<kFirst>(text, bytes);
                        });
    }
};

class Trimmed final : public ViewFunction {
public:
    Trimmed() : ViewFunction(DataType::STRING) {}

    std::size_t Compute(const std::vector<Column>& arguments, std::size_t from, std::size_t rows, TextArena& /*arena*/,
                        const Results& results) const override {
        return ForTexts(arguments[0], from, rows, results.texts,
                        [](std::string_view text, std::size_t /*row*/, std::string_view& result) {
                            const bool hasBlanks = !text.empty() && (text.front() <= ' ' || text.back() <= ' ');
                            result = hasBlanks ? WithoutBlanks(text) : text;
                            return true;
                        });
    }
};

class Length final : public ViewFunction {
public:
    Length() : ViewFunction(DataType::INTEGER) {}

    std::size_t Compute(const std::vector<Column>& arguments, std::size_t from, std::size_t rows, TextArena& /*arena*/,
                        const Results& results) const override {
        return ForTexts(arguments[0], from, rows, results.numbers,
                        [](std::string_view text, std::size_t /*row*/, double& result) {
                            result = static_cast<double>(IsAsciiText(text) ? text.size() : CountUtf8(text));
                            return true;
                        });
    }
};

class Part final : public ViewFunction {
public:
    Part() : ViewFunction(DataType::STRING) {}

    /// The number of a text is not a number.
    bool Takes(const std::vector<Column>& arguments) const override {
        return arguments[0].type == DataType::STRING &&
               std::all_of(arguments.begin() + 1, arguments.end(),
                           [](const Column& column) { return column.type && !IsText(*column.type); });
    }

    std::size_t Compute(const std::vector<Column>& arguments, std::size_t from, std::size_t rows, TextArena& /*arena*/,
                        const Results& results) const override {
        const NumbersOf starts(arguments[1]);
        const NumbersOf lengths(arguments[2]);
        return ForTexts(arguments[0], from, rows, results.texts,
                        [&](std::string_view text, std::size_t row, std::string_view& result) {
                            const double start = starts[row];
                            const double length = lengths[row];
                            constexpr double kMost = kLongestText;
                            if (!(start >= 1.0 && start <= kMost && length >= 0.0 && length <= kMost)) {
                                return false;
                            }
                            result = Cut(text, static_cast<std::size_t>(start) - 1, static_cast<std::size_t>(length));
                            return true;
                        });
    }

private:
    static std::string_view Cut(std::string_view text, std::size_t start, std::size_t length) {
        if (IsAsciiText(text)) {
            return text.substr(std::min(start, text.size()), length);
        }
        const std::string_view rest = text.substr(BytesOf(text, static_cast<double>(start)));
        return rest.substr(0, BytesOf(rest, static_cast<double>(length)));
    }
};

class Joined final : public ViewFunction {
public:
    static constexpr std::size_t kMost = 8;

    Joined() : ViewFunction(DataType::STRING) {}

    bool Takes(const std::vector<Column>& arguments) const override {
        return arguments.size() <= kMost && std::all_of(arguments.begin(), arguments.end(), [](const Column& column) {
                   return column.type == DataType::STRING;
               });
    }

    std::size_t Compute(const std::vector<Column>& arguments, std::size_t from, std::size_t rows, TextArena& arena,
                        const Results& results) const override {
        std::array<TextsOf, kMost> parts;
        std::transform(arguments.begin(), arguments.end(), parts.begin(),
                       [](const Column& column) { return TextsOf(column); });
        const std::size_t count = arguments.size();
        for (std::size_t row = from; row < rows; ++row) {
            std::size_t size = 0;
            bool isAnyMissing = false;
            for (std::size_t i = 0; i < count; ++i) {
                const std::string_view text = parts[i][row];
                size += text.size();
                isAnyMissing = isAnyMissing || text.data() == nullptr || size > kLongestText;
            }
            if (isAnyMissing) {
                return row;
            }
            char* const bytes = arena.Take(size + 1);
            results.texts[row] = {bytes, bytes == nullptr ? 0 : size};
            char* next = bytes;
            for (std::size_t i = 0; i < count && bytes != nullptr; ++i) {
                next = CopyText(parts[i][row], next);
            }
        }
        return rows;
    }
};

/// Whether a text is one for plain patterns.
bool IsShortAscii(std::string_view text) {
    return text.size() <= PlainPattern::kLongestSubject && IsAsciiText(text);
}

class Matched final : public ViewFunction {
public:
    explicit Matched(PlainPattern pattern) : ViewFunction(DataType::BOOLEAN), fPattern(std::move(pattern)) {}

    std::size_t Compute(const std::vector<Column>& arguments, std::size_t from, std::size_t rows, TextArena& /*arena*/,
                        const Results& results) const override {
        return ForTexts(arguments[0], from, rows, results.numbers,
                        [this](std::string_view text, std::size_t /*row*/, double& result) {
                            const auto found = IsShortAscii(text) ? fPattern.Find(text, 0) : std::nullopt;
                            result = found && found->begin != text.npos ? 1.0 : 0.0;
                            return found.has_value();
                        });
    }

private:
    PlainPattern fPattern;
};

class Replaced final : public ViewFunction {
public:
    static constexpr std::size_t kLongestReplacement = 64;

    Replaced(PlainPattern pattern, std::string_view replacement)
        : ViewFunction(DataType::STRING), fPattern(std::move(pattern)), fReplacement(replacement) {}

    std::size_t Compute(const std::vector<Column>& arguments, std::size_t from, std::size_t rows, TextArena& arena,
                        const Results& results) const override {
        return ForTexts(arguments[0], from, rows, results.texts,
                        [&](std::string_view text, std::size_t /*row*/, std::string_view& result) {
                            return IsShortAscii(text) && Replace(text, arena, result);
                        });
    }

private:
    /// A text without a match stays where it is.
    bool Replace(std::string_view text, TextArena& arena, std::string_view& result) const {
        std::optional<PlainPattern::Match> match = fPattern.Find(text, 0);
        if (!match || match->begin == text.npos) {
            result = text;
            return match.has_value();
        }
        // A match is at each byte at most, and at the end.
        std::array<char, PlainPattern::kLongestSubject*(kLongestReplacement + 1) + kLongestReplacement> room;
        char* next = room.data();
        std::size_t behind = 0; // the last match
        while (match && match->begin != text.npos) {
            next = CopyText(text.substr(behind, match->begin - behind), next);
            next = CopyText(fReplacement, next);
            behind = match->end;
            const bool isEmpty = match->begin == match->end;
            match = isEmpty && behind == text.size() ? PlainPattern::Match()
                                                     : fPattern.Find(text, behind + (isEmpty ? 1 : 0));
        }
        next = CopyText(text.substr(behind), next);
        result = match ? arena.Keep({room.data(), static_cast<std::size_t>(next - room.data())}) : result;
        return match.has_value();
    }

    PlainPattern fPattern;
    std::string fReplacement;
};

template <typename Form>
std::unique_ptr<const ViewFunction> Make(const std::vector<const Value*>& /*arguments*/) {
    return std::make_unique<Form>();
}

/// The pattern among the constants; none where it isn't a plain one.
std::optional<PlainPattern> PatternIn(const std::vector<const Value*>& arguments) {
    const Value* const pattern = arguments[1];
    return pattern == nullptr || pattern->isMissing || !IsText(pattern->type) ? std::nullopt
                                                                              : PlainPattern::Of(pattern->text);
}

std::unique_ptr<const ViewFunction> MakeMatched(const std::vector<const Value*>& arguments) {
    std::optional<PlainPattern> pattern = PatternIn(arguments);
    return pattern ? std::make_unique<Matched>(std::move(*pattern)) : nullptr;
}

/// A replacement that asks for groups is left.
std::unique_ptr<const ViewFunction> MakeReplaced(const std::vector<const Value*>& arguments) {
    const Value* const replacement = arguments[2];
    const bool isPlain = replacement != nullptr && !replacement->isMissing && IsText(replacement->type) &&
                         replacement->text.size() <= Replaced::kLongestReplacement && IsAsciiText(replacement->text) &&
                         replacement->text.find_first_of("$\\") == std::string_view::npos;
    std::optional<PlainPattern> pattern = isPlain ? PatternIn(arguments) : std::nullopt;
    return pattern ? std::make_unique<Replaced>(std::move(*pattern), replacement->text) : nullptr;
}

struct Form {
    Value (*function)(veltrane::FunctionCall&);
    std::unique_ptr<const ViewFunction> (*make)(const std::vector<const Value*>& arguments);
};

constexpr Form kForms[] = {
    {Uppercase, Make<Turned<'a'>>}, {Lowercase, Make<Turned<'A'>>}, {TrimBlanks, Make<Trimmed>},
    {StringLength, Make<Length>},   {Substring, Make<Part>},        {Concat, Make<Joined>},
    {Matches, MakeMatched},         {Replace, MakeReplaced},
};

} // namespace

bool ViewFunction::Takes(const std::vector<Column>& arguments) const {
    return arguments[0].type == DataType::STRING;
}

std::unique_ptr<const ViewFunction> MakeViewFunction(Value (*function)(veltrane::FunctionCall&),
                                                     const std::vector<const Value*>& arguments) {
    for (const Form& each : kForms) {
        if (each.function == function) {
            return each.make(arguments);
        }
    }
    return nullptr;
}

} // namespace veltrane_kit::standard

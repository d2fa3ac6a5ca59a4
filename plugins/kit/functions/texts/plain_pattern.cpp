#include "kit/functions/texts/plain_pattern.h"

#include <algorithm>
#include <charconv>

namespace veltrane_kit::standard {

namespace {

constexpr std::size_t kMostItems = 32;
constexpr std::size_t kMostTimes = 256;
constexpr std::size_t kUnbounded = std::string_view::npos;

/// The steps that a search may take. The engine counts no more than a few for one of these, and allows many times as
/// many for the shortest text, so that it ends with an answer wherever this does.
constexpr std::size_t kMostSteps = 20'000;

bool IsDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool IsWordByte(char byte) {
    return IsDigit(byte) || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_';
}

using Bytes = std::array<bool, 256>;

/// Whether a byte stands for itself, in a set too.
bool IsPlain(char byte) {
    constexpr std::string_view kOthers = " ,;/@%!\"'=<>~#";
    return IsWordByte(byte) || kOthers.find(byte) != kOthers.npos;
}

void Add(char first, char last, Bytes& bytes) {
    std::fill(bytes.begin() + first, bytes.begin() + last + 1, true);
}

/// All ASCII but these.
void TurnOver(Bytes& bytes) {
    for (std::size_t byte = 0; byte < 0x80; ++byte) {
        bytes[byte] = !bytes[byte];
    }
}

/// Takes one set off the front of an expression, such as "[^a-z_]", whose ranges are of letters and digits.
/// @return false for what isn't a plain one
bool TakeSet(std::string_view& text, Bytes& bytes) {
    const bool isTurnedOver = text.starts_with("[^");
    text.remove_prefix(isTurnedOver ? 2 : 1);
    bool isEmpty = true;
    while (!text.empty() && text.front() != ']') {
        const bool isRange = text.size() > 2 && text[1] == '-';
        const char last = isRange ? text[2] : text.front();
        const bool isPlain =
            isRange ? IsWordByte(text.front()) && IsWordByte(last) && text.front() <= last : IsPlain(text.front());
        if (!isPlain) {
            return false;
        }
        Add(text.front(), last, bytes);
        text.remove_prefix(isRange ? 3 : 1);
        isEmpty = false;
    }
    if (text.empty() || isEmpty) {
        return false;
    }
    text.remove_prefix(1);
    if (isTurnedOver) {
        TurnOver(bytes);
    }
    return true;
}

/// The same of a character behind a backslash.
bool TakeEscaped(std::string_view& text, Bytes& bytes) {
    constexpr std::string_view kThemselves = ".+*?()[]{}|^$\\/-";
    const char letter = text.size() > 1 ? text[1] : '\0';
    const bool isWord = letter == 'w' || letter == 'W';
    if (letter == 'd' || letter == 'D' || isWord) {
        Add('0', '9', bytes);
    } else if (letter != '\0' && kThemselves.find(letter) != kThemselves.npos) {
        Add(letter, letter, bytes);
    } else {
        return false;
    }
    if (isWord) {
        Add('a', 'z', bytes);
        Add('A', 'Z', bytes);
        Add('_', '_', bytes);
    }
    if (letter == 'D' || letter == 'W') {
        TurnOver(bytes);
    }
    text.remove_prefix(2);
    return true;
}

/// The same of anything that stands for one character.
bool TakeCharacter(std::string_view& text, Bytes& bytes) {
    const char first = text.front();
    if (first == '[') {
        return TakeSet(text, bytes);
    }
    if (first == '\\') {
        return TakeEscaped(text, bytes);
    }
    if (first == '.') {
        Add('\n', '\n', bytes);
        TurnOver(bytes);
    } else if (IsPlain(first) || first == '-' || first == ':') {
        Add(first, first, bytes);
    } else {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

/// Takes a count off the front of an expression.
/// @return false for none
bool TakeCount(std::string_view& text, std::size_t& count) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    const bool isCount = error == std::errc() && count <= kMostTimes;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return isCount;
}

/// Takes off the front of an expression how often its character comes.
/// @return false for what isn't plain
bool TakeTimes(std::string_view& text, std::size_t& least, std::size_t& most) {
    const char sign = text.empty() ? '\0' : text.front();
    if (sign == '{') {
        text.remove_prefix(1);
        if (!TakeCount(text, least)) {
            return false;
        }
        most = least;
        if (text.starts_with(',')) {
            text.remove_prefix(1);
            most = kUnbounded;
            if (!text.starts_with('}') && (!TakeCount(text, most) || most < least)) {
                return false;
            }
        }
        if (!text.starts_with('}') || most == 0) {
            return false;
        }
        text.remove_prefix(1);
    } else if (sign == '*' || sign == '+' || sign == '?') {
        least = sign == '+' ? 1 : 0;
        most = sign == '?' ? 1 : kUnbounded;
        text.remove_prefix(1);
    }
    // Behind it these would say which of several matches is meant.
    return text.empty() || std::string_view("*+?{").find(text.front()) == std::string_view::npos;
}

} // namespace

std::optional<PlainPattern> PlainPattern::Of(std::string_view expression) {
    PlainPattern pattern;
    if (expression.starts_with('^')) {
        pattern.fIsAtBegin = true;
        expression.remove_prefix(1);
    }
    while (!expression.empty() && expression != "$") {
        if (pattern.fItems.size() == kMostItems || !pattern.AddItem(expression)) {
            return std::nullopt;
        }
    }
    pattern.fIsAtEnd = !expression.empty();
    return pattern.fItems.empty() ? std::nullopt : std::optional(pattern);
}

bool PlainPattern::AddItem(std::string_view& expression) {
    Item item;
    if (!TakeCharacter(expression, item.takes) || !TakeTimes(expression, item.least, item.most)) {
        return false;
    }
    fItems.push_back(item);
    return true;
}

/// A search through one text.
class PlainPattern::Search {
public:
    Search(const PlainPattern& pattern, std::string_view subject) : fPattern(pattern), fSubject(subject) {}

    /// The end of a match of the items from one on that begins at a place, the longest first; npos for none.
    std::size_t EndOf(std::size_t item, std::size_t at) {
        for (; item < fPattern.fItems.size(); ++item) {
            const Item& each = fPattern.fItems[item];
            const std::size_t end = Taken(each, at);
            if (end - at < each.least) {
                return std::string_view::npos;
            }
            if (each.most != each.least) {
                return EndOfShorter(item, at + each.least, end);
            }
            at = end;
        }
        const bool isLastLine = at + 1 == fSubject.size() && fSubject[at] == '\n';
        return !fPattern.fIsAtEnd || at == fSubject.size() || isLastLine ? at : std::string_view::npos;
    }

    bool IsTooLong() const { return fSteps > kMostSteps; }

private:
    /// The end of the characters at a place that an item takes.
    std::size_t Taken(const Item& item, std::size_t at) {
        const std::size_t left = fSubject.size() - at;
        const std::size_t end = at + std::min(item.most, left);
        const std::size_t begin = at;
        while (at < end && item.takes[static_cast<unsigned char>(fSubject[at])]) {
            ++at;
        }
        fSteps += at - begin + 1;
        return at;
    }

    /// The same where an item takes as many characters as it can, and fewer where the rest doesn't match then.
    std::size_t EndOfShorter(std::size_t item, std::size_t shortest, std::size_t longest) {
        for (std::size_t at = longest;; --at) {
            const std::size_t end = EndOf(item + 1, at);
            if (end != std::string_view::npos || at == shortest || IsTooLong()) {
                return end;
            }
        }
    }

    const PlainPattern& fPattern;
    std::string_view fSubject;
    std::size_t fSteps = 0;
};

std::optional<PlainPattern::Match> PlainPattern::Find(std::string_view subject, std::size_t from) const {
    Search search(*this, subject);
    const Item& first = fItems.front();
    const std::size_t last = fIsAtBegin ? 0 : subject.size();
    for (std::size_t begin = from; begin <= last; ++begin) {
        if (first.least > 0 && (begin == subject.size() || !first.takes[static_cast<unsigned char>(subject[begin])])) {
            continue;
        }
        const std::size_t end = search.EndOf(0, begin);
        if (search.IsTooLong()) {
            return std::nullopt;
        }
        if (end != std::string_view::npos) {
            return Match{begin, end};
        }
    }
    return Match();
}

} // namespace veltrane_kit::standard

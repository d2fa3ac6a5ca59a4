#include "kit/document/array_words.h"

#include "kit/document/raise.h"

#include <string_view>

namespace veltrane_kit {

namespace {

/// So many words have room from the first one on.
constexpr std::size_t kUsualWords = 16;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// The first place from one on that is a blank, or that isn't.
template <bool kIsBlank>
std::size_t Find(std::string_view text, std::size_t place) {
    while (place < text.size() && IsBlank(text[place]) != kIsBlank) {
        ++place;
    }
    return place;
}

/// What stands between quotes.
/// @param place behind the first quote, then behind the last
/// @return false where no quote closes it
bool TakeQuoted(std::string_view text, std::size_t& place, std::string& word) {
    const std::string_view whole = text.substr(place, text.find('"', place) - place);
    if (whole.find('\\') == std::string_view::npos) {
        word = whole;
        place += whole.size();
        return place++ < text.size();
    }
    for (; place < text.size() && text[place] != '"'; ++place) {
        if (text[place] == '\\' && place + 1 < text.size() && text[place + 1] == '"') {
            ++place;
        }
        word.push_back(text[place]);
    }
    return place++ < text.size();
}

} // namespace

std::vector<std::string> ArrayWords(const Element& array) {
    const std::string content = array.Content();
    const std::string_view text = content;
    std::vector<std::string> words;
    words.reserve(kUsualWords);
    std::size_t place = Find<false>(text, 0);
    while (place < text.size()) {
        if (text[place] == '"') {
            if (!TakeQuoted(text, ++place, words.emplace_back())) {
                Raise<Message::INVALID_CONTENT>(content, array.Tag());
            }
        } else {
            const std::size_t end = Find<true>(text, place);
            words.emplace_back(text.substr(place, end - place));
            place = end;
        }
        place = Find<false>(text, place);
    }
    return words;
}

} // namespace veltrane_kit

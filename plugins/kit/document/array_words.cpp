#include "kit/document/array_words.h"

#include "kit/document/raise.h"

#include <algorithm>
#include <string_view>

namespace veltrane_kit {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// What stands between quotes.
/// @param place behind the first quote, then behind the last
/// @return false where no quote closes it
bool TakeQuoted(std::string_view text, std::size_t& place, std::string& word) {
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
    std::size_t place = text.find_first_not_of(kBlanks);
    while (place < text.size()) {
        if (text[place] == '"') {
            if (!TakeQuoted(text, ++place, words.emplace_back())) {
                Raise<Message::INVALID_CONTENT>(content, array.Tag());
            }
        } else {
            const std::size_t end = std::min(text.find_first_of(kBlanks, place), text.size());
            words.emplace_back(text.substr(place, end - place));
            place = end;
        }
        place = text.find_first_not_of(kBlanks, std::min(place, text.size()));
    }
    return words;
}

} // namespace veltrane_kit

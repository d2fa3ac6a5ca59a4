#include "kit/values/number_array.h"

#include "kit/document/array_words.h"
#include "kit/document/raise.h"
#include "kit/values/values.h"

#include <cmath>
#include <optional>

namespace veltrane_kit {

void CheckArrayType(const Element& array) {
    static constexpr Word<int> kTypes[] = {{u"real", 0}, {u"int", 1}, {u"string", 2}};
    array.OneOfOr(u"type", kTypes, 0);
}

std::vector<std::string> CountedWords(const Element& array) {
    CheckArrayType(array);
    std::vector<std::string> words = ArrayWords(array);
    if (array.Has(u"n") && array.Number(u"n") != static_cast<double>(words.size())) {
        RaiseAt<Message::ARRAY_SIZE_MISMATCH>(array.Tag(), "n", array.Text(u"n"), "n", std::to_string(words.size()));
    }
    return words;
}

std::vector<double> ArrayNumbers(const Element& array) {
    std::vector<double> numbers;
    for (const std::string& word : CountedWords(array)) {
        const std::optional<double> number = NumberIn(word);
        if (!number || !std::isfinite(*number)) {
            Raise<Message::INVALID_CONTENT>(word, array.Tag());
        }
        numbers.push_back(*number);
    }
    return numbers;
}

} // namespace veltrane_kit

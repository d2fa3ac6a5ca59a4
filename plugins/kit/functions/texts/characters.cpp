#include "kit/functions/texts/characters.h"

#include "kit/functions/texts/bounds.h"
#include "kit/functions/texts/text_memory.h"
#include "kit/functions/texts/utf8.h"
#include "kit/values/values.h"

#include <unicode/locid.h>

#include <algorithm>
#include <cmath>

namespace veltrane_kit::standard {

namespace {

using icu::UnicodeString;
using veltrane::FunctionCall;

/// Turns the letters of a text.
using Turn = void (*)(UnicodeString& characters);

bool IsUtf8(const FunctionCall& call) {
    return call.encoding == "UTF-8";
}

/// Letter by letter, so that one whose counterpart can't be written stays.
bool WriteWhatCanBe(const Transcoder& transcoder, const UnicodeString& characters, Turn turn, std::string& text) {
    UnicodeString turned;
    for (std::int32_t at = 0; at < characters.length(); at = characters.moveIndex32(at, 1)) {
        const UnicodeString letter(characters.char32At(at));
        UnicodeString other = letter;
        turn(other);
        turned.append(transcoder.Write(other, text) ? other : letter);
    }
    return transcoder.Write(turned, text);
}

Value Turned(FunctionCall& call, Turn turn) {
    std::string buffer;
    const std::string_view text = TextOf(call.arguments[0], buffer);
    const Transcoder& transcoder = TextMemory::Of(call).transcoder;
    const UnicodeString characters = transcoder.Read(text);
    UnicodeString turned = characters;
    turn(turned);
    const bool isWritten = transcoder.Write(turned, call.text) ||
                           (!transcoder.IsUtf8() && WriteWhatCanBe(transcoder, characters, turn, call.text));
    return isWritten ? MakeText(call.text) : MakeMissing(DataType::STRING);
}

/// The letters of ASCII from one on are turned into those from another one on.
Value TurnedAscii(FunctionCall& call, char first, char other, Turn turn) {
    std::string buffer;
    const std::string_view text = TextOf(call.arguments[0], buffer);
    if (!IsUtf8(call) || !IsAscii(text)) {
        return Turned(call, turn);
    }
    call.text.assign(text);
    TurnLetters(call.text.data(), call.text.size(), first, other);
    return MakeText(call.text);
}

} // namespace

Value Uppercase(FunctionCall& call) {
    return TurnedAscii(call, 'a', 'A', [](UnicodeString& characters) { characters.toUpper(icu::Locale::getRoot()); });
}

Value Lowercase(FunctionCall& call) {
    return TurnedAscii(call, 'A', 'a', [](UnicodeString& characters) { characters.toLower(icu::Locale::getRoot()); });
}

Value StringLength(FunctionCall& call) {
    std::string buffer;
    const std::string_view text = TextOf(call.arguments[0], buffer);
    const auto length = IsUtf8(call) ? static_cast<double>(CountUtf8(text))
                                     : static_cast<double>(TextMemory::Of(call).transcoder.Read(text).countChar32());
    return MakeNumber(length, DataType::INTEGER);
}

Value Substring(FunctionCall& call) {
    const double start = std::trunc(NumberOf(call.arguments[1])) - 1.0;
    const double length = std::trunc(NumberOf(call.arguments[2]));
    if (!(start >= 0.0 && length >= 0.0 && std::isfinite(start) && std::isfinite(length))) {
        return MakeMissing(DataType::STRING);
    }
    std::string buffer;
    const std::string_view text = TextOf(call.arguments[0], buffer);
    if (IsUtf8(call)) {
        const std::string_view rest = text.substr(BytesOf(text, start));
        call.text.assign(rest.substr(0, BytesOf(rest, length)));
        return MakeText(call.text);
    }
    const Transcoder& transcoder = TextMemory::Of(call).transcoder;
    const UnicodeString characters = transcoder.Read(text);
    const auto moved = [&characters](std::int32_t from, double count) {
        const double most = characters.length();
        return characters.moveIndex32(from, static_cast<std::int32_t>(std::min(count, most)));
    };
    const std::int32_t first = moved(0, start);
    const std::int32_t end = moved(first, length);
    return transcoder.Write(characters.tempSubStringBetween(first, end), call.text) ? MakeText(call.text)
                                                                                    : MakeMissing(DataType::STRING);
}

Value TrimBlanks(FunctionCall& call) {
    std::string buffer;
    call.text.assign(WithoutBlanks(TextOf(call.arguments[0], buffer)));
    return MakeText(call.text);
}

Value Concat(FunctionCall& call) {
    call.text.clear();
    std::string buffer;
    for (std::size_t i = 0; i < call.count; ++i) {
        const std::string_view text = TextOf(call.arguments[i], buffer);
        if (call.text.size() + text.size() > kLongestText) {
            return MakeMissing(DataType::STRING);
        }
        call.text.append(text);
    }
    return MakeText(call.text);
}

} // namespace veltrane_kit::standard

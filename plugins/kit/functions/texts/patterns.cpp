#include "kit/functions/texts/patterns.h"

#include "kit/functions/texts/text_memory.h"
#include "kit/values/values.h"

namespace veltrane_kit::standard {

namespace {

using icu::UnicodeString;
using veltrane::FunctionCall;

/// The expression of the second argument, which is compiled when it changes.
/// @return null for none
Regex* RegexOf(FunctionCall& call, TextMemory& memory) {
    std::string buffer;
    const std::string_view text = TextOf(call.arguments[1], buffer);
    if (!memory.regex || memory.patternText != text) {
        memory.regex.reset();
        memory.pattern = Pattern(memory.transcoder.Read(text));
        memory.patternText = text;
        if (memory.pattern.IsUsable()) {
            memory.regex.emplace(memory.pattern);
        }
    }
    return memory.regex ? &*memory.regex : nullptr;
}

UnicodeString Characters(const FunctionCall& call, std::size_t argument, const TextMemory& memory) {
    std::string buffer;
    return memory.transcoder.Read(TextOf(call.arguments[argument], buffer));
}

} // namespace

Value Matches(FunctionCall& call) {
    TextMemory& memory = TextMemory::Of(call);
    Regex* const regex = RegexOf(call, memory);
    if (regex == nullptr) {
        return MakeMissing(DataType::BOOLEAN);
    }
    const UnicodeString subject = Characters(call, 0, memory);
    regex->Start(subject);
    const std::optional<bool> found = regex->Find();
    return found ? MakeTruth(*found) : MakeMissing(DataType::BOOLEAN);
}

Value Replace(FunctionCall& call) {
    TextMemory& memory = TextMemory::Of(call);
    Regex* const regex = RegexOf(call, memory);
    if (regex == nullptr) {
        return MakeMissing(DataType::STRING);
    }
    const UnicodeString subject = Characters(call, 0, memory);
    regex->Start(subject);
    UnicodeString outcome;
    const bool isReplaced =
        regex->ReplaceAll(Characters(call, 2, memory), false, outcome) && memory.transcoder.Write(outcome, call.text);
    return isReplaced ? MakeText(call.text) : MakeMissing(DataType::STRING);
}

} // namespace veltrane_kit::standard

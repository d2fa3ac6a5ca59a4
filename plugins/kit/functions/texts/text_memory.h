#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_TEXT_MEMORY_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_TEXT_MEMORY_H

#include "kit/functions/texts/regex.h"
#include "kit/functions/texts/transcoder.h"

#include <veltrane/functions.h>

#include <memory>
#include <optional>
#include <string>

namespace veltrane_kit::standard {

/// What functions of texts keep for one place in a document.
struct TextMemory : veltrane::FunctionCall::Memory {
    explicit TextMemory(const std::string& encoding) : transcoder(encoding) {}

    Transcoder transcoder;
    Pattern pattern;
    std::string patternText; ///< that the pattern was made from, as the case has it
    std::optional<Regex> regex;

    static TextMemory& Of(veltrane::FunctionCall& call) {
        if (!call.memory) {
            call.memory = std::make_unique<TextMemory>(call.encoding);
        }
        return static_cast<TextMemory&>(*call.memory);
    }
};

} // namespace veltrane_kit::standard

#endif

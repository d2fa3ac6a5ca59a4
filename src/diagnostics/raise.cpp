#include "diagnostics/raise.h"

#include <MCVeltrane_900/VTException.h>

#include <array>
#include <string>

namespace veltrane::diagnostics {

void RaiseMessage(Message message, std::string_view detail, const std::string_view* parameters, std::size_t count) {
    std::array<std::string, kMaxParameters> texts;
    std::array<const char*, kMaxParameters> values{};
    for (std::size_t at = 0; at < count && at < kMaxParameters; ++at) {
        texts[at] = parameters[at];
        values[at] = texts[at].c_str();
    }
    MCVeltrane_900::VTException failure;
    failure.SetDetailMessage(std::string(detail).c_str());
    failure.PutErrorMessage(static_cast<int>(message), values[0], values[1], values[2], values[3], values[4], values[5],
                            nullptr);
    throw failure;
}

} // namespace veltrane::diagnostics

#include "platform/platform.h"

#include <MCXML_900/SystemEncoding.h>

#include <clocale>
#include <cstring>
#include <mutex>

namespace MCXML_900 {

namespace {

/// US English by the name it has on every system, then by those of systems that name the encoding, too.
constexpr const char* kLocales[] = {"en_US", "en_US.UTF-8", "C.UTF-8"};

void LeaveTheCLocale() {
    const char* current = std::setlocale(LC_CTYPE, nullptr);
    if (current == nullptr || std::strcmp(current, "C") != 0) {
        return;
    }
    for (const char* name : kLocales) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            veltrane::platform::SetEnvironment("LC_ALL", name);
            return;
        }
    }
}

std::string FindSystemEncoding() {
    EnableLocale();
    const char* current = std::setlocale(LC_CTYPE, nullptr);
    const char* dot = current != nullptr ? std::strchr(current, '.') : nullptr;
    return dot != nullptr ? dot + 1 : "CP1252";
}

} // namespace

void EnableLocale() {
    static std::once_flag once;
    std::call_once(once, LeaveTheCLocale);
}

const std::string& SystemEncoding() {
    static const std::string encoding = FindSystemEncoding();
    return encoding;
}

} // namespace MCXML_900

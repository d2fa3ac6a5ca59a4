#include "text/converters/code_pages.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace veltrane::text {

namespace {

constexpr long kLastNumber = 99999;

struct CodePage {
    long number;
    const char* name;
};

constexpr CodePage kCodePages[] = {
    {932, "windows-31j"}, {936, "GBK"},     {949, "KS_C_5601-1987"}, {950, "Big5"},         {1250, "cp1250"},
    {1251, "cp1251"},     {1252, "cp1252"}, {1253, "cp1253"},        {1254, "cp1254"},      {1255, "cp1255"},
    {1256, "cp1256"},     {1257, "cp1257"}, {1258, "cp1258"},        {28591, "ISO-8859-1"}, {65001, "UTF-8"},
};

bool IcuKnows(const char* name) {
    UErrorCode error = U_ZERO_ERROR;
    return ucnv_countAliases(name, &error) > 0 && U_SUCCESS(error);
}

/// The names to try for a number, in this order.
std::array<std::string, 3> Candidates(long number) {
    std::array<std::string, 3> names;
    const auto* row = std::find_if(std::begin(kCodePages), std::end(kCodePages),
                                   [=](const CodePage& page) { return page.number == number; });
    if (row != std::end(kCodePages)) {
        names[0] = row->name;
    }
    char text[32];
    std::snprintf(text, sizeof text, "windows-%03ld", number);
    names[1] = text;
    std::snprintf(text, sizeof text, "cp%03ld", number);
    names[2] = text;
    return names;
}

} // namespace

long CodePageNumber(const char* text) {
    char* end = nullptr;
    const unsigned long number = std::strtoul(text, &end, 10);
    const bool whole = end != text && *end == 0 && std::strchr(text, '-') == nullptr;
    return whole && number <= kLastNumber ? static_cast<long>(number) : 0;
}

std::string CodePageName(long number) {
    for (const std::string& name : Candidates(number)) {
        if (!name.empty() && IcuKnows(name.c_str())) {
            UErrorCode error = U_ZERO_ERROR;
            const char* standard = ucnv_getStandardName(name.c_str(), "IANA", &error);
            return U_SUCCESS(error) && standard != nullptr ? standard : name;
        }
    }
    return {};
}

} // namespace veltrane::text

#include "page.h"

#include <clocale>
#include <cstdlib>

namespace veltrane::tests {

namespace {

const Page* gCurrent = nullptr;

} // namespace

const std::vector<Page>& Pages() {
    static const std::vector<Page> pages = {
        {932, "ja_JP.WINDOWS-31J", "windows-31j", "83 5C", "83 83", "82 60", "82 81"},
        {936, "zh_CN.GBK", "GBK", "D4 53", "A3 A3", "A3 C1", "A3 E1"},
        {949, "ko_KR.CP949", "windows-949", "8C 63", "A3 A3", "A3 C1", "A3 E1"},
        {950, "zh_TW.BIG5", "Big5", "A5 5C", "A4 A4", "A2 CF", "A2 E9"},
        {1252, "en_US.CP1252", "cp1252", nullptr, nullptr, "C4", "E4"},
        {65001, "en_US.UTF-8", "UTF-8", nullptr, nullptr, "C3 84", "C3 A4"},
    };
    return pages;
}

const Page& CurrentPage() {
    return *gCurrent;
}

bool EnterPage(const Page& page) {
    gCurrent = &page;
    return setenv("LOCPATH", VELTRANE_TEST_LOCALES, 1) == 0 && std::setlocale(LC_ALL, page.locale) != nullptr;
}

} // namespace veltrane::tests

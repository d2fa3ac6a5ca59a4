// veltrane_code_page_tests --page=NUMBER: the tests in a process of one code page. Without a page, all pages one after
// the other.
#include "page.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <string>

namespace {

using namespace veltrane::tests;

/// The tests of these names are not for this page.
void LeaveOut(const std::string& pattern) {
    const std::string filter = GTEST_FLAG_GET(filter);
    GTEST_FLAG_SET(filter, filter + (filter.find('-') == filter.npos ? "-" : ":") + pattern);
}

int RunPage(int number, int argc, char** argv) {
    for (const Page& page : Pages()) {
        if (page.number == number) {
            if (!EnterPage(page)) {
                std::cerr << "no locale " << page.locale << " in " VELTRANE_TEST_LOCALES
                          << ": the build makes it with the package locales (tools/setup.sh test)\n";
                return 1;
            }
            testing::InitGoogleTest(&argc, argv);
            if (!page.IsDoubleByte()) {
                LeaveOut("*DoubleByte*");
            }
            return RUN_ALL_TESTS();
        }
    }
    std::cerr << "no code page " << number << "\n";
    return 1;
}

int RunAllPages(int argc, char** argv) {
    std::string arguments;
    for (int i = 1; i < argc; ++i) {
        arguments += " '" + std::string(argv[i]) + "'";
    }
    int failed = 0;
    for (const Page& page : Pages()) {
        const std::string command = "'" + std::string(argv[0]) + "' --page=" + std::to_string(page.number) + arguments;
        failed += std::system(command.c_str()) != 0 ? 1 : 0;
    }
    return failed != 0 ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::string option = "--page=";
    for (int i = 1; i < argc; ++i) {
        if (const std::string argument = argv[i]; argument.rfind(option, 0) == 0) {
            return RunPage(std::atoi(argument.c_str() + option.size()), argc, argv);
        }
    }
    return RunAllPages(argc, argv);
}

// The main function of the test programs. A program is started once and its tests share the process; those with
// threads, those of a suite named ...OwnProcess, and all of a program that asks for it get a process each.
#include "support/own_process.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <string>
#include <system_error>

namespace {

/// What a test may change of the process, and has to put back. One that doesn't fails here, by its own name: otherwise
/// another one would, and only in some orders.
class ProcessState : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& /*test*/) override {
        fLocaleOfC = std::setlocale(LC_ALL, nullptr);
        fLocale = std::locale();
        fFolder = std::filesystem::current_path();
    }

    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        if (!(std::locale() == fLocale)) {
            ADD_FAILURE() << "the test leaves another global std::locale";
            std::locale::global(fLocale);
        }
        if (std::setlocale(LC_ALL, nullptr) != fLocaleOfC) {
            ADD_FAILURE() << "the test leaves the locale " << std::setlocale(LC_ALL, nullptr);
            std::setlocale(LC_ALL, fLocaleOfC.c_str());
        }
        std::error_code gone;
        if (std::filesystem::current_path(gone) != fFolder) {
            ADD_FAILURE() << "the test leaves another working directory";
            std::filesystem::current_path(fFolder);
        }
    }

    std::string fLocaleOfC;
    std::locale fLocale;
    std::filesystem::path fFolder;
};

/// The first use of much of the library makes something for the process, which is where threads may race.
#ifdef VELTRANE_OWN_PROCESS
constexpr const char* kOwnProcess = "*";
#else
constexpr const char* kOwnProcess = "*Threads*.*:*OwnProcess*.*";
#endif

/// Whether gtest was told to run a part of the tests only that isn't the first.
bool IsLaterShard() {
    const char* shard = std::getenv("GTEST_SHARD_INDEX");
    return shard != nullptr && std::string(shard) != "0";
}

int RunInThisProcess() {
    testing::UnitTest::GetInstance()->listeners().Append(new ProcessState);
    return RUN_ALL_TESTS();
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const std::size_t chosen = veltrane::tests::ChosenTests("*").size();
    if (chosen == 0) {
        std::fprintf(stderr, "no test has a name like that: %s\n", GTEST_FLAG_GET(filter).c_str());
        return EXIT_FAILURE;
    }
    if (chosen == 1 || GTEST_FLAG_GET(list_tests)) {
        return RUN_ALL_TESTS(); // a debugger stays with it
    }
    const std::vector<std::string> own = veltrane::tests::ChosenTests(kOwnProcess);
    const bool passed = own.empty() || IsLaterShard() || veltrane::tests::RunInOwnProcesses(own);
    if (own.size() == chosen) {
        return passed ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    const std::string filter = GTEST_FLAG_GET(filter);
    GTEST_FLAG_SET(filter, filter + (filter.find('-') == filter.npos ? "-" : ":") + kOwnProcess);
    const int code = RunInThisProcess();
    return passed ? code : EXIT_FAILURE;
}

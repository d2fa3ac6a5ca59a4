#include "support/own_process.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fnmatch.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kSkipped = 77; ///< the exit code of a child whose test was skipped

/// Tells failures and the reasons of skips; gtest's own printer would frame every single test with its summary.
class FailurePrinter : public testing::EmptyTestEventListener {
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (result.failed() || result.skipped()) {
            std::printf("%s:%d: %s\n%s\n", result.file_name() != nullptr ? result.file_name() : "unknown file",
                        result.line_number(), result.skipped() ? "Skipped" : "Failure", result.message());
        }
    }
};

bool MatchesOneOf(const std::string& patterns, const std::string& name) {
    std::istringstream in(patterns);
    for (std::string pattern; std::getline(in, pattern, ':');) {
        if (fnmatch(pattern.c_str(), name.c_str(), 0) == 0) {
            return true;
        }
    }
    return false;
}

/// Reads a filter as gtest does: patterns, then behind a minus sign those to leave out.
bool IsChosen(const std::string& filter, const std::string& name) {
    const std::size_t minus = filter.find('-');
    const std::string chosen = filter.substr(0, minus);
    return MatchesOneOf(chosen.empty() ? "*" : chosen, name) &&
           (minus == std::string::npos || !MatchesOneOf(filter.substr(minus + 1), name));
}

/// What the child does.
[[noreturn]] void RunOnly(const std::string& name) {
    GTEST_FLAG_SET(filter, name);
    GTEST_FLAG_SET(output, "");
    unsetenv("GTEST_TOTAL_SHARDS"); // the tests were chosen before
    testing::UnitTest& all = *testing::UnitTest::GetInstance();
    delete all.listeners().Release(all.listeners().default_result_printer());
    all.listeners().Append(new FailurePrinter);
    const int code = RUN_ALL_TESTS();
    if (code == 0 && all.test_to_run_count() != 1) {
        std::exit(EXIT_FAILURE);
    }
    std::exit(code == 0 && all.skipped_test_count() > 0 ? kSkipped : code);
}

/// @return how the child ended, as waitpid tells it
int RunInChild(const std::string& name) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        RunOnly(name);
    }
    int status = -1;
    if (child < 0 || waitpid(child, &status, 0) != child) {
        std::perror("no child for the test");
    }
    return status;
}

struct Counts {
    std::size_t passed = 0;
    std::size_t skipped = 0;
    std::vector<std::string> failed;
};

Counts RunEachInChild(const std::vector<std::string>& names) {
    Counts counts;
    for (const std::string& name : names) {
        const int status = RunInChild(name);
        if (WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS) {
            ++counts.passed;
        } else if (WIFEXITED(status) && WEXITSTATUS(status) == kSkipped) {
            ++counts.skipped;
        } else {
            const std::string end = WIFSIGNALED(status) ? " (signal " + std::to_string(WTERMSIG(status)) + ")" : "";
            counts.failed.push_back(name + end);
            std::printf("[  FAILED  ] %s\n", counts.failed.back().c_str());
        }
    }
    return counts;
}

/// The closing lines of gtest, which other tools read.
void PrintSummary(const Counts& counts) {
    std::printf("[==========] %zu tests ran, each in a process of its own.\n[  PASSED  ] %zu tests.\n",
                counts.passed + counts.skipped + counts.failed.size(), counts.passed);
    if (counts.skipped > 0) {
        std::printf("[  SKIPPED ] %zu tests.\n", counts.skipped);
    }
    if (!counts.failed.empty()) {
        std::printf("[  FAILED  ] %zu tests, listed below:\n", counts.failed.size());
        for (const std::string& name : counts.failed) {
            std::printf("[  FAILED  ] %s\n", name.c_str());
        }
    }
}

} // namespace

namespace veltrane::tests {

std::vector<std::string> ChosenTests(const std::string& patterns) {
    std::vector<std::string> names;
    const testing::UnitTest& all = *testing::UnitTest::GetInstance();
    for (int i = 0; i < all.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *all.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j) {
            const std::string name = std::string(suite.name()) + "." + suite.GetTestInfo(j)->name();
            if (IsChosen(GTEST_FLAG_GET(filter), name) && MatchesOneOf(patterns, name)) {
                names.push_back(name);
            }
        }
    }
    return names;
}

bool RunInOwnProcesses(const std::vector<std::string>& names) {
    const Counts counts = RunEachInChild(names);
    PrintSummary(counts);
    return counts.failed.empty();
}

} // namespace veltrane::tests

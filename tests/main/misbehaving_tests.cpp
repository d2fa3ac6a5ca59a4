// Tests that go wrong in every way that the main function of the test programs tells; main_test.py runs them.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>

namespace {

int gUses = 0;

TEST(FirstOwnProcess, FindsAFreshProcess) {
    EXPECT_EQ(++gUses, 1);
}

TEST(SecondThreads, FindAFreshProcess) {
    EXPECT_EQ(++gUses, 1);
}

TEST(BadOwnProcess, Fails) {
    EXPECT_EQ(1, 2) << "as it should";
}

TEST(BadOwnProcess, Crashes) {
    std::abort();
}

TEST(BadOwnProcess, EndsTheProcess) {
    std::_Exit(3);
}

TEST(BadOwnProcess, IsSkipped) {
    GTEST_SKIP() << "for a reason";
}

TEST(Shared, LeavesTheProcessAsItWas) {
    EXPECT_EQ(gUses, 0);
}

TEST(Leaving, AnotherLocale) {
    std::setlocale(LC_ALL, "C.UTF-8");
}

TEST(Leaving, AnotherFolder) {
    std::filesystem::current_path("/");
}

} // namespace

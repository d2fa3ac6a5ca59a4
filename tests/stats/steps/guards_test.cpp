#include "stats/numerics/guards.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using veltrane::stats::Checked;
using veltrane::stats::IsMissing;

TEST(CheckedResult, IsTheResultOfASuccess) {
    EXPECT_EQ(Checked([](long&) { return 2.5; }), 2.5);
}

TEST(CheckedResult, IsMissingWhateverAFailureReturns) {
    for (const long error : {1L, 2L, 3L}) {
        EXPECT_TRUE(IsMissing(Checked([&](long& code) {
            code = error;
            return 2.5;
        }))) << error;
    }
}

TEST(CheckedResult, BeginsWithSuccess) {
    long before = -1;
    Checked([&](long& code) {
        before = code;
        return 0.0;
    });
    EXPECT_EQ(before, 0);
}

// A code beside the call that sets it would be read before or after it, as the compiler likes.
TEST(CheckedResult, TakesNoCodeBesideTheCall) {
    const auto function = [](long&) { return 2.5; };
    EXPECT_TRUE((std::is_invocable_v<decltype([](auto... arguments) -> decltype(Checked(arguments...)) {
                                         return Checked(arguments...);
                                     }),
                                     decltype(function)>));
    EXPECT_FALSE((std::is_invocable_v<decltype([](auto... arguments) -> decltype(Checked(arguments...)) {
                                          return Checked(arguments...);
                                      }),
                                      double, long>));
}

} // namespace

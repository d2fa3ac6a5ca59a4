#include <MCVeltrane_900/ErrorFormater.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {

using MCVeltrane_900::gErrorFormater;

/// Runs `work(thread, round)` on four threads at a time.
template <typename Work>
void OnFourThreads(int rounds, Work work) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([=] {
            for (int round = 0; round < rounds; ++round) {
                work(thread, round);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(ErrorFormaterThreads, CatalogueIdsFormatOnAnyThread) {
    std::atomic<int> wrong = 0;
    OnFourThreads(200, [&wrong](int thread, int round) {
        const std::string value = std::to_string(thread) + "." + std::to_string(round);
        wrong += gErrorFormater.Format(260114, {value}) != "Missing node: '" + value + "'.";
        wrong += gErrorFormater.GetParameterNumber(260251) != 6;
    });
    EXPECT_EQ(wrong, 0);
}

TEST(ErrorFormaterThreads, UnknownIdsDoNotDisturbTheOthers) {
    std::atomic<int> wrong = 0;
    OnFourThreads(200, [&wrong](int thread, int round) {
        wrong += !gErrorFormater.Format(thread % 2 * 1000 + round, {"a"}).empty();
        wrong += gErrorFormater.Format(260114, {"a"}) != "Missing node: 'a'.";
    });
    EXPECT_EQ(wrong, 0);
}

} // namespace

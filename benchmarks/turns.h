#ifndef VELTRANE_BENCHMARKS_TURNS_H
#define VELTRANE_BENCHMARKS_TURNS_H

#include "allocation_counter.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <limits>
#include <thread>

/// Comparisons of two pieces of work that take turns in one run, so that whatever else the machine does slows both.
namespace veltrane::bench {

inline double Seconds(std::clock_t since) {
    return static_cast<double>(std::clock() - since) / CLOCKS_PER_SEC;
}

/// The processor time of one thing done often.
template <typename Work>
double SecondsOf(int times, Work work) {
    const std::clock_t start = std::clock();
    for (int i = 0; i < times; ++i) {
        work(i);
    }
    return Seconds(start);
}

/// Cases by the library beside the same values by hand: cases a second of both, and `ratio`, the time of the library
/// over that of the hand-written function.
/// @param work called with the number of a case
template <typename Work, typename Peer>
void CompareCases(benchmark::State& state, std::size_t cases, Work work, Peer peer) {
    constexpr int kTurn = 2000;
    const auto turn = [cases](auto& each) {
        std::size_t next = 0;
        return SecondsOf(kTurn, [&](int) {
            each(next);
            next = next + 1 < cases ? next + 1 : 0;
        });
    };
    for (std::size_t i = 0; i < cases; ++i) {
        work(i);
    }
    const std::size_t before = Allocations();
    double own = 0.0;
    double others = 0.0;
    for (auto _ : state) {
        own += turn(work);
        others += turn(peer);
    }
    const double all = static_cast<double>(state.iterations()) * kTurn;
    state.counters["cases/s"] = all / own;
    state.counters["peer cases/s"] = all / others;
    state.counters["ratio"] = own / others;
    state.counters["allocations/case"] = static_cast<double>(Allocations() - before) / all;
}

/// What a second thread gains: the shortest times on the wall of as much work by one thread and by two.
class Gain {
public:
    /// @param first,second the same work on memory of its own, to be called for each thread
    template <typename First, typename Second>
    void Measure(First first, Second second) {
        if (fTimes == 0) {
            fTimes = TimesFor(0.02, first);
        }
        const auto many = [](int times, auto& work) {
            for (int i = 0; i < times; ++i) {
                work();
            }
        };
        fAlone.Measure([&] { many(2 * fTimes, first); });
        fTogether.Measure([&] {
            std::thread thread([&] { many(fTimes, second); });
            many(fTimes, first);
            thread.join();
        });
    }

    double Speedup() const { return fAlone.onTheWall / fTogether.onTheWall; }
    /// What it would be if each thread had a processor of its own all the time: by the time of the processors.
    double Undisturbed() const { return 2.0 * fAlone.ofProcessors / fTogether.ofProcessors; }
    /// Pieces of work a second by both threads.
    double Rate() const { return 2.0 * fTimes / fTogether.onTheWall; }

private:
    using Clock = std::chrono::steady_clock;

    struct Shortest {
        double onTheWall = std::numeric_limits<double>::infinity();
        double ofProcessors = std::numeric_limits<double>::infinity();

        template <typename Work>
        void Measure(Work work) {
            const auto start = Clock::now();
            const std::clock_t started = std::clock();
            work();
            ofProcessors = std::min(ofProcessors, Seconds(started));
            onTheWall = std::min(onTheWall, Since(start, Clock::now()));
        }
    };

    static double Since(Clock::time_point from, Clock::time_point to) {
        return std::chrono::duration<double>(to - from).count();
    }

    template <typename Work>
    static int TimesFor(double seconds, Work work) {
        work();
        const auto start = Clock::now();
        int times = 0;
        for (; Since(start, Clock::now()) < seconds; ++times) {
            work();
        }
        return times;
    }

    int fTimes = 0;
    Shortest fAlone;
    Shortest fTogether;
};

} // namespace veltrane::bench

#endif

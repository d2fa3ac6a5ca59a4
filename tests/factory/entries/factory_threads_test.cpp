#include "factory/documents/xml_faults.h"
#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <vector>

using namespace veltrane::tests;

namespace {

constexpr int kThreads = 8;
constexpr int kFailingCalls = 1000;

/// Failing calls by turns, each with the message that it must end with.
struct FailingCall {
    Message message;
    void (*call)();
};

const FailingCall kFailing[] = {
    {CANNOT_OPEN_DOCUMENT, [] { Build("<PMML>", {"TreeModel"}); }},
    {CANNOT_OPEN_DOCUMENT, [] { Build("", {"TreeModel"}); }},
    {CANNOT_OPEN_DOCUMENT, [] { Build(Repeat("<a>", 2000), {"TreeModel"}); }},
    {UNSUPPORTED_MODEL, [] { Build("<PMML/>", {"TreeModel"}); }},
    {UNSUPPORTED_MODEL, [] { BuildWithDictionary("<Forest/>", nullptr, {"TreeModel"}); }},
    {NO_MODEL_LIBRARY, [] { Build("<PMML><NoSuchModel/></PMML>", {"NoSuchModel"}); }},
    {NO_MODEL_LIBRARY, [] { Build("<PMML><NearestNeighborModel/></PMML>", {"TreeModel"}); }},
    {CANNOT_RESTORE_BASE_MODEL, [] { Build("<PMML><ThrowingModel/></PMML>", {"ThrowingModel"}); }},
    {MISSING_NODE,
     [] {
         std::istringstream in("<PMML/>");
         ScoreDictionary* dictionary = nullptr;
         ModelFactory::GetTransformationDictionaryFromXML(in, dictionary, "");
     }},
};

/// 1,000 failing calls on 8 threads, and then a good one on each.
/// @return how many calls went as they must
int FailAndRecover() {
    std::atomic<int> right{0};
    std::atomic<int> calls{0};
    const auto work = [&right, &calls] {
        for (int i = calls++; i < kFailingCalls; i = calls++) {
            const FailingCall& failing = kFailing[i % std::size(kFailing)];
            try {
                failing.call();
            } catch (const VTException& failure) {
                right += Message{failure.GetErrorCode()} == failing.message ? 1 : 0;
            }
        }
        const Record record = Build(Pmml("<TreeModel/>"), {"TreeModel"}, "UTF-8");
        right += record.at("plugin") == "TreeModel" && record.at("encoding") == "UTF-8" ? 1 : 0;
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back(work);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return right;
}

TEST(FactoryThreads, RecoverFromFailuresWithoutInitialize) {
    EXPECT_EQ(FailAndRecover(), kFailingCalls + kThreads);
    EXPECT_EQ(PlatformsStarted(), 0);
    EXPECT_EQ(Build(Pmml("<TreeModel/>"), {"TreeModel"}).at("plugin"), "TreeModel");
}

TEST(FactoryThreads, RecoverFromFailuresWithInitialize) {
    ModelFactory::Initialize("");
    EXPECT_EQ(FailAndRecover(), kFailingCalls + kThreads);
    EXPECT_EQ(PlatformsStarted(), 1);
    EXPECT_EQ(Build(Pmml("<TreeModel/>"), {"TreeModel"}).at("plugin"), "TreeModel");
    ModelFactory::Terminate();
}

TEST(FactoryThreads, TakeTheNamesOfOneCallForTheProcess) {
    ModelFactory::Initialize("");
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([i] { Build(Pmml("<TreeModel/>"), {"TreeModel", "A" + std::to_string(i)}); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    ASSERT_EQ(ModelFactory::fModelNames.size(), 2u);
    EXPECT_EQ(ModelFactory::fModelNames[0], "TreeModel");
    EXPECT_EQ(ModelFactory::fModelNames[1].substr(0, 1), "A");
    ModelFactory::Terminate();
}

/// All failing calls, and then a good one.
void FailAndBuild() {
    for (const FailingCall& failing : kFailing) {
        EXPECT_THROW(failing.call(), VTException);
    }
    Build(Pmml("<TreeModel/>"), {"TreeModel"});
}

/// The contents of all trace files below a folder.
std::vector<std::string> Traces(const TemporaryFolder& folder) {
    std::vector<std::string> traces;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path())) {
        if (entry.path().extension() == ".log") {
            std::ostringstream text;
            text << std::ifstream(entry.path()).rdbuf();
            traces.push_back(text.str());
        }
    }
    return traces;
}

TEST(FactoryThreads, WriteATraceOfTheirOwnEach) {
    const TemporaryFolder folder;
    folder.Write("sc.cfg", "trace_leve,2\n");
    FailAndBuild();
    const std::vector<std::string> alone = Traces(folder);
    ASSERT_EQ(alone.size(), 1U);
    EXPECT_NE(alone.front().find("Make Model End."), std::string::npos);
    std::vector<std::thread> threads;
    std::atomic<int> done{0};
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&done] {
            FailAndBuild();
            // All of them live until the last is done, so that no two have one number.
            for (++done; done < kThreads;) {
                std::this_thread::yield();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(Traces(folder), std::vector<std::string>(kThreads + 1, alone.front()));
}

} // namespace

#include "factory/documents/xml_faults.h"
#include "factory/entries/factory_support.h"

#include <MCVeltrane_900/VTDynamicLoadedLibrary.h>

#include <gtest/gtest.h>

#include <atomic>
#include <sstream>
#include <thread>

using namespace MCVeltrane_900;
using namespace veltrane::tests;

/// How many models are built at a time. A plug-in counts.
namespace {

constexpr int kThreads = 8;

class OverlappingThreads : public testing::Test {
protected:
    void SetUp() override {
        fFolder.Write("list.txt", "OverlapModel");
        fFolder.Write("model.xml", Pmml("<OverlapModel/>"));
    }

    static void Expect(int calls, int milliseconds) {
        VTDynamicLoadedLibrary library(VTDynamicLoadedLibrary::MakeLibraryFileName("OverlapModel900r"));
        reinterpret_cast<void (*)(int, int)>(library.GetSymbolAddress("Expect"))(calls, milliseconds);
    }

    /// Calls `make` on all threads, this often on each.
    /// @return how many models came of it
    static int OnAllThreads(int rounds, ModelPointer (*make)()) {
        std::atomic<int> models{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&models, rounds, make] {
                for (int round = 0; round < rounds; ++round) {
                    models += RecordOf(make().get()).at("plugin") == "OverlapModel" ? 1 : 0;
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return models;
    }

    static ModelPointer FromFiles() {
        return ModelPointer(ModelFactory::MakeModelFromXML("model.xml", "list.txt", "UTF-8"));
    }

    static ModelPointer FromAStream() {
        std::istringstream in(Pmml("<OverlapModel/>"));
        std::string list = "list.txt";
        return ModelPointer(ModelFactory::MakeModelFromXML(in, list));
    }

    const TemporaryFolder fFolder;
};

TEST_F(OverlappingThreads, BuildModelsAtOnceOnceInitialized) {
    ModelFactory::Initialize("list.txt");
    Expect(kThreads, 60000);
    EXPECT_EQ(OnAllThreads(1, FromFiles), kThreads);
    EXPECT_EQ(Counter("OverlapModel", "MostActive"), kThreads);
    EXPECT_EQ(PlatformsStarted(), 1);
    ModelFactory::Terminate();
}

TEST_F(OverlappingThreads, BuildManyModelsOnceInitialized) {
    ModelFactory::Initialize("list.txt");
    Expect(2, 1);
    EXPECT_EQ(OnAllThreads(20, FromFiles) + OnAllThreads(20, FromAStream), 2 * 20 * kThreads);
    ModelFactory::Terminate();
}

TEST_F(OverlappingThreads, WaitForEachOtherWithoutInitialize) {
    Expect(2, 5);
    EXPECT_EQ(OnAllThreads(2, FromFiles), 2 * kThreads);
    EXPECT_EQ(OnAllThreads(2, FromAStream), 2 * kThreads);
    EXPECT_EQ(Counter("OverlapModel", "MostActive"), 1);
    EXPECT_EQ(PlatformsStarted(), 0);
}

} // namespace

#include "factory/entries/factory_support.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <cstdlib>

using namespace veltrane::tests;
using MCVeltrane_900::VTException;

namespace {

constexpr const char* kEarly = "VELTRANE_TEST_BEFORE_MAIN";

/// A host that uses the factory before main and after it, in a process that asks for it.
struct EarlyHost {
    EarlyHost() : asked(std::getenv(kEarly) != nullptr) {
        if (asked) {
            Use();
        }
    }

    ~EarlyHost() {
        if (asked) {
            plugin.clear();
            Use();
            if (plugin != "TreeModel") {
                std::abort();
            }
        }
    }

    void Use() {
        plugin = Build(Pmml("<TreeModel/>"), {"TreeModel"}).at("plugin");
        try {
            Build(Pmml("<NoSuchModel/>"), {"NoSuchModel"});
        } catch (const VTException& failure) {
            message = failure.GetErrorMessage();
        }
    }

    bool asked;
    std::string plugin;
    std::string message;
};

EarlyHost gEarlyHost;

TEST(StaticObjects, FindTheFactoryReady) {
    if (!gEarlyHost.asked) {
        EXPECT_EQ(RunAgain(std::string(kEarly) + "=1"), 0);
        return;
    }
    EXPECT_EQ(gEarlyHost.plugin, "TreeModel");
    EXPECT_EQ(gEarlyHost.message, "Missing model dll of 'NoSuchModel'.");
}

} // namespace

#include "factory/factory_support.h"
#include "factory/xml_faults.h"
#include "support/dom.h"
#include "support/failure.h"

#include <MCVeltrane_900/ScoreDictionary.h>

#include <gtest/gtest.h>
#include <xercesc/util/XMLException.hpp>

#include <future>
#include <sstream>

using namespace veltrane::tests;
using MCVeltrane_900::ModelFactory;
using MCVeltrane_900::ScoreDictionary;

namespace {

const Names kNames = {"TreeModel"};
const std::string kText = "Error in initializing XPARS. Detailed Message:";
const std::string kDetail = kXmlFaultMessage;

/// Whether another thread gets a model, which it only does while this thread doesn't hold the factory's lock.
bool AnotherThreadGetsThrough() {
    return std::async(std::launch::async, [] { return !Build(Pmml("<TreeModel/>"), kNames).empty(); }).get();
}

TEST(XmlPlatform, IsStartedAndEndedByEachCall) {
    EXPECT_EQ(PlatformsStarted(), 0);
    Build(Pmml("<TreeModel/>"), kNames);
    EXPECT_EQ(PlatformsStarted(), 0);
    ExpectFailure([] { Build("", kNames); }, 260105, "Unexpected error in opening PMML file.");
    EXPECT_EQ(PlatformsStarted(), 0);
}

TEST(XmlPlatform, IsLeftAloneOnceInitialized) {
    ModelFactory::Initialize("");
    EXPECT_EQ(PlatformsStarted(), 1);
    Build(Pmml("<TreeModel/>"), kNames);
    EXPECT_EQ(PlatformsStarted(), 1);
    ModelFactory::Terminate();
    EXPECT_EQ(PlatformsStarted(), 0);
}

TEST(XmlPlatform, IsEndedWhenItFailsToStart) {
    {
        const SetXmlFault fault(XmlFault::kPlatformFails);
        ExpectFailureWithDetail([] { Build(Pmml("<TreeModel/>"), kNames); }, 260102, kText, kDetail);
        ExpectFailureWithDetail([] { BuildWithDictionary(Pmml("<TreeModel/>"), nullptr, kNames); }, 260102, kText,
                                kDetail);
        std::istringstream in(Pmml(""));
        ScoreDictionary* dictionary = nullptr;
        ExpectFailureWithDetail([&] { ModelFactory::GetTransformationDictionaryFromXML(in, dictionary, ""); }, 260102,
                                kText, kDetail);
        ExpectFailureWithDetail(
            [&] { ModelFactory::GetTransformationDictionaryFromXML(std::string("no such file"), dictionary, ""); },
            260102, kText, kDetail);
    }
    EXPECT_EQ(PlatformsStarted(), 0);
    EXPECT_TRUE(AnotherThreadGetsThrough());
    EXPECT_FALSE(Build(Pmml("<TreeModel/>"), kNames).empty());
}

TEST(XmlPlatform, FailureIsReportedForElements) {
    const ParsedXml xml = ParseXml("<TreeModel/>");
    const SetXmlFault fault(XmlFault::kPlatformFails);
    ExpectFailureWithDetail([&] { ModelFactory::MakeModelFromXML(xml.Root(), kNames, nullptr, ""); }, 260102, kText,
                            kDetail);
    ExpectFailureWithDetail([&] { ModelFactory::MakeModelFromXML(xml.Root(), kNames, nullptr, nullptr, ""); }, 260102,
                            kText, kDetail);
}

TEST(KeptXmlPlatform, FailureLeavesInitializeUntranslated) {
    const SetXmlFault fault(XmlFault::kPlatformFails);
    EXPECT_THROW(ModelFactory::Initialize(""), xercesc::XMLException);
    EXPECT_FALSE(ModelFactory::fInitialized);
    ModelFactory::Terminate();
}

TEST(XmlPlatform, ThatWasTerminatedFailsAsOneThatDoesNotStart) {
    ModelFactory::Initialize("");
    ModelFactory::Terminate();
    ExpectFailureWithDetail([] { Build(Pmml("<TreeModel/>"), kNames); }, 260102, kText, "");
}

TEST(KeptXmlPlatform, IsNotStartedAgainAfterTerminate) {
    ModelFactory::Initialize("");
    ModelFactory::Terminate();
    StartXml();
    const int started = PlatformsStarted();
    EXPECT_EQ(Build(Pmml("<TreeModel/>"), kNames).at("plugin"), "TreeModel");
    EXPECT_EQ(PlatformsStarted(), started);
}

TEST(FactoryLock, IsReleasedAfterEveryCall) {
    Build(Pmml("<TreeModel/>"), kNames);
    EXPECT_TRUE(AnotherThreadGetsThrough());
    ExpectFailure([] { Build(Pmml("<ThrowingModel/>"), {"ThrowingModel"}); }, 260305,
                  "Failed to restore base model: 'document'.");
    EXPECT_TRUE(AnotherThreadGetsThrough());
}

} // namespace

#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;

namespace {

const Names kNames = {"TreeModel", "NearestNeighborModel"};

TEST(NearestNeighborRoute, ReadsTheStreamByItself) {
    const std::string document = Pmml("<NearestNeighborModel/>");
    const Record record = Build(document, kNames, "UTF-8", "/some/where");
    EXPECT_EQ(record.at("plugin"), "NearestNeighborModel");
    EXPECT_EQ(record.at("operation"), "stream+path");
    EXPECT_EQ(record.at("position"), "0");
    EXPECT_EQ(record.at("size"), std::to_string(document.size()));
    EXPECT_EQ(record.at("second"), "");
    EXPECT_EQ(record.at("auxPath"), "/some/where");
}

TEST(NearestNeighborRoute, HasTwoEmptyTextsInTheDictionaryOverload) {
    const Record record = BuildWithDictionary(Pmml("<NearestNeighborModel/>"), nullptr, kNames, "UTF-8");
    EXPECT_EQ(record.at("operation"), "stream+path");
    EXPECT_EQ(record.at("position"), "0");
    EXPECT_EQ(record.at("second"), "");
    EXPECT_EQ(record.at("auxPath"), "");
}

TEST(NearestNeighborRoute, PassesNoListOfNames) {
    EXPECT_EQ(Build(Pmml("<NearestNeighborModel/>"), kNames).at("names"), "not passed");
    EXPECT_EQ(Counter("NearestNeighborModel", "ListsPassed"), 0);
}

TEST(NearestNeighborRoute, WinsWhereverTheElementStands) {
    const std::string document = Pmml("<TreeModel/><a><b><NearestNeighborModel/></b></a><RegressionModel/>");
    EXPECT_EQ(Build(document, kNames).at("plugin"), "NearestNeighborModel");
}

TEST(NearestNeighborRoute, WinsUnderEveryRoot) {
    EXPECT_EQ(Build("<Tree><NearestNeighborModel/></Tree>", kNames).at("plugin"), "NearestNeighborModel");
    EXPECT_EQ(Build("<NearestNeighborModel/>", kNames).at("plugin"), "NearestNeighborModel");
}

TEST(NearestNeighborRoute, NeedsItsExactQualifiedName) {
    EXPECT_EQ(
        Build(Pmml("<p:NearestNeighborModel xmlns:p='u'/><nearestneighbormodel/><TreeModel/>"), kNames).at("plugin"),
        "TreeModel");
}

TEST(NearestNeighborRoute, IgnoresTextAndAttributes) {
    EXPECT_EQ(Build(Pmml("<a NearestNeighborModel='NearestNeighborModel'>NearestNeighborModel</a>"
                         "<!--<NearestNeighborModel/>--><TreeModel/>"),
                    kNames)
                  .at("plugin"),
              "TreeModel");
}

TEST(NearestNeighborRoute, NeedsTheNameInTheList) {
    ExpectFailure([] { Build(Pmml("<NearestNeighborModel/>"), {"TreeModel"}); },
                  {NO_MODEL_LIBRARY, "NearestNeighborModel"});
    ExpectFailure([] { BuildWithDictionary(Pmml("<NearestNeighborModel/>"), nullptr, {}); },
                  {NO_MODEL_LIBRARY, "NearestNeighborModel"});
}

TEST(NearestNeighborRoute, DeletesTheTranslator) {
    EXPECT_EQ(Build(Pmml("<NearestNeighborModel/>"), kNames).at("deleted"), "1");
    EXPECT_EQ(Counter("NearestNeighborModel", "TranslatorsMade"), 1);
}

TEST(StreamPosition, IsPutBackToTheBeginning) {
    std::istringstream in(Pmml("<TreeModel/>"));
    in.seekg(20);
    const ModelPointer model(ModelFactory::MakeModelFromXML(in, kNames, ""));
    EXPECT_EQ(RecordOf(model.get()).at("plugin"), "TreeModel");
}

TEST(StreamPosition, IsPutBackFromTheEndAndFromAFailedRead) {
    std::istringstream in(Pmml("<TreeModel/>"));
    in.ignore(1 << 20);
    in.get();
    ASSERT_TRUE(in.eof());
    ASSERT_TRUE(in.fail());
    const ModelPointer model(ModelFactory::MakeModelFromXML(in, kNames, ""));
    EXPECT_EQ(RecordOf(model.get()).at("plugin"), "TreeModel");
}

TEST(StreamPosition, IsLeftInABadStream) {
    std::istringstream in(Pmml("<TreeModel/>"));
    in.setstate(std::ios::badbit);
    ExpectFailure([&] { ModelFactory::MakeModelFromXML(in, kNames, ""); }, {CANNOT_OPEN_DOCUMENT});
    EXPECT_TRUE(in.bad());
}

} // namespace

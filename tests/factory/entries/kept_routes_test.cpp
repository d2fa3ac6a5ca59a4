#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;

/// Behaviour of the routes that looks odd and that hosts and plug-ins rely on.
namespace {

TEST(KeptModelNames, OfTheProcessAreNotSearchedByStreamCalls) {
    ModelFactory::fModelNames = {"TreeModel"};
    ExpectFailure([] { Build(Pmml("<TreeModel/>"), {}); }, {UNSUPPORTED_MODEL, ""});
    ExpectFailure([] { BuildWithDictionary(Pmml("<TreeModel/>"), nullptr, {}); }, {UNSUPPORTED_MODEL, ""});
}

TEST(KeptModelNames, FailWithAnEmptyParameterWhenTheDocumentHasNone) {
    ExpectFailure([] { Build(Pmml("<Other/>"), {"TreeModel", "RegressionModel"}); }, {UNSUPPORTED_MODEL, ""});
}

TEST(KeptUnknownRoot, FailsAtOnceButIsSearchedWithADictionary) {
    const std::string document = "<Forest><TreeModel/></Forest>";
    ExpectFailure([&] { Build(document, {"TreeModel"}); }, {UNSUPPORTED_MODEL, "Forest"});
    EXPECT_EQ(BuildWithDictionary(document, nullptr, {"TreeModel"}).at("plugin"), "TreeModel");
}

TEST(KeptLibraryName, IsAppendedToANameThatEndsInItAlready) {
    ExpectFailure([] { Build(Pmml("<TreeModel900r/>"), {"TreeModel900r"}); }, {NO_MODEL_LIBRARY, "TreeModel900r"});
}

TEST(KeptNullModel, GoesToTheHost) {
    EXPECT_TRUE(Build(Pmml("<SilentModel/>"), {"SilentModel"}).empty());
    EXPECT_TRUE(BuildWithDictionary(Pmml("<SilentModel/>"), nullptr, {"SilentModel"}).empty());
    EXPECT_EQ(Counter("SilentModel", "TranslatorsMade"), 2);
    EXPECT_EQ(Counter("SilentModel", "TranslatorsDeleted"), 2);
}

TEST(KeptNearestNeighbor, IsScannedForFromWhereTheStreamStands) {
    // The scan starts in the middle, so it doesn't find the model; the parse starts at the beginning.
    const std::string document = Pmml("<NearestNeighborModel/><TreeModel/>");
    std::istringstream in(document);
    in.seekg(10);
    const ModelPointer model(ModelFactory::MakeModelFromXML(in, Names{"TreeModel"}, ""));
    EXPECT_EQ(RecordOf(model.get()).at("plugin"), "TreeModel");
}

TEST(KeptNearestNeighbor, GetsAnEmptyTextInPlaceOfTheEncoding) {
    const Record record = Build(Pmml("<NearestNeighborModel/>"), {"NearestNeighborModel"}, "UTF-8", "aux");
    EXPECT_EQ(record.at("second"), "");
}

TEST(KeptNearestNeighbor, CountsInADocumentOfWhichOnlyTheHeadIsWellFormed) {
    EXPECT_EQ(Build("<PMML><NearestNeighborModel><<<", {"NearestNeighborModel"}).at("plugin"), "NearestNeighborModel");
}

TEST(KeptNearestNeighbor, IsNotLookedForBehindTheEndOfThePmmlElement) {
    const std::string document = "<a><PMML><TreeModel/></PMML><NearestNeighborModel/></a>";
    EXPECT_EQ(BuildWithDictionary(document, nullptr, {"TreeModel", "NearestNeighborModel"}).at("plugin"), "TreeModel");
}

} // namespace

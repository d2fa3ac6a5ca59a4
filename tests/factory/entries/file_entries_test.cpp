#include "factory/documents/xml_faults.h"
#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;

namespace {

class FileEntries : public testing::Test {
protected:
    FileEntries() {
        fFolder.Write("list.txt", "RegressionModel TreeModel");
        fFolder.Write("model.xml", Pmml("<TreeModel/>"));
    }

    static Record BuildFromFiles(const std::string& model, const std::string& list, const std::string& encoding = {}) {
        return RecordOf(ModelPointer(ModelFactory::MakeModelFromXML(model, list, encoding)).get());
    }

    static Record BuildFromStream(const std::string& document, std::string list) {
        std::istringstream in(document);
        return RecordOf(ModelPointer(ModelFactory::MakeModelFromXML(in, list)).get());
    }

    const TemporaryFolder fFolder;
};

TEST_F(FileEntries, BuildAModelFromTwoFiles) {
    const Record record = BuildFromFiles("model.xml", "list.txt", "KOI8-R");
    EXPECT_EQ(record.at("plugin"), "TreeModel");
    EXPECT_EQ(record.at("operation"), "document");
    EXPECT_EQ(record.at("encoding"), "KOI8-R");
    EXPECT_EQ(record.at("names"), "RegressionModel;TreeModel;");
    EXPECT_EQ(PlatformsStarted(), 0);
}

TEST_F(FileEntries, BuildAModelFromAStreamAndAList) {
    std::istringstream in(Pmml("<TreeModel/>"));
    in.seekg(10);
    std::string list = "list.txt";
    const ModelPointer model(ModelFactory::MakeModelFromXML(in, list));
    EXPECT_EQ(RecordOf(model.get()).at("plugin"), "TreeModel");
    EXPECT_EQ(RecordOf(model.get()).at("encoding"), "");
    EXPECT_EQ(list, "list.txt");
}

TEST_F(FileEntries, PassTheAuxPathOn) {
    fFolder.Write("neighbors.xml", Pmml("<NearestNeighborModel/>"));
    fFolder.Write("neighbors.txt", "NearestNeighborModel");
    const ModelPointer model(ModelFactory::MakeModelFromXML("neighbors.xml", "neighbors.txt", "", "an aux/päth"));
    const Record record = RecordOf(model.get());
    EXPECT_EQ(record.at("plugin"), "NearestNeighborModel");
    EXPECT_EQ(record.at("auxPath"), "an aux/päth");
    EXPECT_EQ(record.at("position"), "0");
    EXPECT_EQ(BuildFromFiles("neighbors.xml", "neighbors.txt").at("auxPath"), "");
    EXPECT_EQ(BuildFromStream(Pmml("<NearestNeighborModel/>"), "neighbors.txt").at("auxPath"), "");
}

TEST_F(FileEntries, EmptyListReadsTheOneInTheWorkingDirectory) {
    fFolder.Write("modeldll.txt", "TreeModel");
    EXPECT_EQ(BuildFromFiles("model.xml", "").at("names"), "TreeModel;");
    EXPECT_EQ(BuildFromStream(Pmml("<TreeModel/>"), "").at("names"), "TreeModel;");
}

TEST_F(FileEntries, EmptyListThatIsNotThereFailsWithItsName) {
    constexpr Failure kFailure{CANNOT_OPEN_FILE, "modeldll.txt"};
    ExpectFailure([] { BuildFromFiles("model.xml", ""); }, kFailure);
    ExpectFailure([] { BuildFromStream(Pmml("<TreeModel/>"), ""); }, kFailure);
}

TEST_F(FileEntries, MissingListFailsWithItsName) {
    constexpr Failure kFailure{CANNOT_OPEN_FILE, "no list"};
    ExpectFailure([] { BuildFromFiles("model.xml", "no list"); }, kFailure);
    ExpectFailure([] { BuildFromFiles("no model", "no list"); }, kFailure);
    ExpectFailure([] { BuildFromStream(Pmml("<TreeModel/>"), "no list"); }, kFailure);
    EXPECT_EQ(ModelFactory::fModelNames, Names{});
    EXPECT_EQ(PlatformsStarted(), 0);
}

TEST_F(FileEntries, MissingModelFailsWithItsPath) {
    ExpectFailure([] { BuildFromFiles("no/such model", "list.txt"); }, {CANNOT_OPEN_DOCUMENT_FILE, "no/such model"});
    EXPECT_EQ(ModelFactory::fModelNames, (Names{"RegressionModel", "TreeModel"}));
    EXPECT_EQ(PlatformsStarted(), 0);
}

TEST_F(FileEntries, FoldersAndEmptyPathsDoNotOpen) {
    ExpectFailure([] { BuildFromFiles("/", "list.txt"); }, {CANNOT_OPEN_DOCUMENT_FILE, "/"});
    ExpectFailure([] { BuildFromFiles("", "list.txt"); }, {CANNOT_OPEN_DOCUMENT_FILE, ""});
    ExpectFailure([] { BuildFromFiles("model.xml", "/"); }, {CANNOT_OPEN_FILE, "/"});
}

TEST_F(FileEntries, OtherFailuresAreThoseOfTheStream) {
    fFolder.Write("bad.xml", "<PMML>");
    ExpectFailure([] { BuildFromFiles("bad.xml", "list.txt"); }, {CANNOT_OPEN_DOCUMENT});
    fFolder.Write("empty list.txt", "");
    ExpectFailure([] { BuildFromFiles("model.xml", "empty list.txt"); }, {UNSUPPORTED_MODEL, ""});
    fFolder.Write("none.xml", Pmml("<NoSuchModel/>"));
    fFolder.Write("none.txt", "NoSuchModel");
    ExpectFailure([] { BuildFromFiles("none.xml", "none.txt"); }, {NO_MODEL_LIBRARY, "NoSuchModel"});
}

TEST_F(FileEntries, FailureOfThePlatformComesFirstButForAStream) {
    const SetXmlFault fault(XmlFault::PLATFORM_FAILS);
    ExpectFailureWithDetail([] { BuildFromFiles("model.xml", "no list"); }, {CANNOT_START_PARSER}, kXmlFaultMessage);
    ExpectFailure([] { BuildFromStream(Pmml("<TreeModel/>"), "no list"); }, {CANNOT_OPEN_FILE, "no list"});
}

TEST_F(FileEntries, ListHasLongLinesAndMixedDelimiters) {
    const std::string longest(32766, 'x');
    fFolder.Write("mixed.txt", " ,\tA,,B\t\tTreeModel \n\n,C\n" + longest + "\nD\n" + longest + "y\nRegressionModel\n");
    EXPECT_EQ(BuildFromFiles("model.xml", "mixed.txt").at("names"),
              "A;B;TreeModel;C;" + longest + ";D;" + longest + ";");
}

TEST_F(FileEntries, FirstListBecomesThatOfTheProcess) {
    BuildFromFiles("model.xml", "list.txt");
    EXPECT_EQ(ModelFactory::fModelNames, (Names{"RegressionModel", "TreeModel"}));
    fFolder.Write("other.txt", "TreeModel");
    EXPECT_EQ(BuildFromFiles("model.xml", "other.txt").at("names"), "TreeModel;");
    EXPECT_EQ(ModelFactory::fModelNames, (Names{"RegressionModel", "TreeModel"}));
}

TEST_F(FileEntries, SearchGoesByTheListOfTheCall) {
    ModelFactory::Initialize("list.txt");
    fFolder.Write("other.txt", "RegressionModel");
    ExpectFailure([] { BuildFromFiles("model.xml", "other.txt"); }, {UNSUPPORTED_MODEL, ""});
    EXPECT_EQ(BuildFromFiles("model.xml", "list.txt").at("plugin"), "TreeModel");
    EXPECT_EQ(PlatformsStarted(), 1);
    ModelFactory::Terminate();
}

TEST_F(FileEntries, FindNoPlatformAfterTerminate) {
    ModelFactory::Initialize("");
    ModelFactory::Terminate();
    EXPECT_TRUE(ModelFactory::fInitialized);
    ExpectFailure([] { BuildFromFiles("model.xml", "list.txt"); }, {CANNOT_START_PARSER});
}

TEST(InitializedFactory, WithoutAListSearchesNoNamesOfItsOwn) {
    ModelFactory::Initialize("");
    EXPECT_TRUE(ModelFactory::fInitialized);
    EXPECT_EQ(ModelFactory::fModelNames, Names{});
    ExpectFailure([] { Build(Pmml("<TreeModel/>"), {}); }, {UNSUPPORTED_MODEL, ""});
    EXPECT_EQ(Build(Pmml("<TreeModel/>"), {"TreeModel"}).at("plugin"), "TreeModel");
    ModelFactory::Terminate();
}

TEST_F(FileEntries, InitializeWithoutAListLeavesTheNamesAsTheyAre) {
    Build(Pmml("<TreeModel/>"), {"TreeModel"});
    ModelFactory::Initialize("");
    EXPECT_EQ(ModelFactory::fModelNames, Names{"TreeModel"});
    ModelFactory::Terminate();
    EXPECT_EQ(ModelFactory::fModelNames, Names{"TreeModel"});
}

TEST_F(FileEntries, InitializeWithAListReplacesTheNames) {
    Build(Pmml("<TreeModel/>"), {"TreeModel"});
    ModelFactory::Initialize("list.txt");
    EXPECT_EQ(ModelFactory::fModelNames, (Names{"RegressionModel", "TreeModel"}));
    ModelFactory::Terminate();
}

TEST_F(FileEntries, InitializeWithAMissingListLeavesTheNamesAsTheyAre) {
    Build(Pmml("<TreeModel/>"), {"TreeModel"});
    ExpectFailure([] { ModelFactory::Initialize("no list"); }, {CANNOT_OPEN_FILE, "no list"});
    EXPECT_EQ(ModelFactory::fModelNames, Names{"TreeModel"});
    ModelFactory::Terminate();
}

TEST(InitializedFactory, WithAMissingListHasItsPlatformStarted) {
    ExpectFailure([] { ModelFactory::Initialize("no list"); }, {CANNOT_OPEN_FILE, "no list"});
    EXPECT_FALSE(ModelFactory::fInitialized);
    EXPECT_EQ(PlatformsStarted(), 1);
    ModelFactory::Terminate();
}

} // namespace

#include "factory/entries/factory_support.h"
#include "support/dom.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

using namespace veltrane::tests;

namespace {

using Lines = std::vector<std::string>;

/// The one trace file of this process, which has one thread.
Lines TraceLines(const TemporaryFolder& folder) {
    Lines lines;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path())) {
        if (entry.path().extension() == ".log") {
            std::ifstream file(entry.path());
            for (std::string line; std::getline(file, line);) {
                lines.push_back(line);
            }
        }
    }
    return lines;
}

const std::string kMake = "MCVeltrane_900::ModelFactory::MakeModelFromXML";
const std::string kSymbol = "MCVeltrane_900::VTDynamicLoadedLibrary::GetSymbolAddress";
const std::string kRoute = "MCVeltrane_900::GetLibraryPath";

class FactoryTrace : public testing::Test {
protected:
    void SetLevel(int level) { fFolder.Write("sc.cfg", "trace_leve," + std::to_string(level) + "\n"); }
    TemporaryFolder fFolder;
};

TEST_F(FactoryTrace, IsOffWithoutItsConfiguration) {
    Build(Pmml("<TreeModel/>"), {"TreeModel"});
    EXPECT_EQ(TraceLines(fFolder), Lines{});
}

TEST_F(FactoryTrace, FollowsADocument) {
    SetLevel(2);
    Build(Pmml("<TreeModel/>"), {"TreeModel"});
    EXPECT_EQ(TraceLines(fFolder), (Lines{"Enter:" + kMake, "Enter:" + kRoute, "Enter:" + kSymbol, "Exit:" + kSymbol,
                                          "Enter:" + kSymbol, "Exit:" + kSymbol, "Make Model End."}));
}

TEST_F(FactoryTrace, FollowsAFile) {
    fFolder.Write("list.txt", "RegressionModel");
    fFolder.Write("model.xml", Pmml("<RegressionModel/>"));
    SetLevel(1);
    const ModelPointer model(ModelFactory::MakeModelFromXML("model.xml", "list.txt", ""));
    EXPECT_EQ(TraceLines(fFolder),
              (Lines{"Enter:" + kMake, "Enter:" + kMake, "Enter:" + kRoute, "Enter:" + kSymbol, "Exit:" + kSymbol,
                     "Enter:" + kSymbol, "Exit:" + kSymbol, "Make Model End."}));
}

TEST_F(FactoryTrace, FollowsAStreamWithAListAsAnyOther) {
    fFolder.Write("list.txt", "RegressionModel");
    SetLevel(1);
    std::istringstream in(Pmml("<RegressionModel/>"));
    std::string list = "list.txt";
    const ModelPointer model(ModelFactory::MakeModelFromXML(in, list));
    EXPECT_EQ(TraceLines(fFolder), (Lines{"Enter:" + kMake, "Enter:" + kRoute, "Enter:" + kSymbol, "Exit:" + kSymbol,
                                          "Enter:" + kSymbol, "Exit:" + kSymbol, "Make Model End."}));
}

TEST_F(FactoryTrace, FollowsADocumentInTheDictionaryOverload) {
    SetLevel(1);
    BuildWithDictionary(Pmml("<RegressionModel/>"), nullptr, {"RegressionModel"});
    EXPECT_EQ(TraceLines(fFolder), (Lines{"Enter:" + kMake, "Enter:" + kRoute, "Enter:" + kSymbol, "Exit:" + kSymbol,
                                          "Enter:" + kSymbol, "Exit:" + kSymbol, "Make Model End."}));
}

TEST_F(FactoryTrace, FollowsANearestNeighborModel) {
    SetLevel(1);
    Build(Pmml("<NearestNeighborModel/>"), {"NearestNeighborModel"});
    EXPECT_EQ(TraceLines(fFolder), (Lines{"Enter:" + kMake, "Enter:" + kSymbol, "Exit:" + kSymbol, "Make Model End"}));
}

TEST_F(FactoryTrace, FollowsAnElement) {
    SetLevel(2);
    const ParsedXml xml = ParseXml("<DecisionTree/>");
    const ModelPointer first(ModelFactory::MakeModelFromXML(xml.Root(), Names{"TreeModel"}, nullptr, ""));
    const Lines one = {"Enter:" + kMake, "Model name is :TreeModel", "Enter:" + kSymbol, "Exit:" + kSymbol,
                       "Exit:" + kMake};
    EXPECT_EQ(TraceLines(fFolder), one);
    const ModelPointer second(ModelFactory::MakeModelFromXML(xml.Root(), Names{"TreeModel"}, nullptr, nullptr, ""));
    Lines two = one;
    two.insert(two.end(), one.begin(), one.end());
    EXPECT_EQ(TraceLines(fFolder), two);
}

TEST_F(FactoryTrace, HasTheModelNameAmongTheDetailsOnly) {
    SetLevel(1);
    const ParsedXml xml = ParseXml("<TreeModel/>");
    const ModelPointer model(ModelFactory::MakeModelFromXML(xml.Root(), Names{"TreeModel"}, nullptr, ""));
    EXPECT_EQ(TraceLines(fFolder), (Lines{"Enter:" + kMake, "Enter:" + kSymbol, "Exit:" + kSymbol, "Exit:" + kMake}));
}

TEST_F(FactoryTrace, EndsWhereACallFails) {
    SetLevel(2);
    ExpectFailure([] { Build("", {"TreeModel"}); }, {CANNOT_OPEN_DOCUMENT});
    EXPECT_EQ(TraceLines(fFolder), Lines{"Enter:" + kMake});
}

TEST_F(FactoryTrace, EndsInTheSearchOfAnUnsupportedDocument) {
    SetLevel(2);
    ExpectFailure([] { Build(Pmml(""), {"TreeModel"}); }, {UNSUPPORTED_MODEL, ""});
    EXPECT_EQ(TraceLines(fFolder), (Lines{"Enter:" + kMake, "Enter:" + kRoute}));
}

} // namespace

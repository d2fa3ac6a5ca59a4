#include "columns/support/test_batch.h"
#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <veltrane/document.h>

#include <gtest/gtest.h>

#include <sstream>
#include <streambuf>
#include <utility>

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

/// A buffer that gives its bytes once.
class OneWayBuffer : public std::streambuf {
public:
    explicit OneWayBuffer(std::string bytes) : fBytes(std::move(bytes)) {
        setg(fBytes.data(), fBytes.data(), fBytes.data() + fBytes.size());
    }

private:
    std::string fBytes;
};

/// Documents of several blocks of reading, with the element at their end, at the border of two and over it.
TEST(NearestNeighborRoute, WinsInLargeDocumentsToo) {
    constexpr std::size_t kBlock = std::size_t{48} * 1024;
    const std::string element = "<NearestNeighborModel/>";
    const std::string start = "<PMML><TreeModel/>";
    for (const std::size_t ahead :
         {3 * kBlock, 3 * kBlock - element.size() / 2, 3 * kBlock - element.size(), 100 * kBlock + 7}) {
        const std::string document = start + std::string(ahead - start.size(), ' ') + element + "</PMML>";
        const Record record = Build(document, kNames);
        EXPECT_EQ(record.at("plugin"), "NearestNeighborModel");
        EXPECT_EQ(record.at("position"), "0");
        std::string other = document;
        other[other.find("Nearest")] = 'n';
        EXPECT_EQ(Build(other, kNames).at("plugin"), "TreeModel");
    }
}

TEST(NearestNeighborRoute, WinsFromAStreamThatStandsFurtherOn) {
    std::istringstream in("<" + Pmml("<TreeModel/>" + std::string(2000000, ' ') + "<NearestNeighborModel/>"));
    in.seekg(1);
    try {
        const ModelPointer model(ModelFactory::MakeModelFromXML(in, {"TreeModel"}, ""));
        ADD_FAILURE() << "read";
    } catch (const MCVeltrane_900::VTException& failure) {
        EXPECT_EQ(failure.GetErrorCode(), static_cast<int>(NO_MODEL_LIBRARY));
    }
}

TEST(NearestNeighborRoute, WinsFromAStreamThatCannotGoBack) {
    OneWayBuffer buffer(Pmml("<TreeModel/>" + std::string(2000000, ' ') + "<NearestNeighborModel/>"));
    std::istream in(&buffer);
    const ModelPointer model(ModelFactory::MakeModelFromXML(in, kNames, ""));
    EXPECT_NE(model, nullptr);
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

/// In columns its models are scored row by row, each state with one of its own.
TEST(NearestNeighborRoute, IsThatOfColumnsToo) {
    const TemporaryFolder folder;
    folder.Write("models.txt", "TreeModel\nNearestNeighborModel\n");
    veltrane::DocumentOptions options;
    options.modelList = (folder.Path() / "models.txt").string();
    const std::string text = Pmml("<DataDictionary/><NearestNeighborModel/>");
    const int made = Counter("NearestNeighborModel", "TranslatorsMade");
    {
        const veltrane::Document document = veltrane::Document::OfBytes(text, options);
        ASSERT_EQ(document.Inputs().size(), 1U);
        EXPECT_EQ(document.Inputs()[0].name, "x");
        EXPECT_FALSE(document.NeedsOrder());
        for (int state = 0; state < 2; ++state) {
            veltrane::Document::State own = document.NewState();
            TestBatch batch({Doubles("x", {1.5, -2})});
            TestResults results;
            document.Score(&batch.array, &batch.schema, own, &results.array, &results.schema);
            const double size = static_cast<double>(text.size());
            EXPECT_EQ(results.Cells("prediction"), (std::vector<std::string>{Digits(size + 1.5), Digits(size - 2)}));
        }
    }
    EXPECT_EQ(Counter("NearestNeighborModel", "TranslatorsMade"), made + 2);
    EXPECT_EQ(Counter("NearestNeighborModel", "TranslatorsDeleted"), made + 2);
    EXPECT_EQ(Counter("NearestNeighborModel", "ListsPassed"), 0);
}

/// What the plug-in is handed has no other model than the one that is wanted, in columns, and all that is in that.
TEST(NearestNeighborRoute, HasTheWantedModelAloneInColumns) {
    const TemporaryFolder folder;
    folder.Write("models.txt", "TreeModel\nNearestNeighborModel\n");
    veltrane::DocumentOptions options;
    options.modelList = (folder.Path() / "models.txt").string();
    const std::string head = "<PMML><DataDictionary></DataDictionary>";
    const std::string first = "<NearestNeighborModel modelName=\"first\"></NearestNeighborModel>";
    const std::string second = "<NearestNeighborModel modelName=\"\xC3\xA9&#10;&#38;&#34;\"><row>&#60;\xC3\xA9</row>"
                               "</NearestNeighborModel>";
    const std::string document =
        head + "<TreeModel><Node score=\"a\"/></TreeModel>" + first + "<!-- none -->" + second + "</PMML>";
    for (const auto& [wanted, expected] :
         {std::pair("2", head + first), std::pair("first", head + first), std::pair("3", head + second)}) {
        options.model = wanted;
        veltrane::Document opened = veltrane::Document::OfBytes(document, options);
        veltrane::Document::State state = opened.NewState();
        TestBatch batch({Doubles("x", {0})});
        TestResults results;
        opened.Score(&batch.array, &batch.schema, state, &results.array, &results.schema);
        EXPECT_EQ(results.Cells("prediction"),
                  std::vector<std::string>{Digits(static_cast<double>((expected + "</PMML>").size()))})
            << wanted;
    }
}

} // namespace

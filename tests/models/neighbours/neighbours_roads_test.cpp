// How documents of neighbours come to their plug-in, which reads the stream by itself: through the factory and in
// columns, with several models, in encodings that aren't UTF-8, with prefixes and with very many instances.
#include "columns/support/test_batch.h"
#include "models/columns/model_rows.h"
#include "models/mining/small_ensemble.h"
#include "models/neighbours/small_neighbours.h"
#include "support/faults/failure.h"

#include <veltrane/document.h>

#include <gtest/gtest.h>

#include <random>

using namespace veltrane::tests;

namespace {

/// The answer of the instance at 0 and of that at 4.
std::string Near(const std::string& attributes, const std::string& first, const std::string& second) {
    return "<NearestNeighborModel functionName='regression' " + attributes + ">" + Schema("y", Fields("x")) +
           "<TrainingInstances><InstanceFields><InstanceField field='x'/><InstanceField field='y'/></InstanceFields>"
           "<InlineTable><row><x>0</x><y>" +
           first + "</y></row><row><x>4</x><y>" + second +
           "</y></row></InlineTable></TrainingInstances><ComparisonMeasure kind='distance'><euclidean/>"
           "</ComparisonMeasure><KNNInputs><KNNInput field='x'/></KNNInputs></NearestNeighborModel>";
}

/// What a model of a document says in columns of one case of x, and of k where it is there.
/// @param result an output field; empty for the prediction
std::string InColumns(const std::string& text, const std::string& result, double x, const std::string& model = "",
                      const std::string& k = "") {
    veltrane::DocumentOptions options;
    options.model = model;
    const veltrane::Document document = veltrane::Document::OfBytes(text, options);
    std::vector<TestColumn> columns{Doubles("x", {x})};
    if (!k.empty()) {
        columns.push_back(Texts("k", "u", {k}));
    }
    TestBatch batch(columns);
    TestResults results;
    veltrane::Document::State state = document.NewState();
    document.Score(&batch.array, &batch.schema, state, &results.array, &results.schema);
    return results.Cells(result.empty() ? document.Outputs()[0].name : result).at(0);
}

TEST(NeighboursRoad, InColumnsIsThatOfTheWantedModel) {
    const std::string text = EnsembleDocument(
        Near("modelName='one' numberOfNeighbors='1'", "7", "9") + Line("x", 100.0, 1.0) +
        Near("modelName='two' numberOfNeighbors='1'", "17", "19") + "<MiningModel functionName='regression'>" +
        Schema("y", Fields("x")) + "<Segmentation multipleModelMethod='sum'>" +
        SegmentOf(Near("numberOfNeighbors='2'", "1", "2")) + "</Segmentation></MiningModel>");
    for (const auto& [wanted, answer] :
         {std::pair("", "7"), std::pair("1", "7"), std::pair("one", "7"), std::pair("2", "101"), std::pair("3", "17"),
          std::pair("two", "17"), std::pair("4", "1.5")}) {
        EXPECT_EQ(InColumns(text, "", 1.0, wanted), answer) << wanted;
    }
}

TEST(NeighboursRoad, InColumnsIsThatOfTheFirstThatCanBeScored) {
    EXPECT_EQ(InColumns(EnsembleDocument(Near("numberOfNeighbors='1' isScorable='false'", "7", "9") +
                                         Near("numberOfNeighbors='1'", "17", "19")),
                        "", 4.0),
              "19");
}

/// What a document declares of its attributes, and characters that only a newer version of XML knows, are there when
/// the plug-in reads what is left of it.
TEST(NeighboursRoad, InColumnsLosesNothingOfTheWantedModel) {
    const std::string declared = "<!DOCTYPE PMML [<!ATTLIST NearestNeighborModel numberOfNeighbors CDATA '2'>]>";
    EXPECT_EQ(InColumns(declared + EnsembleDocument(Near("", "7", "9") + Near("", "17", "19")), "", 4.0, "2"), "18");
    const std::string newer = "<?xml version='1.1' encoding='ISO-8859-1'?>";
    const std::string who = Replaced(Replaced(kSmallNeighbours, "<c1>two</c1>", "<c1>d\xE9j\xE0&#1;\n</c1>"), "</PMML>",
                                     Near("numberOfNeighbors='1'", "17", "19") + "</PMML>");
    EXPECT_EQ(InColumns(newer + who, "near", 2.0, "1", "u"), "d\xC3\xA9j\xC3\xA0\x01\n");
}

/// A document in UTF-16, with its mark and without.
std::string InUtf16(const std::string& ascii, bool hasMark) {
    std::string bytes = hasMark ? "\xFF\xFE" : "";
    for (const char character : ascii) {
        bytes += character;
        bytes += '\0';
    }
    return bytes;
}

TEST(NeighboursRoad, TakesEveryEncodingThatADocumentTells) {
    const std::string plain = Replaced(Replaced(kSmallNeighbours, "<c1>two</c1>", "<c1>#</c1>"), "rank='1'", "");
    const std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?>" + Replaced(plain, "#", "d\xE9j\xE0");
    std::string utf16 = InUtf16("<?xml version='1.0' encoding='UTF-16'?>" + Replaced(plain, "#", "d~j~"), true);
    std::string unmarked = InUtf16("<?xml version='1.0' encoding='UTF-16LE'?>" + Replaced(plain, "#", "d~j~"), false);
    for (std::string* text : {&utf16, &unmarked}) {
        text->at(text->find('~')) = '\xE9';
        text->at(text->find('~')) = '\xE0';
    }
    const std::string bytes = "\xEF\xBB\xBF" + Replaced(plain, "#", "d\xC3\xA9j\xC3\xA0");
    for (const std::string& text : {latin, utf16, unmarked, bytes}) {
        Scored scored(text);
        ASSERT_TRUE(scored.Score({{"x", "2"}, {"k", "u"}}).IsOK());
        EXPECT_EQ(scored.Text("near"), "d\xC3\xA9j\xC3\xA0");
        EXPECT_EQ(InColumns(text, "near", 2.0, "", "u"), "d\xC3\xA9j\xC3\xA0");
        EXPECT_EQ(InColumns(text, "near", 2.0, "1", "u"), "d\xC3\xA9j\xC3\xA0");
    }
}

TEST(NeighboursRoad, PassesOverThePrefixesOfCells) {
    std::string document = Replaced(kSmallNeighbours, "<PMML ", "<PMML xmlns:p='urn:p' xmlns:q='urn:q' ");
    document = Replaced(document, "<c1>one</c1>", "<p:c1>one</p:c1>");
    document = Replaced(document, "<c4>2</c4>", "<q:c4>3</q:c4>");
    document = Replaced(document, "column='c3'", "column='p:c3'");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "3"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Text("near"), "two");
    EXPECT_EQ(scored.Number("number"), 3.0) << "of two and three";
    ExpectFailure([&] { ReadModel(Replaced(document, "<c4>0</c4>", "<c4>0</c4><p:c4>1</p:c4>")); },
                  {DUPLICATE_DEFINITION, "p:c4", "1", "row"});
    ExpectFailure([&] { ReadModel(Replaced(document, "column='c5'", "column='q:c3'")); },
                  {DUPLICATE_DEFINITION, "InstanceField", "k", "InstanceFields"});
}

/// An instance that lacks everything is nobody's neighbour, but has all others scanned, where they were searched for.
TEST(NeighboursRoad, GivesTheSameBitsWhetherInstancesAreSearchedForOrScanned) {
    std::mt19937_64 random(21);
    std::string rows;
    for (int i = 0; i < 300; ++i) {
        rows += "<row><x>" + std::to_string(static_cast<double>(random() % 800) / 7.0) + "</x><z>" +
                std::to_string(static_cast<double>(random() % 40) * 1e3) + "</z><t>" + (i % 3 == 0 ? "no" : "yes") +
                "</t></row>";
    }
    for (const char* measure : {"<euclidean/>", "<squaredEuclidean/>", "<cityBlock/>", "<chebychev/>",
                                "<minkowski p-parameter='3'/>", "<minkowski p-parameter='0.5'/>"}) {
        const std::string document = EnsembleDocument(
            "<NearestNeighborModel functionName='classification' numberOfNeighbors='5' "
            "categoricalScoringMethod='weightedMajorityVote'>" +
            Schema("t", Fields("xz")) +
            "<Output><OutputField name='p' feature='probability' value='no'/><OutputField name='one' "
            "feature='entityId'/><OutputField name='five' feature='entityId' rank='5'/><OutputField name='far' "
            "feature='affinity' rank='5'/></Output><TrainingInstances><InstanceFields><InstanceField field='x'/>"
            "<InstanceField field='z'/><InstanceField field='t'/></InstanceFields><InlineTable>" +
            rows + "</InlineTable></TrainingInstances><ComparisonMeasure kind='distance'>" + measure +
            "</ComparisonMeasure><KNNInputs><KNNInput field='x'/><KNNInput field='z' fieldWeight='0.001'/></KNNInputs>"
            "</NearestNeighborModel>");
        ModelRows searched(document);
        ModelRows scanned(Replaced(document, "</InlineTable>", "<row/></InlineTable>"));
        std::mt19937_64 one(3);
        std::mt19937_64 same(3);
        searched.Fill(one, 400);
        scanned.Fill(same, 400);
        EXPECT_EQ(searched.CaseByCase(), scanned.CaseByCase()) << measure;
    }
}

TEST(HostileNeighbours, AreAHundredThousand) {
    constexpr int kMany = 100000;
    std::string rows;
    for (int i = 0; i < kMany; ++i) {
        rows += "<row><x>" + std::to_string(i) + "</x><y>" + std::to_string(i % 7) + "</y></row>";
    }
    const std::string row = "<row><x>0</x><y>7</y></row>";
    for (const char* count : {"1", "3"}) {
        Scored scored(
            EnsembleDocument(Replaced(Near("numberOfNeighbors='" + std::string(count) + "'", "7", "9"), row, rows)));
        ASSERT_TRUE(scored.Score({{"x", "70000.25"}}).IsOK());
        EXPECT_EQ(scored.Number(), count[0] == '1' ? 0.0 : (0.0 + 1.0 + 6.0) / 3.0);
    }
}

/// As many columns and inputs, which are found by their names.
TEST(HostileNeighbours, HaveManyInputs) {
    constexpr int kMany = 3000;
    std::string data;
    std::string schema;
    std::string columns;
    std::string cells;
    std::string inputs;
    Case values;
    for (int i = 0; i < kMany; ++i) {
        const std::string name = "f" + std::to_string(i);
        data += NumberField(name);
        schema += "<MiningField name='" + name + "'/>";
        columns.insert(0, "<InstanceField field='" + name + "'/>");
        cells += "<" + name + ">1</" + name + ">";
        inputs += "<KNNInput field='" + name + "'/>";
        values[name] = "3";
    }
    Scored scored("<PMML version='4.4'><DataDictionary>" + NumberField("y") + data +
                  "</DataDictionary><NearestNeighborModel functionName='regression' numberOfNeighbors='1'>" +
                  Schema("y", schema) +
                  "<Output><OutputField name='near' feature='affinity'/></Output><TrainingInstances><InstanceFields>" +
                  columns + "<InstanceField field='y'/></InstanceFields><InlineTable><row>" + cells +
                  "<y>5</y></row></InlineTable></TrainingInstances><ComparisonMeasure kind='distance'><cityBlock/>"
                  "</ComparisonMeasure><KNNInputs>" +
                  inputs + "</KNNInputs></NearestNeighborModel></PMML>");
    ASSERT_TRUE(scored.Score(values).IsOK());
    EXPECT_EQ(scored.Number(), 5.0);
    EXPECT_EQ(scored.Number("near"), 2.0 * kMany);
}

} // namespace

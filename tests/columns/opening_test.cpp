#include "columns/support/echo.h"
#include "support/faults/failure.h"
#include "support/folders.h"

#include <MCVeltrane_900/ModelFactory.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <sstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace veltrane::tests;
using veltrane::Document;
using veltrane::DocumentOptions;
using Content = DocumentOptions::Content;

/// Opening documents: which model is taken, what fails, and what is left.
namespace {

const std::string kFields = "<DataDictionary numberOfFields='1'>" + FieldText("x", "double") + "</DataDictionary>";

std::string Pmml(const std::string& models) {
    return "<PMML version='4.4'>" + kFields + models + "</PMML>";
}

Document Open(const std::string& text, const DocumentOptions& options = TestOptions()) {
    return Document::OfBytes(text, options);
}

std::string FirstOutput(const std::string& text, const std::string& model = "") {
    DocumentOptions options = TestOptions();
    options.model = model;
    return Open(text, options).Outputs()[0].name;
}

/// The first result of an echo is its field, that of rows a prediction.
const std::string kEcho = "<EchoModel modelName='echo'/>";
const std::string kRows = "<RowsModel modelName='rows'/>";

TEST(OpenedModel, IsTheFirstOneWithAPlugin) {
    EXPECT_EQ(FirstOutput(Pmml(kEcho + kRows)), "x");
    EXPECT_EQ(FirstOutput(Pmml(kRows + kEcho)), "prediction");
    EXPECT_EQ(FirstOutput(Pmml("<TimeSeriesModel/>" + kRows + kEcho)), "prediction");
}

TEST(OpenedModel, IsOneThatCanBeScored) {
    EXPECT_EQ(FirstOutput(Pmml("<EchoModel isScorable='false'/>" + kRows)), "prediction");
    EXPECT_EQ(FirstOutput(Pmml("<EchoModel isScorable='0'/>" + kRows)), "prediction");
    EXPECT_EQ(FirstOutput(Pmml("<EchoModel isScorable='false'/>")), "x");
}

TEST(OpenedModel, IsTheOneThatIsWanted) {
    const std::string text = Pmml(kEcho + kRows + "<TimeSeriesModel modelName='card'/>");
    EXPECT_EQ(FirstOutput(text, "rows"), "prediction");
    EXPECT_EQ(FirstOutput(text, "2"), "prediction");
    EXPECT_EQ(FirstOutput(text, "echo"), "x");
    EXPECT_EQ(FirstOutput(text, "1"), "x");
    ExpectFailure([&] { FirstOutput(text, "Rows"); }, {NO_SUCH_MODEL, "Rows"});
    ExpectFailure([&] { FirstOutput(text, "4"); }, {NO_SUCH_MODEL, "4"});
    ExpectFailure([&] { FirstOutput(text, "0"); }, {NO_SUCH_MODEL, "0"});
    ExpectFailure([&] { FirstOutput(text, "card"); }, {UNSUPPORTED_MODEL, "TimeSeriesModel"});
    ExpectFailure([&] { FirstOutput(Pmml(kEcho + kEcho), "echo"); }, {NO_SUCH_MODEL, "echo"});
}

TEST(OpenedModel, IsTheOnlyOneThatItsPluginSees) {
    const std::string text = Pmml("<EchoModel fault='no model'/>" + kEcho);
    ExpectFailure([&] { FirstOutput(text, "1"); }, {CANNOT_BUILD_MODEL});
    EXPECT_EQ(FirstOutput(text, "2"), "x");
}

TEST(OpenedModel, HasAPluginThatKeepsItsSide) {
    ExpectFailure([] { Open(Pmml("<EchoModel fault='no model'/>")); }, {CANNOT_BUILD_MODEL});
    ExpectFailure([] { Open(Pmml("<EchoModel fault='no dictionary'/>")); }, {CANNOT_BUILD_MODEL});
    EXPECT_ANY_THROW(Open(Pmml("<EchoModel fault='foreign'/>")));
}

TEST(OpenedModel, TakesItsOptions) {
    DocumentOptions options = TestOptions();
    options.modelOptions = {{"factor", "3"}};
    const Document document = Open(Pmml(kEcho), options);
    TestBatch batch({Doubles("x", {2})});
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("x")[0], "6");
    options.modelOptions = {{"size", "3"}};
    ExpectFailure([&] { Open(Pmml(kEcho), options); }, {NO_SUCH_OPTION, "size", "3"});
}

TEST(OpenedModel, IsOfAListedKind) {
    ExpectFailure([] { Open(Pmml("<TimeSeriesModel/>")); }, {UNSUPPORTED_MODEL, "TimeSeriesModel"});
    ExpectFailure([] { Open("<Forest/>"); }, {UNSUPPORTED_MODEL, "Forest"});
    ExpectFailure([] { Open("<kord-ml/>"); }, {UNSUPPORTED_MODEL, ""});
    DocumentOptions options = TestOptions();
    options.content = Content::MODEL;
    ExpectFailure([&] { Open(Pmml(""), options); }, {NOTHING_TO_SCORE, "model"});
}

TEST(OpenedModel, IsBuiltByAnInstalledPluginWithoutAList) {
    DocumentOptions options;
    ExpectFailure([&] { Open(Pmml(kEcho), options); }, {UNSUPPORTED_MODEL, "EchoModel"});
    const Document document = Document::OfFile(TestsFolder() + "/../examples/loan/default.pmml");
    EXPECT_FALSE(document.Outputs().empty());
}

class ModelListFile : public testing::Test {
protected:
    ~ModelListFile() override { std::filesystem::remove(fPath); }

    std::string Write(const std::string& text) {
        std::ofstream(fPath, std::ios::binary) << text;
        return fPath;
    }

    const std::string fPath =
        (std::filesystem::temp_directory_path() / ("veltrane-list-" + std::to_string(::getpid()))).string();
};

TEST_F(ModelListFile, MayHaveAMarkAndAnyLineEnds) {
    DocumentOptions options;
    options.modelList = Write("\xEF\xBB\xBFOther\r\nEchoModel\r\n");
    EXPECT_EQ(Open(Pmml(kEcho), options).Outputs()[0].name, "x");
    options.modelList = Write("\xEF\xBB\xBF EchoModel");
    EXPECT_EQ(Open(Pmml(kEcho), options).Outputs()[0].name, "x");
}

TEST_F(ModelListFile, HasToBeThere) {
    DocumentOptions options;
    options.modelList = "/nowhere/models.txt";
    ExpectFailure([&] { Open(Pmml(kEcho), options); }, {CANNOT_OPEN_FILE, "/nowhere/models.txt"});
    options.modelList = Write("AbsentModel");
    ExpectFailure([&] { Open(Pmml("<AbsentModel/>"), options); }, {NO_MODEL_LIBRARY, "AbsentModel"});
}

TEST(OpenedDocument, ComesFromAStreamBytesOrAFile) {
    std::istringstream in("  " + Pmml(kEcho));
    in.seekg(2);
    EXPECT_EQ(Document(in, TestOptions()).Outputs()[0].name, "x");
    const std::string path =
        (std::filesystem::temp_directory_path() / ("veltrane-doc-" + std::to_string(::getpid()))).string();
    std::ofstream(path) << Pmml(kEcho);
    EXPECT_EQ(Document::OfFile(path, TestOptions()).Outputs()[0].name, "x");
    std::filesystem::remove(path);
    ExpectFailure([&] { Document::OfFile(path, TestOptions()); }, {CANNOT_OPEN_DOCUMENT_FILE, path.c_str()});
    ExpectFailure([] { Document::OfFile("/", TestOptions()); }, {CANNOT_OPEN_DOCUMENT_FILE, "/"});
}

/// A pipe gives its bytes once.
TEST(OpenedDocument, ComesFromAPipe) {
    const std::string path =
        (std::filesystem::temp_directory_path() / ("veltrane-pipe-" + std::to_string(::getpid()))).string();
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    for (const std::string& model : {kEcho, kRows}) {
        std::thread writer([&] { std::ofstream(path) << Pmml(model); });
        EXPECT_FALSE(Document::OfFile(path, TestOptions()).Outputs().empty());
        writer.join();
    }
    std::filesystem::remove(path);
}

/// A plug-in without columns builds a model for each state.
TEST(OpenedDocument, NeedsItsFileAndItsBytesNoMore) {
    const std::string path =
        (std::filesystem::temp_directory_path() / ("veltrane-gone-" + std::to_string(::getpid()))).string();
    std::ofstream(path) << Pmml(kRows);
    const Document ofFile = Document::OfFile(path, TestOptions());
    std::ofstream(path) << "gone";
    auto bytes = std::make_unique<std::string>(Pmml(kRows));
    const Document ofBytes = Document::OfBytes(*bytes, TestOptions());
    bytes->assign(bytes->size(), 'x');
    bytes.reset();
    for (const Document& document : {ofFile, ofBytes}) {
        const Document::State first = document.NewState();
        const Document::State second = document.NewState();
        EXPECT_EQ(document.Outputs()[0].name, "prediction");
    }
    std::filesystem::remove(path);
}

TEST(OpenedDocument, IsWellFormed) {
    EXPECT_THROW(Open("<PMML>"), VTException);
    EXPECT_THROW(Open(""), VTException);
    std::string deep;
    for (int level = 0; level < 2000; ++level) {
        deep += "<Extension>";
    }
    ExpectFailure([&] { Open(deep); }, {CANNOT_OPEN_DOCUMENT});
}

TEST(OpenedDocument, HasAnEncodingThatIsKnown) {
    DocumentOptions options = TestOptions();
    for (const char* name : {"utf-8", "UTF8", "ISO-8859-1", "CP1252"}) {
        options.encoding = name;
        EXPECT_EQ(Open(Pmml(kEcho), options).Outputs()[0].name, "x");
    }
    for (const char* name : {"none", ""}) {
        options.encoding = name;
        ExpectFailure([&] { Open(Pmml(kEcho), options); }, {UNKNOWN_ENCODING, name});
    }
}

TEST(OpenedDocument, IsPmmlWhereDerivedFieldsAreWanted) {
    DocumentOptions options = TestOptions();
    options.content = Content::DERIVED_FIELDS;
    ExpectFailure([&] { Open("<kord-ml/>", options); }, {INVALID_TOP_ELEMENT, "kord-ml", "PMML"});
}

/// What is opened all day: documents of both roads, and those that fail at each step.
struct Opening {
    std::string text;
    bool fails;
};

void OpenOnce(const Opening& opening, const DocumentOptions& options) {
    try {
        const Document document = Document::OfBytes(opening.text, options);
        Document::State state = document.NewState();
        TestBatch batch({Doubles("x", {2})});
        TestResults results;
        document.Score(&batch.array, &batch.schema, state, &results.array, &results.schema);
        ASSERT_FALSE(opening.fails) << opening.text;
    } catch (const VTException&) {
        ASSERT_TRUE(opening.fails) << opening.text;
    } catch (...) {
        ASSERT_TRUE(opening.fails) << opening.text;
    }
}

const Opening kOpenings[] = {
    {Pmml(kEcho), false},
    {Pmml(kRows), false},
    {Pmml(kRows + kEcho), false},
    {Pmml("<RegressionModel functionName='regression'><MiningSchema><MiningField name='x'/></MiningSchema>"
          "<RegressionTable intercept='1'><NumericPredictor name='x' coefficient='2'/></RegressionTable>"
          "</RegressionModel>"),
     false},
    {Pmml("<RegressionModel functionName='regression'><MiningSchema><MiningField name='y'/></MiningSchema>"
          "</RegressionModel>"),
     true},
    {Pmml("<RegressionModel functionName='regression'/>"), true},
    {Pmml("<TransformationDictionary><DerivedField name='z' optype='continuous' dataType='double'><FieldRef field='x'/>"
          "</DerivedField></TransformationDictionary>"),
     false},
    {Pmml("<TransformationDictionary><DerivedField name='z' optype='continuous' dataType='double'/>"
          "</TransformationDictionary>"),
     true},
    {Pmml("<TreeModel functionName='other'/>"), true},
    {"<PMML version='4.4'><DataDictionary><DataField name='x'/></DataDictionary><RowsModel/></PMML>", true},
    {"<PMML version='4.4'><DataDictionary>" + FieldText("x", "double") + FieldText("x", "nothing") +
         "</DataDictionary><RowsModel/></PMML>",
     true},
    {Pmml("<RowsModel><ResultField/></RowsModel>"), true},
    {Pmml("<RowsModel fault='no result'/>"), true},
    {Pmml("<EchoModel fault='no model'/>"), true},
    {Pmml("<EchoModel fault='no dictionary'/>"), true},
    {Pmml("<EchoModel fault='no state'/>"), true},
    {Pmml("<EchoModel fault='foreign'/>"), true},
    {Pmml("<TimeSeriesModel/>"), true},
    {"<PMML><DataDictionary>", true},
    {"<!DOCTYPE PMML [<!ENTITY a 'b'>]><PMML>&a;&c;</PMML>", true},
    {"<Forest/>", true},
    {"", true},
};

#ifndef VELTRANE_SANITIZED
/// Bytes that are taken from the system's allocator and not given back.
std::size_t BytesInUse() {
    return ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
}

/// Opens each kind so many times. What it leaves is less than the smallest block for each round, and so for each kind
/// of opening, once there were some: what is kept for all that come later doesn't count. Each part runs in a thread of
/// its own, since the allocator counts what it keeps ready for a thread as taken for as long as that thread lives.
void ExpectNothingLeft(std::size_t rounds) {
    const DocumentOptions options = TestOptions();
    const auto open = [&options](std::size_t count) {
        std::thread([&options, count] {
            for (std::size_t round = 0; round < count; ++round) {
                for (const Opening& opening : kOpenings) {
                    OpenOnce(opening, options);
                }
            }
        }).join();
    };
    constexpr std::size_t kFirst = 20;
    open(kFirst);
    const std::size_t before = BytesInUse();
    open(rounds);
    constexpr std::size_t kSmallestBlock = 16;
    EXPECT_LT(BytesInUse(), before + rounds * kSmallestBlock);
}

/// As a host does that opens documents all day.
TEST(OpenedAllDayOwnProcess, LeavesNothingBehind) {
    MCVeltrane_900::ModelFactory::Initialize("");
    ExpectNothingLeft(10000);
}

/// The XML parser is started and stopped for each.
TEST(OpenedAllDayOwnProcess, LeavesNothingBehindOfTheParserThatItStarts) {
    ExpectNothingLeft(250);
}
#endif

/// For leak detectors, which look at what the sanitized build leaves.
TEST(OpenedAllDay, LosesNothing) {
    for (const Opening& opening : kOpenings) {
        OpenOnce(opening, TestOptions());
    }
}

} // namespace

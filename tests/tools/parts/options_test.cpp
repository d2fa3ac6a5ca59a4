#include "run/options.h"

#include <gtest/gtest.h>

namespace veltrane::host {
namespace {

Request Parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "veltrane");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const Request request = ParseCommandLine(static_cast<int>(arguments.size()), arguments.data());
    testing::internal::GetCapturedStdout();
    testing::internal::GetCapturedStderr();
    return request;
}

int ExitCodeOf(std::vector<const char*> arguments) {
    const Request request = Parse(std::move(arguments));
    const int* exitCode = std::get_if<int>(&request);
    return exitCode ? *exitCode : -1;
}

TEST(TransformOptionsTest, HaveDefaults) {
    const auto options = std::get<TransformOptions>(Parse({"transform", "d.pmml", "c.csv"}));
    EXPECT_EQ(options.document, "d.pmml");
    EXPECT_EQ(options.cases, "c.csv");
    EXPECT_EQ(options.output, "-");
    EXPECT_EQ(options.encoding, "UTF-8");
    EXPECT_EQ(options.delimiter, ',');
    EXPECT_TRUE(options.missingTokens.empty());
    EXPECT_FALSE(options.keep || options.strict || options.quiet);
}

TEST(TransformOptionsTest, AreAllRead) {
    const auto options = std::get<TransformOptions>(
        Parse({"transform", "--missing", "NA", "d.pmml", "-", "-o", "out.csv", "--encoding", "CP1252", "--delimiter",
               ";", "--missing", "-9", "--missing", "", "--keep", "--strict", "--quiet"}));
    EXPECT_EQ(options.document, "d.pmml");
    EXPECT_EQ(options.cases, "-");
    EXPECT_EQ(options.output, "out.csv");
    EXPECT_EQ(options.encoding, "CP1252");
    EXPECT_EQ(options.delimiter, ';');
    EXPECT_EQ(options.missingTokens, (std::vector<std::string>{"NA", "-9", ""}));
    EXPECT_TRUE(options.keep && options.strict && options.quiet);
}

/// What `--keep` asks for with the other words of a command line, and the document and the cases.
struct KeepCase {
    std::vector<const char*> arguments;
    bool keep;
    std::vector<std::string> columns;
};

TEST(KeepOptionTest, TakesColumnsUnlessTheyAreTheFiles) {
    const std::vector<std::string> none;
    const std::vector<KeepCase> cases = {
        {{"score", "d", "c"}, false, none},
        {{"score", "d", "c", "--keep"}, true, none},
        {{"score", "--keep", "d", "c"}, true, none},
        {{"score", "d", "--keep", "c"}, true, none},
        {{"score", "--keep", "--quiet", "d", "c"}, true, none},
        {{"score", "d", "c", "--keep", "A"}, true, {"A"}},
        {{"score", "d", "c", "--keep", "A,B c"}, true, {"A", "B c"}},
        {{"score", "--keep", "A,B", "d", "c"}, true, {"A", "B"}},
        {{"score", "d", "--keep", "A", "c"}, true, {"A"}},
        {{"score", "--keep=A,B", "d", "c"}, true, {"A", "B"}},
        {{"score", "d", "c", "--keep", "A", "--keep", "B"}, true, {"A", "B"}},
        {{"score", "d", "c", "--keep", "\"a,b\",\"say \"\"hi\"\"\""}, true, {"a,b", "say \"hi\""}},
        {{"transform", "--keep", "A", "d", "c"}, true, {"A"}},
    };
    for (const KeepCase& one : cases) {
        const Request request = Parse(one.arguments);
        const auto* score = std::get_if<ScoreOptions>(&request);
        const auto* transform = std::get_if<TransformOptions>(&request);
        const CaseOptions& options = score ? static_cast<const CaseOptions&>(*score) : *transform;
        EXPECT_EQ((score ? score->document : transform->document), "d");
        EXPECT_EQ(options.cases, "c");
        EXPECT_EQ(options.keep, one.keep);
        EXPECT_EQ(options.keptColumns, one.columns) << one.arguments[1];
    }
}

TEST(KeepOptionTest, LeavesStandardInputAlone) {
    const auto options = std::get<ScoreOptions>(Parse({"score", "d", "--keep", "-"}));
    EXPECT_EQ(options.cases, "-");
    EXPECT_TRUE(options.keep && options.keptColumns.empty());
}

TEST(KeepOptionTest, DoesNotMakeUpForMissingFiles) {
    EXPECT_EQ(ExitCodeOf({"score", "--keep", "d"}), 2);
    EXPECT_EQ(ExitCodeOf({"score", "--keep", "A", "d"}), -1);
    EXPECT_EQ(ExitCodeOf({"score", "--keep"}), 2);
}

TEST(TransformOptionsTest, TakeATabInWriting) {
    EXPECT_EQ(std::get<TransformOptions>(Parse({"transform", "d", "c", "--delimiter", "\\t"})).delimiter, '\t');
    EXPECT_EQ(std::get<TransformOptions>(Parse({"transform", "d", "c", "--delimiter", "\t"})).delimiter, '\t');
    EXPECT_EQ(std::get<TransformOptions>(Parse({"transform", "d", "c", "--delimiter", "|"})).delimiter, '|');
}

TEST(TransformOptionsTest, RefuseOtherDelimiters) {
    for (const char* delimiter : {"", ",,", "\"", "\n", "\r", "a", "E", "1", ".", "-", "+", "\xC3\xB6", "\xC3"}) {
        EXPECT_EQ(ExitCodeOf({"transform", "d", "c", "--delimiter", delimiter}), 2) << delimiter;
    }
}

TEST(ScoreOptionsTest, HaveDefaults) {
    const auto options = std::get<ScoreOptions>(Parse({"score", "d.pmml", "c.csv"}));
    EXPECT_EQ(options.document, "d.pmml");
    EXPECT_EQ(options.cases, "c.csv");
    EXPECT_EQ(options.models, std::nullopt);
    EXPECT_EQ(options.model, std::nullopt);
    EXPECT_TRUE(options.modelOptions.empty());
    EXPECT_FALSE(options.plain);
    EXPECT_EQ(options.delimiter, ',');
}

TEST(ScoreOptionsTest, AreAllRead) {
    const auto options = std::get<ScoreOptions>(
        Parse({"score",  "d.pmml",      "-",    "-o",        "out.csv", "--models", "list.txt", "--option",
               "a=1",    "--model",     "risk", "--option",  "b=c=d",   "--option", "e=",       "--encoding",
               "CP1252", "--delimiter", ";",    "--missing", "NA",      "--keep",   "--strict", "--quiet"}));
    EXPECT_EQ(options.output, "out.csv");
    EXPECT_EQ(options.models, "list.txt");
    EXPECT_EQ(options.model, "risk");
    EXPECT_EQ(options.modelOptions,
              (std::vector<std::pair<std::string, std::string>>{{"a", "1"}, {"b", "c=d"}, {"e", ""}}));
    EXPECT_EQ(options.encoding, "CP1252");
    EXPECT_EQ(options.delimiter, ';');
    EXPECT_EQ(options.missingTokens, std::vector<std::string>{"NA"});
    EXPECT_TRUE(options.keep && options.strict && options.quiet);
    EXPECT_TRUE(std::get<ScoreOptions>(Parse({"score", "d.pmml", "c.csv", "--plain"})).plain);
}

TEST(VerifyOptionsTest, AreAllRead) {
    const auto plain = std::get<VerifyOptions>(Parse({"verify", "d.pmml"}));
    EXPECT_EQ(plain.document, "d.pmml");
    EXPECT_EQ(plain.models, std::nullopt);
    EXPECT_EQ(plain.encoding, "UTF-8");
    const auto full =
        std::get<VerifyOptions>(Parse({"verify", "d.pmml", "--models", "l", "--model", "2", "--encoding", "CP1252"}));
    EXPECT_EQ(full.models, "l");
    EXPECT_EQ(full.model, "2");
    EXPECT_EQ(full.encoding, "CP1252");
}

TEST(InspectOptionsTest, AreAllRead) {
    const auto plain = std::get<InspectOptions>(Parse({"inspect", "d.pmml"}));
    EXPECT_EQ(plain.document, "d.pmml");
    EXPECT_EQ(plain.encoding, "UTF-8");
    EXPECT_FALSE(plain.json);
    EXPECT_FALSE(plain.plain);
    const auto full = std::get<InspectOptions>(
        Parse({"inspect", "--json", "--encoding", "CP1252", "d.pmml", "--models", "l", "--model", "2"}));
    EXPECT_EQ(full.models, "l");
    EXPECT_EQ(full.model, "2");
    EXPECT_EQ(full.encoding, "CP1252");
    EXPECT_TRUE(full.json);
    EXPECT_TRUE(std::get<InspectOptions>(Parse({"inspect", "--plain", "d.pmml"})).plain);
    EXPECT_EQ(ExitCodeOf({"inspect", "--plain", "d.pmml", "--models", "l"}), 2);
    EXPECT_EQ(ExitCodeOf({"inspect", "--plain", "d.pmml", "--model", "2"}), 2);
}

TEST(CommandLine, EndsWithTwoOnWrongUsage) {
    EXPECT_EQ(ExitCodeOf({"scor", "d", "c"}), 2);
    EXPECT_EQ(ExitCodeOf({"score", "-", "-"}), 2);
    EXPECT_EQ(ExitCodeOf({}), 2);
    EXPECT_EQ(ExitCodeOf({"score"}), 2);
    EXPECT_EQ(ExitCodeOf({"transform"}), 2);
    EXPECT_EQ(ExitCodeOf({"transform", "d"}), 2);
    EXPECT_EQ(ExitCodeOf({"transform", "d", "c", "x"}), 2);
    EXPECT_EQ(ExitCodeOf({"transform", "d", "c", "--unknown"}), 2);
    EXPECT_EQ(ExitCodeOf({"transform", "d", "c", "-o"}), 2);
    EXPECT_EQ(ExitCodeOf({"transform", "d", "c", "--missing"}), 2);
    EXPECT_EQ(ExitCodeOf({"transform", "d", "c", "--encoding", "no-such-encoding"}), 2);
    EXPECT_EQ(ExitCodeOf({"transform", "d", "c", "--encoding", "UTF-16"}), 2);
    EXPECT_EQ(ExitCodeOf({"score", "d"}), 2);
    EXPECT_EQ(ExitCodeOf({"score", "d", "c", "--option", "a"}), 2);
    EXPECT_EQ(ExitCodeOf({"score", "d", "c", "--option", "=a"}), 2);
    EXPECT_EQ(ExitCodeOf({"verify"}), 2);
    EXPECT_EQ(ExitCodeOf({"verify", "d", "c"}), 2);
    EXPECT_EQ(ExitCodeOf({"inspect"}), 2);
    EXPECT_EQ(ExitCodeOf({"inspect", "d", "--keep"}), 2);
}

TEST(CommandLine, EndsWithNoneOnHelp) {
    EXPECT_EQ(ExitCodeOf({"--help"}), 0);
    EXPECT_EQ(ExitCodeOf({"transform", "--help"}), 0);
    EXPECT_EQ(ExitCodeOf({"inspect", "--help"}), 0);
    EXPECT_EQ(ExitCodeOf({"--version"}), 0);
}

} // namespace
} // namespace veltrane::host

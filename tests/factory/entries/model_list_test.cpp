#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

constexpr std::size_t kLongestLine = 32766;

/// The names of a model-list file with this content.
Names Read(const std::string& content) {
    const TemporaryFolder folder;
    folder.Write("list.txt", content);
    ModelFactory::fModelNames = {"before"};
    ModelFactory::Initialize("list.txt");
    ModelFactory::Terminate();
    return ModelFactory::fModelNames;
}

TEST(ModelList, SeparatesNamesByBlanksCommasTabsAndLines) {
    EXPECT_EQ(Read("A B,C\tD\nE"), (Names{"A", "B", "C", "D", "E"}));
}

TEST(ModelList, TakesRunsOfDelimitersAsOne) {
    EXPECT_EQ(Read(" ,\t\n\n ,A ,\t,B\t \n\n, ,\nC,"), (Names{"A", "B", "C"}));
}

TEST(ModelList, KeepsOrderAndDoubles) {
    EXPECT_EQ(Read("B A\nB"), (Names{"B", "A", "B"}));
}

TEST(ModelList, GivesNothingForEmptyFilesAndLines) {
    EXPECT_EQ(Read(""), Names{});
    EXPECT_EQ(Read("\n\n\n"), Names{});
    EXPECT_EQ(Read(" ,\t"), Names{});
}

TEST(ModelList, HasNoCommentsSectionsOrQuotes) {
    EXPECT_EQ(Read("# A\n[B]\n\"C D\";"), (Names{"#", "A", "[B]", "\"C", "D\";"}));
}

TEST(ModelList, NeedsNoLineEndAtTheEnd) {
    EXPECT_EQ(Read("A\nB"), (Names{"A", "B"}));
}

TEST(ModelList, ReadsALineThatJustFits) {
    const std::string name(kLongestLine, 'x');
    EXPECT_EQ(Read(name + "\nA"), (Names{name, "A"}));
    EXPECT_EQ(Read(name), Names{name});
}

TEST(ModelList, EndsTheReadingAtALongerLine) {
    const std::string name(kLongestLine, 'x');
    EXPECT_EQ(Read("A\n" + name + "y\nB"), (Names{"A", name}));
    EXPECT_EQ(Read(name + "y B\nC"), Names{name});
    EXPECT_EQ(Read(Repeat("A ", kLongestLine / 2) + "BC\nD").size(), kLongestLine / 2);
}

TEST(ModelList, CutsALineAtANul) {
    EXPECT_EQ(Read(std::string("A\0B\nC", 5)), (Names{"A", "C"}));
}

TEST(KeptModelList, HasTheCarriageReturnOfAForeignLineEndInItsNames) {
    EXPECT_EQ(Read("A\r\nB\r\n"), (Names{"A\r", "B\r"}));
}

TEST(ModelList, ReplacesTheListOfTheProcess) {
    EXPECT_EQ(Read("A"), Names{"A"});
}

TEST(ModelList, ThatIsMissingFailsWithItsName) {
    ModelFactory::fModelNames = {"before"};
    ExpectFailure([] { ModelFactory::Initialize("no such file"); }, {CANNOT_OPEN_FILE, "no such file"});
    EXPECT_FALSE(ModelFactory::fInitialized);
    EXPECT_EQ(ModelFactory::fModelNames, Names{"before"});
    ModelFactory::Terminate();
}

TEST(ModelList, ThatIsAFolderFailsWithItsName) {
    ExpectFailure([] { ModelFactory::Initialize("/"); }, {CANNOT_OPEN_FILE, "/"});
    ModelFactory::Terminate();
}

TEST(Initialization, WithoutAListSetsTheFlagOnly) {
    ModelFactory::fModelNames = {"before"};
    EXPECT_FALSE(ModelFactory::fInitialized);
    ModelFactory::Initialize("");
    EXPECT_TRUE(ModelFactory::fInitialized);
    EXPECT_EQ(ModelFactory::fModelNames, Names{"before"});
    ModelFactory::Terminate();
}

TEST(Initialization, IsNotUndoneByTerminate) {
    const TemporaryFolder folder;
    folder.Write("list.txt", "TreeModel");
    ModelFactory::Initialize("list.txt");
    ModelFactory::Terminate();
    EXPECT_TRUE(ModelFactory::fInitialized);
    EXPECT_EQ(ModelFactory::fModelNames, Names{"TreeModel"});
}

TEST(Initialization, MayBeRepeated) {
    ModelFactory::Initialize("");
    ModelFactory::Initialize("");
    ModelFactory::Terminate();
    EXPECT_EQ(Build(Pmml("<TreeModel/>"), {"TreeModel"}).at("plugin"), "TreeModel");
    ModelFactory::Terminate();
}

TEST(Initialization, LeavesTheSearchToTheArgument) {
    const TemporaryFolder folder;
    folder.Write("list.txt", "TreeModel");
    ModelFactory::Initialize("list.txt");
    ExpectFailure([] { Build(Pmml("<TreeModel/>"), {}); }, {UNSUPPORTED_MODEL, ""});
    ModelFactory::Terminate();
}

} // namespace

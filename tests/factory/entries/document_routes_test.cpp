#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <MCVeltrane_900/BaseDictionary.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;

namespace {

const Names kNames = {"TreeModel", "RegressionModel", "AssociationModelLattice", "AssociationModel"};

struct RootRow {
    const char* name;
    const char* document;
    const char* plugin;
};

void PrintTo(const RootRow& row, std::ostream* out) {
    *out << row.name;
}

/// Each row of roots and what they lead to, with a list of names that leaves the choice open.
const RootRow kRootRows[] = {
    {"PmmlSearches", "<PMML><RegressionModel/></PMML>", "RegressionModel"},
    {"PmmlSearchesBelowOtherElements", "<PMML><a><b><RegressionModel/></b></a></PMML>", "RegressionModel"},
    {"KordWithRegression", "<kord-ml><a><regression-model/></a><TreeModel/></kord-ml>", "GeneralRegressionModel"},
    {"KordWithoutRegression", "<kord-ml><RegressionModel/></kord-ml>", "RegressionModel"},
    {"TreeNamesItsModel", "<Tree><RegressionModel/></Tree>", "TreeModel"},
    {"AssocLatticeSearches", "<AssocLattice><RegressionModel/></AssocLattice>", "RegressionModel"},
    {"SequentialLatticeSearches", "<SequentialAssociationLattice><TreeModel/></SequentialAssociationLattice>",
     "TreeModel"},
    {"LatticeModelHasTheAssociationPlugin", "<PMML><AssociationModelLattice/></PMML>", "AssociationModel"},
};

class RootTag : public testing::TestWithParam<RootRow> {};

TEST_P(RootTag, LeadsToItsPlugin) {
    const Record record = Build(GetParam().document, kNames, "UTF-8");
    EXPECT_EQ(record.at("plugin"), GetParam().plugin);
    EXPECT_EQ(record.at("operation"), "document");
    EXPECT_EQ(record.at("encoding"), "UTF-8");
}

TEST_P(RootTag, LeadsToItsPluginInTheDictionaryOverload) {
    BaseDictionary dictionary;
    const Record record = BuildWithDictionary(GetParam().document, &dictionary, kNames, "UTF-8");
    EXPECT_EQ(record.at("plugin"), GetParam().plugin);
    const bool withDictionary = record.at("root") == "PMML";
    EXPECT_EQ(record.at("operation"), withDictionary ? "document+dictionary" : "document");
    EXPECT_EQ(record.at("encoding"), "UTF-8");
    if (withDictionary) {
        EXPECT_EQ(record.at("dictionary"), PointerText(&dictionary));
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, RootTag, testing::ValuesIn(kRootRows), NameOfRow());

TEST(RootTag, ThatNamesItsModelNeedsNoList) {
    EXPECT_EQ(Build("<Tree/>", {}).at("plugin"), "TreeModel");
    EXPECT_EQ(Build("<kord-ml><regression-model/></kord-ml>", {}).at("plugin"), "GeneralRegressionModel");
}

TEST(RootTag, ThatIsUnknownFailsWithItsName) {
    ExpectFailure([] { Build("<Forest><TreeModel/></Forest>", kNames); }, {UNSUPPORTED_MODEL, "Forest"});
}

TEST(RootTag, WithAPrefixIsUnknown) {
    ExpectFailure([] { Build("<pmml:PMML xmlns:pmml='u'><TreeModel/></pmml:PMML>", kNames); },
                  {UNSUPPORTED_MODEL, "pmml:PMML"});
}

TEST(RootTag, KeepsTheBytesOfANameInTheMessage) {
    ExpectFailure([] { Build("<For\xC3\xAAt/>", kNames); }, {UNSUPPORTED_MODEL, "For\xC3\xAAt"});
}

TEST(RootTag, ThatIsUnknownIsSearchedInTheDictionaryOverload) {
    BaseDictionary dictionary;
    const Record record = BuildWithDictionary("<Forest><TreeModel/></Forest>", &dictionary, kNames, "KOI8-R");
    EXPECT_EQ(record.at("plugin"), "TreeModel");
    EXPECT_EQ(record.at("operation"), "document+dictionary");
    EXPECT_EQ(record.at("dictionary"), PointerText(&dictionary));
    EXPECT_EQ(record.at("encoding"), "KOI8-R");
}

TEST(RootTag, ThatIsUnknownFailsWithoutANameInTheDictionaryOverload) {
    ExpectFailure([] { BuildWithDictionary("<Forest/>", nullptr, kNames); }, {UNSUPPORTED_MODEL, ""});
}

TEST(SearchOrder, IsThatOfTheList) {
    const std::string document = Pmml("<RegressionModel/><TreeModel/>");
    EXPECT_EQ(Build(document, {"TreeModel", "RegressionModel"}).at("plugin"), "TreeModel");
    EXPECT_EQ(Build(document, {"RegressionModel", "TreeModel"}).at("plugin"), "RegressionModel");
    EXPECT_EQ(BuildWithDictionary(document, nullptr, {"TreeModel", "RegressionModel"}).at("plugin"), "TreeModel");
}

TEST(SearchOrder, LooksBelowTheRootOnly) {
    ExpectFailure([] { Build("<kord-ml/>", {"kord-ml"}); }, {UNSUPPORTED_MODEL, ""});
}

TEST(SearchOrder, MindsCaseAndPrefixes) {
    ExpectFailure([] { Build(Pmml("<treemodel/><p:TreeModel xmlns:p='u'/>"), kNames); }, {UNSUPPORTED_MODEL, ""});
}

TEST(SearchOrder, PassesOverDoubledAndUnknownNames) {
    EXPECT_EQ(Build(Pmml("<TreeModel/>"), {"", "A", "A", "NoSuchModel", "TreeModel"}).at("plugin"), "TreeModel");
}

TEST(SearchOrder, NeverOpensAListedLibraryThatNoDocumentAsksFor) {
    EXPECT_EQ(Build(Pmml("<TreeModel/>"), {"NoSuchModel", "NoEntryModel", "TreeModel"}).at("plugin"), "TreeModel");
}

TEST(NameList, GoesToThePluginThatTakesIt) {
    const Names names = {"RegressionModel", "TreeModel", "TreeModel"};
    EXPECT_EQ(Build(Pmml("<TreeModel/>"), names).at("names"), "RegressionModel;TreeModel;TreeModel;");
    EXPECT_EQ(Counter("TreeModel", "ListsPassed"), 1);
}

TEST(NameList, IsTheVeryListOfTheCall) {
    const Names names = {"TreeModel"};
    EXPECT_EQ(Build(Pmml("<TreeModel/>"), names).at("namesAt"), PointerText(&names));
    EXPECT_EQ(BuildWithDictionary(Pmml("<TreeModel/>"), nullptr, names).at("namesAt"), PointerText(&names));
}

TEST(NameList, IsPassedToAPluginThatTheRootNames) {
    EXPECT_EQ(Build("<Tree/>", {}).at("names"), "");
    EXPECT_EQ(Build("<kord-ml><regression-model/></kord-ml>", {"A"}).at("names"), "A;");
}

TEST(NameList, IsLeftOutForAPluginThatDoesNotTakeIt) {
    const Record record = Build(Pmml("<RegressionModel/>"), {"RegressionModel"});
    EXPECT_EQ(record.at("plugin"), "RegressionModel");
    EXPECT_EQ(record.at("names"), "not passed");
}

TEST(ProcessNames, AreThoseOfTheFirstCallThatBringsSome) {
    EXPECT_TRUE(ModelFactory::fModelNames.empty());
    ExpectFailure([] { Build(Pmml("<TreeModel/>"), {}); }, {UNSUPPORTED_MODEL, ""});
    EXPECT_TRUE(ModelFactory::fModelNames.empty());
    Build(Pmml("<TreeModel/>"), {"TreeModel", "A", "A"});
    EXPECT_EQ(ModelFactory::fModelNames, (Names{"TreeModel", "A", "A"}));
    Build(Pmml("<RegressionModel/>"), {"RegressionModel"});
    EXPECT_EQ(ModelFactory::fModelNames, (Names{"TreeModel", "A", "A"}));
}

TEST(ProcessNames, AreSetByTheDictionaryOverload) {
    BuildWithDictionary(Pmml("<TreeModel/>"), nullptr, {"TreeModel"});
    EXPECT_EQ(ModelFactory::fModelNames, Names{"TreeModel"});
}

TEST(ProcessNames, AreSetByACallThatFails) {
    ExpectFailure([] { Build("", {"TreeModel"}); }, {CANNOT_OPEN_DOCUMENT});
    EXPECT_EQ(ModelFactory::fModelNames, Names{"TreeModel"});
}

TEST(ShortOverload, HasNoAuxiliaryPath) {
    std::istringstream in(Pmml("<NearestNeighborModel/>"));
    const ModelPointer model(ModelFactory::MakeModelFromXML(in, Names{"NearestNeighborModel"}, "UTF-8"));
    EXPECT_EQ(RecordOf(model.get()).at("auxPath"), "");
}

TEST(ShortOverload, PassesTheEncodingOn) {
    std::istringstream in(Pmml("<TreeModel/>"));
    const ModelPointer model(ModelFactory::MakeModelFromXML(in, Names{"TreeModel"}, "KOI8-R"));
    EXPECT_EQ(RecordOf(model.get()).at("encoding"), "KOI8-R");
}

} // namespace

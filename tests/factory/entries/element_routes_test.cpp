#include "factory/entries/factory_support.h"
#include "support/dom.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/BaseDictionary.h>

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

Record BuildFrom(const std::string& element, const Names& names, ScoreModel* base = nullptr,
                 const std::string& text = {}) {
    const ParsedXml xml = ParseXml(element);
    return RecordOf(ModelPointer(ModelFactory::MakeModelFromXML(xml.Root(), names, base, text)).get());
}

Record BuildFrom(const std::string& element, const Names& names, ScoreDictionary* first, ScoreDictionary* second,
                 const std::string& text) {
    const ParsedXml xml = ParseXml(element);
    return RecordOf(ModelPointer(ModelFactory::MakeModelFromXML(xml.Root(), names, first, second, text)).get());
}

TEST(ElementRoute, GivesTheBaseModelToTheTranslator) {
    const ModelPointer base([] {
        const ParsedXml xml = ParseXml("<TreeModel/>");
        return ModelFactory::MakeModelFromXML(xml.Root(), Names{"TreeModel"}, nullptr, "");
    }());
    const Record record = BuildFrom("<TreeModel/>", {"TreeModel"}, base.get(), "any text");
    EXPECT_EQ(record.at("operation"), "element+model");
    EXPECT_EQ(record.at("element"), "TreeModel");
    EXPECT_EQ(record.at("base"), PointerText(base.get()));
    EXPECT_EQ(record.at("text"), "any text");
}

TEST(ElementRoute, GivesTwoDictionariesToTheTranslator) {
    BaseDictionary first, second;
    const Record record = BuildFrom("<RegressionModel/>", {"RegressionModel"}, &first, &second, "any text");
    EXPECT_EQ(record.at("plugin"), "RegressionModel");
    EXPECT_EQ(record.at("operation"), "element+dictionaries");
    EXPECT_EQ(record.at("first"), PointerText(&first));
    EXPECT_EQ(record.at("second"), PointerText(&second));
    EXPECT_EQ(record.at("text"), "any text");
}

TEST(ElementRoute, MapsTheShortNames) {
    const Record tree = BuildFrom("<DecisionTree/>", {"TreeModel"});
    EXPECT_EQ(tree.at("plugin"), "TreeModel");
    EXPECT_EQ(tree.at("element"), "DecisionTree");
    const Record regression = BuildFrom("<Regression/>", {"RegressionModel"}, nullptr, nullptr, "");
    EXPECT_EQ(regression.at("plugin"), "RegressionModel");
    EXPECT_EQ(regression.at("element"), "Regression");
}

TEST(ElementRoute, LooksForTheMappedNameInTheList) {
    ExpectFailure([] { BuildFrom("<DecisionTree/>", {"DecisionTree"}); }, {NO_MODEL_LIBRARY, "TreeModel"});
    ExpectFailure([] { BuildFrom("<Regression/>", {"Regression"}); }, {NO_MODEL_LIBRARY, "RegressionModel"});
}

TEST(ElementRoute, PassesNoListOfNames) {
    EXPECT_EQ(BuildFrom("<TreeModel/>", {"TreeModel"}).at("names"), "not passed");
    EXPECT_EQ(Counter("TreeModel", "ListsPassed"), 0);
}

TEST(ElementRoute, NeedsTheNameInTheList) {
    ExpectFailure([] { BuildFrom("<TreeModel/>", {"RegressionModel", "treemodel"}); }, {NO_MODEL_LIBRARY, "TreeModel"});
    ExpectFailure([] { BuildFrom("<TreeModel/>", {"A"}, nullptr, nullptr, ""); }, {NO_MODEL_LIBRARY, "TreeModel"});
}

TEST(ElementRoute, UsesTheListOfTheProcessWhenItHasNone) {
    ModelFactory::fModelNames = {"TreeModel"};
    EXPECT_EQ(BuildFrom("<TreeModel/>", {}).at("plugin"), "TreeModel");
    EXPECT_EQ(BuildFrom("<TreeModel/>", {}, nullptr, nullptr, "").at("plugin"), "TreeModel");
    ExpectFailure([] { BuildFrom("<RegressionModel/>", {}); }, {NO_MODEL_LIBRARY, "RegressionModel"});
}

TEST(ElementRoute, LeavesTheListOfTheProcessAlone) {
    BuildFrom("<TreeModel/>", {"TreeModel"});
    EXPECT_TRUE(ModelFactory::fModelNames.empty());
}

TEST(ElementRoute, FailsWithoutAPlugin) {
    ExpectFailure([] { BuildFrom("<NoSuchModel/>", {"NoSuchModel"}); }, {NO_MODEL_LIBRARY, "NoSuchModel"});
    ExpectFailure([] { BuildFrom("<NoEntryModel/>", {"NoEntryModel"}); }, {NO_MODEL_LIBRARY, "NoEntryModel"});
}

TEST(ElementRoute, DoesNotMapTheLattice) {
    ExpectFailure([] { BuildFrom("<AssociationModelLattice/>", {"AssociationModelLattice"}); },
                  {NO_MODEL_LIBRARY, "AssociationModelLattice"});
}

TEST(ElementRoute, GivesNoModelWithoutATranslator) {
    EXPECT_TRUE(BuildFrom("<NullTranslatorModel/>", {"NullTranslatorModel"}).empty());
    EXPECT_TRUE(BuildFrom("<NullTranslatorModel/>", {"NullTranslatorModel"}, nullptr, nullptr, "").empty());
}

TEST(ElementRoute, FailsForANullElement) {
    ExpectFailure([] { ModelFactory::MakeModelFromXML(nullptr, Names{"TreeModel"}, nullptr, ""); },
                  {NO_MODEL_LIBRARY, ""});
    ExpectFailure([] { ModelFactory::MakeModelFromXML(nullptr, Names{"TreeModel"}, nullptr, nullptr, ""); },
                  {NO_MODEL_LIBRARY, ""});
}

TEST(ElementRoute, DeletesTheTranslator) {
    EXPECT_EQ(BuildFrom("<TreeModel/>", {"TreeModel"}).at("deleted"), "1");
    EXPECT_EQ(BuildFrom("<TreeModel/>", {"TreeModel"}, nullptr, nullptr, "").at("deleted"), "2");
    EXPECT_EQ(BuildFrom("<TreeModel/>", {"TreeModel"}).at("made"), "3");
}

TEST(ElementRoute, LeavesAPluginsFailureAsItIs) {
    ExpectFailureWithDetail([] { BuildFrom("<ThrowingModel/>", {"ThrowingModel"}); },
                            {CANNOT_RESTORE_BASE_MODEL, "element+model"}, "the plug-in's own words");
    ExpectFailureWithDetail([] { BuildFrom("<ThrowingModel/>", {"ThrowingModel"}, nullptr, nullptr, ""); },
                            {CANNOT_RESTORE_BASE_MODEL, "element+dictionaries"}, "the plug-in's own words");
    EXPECT_EQ(Counter("ThrowingModel", "TranslatorsDeleted"), 0);
}

} // namespace

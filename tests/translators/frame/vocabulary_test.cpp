#include "support/folders.h"

#include <MCVeltrane_900/PMMLModelTags.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using MCVeltrane_900::PMMLModelTags;

struct Entry {
    std::string name;
    std::string literal;
};

std::vector<Entry> ExportedEntries() {
    return {
#define VELTRANE_TAG(name, literal) {#name, PMMLModelTags::name},
#include <MCVeltrane_900/PMMLModelTags.def>
    };
}

/// The list that the constants are held against: name, tab, literal.
std::vector<Entry> ListedEntries() {
    const auto file = std::filesystem::path(veltrane::tests::TestsFolder()) / "translators" / "vocabulary.tsv";
    std::ifstream in(file);
    EXPECT_TRUE(in.is_open()) << file;
    std::vector<Entry> entries;
    for (std::string line; std::getline(in, line);) {
        const std::size_t tab = line.find('\t');
        entries.push_back({line.substr(0, tab), line.substr(tab + 1)});
    }
    return entries;
}

std::map<std::string, std::string> ByName(const std::vector<Entry>& entries) {
    std::map<std::string, std::string> map;
    for (const Entry& entry : entries) {
        EXPECT_TRUE(map.emplace(entry.name, entry.literal).second) << entry.name << " twice";
    }
    return map;
}

TEST(Vocabulary, HasItsNumberOfConstants) {
    EXPECT_EQ(ExportedEntries().size(), 763u);
    EXPECT_EQ(ListedEntries().size(), 763u);
}

TEST(Vocabulary, AgreesWithTheListNameByName) {
    const auto exported = ByName(ExportedEntries());
    for (const Entry& listed : ListedEntries()) {
        SCOPED_TRACE(listed.name);
        const auto found = exported.find(listed.name);
        ASSERT_NE(found, exported.end());
        EXPECT_EQ(found->second, listed.literal);
    }
}

TEST(Vocabulary, NamesNothingThatTheListHasNot) {
    const auto listed = ByName(ListedEntries());
    for (const Entry& exported : ExportedEntries()) {
        EXPECT_TRUE(listed.contains(exported.name)) << exported.name;
    }
}

TEST(Vocabulary, CountsItsFamilies) {
    const std::map<std::string, int> expected = {{"XML_ATT_", 290}, {"XML_ELE_", 189}, {"XML_ELM_", 3},
                                                 {"XML_VAL_", 183}, {"XML_EXT_", 21},  {"XML_MSTAT_", 2},
                                                 {"XML_KORD_", 75}};
    std::map<std::string, int> found;
    for (const Entry& entry : ExportedEntries()) {
        ++found[entry.name.substr(0, entry.name.find('_', 4) + 1)];
    }
    EXPECT_EQ(found, expected);
}

TEST(Vocabulary, ConstantsAreArraysOfAClassWithoutInstances) {
    static_assert(std::is_same_v<decltype(PMMLModelTags::XML_ELE_PMML), const char[]>);
    EXPECT_FALSE(std::is_default_constructible_v<PMMLModelTags>);
}

TEST(KeptVocabulary, MisspelledLiteralsStand) {
    EXPECT_STREQ(PMMLModelTags::XML_ATT_DATETIMESECDONDSSINCE0, "dateTimeSecdondsSince[0]");
    EXPECT_STREQ(PMMLModelTags::XML_ATT_DATETIMEMILLISECDONDSSINCE1980, "dateTimeMillisecdondsSince[1980]");
    EXPECT_STREQ(PMMLModelTags::XML_ELE_MISCLASSIFICATIONCOST_OLD, "X-MisclassificatonCost");
    EXPECT_STREQ(PMMLModelTags::XML_ATT_STEPWISEREGR, "stepwisePolynormialRegression");
}

} // namespace

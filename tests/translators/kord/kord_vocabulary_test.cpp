#include "support/folders.h"

#include <MCVeltrane_900/KORDModelTags.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <type_traits>

namespace {

using MCVeltrane_900::KORDModelTags;

using Constants = std::multimap<std::string, std::string>;

Constants Exported() {
    return {
#define VELTRANE_TAG(name, literal) {#name, KORDModelTags::name},
#include <MCVeltrane_900/KORDModelTags.def>
    };
}

/// The list that the constants are held against: name, tab, literal.
Constants Listed() {
    const auto file = std::filesystem::path(veltrane::tests::TestsFolder()) / "translators" / "kord_vocabulary.tsv";
    std::ifstream in(file);
    EXPECT_TRUE(in.is_open()) << file;
    Constants constants;
    for (std::string line; std::getline(in, line);) {
        const std::size_t tab = line.find('\t');
        constants.emplace(line.substr(0, tab), line.substr(tab + 1));
    }
    return constants;
}

TEST(KordVocabulary, AgreesWithTheList) {
    EXPECT_EQ(Exported(), Listed());
}

TEST(KordVocabulary, CountsItsFamilies) {
    const std::map<std::string, int> expected = {
        {"XML_ELE_", 8}, {"XML_ATT_", 17}, {"XML_VAL_", 11}, {"XML_MODEL_", 42}, {"XML_MODELTYPE_", 5}};
    std::map<std::string, int> found;
    for (const auto& [name, literal] : Exported()) {
        ++found[name.substr(0, name.find('_', 4) + 1)];
    }
    EXPECT_EQ(found, expected);
}

TEST(KordVocabulary, ConstantsAreArraysOfAClassWithoutInstances) {
    static_assert(std::is_same_v<decltype(KORDModelTags::XML_ELE_DICTIONARY), const char[]>);
    EXPECT_FALSE(std::is_default_constructible_v<KORDModelTags>);
}

} // namespace

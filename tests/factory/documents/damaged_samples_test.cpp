#include "support/folders.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

// Every sample document, cut off at each place and with single bytes changed: each of them ends in a catalogued failure
// or is read.

using namespace MCVeltrane_900;

namespace {

enum class Outcome { READ, REFUSED, OUTSIDE_THE_CATALOGUE };

Outcome Read(const std::string& document) {
    std::istringstream in(document);
    ScoreDictionary* fields = nullptr;
    Outcome outcome = Outcome::READ;
    try {
        delete ModelFactory::GetTransformationDictionaryFromXML(in, fields, "UTF-8");
    } catch (const VTException& failure) {
        // The code 1 is that of a pair of an unknown field, which has a text of its own.
        const bool isCatalogued = failure.GetErrorCode() >= 260101 && failure.GetErrorCode() <= 260306;
        outcome = (isCatalogued || failure.GetErrorCode() == 1) && !failure.GetErrorMessage().empty()
                      ? Outcome::REFUSED
                      : Outcome::OUTSIDE_THE_CATALOGUE;
    }
    delete fields;
    return outcome;
}

std::vector<std::string> Samples() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(veltrane::tests::SamplesFolder())) {
        if (entry.path().extension() == ".pmml") {
            names.push_back(entry.path().string());
        }
    }
    return names;
}

class DamagedSample : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        ModelFactory::Initialize("");
        std::ifstream in(GetParam(), std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        document = text.str();
        ASSERT_EQ(Read(document), Outcome::READ);
    }

    std::string document;
};

TEST_P(DamagedSample, CutOffAnywhereIsRefused) {
    const std::size_t end = document.find_last_of('>');
    for (std::size_t length = 0; length < end; ++length) {
        ASSERT_EQ(Read(document.substr(0, length)), Outcome::REFUSED) << length;
    }
}

TEST_P(DamagedSample, WithOneByteChangedIsReadOrRefused) {
    constexpr int kTries = 10000;
    std::mt19937 random(900);
    const int tries = kTries / static_cast<int>(Samples().size()) + 1;
    for (int i = 0; i < tries; ++i) {
        std::string changed = document;
        const std::size_t place = random() % changed.size();
        changed[place] = static_cast<char>(random() % 256);
        ASSERT_NE(Read(changed), Outcome::OUTSIDE_THE_CATALOGUE) << place;
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, DamagedSample, testing::ValuesIn(Samples()), [](const auto& info) {
    std::string name = std::filesystem::path(info.param).stem().string();
    std::erase(name, '-');
    return name;
});

} // namespace

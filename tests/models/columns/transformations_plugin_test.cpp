// The library that gives hosts the derived fields of documents stands beside the plug-ins, and no model list names it.
#include <MCVeltrane_900/VTException.h>
#include <veltrane/column_scorer.h>
#include <veltrane/functions.h>

#include <gtest/gtest.h>

#include <array>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>

namespace {

using veltrane::ColumnScorer;
using GiveTransformations = ColumnScorer* (*)(std::istream& document, const std::string& encoding, int version);

std::filesystem::path PluginFolder() {
    Dl_info info{};
    dladdr(reinterpret_cast<const void*>(&veltrane::FunctionLibrary::OfHost), &info);
    return std::filesystem::canonical(info.dli_fname).parent_path() / "veltrane";
}

GiveTransformations FindEntry() {
    void* const library = dlopen((PluginFolder() / "Transformations900r.so").c_str(), RTLD_NOW | RTLD_LOCAL);
    return library == nullptr ? nullptr
                              : reinterpret_cast<GiveTransformations>(dlsym(library, "GiveMyTransformations"));
}

const std::string kDocument =
    "<PMML version='4.4' xmlns='http://www.dmg.org/PMML-4_4'><Header/><DataDictionary><DataField name='x' "
    "optype='continuous' dataType='double'/></DataDictionary><TransformationDictionary><DerivedField name='d' "
    "optype='continuous' dataType='double'><Apply function='+'><FieldRef field='x'/><Constant>1</Constant></Apply>"
    "</DerivedField></TransformationDictionary></PMML>";

class TransformationsPlugin : public testing::Test {
protected:
    std::unique_ptr<ColumnScorer> Give(const std::string& document, int version = ColumnScorer::kVersion) {
        std::istringstream in(document);
        return std::unique_ptr<ColumnScorer>(give(in, "UTF-8", version));
    }

    void SetUp() override { ASSERT_NE(give, nullptr); }

    const GiveTransformations give = FindEntry();
};

TEST_F(TransformationsPlugin, GivesDerivedFieldsInColumns) {
    const std::unique_ptr<ColumnScorer> scorer = Give(kDocument);
    ASSERT_NE(scorer, nullptr);
    ASSERT_EQ(scorer->Inputs().size(), 1U);
    EXPECT_EQ(scorer->Inputs()[0].name, "x");
    EXPECT_TRUE(scorer->Inputs()[0].isNeeded);
    ASSERT_EQ(scorer->Outputs().size(), 1U);
    EXPECT_EQ(scorer->Outputs()[0].name, "d");
    EXPECT_EQ(scorer->Outputs()[0].type, veltrane::DataType::DOUBLE);
    const std::array numbers{1.0, 2.5};
    std::array<double, 2> results{};
    std::array<std::uint8_t, 2> unscored{7, 7};
    veltrane::InputColumn input;
    input.numbers = numbers.data();
    veltrane::OutputColumn output;
    output.numbers = results.data();
    scorer->Score({2, &input}, *scorer->NewState(), {&output, unscored.data()});
    EXPECT_EQ(results, (std::array{2.0, 3.5}));
    EXPECT_EQ(unscored, (std::array<std::uint8_t, 2>{0, 0}));
}

TEST_F(TransformationsPlugin, LeavesOutWhatNobodyAsksFor) {
    const std::unique_ptr<ColumnScorer> scorer = Give(kDocument);
    const std::array numbers{1.0};
    veltrane::InputColumn input;
    input.numbers = numbers.data();
    const veltrane::OutputColumn nothing;
    scorer->Score({1, &input}, *scorer->NewState(), {&nothing, nullptr});
}

TEST_F(TransformationsPlugin, AnswersNullForWhatItDoesNotKnow) {
    EXPECT_EQ(Give(kDocument, ColumnScorer::kVersion + 1), nullptr);
    EXPECT_EQ(Give("<kord/>"), nullptr);
}

TEST_F(TransformationsPlugin, RefusesAFaultyDocument) {
    EXPECT_THROW(Give("<PMML version='4.4'/>"), MCVeltrane_900::VTException);
}

TEST_F(TransformationsPlugin, IsInNoList) {
    std::ifstream in(PluginFolder() / "modeldll.txt");
    const std::string list{std::istreambuf_iterator<char>(in), {}};
    EXPECT_NE(list.find("TreeModel"), std::string::npos);
    EXPECT_EQ(list.find("Transformations"), std::string::npos);
}

} // namespace

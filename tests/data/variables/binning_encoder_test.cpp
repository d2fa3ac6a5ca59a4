#include "data/sets/counted_values.h"
#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/ScoreBinningEncoder.h>
#include <MCVeltrane_900/ScoringLog.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>

namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;

struct BinRow {
    const char* name;
    std::vector<double> cutpoints;
    double number;
    double bin;
};

void PrintTo(const BinRow& row, std::ostream* out) {
    *out << row.name;
}

class BinningEncode : public testing::TestWithParam<BinRow> {};

TEST_P(BinningEncode, GivesTheBin) {
    const ScoreBinningEncoder encoder(GetParam().cutpoints);
    EXPECT_EQ(encoder.Encode(GetParam().number), GetParam().bin);
}

const BinRow kBinRows[] = {
    {"OneIsInTheBinBelowItsCutpoint", {1, 2}, 1.0, 0},
    {"BetweenTheCutpoints", {1, 2}, 1.5, 1},
    {"TwoIsInTheBinBelowItsCutpoint", {1, 2}, 2.0, 1},
    {"AboveTheCutpoints", {1, 2}, 2.5, 2},
    {"BelowTheCutpoints", {1, 2}, 0.0, 0},
    {"MissingIsInTheFirstBin", {1, 2}, kMissing, 0},
    {"InfinityIsInTheLastBin", {1, 2}, kInfinity, 2},
    {"MinusInfinityIsInTheFirstBin", {1, 2}, -kInfinity, 0},
    {"NaNIsInTheLastBin", {1, 2}, kNaN, 2},
    {"OneCutpointBelow", {5}, 4.0, 0},
    {"OneCutpointEqual", {5}, 5.0, 0},
    {"OneCutpointAbove", {5}, 6.0, 1},
    {"NoToleranceAtACutpoint", {1, 2}, 1.0 + 1e-15, 1},
    {"FiveCutpointsFirst", {1, 2, 3, 4, 5}, 1.0, 0},
    {"FiveCutpointsThird", {1, 2, 3, 4, 5}, 2.5, 2},
    {"FiveCutpointsFourth", {1, 2, 3, 4, 5}, 4.0, 3},
    {"FiveCutpointsFifth", {1, 2, 3, 4, 5}, 4.5, 4},
    {"FiveCutpointsAbove", {1, 2, 3, 4, 5}, 9.0, 5},
    {"FourCutpointsSecond", {1, 2, 3, 4}, 1.5, 1},
    {"FourCutpointsLast", {1, 2, 3, 4}, 3.5, 3},
    {"EmptyVectorBelowZero", {}, -1.0, 0},
    {"EmptyVectorZero", {}, 0.0, 1},
    {"EmptyVectorAboveZero", {}, 1.0, 1},
    {"EmptyVectorNaN", {}, kNaN, 1},
};

INSTANTIATE_TEST_SUITE_P(Rows, BinningEncode, testing::ValuesIn(kBinRows), veltrane::tests::NameOfRow());

TEST(BinningEncoder, BinIsTheNumberOfCutpointsBelow) {
    for (int size = 1; size <= 40; ++size) {
        std::vector<double> cutpoints;
        for (int i = 0; i < size; ++i) {
            cutpoints.push_back(i);
        }
        const ScoreBinningEncoder encoder(cutpoints);
        for (int half = -2; half <= 2 * size + 2; ++half) {
            const double number = half / 2.0;
            const auto below =
                std::count_if(cutpoints.begin(), cutpoints.end(), [number](double point) { return point < number; });
            EXPECT_EQ(encoder.Encode(number), below) << size << " cutpoints, number " << number;
        }
    }
}

TEST(BinningEncoder, UnorderedCutpointsStayInsideTheVector) {
    const ScoreBinningEncoder encoder(std::vector<double>{5, kNaN, -3, 5, kInfinity, 0});
    for (const double number : {-10.0, 0.0, 1.0, 5.0, 10.0, kInfinity, kNaN, kMissing}) {
        const double bin = encoder.Encode(number);
        EXPECT_GE(bin, 0);
        EXPECT_LE(bin, 6);
    }
}

TEST(BinningEncoder, DefaultHasNoBinsAndTellsTheSign) {
    const ScoreBinningEncoder encoder;
    EXPECT_EQ(encoder.GetNumberOfCategories(), 0);
    EXPECT_EQ(encoder.Encode(-1.0), 0.0);
    EXPECT_EQ(encoder.Encode(1.0), 1.0);
    EXPECT_TRUE(encoder.GetBinningCutpoints().empty());
}

TEST(BinningEncoder, CutpointsSetTheNumberOfBins) {
    ScoreBinningEncoder encoder(std::vector<double>{1, 2});
    EXPECT_EQ(encoder.GetNumberOfCategories(), 3);
    encoder.SetBinningCutpoints({4});
    EXPECT_EQ(encoder.GetNumberOfCategories(), 2);
    EXPECT_EQ(encoder.GetBinningCutpoints(), std::vector<double>{4});
    encoder.SetBinningCutpoints({});
    EXPECT_EQ(encoder.GetNumberOfCategories(), 1);
}

TEST(BinningEncoder, TextsAreReadAsNumbers) {
    ScoreBinningEncoder encoder(std::vector<double>{1, 2});
    EXPECT_EQ(encoder.GetEncoderType(), ScoreEncoder::ENCODER_BINNING);
    EXPECT_EQ(encoder.EncodeConst(std::string("1.5")), 1);
    EXPECT_EQ(encoder.EncodeConst(std::string("9")), 2);
    EXPECT_EQ(encoder.EncodeConst(std::string("")), 0);
    EXPECT_EQ(encoder.EncodeConst(std::string("abc")), 0);
    EXPECT_EQ(encoder.Encode(std::string("1.5")), 1);
}

TEST(BinningEncoder, OnlyNumbersHaveABin) {
    ScoreBinningEncoder encoder(std::vector<double>{1, 2});
    const NumericValue number(1.5);
    const StringValue text("1.5");
    const DateTimeValue date(1.5, DateTimeValue::VAL_TIME);
    EXPECT_EQ(encoder.EncodeConst(&number), 1);
    EXPECT_EQ(encoder.EncodeConst(&text), -1);
    EXPECT_EQ(encoder.EncodeConst(&date), -1);
    EXPECT_EQ(encoder.Encode(&number), 1);
    EXPECT_EQ(encoder.Encode(&text), -1);
}

/// An encoder that puts everything in one bin.
class HostBinning : public ScoreBinningEncoder {
public:
    using ScoreBinningEncoder::Encode;
    int EncodeConst(const std::string&) const override { return 41; }
    int EncodeConst(const ScoreValue*) const override { return 42; }
};

TEST(BinningEncoder, EncodeForwardsThroughTheVirtualOperations) {
    HostBinning encoder;
    const NumericValue number(1.5);
    EXPECT_EQ(encoder.Encode(std::string("1")), 41);
    EXPECT_EQ(encoder.Encode(&number), 42);
}

TEST(BinningEncoder, HasNoTextsAndNoLabels) {
    ScoreBinningEncoder encoder(std::vector<double>{1, 2});
    encoder.SetValueLabels({"a", "b", "c"});
    encoder.SetValueLabel(0, "a");
    EXPECT_EQ(encoder.GetValueLabels(), nullptr);
    EXPECT_EQ(encoder.Decode(0), "");
    EXPECT_EQ(encoder.DecodeNum(0), kMissing);
}

TEST(BinningEncoder, CopiesTakeTheCutpoints) {
    const ScoreBinningEncoder encoder(std::vector<double>{1, 2});
    const ScoreBinningEncoder copy(encoder);
    EXPECT_EQ(copy.GetBinningCutpoints(), (std::vector<double>{1, 2}));
    std::unique_ptr<ScoreEncoder> clone(encoder.Clone());
    EXPECT_EQ(clone->GetEncoderType(), ScoreEncoder::ENCODER_BINNING);
    EXPECT_EQ(clone->GetNumberOfCategories(), 3);
    EXPECT_EQ(clone->EncodeConst(std::string("1.5")), 1);
}

TEST(BinningEncoder, Displays) {
    EXPECT_EQ(Dump(ScoreBinningEncoder()), "\tScoreBinningEncoder: number of bins = 0\n\t\tCutpoints: \n");
    EXPECT_EQ(Dump(ScoreBinningEncoder(std::vector<double>{1, 2.5})),
              "\tScoreBinningEncoder: number of bins = 3\n\t\tCutpoints: 1 2.5 \n");
}

/// A working directory of its own, and a log that reads its configuration there; both are given up at the end.
class TraceFolder : public testing::Test {
protected:
    void SetUp() override {
        fOld = std::filesystem::current_path();
        std::random_device number;
        fFolder = std::filesystem::temp_directory_path() /
                  ("veltrane_binning_" + std::to_string(number()) + "_" + std::to_string(number()));
        ASSERT_TRUE(std::filesystem::create_directory(fFolder));
        std::filesystem::current_path(fFolder);
        delete ScoringLog::GetInstance();
    }

    void TearDown() override {
        delete ScoringLog::GetInstance();
        std::filesystem::current_path(fOld);
        std::filesystem::remove_all(fFolder);
    }

    /// The text of all files below the folder but the configuration.
    std::string Traced() const {
        std::string text;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(fFolder)) {
            if (entry.is_regular_file() && entry.path().filename() != "sc.cfg") {
                std::ifstream file(entry.path());
                text.append(std::istreambuf_iterator<char>(file), {});
            }
        }
        return text;
    }

private:
    std::filesystem::path fOld;
    std::filesystem::path fFolder;
};

using KeptBinningEncoderTrace = TraceFolder;

TEST_F(KeptBinningEncoderTrace, EntryAndExitBothSayExit) {
    std::ofstream("sc.cfg") << "trace_leve,1\n";
    EXPECT_EQ(ScoreBinningEncoder(std::vector<double>{1, 2}).Encode(1.0), 0.0);
    const std::string line = "Exit:MCVeltrane_900::ScoreBinningEncoder::Encode\n";
    EXPECT_EQ(Traced(), line + line);
    EXPECT_EQ(ScoreBinningEncoder().Encode(1.0), 1.0);
    EXPECT_EQ(Traced(), line + line + line + line);
}

TEST_F(TraceFolder, EncodeWritesNothingWithoutAConfiguration) {
    EXPECT_EQ(ScoreBinningEncoder(std::vector<double>{1, 2}).Encode(1.0), 0.0);
    EXPECT_EQ(Traced(), "");
}

} // namespace
} // namespace MCVeltrane_900

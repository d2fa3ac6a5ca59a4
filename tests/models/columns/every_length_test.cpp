// Batches of every length, from every place: for each sample and real document they hold what its cases give, with the
// same bits.
#include "models/columns/arrow_rows.h"
#include "models/kit/scoring.h"
#include "support/folders.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <filesystem>

using namespace veltrane::tests;
using veltrane::Document;

namespace {

constexpr std::size_t kMostLength = veltrane::ColumnScorer::kMostRows + 1;
constexpr std::size_t kRows = 2 * kMostLength + 8;

/// A batch from a row on. What looks back has the rows before in a batch of their own.
void CheckBatch(ArrowRows& rows, Document::State& shared, std::size_t first, std::size_t length, bool byColumns) {
    TestResults results;
    if (rows.Opened().NeedsOrder()) {
        Document::State own = rows.Opened().NewState();
        TestResults before;
        rows.Score(own, 0, first, byColumns, before);
        rows.Score(own, first, length, byColumns, results);
    } else {
        rows.Score(shared, first, length, byColumns, results);
    }
    ASSERT_EQ(results.array.length, static_cast<std::int64_t>(length));
    rows.ExpectCases(results, first);
}

/// Every length once, from places that change with it; and every place below 64 and around the borders of blocks, of
/// those that a scorer computes at once too.
void CheckEveryLength(ArrowRows& rows) {
    Document::State state = rows.Opened().NewState();
    for (std::size_t length = 0; length <= kMostLength; ++length) {
        ASSERT_NO_FATAL_FAILURE(CheckBatch(rows, state, length % 67, length, length % 2 == 1));
    }
    for (std::size_t first = 0; first <= kMostLength; ++first) {
        const std::size_t inBlock = first % 256;
        if (first <= 64 || inBlock <= 1 || inBlock == 255) {
            ASSERT_NO_FATAL_FAILURE(CheckBatch(rows, state, first, 1, first % 2 == 0));
            ASSERT_NO_FATAL_FAILURE(CheckBatch(rows, state, first, 257, first % 2 == 1));
        }
    }
}

/// A document, or each that a sample of trees stands for.
std::vector<std::string> DocumentsOf(const std::string& text) {
    if (text.find("\"STRATEGY\"") == std::string::npos) {
        return {text};
    }
    std::vector<std::string> documents;
    for (const char* strategy : {"lastPrediction", "weightedConfidence", "aggregateNodes"}) {
        const std::string untilChild = Replaced(text, "\"STRATEGY\"", std::string("\"") + strategy + "\"");
        documents.push_back(Replaced(untilChild, "\"NOCHILD\"", "\"returnLastPrediction\""));
    }
    return documents;
}

/// @return how many documents were taken; those of kinds without a plug-in are left out
int CheckFolder(const std::string& folder) {
    constexpr std::uintmax_t kLongest = 500000;
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        if (file.path().extension() != ".pmml" || std::filesystem::file_size(file) > kLongest) {
            continue;
        }
        SCOPED_TRACE(file.path().filename().string());
        for (const std::string& document : DocumentsOf(ReadFile(file.path().string()))) {
            std::optional<ArrowRows> rows;
            try {
                rows.emplace(document, kRows);
            } catch (const MCVeltrane_900::VTException&) {
                continue;
            }
            ++count;
            CheckEveryLength(*rows);
        }
    }
    return count;
}

TEST(BatchesOfEveryLength, AgreeWithCasesOfDerivedFields) {
    EXPECT_GE(CheckFolder(SamplesFolder()), 6);
}

TEST(BatchesOfEveryLength, AgreeWithCasesOfModels) {
    EXPECT_GE(CheckFolder(ModelSamplesFolder()), 6);
}

TEST(BatchesOfEveryLength, AgreeWithCasesOfRealDocuments) {
    for (const char* folder : {"/transform", "/models"}) {
        if (!std::filesystem::exists(CasesFolder() + folder)) {
            GTEST_SKIP() << "the real documents stand outside the tree";
        }
        EXPECT_GE(CheckFolder(CasesFolder() + folder), 4);
    }
}

} // namespace

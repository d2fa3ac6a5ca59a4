#include "columns/support/echo.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

using namespace veltrane::tests;
using veltrane::Document;

/// One document for all threads, each with a state.
namespace {

constexpr int kThreads = 8;
constexpr int kBatches = 20;

void InThreads(const std::function<void(int)>& action) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back(action, thread);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// Scores batches of a thread's own numbers.
/// @return how many cells are not as they must be
int WrongCells(const Document& document, int thread, const char* result) {
    int wrong = 0;
    Document::State state = document.NewState();
    for (int number = 0; number < kBatches; ++number) {
        const std::vector<double> numbers(1100, thread * 100 + number);
        TestBatch batch({Doubles("x", numbers), Texts("t", "u", TestTexts(numbers.size(), std::to_string(thread)))});
        TestResults results;
        document.Score(&batch.array, &batch.schema, state, &results.array, &results.schema);
        for (const std::string& cell : results.Cells(result)) {
            wrong += cell == Digits(numbers[0]) ? 0 : 1;
        }
    }
    return wrong;
}

TEST(DocumentThreads, ShareADocumentThatIsScoredInBlocks) {
    const Document document = Echo(FieldText("x", "double") + FieldText("t", "string"));
    std::atomic<int> wrong = 0;
    InThreads([&](int thread) { wrong += WrongCells(document, thread, "x"); });
    EXPECT_EQ(wrong, 0);
}

TEST(DocumentThreads, ShareADocumentThatIsScoredByRows) {
    const Document document =
        Document::OfBytes("<PMML version='4.4'><DataDictionary numberOfFields='2'>" + FieldText("x", "double") +
                              FieldText("t", "string") +
                              "</DataDictionary><RowsModel><ResultField name='x' optype='continuous' dataType='double' "
                              "feature='predictedValue'/></RowsModel></PMML>",
                          TestOptions());
    std::atomic<int> wrong = 0;
    InThreads([&](int thread) { wrong += WrongCells(document, thread, "x"); });
    EXPECT_EQ(wrong, 0);
}

TEST(DocumentThreads, OpenAndCloseDocumentsOfTheirOwn) {
    std::atomic<int> wrong = 0;
    InThreads([&](int thread) {
        for (int round = 0; round < 5; ++round) {
            const Document document = Echo(FieldText("x", "double") + FieldText("t", "string"));
            wrong += WrongCells(document, thread, "x");
        }
    });
    EXPECT_EQ(wrong, 0);
}

} // namespace

// Derived fields in columns are those of each case by itself, bit for bit: for random documents and real ones, wherever
// blocks begin and end.
#include "kit/columns/buffers.h"
#include "models/columns/column_document.h"
#include "models/expressions/random_expressions.h"
#include "support/folders.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace veltrane::tests;
using veltrane::ColumnScorer;
using veltrane::DataType;

std::string Document(const std::string& derived) {
    return "<PMML version='4.4' xmlns='http://www.dmg.org/PMML-4_4'><Header/><DataDictionary numberOfFields='6'>"
           "<DataField name='x' optype='continuous' dataType='double'><Interval closure='closedClosed' "
           "leftMargin='-3' rightMargin='4'/></DataField>"
           "<DataField name='y' optype='continuous' dataType='double'/>"
           "<DataField name='n' optype='continuous' dataType='integer'/>"
           "<DataField name='b' optype='categorical' dataType='boolean'/>"
           "<DataField name='s' optype='categorical' dataType='string'><Value value='n/a' property='missing'/>"
           "<Value value='odd' property='invalid'/></DataField>"
           "<DataField name='day' optype='ordinal' dataType='date'/></DataDictionary>"
           "<TransformationDictionary>" +
           derived + "</TransformationDictionary></PMML>";
}

std::string Derived(const std::string& name, const std::string& type, const std::string& expression) {
    return "<DerivedField name='" + name + "' optype='categorical' dataType='" + type + "'>" + expression +
           "</DerivedField>";
}

std::string RandomLag(Random& random) {
    static const char* const kFields[] = {"x", "n", "s", "d0", "b"};
    static const char* const kAggregates[] = {"avg", "max", "median", "min", "product", "sum", "stddev", "none"};
    const std::string aggregate = kAggregates[Below(random, 8)];
    const std::string block = Below(random, 2) == 0 ? "" : "<BlockIndicator field='b'/>";
    return std::string("<Lag field='") + kFields[Below(random, 5)] + "' n='" + std::to_string(1 + Below(random, 5)) +
           "' aggregate='" + aggregate + "'>" + block + "</Lag>";
}

/// Some fields, each of which may refer to the ones before.
std::string RandomDocument(Random& random, bool looksBack) {
    std::string derived = Derived("d0", "double", RandomNumber(random, 3));
    derived += Derived("d1", "boolean", RandomTruth(random, 3));
    derived += Derived("d2", "string",
                       Apply("concat", "<FieldRef field='d0'/><FieldRef field='s'/>" + RandomNumber(random, 2)));
    derived += Derived("d3", "integer", Apply("stringLength", "<FieldRef field='d2'/>"));
    derived += Derived("d4", "string", Apply("uppercase", Apply("trimBlanks", "<FieldRef field='s'/>")));
    derived += Derived("d5", "string", Apply("concat", "<FieldRef field='d4'/><Constant>-</Constant>"));
    derived += Derived("d6", "double", "<FieldRef field='x'/>");
    derived += Derived("d7", "boolean", Apply("isValid", "<FieldRef field='d6'/>"));
    derived += Derived("d8", "integer", Apply("dateDaysSinceYear", "<FieldRef field='day'/><Constant>1970</Constant>"));
    derived += Derived("d9", "string", "<FieldRef field='day'/>");
    if (looksBack) {
        derived += Derived("back0", "double", RandomLag(random));
        derived += Derived("back1", "string", RandomLag(random));
        derived += Derived("back2", "string",
                           Apply("if", RandomTruth(random, 2) + RandomLag(random) + "<FieldRef field='s'/>"));
    }
    return Document(derived);
}

TEST(TransformationColumns, AreThoseOfRandomDocuments) {
    Random random(20267);
    for (int round = 0; round < 300; ++round) {
        ColumnDocument document(RandomDocument(random, false));
        EXPECT_FALSE(document.Scorer().NeedsOrder());
        document.Fill(random, static_cast<std::size_t>(Below(random, 60)));
        document.Check(static_cast<std::size_t>(1 + Below(random, 60)), 0, round % 2 == 0);
        ASSERT_FALSE(HasFailure()) << round;
    }
}

TEST(TransformationColumns, LookBackAcrossBlocks) {
    Random random(20268);
    for (int round = 0; round < 300; ++round) {
        ColumnDocument document(RandomDocument(random, true));
        EXPECT_TRUE(document.Scorer().NeedsOrder());
        document.Fill(random, static_cast<std::size_t>(Below(random, 60)));
        document.Check(static_cast<std::size_t>(1 + Below(random, 12)), static_cast<std::size_t>(Below(random, 5)),
                       round % 2 == 0);
        ASSERT_FALSE(HasFailure()) << round;
    }
}

TEST(TransformationColumns, LookBackOnParametersToo) {
    Random random(20269);
    ColumnDocument document(Document(
        "<DefineFunction name='before' optype='continuous' dataType='double'><ParameterField name='p' "
        "dataType='double'/><Lag field='p' n='2'/></DefineFunction>" +
        Derived("d", "double", Apply("+", Apply("before", "<FieldRef field='x'/>") + "<FieldRef field='y'/>"))));
    document.Fill(random, 50);
    document.Check(7, 3, false);
}

TEST(TransformationColumns, KeepWhatThreadsWriteApart) {
    const ColumnDocument document(Document(Derived("d", "double", "<FieldRef field='x'/>")));
    std::vector<std::unique_ptr<ColumnScorer::State>> states;
    for (int i = 0; i < 16; ++i) {
        states.push_back(document.Scorer().NewState());
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(states.back().get()) % veltrane_kit::kBytesApart, 0U);
    }
}

/// Rows for more than one block, and their results case by case.
class TransformationBlocks : public testing::Test {
protected:
    static constexpr std::size_t kRows = ColumnScorer::kMostRows + 1;

    TransformationBlocks() : random(20270), document(RandomDocument(random, true)), whole(document.Scorer(), kRows) {
        document.Fill(random, kRows);
        document.Score(*document.Scorer().NewState(), ColumnScorer::kMostRows, 0, true, whole);
        document.ExpectCases(whole);
    }

    bool AreTheSame(std::size_t length, std::size_t offset) {
        ResultColumns parts(document.Scorer(), kRows);
        document.Score(*document.Scorer().NewState(), length, offset, (length + offset) % 2 == 0, parts);
        return parts == whole;
    }

    Random random;
    ColumnDocument document;
    ResultColumns whole;
};

TEST_F(TransformationBlocks, AreTheSameOfAnyLength) {
    for (std::size_t length = 1; length <= kRows; ++length) { // the last one is more than a host may hand over
        ASSERT_TRUE(AreTheSame(length, 0)) << length;
    }
}

TEST_F(TransformationBlocks, AreTheSameWhereverTheyBegin) {
    for (std::size_t offset = 1; offset < ColumnScorer::kMostRows; ++offset) {
        ASSERT_TRUE(AreTheSame(ColumnScorer::kMostRows, offset)) << offset;
    }
}

TEST_F(TransformationBlocks, MayBeEmpty) {
    const auto state = document.Scorer().NewState();
    ResultColumns results(document.Scorer(), kRows);
    const std::vector<veltrane::InputColumn> none(document.Scorer().Inputs().size());
    document.Scorer().Score({0, none.data()}, *state, results.From(0));
    document.Score(*state, 100, 0, false, results);
    EXPECT_TRUE(results == whole);
}

TEST(TransformationColumns, LieDeepWithinOneAnother) {
    Random random(20274);
    std::string number = "<FieldRef field='x'/>";
    std::string text = "<FieldRef field='s'/>";
    for (int i = 0; i < 800; ++i) {
        number = i % 2 == 0 ? Apply("+", number + "<FieldRef field='y'/>")
                            : Apply("if", "<FieldRef field='b'/>" + number + "<FieldRef field='n'/>");
        text = i % 10 == 0 ? Apply("concat", text + "<Constant>-</Constant>") : Apply("trimBlanks", text);
    }
    ColumnDocument document(Document(Derived("number", "double", number) + Derived("text", "string", text)));
    document.Fill(random, 50);
    document.Check(50, 0, false);
    document.Check(50, 0, true);
}

TEST(TransformationColumnsThreads, ShareOneScorer) {
    Random random(20272);
    ColumnDocument document(RandomDocument(random, false));
    document.Fill(random, 500);
    std::vector<ResultColumns> results(8, ResultColumns(document.Scorer(), document.Rows()));
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < results.size(); ++i) {
        threads.emplace_back([&document, &results, i] {
            ColumnDocument own = document;
            own.Score(*own.Scorer().NewState(), 10 + 50 * i, 0, i % 2 == 0, results[i]);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const ResultColumns& each : results) {
        EXPECT_TRUE(each == results.front());
    }
    document.ExpectCases(results.front());
}

std::string FileText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Those of a folder that the kit reads: some break rules that the library alone doesn't have.
void CheckDocuments(const std::filesystem::path& folder, int atLeast) {
    Random random(20273);
    int checked = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".pmml") {
            continue;
        }
        SCOPED_TRACE(entry.path().string());
        try {
            ColumnDocument document(FileText(entry.path()));
            for (const std::size_t rows : {1U, 77U, 600U}) {
                document.Fill(random, rows);
                document.Check(300, rows % 10, rows == 77);
            }
            ++checked;
        } catch (const MCVeltrane_900::VTException&) {
            continue;
        }
    }
    EXPECT_GE(checked, atLeast);
}

TEST(TransformationColumns, AreThoseOfTheSamples) {
    CheckDocuments(SamplesFolder(), 6);
    CheckDocuments(ModelSamplesFolder(), 1);
}

TEST(TransformationColumns, AreThoseOfRealDocuments) {
    const std::filesystem::path folder = std::filesystem::path(CasesFolder()) / "transform";
    if (!std::filesystem::exists(folder)) {
        GTEST_SKIP() << "the real documents stand outside the tree";
    }
    CheckDocuments(folder, 4);
}

} // namespace

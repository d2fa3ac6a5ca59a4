#include "columns/support/echo.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace veltrane::tests;
using veltrane::Document;
using Cells = std::vector<std::string>;

/// Offsets, slices, lengths, and what a batch leaves behind.
namespace {

std::vector<TestColumn> LongColumns(std::size_t rows) {
    std::vector<double> numbers;
    std::vector<bool> there;
    TestTexts texts;
    std::vector<std::int16_t> codes;
    for (std::size_t row = 0; row < rows; ++row) {
        numbers.push_back(static_cast<double>(row) / 3);
        there.push_back(row % 5 != 0);
        texts.push_back(row % 7 == 0 ? std::nullopt : std::optional(std::string(row % 40, 'a')));
        codes.push_back(static_cast<std::int16_t>(row % 3));
    }
    return {Doubles("x", numbers),
            Doubles("n", numbers, there),
            Texts("t", "u", texts),
            Texts("v", "vu", texts),
            Encoded(Numbers("d", "s", codes, there), Texts("", "u", {"red", "green", "blue"})),
            Truths("b", there)};
}

const char* const kNames[] = {"x", "n", "t", "v", "d", "b"};

Document LongDocument() {
    return Echo(FieldText("x", "double") + FieldText("n", "double") + FieldText("t", "string") +
                FieldText("v", "string") + FieldText("d", "string", "values='red green blue'") +
                FieldText("b", "boolean"));
}

/// Each column as the whole batch gives it, from a row on.
Cells Part(const Cells& all, std::size_t first, std::size_t count) {
    return Cells(all.begin() + static_cast<std::ptrdiff_t>(first),
                 all.begin() + static_cast<std::ptrdiff_t>(first + count));
}

TEST(Batches, OfEveryLengthAgree) {
    constexpr std::size_t kRows = 2100;
    const Document document = LongDocument();
    TestBatch whole(LongColumns(kRows));
    TestResults all;
    Score(document, whole, all);
    EXPECT_EQ(all.Cells("n")[5], "null");
    EXPECT_EQ(all.Cells("d")[4], "green");
    for (const std::size_t length : {0, 1, 7, 8, 9, 63, 1023, 1024, 1025, 2047, 2048, 2049}) {
        TestBatch batch(LongColumns(kRows), static_cast<std::int64_t>(length));
        TestResults results;
        Score(document, batch, results);
        ASSERT_EQ(results.array.length, static_cast<std::int64_t>(length));
        for (const char* name : kNames) {
            ASSERT_EQ(results.Cells(name), Part(all.Cells(name), 0, length)) << name << " " << length;
        }
    }
}

TEST(Batches, OfEveryOffsetAgree) {
    constexpr std::size_t kRows = 1100;
    const Document document = LongDocument();
    TestBatch whole(LongColumns(kRows));
    TestResults all;
    Score(document, whole, all);
    for (const std::size_t offset : {1, 3, 8, 13, 64, 1023, 1024}) {
        const auto left = static_cast<std::int64_t>(kRows - offset);
        TestBatch ofStruct(LongColumns(kRows), left);
        ofStruct.array.offset = static_cast<std::int64_t>(offset);
        TestBatch ofColumns(LongColumns(kRows), left);
        for (std::size_t at = 0; at < std::size(kNames); ++at) {
            ofColumns.Child(at).offset = static_cast<std::int64_t>(offset);
            ofColumns.Child(at).length = left;
            ofColumns.Child(at).null_count = -1;
        }
        TestResults sliced;
        TestResults moved;
        Score(document, ofStruct, sliced);
        Score(document, ofColumns, moved);
        for (const char* name : kNames) {
            ASSERT_EQ(sliced.Cells(name), Part(all.Cells(name), offset, kRows - offset)) << name << " " << offset;
            ASSERT_EQ(moved.Cells(name), sliced.Cells(name)) << name << " " << offset;
        }
    }
}

/// Where the buffers of a batch without rows are: producers differ.
enum class EmptyBuffers { ARE_THERE, ARE_NULL, ARE_NOT_LISTED };

void TakeBuffers(ArrowArray& array, EmptyBuffers buffers) {
    for (std::int64_t at = 0; buffers != EmptyBuffers::ARE_THERE && at < array.n_buffers; ++at) {
        array.buffers[at] = nullptr;
    }
    array.buffers = buffers == EmptyBuffers::ARE_NOT_LISTED ? nullptr : array.buffers;
}

TEST(Batches, MayBeEmptyAndWithoutBuffers) {
    const Document document = LongDocument();
    for (const EmptyBuffers buffers : {EmptyBuffers::ARE_THERE, EmptyBuffers::ARE_NULL, EmptyBuffers::ARE_NOT_LISTED}) {
        SCOPED_TRACE(static_cast<int>(buffers));
        std::vector<TestColumn> columns = LongColumns(0);
        columns[4].dictionary->length = 0;
        TestBatch batch(columns);
        TakeBuffers(batch.array, buffers);
        for (std::size_t at = 0; at < std::size(kNames); ++at) {
            TakeBuffers(batch.Child(at), buffers);
            if (batch.Child(at).dictionary != nullptr) {
                TakeBuffers(*batch.Child(at).dictionary, buffers);
            }
        }
        TestResults results;
        Score(document, batch, results);
        EXPECT_EQ(batch.released, 1);
        EXPECT_EQ(results.array.length, 0);
        EXPECT_EQ(results.array.n_children, 3 * static_cast<std::int64_t>(std::size(kNames)));
        EXPECT_EQ(results.Cells("t"), Cells());
    }
}

TEST(Batches, HaveTheirBuffersWhereADictionaryHasEntries) {
    const Document document = LongDocument();
    TestBatch batch(LongColumns(0));
    batch.Child(4).dictionary->buffers = nullptr;
    TestResults results;
    ExpectFailure([&] { Score(document, batch, results); }, {MISSING_PART, "d", "buffers"});
}

TEST(Batches, WithoutAColumnLeaveAFieldMissing) {
    const Document document = Echo(FieldText("x", "double") + FieldText("y", "double", "needed='no'") +
                                   FieldText("t", "string", "needed='no'"));
    TestBatch batch({Texts("more", "u", {"a", "b"}), Doubles("x", {1, 2})});
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("x"), (Cells{"1", "2"}));
    EXPECT_EQ(results.Cells("y"), (Cells{"null", "null"}));
    EXPECT_EQ(results.Cells("t"), (Cells{"null", "null"}));
}

TEST(Batches, NeedNoColumnsWhereNoFieldDoes) {
    const Document document = Echo(FieldText("x", "double", "needed='no'"));
    TestBatch batch({}, 3);
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("x"), (Cells{"null", "null", "null"}));
}

TEST(Batches, OfAStructWithNullsMissWholeRows) {
    const Document document = Echo(FieldText("x", "double") + FieldText("t", "string"));
    TestBatch batch({Doubles("x", {1, 2, 3, 4}), Texts("t", "u", {"a", "b", "c", "d"})}, 3);
    const std::string validity = BitsOf({true, true, false, true});
    const void* buffers[] = {validity.data()};
    batch.array.buffers = buffers;
    batch.array.null_count = 1;
    batch.array.offset = 1;
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("x"), (Cells{"2", "null", "4"}));
    EXPECT_EQ(results.Cells("t"), (Cells{"b", "null", "d"}));
}

TEST(Batches, AtAnyAddressAreRead) {
    const Document document = Echo(FieldText("x", "double") + FieldText("d", "string"));
    TestBatch batch(
        {Doubles("x", {1.5, -2}), Encoded(Numbers<std::int32_t>("d", "i", {1, 0}), Texts("", "u", {"red", "blue"}))});
    std::string odd;
    const void* buffers[2][2] = {};
    for (std::size_t at = 0; at < 2; ++at) {
        const std::size_t bytes = at == 0 ? 16 : 8;
        odd.resize(64);
        char* const start = odd.data() + 1 + 24 * at;
        std::memcpy(start, batch.Child(at).buffers[1], bytes);
        buffers[at][1] = start;
        batch.Child(at).buffers = buffers[at];
    }
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("x"), (Cells{"1.5", "-2"}));
    EXPECT_EQ(results.Cells("d"), (Cells{"blue", "red"}));
}

TEST(Batches, HaveOneMarkForOneDictionary) {
    const Document document = Echo(FieldText("d", "string"));
    Document::State state = document.NewState();
    const auto markOf = [&](const TestTexts& entries) {
        TestBatch batch({Encoded(Numbers<std::int8_t>("d", "c", {0, 0}), Texts("", "u", entries))});
        TestResults results;
        document.Score(&batch.array, &batch.schema, state, &results.array, &results.schema);
        EXPECT_EQ(results.Cells("d mark")[0], results.Cells("d mark")[1]);
        return results.Cells("d mark")[0];
    };
    const std::string first = markOf({"red", "blue"});
    EXPECT_NE(first, "0");
    EXPECT_EQ(markOf({"red", "blue"}), first);
    const std::string second = markOf({"redb", "lue"});
    EXPECT_NE(second, first);
    EXPECT_NE(markOf({"redb"}), second);
}

TEST(Results, AreOfTheirFieldsTypes) {
    const Document document =
        Echo(FieldText("x", "double") + FieldText("i", "integer") + FieldText("b", "boolean") +
             FieldText("t", "string") + FieldText("c", "string", "values='red blue'") + FieldText("d", "date") +
             FieldText("h", "time") + FieldText("m", "dateTime") + FieldText("n", "dateDaysSince[1970]"));
    TestResults results;
    document.OutputSchema(&results.schema);
    const std::pair<const char*, const char*> formats[] = {{"x", "g"},   {"i", "l"},      {"b", "b"},
                                                           {"t", "u"},   {"c", "i to u"}, {"d", "tdD"},
                                                           {"h", "ttu"}, {"m", "tsu:"},   {"n", "g"}};
    for (const auto& [name, format] : formats) {
        EXPECT_EQ(results.FormatOf(name), format);
    }
    EXPECT_STREQ(results.schema.format, "+s");
    EXPECT_EQ(results.schema.children[0]->flags, ARROW_FLAG_NULLABLE);
    ArrowSchema inputs{};
    document.InputSchema(&inputs);
    EXPECT_EQ(inputs.n_children, 9);
    EXPECT_STREQ(inputs.children[4]->format, "u");
    EXPECT_STREQ(inputs.children[1]->name, "i");
    inputs.release(&inputs);
    EXPECT_EQ(inputs.release, nullptr);
}

TEST(Results, OfWholeNumbersHoldThemOrSayWhichNot) {
    const Document document = Echo(FieldText("i", "integer"));
    TestBatch good({Doubles("i", {9007199254740992.0, -9223372036854775808.0, std::nan("")})});
    TestResults results;
    Score(document, good, results);
    EXPECT_EQ(results.Cells("i"), (Cells{"9007199254740992", "-9223372036854775808", "null"}));
    const std::pair<double, const char*> bad[] = {
        {9223372036854775808.0, "9223372036854775808"}, {2.5, "2.5"}, {std::numeric_limits<double>::infinity(), "inf"}};
    for (const auto& [number, digits] : bad) {
        TestBatch batch({Doubles("i", {1, number})});
        TestResults none;
        ExpectFailure([&] { Score(document, batch, none); }, {UNFIT_RESULT, "i", "1", digits, "l"});
        EXPECT_EQ(batch.released, 1);
        EXPECT_EQ(none.array.release, nullptr);
    }
    veltrane::DocumentOptions options = TestOptions();
    options.wholeNumbersAsDoubles = true;
    const Document doubles = Document::OfBytes(EchoText(FieldText("i", "integer")), options);
    TestBatch batch({Doubles("i", {1, 1e300})});
    TestResults all;
    Score(doubles, batch, all);
    EXPECT_EQ(all.Cells("i"), (Cells{"1", "1e+300"}));
}

TEST(Results, OfDatesHoldThemOrSayWhichNot) {
    const Document document = Echo(FieldText("d", "date"), "");
    veltrane::DocumentOptions options = TestOptions();
    options.modelOptions = {{"factor", "1e6"}};
    const Document far = Document::OfBytes(EchoText(FieldText("d", "date") + FieldText("m", "dateTime")), options);
    TestBatch batch({Numbers<std::int32_t>("d", "tdD", {19782}), Numbers<std::int64_t>("m", "tss:", {0})});
    TestResults results;
    ExpectFailure([&] { Score(far, batch, results); }, {UNFIT_RESULT, "d", "0", "1.9782e+10", "tdD"});
    TestBatch late({Nothing("d", 1), Numbers<std::int64_t>("m", "tss:", {9223372036854})});
    ExpectFailure([&] { Score(far, late, results); }, {UNFIT_RESULT, "m", "0", "9.223372036854e+18", "tsu:"});
}

TEST(Results, OfTextsAreUtf8OrSayWhichNot) {
    const Document document = Echo(FieldText("t", "string"), "fault='no UTF-8'");
    TestBatch batch({Texts("t", "u", {"a"})});
    TestResults results;
    ExpectFailure([&] { Score(document, batch, results); }, {BAD_COLUMN_TEXT, "t", "0"});
}

TEST(Results, OfTextsTakeTwoGigabytesAtMost) {
    veltrane::DocumentOptions options = TestOptions();
    options.encoding = "ISO-8859-1"; // in which texts aren't looked at
    const Document document = Document::OfBytes(EchoText(FieldText("t", "string"), "fault='long'"), options);
    TestBatch batch({Texts("t", "z", {"a"})});
    TestResults results;
    ExpectFailure([&] { Score(document, batch, results); }, {RESULTS_TOO_LONG, "t", "2147483647"});
    EXPECT_EQ(batch.released, 1);
}

TEST(Results, HaveChildrenThatMayBeMovedOut) {
    const Document document = LongDocument();
    TestBatch batch(LongColumns(10));
    ArrowArray results{};
    ArrowSchema schema{};
    Document::State state = document.NewState();
    document.Score(&batch.array, &batch.schema, state, &results, &schema);
    ArrowArray column = *results.children[12]; // the field d, with its dictionary
    ArrowSchema type = *schema.children[12];
    results.children[12]->release = nullptr;
    schema.children[12]->release = nullptr;
    results.release(&results);
    schema.release(&schema);
    EXPECT_STREQ(type.name, "d");
    EXPECT_EQ(column.length, 10);
    EXPECT_EQ(column.dictionary->length, 3);
    EXPECT_EQ(static_cast<const std::int32_t*>(column.buffers[1])[4], 1);
    column.release(&column);
    type.release(&type);
    EXPECT_EQ(column.release, nullptr);
}

TEST(Results, OutliveTheirDocument) {
    TestResults results;
    {
        const Document document = LongDocument();
        TestBatch batch(LongColumns(10));
        Score(document, batch, results);
    }
    EXPECT_EQ(results.Cells("d")[4], "green");
}

TEST(StatesThatLookBack, TakeTheRowsInOrder) {
    const Document document = Echo(FieldText("x", "double"), "lag='1'");
    EXPECT_TRUE(document.NeedsOrder());
    EXPECT_FALSE(Echo(FieldText("x", "double")).NeedsOrder());
    Document::State state = document.NewState();
    const auto score = [&](std::vector<TestColumn> columns) {
        TestBatch batch(columns);
        TestResults results;
        document.Score(&batch.array, &batch.schema, state, &results.array, &results.schema);
        return results.Cells("x");
    };
    EXPECT_EQ(score({Doubles("x", {1, 2})}), (Cells{"1", "3"}));
    // A batch that is refused is none of the rows before.
    ExpectFailure([&] { score({Texts("x", "u", {"a"})}); }, {UNFIT_COLUMN_TYPE, "x", "u", "double"});
    EXPECT_EQ(score({Doubles("x", {4})}), (Cells{"7"}));
    Document::State other = document.NewState();
    TestBatch batch({Doubles("x", {5})});
    TestResults results;
    document.Score(&batch.array, &batch.schema, other, &results.array, &results.schema);
    EXPECT_EQ(results.Cells("x"), (Cells{"5"}));
}

/// The rows have gone through the state, so that those of the next batch look back on them.
TEST(StatesThatLookBack, SeeAllRowsOfABatchWhoseResultsDoNotFit) {
    const Document document = Echo(FieldText("i", "integer"), "lag='1'");
    Document::State state = document.NewState();
    std::vector<double> numbers(2500, 1.0);
    numbers[3] = numbers.back() = 0.5; // in the first of three blocks, and in the last
    TestBatch unfit({Doubles("i", numbers)});
    TestResults none;
    ExpectFailure([&] { document.Score(&unfit.array, &unfit.schema, state, &none.array); },
                  {UNFIT_RESULT, "i", "3", "3.5", "l"});
    EXPECT_EQ(unfit.released, 1);
    EXPECT_EQ(none.array.release, nullptr);
    TestBatch next({Doubles("i", {4})});
    TestResults results;
    document.Score(&next.array, &next.schema, state, &results.array, &results.schema);
    EXPECT_EQ(results.Cells("i"), (Cells{"2503"}));
}

} // namespace

#include "columns/support/echo.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <sstream>

using namespace veltrane::tests;
using veltrane::Document;

/// Batches that can't be used: each ends in a message of its own before the first row, and is released once.
namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

/// A batch of the fields x (double), t (string) and d (string), after a change.
struct MalformedBatch {
    const char* name;
    void (*change)(TestBatch& batch);
    Failure failure;
};

void PrintTo(const MalformedBatch& row, std::ostream* out) {
    *out << row.name;
}

class Malformed : public testing::TestWithParam<MalformedBatch> {};

std::vector<TestColumn> Columns() {
    return {Doubles("x", {1, 2}, {true, false}), Texts("t", "u", {"red", "blue"}),
            Encoded(Numbers<std::int8_t>("d", "c", {0, 1}), Texts("", "vu", {"a", "a text that is quite long"})),
            Nothing("extra", 0)};
}

Document Opened() {
    return Echo(FieldText("x", "double") + FieldText("t", "string") + FieldText("d", "string"));
}

TEST_P(Malformed, IsToldAndReleasedOnce) {
    const Document document = Opened();
    TestBatch batch(Columns(), 2);
    GetParam().change(batch);
    const bool wasThere = batch.array.release != nullptr;
    TestResults results;
    ExpectFailure([&] { Score(document, batch, results); }, GetParam().failure);
    EXPECT_EQ(batch.released, wasThere ? 1 : 0);
    EXPECT_EQ(batch.array.release, nullptr);
    EXPECT_EQ(batch.schemaReleased, 0);
    EXPECT_EQ(results.array.release, nullptr);
    EXPECT_EQ(results.schema.release, nullptr);
}

TEST(MalformedBatches, AreNotThatAsItWas) {
    const Document document = Opened();
    TestBatch batch(Columns(), 2);
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("d"), (std::vector<std::string>{"a", "a text that is quite long"}));
}

/// Buffers that tests put in the place of others.
const std::int32_t kFalling[] = {0, 3, 2};
const std::int32_t kNegative[] = {-1, 3, 7};
const std::int8_t kBeyond[] = {0, 2};
const std::int8_t kBelow[] = {-1, 0};
const char kNoUtf8[] = "redbl\xC3\x28";
const void* gBuffers[8];

/// Lets a column have another buffer.
void Put(ArrowArray& array, int at, const void* buffer) {
    for (int each = 0; each < array.n_buffers; ++each) {
        gBuffers[each] = each == at ? buffer : array.buffers[each];
    }
    array.buffers = gBuffers;
}

INSTANTIATE_TEST_SUITE_P(
    Whole, Malformed,
    testing::Values(
        MalformedBatch{
            "ReleasedArray", [](TestBatch& b) { b.array.release = nullptr; }, {RELEASED_STRUCT, "array", "columns"}},
        MalformedBatch{
            "ReleasedSchema", [](TestBatch& b) { b.schema.release = nullptr; }, {RELEASED_STRUCT, "schema", "columns"}},
        MalformedBatch{"NoStruct", [](TestBatch& b) { b.schema.format = "+l"; }, {NO_STRUCT_OF_COLUMNS, "+l"}},
        MalformedBatch{"NoFormat", [](TestBatch& b) { b.schema.format = nullptr; }, {NO_STRUCT_OF_COLUMNS, ""}},
        MalformedBatch{"FewerArraysThanTypes",
                       [](TestBatch& b) { b.array.n_children = 3; },
                       {WRONG_PART_COUNT, "children", "columns", "3", "4"}},
        MalformedBatch{"NegativeChildCount",
                       [](TestBatch& b) { b.array.n_children = b.schema.n_children = -1; },
                       {MISSING_PART, "columns", "children"}},
        MalformedBatch{
            "NoChildren", [](TestBatch& b) { b.array.children = nullptr; }, {MISSING_PART, "columns", "children"}},
        MalformedBatch{"NoSchemasOfChildren",
                       [](TestBatch& b) { b.schema.children = nullptr; },
                       {MISSING_PART, "columns", "children"}},
        MalformedBatch{"WrongBufferCount",
                       [](TestBatch& b) { b.array.n_buffers = 2; },
                       {WRONG_PART_COUNT, "buffers", "columns", "2", "1"}},
        MalformedBatch{
            "NoBuffers", [](TestBatch& b) { b.array.buffers = nullptr; }, {MISSING_PART, "columns", "buffers"}},
        MalformedBatch{
            "NoValidity", [](TestBatch& b) { b.array.null_count = 1; }, {MISSING_PART, "columns", "validity bitmap"}},
        MalformedBatch{"MoreRowsThanPlaces",
                       [](TestBatch& b) { b.array.length = std::int64_t{1} << 31; },
                       {BAD_COLUMN_LENGTH, "length", "columns", "2147483648", "0", "2147483647"}},
        MalformedBatch{"NegativeLength",
                       [](TestBatch& b) { b.array.length = -1; },
                       {BAD_COLUMN_LENGTH, "length", "columns", "-1", "0", "2147483647"}},
        MalformedBatch{"NegativeOffset",
                       [](TestBatch& b) { b.array.offset = -1; },
                       {BAD_COLUMN_LENGTH, "offset", "columns", "-1", "0", "576460752303423485"}},
        MalformedBatch{"OverflowingOffset",
                       [](TestBatch& b) { b.array.offset = kMost; },
                       {BAD_COLUMN_LENGTH, "offset", "columns", "9223372036854775807", "0", "576460752303423485"}},
        MalformedBatch{"WrongNullCount",
                       [](TestBatch& b) { b.array.null_count = 3; },
                       {BAD_COLUMN_LENGTH, "null_count", "columns", "3", "-1", "2"}}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Column, Malformed,
    testing::Values(
        MalformedBatch{
            "NullSchema", [](TestBatch& b) { b.schema.children[3] = nullptr; }, {MISSING_PART, "3", "schema"}},
        MalformedBatch{"ReleasedSchema",
                       [](TestBatch& b) { b.ChildSchema(3).release = nullptr; },
                       {RELEASED_STRUCT, "schema", "3"}},
        MalformedBatch{"NullArray", [](TestBatch& b) { b.array.children[0] = nullptr; }, {MISSING_PART, "x", "array"}},
        MalformedBatch{
            "ReleasedArray", [](TestBatch& b) { b.Child(0).release = nullptr; }, {RELEASED_STRUCT, "array", "x"}},
        MalformedBatch{"Missing", [](TestBatch& b) { b.ChildSchema(0).name = "X"; }, {COLUMN_MISSING, "x"}},
        MalformedBatch{"WithoutAName", [](TestBatch& b) { b.ChildSchema(0).name = nullptr; }, {COLUMN_MISSING, "x"}},
        MalformedBatch{"Twice", [](TestBatch& b) { b.ChildSchema(3).name = "x"; }, {COLUMN_TWICE, "x"}},
        MalformedBatch{"TooShort",
                       [](TestBatch& b) {
                           b.Child(0).length = 1;
                           b.Child(0).null_count = 1;
                       },
                       {BAD_COLUMN_LENGTH, "length", "x", "1", "2", "9223372036854775807"}},
        MalformedBatch{"TooShortBehindTheOffset",
                       [](TestBatch& b) { b.array.offset = 1; },
                       {BAD_COLUMN_LENGTH, "length", "x", "2", "3", "9223372036854775807"}},
        MalformedBatch{"NegativeLength",
                       [](TestBatch& b) { b.Child(0).length = -2; },
                       {BAD_COLUMN_LENGTH, "length", "x", "-2", "0", "9223372036854775807"}},
        MalformedBatch{"OverflowingOffset",
                       [](TestBatch& b) { b.Child(0).offset = kMost; },
                       {BAD_COLUMN_LENGTH, "offset", "x", "9223372036854775807", "0", "576460752303423485"}},
        MalformedBatch{"WithADictionaryThatItsTypeHasNot",
                       [](TestBatch& b) { b.Child(0).dictionary = b.Child(2).dictionary; },
                       {WRONG_PART_COUNT, "dictionaries", "x", "1", "0"}},
        MalformedBatch{"WithChildren",
                       [](TestBatch& b) { b.Child(0).n_children = 1; },
                       {WRONG_PART_COUNT, "children", "x", "1", "0"}},
        MalformedBatch{"WithOneBuffer",
                       [](TestBatch& b) { b.Child(0).n_buffers = 1; },
                       {WRONG_PART_COUNT, "buffers", "x", "1", "2"}},
        MalformedBatch{
            "WithoutBuffers", [](TestBatch& b) { b.Child(0).buffers = nullptr; }, {MISSING_PART, "x", "buffers"}},
        MalformedBatch{"WithoutValidity",
                       [](TestBatch& b) { Put(b.Child(0), 0, nullptr); },
                       {MISSING_PART, "x", "validity bitmap"}},
        MalformedBatch{
            "WithoutValues", [](TestBatch& b) { Put(b.Child(0), 1, nullptr); }, {MISSING_PART, "x", "values"}}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Text, Malformed,
    testing::Values(
        MalformedBatch{"WithTwoBuffers",
                       [](TestBatch& b) { b.Child(1).n_buffers = 2; },
                       {WRONG_PART_COUNT, "buffers", "t", "2", "3"}},
        MalformedBatch{
            "WithoutOffsets", [](TestBatch& b) { Put(b.Child(1), 1, nullptr); }, {MISSING_PART, "t", "offsets"}},
        MalformedBatch{"WithoutBytes", [](TestBatch& b) { Put(b.Child(1), 2, nullptr); }, {MISSING_PART, "t", "bytes"}},
        MalformedBatch{
            "FallingOffsets", [](TestBatch& b) { Put(b.Child(1), 1, kFalling); }, {BAD_COLUMN_OFFSET, "t", "1"}},
        MalformedBatch{
            "NegativeOffsets", [](TestBatch& b) { Put(b.Child(1), 1, kNegative); }, {BAD_COLUMN_OFFSET, "t", "0"}},
        MalformedBatch{"NoUtf8", [](TestBatch& b) { Put(b.Child(1), 2, kNoUtf8); }, {BAD_COLUMN_TEXT, "t", "1"}}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Dictionary, Malformed,
    testing::Values(MalformedBatch{"NotThere",
                                   [](TestBatch& b) { b.Child(2).dictionary = nullptr; },
                                   {MISSING_PART, "d", "dictionary"}},
                    MalformedBatch{"ReleasedArray",
                                   [](TestBatch& b) { b.Child(2).dictionary->release = nullptr; },
                                   {RELEASED_STRUCT, "array", "d"}},
                    MalformedBatch{"ReleasedSchema",
                                   [](TestBatch& b) { b.ChildSchema(2).dictionary->release = nullptr; },
                                   {RELEASED_STRUCT, "dictionary schema", "d"}},
                    MalformedBatch{"TooLong",
                                   [](TestBatch& b) { b.Child(2).dictionary->length = std::int64_t{1} << 31; },
                                   {BAD_COLUMN_LENGTH, "length", "d", "2147483648", "0", "2147483647"}},
                    MalformedBatch{"IndexBeyond",
                                   [](TestBatch& b) { Put(b.Child(2), 1, kBeyond); },
                                   {BAD_DICTIONARY_INDEX, "d", "1", "2", "2"}},
                    MalformedBatch{"NegativeIndex",
                                   [](TestBatch& b) { Put(b.Child(2), 1, kBelow); },
                                   {BAD_DICTIONARY_INDEX, "d", "0", "-1", "2"}},
                    MalformedBatch{"TooFewBuffers",
                                   [](TestBatch& b) { b.Child(2).dictionary->n_buffers = 2; },
                                   {WRONG_PART_COUNT, "buffers", "d", "2", "3"}}),
    NameOfRow());

/// A view: length, first bytes, block, place.
struct View {
    std::int32_t length, prefix, block, place;
};

struct MalformedView {
    const char* name;
    View view;
};

void PrintTo(const MalformedView& row, std::ostream* out) {
    *out << row.name;
}

class MalformedViews : public testing::TestWithParam<MalformedView> {};

TEST_P(MalformedViews, AreTold) {
    const Document document = Echo(FieldText("t", "string"));
    TestBatch batch({Texts("t", "vu", {"a text that is quite long", "another one that is long"})});
    const View views[] = {{3, 0x646572, 0, 0}, GetParam().view};
    Put(batch.Child(0), 1, views);
    TestResults results;
    ExpectFailure([&] { Score(document, batch, results); }, {BAD_COLUMN_OFFSET, "t", "1"});
}

INSTANTIATE_TEST_SUITE_P(Each, MalformedViews,
                         testing::Values(MalformedView{"NegativeLength", {-1, 0, 0, 0}},
                                         MalformedView{"NegativeBlock", {20, 0, -1, 0}},
                                         MalformedView{"NoSuchBlock", {20, 0, 2, 0}},
                                         MalformedView{"NegativePlace", {20, 0, 0, -1}},
                                         MalformedView{"BeyondItsBlock", {25, 0, 0, 1}},
                                         MalformedView{"FarBeyondItsBlock", {0x7FFFFFFF, 0, 0, 0x7FFFFFFF}}),
                         NameOfRow());

TEST(MalformedUtf8, IsToldByItsRow) {
    const Document document = Echo(FieldText("t", "string"));
    for (const char* bad : {"\x80", "\xC0\xAF", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80",
                            "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xE2\x82", "\xE2\x28\xA1"}) {
        for (const char* format : {"u", "U", "vu"}) {
            TestBatch batch({Texts("t", format, {"\xC3\xA4", std::nullopt, std::string("long enough, and ") + bad})});
            TestResults results;
            ExpectFailure([&] { Score(document, batch, results); }, {BAD_COLUMN_TEXT, "t", "2"});
        }
        TestBatch batch({Encoded(Numbers<std::int8_t>("t", "c", {0}), Texts("", "u", {"a", bad}))});
        TestResults results;
        ExpectFailure([&] { Score(document, batch, results); }, {BAD_COLUMN_TEXT, "t", "1"});
    }
}

TEST(MalformedNulls, AreNotLookedAt) {
    const Document document = Echo(FieldText("t", "string") + FieldText("d", "string"));
    TestColumn codes = Numbers<std::int8_t>("d", "c", {77, 0}, {false, true});
    TestColumn texts = Texts("t", "u", {"\xFF", "a"});
    texts.buffers[0] = BitsOf({false, true});
    texts.nulls = -1;
    TestBatch batch({texts, Encoded(codes, Texts("", "u", {"red"}))});
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("t"), (std::vector<std::string>{"null", "a"}));
    EXPECT_EQ(results.Cells("d"), (std::vector<std::string>{"null", "red"}));
}

TEST(NullArguments, AreTold) {
    const Document document = Echo(FieldText("x", "double"));
    Document::State state = document.NewState();
    TestResults results;
    TestBatch first({Doubles("x", {1})});
    ExpectFailure([&] { document.Score(nullptr, &first.schema, state, &results.array); }, {NULL_ARGUMENT, "array"});
    ExpectFailure([&] { document.Score(&first.array, nullptr, state, &results.array); }, {NULL_ARGUMENT, "schema"});
    EXPECT_EQ(first.released, 1);
    TestBatch second({Doubles("x", {1})});
    ExpectFailure([&] { document.Score(&second.array, &second.schema, state, nullptr); }, {NULL_ARGUMENT, "results"});
    EXPECT_EQ(second.released, 1);
    ExpectFailure([&] { document.InputSchema(nullptr); }, {NULL_ARGUMENT, "schema"});
    ExpectFailure([&] { document.OutputSchema(nullptr); }, {NULL_ARGUMENT, "schema"});
}

TEST(StatesOfDocuments, AreOfOneDocument) {
    const Document document = Echo(FieldText("x", "double"));
    const Document other = Echo(FieldText("x", "double"));
    Document::State state = document.NewState();
    TestResults results;
    TestBatch batch({Doubles("x", {1})});
    ExpectFailure([&] { other.Score(&batch.array, &batch.schema, state, &results.array); }, {WRONG_STATE});
    EXPECT_EQ(batch.released, 1);
    Document::State moved = std::move(state);
    TestBatch again({Doubles("x", {1})});
    // NOLINTNEXTLINE(bugprone-use-after-move): a state that was moved from is refused
    ExpectFailure([&] { document.Score(&again.array, &again.schema, state, &results.array); }, {WRONG_STATE});
    TestBatch last({Doubles("x", {1})});
    const Document copy = document;
    copy.Score(&last.array, &last.schema, moved, &results.array);
    EXPECT_EQ(results.array.length, 1);
}

} // namespace

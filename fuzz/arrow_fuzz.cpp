// Any bytes as a batch of columns for a document whose fields have every type: structs that are what they say, and such
// that lie about all that can be told. They end in a catalogued failure or in results that are read and freed whole,
// and that are the same when the batch comes in two parts. Either way the batch is released once.
#include "run.h"

#include <veltrane/document.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace veltrane::fuzz;
using veltrane::Document;

namespace {

constexpr const char* kDocument =
    "<PMML version='4.4'><DataDictionary>"
    "<DataField name='g' optype='continuous' dataType='double'/>"
    "<DataField name='f' optype='continuous' dataType='float'><Interval closure='closedClosed' leftMargin='0'/>"
    "</DataField>"
    "<DataField name='l' optype='continuous' dataType='integer'/>"
    "<DataField name='b' optype='categorical' dataType='boolean'/>"
    "<DataField name='t' optype='categorical' dataType='string'><Value value='red'/><Value value='ab'/></DataField>"
    "<DataField name='u' optype='categorical' dataType='string'/>"
    "<DataField name='d' optype='continuous' dataType='date'/>"
    "<DataField name='h' optype='continuous' dataType='time'/>"
    "<DataField name='m' optype='continuous' dataType='dateTime'/>"
    "<DataField name='n' optype='continuous' dataType='dateDaysSince[1960]'/>"
    "<DataField name='s' optype='continuous' dataType='dateTimeSecondsSince[1980]'/>"
    "<DataField name='y' optype='continuous' dataType='double'/></DataDictionary>"
    "<RegressionModel functionName='regression'><MiningSchema><MiningField name='y' usageType='target'/>"
    "<MiningField name='g'/><MiningField name='f' invalidValueTreatment='asMissing' missingValueReplacement='2'/>"
    "<MiningField name='l'/><MiningField name='b'/><MiningField name='t' invalidValueTreatment='asIs'/>"
    "<MiningField name='u'/><MiningField name='d'/><MiningField name='h'/><MiningField name='m'/>"
    "<MiningField name='n'/><MiningField name='s'/></MiningSchema>"
    "<Output><OutputField name='text' optype='categorical' dataType='string' feature='transformedValue'>"
    "<Apply function='concat'><FieldRef field='t'/><FieldRef field='u'/></Apply></OutputField>"
    "<OutputField name='whole' optype='continuous' dataType='integer' feature='transformedValue'>"
    "<FieldRef field='l'/></OutputField>"
    "<OutputField name='truth' optype='categorical' dataType='boolean' feature='transformedValue'>"
    "<FieldRef field='b'/></OutputField>"
    "<OutputField name='day' optype='continuous' dataType='date' feature='transformedValue'>"
    "<FieldRef field='d'/></OutputField></Output>"
    "<RegressionTable intercept='1'><NumericPredictor name='g' coefficient='2'/>"
    "<NumericPredictor name='f' coefficient='3'/><CategoricalPredictor name='t' value='red' coefficient='4'/>"
    "</RegressionTable></RegressionModel></PMML>";

constexpr const char* kFields[] = {"g", "f", "l", "b", "t", "u", "d", "h", "m", "n", "s"};

/// A format, how many bytes a value takes (0: bits, -1: offsets and bytes, -2: views, -3: nothing at all), and the
/// bytes of an offset.
struct Format {
    const char* text;
    int bytes;
    int offset = 0;
};
constexpr Format kFormats[] = {{"g", 8},     {"f", 4},     {"e", 2},       {"b", 0},       {"c", 1},   {"C", 1},
                               {"s", 2},     {"S", 2},     {"i", 4},       {"I", 4},       {"l", 8},   {"L", 8},
                               {"u", -1, 4}, {"U", -1, 8}, {"vu", -2},     {"z", -1, 4},   {"n", -3},  {"tdD", 4},
                               {"tdm", 8},   {"tts", 4},   {"ttm", 4},     {"ttu", 8},     {"ttn", 8}, {"tss:", 8},
                               {"tsm:Z", 8}, {"tsu:", 8},  {"tsn:UTC", 8}, {"d:19,2", 16}, {"+l", 4}};
/// The first that suits each field.
constexpr std::size_t kOwn[] = {0, 0, 10, 3, 12, 14, 17, 21, 25, 8, 0};

/// A struct with what it points to.
struct Column {
    ArrowSchema schema{};
    ArrowArray array{};
    std::vector<std::string> memory;
    std::vector<const void*> buffers;
    std::unique_ptr<Column> dictionary;
};

template <typename Struct>
void Count(Struct* each) {
    if (each->private_data != nullptr) {
        ++*static_cast<int*>(each->private_data);
    }
    each->release = nullptr;
}

std::string Random(Bytes& bytes, std::size_t size) {
    std::string text(size, '\0');
    for (char& each : text) {
        each = static_cast<char>(bytes.Take());
    }
    return text;
}

template <typename Offset>
std::string Offsets(Bytes& bytes, std::size_t count, std::size_t size, bool isWild) {
    std::vector<Offset> offsets;
    for (std::size_t at = 0; at < count; ++at) {
        offsets.push_back(static_cast<Offset>(bytes.Below(size + 1)));
    }
    if (!isWild) {
        std::sort(offsets.begin(), offsets.end());
    } else if (bytes.Below(4) == 0) {
        offsets[bytes.Below(count)] = -1;
    }
    return {reinterpret_cast<const char*>(offsets.data()), count * sizeof(Offset)};
}

/// Views of two blocks, wild ones of anything.
void FillViews(Column& column, Bytes& bytes, std::size_t count, bool isWild) {
    constexpr std::size_t kBlock = 40;
    std::string views;
    for (std::size_t at = 0; at < count; ++at) {
        std::string view = Random(bytes, 16);
        if (!isWild) {
            const auto length = static_cast<std::int32_t>(bytes.Below(20));
            const std::int32_t block[] = {static_cast<std::int32_t>(bytes.Below(2)),
                                          static_cast<std::int32_t>(bytes.Below(kBlock - 20))};
            std::memcpy(view.data(), &length, sizeof(length));
            std::memcpy(view.data() + 8, block, length > 12 ? sizeof(block) : 0);
        }
        views += view;
    }
    const std::int64_t sizes[] = {kBlock, kBlock};
    column.memory.insert(column.memory.end(), {views, Random(bytes, kBlock), std::string(kBlock, 'x'),
                                               std::string(reinterpret_cast<const char*>(sizes), sizeof(sizes))});
}

/// A column of as many rows, whose buffers hold them all.
std::unique_ptr<Column> MakeColumn(Bytes& bytes, const Format& format, std::size_t rows, bool isWild) {
    auto column = std::make_unique<Column>();
    column->memory.push_back(Random(bytes, rows / 8 + 1));
    if (format.bytes == -1) {
        const std::size_t size = bytes.Below(60);
        column->memory.push_back(format.offset == 4 ? Offsets<std::int32_t>(bytes, rows + 1, size, isWild)
                                                    : Offsets<std::int64_t>(bytes, rows + 1, size, isWild));
        column->memory.push_back(bytes.Below(3) == 0 ? Random(bytes, size) : std::string(size, 'a'));
    } else if (format.bytes == -2) {
        FillViews(*column, bytes, rows, isWild);
    } else if (format.bytes >= 0) {
        column->memory.push_back(Random(bytes, rows * static_cast<std::size_t>(format.bytes) + rows / 8 + 1));
    } else {
        column->memory.clear();
    }
    for (const std::string& each : column->memory) {
        column->buffers.push_back(each.data());
    }
    column->schema.format = format.text;
    column->schema.release = Count<ArrowSchema>;
    column->array.length = static_cast<std::int64_t>(rows);
    column->array.null_count = bytes.Below(2) == 0 ? 0 : -1;
    column->array.n_buffers = static_cast<std::int64_t>(column->buffers.size());
    column->array.buffers = column->buffers.data();
    column->array.release = Count<ArrowArray>;
    return column;
}

/// Small indices into a small dictionary; wild ones lie anywhere.
std::unique_ptr<Column> MakeEncoded(Bytes& bytes, const Format& format, std::size_t rows, bool isWild) {
    const std::size_t entries = bytes.Below(6);
    auto column = MakeColumn(bytes, kFormats[4], rows, isWild);
    for (char& index : column->memory[1]) {
        index = static_cast<char>(isWild ? index : entries == 0 ? 0 : bytes.Below(entries));
    }
    column->dictionary = MakeColumn(bytes, format, entries, isWild);
    column->schema.dictionary = &column->dictionary->schema;
    column->array.dictionary = &column->dictionary->array;
    return column;
}

/// The columns of all fields, and how often they are released.
struct Batch {
    std::vector<std::unique_ptr<Column>> columns;
    std::vector<ArrowSchema*> schemas;
    std::vector<ArrowArray*> arrays;
    std::string validity;
    const void* buffers[1] = {nullptr};
    ArrowSchema schema{};
    ArrowArray array{};
    int released = 0;

    void Show(std::size_t rows) {
        for (const auto& column : columns) {
            schemas.push_back(&column->schema);
            arrays.push_back(&column->array);
        }
        schema.format = "+s";
        schema.n_children = static_cast<std::int64_t>(schemas.size());
        schema.children = schemas.data();
        schema.release = Count<ArrowSchema>;
        array.length = static_cast<std::int64_t>(rows);
        array.n_buffers = 1;
        array.buffers = buffers;
        array.n_children = schema.n_children;
        array.children = arrays.data();
        Offer();
    }

    /// Lets it be handed over, once more.
    void Offer() {
        released = 0;
        array.release = Count<ArrowArray>;
        array.private_data = &released;
    }
};

constexpr std::int64_t kWild[] = {-1,
                                  0,
                                  1,
                                  7,
                                  1000,
                                  std::int64_t{1} << 31,
                                  std::numeric_limits<std::int64_t>::max(),
                                  std::numeric_limits<std::int64_t>::min()};

/// Lies about a column. What a host can't see stays true: how long its buffers are.
void Damage(Column& column, Bytes& bytes) {
    const std::int64_t wild = kWild[bytes.Below(std::size(kWild))];
    switch (bytes.Below(12)) {
    case 0:
        column.array.release = nullptr;
        break;
    case 1:
        column.schema.release = nullptr;
        break;
    case 2:
        column.schema.name = nullptr;
        break;
    case 3:
        column.schema.format = nullptr;
        break;
    case 4:
        column.array.n_children = wild;
        break;
    case 5: // more than there are can't be told from blocks of views
        column.array.n_buffers = std::min(wild, column.array.n_buffers);
        break;
    case 6:
        column.array.buffers = nullptr;
        break;
    case 7:
        if (!column.buffers.empty()) {
            column.buffers[bytes.Below(column.buffers.size())] = nullptr;
        }
        break;
    case 8:
        column.array.null_count = wild;
        break;
    case 9:
        column.array.length = wild;
        break;
    case 10:
        column.array.offset = wild < 0 || wild == std::numeric_limits<std::int64_t>::max() ? wild : 0;
        break;
    default:
        column.array.dictionary = nullptr;
    }
}

void DamageWhole(Batch& batch, Bytes& bytes) {
    const std::int64_t wild = kWild[bytes.Below(std::size(kWild))];
    switch (bytes.Below(9)) {
    case 0:
        batch.array.length = wild;
        break;
    case 1:
        batch.array.offset = wild;
        break;
    case 2:
        batch.array.n_children = wild;
        break;
    case 3:
        batch.array.children = nullptr;
        break;
    case 4:
        batch.arrays[bytes.Below(batch.arrays.size())] = nullptr;
        break;
    case 5:
        batch.schemas[bytes.Below(batch.schemas.size())] = nullptr;
        break;
    case 6:
        batch.array.n_buffers = wild;
        break;
    case 7:
        batch.array.null_count = wild;
        break;
    default:
        batch.schema.format = "+m";
    }
}

void MakeBatch(Batch& batch, Bytes& bytes) {
    const std::size_t rows = bytes.Below(24);
    const std::size_t unlike = bytes.Below(std::size(kFields) * 2);
    const std::size_t wild = bytes.Below(std::size(kFields) * 3);
    for (std::size_t at = 0; at < std::size(kFields); ++at) {
        const Format& format = kFormats[at == unlike ? bytes.Below(std::size(kFormats)) : kOwn[at]];
        auto column = bytes.Below(4) == 0 ? MakeEncoded(bytes, format, rows, at == wild)
                                          : MakeColumn(bytes, format, rows, at == wild);
        column->schema.name = kFields[at];
        batch.columns.push_back(std::move(column));
    }
    batch.Show(rows);
    batch.validity = Random(bytes, rows / 8 + 1);
    if (bytes.Below(4) == 0) {
        batch.buffers[0] = batch.validity.data();
        batch.array.null_count = -1;
    }
    switch (bytes.Below(4)) {
    case 0:
        Damage(*batch.columns[bytes.Below(batch.columns.size())], bytes);
        break;
    case 1:
        DamageWhole(batch, bytes);
        break;
    default:
        break;
    }
}

/// The value of a cell, all its bytes.
std::string Cell(const ArrowArray& column, const std::string& format, std::size_t row) {
    if (column.buffers[0] != nullptr &&
        (static_cast<const unsigned char*>(column.buffers[0])[row / 8] >> (row % 8) & 1) == 0) {
        return "null";
    }
    const char* const values = static_cast<const char*>(column.buffers[1]);
    if (format == "b") {
        return (values[row / 8] >> (row % 8) & 1) == 0 ? "false" : "true";
    }
    if (format == "u") {
        std::int32_t ends[2];
        std::memcpy(ends, values + row * sizeof(*ends), sizeof(ends));
        Require(0 <= ends[0] && ends[0] <= ends[1]);
        return std::string(static_cast<const char*>(column.buffers[2]) + ends[0],
                           static_cast<std::size_t>(ends[1] - ends[0]));
    }
    const std::size_t size = format == "i" || format == "tdD" ? 4 : 8;
    return std::string(values + row * size, size);
}

/// All cells of the results, row by row.
std::vector<std::string> CellsOf(const ArrowArray& results, const ArrowSchema& schema) {
    std::vector<std::string> cells;
    for (std::size_t row = 0; row < static_cast<std::size_t>(results.length); ++row) {
        for (std::int64_t at = 0; at < results.n_children; ++at) {
            Require(results.children[at]->length == results.length);
            cells.push_back(Cell(*results.children[at], schema.children[at]->format, row));
        }
    }
    return cells;
}

/// Scores a batch with a state that all batches share: what was there before doesn't show.
/// @return whether there are results
bool Score(const Document& document, Batch& batch, std::vector<std::string>& cells) {
    static Document::State state = document.NewState();
    ArrowArray results{};
    ArrowSchema schema{};
    const bool wasThere = batch.array.release != nullptr;
    MayFail([&] { document.Score(&batch.array, &batch.schema, state, &results, &schema); });
    Require(batch.released == (wasThere ? 1 : 0) && batch.array.release == nullptr);
    Require((results.release == nullptr) == (schema.release == nullptr));
    if (results.release == nullptr) {
        return false;
    }
    const std::vector<std::string> more = CellsOf(results, schema);
    cells.insert(cells.end(), more.begin(), more.end());
    results.release(&results);
    schema.release(&schema);
    return true;
}

const Document& Opened() {
    static const Document document = Document::OfBytes(kDocument);
    return document;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    Bytes bytes{data, data + size};
    Batch batch;
    MakeBatch(batch, bytes);
    std::vector<std::string> whole;
    const ArrowArray offered = batch.array;
    const std::int64_t rows = batch.array.length;
    const std::int64_t offset = batch.array.offset;
    if (!Score(Opened(), batch, whole)) {
        return 0;
    }
    std::vector<std::string> parts;
    const std::int64_t half = rows / 2;
    const std::int64_t nulls = batch.array.null_count == 0 ? 0 : -1;
    for (const auto& [first, count] : {std::pair{offset, half}, std::pair{offset + half, rows - half}}) {
        batch.array = offered;
        batch.Offer();
        batch.array.offset = first;
        batch.array.length = count;
        batch.array.null_count = nulls;
        Require(Score(Opened(), batch, parts));
    }
    Require(parts == whole);
    return 0;
}

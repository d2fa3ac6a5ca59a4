#include "columns/support/test_batch.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace veltrane::tests {

namespace {

constexpr std::int32_t kMostInline = 12;

/// Views of texts: the long ones stand in two blocks by turns.
std::vector<TestColumn::Buffer> ViewsOf(const TestTexts& texts) {
    std::string views;
    std::array<std::string, 2> blocks;
    std::size_t turn = 0;
    for (const auto& text : texts) {
        const std::string bytes = text.value_or("");
        const auto length = static_cast<std::int32_t>(bytes.size());
        std::string view = BytesOf<std::int32_t>({length});
        if (length <= kMostInline) {
            view += bytes;
            view.resize(16);
        } else {
            const std::size_t block = turn++ % 2;
            view += bytes.substr(0, 4) + BytesOf<std::int32_t>({static_cast<std::int32_t>(block),
                                                                static_cast<std::int32_t>(blocks[block].size())});
            blocks[block] += bytes;
        }
        views += view;
    }
    return {views, blocks[0], blocks[1],
            BytesOf<std::int64_t>(
                {static_cast<std::int64_t>(blocks[0].size()), static_cast<std::int64_t>(blocks[1].size())})};
}

template <typename Offset>
std::vector<TestColumn::Buffer> OffsetsOf(const TestTexts& texts) {
    std::vector<Offset> offsets{0};
    std::string bytes;
    for (const auto& text : texts) {
        bytes += text.value_or("");
        offsets.push_back(static_cast<Offset>(bytes.size()));
    }
    return {BytesOf(offsets), bytes};
}

void Forget(ArrowSchema* schema) {
    schema->release = nullptr;
}

void Forget(ArrowArray* array) {
    array->release = nullptr;
}

template <typename Struct>
void Count(Struct* each) {
    ++*static_cast<int*>(each->private_data);
    each->release = nullptr;
}

template <typename Number>
Number At(const ArrowArray& array, std::size_t row, std::size_t buffer = 1) {
    Number number;
    std::memcpy(&number, static_cast<const char*>(array.buffers[buffer]) + row * sizeof(Number), sizeof(Number));
    return number;
}

bool BitAt(const void* bits, std::size_t row) {
    return (static_cast<const unsigned char*>(bits)[row / 8] >> (row % 8) & 1) != 0;
}

std::string CellText(const ArrowArray& array, const std::string& format, std::size_t row) {
    if (array.buffers[0] != nullptr && !BitAt(array.buffers[0], row)) {
        return "null";
    }
    if (format == "u" || format == "z") {
        const auto start = At<std::int32_t>(array, row);
        const auto end = At<std::int32_t>(array, row + 1);
        return std::string(static_cast<const char*>(array.buffers[2]) + start, static_cast<std::size_t>(end - start));
    }
    if (format == "b") {
        return BitAt(array.buffers[1], row) ? "true" : "false";
    }
    if (format == "g") {
        return Digits(At<double>(array, row));
    }
    return std::to_string(format == "i" || format == "tdD" ? At<std::int32_t>(array, row)
                                                           : At<std::int64_t>(array, row));
}

} // namespace

std::string Digits(double number) {
    std::array<char, 32> digits{};
    return std::string(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

std::string BitsOf(const std::vector<bool>& bits) {
    std::string bytes((bits.size() + 7) / 8, '\0');
    for (std::size_t at = 0; at < bits.size(); ++at) {
        bytes[at / 8] = static_cast<char>(bytes[at / 8] | (bits[at] ? 1 : 0) << at % 8);
    }
    return bytes;
}

TestColumn Texts(std::string name, std::string format, const TestTexts& texts) {
    std::vector<bool> there;
    for (const auto& text : texts) {
        there.push_back(text.has_value());
    }
    const auto nulls = std::count(there.begin(), there.end(), false);
    std::vector<TestColumn::Buffer> buffers = format[0] == 'v'                 ? ViewsOf(texts)
                                              : format == "u" || format == "z" ? OffsetsOf<std::int32_t>(texts)
                                                                               : OffsetsOf<std::int64_t>(texts);
    buffers.insert(buffers.begin(), nulls == 0 ? TestColumn::Buffer() : BitsOf(there));
    return {std::move(name), std::move(format), static_cast<std::int64_t>(texts.size()), nulls, 0, std::move(buffers),
            nullptr};
}

TestColumn Truths(std::string name, const std::vector<bool>& truths, const std::vector<bool>& there) {
    TestColumn column = Numbers<char>(std::move(name), "b", std::vector<char>(truths.size()), there);
    column.buffers[1] = BitsOf(truths);
    return column;
}

TestColumn Nothing(std::string name, std::int64_t length) {
    return {std::move(name), "n", length, length, 0, {}, nullptr};
}

TestColumn Encoded(TestColumn codes, TestColumn dictionary) {
    codes.dictionary = std::make_shared<TestColumn>(std::move(dictionary));
    return codes;
}

std::unique_ptr<TestBatch::Node> TestBatch::MakeNode(const TestColumn& column) {
    auto node = std::make_unique<Node>();
    node->column = column;
    node->schema.format = node->column.format.c_str();
    node->schema.name = node->column.name.c_str();
    node->schema.release = Forget;
    for (const TestColumn::Buffer& buffer : node->column.buffers) {
        node->buffers.push_back(buffer ? buffer->data() : nullptr);
    }
    node->array.length = column.length;
    node->array.null_count = column.nulls;
    node->array.offset = column.offset;
    node->array.n_buffers = static_cast<std::int64_t>(node->buffers.size());
    node->array.buffers = node->buffers.data();
    node->array.release = Forget;
    if (column.dictionary != nullptr) {
        node->dictionary = MakeNode(*column.dictionary);
        node->schema.dictionary = &node->dictionary->schema;
        node->array.dictionary = &node->dictionary->array;
    }
    return node;
}

TestBatch::TestBatch(const std::vector<TestColumn>& columns, std::optional<std::int64_t> rows) {
    for (const TestColumn& column : columns) {
        fNodes.push_back(MakeNode(column));
        fSchemas.push_back(&fNodes.back()->schema);
        fArrays.push_back(&fNodes.back()->array);
    }
    schema.format = "+s";
    schema.n_children = static_cast<std::int64_t>(columns.size());
    schema.children = fSchemas.data();
    schema.release = Count<ArrowSchema>;
    schema.private_data = &schemaReleased;
    array.length = rows.value_or(columns.empty() ? 0 : columns.front().length);
    array.n_buffers = 1;
    array.buffers = fNoValidity;
    array.n_children = schema.n_children;
    array.children = fArrays.data();
    array.release = Count<ArrowArray>;
    array.private_data = &released;
}

TestResults::~TestResults() {
    if (array.release != nullptr) {
        array.release(&array);
    }
    if (schema.release != nullptr) {
        schema.release(&schema);
    }
}

int TestResults::PlaceOf(const std::string& name) const {
    for (std::int64_t at = 0; at < schema.n_children; ++at) {
        if (schema.children[at]->name == name) {
            return static_cast<int>(at);
        }
    }
    return -1;
}

std::string TestResults::FormatOf(const std::string& name) const {
    const int place = PlaceOf(name);
    if (place < 0) {
        return "none";
    }
    const ArrowSchema& column = *schema.children[place];
    return column.dictionary == nullptr ? column.format
                                        : std::string(column.format) + " to " + column.dictionary->format;
}

std::vector<std::string> TestResults::Cells(const std::string& name) const {
    const int place = PlaceOf(name);
    std::vector<std::string> cells;
    if (place < 0) {
        return cells;
    }
    const ArrowArray& column = *array.children[place];
    const ArrowSchema& type = *schema.children[place];
    for (std::size_t row = 0; row < static_cast<std::size_t>(column.length); ++row) {
        cells.push_back(CellText(column, type.format, row));
        if (column.dictionary != nullptr && cells.back() != "null") {
            cells.back() = CellText(*column.dictionary, type.dictionary->format, std::stoul(cells.back()));
        }
    }
    return cells;
}

} // namespace veltrane::tests

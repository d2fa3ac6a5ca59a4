#include "models/columns/arrow_rows.h"

#include "kit/model/transformations.h"
#include "kit/results/typed_value.h"
#include "models/columns/model_rows.h"
#include "models/kit/scoring.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <regex>
#include <sstream>

namespace veltrane::tests {

using namespace MCVeltrane_900;

namespace {

constexpr double kMicroseconds = 1e6;
constexpr int kSecondsOfDay = 86400;

/// What a document says of a field, or everything where it doesn't say which values there are.
std::string DefinitionOf(const std::string& text, const std::string& name) {
    std::size_t start = text.find("<DataField name=\"" + name + "\"");
    start = start == std::string::npos ? 0 : start;
    const std::string definition = text.substr(start, text.find("DataField", start + 2) - start);
    const bool tellsValues =
        definition.find("value") != std::string::npos || definition.find("Margin") != std::string::npos;
    return tellsValues ? definition : text;
}

/// The bounds of a field's numbers.
struct Margins {
    double least = -20;
    double most = 100;
};

Margins MarginsOf(const std::string& definition) {
    static const std::regex margins("leftMargin=.([-0-9.e]+). rightMargin=.([-0-9.e]+)");
    std::smatch found;
    if (!std::regex_search(definition, found, margins)) {
        return {};
    }
    return {ToNumber(found[1]), ToNumber(found[2])};
}

double RandomNumber(DataType type, const Margins& margins, std::mt19937_64& random) {
    const auto below = [&random](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    const double range = margins.most - margins.least;
    switch (type) {
    case DataType::BOOLEAN:
        return below(2);
    case DataType::INTEGER:
        return std::trunc(margins.least + range * below(100) / 100);
    case DataType::DATE:
        return below(20000);
    case DataType::TIME:
    case DataType::TIME_SECONDS:
        return below(kSecondsOfDay);
    case DataType::DATE_TIME:
        return static_cast<double>(below(20000)) * kSecondsOfDay + below(kSecondsOfDay);
    default:
        return static_cast<float>(margins.least + range * below(1000) / 999); // for columns of float32 too
    }
}

template <typename Number>
TestColumn WholeNumbers(const ArrowField& field, const char* format, double units, const std::vector<bool>& there) {
    std::vector<Number> numbers;
    for (const double number : field.numbers) {
        numbers.push_back(std::isnan(number) ? Number{77} : static_cast<Number>(number * units));
    }
    return Numbers<Number>(field.name, format, numbers, there);
}

template <typename Code>
TestColumn Codes(const ArrowField& field, const char* format, const char* entries) {
    TestTexts dictionary;
    std::vector<Code> codes;
    std::vector<bool> there;
    for (const auto& text : field.texts) {
        const auto known = std::find(dictionary.begin(), dictionary.end(), text);
        there.push_back(text.has_value());
        codes.push_back(text ? static_cast<Code>(known - dictionary.begin()) : Code{0});
        if (text && known == dictionary.end()) {
            dictionary.push_back(text);
        }
    }
    return Encoded(Numbers<Code>(field.name, format, codes, there), Texts("", entries, dictionary));
}

TestColumn TextColumn(const ArrowField& field, std::size_t variant) {
    switch (variant % 5) {
    case 0:
        return Texts(field.name, "u", field.texts);
    case 1:
        return Codes<std::int32_t>(field, "i", "u");
    case 2:
        return Texts(field.name, "vu", field.texts);
    case 3:
        return Codes<std::int8_t>(field, "c", "vu");
    default:
        return Texts(field.name, "U", field.texts);
    }
}

TestColumn NumberColumn(const ArrowField& field, std::size_t variant, const std::vector<bool>& there) {
    if (variant % 3 == 0) {
        return Doubles(field.name, field.numbers); // what is not a number is missing
    }
    if (field.type != DataType::INTEGER) {
        return variant % 3 == 1 ? Doubles(field.name, field.numbers, there)
                                : Numbers<float>(field.name, "f", {field.numbers.begin(), field.numbers.end()}, there);
    }
    return variant % 3 == 1 ? WholeNumbers<std::int64_t>(field, "l", 1, there)
                            : WholeNumbers<std::int16_t>(field, "s", 1, there);
}

} // namespace

TestColumn ArrowField::Column(std::size_t variant) const {
    std::vector<bool> there;
    std::vector<bool> truths;
    for (const double number : numbers) {
        there.push_back(!std::isnan(number));
        truths.push_back(number == 1);
    }
    switch (type) {
    case DataType::STRING:
        return TextColumn(*this, variant);
    case DataType::BOOLEAN:
        return Truths(name, truths, there);
    case DataType::DATE:
        return WholeNumbers<std::int32_t>(*this, "tdD", 1, there);
    case DataType::TIME:
    case DataType::TIME_SECONDS:
        return WholeNumbers<std::int64_t>(*this, "ttu", kMicroseconds, there);
    case DataType::DATE_TIME:
        return WholeNumbers<std::int64_t>(*this, "tsu:", kMicroseconds, there);
    default:
        return NumberColumn(*this, variant, there);
    }
}

ArrowRows::ArrowRows(const std::string& text, std::size_t rows)
    : fDocument(Document::OfBytes(text)), fRows(rows), fExpected(fDocument.Outputs().size()) {
    std::mt19937_64 random(text.size());
    std::vector<TestColumn> columns;
    for (const ColumnField& input : fDocument.Inputs()) {
        AddField(input, text, random);
        columns.push_back(fFields.back().Column(random() % 15));
    }
    fBatch = std::make_unique<TestBatch>(columns, static_cast<std::int64_t>(rows));
    const bool hasModel = text.find("<MiningSchema") != std::string::npos;
    hasModel ? ScoreModelCases(text) : ComputeCases(text);
}

ArrowRows::~ArrowRows() = default;

void ArrowRows::AddField(const ColumnField& input, const std::string& text, std::mt19937_64& random) {
    ArrowField& field = fFields.emplace_back();
    field.name = input.name;
    field.type = input.type;
    const std::string definition = DefinitionOf(text, input.name);
    const std::vector<std::string> words = WordsOf(definition);
    const Margins margins = definition.size() < text.size() ? MarginsOf(definition) : Margins();
    const bool isListed = definition.size() < text.size() && !words.empty();
    const bool hasMissing = random() % 3 == 0;
    for (std::size_t row = 0; row < fRows; ++row) {
        const bool isMissing = hasMissing && random() % 16 == 0;
        const bool isOdd = random() % 64 == 0;
        const std::string word = words.empty() ? "a" : words[random() % words.size()];
        if (input.type != DataType::STRING) {
            const bool isWord = isListed && input.type == DataType::INTEGER && !isOdd;
            field.numbers.push_back(isMissing ? NAN
                                    : isWord  ? ToNumber(word)
                                              : RandomNumber(input.type, margins, random));
        } else if (isMissing) {
            field.texts.emplace_back();
        } else {
            field.texts.emplace_back(!isOdd              ? word
                                     : random() % 2 == 0 ? "a text that is in no document"
                                                         : std::string(random() % 3, '7'));
        }
    }
}

std::unique_ptr<CaseRecord> ArrowRows::Record(std::size_t row) const {
    auto record = std::make_unique<CaseRecord>(static_cast<int>(fFields.size()));
    for (const ArrowField& field : fFields) {
        std::unique_ptr<ScoreValue> value;
        if (field.type == DataType::STRING) {
            value = field.texts[row] ? std::make_unique<StringValue>(*field.texts[row]) : nullptr;
        } else if (!std::isnan(field.numbers[row])) {
            value = std::make_unique<NumericValue>(field.numbers[row]);
        }
        record->Add(field.name, value.release());
    }
    return record;
}

void ArrowRows::ScoreModelCases(const std::string& text) {
    const std::unique_ptr<ScoreModel> model = ReadModel(text);
    const std::unique_ptr<ScoreResult> result(model->CreateResult());
    const std::vector<ColumnField>& outputs = fDocument.Outputs();
    for (std::size_t row = 0; row < fRows; ++row) {
        const bool isScored = !model->Score(Record(row).get(), result.get()).IsError();
        for (std::size_t at = 0; at < outputs.size(); ++at) {
            Cell& cell = fExpected[at].emplace_back();
            const ScoreValue* value = !isScored ? nullptr
                                      : at == 0 ? result->GetResultValue()
                                                : result->GetResultFields()->GetResultValue(outputs[at].name);
            std::string buffer;
            std::string unused;
            Value typed = value == nullptr ? Value() : veltrane_kit::TypedValue(*value, buffer);
            if (!typed.isMissing && veltrane_kit::IsMoment(typed.type)) {
                typed = veltrane_kit::CastValue(typed, outputs[at].type, unused);
            }
            if (typed.isMissing) {
                continue;
            }
            if (outputs[at].type == DataType::STRING) {
                cell.text = std::string(typed.text);
            } else {
                cell.number = typed.number;
            }
        }
    }
}

void ArrowRows::ComputeCases(const std::string& text) {
    std::istringstream in(text);
    const auto cases = veltrane_kit::Transformations::Read(in, "UTF-8");
    const std::vector<int> slots = cases->Derived().Slots();
    for (std::size_t row = 0; row < fRows; ++row) {
        const auto record = Record(row);
        cases->Compute(*record);
        for (std::size_t at = 0; at < slots.size(); ++at) {
            Cell& cell = fExpected[at].emplace_back();
            const Value& value = (*cases)[slots[at]];
            std::string buffer;
            if (value.isMissing) {
                continue;
            }
            if (fDocument.Outputs()[at].type == DataType::STRING) {
                cell.text = std::string(veltrane_kit::TextOf(value, buffer));
            } else {
                cell.number = value.number;
            }
        }
    }
}

void ArrowRows::Score(Document::State& state, std::size_t first, std::size_t length, bool byColumns,
                      TestResults& results) {
    ArrowArray whole = fBatch->array;
    fBatch->array.offset = static_cast<std::int64_t>(byColumns ? 0 : first);
    fBatch->array.length = static_cast<std::int64_t>(length);
    for (std::size_t at = 0; at < fFields.size(); ++at) {
        ArrowArray& column = fBatch->Child(at);
        column.offset = static_cast<std::int64_t>(byColumns ? first : 0);
        column.length = static_cast<std::int64_t>(byColumns ? length : fRows);
        column.null_count = column.buffers[0] == nullptr ? 0 : -1;
    }
    fDocument.Score(&fBatch->array, &fBatch->schema, state, &results.array, &results.schema);
    fBatch->array = whole; // to be handed over again
}

namespace {

template <typename Number>
Number At(const ArrowArray& column, std::size_t row, int buffer = 1) {
    return static_cast<const Number*>(column.buffers[buffer])[row];
}

bool BitAt(const void* bits, std::size_t row) {
    return (static_cast<const unsigned char*>(bits)[row / 8] >> (row % 8) & 1) != 0;
}

std::string_view TextAt(const ArrowArray& column, std::size_t row) {
    const auto start = At<std::int32_t>(column, row);
    const auto size = static_cast<std::size_t>(At<std::int32_t>(column, row + 1) - start);
    return {static_cast<const char*>(column.buffers[2]) + start, size};
}

} // namespace

bool ArrowRows::IsSame(const ArrowArray& column, const std::string& format, std::size_t row, const Cell& cell) const {
    if (column.buffers[0] != nullptr && !BitAt(column.buffers[0], row)) {
        return !cell.number && !cell.text;
    }
    if (format == "u") {
        return cell.text == TextAt(column, row);
    }
    if (format == "i") {
        return cell.text == TextAt(*column.dictionary, static_cast<std::size_t>(At<std::int32_t>(column, row)));
    }
    if (!cell.number) {
        return false;
    }
    if (format == "g") {
        return std::bit_cast<std::uint64_t>(At<double>(column, row)) == std::bit_cast<std::uint64_t>(*cell.number);
    }
    if (format == "b") {
        return BitAt(column.buffers[1], row) == (*cell.number == 1);
    }
    if (format == "tdD") {
        return At<std::int32_t>(column, row) == std::floor(*cell.number);
    }
    const double units = format == "l" ? 1 : kMicroseconds;
    return static_cast<double>(At<std::int64_t>(column, row)) == std::nearbyint(*cell.number * units);
}

void ArrowRows::ExpectCases(const TestResults& results, std::size_t first) const {
    for (std::size_t at = 0; at < fExpected.size(); ++at) {
        const ArrowArray& column = *results.array.children[at];
        const std::string format = results.schema.children[at]->format;
        for (std::size_t row = 0; row < static_cast<std::size_t>(column.length); ++row) {
            ASSERT_TRUE(IsSame(column, format, row, fExpected[at][first + row]))
                << "row " << first + row << " of " << fDocument.Outputs()[at].name << ", in a batch from " << first
                << " of length " << column.length;
        }
    }
}

} // namespace veltrane::tests

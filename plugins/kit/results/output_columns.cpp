#include "kit/results/output_columns.h"

#include "kit/columns/column.h"
#include "kit/results/typed_value.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;
using veltrane::ColumnField;
using veltrane::OutputColumn;

namespace {

using InRows = OutputFeature::InRows;

double OrMissing(double number) {
    return number == Prediction::kNone ? kMissing : number;
}

/// The number of a host's value in a column of a type.
double NumberIn(const ScoreValue& value, DataType type) {
    std::string unused;
    const Value typed = TypedValue(value, unused);
    const bool isOther = IsMoment(type) && IsMoment(typed.type) && typed.type != type;
    return typed.isMissing ? kMissing : (isOther ? CastValue(typed, type, unused) : typed).number;
}

/// Puts a host's value into a column of its kind; the empty text of a result is a missing one.
void Put(const ScoreValue* value, DataType type, TextArena& texts, const OutputColumn& column, std::size_t place) {
    if (column.numbers != nullptr) {
        column.numbers[place] = value == nullptr ? kMissing : NumberIn(*value, type);
    } else if (column.texts != nullptr) {
        std::string buffer;
        const Value typed = value == nullptr ? Value() : TypedValue(*value, buffer);
        column.texts[place] = typed.isMissing ? std::string_view() : texts.Keep(typed.text);
    }
}

/// The type of the moments that a host gets for values of a type.
DataType MomentOf(DataType type) {
    switch (type) {
    case DataType::DATE:
    case DataType::DATE_DAYS_SINCE_0:
    case DataType::DATE_DAYS_SINCE_1960:
    case DataType::DATE_DAYS_SINCE_1970:
    case DataType::DATE_DAYS_SINCE_1980:
        return DataType::DATE;
    case DataType::TIME:
    case DataType::TIME_SECONDS:
        return DataType::TIME;
    default:
        return DataType::DATE_TIME;
    }
}

/// The type of a column for a kind of host's values.
DataType TypeOf(ScoreValue::ValueType kind, DataType type) {
    switch (kind) {
    case ScoreValue::STRING_VALUE:
        return DataType::STRING;
    case ScoreValue::DATETIME_VALUE:
        return MomentOf(type);
    default:
        return type == DataType::INTEGER || IsCounting(type) ? type : DataType::DOUBLE;
    }
}

/// The dictionary of a column while it is filled.
class Codes {
public:
    explicit Codes(ColumnField& column) : fColumn(column) {}

    /// @return -1 for a missing value
    std::int32_t Of(const ScoreValue* value) {
        std::string buffer;
        const Value typed = value == nullptr ? Value() : TypedValue(*value, buffer);
        if (typed.isMissing) {
            return -1;
        }
        const auto [found, isNew] = fKnown.emplace(typed.text, static_cast<std::int32_t>(fColumn.categories.size()));
        if (isNew) {
            fColumn.categories.emplace_back(typed.text);
        }
        return found->second;
    }

private:
    ColumnField& fColumn;
    std::unordered_map<std::string, std::int32_t> fKnown;
};

void Miss(const OutputColumn& column, std::size_t place) {
    if (column.numbers != nullptr) {
        column.numbers[place] = kMissing;
    } else if (column.codes != nullptr) {
        column.codes[place] = -1;
    } else if (column.texts != nullptr) {
        column.texts[place] = {};
    }
}

/// The values of an expression, whose type is that of the column but for booleans, which are texts to a host.
void Copy(const Column& values, std::size_t rows, TextArena& texts, const OutputColumn& column, std::size_t first) {
    for (std::size_t row = 0; row < rows; ++row) {
        const Value value = values.At(row);
        const std::size_t place = first + row;
        if (column.numbers != nullptr) {
            column.numbers[place] = OrMissing(value.number);
        } else if (column.codes != nullptr) {
            column.codes[place] = value.isMissing ? -1 : value.number != 0.0 ? 1 : 0;
        } else if (column.texts != nullptr) {
            column.texts[place] = value.text.empty() ? std::string_view() : texts.Keep(value.text);
        }
    }
}

} // namespace

OutputColumns::OutputColumns(const Outputs& outputs, const Target& target, std::shared_ptr<const ResultLayout> layout,
                             bool isClassification)
    : fOutputs(outputs), fTarget(target), fLayout(std::move(layout)), fIsClassification(isClassification),
      fGoesByRows(!HaveColumnForms()) {
    AddPredicted();
    AddOutputs();
    std::vector<std::string> names;
    for (const Output& output : fFinal) {
        names.push_back(output.field->name);
    }
    fFields.front().name = fTarget.IsOwn() ? "prediction" : fTarget.Name();
    while (std::find(names.begin(), names.end(), fFields.front().name) != names.end()) {
        fFields.front().name = "predicted " + fFields.front().name;
    }
}

/// An expression may ask for the output fields before it, which are put into the block only where they are expressions
/// too.
bool OutputColumns::HaveColumnForms() const {
    const bool areAllExpressions =
        std::all_of(fOutputs.fFields.begin(), fOutputs.fFields.end(), [](const Outputs::Field& field) {
            return field.isVerified || (field.expression != nullptr && !field.isOfOthers);
        });
    if (fOutputs.fTransforms) {
        return areAllExpressions;
    }
    int position = 0;
    return std::all_of(fOutputs.fFields.begin(), fOutputs.fFields.end(),
                       [&](const Outputs::Field& field) { return HasColumnForm(field, position++); });
}

bool OutputColumns::HasColumnForm(const Outputs::Field& field, int position) const {
    const ResultLayout::Output& output = fLayout->outputs[static_cast<std::size_t>(position)];
    const bool takesNumbers = output.takesItsKind && output.kind == ScoreValue::NUMERIC_VALUE;
    if (field.isOfOthers || field.isVerified || field.feature.inRows == InRows::MISSING) {
        return true;
    }
    if (field.other != Outputs::kOwnTarget) {
        return false;
    }
    switch (field.feature.inRows) {
    case InRows::OF_CATEGORY:
        return field.rank == 1 && (fIsClassification || (field.feature.fillNumbers != nullptr && takesNumbers));
    case InRows::NUMBERS:
        return field.rank == 1 && takesNumbers;
    case InRows::ENTITY:
    case InRows::GROUNDS:
        return output.takesItsKind && output.kind == ScoreValue::STRING_VALUE;
    default:
        return false;
    }
}

void OutputColumns::AddPredicted() {
    ColumnField column;
    column.type = DataType::DOUBLE;
    Codes codes(column);
    if (fIsClassification) {
        for (int code = 0; code < fTarget.CategoryCount(); ++code) {
            const ScoreValue& value = fTarget.Category(code);
            column.type = TypeOf(value.GetType(), fTarget.Type());
            if (value.GetType() == ScoreValue::STRING_VALUE) {
                fPredicted.codes.push_back(codes.Of(&value));
            } else {
                fPredicted.numbers.push_back(NumberIn(value, column.type));
            }
        }
    }
    fFields.push_back(std::move(column));
}

void OutputColumns::AddOutputs() {
    int position = 0;
    for (const Outputs::Field& field : fOutputs.fFields) {
        if (!field.isFinal) {
            ++position;
            continue;
        }
        ColumnField column;
        column.name = field.name;
        column.type = TypeOf(field.kind, field.type.value_or(field.valueType));
        Output output{&field, position++, {}};
        const bool isText = column.type == DataType::STRING;
        if (!fGoesByRows && field.expression == nullptr && !field.isOfOthers && fIsClassification &&
            field.feature.inRows == InRows::OF_CATEGORY) {
            output.values = FindValues(output.position, column);
        } else if (!fGoesByRows && isText && field.expression != nullptr && field.valueType == DataType::BOOLEAN) {
            column.categories = {"false", "true"};
        }
        fFinal.push_back(std::move(output));
        fFields.push_back(std::move(column));
    }
}

/// Fills the field for each category as for a single case.
OutputColumns::OfCategories OutputColumns::FindValues(int position, ColumnField& column) const {
    OfCategories found;
    OutputValues values(*fLayout);
    const Outputs::Field& field = fOutputs.fFields[static_cast<std::size_t>(position)];
    Codes codes(column);
    Prediction prediction;
    prediction.Clear(static_cast<std::size_t>(fTarget.CategoryCount()));
    for (int code = 0; code < fTarget.CategoryCount(); ++code) {
        prediction.category = code;
        const OutputCase scored{&fTarget.Category(code), prediction, CaseView(nullptr), fTarget, OutputCase::kNoSlot,
                                fOutputs.fActual.codes,  true};
        fOutputs.FillFeature(field, scored, values, position);
        const ScoreValue* value = values.At(position);
        if (column.type == DataType::STRING) {
            found.codes.push_back(codes.Of(value));
        } else {
            found.numbers.push_back(value == nullptr ? kMissing : NumberIn(*value, column.type));
        }
    }
    return found;
}

void OutputColumns::Fill(Block& block, const PredictionBlock& predictions, State& state, const OutputColumn* columns,
                         std::size_t first) const {
    const std::size_t rows = block.Rows();
    if (fGoesByRows) {
        for (std::size_t row = 0; row < rows; ++row) {
            FillRow(block.Row(row), block.Arena(), predictions, row, state, columns, first + row);
        }
        return;
    }
    FillPredicted(predictions, rows, columns[0], first);
    if (fOutputs.fTransforms) {
        FillExpressions(block, columns, first);
    } else {
        for (std::size_t i = 0; i < fFinal.size(); ++i) {
            FillOutput(fFinal[i], block, predictions, state, columns[i + 1], first);
        }
    }
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t i = 0; predictions.predicted[row] == 0 && i < fFields.size(); ++i) {
            Miss(columns[i], first + row);
        }
    }
}

void OutputColumns::FillRow(Frame& fields, TextArena& texts, const PredictionBlock& predictions, std::size_t row,
                            State& state, const OutputColumn* columns, std::size_t place) const {
    if (predictions.predicted[row] == 0) {
        for (std::size_t i = 0; i < fFields.size(); ++i) {
            Miss(columns[i], place);
        }
        return;
    }
    predictions.Get(row, state.prediction, state.entity);
    const NumericValue number(state.prediction.number);
    const int category = state.prediction.category;
    const ScoreValue& value = fIsClassification ? fTarget.Category(category) : number;
    if (columns[0].codes != nullptr) {
        columns[0].codes[place] = fPredicted.codes[static_cast<std::size_t>(category)];
    } else {
        Put(&value, fFields[0].type, texts, columns[0], place);
    }
    fOutputs.Fill(&value, state.prediction, fields, fTarget, state.values);
    for (std::size_t i = 0; i < fFinal.size(); ++i) {
        const ScoreValue* output = state.values.At(fFinal[i].position);
        if (columns[i + 1].codes != nullptr) {
            const std::vector<std::string>& known = fFields[i + 1].categories;
            const auto found = std::find(known.begin(), known.end(), output == nullptr ? "" : output->GetString());
            columns[i + 1].codes[place] = found == known.end() ? -1 : static_cast<std::int32_t>(found - known.begin());
        } else {
            Put(output, fFields[i + 1].type, texts, columns[i + 1], place);
        }
    }
}

void OutputColumns::FillPredicted(const PredictionBlock& predictions, std::size_t rows, const OutputColumn& column,
                                  std::size_t first) const {
    const auto at = [&](std::size_t row) { return static_cast<std::size_t>(predictions.categories[row]); };
    for (std::size_t row = 0; column.codes != nullptr && row < rows; ++row) {
        column.codes[first + row] = predictions.predicted[row] != 0 ? fPredicted.codes[at(row)] : -1;
    }
    for (std::size_t row = 0; column.numbers != nullptr && row < rows; ++row) {
        column.numbers[first + row] = predictions.predicted[row] == 0 ? kMissing
                                      : fIsClassification             ? fPredicted.numbers[at(row)]
                                                                      : predictions.numbers[row];
    }
}

void OutputColumns::FillOutput(const Output& output, Block& block, const PredictionBlock& predictions, State& state,
                               const OutputColumn& column, std::size_t first) const {
    const OutputFeature& feature = output.field->feature;
    const std::size_t rows = block.Rows();
    const InRows inRows = output.field->isOfOthers ? InRows::MISSING : feature.inRows;
    const bool isOfCategory = inRows == InRows::OF_CATEGORY && fIsClassification;
    if (output.field->expression != nullptr && !output.field->isOfOthers) {
        const Block::Scratch scratch(block);
        Column values = output.field->expression->Evaluate(block);
        values.type = output.field->expression->Type();
        Copy(values, rows, block.Arena(), column, first);
    } else if (inRows == InRows::MISSING) {
        for (std::size_t row = 0; row < rows; ++row) {
            Miss(column, first + row);
        }
    } else if (isOfCategory) {
        for (std::size_t row = 0; row < rows; ++row) {
            const auto category =
                static_cast<std::size_t>(predictions.predicted[row] == 0 ? 0 : predictions.categories[row]);
            if (column.codes != nullptr) {
                column.codes[first + row] = output.values.codes[category];
            } else if (column.numbers != nullptr) {
                column.numbers[first + row] = output.values.numbers[category];
            }
        }
    } else if (inRows == InRows::GROUNDS || (inRows == InRows::ENTITY && output.field->rank > 1)) {
        FillGrounds(*output.field, predictions, rows, column, first);
    } else if (inRows == InRows::ENTITY) {
        for (std::size_t row = 0; column.texts != nullptr && row < rows; ++row) {
            const bool isOther = feature.resultFeature == ScoreResultField::RF_CLUSTER_ID &&
                                 predictions.affinities[row] == Prediction::kNone;
            const std::string_view entity = isOther ? std::string_view() : predictions.entities[row];
            column.texts[first + row] = entity.empty() ? std::string_view() : entity;
        }
    } else if (column.numbers != nullptr) {
        const OutputRows scored{
            predictions, block, fOutputs.fActual.slot, fOutputs.fActual.codes, fIsClassification, output.field->named};
        feature.fillNumbers(scored, output.field->category, state.numbers.data());
        std::transform(state.numbers.begin(), state.numbers.begin() + static_cast<std::ptrdiff_t>(rows),
                       column.numbers + first, OrMissing);
    }
}

/// The texts are the model's, which they need not outlive.
void OutputColumns::FillGrounds(const Outputs::Field& field, const PredictionBlock& predictions, std::size_t rows,
                                const OutputColumn& column, std::size_t first) {
    for (std::size_t row = 0; column.texts != nullptr && row < rows; ++row) {
        const bool hasGrounds = predictions.predicted[row] != 0 && !predictions.grounds.empty();
        const std::string* text = hasGrounds ? field.feature.groundText(predictions.grounds[row], field.rank) : nullptr;
        column.texts[first + row] = text == nullptr || text->empty() ? std::string_view() : *text;
    }
}

void OutputColumns::FillExpressions(Block& block, const OutputColumn* columns, std::size_t first) const {
    const Block::Scratch scratch(block);
    std::size_t column = 1;
    for (const Outputs::Field& field : fOutputs.fFields) {
        if (field.isVerified) {
            continue;
        }
        Column values = field.expression->Evaluate(block);
        values.type = field.expression->Type();
        SetField(block, field.slot, values.type, values);
        if (field.isFinal) {
            Copy(values, block.Rows(), block.Arena(), columns[column++], first);
        }
    }
}

} // namespace veltrane_kit

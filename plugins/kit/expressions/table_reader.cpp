// The expressions that look values up.
#include "kit/document/raise.h"
#include "kit/expressions/expression_reader.h"
#include "kit/expressions/lag.h"
#include "kit/expressions/leaves.h"
#include "kit/expressions/tables.h"

#include <set>

namespace veltrane_kit {

namespace {

constexpr Word<Outliers> kOutliers[] = {
    {u"asIs", Outliers::AS_IS},
    {u"asMissingValues", Outliers::AS_MISSING},
    {u"asExtremeValues", Outliers::AS_EXTREME},
};

struct Closure {
    bool left;
    bool right;
};

constexpr Word<Closure> kClosures[] = {
    {u"openOpen", {false, false}},
    {u"openClosed", {false, true}},
    {u"closedOpen", {true, false}},
    {u"closedClosed", {true, true}},
};

using Aggregate = LagExpression::Aggregate;

constexpr Word<Aggregate> kLagAggregates[] = {
    {u"none", Aggregate::NONE},     {u"avg", Aggregate::AVG},       {u"max", Aggregate::MAX},
    {u"median", Aggregate::MEDIAN}, {u"min", Aggregate::MIN},       {u"product", Aggregate::PRODUCT},
    {u"sum", Aggregate::SUM},       {u"stddev", Aggregate::STDDEV},
};

constexpr Word<bool> kAggregates[] = {
    {u"count", true}, {u"sum", false}, {u"average", false}, {u"min", false}, {u"max", false},
};

} // namespace

Interval ReadInterval(const Element& element) {
    const Closure closure = element.OneOf(u"closure", kClosures);
    if (!element.Has(u"leftMargin") && !element.Has(u"rightMargin")) {
        Raise<Message::MISSING_VALUES_OF_BOTH>("leftMargin", "rightMargin", element.Tag());
    }
    Interval interval{element.NumberOr(u"leftMargin", -kInfinity), element.NumberOr(u"rightMargin", kInfinity),
                      closure.left || !element.Has(u"leftMargin"), closure.right || !element.Has(u"rightMargin")};
    if (interval.left > interval.right) {
        element.RaiseInvalid(u"leftMargin");
    }
    return interval;
}

std::vector<std::map<std::string, std::string>> ReadRows(const Element& parent) {
    std::vector<std::map<std::string, std::string>> rows;
    for (const Element row : parent.RequireChild(u"InlineTable").Children()) {
        if (!row.Is(u"row")) {
            row.RaiseMisplaced();
        }
        std::map<std::string, std::string>& cells = rows.emplace_back();
        for (const Element cell : row.Children()) {
            cells.emplace(LocalName(cell.Reader()(cell.Dom()->getTagName())), cell.Content());
        }
    }
    return rows;
}

/// A field whose values are numbers, or count as such: booleans, dates and times do, texts don't. One that may have
/// values of any type is read as numbers case by case.
ExpressionPtr ExpressionReader::ReadNumericField(const Element& element) {
    ExpressionPtr field = ReadField(element, u"field");
    if (field->IsOf(DataType::STRING)) {
        RaiseAt<Message::REQUIRES_NUMERIC>(element.Tag(), "field", element.Text(u"field"));
    }
    return field;
}

ExpressionPtr ExpressionReader::ReadNormContinuous(const Element& element) {
    ExpressionPtr field = ReadNumericField(element);
    const Outliers outliers = element.OneOfOr(u"outliers", kOutliers, Outliers::AS_IS);
    std::vector<NormContinuousExpression::Point> points;
    for (const Element child : element.Children()) {
        if (!child.Is(u"LinearNorm")) {
            child.RaiseMisplaced();
        }
        points.push_back({child.Number(u"orig"), child.Number(u"norm")});
        if (points.size() > 1 && !(points[points.size() - 2].orig < points.back().orig)) {
            child.RaiseInvalid(u"orig");
        }
    }
    if (points.size() < 2) {
        Raise<Message::REQUIRES_MORE_THAN_ONE>("LinearNorm", element.Tag());
    }
    return std::make_unique<NormContinuousExpression>(std::move(field), std::move(points), outliers,
                                                      NumberOrMissing(element, u"mapMissingTo"));
}

ExpressionPtr ExpressionReader::ReadNormDiscrete(const Element& element) {
    ExpressionPtr field = ReadField(element, u"field");
    const std::string value = element.AnyText(u"value");
    if (field->Type() && ReadValue(value, *field->Type()).isMissing) {
        element.RaiseInvalid(u"value");
    }
    return std::make_unique<NormDiscreteExpression>(std::move(field), value, NumberOrMissing(element, u"mapMissingTo"));
}

ExpressionPtr ExpressionReader::ReadDiscretize(const Element& element, std::optional<DataType> type) {
    const TextType valueType{ReadDataType(element, u"dataType"), type};
    ExpressionPtr field = ReadNumericField(element);
    std::vector<DiscretizeExpression::Bin> bins;
    for (const Element child : element.Children()) {
        if (!child.Is(u"DiscretizeBin")) {
            child.RaiseMisplaced();
        }
        std::string text;
        DiscretizeExpression::Bin bin{ReadInterval(child.RequireChild(u"Interval")), {}};
        const Value value = ReadText(child, u"binValue", valueType, text);
        if (!child.Has(u"binValue")) {
            child.Text(u"binValue");
        }
        bin.value.Keep(value);
        bins.push_back(std::move(bin));
    }
    std::string missingText;
    std::string defaultText;
    const Value mapMissingTo = ReadText(element, u"mapMissingTo", valueType, missingText);
    const Value defaultValue = ReadText(element, u"defaultValue", valueType, defaultText);
    return std::make_unique<DiscretizeExpression>(std::move(field), std::move(bins), mapMissingTo, defaultValue);
}

ExpressionPtr ExpressionReader::ReadMapValues(const Element& element, std::optional<DataType> type) {
    const TextType valueType{ReadDataType(element, u"dataType"), type};
    Expressions fields;
    std::vector<std::string> columns;
    std::vector<DataType> types;
    for (const Element child : element.Children()) {
        if (!child.Is(u"FieldColumnPair")) {
            continue;
        }
        ExpressionPtr field = ReadField(child, u"field");
        if (!field->Type()) {
            field = AsType(std::move(field), DataType::STRING, fLayout);
        }
        types.push_back(*field->Type());
        fields.push_back(std::move(field));
        columns.push_back(LocalName(child.Text(u"column")));
    }
    if (fields.empty()) {
        Raise<Message::MISSING_NODE_IN>("FieldColumnPair", element.Tag());
    }
    const std::string output = LocalName(element.Text(u"outputColumn"));
    const std::vector<std::map<std::string, std::string>> rows = ReadRows(element);
    std::string missingText;
    std::string defaultText;
    const Value mapMissingTo = ReadText(element, u"mapMissingTo", valueType, missingText);
    const Value defaultValue = ReadText(element, u"defaultValue", valueType, defaultText);

    MapRows table;
    for (const auto& row : rows) {
        const auto result = row.find(output);
        std::vector<Value> key;
        key.reserve(columns.size());
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const auto cell = row.find(columns[i]);
            key.push_back(cell == row.end() ? Value() : ReadValue(cell->second, types[i]));
        }
        Value value;
        if (result != row.end()) {
            value = valueType.Read(result->second);
            if (value.isMissing) {
                Raise<Message::INVALID_CONTENT>(result->second, output);
            }
        }
        table.Add(key, value);
    }
    return std::make_unique<MapValuesExpression>(std::move(fields), std::move(table), mapMissingTo, defaultValue,
                                                 fLayout);
}

ExpressionPtr ExpressionReader::ReadLag(const Element& element) {
    const FieldScope::Found field = fScope->Require(element, u"field");
    const int cases = element.IntegerOr(u"n", 1);
    if (cases < 1 || static_cast<std::size_t>(cases) > kLongestLag) {
        element.RaiseInvalid(u"n");
    }
    FrameLayout::History history{field.slot, static_cast<std::size_t>(cases), {}, fIsInFunction};
    for (const Element child : element.Children()) {
        if (!child.Is(u"BlockIndicator")) {
            child.RaiseMisplaced();
        }
        history.blocks.push_back(fScope->Require(child, u"field").slot);
    }
    fLayout.histories.push_back(std::move(history));
    return std::make_unique<LagExpression>(fLayout.histories.size() - 1, static_cast<std::size_t>(cases),
                                           element.OneOfOr(u"aggregate", kLagAggregates, Aggregate::NONE), field.type,
                                           fLayout);
}

ExpressionPtr ExpressionReader::ReadAggregate(const Element& element) {
    ExpressionPtr field = ReadField(element, u"field");
    return std::make_unique<AggregateExpression>(std::move(field), element.OneOf(u"function", kAggregates));
}

} // namespace veltrane_kit

#ifndef VELTRANE_PLUGINS_KIT_TABLES_H
#define VELTRANE_PLUGINS_KIT_TABLES_H

#include "kit/expressions/leaves.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>

/// Expressions that look a field's value up.
namespace veltrane_kit {

/// The number of a field, which a text may write.
inline double NumberOfField(const Expression& field, Frame& frame) {
    return field.KeepsNumbers() ? field.Number(frame) : NumberOf(field.Evaluate(frame));
}

/// What a field's value has to be for a line between points.
enum class Outliers { AS_IS, AS_MISSING, AS_EXTREME };

/// NormContinuous: a number by straight lines between points.
class NormContinuousExpression final : public NumberExpression {
public:
    struct Point {
        double orig;
        double norm;
    };

    /// @param points at least two, `orig` ascending
    /// @param mapMissingTo not a number for none
    NormContinuousExpression(ExpressionPtr field, std::vector<Point> points, Outliers outliers, double mapMissingTo);

    double Number(Frame& frame) const override { return Of(NumberOfField(*fField, frame)); }

protected:
    NumberColumn ComputeNumbers(Block& block) const override;

private:
    double Of(double x) const;

    ExpressionPtr fField;
    std::vector<Point> fPoints;
    Outliers fOutliers;
    double fMapMissingTo;
};

/// NormDiscrete: 1 for one value of a field, 0 for the others.
class NormDiscreteExpression final : public NumberExpression {
public:
    NormDiscreteExpression(ExpressionPtr field, std::string value, double mapMissingTo);

    double Number(Frame& frame) const override { return Of(fField->Evaluate(frame)); }

protected:
    NumberColumn ComputeNumbers(Block& block) const override;

private:
    double Of(const Value& value) const;

    ExpressionPtr fField;
    std::string fText;
    Value fValue; ///< of the field's type, where that is known
    double fMapMissingTo;
};

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A range of numbers, each end open or closed; without an end it is infinite there.
struct Interval {
    double left;
    double right;
    bool leftClosed;
    bool rightClosed;

    bool Holds(double x) const {
        return (x > left || (leftClosed && x == left)) && (x < right || (rightClosed && x == right));
    }
};

/// Discretize: the value of the first bin that holds a number. The bins may overlap; it is found by halving.
class DiscretizeExpression final : public Expression {
public:
    struct Bin {
        Interval interval;
        OwnedValue value;
    };

    /// @param mapMissingTo, defaultValue missing ones for none
    DiscretizeExpression(ExpressionPtr field, std::vector<Bin> bins, const Value& mapMissingTo,
                         const Value& defaultValue);

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override { return AsCommon(Of(NumberOfField(*fField, frame)), Type()); }

protected:
    Column ComputeColumn(Block& block) const override;

private:
    void FindFirstBins();
    const Value& Of(double x) const;

    ExpressionPtr fField;
    std::vector<Bin> fBins;
    OwnedValue fMapMissingTo;
    OwnedValue fDefault;
    std::vector<double> fEnds;               ///< of all bins, ascending, each once
    std::vector<std::int32_t> fFirstAt;      ///< by end, the first bin that holds it; -1 for none
    std::vector<std::int32_t> fFirstBetween; ///< before the first end, between two, and behind the last
};

/// The rows of a table by some of their cells; of several rows with the same cells the first counts.
class MapRows {
public:
    /// Adds a row behind the others.
    /// @param cells each of its field's type; a row with a missing one is left out, nothing equals it
    void Add(const std::vector<Value>& cells, const Value& result);

    /// Appends what tells a value from others of its type.
    static void AppendKey(const Value& value, std::string& key);

    /// @return null for a key that no row has
    const OwnedValue* Find(std::string_view key) const;

    /// The type of all results; none where they have several.
    std::optional<DataType> Type(const Value& mapMissingTo, const Value& defaultValue) const;

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    std::unordered_map<std::string, OwnedValue, Hash, std::equal_to<>> fRows;
};

/// MapValues: the value of the row that has the values of some fields.
class MapValuesExpression final : public Expression {
public:
    /// @param fields their types are known
    /// @param mapMissingTo, defaultValue missing ones for none
    MapValuesExpression(Expressions fields, MapRows rows, const Value& mapMissingTo, const Value& defaultValue,
                        FrameLayout& layout);

    using Expression::Evaluate;
    Value Evaluate(Frame& frame) const override;

protected:
    Column ComputeColumn(Block& block) const override;

private:
    template <typename ValueAt>
    Value Find(std::string& key, ValueAt valueAt) const;

    Expressions fFields;
    MapRows fRows;
    OwnedValue fMapMissingTo;
    OwnedValue fDefault;
    std::size_t fKey;
};

} // namespace veltrane_kit

#endif

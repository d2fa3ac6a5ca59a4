#include "comparison.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace veltrane_clustering {

using veltrane_kit::kMissing;

namespace {

/// The quotient goes first: squares of large and small numbers alone are beyond the doubles.
double Gauss(double difference, double scale) {
    const double quotient = difference / scale;
    return std::exp(-std::numbers::ln2 * (quotient * quotient));
}

/// Where a sum begins, or what all numbers are larger than.
double StartOf(Measure measure) {
    return measure == Measure::CHEBYCHEV ? -HUGE_VAL : 0.0;
}

/// Of a measure that adds up, or takes the largest.
template <bool kTakesLargest>
double Joined(double sum, double part) {
    return kTakesLargest ? std::max(sum, part) : sum + part;
}

/// Adds the parts of one field for all rows.
template <bool kTakesLargest, typename PartOf>
void AddParts(const double* x, std::size_t rows, double* sums, const PartOf& partOf) {
    for (std::size_t row = 0; row < rows; ++row) {
        sums[row] = Joined<kTakesLargest>(sums[row], partOf(x[row]));
    }
}

} // namespace

double CompareTable::PlaceOfNumber(double number) const {
    for (std::size_t i = 0; i < intervals.size(); ++i) {
        if (intervals[i].Holds(number)) {
            return static_cast<double>(i);
        }
    }
    return kMissing;
}

double ComparedField::Compare(double x, double y) const {
    switch (function) {
    case CompareFunction::GAUSS_SIM:
        return Gauss(x - y, scale);
    case CompareFunction::DELTA:
        return x == y ? 0.0 : 1.0;
    case CompareFunction::EQUAL:
        return x == y ? 1.0 : 0.0;
    case CompareFunction::TABLE:
        // A block compares rows without the field too, and passes over what comes of it.
        return std::isnan(x) || std::isnan(y)
                   ? std::numeric_limits<double>::quiet_NaN()
                   : table->matrix.At(static_cast<std::size_t>(x), static_cast<std::size_t>(y));
    default:
        return std::abs(x - y);
    }
}

void Comparison::Settle() {
    fAllWeights = 0.0;
    for (const ComparedField& field : fields) {
        fAllWeights += field.missingWeight;
    }
}

double Comparison::Part(const ComparedField& field, double c) const {
    switch (measure) {
    case Measure::EUCLIDEAN:
    case Measure::SQUARED_EUCLIDEAN:
        return field.weight * (c * c);
    case Measure::MINKOWSKI:
        return field.weight * std::pow(c, power);
    default:
        return field.weight * c;
    }
}

double Comparison::Finish(double sum) const {
    switch (measure) {
    case Measure::EUCLIDEAN:
        return std::sqrt(sum);
    case Measure::MINKOWSKI:
        return std::pow(sum, 1.0 / power);
    default:
        return sum;
    }
}

double Comparison::Apart(const double* x, const double* y) const {
    double sum = StartOf(measure);
    double known = 0.0;
    bool lacks = false;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (std::isnan(x[i]) || std::isnan(y[i])) {
            lacks = true;
            continue;
        }
        known += fields[i].missingWeight;
        const double part = Part(fields[i], fields[i].Compare(x[i], y[i]));
        sum = measure == Measure::CHEBYCHEV ? Joined<true>(sum, part) : Joined<false>(sum, part);
    }
    return Finish(lacks ? sum * (fAllWeights / known) : sum);
}

/// A value of a case that is neither 0 nor 1 can't be counted.
double Comparison::MatchBits(const double* x, const double* y) const {
    double counts[2][2] = {{0.0, 0.0}, {0.0, 0.0}};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (std::isnan(x[i]) || std::isnan(y[i])) {
            continue;
        }
        if (x[i] != 0.0 && x[i] != 1.0) {
            return kMissing;
        }
        counts[x[i] == 1.0 ? 1 : 0][y[i] == 1.0 ? 1 : 0] += 1.0;
    }
    const double both = counts[1][1];
    const double none = counts[0][0];
    const double one = counts[1][0] + counts[0][1];
    switch (measure) {
    case Measure::SIMPLE_MATCHING:
        return (both + none) / (both + one + none);
    case Measure::JACCARD:
        return both / (both + one);
    case Measure::TANIMOTO:
        return (both + none) / (both + 2.0 * one + none);
    default:
        break;
    }
    const auto weighed = [&](const double(&by)[2][2]) {
        return by[1][1] * both + by[1][0] * counts[1][0] + by[0][1] * counts[0][1] + by[0][0] * none;
    };
    return weighed(bits.above) / weighed(bits.below);
}

void Comparison::AddUp(const double* const* x, std::size_t rows, const double* y, double* sums) const {
    std::fill_n(sums, rows, StartOf(measure));
    for (std::size_t i = 0; i < fields.size(); ++i) {
        Add(fields[i], x[i], rows, y[i], sums);
    }
}

void Comparison::Between(const double* const* x, std::size_t rows, const double* y, double* sums) const {
    AddUp(x, rows, y, sums);
    if (measure == Measure::EUCLIDEAN || measure == Measure::MINKOWSKI) {
        for (std::size_t row = 0; row < rows; ++row) {
            sums[row] = Finish(sums[row]);
        }
    }
}

/// The differences of numbers have loops of their own.
void Comparison::Add(const ComparedField& field, const double* x, std::size_t rows, double y, double* sums) const {
    const double weight = field.weight;
    const bool isPlain = field.function == CompareFunction::ABS_DIFF;
    if (isPlain && (measure == Measure::EUCLIDEAN || measure == Measure::SQUARED_EUCLIDEAN)) {
        AddParts<false>(x, rows, sums, [=](double value) {
            const double c = std::abs(value - y);
            return weight * (c * c);
        });
    } else if (isPlain && measure == Measure::CITY_BLOCK) {
        AddParts<false>(x, rows, sums, [=](double value) { return weight * std::abs(value - y); });
    } else if (isPlain && measure == Measure::CHEBYCHEV) {
        AddParts<true>(x, rows, sums, [=](double value) { return weight * std::abs(value - y); });
    } else if (measure == Measure::CHEBYCHEV) {
        AddParts<true>(x, rows, sums, [&](double value) { return Part(field, field.Compare(value, y)); });
    } else {
        AddParts<false>(x, rows, sums, [&](double value) { return Part(field, field.Compare(value, y)); });
    }
}

} // namespace veltrane_clustering

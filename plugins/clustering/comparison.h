#ifndef VELTRANE_PLUGINS_CLUSTERING_COMPARISON_H
#define VELTRANE_PLUGINS_CLUSTERING_COMPARISON_H

#include "kit/columns/block.h"
#include "kit/expressions/tables.h"
#include "kit/values/matrix.h"
#include "kit/values/values.h"

#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace veltrane_clustering {

/// How a point is compared with another one.
enum class Measure {
    EUCLIDEAN,
    SQUARED_EUCLIDEAN,
    CHEBYCHEV,
    CITY_BLOCK,
    MINKOWSKI,
    SIMPLE_MATCHING,
    JACCARD,
    TANIMOTO,
    BINARY_SIMILARITY
};

/// Whether a measure counts fields that are 0 and 1, in place of adding up what compare functions give.
constexpr bool CountsBits(Measure measure) {
    return measure >= Measure::SIMPLE_MATCHING;
}

/// How one field of a point is compared with that of another one.
enum class CompareFunction { ABS_DIFF, GAUSS_SIM, DELTA, EQUAL, TABLE };

/// The Comparisons of a field: a number for each pair of its values or intervals.
struct CompareTable {
    veltrane_kit::Matrix matrix;
    std::vector<double> places;                    ///< of each code of a value among the values; not a number for none
    std::vector<veltrane_kit::Interval> intervals; ///< of a field that is compared by these

    double PlaceOfCode(int code) const {
        return code >= 0 && static_cast<std::size_t>(code) < places.size() ? places[static_cast<std::size_t>(code)]
                                                                           : veltrane_kit::kMissing;
    }
    double PlaceOfNumber(double number) const;
};

/// A field that is compared. What it has in a case, in a center or in an instance is kept as a number: its own, the
/// code of its category, or its place in a table; not a number is missing.
struct ComparedField {
    std::string name;
    int slot = 0;
    CompareFunction function = CompareFunction::ABS_DIFF;
    double weight = 1.0;
    double scale = 1.0;         ///< of GAUSS_SIM: at this difference the similarity is a half
    double missingWeight = 1.0; ///< what is made up for where the field is missing
    bool isCode = false;        ///< whether categories stand for the values
    std::shared_ptr<const CompareTable> table;

    /// How the values of a case and of another point compare.
    double Compare(double x, double y) const;

    /// The value of a case.
    template <typename View>
    double ValueOf(const View& fields) const {
        if (fields.IsMissing(slot)) {
            return veltrane_kit::kMissing;
        }
        if (table != nullptr && isCode) {
            return table->PlaceOfCode(fields.Category(slot));
        }
        if (table != nullptr) {
            return table->PlaceOfNumber(fields.Number(slot));
        }
        return isCode ? static_cast<double>(fields.Category(slot)) : fields.Number(slot);
    }
};

/// A ComparisonMeasure over fields: how far points are apart, or how much alike. A point has a number for each field,
/// as ComparedField says. Fields that one of two points lacks don't count; distances are scaled up for them.
///
///     euclidean          sqrt(sum of w c^2)
///     squaredEuclidean   sum of w c^2
///     chebychev          largest w c
///     cityBlock          sum of w c
///     minkowski          (sum of w c^p)^(1/p)
///     simpleMatching     (a11 + a00) / (a11 + a10 + a01 + a00)
///     jaccard            a11 / (a11 + a10 + a01)
///     tanimoto           (a11 + a00) / (a11 + 2 (a10 + a01) + a00)
///     binarySimilarity   (c11 a11 + c10 a10 + c01 a01 + c00 a00) / (d11 a11 + d10 a10 + d01 a01 + d00 a00)
///
/// with c what the compare function gives for a field, w its weight, and a10 the number of fields that are 1 in the
/// case and 0 in the other point. All sums go by the order of the fields.
class Comparison {
public:
    /// The parameters of binarySimilarity, by the bits of the case and of the other point.
    struct BitWeights {
        double above[2][2];
        double below[2][2];
    };

    Measure measure = Measure::EUCLIDEAN;
    bool isDistance = true; ///< whether the lowest result is the nearest one
    double power = 2.0;     ///< of MINKOWSKI
    BitWeights bits{};
    std::vector<ComparedField> fields;

    /// To be called once the fields are all there.
    void Settle();

    std::size_t Size() const { return fields.size(); }

    /// @param x of the case
    /// @param y of another point
    /// @return not finite where they can't be compared
    double Between(const double* x, const double* y) const {
        return CountsBits(measure) ? MatchBits(x, y) : Apart(x, y);
    }

    /// The same for cases in columns that lack nothing, in the same steps.
    /// @param x    a column for each field
    /// @param sums room for the results of all rows
    void Between(const double* const* x, std::size_t rows, const double* y, double* sums) const;

    /// What is added up for it, before Finish().
    void AddUp(const double* const* x, std::size_t rows, const double* y, double* sums) const;

    /// Whether a result is nearer than another one; one that isn't finite never is.
    bool IsNearer(double result, double than) const {
        return (isDistance ? result < than : result > than) && std::isfinite(result);
    }
    /// The result that every finite one is nearer than.
    double Farthest() const { return isDistance ? HUGE_VAL : -HUGE_VAL; }

    /// What one field adds to a sum, or may be the largest.
    double Part(const ComparedField& field, double c) const;
    /// What becomes of the sum.
    double Finish(double sum) const;

private:
    double Apart(const double* x, const double* y) const;
    double MatchBits(const double* x, const double* y) const;
    void Add(const ComparedField& field, const double* x, std::size_t rows, double y, double* sums) const;

    double fAllWeights = 0.0; ///< of fields that may be missing
};

} // namespace veltrane_clustering

#endif

#ifndef VELTRANE_PLUGINS_REGRESSION_REGRESSION_SCORER_H
#define VELTRANE_PLUGINS_REGRESSION_REGRESSION_SCORER_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "normalization.h"
#include "regression_table.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <set>
#include <vector>

namespace veltrane_regression {

/// A RegressionModel: one table gives a number, several give the probabilities of categories.
class RegressionScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException what reading tables throws; 260115 and 260272 for a regression that hasn't one table, 260176
    ///         for a classification that has one and a target without exactly two categories, 260203 for a category
    ///         with two tables, 260179 for a normalisation that the function doesn't have
    RegressionScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveConfidences() const override { return false; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

private:
    /// Used anew for every case or block.
    struct Sums : State {
        std::vector<double> sums;        ///< one for each table
        std::vector<double> columns;     ///< the same for each row of a block, a table behind the other
        std::vector<std::uint8_t> lacks; ///< by row, whether a number is missing that a sum needs
    };
    class Blocks;
    struct CategoryTable {
        int category;
        RegressionTable table;
    };

    void ReadTables(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);
    void ReadCategoryTable(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts, std::set<int>& known);
    void CompleteCategories(const veltrane_kit::ModelParts& parts);
    void CheckNormalization(const veltrane_kit::Element& element, bool isClassification) const;
    bool PredictNumber(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction) const;

    Normalization fNormalization;
    bool fIsOrdinal;
    std::vector<CategoryTable> fTables; ///< of a regression just one
    bool fIsClassification;
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeRegressionScorer(const veltrane_kit::Element& element,
                                                                 veltrane_kit::ModelParts& parts);

} // namespace veltrane_regression

#endif

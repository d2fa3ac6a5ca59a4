#ifndef VELTRANE_PLUGINS_REGRESSION_REGRESSION_MODEL_H
#define VELTRANE_PLUGINS_REGRESSION_REGRESSION_MODEL_H

#include "kit/model/model.h"
#include "normalization.h"
#include "regression_table.h"

#include <set>
#include <vector>

namespace veltrane_regression {

/// A RegressionModel: one table gives a number, several give the probabilities of categories.
class RegressionModel : public veltrane_kit::Model {
public:
    /// @throws VTException what reading tables throws; 260115 and 260272 for a regression that hasn't one table, 260176
    ///         for a classification that has one and a target without exactly two categories, 260203 for a category
    ///         with two tables, 260179 for a normalisation that the function doesn't have
    RegressionModel(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

protected:
    bool Predict(const veltrane_kit::Inputs& inputs, veltrane_kit::Prediction& prediction) override;
    void DisplayModel(std::ostream& out) const override;

private:
    struct CategoryTable {
        int category;
        RegressionTable table;
    };

    void ReadTables(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);
    void ReadCategoryTable(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts, std::set<int>& known);
    void CompleteCategories(const veltrane_kit::ModelParts& parts);
    void CheckNormalization(const veltrane_kit::Element& element, bool isClassification) const;
    bool PredictNumber(const veltrane_kit::Inputs& inputs, veltrane_kit::Prediction& prediction) const;

    Normalization fNormalization;
    bool fIsOrdinal;
    std::vector<CategoryTable> fTables; ///< of a regression just one
    std::vector<double> fSums;          ///< one for each table, used anew for every case
};

} // namespace veltrane_regression

#endif

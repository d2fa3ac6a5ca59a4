#ifndef VELTRANE_PLUGINS_GENERAL_GENERAL_SCORER_H
#define VELTRANE_PLUGINS_GENERAL_GENERAL_SCORER_H

#include "amount.h"
#include "covariance.h"
#include "equations.h"
#include "hazards.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "links.h"

#include <cmath>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrane_general {

/// The modelType of the document. A general linear model and a regression are the same for a case.
enum class ModelType { LINEAR, GENERALIZED, MULTINOMIAL, ORDINAL, COX };

/// A GeneralRegressionModel.
class GeneralScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException 260179 for a function that the model type doesn't have, and for a generalized linear model
    ///         of other than two categories; 260120 and 260153 for attributes; 260116 for a category without
    ///         coefficients; what the readers of its parts throw
    GeneralScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveConfidences() const override { return false; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

private:
    /// Used anew for every case or block.
    struct Sums : State {
        std::vector<double> sums;    ///< one for each category
        std::vector<double> columns; ///< the same for each row of a block, a category behind the other
        std::vector<double> common;  ///< by row, of the terms that all categories have
        std::vector<double> values;  ///< of the parameters, for their standard error
    };
    class Blocks;
    /// A category and what it has for itself; the last one, which has the rest, has none.
    struct Category {
        int code;
        Equation equation;
    };

    void ReadLink(const veltrane_kit::Element& element);
    void ReadTimes(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);
    void TakeCategories(const veltrane_kit::Element& element, Equations equations, const std::vector<int>& order);
    bool Share(std::vector<double>& sums) const;
    bool ShareOfTwo(std::vector<double>& sums) const;
    void ShareOrdinal(std::vector<double>& sums) const;
    bool PredictCategory(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction, Sums& state) const;
    int LackingSlot(const veltrane_kit::CaseView& fields) const;

    template <typename View>
    double NumberOf(double eta, const View& fields) const;
    template <typename View>
    double ErrorOf(double eta, const View& fields, std::vector<double>& values) const;

    ModelType fType;
    std::string fTypeName; ///< as the document has it
    bool fIsClassification;
    Link fLink;
    /// Whether the reference has its sum, 0, linked as well, and both numbers are shared out. Rattle means that by a
    /// generalized linear model of two categories.
    bool fLinksReference = false;
    Amount fOffset;
    Amount fTrials;
    double fReference = 0.0;              ///< the sum of the case that the baseline of a Cox regression is of
    std::vector<double> fReferencePoints; ///< by term, what that case has
    Equation fCommon;
    std::vector<Category> fCategories; ///< of a classification, in the order of its links
    Covariance fCovariance;
    std::optional<Hazards> fHazards; ///< of a Cox regression
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeGeneralScorer(const veltrane_kit::Element& element,
                                                              veltrane_kit::ModelParts& parts);

// What single cases and the rows of blocks have in common.

/// What is predicted for a sum with its offset; no finite number where there is none.
template <typename View>
double GeneralScorer::NumberOf(double eta, const View& fields) const {
    if (!std::isfinite(eta)) { // a link could make a finite number of it
        return kLacks;
    }
    if (fType == ModelType::COX) {
        return std::exp(eta - fReference) * fHazards->At(fields);
    }
    return fType == ModelType::GENERALIZED ? fLink.Inverse(eta) * fTrials.At(fields) : eta;
}

/// The standard error of the predicted number: that of the sum, times how fast the number grows with the sum.
template <typename View>
double GeneralScorer::ErrorOf(double eta, const View& fields, std::vector<double>& values) const {
    double slope = 1.0;
    if (fType == ModelType::COX) {
        slope = NumberOf(eta, fields);
    } else if (fType == ModelType::GENERALIZED) {
        slope = fLink.Slope(eta) * fTrials.At(fields);
    }
    const std::vector<Term>& terms = fCommon.Terms();
    for (std::size_t i = 0; i < terms.size(); ++i) {
        values[i] = terms[i].Product(fields);
    }
    if (fType == ModelType::COX) {
        for (std::size_t i = 0; i < terms.size(); ++i) {
            values[i] -= fReferencePoints[i];
        }
    }
    const double error = std::fabs(slope) * fCovariance.ErrorOf(values);
    return std::isfinite(error) ? error : veltrane_kit::Prediction::kNone;
}

} // namespace veltrane_general

#endif

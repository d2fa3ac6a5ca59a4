#ifndef VELTRANE_PLUGINS_GENERAL_PREDICTORS_H
#define VELTRANE_PLUGINS_GENERAL_PREDICTORS_H

#include "factor.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace veltrane_general {

/// The predictors of a model, from its FactorList and its CovariateList: what a cell of the PPMatrix makes of their
/// values.
class Predictors {
public:
    /// @param parts borrowed
    explicit Predictors(veltrane_kit::ModelParts& parts) : fParts(parts) {}

    /// @param list a FactorList or a CovariateList; may be no element
    /// @throws VTException 260120, 260285 for a name; 260125 and 260161 for its field; 260187 for a covariate that is a
    ///         text; 260203 for a predictor or a category that comes twice; 260283 for Categories without any; 260153
    ///         for a category that the field can't have, 260126 for a matrix of contrasts without categories; 260248
    ///         for one whose size contradicts them; what reading a Matrix throws; 260159 and 260272 for elements
    void Read(const veltrane_kit::Element& list, bool areFactors);

    /// What a PPCell makes of its predictor: a power of a covariate, whether a factor has the category, or the contrast
    /// of its category in that column.
    /// @throws VTException 260120, 260285 for attributes; 260153 for a predictor that is in neither list, for a power
    ///         that is no number and for a category that the predictor doesn't have
    Factor ReadCell(const veltrane_kit::Element& cell);

private:
    struct Predictor {
        int slot;
        bool isFactor;
        std::unordered_map<int, std::size_t> places; ///< of the categories that are stated, by code; empty for any
        std::shared_ptr<const Contrasts> contrasts;  ///< null for none
    };

    void ReadCategories(const veltrane_kit::Element& element, Predictor& predictor);
    void TakeListed(const veltrane_kit::Element& element, Predictor& predictor);
    void AddCategory(int code, Predictor& predictor, const std::string& text);
    void ReadContrasts(const veltrane_kit::Element& element, Predictor& predictor);

    veltrane_kit::ModelParts& fParts;
    std::unordered_map<std::string, Predictor> fByName;
};

} // namespace veltrane_general

#endif

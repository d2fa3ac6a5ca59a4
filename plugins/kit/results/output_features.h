#ifndef VELTRANE_PLUGINS_KIT_OUTPUT_FEATURES_H
#define VELTRANE_PLUGINS_KIT_OUTPUT_FEATURES_H

#include "kit/document/element.h"
#include "kit/inputs/case_view.h"
#include "kit/results/asked_entities.h"
#include "kit/results/prediction.h"
#include "kit/results/prediction_block.h"
#include "kit/results/results.h"
#include "kit/results/target.h"

#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <string>
#include <vector>

namespace veltrane_kit {

/// One scored case, as output fields see it.
struct OutputCase {
    static constexpr int kNoSlot = -1;

    const MCVeltrane_900::ScoreValue* value; ///< the predicted one, or that of the rank; null for none
    const Prediction& prediction;
    CaseView fields;
    const Target& target;
    int targetSlot; ///< where the case has the target's own value; kNoSlot when no output asks for it
    const std::vector<int>& actualCodes; ///< by category, its code in the target's slot
    bool isClassification;
    int rank = 1;                     ///< of the prediction that is asked for; 1 is the predicted one, 2 the next
    int named = AskedEntities::kNone; ///< the entity that is asked for; that of the rank without one
};

/// The rows of a block that were scored, as output fields see them.
struct OutputRows {
    const PredictionBlock& predictions;
    const Block& block;
    int targetSlot; ///< as in OutputCase
    const std::vector<int>& actualCodes;
    bool isClassification;
    int named; ///< as in OutputCase
};

/// What a feature of an output field means. Each has its row in the table of output_features.cpp, which holds
/// everything about it but how transformed values are evaluated.
struct OutputFeature {
    /// Sets the output at a position for one case.
    /// @param category the predicted one, or whose probability or residual; Prediction::kNoCategory for none
    using Fill = void (*)(const OutputCase& scored, int category, OutputValues& outputs, int position);

    /// Fills the numbers of an output for the rows of a block; the missing number for none.
    /// @param category whose; Prediction::kNoCategory for that which each row predicts
    using FillNumbers = void (*)(const OutputRows& scored, int category, double* numbers);

    /// The text of a prediction's grounds at a rank; null for none. It stays for as long as the model.
    using GroundText = const std::string* (*)(const Grounds& grounds, int rank);

    /// How the values of a block come about, beside `fill`, which gives the same for a row.
    enum class InRows {
        ROW_BY_ROW, ///< all output fields of a model that has one such
        MISSING,
        OF_CATEGORY, ///< `fill` gives them once for each category that may be predicted; numbers for a regression
        NUMBERS,     ///< by `fillNumbers`
        ENTITY,
        GROUNDS ///< by `groundText`, as an ENTITY of a rank behind the first
    };

    enum class Kind {
        NUMBER,
        TEXT,
        STATED,   ///< text or number, by the field's data type
        PREDICTED ///< the target's for a classification, else a number
    };
    enum class OfCategory { NEVER, ALWAYS, OF_CLASSIFICATION };
    enum class Expression { NONE, OPTIONAL, REQUIRED };

    MCVeltrane_900::ScoreResultField::ResultFeature resultFeature;
    Kind kind;
    Fill fill;
    InRows inRows = InRows::ROW_BY_ROW;
    FillNumbers fillNumbers = nullptr;
    OfCategory ofCategory = OfCategory::NEVER; ///< whether the field's value names a category
    bool needsTarget = false;                  ///< whether the case's own value of the target is looked up
    Expression expression = Expression::NONE;  ///< whether an expression gives the value, after all others are filled
    bool isOfRule = false;                     ///< whether the field's rule feature says what it is
    GroundText groundText = nullptr;
    bool isOfEntities = false; ///< whether it tells of clusters or instances, whatever the target
};

/// The feature that an output field states; the predicted value by default.
/// @throws VTException 260285, 260153
OutputFeature ReadOutputFeature(const Element& outputField);

/// The feature of the predicted value.
OutputFeature PredictedValue();

/// The id of a cluster where that is the predicted value.
OutputFeature PredictedCluster();

} // namespace veltrane_kit

#endif

#ifndef VELTRANE_PLUGINS_KIT_OUTPUT_FEATURES_H
#define VELTRANE_PLUGINS_KIT_OUTPUT_FEATURES_H

#include "kit/document/element.h"
#include "kit/inputs/inputs.h"
#include "kit/results/prediction.h"
#include "kit/results/results.h"
#include "kit/results/target.h"

#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <vector>

namespace veltrane_kit {

/// One scored case, as output fields see it.
struct OutputCase {
    const MCVeltrane_900::ScoreValue* value; ///< the predicted one, or that of the rank; null for none
    const Prediction& prediction;
    const Inputs& inputs;
    const Target& target;
    int targetSlot; ///< where the case has the target's own value; Inputs::kNoSlot when no output asks for it
    const std::vector<int>& actualCodes; ///< by category, its code in the target's slot
    bool isClassification;
    int rank = 1; ///< of the prediction that is asked for; 1 is the predicted one, 2 the next
};

/// What a feature of an output field means. Each has its row in the table of output_features.cpp, which holds
/// everything about it but how transformed values are evaluated.
struct OutputFeature {
    /// Sets the output at a position for one case.
    /// @param category the predicted one, or whose probability or residual; Prediction::kNoCategory for none
    using Fill = void (*)(const OutputCase& scored, int category, OutputValues& outputs, int position);

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
    OfCategory ofCategory = OfCategory::NEVER; ///< whether the field's value names a category
    bool needsTarget = false;                  ///< whether the case's own value of the target is looked up
    Expression expression = Expression::NONE;  ///< whether an expression gives the value, after all others are filled
};

/// The feature that an output field states; the predicted value by default.
/// @throws VTException 260285, 260153
OutputFeature ReadOutputFeature(const Element& outputField);

} // namespace veltrane_kit

#endif
